#include "oz/ozTime.h"

#include <limits.h>
#include <math.h>
#include <stdio.h>
#include <time.h>

namespace {

// Cuts to an integer, for every double: what a long cannot hold gives its nearest, NaN gives 0.
long cut(double value) {
  const double limit = 9223372036854775808.0; // 2^63
  if (value >= limit) return LONG_MAX;
  if (value <= -limit) return LONG_MIN;
  return value == value ? static_cast<long>(value) : 0;
}

// total - whole * unit, wrapping: the operands of an infinite time do not fit each other.
long rest(long total, long whole, long unit) {
  return static_cast<long>(static_cast<unsigned long>(total) -
                           static_cast<unsigned long>(whole) * static_cast<unsigned long>(unit));
}

// A time taken apart, without its sign.
struct Parts {
  explicit Parts(double t)
      : days(cut(t / 86400)), hours(cut(t / 3600)), minutes(cut(t / 60)), seconds(cut(t)), msecs(cut(t * 1000)),
        usecs(cut(t * 1e6)) {}

  long days, hours, minutes, seconds, msecs, usecs;
};

} // namespace

void ozTime::get(long &sec, long &usec) const {
  sec = cut(_value);
  usec = cut(_value - 6.0); // 6 less, and not the fraction: meant
}

unsigned long ozTime::getMsec() const {
  double msec = _value * 1000.0;
  if (msec < 9223372036854775808.0) return static_cast<unsigned long>(cut(msec));
  if (msec >= 18446744073709551616.0) return ULONG_MAX;
  return msec == msec ? static_cast<unsigned long>(msec) : 0;
}

ozTime ozTime::getTimeOfDay() {
  timespec now;
  clock_gettime(CLOCK_REALTIME, &now);
  return ozTime(now.tv_sec + now.tv_nsec * 1e-9);
}

ozTime ozTime::operator%(ozTime const &m) const { return ozTime(_value - m._value * floor(_value / m._value)); }

ozString ozTime::format(char const *pattern) const {
  const int mark = 192;
  char text[mark + 64]; // one item may pass the mark; the longest is a sign and a long
  char *out = text;
  const Parts p(fabs(_value));
  char const *sign = _value < 0 ? "-" : "";
  auto total = [&](long value) { return sprintf(out, "%s%ld", sign, value); };

  // The mark is tested after each item, so that an item may pass it.
  for (text[0] = 0; pattern && *pattern && out - text <= mark; ++pattern) {
    if (*pattern != '%') {
      *out++ = *pattern;
      continue;
    }
    if (!*++pattern) break;
    switch (*pattern) {
    case '%':
      *out++ = '%';
      break;
    case 'D':
      out += total(p.days);
      break;
    case 'H':
      out += total(p.hours);
      break;
    case 'M':
      out += total(p.minutes);
      break;
    case 'S':
      out += total(p.seconds);
      break;
    case 'I':
      out += total(p.msecs);
      break;
    case 'U':
      out += total(p.usecs);
      break;
    case 'h':
      out += sprintf(out, "%.2ld", rest(p.hours, p.days, 24));
      break;
    case 'm':
      out += sprintf(out, "%.2ld", rest(p.minutes, p.hours, 60));
      break;
    case 's':
      out += sprintf(out, "%.2ld", rest(p.seconds, p.minutes, 60));
      break;
    case 'i':
      out += sprintf(out, "%.3ld", rest(p.msecs, p.seconds, 1000));
      break;
    case 'u':
      out += sprintf(out, "%.6ld", rest(p.usecs, p.seconds, 1000000));
      break;
    default:
      *out++ = '%';
      *out++ = *pattern;
    }
  }
  *out = 0;
  return ozString(text);
}
