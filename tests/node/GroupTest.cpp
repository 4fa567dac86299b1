#include "probes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

namespace {

/// A group with three probes a, b and c around the origin.
class GroupTest : public ::testing::Test {
protected:
  GroupTest() : a(new ProbeNode("a", 1)), b(new ProbeNode("b", 2)), c(new ProbeNode("c", 3)) {
    group->setName("g");
    for (ProbeNode *child : {a, b, c}) group->addChild(child);
    group->changes.clear();
    group->childChanges.clear();
    notes.clear();
  }

  Held<Watched<ozGroup>> group;
  ProbeNode *a, *b, *c;
};

} // namespace

TEST(Group, HasTheFieldChildrenOfNodes) {
  EXPECT_STREQ(ozGroup::getClassType()->getName(), "Group");
  EXPECT_EQ(ozGroup::getClassType()->getAncestor(), ozNode::getClassType());
  ASSERT_EQ(ozGroup::getClassType()->getFieldInfoCount(), 3);
  ozFieldInfo *const info = ozGroup::getClassType()->getFieldInfo(2);
  EXPECT_STREQ(info->getName(), "children");
  EXPECT_EQ(info->getFieldType(), ozMFRef::getClassType());
  EXPECT_EQ(static_cast<ozMFRefInfo *>(info)->getRefType(), ozNode::getClassType());
}

TEST(Group, StartsEmptyWithNothingPending) {
  Held<ozGroup> group;
  EXPECT_FALSE(group->hasPendingFields());
  EXPECT_EQ(group->getChildCount(), 0);
  EXPECT_TRUE(group->getBoxBound()->isEmpty());
}

TEST(Group, GivesItsChildrenField) {
  Held<ozGroup> group;
  EXPECT_EQ(group->children(), group->getField(2));
  EXPECT_EQ(group->children()->getSize(), 2u);
}

TEST(Group, MakesGroups) {
  Held<ozGroup> group;
  Held<ozContainer> made(group->instantiate());
  EXPECT_EQ(made->getType(), ozGroup::getClassType());
}

TEST(Group, HoldsAReferenceOnEachChild) {
  Held<ProbeNode> child;
  {
    Held<ozGroup> group;
    group->addChild(child);
    EXPECT_EQ(child->getRefCount(), 2u);
    EXPECT_EQ(child->getParent(0), group.get());
  }
  EXPECT_EQ(child->getRefCount(), 1u);
  EXPECT_EQ(child->getParentCount(), 0);
}

TEST_F(GroupTest, AddsAtTheEnd) {
  ASSERT_EQ(group->getChildCount(), 3);
  EXPECT_EQ(group->getChild(0), a);
  EXPECT_EQ(group->getChild(2), c);
}

TEST_F(GroupTest, AddingNullChangesNoChildButRunsTheChangeLogic) {
  group->getBoxBound();
  group->addChild(nullptr);
  EXPECT_EQ(group->getChildCount(), 3);
  EXPECT_THAT(group->changes, ElementsAre(2));
  EXPECT_TRUE(group->hasPendingFields());
}

TEST_F(GroupTest, InsertsBeforeAnIndex) {
  ProbeNode *const d = new ProbeNode;
  group->insertChild(1, d);
  EXPECT_EQ(group->getChild(1), d);
  EXPECT_EQ(group->getChild(2), b);
  EXPECT_EQ(group->getChildCount(), 4);
}

TEST_F(GroupTest, SetsAChild) {
  ProbeNode *const d = new ProbeNode;
  Held<ProbeNode> old(b);
  group->setChild(1, d);
  EXPECT_EQ(group->getChild(1), d);
  EXPECT_EQ(old->getParentCount(), 0);
}

TEST_F(GroupTest, RemovesAChild) {
  EXPECT_EQ(group->removeChild(b), 1);
  EXPECT_EQ(group->getChildCount(), 2);
  EXPECT_EQ(group->getChild(1), c);
}

TEST_F(GroupTest, RemovesByIndex) {
  group->removeChild(0);
  EXPECT_EQ(group->getChildCount(), 2);
  EXPECT_EQ(group->getChild(0), b);
}

TEST_F(GroupTest, ReplacesAChildAndTellsItsIndex) {
  ProbeNode *const d = new ProbeNode;
  EXPECT_EQ(group->replaceChild(b, d), 1);
  EXPECT_EQ(group->getChild(1), d);
}

TEST_F(GroupTest, RemovingWhatIsNoChildChangesNothingButIsAnnounced) {
  Held<ProbeNode> stranger;
  EXPECT_EQ(group->removeChild(stranger), 0);
  EXPECT_THAT(group->changes, ElementsAre(2));
  EXPECT_EQ(group->getChildCount(), 3);
}

TEST_F(GroupTest, RemovingAnIndexBeyondTheEndChangesNothingButIsAnnounced) {
  group->removeChild(3);
  EXPECT_THAT(group->changes, ElementsAre(2));
  EXPECT_EQ(group->getChildCount(), 3);
}

TEST_F(GroupTest, ReplacingWhatIsNoChildGivesMinusOneAndIsAnnounced) {
  Held<ProbeNode> stranger, other;
  EXPECT_EQ(group->replaceChild(stranger, other), -1);
  EXPECT_THAT(group->changes, ElementsAre(2));
}

TEST_F(GroupTest, EachMutatorEndsInTheAnnouncementOfChildren) {
  auto announces = [&](auto mutate) {
    group->changes.clear();
    mutate();
    return !group->changes.empty() && group->changes.back() == 2;
  };
  EXPECT_TRUE(announces([&] { group->addChild(new ProbeNode); }));
  EXPECT_TRUE(announces([&] { group->insertChild(0, new ProbeNode); }));
  EXPECT_TRUE(announces([&] { group->setChild(0, new ProbeNode); }));
  EXPECT_TRUE(announces([&] { group->replaceChild(b, new ProbeNode); }));
  EXPECT_TRUE(announces([&] { group->removeChild(a); }));
  EXPECT_TRUE(announces([&] { group->removeChild(0); }));
  EXPECT_TRUE(announces([&] { group->setChildCount(1); }));
}

TEST_F(GroupTest, FindsChildren) {
  Held<ProbeNode> stranger;
  EXPECT_EQ(group->findChild(c), 2);
  EXPECT_EQ(group->findChild(stranger), -1);
}

TEST_F(GroupTest, LoweringTheCountReleasesWhatItCutsOff) {
  Held<ProbeNode> kept(c);
  group->setChildCount(1);
  EXPECT_EQ(group->getChildCount(), 1);
  EXPECT_EQ(kept->getRefCount(), 1u);
  EXPECT_EQ(kept->getParentCount(), 0);
}

TEST_F(GroupTest, RaisingTheCountAddsNulls) {
  group->setChildCount(5);
  EXPECT_EQ(group->getChildCount(), 5);
  EXPECT_EQ(group->getChild(4), nullptr);
}

TEST_F(GroupTest, AHigherCountDoesNotBringBackWhatWasReleased) {
  auto raised = [&] {
    group->setChildCount(3);
    return group->getChild(2);
  };
  group->setChildCount(2);
  EXPECT_EQ(raised(), nullptr);
  group->setChild(2, new ProbeNode);
  group->removeChild(2);
  EXPECT_EQ(raised(), nullptr);
  group->setChild(2, new ProbeNode);
  group->removeChild(group->getChild(2));
  EXPECT_EQ(raised(), nullptr);
  group->setChild(2, new ProbeNode);
  group->children()->fastRemove(group->getChild(2));
  EXPECT_EQ(raised(), nullptr);
  group->setChild(2, new ProbeNode);
  group->children()->fastRemoveIndex(2);
  EXPECT_EQ(raised(), nullptr);
  group->setChild(2, new ProbeNode);
  ozRefArray two;
  two.append(a);
  two.append(b);
  group->children()->set(two);
  EXPECT_EQ(raised(), nullptr);
}

TEST_F(GroupTest, ReadsFollowAConnectedField) {
  Held<ozGroup> other;
  group->connect(2, other, 2);
  EXPECT_EQ(other->getChildCount(), 3);
  EXPECT_EQ(other->getChild(1), b);
}

// ---- the bound

TEST_F(GroupTest, TheBoxSurroundsTheChildrensBoxes) {
  a->setBoxBound(boxOf(-5, 0, 0, 0, 1, 1));
  b->setBoxBound(boxOf(0, 0, 0, 1, 9, 1));
  c->setBoxBound(boxOf(0, 0, -2, 1, 1, 1));
  EXPECT_BOX(*group->getBoxBound(), -5, 0, -2, 1, 9, 1);
}

TEST_F(GroupTest, TheBoxOfNoChildrenIsEmpty) {
  group->getBoxBound();
  group->setChildCount(0);
  EXPECT_TRUE(group->getBoxBound()->isEmpty());
}

TEST_F(GroupTest, NullChildrenDoNotCountForTheBox) {
  group->setChildCount(5);
  EXPECT_BOX(*group->getBoxBound(), -3, -3, -3, 3, 3, 3);
}

TEST_F(GroupTest, CalcChildrenBoundComputesIntoAnyBox) {
  ozBoxBound box;
  group->calcChildrenBound(box);
  EXPECT_BOX(box, -3, -3, -3, 3, 3, 3);
}

TEST_F(GroupTest, ABurstOfChangesIsComputedOnceAndAtTheNextRead) {
  Held<Watched<ozGroup>> root;
  root->addChild(group);
  root->getBoxBound();
  root->childChanges.clear();
  root->cleanings = group->cleanings = 0;
  for (int i = 1; i <= 10; ++i) c->setBoxBound(cubeAt(0, 0, 0, static_cast<float>(i)));
  EXPECT_THAT(root->childChanges, ElementsAre(Pair(group.get(), 0)));
  EXPECT_EQ(root->cleanings + group->cleanings, 0);
  EXPECT_BOX(*root->getBoxBound(), -10, -10, -10, 10, 10, 10);
  EXPECT_EQ(root->cleanings, 1);
  EXPECT_EQ(group->cleanings, 1);
}

TEST_F(GroupTest, AVisitBringsTheBoxUpToDate) {
  ozAction action;
  group->cleanings = 0;
  group->visit(&action);
  EXPECT_EQ(group->cleanings, 1);
  EXPECT_FALSE(group->hasPendingFields());
}

TEST_F(GroupTest, AStaticGroupKeepsItsBoxAndItsParentsHearNothing) {
  Held<Watched<ozGroup>> root;
  root->addChild(group);
  group->setBoundMode(ozNode::STATIC);
  group->setBoxBound(cubeAt(0, 0, 0, 8));
  root->getBoxBound();
  root->childChanges.clear();
  c->setBoxBound(cubeAt(0, 0, 0, 20));
  group->addChild(new ProbeNode("d", 30));
  EXPECT_THAT(root->childChanges, IsEmpty());
  EXPECT_BOX(*group->getBoxBound(), -8, -8, -8, 8, 8, 8);
  EXPECT_BOX(*root->getBoxBound(), -8, -8, -8, 8, 8, 8);
}

TEST_F(GroupTest, AChangeOfAnotherFieldOfAChildLeavesTheBox) {
  group->getBoxBound();
  group->childChanged(a, 1);
  EXPECT_FALSE(group->hasPendingFields());
}

TEST_F(GroupTest, ADynamicGroupReplacesAStoredBoxAtTheNextChangeBelow) {
  group->setBoxBound(cubeAt(0, 0, 0, 50));
  EXPECT_BOX(*group->getBoxBound(), -50, -50, -50, 50, 50, 50);
  c->setBoxBound(cubeAt(0, 0, 0, 4));
  EXPECT_BOX(*group->getBoxBound(), -4, -4, -4, 4, 4, 4);
}

TEST_F(GroupTest, TheBoxOfACycleIsComputedAllTheSame) {
  ozGroup *const inner = new ozGroup;
  ozTransform *const transform = new ozTransform;
  group->addChild(inner);
  inner->addChild(transform);
  transform->addChild(group);
  EXPECT_BOX(*group->getBoxBound(), -3, -3, -3, 3, 3, 3);
  transform->setChildCount(0);
}

TEST_F(GroupTest, AComputedBoxReachesAConnectedField) {
  Held<ProbeNode> follower;
  group->connect(0, follower, 0);
  EXPECT_BOX(*group->getBoxBound(), -3, -3, -3, 3, 3, 3);
  c->setBoxBound(cubeAt(0, 0, 0, 6));
  group->getBoxBound();
  EXPECT_BOX(*follower->getBoxBound(), -6, -6, -6, 6, 6, 6);
}

// ---- visits

TEST_F(GroupTest, VisitsTheChildrenInOrderBetweenPreAndPostVisit) {
  Noting<ozAction> action;
  EXPECT_EQ(action.apply(group), TRAV_CONT);
  EXPECT_THAT(notes, ElementsAre("pre g", "visit a", "visit b", "visit c", "post g"));
}

TEST_F(GroupTest, EachFamilyVisitsByItsOwnOperation) {
  Held<ozOrthoCamera> camera(wideCamera());
  Noting<ozTransformAction> transform;
  transform.apply(group);
  EXPECT_THAT(notes, ElementsAre("pre g", "transform a", "transform b", "transform c", "post g"));
  notes.clear();
  Noting<ozVFCullAction> cull;
  cull.setCamera(camera);
  cull.apply(group);
  EXPECT_THAT(notes, ElementsAre("pre g", "cull a", "cull b", "cull c", "post g"));
  notes.clear();
  Noting<ozDrawAction> draw;
  draw.setCamera(camera);
  draw.reset();
  group->drawVisit(&draw);
  EXPECT_THAT(notes, ElementsAre("pre g", "draw a", "draw b", "draw c", "post g"));
}

TEST_F(GroupTest, PruneOfAChildHasNoEffectOnTheParent) {
  a->verdict = TRAV_PRUNE;
  Noting<ozAction> action;
  EXPECT_EQ(action.apply(group), TRAV_CONT);
  EXPECT_THAT(notes, ElementsAre("pre g", "visit a", "visit b", "visit c", "post g"));
}

TEST_F(GroupTest, TermOfAChildReachesTheRootAndPostVisitRunsOnTheWay) {
  Held<ozGroup> root(named(new ozGroup, "r"));
  root->addChild(group);
  root->addChild(new ProbeNode("d"));
  b->verdict = TRAV_TERM;
  notes.clear();
  Noting<ozAction> action;
  EXPECT_EQ(action.apply(root), TRAV_TERM);
  EXPECT_THAT(notes, ElementsAre("pre r", "pre g", "visit a", "visit b", "post g", "post r"));
}

TEST_F(GroupTest, APreVisitThatPrunesSkipsTheChildrenAndIsFollowedByPostVisit) {
  Noting<ozAction> action;
  action.pre["g"] = TRAV_PRUNE;
  EXPECT_EQ(action.apply(group), TRAV_PRUNE);
  EXPECT_THAT(notes, ElementsAre("pre g", "post g"));
}

TEST_F(GroupTest, TheVerdictIsTheLargerOfTheChildrensAndPostVisits) {
  Noting<ozAction> action;
  action.post["g"] = TRAV_TERM;
  EXPECT_EQ(action.apply(group), TRAV_TERM);
  action.pre["g"] = TRAV_TERM;
  action.post["g"] = TRAV_PRUNE;
  EXPECT_EQ(action.apply(group), TRAV_TERM);
}

TEST_F(GroupTest, ASharedNodeIsVisitedOnceForEachParent) {
  Held<ozGroup> root(named(new ozGroup, "r"));
  root->addChild(group);
  root->addChild(a);
  notes.clear();
  Noting<ozAction> action;
  action.apply(root);
  EXPECT_THAT(notes, ElementsAre("pre r", "pre g", "visit a", "visit b", "visit c", "post g", "visit a", "post r"));
}

TEST_F(GroupTest, NullChildrenArePassedOverInEachVisit) {
  group->setChildCount(2);
  group->setChildCount(3);
  group->insertChild(0, nullptr);
  Held<ozOrthoCamera> camera(wideCamera());
  Noting<ozDrawAction> draw;
  draw.setCamera(camera);
  draw.reset();
  ozIsectAction isect;
  isect.seg = segment(0, 0, 10, 0, 0, -1);
  ozSoundAction sound;
  notes.clear();
  group->visit(&draw);
  group->transformVisit(&draw);
  group->vfCullVisit(&draw);
  group->drawVisit(&draw);
  isect.apply(group);
  sound.apply(group);
  EXPECT_THAT(notes, ElementsAre("pre g", "visit a", "visit b", "post g", "pre g", "transform a", "transform b",
                                 "post g", "pre g", "cull a", "cull b", "post g", "pre g", "draw a", "draw b", "post g",
                                 "isect b", "isect a", "sound a", "sound b"));
}

TEST_F(GroupTest, AVisitMayRemoveSiblings) {
  a->during = [&] { group->setChildCount(1); };
  Noting<ozAction> action;
  action.apply(group);
  EXPECT_THAT(notes, ElementsAre("pre g", "visit a", "post g"));
}

TEST_F(GroupTest, ChildrenAddedDuringAVisitWaitForTheNext) {
  a->during = [&] {
    if (group->getChildCount() == 3) group->addChild(new ProbeNode("d"));
  };
  Noting<ozAction> action;
  action.apply(group);
  EXPECT_THAT(notes, ElementsAre("pre g", "visit a", "visit b", "visit c", "post g"));
  notes.clear();
  action.apply(group);
  EXPECT_THAT(notes, ElementsAre("pre g", "visit a", "visit b", "visit c", "visit d", "post g"));
}

TEST_F(GroupTest, AnIsectThatRemovesSiblingsEndsAtThePresentCount) {
  c->during = [&] { group->setChildCount(1); };
  Held<ProbeNode> alive(c);
  ozIsectAction isect;
  isect.seg = segment(0, 0, 10, 0, 0, -1);
  isect.apply(group);
  EXPECT_THAT(notes, ElementsAre("isect c", "isect a"));
}

TEST_F(GroupTest, SoundReachesTheChildrenInOrderAndCleansNothing) {
  ozSoundAction sound;
  sound.apply(group);
  EXPECT_THAT(notes, ElementsAre("sound a", "sound b", "sound c"));
  EXPECT_TRUE(group->hasPendingFields());
}

// ---- culling

namespace {

/// A group with one probe, looked at from the origin along -z.
class GroupCullTest : public ::testing::Test {
protected:
  GroupCullTest() : child(new ProbeNode("a")), camera(new ozPerspCamera) {
    group->setName("g");
    group->addChild(child);
    action.setCamera(camera);
    notes.clear();
  }

  Held<ozGroup> group;
  ProbeNode *child;
  Held<ozPerspCamera> camera;
  Noting<ozVFCullAction> action;
};

/// An action that notes what pushCull of a group found.
struct CullDepth : ozVFCullAction {
  int depth() const { return _cullDepth; }
  void deepen(int n) { _cullDepth = n; }
};

} // namespace

TEST_F(GroupCullTest, AGroupOutsideTheViewIsPrunedWithoutPreAndPostVisit) {
  child->setBoxBound(cubeAt(0, 0, 50, 1)); // behind the camera
  EXPECT_EQ(action.apply(group), TRAV_PRUNE);
  EXPECT_THAT(notes, IsEmpty());
}

TEST_F(GroupCullTest, DrawingPrunesAlike) {
  child->setBoxBound(cubeAt(0, 0, 50, 1));
  Noting<ozDrawAction> draw;
  draw.setCamera(camera);
  draw.reset();
  EXPECT_EQ(group->drawVisit(&draw), TRAV_PRUNE);
  EXPECT_THAT(notes, IsEmpty());
}

TEST_F(GroupCullTest, AGroupInTheViewIsVisited) {
  child->setBoxBound(cubeAt(0, 0, -50, 1));
  EXPECT_EQ(action.apply(group), TRAV_CONT);
  EXPECT_THAT(notes, ElementsAre("pre g", "cull a", "post g"));
}

TEST_F(GroupCullTest, AnEmptyGroupIsPruned) {
  group->setChildCount(0);
  EXPECT_EQ(action.apply(group), TRAV_PRUNE);
}

TEST_F(GroupCullTest, PreVisitAndTermCountInsideTheCullTest) {
  child->setBoxBound(cubeAt(0, 0, -50, 1));
  action.pre["g"] = TRAV_PRUNE;
  EXPECT_EQ(action.apply(group), TRAV_PRUNE);
  EXPECT_THAT(notes, ElementsAre("pre g", "post g"));
  action.pre.clear();
  child->verdict = TRAV_TERM;
  EXPECT_EQ(action.apply(group), TRAV_TERM);
}

TEST_F(GroupCullTest, TheCullStackIsPoppedInEachOutcome) {
  CullDepth cull;
  cull.setCamera(camera);
  child->setBoxBound(cubeAt(0, 0, 50, 1));
  cull.apply(group);
  EXPECT_EQ(cull.depth(), 0);
  child->setBoxBound(cubeAt(0, 0, -50, 1));
  cull.apply(group);
  EXPECT_EQ(cull.depth(), 0);
  child->verdict = TRAV_TERM;
  cull.apply(group);
  EXPECT_EQ(cull.depth(), 0);
}

TEST_F(GroupCullTest, TheChildIsOneLevelDeeper) {
  CullDepth cull;
  cull.setCamera(camera);
  child->setBoxBound(cubeAt(0, 0, -50, 1));
  int depth = -1;
  child->during = [&] { depth = cull.depth(); };
  cull.apply(group);
  EXPECT_EQ(depth, 1);
}

// ---- intersection

TEST_F(GroupTest, IsectTriesTheChildrenFromTheLastToTheFirst) {
  ozIsectAction action;
  action.seg = segment(0, 0, 10, 0, 0, -1);
  action.apply(group);
  EXPECT_THAT(notes, ElementsAre("isect c", "isect b", "isect a"));
}

TEST_F(GroupTest, ASegmentThatMissesTheBoxTriesNoChild) {
  ozIsectAction action;
  action.seg = segment(10, 0, 10, 0, 0, -1);
  action.apply(group);
  EXPECT_THAT(notes, IsEmpty());
}

TEST_F(GroupTest, ASegmentThatEndsBeforeTheBoxTriesNoChild) {
  ozIsectAction action;
  action.seg = segment(0, 0, 10, 0, 0, -1, 5);
  action.apply(group);
  EXPECT_THAT(notes, IsEmpty());
}

TEST_F(GroupTest, ABoxThatIsFlatInTwoDirectionsIsNotTested) {
  for (ProbeNode *child : {a, b, c}) child->setBoxBound(boxOf(0, 0, -1, 0, 0, 1));
  ozIsectAction action;
  action.seg = segment(10, 0, 10, 0, 0, -1);
  action.apply(group);
  EXPECT_THAT(notes, ElementsAre("isect c", "isect b", "isect a"));
}

TEST_F(GroupTest, ABoxThatIsFlatInOneDirectionIsTested) {
  for (ProbeNode *child : {a, b, c}) child->setBoxBound(boxOf(-1, -1, 0, 1, 1, 0));
  ozIsectAction action;
  action.seg = segment(10, 0, 10, 0, 0, -1);
  action.apply(group);
  EXPECT_THAT(notes, IsEmpty());
}

TEST_F(GroupTest, AHitsPathLeadsFromTheRootToTheGeometry) {
  ProbeGeometry *const geometry = new ProbeGeometry("geo");
  geometry->hitAt = 3;
  ozShape *const shape = new ozShape;
  shape->addGeometry(geometry);
  group->addChild(shape);
  ozIsectAction action;
  action.seg = segment(0, 0, 10, 0, 0, -1);
  action.apply(group);
  ASSERT_EQ(action.hit.path.getCount(), 3u);
  EXPECT_EQ(action.hit.path[0], group.get());
  EXPECT_EQ(action.hit.path[1], shape);
  EXPECT_EQ(action.hit.path[2], geometry);
}

TEST_F(GroupTest, OfTwoEquallyNearHitsTheFirstChildsWins) {
  ozShape *shapes[2];
  for (ozShape *&shape : shapes) {
    ProbeGeometry *const geometry = new ProbeGeometry("geo");
    geometry->hitAt = 9.5f;
    shape = new ozShape;
    shape->addGeometry(geometry);
    group->addChild(shape);
  }
  ozIsectAction action;
  action.seg = segment(0, 0, 10, 0, 0, -1);
  action.apply(group);
  EXPECT_EQ(action.hit.shape, shapes[0]);
}
