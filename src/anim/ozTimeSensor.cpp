#include "oz/ozTimeSensor.h"

#include <math.h>

#include "oz/ozSFByte.h"

ozPtrArray *ozTimeSensor::_Current = nullptr;
int ozTimeSensor::_Count = 0;

OZ_DEFINE_INSTANCES(ozTimeSensor)

OZ_DEFINE_TYPE(ozTimeSensor, "TimeSensor", ozNode) {
  ozSFTime::addTypeField(type, "cycleInterval", 2, ozTime(1.0), &ozTimeSensor::_cycleInterval);
  ozSFUByte::addTypeField(type, "enabled", 3, 1, &ozTimeSensor::_enabled);
  ozSFUByte::addTypeField(type, "loop", 4, 0, &ozTimeSensor::_loop);
  ozSFTime::addTypeField(type, "startTime", 5, ozTime(0.0), &ozTimeSensor::_startTime);
  ozSFTime::addTypeField(type, "stopTime", 6, ozTime(0.0), &ozTimeSensor::_stopTime);
  ozSFTime::addTypeField(type, "cycleTime", 7, ozTime(0.0), &ozTimeSensor::_cycleTime);
  ozSFFloat::addTypeField(type, "fraction_changed", 8, 0.0f, &ozTimeSensor::_fractionChanged);
  ozSFUByte::addTypeField(type, "isActive", 9, 0, &ozTimeSensor::_isActive);
  ozSFTime::addTypeField(type, "time", 10, ozTime(0.0), &ozTimeSensor::_time);
  _Current = new ozPtrArray(8); // never destroyed: sensors may die while the process exits
}

ozTimeSensor::ozTimeSensor(ozType *type)
    : ozNode(type), _now(0.0), _cycleStart(0.0), _savedStart(0.0), _savedStop(0.0), _savedInterval(0.0) {
  initFieldDefaults(_ClassType);
  _Current->append(this);
  ++_Count;
  _savedStart = _startTime;
  _savedStop = _stopTime;
  _savedInterval = _cycleInterval;
  for (short id = 7; id <= 10; ++id) getField(id)->setEventClass(ozField::EVENT_FORWARD);
}

ozTimeSensor::~ozTimeSensor() {
  _Current->remove(this);
  --_Count;
  destroyFieldContents(_ClassType);
}

void ozTimeSensor::updateSensors() {
  if (!_Current) return;
  unsigned int const count = _Current->getCount();
  ozTime const now = ozTime::getTimeOfDay();
  // A sensor that leaves the list moves the next one into its place, which is then passed over until the next tick.
  for (unsigned int i = 0; i < count && i < _Current->getCount(); ++i) {
    ozTimeSensor *const sensor = static_cast<ozTimeSensor *>(_Current->get(i));
    // A listener may drop the last reference on the sensor that it listens to.
    bool const owned = sensor->getRefCount() != 0;
    sensor->ref();
    sensor->_now = now;
    sensor->evalWrapper();
    if (owned)
      sensor->unref();
    else
      sensor->unrefNoDelete();
  }
}

void ozTimeSensor::evalWrapper() {
  for (short id = 2; id <= 6; ++id) validateField(id);
  eval();
}

// Each write of a field sets _now to the time of day (see fieldChanged), and what follows it sees that: meant so.
void ozTimeSensor::eval() {
  ozSFUByte *const isActive = static_cast<ozSFUByte *>(getField(9));
  if (!_enabled) {
    _Current->remove(this);
    if (_isActive) isActive->set(0);
    return;
  }
  if (_startTime > _now) return;
  ozTime const cycle = _startTime + _cycleInterval * floor((_now - _startTime) / _cycleInterval);
  bool const stops = _stopTime > _startTime;
  bool const over = !_loop && cycle > _cycleStart;
  bool const done = (stops && _now >= _stopTime) || over;
  if (done) _Current->remove(this);
  if (!_isActive && done) return; // it never became active: no event
  if (over) _now = cycle;
  if (stops && _now > _stopTime) _now = _stopTime;
  float fraction = static_cast<float>((_now - cycle) / _cycleInterval);
  if (_now != _startTime && fraction == 0.0f) fraction = 1.0f;
  if (cycle != _cycleTime && !done) {
    _cycleStart = cycle;
    static_cast<ozSFTime *>(getField(7))->set(cycle);
  }
  if (_now != _time) static_cast<ozSFTime *>(getField(10))->set(_now);
  if (fraction != _fractionChanged) static_cast<ozSFFloat *>(getField(8))->set(fraction);
  if (!_isActive)
    isActive->set(1);
  else if (done)
    isActive->set(0);
}

void ozTimeSensor::fieldChanged(short id) {
  if (id < _ClassType->getAncestorFieldCount()) {
    ozNode::fieldChanged(id);
    return;
  }
  bool const running = _enabled && _isActive;
  if (id == 5) {
    if (running) {
      _startTime = _savedStart;
      return;
    }
    _cycleStart = _savedStart = _startTime;
  } else if (id == 6) {
    if (running && _startTime >= _stopTime) {
      _stopTime = _savedStop;
      return;
    }
    _savedStop = _stopTime;
  } else if (id == 2) {
    if (running || !(_cycleInterval > ozTime::zero())) {
      _cycleInterval = _savedInterval;
      return;
    }
    _savedInterval = _cycleInterval;
  }
  if (id >= 2 && id <= 6 && _Current->find(this) < 0) _Current->append(this);
  _now.setToTimeOfDay();
  touchField(id);
}
