#include "math/approx.h"
#include "oz/ozBound.h"
#include "oz/ozSeg.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

ozBoxBound box(float x0, float y0, float z0, float x1, float y1, float z1) {
  ozBoxBound b;
  b.min.set(x0, y0, z0);
  b.max.set(x1, y1, z1);
  return b;
}

ozBoxBound cube() { return box(-1, -1, -1, 1, 1, 1); }

TEST(BoxBound, StartsEmpty) {
  ozBoxBound b;
  EXPECT_TRUE(b.isEmpty());
  float const inf = 3.4028235e37f;
  EXPECT_EQ(b.min, ozVec3f(inf, inf, inf));
  EXPECT_EQ(b.max, ozVec3f(-inf, -inf, -inf));
  EXPECT_EQ(b.contains(ozVec3f()), 0);
  ozBoxBound c = cube();
  c.makeEmpty();
  EXPECT_EQ(c, b);
}

TEST(BoxBound, IsEmptyIfAMinimumExceedsItsMaximumOnAnyAxis) {
  EXPECT_FALSE(box(0, 0, 0, 0, 0, 0).isEmpty());
  EXPECT_TRUE(box(1, 0, 0, 0, 0, 0).isEmpty());
  EXPECT_TRUE(box(0, 1, 0, 0, 0, 0).isEmpty());
  EXPECT_TRUE(box(0, 0, 1, 0, 0, 0).isEmpty());
}

TEST(BoxBound, ExtendByAPointWorksOnAnEmptyBox) {
  ozBoxBound b;
  b.extendBy(ozVec3f(1, 2, 3));
  EXPECT_EQ(b, box(1, 2, 3, 1, 2, 3));
  EXPECT_FALSE(b.isEmpty());
  EXPECT_EQ(b.dimension(), 0);
  b.extendBy(ozVec3f(0, 5, 3));
  EXPECT_EQ(b, box(0, 2, 3, 1, 5, 3));
}

TEST(BoxBound, ExtendByItsOwnCornerChangesNothing) {
  ozBoxBound b = cube();
  b.extendBy(b.min);
  b.extendBy(b.max);
  b.nonEmptyExtendBy(b.min);
  b.nonEmptyExtendBy(b.max);
  EXPECT_EQ(b, cube());
}

TEST(BoxBound, NonEmptyExtendByTestsTheMaximumOnlyIfTheMinimumStood) {
  ozBoxBound b = cube();
  b.nonEmptyExtendBy(ozVec3f(-2, 3, 0));
  EXPECT_EQ(b, box(-2, -1, -1, 1, 3, 1));
  ozBoxBound empty;
  empty.nonEmptyExtendBy(ozVec3f(1, 2, 3));
  EXPECT_EQ(empty.min, ozVec3f(1, 2, 3));
  EXPECT_TRUE(empty.isEmpty()); // the maximum was not looked at
}

TEST(BoxBound, ExtendByABoxTakesTheOuterCorners) {
  ozBoxBound b = cube(), other = box(-2, 0, 0, 0, 0, 5);
  b.extendBy(&other);
  EXPECT_EQ(b, box(-2, -1, -1, 1, 1, 5));
  b.extendBy(&b);
  EXPECT_EQ(b, box(-2, -1, -1, 1, 1, 5));
}

TEST(BoxBound, ExtendByAnEmptyBoxChangesNothing) {
  ozBoxBound b = cube(), empty, inverted = box(9, -9, -9, 8, 9, 9);
  b.extendBy(&empty);
  b.extendBy(&inverted);
  EXPECT_EQ(b, cube());
  empty.extendBy(&b);
  EXPECT_EQ(empty, cube());
}

TEST(BoxBound, AroundBoxesHoldsAllOfThem) {
  ozBoxBound a = cube(), b = box(3, 0, 0, 4, 0, 9), empty, result;
  ozBoxBound const *boxes[] = {&a, &empty, &b};
  result.around(boxes, 3);
  EXPECT_EQ(result, box(-1, -1, -1, 4, 1, 9));
  result.around(boxes, 1);
  EXPECT_EQ(result, cube());
  result.around(boxes, 0);
  EXPECT_TRUE(result.isEmpty());
  result = cube();
  result.around(boxes, -1);
  EXPECT_TRUE(result.isEmpty());
  ozBoxBound const *reversed[] = {&b, &a};
  a.around(reversed, 2); // the result is one of the boxes
  EXPECT_EQ(a, box(-1, -1, -1, 4, 1, 9));
}

TEST(BoxBound, AroundPointsHoldsAllOfThem) {
  ozVec3f const points[] = {ozVec3f(1, 2, 3), ozVec3f(0, 5, 3), ozVec3f(4, -1, 3)};
  ozBoxBound b = cube();
  b.around(points, 3);
  EXPECT_EQ(b, box(0, -1, 3, 4, 5, 3));
  b.around(points, 1);
  EXPECT_EQ(b, box(1, 2, 3, 1, 2, 3));
  b.around(points, 0);
  EXPECT_TRUE(b.isEmpty());
  b.around(points, -1);
  EXPECT_TRUE(b.isEmpty());
}

TEST(BoxBound, AroundPointsMayReadItsOwnCorners) {
  ozBoxBound b = box(1, 2, 3, 4, 5, 6);
  b.around(&b.max, 1);
  EXPECT_EQ(b, box(4, 5, 6, 4, 5, 6));
}

TEST(BoxBound, AroundSpheresPassesOverEmptyOnes) {
  ozSphereBound empty, a(1, 2, 3, 1), point(5, 2, 3, 0);
  ozSphereBound const *spheres[] = {&empty, &a, &empty, &point};
  ozBoxBound b;
  b.around(spheres, 4);
  EXPECT_EQ(b, box(0, 1, 2, 5, 3, 4));
  b.around(spheres, 1);
  EXPECT_TRUE(b.isEmpty());
  for (int none : {0, -1}) {
    b = cube();
    b.around(spheres, none);
    EXPECT_TRUE(b.isEmpty());
  }
}

TEST(BoxBound, ContainsAPointOnEachFace) {
  ozBoxBound b = cube();
  EXPECT_EQ(b.contains(ozVec3f()), 1);
  for (int i = 0; i < 3; i++) {
    for (float side : {-1.0f, 1.0f}) {
      ozVec3f p;
      p[i] = side;
      EXPECT_EQ(b.contains(p), 1);
      p[i] = side * 1.001f;
      EXPECT_EQ(b.contains(p), 0);
    }
  }
  EXPECT_EQ(b.contains(ozVec3f(NAN, 0, 0)), 0);
}

TEST(BoxBound, BoxesApartOnAnyAxisDoNotOverlap) {
  ozBoxBound b = cube();
  for (int i = 0; i < 3; i++) {
    for (float side : {-2.5f, 2.5f}) {
      ozBoxBound other = cube();
      other.min[i] += side;
      other.max[i] += side;
      EXPECT_EQ(b.contains(&other), 0);
    }
  }
  ozBoxBound empty;
  EXPECT_EQ(b.contains(&empty), 0);
}

TEST(BoxBound, BoxesThatTouchOrOverlapGiveThree) {
  ozBoxBound b = cube(), touching = box(-3, -1, -1, -1, 1, 1), overlapping = box(-2, -2, 0, 0.5f, 0, 2);
  EXPECT_EQ(b.contains(&touching), 3);
  EXPECT_EQ(b.contains(&overlapping), 3);
  ozBoxBound inner = box(0, 0, 0, 0.5f, 0.5f, 0.5f);
  EXPECT_EQ(b.contains(&inner), 3); // wholly inside, and yet: the maxima compare the other way
}

TEST(BoxBound, ABoxThatIsNowhereAboveTheOtherGivesFour) {
  ozBoxBound b = cube(), same = cube(), shifted = box(0, 0, 0, 2, 2, 2);
  EXPECT_EQ(b.contains(&same), 4);
  EXPECT_EQ(b.contains(&b), 4);
  EXPECT_EQ(b.contains(&shifted), 4);
  EXPECT_EQ(shifted.contains(&b), 3);
}

TEST(BoxBound, XformBoundsTheTransformedCorners) {
  ozMatrix4f m;
  m.makeRot(1, 2, 3, 0.8f);
  m.postScale(m, 2, 3, -1);
  m.setRow(3, ozVec3f(5, 6, 7));
  ozBoxBound const src = box(-1, -2, -3, 4, 5, 6);
  ozBoxBound expected, b;
  for (int corner = 0; corner < 8; corner++) {
    ozVec3f p(corner & 1 ? 4 : -1, corner & 2 ? 5 : -2, corner & 4 ? 6 : -3);
    p.xformPt(p, m);
    expected.extendBy(p);
  }
  b.xform(&src, m);
  EXPECT_TRUE(approx(b.min, expected.min, 1e-4f));
  EXPECT_TRUE(approx(b.max, expected.max, 1e-4f));
  ozBoxBound same = src;
  same.xform(&same, m);
  EXPECT_EQ(same, b);
}

TEST(BoxBound, XformDoesNotDetectAnEmptyBox) {
  ozBoxBound src = box(1, 1, 1, -1, -1, -1), b;
  b.xform(&src, ozMatrix4f());
  EXPECT_EQ(b, cube()); // min and max sorted themselves
}

TEST(BoxBound, DimensionCountsTheAxesWithAnExtent) {
  EXPECT_EQ(cube().dimension(), 3);
  EXPECT_EQ(box(0, 0, 0, 1, 0.9e-5f, 1).dimension(), 2);
  EXPECT_EQ(box(0, 0, 0, 1, 1.1e-5f, 1).dimension(), 3);
  EXPECT_EQ(box(0, 0, 0, 0, 0, 1).dimension(), 1);
  EXPECT_EQ(ozBoxBound().dimension(), 0);
}

TEST(BoxBound, CalcNormTellsTheFaceOfAPoint) {
  ozBoxBound b = cube(); // the tolerance is 0.0002
  ozVec3f n(9, 9, 9);
  b.calcNorm(ozVec3f(-1, 0, 0), n);
  EXPECT_EQ(n, ozVec3f(-1, 0, 0));
  b.calcNorm(ozVec3f(1.0001f, 0, 0), n);
  EXPECT_EQ(n, ozVec3f(1, 0, 0));
  b.calcNorm(ozVec3f(0, -0.9999f, 1), n);
  EXPECT_EQ(n, ozVec3f(0, -1, 0)); // y comes before z
  b.calcNorm(ozVec3f(0, 0, 1), n);
  EXPECT_EQ(n, ozVec3f(0, 0, 1));
  b.calcNorm(ozVec3f(0, 0, 0.999f), n);
  EXPECT_EQ(n, ozVec3f());
  b.calcNorm(b.max, b.max);
  EXPECT_EQ(b.max, ozVec3f(1, 0, 0));
}

TEST(BoxBound, CalcNormLeavesOutWhatLiesATenThousandthFromAFace) {
  ozBoxBound b = box(0, 0, 0, 20000, 20000, 20000); // the tolerance is 2
  ozVec3f n;
  for (float x : {2.0f, 19998.0f}) {
    n.set(9, 9, 9);
    b.calcNorm(ozVec3f(x, 10000, 10000), n);
    EXPECT_EQ(n, ozVec3f()) << x;
  }
  b.calcNorm(ozVec3f(1.99f, 10000, 10000), n);
  EXPECT_EQ(n, ozVec3f(-1, 0, 0));
  b.calcNorm(ozVec3f(19998.01f, 10000, 10000), n);
  EXPECT_EQ(n, ozVec3f(1, 0, 0));
}

TEST(BoxBound, CalcNormFindsNoFaceAcrossAnAxisWithoutAnExtent) {
  ozBoxBound b = box(5, 0, 0, 5, 2, 2); // the tolerance on x is 0, and nothing lies strictly within it
  ozVec3f n;
  b.calcNorm(ozVec3f(5, 2, 0), n);
  EXPECT_EQ(n, ozVec3f(0, 1, 0));
  b.calcNorm(ozVec3f(5, 1, 1), n);
  EXPECT_EQ(n, ozVec3f());
}

TEST(BoxBound, IsEqualIfAllSixNumbersAre) {
  EXPECT_TRUE(cube() == cube());
  EXPECT_FALSE(cube() != cube());
  for (int i = 0; i < 3; i++) {
    ozBoxBound a = cube(), b = cube();
    a.min[i] = -2;
    b.max[i] = 2;
    EXPECT_FALSE(a == cube());
    EXPECT_FALSE(b == cube());
  }
}

// A segment, its direction normalised.
ozSeg seg(ozVec3f const &origin, ozVec3f direction, float length) {
  ozSeg s;
  direction.normalize();
  s.setOrigin(origin);
  s.setDirection(direction);
  s.setLength(length);
  return s;
}

void expectIsect(ozBoxBound const &b, ozSeg const &s, int flags, float t0, float t1) {
  float a = -9, c = -9;
  EXPECT_EQ(b.isect(&s, &a, &c), flags);
  EXPECT_NEAR(a, t0, 1e-5);
  EXPECT_NEAR(c, t1, 1e-5);
  EXPECT_EQ(b.isect(&s, nullptr, nullptr), flags);
}

TEST(BoxBoundIsect, ASegmentOfNoLengthMissesEverything) {
  expectIsect(cube(), seg(ozVec3f(), ozVec3f(1, 0, 0), 0), 0, -9, -9);
}

TEST(BoxBoundIsect, TellsWhereTheEndsAreAlongEachAxis) {
  for (int i = 0; i < 3; i++) {
    for (float sign : {1.0f, -1.0f}) {
      ozVec3f direction, before, inside;
      direction[i] = sign;
      before[i] = -3 * sign;
      inside[i] = -0.5f * sign;
      expectIsect(cube(), seg(inside, direction, 1), 31, 0, 1);
      expectIsect(cube(), seg(inside, direction, 9), 11, 0, 1.5f);
      expectIsect(cube(), seg(before, direction, 3), 19, 2, 3);
      expectIsect(cube(), seg(before, direction, 9), 3, 2, 4);
      expectIsect(cube(), seg(before, direction, 1), 0, -9, -9);
      ozVec3f behind = -before;
      expectIsect(cube(), seg(behind, direction, 9), 0, -9, -9);
    }
  }
}

TEST(BoxBoundIsect, TellsWhereTheEndsAreOnASlant) {
  ozBoxBound b = box(-1, -2, -3, 1, 2, 3);
  float const root = std::sqrt(14.0f);
  // Along (1, 2, 3) all three slabs are entered at once; along (3, 2, 1) x decides.
  expectIsect(b, seg(ozVec3f(-2, -4, -6), ozVec3f(1, 2, 3), 100), 3, root, 3 * root);
  expectIsect(b, seg(ozVec3f(), ozVec3f(3, 2, 1), 100), 11, 0, root / 3);
  expectIsect(b, seg(ozVec3f(-6, -4, -2), ozVec3f(3, 2, 1), 2 * root), 19, root * 5 / 3, 2 * root);
  expectIsect(b, seg(ozVec3f(-0.3f, -0.2f, -0.1f), ozVec3f(3, 2, 1), 0.2f), 31, 0, 0.2f);
}

TEST(BoxBoundIsect, MissesPastAnEdge) {
  expectIsect(cube(), seg(ozVec3f(-3, 0, 0), ozVec3f(1, 1, 0), 100), 0, -9, -9);
  expectIsect(cube(), seg(ozVec3f(-3, 0, 0), ozVec3f(2, 0, 1.5f), 100), 0, -9, -9);
  expectIsect(cube(), seg(ozVec3f(0, -3, 0), ozVec3f(0.1f, 2, 1.5f), 100), 0, -9, -9);
}

TEST(BoxBoundIsect, AlongAnAxisTheOtherTwoMustHoldTheOrigin) {
  expectIsect(cube(), seg(ozVec3f(-3, 1, 1), ozVec3f(1, 0, 0), 9), 3, 2, 4);
  expectIsect(cube(), seg(ozVec3f(-3, 1.5f, 0), ozVec3f(1, 0, 0), 9), 0, -9, -9);
  expectIsect(cube(), seg(ozVec3f(-3, 0, -1.5f), ozVec3f(1, 0, 0), 9), 0, -9, -9);
}

TEST(BoxBoundIsect, ASegmentParallelToTheThirdAxisFacesIsNotTestedAgainstThem) {
  // In a plane far above the box on z, and yet it is found.
  expectIsect(cube(), seg(ozVec3f(-2, -2, 50), ozVec3f(1, 1, 0), 100), 3, std::sqrt(2.0f), 3 * std::sqrt(2.0f));
}

// As seg, but the direction as it is.
ozSeg rawSeg(ozVec3f const &origin, ozVec3f const &direction, float length) {
  ozSeg s;
  s.setOrigin(origin);
  s.setDirection(direction);
  s.setLength(length);
  return s;
}

TEST(BoxBoundIsect, ASegmentIsParallelToFacesBelowTheTinyEpsilon) {
  // Below it on the second axis, the third is tested by the origin; above it, the third is not tested at all.
  expectIsect(cube(), rawSeg(ozVec3f(-2, 0, 50), ozVec3f(1, 0.9e-15f, 0), 9), 0, -9, -9);
  expectIsect(cube(), rawSeg(ozVec3f(-2, 0, 50), ozVec3f(1, 1.1e-15f, 0), 9), 3, 1, 3);
  // On the third axis the faces count only above it.
  expectIsect(cube(), rawSeg(ozVec3f(-2, -2, 50), ozVec3f(1, 1, 0.9e-15f), 9), 3, 1, 3);
  expectIsect(cube(), rawSeg(ozVec3f(-2, -2, 50), ozVec3f(1, 1, 1.1e-15f), 9), 0, -9, -9);
}

TEST(BoxBoundIsect, OfEqualDirectionsTheThirdAxisIsZOrWithASteepZX) {
  // At the tiny epsilon itself the second axis is tested by its faces and the third is not tested at all, so the order
  // shows: y is second if it equals z or x, and x if it equals z.
  float const t = 1e-15f;
  struct {
    ozVec3f direction, origin;
    int tested, untested;
  } const cases[] = {{ozVec3f(1, t, t), ozVec3f(-2, 0, 0), 1, 2},
                     {ozVec3f(t, 1, t), ozVec3f(0, -2, 0), 0, 2},
                     {ozVec3f(t, t, 1), ozVec3f(0, 0, -2), 1, 0}};
  for (auto const &c : cases) {
    ozVec3f origin = c.origin;
    origin[c.untested] = 50;
    expectIsect(cube(), rawSeg(origin, c.direction, 9), 3, 1, 3);
    origin = c.origin;
    origin[c.tested] = 50;
    expectIsect(cube(), rawSeg(origin, c.direction, 9), 0, -9, -9);
  }
}

TEST(BoxBoundIsect, OnlyOnXIsABoxSeenToBeEmpty) {
  // The faces of y are sorted by their distances like any others.
  expectIsect(box(-1, 1, -1, 1, -1, 1), rawSeg(ozVec3f(-2, -2, 0), ozVec3f(1, 1, 0), 9), 3, 1, 3);
  expectIsect(box(1, -1, -1, -1, 1, 1), rawSeg(ozVec3f(-2, -2, 0), ozVec3f(1, 1, 0), 9), 0, -9, -9);
}

TEST(BoxBoundIsect, TouchingIsEnough) {
  expectIsect(cube(), rawSeg(ozVec3f(-3, 0, 0), ozVec3f(1, 0, 0), 2), 19, 2, 2); // ends on the face
  expectIsect(cube(), rawSeg(ozVec3f(1, 0, 0), ozVec3f(1, 0, 0), 9), 11, 0, 0);  // starts on it and leaves
  expectIsect(cube(), rawSeg(ozVec3f(-2, -4, 0), ozVec3f(1, 1, 0), 9), 3, 3, 3); // x from 1 to 3, y from 3 to 5
  expectIsect(cube(), rawSeg(ozVec3f(-4, -2, 0), ozVec3f(1, 1, 0), 9), 3, 3, 3); // x from 3 to 5, y from 1 to 3
}

TEST(BoxBoundIsect, AnEmptyBoxIsMissed) {
  expectIsect(box(1, -1, -1, -1, 1, 1), seg(ozVec3f(-3, 0, 0), ozVec3f(1, 0, 0), 9), 0, -9, -9);
  expectIsect(ozBoxBound(), seg(ozVec3f(-3, 0, 0), ozVec3f(1, 0, 0), 9), 0, -9, -9);
}

TEST(BoxBoundIsect, ASlabEnteredLaterClearsTheBitsOfTheStart) {
  // x alone would give 11: the start lies between its faces, but y is entered only at 1.
  ozSeg s = seg(ozVec3f(-0.9f, -1.8f, 0), ozVec3f(1, 0.8f, 0), 1.5f);
  float const step = std::sqrt(1.64f); // the length of one unit of x
  expectIsect(cube(), s, 19, step, 1.5f);
  s.setLength(9);
  expectIsect(cube(), s, 3, step, 1.9f * step);
}

} // namespace
