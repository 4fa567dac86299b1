#ifndef GEOMETRY_OZ_LANE4_H
#define GEOMETRY_OZ_LANE4_H

#include "oz/ozFloat4.h"

#include <math.h>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

// Four floats that are computed with at once, also where the machine has no registers for them. Each lane goes through
// the operations of single floats, and the results are the same to the bit (but min and max of a NaN). Comparisons with
// a NaN are false.

#if OZ_FLOAT4

struct ozLaneMask {
  ozBits4 v;

  // Bit i stands for lane i.
  int bits() const { return ozMask4(v); }
  friend ozLaneMask operator&(ozLaneMask a, ozLaneMask b) { return {a.v & b.v}; }
  friend ozLaneMask operator|(ozLaneMask a, ozLaneMask b) { return {a.v | b.v}; }
  friend ozLaneMask operator~(ozLaneMask a) { return {~a.v}; }
};

struct ozLane4 {
  ozFloat4 v;

  static ozLane4 load(float const *from) { return {ozLoad4(from)}; }
  static ozLane4 fill(float value) { return {ozFill4(value)}; }
  // The components of four vectors, one a lane.
  static void load3(float const *p0, float const *p1, float const *p2, float const *p3, ozLane4 out[3]) {
    for (int i = 0; i < 3; ++i) out[i].v = ozFloat4{p0[i], p1[i], p2[i], p3[i]};
  }
  void store(float *to) const { ozStore4(to, v); }

  friend ozLane4 operator+(ozLane4 a, ozLane4 b) { return {a.v + b.v}; }
  friend ozLane4 operator-(ozLane4 a, ozLane4 b) { return {a.v - b.v}; }
  friend ozLane4 operator*(ozLane4 a, ozLane4 b) { return {a.v * b.v}; }
  friend ozLane4 operator/(ozLane4 a, ozLane4 b) { return {a.v / b.v}; }
  friend ozLaneMask operator<(ozLane4 a, ozLane4 b) { return {a.v < b.v}; }
  friend ozLaneMask operator<=(ozLane4 a, ozLane4 b) { return {a.v <= b.v}; }
  // a where the mask holds, otherwise b.
  friend ozLane4 select(ozLaneMask mask, ozLane4 a, ozLane4 b) {
    return {ozFloatsOf((mask.v & ozBitsOf(a.v)) | (~mask.v & ozBitsOf(b.v)))};
  }
  friend ozLane4 abs(ozLane4 a) { return {ozFloatsOf(ozBitsOf(a.v) & 0x7fffffff)}; }
#ifdef __SSE2__
  friend ozLane4 min(ozLane4 a, ozLane4 b) { return {_mm_min_ps(a.v, b.v)}; }
  friend ozLane4 max(ozLane4 a, ozLane4 b) { return {_mm_max_ps(a.v, b.v)}; }
  friend ozLane4 root(ozLane4 a) { return {_mm_sqrt_ps(a.v)}; }
#else
  friend ozLane4 min(ozLane4 a, ozLane4 b) { return select(a < b, a, b); }
  friend ozLane4 max(ozLane4 a, ozLane4 b) { return select(b < a, a, b); }
  friend ozLane4 root(ozLane4 a) { return {ozFloat4{sqrtf(a.v[0]), sqrtf(a.v[1]), sqrtf(a.v[2]), sqrtf(a.v[3])}}; }
#endif
};

#else

struct ozLaneMask {
  int v;

  int bits() const { return v; }
  friend ozLaneMask operator&(ozLaneMask a, ozLaneMask b) { return {a.v & b.v}; }
  friend ozLaneMask operator|(ozLaneMask a, ozLaneMask b) { return {a.v | b.v}; }
  friend ozLaneMask operator~(ozLaneMask a) { return {~a.v & 15}; }
};

struct ozLane4 {
  float v[4];

  static ozLane4 load(float const *from) { return {{from[0], from[1], from[2], from[3]}}; }
  static ozLane4 fill(float value) { return {{value, value, value, value}}; }
  static void load3(float const *p0, float const *p1, float const *p2, float const *p3, ozLane4 out[3]) {
    for (int i = 0; i < 3; ++i) out[i] = {{p0[i], p1[i], p2[i], p3[i]}};
  }
  void store(float *to) const {
    for (int i = 0; i < 4; ++i) to[i] = v[i];
  }

  template <class Do> static ozLane4 each(ozLane4 const &a, ozLane4 const &b, Do combine) {
    return {{combine(a.v[0], b.v[0]), combine(a.v[1], b.v[1]), combine(a.v[2], b.v[2]), combine(a.v[3], b.v[3])}};
  }
  template <class Test> static ozLaneMask test(ozLane4 const &a, ozLane4 const &b, Test holds) {
    int bits = 0;
    for (int i = 0; i < 4; ++i) bits |= holds(a.v[i], b.v[i]) << i;
    return {bits};
  }
  friend ozLane4 operator+(ozLane4 a, ozLane4 b) {
    return each(a, b, [](float x, float y) { return x + y; });
  }
  friend ozLane4 operator-(ozLane4 a, ozLane4 b) {
    return each(a, b, [](float x, float y) { return x - y; });
  }
  friend ozLane4 operator*(ozLane4 a, ozLane4 b) {
    return each(a, b, [](float x, float y) { return x * y; });
  }
  friend ozLane4 operator/(ozLane4 a, ozLane4 b) {
    return each(a, b, [](float x, float y) { return x / y; });
  }
  friend ozLaneMask operator<(ozLane4 a, ozLane4 b) {
    return test(a, b, [](float x, float y) { return x < y; });
  }
  friend ozLaneMask operator<=(ozLane4 a, ozLane4 b) {
    return test(a, b, [](float x, float y) { return x <= y; });
  }
  friend ozLane4 select(ozLaneMask mask, ozLane4 a, ozLane4 b) {
    ozLane4 result;
    for (int i = 0; i < 4; ++i) result.v[i] = mask.v >> i & 1 ? a.v[i] : b.v[i];
    return result;
  }
  friend ozLane4 abs(ozLane4 a) {
    return each(a, a, [](float x, float) { return fabsf(x); });
  }
  friend ozLane4 min(ozLane4 a, ozLane4 b) { return select(a < b, a, b); }
  friend ozLane4 max(ozLane4 a, ozLane4 b) { return select(b < a, a, b); }
  friend ozLane4 root(ozLane4 a) {
    return each(a, a, [](float x, float) { return sqrtf(x); });
  }
};

#endif
#endif
