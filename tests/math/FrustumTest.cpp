#include "math/approx.h"
#include "math/slot.h"
#include "oz/ozFrustum.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

struct Corners {
  float left, right, bottom, top, near, far;
  explicit Corners(ozFrustum const &f) { f.getDiagCorners(&left, &right, &bottom, &top, &near, &far); }
};

void expectCorners(ozFrustum const &f, float left, float right, float bottom, float top, float near, float far) {
  Corners c(f);
  EXPECT_NEAR(c.left, left, 1e-5);
  EXPECT_NEAR(c.right, right, 1e-5);
  EXPECT_NEAR(c.bottom, bottom, 1e-5);
  EXPECT_NEAR(c.top, top, 1e-5);
  EXPECT_EQ(c.near, near);
  EXPECT_EQ(c.far, far);
}

// Near 1, far 10, the near rectangle from -1 to 1: a quarter turn of opening both ways.
ozFrustum square() {
  ozFrustum f;
  f.setNearFar(1, 10);
  f.makePersp(-1, 1, -1, 1);
  return f;
}

ozFrustum brick() {
  ozFrustum f;
  f.makeOrtho(-1, 2, -3, 4);
  f.setNearFar(1, 10);
  return f;
}

int containsBox(ozFrustum const &f, float x, float y, float z, float half) {
  ozBoxBound b;
  b.min.set(x - half, y - half, z - half);
  b.max.set(x + half, y + half, z + half);
  return f.contains(&b);
}

int containsSphere(ozFrustum const &f, float x, float y, float z, float radius) {
  ozSphereBound s(x, y, z, radius);
  return f.contains(&s);
}

TEST(Frustum, StartsWithTheTangentOfTwentyTwoAndAHalfRadians) {
  ozFrustum f;
  EXPECT_EQ(f.getFrustType(), 0);
  EXPECT_EQ(f.getAspectMode(), 0);
  EXPECT_EQ(f.getAspectRatio(), 1);
  Corners c(f);
  EXPECT_EQ(c.top, 0.5578517f);
  EXPECT_NEAR(c.top, std::tan(22.5), 1e-6);
  expectCorners(f, -c.top, c.top, -c.top, c.top, 1, 1000);
}

TEST(Frustum, HasItsOperationsInTheirSlots) {
  if (slotOf(&ozFrustum::copy) < 0) GTEST_SKIP() << "SKIPPED: slots are not known on this machine";
  EXPECT_EQ(slotOf(&ozFrustum::copy), 2); // the destructor takes two
  EXPECT_EQ(slotOf(static_cast<int (ozFrustum::*)(ozBoxBound const *) const>(&ozFrustum::contains)), 3);
  EXPECT_EQ(slotOf(static_cast<int (ozFrustum::*)(ozSphereBound const *) const>(&ozFrustum::contains)), 4);
  EXPECT_EQ(slotOf(static_cast<int (ozFrustum::*)(ozVec3f const &) const>(&ozFrustum::contains)), 5);
}

TEST(Frustum, ContainsWhatNoPlaneHasOutside) { // also a point that is none
  EXPECT_EQ(ozFrustum().contains(ozVec3f(NAN, NAN, NAN)), 1);
}

TEST(Frustum, ContainsThePointsInFrontOfTheEye) {
  ozFrustum f;
  EXPECT_EQ(f.contains(ozVec3f(0, 0, -10)), 1);
  EXPECT_EQ(f.contains(ozVec3f(0, 0, 1)), 0);
  EXPECT_EQ(f.contains(ozVec3f(0, 0, -0.5f)), 0);
  EXPECT_EQ(f.contains(ozVec3f(0, 0, -1001)), 0);
  for (ozVec3f const &side : {ozVec3f(6, 0, -10), ozVec3f(-6, 0, -10), ozVec3f(0, 6, -10), ozVec3f(0, -6, -10)}) {
    EXPECT_EQ(f.contains(side), 0);
  }
  for (ozVec3f const &side : {ozVec3f(5, 0, -10), ozVec3f(-5, 0, -10), ozVec3f(0, 5, -10), ozVec3f(0, -5, -10)}) {
    EXPECT_EQ(f.contains(side), 1);
  }
}

TEST(Frustum, AnOrthographicVolumeIsABrick) {
  ozFrustum f = brick();
  EXPECT_EQ(f.getFrustType(), 1);
  expectCorners(f, -1, 2, -3, 4, 1, 10);
  for (float z : {-1.0f, -10.0f}) {
    EXPECT_EQ(f.contains(ozVec3f(-1, -3, z)), 1);
    EXPECT_EQ(f.contains(ozVec3f(2, 4, z)), 1);
    EXPECT_EQ(f.contains(ozVec3f(-1.1f, 0, z)), 0);
    EXPECT_EQ(f.contains(ozVec3f(2.1f, 0, z)), 0);
    EXPECT_EQ(f.contains(ozVec3f(0, -3.1f, z)), 0);
    EXPECT_EQ(f.contains(ozVec3f(0, 4.1f, z)), 0);
  }
  EXPECT_EQ(f.contains(ozVec3f(0, 0, -0.9f)), 0);
  EXPECT_EQ(f.contains(ozVec3f(0, 0, -10.1f)), 0);
}

TEST(Frustum, APerspectiveIsSymmetricOrNot) {
  ozFrustum f;
  f.makePersp(-1, 1, -2, 2);
  EXPECT_EQ(f.getFrustType(), 0);
  f.makePersp(-1, 2, -2, 2);
  EXPECT_EQ(f.getFrustType(), 2);
  expectCorners(f, -1, 2, -2, 2, 1, 1000);
  f.makePersp(-1, 1, -2, 3);
  EXPECT_EQ(f.getFrustType(), 2);
  EXPECT_EQ(f.contains(ozVec3f(-0.9f, 2.9f, -1)), 1);
  EXPECT_EQ(f.contains(ozVec3f(-0.9f, -2.1f, -1)), 0);
}

TEST(Frustum, EqualValuesChangeTheTypeAlone) {
  ozFrustum f = square();
  f.makeOrtho(-1, 1, -1, 1);
  EXPECT_EQ(f.getFrustType(), 1);
  EXPECT_EQ(f.contains(ozVec3f(5, 0, -9)), 1); // the planes are still those of the perspective
  f.makeOrtho(-1, 1, -1, 2);
  EXPECT_EQ(f.contains(ozVec3f(5, 0, -9)), 0);
}

TEST(Frustum, TheCornersComeWithUpperLeftAheadOfUpperRight) {
  ozFrustum f;
  f.setNearFar(2, 10);
  f.makePersp(-1, 2, -3, 4);
  ozVec3f ll, lr, ul, ur;
  f.getNear(ll, lr, ul, ur);
  EXPECT_TRUE(approx(ll, ozVec3f(-1, -3, -2)));
  EXPECT_TRUE(approx(lr, ozVec3f(2, -3, -2)));
  EXPECT_TRUE(approx(ul, ozVec3f(-1, 4, -2)));
  EXPECT_TRUE(approx(ur, ozVec3f(2, 4, -2)));
  f.getFar(ll, lr, ul, ur);
  EXPECT_TRUE(approx(ll, ozVec3f(-5, -15, -10)));
  EXPECT_TRUE(approx(lr, ozVec3f(10, -15, -10)));
  EXPECT_TRUE(approx(ul, ozVec3f(-5, 20, -10)));
  EXPECT_TRUE(approx(ur, ozVec3f(10, 20, -10)));
}

TEST(Frustum, TheFarCornersOfABrickAreScaledToo) {
  ozVec3f ll, lr, ul, ur;
  brick().getFar(ll, lr, ul, ur);
  EXPECT_TRUE(approx(ll, ozVec3f(-10, -30, -10)));
  EXPECT_TRUE(approx(ur, ozVec3f(20, 40, -10)));
}

TEST(Frustum, ANewNearDistanceKeepsTheOpening) {
  ozFrustum f;
  f.makePersp(-1, 2, -3, 4);
  f.setNearFar(2, 1000);
  expectCorners(f, -2, 4, -6, 8, 2, 1000);
  EXPECT_EQ(f.contains(ozVec3f(-9.9f, 39, -10)), 1);
  EXPECT_EQ(f.contains(ozVec3f(-10.1f, 39, -10)), 0);
  f.setNearFar(2, 50);
  expectCorners(f, -2, 4, -6, 8, 2, 50);
  EXPECT_EQ(f.contains(ozVec3f(0, 0, -51)), 0);
}

TEST(Frustum, ANewNearDistanceLeavesABrickAsWide) {
  ozFrustum f = brick();
  f.setNearFar(5, 10);
  expectCorners(f, -1, 2, -3, 4, 5, 10);
}

TEST(Frustum, NearAndFarAreRead) {
  float near, far;
  brick().getNearFar(&near, &far);
  EXPECT_TRUE(near == 1 && far == 10);
  square().getNearFar(near, far);
  EXPECT_TRUE(near == 1 && far == 10);
}

TEST(Frustum, TheAspectModeReshapesTheRectangle) {
  ozFrustum f;
  f.setAspectRatio(2);
  EXPECT_EQ(f.getAspectRatio(), 2);
  f.makePersp(0, 2, -1, 3); // the centre is (1, 1)
  expectCorners(f, 0, 2, -1, 3, 1, 1000);
  f.setAspectMode(ozFrustum::HEIGHT_ASPECT);
  EXPECT_EQ(f.getAspectMode(), 1);
  expectCorners(f, -3, 5, -1, 3, 1, 1000);
  f.setAspectMode(ozFrustum::WIDTH_ASPECT);
  EXPECT_EQ(f.getAspectMode(), 2);
  expectCorners(f, -3, 5, -1, 3, 1, 1000); // the width of 8 over 2 is the height already
  f.setAspectRatio(4);
  expectCorners(f, -3, 5, 0, 2, 1, 1000);
  f.setAspectMode(ozFrustum::FREE_ASPECT);
  f.setAspectRatio(1);
  expectCorners(f, -3, 5, 0, 2, 1, 1000);
}

TEST(Frustum, TheAspectModeHoldsForANewRectangleButNotForNewDistances) {
  ozFrustum f;
  f.setAspectMode(ozFrustum::HEIGHT_ASPECT);
  f.makeOrtho(-5, 5, -1, 1);
  expectCorners(f, -1, 1, -1, 1, 1, 1000);
  f.setNearFar(2, 1000);
  expectCorners(f, -1, 1, -1, 1, 2, 1000);
}

TEST(Frustum, AnAspectRatioOfZeroOrLessIsIgnored) {
  ozFrustum f;
  f.setAspectMode(ozFrustum::WIDTH_ASPECT);
  Corners before(f);
  for (float ratio : {0.0f, -1.0f, NAN}) {
    f.setAspectRatio(ratio);
    EXPECT_EQ(f.getAspectRatio(), 1);
    EXPECT_EQ(Corners(f).top, before.top);
  }
}

// A perspective that is called orthographic, but whose planes are not yet those of a brick.
ozFrustum staleBrick() {
  ozFrustum f = square();
  f.makeOrtho(-1, 1, -1, 1);
  return f;
}

bool hasPlanesOfABrick(ozFrustum const &f) { return !f.contains(ozVec3f(5, 0, -9)); }

TEST(Frustum, EqualDistancesAndAFreeAspectRatioComputeNothing) {
  ozFrustum f = staleBrick();
  f.setNearFar(1, 10);
  f.setAspectRatio(2);
  EXPECT_EQ(f.getAspectRatio(), 2);
  EXPECT_FALSE(hasPlanesOfABrick(f));
}

TEST(Frustum, AnyNewDistanceAndEveryAspectModeComputeThePlanes) {
  ozFrustum f = staleBrick();
  f.setNearFar(1, 11);
  EXPECT_TRUE(hasPlanesOfABrick(f));
  f = staleBrick();
  f.setNearFar(2, 10);
  EXPECT_TRUE(hasPlanesOfABrick(f));
  f = staleBrick();
  f.setAspectMode(ozFrustum::FREE_ASPECT); // the one it has
  EXPECT_TRUE(hasPlanesOfABrick(f));
}

TEST(Frustum, CopyTakesAllMembers) {
  ozFrustum f, from;
  from.makePersp(-1, 2, -3, 4);
  from.setAspectRatio(3);
  from.setAspectMode(ozFrustum::HEIGHT_ASPECT);
  from.setNearFar(2, 10);
  EXPECT_EQ(f.copy(&from), 1);
  EXPECT_EQ(f.getFrustType(), 2);
  EXPECT_EQ(f.getAspectMode(), 1);
  EXPECT_EQ(f.getAspectRatio(), 3);
  Corners a(f), b(from);
  EXPECT_TRUE(a.left == b.left && a.right == b.right && a.bottom == b.bottom && a.top == b.top);
  EXPECT_TRUE(a.near == 2 && a.far == 10);
  EXPECT_EQ(f.contains(ozVec3f(0, 0, -11)), 0);
  EXPECT_EQ(f.contains(ozVec3f(0, 0, -9)), 1);
}

TEST(FrustumBox, IsSevenInsideOneAcrossAndZeroOutside) {
  ozFrustum f = square();
  EXPECT_EQ(containsBox(f, 0, 0, -5, 1), 7);
  EXPECT_EQ(containsBox(f, 0, 0, -1, 0.25f), 1); // across the near plane: never 3
  EXPECT_EQ(containsBox(f, 5.5f, 0, -5, 1), 1);
  EXPECT_EQ(containsBox(f, 0, 0, -5, 100), 1);
  EXPECT_EQ(containsBox(f, 9, 0, -5, 1), 0);
  EXPECT_EQ(containsBox(f, 0, 0, 2, 1), 0);
  EXPECT_EQ(containsBox(f, 0, 0, -12, 1), 0);
  ozBoxBound empty;
  EXPECT_EQ(f.contains(&empty), 0);
}

TEST(FrustumSphere, IsSevenInsideThreeAcrossAPlaneAndZeroOutside) {
  ozFrustum f = square();
  EXPECT_EQ(containsSphere(f, 0, 0, -5, 1), 7);
  EXPECT_EQ(containsSphere(f, 0, 0, -1.5f, 1), 3); // the centre inside
  EXPECT_EQ(containsSphere(f, 0, 0, -0.5f, 1), 3); // the centre outside one plane
  EXPECT_EQ(containsSphere(f, 0, 0, 1, 1), 0);
  EXPECT_EQ(containsSphere(f, 20, 0, -5, 1), 0);
  EXPECT_EQ(containsSphere(f, 0, 0, -5, -1), 0);
}

TEST(FrustumSphere, OutsideThreeOrMorePlanesIsOne) {
  ozFrustum f = square();
  EXPECT_EQ(containsSphere(f, 1, 1, 0.1f, 2), 1); // right, near and top: no edge
  EXPECT_EQ(containsSphere(f, 0, 0, 0.5f, 5), 1); // behind the eye all five sides are outside
}

TEST(FrustumSphere, CloseToAnEdgeIsRejectedThoughEachPlaneTouchesIt) {
  // The edge where right (45 degrees) and near meet is x = 1, z = -1. The direction is (r, 0, -r) + (0, 0, 1) with
  // r = sqrt(1/2) and a right normal of (r, 0, r): the sum is (r, 0, r + 1), s = 2 + 2r.
  ozFrustum f = square();
  float const r = std::sqrt(0.5f), s = 2 + 2 * r;
  auto at = [&](float distance, float radius) { // out from the lower right near corner, along the unit direction
    float k = distance / std::sqrt(s);
    return containsSphere(f, 1 + k * r, 0, -1 + k * (r + 1), radius);
  };
  // With e = distance * sqrt(s), step by step: 3 while s * radius > 2e, then 1 while radius > distance, then 0.
  float const radius = 1, limit = std::sqrt(s) / 2;
  EXPECT_EQ(at(limit - 0.01f, radius), 3);
  EXPECT_EQ(at(limit + 0.01f, radius), 1);
  EXPECT_EQ(at(0.99f, radius), 1);
  EXPECT_EQ(at(1.01f, radius), 0);
  EXPECT_EQ(at(1.07f, radius), 0); // d to each plane is distance * sqrt(s) / 2 = 0.92 * 1.07 < 1: each alone touches it
}

TEST(FrustumSphere, EveryEdgeOfTheTableIsKnown) {
  // A brick from -1 to 1 whose edges are cut off at right angles: 1.2 sqrt(1/2) beyond each of two planes is nearer to
  // each than the radius of 1, but 1.2 from the edge.
  ozFrustum f;
  f.makeOrtho(-1, 1, -1, 1);
  f.setNearFar(1, 1.0001f); // far and near corners then are where the planes meet
  float const out = 1.2f * std::sqrt(0.5f);
  float const x[3] = {-1 - out, 0, 1 + out}, z[3] = {-1 + out, -1.00005f, -1.0001f - out};
  // x, y or z from 0 (left, bottom, near) to 2 (right, top, far), 1 in between.
  struct {
    int x, y, z;
  } const edges[] = {{0, 1, 0}, {2, 1, 0}, {0, 1, 2}, {2, 1, 2}, {0, 0, 1}, {2, 0, 1},
                     {1, 0, 0}, {1, 0, 2}, {0, 2, 1}, {2, 2, 1}, {1, 2, 0}, {1, 2, 2}};
  for (auto const &edge : edges) {
    float const px = x[edge.x], py = x[edge.y], pz = z[edge.z];
    EXPECT_EQ(containsSphere(f, px, py, pz, 1), 0) << edge.x << edge.y << edge.z;
    EXPECT_EQ(containsSphere(f, px, py, pz, 1.3f), 1) << edge.x << edge.y << edge.z;  // beyond the 1.2
    EXPECT_EQ(containsSphere(f, px, py, pz, 1.75f), 3) << edge.x << edge.y << edge.z; // beyond 1.2 sqrt(2)
  }
}

TEST(FrustumSphere, BeyondAnEdgeWhoseCornerLiesFartherOutIsThree) {
  // Outside the left and the far plane of a brick by 1 each. Its far corner is not where they meet but (-10, -10, -10):
  // (8, 10, -1) from there along (-1, 0, -1) is -7. From (-1, -1, -10) it would be 2, and the result 1.
  ozFrustum f;
  f.makeOrtho(-1, 1, -1, 1);
  f.setNearFar(1, 10);
  EXPECT_EQ(containsSphere(f, -2, 0, -11, 2), 3);
}

TEST(FrustumSphere, OutsideThreePlanesOfWhichTwoFormAnEdgeIsOneHoweverFarFromThatEdge) {
  // Beyond a corner by 0.9 along each axis, 1.56 from it, though each plane alone touches the sphere of radius 1.
  ozFrustum f;
  f.makeOrtho(-1, 1, -1, 1);
  f.setNearFar(1, 10);
  EXPECT_EQ(containsSphere(f, -1.9f, -1.9f, -0.1f, 1), 1);
}

TEST(FrustumSphere, ACentreOnAPlaneIsNotOutsideAndASphereThatTouchesFromInsideIsInside) {
  ozFrustum f;
  f.makeOrtho(-1, 1, -1, 1);
  f.setNearFar(1, 10);
  EXPECT_EQ(containsSphere(f, -1, -1, -1, 0.5f), 3); // on three planes, outside none
  EXPECT_EQ(containsSphere(f, 0, 0, -5, 1), 7);      // touching four from inside
  EXPECT_EQ(containsSphere(f, 2, 0, -5, 1), 3);      // touching one from outside
}

TEST(FrustumProjection, OfAPerspectiveIsThatOfOpenGL) {
  ozFrustum f;
  f.setNearFar(2, 10);
  f.makePersp(-1, 2, -3, 5);
  ozMatrix4f m(9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9);
  f.getGLProjMat(m);
  EXPECT_TRUE(approx(m, ozMatrix4f(4 / 3.0f, 0, 0, 0, 0, 0.5f, 0, 0, 1 / 3.0f, 0.25f, -1.5f, -1, 0, 0, -5, 0)));
}

TEST(FrustumProjection, OfABrickIsThatOfOpenGL) {
  ozFrustum f;
  f.makeOrtho(-1, 2, -3, 5);
  f.setNearFar(2, 10);
  ozMatrix4f m;
  f.getGLProjMat(m);
  EXPECT_TRUE(approx(m, ozMatrix4f(2 / 3.0f, 0, 0, 0, 0, 0.25f, 0, 0, 0, 0, -0.25f, 0, -1 / 3.0f, -0.25f, -1.5f, 1)));
}

TEST(FrustumProjection, MapsTheCornersToTheUnitCube) {
  ozFrustum f;
  f.setNearFar(2, 10);
  f.makePersp(-1, 2, -3, 5);
  ozMatrix4f m;
  f.getGLProjMat(m);
  ozVec3f ll, lr, ul, ur, p;
  f.getNear(ll, lr, ul, ur);
  p.fullXformPt(ll, m);
  EXPECT_TRUE(approx(p, ozVec3f(-1, -1, -1)));
  p.fullXformPt(ur, m);
  EXPECT_TRUE(approx(p, ozVec3f(1, 1, -1)));
  f.getFar(ll, lr, ul, ur);
  p.fullXformPt(ul, m);
  EXPECT_TRUE(approx(p, ozVec3f(-1, 1, 1)));
}

} // namespace
