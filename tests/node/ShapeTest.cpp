#include "probes.h"

#include "support/contextFixture.h"
#include "support/glRecorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

namespace {

/// A shape "s" that notes its changes, with two probes for geometry, below a group that notes its own.
class ShapeTest : public ::testing::Test {
protected:
  ShapeTest() : a(new ProbeGeometry("a", 1)), b(new ProbeGeometry("b", 2)) {
    shape->setName("s");
    shape->addGeometry(a);
    shape->addGeometry(b);
    parent->addChild(shape);
    shape->changes.clear();
    parent->childChanges.clear();
    notes.clear();
  }

  Held<Watched<ozShape>> shape;
  Held<Watched<ozGroup>> parent;
  ProbeGeometry *a, *b;
};

} // namespace

TEST(Shape, HasTheFieldsAppearanceAndGeometry) {
  ozType *const type = ozShape::getClassType();
  EXPECT_STREQ(type->getName(), "Shape");
  EXPECT_EQ(type->getAncestor(), ozNode::getClassType());
  ASSERT_EQ(type->getFieldInfoCount(), 4);
  EXPECT_STREQ(type->getFieldInfo(2)->getName(), "appearance");
  EXPECT_EQ(type->getFieldInfo(2)->getFieldType(), ozSFRef::getClassType());
  EXPECT_EQ(static_cast<ozSFRefInfo *>(type->getFieldInfo(2))->getRefType(), ozAppearance::getClassType());
  EXPECT_STREQ(type->getFieldInfo(3)->getName(), "geometry");
  EXPECT_EQ(type->getFieldInfo(3)->getFieldType(), ozMFRef::getClassType());
  EXPECT_EQ(static_cast<ozMFRefInfo *>(type->getFieldInfo(3))->getRefType(), ozGeometry::getClassType());
}

TEST(Shape, StartsEmpty) {
  Held<ozShape> shape;
  EXPECT_FALSE(shape->hasPendingFields());
  EXPECT_EQ(shape->getAppearance(), nullptr);
  EXPECT_EQ(shape->getGeometryCount(), 0);
  EXPECT_EQ(shape->geometry(), shape->getField(3));
  EXPECT_EQ(shape->geometry()->getSize(), 2u);
  EXPECT_EQ(shape->getLastCullResult(), 0);
  EXPECT_EQ(shape->getSystemUserData(), nullptr);
  EXPECT_EQ(shape->getPathListCount(), 0);
  EXPECT_TRUE(shape->getBoxBound()->isEmpty());
}

TEST(Shape, HoldsAReferenceOnItsAppearance) {
  Held<ozAppearance> first, second;
  {
    Held<ozShape> shape;
    shape->setAppearance(first);
    EXPECT_EQ(shape->getAppearance(), first.get());
    EXPECT_EQ(first->getRefCount(), 2u);
    shape->setAppearance(second);
    EXPECT_EQ(first->getRefCount(), 1u);
    EXPECT_EQ(first->getParentCount(), 0);
    EXPECT_EQ(second->getParent(0), shape.get());
    shape->setAppearance(second);
    EXPECT_EQ(second->getRefCount(), 2u);
  }
  EXPECT_EQ(second->getRefCount(), 1u);
}

TEST_F(ShapeTest, SettingTheAppearanceIsAnnouncedAndLeavesTheBound) {
  shape->getBoxBound();
  shape->setAppearance(new ozAppearance);
  EXPECT_THAT(shape->changes, ElementsAre(2));
  EXPECT_FALSE(shape->hasPendingFields());
}

TEST_F(ShapeTest, EditsItsListOfGeometries) {
  ProbeGeometry *const c = new ProbeGeometry("c");
  ASSERT_EQ(shape->getGeometryCount(), 2);
  EXPECT_EQ(shape->findGeometry(b), 1);
  shape->insertGeometry(1, c);
  EXPECT_EQ(shape->getGeometry(1), c);
  EXPECT_EQ(shape->findGeometry(b), 2);
  Held<ProbeGeometry> d("d");
  EXPECT_EQ(shape->replaceGeometry(c, d), 1);
  EXPECT_EQ(shape->removeGeometry(a), 1);
  EXPECT_EQ(shape->getGeometry(0), d.get());
  shape->removeGeometry(0);
  EXPECT_EQ(shape->getGeometry(0), b);
  ProbeGeometry *const e = new ProbeGeometry("e");
  shape->setGeometry(0, e);
  EXPECT_EQ(shape->getGeometry(0), e);
  EXPECT_EQ(shape->findGeometry(d), -1);
  shape->setGeometryCount(0);
  EXPECT_EQ(shape->getGeometryCount(), 0);
}

TEST_F(ShapeTest, LoweringTheCountReleasesWhatItCutsOff) {
  Held<ProbeGeometry> kept(b);
  shape->setGeometryCount(1);
  EXPECT_EQ(kept->getRefCount(), 1u);
  EXPECT_EQ(kept->getParentCount(), 0);
}

TEST_F(ShapeTest, EachMutatorEndsInTheAnnouncementOfGeometry) {
  auto announces = [&](auto mutate) {
    shape->changes.clear();
    mutate();
    return !shape->changes.empty() && shape->changes.back() == 3;
  };
  Held<ProbeGeometry> stranger;
  EXPECT_TRUE(announces([&] { shape->addGeometry(new ProbeGeometry); }));
  EXPECT_TRUE(announces([&] { shape->insertGeometry(0, new ProbeGeometry); }));
  EXPECT_TRUE(announces([&] { shape->setGeometry(0, new ProbeGeometry); }));
  EXPECT_TRUE(announces([&] { EXPECT_EQ(shape->replaceGeometry(stranger, a), -1); }));
  EXPECT_TRUE(announces([&] { EXPECT_EQ(shape->removeGeometry(stranger), 0); }));
  EXPECT_TRUE(announces([&] { shape->removeGeometry(99); }));
  EXPECT_TRUE(announces([&] { shape->setGeometryCount(1); }));
}

TEST_F(ShapeTest, AddsNullToo) {
  shape->addGeometry(nullptr);
  EXPECT_EQ(shape->getGeometryCount(), 3);
}

// ---- the bound

TEST_F(ShapeTest, TheBoxSurroundsTheGeometries) {
  a->setBoxBound(boxOf(-5, 0, 0, 0, 1, 1));
  b->setBoxBound(boxOf(0, 0, -2, 1, 9, 1));
  EXPECT_BOX(*shape->getBoxBound(), -5, 0, -2, 1, 9, 1);
}

TEST_F(ShapeTest, AnEmptyGeometryDoesNotCount) {
  a->setBoxBound(ozBoxBound());
  EXPECT_BOX(*shape->getBoxBound(), -2, -2, -2, 2, 2, 2);
}

TEST_F(ShapeTest, WithoutGeometryTheBoxIsEmpty) {
  shape->getBoxBound();
  shape->setGeometryCount(0);
  EXPECT_TRUE(shape->getBoxBound()->isEmpty());
}

TEST_F(ShapeTest, NullGeometriesDoNotCount) {
  shape->insertGeometry(0, nullptr);
  EXPECT_BOX(*shape->getBoxBound(), -2, -2, -2, 2, 2, 2);
  shape->setGeometryCount(1);
  EXPECT_TRUE(shape->getBoxBound()->isEmpty());
}

TEST_F(ShapeTest, AChangeOfAGeometryTellsTheParentsOnceAndIsComputedOnce) {
  parent->getBoxBound();
  parent->childChanges.clear();
  shape->cleanings = 0;
  for (int i = 1; i < 10; ++i) a->setBoxBound(cubeAt(0, 0, 0, static_cast<float>(i)));
  EXPECT_THAT(parent->childChanges, ElementsAre(Pair(shape.get(), 0)));
  EXPECT_EQ(shape->cleanings, 0);
  EXPECT_BOX(*parent->getBoxBound(), -9, -9, -9, 9, 9, 9);
  EXPECT_EQ(shape->cleanings, 1);
}

TEST_F(ShapeTest, AStaticShapeKeepsItsBox) {
  shape->setBoundMode(ozNode::STATIC);
  shape->setBoxBound(cubeAt(0, 0, 0, 7));
  parent->getBoxBound();
  parent->childChanges.clear();
  a->setBoxBound(cubeAt(0, 0, 0, 20));
  shape->addGeometry(new ProbeGeometry("c", 30));
  EXPECT_BOX(*shape->getBoxBound(), -7, -7, -7, 7, 7, 7);
  EXPECT_THAT(parent->childChanges, IsEmpty());
}

TEST_F(ShapeTest, AChangeOfAnotherFieldOfAGeometryLeavesTheBox) {
  shape->getBoxBound();
  shape->childChanged(a, 1);
  EXPECT_FALSE(shape->hasPendingFields());
}

// ---- the application's own

TEST(Shape, KeepsASystemPointer) {
  Held<ozShape> shape;
  int mine;
  shape->setSystemUserData(&mine);
  EXPECT_EQ(shape->getSystemUserData(), &mine);
}

TEST(Shape, OwnsItsPaths) {
  ozPtrArray *const path = new ozPtrArray, *const other = new ozPtrArray;
  Held<ozShape> shape;
  shape->appendPath(path);
  shape->appendPath(other);
  shape->appendPath(nullptr);
  ASSERT_EQ(shape->getPathListCount(), 3);
  EXPECT_EQ(shape->getPath(0), path);
  EXPECT_EQ(shape->getPath(1), other);
  shape->setPathListCount(1); // the leak check of the tests sees to the rest
  EXPECT_EQ(shape->getPathListCount(), 1);
  shape->setPathListCount(2);
  EXPECT_EQ(shape->getPath(1), nullptr);
}

TEST(Shape, AListOfCullStatusesGrowsAsNeeded) {
  Held<ozShape> shape;
  shape->setCullStatus(40, 7);
  shape->setCullStatus(0, 3);
  EXPECT_EQ(shape->getCullStatus(40), 7);
  EXPECT_EQ(shape->getCullStatus(0), 3);
  EXPECT_EQ(shape->getCullStatus(20), 0);
}

// ---- visits

TEST_F(ShapeTest, PlainVisitsCallPreAndPostVisitInAllCases) {
  Noting<ozTransformAction> action;
  EXPECT_EQ(shape->visit(&action), TRAV_CONT);
  EXPECT_EQ(shape->transformVisit(&action), TRAV_CONT);
  EXPECT_THAT(notes, ElementsAre("pre s", "post s", "pre s", "post s"));
  notes.clear();
  action.pre["s"] = TRAV_PRUNE;
  action.post["s"] = TRAV_TERM;
  EXPECT_EQ(shape->visit(&action), TRAV_TERM);
  EXPECT_EQ(shape->transformVisit(&action), TRAV_TERM);
  EXPECT_THAT(notes, ElementsAre("pre s", "post s", "pre s", "post s"));
  action.pre["s"] = TRAV_TERM;
  action.post["s"] = TRAV_PRUNE;
  EXPECT_EQ(shape->visit(&action), TRAV_TERM);
}

TEST_F(ShapeTest, PlainVisitsBringTheFieldsUpToDate) {
  ozTransformAction action;
  EXPECT_TRUE(shape->hasPendingFields());
  shape->visit(&action);
  EXPECT_FALSE(shape->hasPendingFields());
  a->setBoxBound(cubeAt(0, 0, 0, 9));
  shape->transformVisit(&action);
  EXPECT_FALSE(shape->hasPendingFields());
}

TEST_F(ShapeTest, CullingNotesTheStatus) {
  Held<ozPerspCamera> camera;
  Noting<ozVFCullAction> action;
  action.setCamera(camera);
  a->setBoxBound(cubeAt(0, 0, -50, 1));
  b->setBoxBound(cubeAt(0, 0, -50, 1));
  action.reset();
  EXPECT_EQ(shape->vfCullVisit(&action), TRAV_CONT);
  EXPECT_EQ(shape->getLastCullResult(), 7);
  EXPECT_THAT(notes, ElementsAre("pre s", "post s"));
  notes.clear();
  a->setBoxBound(cubeAt(0, 0, 50, 1));
  b->setBoxBound(cubeAt(0, 0, 50, 1));
  EXPECT_EQ(shape->vfCullVisit(&action), TRAV_PRUNE);
  EXPECT_EQ(shape->getLastCullResult(), 0);
  EXPECT_THAT(notes, IsEmpty());
}

TEST_F(ShapeTest, CullingGivesTheLargerOfPreAndPostVisitBothCalled) {
  Held<ozOrthoCamera> camera(wideCamera());
  Noting<ozVFCullAction> action;
  action.setCamera(camera);
  action.pre["s"] = TRAV_TERM;
  EXPECT_EQ(action.apply(shape), TRAV_TERM);
  EXPECT_THAT(notes, ElementsAre("pre s", "post s"));
}

TEST_F(ShapeTest, SoundDoesNothing) {
  ozSoundAction action;
  action.apply(shape);
  EXPECT_TRUE(shape->hasPendingFields());
}

// ---- intersection

TEST_F(ShapeTest, IsectTriesTheGeometriesFromTheFirstToTheLast) {
  ozIsectAction action;
  action.seg = segment(0, 0, 10, 0, 0, -1);
  action.apply(shape);
  EXPECT_THAT(notes, ElementsAre("isect a", "isect b"));
  EXPECT_EQ(action.hit.shape, nullptr);
}

TEST_F(ShapeTest, ASegmentThatMissesTheBoxTriesNone) {
  ozIsectAction action;
  action.seg = segment(10, 0, 10, 0, 0, -1);
  action.apply(shape);
  EXPECT_THAT(notes, IsEmpty());
}

TEST_F(ShapeTest, ABoxThatIsFlatInTwoDirectionsIsNotTested) {
  a->setBoxBound(boxOf(0, 0, -1, 0, 0, 1));
  b->setBoxBound(boxOf(0, 0, -1, 0, 0, 1));
  ozIsectAction action;
  action.seg = segment(10, 0, 10, 0, 0, -1);
  action.apply(shape);
  EXPECT_THAT(notes, ElementsAre("isect a", "isect b"));
}

TEST_F(ShapeTest, OfTwoEquallyNearHitsTheLastGeometrysWins) {
  a->hitAt = b->hitAt = 8;
  ozIsectAction action;
  action.seg = segment(0, 0, 10, 0, 0, -1);
  action.apply(shape);
  EXPECT_EQ(action.hit.geometry, b);
  EXPECT_EQ(action.hit.shape, shape.get());
  ASSERT_EQ(action.hit.path.getCount(), 2u);
  EXPECT_EQ(action.hit.path[0], shape.get());
  EXPECT_EQ(action.hit.path[1], b);
}

TEST_F(ShapeTest, AMissLeavesTheShapeOfAnEarlierHit) {
  Held<ozShape> other;
  ozIsectAction action;
  action.seg = segment(0, 0, 10, 0, 0, -1);
  action.apply(nullptr);
  action.hit.shape = other;
  shape->isect(&action);
  EXPECT_EQ(action.hit.shape, other.get());
}

TEST_F(ShapeTest, IsectPassesOverNulls) {
  shape->insertGeometry(0, nullptr);
  ozIsectAction action;
  action.seg = segment(0, 0, 10, 0, 0, -1);
  action.apply(shape);
  EXPECT_THAT(notes, ElementsAre("isect a", "isect b"));
}

// ---- drawing

namespace {

/// An appearance that notes when it is drawn.
class ProbeAppearance : public ozAppearance {
public:
  void draw(ozDrawAction *action) override {
    notes.push_back("appearance");
    ozAppearance::draw(action);
  }
};

class ShapeDrawTest : public ContextTest {
protected:
  ShapeDrawTest() : a(new ProbeGeometry("a", 1)), b(new ProbeGeometry("b", 2)), camera(wideCamera()) {
    shape->setName("s");
    shape->addGeometry(a);
    shape->addGeometry(b);
    action.setCamera(camera);
    action.reset();
    notes.clear();
  }

  Held<ozShape> shape;
  ProbeGeometry *a, *b;
  Held<ozOrthoCamera> camera;
  Noting<ozDrawAction> action;
};

} // namespace

TEST_F(ShapeDrawTest, TheAppearanceComesFirstThenEachGeometryInOrder) {
  shape->setAppearance(new ProbeAppearance);
  EXPECT_EQ(shape->drawVisit(&action), TRAV_CONT);
  EXPECT_THAT(notes, ElementsAre("pre s", "appearance", "draw a", "draw b", "post s"));
}

TEST_F(ShapeDrawTest, WithoutAnAppearanceTheDefaultStateIsApplied) {
  context->setDepthEnable(1); // the application's statement: the default state
  Held<ozShape> other;
  ozAppearance *const appearance = new ozAppearance;
  appearance->setDepthEnable(0);
  other->setAppearance(appearance);
  other->draw(&action);
  EXPECT_EQ(context->getDepthEnable(), 0);
  shape->drawVisit(&action);
  EXPECT_EQ(context->getDepthEnable(), 1);
}

TEST_F(ShapeDrawTest, ACulledShapeIsPrunedAndItsAppearanceNotApplied) {
  shape->setAppearance(new ProbeAppearance);
  a->setBoxBound(cubeAt(0, 0, 5000, 1));
  b->setBoxBound(cubeAt(0, 0, 5000, 1));
  EXPECT_EQ(shape->drawVisit(&action), TRAV_PRUNE);
  EXPECT_THAT(notes, IsEmpty());
}

TEST_F(ShapeDrawTest, AShapeWithoutGeometryIsCulledAndItsAppearanceNeverApplied) {
  shape->setGeometryCount(0);
  shape->setAppearance(new ProbeAppearance);
  EXPECT_EQ(shape->drawVisit(&action), TRAV_PRUNE);
  EXPECT_THAT(notes, IsEmpty());
}

TEST_F(ShapeDrawTest, DrawingDoesNotWriteTheCullResult) {
  shape->drawVisit(&action);
  EXPECT_EQ(shape->getLastCullResult(), 0);
}

TEST_F(ShapeDrawTest, APreVisitThatPrunesDrawsNothing) {
  action.pre["s"] = TRAV_PRUNE;
  EXPECT_EQ(shape->drawVisit(&action), TRAV_PRUNE);
  EXPECT_THAT(notes, ElementsAre("pre s", "post s"));
}

TEST_F(ShapeDrawTest, TheVerdictIsTheLargerOfPreAndPostVisit) {
  action.post["s"] = TRAV_TERM;
  EXPECT_EQ(shape->drawVisit(&action), TRAV_TERM);
  EXPECT_THAT(notes, ElementsAre("pre s", "draw a", "draw b", "post s"));
}

TEST_F(ShapeDrawTest, DrawSkipsCullingAndTheHooksAndCleansTheFields) {
  a->setBoxBound(cubeAt(0, 0, 5000, 1));
  b->setBoxBound(cubeAt(0, 0, 5000, 1));
  shape->draw(&action);
  EXPECT_THAT(notes, ElementsAre("draw a", "draw b"));
  EXPECT_FALSE(shape->hasPendingFields());
}

TEST_F(ShapeDrawTest, DrawWithoutCleanLeavesTheFieldsPending) {
  shape->drawWithoutClean(&action);
  EXPECT_THAT(notes, ElementsAre("draw a", "draw b"));
  EXPECT_TRUE(shape->hasPendingFields());
}

TEST_F(ShapeDrawTest, NullGeometriesArePassedOver) {
  shape->insertGeometry(1, nullptr);
  shape->draw(&action);
  EXPECT_THAT(notes, ElementsAre("draw a", "draw b"));
}

TEST_F(ShapeDrawTest, TheSecondShapeOfOneAppearanceChangesNoState) {
  Held<ozShape> second;
  second->addGeometry(new ProbeGeometry("c", 1));
  ozAppearance *const appearance = new ozAppearance;
  appearance->setDepthEnable(0);
  shape->setAppearance(appearance);
  second->setAppearance(appearance);
  shape->draw(&action);
  GLRecorder rec;
  second->draw(&action);
  EXPECT_THAT(rec.texts(), IsEmpty());
}
