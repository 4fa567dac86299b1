#ifndef OZ_MATH_BOX4_H
#define OZ_MATH_BOX4_H

#include "oz/ozBound.h"
#include "oz/ozFloat4.h"

/// @file
/// A box in two registers, as culling moves it into the eye's space.

#if OZ_FLOAT4

struct ozBox4 {
  ozFloat4 low, high; // the fourth lanes mean nothing

  static ozBox4 of(ozBoxBound const &box) {
    return {ozLoad4(box.min._v), ozLanesOf<1, 2, 3, 3>(ozLoad4(box.max._v - 1))}; // min ends where max begins
  }

  bool isEmpty() const { return (ozMask4(low > high) & 7) != 0; }

  /// The box of this box, transformed. J. Arvo, "Transforming axis-aligned bounding boxes", Graphics Gems, 1990.
  ozBox4 moved(ozMatrix4f const &m) const {
    ozFloat4 const start = ozLoad4(m._m[3]);
    ozBox4 sum = {start, start};
    sum.addAxis(ozLane4Of<0>(low), ozLane4Of<0>(high), ozLoad4(m._m[0]));
    sum.addAxis(ozLane4Of<1>(low), ozLane4Of<1>(high), ozLoad4(m._m[1]));
    sum.addAxis(ozLane4Of<2>(low), ozLane4Of<2>(high), ozLoad4(m._m[2]));
    return sum;
  }

private:
  void addAxis(ozFloat4 from, ozFloat4 to, ozFloat4 row) {
    ozFloat4 const a = from * row, b = to * row;
    low += ozMin4(a, b);
    high += ozMax4(b, a);
  }
};

#endif
#endif
