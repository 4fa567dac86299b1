#include "geometry/geometryFixture.h"

#include <GL/gl.h>

using ::testing::ElementsAre;

namespace {

// Notes what its children tell it.
class Listener : public ozContainer {
  OZ_CLASS(Listener);

public:
  Listener();
  using ozContainer::refer;
  using ozContainer::unrefer;
  void childChanged(ozContainer *child, short id) override { told.push_back({child, id}); }
  std::vector<std::pair<ozContainer *, short>> told;
};
OZ_DEFINE_CLASS(Listener, "geometry test listener", ozContainer) {}

template <class Set> ozGLAttr attrOf(Set *set) {
  ozGLAttr attr;
  set->getGLAttr(attr);
  return attr;
}

#define EXPECT_ATTR(attr, function, glType, glSize, glStride)                                                          \
  EXPECT_EQ(attr.glFunc, reinterpret_cast<void (*)(void const *)>(function));                                          \
  EXPECT_EQ(attr.type, glType);                                                                                        \
  EXPECT_EQ(attr.size, glSize);                                                                                        \
  EXPECT_EQ(attr.stride, glStride)

TEST(AttributeSets, CarryTheirRegisteredNames) {
  EXPECT_STREQ(ozCoordSet::getClassType()->getName(), "CoordSet");
  EXPECT_STREQ(ozCoordSet3f::getClassType()->getName(), "CoordSet3f");
  EXPECT_STREQ(ozNormalSet::getClassType()->getName(), "NormalSet");
  EXPECT_STREQ(ozNormalSet3f::getClassType()->getName(), "NormalSet3f");
  EXPECT_STREQ(ozNormalSet3s::getClassType()->getName(), "NormalSet3s");
  EXPECT_STREQ(ozColorSet::getClassType()->getName(), "ColorSet");
  EXPECT_STREQ(ozColorSet3f::getClassType()->getName(), "ColorSet3f");
  EXPECT_STREQ(ozColorSet4f::getClassType()->getName(), "ColorSet4f");
  EXPECT_STREQ(ozTexCoordSet::getClassType()->getName(), "TexCoordSet");
  EXPECT_STREQ(ozTexCoordSet2f::getClassType()->getName(), "TexCoordSet2f");
  EXPECT_STREQ(ozIndexSet::getClassType()->getName(), "IndexSet");
}

TEST(AttributeSets, StandInTheirClassTree) {
  EXPECT_EQ(ozCoordSet3f::getClassType()->getAncestor(), ozCoordSet::getClassType());
  EXPECT_EQ(ozNormalSet3f::getClassType()->getAncestor(), ozNormalSet::getClassType());
  EXPECT_EQ(ozNormalSet3s::getClassType()->getAncestor(), ozNormalSet::getClassType());
  EXPECT_EQ(ozColorSet3f::getClassType()->getAncestor(), ozColorSet::getClassType());
  EXPECT_EQ(ozColorSet4f::getClassType()->getAncestor(), ozColorSet::getClassType());
  EXPECT_EQ(ozTexCoordSet2f::getClassType()->getAncestor(), ozTexCoordSet::getClassType());
  EXPECT_EQ(ozCoordSet::getClassType()->getAncestor(), ozContainer::getClassType());
  EXPECT_EQ(ozIndexSet::getClassType()->getAncestor(), ozContainer::getClassType());
}

// The name of field 0, and whether the accessor is that field.
template <class Set, class Field> std::string fieldName(Field *(Set::*accessor)() const) {
  Held<Set> set(new Set);
  EXPECT_EQ(set->getType()->getFieldInfoCount(), 1);
  EXPECT_EQ((set.get()->*accessor)(), set->getField(0));
  EXPECT_EQ(set->getField(0)->getType(), Field::getClassType());
  return set->getField(0)->getName();
}

TEST(AttributeSets, HaveOneFieldThatTheAccessorGives) {
  EXPECT_EQ(fieldName(&ozCoordSet3f::point), "point");
  EXPECT_EQ(fieldName(&ozNormalSet3f::vector), "vector");
  EXPECT_EQ(fieldName(&ozNormalSet3s::vector), "vector3s");
  EXPECT_EQ(fieldName(&ozColorSet3f::color), "color");
  EXPECT_EQ(fieldName(&ozColorSet4f::color), "color");
  EXPECT_EQ(fieldName(&ozTexCoordSet2f::point), "point");
  EXPECT_EQ(fieldName(&ozIndexSet::index), "index");
}

TEST(AttributeSets, DescribeThemselvesToTheDrawingCode) {
  Held<ozCoordSet3f> coords(new ozCoordSet3f);
  Held<ozNormalSet3f> normals(new ozNormalSet3f);
  Held<ozNormalSet3s> shorts(new ozNormalSet3s);
  Held<ozColorSet3f> colors(new ozColorSet3f);
  Held<ozColorSet4f> alphas(new ozColorSet4f);
  Held<ozTexCoordSet2f> texCoords(new ozTexCoordSet2f);
  EXPECT_ATTR(attrOf(coords.get()), glVertex3fv, 5126, 3, 12);
  EXPECT_ATTR(attrOf(normals.get()), glNormal3fv, 5126, 3, 12);
  EXPECT_ATTR(attrOf(shorts.get()), glNormal3sv, 5122, 3, 6);
  EXPECT_ATTR(attrOf(colors.get()), glColor3fv, 5126, 3, 12);
  EXPECT_ATTR(attrOf(alphas.get()), glColor4fv, 5126, 4, 16);
  EXPECT_ATTR(attrOf(texCoords.get()), glTexCoord2fv, 5126, 2, 8);
}

TEST(AttributeSets, GiveTheFirstElementAndLeaveTheIndexAlone) {
  Held<ozCoordSet3f> coords(coordSet({ozVec3f(1, 2, 3)}));
  int cursor = 0;
  ozGLAttr attr;
  attr.index = &cursor;
  coords->getGLAttr(attr);
  EXPECT_EQ(attr.data, reinterpret_cast<char *>(coords->point()->edit()));
  EXPECT_EQ(attr.index, &cursor);
}

TEST(AttributeSets, MakeRoomForACountWithoutElements) {
  Held<ozCoordSet3f> coords(new ozCoordSet3f(40));
  EXPECT_EQ(coords->point()->getSize(), 40u);
  EXPECT_EQ(coords->point()->getCount(), 0u);
  Held<ozIndexSet> negative(new ozIndexSet(-5));
  negative->index()->set(0, 7);
  EXPECT_EQ(negative->index()->get(0), 7);
}

TEST(AttributeSets, AreViewsOnSharedDataWithStrideAheadOfOffset) {
  ozData *const data = new (4 * 20) ozData;
  float *const floats = static_cast<float *>(data->getData());
  for (int i = 0; i < 20; ++i) floats[i] = static_cast<float>(i);
  {
    Held<ozCoordSet3f> coords(new ozCoordSet3f(data, 20, 8));
    EXPECT_EQ(data->getRefCount(), 1u);
    coords->point()->setCount(3);
    EXPECT_EQ(coords->point()->get(1), ozVec3f(7, 8, 9)); // byte 8 + 20 is float 7
    ozGLAttr const attr = attrOf(coords.get());
    EXPECT_EQ(attr.stride, 20);
    EXPECT_EQ(attr.data, reinterpret_cast<char *>(floats + 2));
    data->ref();
  }
  EXPECT_EQ(data->getRefCount(), 1u);
  data->unref();
}

TEST(AttributeSets, TellTheirParentsOfACoordinate) {
  Held<Listener> parent(new Listener);
  ozCoordSet3f *const coords = new ozCoordSet3f;
  parent->refer(coords);
  coords->point()->set(0, ozVec3f(1, 2, 3));
  EXPECT_THAT(parent->told, ElementsAre(std::make_pair(static_cast<ozContainer *>(coords), short(0))));
  parent->unrefer(coords);
}

TEST(AttributeSets, OtherThanCoordinatesTellNobody) {
  Held<Listener> parent(new Listener);
  ozNormalSet3f *const normals = new ozNormalSet3f;
  ozColorSet3f *const colors = new ozColorSet3f;
  ozTexCoordSet2f *const texCoords = new ozTexCoordSet2f;
  ozIndexSet *const indices = new ozIndexSet;
  for (ozContainer *set : {static_cast<ozContainer *>(normals), static_cast<ozContainer *>(colors),
                           static_cast<ozContainer *>(texCoords), static_cast<ozContainer *>(indices)})
    parent->refer(set);
  normals->vector()->set(0, ozVec3f(1, 2, 3));
  colors->color()->set(0, ozVec3f(1, 2, 3));
  texCoords->point()->set(0, ozVec2f(1, 2));
  indices->index()->set(0, 1);
  EXPECT_TRUE(parent->told.empty());
  for (ozContainer *set : {static_cast<ozContainer *>(normals), static_cast<ozContainer *>(colors),
                           static_cast<ozContainer *>(texCoords), static_cast<ozContainer *>(indices)})
    parent->unrefer(set);
}

TEST(AttributeSets, PassAChangeOnToConnectedFields) {
  Held<ozCoordSet3f> a(new ozCoordSet3f), b(new ozCoordSet3f);
  a->connect(0, b.get(), 0);
  a->point()->set(1, ozVec3f(4, 5, 6));
  ASSERT_EQ(b->point()->getCount(), 2u);
  EXPECT_EQ(b->point()->get(1), ozVec3f(4, 5, 6));
}

TEST(AttributeSets, MakeEmptyObjectsOfTheirOwnClass) {
  Held<ozColorSet4f> colors(new ozColorSet4f);
  colors->color()->set(0, ozVec4f(1, 2, 3, 4));
  Held<ozContainer> made(colors->instantiate());
  EXPECT_EQ(made->getType(), ozColorSet4f::getClassType());
  EXPECT_EQ(static_cast<ozColorSet4f *>(made.get())->color()->getCount(), 0u);
}

TEST(AttributeSets, ClonesHaveElementsOfTheirOwn) {
  Held<ozIndexSet> indices(indexSet({3, 1, 2}));
  Held<ozContainer> cloned(indices->clone(ozContainer::CLONE_DEEP));
  indices->index()->set(0, 9);
  ozIndexSet *const copy = static_cast<ozIndexSet *>(cloned.get());
  ASSERT_EQ(copy->index()->getCount(), 3u);
  EXPECT_EQ(copy->index()->get(0), 3);
}

TEST(AttributeSets, CopiesHaveElementsAndACountOfTheirOwn) {
  Held<ozNormalSet3f> normals(normalSet({ozVec3f(0, 0, 1), ozVec3f(0, 1, 0)}));
  Held<ozNormalSet3f> copy(new ozNormalSet3f(*normals));
  EXPECT_EQ(copy->getRefCount(), 1u);
  normals->vector()->set(0, ozVec3f(1, 0, 0));
  ASSERT_EQ(copy->vector()->getCount(), 2u);
  EXPECT_EQ(copy->vector()->get(0), ozVec3f(0, 0, 1));
  *copy = *normals;
  EXPECT_EQ(copy->vector()->get(0), ozVec3f(1, 0, 0));
}

TEST(AttributeSets, OfThreeColorsKeepAFourthFloatBehindTheLast) {
  Held<ozColorSet3f> colors(new ozColorSet3f(2));
  colors->color()->set(0, ozVec3f(1, 1, 1));
  colors->color()->set(1, ozVec3f(1, 1, 1));
  ozGLAttr const attr = attrOf(colors.get());
  EXPECT_GE(colors->color()->getSize(), 3u);
  EXPECT_EQ(reinterpret_cast<float *>(attr.data)[6], 0.0f);
}

} // namespace
