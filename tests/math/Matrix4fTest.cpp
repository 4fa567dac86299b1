#include "math/approx.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>

namespace {

float const PI = 3.14159265f;

// The elements 1 to 16, row by row.
ozMatrix4f counted() { return ozMatrix4f(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16); }

// An affine matrix without symmetry.
ozMatrix4f affine() { return ozMatrix4f(1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 10, 0, 11, 12, 13, 1); }
ozMatrix4f otherAffine() { return ozMatrix4f(2, 0, 1, 0, 1, 3, 0, 0, 0, 1, 4, 0, 5, 6, 7, 1); }

ozMatrix4f scale(float x, float y, float z) { return ozMatrix4f(x, 0, 0, 0, 0, y, 0, 0, 0, 0, z, 0, 0, 0, 0, 1); }
ozMatrix4f trans(float x, float y, float z) { return ozMatrix4f(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, y, z, 1); }

// The whole product by the definition, in double.
ozMatrix4f product(ozMatrix4f const &a, ozMatrix4f const &b) {
  ozMatrix4f r;
  for (int i = 0; i < 4; i++) {
    for (int j = 0; j < 4; j++) {
      double sum = 0;
      for (int k = 0; k < 4; k++) sum += static_cast<double>(a[i][k]) * b[k][j];
      r[i][j] = static_cast<float>(sum);
    }
  }
  return r;
}

// Turns a vector about a unit axis by Rodrigues' formula, in double.
ozVec3f turned(ozVec3f const &v, ozVec3f const &axis, double angle) {
  double c = std::cos(angle), s = std::sin(angle), along = 0;
  for (int i = 0; i < 3; i++) along += static_cast<double>(v[i]) * axis[i];
  ozVec3f across, r;
  across.cross(axis, v);
  for (int i = 0; i < 3; i++) r[i] = static_cast<float>(v[i] * c + across[i] * s + axis[i] * along * (1 - c));
  return r;
}

void expectTurns(ozMatrix4f const &m, ozVec3f axis, float angle) {
  axis.normalize();
  for (ozVec3f const &v : {ozVec3f(1, 0, 0), ozVec3f(0, 1, 0), ozVec3f(0, 0, 1), ozVec3f(1, 2, 3)}) {
    ozVec3f r;
    r.xformPt(v, m);
    EXPECT_TRUE(approx(r, turned(v, axis, angle)));
  }
  for (int i = 0; i < 4; i++) {
    EXPECT_EQ(m[i][3], i == 3);
    EXPECT_EQ(m[3][i], i == 3);
  }
}

TEST(Matrix4f, IsSixteenFloatsRowByRow) {
  ozMatrix4f m = counted();
  EXPECT_EQ(sizeof m, 64u);
  float const *floats = reinterpret_cast<float const *>(&m);
  for (int i = 0; i < 16; i++) EXPECT_EQ(floats[i], i + 1);
}

TEST(Matrix4f, StartsAsTheIdentity) {
  ozMatrix4f m;
  for (int i = 0; i < 4; i++) {
    for (int j = 0; j < 4; j++) EXPECT_EQ(m[i][j], i == j);
  }
}

TEST(Matrix4f, AssigningAnyNumberMakesTheIdentity) {
  ozMatrix4f m = counted();
  EXPECT_EQ(&(m = 5), &m);
  EXPECT_EQ(m, ozMatrix4f());
  m = counted();
  m = 0;
  EXPECT_EQ(m, ozMatrix4f());
  m = counted();
  m.makeIdent();
  EXPECT_EQ(m, ozMatrix4f());
}

TEST(Matrix4f, IsEqualOnlyIfAllElementsAre) {
  for (int i = 0; i < 16; i++) {
    ozMatrix4f a = counted(), b(a);
    EXPECT_TRUE(a == b && a.equal(b) && !(a != b));
    b[i / 4][i % 4] += 0.5f;
    EXPECT_TRUE(!(a == b) && !a.equal(b) && a != b) << i;
    EXPECT_TRUE(a.almostEqual(b, 0.5f)) << i;
    EXPECT_TRUE(b.almostEqual(a, 0.5f)) << i;
    EXPECT_FALSE(a.almostEqual(b, 0.25f)) << i;
    EXPECT_FALSE(b.almostEqual(a, 0.25f)) << i;
  }
}

TEST(Matrix4f, ElementsOutOfRangeReadAsZeroAndAreNotSet) {
  ozMatrix4f m = counted();
  EXPECT_EQ(m.get(2, 1), 10);
  m.set(2, 1, 99);
  EXPECT_EQ(m[2][1], 99);
  m = counted();
  int const out[4][2] = {{-1, 0}, {4, 0}, {0, -1}, {0, 4}};
  for (int const(&at)[2] : out) {
    EXPECT_EQ(m.get(at[0], at[1]), 0);
    m.set(at[0], at[1], 99);
  }
  EXPECT_EQ(m, counted());
}

TEST(Matrix4f, IsCopiedWholeInAndOut) {
  ozMatrix4f a, b;
  counted().get(a);
  EXPECT_EQ(a, counted());
  b.set(a);
  EXPECT_EQ(b, counted());
  float values[16];
  std::iota(values, values + 16, 1.0f);
  ozMatrix4f c;
  c.set(values);
  EXPECT_EQ(c, counted());
}

TEST(Matrix4f, RowsAndColumnsAreReadAndSet) {
  ozMatrix4f m = counted();
  ozVec3f v;
  float x, y, z, w;
  m.getRow(2, v);
  EXPECT_EQ(v, ozVec3f(9, 10, 11));
  m.getRow(1, &x, &y, &z, &w);
  EXPECT_EQ(ozVec4f(x, y, z, w), ozVec4f(5, 6, 7, 8));
  m.getCol(2, v);
  EXPECT_EQ(v, ozVec3f(3, 7, 11));
  m.getCol(1, &x, &y, &z, &w);
  EXPECT_EQ(ozVec4f(x, y, z, w), ozVec4f(2, 6, 10, 14));
  m.setRow(0, ozVec3f(-1, -2, -3));
  m.setRow(3, 20, 21, 22, 23);
  EXPECT_EQ(m, ozMatrix4f(-1, -2, -3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 20, 21, 22, 23));
  m = counted();
  m.setCol(0, ozVec3f(-1, -2, -3));
  m.setCol(3, 20, 21, 22, 23);
  EXPECT_EQ(m, ozMatrix4f(-1, 2, 3, 20, -2, 6, 7, 21, -3, 10, 11, 22, 13, 14, 15, 23));
}

TEST(Matrix4f, RowsAndColumnsOutOfRangeTouchNoMemory) {
  ozMatrix4f m = counted();
  for (int index : {-1, 4, 1000000}) {
    ozVec3f v(1, 1, 1);
    m.getRow(index, v);
    EXPECT_EQ(v, ozVec3f());
    m.setRow(index, v), m.setRow(index, 1, 1, 1, 1), m.setCol(index, v), m.setCol(index, 1, 1, 1, 1);
  }
  EXPECT_EQ(m, counted());
}

TEST(Matrix4f, TranslationStandsInTheLastRow) {
  ozMatrix4f m = counted();
  m.makeTrans(2, 3, 4);
  EXPECT_EQ(m, trans(2, 3, 4));
}

TEST(Matrix4f, ScaleStandsOnTheDiagonal) {
  ozMatrix4f m = counted();
  m.makeScale(2, 3, 4);
  EXPECT_EQ(m, scale(2, 3, 4));
}

TEST(Matrix4f, ARotationTurnsAboutItsAxis) {
  ozMatrix4f m = counted();
  m.makeRot(0, 0, 1, PI / 2);
  expectTurns(m, ozVec3f(0, 0, 1), PI / 2);
  EXPECT_NEAR(m[0][1], 1, 1e-6); // +X goes to +Y
  m.makeRot(1, 2, -2, 0.7f);
  expectTurns(m, ozVec3f(1, 2, -2), 0.7f);
  m.makeRot(-1, 0, 0, -2.5f);
  expectTurns(m, ozVec3f(-1, 0, 0), -2.5f);
}

TEST(Matrix4f, TheLengthOfARotationAxisDoesNotMatter) {
  ozMatrix4f a, b;
  a.makeRot(0, 0, 2, 1);
  b.makeRot(0, 0, 1, 1);
  EXPECT_EQ(a, b);
}

TEST(Matrix4f, ARotationWithoutAnAxisIsTheIdentity) {
  ozMatrix4f m = counted();
  m.makeRot(0, 0, 0, 1);
  EXPECT_EQ(m, ozMatrix4f());
  m.makeRot(0.9e-5f, 0, 0, 1);
  EXPECT_EQ(m, ozMatrix4f());
  m.makeRot(1.1e-5f, 0, 0, 1);
  EXPECT_NEAR(m[1][2], std::sin(1.0), 1e-5);
}

TEST(Matrix4f, ANearlyUnitAxisIsNormalisedToFirstOrder) {
  // L2 = 1.0009 gives the factor 1.5 - 0.50045 = 0.99955, so half a turn keeps 1 - 2 L2 * 0.99955^2 on the axis' sides.
  float x = std::sqrt(1.0009f), square = x * x, inverse = 1.5f - 0.5f * square;
  ozMatrix4f m;
  m.makeRot(x, 0, 0, PI);
  double q = static_cast<double>(x) * inverse;
  EXPECT_NEAR(m[1][1], 1 - 2 * q * q, 1e-7);
  EXPECT_LT(std::fabs(m[1][1] + 1), 2e-6);
  EXPECT_GT(m[1][1], -1); // the shortcut is not exact
  m.makeRot(1.01f, 0, 0, PI);
  EXPECT_NEAR(m[1][1], -1, 1e-7);
}

TEST(Matrix4f, TheShortcutForANearlyUnitAxisEndsAt0_9996And1_001) {
  // About the exact axis half a turn has -1 there. The shortcut would leave 4e-7 at L2 = 0.9995, 1.8e-6 at 1.0011.
  ozMatrix4f m;
  for (float square : {0.9995f, 1.0011f}) {
    m.makeRot(std::sqrt(square), 0, 0, PI);
    EXPECT_NEAR(m[1][1], -1, 1.5e-7) << square;
  }
  float const x = std::sqrt(1.00095f); // 1 - 2 * 1.00095 * (1.5 - 0.500475)^2 is 1.35e-6 above -1
  m.makeRot(x, 0, 0, PI);
  EXPECT_NEAR(m[1][1] + 1, 1.35e-6, 3e-7);
}

TEST(Matrix4f, EulerAnglesTurnAboutYThenXThenZ) {
  float const degree = 0.017453292f;
  ozMatrix4f a, b, c, m;
  a.makeRot(0, 0, 1, 20 * degree);
  b.makeRot(1, 0, 0, 30 * degree);
  c.makeRot(0, 1, 0, 50 * degree);
  m.makeEuler(20, 30, 50);
  EXPECT_TRUE(approx(m, product(product(c, b), a), 1e-6f));
  m.makeEuler(20, 0, 0);
  EXPECT_TRUE(approx(m, a, 1e-6f));
  m.makeEuler(0, 30, 0);
  EXPECT_TRUE(approx(m, b, 1e-6f));
  m.makeEuler(0, 0, 50);
  EXPECT_TRUE(approx(m, c, 1e-6f));
  m = counted();
  m.makeEuler(0, 0, 0);
  EXPECT_EQ(m, ozMatrix4f());
}

ozVec3f moved(ozVec3f const &v, ozMatrix4f const &m) {
  ozVec3f r;
  r.xformPt(v, m);
  return r;
}

TEST(Matrix4f, AVectorIsRotatedToAnother) {
  ozVec3f from(1, 2, 2), to(-2, 3, 6);
  from.normalize(), to.normalize();
  ozMatrix4f m = counted();
  m.makeVecRotVec(from, to);
  EXPECT_TRUE(approx(moved(from, m), to, 1e-6f));
  ozVec3f axis;
  axis.cross(from, to);
  expectTurns(m, axis, std::acos(from.dot(to)));
}

TEST(Matrix4f, AVectorRotatedToItselfIsTheIdentity) {
  ozMatrix4f m = counted();
  m.makeVecRotVec(ozVec3f(0, 1, 0), ozVec3f(0, 1, 0));
  EXPECT_EQ(m, ozMatrix4f());
}

TEST(Matrix4f, OppositeVectorsTurnAboutAnAxisAcrossThem) {
  for (ozVec3f from : {ozVec3f(1, 0, 0), ozVec3f(0, 1, 0), ozVec3f(0, 0, 1), ozVec3f(1, 0, 0)}) {
    ozMatrix4f m;
    m.makeVecRotVec(from, -from);
    EXPECT_TRUE(approx(moved(from, m), -from, 1e-6f));
    EXPECT_NEAR(m.det3(), 1, 1e-6);
  }
}

TEST(Matrix4f, TheAxisOfOppositeVectorsComesFromTheSmallestComponent) {
  ozMatrix4f m;
  m.makeVecRotVec(ozVec3f(1, 0, 0), ozVec3f(-1, 0, 0)); // |z| >= |y|, so e = Y and the axis is Z
  EXPECT_TRUE(approx(m, scale(-1, -1, 1), 1e-6f));
  m.makeVecRotVec(ozVec3f(0, 1, 0), ozVec3f(0, -1, 0)); // |y| >= |x| and |z| >= |x|, so e = X and the axis is -Z
  EXPECT_TRUE(approx(m, scale(-1, -1, 1), 1e-6f));
  m.makeVecRotVec(ozVec3f(0, 0, 1), ozVec3f(0, 0, -1)); // e = X again, and the axis is Y
  EXPECT_TRUE(approx(m, scale(-1, 1, -1), 1e-6f));
}

TEST(Matrix4f, TheAxisOfOppositeVectorsComesFromZIfThatIsTheSmallest) {
  // Half a turn about n is 2 n n - 1. from x Z is (0.8, -0.6, 0) and (0.6, -0.8, 0).
  ozMatrix4f m;
  m.makeVecRotVec(ozVec3f(0.6f, 0.8f, 0), ozVec3f(-0.6f, -0.8f, 0));
  EXPECT_TRUE(approx(m, ozMatrix4f(0.28f, -0.96f, 0, 0, -0.96f, -0.28f, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1), 1e-6f));
  m.makeVecRotVec(ozVec3f(0.8f, 0.6f, 0), ozVec3f(-0.8f, -0.6f, 0));
  EXPECT_TRUE(approx(m, ozMatrix4f(-0.28f, -0.96f, 0, 0, -0.96f, 0.28f, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1), 1e-6f));
}

TEST(Matrix4f, MultIsTheProductOfAffineMatrices) {
  ozMatrix4f m;
  m.mult(affine(), otherAffine());
  EXPECT_EQ(m, product(affine(), otherAffine()));
}

TEST(Matrix4f, MultForcesTheFourthColumn) {
  ozMatrix4f a = counted(), b = counted(), m;
  auto expectForced = [](ozMatrix4f const &r) {
    float x, y, z, w;
    r.getCol(3, &x, &y, &z, &w);
    EXPECT_EQ(ozVec4f(x, y, z, w), ozVec4f(0, 0, 0, 1));
    EXPECT_EQ(r[0][0], 1 * 1 + 2 * 5 + 3 * 9);
    EXPECT_EQ(r[3][0], 13 * 1 + 14 * 5 + 15 * 9 + 13); // the translation of b counts once
  };
  m.mult(a, b);
  expectForced(m);
  b.mult(a, b);
  expectForced(b);
  b = counted();
  a.mult(a, b);
  expectForced(a);
  a = counted();
  a.mult(a, a);
  expectForced(a);
}

TEST(Matrix4f, FullMultIsTheWholeProduct) {
  ozMatrix4f a = counted(), b = product(counted(), otherAffine()), m;
  ozMatrix4f const expected = product(a, b);
  m.fullMult(a, b);
  EXPECT_EQ(m, expected);
  m = a;
  m.fullMult(m, b);
  EXPECT_EQ(m, expected);
  m = b;
  m.fullMult(a, m);
  EXPECT_EQ(m, expected);
  m = a;
  m.fullMult(m, m);
  EXPECT_EQ(m, product(a, a));
}

TEST(Matrix4f, PreMultPutsTheOtherInFrontAndPostMultBehind) {
  ozMatrix4f m = affine();
  m.preMult(otherAffine());
  EXPECT_EQ(m, product(otherAffine(), affine()));
  m = affine();
  m.postMult(otherAffine());
  EXPECT_EQ(m, product(affine(), otherAffine()));
  m = affine();
  EXPECT_EQ(&(m *= otherAffine()), &m);
  EXPECT_EQ(m, product(affine(), otherAffine()));
}

TEST(Matrix4f, AProductMayBeStoredIntoAnyOfItsOperands) {
  ozMatrix4f const square = product(affine(), affine());
  ozMatrix4f m = affine();
  m.mult(m, otherAffine());
  EXPECT_EQ(m, product(affine(), otherAffine()));
  m = affine();
  m.mult(otherAffine(), m);
  EXPECT_EQ(m, product(otherAffine(), affine()));
  m = affine(), m.mult(m, m);
  EXPECT_EQ(m, square);
  m = affine(), m.preMult(m);
  EXPECT_EQ(m, square);
  m = affine(), m.postMult(m);
  EXPECT_EQ(m, square);
  m = affine(), m *= m;
  EXPECT_EQ(m, square);
}

TEST(Matrix4f, ATransformGoesInFrontOrBehind) {
  ozMatrix4f const t = trans(2, 3, 4), s = scale(2, 3, 4);
  ozMatrix4f r, m;
  r.makeRot(1, 2, 3, 0.5f);
  m.preTrans(2, 3, 4, affine());
  EXPECT_EQ(m, product(t, affine()));
  m.postTrans(affine(), 2, 3, 4);
  EXPECT_EQ(m, product(affine(), t));
  m.preScale(2, 3, 4, affine());
  EXPECT_EQ(m, product(s, affine()));
  m.postScale(affine(), 2, 3, 4);
  EXPECT_EQ(m, product(affine(), s));
  m.preRot(1, 2, 3, 0.5f, affine());
  EXPECT_TRUE(approx(m, product(r, affine())));
  m.postRot(affine(), 1, 2, 3, 0.5f);
  EXPECT_TRUE(approx(m, product(affine(), r)));
}

TEST(Matrix4f, ATransformMayBeAppliedInPlace) {
  ozMatrix4f const t = trans(2, 3, 4), s = scale(2, 3, 4);
  ozMatrix4f r, m = affine();
  r.makeRot(1, 2, 3, 0.5f);
  m.preTrans(2, 3, 4, m);
  EXPECT_EQ(m, product(t, affine()));
  m = affine(), m.postTrans(m, 2, 3, 4);
  EXPECT_EQ(m, product(affine(), t));
  m = affine(), m.preScale(2, 3, 4, m);
  EXPECT_EQ(m, product(s, affine()));
  m = affine(), m.postScale(m, 2, 3, 4);
  EXPECT_EQ(m, product(affine(), s));
  m = affine(), m.preRot(1, 2, 3, 0.5f, m);
  EXPECT_TRUE(approx(m, product(r, affine())));
  m = affine(), m.postRot(m, 1, 2, 3, 0.5f);
  EXPECT_TRUE(approx(m, product(affine(), r)));
}

TEST(Matrix4f, TranslationsAndThePreScaleAreWholeProducts) { // not those of affine matrices alone
  ozMatrix4f m;
  m.preTrans(2, 3, 4, counted());
  EXPECT_EQ(m, product(trans(2, 3, 4), counted()));
  m.postTrans(counted(), 2, 3, 4);
  EXPECT_EQ(m, product(counted(), trans(2, 3, 4)));
  m.preScale(2, 3, 4, counted());
  EXPECT_EQ(m, product(scale(2, 3, 4), counted()));
}

TEST(Matrix4f, ARotationInFrontOrBehindForcesTheFourthColumn) { // as mult does
  ozMatrix4f m;
  float x, y, z, w;
  m.preRot(1, 2, 3, 0.5f, counted());
  m.getCol(3, &x, &y, &z, &w);
  EXPECT_EQ(ozVec4f(x, y, z, w), ozVec4f(0, 0, 0, 1));
  m.postRot(counted(), 1, 2, 3, 0.5f);
  m.getCol(3, &x, &y, &z, &w);
  EXPECT_EQ(ozVec4f(x, y, z, w), ozVec4f(0, 0, 0, 1));
}

TEST(Matrix4f, PostScaleLeavesTheFourthColumn) {
  ozMatrix4f m;
  m.postScale(counted(), 2, 3, 10);
  EXPECT_EQ(m, ozMatrix4f(2, 6, 30, 4, 10, 18, 70, 8, 18, 30, 110, 12, 26, 42, 150, 16));
}

TEST(Matrix4f, TransposeSwapsRowsAndColumns) {
  ozMatrix4f const expected(1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15, 4, 8, 12, 16);
  ozMatrix4f m, n = counted();
  m.transpose(n);
  EXPECT_EQ(m, expected);
  n.transpose(n);
  EXPECT_EQ(n, expected);
}

TEST(Matrix4f, DeterminantsOfThreeRowsAndColumns) {
  EXPECT_EQ(affine().det3(), -3); // 1 (50 - 48) - 2 (40 - 42) + 3 (32 - 35)
  EXPECT_EQ(scale(2, 3, 4).det3(), 24);
  EXPECT_EQ(affine().det3(0, 1, 3, 0, 1, 2), 1 * (65 - 72) - 2 * (52 - 66) + 3 * (48 - 55));
  EXPECT_EQ(otherAffine().det3(0, 1, 3, 0, 1, 3), 6); // 2 * 3 with the last column (0, 0, 1)
}

TEST(Matrix4f, DeterminantOfTheWhole) {
  EXPECT_EQ(affine().det4(), -3);
  EXPECT_EQ(counted().det4(), 0);
  EXPECT_EQ(ozMatrix4f(0, 2, 0, 0, 3, 0, 0, 0, 0, 0, 0, 5, 0, 0, 7, 0).det4(), 210); // two swaps: 2 * 3 * 5 * 7
  EXPECT_EQ(ozMatrix4f(1, 2, 0, 1, 0, 1, 3, 0, 2, 0, 1, 1, 1, 1, 0, 2).det4(), 16);  // by Laplace, by hand
}

} // namespace
