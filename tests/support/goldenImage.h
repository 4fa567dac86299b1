#ifndef TESTS_SUPPORT_GOLDEN_IMAGE_H
#define TESTS_SUPPORT_GOLDEN_IMAGE_H

#include "support/image.h"
#include <gtest/gtest.h>

/// How far a picture may be from its golden image: rasterisers differ in rounding and along edges.
struct GoldenTolerance {
  int channel = 8;      ///< Differences of a channel up to this are none.
  double share = 0.005; ///< The share of pixels that may differ by more.
};

/// Compares with tests/golden/<name>.png. On failure <name>.actual.png and <name>.difference.png (white where the
/// pixels differ by more than the tolerance) are written to golden-failures/ in the working directory. With
/// OZ_UPDATE_GOLDEN=1 in the environment the golden image is rewritten instead; look at it before it is committed.
::testing::AssertionResult matchesGolden(Image const &image, std::string const &name, GoldenTolerance = {});

/// The same against the golden image of that path.
::testing::AssertionResult matchesImageFile(Image const &image, std::string const &path, std::string const &failureStem,
                                            GoldenTolerance = {});

/// EXPECT_GOLDEN(gl.pixels(), "sphere_lit") or with a tolerance of its own: EXPECT_GOLDEN(image, "text", {8, 0.02}).
#define EXPECT_GOLDEN(...) EXPECT_TRUE(matchesGolden(__VA_ARGS__))

#endif
