// What vectors of floats add, and what ozVec3f and ozVec4f add to that.
#include "math/approx.h"
#include "oz/ozPlane.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

namespace {

TEST(Constants, TheWorkingInfinityHasItsBits) {
  unsigned bits;
  float value = OZ_INFINITY;
  std::memcpy(&bits, &value, 4);
  EXPECT_EQ(bits, 0x7DCCCCCCu);
  EXPECT_EQ(OZ_EPSILON, 1e-5f);
  EXPECT_EQ(OZ_TINY_EPSILON, 1e-15f);
  EXPECT_EQ(OZ_EPSILON_SQUARED, 1e-5f * 1e-5f);
}

TEST(FloatVec, AddScaledAddsAMultipleOfTheSecond) {
  ozVec2f v2;
  v2.addScaled(ozVec2f(1, 2), 3, ozVec2f(10, 20));
  EXPECT_EQ(v2, ozVec2f(31, 62));
  ozVec3f v3(1, 2, 3);
  v3.addScaled(v3, 2, v3);
  EXPECT_EQ(v3, ozVec3f(3, 6, 9));
  ozVec4f v4;
  v4.addScaled(ozVec4f(1, 2, 3, 4), -1, ozVec4f(1, 1, 1, 1));
  EXPECT_EQ(v4, ozVec4f(0, 1, 2, 3));
}

TEST(FloatVec, CombineSumsTwoMultiples) {
  ozVec2f v2;
  v2.combine(2, ozVec2f(1, 2), 3, ozVec2f(10, 20));
  EXPECT_EQ(v2, ozVec2f(32, 64));
  ozVec3f v3(1, 2, 3);
  v3.combine(2, v3, 5, v3);
  EXPECT_EQ(v3, ozVec3f(7, 14, 21));
  ozVec4f v4;
  v4.combine(0.5f, ozVec4f(2, 4, 6, 8), 0.25f, ozVec4f(4, 4, 4, 4));
  EXPECT_EQ(v4, ozVec4f(2, 3, 4, 5));
}

TEST(FloatVec, EveryProductIsRoundedBeforeItIsSummed) {
  // (1 + 2^-12)^2 is 1 + 2^-11 + 2^-24, which rounds to 1 + 2^-11: a fused multiply-add would leave 2^-24.
  float a = 1 + std::ldexp(1.0f, -12), b = 1 + std::ldexp(1.0f, -11);
  ozVec3f v;
  v.combine(a, ozVec3f(a, a, a), -1, ozVec3f(b, b, b));
  EXPECT_EQ(v, ozVec3f());
  v.addScaled(ozVec3f(-b, -b, -b), a, ozVec3f(a, a, a));
  EXPECT_EQ(v, ozVec3f());
  EXPECT_EQ(ozVec2f(a, b).dot(ozVec2f(a, -1)), 0);
  EXPECT_EQ(ozVec2f(a, 0).length(), static_cast<float>(std::sqrt(static_cast<double>(b))));
}

TEST(FloatVec, LengthIsTheRootOfTheSumOfSquares) {
  EXPECT_EQ(ozVec2f(3, -4).length(), 5);
  EXPECT_EQ(ozVec3f(2, 3, 6).length(), 7);
  EXPECT_EQ(ozVec4f(1, 1, 1, 1).length(), 2);
  EXPECT_EQ(ozVec3f(1, 1, 0).length(), 1.41421356f);
}

TEST(FloatVec, DistanceIsThatBetweenTwoPoints) {
  EXPECT_EQ(ozVec2f(1, 1).distance(ozVec2f(4, 5)), 5);
  EXPECT_EQ(ozVec3f(1, 1, 1).distance(ozVec3f(3, 4, 7)), 7);
  EXPECT_EQ(ozVec4f().distance(ozVec4f(1, 1, 1, 1)), 2);
  EXPECT_EQ(ozVec2f(1, 1).sqrDistance(ozVec2f(4, 5)), 25);
  EXPECT_EQ(ozVec3f(1, 1, 1).sqrDistance(ozVec3f(3, 4, 7)), 49);
  EXPECT_EQ(ozVec4f().sqrDistance(ozVec4f(1, 1, 1, 1)), 4);
}

TEST(FloatVec, NormalizeReturnsTheOldLength) {
  ozVec3f v(0, 3, 4);
  EXPECT_EQ(v.normalize(), 5);
  EXPECT_NEAR(v[1], 0.6f, 1e-7);
  EXPECT_NEAR(v[2], 0.8f, 1e-7);
  ozVec2f w(0, -2);
  EXPECT_EQ(w.normalize(), 2);
  EXPECT_EQ(w, ozVec2f(0, -1));
  ozVec4f u(0, 0, 0, 4);
  EXPECT_EQ(u.normalize(), 4);
  EXPECT_EQ(u, ozVec4f(0, 0, 0, 1));
}

TEST(FloatVec, NormalizeMultipliesWithTheReciprocal) {
  ozVec2f v(41, 0);
  v.normalize();
  float reciprocal = 1.0f / 41.0f;
  EXPECT_EQ(v[0], 41.0f * reciprocal); // a division would give 1
  EXPECT_NE(v[0], 1.0f);
}

TEST(FloatVec, NormalizeLeavesZeroAndReturnsZero) {
  ozVec3f v;
  EXPECT_EQ(v.normalize(), 0);
  EXPECT_EQ(v, ozVec3f());
}

TEST(FloatVec, NormalizeGrowsAVeryShortVectorVeryLarge) {
  ozVec3f v(1e-16f, 0, 0);
  EXPECT_FLOAT_EQ(v.normalize(), 1e-16f);
  EXPECT_FLOAT_EQ(v[0], 3.4028235e21f);
  ozVec3f longer(2e-15f, 0, 0);
  longer.normalize();
  EXPECT_FLOAT_EQ(longer[0], 1);
}

TEST(FloatVec, AlmostEqualIncludesTheBounds) {
  ozVec3f v(1, 2, 3);
  EXPECT_TRUE(v.almostEqual(v, 0));
  EXPECT_TRUE(v.almostEqual(ozVec3f(1.5f, 2.5f, 2.5f), 0.5f));
  for (int i = 0; i < 3; i++) {
    ozVec3f above = v, below = v;
    above[i] += 0.625f;
    below[i] -= 0.625f;
    EXPECT_FALSE(v.almostEqual(above, 0.5f)) << i;
    EXPECT_FALSE(v.almostEqual(below, 0.5f)) << i;
  }
  EXPECT_EQ(ozVec2f(1, 2).almostEqual(ozVec2f(1, 2.25f), 0.25f), 1);
  EXPECT_EQ(ozVec4f(1, 2, 3, 4).almostEqual(ozVec4f(1, 2, 3, 5), 0.25f), 0);
  EXPECT_FALSE(ozVec2f(NAN, 0).almostEqual(ozVec2f(NAN, 0), 1));
}

TEST(Vec3f, SetSumsThreeAxesByComponents) {
  ozVec3f v;
  v.set(ozVec3f(2, 3, 4), ozVec3f(1, 0, 1), ozVec3f(0, 1, 1), ozVec3f(10, 20, 30));
  EXPECT_EQ(v, ozVec3f(42, 83, 125));
  ozVec3f a(2, 3, 4);
  a.set(a, a, a, a);
  EXPECT_EQ(a, ozVec3f(18, 27, 36));
}

// A scale by 2, 3, 4, a translation by 10, 20, 30, and a fourth column.
ozMatrix4f scaledAndMoved(float w) { return ozMatrix4f(2, 0, 0, 0, 0, 3, 0, 0, 0, 0, 4, 0, 10, 20, 30, w); }

TEST(Vec3f, APointIsTransformedWithTheTranslation) {
  ozVec3f v;
  v.xformPt(ozVec3f(1, 2, 3), scaledAndMoved(5));
  EXPECT_EQ(v, ozVec3f(12, 26, 42));
  v.xformPt(ozVec3f(1, 10, 100), ozMatrix4f(1, 2, 3, 9, 4, 5, 6, 9, 7, 8, 9, 9, 0, 0, 1, 9));
  EXPECT_EQ(v, ozVec3f(741, 852, 964));
}

TEST(Vec3f, ADirectionIsTransformedByTheUpperLeftPartAlone) {
  ozVec3f v;
  v.xformVec(ozVec3f(1, 2, 3), scaledAndMoved(5));
  EXPECT_EQ(v, ozVec3f(2, 6, 12));
  v.xformVec(ozVec3f(1, 10, 100), ozMatrix4f(1, 2, 3, 9, 4, 5, 6, 9, 7, 8, 9, 9, 5, 5, 5, 9));
  EXPECT_EQ(v, ozVec3f(741, 852, 963));
}

TEST(Vec3f, AFullTransformDividesByW) {
  ozVec3f v;
  v.fullXformPt(ozVec3f(1, 2, 3), scaledAndMoved(2));
  EXPECT_EQ(v, ozVec3f(6, 13, 21));
  ozMatrix4f m;
  m[0][3] = 1, m[1][3] = 2, m[2][3] = 3, m[3][3] = 6;
  v.fullXformPt(ozVec3f(1, 2, 3), m); // w = 1 + 4 + 9 + 6
  EXPECT_TRUE(approx(v, ozVec3f(1 / 20.0f, 2 / 20.0f, 3 / 20.0f), 1e-7f));
}

TEST(Vec3f, AFullTransformDoesNotDivideByAWNearOne) {
  ozVec3f v;
  v.fullXformPt(ozVec3f(1, 2, 3), scaledAndMoved(1.000001f));
  EXPECT_EQ(v, ozVec3f(12, 26, 42));
  v.fullXformPt(ozVec3f(1, 2, 3), scaledAndMoved(1.0001f));
  EXPECT_LT(v[0], 12);
}

TEST(Vec3f, AFullTransformTakesTheTinyEpsilonForAVanishingW) {
  ozVec3f v;
  for (float w : {0.0f, 1e-16f, -1e-16f}) {
    v.fullXformPt(ozVec3f(1, 2, 3), scaledAndMoved(w));
    EXPECT_FLOAT_EQ(v[0], 12e15f) << w;
  }
}

TEST(Vec3f, TransformsMayBeStoredIntoTheOperand) {
  ozVec3f a(1, 2, 3), b(1, 2, 3), c(1, 2, 3);
  ozMatrix4f m(0, 1, 0, 0, 0, 0, 1, 0, 1, 0, 0, 0, 10, 20, 30, 2);
  a.xformPt(a, m);
  EXPECT_EQ(a, ozVec3f(13, 21, 32));
  b.xformVec(b, m);
  EXPECT_EQ(b, ozVec3f(3, 1, 2));
  c.fullXformPt(c, m);
  EXPECT_EQ(c, ozVec3f(6.5f, 10.5f, 16));
}

TEST(Vec3f, TheClosestAxisIsTheOneWithTheLargestProduct) {
  EXPECT_EQ(ozVec3f(3, 1, -2).getClosestAxis(), ozVec3f(1, 0, 0));
  EXPECT_EQ(ozVec3f(-3, 1, -2).getClosestAxis(), ozVec3f(-1, 0, 0));
  EXPECT_EQ(ozVec3f(1, 5, -2).getClosestAxis(), ozVec3f(0, 1, 0));
  EXPECT_EQ(ozVec3f(1, -5, -2).getClosestAxis(), ozVec3f(0, -1, 0));
  EXPECT_EQ(ozVec3f(1, 1, 200).getClosestAxis(), ozVec3f(0, 0, 1));
  EXPECT_EQ(ozVec3f(1, 1, -200).getClosestAxis(), ozVec3f(0, 0, -1));
}

TEST(Vec3f, OfEquallyCloseAxesTheEarlierStands) {
  EXPECT_EQ(ozVec3f(1, 1, 0).getClosestAxis(), ozVec3f(1, 0, 0));
  EXPECT_EQ(ozVec3f(0, -1, 1).getClosestAxis(), ozVec3f(0, -1, 0));
  EXPECT_EQ(ozVec3f(0, 0, 0).getClosestAxis(), ozVec3f(1, 0, 0));
  EXPECT_EQ(ozVec3f(NAN, NAN, NAN).getClosestAxis(), ozVec3f(0, 0, 0));
}

ozPlane plane(float x, float y, float z, float offset) {
  ozPlane p;
  p.normal.set(x, y, z);
  p.offset = offset;
  return p;
}

TEST(Vec3f, ThreePlanesMeetInAPoint) {
  ozVec3f v;
  v.set(plane(1, 0, 0, 2), plane(0, 1, 0, 3), plane(0, 0, 1, 4));
  EXPECT_TRUE(approx(v, ozVec3f(2, 3, 4), 1e-6f));
  float r = std::sqrt(0.5f);
  v.set(plane(r, r, 0, r), plane(0, 1, 0, 0.25f), plane(0, 0, 1, 4)); // x + y = 1, y = 1/4
  EXPECT_TRUE(approx(v, ozVec3f(0.75f, 0.25f, 4), 1e-6f));
}

TEST(Vec3f, APlaneWithANegativeOffsetCountsAsOneWithAPositiveOffset) {
  ozVec3f v;
  v.set(plane(1, 0, 0, -2), plane(0, 1, 0, 3), plane(0, 0, 1, -4));
  EXPECT_TRUE(approx(v, ozVec3f(2, 3, 4), 1e-6f));
}

TEST(Vec3f, PlanesWithoutACommonPointGiveZero) {
  ozVec3f v(1, 2, 3);
  v.set(plane(1, 0, 0, 2), plane(1, 0, 0, 3), plane(0, 0, 1, 4));
  EXPECT_EQ(v, ozVec3f());
  v.set(plane(1, 0, 0, 2), plane(1, 0.9e-6f, 0, 3), plane(0, 0, 1, 4));
  EXPECT_EQ(v, ozVec3f());
}

TEST(Vec3f, PlanesMeetAsSoonAsTheirDeterminantReaches1e6) {
  ozVec3f v;
  // x = 2 and x + 1.1e-6 y = 3, where y = 1 / 1.1e-6; with the last two turned round the determinant is negative.
  v.set(plane(1, 0, 0, 2), plane(1, 1.1e-6f, 0, 3), plane(0, 0, 1, 4));
  EXPECT_NEAR(v[1] * 1.1e-6, 1, 1e-4);
  v.set(plane(1, 0, 0, 2), plane(0, 0, 1, 4), plane(1, 1.1e-6f, 0, 3));
  EXPECT_NEAR(v[1] * 1.1e-6, 1, 1e-4);
  v.set(plane(1, 0, 0, 2), plane(0, 0, 1, 4), plane(1, 0.9e-6f, 0, 3));
  EXPECT_EQ(v, ozVec3f());
}

TEST(Vec3f, ThePointOfThreePlanesMayBeThePlanesOwnNormal) {
  ozPlane p = plane(1, 0, 0, 2);
  p.normal.set(p, plane(0, 1, 0, 3), plane(0, 0, 1, 4));
  EXPECT_TRUE(approx(p.normal, ozVec3f(2, 3, 4), 1e-6f));
}

TEST(Vec4f, XformIsTheWholeProduct) {
  ozMatrix4f m(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16);
  ozVec4f v;
  v.xform(ozVec4f(1, 10, 100, 1000), m);
  EXPECT_EQ(v, ozVec4f(13951, 15062, 16173, 17284));
  ozVec4f w(1, 10, 100, 1000);
  w.xform(w, m);
  EXPECT_EQ(w, v);
}

TEST(Vec4f, AQuaternionIsMadeFromAnAxisAndRadians) {
  ozVec4f q;
  q.qInit(ozVec3f(0, 0, 1), 1.0f);
  EXPECT_TRUE(approx(q, ozVec4f(0, 0, std::sin(0.5f), std::cos(0.5f)), 1e-6f));
}

TEST(Vec4f, AQuaternionIsScaledByTheLengthOfItsAxis) {
  ozVec4f q;
  q.qInit(ozVec3f(0, 3, 4), 1.0f);
  float s = std::sin(0.5f);
  EXPECT_TRUE(approx(q, ozVec4f(0, 3 * s, 4 * s, 5 * std::cos(0.5f)), 3e-6f));
}

TEST(Vec4f, TheVectorPartOfAQuaternionIsNeverTurnedByANegativeAngle) {
  ozVec4f q;
  q.qInit(ozVec3f(1, 0, 0), -1.0f); // the root of 1 - w * w is positive
  EXPECT_TRUE(approx(q, ozVec4f(std::sin(0.5f), 0, 0, std::cos(0.5f)), 1e-6f));
}

TEST(Vec4f, AZeroAxisGivesAZeroQuaternion) {
  ozVec4f q(1, 2, 3, 4);
  q.qInit(ozVec3f(), 1.0f);
  EXPECT_EQ(q, ozVec4f());
}

TEST(Vec4f, TheNormOfAQuaternionIsTheSumOfSquares) { EXPECT_EQ(ozVec4f(1, 2, 3, 4).qNorm(), 30); }

TEST(Vec4f, ConjugateNegatesTheVectorPartAndComplementTheScalar) {
  ozVec4f q(1, 2, 3, 4);
  q.qConjugate();
  EXPECT_EQ(q, ozVec4f(-1, -2, -3, 4));
  q.qComplement();
  EXPECT_EQ(q, ozVec4f(-1, -2, -3, -4));
}

TEST(Vec4f, InvertDividesTheConjugateByTheNorm) {
  ozVec4f q(1, 1, -1, 1);
  q.qInvert();
  EXPECT_EQ(q, ozVec4f(-0.25f, -0.25f, 0.25f, 0.25f));
  ozVec4f zero;
  zero.qInvert();
  ozVec4f infinite;
  infinite = 3.4028235e37f;
  EXPECT_EQ(zero, infinite);
}

TEST(Vec4f, TheProductOfQuaternionsIsHamiltons) {
  ozVec4f const i(1, 0, 0, 0), j(0, 1, 0, 0), k(0, 0, 1, 0);
  ozVec4f q = i;
  q.qProduct(j);
  EXPECT_EQ(q, k);
  q = j;
  q.qProduct(k);
  EXPECT_EQ(q, i);
  q = k;
  q.qProduct(i);
  EXPECT_EQ(q, j);
  q = j;
  q.qProduct(i);
  EXPECT_EQ(q, -k);
  q = i;
  q.qProduct(q);
  EXPECT_EQ(q, ozVec4f(0, 0, 0, -1));
  q.set(1, 2, 3, 4);
  q.qProduct(ozVec4f(5, 6, 7, 8));
  EXPECT_EQ(q, ozVec4f(24, 48, 48, -6)); // 4*5+1*8+2*7-3*6, 4*6+2*8+3*5-1*7, 4*7+3*8+1*6-2*5, 32-5-12-21
}

} // namespace
