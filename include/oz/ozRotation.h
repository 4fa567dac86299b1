#ifndef OZ_ROTATION_H
#define OZ_ROTATION_H

#include "oz/ozVec2f.h"

class ozMatrix4f;

/// An axis and an angle. The axis is a unit vector, or zero for no rotation; the angle is held in degrees. Operations
/// take and give radians unless they have "Degrees" in their name. Any result may be stored into an operand.
///
/// Whatever sets an axis normalises it, or makes it zero if each component lies strictly within OZ_EPSILON of 0; the
/// angle is stored all the same.
class OZ_API ozRotation {
public:
  /// Clears the axis and leaves the angle unset.
  ozRotation() {}
  ozRotation(float x, float y, float z, float radians) { set(x, y, z, radians); }
  ozRotation(ozVec3f const &axis, float radians) { set(axis, radians); }
  ozRotation(ozVec4f const &quaternion) { set(quaternion); }
  /// The rotation that takes one direction to another.
  ozRotation(ozVec3f const &from, ozVec3f const &to) : _angle(0) { set(from, to); }
  /// As ozMatrix4f::getOrthoRotation; no rotation if the matrix has none.
  ozRotation(ozMatrix4f const &matrix) : _angle(0) { set(matrix); }

  /// All four numbers become 0, whatever the argument. Meant.
  ozRotation &operator=(float) { return makeIdentity(), *this; }

  /// Exact on the four numbers.
  bool equal(ozRotation const &r) const { return _axis == r._axis && _angle == r._angle; }
  bool operator==(ozRotation const &r) const { return equal(r); }
  bool operator!=(ozRotation const &r) const { return !equal(r); }
  /// 1 if each of the four numbers is within the tolerance, the bounds included; otherwise 0.
  unsigned char almostEqual(ozRotation const &r, float tolerance) const;

  void set(float x, float y, float z, float radians) { setDegrees(x, y, z, radians * OZ_TO_DEGREES); }
  void set(ozVec3f const &axis, float radians) { setDegrees(axis, radians * OZ_TO_DEGREES); }
  void setDegrees(float x, float y, float z, float degrees) { setDegrees(ozVec3f(x, y, z), degrees); }
  void setDegrees(ozVec3f const &axis, float degrees) {
    setAxis(axis);
    _angle = degrees;
  }
  /// From a quaternion of any length; one without a vector part gives all four numbers 0.
  void set(ozVec4f const &quaternion);
  /// The rotation that takes one direction to another. All 0 for (nearly) the same direction. For opposite ones the
  /// axis is perpendicular to them and the angle is 0. Meant, though that turns nothing.
  void set(ozVec3f const &from, ozVec3f const &to);
  /// As ozMatrix4f::getOrthoRotation, with its messages; stays as it is if the matrix has no rotation.
  void set(ozMatrix4f const &matrix);
  /// The axis becomes zero, and the angle takes the value as degrees.
  void set(float degrees) {
    _axis = 0;
    _angle = degrees;
  }
  void set(ozRotation const &from) { *this = from; }

  void setAxis(float x, float y, float z) { setAxis(ozVec3f(x, y, z)); }
  void setAxis(ozVec3f const &axis);
  void setAngle(float radians) { _angle = radians * OZ_TO_DEGREES; }
  void setAngleDegrees(float degrees) { _angle = degrees; }

  float getAngle() const { return _angle * OZ_TO_RADIANS; }
  float getAngleDegrees() const { return _angle; }
  void getAxis(ozVec3f &axis) const { axis = _axis; }
  void getAxis(float *x, float *y, float *z) const { _axis.get(x, y, z); }
  void get(ozRotation &out) const { out = *this; }
  void get(ozVec3f &axis, float *radians) const {
    axis = _axis;
    *radians = getAngle();
  }
  void get(float *x, float *y, float *z, float *radians) const {
    _axis.get(x, y, z);
    *radians = getAngle();
  }
  void getDegrees(ozVec3f &axis, float *degrees) const {
    axis = _axis;
    *degrees = _angle;
  }
  void getDegrees(float *x, float *y, float *z, float *degrees) const {
    _axis.get(x, y, z);
    *degrees = _angle;
  }
  /// The quaternion: the axis times sin(angle / 2), and cos(angle / 2).
  void get(ozVec4f &quaternion) const;
  /// The rotation matrix, as ozMatrix4f::makeRot.
  void get(ozMatrix4f &matrix) const;
  /// Index 3 gives the angle in radians, 0 to 2 the axis.
  float operator[](int index) const { return index == 3 ? getAngle() : _axis.get(index); }

  /// this = the product of the quaternions a * b: b acts first.
  void mult(ozRotation const &a, ozRotation const &b);
  /// this = this * r
  ozRotation &operator*=(ozRotation const &r) { return mult(*this, r), *this; }
  /// Turns a vector: out = q * v * conjugate of q.
  void multVec(ozVec3f const &v, ozVec3f &out) const;
  /// this = the rotation between a (t = 0) and b (t = 1).
  void slerp(float t, ozRotation const &a, ozRotation const &b);

  /// this = r with its axis negated.
  void invert(ozRotation const &r) {
    _axis.negate(r._axis);
    _angle = r._angle;
  }
  void makeInverse() { invert(*this); }
  /// Negates the axis.
  void conjugate() { _axis.negate(_axis); }
  /// Negates the angle.
  void complement() { _angle = -_angle; }
  /// Multiplies the angle by the factor and returns it, in degrees.
  float scaleAngle(float factor) { return _angle *= factor; }
  /// All four numbers become 0.
  void makeIdentity() { set(0.0f); }
  /// 1 if each component of the axis lies strictly within OZ_EPSILON of 0 or the angle is exactly 0, otherwise 0.
  int isIdentity() const;

  /// Writes "%f %f %f %f": the axis, then the angle in degrees.
  void write(ozOutput *output) const;

private:
  ozVec3f _axis;
  float _angle;
};

#endif
