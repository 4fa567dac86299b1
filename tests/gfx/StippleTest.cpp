// The dither table of the screen door.

#include <gtest/gtest.h>

#include "gfx/ozStipple.h"
#include "oz/OzScene3D.h"

namespace {

class Stipple : public ::testing::Test {
protected:
  void SetUp() override { ozMaterial::getClassType(); }
};

int bitsOf(unsigned int const *pattern) {
  int bits = 0;
  for (int row = 0; row < 32; ++row) bits += __builtin_popcount(pattern[row]);
  return bits;
}

// The threshold of a place by its definition: bit 4 of v goes to bit 0, bit 3 to 2, bit 2 to 4, bit 1 to 6, bit 0 to 8.
int spread(int v) {
  return ((v & 16) ? 1 : 0) | ((v & 8) ? 4 : 0) | ((v & 4) ? 16 : 0) | ((v & 2) ? 64 : 0) | ((v & 1) ? 256 : 0);
}

TEST_F(Stipple, EachPatternHasAsManyBitsAsItsNumber) {
  for (int i = 0; i <= 1024; ++i) ASSERT_EQ(bitsOf(ozMaterial::_ditherMatrix[i]), i);
}

TEST_F(Stipple, EachPatternContainsTheOneBeforeIt) {
  for (int i = 1; i <= 1024; ++i)
    for (int row = 0; row < 32; ++row)
      ASSERT_EQ(ozMaterial::_ditherMatrix[i - 1][row] & ~ozMaterial::_ditherMatrix[i][row], 0u) << i;
}

TEST_F(Stipple, ABitIsOnWhereTheThresholdIsBelowTheNumber) {
  for (int i : {0, 1, 2, 100, 512, 1023, 1024})
    for (int row = 0; row < 32; ++row)
      for (int col = 0; col < 32; ++col) {
        bool const on = (ozMaterial::_ditherMatrix[i][row] >> col & 1) != 0;
        ASSERT_EQ(on, (spread(row) | 2 * spread(col ^ row)) < i) << i << ' ' << row << ' ' << col;
      }
}

TEST_F(Stipple, TakesAsMuchStorageAsItsPatterns) { EXPECT_EQ(sizeof ozMaterial::_ditherMatrix, 131200u); }

TEST_F(Stipple, AnOpaqueColourSelectsTheEmptyPatternAndAClearOneTheFull) {
  EXPECT_EQ(ozDitherStipple(1.0f), ozMaterial::_ditherMatrix[0]);
  EXPECT_EQ(ozDitherStipple(0.0f), ozMaterial::_ditherMatrix[1024]);
}

TEST_F(Stipple, AlphaSelectsByRoundedThousandAndTwentyFourths) {
  EXPECT_EQ(ozDitherStipple(0.5f), ozMaterial::_ditherMatrix[512]);
  EXPECT_EQ(ozDitherStipple(1.0f - 1.4f / 1024), ozMaterial::_ditherMatrix[1]);
  EXPECT_EQ(ozDitherStipple(1.0f - 1.6f / 1024), ozMaterial::_ditherMatrix[2]);
}

TEST_F(Stipple, AlphaIsClamped) {
  EXPECT_EQ(ozDitherStipple(7.0f), ozMaterial::_ditherMatrix[0]);
  EXPECT_EQ(ozDitherStipple(-7.0f), ozMaterial::_ditherMatrix[1024]);
  EXPECT_EQ(ozDitherStipple(__builtin_nanf("")), ozMaterial::_ditherMatrix[1024]);
}

TEST_F(Stipple, TheFirstCoarsePatternIsFullButForItsLastFourRows) {
  unsigned int const *const pattern = ozCoarseStipple(0);
  for (int row = 0; row < 28; ++row) EXPECT_EQ(pattern[row], 0xffffffffu);
  for (int row = 28; row < 32; ++row) EXPECT_EQ(pattern[row], 0u);
}

TEST_F(Stipple, TheOtherCoarsePatternsRepeat) {
  unsigned int const rows[3][4] = {{0x77777777, 0xdddddddd, 0xbbbbbbbb, 0xeeeeeeee},
                                   {0xaaaaaaaa, 0x55555555, 0xaaaaaaaa, 0x55555555},
                                   {0x88888888, 0x22222222, 0x44444444, 0x11111111}};
  float const transparencies[3] = {0.333f, 0.667f, 1.0f};
  for (int i = 0; i < 3; ++i)
    for (int row = 0; row < 32; ++row) EXPECT_EQ(ozCoarseStipple(transparencies[i])[row], rows[i][row % 4]);
}

TEST_F(Stipple, TransparencySelectsTheNearestCoarsePattern) {
  EXPECT_EQ(ozCoarseStipple(-0.1f), ozCoarseStipple(0.0f)); // -0.3 is 0.7 above -1
  EXPECT_EQ(ozCoarseStipple(0.16f), ozCoarseStipple(0.0f));
  EXPECT_EQ(ozCoarseStipple(0.17f), ozCoarseStipple(0.333f));
  EXPECT_EQ(ozCoarseStipple(0.5f), ozCoarseStipple(0.333f)); // 1.5 is not above one half
  EXPECT_EQ(bitsOf(ozCoarseStipple(1.0f)), 256);             // still a quarter of the pixels
}

TEST_F(Stipple, ATransparencyBeyondTheCoarsePatternsHasNone) {
  EXPECT_TRUE(ozCoarseStipple(1.16f));  // 3.48
  EXPECT_FALSE(ozCoarseStipple(1.17f)); // 3.51
  EXPECT_FALSE(ozCoarseStipple(1e30f));
  EXPECT_TRUE(ozCoarseStipple(-0.16f));  // -0.48, above -1 by more than one half
  EXPECT_FALSE(ozCoarseStipple(-0.17f)); // -0.51
  EXPECT_FALSE(ozCoarseStipple(-0.4f));
  EXPECT_FALSE(ozCoarseStipple(__builtin_nanf("")));
}

} // namespace
