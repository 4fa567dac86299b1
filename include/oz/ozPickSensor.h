#ifndef OZ_PICK_SENSOR_H
#define OZ_PICK_SENSOR_H

#include "oz/ozBound.h"
#include "oz/ozFieldAccess.h"
#include "oz/ozMatrix4f.h"
#include "oz/ozNode.h"
#include "oz/ozPlane.h"
#include "oz/ozRotation.h"
#include "oz/ozTime.h"

class ozCamera;
class ozHit;

/// Base of the nodes that turn the mouse into field events. A sensor senses its siblings: it reacts when the geometry
/// under the pointer lies below a group that it is a child of. The sensors of the lowest such group count, in child
/// order.
///
/// While a button is held, those that were under the pointer at the press hold the grab and see all motion; otherwise
/// those under the pointer do. There is one grab in the process, whatever window it comes from.
class OZ_API ozPickSensor : public ozNode {
  OZ_ABSTRACT_CLASS(ozPickSensor);

public:
  enum CoordFrameEnum : int {
    LOCAL = 0, ///< dragging takes place in the space of the geometry that was hit
    WORLD = 1  ///< dragging takes place in world space
  };

  /// One mouse event: picks at the pixel (x, y), counted from the lower left, and drives the sensors. Does nothing
  /// without a root or a camera. ozWindow::updateSensors calls it.
  static void updateSensors(ozNode *root, ozCamera *camera, int x, int y, int buttonDown);

  /// Does nothing.
  virtual void draw(ozDrawAction *action);
  /// The button went down over what is sensed.
  virtual void beginGrab(ozHit const &hit) = 0;
  /// The pointer moved: over what is sensed, away from it (once), or anywhere during a grab. The hit may be empty.
  virtual void motion(ozHit const &hit) = 0;
  /// The button was let go.
  virtual void endGrab(ozHit const &hit) = 0;

  /// 1 by default. Disabling an active sensor ends its activity; "enabled" itself passes nothing on.
  OZ_VALUE_ACCESS(unsigned char, Enabled, 2, _enabled)
  /// Whether the sensor holds the grab.
  unsigned char getIsActive() { return read(3, _isActive); }
  /// Whether the update under way has found it under the pointer; 0 between updates.
  unsigned char isPicked() const { return _lastPickFrame == _UpdateFrame; }

protected:
  void fieldChanged(short id) override;

  /// The working matrix becomes the one from the root's space to the hit geometry's.
  void calcWorkingSpace(ozPtrArray const &path);
  /// The hit's ray in the space of the frame; false if there is none.
  bool getDragSegment(ozHit const &hit, CoordFrameEnum frame, ozSeg &segment) const;
  void setIsActive(unsigned char active) { store(3, _isActive, active); }

  unsigned char _enabled;
  unsigned char _isActive;

private:
  static void collectPicked(ozHit const &hit);
  static void updatePickedSensors(ozHit const &hit);

  static ozPtrArray *_PrevList; // found under the pointer by the last update
  static ozPtrArray *_PickList; // found by the present one
  static ozPtrArray *_GrabList; // holding the grab
  static int _Grabbing;
  static int _UpdateFrame; // counts updates

  int _lastPickFrame; // the update that found this sensor last
  ozMatrix4f _workingMatrix;
};

/// Reports hovering and clicks.
class OZ_API ozTouchSensor : public ozPickSensor {
  OZ_CLASS(ozTouchSensor);

public:
  ozTouchSensor();

  /// In the space of the geometry. (0, 0, 1) before the first hit.
  void getHitNormal(float *x, float *y, float *z) { read(4, _hitNormal).get(x, y, z); }
  void getHitNormal(ozVec3f &normal) { normal = read(4, _hitNormal); }
  /// In the space of the geometry.
  void getHitPoint(float *x, float *y, float *z) { read(5, _hitPoint).get(x, y, z); }
  void getHitPoint(ozVec3f &point) { point = read(5, _hitPoint); }
  /// Always the field's default: no code of the library writes it.
  void getHitTexCoord(float *s, float *t) { read(6, _hitTexCoord).get(s, t); }
  void getHitTexCoord(ozVec2f &coord) { coord = read(6, _hitTexCoord); }
  unsigned char getIsOver() { return read(7, _isOver); }
  /// When the button was last let go over what is sensed.
  ozTime getTouchTime() { return read(8, _touchTime); }

  void beginGrab(ozHit const &hit) override;
  void motion(ozHit const &hit) override;
  void endGrab(ozHit const &hit) override;

private:
  ozVec3f _hitNormal;
  ozVec3f _hitPoint;
  ozVec2f _hitTexCoord;
  unsigned char _isOver;
  ozTime _touchTime;
  int _wasOver;
};

/// Turns a drag into a translation in the plane z = 0 of the geometry's space.
class OZ_API ozPlaneSensor : public ozPickSensor {
  OZ_CLASS(ozPlaneSensor);

public:
  ozPlaneSensor();

  /// Whether the next drag goes on from the end of the last. 1 by default.
  OZ_VALUE_ACCESS(unsigned char, AutoOffset, 4, _autoOffset)
  /// What is added to the drag.
  OZ_VEC3F_ACCESS(Offset, 5, _offset)
  /// The translation is kept between these in each axis where the maximum is not below the minimum: in none by default.
  OZ_CLASS_ACCESS(ozVec2f, MaxPosition, 6, _maxPosition)
  void getMaxPosition(float *x, float *y) { read(6, _maxPosition).get(x, y); }
  void setMaxPosition(float x, float y) { store(6, _maxPosition, ozVec2f(x, y)); }
  OZ_CLASS_ACCESS(ozVec2f, MinPosition, 7, _minPosition)
  void getMinPosition(float *x, float *y) { read(7, _minPosition).get(x, y); }
  void setMinPosition(float x, float y) { store(7, _minPosition, ozVec2f(x, y)); }
  OZ_VEC3F_ACCESS(Translation, 8, _translation)
  /// The point of the plane under the pointer.
  void getTrackPoint(float *x, float *y, float *z) { read(9, _trackPoint).get(x, y, z); }
  void getTrackPoint(ozVec3f &point) { point = read(9, _trackPoint); }
  /// LOCAL by default.
  OZ_ENUM_ACCESS(CoordFrameEnum, CoordFrame, 10, _coordFrame)

  void beginGrab(ozHit const &hit) override;
  void motion(ozHit const &hit) override;
  void endGrab(ozHit const &hit) override;

private:
  unsigned char _autoOffset;
  ozVec3f _offset;
  ozVec2f _maxPosition;
  ozVec2f _minPosition;
  ozVec3f _translation;
  ozVec3f _trackPoint;
  CoordFrameEnum _coordFrame;
  int _firstMotion;
  ozVec3f _startPoint;
  ozPlane _plane;
};

/// Turns a drag into a rotation about the origin of the geometry's space.
class OZ_API ozSphereSensor : public ozPickSensor {
  OZ_CLASS(ozSphereSensor);

public:
  ozSphereSensor();

  /// Whether the next drag goes on from the end of the last. 1 by default.
  OZ_VALUE_ACCESS(unsigned char, AutoOffset, 4, _autoOffset)
  /// The rotation that the drag is added to. (0, 0, 1, 0) by default.
  void getOffset(float *x, float *y, float *z, float *radians) { read(5, _offset).get(x, y, z, radians); }
  void getOffset(ozRotation &rotation) { rotation = read(5, _offset); }
  void setOffset(float x, float y, float z, float radians) { store(5, _offset, ozRotation(x, y, z, radians)); }
  void setOffset(ozRotation const &rotation) { store(5, _offset, rotation); }
  void getRotation(float *x, float *y, float *z, float *radians) { read(6, _rotation).get(x, y, z, radians); }
  void getRotation(ozRotation &rotation) { rotation = read(6, _rotation); }
  /// The point of the sphere, or of the plane behind it, under the pointer.
  void getTrackPoint(float *x, float *y, float *z) { read(7, _trackPoint).get(x, y, z); }
  void getTrackPoint(ozVec3f &point) { point = read(7, _trackPoint); }
  /// LOCAL by default.
  OZ_ENUM_ACCESS(CoordFrameEnum, CoordFrame, 8, _coordFrame)

  void beginGrab(ozHit const &hit) override;
  void motion(ozHit const &hit) override;
  void endGrab(ozHit const &hit) override;

private:
  unsigned char _autoOffset;
  ozRotation _offset;
  ozRotation _rotation;
  ozVec3f _trackPoint;
  CoordFrameEnum _coordFrame;
  ozVec3f _startDir;
  ozPlane _plane;
  int _firstMotion;
  ozSphereBound _sphere;
};

#endif
