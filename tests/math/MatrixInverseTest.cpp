#include "math/approx.h"
#include "support/capture.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

ozMatrix4f affine() { return ozMatrix4f(1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 10, 0, 11, 12, 13, 1); }

// A rotation, scaled, with a translation.
ozMatrix4f placed(float scale) {
  ozMatrix4f m;
  m.makeRot(1, 2, 3, 0.7f);
  m.postScale(m, scale, scale, scale);
  m.setRow(3, ozVec3f(5, -6, 7));
  return m;
}

// Whether the product is the identity.
testing::AssertionResult inverse(ozMatrix4f const &a, ozMatrix4f const &b, float tolerance) {
  ozMatrix4f m;
  m.fullMult(a, b);
  return approx(m, ozMatrix4f(), tolerance);
}

bool finite(ozMatrix4f const &m) {
  for (int i = 0; i < 16; i++) {
    if (!std::isfinite(m[i / 4][i % 4])) return false;
  }
  return true;
}

TEST(InvertAffine, GivesTheInverse) {
  ozMatrix4f m;
  EXPECT_EQ(stderrOf([&] { m.invertAffine(affine()); }), "");
  EXPECT_TRUE(inverse(m, affine(), 1e-4f));
  EXPECT_TRUE(inverse(affine(), m, 1e-4f));
  // Adjugate over -3: the first row is (50 - 48, -(20 - 24), 12 - 15) / -3.
  EXPECT_TRUE(approx(ozVec3f(m[0]), ozVec3f(-2 / 3.0f, -4 / 3.0f, 1)));
}

TEST(InvertAffine, MayBeStoredIntoTheOperand) {
  ozMatrix4f m = affine(), expected;
  expected.invertAffine(m);
  m.invertAffine(m);
  EXPECT_EQ(m, expected);
}

TEST(InvertAffine, IgnoresTheFourthColumn) {
  ozMatrix4f m = affine(), expected;
  expected.invertAffine(m);
  m.setCol(3, 5, 6, 7, 8);
  m.invertAffine(m);
  EXPECT_EQ(m, expected);
}

TEST(InvertAffine, ReportsASingularMatrixAndGoesOnWithADeterminantOfOne) {
  ozMatrix4f singular = affine(), m;
  singular.setRow(2, ozVec3f(2, 4, 6)); // twice the first
  EXPECT_EQ(stderrOf([&] { m.invertAffine(singular); }), "(WARN, USAGE): No inverse: singular matrix\n\n");
  // The adjugate itself: its first row is (30 - 24, -(12 - 12), 12 - 15).
  EXPECT_EQ(ozVec3f(m[0]), ozVec3f(6, 0, -3));
}

TEST(InvertAffine, GivesAFiniteMatrixForZero) {
  ozMatrix4f zero(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 5, 6, 7, 1), m;
  EXPECT_EQ(stderrOf([&] { m.invertAffine(zero); }), "(WARN, USAGE): No inverse: singular matrix\n\n");
  EXPECT_TRUE(finite(m));
  EXPECT_EQ(m[3][3], 1);
}

TEST(InvertAffine, TakesADeterminantAboveTheTinyEpsilon) {
  ozMatrix4f m;
  m.makeScale(1.1e-5f, 1e-5f, 1e-5f); // 1.1e-15
  EXPECT_EQ(stderrOf([&] { m.invertAffine(m); }), "");
  EXPECT_NEAR(m[0][0] / (1 / 1.1e-5f), 1, 1e-5);
  m.makeScale(0.9e-5f, 1e-5f, 1e-5f);
  EXPECT_NE(stderrOf([&] { m.invertAffine(m); }), "");
}

TEST(InvertAffine, DoesNotCallAMatrixSingularThatIsNoNumber) { // its determinant is not below the tiny epsilon
  ozMatrix4f m = affine();
  m[1][1] = NAN;
  EXPECT_EQ(stderrOf([&] { m.invertAffine(m); }), "");
  EXPECT_TRUE(std::isnan(m[0][0]));
  m = affine();
  m[1][1] = NAN;
  EXPECT_EQ(stderrOf([&] { m.invertOrtho(m); }), "");
}

TEST(InvertOrtho, InvertsARotationWithUniformScale) {
  ozMatrix4f m;
  EXPECT_EQ(stderrOf([&] { m.invertOrtho(placed(2.5f)); }), "");
  EXPECT_TRUE(inverse(m, placed(2.5f), 1e-5f));
  m = placed(0.25f);
  m.invertOrtho(m);
  EXPECT_TRUE(inverse(m, placed(0.25f), 1e-5f));
}

TEST(InvertOrtho, ReportsASingularMatrixAndGoesOnWithADeterminantOfOne) {
  ozMatrix4f m;
  m.makeScale(2, 3, 0);
  m.setRow(3, ozVec3f(1, 1, 1));
  EXPECT_EQ(stderrOf([&] { m.invertOrtho(m); }), "(WARN, USAGE): singular matrix\n\n");
  EXPECT_EQ(m, ozMatrix4f(2, 0, 0, 0, 0, 3, 0, 0, 0, 0, 0, 0, -2, -3, 0, 1)); // the transpose, the translation by it
}

TEST(InvertOrtho, ForcesTheFourthColumn) {
  ozMatrix4f m = placed(2), expected;
  expected.invertOrtho(m);
  m.setCol(3, 5, 6, 7, 8);
  m.invertOrtho(m);
  EXPECT_EQ(m, expected);
}

TEST(InvertOrthoNorm, InvertsARotationWithATranslation) {
  ozMatrix4f m;
  m.invertOrthoNorm(placed(1));
  EXPECT_TRUE(inverse(m, placed(1), 1e-5f));
  m = placed(1);
  m.invertOrthoNorm(m);
  EXPECT_TRUE(inverse(m, placed(1), 1e-5f));
}

TEST(InvertOrthoNorm, IsTheTransposeWhateverTheScale) {
  ozMatrix4f m;
  m.makeScale(2, 3, 4);
  m.setRow(3, ozVec3f(1, 1, 1));
  m.invertOrthoNorm(m);
  EXPECT_EQ(m, ozMatrix4f(2, 0, 0, 0, 0, 3, 0, 0, 0, 0, 4, 0, -2, -3, -4, 1));
}

TEST(InvertFull, InvertsAnyMatrix) {
  ozMatrix4f const a(1, 2, 0, 1, 0, 1, 3, 0, 2, 0, 1, 1, 1, 1, 0, 2);
  ozMatrix4f m;
  EXPECT_EQ(m.invertFull(a), 1);
  EXPECT_TRUE(inverse(m, a, 1e-5f));
  EXPECT_TRUE(inverse(a, m, 1e-5f));
  m = a;
  EXPECT_EQ(m.invertFull(m), 1);
  EXPECT_TRUE(inverse(m, a, 1e-5f));
}

TEST(InvertFull, InvertsAMatrixThatNeedsPivots) {
  ozMatrix4f const a(0, 2, 0, 0, 3, 0, 0, 0, 0, 0, 0, 5, 0, 0, 7, 0);
  ozMatrix4f m;
  EXPECT_EQ(m.invertFull(a), 1);
  EXPECT_TRUE(inverse(m, a, 1e-6f));
}

TEST(InvertFull, TakesTheGeneralRoadForATranslation) {
  ozMatrix4f a = affine(), m;
  EXPECT_EQ(m.invertFull(a), 1);
  EXPECT_TRUE(inverse(m, a, 1e-4f));
  // Rows too small for the decomposition tell the roads apart: the affine one would go through.
  a.makeScale(1e-6f, 1, 1);
  a.setRow(3, ozVec3f(1, 2, 3));
  EXPECT_EQ(m.invertFull(a), 0);
}

TEST(InvertFull, TakesTheAffineRoadForAMatrixWithoutATranslation) {
  ozMatrix4f a, m;
  a.makeScale(1e-6f, 1, 1);
  EXPECT_EQ(m.invertFull(a), 1);
  EXPECT_NEAR(m[0][0] * 1e-6f, 1, 1e-6);
  // The last row is looked at, not the last column, which the affine road then forces.
  a.makeScale(2, 2, 2);
  a[0][3] = 5;
  EXPECT_EQ(m.invertFull(a), 1);
  EXPECT_EQ(m, ozMatrix4f(0.5f, 0, 0, 0, 0, 0.5f, 0, 0, 0, 0, 0.5f, 0, 0, 0, 0, 1));
}

TEST(InvertFull, TakesTheGeneralRoadForAnyElementOfTheLastRow) {
  for (int i = 0; i < 4; i++) { // the affine road would go through the small row
    ozMatrix4f a, m;
    a.makeScale(1e-6f, 1, 1);
    a[3][i] = 2;
    EXPECT_EQ(m.invertFull(a), 0) << i;
    EXPECT_EQ(m, ozMatrix4f()) << i;
  }
  ozMatrix4f a, m;
  a[3][3] = 4; // the affine road would make it 1
  EXPECT_EQ(m.invertFull(a), 1);
  EXPECT_EQ(m, ozMatrix4f(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0.25f));
}

TEST(InvertFull, MakesTheIdentityIfThereIsNoInverse) {
  ozMatrix4f const counted(1, 2, 3, 4, 2, 4, 6, 8, 9, 10, 11, 12, 13, 14, 15, 16);
  ozMatrix4f m = affine();
  EXPECT_EQ(stderrOf([&] { EXPECT_EQ(m.invertFull(counted), 0); }), "");
  EXPECT_EQ(m, ozMatrix4f());
}

TEST(LUDecomp, RefusesARowOfSmallElements) {
  ozMatrix4f m;
  int index[4];
  m[2][2] = 0.99e-5f;
  ozMatrix4f const before = m;
  EXPECT_EQ(m.LUDecompMat(index), 0);
  EXPECT_EQ(m, before);
  m[2][2] = 1.01e-5f;
  EXPECT_EQ(m.LUDecompMat(index), 1);
  m.makeIdent();
  m[2][2] = -1.01e-5f;
  EXPECT_EQ(m.LUDecompMat(index), 1);
}

TEST(LUDecomp, RefusesAZeroPivot) {
  ozMatrix4f m(1, 1, 0, 0, 1, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
  int index[4];
  EXPECT_EQ(m.LUDecompMat(index), 0);
}

TEST(LUDecomp, FactorsTimesEachOtherAreThePermutedMatrix) {
  ozMatrix4f const a(1, 2, 0, 1, 0, 1, 3, 0, 2, 0, 1, 1, 1, 1, 0, 2);
  ozMatrix4f lu = a, l, u, m, permuted = a;
  int index[4];
  ASSERT_EQ(lu.LUDecompMat(index), 1);
  for (int i = 0; i < 4; i++) {
    for (int j = 0; j < 4; j++) {
      l[i][j] = i > j ? lu[i][j] : i == j;
      u[i][j] = i <= j ? lu[i][j] : 0;
    }
  }
  for (int i = 0; i < 4; i++) {
    for (int j = 0; j < 4; j++) std::swap(permuted[i][j], permuted[index[i]][j]);
  }
  m.fullMult(l, u);
  EXPECT_TRUE(approx(m, permuted, 1e-6f));
}

TEST(LUDecomp, ThePivotIsChosenRelativeToItsRow) {
  // In the first column 8 is the larger element, but against its row's 100 it is the smaller.
  ozMatrix4f m(8, 100, 0, 0, 1, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
  int index[4];
  ASSERT_EQ(m.LUDecompMat(index), 1);
  EXPECT_EQ(index[0], 1);
}

TEST(LUBackSub, SolvesForAnyRightHandSide) {
  ozMatrix4f m(1, 2, 0, 1, 0, 1, 3, 0, 2, 0, 1, 1, 1, 1, 0, 2);
  int index[4];
  ASSERT_EQ(m.LUDecompMat(index), 1);
  float b[4] = {1 * 1 + 2 * 2 + 4, 2 + 3 * 3, 2 + 3 + 4, 1 + 2 + 2 * 4}; // times the column (1, 2, 3, 4)
  m.LUBackSubMat(index, b);
  EXPECT_TRUE(approx(ozVec4f(b), ozVec4f(1, 2, 3, 4)));
  float zeros[4] = {0, 0, 0, 0};
  m.LUBackSubMat(index, zeros);
  EXPECT_EQ(ozVec4f(zeros), ozVec4f());
}

} // namespace
