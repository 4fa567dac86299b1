#include "anim/coordFrame.h"
#include "oz/ozHit.h"

OZ_DEFINE_INSTANCES(ozPlaneSensor)

OZ_DEFINE_TYPE(ozPlaneSensor, "PlaneSensor", ozPickSensor) {
  ozSFUByte::addTypeField(type, "autoOffset", 4, 1, &ozPlaneSensor::_autoOffset);
  ozSFVec3f::addTypeField(type, "offset", 5, ozVec3f(0, 0, 0), &ozPlaneSensor::_offset);
  ozSFVec2f::addTypeField(type, "maxPosition", 6, ozVec2f(-1, -1), &ozPlaneSensor::_maxPosition);
  ozSFVec2f::addTypeField(type, "minPosition", 7, ozVec2f(0, 0), &ozPlaneSensor::_minPosition);
  ozSFVec3f::addTypeField(type, "translation", 8, ozVec3f(0, 0, 0), &ozPlaneSensor::_translation);
  ozSFVec3f::addTypeField(type, "trackPoint", 9, ozVec3f(0, 0, 0), &ozPlaneSensor::_trackPoint);
  ozSFEnum::addTypeField(type, "coordFrame", 10, LOCAL, &ozPlaneSensor::_coordFrame);
  defineCoordFrames(type, 10);
}

ozPlaneSensor::ozPlaneSensor(ozType *type) : ozPickSensor(type), _firstMotion(0) {
  _plane.normal.set(0, 0, 1);
  _plane.offset = 0;
  initFieldDefaults(_ClassType);
}

ozPlaneSensor::~ozPlaneSensor() { destroyFieldContents(_ClassType); }

void ozPlaneSensor::beginGrab(ozHit const &hit) {
  CoordFrameEnum const frame = getCoordFrame();
  if (frame == LOCAL) {
    _plane.normal.set(0, 0, 1);
    _plane.offset = 0;
    calcWorkingSpace(hit.path);
  } else if (frame == WORLD) {
    // The plane z = 0 of the geometry in world space: planes go by the transpose of the inverse.
    ozMatrix4f m;
    m.invertAffine(hit.matrix);
    m.transpose(m);
    m.getRow(2, _plane.normal);
    _plane.offset = -(m[2][3] / _plane.normal.normalize());
  }
  setIsActive(1);
  _firstMotion = 1;
  motion(hit);
}

static void clampAxis(ozVec3f &v, int axis, ozVec2f const &min, ozVec2f const &max) {
  if (!(max[axis] >= min[axis])) return; // a limit that is no number limits nothing
  if (v[axis] < min[axis])
    v[axis] = min[axis];
  else if (v[axis] > max[axis])
    v[axis] = max[axis];
}

void ozPlaneSensor::motion(ozHit const &hit) {
  if (!getIsActive()) return;
  ozSeg segment;
  float t;
  if (!getDragSegment(hit, getCoordFrame(), segment) || !_plane.isect(&segment, &t)) return;
  ozVec3f point;
  point.addScaled(segment.getOrigin(), t, segment.getDirection());
  store(9, _trackPoint, point);
  if (_firstMotion) {
    _startPoint = point;
    _firstMotion = 0;
  }
  ozVec3f translation;
  translation.sub(point, _startPoint);
  translation += read(5, _offset);
  ozVec2f const min = read(7, _minPosition), max = read(6, _maxPosition);
  clampAxis(translation, 0, min, max);
  clampAxis(translation, 1, min, max);
  store(8, _translation, translation);
}

void ozPlaneSensor::endGrab(ozHit const &) {
  setIsActive(0);
  if (getAutoOffset()) setOffset(_translation);
}
