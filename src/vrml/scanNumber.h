#ifndef VL_SCAN_NUMBER_H
#define VL_SCAN_NUMBER_H

/// Numbers that stand whole in memory. Each function takes the number at the start of a text, and gives where it ends
/// and its value, which is that of the C library's atof and strtol to the last bit. Null where there is none, where the
/// text might go on (the character behind the number must be seen), and for rare forms, which are left to the caller.
namespace vl {

char const *scanReal(char const *at, char const *end, double &value);
/// Decimal digits, not more than a long can hold, without a leading 0.
char const *scanInteger(char const *at, char const *end, long &value);

/// The value of digits with sign, point and exponent, ended by a NUL at `end`.
double realFrom(char const *text, char const *end);

} // namespace vl

#endif
