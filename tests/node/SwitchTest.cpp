#include "probes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// A switch "s" with three probes, and an action of each family that chooses.
class SwitchTest : public ::testing::Test {
protected:
  SwitchTest() : a(new ProbeNode("a", 1)), b(new ProbeNode("b", 1)), c(new ProbeNode("c", 1)), camera(wideCamera()) {
    s->setName("s");
    for (ProbeNode *child : {a, b, c}) s->addChild(child);
    cull.setCamera(camera);
    draw.setCamera(camera);
    isect.seg = segment(0, 0, 10, 0, 0, -1);
    notes.clear();
  }

  ozTravDirective drawIt() {
    notes.clear();
    draw.reset();
    return s->drawVisit(&draw);
  }
  ozTravDirective cullIt() {
    notes.clear();
    return cull.apply(s);
  }
  void isectIt() {
    notes.clear();
    isect.apply(s);
  }

  Held<ozSwitch> s;
  ProbeNode *a, *b, *c;
  Held<ozOrthoCamera> camera;
  Noting<ozVFCullAction> cull;
  Noting<ozDrawAction> draw;
  ozIsectAction isect;
};

} // namespace

TEST(Switch, IsAGroupWithTheFieldWhichChild) {
  ozType *const type = ozSwitch::getClassType();
  EXPECT_STREQ(type->getName(), "Switch");
  EXPECT_EQ(type->getAncestor(), ozGroup::getClassType());
  ASSERT_EQ(type->getFieldInfoCount(), 4);
  EXPECT_STREQ(type->getFieldInfo(3)->getName(), "whichChild");
  EXPECT_EQ(type->getFieldInfo(3)->getFieldType(), ozSFInt::getClassType());
}

TEST(Switch, ChoosesNoChildByDefault) {
  Held<ozSwitch> s;
  EXPECT_EQ(s->getWhichChild(), -1);
}

TEST(Switch, AChosenChildReachesAConnectedField) {
  Held<ozSwitch> from, to;
  from->connect(3, to, 3);
  from->setWhichChild(2);
  EXPECT_EQ(to->getWhichChild(), 2);
}

TEST_F(SwitchTest, NoChildIsPrunedWithoutPreVisit) {
  EXPECT_EQ(drawIt(), TRAV_PRUNE);
  EXPECT_THAT(notes, IsEmpty());
  EXPECT_EQ(cullIt(), TRAV_PRUNE);
  EXPECT_THAT(notes, IsEmpty());
  isectIt();
  EXPECT_THAT(notes, IsEmpty());
}

TEST_F(SwitchTest, NoChildBringsTheFieldsUpToDateAllTheSame) {
  EXPECT_TRUE(s->hasPendingFields());
  drawIt();
  EXPECT_FALSE(s->hasPendingFields());
}

TEST_F(SwitchTest, ANumberBelowMinusTwoCountsAsNoChild) {
  s->setWhichChild(-3);
  EXPECT_EQ(drawIt(), TRAV_PRUNE);
  EXPECT_EQ(cullIt(), TRAV_PRUNE);
  isectIt();
  EXPECT_THAT(notes, IsEmpty());
}

TEST_F(SwitchTest, OneChildIsVisitedAlone) {
  s->setWhichChild(1);
  EXPECT_EQ(drawIt(), TRAV_CONT);
  EXPECT_THAT(notes, ElementsAre("pre s", "draw b", "post s"));
  EXPECT_EQ(cullIt(), TRAV_CONT);
  EXPECT_THAT(notes, ElementsAre("pre s", "cull b", "post s"));
  isectIt();
  EXPECT_THAT(notes, ElementsAre("isect b"));
}

TEST_F(SwitchTest, AllChildrenAreVisitedInOrder) {
  s->setWhichChild(-2);
  EXPECT_EQ(drawIt(), TRAV_CONT);
  EXPECT_THAT(notes, ElementsAre("pre s", "draw a", "draw b", "draw c", "post s"));
  cullIt();
  EXPECT_THAT(notes, ElementsAre("pre s", "cull a", "cull b", "cull c", "post s"));
}

TEST_F(SwitchTest, AllChildrenAreIntersectedFromTheFirstToTheLast) {
  s->setWhichChild(-2);
  isectIt();
  EXPECT_THAT(notes, ElementsAre("isect a", "isect b", "isect c"));
}

TEST_F(SwitchTest, AnIndexAtOrPastTheCountVisitsNoChild) {
  for (int which : {3, 4, 1000000}) {
    s->setWhichChild(which);
    EXPECT_EQ(drawIt(), TRAV_CONT);
    EXPECT_THAT(notes, ElementsAre("pre s", "post s"));
    EXPECT_EQ(cullIt(), TRAV_CONT);
    isectIt();
    EXPECT_THAT(notes, IsEmpty());
  }
}

TEST_F(SwitchTest, OnlyTermOfTheChildCounts) {
  s->setWhichChild(1);
  b->verdict = TRAV_PRUNE;
  EXPECT_EQ(drawIt(), TRAV_CONT);
  b->verdict = TRAV_TERM;
  EXPECT_EQ(drawIt(), TRAV_TERM);
  EXPECT_EQ(cullIt(), TRAV_TERM);
  s->setWhichChild(-2);
  EXPECT_EQ(drawIt(), TRAV_TERM);
  EXPECT_THAT(notes, ElementsAre("pre s", "draw a", "draw b", "post s"));
}

TEST_F(SwitchTest, PreVisitAndPostVisitCountAsInAGroup) {
  s->setWhichChild(1);
  draw.pre["s"] = TRAV_PRUNE;
  EXPECT_EQ(drawIt(), TRAV_PRUNE);
  EXPECT_THAT(notes, ElementsAre("pre s", "post s"));
  draw.pre.clear();
  draw.post["s"] = TRAV_TERM;
  EXPECT_EQ(drawIt(), TRAV_TERM);
}

TEST_F(SwitchTest, ASwitchOutsideTheViewIsPruned) {
  s->setWhichChild(1);
  for (ProbeNode *child : {a, b, c}) child->setBoxBound(cubeAt(0, 0, 5000, 1));
  EXPECT_EQ(drawIt(), TRAV_PRUNE);
  EXPECT_THAT(notes, IsEmpty());
}

TEST_F(SwitchTest, TheBoundHoldsAllChildren) {
  s->setWhichChild(0);
  c->setBoxBound(cubeAt(10, 0, 0, 1));
  EXPECT_BOX(*s->getBoxBound(), -1, -1, -1, 11, 1, 1);
}

TEST_F(SwitchTest, OtherVisitsSeeAllChildren) {
  Noting<ozTransformAction> action;
  action.apply(s);
  EXPECT_THAT(notes, ElementsAre("pre s", "transform a", "transform b", "transform c", "post s"));
  notes.clear();
  s->visit(&action);
  EXPECT_THAT(notes, ElementsAre("pre s", "visit a", "visit b", "visit c", "post s"));
  notes.clear();
  ozSoundAction sound;
  sound.apply(s);
  EXPECT_THAT(notes, ElementsAre("sound a", "sound b", "sound c"));
}

TEST_F(SwitchTest, ASegmentThatMissesTheBoxTriesNoChild) {
  s->setWhichChild(-2);
  isect.seg = segment(10, 0, 10, 0, 0, -1);
  isectIt();
  EXPECT_THAT(notes, IsEmpty());
}

TEST_F(SwitchTest, TheBoxIsTestedHoweverFlatItIs) {
  s->setWhichChild(-2);
  for (ProbeNode *child : {a, b, c}) child->setBoxBound(boxOf(0, 0, -1, 0, 0, 1));
  isect.seg = segment(10, 0, 10, 0, 0, -1);
  isectIt();
  EXPECT_THAT(notes, IsEmpty());
}

TEST_F(SwitchTest, NullChildrenArePassedOver) {
  s->setChild(1, nullptr);
  s->setWhichChild(1);
  EXPECT_EQ(drawIt(), TRAV_CONT);
  isectIt();
  EXPECT_THAT(notes, IsEmpty());
  s->setWhichChild(-2);
  drawIt();
  EXPECT_THAT(notes, ElementsAre("pre s", "draw a", "draw c", "post s"));
  isectIt();
  EXPECT_THAT(notes, ElementsAre("isect a", "isect c"));
}

TEST_F(SwitchTest, AHitsPathLeadsThroughTheSwitch) {
  ozShape *const shape = new ozShape;
  ProbeGeometry *const geometry = new ProbeGeometry("geo", 1);
  geometry->hitAt = 9;
  shape->addGeometry(geometry);
  s->setChild(1, shape);
  for (int which : {1, -2}) {
    s->setWhichChild(which);
    isectIt();
    ASSERT_EQ(isect.hit.path.getCount(), 3u);
    EXPECT_EQ(isect.hit.path[0], s.get());
    EXPECT_EQ(isect.hit.path[1], shape);
    EXPECT_EQ(isect.hit.path[2], geometry);
  }
}
