#ifndef OZ_MATH_FLOAT_H
#define OZ_MATH_FLOAT_H

#include "oz/ozVec2f.h"

#include <cmath>

/// @file
/// Small tests and conversions that several value classes share.

/// Whether the value lies strictly within the small epsilon of 0.
inline bool ozIsSmall(float value) { return value > -OZ_EPSILON && value < OZ_EPSILON; }

/// Whether each component does.
inline bool ozIsSmall(ozVec3f const &v) { return ozIsSmall(v._v[0]) && ozIsSmall(v._v[1]) && ozIsSmall(v._v[2]); }

/// Twice the arc cosine, in degrees; the argument is clamped, since rounding takes it past 1.
inline float ozTwiceAcosDegrees(double cosine) {
  double clamped = cosine > 1.0 ? 1.0 : cosine < -1.0 ? -1.0 : cosine;
  return static_cast<float>(2.0 * std::acos(clamped) * static_cast<double>(OZ_TO_DEGREES));
}

#endif
