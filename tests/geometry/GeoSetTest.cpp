#include "geometry/geometryFixture.h"

namespace {

// A triangle set that opens what is protected.
class Probe : public ozTriSet {
  OZ_CLASS(Probe);

public:
  Probe();
  using ozGeoSet::_colorBindNow;
  using ozGeoSet::_drawFlags;
  using ozGeoSet::_listId;
  using ozGeoSet::_normalBindNow;
  using ozGeoSet::_setMask;
  using ozGeoSet::_texCoordBindNow;
  using ozGeoSet::_version;
  using ozGeoSet::boundCoords;
  using ozGeoSet::calcBindings;
  using ozGeoSet::flattenVRMLIndices;
  int path() const { return _drawFlags >> 9 & 7; }
  int bits() const { return _drawFlags & 0x1ff; }
};
OZ_DEFINE_CLASS(Probe, "geometry test probe", ozTriSet) {}

void giveAll(ozGeoSet *set, int count = 9) {
  set->setCoordSet(coordSet(somePoints(count)));
  set->setNormalSet(normalSet(somePoints(count)));
  set->setColorSet(colorSet(somePoints(count)));
  set->setTexCoordSet(new ozTexCoordSet2f);
}

ozBoxBound boundOf(ozGeometry *geometry) {
  ozBoxBound bound;
  geometry->getBoxBound(bound);
  return bound;
}

// ---- the class

struct FieldRow {
  int id;
  char const *name;
  char const *alias;
  ozType *type;
};

TEST(GeoSet, HasTheFieldsOfItsTable) {
  EXPECT_STREQ(ozGeoSet::getClassType()->getName(), "GeoSet");
  EXPECT_EQ(ozGeoSet::getClassType()->getAncestor(), ozGeometry::getClassType());
  EXPECT_EQ(ozGeoSet::getClassType()->getFieldInfoCount(), 15);
  FieldRow const rows[] = {
      {2, "primCount", nullptr, ozSFInt::getClassType()},
      {3, "normalBind", nullptr, ozSFEnum::getClassType()},
      {4, "colorBind", nullptr, ozSFEnum::getClassType()},
      {5, "texCoordBind", nullptr, ozSFEnum::getClassType()},
      {6, "coordSet", "coord", ozSFRef::getClassType()},
      {7, "normalSet", "normal", ozSFRef::getClassType()},
      {8, "colorSet", "color", ozSFRef::getClassType()},
      {9, "texCoordSet", "texCoord", ozSFRef::getClassType()},
      {10, "coordIndexSet", nullptr, ozSFRef::getClassType()},
      {11, "normalIndexSet", nullptr, ozSFRef::getClassType()},
      {12, "colorIndexSet", nullptr, ozSFRef::getClassType()},
      {13, "texCoordIndexSet", nullptr, ozSFRef::getClassType()},
      {14, "cullFace", nullptr, ozSFEnum::getClassType()},
  };
  Held<ozTriSet> set(new ozTriSet);
  for (FieldRow const &row : rows) {
    ozFieldInfo *const info = ozGeoSet::getClassType()->getFieldInfo(row.id);
    EXPECT_STREQ(info->getName(), row.name);
    EXPECT_EQ(info->getId(), row.id);
    EXPECT_EQ(info->getFieldType(), row.type) << row.name;
    EXPECT_EQ(set->getField(row.name), set->getField(row.id));
    if (row.alias) {
      EXPECT_EQ(set->getField(row.alias), set->getField(row.id));
    }
  }
}

TEST(GeoSet, RefersOnlyToSetsOfTheRightKind) {
  ozType *const classes[] = {ozCoordSet::getClassType(),    ozNormalSet::getClassType(), ozColorSet::getClassType(),
                             ozTexCoordSet::getClassType(), ozIndexSet::getClassType(),  ozIndexSet::getClassType(),
                             ozIndexSet::getClassType(),    ozIndexSet::getClassType()};
  for (int id = 6; id <= 13; ++id)
    EXPECT_EQ(static_cast<ozSFRefInfo *>(ozGeoSet::getClassType()->getFieldInfo(id))->getRefType(), classes[id - 6]);
}

TEST(GeoSet, NamesItsEnumerators) {
  ozType *const type = ozGeoSet::getClassType();
  char const *const normal[] = {"NO_NORMAL", "OVERALL_NORMAL", "PER_PRIM_NORMAL", "PER_VERTEX_NORMAL"};
  char const *const color[] = {"NO_COLOR", "OVERALL_COLOR", "PER_PRIM_COLOR", "PER_VERTEX_COLOR"};
  char const *const cull[] = {"NO_CULL", "FRONT_CULL", "BACK_CULL", "BOTH_CULL"};
  for (int i = 0; i < 4; ++i) {
    EXPECT_STREQ(type->mapEnum(3, i), normal[i]);
    EXPECT_STREQ(type->mapEnum(4, i), color[i]);
    EXPECT_STREQ(type->mapEnum(14, i), cull[i]);
  }
  EXPECT_STREQ(type->mapEnum(5, 0), "NO_TEX_COORD");
  EXPECT_STREQ(type->mapEnum(5, 1), "PER_VERTEX_TEX_COORD");
  EXPECT_EQ(ozGeoSet::OVERALL_NORMAL, 1);
  EXPECT_EQ(ozGeoSet::PER_PRIM_COLOR, 2);
  EXPECT_EQ(ozGeoSet::PER_VERTEX_NORMAL, 3);
  EXPECT_EQ(ozGeoSet::PER_VERTEX_TEX_COORD, 1);
}

TEST(GeoSet, StartsEmpty) {
  Held<Probe> set(new Probe);
  EXPECT_EQ(set->getPrimCount(), 0);
  EXPECT_EQ(set->getNormalBind(), ozGeoSet::NO_NORMAL);
  EXPECT_EQ(set->getColorBind(), ozGeoSet::NO_COLOR);
  EXPECT_EQ(set->getTexCoordBind(), ozGeoSet::NO_TEX_COORD);
  EXPECT_EQ(set->getCoordSet(), nullptr);
  EXPECT_EQ(set->getNormalSet(), nullptr);
  EXPECT_EQ(set->getColorSet(), nullptr);
  EXPECT_EQ(set->getTexCoordSet(), nullptr);
  EXPECT_EQ(set->getCoordIndexSet(), nullptr);
  EXPECT_EQ(set->getNormalIndexSet(), nullptr);
  EXPECT_EQ(set->getColorIndexSet(), nullptr);
  EXPECT_EQ(set->getTexCoordIndexSet(), nullptr);
  EXPECT_EQ(set->getCullFace(), ozContext::BACK_CULL);
  EXPECT_EQ(set->_setMask.getMask(), 0);
  EXPECT_EQ(set->_listId, -1);
  EXPECT_EQ(set->_version, 0u);
  EXPECT_EQ(set->bits(), 0);
}

TEST(GeoSet, StoresEachFieldThroughItsSetter) {
  Held<ozTriSet> set(new ozTriSet);
  ozIndexSet *const indices[] = {new ozIndexSet, new ozIndexSet, new ozIndexSet, new ozIndexSet};
  ozCoordSet *const coords = new ozCoordSet3f;
  ozNormalSet *const normals = new ozNormalSet3s;
  ozColorSet *const colors = new ozColorSet4f;
  ozTexCoordSet *const texCoords = new ozTexCoordSet2f;
  set->setPrimCount(4);
  set->setNormalBind(ozGeoSet::PER_PRIM_NORMAL);
  set->setColorBind(ozGeoSet::PER_VERTEX_COLOR);
  set->setTexCoordBind(ozGeoSet::PER_VERTEX_TEX_COORD);
  set->setCoordSet(coords);
  set->setNormalSet(normals);
  set->setColorSet(colors);
  set->setTexCoordSet(texCoords);
  set->setCoordIndexSet(indices[0]);
  set->setNormalIndexSet(indices[1]);
  set->setColorIndexSet(indices[2]);
  set->setTexCoordIndexSet(indices[3]);
  set->setCullFace(ozContext::FRONT_CULL);
  EXPECT_EQ(set->getPrimCount(), 4);
  EXPECT_EQ(set->getNormalBind(), ozGeoSet::PER_PRIM_NORMAL);
  EXPECT_EQ(set->getColorBind(), ozGeoSet::PER_VERTEX_COLOR);
  EXPECT_EQ(set->getTexCoordBind(), ozGeoSet::PER_VERTEX_TEX_COORD);
  EXPECT_EQ(set->getCoordSet(), coords);
  EXPECT_EQ(set->getNormalSet(), normals);
  EXPECT_EQ(set->getColorSet(), colors);
  EXPECT_EQ(set->getTexCoordSet(), texCoords);
  EXPECT_EQ(set->getCoordIndexSet(), indices[0]);
  EXPECT_EQ(set->getNormalIndexSet(), indices[1]);
  EXPECT_EQ(set->getColorIndexSet(), indices[2]);
  EXPECT_EQ(set->getTexCoordIndexSet(), indices[3]);
  EXPECT_EQ(set->getCullFace(), ozContext::FRONT_CULL);
  EXPECT_EQ(coords->getRefCount(), 1u);
  EXPECT_EQ(coords->getParent(0), set.get());
}

TEST(GeoSet, TakesEnumerationsAsPlainNumbersToo) {
  Held<ozTriSet> set(new ozTriSet);
  set->setNormalBindHack(3);
  set->setColorBindHack(2);
  set->setTexCoordBindHack(1);
  set->setCullFaceHack(0);
  EXPECT_EQ(set->getNormalBindHack(), 3);
  EXPECT_EQ(set->getColorBindHack(), 2);
  EXPECT_EQ(set->getTexCoordBindHack(), 1);
  EXPECT_EQ(set->getCullFaceHack(), 0);
  EXPECT_EQ(set->getCullFace(), ozContext::NO_CULL);
}

TEST(GeoSet, GivesBackWhatItReferredTo) {
  Held<ozCoordSet3f> first(new ozCoordSet3f), second(new ozCoordSet3f);
  {
    Held<ozTriSet> set(new ozTriSet);
    set->setCoordSet(first.get());
    set->setCoordSet(second.get());
    EXPECT_EQ(first->getRefCount(), 1u);
    EXPECT_EQ(second->getRefCount(), 2u);
  }
  EXPECT_EQ(second->getRefCount(), 1u);
}

// ---- bindings

TEST(GeoSet, BindsNothingThatIsAbsent) {
  Held<Probe> set(new Probe);
  set->setColorBind(ozGeoSet::PER_VERTEX_COLOR);
  EXPECT_EQ(set->_colorBindNow, 0);
  set->setColorSet(new ozColorSet3f);
  EXPECT_EQ(set->_colorBindNow, 3); // without setting the binding again
  set->setColorSet(nullptr);
  EXPECT_EQ(set->_colorBindNow, 0);
}

TEST(GeoSet, DoesNotUseAColorSetThatIsNotBound) {
  Held<Probe> set(new Probe);
  ozColorSet3f *const colors = new ozColorSet3f;
  set->setColorSet(colors);
  EXPECT_EQ(set->getColorSet(), colors);
  EXPECT_EQ(set->_colorBindNow, 0);
  EXPECT_EQ(set->bits(), 0);
}

TEST(GeoSet, PacksTheBindingsIntoTheDrawFlags) {
  Held<Probe> set(new Probe);
  giveAll(set.get());
  for (int normal = 0; normal < 4; ++normal)
    for (int color = 0; color < 4; ++color)
      for (int texCoord = 0; texCoord < 2; ++texCoord) {
        set->setNormalBindHack(normal);
        set->setColorBindHack(color);
        set->setTexCoordBindHack(texCoord);
        int expected = 0;
        if (normal == 1) expected |= 1;
        if (color == 1) expected |= 2;
        if (normal == 2) expected |= 8;
        if (color == 2) expected |= 16;
        if (texCoord == 1) expected |= 64;
        if (normal == 3) expected |= 128;
        if (color == 3) expected |= 256;
        EXPECT_EQ(set->bits(), expected) << normal << color << texCoord;
        EXPECT_EQ(set->path(), normal == 2 || color == 2 ? 2 : 1);
      }
}

TEST(GeoSet, KeepsTheUpperBitsOfTheDrawFlags) {
  Held<Probe> set(new Probe);
  set->_drawFlags = 0xf000;
  set->calcBindings();
  EXPECT_EQ(set->_drawFlags & 0xf000, 0xf000);
}

TEST(GeoSet, BindsNothingForAValueThatIsNoEnumerator) {
  Held<Probe> set(new Probe);
  giveAll(set.get());
  for (int bad : {4, -1, 257, 1 << 30}) {
    set->setNormalBindHack(bad);
    set->setColorBindHack(bad);
    set->setTexCoordBindHack(bad);
    EXPECT_EQ(set->bits(), 0);
    EXPECT_EQ(set->_normalBindNow + set->_colorBindNow + set->_texCoordBindNow, 0);
  }
}

TEST(GeoSet, ChoosesTheDrawPathByTheIndices) {
  Held<Probe> set(new Probe);
  giveAll(set.get());
  set->setNormalBind(ozGeoSet::PER_VERTEX_NORMAL);
  EXPECT_EQ(set->path(), 1);
  ozIndexSet *const shared = indexSet({0, 1, 2});
  set->setCoordIndexSet(shared);
  EXPECT_EQ(set->path(), 0);
  set->setNormalIndexSet(shared);
  EXPECT_EQ(set->path(), 3);
  set->setColorBind(ozGeoSet::PER_PRIM_COLOR);
  EXPECT_EQ(set->path(), 0);
  set->setColorIndexSet(shared);
  EXPECT_EQ(set->path(), 4);
  set->setCoordIndexSet(nullptr);
  EXPECT_EQ(set->path(), 0);
  set->setNormalIndexSet(nullptr);
  set->setColorIndexSet(nullptr);
  EXPECT_EQ(set->path(), 2);
}

TEST(GeoSet, TellsIndicesApartByAddressNotByContents) {
  Held<Probe> set(new Probe);
  giveAll(set.get());
  set->setNormalBind(ozGeoSet::PER_VERTEX_NORMAL);
  set->setCoordIndexSet(indexSet({0, 1, 2}));
  set->setNormalIndexSet(indexSet({0, 1, 2}));
  EXPECT_EQ(set->path(), 0);
}

TEST(GeoSet, AnAttributeOfTheWholeSetWithItsOwnIndexForcesImmediateMode) {
  Held<Probe> set(new Probe);
  giveAll(set.get());
  set->setColorBind(ozGeoSet::OVERALL_COLOR);
  set->setColorIndexSet(indexSet({0}));
  EXPECT_EQ(set->path(), 0);
}

TEST(GeoSet, AnUnboundAttributesIndexDoesNotCount) {
  Held<Probe> set(new Probe);
  giveAll(set.get());
  set->setColorIndexSet(indexSet({0}));
  EXPECT_EQ(set->path(), 1);
}

// ---- changes

TEST(GeoSet, CountsItsChanges) {
  Held<Probe> set(new Probe);
  set->setPrimCount(1);
  set->setNormalBind(ozGeoSet::OVERALL_NORMAL);
  EXPECT_EQ(set->_version, 2u);
  ozCoordSet3f *const coords = coordSet(somePoints(3));
  set->setCoordSet(coords);
  EXPECT_EQ(set->_version, 3u);
  coords->point()->set(0, ozVec3f(1, 1, 1));
  EXPECT_EQ(set->_version, 4u);
  set->setBoundMode(ozGeometry::STATIC); // a field of the base
  EXPECT_EQ(set->_version, 4u);
}

TEST(GeoSet, MarksACullFaceThatWasSet) {
  Held<Probe> set(new Probe);
  set->setCullFace(ozContext::BACK_CULL); // the default, but said
  EXPECT_EQ(set->_setMask.getMask(), 1LL << 29);
}

// ---- bounds

TEST(GeoSet, BoundsTheVerticesThatItsPrimitivesUse) {
  Held<ozTriSet> set(triSet(somePoints(9), 2));
  EXPECT_EQ(boundOf(set.get()).min, ozVec3f(0, 0, -5));
  EXPECT_EQ(boundOf(set.get()).max, ozVec3f(5, 10, 0));
}

TEST(GeoSet, BoundsOnlyWhatTheIndexReaches) {
  Held<ozTriSet> set(triSet(somePoints(9), 1));
  set->setCoordIndexSet(indexSet({4, 2, 3, 8}));
  EXPECT_EQ(boundOf(set.get()).min, ozVec3f(2, 4, -4));
  EXPECT_EQ(boundOf(set.get()).max, ozVec3f(4, 8, -2));
}

TEST(GeoSet, FollowsChangesOfCountCoordinatesAndIndexInModeDynamic) {
  Held<ozTriSet> set(triSet(somePoints(9), 1));
  EXPECT_EQ(boundOf(set.get()).max, ozVec3f(2, 4, 0));
  set->setPrimCount(3);
  EXPECT_EQ(boundOf(set.get()).max, ozVec3f(8, 16, 0));
  static_cast<ozCoordSet3f *>(set->getCoordSet())->point()->set(0, ozVec3f(0, 0, 100));
  EXPECT_EQ(boundOf(set.get()).max, ozVec3f(8, 16, 100));
  set->setCoordIndexSet(indexSet({1, 1, 1, 1, 1, 1, 1, 1, 1}));
  EXPECT_EQ(boundOf(set.get()).max, ozVec3f(1, 2, -1));
  set->setCoordSet(nullptr);
  EXPECT_TRUE(boundOf(set.get()).isEmpty());
}

TEST(GeoSet, KeepsAStoredBoundInModeStatic) {
  Held<ozTriSet> set(triSet(somePoints(9), 1));
  ozBoxBound box;
  box.min = -1.0f;
  box.max = 1.0f;
  set->setBoundMode(ozGeometry::STATIC);
  set->setBoxBound(box);
  set->setPrimCount(3);
  static_cast<ozCoordSet3f *>(set->getCoordSet())->point()->set(0, ozVec3f(0, 0, 100));
  EXPECT_EQ(boundOf(set.get()).max, ozVec3f(1, 1, 1));
}

TEST(GeoSet, TellsItsParentsOfAStaleBoundOnce) {
  class Parent : public ozContainer {
  public:
    Parent() : ozContainer(ozContainer::getClassType()) {}
    ozContainer *instantiate() override { return nullptr; }
    void childChanged(ozContainer *, short id) override { told.push_back(id); }
    using ozContainer::refer;
    using ozContainer::unrefer;
    std::vector<short> told;
  };
  Held<Parent> parent(new Parent);
  Held<ozTriSet> set(triSet(somePoints(9), 1));
  boundOf(set.get());
  parent->refer(set.get());
  set->setPrimCount(2);
  set->setPrimCount(3);
  EXPECT_EQ(parent->told, std::vector<short>{0});
  boundOf(set.get());
  set->setPrimCount(1);
  EXPECT_EQ(parent->told.size(), 2u);
  parent->unrefer(set.get());
}

TEST(GeoSet, LeavesTheBoxAloneWhenLengthsAreMissing) {
  Held<ozTriStripSet> set(new ozTriStripSet);
  set->setCoordSet(coordSet(somePoints(9)));
  setLengths(set->stripLength(), {3});
  set->setPrimCount(1);
  EXPECT_EQ(boundOf(set.get()).max, ozVec3f(2, 4, 0));
  set->setPrimCount(2);
  EXPECT_EQ(boundOf(set.get()).max, ozVec3f(2, 4, 0));
  set->stripLength()->set(1, 6);
  EXPECT_EQ(boundOf(set.get()).max, ozVec3f(8, 16, 0));
}

TEST(GeoSet, BoundsWhatItCanReach) {
  Held<ozTriSet> set(triSet(somePoints(4), 1000000000));
  EXPECT_EQ(boundOf(set.get()).max, ozVec3f(3, 6, 0));
  set->setCoordIndexSet(indexSet({1, 99, -7, 2}));
  EXPECT_EQ(boundOf(set.get()).min, ozVec3f(1, 2, -2));
  EXPECT_EQ(boundOf(set.get()).max, ozVec3f(2, 4, -1));
  set->setPrimCount(-3);
  EXPECT_TRUE(boundOf(set.get()).isEmpty());
}

TEST(GeoSet, BoundsInterleavedCoordinatesByTheirStride) {
  ozData *const data = new (4 * 12) ozData;
  float *const floats = static_cast<float *>(data->getData());
  for (int i = 0; i < 12; ++i) floats[i] = static_cast<float>(i % 4 == 3 ? 1000 : i);
  Held<ozTriSet> set(new ozTriSet);
  ozCoordSet3f *const coords = new ozCoordSet3f(data, 16, 0);
  coords->point()->setCount(3);
  set->setCoordSet(coords);
  set->setPrimCount(1);
  EXPECT_EQ(boundOf(set.get()).min, ozVec3f(0, 1, 2));
  EXPECT_EQ(boundOf(set.get()).max, ozVec3f(8, 9, 10));
}

// ---- VRML indices

std::vector<int> valuesOf(ozMFInt *field) {
  std::vector<int> values;
  for (unsigned int i = 0; i < field->getCount(); ++i) values.push_back(field->get(i));
  return values;
}

TEST(GeoSet, TakesIndicesApartAtNegativeOnes) {
  Held<Probe> set(new Probe);
  Held<ozIndexSet> from(indexSet({0, 1, 2, -1, 3, 4, 5, 6, -1})), to(new ozIndexSet), lengths(new ozIndexSet);
  EXPECT_EQ(set->flattenVRMLIndices(from->index(), to.get(), lengths->index()), 2);
  EXPECT_EQ(valuesOf(to->index()), (std::vector<int>{0, 1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(valuesOf(lengths->index()), (std::vector<int>{3, 4}));
}

TEST(GeoSet, ClosesARunWithoutItsTerminator) {
  Held<Probe> set(new Probe);
  Held<ozIndexSet> from(indexSet({0, 1, -1, 2, 3, 4})), to(new ozIndexSet), lengths(new ozIndexSet);
  EXPECT_EQ(set->flattenVRMLIndices(from->index(), to.get(), lengths->index()), 2);
  EXPECT_EQ(valuesOf(lengths->index()), (std::vector<int>{2, 3}));
}

TEST(GeoSet, MakesAnEmptyRunOfTwoTerminators) {
  Held<Probe> set(new Probe);
  Held<ozIndexSet> from(indexSet({0, -1, -1, 1, -5})), to(new ozIndexSet), lengths(new ozIndexSet);
  EXPECT_EQ(set->flattenVRMLIndices(from->index(), to.get(), lengths->index()), 3);
  EXPECT_EQ(valuesOf(lengths->index()), (std::vector<int>{1, 0, 1}));
}

TEST(GeoSet, TakesIndicesApartWithoutLengths) {
  Held<Probe> set(new Probe);
  Held<ozIndexSet> from(indexSet({5, -1, 6, 7})), to(new ozIndexSet);
  EXPECT_EQ(set->flattenVRMLIndices(from->index(), to.get(), nullptr), 0);
  EXPECT_EQ(valuesOf(to->index()), (std::vector<int>{5, 6, 7}));
}

TEST(GeoSet, ShortensNeitherDestination) {
  Held<Probe> set(new Probe);
  Held<ozIndexSet> from(indexSet({9, -1})), to(indexSet({1, 2, 3})), lengths(indexSet({4, 4}));
  EXPECT_EQ(set->flattenVRMLIndices(from->index(), to.get(), lengths->index()), 1);
  EXPECT_EQ(valuesOf(to->index()), (std::vector<int>{9, 2, 3}));
  EXPECT_EQ(valuesOf(lengths->index()), (std::vector<int>{1, 4}));
}

TEST(GeoSet, NoIndicesLeaveEverythingUntouched) {
  Held<Probe> set(new Probe);
  Held<ozIndexSet> from(new ozIndexSet), to(indexSet({1})), lengths(indexSet({4}));
  EXPECT_EQ(set->flattenVRMLIndices(from->index(), to.get(), lengths->index()), 0);
  EXPECT_EQ(valuesOf(to->index()), std::vector<int>{1});
  EXPECT_EQ(valuesOf(lengths->index()), std::vector<int>{4});
}

// ---- copies

TEST(GeoSet, CopiesShareTheSetsButNeitherListsNorCullingData) {
  Held<Probe> set(new Probe);
  giveAll(set.get());
  set->setPrimCount(3);
  set->setColorBind(ozGeoSet::OVERALL_COLOR);
  set->setCullFace(ozContext::NO_CULL);
  set->buildBPCullData();
  Held<ozTriSet> copy(new ozTriSet(*set));
  EXPECT_EQ(copy->getRefCount(), 1u);
  EXPECT_EQ(copy->getCoordSet(), set->getCoordSet());
  EXPECT_EQ(set->getCoordSet()->getRefCount(), 2u);
  EXPECT_EQ(copy->getPrimCount(), 3);
  EXPECT_EQ(copy->getCullFace(), ozContext::NO_CULL);
  EXPECT_FALSE(copy->existsBPCullData());
  EXPECT_TRUE(set->existsBPCullData());
}

TEST(GeoSet, CopiesKeepWhatWasSaidExplicitly) {
  Held<Probe> source(new Probe);
  struct Open : ozTriSet {
    explicit Open(ozTriSet const &other) : ozTriSet(other) {}
    using ozGeoSet::_drawFlags;
    using ozGeoSet::_setMask;
  };
  giveAll(source.get());
  source->setNormalBind(ozGeoSet::PER_PRIM_NORMAL);
  Held<Open> copy(new Open(*source));
  EXPECT_EQ(copy->_setMask.getMask(), 0); // a cull face that nobody set stays so
  EXPECT_EQ(copy->_drawFlags, source->_drawFlags);
}

TEST(GeoSet, AnAssignmentReleasesWhatWasThere) {
  Held<ozCoordSet3f> old(coordSet(somePoints(3)));
  Held<ozTriSet> a(triSet(somePoints(6), 2)), b(new ozTriSet);
  b->setCoordSet(old.get());
  *b = *a;
  EXPECT_EQ(old->getRefCount(), 1u);
  EXPECT_EQ(b->getCoordSet(), a->getCoordSet());
  EXPECT_EQ(b->getPrimCount(), 2);
  EXPECT_EQ(boundOf(b.get()).max, ozVec3f(5, 10, 0));
}

TEST(GeoSet, CopiesOfLengthsAreTheirOwn) {
  Held<ozPolySet> set(new ozPolySet);
  setLengths(set->polyLength(), {3, 4});
  Held<ozPolySet> copy(new ozPolySet(*set));
  set->polyLength()->set(0, 7);
  EXPECT_EQ(valuesOf(copy->polyLength()), (std::vector<int>{3, 4}));
  Held<ozLineStripSet> strips(new ozLineStripSet);
  strips->setWidth(4);
  Held<ozLineStripSet> other(new ozLineStripSet(*strips));
  EXPECT_EQ(other->getWidth(), 4.0f);
  EXPECT_EQ(other->getBPCullPrimNormModeEnable(), 1);
}

TEST(GeoSet, ADeepCloneHasSetsOfItsOwn) {
  Held<ozTriSet> set(triSet(somePoints(6), 2));
  Held<ozContainer> cloned(set->clone(ozContainer::CLONE_DEEP));
  ozTriSet *const copy = static_cast<ozTriSet *>(cloned.get());
  ASSERT_NE(copy->getCoordSet(), set->getCoordSet());
  static_cast<ozCoordSet3f *>(set->getCoordSet())->point()->set(0, ozVec3f(0, 0, 50));
  EXPECT_EQ(boundOf(copy).max, ozVec3f(5, 10, 0));
}

} // namespace
