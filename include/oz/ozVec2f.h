#ifndef OZ_VEC2F_H
#define OZ_VEC2F_H

#include "oz/ozVecBase.h"

/// @file
/// The small vectors: ozVec2f, ozVec3f, ozVec4f, ozVec2i, ozVec3i, ozVec2s, ozVec3s, ozVec3b, ozVec4ub. What all of
/// them do stands in oz/ozVecBase.h. A vector is its components, in the order x, y, z, w, tightly packed.

class ozMatrix4f;
class ozPlane;

/// Two floats.
class OZ_API ozVec2f : public ozFloatVecBase<ozVec2f, 0, 1> {
public:
  using ozFloatVecBase::ozFloatVecBase;
  /// All components take the value.
  ozVec2f &operator=(float value) { return fill(value); }
};

/// Three floats: a point, a direction or a colour.
class OZ_API ozVec3f : public ozFloatVecBase<ozVec3f, 0, 1, 2> {
public:
  using ozFloatVecBase::ozFloatVecBase;
  ozVec3f &operator=(float value) { return fill(value); }

  using ozVecBase::cross;
  using ozVecBase::set;

  /// this = a.x * x + a.y * y + a.z * z
  void set(ozVec3f const &a, ozVec3f const &x, ozVec3f const &y, ozVec3f const &z) {
    ozVec3f sum;
    sum.addScaled(sum, a._v[0], x);
    sum.addScaled(sum, a._v[1], y);
    sum.addScaled(sum, a._v[2], z);
    *this = sum;
  }
  /// The point common to three planes, by Cramer's rule; zero if the determinant of the normals is within 1e-6 of 0.
  /// The offset of each plane counts without its sign.
  void set(ozPlane const &p1, ozPlane const &p2, ozPlane const &p3);

  // These three are defined in oz/ozMatrix4f.h.
  /// this = the point v, as a row vector with w = 1, times m, whose fourth column is ignored.
  inline void xformPt(ozVec3f const &v, ozMatrix4f const &m);
  /// this = the direction v, as a row vector with w = 0, times m: its upper left 3 by 3 part only.
  inline void xformVec(ozVec3f const &v, ozMatrix4f const &m);
  /// this = the point v times all of m, divided by the resulting w unless that is within OZ_EPSILON of 1.
  inline void fullXformPt(ozVec3f const &v, ozMatrix4f const &m);

  /// The one of +X, -X, +Y, -Y, +Z, -Z that the vector points along most; a tie keeps the earlier one.
  ozVec3f getClosestAxis() const;
};

/// Four floats: a homogeneous point, a colour with alpha, or a quaternion with w as its scalar part.
class OZ_API ozVec4f : public ozFloatVecBase<ozVec4f, 0, 1, 2, 3> {
public:
  using ozFloatVecBase::ozFloatVecBase;
  ozVec4f &operator=(float value) { return fill(value); }

  /// this = the row vector v times m. Defined in oz/ozMatrix4f.h.
  inline void xform(ozVec4f const &v, ozMatrix4f const &m);

  /// The quaternion of the rotation by the angle in radians, times the length of the axis; all 0 for a zero axis.
  void qInit(ozVec3f const &axis, float angle);
  /// The sum of the four squares, no root taken.
  float qNorm() const { return dot(*this); }
  /// Negates x, y, z.
  void qConjugate() { set(-_v[0], -_v[1], -_v[2], _v[3]); }
  /// Negates w.
  void qComplement() { _v[3] = -_v[3]; }
  /// The conjugate over qNorm; all components OZ_INFINITY if that is 0.
  void qInvert() {
    float norm = qNorm();
    qConjugate();
    *this /= norm;
  }
  /// this = this * q, Hamilton's product.
  void qProduct(ozVec4f const &q) {
    float const *a = _v, *b = q._v;
    set(a[3] * b[0] + a[0] * b[3] + a[1] * b[2] - a[2] * b[1], a[3] * b[1] + a[1] * b[3] + a[2] * b[0] - a[0] * b[2],
        a[3] * b[2] + a[2] * b[3] + a[0] * b[1] - a[1] * b[0], a[3] * b[3] - a[0] * b[0] - a[1] * b[1] - a[2] * b[2]);
  }
};

/// Two ints. Here set(int, int) sets both components, never one by its index.
class OZ_API ozVec2i : public ozIntVecBase<ozVec2i, int, 0, 1> {
public:
  using ozIntVecBase::ozIntVecBase;
  ozVec2i &operator=(int value) { return fill(value); }
};

/// Three ints.
class OZ_API ozVec3i : public ozIntVecBase<ozVec3i, int, 0, 1, 2> {
public:
  using ozIntVecBase::ozIntVecBase;
  ozVec3i &operator=(int value) { return fill(value); }
  using ozVecBase::cross;
};

/// Two shorts.
class OZ_API ozVec2s : public ozIntVecBase<ozVec2s, short, 0, 1> {
public:
  using ozIntVecBase::ozIntVecBase;
  ozVec2s &operator=(short value) { return fill(value); }
};

/// Three shorts.
class OZ_API ozVec3s : public ozIntVecBase<ozVec3s, short, 0, 1, 2> {
public:
  using ozIntVecBase::ozIntVecBase;
  ozVec3s &operator=(short value) { return fill(value); }
  using ozVecBase::cross;
};

/// Three signed bytes.
class OZ_API ozVec3b : public ozIntVecBase<ozVec3b, char, 0, 1, 2> {
public:
  using ozIntVecBase::ozIntVecBase;
  ozVec3b &operator=(char value) { return fill(value); }
  using ozVecBase::cross;
};

/// Four unsigned bytes: a colour.
class OZ_API ozVec4ub : public ozIntVecBase<ozVec4ub, unsigned char, 0, 1, 2, 3> {
public:
  using ozIntVecBase::ozIntVecBase;
  ozVec4ub &operator=(unsigned char value) { return fill(value); }

private:
  using ozVecBase::zero; // Alone among the vectors it has no zero(), as meant.
};

#endif
