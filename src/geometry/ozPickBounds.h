#ifndef GEOMETRY_OZ_PICK_BOUNDS_H
#define GEOMETRY_OZ_PICK_BOUNDS_H

#include <float.h>

#include "geometry/ozTriSearch.h"

// How far outside of a triangle ozTriSearch can find a hit on it, by its rounding alone.
//
// Let e be the rounding of one operation (2^-24), L the longest component of an edge, q = L * L / |det| (large for a
// sliver), O the largest component of the ray's origin, M that of all corners. Followed through the test, the errors
// put an accepted point, taken exactly on the ray, outside of the triangle's box by
//   - what the triangle itself brings: projected determinant and barycentric coordinates at most 36 e q L, the slope of
//     the computed plane 38 e q L more;
//   - what the ray brings: e (66 M + 42 O), of which the distance along the ray has the greater part, since the plane
//     is met to within e (49 M + 25 O); the small part is the rounding of the point.
// The first is added to the box of each triangle. The second, and 6 e (M + O) for the arithmetic of the box test, are
// added to the boxes when a ray is tested. Both have slack. The bounds hold while e q is small and nothing overflows
// or is smaller than the numbers that the test clamps: other triangles have no bounds, and are tested for every ray.
namespace ozPickBounds {

float const ROUNDING = FLT_EPSILON / 2;
float const TRI_FACTOR = 96 * ROUNDING; // times q L
float const RAY_FACTOR = 96 * ROUNDING; // times M + O
float const LARGEST = 1e18f;            // of coordinates and origins

enum KindEnum { NEVER_HIT, BOUNDED, UNBOUNDED };

// The padded box of a triangle. One whose normal is zero or no number is never hit, because no comparison of the test
// lets it pass.
inline KindEnum around(ozVec3f const &a, ozVec3f const &b, ozVec3f const &c, float *low, float *high) {
  ozTriCache cache;
  ozCacheTri(cache, a, b, c);
  ozVec3f const &normal = cache.plane.normal;
  float const sum = fabsf(normal._v[0]) + fabsf(normal._v[1]) + fabsf(normal._v[2]);
  if (!(sum > 0.0f)) return NEVER_HIT;
  ozVec3f ab, ac;
  ab.sub(b, a);
  ac.sub(c, a);
  float const inv = fabsf(cache.invDet);
  auto const larger = [](float x, float y) { return x > y ? x : y; };
  float longest = 0, largest = 0;
  for (int i = 0; i < 3; ++i) {
    float const x = a._v[i], y = b._v[i], z = c._v[i];
    low[i] = x < y ? (x < z ? x : z) : (y < z ? y : z);
    high[i] = x > y ? (x > z ? x : z) : (y > z ? y : z);
    longest = larger(longest, larger(fabsf(ab._v[i]), fabsf(ac._v[i])));
    largest = larger(largest, larger(-low[i], high[i]));
  }
  float const spread = TRI_FACTOR * longest * longest * inv;
  if (!(spread <= 0.5f && largest <= LARGEST && inv < 0.9f / OZ_TINY_EPSILON)) return UNBOUNDED;
  float const pad = spread * longest;
  for (int i = 0; i < 3; ++i) {
    low[i] -= pad;
    high[i] += pad;
  }
  return BOUNDED;
}

} // namespace ozPickBounds

#endif
