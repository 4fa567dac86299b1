#include "geometry/geometryFixture.h"

#include <algorithm>

namespace {

std::vector<int> valuesOf(ozMFInt *field) {
  std::vector<int> values;
  for (unsigned int i = 0; i < field->getCount(); ++i) values.push_back(field->get(i));
  return values;
}

void setAll(ozMFInt *field, std::vector<int> const &values) {
  ozIntArray array;
  for (int value : values) array.append(value);
  field->set(array);
}

template <class Set> class Open : public Set {
public:
  Open() : Set(Set::getClassType()) {}
  using Set::_setMask;
  int path() { return Set::_drawFlags >> 9 & 7; }
};

template <class Set> void expectOwnIndexSets(Set *copy, Set *set) {
  EXPECT_NE(copy->getCoordIndexSet(), set->getCoordIndexSet());
  EXPECT_EQ(valuesOf(copy->getCoordIndexSet()->index()), valuesOf(set->getCoordIndexSet()->index()));
  EXPECT_NE(copy->getColorIndexSet(), set->getColorIndexSet());
  EXPECT_EQ(valuesOf(copy->getColorIndexSet()->index()), valuesOf(set->getColorIndexSet()->index()));
  EXPECT_EQ(copy->getPrimCount(), set->getPrimCount());
}

TEST(IndexedFaceCopies, AWrittenEmptyListSharesItToo) {
  Held<ozIndexedFaceSet> set(new ozIndexedFaceSet);
  setAll(set->normalIndex(), {1, 2});
  EXPECT_NE(set->getNormalIndexSet(), set->getCoordIndexSet());
  setAll(set->normalIndex(), {});
  EXPECT_EQ(set->getNormalIndexSet(), set->getCoordIndexSet());
}

TEST(IndexedFaceCopies, HasIndexSetsOfItsOwnWhereSomeAreGiven) {
  Held<Open<ozIndexedFaceSet>> set(new Open<ozIndexedFaceSet>);
  set->setCoordSet(coordSet(somePoints(5)));
  set->setNormalSet(normalSet(somePoints(5)));
  setAll(set->coordIndex(), {0, 1, 2, -1});
  setAll(set->normalIndex(), {2, 2, 1, -1});
  setAll(set->colorIndex(), {3, -1, 4});
  setAll(set->texCoordIndex(), {1, 0, 1, -1});
  EXPECT_EQ(valuesOf(set->getNormalIndexSet()->index()), (std::vector<int>{2, 2, 1}));
  EXPECT_EQ(valuesOf(set->getColorIndexSet()->index()), (std::vector<int>{3, 4}));
  EXPECT_EQ(valuesOf(set->getTexCoordIndexSet()->index()), (std::vector<int>{1, 0, 1}));
  EXPECT_EQ(set->path(), 0);
  ozIndexSet *const normals = set->getNormalIndexSet();
  setAll(set->normalIndex(), {4, 4, 4});
  EXPECT_EQ(set->getNormalIndexSet(), normals); // the same one, filled again
  EXPECT_EQ(normals->index()->get(0), 4);
}

TEST(IndexedFaceCopies, AnIndexSetOfTheApplicationsStays) {
  Held<ozIndexedFaceSet> set(new ozIndexedFaceSet);
  Held<ozIndexSet> mine(indexSet({0}));
  set->setNormalIndexSet(mine.get());
  EXPECT_EQ(set->getNormalIndexSet(), mine.get());
  set->setNormalPerVertex(0);
  EXPECT_EQ(set->getNormalIndexSet(), mine.get());
}

TEST(IndexedFaceCopies, FillsAgainWhenItsCoordinateIndexWasTakenAway) {
  Held<ozIndexedFaceSet> set(new ozIndexedFaceSet);
  set->setCoordIndexSet(nullptr);
  setAll(set->coordIndex(), {0, 1, 2});
  EXPECT_EQ(set->getPrimCount(), 1);
  ASSERT_NE(set->getCoordIndexSet(), nullptr);
  EXPECT_EQ(set->getCoordIndexSet()->index()->getCount(), 3u);
  EXPECT_EQ(set->getNormalIndexSet(), set->getCoordIndexSet());
}

TEST(IndexedFaceCopies, AChangedListMakesTheBoundStaleInEveryMode) {
  Held<ozIndexedFaceSet> set(new ozIndexedFaceSet);
  set->setCoordSet(coordSet(somePoints(5)));
  set->setBoundMode(ozGeometry::STATIC);
  setAll(set->coordIndex(), {0, 1, 3, -1});
  ozBoxBound bound;
  set->getBoxBound(bound);
  EXPECT_EQ(bound.max, ozVec3f(3, 6, 0));
}

TEST(IndexedFaceCopies, FollowsAListThatComesOverAConnection) {
  Held<ozIndexedFaceSet> set(new ozIndexedFaceSet), source(new ozIndexedFaceSet);
  source->connect(20, set.get(), 20);
  setAll(source->coordIndex(), {0, 1, 2, -1});
  EXPECT_EQ(valuesOf(set->coordIndex()), (std::vector<int>{0, 1, 2, -1}));
  EXPECT_EQ(set->getPrimCount(), 1);
}

TEST(IndexedFaceCopies, ClonesAndCopiesHaveIndexSetsOfTheirOwn) {
  Held<ozIndexedFaceSet> set(new ozIndexedFaceSet);
  set->setCoordSet(coordSet(somePoints(5)));
  setAll(set->coordIndex(), {0, 1, 2, -1, 2, 3, 4, -1});
  setAll(set->colorIndex(), {4, 3, 2, -1, 1, 0, 0, -1});
  for (int mode = 0; mode < 3; ++mode) {
    Held<ozContainer> cloned(set->clone(static_cast<ozContainer::CloneEnum>(mode)));
    ozIndexedFaceSet *const copy = static_cast<ozIndexedFaceSet *>(cloned.get());
    expectOwnIndexSets(copy, set.get());
    EXPECT_EQ(copy->getNormalIndexSet(), copy->getCoordIndexSet());
    // A change of the copy does not reach the source.
    setAll(copy->coordIndex(), {4, 4, 4, -1});
    EXPECT_EQ(copy->getCoordIndexSet()->index()->get(0), 4);
    EXPECT_EQ(set->getCoordIndexSet()->index()->get(0), 0);
  }
  Held<ozIndexedFaceSet> constructed(new ozIndexedFaceSet(*set)), assigned(new ozIndexedFaceSet);
  *assigned = *set;
  expectOwnIndexSets(constructed.get(), set.get());
  expectOwnIndexSets(assigned.get(), set.get());
}

TEST(IndexedFaceCopies, ClonesKeepBindingsAndCullFaceThatWereSetDirectly) {
  Held<ozIndexedFaceSet> set(new ozIndexedFaceSet);
  set->setNormalBind(ozGeoSet::OVERALL_NORMAL);
  set->setColorBind(ozGeoSet::NO_COLOR);
  set->setCullFace(ozContext::NO_CULL);
  Held<ozContainer> cloned(set->clone(ozContainer::CLONE_DEEP));
  ozIndexedFaceSet *const copy = static_cast<ozIndexedFaceSet *>(cloned.get());
  EXPECT_EQ(copy->getNormalBind(), ozGeoSet::OVERALL_NORMAL);
  EXPECT_EQ(copy->getColorBind(), ozGeoSet::NO_COLOR);
  EXPECT_EQ(copy->getCullFace(), ozContext::NO_CULL);
}

TEST(IndexedFaceCopies, ClonesShareTheApplicationsIndexSets) {
  Held<ozIndexSet> mine(indexSet({0, 1, 2}));
  Held<ozIndexedFaceSet> set(new ozIndexedFaceSet);
  set->setCoordIndexSet(mine.get());
  Held<ozContainer> shallow(set->clone(ozContainer::CLONE_SHALLOW));
  EXPECT_EQ(static_cast<ozIndexedFaceSet *>(shallow.get())->getCoordIndexSet(), mine.get());
  Held<ozIndexedFaceSet> copy(new ozIndexedFaceSet(*set));
  EXPECT_EQ(copy->getCoordIndexSet(), mine.get());
}

TEST(IndexedFaceCopies, GivesItsIndexSetsBack) {
  Held<ozIndexSet> watched(new ozIndexSet);
  {
    Held<ozIndexedFaceSet> set(new ozIndexedFaceSet);
    set->setColorIndexSet(watched.get());
    setAll(set->colorIndex(), {1});
    EXPECT_NE(set->getColorIndexSet(), watched.get());
    EXPECT_EQ(watched->getRefCount(), 1u);
  }
  EXPECT_EQ(watched->getRefCount(), 1u);
}

class IndexedReach : public DrawTest {};

TEST_F(IndexedReach, AFaceWithABadIndexDrawsNothing) {
  Held<ozIndexedFaceSet> set(new ozIndexedFaceSet);
  set->setCoordSet(coordSet(somePoints(3)));
  setAll(set->coordIndex(), {0, 1, 2, -1, 0, 1, 700, -1});
  CaptureStderr errors;
  EXPECT_EQ(draw(set.get()), Calls());
  EXPECT_EQ(errors.text(), "IndexedFaceSet \"\": an index is out of range, nothing is drawn\n");
  ozBoxBound bound;
  set->getBoxBound(bound);
  EXPECT_EQ(bound.max, ozVec3f(2, 4, 0));
}

TEST_F(IndexedReach, AFaceIsHit) {
  Held<ozIndexedFaceSet> set(new ozIndexedFaceSet);
  set->setCoordSet(coordSet({ozVec3f(0, 0, 0), ozVec3f(1, 0, 0), ozVec3f(1, 1, 0), ozVec3f(0, 1, 0)}));
  setAll(set->coordIndex(), {0, 1, 2, 3, -1});
  ozIsectAction isect;
  EXPECT_EQ(cast(isect, set.get(), ozVec3f(0.2f, 0.8f, 5), ozVec3f(0, 0, -1), 100).geometry, set.get());
  EXPECT_EQ(isect.hit.distance, 5.0f);
}

TEST(IndexedLineCopies, ClonesAndCopiesHaveIndexSetsOfTheirOwn) {
  Held<ozIndexedLineSet> set(new ozIndexedLineSet);
  set->setCoordSet(coordSet(somePoints(5)));
  setAll(set->coordIndex(), {0, 1, 2, -1, 3, 4, -1});
  setAll(set->colorIndex(), {4, 3, 2, -1, 1, 0, -1});
  for (int mode = 0; mode < 3; ++mode) {
    Held<ozContainer> cloned(set->clone(static_cast<ozContainer::CloneEnum>(mode)));
    ozIndexedLineSet *const copy = static_cast<ozIndexedLineSet *>(cloned.get());
    expectOwnIndexSets(copy, set.get());
    setAll(copy->coordIndex(), {4, 4, -1});
    EXPECT_EQ(set->getCoordIndexSet()->index()->get(0), 0);
  }
  Held<ozIndexedLineSet> constructed(new ozIndexedLineSet(*set)), assigned(new ozIndexedLineSet);
  *assigned = *set;
  expectOwnIndexSets(constructed.get(), set.get());
  expectOwnIndexSets(assigned.get(), set.get());
}

TEST(IndexedFaceCopies, ADeepCloneOfTwoSetsKeepsTheIndexThatTheyShare) {
  Held<ozGroup> group(new ozGroup);
  ozShape *const shape = new ozShape;
  group->addChild(shape);
  ozIndexedFaceSet *const faces = new ozIndexedFaceSet;
  ozTriSet *const triangles = triSet(somePoints(5), 1);
  setAll(faces->coordIndex(), {0, 1, 2, -1});
  triangles->setCoordIndexSet(faces->getCoordIndexSet());
  shape->addGeometry(faces);
  shape->addGeometry(triangles);
  Held<ozContainer> cloned(group->clone(ozContainer::CLONE_DEEP));
  ozShape *const other = static_cast<ozShape *>(static_cast<ozGroup *>(cloned.get())->getChild(0));
  ozIndexedFaceSet *const otherFaces = static_cast<ozIndexedFaceSet *>(other->getGeometry(0));
  ozTriSet *const otherTriangles = static_cast<ozTriSet *>(other->getGeometry(1));
  EXPECT_EQ(otherTriangles->getCoordIndexSet(), otherFaces->getCoordIndexSet());
  EXPECT_EQ(valuesOf(otherTriangles->getCoordIndexSet()->index()), (std::vector<int>{0, 1, 2}));
}

TEST(IndexedFaceCopies, WhatIsWrittenStraightIntoTheFlatFormIsCopied) {
  Held<ozIndexedFaceSet> set(new ozIndexedFaceSet);
  setAll(set->getCoordIndexSet()->index(), {2, 1, 0});
  setLengths(set->polyLength(), {3});
  set->setPrimCount(1);
  for (int mode = 0; mode < 3; ++mode) {
    Held<ozContainer> cloned(set->clone(static_cast<ozContainer::CloneEnum>(mode)));
    ozIndexedFaceSet *const copy = static_cast<ozIndexedFaceSet *>(cloned.get());
    EXPECT_EQ(copy->getPrimCount(), 1);
    EXPECT_EQ(valuesOf(copy->getCoordIndexSet()->index()), (std::vector<int>{2, 1, 0}));
  }
}

TEST(IndexedFaceCopies, AnAttributeOfTheWholeSetDoesNotFollowTheCoordinates) {
  Held<ozIndexedFaceSet> set(new ozIndexedFaceSet);
  setAll(set->coordIndex(), {3, 2, 1, -1});
  set->setNormalBind(ozGeoSet::OVERALL_NORMAL);
  EXPECT_EQ(set->getNormalIndexSet(), nullptr);
}

TEST(IndexedLineCopies, FillsAgainWhenItsCoordinateIndexWasTakenAway) {
  Held<ozIndexedLineSet> set(new ozIndexedLineSet);
  set->setCoordIndexSet(nullptr);
  setAll(set->coordIndex(), {0, 1, 2});
  EXPECT_EQ(set->getPrimCount(), 1);
  ASSERT_NE(set->getCoordIndexSet(), nullptr);
  EXPECT_EQ(valuesOf(set->getCoordIndexSet()->index()), (std::vector<int>{0, 1, 2}));
}

} // namespace
