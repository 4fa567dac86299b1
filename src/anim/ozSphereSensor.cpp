#include "anim/coordFrame.h"
#include "oz/ozHit.h"

OZ_DEFINE_INSTANCES(ozSphereSensor)

OZ_DEFINE_TYPE(ozSphereSensor, "SphereSensor", ozPickSensor) {
  ozRotation const none(0, 0, 1, 0);
  ozSFUByte::addTypeField(type, "autoOffset", 4, 1, &ozSphereSensor::_autoOffset);
  ozSFRotation::addTypeField(type, "offset", 5, none, &ozSphereSensor::_offset);
  ozSFRotation::addTypeField(type, "rotation", 6, none, &ozSphereSensor::_rotation);
  ozSFVec3f::addTypeField(type, "trackPoint", 7, ozVec3f(0, 0, 0), &ozSphereSensor::_trackPoint);
  ozSFEnum::addTypeField(type, "coordFrame", 8, LOCAL, &ozSphereSensor::_coordFrame);
  defineCoordFrames(type, 8);
}

ozSphereSensor::ozSphereSensor(ozType *type) : ozPickSensor(type), _firstMotion(0) {
  _plane.normal.set(0, 0, 1);
  _plane.offset = 0;
  initFieldDefaults(_ClassType);
}

ozSphereSensor::~ozSphereSensor() { destroyFieldContents(_ClassType); }

void ozSphereSensor::beginGrab(ozHit const &hit) {
  CoordFrameEnum const frame = getCoordFrame();
  _sphere.center = 0;
  _sphere.radius = hit.localPoint.length();
  if (frame == LOCAL) {
    _plane.normal.set(0, 0, 1);
    _plane.offset = 0;
    calcWorkingSpace(hit.path);
  } else if (frame == WORLD) {
    _sphere.xform(&_sphere, hit.matrix);
    _plane.normal.sub(hit.ray.getOrigin(), _sphere.center);
    _plane.offset = -_plane.normal.normalize();
  }
  setIsActive(1);
  _firstMotion = 1;
  motion(hit);
}

void ozSphereSensor::motion(ozHit const &hit) {
  if (!getIsActive()) return;
  ozSeg segment;
  if (!getDragSegment(hit, getCoordFrame(), segment)) return;
  // The plane is the backstop for rays that leave the sphere.
  float t, end;
  if (!_sphere.isect(&segment, &t, &end) && !_plane.isect(&segment, &t)) return;
  ozVec3f point;
  point.addScaled(segment.getOrigin(), t, segment.getDirection());
  store(7, _trackPoint, point);

  ozVec3f direction;
  direction.sub(point, _sphere.center);
  float const length = direction.normalize();
  // 1 on the sphere, more on the plane.
  float const scale = _sphere.radius > 0 ? length / _sphere.radius : 1.0f;
  if (_firstMotion) {
    _startDir = direction;
    _firstMotion = 0;
  }
  ozMatrix4f turn;
  turn.makeVecRotVec(_startDir, direction);
  ozRotation rotation;
  rotation.makeIdentity(); // stays where the matrix holds no rotation
  turn.getOrthoRotation(rotation);
  rotation.setAngleDegrees(rotation.getAngleDegrees() * OZ_TO_RADIANS * scale * OZ_TO_DEGREES);
  rotation.mult(rotation, read(5, _offset));
  store(6, _rotation, rotation);
}

void ozSphereSensor::endGrab(ozHit const &) {
  setIsActive(0);
  if (getAutoOffset()) setOffset(_rotation);
}
