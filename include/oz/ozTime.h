#ifndef OZ_TIME_H
#define OZ_TIME_H

#include "oz/ozString.h"

/// A time or a duration in seconds. Times of day count from 1970-01-01 00:00 UTC.
class OZ_API ozTime {
public:
  /// Leaves the value unset.
  ozTime() {}
  ozTime(double seconds) : _value(seconds) {}
  ozTime(long sec, long usec) { setValue(sec, usec); }

  void setValue(double seconds) { _value = seconds; }
  void setValue(long sec, long usec) { _value = usec * 1e-6 + sec; }

  double get() const { return _value; }
  /// Whole seconds, and the whole seconds less 6: for true microseconds use format. Values that a long cannot hold give
  /// its nearest, NaN gives 0.
  void get(long &sec, long &usec) const;
  /// Whole milliseconds.
  unsigned long getMsec() const;

  static ozTime getTimeOfDay();
  void setToTimeOfDay() { *this = getTimeOfDay(); }
  static ozTime zero() { return ozTime(0.0); }
  static ozTime maxTime() { return ozTime(2e9); }

  bool operator==(ozTime const &t) const { return _value == t._value; }
  bool operator!=(ozTime const &t) const { return _value != t._value; }
  bool operator<(ozTime const &t) const { return _value < t._value; }
  bool operator<=(ozTime const &t) const { return _value <= t._value; }
  bool operator>(ozTime const &t) const { return _value > t._value; }
  bool operator>=(ozTime const &t) const { return _value >= t._value; }

  ozTime operator-() const { return ozTime(-_value); }
  ozTime operator+(ozTime const &t) const { return ozTime(_value + t._value); }
  ozTime operator-(ozTime const &t) const { return ozTime(_value - t._value); }
  ozTime operator*(double s) const { return ozTime(_value * s); }
  ozTime operator/(double s) const { return ozTime(_value / s); }
  friend ozTime operator*(double s, ozTime const &t) { return ozTime(s * t._value); }

  ozTime &operator+=(ozTime const &t) { return _value += t._value, *this; }
  ozTime &operator-=(ozTime const &t) { return _value -= t._value, *this; }
  ozTime &operator*=(double s) { return _value *= s, *this; }
  ozTime &operator/=(double s) { return _value /= s, *this; }

  /// The ratio of two durations.
  double operator/(ozTime const &t) const { return _value / t._value; }
  /// What is left above the next lower multiple of m: never negative for a positive m.
  ozTime operator%(ozTime const &m) const;

  /// The time as text. In the pattern, %D %H %M %S %I %U stand for the total days, hours, minutes,
  /// seconds, milliseconds, microseconds, with a sign; %h %m %s %i %u for the hour of the day, the minute of the hour,
  /// the second of the minute, the millisecond and the microsecond of the second; %% for "%". The result ends once it
  /// is longer than 192 characters.
  ozString format(char const *) const;

private:
  double _value;
};

#endif
