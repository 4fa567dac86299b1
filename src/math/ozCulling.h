#ifndef OZ_MATH_CULLING_H
#define OZ_MATH_CULLING_H

#include "math/ozBox4.h"
#include "oz/ozFrustum.h"

/// @file
/// The test of a box against a frustum, which culling asks for every node: a part of the culling action's own code.

#if OZ_FLOAT4

/// Whether all corners are inside all planes, as far as that shows at once: no box that has numbers of no size in it.
/// For boxes that are not turned inside out. A corner is inside a plane if the one along its normal is, the sum of the
/// larger products: the four sides are tested at once. Near and far plane stand across the Z axis.
inline bool ozFrustum::isWellInside(ozBox4 const &box) const {
  ozFloat4 const x = ozLoad4(_sides.normals[0]), y = ozLoad4(_sides.normals[1]), z = ozLoad4(_sides.normals[2]);
  ozFloat4 const farthest = ozMax4(x * ozLane4Of<0>(box.low), x * ozLane4Of<0>(box.high)) +
                            ozMax4(y * ozLane4Of<1>(box.low), y * ozLane4Of<1>(box.high)) +
                            ozMax4(z * ozLane4Of<2>(box.low), z * ozLane4Of<2>(box.high));
  ozBits4 const inDepth = (ozLoad4(_sides.highest) >= box.high) & (box.low >= ozLoad4(_sides.lowest));
  return (ozMask4(ozLoad4(_sides.offsets) >= farthest) & (ozMask4(inDepth) | 8)) == 15;
}

inline int ozFrustum::containsMovedInline(ozBoxBound const &box, ozMatrix4f const &toEye) const {
  ozBox4 const own = ozBox4::of(box);
  if (own.isEmpty()) return 0; // once moved it would no longer be empty
  ozBox4 const moved = own.moved(toEye);
  return __builtin_expect(isWellInside(moved), 1) ? 7 : contains(moved);
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
