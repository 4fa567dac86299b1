#ifndef OZ_FLOAT4_H
#define OZ_FLOAT4_H

#include <string.h>

/// @file
/// Four floats that are computed with at once, where the machine has registers for them (SSE2, NEON). Each lane goes
/// through the operations of the scalar form in their order, so both give the same bits. Code that uses them keeps the
/// scalar form beside it, for other machines and as the text to read.

#if defined(__GNUC__) && (defined(__SSE2__) || defined(__ARM_NEON)) && !defined(OZ_SCALAR)
#define OZ_FLOAT4 1

typedef float ozFloat4 __attribute__((vector_size(16)));
/// The bits of four floats; comparisons give all bits of a lane or none.
typedef int ozBits4 __attribute__((vector_size(16)));

/// Four floats from anywhere; all four are read.
inline ozFloat4 ozLoad4(float const *from) {
  ozFloat4 value;
  memcpy(&value, from, sizeof value);
  return value;
}
inline void ozStore4(float *to, ozFloat4 value) { memcpy(to, &value, sizeof value); }
/// Stores the first three.
inline void ozStore3(float *to, ozFloat4 value) {
  memcpy(to, &value, 2 * sizeof(float));
  to[2] = value[2];
}
inline ozFloat4 ozFill4(float value) { return ozFloat4{value, value, value, value}; }

inline ozBits4 ozBitsOf(ozFloat4 value) { return reinterpret_cast<ozBits4>(value); }
inline ozFloat4 ozFloatsOf(ozBits4 bits) { return reinterpret_cast<ozFloat4>(bits); }
/// Lanes of a value in any order.
template <int A, int B, int C, int D> inline ozFloat4 ozLanesOf(ozFloat4 value) {
#ifdef __SSE2__
  return ozFloatsOf(__builtin_ia32_pshufd(ozBitsOf(value), A | B << 2 | C << 4 | D << 6));
#else
  return ozFloat4{value[A], value[B], value[C], value[D]};
#endif
}
/// Four times the value of one lane.
template <int LANE> inline ozFloat4 ozLane4Of(ozFloat4 value) { return ozLanesOf<LANE, LANE, LANE, LANE>(value); }
/// a where it is below b, otherwise b: as the comparison says for zeros and for what is no number.
inline ozFloat4 ozMin4(ozFloat4 a, ozFloat4 b) {
#ifdef __SSE2__
  return __builtin_ia32_minps(a, b);
#else
  return a < b ? a : b;
#endif
}
/// a where it is above b, otherwise b.
inline ozFloat4 ozMax4(ozFloat4 a, ozFloat4 b) {
#ifdef __SSE2__
  return __builtin_ia32_maxps(a, b);
#else
  return a > b ? a : b;
#endif
}
/// The highest bit of each lane, the first lane's lowest.
inline int ozMask4(ozBits4 bits) {
#ifdef __SSE2__
  return __builtin_ia32_movmskps(ozFloatsOf(bits));
#else
  ozBits4 const places = {1, 2, 4, 8};
  ozBits4 const set = (bits < 0) & places;
  return set[0] | set[1] | set[2] | set[3];
#endif
}

#else
#define OZ_FLOAT4 0
#endif

#endif
