// The classes of primitive sets: names, fields, lengths and what their own fields set off.

#include "geometry/geometryFixture.h"

namespace {

template <class Set> void expectClass(char const *name, std::vector<std::pair<char const *, ozType *>> const &fields) {
  EXPECT_STREQ(Set::getClassType()->getName(), name);
  EXPECT_EQ(Set::getClassType()->getAncestor(), ozGeoSet::getClassType());
  ASSERT_EQ(Set::getClassType()->getFieldInfoCount(), 15 + static_cast<int>(fields.size()));
  for (size_t i = 0; i < fields.size(); ++i) {
    ozFieldInfo *const info = Set::getClassType()->getFieldInfo(15 + static_cast<int>(i));
    EXPECT_STREQ(info->getName(), fields[i].first);
    EXPECT_EQ(info->getFieldType(), fields[i].second);
  }
  Held<Set> set(new Set);
  Held<ozContainer> made(set->instantiate());
  EXPECT_EQ(made->getType(), Set::getClassType());
}

TEST(PrimSets, HaveTheirNamesAndFields) {
  expectClass<ozPointSet>("PointSet", {{"size", ozSFFloat::getClassType()}});
  expectClass<ozLineSet>("LineSet", {{"width", ozSFFloat::getClassType()}});
  expectClass<ozLineStripSet>("LineStripSet",
                              {{"stripLength", ozMFInt::getClassType()}, {"width", ozSFFloat::getClassType()}});
  expectClass<ozTriSet>("TriSet", {});
  expectClass<ozTriStripSet>("TriStripSet", {{"stripLength", ozMFInt::getClassType()}});
  expectClass<ozTriFanSet>("TriFanSet", {{"fanLength", ozMFInt::getClassType()}});
  expectClass<ozQuadSet>("QuadSet", {});
  expectClass<ozPolySet>("PolySet", {{"polyLength", ozMFInt::getClassType()}});
}

TEST(PrimSets, KnowTheLengthOfAPrimitive) {
  EXPECT_EQ(Held<ozPointSet>(new ozPointSet)->getPrimLen(7), 1);
  EXPECT_EQ(Held<ozLineSet>(new ozLineSet)->getPrimLen(7), 2);
  EXPECT_EQ(Held<ozTriSet>(new ozTriSet)->getPrimLen(7), 3);
  EXPECT_EQ(Held<ozQuadSet>(new ozQuadSet)->getPrimLen(7), 4);
  Held<ozLineStripSet> lines(new ozLineStripSet);
  Held<ozTriStripSet> strips(new ozTriStripSet);
  Held<ozTriFanSet> fans(new ozTriFanSet);
  Held<ozPolySet> polygons(new ozPolySet);
  lines->stripLength()->set(1, 5);
  strips->stripLength()->set(1, 6);
  fans->fanLength()->set(1, 7);
  polygons->polyLength()->set(1, 8);
  EXPECT_EQ(lines->getPrimLen(1), 5);
  EXPECT_EQ(strips->getPrimLen(1), 6);
  EXPECT_EQ(fans->getPrimLen(1), 7);
  EXPECT_EQ(polygons->getPrimLen(1), 8);
  EXPECT_EQ(polygons->getPrimLen(2), 0);
  EXPECT_EQ(polygons->getPrimLen(-1), 0);
}

TEST(PrimSets, GiveTheFieldOfTheirLengths) {
  Held<ozLineStripSet> lines(new ozLineStripSet);
  Held<ozTriStripSet> strips(new ozTriStripSet);
  Held<ozTriFanSet> fans(new ozTriFanSet);
  Held<ozPolySet> polygons(new ozPolySet);
  EXPECT_EQ(lines->stripLength(), lines->getField("stripLength"));
  EXPECT_EQ(strips->stripLength(), strips->getField("stripLength"));
  EXPECT_EQ(fans->fanLength(), fans->getField("fanLength"));
  EXPECT_EQ(polygons->polyLength(), polygons->getField("polyLength"));
}

TEST(PrimSets, KeepTheCountApartFromTheLengths) {
  Held<ozPolySet> set(new ozPolySet);
  setLengths(set->polyLength(), {3, 3});
  EXPECT_EQ(set->getPrimCount(), 0);
}

// Calls fieldChanged with an id and tells the mask of what was set.
template <class Set> class Open : public Set {
public:
  Open() : Set(Set::getClassType()) {}
  using Set::_setMask;
  using Set::_version;
};

TEST(PrimSets, MarkAWidthOrSizeThatWasSet) {
  Held<Open<ozPointSet>> points(new Open<ozPointSet>);
  Held<Open<ozLineSet>> lines(new Open<ozLineSet>);
  Held<Open<ozLineStripSet>> strips(new Open<ozLineStripSet>);
  points->setSize(1);
  lines->setWidth(1);
  strips->setWidth(1);
  EXPECT_EQ(points->_setMask.getMask(), 1LL << 31);
  EXPECT_EQ(lines->_setMask.getMask(), 1LL << 30);
  EXPECT_EQ(strips->_setMask.getMask(), 1LL << 30);
  strips->stripLength()->set(0, 2);
  EXPECT_EQ(strips->_setMask.getMask(), 1LL << 30);
}

// An application's own kind of set, with a field more.
#define OZ_EXTENDED(Class, Parent, id)                                                                                 \
  class Class : public Parent {                                                                                        \
    OZ_CLASS(Class);                                                                                                   \
                                                                                                                       \
  public:                                                                                                              \
    Class();                                                                                                           \
    OZ_VALUE_ACCESS(int, Extra, id, _extra)                                                                            \
    using Parent::_setMask;                                                                                            \
                                                                                                                       \
  private:                                                                                                             \
    int _extra;                                                                                                        \
  };                                                                                                                   \
  OZ_DEFINE_CLASS(Class, #Class, Parent) { ozSFInt::addTypeField(type, "extra", id, 0, &Class::_extra); }
OZ_EXTENDED(ExtendedPoints, ozPointSet, 16)
OZ_EXTENDED(ExtendedLines, ozLineSet, 16)
OZ_EXTENDED(ExtendedLineStrips, ozLineStripSet, 17)
OZ_EXTENDED(ExtendedTriStrips, ozTriStripSet, 16)
OZ_EXTENDED(ExtendedPolys, ozPolySet, 16)

template <class Set> void expectNothingSetByAnExtraField() {
  Held<Set> set(new Set), follower(new Set);
  set->connect(static_cast<short>(set->getField("extra")->getId()), follower.get(),
               static_cast<short>(set->getField("extra")->getId()));
  set->setBoundMode(ozGeometry::STATIC);
  ozBoxBound stored;
  stored.min = ozVec3f(0, 0, 0);
  stored.max = ozVec3f(1, 2, 3);
  set->setBoxBound(stored);
  set->setExtra(7);
  EXPECT_EQ(set->_setMask.getMask(), 0);
  ozBoxBound bound;
  set->getBoxBound(bound);
  EXPECT_EQ(bound.max, ozVec3f(1, 2, 3));
  EXPECT_EQ(follower->getExtra(), 7);
}

TEST(PrimSets, AFieldOfASubclassIsNeitherAWidthNorALength) {
  expectNothingSetByAnExtraField<ExtendedPoints>();
  expectNothingSetByAnExtraField<ExtendedLines>();
  expectNothingSetByAnExtraField<ExtendedLineStrips>();
  expectNothingSetByAnExtraField<ExtendedTriStrips>();
  expectNothingSetByAnExtraField<ExtendedPolys>();
}

TEST(PrimSets, AChangedLengthMakesTheBoundStaleInModeStaticToo) {
  Held<ozPolySet> set(new ozPolySet);
  set->setCoordSet(coordSet(somePoints(6)));
  set->setPrimCount(1);
  set->setBoundMode(ozGeometry::STATIC);
  setLengths(set->polyLength(), {4});
  ozBoxBound bound;
  set->getBoxBound(bound);
  EXPECT_EQ(bound.max, ozVec3f(3, 6, 0));
}

template <class Set> unsigned int versionsOfALength(ozMFInt *(Set::*lengths)() const) {
  Held<Open<Set>> set(new Open<Set>);
  (set.get()->*lengths)()->set(0, 3);
  return set->_version;
}

TEST(PrimSets, AChangedLengthIsANewVersionWhereThereIsAList) {
  EXPECT_EQ(versionsOfALength(&ozTriStripSet::stripLength), 1u);
  EXPECT_EQ(versionsOfALength(&ozTriFanSet::fanLength), 1u);
  EXPECT_EQ(versionsOfALength(&ozLineStripSet::stripLength), 0u);
  EXPECT_EQ(versionsOfALength(&ozPolySet::polyLength), 0u);
}

TEST(PrimSets, BoundTheirOwnNumberOfVertices) {
  auto const maxX = [](ozGeoSet *set) {
    set->setCoordSet(coordSet(somePoints(30)));
    set->setPrimCount(2);
    ozBoxBound bound;
    set->getBoxBound(bound);
    return bound.max[0];
  };
  EXPECT_EQ(maxX(Held<ozPointSet>(new ozPointSet).get()), 1.0f);
  EXPECT_EQ(maxX(Held<ozLineSet>(new ozLineSet).get()), 3.0f);
  EXPECT_EQ(maxX(Held<ozTriSet>(new ozTriSet).get()), 5.0f);
  EXPECT_EQ(maxX(Held<ozQuadSet>(new ozQuadSet).get()), 7.0f);
  Held<ozTriFanSet> fans(new ozTriFanSet);
  setLengths(fans->fanLength(), {4, 5});
  EXPECT_EQ(maxX(fans.get()), 8.0f);
}

TEST(PrimSets, CloneWithTheirLengthsAndWidths) {
  Held<ozLineStripSet> set(new ozLineStripSet);
  setLengths(set->stripLength(), {2, 3});
  set->setWidth(6);
  Held<ozContainer> cloned(set->clone(ozContainer::CLONE_DEEP));
  ozLineStripSet *const copy = static_cast<ozLineStripSet *>(cloned.get());
  EXPECT_EQ(copy->getWidth(), 6.0f);
  ASSERT_EQ(copy->stripLength()->getCount(), 2u);
  EXPECT_EQ(copy->stripLength()->get(1), 3);
  set->stripLength()->set(1, 9);
  EXPECT_EQ(copy->stripLength()->get(1), 3);
}

} // namespace
