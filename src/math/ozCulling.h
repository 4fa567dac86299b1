#ifndef OZ_MATH_CULLING_H
#define OZ_MATH_CULLING_H

#include "math/ozBox4.h"
#include "oz/ozFrustum.h"

/// @file
/// The test of a box against a frustum, which culling asks for every node: a part of the culling action's own code.

#if OZ_FLOAT4

// A box is outside a plane if its corner against the normal is, and inside if the one along the normal is; only between
// the two do the other corners count. Of the products with a component of the normal the smaller one belongs to the
// corner against it. The four sides are tested at once; the near and the far plane stand across the Z axis, so that a
// box of finite numbers meets them with its depth alone.
inline int ozFrustum::contains(ozBox4 const &box) const {
  ozFloat4 nearest = {}, farthest = {};
  for (int i = 0; i < 3; i++) {
    ozFloat4 const normal = ozLoad4(_sides.normals[i]);
    ozFloat4 const a = normal * ozFill4(box.low[i]), b = normal * ozFill4(box.high[i]);
    nearest = i == 0 ? ozMin4(a, b) : nearest + ozMin4(a, b);
    farthest = i == 0 ? ozMax4(a, b) : farthest + ozMax4(a, b);
  }
  ozFloat4 const spread = box.high - box.low, offsets = ozLoad4(_sides.offsets);
  // Infinite, or turned inside out.
  if (__builtin_expect((ozMask4((spread >= 0) & (spread * 0 == 0)) & 7) != 7, 0)) return containsOdd(box);
  float const low = box.low[2], high = box.high[2];
  if (ozMask4(offsets >= nearest) != 15 || !(-_near >= low) || !(_far >= -high)) return 0;
  if (__builtin_expect(ozMask4(offsets >= farthest) != 15, 0)) return containsCrossing(box);
  // Across the near or the far plane four corners are inside.
  return -_near >= high && _far >= -low ? 7 : static_cast<int>(ozBound::BOUND_MAYBE);
}

inline int ozFrustum::containsMovedInline(ozBoxBound const &box, ozMatrix4f const &toEye) const {
  if (box.ozBoxBound::isEmpty()) return 0; // once moved it would no longer be empty
  return contains(ozBox4::moved(box, toEye));
}

#else

inline int ozFrustum::containsMovedInline(ozBoxBound const &box, ozMatrix4f const &toEye) const {
  if (box.ozBoxBound::isEmpty()) return 0; // once moved it would no longer be empty
  ozBoxBound moved;
  moved.xform(&box, toEye);
  return ozFrustum::contains(&moved);
}

#endif
#endif
