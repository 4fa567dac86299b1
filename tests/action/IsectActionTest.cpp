#include "oz/ozIsectAction.h"

#include <cmath>
#include <gmock/gmock.h>

#include "action/probeNode.h"
#include "oz/ozGroup.h"
#include "oz/ozShape.h"
#include "oz/ozTransform.h"
#include "oz/ozTriSet.h"
#include "support/capture.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

char const TooDeep[] = "ozIsectAction::pushSeg() Scene graph is too deep (256)\n";

/// A leaf with a wall across Z in its local space, as a geometry would test it: not behind the start, not beyond the
/// end.
class Wall {
public:
  explicit Wall(float z) : node(new ProbeNode), _z(z) {
    node->work = [this](ozAction *action) { test(static_cast<ozIsectAction *>(action)); };
  }
  ozGeometry *geometry() { return reinterpret_cast<ozGeometry *>(this); }

  ProbeNode *const node;
  int hits = 0;

private:
  void test(ozIsectAction *action) {
    ozSeg *const seg = action->getActiveSeg();
    float const t = (_z - seg->getOrigin()[2]) / seg->getDirection()[2];
    if (!(t >= 0 && t <= seg->getLength())) return;
    seg->setLength(t);
    action->hitGeometry(geometry());
    ++hits;
  }
  float _z;
};

/// A ray from (0, 0, 10) along -Z.
class IsectAction : public ::testing::Test {
protected:
  IsectAction() { aim(100); }
  void aim(float length) {
    action.seg.setOrigin(0, 0, 10);
    action.seg.setDirection(0, 0, -1);
    action.seg.setLength(length);
  }
  static ozMatrix4f scaling(float s) {
    ozMatrix4f m;
    m.makeScale(s, s, s);
    return m;
  }
  ozIsectAction action;
};

ozTriSet *triangleAt(float z) {
  ozVec3f const corners[] = {ozVec3f(-1, -1, z), ozVec3f(1, -1, z), ozVec3f(0, 1, z)};
  auto *coords = new ozCoordSet3f;
  coords->point()->setRange(0, 3, corners);
  auto *triangle = new ozTriSet;
  triangle->setPrimCount(1);
  triangle->setCoordSet(coords);
  return triangle;
}

void expectNear(ozVec3f const &v, double x, double y, double z) {
  EXPECT_NEAR(v[0], x, 1e-4);
  EXPECT_NEAR(v[1], y, 1e-4);
  EXPECT_NEAR(v[2], z, 1e-4);
}

} // namespace

TEST_F(IsectAction, ApplyStartsWithTheGivenSegmentAndThePathOfTheRoot) {
  Held<ProbeNode> root;
  root->verdict = TRAV_TERM;
  root->work = [&](ozAction *given) {
    EXPECT_EQ(given, &action);
    EXPECT_EQ(action.getActiveSeg()->getOrigin(), ozVec3f(0, 0, 10));
    EXPECT_EQ(action.getActiveSeg()->getDirection(), ozVec3f(0, 0, -1));
    EXPECT_EQ(action.getActiveSeg()->getLength(), 100);
    action.hitGeometry(reinterpret_cast<ozGeometry *>(&action));
  };
  EXPECT_EQ(action.apply(root), TRAV_CONT);
  EXPECT_THAT(root->visits, ElementsAre("isect"));
  ASSERT_EQ(action.hit.path.getCount(), 1u);
  EXPECT_EQ(action.hit.path[0], root);
  EXPECT_EQ(action.hit.ray.getOrigin(), ozVec3f(0, 0, 10));
  EXPECT_EQ(action.hit.ray.getLength(), 100);
}

TEST_F(IsectAction, ApplyCallsNeitherBeginNorEnd) {
  Held<ProbeNode> root;
  Hooked<ozIsectAction> hooked;
  EXPECT_EQ(hooked.apply(root), TRAV_CONT);
  EXPECT_THAT(hooked.log, IsEmpty());
}

TEST_F(IsectAction, ApplyWithoutARootClearsTheHit) {
  action.hitGeometry(reinterpret_cast<ozGeometry *>(&action));
  EXPECT_TRUE(action.hit.isValid());
  EXPECT_EQ(action.apply(nullptr), TRAV_CONT);
  EXPECT_FALSE(action.hit.isValid());
}

TEST_F(IsectAction, AMissLeavesNoHitAndNoPath) {
  Wall wall(20);
  Held<ozNode> root(wall.node);
  wall.node->setBoxBound(makeBox(-1, -1, 20, 1, 1, 20));
  action.apply(root);
  EXPECT_FALSE(action.hit.isValid());
  EXPECT_EQ(action.hit.path.getCount(), 0u);
}

TEST_F(IsectAction, ApplyDoesNotResetTheMatrixStack) {
  action.translate(1, 0, 0);
  Wall wall(0);
  Held<ozNode> root(wall.node);
  action.apply(root);
  expectNear(action.hit.worldPoint, 1, 0, 0);
  action.apply(root);
  expectNear(action.hit.worldPoint, 1, 0, 0);
}

TEST_F(IsectAction, HitGeometryRecordsTheEndOfTheActiveSegment) {
  Held<ProbeNode> container;
  action.apply(nullptr);
  action.translate(1, 2, 3);
  action.getActiveSeg()->setLength(4);
  action.pushPath(container);
  auto *geometry = reinterpret_cast<ozGeometry *>(&action);
  action.hitGeometry(geometry);
  action.popPath();
  EXPECT_EQ(action.hit.geometry, geometry);
  EXPECT_EQ(action.hit.distance, 4);
  expectNear(action.hit.localPoint, 0, 0, 6);
  expectNear(action.hit.worldPoint, 1, 2, 9);
  EXPECT_EQ(action.hit.matrix, *action.getMatrix());
  ASSERT_EQ(action.hit.path.getCount(), 1u);
  EXPECT_EQ(action.hit.path[0], container);
}

TEST_F(IsectAction, PopPathOfAnEmptyPathDoesNothing) {
  action.popPath();
  Held<ProbeNode> root;
  root->work = [&](ozAction *) { action.hitGeometry(reinterpret_cast<ozGeometry *>(&action)); };
  action.apply(root);
  EXPECT_EQ(action.hit.path.getCount(), 1u);
}

TEST_F(IsectAction, PushSegTakesTheSegmentIntoTheNestedSpace) {
  action.apply(nullptr);
  ozMatrix4f inverse = scaling(0.5f);
  inverse.postTrans(inverse, 1, 0, 0);
  action.pushSeg(inverse);
  expectNear(action.getActiveSeg()->getOrigin(), 1, 0, 5);
  expectNear(action.getActiveSeg()->getDirection(), 0, 0, -1);
  EXPECT_FLOAT_EQ(action.getActiveSeg()->getLength(), 50);
}

TEST_F(IsectAction, PopSegWithoutScaleCarriesTheLengthOver) {
  action.apply(nullptr);
  ozSeg *const outer = action.getActiveSeg();
  ozMatrix4f inverse;
  inverse.makeTrans(1, 0, 0);
  action.pushSeg(inverse);
  EXPECT_NE(action.getActiveSeg(), outer);
  action.getActiveSeg()->setLength(7);
  action.popSeg();
  EXPECT_EQ(action.getActiveSeg(), outer);
  EXPECT_EQ(outer->getLength(), 7);
  EXPECT_EQ(outer->getOrigin(), ozVec3f(0, 0, 10));
}

TEST_F(IsectAction, PopSegWithAMatrixScalesTheLengthBack) {
  action.apply(nullptr);
  action.pushSeg(scaling(0.5f));
  action.getActiveSeg()->setLength(7);
  action.popSeg(scaling(2));
  EXPECT_FLOAT_EQ(action.getActiveSeg()->getLength(), 14);
}

TEST_F(IsectAction, PopSegStopsAtTheFirstSegment) {
  action.apply(nullptr);
  ozSeg *const outer = action.getActiveSeg();
  action.popSeg();
  action.popSeg(scaling(2));
  EXPECT_EQ(action.getActiveSeg(), outer);
  EXPECT_EQ(outer->getLength(), 100);
}

TEST_F(IsectAction, AMatrixThatFlattensTheRayLeavesTheParentsSegment) {
  action.apply(nullptr);
  ozMatrix4f flat, inverse;
  flat.makeScale(1, 1, 0);
  stderrOf([&] { inverse.invertAffine(flat); });
  action.pushSeg(inverse);
  action.popSeg(flat);
  EXPECT_EQ(action.getActiveSeg()->getLength(), 100);
  action.pushSeg(scaling(0));
  action.popSeg(scaling(0));
  EXPECT_EQ(action.getActiveSeg()->getLength(), 100);
}

TEST_F(IsectAction, AnEndlessRaySurvivesANestedSpaceOfSmallScale) {
  aim(3.4028235e37f);
  action.apply(nullptr);
  action.pushSeg(scaling(1000));
  action.popSeg(scaling(0.001f));
  EXPECT_EQ(action.getActiveSeg()->getLength(), 3.4028235e37f);
}

TEST_F(IsectAction, Holds256SegmentsAndReportsThePushBeyond) {
  action.apply(nullptr);
  EXPECT_EQ(stderrOf([&] {
              for (int i = 0; i < 255; ++i) action.pushSeg(ozMatrix4f());
            }),
            "");
  ozSeg *const top = action.getActiveSeg();
  EXPECT_EQ(stderrOf([&] { action.pushSeg(scaling(0.5f)); }), TooDeep);
  EXPECT_EQ(action.getActiveSeg(), top);
  EXPECT_EQ(top->getLength(), 100);
  action.popSeg();
  EXPECT_EQ(action.getActiveSeg(), top - 1);
}

TEST_F(IsectAction, TheNearerOfTwoWinsInEitherOrder) {
  for (bool nearFirst : {true, false}) {
    Wall near(5), far(-5);
    Held<ozGroup> root;
    root->addChild(nearFirst ? near.node : far.node);
    root->addChild(nearFirst ? far.node : near.node);
    aim(100);
    action.apply(root);
    EXPECT_EQ(action.hit.geometry, near.geometry());
    EXPECT_EQ(action.hit.distance, 5);
    expectNear(action.hit.worldPoint, 0, 0, 5);
  }
}

TEST_F(IsectAction, OfEqualHitsAGroupsFirstChildWins) {
  Wall first(0), second(0);
  Held<ozGroup> root;
  root->addChild(first.node);
  root->addChild(second.node);
  action.apply(root);
  EXPECT_EQ(second.hits, 1);
  EXPECT_EQ(action.hit.geometry, first.geometry());
}

TEST_F(IsectAction, AnEmptySegmentHitsOnlyWhatItStandsOn) {
  aim(0);
  Wall away(9);
  Held<ozNode> root(away.node);
  action.apply(root);
  EXPECT_FALSE(action.hit.isValid());
  Wall here(10);
  Held<ozNode> other(here.node);
  action.apply(other);
  EXPECT_EQ(action.hit.geometry, here.geometry());
  EXPECT_EQ(action.hit.distance, 0);
}

TEST_F(IsectAction, UnderScaleTwoTheDistanceIsLocalAndTheWorldPointRight) {
  Wall wall(1);
  Held<ozGroup> root;
  auto *transform = new ozTransform;
  transform->setScale(2, 2, 2);
  transform->addChild(wall.node);
  root->addChild(transform);
  float lengthAfter = 0;
  auto *probe = new ProbeNode; // children are tried from the last to the first
  probe->work = [&](ozAction *) { lengthAfter = action.getActiveSeg()->getLength(); };
  root->insertChild(0, probe);
  action.apply(root);
  EXPECT_EQ(action.hit.geometry, wall.geometry());
  EXPECT_NEAR(action.hit.distance, 4, 1e-5); // from z = 5 to z = 1
  expectNear(action.hit.localPoint, 0, 0, 1);
  expectNear(action.hit.worldPoint, 0, 0, 2);
  EXPECT_NEAR(lengthAfter, 8, 1e-5);
  EXPECT_EQ(action.getMatrixDepth(), 1);
}

TEST_F(IsectAction, ThePathGoesFromTheRootToWhatWasHit) {
  Wall wall(0);
  Held<ozGroup> root;
  auto *middle = new ozGroup;
  root->addChild(new ozGroup);
  root->addChild(middle);
  root->addChild(new ozGroup);
  middle->addChild(wall.node);
  action.apply(root);
  ASSERT_EQ(action.hit.path.getCount(), 3u);
  EXPECT_EQ(action.hit.path[0], root);
  EXPECT_EQ(action.hit.path[1], middle);
  EXPECT_EQ(action.hit.path[2], wall.node);
}

TEST_F(IsectAction, ASubtreeBeyondTheHitIsPassedOver) {
  Wall near(5), far(-5);
  near.node->setBoxBound(makeBox(-1, -1, 5, 1, 1, 5));
  far.node->setBoxBound(makeBox(-1, -1, -6, 1, 1, -5));
  Held<ozGroup> root;
  auto *farGroup = new ozGroup;
  farGroup->addChild(far.node);
  root->addChild(farGroup); // tried last
  root->addChild(near.node);
  action.apply(root);
  EXPECT_THAT(far.node->visits, IsEmpty());
  EXPECT_EQ(near.node->visits.size(), 1u);
}

TEST_F(IsectAction, AThinBoxIsNotTestedAgainstTheRay) {
  // Extended along one axis only, and beside the ray: the children are tried all the same.
  Wall wall(0);
  wall.node->setBoxBound(makeBox(5, 0, 0, 6, 0, 0));
  Held<ozGroup> root;
  root->addChild(wall.node);
  action.apply(root);
  EXPECT_EQ(wall.hits, 1);
  wall.node->setBoxBound(makeBox(5, 5, 0, 6, 6, 0));
  action.apply(root);
  EXPECT_EQ(wall.hits, 1);
}

TEST_F(IsectAction, HundredsOfNestedTransformsLeaveTheActionUsable) {
  Wall wall(0);
  ozNode *node = wall.node;
  for (int i = 0; i < 400; ++i) {
    auto *transform = new ozTransform;
    transform->setTranslation(0, 0, 0);
    transform->addChild(node);
    node = transform;
  }
  Held<ozNode> root(node);
  std::string const messages = stderrOf([&] { action.apply(root); });
  EXPECT_NE(messages.find(TooDeep), std::string::npos);
  EXPECT_EQ(wall.hits, 1);
  EXPECT_EQ(action.getMatrixDepth(), 1);
  EXPECT_EQ(*action.getMatrix(), ozMatrix4f());
  Wall plain(5);
  Held<ozNode> shallow(plain.node);
  EXPECT_EQ(stderrOf([&] { action.apply(shallow); }), "");
  EXPECT_EQ(action.hit.distance, 5);
  EXPECT_EQ(action.hit.path.getCount(), 1u);
}

TEST_F(IsectAction, ATransformWithoutAnInverseLeavesWhatLiesBeyondToBeHit) {
  Wall wall(0);
  Held<ozGroup> root;
  root->addChild(wall.node);
  for (float z : {0.0f, 1e-20f}) {
    auto *flat = new ozTransform;
    flat->setScale(1, 1, z);
    root->setChild(1, flat);
    stderrOf([&] { action.apply(root); });
    EXPECT_EQ(action.hit.geometry, wall.geometry());
    EXPECT_EQ(action.hit.distance, 10);
  }
}

TEST_F(IsectAction, ACopyStandsInASpaceOfItsOwn) {
  action.apply(nullptr);
  action.pushSeg(scaling(0.5f));
  ozIsectAction copy(action);
  EXPECT_NE(copy.getActiveSeg(), action.getActiveSeg());
  EXPECT_FLOAT_EQ(copy.getActiveSeg()->getLength(), 50);
  EXPECT_EQ(copy.seg.getLength(), 100);
  copy.popSeg(scaling(2));
  EXPECT_FLOAT_EQ(copy.getActiveSeg()->getLength(), 100);
  EXPECT_FLOAT_EQ(action.getActiveSeg()->getLength(), 50);
}

TEST_F(IsectAction, AHitOnAShapeHasItsWholeRecord) {
  Held<ozGroup> root;
  auto *transform = new ozTransform;
  auto *shape = new ozShape;
  ozTriSet *const triangle = triangleAt(1);
  transform->setTranslation(0, 0, 3);
  transform->setScale(2, 2, 2);
  shape->addGeometry(triangle);
  transform->addChild(shape);
  root->addChild(transform);
  action.apply(root);
  ASSERT_TRUE(action.hit.isValid());
  EXPECT_EQ(action.hit.geometry, triangle);
  EXPECT_EQ(action.hit.shape, shape);
  ASSERT_EQ(action.hit.path.getCount(), 4u);
  EXPECT_EQ(action.hit.path[0], root);
  EXPECT_EQ(action.hit.path[1], transform);
  EXPECT_EQ(action.hit.path[2], shape);
  EXPECT_EQ(action.hit.path[3], triangle);
  EXPECT_EQ(action.hit.primIndex, 0);
  expectNear(action.hit.worldPoint, 0, 0, 5);
  expectNear(action.hit.localPoint, 0, 0, 1);
  expectNear(action.hit.localNormal, 0, 0, 1);
  EXPECT_NEAR(action.hit.distance, 2.5, 1e-5);
  EXPECT_EQ(action.hit.ray.getLength(), 100);
}

TEST_F(IsectAction, OfEqualHitsAShapesLastGeometryWins) {
  Held<ozShape> shape;
  ozTriSet *const first = triangleAt(0), *const last = triangleAt(0);
  shape->addGeometry(first);
  shape->addGeometry(last);
  action.apply(shape);
  EXPECT_EQ(action.hit.geometry, last);
}

TEST_F(IsectAction, AShapeThatOffersAFartherHitIsNotNamed) {
  Held<ozGroup> root;
  auto *near = new ozShape, *far = new ozShape;
  near->addGeometry(triangleAt(2));
  far->addGeometry(triangleAt(-2));
  root->addChild(far);
  root->addChild(near);
  action.apply(root);
  EXPECT_EQ(action.hit.shape, near);
  expectNear(action.hit.worldPoint, 0, 0, 2);
}
