#include "probes.h"

#include "support/capture.h"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

float const Pi = 3.14159265f;

/// A transform "t" with a probe "a", which notes the matrix, its type and the depth at each visit.
class TransformVisitTest : public ::testing::Test {
protected:
  TransformVisitTest() : a(new ProbeNode("a", 1)), camera(wideCamera()) {
    t->setName("t");
    t->addChild(a);
    a->duringTransform = [this](ozTransformAction *action) {
      action->getMatrix(matrix);
      type = action->getMatType();
      depth = action->getMatrixDepth();
    };
    transform.reset();
    cull.setCamera(camera);
    notes.clear();
  }

  ozVec3f at(float x, float y, float z) const {
    ozVec3f p(x, y, z);
    p.xformPt(p, matrix);
    return p;
  }

  Held<ozTransform> t;
  ProbeNode *a;
  Held<ozOrthoCamera> camera;
  Noting<ozTransformAction> transform;
  Noting<ozVFCullAction> cull;
  ozMatrix4f matrix;
  int type = -1, depth = -1;
};

} // namespace

TEST_F(TransformVisitTest, AnUntouchedTransformPushesNothing) {
  transform.apply(t);
  EXPECT_EQ(depth, 1);
  EXPECT_EQ(matrix, ozMatrix4f());
  cull.apply(t);
  EXPECT_EQ(depth, 1);
}

TEST_F(TransformVisitTest, ATranslationOfZeroPushesAllTheSame) {
  t->setTranslation(0, 0, 0);
  transform.apply(t);
  EXPECT_EQ(depth, 2);
}

TEST_F(TransformVisitTest, ACenterPushesForGood) {
  t->setCenter(1, 0, 0);
  t->setCenter(0, 0, 0);
  transform.apply(t);
  EXPECT_EQ(depth, 2);
}

TEST_F(TransformVisitTest, ARotationBackToZeroPushesNothing) {
  t->setRotation(0, 0, 1, 1);
  transform.apply(t);
  EXPECT_EQ(depth, 2);
  t->setRotation(0, 0, 1, 0);
  transform.apply(t);
  EXPECT_EQ(depth, 1);
}

TEST_F(TransformVisitTest, AScaleBackToOnePushesNothing) {
  t->setScale(2, 3, 4);
  transform.apply(t);
  EXPECT_EQ(depth, 2);
  t->setScale(1, 1, 1);
  transform.apply(t);
  EXPECT_EQ(depth, 1);
}

TEST_F(TransformVisitTest, AScaleOrientationAlonePushesNothing) {
  t->setScaleOrientation(0, 0, 1, 1);
  transform.apply(t);
  EXPECT_EQ(depth, 1);
}

TEST_F(TransformVisitTest, AGivenMatrixPushesForGood) {
  t->setMatrix(ozMatrix4f());
  t->setScale(1, 1, 1);
  transform.apply(t);
  EXPECT_EQ(depth, 2);
}

TEST_F(TransformVisitTest, TheChildSeesTheTransform) {
  t->setTranslation(1, 2, 3);
  t->setRotation(0, 0, 1, Pi / 2);
  transform.apply(t);
  EXPECT_VEC(at(1, 0, 0), 1, 3, 3);
  cull.apply(t);
  EXPECT_VEC(at(1, 0, 0), 1, 3, 3);
}

TEST_F(TransformVisitTest, AloneTranslationAndRotationTakeShortPaths) {
  t->setTranslation(1, 2, 3);
  transform.apply(t);
  EXPECT_VEC(at(1, 0, 0), 2, 2, 3);
  EXPECT_EQ(type, 0);
  Held<ozTransform> turned;
  turned->setRotation(0, 0, 1, Pi / 2);
  turned->addChild(a);
  transform.apply(turned);
  EXPECT_VEC(at(1, 0, 0), 0, 1, 0);
  EXPECT_EQ(type, 0);
}

TEST_F(TransformVisitTest, ACenterWithoutAnythingElseMovesNothing) {
  t->setCenter(1, 2, 3);
  transform.apply(t);
  EXPECT_VEC(at(0, 0, 0), 0, 0, 0);
}

TEST_F(TransformVisitTest, NestedTransformsAccumulate) {
  Held<ozTransform> outer;
  outer->setScale(2, 2, 2);
  outer->addChild(t);
  t->setTranslation(1, 0, 0);
  transform.apply(outer);
  EXPECT_VEC(at(0, 0, 0), 2, 0, 0);
  EXPECT_EQ(depth, 3);
}

TEST_F(TransformVisitTest, TheTypeTellsOfUnevenScaleByTheBitEight) {
  t->setScale(2, 2, 2);
  transform.apply(t);
  EXPECT_EQ(type, 0);
  t->setScale(2, 3, 2);
  transform.apply(t);
  EXPECT_EQ(type, 8);
}

TEST_F(TransformVisitTest, AUniformScaleWithAnOrientationCountsAsUneven) {
  t->setScaleOrientation(0, 0, 1, 1);
  t->setScale(2, 2, 2);
  transform.apply(t);
  EXPECT_EQ(type, 8);
}

TEST_F(TransformVisitTest, AnOrientationThatComesAfterTheScaleDoesNotCount) {
  t->setScale(2, 2, 2);
  t->setScaleOrientation(0, 0, 1, 1);
  transform.apply(t);
  EXPECT_EQ(type, 0);
}

TEST_F(TransformVisitTest, AUniformScaleAfterAnUnevenOneIsUniform) {
  t->setScale(2, 3, 2);
  t->setScale(2, 2, 2);
  transform.apply(t);
  EXPECT_EQ(type, 0);
}

TEST_F(TransformVisitTest, AnInnerTransformReplacesTheTypeOnItsGeneralPathAlone) {
  Held<ozTransform> outer;
  outer->setScale(2, 3, 2);
  outer->addChild(t);
  t->setTranslation(1, 0, 0);
  transform.apply(outer);
  EXPECT_EQ(type, 8); // inherited
  t->setScale(2, 2, 2);
  transform.apply(outer);
  EXPECT_EQ(type, 0);
}

TEST_F(TransformVisitTest, TheStacksAreBalancedAfterwards) {
  t->setScale(2, 3, 2);
  transform.apply(t);
  EXPECT_EQ(transform.getMatrixDepth(), 1);
  EXPECT_EQ(*transform.getMatrix(), ozMatrix4f());
  EXPECT_EQ(transform.getMatType(), 0);
  a->verdict = TRAV_TERM;
  EXPECT_EQ(transform.apply(t), TRAV_TERM);
  EXPECT_EQ(transform.getMatrixDepth(), 1);
}

TEST_F(TransformVisitTest, PreVisitAndPostVisitFrameTheWork) {
  t->setTranslation(1, 0, 0);
  transform.apply(t);
  EXPECT_THAT(notes, ElementsAre("pre t", "transform a", "post t"));
  notes.clear();
  cull.apply(t);
  EXPECT_THAT(notes, ElementsAre("pre t", "cull a", "post t"));
}

TEST_F(TransformVisitTest, APreVisitThatPrunesEntersNothing) {
  t->setTranslation(1, 0, 0);
  transform.pre["t"] = cull.pre["t"] = TRAV_PRUNE;
  EXPECT_EQ(transform.apply(t), TRAV_PRUNE);
  EXPECT_EQ(transform.getMatrixDepth(), 1);
  EXPECT_EQ(cull.apply(t), TRAV_PRUNE);
  EXPECT_EQ(cull.getMatrixDepth(), 1);
  EXPECT_THAT(notes, ElementsAre("pre t", "post t", "pre t", "post t"));
}

TEST_F(TransformVisitTest, CullingTestsTheBoxInTheParentsSpace) {
  Held<ozPerspCamera> camera;
  cull.setCamera(camera);
  t->setTranslation(0, 0, -50);
  EXPECT_EQ(cull.apply(t), TRAV_CONT);
  t->setTranslation(0, 0, 50);
  notes.clear();
  EXPECT_EQ(cull.apply(t), TRAV_PRUNE);
  EXPECT_THAT(notes, IsEmpty());
}

TEST_F(TransformVisitTest, APlainVisitMovesNothing) {
  t->setTranslation(1, 0, 0);
  t->visit(&transform);
  EXPECT_EQ(transform.getMatrixDepth(), 1);
  EXPECT_THAT(notes, ElementsAre("pre t", "visit a", "post t"));
}

TEST_F(TransformVisitTest, AVisitPullsConnectedParts) {
  Held<ozTransform> source;
  source->connect(3, t, 3);
  source->setTranslation(0, 7, 0);
  transform.apply(t);
  EXPECT_VEC(at(0, 0, 0), 0, 7, 0);
}

TEST_F(TransformVisitTest, SeveralHundredLevelsPassTheLimitWithMessagesAndLeaveTheActionUsable) {
  Held<ozTransform> root;
  ozTransform *last = root;
  for (int i = 0; i < 400; ++i) {
    ozTransform *const inner = new ozTransform;
    inner->setTranslation(1, 0, 0);
    last->addChild(inner);
    last = inner;
  }
  last->addChild(a);
  std::string const message = stderrOf([&] { transform.apply(root); });
  EXPECT_NE(message.find("ozMatStack4f::push() - Matrix stack full"), std::string::npos);
  EXPECT_NE(message.find("ozMatStack4f::pop() - Matrix stack empty"), std::string::npos);
  EXPECT_EQ(depth, 256);
  EXPECT_VEC(at(0, 0, 0), 400, 0, 0);
  t->setTranslation(1, 2, 3);
  EXPECT_EQ(stderrOf([&] { transform.apply(t); }), "");
  EXPECT_VEC(at(0, 0, 0), 1, 2, 3);
  EXPECT_EQ(depth, 2);
}

// ---- sound

TEST_F(TransformVisitTest, SoundIsHeardInTheTransformsSpace) {
  t->setTranslation(1, 2, 3);
  t->getBoxBound(); // brings the matrix up to date
  ozSoundAction sound;
  sound.apply(t);
  EXPECT_VEC(at(0, 0, 0), 1, 2, 3);
  EXPECT_EQ(depth, 2);
  EXPECT_EQ(sound.getMatrixDepth(), 1);
  EXPECT_THAT(notes, ElementsAre("sound a"));
}

TEST_F(TransformVisitTest, SoundPushesAlsoForAnUntouchedTransform) {
  ozSoundAction sound;
  sound.apply(t);
  EXPECT_EQ(depth, 2);
}

TEST_F(TransformVisitTest, SoundCleansTheFieldsAndWithThemTheMatrix) {
  t->setTranslation(1, 2, 3);
  ozSoundAction sound;
  sound.apply(t); // the box was pending, and needs the matrix
  EXPECT_FALSE(t->hasPendingFields());
  EXPECT_VEC(at(0, 0, 0), 1, 2, 3);
}

TEST_F(TransformVisitTest, SoundTakesTheMatrixAsItStandsInAStaticTransform) {
  t->setBoundMode(ozNode::STATIC);
  t->cleanFields();
  t->setTranslation(1, 2, 3);
  ozSoundAction sound;
  sound.apply(t);
  EXPECT_VEC(at(0, 0, 0), 0, 0, 0);
  ozMatrix4f m;
  t->getMatrix(m);
  sound.apply(t);
  EXPECT_VEC(at(0, 0, 0), 1, 2, 3);
}

TEST_F(TransformVisitTest, SoundSetsTheType) {
  t->setScale(2, 3, 2);
  ozSoundAction sound;
  sound.apply(t);
  EXPECT_EQ(type, 8);
}

// ---- intersection

namespace {

/// A transform "t" with a shape, whose geometry is hit at a given distance in its own space.
class TransformIsectTest : public ::testing::Test {
protected:
  TransformIsectTest() : shape(new ozShape), geometry(new ProbeGeometry("geo", 1)) {
    shape->addGeometry(geometry);
    t->addChild(shape);
    notes.clear();
  }

  bool cast(float x, float y, float z, float dx, float dy, float dz, float length = 1000) {
    notes.clear();
    action.seg = segment(x, y, z, dx, dy, dz, length);
    action.apply(root.get());
    return action.hit.isValid();
  }

  Held<ozTransform> t;
  Held<ozNode> root{static_cast<ozNode *>(t.get())};
  ozShape *shape;
  ProbeGeometry *geometry;
  ozIsectAction action;
};

} // namespace

TEST_F(TransformIsectTest, ASegmentThatMissesTheBoxTriesNoChild) {
  t->setTranslation(10, 0, 0);
  cast(0, 0, 10, 0, 0, -1);
  EXPECT_THAT(notes, IsEmpty());
  cast(10, 0, 10, 0, 0, -1);
  EXPECT_THAT(notes, ElementsAre("isect geo"));
}

TEST_F(TransformIsectTest, AHitUnderATranslationIsFoundInWorldSpace) {
  t->setTranslation(10, 0, 0);
  geometry->hitAt = 9;
  ASSERT_TRUE(cast(10, 0, 10, 0, 0, -1));
  EXPECT_VEC(action.hit.localPoint, 0, 0, 1);
  EXPECT_VEC(action.hit.worldPoint, 10, 0, 1);
  EXPECT_FLOAT_EQ(action.hit.distance, 9);
  EXPECT_NEAR(action.getActiveSeg()->getLength(), 9, 1e-4);
}

TEST_F(TransformIsectTest, AHitUnderARotationIsFoundInWorldSpace) {
  t->setRotation(0, 1, 0, Pi / 2); // takes z to x
  geometry->hitAt = 9;
  ASSERT_TRUE(cast(10, 0, 0, -1, 0, 0));
  EXPECT_VEC(action.hit.localPoint, 0, 0, 1);
  EXPECT_VEC(action.hit.worldPoint, 1, 0, 0);
  EXPECT_NEAR(action.getActiveSeg()->getLength(), 9, 1e-4);
}

TEST_F(TransformIsectTest, UnderAScaleTheDistanceIsLocalAndTheSegmentReturnsInTheRootsUnits) {
  t->setScale(2, 2, 2);
  geometry->hitAt = 4;
  ASSERT_TRUE(cast(0, 0, 10, 0, 0, -1));
  EXPECT_FLOAT_EQ(action.hit.distance, 4);
  EXPECT_VEC(action.hit.localPoint, 0, 0, 1);
  EXPECT_VEC(action.hit.worldPoint, 0, 0, 2);
  EXPECT_NEAR(action.getActiveSeg()->getLength(), 8, 1e-4);
}

TEST_F(TransformIsectTest, UnderAnUnevenScaleTheLengthComesBackAlongTheDirection) {
  t->setScale(1, 1, 3);
  ASSERT_FALSE(cast(0, 0, 10, 0, 0, -1, 20));
  EXPECT_NEAR(action.getActiveSeg()->getLength(), 20, 1e-4);
  geometry->hitAt = 2;
  ASSERT_TRUE(cast(0, 0, 10, 0, 0, -1, 20));
  EXPECT_NEAR(action.getActiveSeg()->getLength(), 6, 1e-4);
}

TEST_F(TransformIsectTest, WithoutAHitTheSegmentComesBackWhole) {
  t->setTranslation(1, 0, 0);
  t->setRotation(0, 0, 1, 1);
  cast(1, 0, 10, 0, 0, -1, 50);
  EXPECT_NEAR(action.getActiveSeg()->getLength(), 50, 1e-3);
}

TEST_F(TransformIsectTest, TheInverseFollowsEachChange) {
  geometry->hitAt = 9;
  t->setTranslation(10, 0, 0);
  cast(10, 0, 10, 0, 0, -1);
  t->setTranslation(20, 0, 0);
  ASSERT_TRUE(cast(20, 0, 10, 0, 0, -1));
  EXPECT_VEC(action.hit.localPoint, 0, 0, 1);
  ozMatrix4f m;
  m.makeTrans(30, 0, 0);
  t->setMatrix(m);
  ASSERT_TRUE(cast(30, 0, 10, 0, 0, -1));
  EXPECT_VEC(action.hit.localPoint, 0, 0, 1);
  EXPECT_VEC(action.hit.worldPoint, 30, 0, 1);
}

TEST_F(TransformIsectTest, AnUntouchedTransformPushesItsMatrixHere) {
  ProbeNode *const a = new ProbeNode("a", 1);
  int depth = 0;
  a->duringTransform = [&](ozTransformAction *isect) { depth = isect->getMatrixDepth(); };
  t->addChild(a);
  cast(0, 0, 10, 0, 0, -1);
  EXPECT_EQ(depth, 2);
  EXPECT_EQ(action.getMatrixDepth(), 1);
}

TEST_F(TransformIsectTest, ChildrenAreTriedFromTheLastToTheFirst) {
  t->addChild(new ProbeNode("b", 1));
  cast(0, 0, 10, 0, 0, -1);
  EXPECT_THAT(notes, ElementsAre("isect b", "isect geo"));
}

TEST_F(TransformIsectTest, AnUnevenScaleMarksTheType) {
  ProbeNode *const a = new ProbeNode("a", 1);
  int type = -1;
  a->duringTransform = [&](ozTransformAction *isect) { type = isect->getMatType(); };
  t->addChild(a);
  t->setScale(1, 2, 1);
  cast(0, 0, 10, 0, 0, -1);
  EXPECT_EQ(type, 8);
}

TEST_F(TransformIsectTest, ATransformThatCannotBeInvertedLeavesTheParentsSegment) {
  Held<ozGroup> group;
  ozShape *const behind = new ozShape;
  ProbeGeometry *const wall = new ProbeGeometry("wall");
  wall->setBoxBound(boxOf(-5, -5, -21, 5, 5, -20));
  wall->hitAt = 30;
  behind->addGeometry(wall);
  group->addChild(behind);
  group->addChild(t);
  geometry->hitAt = 0;
  for (ozVec3f const &scale : {ozVec3f(0, 0, 0), ozVec3f(1, 1, 0), ozVec3f(0, 1, 1)}) {
    t->setScale(scale);
    ozIsectAction isect;
    isect.seg = segment(0, 0, 10, 0, 0, -1, 100);
    std::string const message = stderrOf([&] { isect.apply(group); });
    EXPECT_NE(message.find("No inverse: singular matrix"), std::string::npos);
    EXPECT_EQ(isect.hit.geometry, wall);
    EXPECT_FLOAT_EQ(isect.hit.distance, 30);
    EXPECT_EQ(isect.getMatrixDepth(), 1);
  }
}

TEST_F(TransformIsectTest, ATransformThatHasItsInverseAgainIsHitAgain) {
  t->setScale(0, 0, 0);
  stderrOf([&] { cast(0, 0, 10, 0, 0, -1); });
  t->setScale(1, 1, 1);
  geometry->hitAt = 9;
  EXPECT_TRUE(cast(0, 0, 10, 0, 0, -1));
}

TEST_F(TransformIsectTest, SeveralHundredLevelsPassTheLimitWithMessagesAndLeaveTheActionUsable) {
  Held<ozTransform> top;
  ozTransform *last = top;
  for (int i = 0; i < 400; ++i) {
    ozTransform *const inner = new ozTransform;
    last->addChild(inner);
    last = inner;
  }
  last->addChild(new ProbeNode("deep", 1));
  std::string const message = stderrOf([&] {
    action.seg = segment(0, 0, 10, 0, 0, -1);
    action.apply(top);
  });
  EXPECT_NE(message.find("ozIsectAction::pushSeg() Scene graph is too deep (256)\n"), std::string::npos);
  EXPECT_NE(message.find("ozMatStack4f::push() - Matrix stack full"), std::string::npos);
  EXPECT_EQ(notes.back(), "isect deep");
  geometry->hitAt = 9;
  t->setTranslation(10, 0, 0);
  EXPECT_EQ(stderrOf([&] { cast(10, 0, 10, 0, 0, -1); }), "");
  EXPECT_VEC(action.hit.worldPoint, 10, 0, 1);
}
