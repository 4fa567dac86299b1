#include "vrml/scanNumber.h"

#include <charconv>
#include <locale.h>
#include <stdint.h>
#include <stdlib.h>

#include <system_error>

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// The digits of a number as one integer, which wraps beyond 19 of them.
struct Digits {
  uint64_t value = 0;
  long count = 0;

  char const *take(char const *at, char const *end) {
    char const *const first = at;
    for (; at < end && isDigit(*at); ++at) value = value * 10 + static_cast<uint64_t>(*at - '0');
    count += at - first;
    return at;
  }
};

int const MaxPower = 22;
double const Powers[MaxPower + 1] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                     1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

// Digits below 2 to the 53rd and a power of ten up to 22 are exact as doubles, so that one operation gives the nearest
// number (Clinger, "How to read floating point numbers accurately").
bool combine(Digits const &digits, long exponent, double &value) {
  if (digits.count > 19 || digits.value > 1ull << 53 || exponent < -MaxPower || exponent > MaxPower) return false;
  double const whole = static_cast<double>(static_cast<int64_t>(digits.value));
  value = exponent < 0 ? whole / Powers[-exponent] : whole * Powers[exponent];
  return true;
}

// Takes the digits of an exponent; far beyond any double's it stays as it is.
char const *takeExponent(char const *at, char const *end, long &exponent) {
  for (; at < end && isDigit(*at); ++at)
    if (exponent < 100000) exponent = exponent * 10 + (*at - '0');
  return at;
}

} // namespace

char const *vl::scanReal(char const *at, char const *end, double &value) {
  char const *const start = at;
  bool const negative = at < end && *at == '-';
  if (negative || (at < end && *at == '+')) ++at;
  Digits digits;
  at = digits.take(at, end);
  long exponent = 0;
  if (at < end && *at == '.') {
    long const whole = digits.count;
    at = digits.take(at + 1, end);
    exponent = whole - digits.count;
  }
  if (!digits.count || at == end) return nullptr;
  if (*at == 'e' || *at == 'E') {
    ++at;
    bool const small = at < end && *at == '-';
    if (small || (at < end && *at == '+')) ++at;
    long power = 0;
    char const *const first = at;
    at = takeExponent(at, end, power);
    if (at == first || at == end) return nullptr;
    exponent += small ? -power : power;
  }
  if (combine(digits, exponent, value)) {
    if (negative) value = -value;
    return at;
  }
  // Out of a double's range from_chars gives no value, and the C library's rules hold.
  std::from_chars_result const result = std::from_chars(*start == '+' ? start + 1 : start, at, value);
  return result.ec == std::errc() && result.ptr == at ? at : nullptr;
}

char const *vl::scanInteger(char const *at, char const *end, long &value) {
  bool const negative = at < end && *at == '-';
  if (negative || (at < end && *at == '+')) ++at;
  if (end - at < 2 || (*at == '0' && (isDigit(at[1]) || at[1] == 'x'))) return nullptr;
  Digits digits;
  at = digits.take(at, end);
  if (!digits.count || digits.count > 18 || at == end) return nullptr;
  value = static_cast<long>(digits.value);
  if (negative) value = -value;
  return at;
}

double vl::realFrom(char const *text, char const *end) {
  double value;
  if (scanReal(text, end + 1, value) == end) return value; // the NUL is seen behind it
  static locale_t const plain = newlocale(LC_ALL_MASK, "C", nullptr);
  return strtod_l(text, nullptr, plain);
}
