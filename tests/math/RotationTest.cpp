#include "math/approx.h"
#include "oz/ozRotation.h"
#include "support/capture.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

double const DEGREE = 3.14159265358979 / 180;

// The four numbers, the angle in degrees.
ozVec4f numbers(ozRotation const &r) {
  float x, y, z, degrees;
  r.getDegrees(&x, &y, &z, &degrees);
  return ozVec4f(x, y, z, degrees);
}

ozRotation degrees(float x, float y, float z, float angle) {
  ozRotation r;
  r.setDegrees(x, y, z, angle);
  return r;
}

ozVec4f quaternion(ozRotation const &r) {
  ozVec4f q;
  r.get(q);
  return q;
}

TEST(Rotation, IsFourFloatsWithTheAngleInDegrees) {
  ozRotation r = degrees(0, 3, 4, 70);
  EXPECT_EQ(sizeof r, 16u);
  float const *floats = reinterpret_cast<float const *>(&r);
  EXPECT_TRUE(approx(ozVec4f(floats), ozVec4f(0, 0.6f, 0.8f, 70), 1e-6f));
}

TEST(Rotation, StartsWithoutAnAxis) {
  ozRotation r;
  ozVec3f axis(1, 1, 1);
  r.getAxis(axis);
  EXPECT_EQ(axis, ozVec3f());
}

TEST(Rotation, TakesRadiansAndHoldsDegrees) {
  ozRotation a(0, 0, 2, 1.5f), b(ozVec3f(0, 0, 2), 1.5f), c, d;
  c.set(0, 0, 2, 1.5f);
  d.set(ozVec3f(0, 0, 2), 1.5f);
  EXPECT_EQ(numbers(a), ozVec4f(0, 0, 1, 1.5f * 57.295776f));
  EXPECT_TRUE(a == b && a == c && a == d);
}

TEST(Rotation, TakesDegreesAsTheyAre) {
  ozRotation a, b;
  a.setDegrees(0, 0, 2, 70);
  b.setDegrees(ozVec3f(0, 0, 2), 70);
  EXPECT_EQ(numbers(a), ozVec4f(0, 0, 1, 70));
  EXPECT_EQ(a, b);
}

TEST(Rotation, ATinyAxisIsZeroAndKeepsItsAngle) {
  ozRotation r(0.9e-5f, -0.9e-5f, 0.9e-5f, 2);
  EXPECT_EQ(numbers(r), ozVec4f(0, 0, 0, 2 * 57.295776f));
  EXPECT_TRUE(r.isIdentity());
  r.set(1e-5f, 0, 0, 2); // the bound itself is an axis
  EXPECT_EQ(numbers(r), ozVec4f(1, 0, 0, 2 * 57.295776f));
}

TEST(Rotation, OneNumberIsAnAngleInDegreesWithoutAnAxis) {
  ozRotation r(1, 0, 0, 1);
  r.set(33.0f);
  EXPECT_EQ(numbers(r), ozVec4f(0, 0, 0, 33));
}

TEST(Rotation, AssigningAnyNumberClearsAllFour) {
  ozRotation r(1, 0, 0, 1);
  EXPECT_EQ(&(r = 33.0f), &r);
  EXPECT_EQ(numbers(r), ozVec4f());
  r = degrees(1, 0, 0, 1);
  r.makeIdentity();
  EXPECT_EQ(numbers(r), ozVec4f());
}

TEST(Rotation, PartsAreSetAlone) {
  ozRotation r(1, 0, 0, 1);
  r.setAxis(0, 3, 4);
  EXPECT_TRUE(approx(numbers(r), ozVec4f(0, 0.6f, 0.8f, 57.295776f), 1e-6f));
  r.setAxis(ozVec3f(0, 0, -2));
  r.setAngleDegrees(20);
  EXPECT_EQ(numbers(r), ozVec4f(0, 0, -1, 20));
  r.setAngle(2);
  EXPECT_EQ(numbers(r), ozVec4f(0, 0, -1, 2 * 57.295776f));
}

TEST(Rotation, GivesRadiansAndDegrees) {
  ozRotation r = degrees(0, 0, 1, 70);
  float const radians = 70 * 0.017453292f;
  EXPECT_EQ(r.getAngle(), radians);
  EXPECT_EQ(r.getAngleDegrees(), 70);
  EXPECT_TRUE(r[0] == 0 && r[1] == 0 && r[2] == 1 && r[3] == radians);
  ozVec3f axis;
  float x, y, z, angle;
  r.get(axis, &angle);
  EXPECT_TRUE(axis == ozVec3f(0, 0, 1) && angle == radians);
  r.get(&x, &y, &z, &angle);
  EXPECT_TRUE(x == 0 && y == 0 && z == 1 && angle == radians);
  r.getDegrees(axis, &angle);
  EXPECT_TRUE(axis == ozVec3f(0, 0, 1) && angle == 70);
  r.getDegrees(&x, &y, &z, &angle);
  EXPECT_TRUE(x == 0 && y == 0 && z == 1 && angle == 70);
  r.getAxis(&x, &y, &z);
  EXPECT_TRUE(x == 0 && y == 0 && z == 1);
}

TEST(Rotation, IsEqualIfAllFourNumbersAre) {
  ozRotation a = degrees(0, 0, 1, 70), b = a, c = degrees(0, 1, 0, 70), d = degrees(0, 0, 1, 71);
  EXPECT_TRUE(a == b && a.equal(b) && !(a != b));
  EXPECT_TRUE(a != c && !a.equal(c) && a != d && !(a == d));
  EXPECT_TRUE(a.almostEqual(d, 1));
  EXPECT_FALSE(a.almostEqual(d, 0.5f));
  EXPECT_FALSE(a.almostEqual(c, 0.5f));
  EXPECT_TRUE(a.almostEqual(c, 1));
}

TEST(Rotation, GivesAQuaternion) {
  ozRotation r = degrees(0, 0.6f, 0.8f, 70);
  float s = std::sin(35 * DEGREE), c = std::cos(35 * DEGREE);
  EXPECT_TRUE(approx(quaternion(r), ozVec4f(0, 0.6f * s, 0.8f * s, c), 1e-6f));
}

TEST(Rotation, IsMadeFromAQuaternion) {
  float s = std::sin(35 * DEGREE), c = std::cos(35 * DEGREE);
  ozRotation a(ozVec4f(0, 0.6f * s, 0.8f * s, c)), b;
  EXPECT_TRUE(approx(numbers(a), ozVec4f(0, 0.6f, 0.8f, 70), 1e-4f));
  b.set(ozVec4f(0, 1.2f * s, 1.6f * s, 2 * c));
  EXPECT_TRUE(approx(numbers(b), ozVec4f(0, 0.6f, 0.8f, 70), 1e-4f));
  b.set(ozVec4f(0, 0, 0, 1));
  EXPECT_EQ(numbers(b), ozVec4f());
}

TEST(Rotation, GivesAMatrixAndIsMadeFromOne) {
  ozRotation r = degrees(0, 0.6f, 0.8f, 70);
  ozMatrix4f m, expected;
  expected.makeRot(0, 0.6f, 0.8f, 70 * 0.017453292f);
  r.get(m);
  EXPECT_TRUE(approx(m, expected, 1e-6f));
  ozRotation a(m), b;
  b = 0;
  b.set(m);
  EXPECT_TRUE(approx(numbers(a), ozVec4f(0, 0.6f, 0.8f, 70), 1e-3f));
  EXPECT_EQ(a, b);
}

TEST(Rotation, WithoutAnAxisGivesTheIdentityMatrix) {
  ozMatrix4f m(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16);
  degrees(0, 0, 0, 70).get(m);
  EXPECT_EQ(m, ozMatrix4f());
}

TEST(Rotation, AMatrixWithoutARotationLeavesItAsItWas) {
  ozMatrix4f m;
  m.makeScale(2, 2, 2);
  ozRotation r = degrees(1, 0, 0, 5), before = r;
  EXPECT_EQ(stderrOf([&] { r.set(m); }), "Warning: Magnitude of the matrix trace is > 3\n");
  EXPECT_EQ(r, before);
}

TEST(Rotation, IsMadeFromTwoDirections) {
  ozRotation r(ozVec3f(2, 0, 0), ozVec3f(0, 3, 0));
  EXPECT_TRUE(approx(numbers(r), ozVec4f(0, 0, 1, 90), 1e-4f));
  r.set(ozVec3f(0, 1, 0), ozVec3f(0, 1, 1));
  EXPECT_TRUE(approx(numbers(r), ozVec4f(1, 0, 0, 45), 1e-4f));
  r.set(ozVec3f(0, 0, 1), ozVec3f(1, 0, -1));
  EXPECT_TRUE(approx(numbers(r), ozVec4f(0, 1, 0, 135), 1e-4f));
}

TEST(Rotation, OfNearlyTheSameDirectionIsNone) {
  ozRotation r(ozVec3f(1, 0, 0), ozVec3f(5, 0, 0));
  EXPECT_EQ(numbers(r), ozVec4f());
  r.setDegrees(0, 0, 1, 9);
  r.set(ozVec3f(1, 0, 0), ozVec3f(1, 0.004f, 0)); // cosine 0.999992
  EXPECT_EQ(numbers(r), ozVec4f());
  r.set(ozVec3f(1, 0, 0), ozVec3f(1, 0.005f, 0)); // cosine 0.9999875
  EXPECT_NEAR(r.getAngleDegrees(), 0.005 / DEGREE, 1e-2);
}

TEST(Rotation, OfOppositeDirectionsHasAPerpendicularAxisAndNoAngle) {
  ozRotation r(ozVec3f(0, 0, 1), ozVec3f(0, 0, -1));
  EXPECT_TRUE(approx(numbers(r), ozVec4f(0, 1, 0, 0), 1e-6f)); // Z x X
  r.set(ozVec3f(2, 0, 0), ozVec3f(-1, 0, 0));
  EXPECT_TRUE(approx(numbers(r), ozVec4f(0, 0, 1, 0), 1e-6f)); // X x X vanishes, X x Y
  r.set(ozVec3f(0, 2, 0), ozVec3f(0, -1, 0));
  EXPECT_TRUE(approx(numbers(r), ozVec4f(0, 0, -1, 0), 1e-6f)); // Y x X
}

TEST(Rotation, OfAVanishingDirectionIsComputedWithItAsItIs) {
  ozRotation r(ozVec3f(0, 0, 0), ozVec3f(0, 1, 0)); // the cosine is 0 and the axis stays zero
  EXPECT_TRUE(approx(numbers(r), ozVec4f(0, 0, 0, 90), 1e-4f));
}

TEST(Rotation, OfAVanishingDirectionThatIsNotZeroIsNotNormalised) {
  // As it is, 0.9e-5 long, the cosine is 0.9e-5: the angle is 90 less 0.0005. Normalised, the two would be the same.
  ozRotation r(ozVec3f(0.9e-5f, 0, 0), ozVec3f(1, 0, 0));
  EXPECT_TRUE(approx(numbers(r), ozVec4f(0, 0, 0, 90), 1e-3f));
  r.set(ozVec3f(0, 2, 0), ozVec3f(0, -0.9e-5f, 0));
  EXPECT_TRUE(approx(numbers(r), ozVec4f(0, 0, 0, 90), 1e-3f));
  r.set(ozVec3f(1.1e-5f, 0, 0), ozVec3f(1, 0, 0)); // this one is normalised
  EXPECT_EQ(numbers(r), ozVec4f());
}

TEST(Rotation, OfNearlyOppositeDirectionsHasNoAngleEither) {
  ozRotation r(ozVec3f(1, 0, 0), ozVec3f(-1, 0.004f, 0)); // cosine -0.999992
  EXPECT_TRUE(approx(numbers(r), ozVec4f(0, 0, 1, 0), 1e-6f));
  r.set(ozVec3f(1, 0, 0), ozVec3f(-1, 0.005f, 0)); // cosine -0.9999875
  EXPECT_TRUE(approx(numbers(r), ozVec4f(0, 0, 1, 180 - static_cast<float>(0.005 / DEGREE)), 1e-2f));
}

TEST(Rotation, TheAxisOfOppositeDirectionsTakesTheFirstUnitVectorThatIsNotNearlyParallel) {
  // |from x X| = 0.9e-5 is too short, so from x Y = (0, 0, 1) counts; 1.1e-5 is not: from x X = (0, 0, -1.1e-5).
  ozRotation r(ozVec3f(1, 0.9e-5f, 0), ozVec3f(-1, 0, 0));
  EXPECT_TRUE(approx(numbers(r), ozVec4f(0, 0, 1, 0), 1e-4f));
  r.set(ozVec3f(1, 1.1e-5f, 0), ozVec3f(-1, 0, 0));
  EXPECT_TRUE(approx(numbers(r), ozVec4f(0, 0, -1, 0), 1e-4f));
}

TEST(Rotation, MultIsHamiltonsProduct) {
  ozRotation a = degrees(0, 0, 1, 90), b = degrees(1, 0, 0, 90), r;
  r.mult(a, b);
  float t = 1 / std::sqrt(3.0f);
  EXPECT_TRUE(approx(numbers(r), ozVec4f(t, t, t, 120), 1e-3f)); // (k + 1)(i + 1) / 2 = (i + j + k + 1) / 2
  r = a;
  EXPECT_EQ(&(r *= b), &r);
  EXPECT_TRUE(approx(numbers(r), ozVec4f(t, t, t, 120), 1e-3f));
}

TEST(Rotation, MultMayBeStoredIntoAnOperand) {
  ozRotation a = degrees(0, 0, 1, 30), b = degrees(1, 0, 0, 50), expected, r;
  expected.mult(a, b);
  r = a, r.mult(r, b);
  EXPECT_EQ(r, expected);
  r = b, r.mult(a, r);
  EXPECT_EQ(r, expected);
  r = a, r.mult(r, r);
  EXPECT_TRUE(approx(numbers(r), ozVec4f(0, 0, 1, 60), 1e-4f));
  r = a, r *= r;
  EXPECT_TRUE(approx(numbers(r), ozVec4f(0, 0, 1, 60), 1e-4f));
}

TEST(Rotation, ANegativeScalarPartGivesMoreThanHalfATurn) {
  ozRotation r;
  r.mult(degrees(0, 0, 1, 100), degrees(0, 0, 1, 120)); // the angle is twice the arc cosine, never turned back
  EXPECT_TRUE(approx(numbers(r), ozVec4f(0, 0, 1, 220), 1e-3f));
}

TEST(Rotation, RotationsThatCancelGiveAllZero) {
  ozRotation r;
  r.mult(degrees(0, 0, 1, 40), degrees(0, 0, -1, 40));
  EXPECT_EQ(numbers(r), ozVec4f());
}

TEST(Rotation, MultVecTurnsAVector) {
  ozVec3f v;
  degrees(0, 0, 1, 90).multVec(ozVec3f(1, 2, 3), v);
  EXPECT_TRUE(approx(v, ozVec3f(-2, 1, 3)));
  v.set(1, 2, 3);
  degrees(1, 0, 0, 90).multVec(v, v);
  EXPECT_TRUE(approx(v, ozVec3f(1, -3, 2)));
  ozMatrix4f m;
  ozRotation r = degrees(1, 2, 3, 77);
  r.get(m);
  ozVec3f byMatrix;
  byMatrix.xformVec(ozVec3f(4, 5, 6), m);
  r.multVec(ozVec3f(4, 5, 6), v);
  EXPECT_TRUE(approx(v, byMatrix));
}

TEST(Rotation, MultVecWithoutAnAxisScalesByTheSquareOfTheCosine) {
  ozVec3f v; // q is (0, 0, 0, cos 30), and so q * v * conjugate of q is 0.75 v
  degrees(0, 0, 0, 60).multVec(ozVec3f(4, -8, 12), v);
  EXPECT_TRUE(approx(v, ozVec3f(3, -6, 9)));
}

// The weights by the published formula of slerp, but with omega = cos(d), as it is meant.
ozRotation expectedSlerp(float t, ozRotation const &a, ozRotation const &b, float sign) {
  ozVec4f p = quaternion(a), q = quaternion(b), r;
  double d = std::fabs(p.dot(q)), omega = std::cos(d);
  double scaleA = std::sin((1 - t) * omega) / std::sin(omega), scaleB = std::sin(t * omega) / std::sin(omega);
  r.combine(static_cast<float>(scaleA), p, static_cast<float>(sign * scaleB), q);
  return ozRotation(r);
}

TEST(Rotation, SlerpTakesTheCosineOfTheProductForItsAngle) {
  ozRotation a = degrees(0, 0, 1, 0), b = degrees(0, 0, 1, 120), r;
  r.slerp(0.25f, a, b);
  EXPECT_TRUE(approx(numbers(r), numbers(expectedSlerp(0.25f, a, b, 1)), 1e-3f));
  EXPECT_GT(std::fabs(r.getAngleDegrees() - 30), 0.5); // where the arc cosine would give 30
  r.slerp(0.5f, a, b);
  EXPECT_NEAR(r.getAngleDegrees(), 60, 1e-3); // equal weights are equal by any angle
}

TEST(Rotation, SlerpStartsAtTheFirstAndEndsAtTheSecond) {
  ozRotation a = degrees(0, 0.6f, 0.8f, 30), b = degrees(1, 0, 0, 100), r;
  r.slerp(0, a, b);
  EXPECT_TRUE(approx(numbers(r), numbers(a), 1e-3f));
  r.slerp(1, a, b);
  EXPECT_TRUE(approx(numbers(r), numbers(b), 1e-3f));
}

TEST(Rotation, SlerpGoesTheShorterWay) {
  ozRotation a = degrees(0, 0, 1, 10), b = degrees(0, 0, 1, 350), r;
  r.slerp(0.25f, a, b);
  EXPECT_TRUE(approx(numbers(r), numbers(expectedSlerp(0.25f, a, b, -1)), 1e-3f));
  EXPECT_LT(r.getAngleDegrees(), 10);
}

TEST(Rotation, SlerpIsLinearBetweenNearlyIdenticalRotations) {
  ozRotation a = degrees(0, 0, 1, 40), b = degrees(0, 0, 1, 40.2f), r;
  r.slerp(0, a, b);
  EXPECT_TRUE(approx(numbers(r), numbers(a), 1e-3f));
  r.slerp(0.25f, a, b);
  EXPECT_TRUE(approx(numbers(r), ozVec4f(0, 0, 1, 40.05f), 1e-3f));
}

TEST(Rotation, SlerpTurnsFromLinearToCurvedAtACosineOfOneLess1e5) {
  // Half of 0.5 degrees has the cosine 1 - 0.95e-5, half of 0.53 has 1 - 1.07e-5. A quarter of the way is 0.125 degrees
  // by linear weights; the others, of the angle cos(1), make it 0.1325 * 1.0190 = 0.1350 degrees of 0.53.
  ozRotation a = degrees(0, 0, 1, 40), r;
  r.slerp(0.25f, a, degrees(0, 0, 1, 40.5f));
  EXPECT_NEAR(r.getAngleDegrees(), 40.125, 5e-4);
  r.slerp(0.25f, a, degrees(0, 0, 1, 40.53f));
  double const omega = std::cos(1.0), b = std::sin(0.25 * omega), sum = std::sin(0.75 * omega) + b;
  EXPECT_NEAR(r.getAngleDegrees(), 40 + 0.53 * b / sum, 5e-4);
  EXPECT_GT(r.getAngleDegrees(), 40.1325 + 1.5e-3);
}

TEST(Rotation, SlerpOfNoRotationsIsAllZero) {
  ozRotation a = degrees(1, 0, 0, 0), r;
  r.setDegrees(0, 0, 1, 9);
  r.slerp(0.5f, a, a);
  EXPECT_EQ(numbers(r), ozVec4f());
}

TEST(Rotation, SlerpOfARotationWithItselfIsThatRotation) {
  ozRotation r = degrees(0, 0.6f, 0.8f, 30);
  r.slerp(0.3f, r, r);
  EXPECT_TRUE(approx(numbers(r), ozVec4f(0, 0.6f, 0.8f, 30), 1e-3f));
}

TEST(Rotation, SlerpMayBeStoredIntoAnOperand) {
  ozRotation a = degrees(0, 0.6f, 0.8f, 30), b = degrees(1, 0, 0, 100), expected, r;
  expected.slerp(0.3f, a, b);
  r = a, r.slerp(0.3f, r, b);
  EXPECT_EQ(r, expected);
  r = b, r.slerp(0.3f, a, r);
  EXPECT_EQ(r, expected);
}

TEST(Rotation, InverseAndConjugateNegateTheAxisAndComplementTheAngle) {
  ozRotation a = degrees(0, 0, 1, 40), r;
  r.invert(a);
  EXPECT_EQ(numbers(r), ozVec4f(0, 0, -1, 40));
  r.makeInverse();
  EXPECT_EQ(numbers(r), ozVec4f(0, 0, 1, 40));
  r.invert(r);
  EXPECT_EQ(numbers(r), ozVec4f(0, 0, -1, 40));
  r.conjugate();
  EXPECT_EQ(numbers(r), ozVec4f(0, 0, 1, 40));
  r.complement();
  EXPECT_EQ(numbers(r), ozVec4f(0, 0, 1, -40));
}

TEST(Rotation, ScaleAngleMultipliesTheAngleAndReturnsIt) {
  ozRotation r = degrees(0, 0, 1, 40);
  EXPECT_EQ(r.scaleAngle(0.25f), 10);
  EXPECT_EQ(numbers(r), ozVec4f(0, 0, 1, 10));
}

TEST(Rotation, IsTheIdentityWithoutAnAxisOrWithoutAnAngle) {
  EXPECT_TRUE(degrees(0, 0, 0, 40).isIdentity());
  EXPECT_TRUE(degrees(0, 0, 1, 0).isIdentity());
  EXPECT_FALSE(degrees(0, 0, 1, 1e-6f).isIdentity());
}

} // namespace
