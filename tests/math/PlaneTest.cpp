#include "math/approx.h"
#include "math/slot.h"
#include "oz/ozPlane.h"
#include "oz/ozSeg.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

ozPlane plane(float x, float y, float z, float offset) {
  ozPlane p;
  p.normal.set(x, y, z);
  p.offset = offset;
  return p;
}

void expectPlane(ozPlane const &p, float x, float y, float z, float offset) {
  EXPECT_TRUE(approx(ozVec4f(p.normal[0], p.normal[1], p.normal[2], p.offset), ozVec4f(x, y, z, offset)));
}

TEST(Plane, StartsWithoutANormal) { EXPECT_EQ(ozPlane().normal, ozVec3f()); }

TEST(Plane, IsItsVirtualTableAndItsNumbers) { EXPECT_EQ(sizeof(ozPlane), sizeof(void *) + 16); }

TEST(Plane, HasItsOperationsInTheirSlots) {
  if (slotOf(static_cast<int (ozPlane::*)(ozVec3f const &) const>(&ozPlane::contains)) < 0)
    GTEST_SKIP() << "SKIPPED: slots are not known on this machine";
  EXPECT_EQ(slotOf(static_cast<int (ozPlane::*)(ozVec3f const &) const>(&ozPlane::contains)), 0);
  EXPECT_EQ(slotOf(static_cast<int (ozPlane::*)(ozSphereBound const *) const>(&ozPlane::contains)), 1);
  EXPECT_EQ(slotOf(static_cast<int (ozPlane::*)(ozBoxBound const *) const>(&ozPlane::contains)), 2);
  EXPECT_EQ(slotOf(static_cast<int (ozPlane::*)(ozSeg const *, float *, float *) const>(&ozPlane::isect)), 3);
  EXPECT_EQ(slotOf(static_cast<int (ozPlane::*)(ozSeg const *, float *) const>(&ozPlane::isect)), 4);
}

TEST(Plane, ContainsThePointsBehindAndOnIt) {
  ozPlane p = plane(0, 1, 0, 2);
  EXPECT_EQ(p.contains(ozVec3f(9, 1, 9)), 1);
  EXPECT_EQ(p.contains(ozVec3f(9, 2, 9)), 1);
  EXPECT_EQ(p.contains(ozVec3f(9, 2.5f, 9)), 0);
}

TEST(Plane, ContainsASphereWhollyPartlyOrNot) {
  ozPlane p = plane(0, 1, 0, 2);
  ozSphereBound inside(0, 0, 0, 1), across(0, 2, 0, 1), outside(0, 4, 0, 1), empty;
  ozSphereBound touchingOutside(0, 3, 0, 1), touchingInside(0, 1, 0, 1);
  EXPECT_EQ(p.contains(&inside), 7);
  EXPECT_EQ(p.contains(&across), 3);
  EXPECT_EQ(p.contains(&outside), 0);
  EXPECT_EQ(p.contains(&touchingOutside), 3);
  EXPECT_EQ(p.contains(&touchingInside), 3);
  EXPECT_EQ(p.contains(&empty), 0);
}

ozBoxBound box(float x0, float y0, float z0, float x1, float y1, float z1) {
  ozBoxBound b;
  b.min.set(x0, y0, z0);
  b.max.set(x1, y1, z1);
  return b;
}

TEST(Plane, ContainsABoxWhollyPartlyOrNot) {
  ozBoxBound b = box(-1, -1, -1, 1, 1, 1);
  for (float sign : {1.0f, -1.0f}) {
    for (int i = 0; i < 3; i++) {
      ozVec3f n;
      n[i] = sign;
      EXPECT_EQ(plane(n[0], n[1], n[2], 2).contains(&b), 7);
      EXPECT_EQ(plane(n[0], n[1], n[2], 1).contains(&b), 7);
      EXPECT_EQ(plane(n[0], n[1], n[2], 0).contains(&b), 3);
      EXPECT_EQ(plane(n[0], n[1], n[2], -1).contains(&b), 3);
      EXPECT_EQ(plane(n[0], n[1], n[2], -1.5f).contains(&b), 0);
    }
  }
}

TEST(Plane, ABoxWithSixCornersInsideCountsAsWhollyInside) {
  ozBoxBound b = box(-1, -1, -1, 1, 1, 1);
  float const r = std::sqrt(0.5f);
  EXPECT_EQ(plane(r, r, 0, 1).contains(&b), 7); // the edge at (1, 1) is out: two corners
  float const t = 1 / std::sqrt(3.0f);
  EXPECT_EQ(plane(t, t, t, 2 * t).contains(&b), 7);    // one corner is out
  EXPECT_EQ(plane(t, t, t, 0.5f * t).contains(&b), 3); // four are
  EXPECT_EQ(plane(t, t, t, -2 * t).contains(&b), 3);   // only one is in
  EXPECT_EQ(plane(t, t, t, -4 * t).contains(&b), 0);
}

TEST(Plane, ABoxEmptyOnXIsOutside) {
  ozBoxBound empty, x = box(1, -1, -1, -1, 1, 1), y = box(-1, 1, -1, 1, -1, 1);
  EXPECT_EQ(plane(0, 1, 0, 9).contains(&empty), 0);
  EXPECT_EQ(plane(0, 1, 0, 9).contains(&x), 0);
  EXPECT_EQ(plane(0, 1, 0, 9).contains(&y), 7); // only x is looked at
  EXPECT_EQ(plane(0, 1, 0, 0).contains(&y), 0); // the corner with its minimum on y is outside
}

// The corner count by the letter, for comparison: corners in order, and the nearest one rejects.
int slowContains(ozPlane const &p, ozBoxBound const &b) {
  static int const order[8][3] = {{0, 0, 0}, {1, 1, 1}, {0, 0, 1}, {0, 1, 0},
                                  {0, 1, 1}, {1, 0, 0}, {1, 0, 1}, {1, 1, 0}};
  int count = 0;
  for (int const(&at)[3] : order) {
    ozVec3f corner;
    bool nearest = true;
    for (int i = 0; i < 3; i++) {
      corner[i] = at[i] ? b.max[i] : b.min[i];
      nearest = nearest && (at[i] ? p.normal[i] <= 0 : p.normal[i] >= 0);
    }
    if (p.contains(corner))
      count++;
    else if (nearest)
      return 0;
  }
  if (count == 0 || b.min[0] > b.max[0]) return 0;
  return count >= 6 ? 7 : 3;
}

TEST(Plane, TheBoxTestAgreesWithTheCountOfAllCorners) {
  unsigned seed = 12345;
  auto number = [&] {
    seed = seed * 1664525u + 1013904223u;
    return static_cast<float>(static_cast<int>(seed >> 24) % 9 - 4);
  };
  int seen[8] = {};
  for (int i = 0; i < 20000; i++) {
    ozPlane p = plane(number(), number(), number(), number() * 3);
    ozBoxBound b = box(number(), number(), number(), number(), number(), number());
    int expected = slowContains(p, b);
    ASSERT_EQ(p.contains(&b), expected);
    seen[expected]++;
  }
  EXPECT_TRUE(seen[0] > 100 && seen[3] > 100 && seen[7] > 100);
}

TEST(Plane, TheBoxTestAgreesWithTheCountOfAllCornersForOddNumbers) {
  unsigned seed = 54321;
  auto pick = [&] { return (seed = seed * 1664525u + 1013904223u) >> 24; };
  float const normals[] = {0, -0.0f, 1, -1, 0.5f, -0.5f, NAN};
  float const corners[] = {-INFINITY, INFINITY, NAN, 3.4028235e37f, -3.4028235e37f, -0.0f, 1, -2};
  int seen[8] = {};
  for (int i = 0; i < 50000; i++) {
    ozPlane p;
    ozBoxBound b;
    for (int k = 0; k < 3; k++) {
      p.normal[k] = normals[pick() % (pick() % 8 ? 6 : 7)];
      b.min[k] = pick() % 4 ? -1 : corners[pick() % 8];
      b.max[k] = pick() % 4 ? 1 : corners[pick() % 8];
    }
    p.offset = static_cast<float>(static_cast<int>(pick() % 7) - 3);
    int const expected = slowContains(p, b);
    ASSERT_EQ(p.contains(&b), expected) << i;
    seen[expected]++;
  }
  EXPECT_TRUE(seen[0] > 100 && seen[3] > 100 && seen[7] > 100);
}

TEST(Plane, ABoxWithoutAnEndAlongThePlaneIsOutside) { // 0 times infinity is no number, and so no corner there is inside
  ozBoxBound low = box(-INFINITY, -1, -1, 1, 1, 1), high = box(-1, -1, -1, INFINITY, 1, 1);
  EXPECT_EQ(plane(0, 1, 0, 9).contains(&low), 0);
  EXPECT_EQ(plane(0, 1, 0, 9).contains(&high), 0);
}

ozSeg seg(ozVec3f const &origin, ozVec3f const &direction, float length) {
  ozSeg s;
  s.setOrigin(origin);
  s.setDirection(direction);
  s.setLength(length);
  return s;
}

TEST(Plane, ASegmentMeetsItAtADistance) {
  ozPlane p = plane(0, 1, 0, 2);
  float t = -9;
  ozSeg s = seg(ozVec3f(5, 0, 5), ozVec3f(0, 1, 0), 3);
  EXPECT_EQ(p.isect(&s, &t), 1);
  EXPECT_EQ(t, 2);
  s.setLength(2);
  EXPECT_EQ(p.isect(&s, &t), 1);
  s.setLength(1);
  EXPECT_EQ(p.isect(&s, &t), 0);
  EXPECT_EQ(t, 2); // told all the same
  s = seg(ozVec3f(5, 3, 5), ozVec3f(0, 1, 0), 3);
  EXPECT_EQ(p.isect(&s, &t), 0);
  EXPECT_EQ(t, -1);
  s = seg(ozVec3f(0, 0, 0), ozVec3f(0, 0.6f, 0.8f), 9);
  EXPECT_EQ(p.isect(&s, &t), 1);
  EXPECT_NEAR(t, 2 / 0.6, 1e-5);
}

TEST(Plane, AParallelSegmentMissesItAtZero) {
  float t = -9;
  ozSeg s = seg(ozVec3f(5, 2, 5), ozVec3f(1, 0, 0), 3);
  EXPECT_EQ(plane(0, 1, 0, 2).isect(&s, &t), 0);
  EXPECT_EQ(t, 0);
}

TEST(Plane, ASegmentThatStartsOnItMeetsItAtZero) {
  float t = -9;
  ozSeg s = seg(ozVec3f(5, 2, 5), ozVec3f(0, 1, 0), 3);
  EXPECT_EQ(plane(0, 1, 0, 2).isect(&s, &t), 1);
  EXPECT_EQ(t, 0);
}

TEST(Plane, ASegmentIsParallelBelowTheTinyEpsilon) {
  float t = -9;
  ozSeg s = seg(ozVec3f(0, 0, 0), ozVec3f(1, 2e-15f, 0), 3);
  EXPECT_EQ(plane(0, 1, 0, 2).isect(&s, &t), 0);
  EXPECT_FLOAT_EQ(t, 1e15f);
  s.setDirection(1, 0.9e-15f, 0);
  EXPECT_EQ(plane(0, 1, 0, 2).isect(&s, &t), 0);
  EXPECT_EQ(t, 0);
}

TEST(Plane, TheInsidePartOfASegmentIsTold) {
  ozPlane p = plane(0, 1, 0, 2);
  float a = -9, b = -9;
  ozSeg s = seg(ozVec3f(0, 3, 0), ozVec3f(0, 1, 0), 3);
  EXPECT_EQ(p.isect(&s, &a, &b), 0);
  EXPECT_TRUE(a == -9 && b == -9);
  s = seg(ozVec3f(0, -3, 0), ozVec3f(0, 1, 0), 3);
  EXPECT_EQ(p.isect(&s, &a, &b), 31);
  EXPECT_TRUE(a == 0 && b == 3);
  s = seg(ozVec3f(0, 0, 0), ozVec3f(0, 1, 0), 3);
  EXPECT_EQ(p.isect(&s, &a, &b), 11);
  EXPECT_TRUE(a == 0 && b == 2);
  EXPECT_EQ(p.isect(&s, nullptr, nullptr), 11);
  s = seg(ozVec3f(0, 3, 0), ozVec3f(0, -1, 0), 3);
  EXPECT_EQ(p.isect(&s, &a, &b), 19);
  EXPECT_TRUE(a == 1 && b == 3);
}

TEST(Plane, WhereNoCrossingIsFoundTheWholeSegmentIsTold) {
  // Its ends lie on two sides, but by its direction it is parallel.
  ozPlane p = plane(0, 1, 0, 0);
  float a = -9, b = -9;
  ozSeg s = seg(ozVec3f(0, 0, 0), ozVec3f(1, 0.9e-15f, 0), 1e20f);
  EXPECT_EQ(p.isect(&s, &a, &b), 11);
  EXPECT_TRUE(a == 0 && b == 1e20f);
  a = b = -9;
  s = seg(ozVec3f(0, 1, 0), ozVec3f(1, -0.9e-15f, 0), 1e20f);
  EXPECT_EQ(p.isect(&s, &a, &b), 19);
  EXPECT_TRUE(a == 0 && b == 1e20f);
}

TEST(Plane, WithoutAPlaceForTheFirstDistanceIsectStoresNeither) {
  float far = -9;
  ozSeg s = seg(ozVec3f(0, 0, 0), ozVec3f(0, 1, 0), 3);
  EXPECT_EQ(plane(0, 1, 0, 2).isect(&s, nullptr, &far), 11);
  EXPECT_EQ(far, -9);
}

TEST(Plane, MakeNormPtNormalises) {
  ozPlane p;
  p.makeNormPt(ozVec3f(0, 3, 4), ozVec3f(1, 2, 1));
  expectPlane(p, 0, 0.6f, 0.8f, 2);
  p.normal.set(0, 0, 2);
  p.makeNormPt(p.normal, p.normal);
  expectPlane(p, 0, 0, 1, 2);
}

TEST(Plane, MakePtsGoesThroughThreePoints) {
  ozPlane p;
  p.makePts(ozVec3f(2, 0, 0), ozVec3f(0, 2, 0), ozVec3f(0, 0, 2));
  float const t = 1 / std::sqrt(3.0f);
  expectPlane(p, t, t, t, 2 * t);
}

TEST(Plane, ThreePointsOnALineGiveNoNormal) {
  ozPlane p = plane(1, 2, 3, 4);
  p.makePts(ozVec3f(1, 1, 1), ozVec3f(2, 2, 2), ozVec3f(3, 3, 3));
  expectPlane(p, 0, 0, 0, 0);
}

TEST(Plane, MakePtsMayReadItsOwnNormal) {
  ozPlane p = plane(2, 0, 0, 9);
  p.makePts(p.normal, ozVec3f(0, 2, 0), ozVec3f(0, 0, 2));
  float const t = 1 / std::sqrt(3.0f);
  expectPlane(p, t, t, t, 2 * t);
}

TEST(Plane, TheClosestPointIsComputedWithTheNormalAsItIs) {
  // t = (0, 5, 0) - 3 (0, 2, 0) = (0, -1, 0); t . n = -2; out = (0, 5, 0) + 2 (0, 2, 0).
  ozVec3f out;
  plane(0, 2, 0, 3).closestPtOn(ozVec3f(0, 5, 0), out);
  EXPECT_EQ(out, ozVec3f(0, 9, 0));
}

TEST(Plane, TheClosestPointLiesBelowAPoint) {
  ozPlane p = plane(0, 0.6f, 0.8f, 5);
  ozVec3f out;
  p.closestPtOn(ozVec3f(1, 0, 0), out);
  EXPECT_TRUE(approx(out, ozVec3f(1, 3, 4)));
  ozVec3f q(7, 9, 12);
  p.closestPtOn(q, q);
  EXPECT_TRUE(approx(q, ozVec3f(7, 3, 4)));
  p.closestPtOn(ozVec3f(), p.normal);
  EXPECT_TRUE(approx(p.normal, ozVec3f(0, 3, 4)));
}

TEST(Plane, OrthoXformMovesThePlane) {
  ozMatrix4f m;
  m.makeRot(0, 0, 1, 3.14159265f / 2);
  m.postScale(m, 2, 2, 2);
  m.setRow(3, ozVec3f(10, 20, 30));
  ozPlane const src = plane(1, 0, 0, 3); // x = 3 becomes y = 6 and then y = 26
  ozPlane p;
  p.orthoXform(&src, m);
  expectPlane(p, 0, 1, 0, 26);
  p = src;
  p.orthoXform(&p, m);
  expectPlane(p, 0, 1, 0, 26);
}

} // namespace
