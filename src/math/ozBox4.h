#ifndef OZ_MATH_BOX4_H
#define OZ_MATH_BOX4_H

#include "oz/ozBound.h"
#include "oz/ozFloat4.h"

/// @file
/// A box in two registers, as culling moves it into the eye's space.

#if OZ_FLOAT4

struct ozBox4 {
  ozFloat4 low, high; // the fourth lanes mean nothing

  /// The box of a transformed box. J. Arvo, "Transforming axis-aligned bounding boxes", Graphics Gems, 1990.
  static ozBox4 moved(ozBoxBound const &box, ozMatrix4f const &m) {
    ozFloat4 low = ozLoad4(m._m[3]), high = low;
    for (int i = 0; i < 3; i++) {
      ozFloat4 const row = ozLoad4(m._m[i]), a = box.min._v[i] * row, b = box.max._v[i] * row;
      low += ozMin4(a, b);
      high += ozMax4(b, a);
    }
    return {low, high};
  }
};

#endif
#endif
