#include "math/approx.h"
#include "oz/ozBound.h"
#include "oz/ozSeg.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

namespace {

void expectSphere(ozSphereBound const &s, float x, float y, float z, float r, float tolerance = 1e-5f) {
  EXPECT_TRUE(approx(ozVec4f(s.center[0], s.center[1], s.center[2], s.radius), ozVec4f(x, y, z, r), tolerance));
}

TEST(SphereBound, StartsEmpty) {
  ozSphereBound s;
  EXPECT_TRUE(s.isEmpty());
  EXPECT_EQ(s, ozSphereBound(0, 0, 0, -1));
  s = ozSphereBound(1, 2, 3, 4);
  expectSphere(s, 1, 2, 3, 4, 0);
  EXPECT_FALSE(s.isEmpty());
  s.makeEmpty();
  EXPECT_EQ(s, ozSphereBound(0, 0, 0, -1));
  EXPECT_FALSE(ozSphereBound(0, 0, 0, 0).isEmpty());
}

TEST(SphereBound, IsEqualIfAllFourNumbersAre) {
  ozSphereBound const s(1, 2, 3, 4);
  EXPECT_TRUE(s == ozSphereBound(1, 2, 3, 4));
  EXPECT_FALSE(s != ozSphereBound(1, 2, 3, 4));
  EXPECT_FALSE(s == ozSphereBound(1, 2, 3, 5));
  EXPECT_FALSE(s == ozSphereBound(1, 9, 3, 4));
}

TEST(SphereBound, ExtendByAPointGrowsToThePoint) {
  ozSphereBound s;
  s.extendBy(ozVec3f(1, 2, 3));
  expectSphere(s, 1, 2, 3, 0, 0);
  s = ozSphereBound(0, 0, 0, 1);
  s.extendBy(ozVec3f(3, 0, 0)); // from -1 to 3
  expectSphere(s, 1, 0, 0, 2);
  s.extendBy(ozVec3f(1, 2, 0)); // on its surface
  expectSphere(s, 1, 0, 0, 2, 0);
  s.extendBy(s.center);
  expectSphere(s, 1, 0, 0, 2, 0);
}

TEST(SphereBound, ExtendByItsOwnCentreWorksOnAnEmptyOne) {
  ozSphereBound s(1, 2, 3, -1);
  s.extendBy(s.center);
  expectSphere(s, 1, 2, 3, 0, 0);
}

TEST(SphereBound, ExtendByASphereHoldsBoth) {
  ozSphereBound s(0, 0, 0, 1), other(5, 0, 0, 2), empty;
  s.extendBy(&empty);
  expectSphere(s, 0, 0, 0, 1, 0);
  empty.extendBy(&s);
  expectSphere(empty, 0, 0, 0, 1, 0);
  s.extendBy(&other); // from -1 to 7
  expectSphere(s, 3, 0, 0, 4);
  s.extendBy(&s);
  expectSphere(s, 3, 0, 0, 4);
}

TEST(SphereBound, ExtendByAConcentricSphereTakesTheLargerRadius) {
  ozSphereBound s(1, 1, 1, 1), larger(1, 1, 1, 2), smaller(1, 1, 1, 0.5f);
  s.extendBy(&smaller);
  expectSphere(s, 1, 1, 1, 1, 0);
  s.extendBy(&larger);
  expectSphere(s, 1, 1, 1, 2, 0);
}

TEST(SphereBound, ExtendByANearlyConcentricSphereKeepsItsCentre) {
  ozSphereBound s(0, 0, 0, 1), larger(1e-8f, 0, 0, 2); // 1e-16 is not above the tiny epsilon
  s.extendBy(&larger);
  expectSphere(s, 0, 0, 0, 2, 0);
  ozSphereBound apart(1e-7f, 0, 0, 3); // 1e-14 is, and the larger one is copied
  s.extendBy(&apart);
  expectSphere(s, 1e-7f, 0, 0, 3, 0);
}

TEST(SphereBound, OfTwoSpheresOneInTheOtherTheLargerStands) {
  ozSphereBound s(0, 0, 0, 5), inner(1, 0, 0, 1);
  s.extendBy(&inner);
  expectSphere(s, 0, 0, 0, 5, 0);
  inner.extendBy(&s);
  expectSphere(inner, 0, 0, 0, 5, 0);
}

TEST(SphereBound, AroundBoxesReachesTheCorners) {
  ozBoxBound a, b;
  a.extendBy(ozVec3f(-1, -2, -2)), a.extendBy(ozVec3f(0, 0, 0));
  b.extendBy(ozVec3f(1, 2, 2));
  ozBoxBound const *boxes[] = {&a, &b};
  ozSphereBound s;
  s.around(boxes, 2);
  expectSphere(s, 0, 0, 0, 3);
  s.around(boxes, 0);
  EXPECT_EQ(s, ozSphereBound());
}

TEST(SphereBound, AroundAnEmptyBoxIsEmpty) {
  ozBoxBound empty;
  ozBoxBound const *boxes[] = {&empty};
  ozSphereBound s(1, 2, 3, 4);
  s.around(boxes, 1);
  EXPECT_EQ(s, ozSphereBound());
}

TEST(SphereBound, AroundABoxLooksAtItsExtentOnXAlone) {
  ozBoxBound inverted; // empty on y, but not on x: half of the extent is (1, -2, 2)
  inverted.min.set(0, 4, 0);
  inverted.max.set(2, 0, 4);
  ozBoxBound const *boxes[] = {&inverted};
  ozSphereBound s;
  s.around(boxes, 1);
  expectSphere(s, 1, 2, 2, 3);
}

TEST(SphereBound, AroundPointsIsAroundTheirBox) {
  ozVec3f const points[] = {ozVec3f(-1, 2, 0), ozVec3f(1, -2, 1), ozVec3f(0, 0, -3)};
  ozSphereBound s;
  s.around(points, 3);
  expectSphere(s, 0, 0, -1, 3); // half diagonal of 2, 4, 4
  s.around(points, 0);
  EXPECT_TRUE(s.isEmpty());
}

TEST(SphereBoundAround, OfNoSpheresIsEmpty) {
  ozSphereBound s(1, 2, 3, 4), a(1, 1, 1, 1);
  ozSphereBound const *spheres[] = {&a};
  s.around(spheres, 0);
  EXPECT_EQ(s, ozSphereBound());
  s = a;
  s.around(static_cast<ozSphereBound const **>(nullptr), 3);
  EXPECT_EQ(s, ozSphereBound());
}

TEST(SphereBoundAround, OneSphereIsCopied) {
  ozSphereBound s, a(1, 2, 3, 4);
  ozSphereBound const *one[] = {&a}, *null[] = {nullptr};
  s.around(one, 1);
  EXPECT_EQ(s, a);
  s.around(null, 1);
  EXPECT_EQ(s, a);
}

TEST(SphereBoundAround, SpheresInsideTheLargestKeepItExactly) {
  ozSphereBound a(0.1f, 0, 0, 1), large(0.3f, 0.7f, 0, 5), b(1, 1, 1, 2), empty;
  ozSphereBound const *spheres[] = {&a, nullptr, &large, &empty, &b};
  ozSphereBound s;
  s.around(spheres, 5);
  EXPECT_EQ(s, large);
}

TEST(SphereBoundAround, OnlyEmptySpheresGiveAnEmptySphere) {
  ozSphereBound a, b(5, 5, 5, -2), s(1, 2, 3, 4);
  ozSphereBound const *spheres[] = {&a, &b, nullptr};
  s.around(spheres, 3);
  EXPECT_TRUE(s.isEmpty());
}

TEST(SphereBoundAround, OneOutsiderAtTheEndExtendsTheLargest) {
  ozSphereBound large(0, 0, 0, 3), inner(1, 0, 0, 1), outsider(10, 0, 0, 1), s;
  ozSphereBound const *spheres[] = {&inner, &large, &outsider};
  s.around(spheres, 3); // from -3 to 11
  expectSphere(s, 4, 0, 0, 7);
}

TEST(SphereBoundAround, OneOutsiderOnADiagonalExtendsTheLargestWhereverThatStands) {
  // The far ends lie on the line of the centres, which are sqrt(200) apart. A box would give the centre (4, 4, 0).
  ozSphereBound large(0, 0, 0, 3), outsider(10, 10, 0, 1), s;
  float const x = (10 - 2 * std::sqrt(0.5f)) / 2;
  ozSphereBound const *spheres[] = {&large, &outsider}, *reversed[] = {&outsider, nullptr, &large};
  s.around(spheres, 2);
  expectSphere(s, x, x, 0, (std::sqrt(200.0f) + 4) / 2);
  s.around(reversed, 3); // the largest itself does not count as a sphere behind the outsider
  expectSphere(s, x, x, 0, (std::sqrt(200.0f) + 4) / 2);
}

TEST(SphereBoundAround, ASphereBehindTheFirstOutsiderOpensTheBox) {
  // The box is -3..11 by -3..11 by -3..3: centre (4, 4, 0), half of the extent 7. Last pass: the large one is sqrt(32)
  // away, 8.66 with its radius; the outsider sqrt(72), 9.49. The sphere that opens the box lies inside the largest.
  ozSphereBound large(0, 0, 0, 3), outsider(10, 10, 0, 1), inner(1, 0, 0, 1), s;
  ozSphereBound const *spheres[] = {&large, &outsider, &inner};
  s.around(spheres, 3);
  expectSphere(s, 4, 4, 0, std::sqrt(72.0f) + 1);
}

TEST(SphereBoundAround, OfSpheresAsSmallAsPointsTheLastIsTheLargest) { // each counts as 0, and exceeds it. Meant.
  ozSphereBound a(0, 0, 0, 1e-7f), b(4e-8f, 0, 0, 0.5e-7f), s;
  ozSphereBound const *spheres[] = {&a, &b};
  s.around(spheres, 2); // the difference of the radii is 5e-8, so a does not reach out of b
  EXPECT_EQ(s, b);
}

TEST(SphereBoundAround, ARadiusALittleBelowZeroCountsAsZeroAmongTheLargest) { // so no point is larger. Meant.
  ozSphereBound a(1, 2, 3, -0.5f), point(1.1f, 2, 3, 0), s;
  ozSphereBound const *spheres[] = {&a, &point};
  s.around(spheres, 2); // 0.5 * 0.5 is more than the square of the distance
  EXPECT_EQ(s, a);
  EXPECT_TRUE(s.isEmpty());
}

TEST(SphereBoundAround, TheBoxTakesEverySphereAfterTheFirstOutsiderButNoneBefore) {
  // Both outsiders in the box: x from -3 to 11, y from -3 to 21. Centre (4, 9, 0), radius 12.
  // Last pass: the large one is 9.849 away, plus 3 is 12.849. The one at (10, 0, 0) is 10.817 away, 11.817: inside. The
  // one at (0, 20, 0) is 11.705 away, 12.705: inside.
  ozSphereBound large(0, 0, 0, 3), first(10, 0, 0, 1), second(0, 20, 0, 1), s;
  ozSphereBound const *spheres[] = {&large, &first, &second};
  s.around(spheres, 3);
  expectSphere(s, 4, 9, 0, std::sqrt(97.0f) + 3);
}

TEST(SphereBoundAround, TheLastPassPassesOverPoints) {
  // The box of the points alone: 0..6 by 0..6, centre (3, 3, 0), radius 3, though the points are 4.24 away.
  ozSphereBound a(0, 0, 0, 0), b(6, 0, 0, 0), c(0, 6, 0, 0), s;
  ozSphereBound const *spheres[] = {&a, &b, &c};
  s.around(spheres, 3);
  expectSphere(s, 3, 3, 0, 3);
}

TEST(SphereBoundAround, TheLastPassTakesSpheresAbove1_19e7) {
  for (float radius : {1.1920929e-07f, 1.3e-07f}) {
    ozSphereBound a(0, 0, 0, radius), b(6, 0, 0, radius), c(0, 6, 0, radius), s;
    ozSphereBound const *spheres[] = {&a, &b, &c};
    s.around(spheres, 3); // the box has half an extent of 3, and its corners are sqrt(18) away
    expectSphere(s, 3, 3, 0, radius > 1.2e-07f ? std::sqrt(18.0f) : 3);
  }
}

TEST(SphereBoundAround, ASphereWithoutANumberForARadiusIsPassedOver) {
  ozSphereBound large(0, 0, 0, 3), strange(50, 0, 0, NAN), endless(90, 0, 0, INFINITY), s;
  ozSphereBound const *spheres[] = {&large, &strange};
  s.around(spheres, 2);
  EXPECT_EQ(s, large);
  ozSphereBound const *two[] = {&endless, &large};
  s.around(two, 2);
  EXPECT_EQ(s.radius, INFINITY);
}

TEST(SphereBoundAround, AHugeRadiusIsARadius) {
  ozSphereBound large(0, 0, 0, 2e10f), outsider(1e11f, 0, 0, 1e10f), s;
  ozSphereBound const *spheres[] = {&large, &outsider};
  s.around(spheres, 2); // from -2e10 to 11e10
  EXPECT_FLOAT_EQ(s.center[0], 4.5e10f);
  EXPECT_FLOAT_EQ(s.radius, 6.5e10f);
}

TEST(SphereBoundAround, TheResultMayBeOneOfTheSpheres) {
  ozSphereBound large(0, 0, 0, 3), first(10, 0, 0, 1), second(0, 20, 0, 1), expected;
  ozSphereBound const *spheres[] = {&large, &first, &second};
  expected.around(spheres, 3);
  large.around(spheres, 3);
  EXPECT_EQ(large, expected);
  large = ozSphereBound(0, 0, 0, 3);
  first.around(spheres, 3);
  EXPECT_EQ(first, expected);
}

TEST(SphereBound, ContainsPointsUpToItsSurface) {
  ozSphereBound s(1, 0, 0, 2);
  EXPECT_EQ(s.contains(ozVec3f(3, 0, 0)), 1);
  EXPECT_EQ(s.contains(ozVec3f(1, 2.001f, 0)), 0);
}

TEST(SphereBound, AnEmptySphereContainsByTheSquareOfItsRadius) {
  EXPECT_EQ(ozSphereBound().contains(ozVec3f(0.5f, 0, 0)), 1); // only the square of -1 is looked at
}

TEST(SphereBound, ContainsASphereWhollyPartlyOrNot) {
  ozSphereBound s(0, 0, 0, 3), inner(1, 0, 0, 2), across(2, 0, 0, 2), apart(6, 0, 0, 2), larger(0, 0, 0, 4), empty;
  ozSphereBound touching(5, 0, 0, 2);
  EXPECT_EQ(s.contains(&inner), 7);
  EXPECT_EQ(s.contains(&s), 7);
  EXPECT_EQ(s.contains(&across), 3);
  EXPECT_EQ(s.contains(&touching), 3);
  EXPECT_EQ(s.contains(&apart), 0);
  EXPECT_EQ(s.contains(&larger), 3);
  EXPECT_EQ(s.contains(&empty), 0);
  EXPECT_EQ(empty.contains(&s), 0);
}

TEST(SphereBound, XformNeverShrinks) {
  ozSphereBound const src(1, 2, 3, 4);
  ozSphereBound s;
  ozMatrix4f m;
  m.makeScale(0.5f, 0.5f, 0.5f);
  s.xform(&src, m);
  expectSphere(s, 0.5f, 1, 1.5f, 4, 0);
  m.makeScale(2, 2, 2);
  s.xform(&src, m);
  expectSphere(s, 2, 4, 6, 8);
  m.makeScale(1, 0.5f, 3);
  m.setRow(3, ozVec3f(10, 20, 30));
  s.xform(&src, m);
  expectSphere(s, 11, 21, 39, 12);
}

TEST(SphereBound, XformScalesByTheLongestOfThreeRows) {
  ozSphereBound const src(0, 0, 0, 4);
  for (int i = 0; i < 3; i++) {
    ozSphereBound s;
    ozMatrix4f m;
    m.setRow(i, ozVec3f(0, 3, 4)); // a length of 5
    s.xform(&src, m);
    expectSphere(s, 0, 0, 0, 20);
  }
}

TEST(SphereBound, XformLooksAtThreeElementsOfARow) {
  ozSphereBound const src(1, 2, 3, 4);
  ozSphereBound s;
  ozMatrix4f m;
  m.setCol(3, 7, 7, 7, 1);
  s.xform(&src, m);
  expectSphere(s, 1, 2, 3, 4, 0);
  s.orthoXform(&src, m);
  expectSphere(s, 1, 2, 3, 4, 0);
}

TEST(SphereBound, OrthoXformScalesByTheFirstRow) {
  ozSphereBound const src(1, 2, 3, 4);
  ozSphereBound s;
  ozMatrix4f m;
  m.makeScale(0.5f, 7, 7);
  m.setRow(3, ozVec3f(10, 20, 30));
  s.orthoXform(&src, m);
  expectSphere(s, 10.5f, 34, 51, 2);
}

TEST(SphereBound, TransformsMayBeStoredIntoTheOperand) {
  ozMatrix4f m(0, 2, 0, 0, 0, 0, 2, 0, 2, 0, 0, 0, 10, 20, 30, 1);
  ozSphereBound a(1, 2, 3, 4), b = a;
  a.xform(&a, m);
  expectSphere(a, 16, 22, 34, 8);
  b.orthoXform(&b, m);
  expectSphere(b, 16, 22, 34, 8);
}

void expectIsect(ozSphereBound const &b, ozVec3f const &origin, float length, int flags, float t0, float t1) {
  ozSeg s;
  s.setOrigin(origin);
  s.setDirection(1, 0, 0);
  s.setLength(length);
  float a = -9, c = -9;
  EXPECT_EQ(b.isect(&s, &a, &c), flags);
  EXPECT_NEAR(a, t0, 1e-5);
  EXPECT_NEAR(c, t1, 1e-5);
  EXPECT_EQ(b.isect(&s, nullptr, nullptr), flags);
}

TEST(SphereBound, IsectTellsWhereTheEndsAre) {
  ozSphereBound const s(5, 0, 0, 2);
  expectIsect(s, ozVec3f(4, 0, 0), 1, 31, 0, 1);
  expectIsect(s, ozVec3f(4, 0, 0), 9, 11, 0, 3);
  expectIsect(s, ozVec3f(0, 0, 0), 4, 19, 3, 4);
  expectIsect(s, ozVec3f(0, 0, 0), 9, 3, 3, 7);
  expectIsect(s, ozVec3f(0, 1.2f, 0), 9, 3, 3.4f, 6.6f); // a 3-4-5 triangle
  expectIsect(s, ozVec3f(3, 0, 0), 4, 31, 0, 4);         // both bounds included
}

TEST(SphereBound, ASegmentThatEndsOrStartsOnItsSurfaceMeetsIt) {
  ozSphereBound const s(5, 0, 0, 2);
  expectIsect(s, ozVec3f(0, 0, 0), 3, 19, 3, 3);
  expectIsect(s, ozVec3f(7, 0, 0), 9, 11, 0, 0);
}

TEST(SphereBound, ATangentMeetsItInOnePoint) { expectIsect(ozSphereBound(5, 0, 0, 2), ozVec3f(0, 2, 0), 9, 3, 5, 5); }

TEST(SphereBound, IsectMisses) {
  ozSphereBound const s(5, 0, 0, 2);
  expectIsect(s, ozVec3f(0, 2.1f, 0), 9, 0, -9, -9);
  expectIsect(s, ozVec3f(0, 0, 0), 2, 0, -9, -9);
  expectIsect(s, ozVec3f(8, 0, 0), 9, 0, -9, -9);
  expectIsect(ozSphereBound(5, 0, 0, -2), ozVec3f(0, 0, 0), 9, 0, -9, -9);
}

} // namespace
