#include "probes.h"

#include "support/capture.h"

#include <cstdio>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// A level of detail "l" with three probes around the origin, looked at along -z from a given distance.
class LODTest : public ::testing::Test {
protected:
  LODTest() : a(new ProbeNode("a", 1)), b(new ProbeNode("b", 1)), c(new ProbeNode("c", 1)), camera(wideCamera()) {
    l->setName("l");
    for (ProbeNode *child : {a, b, c}) l->addChild(child);
    camera->setNearClip(-3000000);
    camera->setFarClip(3000000);
    draw.setCamera(camera);
    cull.setCamera(camera);
    notes.clear();
  }
  ~LODTest() override { ozLOD::setOffset(0); }

  /// What is drawn from a distance.
  Notes drawnAt(float distance) {
    notes.clear();
    camera->setPosition(0, 0, distance);
    draw.reset();
    verdict = l->drawVisit(&draw);
    return notes;
  }

  void setRanges(std::initializer_list<float> values) {
    unsigned int i = 0;
    for (float value : values) l->ranges()->set(i++, value);
    l->ranges()->setCount(i);
  }

  Held<ozLOD> l;
  ProbeNode *a, *b, *c;
  Held<ozOrthoCamera> camera;
  Noting<ozDrawAction> draw;
  Noting<ozVFCullAction> cull;
  ozTravDirective verdict = TRAV_CONT;
};

std::string line(char const *operation, ozLOD *lod, int i) {
  char text[200];
  snprintf(text, sizeof text, "ozLOD(%p)::%s: attempting to read uninitialized range %d\n", static_cast<void *>(lod),
           operation, i);
  return text;
}

} // namespace

TEST(LOD, HasItsFields) {
  ozType *const type = ozLOD::getClassType();
  EXPECT_STREQ(type->getName(), "LOD");
  EXPECT_EQ(type->getAncestor(), ozSwitch::getClassType());
  ASSERT_EQ(type->getFieldInfoCount(), 7);
  EXPECT_STREQ(type->getFieldInfo(4)->getName(), "center");
  EXPECT_EQ(type->getFieldInfo(4)->getFieldType(), ozSFVec3f::getClassType());
  EXPECT_STREQ(type->getFieldInfo(5)->getName(), "ranges");
  EXPECT_EQ(type->getFieldInfo(5)->getFieldType(), ozMFFloat::getClassType());
  EXPECT_STREQ(type->getFieldInfo(6)->getName(), "offsetOverride");
  EXPECT_EQ(type->getFieldInfo(6)->getFieldType(), ozSFInt::getClassType());
}

TEST(LOD, StartsWithOneRangeTheFirstChildAndNoShift) {
  Held<ozLOD> l;
  EXPECT_EQ(l->getWhichChild(), 0);
  EXPECT_EQ(l->getNumRanges(), 1);
  EXPECT_EQ(l->getRangeNear(0), 0);
  EXPECT_EQ(l->getRangeFar(0), 1000000);
  EXPECT_EQ(l->getOffsetOverride(), 0);
  EXPECT_EQ(ozLOD::getOffset(), 0);
  EXPECT_EQ(l->ranges(), l->getField(5));
  ozVec3f center(1, 1, 1);
  l->getCenter(center);
  EXPECT_VEC(center, 0, 0, 0);
}

TEST(LOD, ReadingARangeThatIsNotThereGivesAMessageAndMinusOne) {
  Held<ozLOD> l;
  for (int i : {-1, 1, 100}) {
    float near = 0, far = 0;
    EXPECT_EQ(stderrOf([&] { near = l->getRangeNear(i); }), line("getRangeNear", l, i));
    EXPECT_EQ(near, -1.0f);
    EXPECT_EQ(stderrOf([&] { far = l->getRangeFar(i); }), line("getRangeFar", l, i));
    EXPECT_EQ(far, -1.0f);
  }
}

TEST(LOD, AnAddressPrintsWithOneLeading0x) {
  Held<ozLOD> l;
  EXPECT_EQ(stderrOf([&] { l->getRangeNear(-1); }).substr(0, 8), "ozLOD(0x");
}

TEST(LOD, SetsRanges) {
  Held<ozLOD> l;
  l->setRange(0, 5, 10);
  EXPECT_EQ(l->getRangeNear(0), 5);
  EXPECT_EQ(l->getRangeFar(0), 10);
  l->setRange(1, 11, 20);
  EXPECT_EQ(l->getNumRanges(), 2);
  EXPECT_EQ(l->getRangeFar(0), 11); // the far end of one is the near end of the next
  l->setRangeNear(0, 1);
  l->setRangeFar(1, 30);
  EXPECT_EQ(l->getRangeNear(0), 1);
  EXPECT_EQ(l->getRangeFar(1), 30);
}

TEST(LOD, IndicesAboveNineAndNegativeOnesAreIgnoredInSilence) {
  Held<ozLOD> l;
  EXPECT_EQ(stderrOf([&] {
              for (int i : {10, 11, -1}) {
                l->setRange(i, 1, 2);
                l->setRangeNear(i, 1);
                l->setRangeFar(i, 1);
              }
            }),
            "");
  EXPECT_EQ(l->getNumRanges(), 1);
  l->setRange(9, 1, 2);
  EXPECT_EQ(l->getNumRanges(), 10);
}

TEST(LOD, ASetRangeReachesAConnectedField) {
  Held<ozLOD> from, to;
  from->connect(5, to, 5);
  from->setRange(0, 3, 4);
  EXPECT_EQ((*to->ranges())[1], 4);
}

TEST(LOD, AnOffsetOverrideIsStoredAsItStands) {
  Held<ozLOD> from, to;
  from->connect(6, to, 6);
  to->cleanFields();
  from->setOffsetOverride(3);
  EXPECT_EQ(from->getOffsetOverride(), 3);
  EXPECT_FALSE(to->hasPendingFields());
}

TEST_F(LODTest, ByDefaultTheFirstChildIsDrawnAtAnyDistanceBelowAMillion) {
  EXPECT_THAT(drawnAt(0.5f), ElementsAre("pre l", "draw a", "post l"));
  EXPECT_THAT(drawnAt(999999), ElementsAre("pre l", "draw a", "post l"));
  EXPECT_THAT(drawnAt(1000000), IsEmpty());
  EXPECT_EQ(verdict, TRAV_CONT);
}

TEST_F(LODTest, EachRangeHasItsChild) {
  setRanges({0, 10, 100});
  EXPECT_THAT(drawnAt(5), ElementsAre("pre l", "draw a", "post l"));
  EXPECT_THAT(drawnAt(9.5f), ElementsAre("pre l", "draw a", "post l"));
  EXPECT_THAT(drawnAt(10), ElementsAre("pre l", "draw b", "post l"));
  EXPECT_THAT(drawnAt(50), ElementsAre("pre l", "draw b", "post l"));
  EXPECT_THAT(drawnAt(150), IsEmpty());
  EXPECT_EQ(verdict, TRAV_CONT);
}

TEST_F(LODTest, NearerThanTheFirstRangeNothingIsDrawn) {
  setRanges({2, 10, 100});
  EXPECT_THAT(drawnAt(1), IsEmpty());
  EXPECT_THAT(drawnAt(2), ElementsAre("pre l", "draw a", "post l"));
}

TEST_F(LODTest, AShiftOfOneIsOneChildCoarser) {
  setRanges({0, 10, 100});
  ozLOD::setOffset(1);
  EXPECT_EQ(ozLOD::getOffset(), 1);
  EXPECT_THAT(drawnAt(5), ElementsAre("pre l", "draw b", "post l"));
  EXPECT_THAT(drawnAt(50), IsEmpty());
}

TEST_F(LODTest, ANodesOwnShiftGoesAheadOfTheCommonOne) {
  setRanges({0, 10, 100, 1000});
  ozLOD::setOffset(1);
  l->setOffsetOverride(2);
  EXPECT_THAT(drawnAt(5), ElementsAre("pre l", "draw c", "post l"));
  l->setOffsetOverride(-1);
  EXPECT_THAT(drawnAt(5), ElementsAre("pre l", "draw b", "post l"));
}

TEST_F(LODTest, WithFewerChildrenThanRangesTheLastChildIsDrawn) {
  setRanges({0, 10, 100, 1000, 10000});
  EXPECT_THAT(drawnAt(5000), ElementsAre("pre l", "draw c", "post l"));
}

TEST_F(LODTest, ALastChildWithinTheRangesIsDrawnBeyondThemAll) {
  setRanges({0, 10, 100, 1000, 10000});
  EXPECT_THAT(drawnAt(50000), ElementsAre("pre l", "draw c", "post l")); // the index is cut to the last child's first
}

TEST_F(LODTest, WithoutRangesNothingIsDrawn) {
  l->ranges()->setCount(0);
  EXPECT_THAT(drawnAt(5), IsEmpty());
  EXPECT_EQ(verdict, TRAV_CONT);
  draw.reset();
  EXPECT_EQ(l->whichChild(&draw), -1);
}

TEST_F(LODTest, WithoutChildrenNothingIsDrawn) {
  l->setChildCount(0);
  EXPECT_THAT(drawnAt(5), IsEmpty());
}

TEST_F(LODTest, ADistanceThatIsNoNumberDrawsNothing) {
  l->setCenter(ozVec3f(0, 0, std::numeric_limits<float>::quiet_NaN()));
  EXPECT_THAT(drawnAt(5), IsEmpty());
}

TEST_F(LODTest, AShiftFarOutOfRangeDrawsTheLastChildOrNothing) {
  setRanges({0, 10, 100, 1000});
  l->setOffsetOverride(2147483647);
  EXPECT_THAT(drawnAt(5), ElementsAre("pre l", "draw c", "post l"));
  l->setOffsetOverride(0);
  ozLOD::setOffset(-2147483647 - 1);
  EXPECT_THAT(drawnAt(5), IsEmpty());
}

TEST_F(LODTest, TheChoiceIsWrittenToWhichChildAndServesIntersection) {
  setRanges({0, 10, 100});
  drawnAt(50);
  EXPECT_EQ(l->getWhichChild(), 1);
  ozIsectAction isect;
  isect.seg = segment(0, 0, 10, 0, 0, -1);
  notes.clear();
  isect.apply(l);
  EXPECT_THAT(notes, ElementsAre("isect b"));
}

TEST_F(LODTest, BeforeTheFirstDrawingTheFirstChildIsIntersected) {
  ozIsectAction isect;
  isect.seg = segment(0, 0, 10, 0, 0, -1);
  isect.apply(l);
  EXPECT_THAT(notes, ElementsAre("isect a"));
}

TEST_F(LODTest, WhereNothingIsDrawnTheChoiceStaysAsItWas) {
  setRanges({0, 10, 100});
  drawnAt(50);
  drawnAt(150);
  EXPECT_EQ(l->getWhichChild(), 1);
}

TEST_F(LODTest, WhereNothingIsDrawnTheViewIsNotTested) {
  for (ProbeNode *child : {a, b, c}) child->setBoxBound(cubeAt(0, 0, 5000, 1));
  l->setCenter(ozVec3f(0, 0, 0));
  camera->setFarClip(10);
  camera->setNearClip(-10);
  drawnAt(5);
  EXPECT_EQ(verdict, TRAV_PRUNE); // outside the view
  drawnAt(2000000);
  EXPECT_EQ(verdict, TRAV_CONT);
}

TEST_F(LODTest, DrawingWithoutAChoiceBringsTheFieldsUpToDateAllTheSame) {
  EXPECT_TRUE(l->hasPendingFields());
  drawnAt(2000000);
  EXPECT_FALSE(l->hasPendingFields());
}

TEST_F(LODTest, TheChoiceReachesAConnectedField) {
  Held<ozSwitch> follower;
  l->connect(3, follower, 3);
  setRanges({0, 10, 100});
  drawnAt(50);
  EXPECT_EQ(follower->getWhichChild(), 1);
}

TEST_F(LODTest, CullingChoosesAlike) {
  setRanges({0, 10, 100});
  camera->setPosition(0, 0, 50);
  EXPECT_EQ(cull.apply(l), TRAV_CONT);
  EXPECT_THAT(notes, ElementsAre("pre l", "cull b", "post l"));
  notes.clear();
  camera->setPosition(0, 0, 500);
  EXPECT_EQ(cull.apply(l), TRAV_CONT);
  EXPECT_THAT(notes, IsEmpty());
}

TEST_F(LODTest, TheDistanceIsTakenInEyeSpaceThroughTheTransformsAbove) {
  Held<ozTransform> t;
  t->setTranslation(0, 0, -30);
  t->addChild(l);
  setRanges({0, 40, 100});
  draw.setCamera(camera);
  camera->setPosition(0, 0, 20);
  draw.reset();
  EXPECT_EQ(l->whichChild(&draw), 0); // 20 away
  draw.translate(0, 0, -30);
  EXPECT_EQ(l->whichChild(&draw), 1); // 50 away
}

TEST_F(LODTest, TheCenterIsTakenFromTheBoundOnceAtTheFirstUse) {
  for (ProbeNode *child : {a, b, c}) child->setBoxBound(boxOf(0, 0, 0, 2, 4, 6));
  drawnAt(5);
  ozVec3f center;
  l->getCenter(center);
  EXPECT_VEC(center, 1, 2, 3);
  for (ProbeNode *child : {a, b, c}) child->setBoxBound(cubeAt(50, 50, 50, 1));
  drawnAt(5);
  l->getCenter(center);
  EXPECT_VEC(center, 1, 2, 3);
}

TEST_F(LODTest, ASetCenterStays) {
  l->setCenter(ozVec3f(7, 8, 9));
  drawnAt(5);
  ozVec3f center;
  l->getCenter(center);
  EXPECT_VEC(center, 7, 8, 9);
}

TEST_F(LODTest, ACenterWrittenThroughTheFieldIsReplacedAtTheFirstUse) {
  static_cast<ozSFVec3f *>(l->getField(4))->set(ozVec3f(7, 8, 9));
  drawnAt(5);
  ozVec3f center;
  l->getCenter(center);
  EXPECT_VEC(center, 0, 0, 0);
}

TEST_F(LODTest, ASetCenterReachesAConnectedField) {
  Held<ozLOD> other;
  l->connect(4, other, 4);
  l->setCenter(ozVec3f(7, 8, 9));
  other->cleanFields();
  ozVec3f center;
  other->getCenter(center);
  EXPECT_VEC(center, 7, 8, 9);
}

TEST_F(LODTest, ReadingTheCenterPullsNothing) {
  Held<ozLOD> other;
  l->connect(4, other, 4);
  l->setCenter(ozVec3f(7, 8, 9));
  ozVec3f center;
  other->getCenter(center);
  EXPECT_VEC(center, 0, 0, 0);
}

TEST_F(LODTest, ANullChildDrawsNothing) {
  l->setChild(0, nullptr);
  EXPECT_THAT(drawnAt(5), ElementsAre("pre l", "post l"));
}
