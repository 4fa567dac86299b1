#include "oz/ozHit.h"
#include "oz/ozPickSensor.h"

OZ_DEFINE_INSTANCES(ozTouchSensor)

OZ_DEFINE_TYPE(ozTouchSensor, "TouchSensor", ozPickSensor) {
  ozSFVec3f::addTypeField(type, "hitNormal", 4, ozVec3f(0, 0, 1), &ozTouchSensor::_hitNormal);
  ozSFVec3f::addTypeField(type, "hitPoint", 5, ozVec3f(0, 0, 0), &ozTouchSensor::_hitPoint);
  ozSFVec2f::addTypeField(type, "hitTexCoord", 6, ozVec2f(0, 0), &ozTouchSensor::_hitTexCoord);
  ozSFUByte::addTypeField(type, "isOver", 7, 0, &ozTouchSensor::_isOver);
  ozSFTime::addTypeField(type, "touchTime", 8, ozTime(0.0), &ozTouchSensor::_touchTime);
}

ozTouchSensor::ozTouchSensor(ozType *type) : ozPickSensor(type), _wasOver(0) { initFieldDefaults(_ClassType); }
ozTouchSensor::~ozTouchSensor() { destroyFieldContents(_ClassType); }

void ozTouchSensor::beginGrab(ozHit const &hit) {
  setIsActive(1);
  motion(hit);
}

void ozTouchSensor::motion(ozHit const &hit) {
  int const over = isPicked();
  if (over) {
    store(5, _hitPoint, hit.localPoint);
    store(4, _hitNormal, hit.localNormal);
  }
  if (over == _wasOver) return;
  store(7, _isOver, static_cast<unsigned char>(over));
  _wasOver = over;
}

void ozTouchSensor::endGrab(ozHit const &hit) {
  motion(hit);
  setIsActive(0);
  if (isPicked()) store(8, _touchTime, ozTime::getTimeOfDay());
}
