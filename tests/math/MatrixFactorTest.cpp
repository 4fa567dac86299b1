// Taking matrices apart: eigenvectors, factors, rotations.
#include "math/approx.h"
#include "oz/ozRotation.h"
#include "support/capture.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

ozMatrix4f rotation(float x, float y, float z, float degrees) {
  ozMatrix4f m;
  m.makeRot(x, y, z, degrees * 0.017453292f);
  return m;
}

ozMatrix4f scale(float x, float y, float z) {
  ozMatrix4f m;
  m.makeScale(x, y, z);
  return m;
}

testing::AssertionResult rotationIs(ozRotation const &r, float x, float y, float z, float degrees, float tolerance) {
  float numbers[4], expected[4] = {x, y, z, degrees};
  r.getDegrees(numbers, numbers + 1, numbers + 2, numbers + 3);
  return approxNumbers(numbers, expected, 4, tolerance);
}

TEST(Jacobi3, FindsTheEigenvectorsOfASymmetricMatrix) {
  ozMatrix4f const m(4, 1, -2, 9, 1, 2, 0, 9, -2, 0, 3, 9, 9, 9, 9, 9); // only the 3 by 3 part counts
  float values[3];
  ozVec3f vectors[3];
  int rotations = -1;
  ozMatrix4f::jacobi3(m, values, vectors, rotations);
  EXPECT_GE(rotations, 3);
  for (int i = 0; i < 3; i++) {
    ozVec3f product, expected = vectors[i];
    product.xformVec(vectors[i], m);
    expected *= values[i];
    EXPECT_TRUE(approx(product, expected)) << "eigenvector " << i;
    for (int j = 0; j < 3; j++) EXPECT_NEAR(vectors[i].dot(vectors[j]), i == j, 1e-6);
  }
  EXPECT_NEAR(values[0] + values[1] + values[2], 9, 1e-5);
  EXPECT_NEAR(values[0] * values[1] * values[2], 13, 1e-4); // 4 * 6 - 1 * 3 - 2 * 4
}

TEST(Jacobi3, LeavesADiagonalMatrixAsItIsAndSortsNothing) {
  float values[3];
  ozVec3f vectors[3];
  int rotations = -1;
  ozMatrix4f::jacobi3(scale(3, 1, 2), values, vectors, rotations);
  EXPECT_EQ(rotations, 0);
  EXPECT_EQ(ozVec3f(values), ozVec3f(3, 1, 2));
  for (int i = 0; i < 3; i++) EXPECT_EQ(vectors[i], ozVec3f(i == 0, i == 1, i == 2));
}

TEST(Jacobi3, EndsForWhateverItIsGiven) {
  float values[3];
  ozVec3f vectors[3];
  int rotations;
  ozMatrix4f m;
  m[0][1] = m[1][0] = NAN;
  m[0][2] = m[2][0] = INFINITY;
  ozMatrix4f::jacobi3(m, values, vectors, rotations);
  EXPECT_LE(rotations, 150);
}

TEST(Factor, FindsScaleAndRotation) {
  ozMatrix4f const turn = rotation(1, 2, 3, 40);
  ozMatrix4f m, r, u;
  m.fullMult(scale(2, 3, 4), turn);
  m.setRow(3, ozVec3f(5, 6, 7));
  ozVec3f s, t;
  EXPECT_EQ(m.factor(r, s, u, t), 1);
  EXPECT_EQ(t, ozVec3f(5, 6, 7));
  EXPECT_TRUE(approx(s, ozVec3f(2, 3, 4)));
  EXPECT_TRUE(approx(u, turn));
  EXPECT_TRUE(approx(r, ozMatrix4f()));
}

TEST(Factor, GivesAReflectionNegativeScales) {
  ozMatrix4f r, u;
  ozVec3f s, t;
  EXPECT_EQ(scale(2, 3, -4).factor(r, s, u, t), 1);
  EXPECT_TRUE(approx(s, ozVec3f(-2, -3, -4)));
  EXPECT_TRUE(approx(u, scale(-1, -1, 1)));
}

TEST(Factor, TheRowsAreEigenvectorsAndStandInFrontInTheProduct) {
  ozMatrix4f const orient = rotation(0, 0, 1, 30);
  ozMatrix4f inverse, m, r, u;
  inverse.transpose(orient);
  m.fullMult(inverse, scale(2, 3, 4));
  m.fullMult(m, orient);
  ozVec3f s, t;
  EXPECT_EQ(m.factor(r, s, u, t), 1);
  ozMatrix4f square, transposed, expected, d;
  transposed.transpose(m);
  square.fullMult(m, transposed);
  for (int i = 0; i < 3; i++) {
    ozVec3f row(r[i]), product;
    product.xformVec(row, square);
    row *= s[i] * s[i];
    EXPECT_TRUE(approx(product, row, 1e-4f)) << "row " << i;
    d[i][i] = 1 / s[i];
  }
  transposed.transpose(r);
  expected.fullMult(r, d);
  expected.fullMult(expected, transposed);
  expected.fullMult(expected, m);
  EXPECT_TRUE(approx(u, expected));
}

TEST(Factor, SetsOnlyTheTranslationOfASingularMatrix) {
  ozMatrix4f m = scale(1e-4f, 0.9e-4f, 1e-4f), r = scale(7, 7, 7), u = r; // 0.9e-12
  m.setRow(3, ozVec3f(5, 6, 7));
  ozVec3f s(8, 8, 8), t;
  EXPECT_EQ(m.factor(r, s, u, t), 0);
  EXPECT_EQ(t, ozVec3f(5, 6, 7));
  EXPECT_EQ(s, ozVec3f(8, 8, 8));
  EXPECT_TRUE(r == scale(7, 7, 7) && u == scale(7, 7, 7));
  EXPECT_EQ(scale(1e-4f, 1.1e-4f, 1e-4f).factor(r, s, u, t), 1);
}

TEST(Factor, ResultsMayBeStoredIntoTheMatrix) {
  ozMatrix4f m, r, u, other;
  m.fullMult(scale(2, 3, 4), rotation(1, 2, 3, 40));
  ozVec3f s, t;
  m.factor(r, s, u, t);
  other = m;
  other.factor(r, s, other, t);
  EXPECT_EQ(other, u);
  other = m;
  other.factor(other, s, u, t);
  EXPECT_EQ(other, r);
}

TEST(GetTransforms, GivesTranslationRotationScaleAndOrientation) {
  ozMatrix4f m;
  m.fullMult(scale(2, 3, 4), rotation(0, 3, 4, 40));
  m.setRow(3, ozVec3f(5, 6, 7));
  ozVec3f t, s;
  ozRotation rot, so;
  rot = 0, so = 0;
  m.getTransforms(t, rot, s, so);
  EXPECT_EQ(t, ozVec3f(5, 6, 7));
  EXPECT_TRUE(approx(s, ozVec3f(2, 3, 4)));
  EXPECT_TRUE(rotationIs(rot, 0, 0.6f, 0.8f, 40, 1e-3f));
  EXPECT_TRUE(so.isIdentity());
}

TEST(GetTransforms, GivesAScaleOfZeroForASingularMatrix) {
  ozMatrix4f m = scale(1, 1, 0);
  m.setRow(3, ozVec3f(5, 6, 7));
  ozVec3f t, s(1, 1, 1);
  ozRotation rot(1, 0, 0, 1), so(1, 0, 0, 1);
  m.getTransforms(t, rot, s, so);
  EXPECT_EQ(t, ozVec3f(5, 6, 7));
  EXPECT_EQ(s, ozVec3f());
  EXPECT_TRUE(rot.isIdentity());
  EXPECT_TRUE(so.isIdentity());
}

TEST(GetOrthoRotation, FindsAxisAndAngle) {
  float const axes[4][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {2 / 3.0f, -1 / 3.0f, 2 / 3.0f}};
  for (float const(&a)[3] : axes) {
    for (float degrees : {10.0f, 90.0f, 119.0f, 121.0f, 170.0f}) {
      ozRotation r;
      r = 0;
      rotation(a[0], a[1], a[2], degrees).getOrthoRotation(r);
      ozMatrix4f back;
      r.get(back);
      EXPECT_TRUE(approx(back, rotation(a[0], a[1], a[2], degrees), 2e-5f)) << degrees;
    }
  }
}

TEST(GetOrthoRotation, TakesTheTraceAboveZeroDirectly) {
  ozRotation r;
  r = 0;
  rotation(2 / 3.0f, -1 / 3.0f, 2 / 3.0f, 50).getOrthoRotation(r);
  EXPECT_TRUE(rotationIs(r, 2 / 3.0f, -1 / 3.0f, 2 / 3.0f, 50, 1e-3f));
}

TEST(GetOrthoRotation, TakesTheLargestDiagonalElementOtherwise) {
  ozRotation r;
  r = 0;
  scale(1, -1, -1).getOrthoRotation(r);
  EXPECT_TRUE(rotationIs(r, 1, 0, 0, 180, 1e-3f));
  scale(-1, 1, -1).getOrthoRotation(r);
  EXPECT_TRUE(rotationIs(r, 0, 1, 0, 180, 1e-3f));
  scale(-1, -1, 1).getOrthoRotation(r);
  EXPECT_TRUE(rotationIs(r, 0, 0, 1, 180, 1e-3f));
  ozMatrix4f zero = scale(0, 0, 0); // all equal: the first stands
  zero.getOrthoRotation(r);
  EXPECT_TRUE(rotationIs(r, 1, 0, 0, 180, 1e-3f));
}

TEST(GetOrthoRotation, OfEqualDiagonalElementsTheFirstIsTheLargest) {
  ozRotation r;
  r = 0;
  scale(-1, 0, 0).getOrthoRotation(r); // 1 and 2 are equal: root = sqrt(2) for 1, and the axis is Y
  EXPECT_TRUE(rotationIs(r, 0, 1, 0, 180, 1e-3f));
  scale(0, -1, 0).getOrthoRotation(r); // 0 and 2
  EXPECT_TRUE(rotationIs(r, 1, 0, 0, 180, 1e-3f));
  scale(0, 0, -1).getOrthoRotation(r); // 0 and 1
  EXPECT_TRUE(rotationIs(r, 1, 0, 0, 180, 1e-3f));
}

TEST(GetOrthoRotation, OfTheIdentityIsNone) {
  ozRotation r(1, 0, 0, 1);
  ozMatrix4f().getOrthoRotation(r);
  EXPECT_TRUE(rotationIs(r, 0, 0, 0, 0, 0));
}

TEST(GetOrthoRotation, KeepsTheAngleOfAMatrixWithoutAnAxis) {
  ozRotation r(1, 0, 0, 1);
  scale(0.5f, 0.25f, 0.25f).getOrthoRotation(r); // root = sqrt(2), so the angle is twice acos(0.7071) = 90
  EXPECT_TRUE(rotationIs(r, 0, 0, 0, 90, 1e-3f));
}

TEST(GetOrthoRotation, TakesATraceOfThreeAtMost) { // a root of exactly 2 does not exceed 2
  ozRotation r(1, 0, 0, 1);
  EXPECT_EQ(stderrOf([&] { scale(0.5f, 0.5f, 2).getOrthoRotation(r); }), "");
  EXPECT_TRUE(rotationIs(r, 0, 0, 0, 0, 0));
}

TEST(GetOrthoRotation, TakesTheOtherRoadForATraceOfZero) {
  ozMatrix4f m = scale(0, 0, 0); // root = 1, f = 0.5, so q = (0.5, 0.5 * 0.5, 0) and w = 0.5 * 0.5
  m[0][1] = 0.5f;
  m[1][2] = 0.5f;
  ozRotation r(1, 0, 0, 1);
  m.getOrthoRotation(r);
  float const length = std::sqrt(0.3125f);
  EXPECT_TRUE(rotationIs(r, 0.5f / length, 0.25f / length, 0, 151.04498f, 1e-3f)); // twice acos(0.25)
}

TEST(GetOrthoRotation, RefusesATraceAboveThree) {
  ozRotation r(1, 0, 0, 1), before = r;
  EXPECT_EQ(stderrOf([&] { scale(1, 1, 1.5f).getOrthoRotation(r); }),
            "Warning: Magnitude of the matrix trace is > 3\n");
  EXPECT_EQ(r, before);
}

TEST(GetOrthoRotation, RefusesAScaledMatrix) {
  ozRotation r(1, 0, 0, 1), before = r;
  ozMatrix4f m = scale(0, 0, 0); // root = 1, f = 0.5, w = (m12 - m21) / 2
  m[1][2] = 2.5f;
  EXPECT_EQ(stderrOf([&] { m.getOrthoRotation(r); }), "Matrix is scaled - cannot calculate rotation\n");
  EXPECT_EQ(r, before);
  m[1][2] = NAN;
  EXPECT_EQ(stderrOf([&] { m.getOrthoRotation(r); }), "Matrix is scaled - cannot calculate rotation\n");
  EXPECT_EQ(r, before);
}

} // namespace
