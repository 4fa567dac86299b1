// Rays against solids, by the geometry of box, sphere, cone and cylinder.

#include "geometry/geometryFixture.h"

#include <cmath>

namespace {

ozVec3f const Down(0, -1, 0), Up(0, 1, 0), Away(0, 0, -1);

// The worst that 32 flat sides lie inside of the circle of radius 1.
float const Sagitta = static_cast<float>(1 - std::cos(3.14159265 / 32));

#define EXPECT_NEAR3(vec, x, y, z, tolerance)                                                                          \
  EXPECT_NEAR((vec)[0], x, tolerance);                                                                                 \
  EXPECT_NEAR((vec)[1], y, tolerance);                                                                                 \
  EXPECT_NEAR((vec)[2], z, tolerance)

// ---- boxes

TEST(BoxIsect, HitsWhereTheRayEnters) {
  Held<ozBox> box(new ozBox);
  box->setSize(2, 4, 6);
  box->setCenter(10, 20, 30);
  ozIsectAction action;
  int result;
  ozHit const &hit = cast(action, box.get(), ozVec3f(10.5f, 20.5f, 40), Away, 100, &result);
  EXPECT_EQ(result, 1);
  EXPECT_EQ(hit.geometry, box.get());
  EXPECT_EQ(hit.distance, 7.0f); // the face at z = 33
  EXPECT_EQ(hit.localPoint, ozVec3f(10.5f, 20.5f, 33));
  EXPECT_EQ(action.getActiveSeg()->getLength(), 7.0f);
  EXPECT_EQ(action.getActiveSeg()->getOrigin(), ozVec3f(10.5f, 20.5f, 40));
}

TEST(BoxIsect, SetsNoNormal) {
  Held<ozBox> box(new ozBox);
  ozIsectAction action;
  action.hit.localNormal.set(7, 8, 9);
  action.hit.worldNormal.set(1, 2, 3);
  cast(action, box.get(), ozVec3f(0, 0, 5), Away, 100);
  EXPECT_EQ(action.hit.localNormal, ozVec3f(7, 8, 9));
  EXPECT_EQ(action.hit.worldNormal, ozVec3f(1, 2, 3));
}

TEST(BoxIsect, MissesBesideItAndShortOfIt) {
  Held<ozBox> box(new ozBox);
  ozIsectAction action;
  int result;
  EXPECT_FALSE(cast(action, box.get(), ozVec3f(1.5f, 0, 5), Away, 100, &result).isValid());
  EXPECT_EQ(result, 0);
  EXPECT_FALSE(cast(action, box.get(), ozVec3f(0, 0, 5), Away, 3.5f).isValid());
}

TEST(BoxIsect, MissesFromInside) {
  Held<ozBox> box(new ozBox);
  ozIsectAction action;
  EXPECT_FALSE(cast(action, box.get(), ozVec3f(0, 0, 0), Away, 100).isValid());
  EXPECT_FALSE(cast(action, box.get(), ozVec3f(0, 0, 0), Away, 0.5f).isValid());
}

TEST(BoxIsect, HitsARayThatEndsInside) {
  Held<ozBox> box(new ozBox);
  ozIsectAction action;
  EXPECT_EQ(cast(action, box.get(), ozVec3f(0, 0, 5), Away, 5).distance, 4.0f);
}

TEST(BoxIsect, HitsAPlateButNothingWithoutASurface) {
  Held<ozBox> box(new ozBox);
  ozIsectAction action;
  box->setSize(2, 2, 0);
  EXPECT_EQ(cast(action, box.get(), ozVec3f(0, 0, 5), Away, 100).distance, 5.0f);
  box->setSize(2, 0, 0);
  EXPECT_FALSE(cast(action, box.get(), ozVec3f(0, 0, 5), Away, 100).isValid());
  box->setSize(0, 0, 0);
  EXPECT_FALSE(cast(action, box.get(), ozVec3f(0, 0, 5), Away, 100).isValid());
}

TEST(BoxIsect, TakesAConnectedSizeFirst) {
  Held<ozBox> box(new ozBox), source(new ozBox);
  source->connect(2, box.get(), 2);
  source->setSize(8, 8, 8);
  ozIsectAction action;
  EXPECT_EQ(cast(action, box.get(), ozVec3f(0, 0, 5), Away, 100).distance, 1.0f);
}

// ---- spheres

TEST(SphereIsect, HitsTheSphereAndNotItsMesh) {
  Held<ozSphere> sphere(new ozSphere);
  sphere->setRadius(5);
  sphere->setCenter(10, 20, 30);
  ozIsectAction action;
  int result;
  // From 10 in front, 3 beside the axis: the surface is 4 in front of the centre plane.
  ozHit const &hit = cast(action, sphere.get(), ozVec3f(13, 20, 40), Away, 100, &result);
  EXPECT_EQ(result, 1);
  EXPECT_EQ(hit.geometry, sphere.get());
  EXPECT_NEAR(hit.distance, 6, 1e-5);
  EXPECT_NEAR3(hit.localPoint, 13, 20, 34, 1e-5);
  EXPECT_NEAR3(hit.localNormal, 0.6, 0, 0.8, 1e-6);
  EXPECT_NEAR3(hit.worldNormal, 0.6, 0, 0.8, 1e-6);
  EXPECT_EQ(action.getActiveSeg()->getLength(), hit.distance);
}

TEST(SphereIsect, FromInsideHitsAtTheStart) {
  Held<ozSphere> sphere(new ozSphere);
  ozIsectAction action;
  ozHit const &hit = cast(action, sphere.get(), ozVec3f(0.5f, 0, 0), Away, 100);
  EXPECT_TRUE(hit.isValid());
  EXPECT_EQ(hit.distance, 0.0f);
  EXPECT_EQ(hit.localNormal, ozVec3f(1, 0, 0));
}

TEST(SphereIsect, MissesBesideItShortOfItAndWithoutARadius) {
  Held<ozSphere> sphere(new ozSphere);
  ozIsectAction action;
  int result;
  EXPECT_FALSE(cast(action, sphere.get(), ozVec3f(1.01f, 0, 5), Away, 100, &result).isValid());
  EXPECT_EQ(result, 0);
  EXPECT_FALSE(cast(action, sphere.get(), ozVec3f(0, 0, 5), Away, 3.5f).isValid());
  sphere->setRadius(0);
  EXPECT_FALSE(cast(action, sphere.get(), ozVec3f(0, 0, 5), Away, 100).isValid());
}

TEST(SphereIsect, TurnsTheWorldNormalByTheInverseTransposed) {
  Held<ozSphere> sphere(new ozSphere);
  ozIsectAction action;
  aim(action, ozVec3f(0.6f, 0, 5), Away, 100);
  action.pushMatrix();
  action.scale(2, 1, 1);
  ASSERT_EQ(sphere->isect(&action), 1);
  EXPECT_NEAR3(action.hit.localNormal, 0.6, 0, 0.8, 1e-6);
  EXPECT_NEAR3(action.hit.worldNormal, 0.3, 0, 0.8, 1e-6);
}

// ---- cones and cylinders

template <class Solid> class RoundIsect : public ::testing::Test {
public:
  ozIsectAction action;
  Held<Solid> solid{new Solid};
};
void setRound(ozCone &cone, float radius, float height) {
  cone.setBottomRadius(radius);
  cone.setHeight(height);
}
void setRound(ozCylinder &cylinder, float radius, float height) {
  cylinder.setRadius(radius);
  cylinder.setHeight(height);
}
typedef ::testing::Types<ozCone, ozCylinder> RoundSolids;
TYPED_TEST_SUITE(RoundIsect, RoundSolids);

TYPED_TEST(RoundIsect, ReportsTheSolidAndNotTheSharedMesh) {
  int result;
  ozHit const &hit = cast(this->action, this->solid.get(), ozVec3f(0.3f, -5, 0.2f), Up, 100, &result);
  EXPECT_EQ(result, 1);
  EXPECT_EQ(hit.geometry, this->solid.get());
  EXPECT_NEAR(hit.distance, 4, 1e-5);
  EXPECT_NEAR3(hit.localNormal, 0, -1, 0, 1e-6);
  setRound(*this->solid, 2, 6);
  EXPECT_EQ(cast(this->action, this->solid.get(), ozVec3f(0.3f, -5, 0.2f), Up, 100).geometry, this->solid.get());
}

TYPED_TEST(RoundIsect, IsTheLastOnThePathOfItsShape) {
  Held<ozShape> shape(new ozShape);
  shape->setGeometry(0, this->solid.get());
  this->action.seg.setOrigin(0.3f, -5, 0.2f);
  this->action.seg.setDirection(Up);
  this->action.seg.setLength(100);
  this->action.apply(shape.get());
  ozHit const &hit = this->action.hit;
  ASSERT_EQ(hit.path.getCount(), 2u);
  EXPECT_EQ(hit.path[1], hit.geometry);
  EXPECT_EQ(hit.geometry, this->solid.get());
  EXPECT_EQ(hit.shape, shape.get());
}

TYPED_TEST(RoundIsect, MissesBesideItAndShortOfIt) {
  int result;
  cast(this->action, this->solid.get(), ozVec3f(1.2f, -5, 0), Up, 100, &result);
  EXPECT_EQ(result, 0); // inside the bound
  EXPECT_FALSE(this->action.hit.isValid());
  EXPECT_FALSE(cast(this->action, this->solid.get(), ozVec3f(0.3f, -5, 0.2f), Up, 3.5f).isValid());
}

TYPED_TEST(RoundIsect, ScaledGivesDistancesInTheRightSpaces) {
  setRound(*this->solid, 2, 6);
  ozHit const &hit = cast(this->action, this->solid.get(), ozVec3f(0.6f, -5, 0.4f), Up, 100);
  EXPECT_NEAR3(hit.worldPoint, 0.6, -3, 0.4, 1e-5);
  EXPECT_NEAR(this->action.getActiveSeg()->getLength(), 2, 1e-5); // as the caller counts
  EXPECT_NEAR3(hit.localPoint, 0.3, -1, 0.2, 1e-5);               // on the unit mesh
  EXPECT_NEAR(hit.distance, 2 / 3.0, 1e-5);
  EXPECT_NEAR(hit.matrix[0][0], 2, 0);
  EXPECT_NEAR(hit.matrix[1][1], 3, 0);
  EXPECT_NEAR(hit.matrix[2][2], 2, 0);
}

TYPED_TEST(RoundIsect, MovedIsHitWhereItStands) {
  this->solid->setCenter(0.4f, 0.5f, 0.2f);
  ozHit const &hit = cast(this->action, this->solid.get(), ozVec3f(1.2f, -5, 0), Up, 100);
  EXPECT_TRUE(hit.isValid());
  EXPECT_NEAR3(hit.worldPoint, 1.2, -0.5, 0, 1e-5);
  EXPECT_NEAR(this->action.getActiveSeg()->getLength(), 4.5, 1e-5);
}

TYPED_TEST(RoundIsect, MovedOutOfItsBoundIsMissed) {
  this->solid->setCenter(10, 0, 0);
  EXPECT_FALSE(cast(this->action, this->solid.get(), ozVec3f(10.3f, -5, 0.2f), Up, 100).isValid());
}

TYPED_TEST(RoundIsect, LeavesMatrixAndSegmentAsTheyWere) {
  setRound(*this->solid, 2, 6);
  for (float x : {0.6f, 2.5f}) { // a hit and a miss
    cast(this->action, this->solid.get(), ozVec3f(x, -5, 0), Up, 100);
    EXPECT_EQ(this->action.getMatrixDepth(), 1);
    EXPECT_EQ(this->action.getMatType(), 0);
    EXPECT_EQ(this->action.getActiveSeg()->getOrigin(), ozVec3f(x, -5, 0));
  }
  EXPECT_NEAR(this->action.getActiveSeg()->getLength(), 100, 1e-4); // through the scale and back
}

TYPED_TEST(RoundIsect, OfNoSizeIsMissedAndDisturbsNothing) {
  for (auto const &size : {ozVec2f(0, 2), ozVec2f(1, 0), ozVec2f(0, 0)}) {
    setRound(*this->solid, size[0], size[1]);
    EXPECT_FALSE(cast(this->action, this->solid.get(), ozVec3f(0, -5, 0), Up, 100).isValid());
    EXPECT_EQ(this->action.getActiveSeg()->getLength(), 100.0f);
  }
}

TYPED_TEST(RoundIsect, PartsThatAreNotThereAreMissed) {
  this->solid->setBottom(0);
  ozHit const &hit = cast(this->action, this->solid.get(), ozVec3f(0.3f, -5, 0.2f), Up, 100);
  EXPECT_FALSE(hit.isValid()); // the other faces are seen from behind
  this->solid->setBottom(1);
  this->solid->setSide(0);
  EXPECT_TRUE(cast(this->action, this->solid.get(), ozVec3f(0.3f, -5, 0.2f), Up, 100).isValid());
  EXPECT_FALSE(cast(this->action, this->solid.get(), ozVec3f(0, 0, 5), Away, 100).isValid());
}

TYPED_TEST(RoundIsect, NearestOfThePartsCounts) {
  // A short ray against the grain: from above and in front, into the lower half of the side, then through the bottom.
  ozVec3f direction(0.01f, -0.2f, -1);
  direction.normalize();
  ozHit const &hit = cast(this->action, this->solid.get(), ozVec3f(0, 0, 5), direction, 100);
  ASSERT_TRUE(hit.isValid());
  EXPECT_GT(hit.localPoint[2], 0.0f);
  EXPECT_GT(hit.localPoint[1], -1.0f);
}

// From below, the bottom of a solid of height 8 stands at -4.
TYPED_TEST(RoundIsect, TakesAConnectedSizeFirst) {
  Held<TypeParam> source(new TypeParam);
  source->connect(3, this->solid.get(), 3);
  source->setHeight(8);
  cast(this->action, this->solid.get(), ozVec3f(0.3f, -9, 0.2f), Up, 100);
  EXPECT_NEAR(this->action.getActiveSeg()->getLength(), 5, 1e-4);
}

TEST(SphereIsect, TakesAConnectedSizeFirst) {
  Held<ozSphere> sphere(new ozSphere), source(new ozSphere);
  source->connect(3, sphere.get(), 3);
  source->setRadius(3);
  ozIsectAction action;
  EXPECT_NEAR(cast(action, sphere.get(), ozVec3f(0, 0, 5), Away, 100).distance, 2, 1e-5);
}

TEST(ConeIsect, HitsTheSlope) {
  Held<ozCone> cone(new ozCone);
  ozIsectAction action;
  // At height 0 the radius is half that of the bottom.
  ozHit const &hit = cast(action, cone.get(), ozVec3f(0.001f, 0, 5), Away, 100);
  EXPECT_GE(hit.distance, 4.5f - 1e-5f);
  EXPECT_LE(hit.distance, 4.5f + Sagitta);
  // The facets turn up by the true slope: (., 1, 2) over the root of 5, and to the side by up to half a facet.
  EXPECT_NEAR(hit.localNormal[1], 1 / std::sqrt(5.0), 3e-3);
  EXPECT_NEAR(hit.localNormal[2], 2 / std::sqrt(5.0), 6e-3);
}

TEST(ConeIsect, WithoutASideOrABottomIsMissed) {
  Held<ozCone> cone(new ozCone);
  cone->setSide(0);
  cone->setBottom(0);
  ozIsectAction action;
  EXPECT_FALSE(cast(action, cone.get(), ozVec3f(0.3f, -5, 0.2f), Up, 100).isValid());
}

TEST(CylinderIsect, HitsSideAndTop) {
  Held<ozCylinder> cylinder(new ozCylinder);
  ozIsectAction action;
  ozHit const &side = cast(action, cylinder.get(), ozVec3f(0.001f, 0.3f, 5), Away, 100);
  EXPECT_GE(side.distance, 4 - 1e-5f);
  EXPECT_LE(side.distance, 4 + Sagitta);
  EXPECT_NEAR(side.localNormal[2], 1, 6e-3);
  ozHit const &top = cast(action, cylinder.get(), ozVec3f(0.3f, 5, 0.2f), Down, 100);
  EXPECT_NEAR(top.distance, 4, 1e-5);
  EXPECT_NEAR3(top.localNormal, 0, 1, 0, 1e-6);
  cylinder->setTop(0);
  EXPECT_FALSE(cast(action, cylinder.get(), ozVec3f(0.3f, 5, 0.2f), Down, 100).isValid());
}

TEST(CylinderIsect, WithNothingButATopIsMissedForItsEmptyBound) {
  Held<ozCylinder> cylinder(new ozCylinder);
  cylinder->setSide(0);
  cylinder->setBottom(0);
  ozIsectAction action;
  EXPECT_FALSE(cast(action, cylinder.get(), ozVec3f(0.3f, 5, 0.2f), Down, 100).isValid());
}

} // namespace
