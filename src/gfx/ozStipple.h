#ifndef SRC_GFX_OZ_STIPPLE_H
#define SRC_GFX_OZ_STIPPLE_H

// The polygon stipple patterns of screen-door transparency. A pattern is 32 rows of 32 bits, native words, and goes to
// glPolygonStipple as it stands.

#include "oz/ozMaterial.h"

/// The nearest of the four patterns of whole materials, which stand at 0, 1/3, 2/3 and 1; null for a transparency that
/// rounds to none of them.
OZ_API unsigned int const *ozCoarseStipple(float transparency);

/// Fills ozMaterial::_ditherMatrix. Whoever draws with it makes sure that ozMaterial is registered.
void ozBuildDither();

/// The pattern of a single colour's alpha, clamped to 0 to 1. That alpha 1 gives the empty pattern is meant: here alpha
/// acts as a transparency.
inline unsigned int const *ozDitherStipple(float alpha) {
  double const opaque = alpha > 0.0f ? (alpha < 1.0f ? alpha : 1.0f) : 0.0f;
  return ozMaterial::_ditherMatrix[static_cast<int>((1.0 - opaque) * 1024.0 + 0.5)];
}

#endif
