#include "probes.h"

#include "support/capture.h"

#include <cmath>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

namespace {

float const Pi = 3.14159265f;

/// Where a transform takes a point.
ozVec3f moved(ozTransform *transform, float x, float y, float z) {
  ozMatrix4f m;
  transform->getMatrix(m);
  ozVec3f p(x, y, z);
  p.xformPt(p, m);
  return p;
}

ozRotation degrees(float x, float y, float z, float angle) {
  ozRotation r;
  r.setDegrees(x, y, z, angle);
  return r;
}

} // namespace

TEST(Transform, HasTheFieldsOfVRML) {
  ozType *const type = ozTransform::getClassType();
  EXPECT_STREQ(type->getName(), "Transform");
  EXPECT_EQ(type->getAncestor(), ozGroup::getClassType());
  ASSERT_EQ(type->getFieldInfoCount(), 8);
  char const *const names[] = {"translation", "rotation", "scale", "scaleOrientation", "center"};
  for (int i = 0; i < 5; ++i) {
    EXPECT_STREQ(type->getFieldInfo(3 + i)->getName(), names[i]);
    EXPECT_EQ(type->getFieldInfo(3 + i)->getFieldType(),
              i == 1 || i == 3 ? ozSFRotation::getClassType() : ozSFVec3f::getClassType());
  }
}

TEST(Transform, StartsAsTheIdentityWithNothingPending) {
  Held<ozTransform> t;
  EXPECT_FALSE(t->hasPendingFields());
  ozVec3f v;
  t->getTranslation(v);
  EXPECT_VEC(v, 0, 0, 0);
  t->getScale(v);
  EXPECT_VEC(v, 1, 1, 1);
  t->getCenter(v);
  EXPECT_VEC(v, 0, 0, 0);
  ozRotation r;
  t->getRotation(r);
  EXPECT_EQ(r, degrees(0, 0, 0, 0));
  t->getScaleOrientation(r);
  EXPECT_EQ(r, degrees(0, 0, 0, 0));
  ozMatrix4f m;
  t->getMatrix(m);
  EXPECT_EQ(m, ozMatrix4f());
}

TEST(Transform, EachVectorIsSetAndReadInTwoForms) {
  Held<ozTransform> t;
  ozVec3f v;
  float x, y, z;
  t->setTranslation(1, 2, 3);
  t->getTranslation(v);
  EXPECT_VEC(v, 1, 2, 3);
  t->setTranslation(ozVec3f(4, 5, 6));
  t->getTranslation(&x, &y, &z);
  EXPECT_VEC(ozVec3f(x, y, z), 4, 5, 6);
  t->setScale(1, 2, 3);
  t->getScale(v);
  EXPECT_VEC(v, 1, 2, 3);
  t->setScale(ozVec3f(4, 5, 6));
  t->getScale(&x, &y, &z);
  EXPECT_VEC(ozVec3f(x, y, z), 4, 5, 6);
  t->setCenter(1, 2, 3);
  t->getCenter(v);
  EXPECT_VEC(v, 1, 2, 3);
  t->setCenter(ozVec3f(4, 5, 6));
  t->getCenter(&x, &y, &z);
  EXPECT_VEC(ozVec3f(x, y, z), 4, 5, 6);
}

TEST(Transform, FourFloatsSpeakRadiansAndARotationHoldsDegrees) {
  Held<ozTransform> t;
  float x, y, z, angle;
  ozRotation r;
  t->setRotation(0, 0, 1, Pi / 2);
  t->getRotation(r);
  EXPECT_NEAR(r.getAngleDegrees(), 90, 1e-3);
  t->setRotation(degrees(0, 1, 0, 180));
  t->getRotation(&x, &y, &z, &angle);
  EXPECT_NEAR(angle, Pi, 1e-5);
  EXPECT_VEC(ozVec3f(x, y, z), 0, 1, 0);
  t->setScaleOrientation(0, 0, 1, Pi / 2);
  t->getScaleOrientation(r);
  EXPECT_NEAR(r.getAngleDegrees(), 90, 1e-3);
  t->setScaleOrientation(degrees(0, 1, 0, 180));
  t->getScaleOrientation(&x, &y, &z, &angle);
  EXPECT_NEAR(angle, Pi, 1e-5);
  EXPECT_VEC(ozVec3f(x, y, z), 0, 1, 0);
}

TEST(Transform, TheAngleIsMultipliedByTheConversionsTold) {
  Held<ozTransform> t;
  ozRotation r;
  t->setRotation(0, 0, 1, 1.0f);
  t->getRotation(r);
  EXPECT_EQ(r.getAngleDegrees(), 57.295776f);
  float x, y, z, angle;
  t->getRotation(&x, &y, &z, &angle);
  EXPECT_EQ(angle, 57.295776f * 0.017453292f);
}

TEST(Transform, TheAxisIsNormalised) {
  Held<ozTransform> t;
  float x, y, z, angle;
  t->setRotation(0, 3, 4, 1);
  t->getRotation(&x, &y, &z, &angle);
  EXPECT_VEC(ozVec3f(x, y, z), 0, 0.6, 0.8);
  t->setScaleOrientation(0, 3, 4, 1);
  t->getScaleOrientation(&x, &y, &z, &angle);
  EXPECT_VEC(ozVec3f(x, y, z), 0, 0.6, 0.8);
}

TEST(Transform, AnAxisThatIsNearlyZeroBecomesZeroAndTheAngleStays) {
  Held<ozTransform> t;
  float x, y, z, angle;
  t->setRotation(0.000009f, -0.000009f, 0, 1);
  t->getRotation(&x, &y, &z, &angle);
  EXPECT_EQ(x, 0);
  EXPECT_EQ(y, 0);
  EXPECT_EQ(z, 0);
  EXPECT_NEAR(angle, 1, 1e-6);
}

TEST(Transform, AnAxisWithOneComponentAtTheLimitIsNormalised) {
  Held<ozTransform> t;
  float x, y, z, angle;
  t->setRotation(0.00001f, 0, 0, 1);
  t->getRotation(&x, &y, &z, &angle);
  EXPECT_NEAR(x, 1, 1e-6);
}

TEST(Transform, ReadsFollowAConnectedField) {
  Held<ozTransform> from, to;
  from->connect(3, to, 3);
  from->setTranslation(1, 2, 3);
  EXPECT_TRUE(to->hasPendingFields());
  ozVec3f v;
  to->getTranslation(v);
  EXPECT_VEC(v, 1, 2, 3);
}

// ---- the matrix

TEST(TransformMatrix, TranslationMovesPoints) {
  Held<ozTransform> t;
  t->setTranslation(1, 2, 3);
  EXPECT_VEC(moved(t, 1, 1, 1), 2, 3, 4);
}

TEST(TransformMatrix, RotationTurnsCounterclockwiseAboutItsAxis) {
  Held<ozTransform> t;
  t->setRotation(0, 0, 1, Pi / 2);
  EXPECT_VEC(moved(t, 1, 0, 0), 0, 1, 0);
}

TEST(TransformMatrix, ScaleActsAheadOfRotationAheadOfTranslation) {
  Held<ozTransform> t;
  t->setTranslation(10, 0, 0);
  t->setRotation(0, 0, 1, Pi / 2);
  t->setScale(2, 1, 1);
  EXPECT_VEC(moved(t, 1, 0, 0), 10, 2, 0);
}

TEST(TransformMatrix, TheCenterStaysWhereRotationAndScaleAct) {
  Held<ozTransform> t;
  t->setCenter(1, 0, 0);
  t->setRotation(0, 0, 1, Pi / 2);
  t->setScale(2, 2, 2);
  EXPECT_VEC(moved(t, 1, 0, 0), 1, 0, 0);
  EXPECT_VEC(moved(t, 2, 0, 0), 1, 2, 0);
}

TEST(TransformMatrix, TheScaleActsAlongItsOrientation) {
  Held<ozTransform> t;
  t->setScale(3, 1, 1);
  t->setScaleOrientation(0, 0, 1, Pi / 2);
  // Turned by 90 degrees, the scale's x axis is y.
  EXPECT_VEC(moved(t, 1, 1, 0), 1, 3, 0);
}

TEST(TransformMatrix, AllPartsTogetherActInTheirOrder) {
  Held<ozTransform> t;
  t->setTranslation(5, 6, 7);
  t->setCenter(1, 2, 3);
  t->setRotation(1, 0, 0, Pi / 2);
  t->setScale(2, 3, 4);
  t->setScaleOrientation(0, 0, 1, Pi / 2);
  // (2, 2, 3) - center = (1, 0, 0); along the turned axes that is the scale's y: (3, 0, 0); about x nothing turns.
  EXPECT_VEC(moved(t, 2, 2, 3), 5 + 1 + 3, 6 + 2, 7 + 3);
  // (1, 2, 4) - center = (0, 0, 1): scaled by 4, about x by 90 degrees to (0, -4, 0).
  EXPECT_VEC(moved(t, 1, 2, 4), 5 + 1, 6 + 2 - 4, 7 + 3);
}

TEST(TransformMatrix, GivenOneTheTranslationIsTheMatrixs) {
  Held<ozTransform> t;
  ozMatrix4f m;
  m.makeTrans(4, 5, 6);
  t->setMatrix(m);
  ozVec3f v;
  t->getTranslation(v);
  EXPECT_VEC(v, 4, 5, 6);
}

TEST(TransformMatrix, GivenOneItIsTakenApart) {
  Held<ozTransform> t;
  ozMatrix4f m;
  m.makeTrans(1, 2, 3);
  m.preRot(0, 0, 1, Pi / 2, m);
  m.preScale(2, 2, 2, m);
  t->setMatrix(m);
  ozVec3f v;
  t->getScale(v);
  EXPECT_VEC(v, 2, 2, 2);
  float x, y, z, angle;
  t->getRotation(&x, &y, &z, &angle);
  EXPECT_VEC(ozVec3f(x * angle, y * angle, z * angle), 0, 0, Pi / 2);
  EXPECT_VEC(moved(t, 1, 0, 0), 1, 4, 3);
}

TEST(TransformMatrix, GivenOneTheCenterStaysAndCounts) {
  Held<ozTransform> t;
  t->setCenter(1, 0, 0);
  ozMatrix4f m;
  m.makeScale(2, 2, 2);
  t->setMatrix(m);
  ozVec3f v;
  t->getCenter(v);
  EXPECT_VEC(v, 1, 0, 0);
  EXPECT_VEC(moved(t, 1, 0, 0), 1, 0, 0); // the composed matrix, not the one given
}

TEST(TransformMatrix, GivenOneThePartsAreAnnouncedInOrder) {
  Held<Watched<ozTransform>> t;
  t->changes.clear();
  t->setMatrix(ozMatrix4f());
  EXPECT_THAT(t->changes, ElementsAre(3, 4, 5, 6));
}

TEST(TransformMatrix, GivenOneConnectedFieldsHearOfEachPart) {
  Held<ozTransform> from, to;
  for (short id = 3; id <= 7; ++id) from->connect(id, to, id);
  from->setCenter(1, 1, 1);
  ozVec3f v;
  to->getCenter(v);
  ozMatrix4f m;
  m.makeTrans(4, 5, 6);
  from->setMatrix(m);
  to->getTranslation(v);
  EXPECT_VEC(v, 4, 5, 6);
  to->getCenter(v);
  EXPECT_VEC(v, 1, 1, 1);
}

TEST(TransformMatrix, OneThatCannotBeTakenApartGivesItsTranslationAndNoRotation) {
  Held<ozTransform> t;
  t->setRotation(0, 0, 1, 1);
  ozMatrix4f m;
  m.makeTrans(4, 5, 6);
  m.preScale(0, 0, 0, m);
  t->setMatrix(m);
  ozVec3f v;
  t->getTranslation(v);
  EXPECT_VEC(v, 4, 5, 6);
  float x, y, z, angle;
  t->getRotation(&x, &y, &z, &angle);
  EXPECT_EQ(angle, 0);
}

TEST(TransformMatrix, ReadingItDoesNotPullConnectedFields) {
  Held<ozTransform> from, to;
  from->connect(3, to, 3);
  from->setTranslation(1, 2, 3);
  EXPECT_VEC(moved(to, 0, 0, 0), 0, 0, 0);
  to->cleanFields();
  EXPECT_VEC(moved(to, 0, 0, 0), 1, 2, 3);
}

// ---- the bound

TEST(TransformBound, IsTheChildrensBoxInTheParentsSpace) {
  Held<ozTransform> t;
  t->addChild(new ProbeNode("a", 1));
  t->setTranslation(10, 0, 0);
  t->setScale(2, 3, 4);
  EXPECT_BOX(*t->getBoxBound(), 8, -3, -4, 12, 3, 4);
}

TEST(TransformBound, IsEmptyWithoutChildren) {
  Held<ozTransform> t;
  t->setTranslation(10, 0, 0);
  EXPECT_TRUE(t->getBoxBound()->isEmpty());
}

TEST(TransformBound, FollowsAChild) {
  Held<ozTransform> t;
  ProbeNode *const child = new ProbeNode("a", 1);
  t->addChild(child);
  t->setTranslation(10, 0, 0);
  t->getBoxBound();
  child->setBoxBound(cubeAt(0, 0, 0, 2));
  EXPECT_BOX(*t->getBoxBound(), 8, -2, -2, 12, 2, 2);
}

TEST(TransformBound, FollowsTheListOfChildren) {
  Held<ozTransform> t;
  t->setTranslation(10, 0, 0);
  t->addChild(new ProbeNode("a", 1));
  t->getBoxBound();
  t->addChild(new ProbeNode("b", 3));
  EXPECT_BOX(*t->getBoxBound(), 7, -3, -3, 13, 3, 3);
}

TEST(TransformBound, FollowsEachPart) {
  Held<ozTransform> t;
  t->addChild(new ProbeNode("a", 1));
  t->getBoxBound();
  t->setTranslation(1, 0, 0);
  EXPECT_BOX(*t->getBoxBound(), 0, -1, -1, 2, 1, 1);
  t->setScale(2, 1, 1);
  EXPECT_BOX(*t->getBoxBound(), -1, -1, -1, 3, 1, 1);
  t->setRotation(0, 0, 1, Pi / 2);
  EXPECT_BOX(*t->getBoxBound(), 0, -2, -1, 2, 2, 1);
  t->setScaleOrientation(0, 0, 1, Pi / 2);
  EXPECT_BOX(*t->getBoxBound(), -1, -1, -1, 3, 1, 1);
  t->setCenter(1, 0, 0);
  // Scaled along y, then turned about (1, 0, 0): x is 1 - y and y is x - 1, from the corners, plus the translation.
  EXPECT_BOX(*t->getBoxBound(), 0, -2, -1, 4, 0, 1);
}

TEST(TransformBound, FollowsAGivenMatrix) {
  Held<ozTransform> t;
  t->addChild(new ProbeNode("a", 1));
  t->getBoxBound();
  ozMatrix4f m;
  m.makeTrans(0, 20, 0);
  t->setMatrix(m);
  EXPECT_BOX(*t->getBoxBound(), -1, 19, -1, 1, 21, 1);
}

TEST(TransformBound, TellsTheParentsOnceForAnyNumberOfChanges) {
  Held<Watched<ozGroup>> root;
  ozTransform *const t = new ozTransform;
  root->addChild(t);
  t->addChild(new ProbeNode("a", 1));
  root->getBoxBound();
  root->childChanges.clear();
  for (int i = 0; i < 10; ++i) t->setTranslation(static_cast<float>(i), 0, 0);
  EXPECT_THAT(root->childChanges, ElementsAre(Pair(t, 0)));
  EXPECT_BOX(*root->getBoxBound(), 8, -1, -1, 10, 1, 1);
}

TEST(TransformBound, InModeStaticStaysAndTellsNobody) {
  Held<Watched<ozGroup>> root;
  ozTransform *const t = new ozTransform;
  ProbeNode *const child = new ProbeNode("a", 1);
  root->addChild(t);
  t->addChild(child);
  t->setBoundMode(ozNode::STATIC);
  t->setBoxBound(cubeAt(0, 0, 0, 5));
  root->getBoxBound();
  root->childChanges.clear();
  t->setTranslation(3, 0, 0);
  child->setBoxBound(cubeAt(0, 0, 0, 2));
  t->setMatrix(ozMatrix4f());
  EXPECT_THAT(root->childChanges, IsEmpty());
  EXPECT_BOX(*t->getBoxBound(), -5, -5, -5, 5, 5, 5);
}

TEST(TransformBound, AChildThatChangedInModeStaticCountsWhenTheModeIsDynamicAgain) {
  Held<ozTransform> t;
  ProbeNode *const child = new ProbeNode("a", 1);
  t->addChild(child);
  t->getBoxBound();
  t->setBoundMode(ozNode::STATIC);
  child->setBoxBound(cubeAt(0, 0, 0, 2));
  t->setBoundMode(ozNode::DYNAMIC);
  t->setTranslation(10, 0, 0);
  EXPECT_BOX(*t->getBoxBound(), 8, -2, -2, 12, 2, 2);
}

TEST(TransformBound, OfAGroupInsideIsInTheTransformsSpace) {
  Held<ozTransform> t;
  ozGroup *const inner = new ozGroup;
  inner->addChild(new ProbeNode("a", 1));
  t->addChild(inner);
  t->setTranslation(10, 0, 0);
  t->getBoxBound();
  EXPECT_BOX(*inner->getBoxBound(), -1, -1, -1, 1, 1, 1);
}

// ---- copies

TEST(TransformClone, HasTheSamePartsAndMatrix) {
  Held<ozTransform> t;
  t->setTranslation(1, 2, 3);
  t->setRotation(0, 0, 1, 1);
  t->setScale(2, 3, 4);
  t->setScaleOrientation(1, 0, 0, 0.5f);
  t->setCenter(5, 6, 7);
  Held<ozTransform> copy(static_cast<ozTransform *>(t->clone(ozContainer::CLONE_DEEP)));
  ozMatrix4f a, b;
  t->getMatrix(a);
  copy->getMatrix(b);
  EXPECT_EQ(a, b);
}

// The rule: translation, centre, rotation, scale orientation, scale and back, each by its own product.
static ozMatrix4f composedByProducts(ozVec3f const &t, ozRotation const &rotation) {
  ozMatrix4f m;
  float x, y, z, angle;
  rotation.get(&x, &y, &z, &angle);
  m.makeTrans(t[0], t[1], t[2]);
  m.preTrans(0, 0, 0, m);
  if (angle != 0) m.preRot(x, y, z, angle, m);
  m.preScale(1, 1, 1, m);
  m.preTrans(-0.0f, -0.0f, -0.0f, m);
  return m;
}

TEST(Transform, ARotationWithATranslationGivesTheMatrixOfTheProductsToTheBit) {
  float const numbers[] = {0.0f, -0.0f, 1.5f, -3.25f, 1e30f, 1e-42f, -7.1f};
  unsigned int seed = 1;
  auto const pick = [&] { return numbers[((seed = seed * 1664525u + 1013904223u) >> 16) % 7]; };
  for (int i = 0; i < 20000; ++i) {
    ozVec3f const t(pick(), pick(), pick());
    ozRotation const rotation(pick() / 8, pick() / 8, pick() / 8, pick());
    Held<ozTransform> transform;
    transform->setTranslation(t);
    transform->setRotation(rotation);
    ozRotation stored;
    transform->getRotation(stored);
    ozMatrix4f made;
    transform->getMatrix(made);
    ozMatrix4f const expected = composedByProducts(t, stored);
    ASSERT_EQ(memcmp(made._m, expected._m, sizeof made._m), 0) << i;
  }
}
