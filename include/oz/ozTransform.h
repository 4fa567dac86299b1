#ifndef OZ_TRANSFORM_H
#define OZ_TRANSFORM_H

#include "oz/ozGroup.h"
#include "oz/ozMatrix4f.h"
#include "oz/ozRotation.h"

/// A group with a coordinate system of its own.
///
/// A point p of a child stands at ((p - center) turned into the scale orientation, scaled, turned back, turned by the
/// rotation) + center + translation in the parent's space. The node keeps these parts and a matrix, and makes the
/// matrix from the parts when it is needed. Its box is in the parent's space, those of its children in its own.
///
/// Angles in four floats are radians; ozRotation holds degrees.
class OZ_API ozTransform : public ozGroup {
  OZ_CLASS(ozTransform);

public:
  ozTransform();

  /// (0, 0, 0) by default.
  void getTranslation(float *x, float *y, float *z);
  void getTranslation(ozVec3f &translation);
  void setTranslation(float x, float y, float z);
  void setTranslation(ozVec3f const &translation);
  /// No axis and no angle by default. The axis is normalised; one within OZ_EPSILON of zero becomes zero.
  void getRotation(float *x, float *y, float *z, float *radians);
  void getRotation(ozRotation &rotation);
  void setRotation(float x, float y, float z, float radians);
  void setRotation(ozRotation const &rotation);
  /// (1, 1, 1) by default.
  void getScale(float *x, float *y, float *z);
  void getScale(ozVec3f &scale);
  void setScale(float x, float y, float z);
  void setScale(ozVec3f const &scale);
  /// The axes along which the scale acts, as the rotation that takes them from the coordinate axes.
  void getScaleOrientation(float *x, float *y, float *z, float *radians);
  void getScaleOrientation(ozRotation &rotation);
  void setScaleOrientation(float x, float y, float z, float radians);
  void setScaleOrientation(ozRotation const &rotation);
  /// The point about which rotation and scale act; (0, 0, 0) by default.
  void getCenter(float *x, float *y, float *z);
  void getCenter(ozVec3f &center);
  void setCenter(float x, float y, float z);
  void setCenter(ozVec3f const &center);

  /// The matrix from this node's space to its parent's, made of the parts.
  void getMatrix(ozMatrix4f &matrix);
  /// Takes the matrix apart into translation, rotation, scale and scale orientation; the centre stays. getMatrix()
  /// gives the matrix made of these parts again.
  void setMatrix(ozMatrix4f const &matrix);

  /// How many levels of OpenGL's modelview stack transforms may use; beyond, the matrix is loaded whole. Below 1, which
  /// is the default, stands for any number.
  static int getMaxOglStackDepth() { return _maxOglStackDepth; }
  static void setMaxOglStackDepth(int depth) { _maxOglStackDepth = depth; }

  void sound(ozSoundAction *action) override;
  void isect(ozIsectAction *action) override;
  ozTravDirective transformVisit(ozTransformAction *action) override;
  ozTravDirective vfCullVisit(ozVFCullAction *action) override;
  ozTravDirective drawVisit(ozDrawAction *action) override;

protected:
  void fieldChanged(short id) override;
  void childChanged(ozContainer *child, short id) override;
  void cleanSideEffect(short id) override;

  /// Composes the matrix from the parts.
  void cleanMatrix();
  /// Takes the matrix apart into the parts.
  void cleanParts();
  /// Enters this node's space in the action, and in OpenGL too. Nothing happens if the transform never changed.
  void drawPushMatrix(ozDrawAction *action);
  void transformPushMatrix(ozTransformAction *action);

private:
  enum KindEnum : int { MOVED = 1, TURNED = 2, SCALED = 4, UNEVEN = 8, GIVEN = 16 };
  enum StaleEnum : int { MATRIX = 1, INVERSE = 2, PARTS = 4, CHILD_BOX = 8, BOX = 16 };

  void updateKind(short id);
  bool isPlain(int kind) const { return _kind == kind && !(_stale & PARTS); }
  // Nothing marks the parts as out of date: the tests are meant to stay all the same.
  void freshParts() {
    if (_stale & PARTS) cleanParts();
  }
  void freshMatrix() {
    if (_stale & MATRIX) cleanMatrix();
  }
  bool isRigid() const;
  void freshInverse();
  template <class T> T const &readPart(short id, T const &member) {
    freshParts();
    return read(id, member);
  }
  template <class T> void storePart(short id, T &member, T const &value) {
    freshParts();
    store(id, member, value);
  }
  void pushInto(ozTransformAction *action);
  void drawPopMatrix(ozDrawAction *action);
  ozTravDirective drawChildrenSeen(ozDrawAction *action);
  template <class Loop> ozTravDirective visitMoved(ozTransformAction *action, Loop loop);
  static bool isOglStackFull(ozDrawAction *action);

  static int _maxOglStackDepth;

  // What a visit needs comes first.
  int _kind;  // KindEnum: how the transform differs from the identity; 0 spares all work
  int _stale; // StaleEnum
  ozMatrix4f _matrix;
  bool _singular; // the matrix has no inverse
  unsigned char _savedNormalize;
  unsigned char _restoreNormalize;
  ozBoxBound _childBox; // around the children, in this node's space
  ozVec3f _translation;
  ozRotation _rotation;
  ozVec3f _scale;
  ozRotation _scaleOrientation;
  ozVec3f _center;
  ozMatrix4f *_inverse; // for intersection alone; null until the first
};

#endif
