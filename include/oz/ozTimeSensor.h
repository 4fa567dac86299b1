#ifndef OZ_TIME_SENSOR_H
#define OZ_TIME_SENSOR_H

#include "oz/ozNode.h"
#include "oz/ozTime.h"

/// The clock of animation, with the semantics of VRML's TimeSensor: turns the time of day into the fraction of a cycle
/// and a few events. It works as soon as it exists and needs no place in a graph.
///
/// All times are in seconds; start and stop times count as times of day do. While the sensor is enabled and active,
/// changes of "startTime" and "cycleInterval", and a "stopTime" at or before the start, are dropped in silence.
class OZ_API ozTimeSensor : public ozNode {
  OZ_CLASS(ozTimeSensor);

public:
  ozTimeSensor();

  /// The tick: evaluates all sensors that wait or run, with one time for all. A window's loop calls it.
  static void updateSensors();
  /// The number of existing sensors.
  static int getSensorCount() { return _Count; }

  /// Brings the inputs up to date and evaluates.
  void evalWrapper();
  /// Writes the output fields for the present time.
  virtual void eval();

  ozTime getCycleInterval() { return read(2, _cycleInterval); }
  void setCycleInterval(ozTime interval) { store(2, _cycleInterval, interval); }
  unsigned char getEnabled() { return read(3, _enabled); }
  void setEnabled(unsigned char enabled) { store(3, _enabled, enabled); }
  unsigned char getLoop() { return read(4, _loop); }
  void setLoop(unsigned char loop) { store(4, _loop, loop); }
  ozTime getStartTime() { return read(5, _startTime); }
  void setStartTime(ozTime time) { store(5, _startTime, time); }
  ozTime getStopTime() { return read(6, _stopTime); }
  void setStopTime(ozTime time) { store(6, _stopTime, time); }

  // The outputs, as the last tick left them.
  ozTime getCycleTime() { return readOutput(7, _cycleTime); }
  float getFractionChanged() { return readOutput(8, _fractionChanged); }
  unsigned char getIsActive() { return readOutput(9, _isActive); }
  ozTime getTime() { return readOutput(10, _time); }

protected:
  void fieldChanged(short id) override;

private:
  template <class T> T readOutput(short id, T const &member) {
    _now.setToTimeOfDay();
    return read(id, member);
  }

  static ozPtrArray *_Current;
  static int _Count;

  ozTime _cycleInterval;
  unsigned char _enabled;
  unsigned char _loop;
  ozTime _startTime;
  ozTime _stopTime;
  ozTime _cycleTime;
  float _fractionChanged;
  unsigned char _isActive;
  ozTime _time;

  ozTime _now;        // of the present evaluation
  ozTime _cycleStart; // start of the cycle last reported
  ozTime _savedStart; // last accepted values
  ozTime _savedStop;
  ozTime _savedInterval;
};

#endif
