// The classes of solids: names, fields, defaults, copies, changes and bounds.

#include "geometry/geometryFixture.h"

namespace {

struct FieldRow {
  char const *name;
  ozType *type;
};

template <class Solid> void expectClass(char const *name, std::vector<FieldRow> const &fields) {
  ozType *const type = Solid::getClassType();
  EXPECT_STREQ(type->getName(), name);
  EXPECT_EQ(type->getAncestor(), ozGeometry::getClassType());
  ASSERT_EQ(type->getFieldInfoCount(), 2 + static_cast<int>(fields.size()));
  for (size_t i = 0; i < fields.size(); ++i) {
    EXPECT_STREQ(type->getFieldInfo(2 + static_cast<int>(i))->getName(), fields[i].name);
    EXPECT_EQ(type->getFieldInfo(2 + static_cast<int>(i))->getFieldType(), fields[i].type);
  }
  Held<Solid> solid(new Solid);
  Held<ozContainer> made(solid->instantiate());
  EXPECT_EQ(made->getType(), type);
}

TEST(Solids, HaveTheirNamesAndFields) {
  ozType *const vec3f = ozSFVec3f::getClassType(), *const real = ozSFFloat::getClassType(),
                *const byte = ozSFUByte::getClassType();
  expectClass<ozBox>("Box", {{"size", vec3f}, {"center", vec3f}});
  expectClass<ozSphere>("Sphere", {{"center", vec3f}, {"radius", real}});
  expectClass<ozCone>("Cone",
                      {{"bottomRadius", real}, {"height", real}, {"side", byte}, {"bottom", byte}, {"center", vec3f}});
  expectClass<ozCylinder>(
      "Cylinder",
      {{"radius", real}, {"height", real}, {"side", byte}, {"top", byte}, {"bottom", byte}, {"center", vec3f}});
}

template <class Solid> ozVec3f centerOf(Solid &solid) {
  ozVec3f center;
  solid.getCenter(center);
  return center;
}

TEST(Solids, StartAsUnitSolidsAtTheOrigin) {
  Held<ozBox> box(new ozBox);
  Held<ozSphere> sphere(new ozSphere);
  Held<ozCone> cone(new ozCone);
  Held<ozCylinder> cylinder(new ozCylinder);
  ozVec3f size;
  box->getSize(size);
  EXPECT_EQ(size, ozVec3f(2, 2, 2));
  EXPECT_EQ(sphere->getRadius(), 1.0f);
  EXPECT_EQ(cone->getBottomRadius(), 1.0f);
  EXPECT_EQ(cone->getHeight(), 2.0f);
  EXPECT_EQ(cone->getSide(), 1);
  EXPECT_EQ(cone->getBottom(), 1);
  EXPECT_EQ(cylinder->getRadius(), 1.0f);
  EXPECT_EQ(cylinder->getHeight(), 2.0f);
  EXPECT_EQ(cylinder->getSide(), 1);
  EXPECT_EQ(cylinder->getTop(), 1);
  EXPECT_EQ(cylinder->getBottom(), 1);
  for (ozVec3f const &center : {centerOf(*box), centerOf(*sphere), centerOf(*cone), centerOf(*cylinder)})
    EXPECT_EQ(center, ozVec3f(0, 0, 0));
}

TEST(Solids, StoreWhatIsSet) {
  Held<ozBox> box(new ozBox);
  Held<ozSphere> sphere(new ozSphere);
  Held<ozCone> cone(new ozCone);
  Held<ozCylinder> cylinder(new ozCylinder);
  ozVec3f size;
  box->setSize(ozVec3f(3, 4, 5));
  box->getSize(size);
  EXPECT_EQ(size, ozVec3f(3, 4, 5));
  sphere->setRadius(2.5f);
  EXPECT_EQ(sphere->getRadius(), 2.5f);
  cone->setBottomRadius(3);
  cone->setHeight(7);
  cone->setSide(0);
  cone->setBottom(2);
  EXPECT_EQ(cone->getBottomRadius(), 3.0f);
  EXPECT_EQ(cone->getHeight(), 7.0f);
  EXPECT_EQ(cone->getSide(), 0);
  EXPECT_EQ(cone->getBottom(), 2);
  cylinder->setRadius(4);
  cylinder->setHeight(9);
  cylinder->setSide(5);
  cylinder->setTop(6);
  cylinder->setBottom(7);
  EXPECT_EQ(cylinder->getRadius(), 4.0f);
  EXPECT_EQ(cylinder->getHeight(), 9.0f);
  EXPECT_EQ(cylinder->getSide(), 5);
  EXPECT_EQ(cylinder->getTop(), 6);
  EXPECT_EQ(cylinder->getBottom(), 7);
}

TEST(Solids, TakeTheSizeOfABoxInThreeFloatsToo) {
  Held<ozBox> box(new ozBox);
  box->setSize(3, 4, 5);
  float x, y, z;
  box->getSize(&x, &y, &z);
  EXPECT_EQ(ozVec3f(x, y, z), ozVec3f(3, 4, 5));
}

template <class Solid> class SolidClass : public ::testing::Test {
public:
  Held<Solid> solid{new Solid};
};
typedef ::testing::Types<ozBox, ozSphere, ozCone, ozCylinder> AllSolids;
TYPED_TEST_SUITE(SolidClass, AllSolids);

template <class Solid> ozBoxBound boundOf(Solid &solid) {
  ozBoxBound bound;
  solid.getBoxBound(bound);
  return bound;
}

TYPED_TEST(SolidClass, TakesItsCentreInBothForms) {
  this->solid->setCenter(ozVec3f(1, 2, 3));
  EXPECT_EQ(centerOf(*this->solid), ozVec3f(1, 2, 3));
  this->solid->setCenter(4, 5, 6);
  float x, y, z;
  this->solid->getCenter(&x, &y, &z);
  EXPECT_EQ(ozVec3f(x, y, z), ozVec3f(4, 5, 6));
}

TYPED_TEST(SolidClass, ReadsAConnectedValue) {
  Held<TypeParam> source(new TypeParam);
  short const center = static_cast<short>(source->getField("center")->getId());
  source->connect(center, this->solid.get(), center);
  source->setCenter(7, 8, 9);
  EXPECT_EQ(centerOf(*this->solid), ozVec3f(7, 8, 9));
}

// Sets one of a pair of connected solids and reads the other.
template <class Solid> class ConnectedPair {
public:
  ConnectedPair() {
    for (short id = 2; id < Solid::getClassType()->getFieldInfoCount(); ++id) from->connect(id, to.get(), id);
  }
  Held<Solid> const from{new Solid}, to{new Solid};
};

TEST(Solids, ReadEachOfTheirFieldsThroughAConnection) {
  ConnectedPair<ozBox> boxes;
  boxes.from->setSize(3, 4, 5);
  ozVec3f size;
  boxes.to->getSize(size);
  EXPECT_EQ(size, ozVec3f(3, 4, 5));
  ConnectedPair<ozSphere> spheres;
  spheres.from->setRadius(6);
  EXPECT_EQ(spheres.to->getRadius(), 6.0f);
  ConnectedPair<ozCone> cones;
  cones.from->setBottomRadius(7);
  cones.from->setHeight(8);
  cones.from->setSide(0);
  cones.from->setBottom(0);
  EXPECT_EQ(cones.to->getBottomRadius(), 7.0f);
  EXPECT_EQ(cones.to->getHeight(), 8.0f);
  EXPECT_EQ(cones.to->getSide(), 0);
  EXPECT_EQ(cones.to->getBottom(), 0);
  ConnectedPair<ozCylinder> cylinders;
  cylinders.from->setRadius(9);
  cylinders.from->setHeight(10);
  cylinders.from->setSide(0);
  cylinders.from->setTop(0);
  cylinders.from->setBottom(0);
  EXPECT_EQ(cylinders.to->getRadius(), 9.0f);
  EXPECT_EQ(cylinders.to->getHeight(), 10.0f);
  EXPECT_EQ(cylinders.to->getSide(), 0);
  EXPECT_EQ(cylinders.to->getTop(), 0);
  EXPECT_EQ(cylinders.to->getBottom(), 0);
}

// Shows whether the bound is stale.
template <class Solid> class Watched : public Solid {
public:
  Watched() : Solid(Solid::getClassType()) {}
  using Solid::fieldChanged;
};

// A container that hears of its children's changes.
class Ear : public ozContainer {
  OZ_CLASS(Ear);

public:
  Ear();
  void childChanged(ozContainer *, short id) override { heard.push_back(id); }
  using ozContainer::refer;
  using ozContainer::unrefer;
  std::vector<short> heard;
};
OZ_DEFINE_CLASS(Ear, "geometry test ear", ozContainer) {}

TYPED_TEST(SolidClass, EveryFieldMakesTheBoundStaleInModeStaticToo) {
  Held<Watched<TypeParam>> solid(new Watched<TypeParam>);
  solid->setBoundMode(ozGeometry::STATIC);
  for (short id = 0; id < TypeParam::getClassType()->getFieldInfoCount(); ++id) {
    solid->cleanFields();
    EXPECT_FALSE(solid->hasPendingFields());
    solid->fieldChanged(id);
    EXPECT_TRUE(solid->hasPendingFields()) << id;
  }
}

TYPED_TEST(SolidClass, TellsItsParentsOnceThatTheBoundIsStale) {
  Held<Ear> ear(new Ear);
  ear->refer(this->solid.get());
  this->solid->setCenter(1, 0, 0);
  this->solid->setCenter(2, 0, 0);
  EXPECT_EQ(ear->heard, std::vector<short>{0});
  ear->unrefer(this->solid.get());
}

TYPED_TEST(SolidClass, AStoredBoundGivesWayToItsOwn) {
  ozBoxBound const own = boundOf(*this->solid);
  ozBoxBound other;
  other.min = -9.0f;
  other.max = 9.0f;
  this->solid->setBoxBound(other);
  EXPECT_EQ(boundOf(*this->solid), own);
}

TYPED_TEST(SolidClass, HandsItsBoundToAConnectedField) {
  Held<TypeParam> reader(new TypeParam);
  this->solid->connect(0, reader.get(), 0);
  this->solid->setCenter(0.5f, 0.5f, 0.5f);
  EXPECT_EQ(static_cast<ozSFBoxBound *>(reader->getField(0))->get(), boundOf(*this->solid));
}

TYPED_TEST(SolidClass, CopiesItsValues) {
  this->solid->setCenter(1, 2, 3);
  TypeParam const copy(*this->solid);
  TypeParam assigned;
  assigned = *this->solid;
  EXPECT_EQ(centerOf(const_cast<TypeParam &>(copy)), ozVec3f(1, 2, 3));
  EXPECT_EQ(centerOf(assigned), ozVec3f(1, 2, 3));
  EXPECT_EQ(boundOf(const_cast<TypeParam &>(copy)), boundOf(*this->solid));
  EXPECT_EQ(boundOf(assigned), boundOf(*this->solid));
}

TYPED_TEST(SolidClass, IsClonedWithItsValues) {
  this->solid->setCenter(1, 2, 3);
  Held<TypeParam> clone(static_cast<TypeParam *>(this->solid->clone(ozContainer::CLONE_SHALLOW)));
  EXPECT_EQ(centerOf(*clone), ozVec3f(1, 2, 3));
}

// ---- bounds

void expectBox(ozBoxBound const &bound, ozVec3f const &min, ozVec3f const &max) {
  EXPECT_EQ(bound.min, min);
  EXPECT_EQ(bound.max, max);
}

TEST(SolidBound, OfNewSolidsIsThatOfTheUnitSolid) {
  float const r = 1.41421354f;
  expectBox(boundOf(*Held<ozBox>(new ozBox)), ozVec3f(-1, -1, -1), ozVec3f(1, 1, 1));
  expectBox(boundOf(*Held<ozSphere>(new ozSphere)), ozVec3f(-1, -1, -1), ozVec3f(1, 1, 1));
  expectBox(boundOf(*Held<ozCone>(new ozCone)), ozVec3f(-r, -1, -r), ozVec3f(r, 1, r));
  expectBox(boundOf(*Held<ozCylinder>(new ozCylinder)), ozVec3f(-r, -1, -r), ozVec3f(r, 1, r));
}

TEST(SolidBound, OfABoxIsTheBox) {
  Held<ozBox> box(new ozBox);
  box->setSize(2, 4, 6);
  box->setCenter(10, 20, 30);
  expectBox(boundOf(*box), ozVec3f(9, 18, 27), ozVec3f(11, 22, 33));
}

TEST(SolidBound, OfASphereIsTheBoxAroundIt) {
  Held<ozSphere> sphere(new ozSphere);
  sphere->setRadius(3);
  sphere->setCenter(10, 20, 30);
  expectBox(boundOf(*sphere), ozVec3f(7, 17, 27), ozVec3f(13, 23, 33));
}

template <class Solid> void setRound(Solid &solid, float radius, float height);
template <> void setRound(ozCone &cone, float radius, float height) {
  cone.setBottomRadius(radius);
  cone.setHeight(height);
}
template <> void setRound(ozCylinder &cylinder, float radius, float height) {
  cylinder.setRadius(radius);
  cylinder.setHeight(height);
}

template <class Solid> class RoundBound : public SolidClass<Solid> {};
typedef ::testing::Types<ozCone, ozCylinder> RoundSolids;
TYPED_TEST_SUITE(RoundBound, RoundSolids);

TYPED_TEST(RoundBound, IsWiderThanTheRadiusByTheRootOfTwo) {
  setRound(*this->solid, 2, 6);
  float const r = 2 * 1.41421354f;
  expectBox(boundOf(*this->solid), ozVec3f(-r, -3, -r), ozVec3f(r, 3, r));
}

TYPED_TEST(RoundBound, StaysAroundTheOriginWhateverTheCentre) {
  ozBoxBound const before = boundOf(*this->solid);
  this->solid->setCenter(10, 20, 30);
  EXPECT_EQ(boundOf(*this->solid), before);
}

TYPED_TEST(RoundBound, IsFlatWithoutASide) {
  setRound(*this->solid, 1, 6);
  this->solid->setSide(0);
  EXPECT_EQ(boundOf(*this->solid).min[1], -3.0f);
  EXPECT_EQ(boundOf(*this->solid).max[1], -3.0f);
}

TYPED_TEST(RoundBound, IsFlatWithASideThatIsNeither0Nor1) {
  setRound(*this->solid, 1, 6);
  this->solid->setSide(2);
  EXPECT_EQ(boundOf(*this->solid).max[1], -3.0f);
}

TYPED_TEST(RoundBound, IsEmptyWithoutSideAndBottom) {
  this->solid->setSide(0);
  this->solid->setBottom(0);
  EXPECT_TRUE(boundOf(*this->solid).isEmpty());
}

TEST(SolidBound, OfACylinderTakesNoNoticeOfTheTop) {
  Held<ozCylinder> cylinder(new ozCylinder);
  cylinder->setSide(0);
  cylinder->setBottom(0);
  cylinder->setTop(1);
  EXPECT_TRUE(boundOf(*cylinder).isEmpty());
  cylinder->setBottom(1);
  EXPECT_EQ(boundOf(*cylinder).max[1], -1.0f);
}

} // namespace
