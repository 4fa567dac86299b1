#include "gfx/ozStipple.h"

#include <math.h>
#include <string.h>

unsigned int ozMaterial::_ditherMatrix[1025][32];

namespace {

#define OZ_ROWS4(a, b, c, d) a, b, c, d
#define OZ_ROWS16(...) OZ_ROWS4(__VA_ARGS__), OZ_ROWS4(__VA_ARGS__), OZ_ROWS4(__VA_ARGS__), OZ_ROWS4(__VA_ARGS__)
#define OZ_ROWS32(...) OZ_ROWS16(__VA_ARGS__), OZ_ROWS16(__VA_ARGS__)
#define OZ_FULL OZ_ROWS4(~0u, ~0u, ~0u, ~0u)

unsigned int const CoarseStipples[4][32] = {
    // The empty last four rows are meant.
    {OZ_FULL, OZ_FULL, OZ_FULL, OZ_FULL, OZ_FULL, OZ_FULL, OZ_FULL, OZ_ROWS4(0, 0, 0, 0)},
    {OZ_ROWS32(0x77777777, 0xdddddddd, 0xbbbbbbbb, 0xeeeeeeee)},
    {OZ_ROWS32(0xaaaaaaaa, 0x55555555, 0xaaaaaaaa, 0x55555555)},
    {OZ_ROWS32(0x88888888, 0x22222222, 0x44444444, 0x11111111)},
};

// The bits of a 5-bit number in reverse order, each followed by a 0.
unsigned int spread(unsigned int v) {
  unsigned int result = 0;
  for (int bit = 0; bit < 5; ++bit) result |= (v >> (4 - bit) & 1) << (2 * bit);
  return result;
}

} // namespace

unsigned int const *ozCoarseStipple(float transparency) {
  float const v = transparency * 3.0f;
  float const f = floorf(v);
  if (!(f >= -1.0f && f <= 3.0f)) return nullptr;
  int const i = static_cast<int>(f) + (v - f > 0.5f ? 1 : 0);
  return i >= 0 && i < 4 ? CoarseStipples[i] : nullptr;
}

// Ordered dither after Bayer, "An optimum method for two-level rendition of continuous-tone pictures" (1973): the
// matrix spread(row) | 2 * spread(col ^ row) holds each number of 0 to 1023 once, and pattern i has the bits below i.
void ozBuildDither() {
  unsigned int where[1024];
  for (unsigned int row = 0; row < 32; ++row)
    for (unsigned int col = 0; col < 32; ++col) where[spread(row) | 2 * spread(col ^ row)] = row * 32 + col;
  for (int i = 0; i < 1024; ++i) {
    unsigned int(&next)[32] = ozMaterial::_ditherMatrix[i + 1];
    memcpy(next, ozMaterial::_ditherMatrix[i], sizeof next);
    next[where[i] / 32] |= 1u << where[i] % 32;
  }
}
