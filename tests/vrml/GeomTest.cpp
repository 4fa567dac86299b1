#include <gtest/gtest.h>

#include <math.h>

#include <set>

#include "oz/vlGeom.h"
#include "readText.h"
#include "vrml/PositionTable.h"

namespace {

char const *const Cube = "coord Coordinate { point [ 0 0 0, 1 0 0, 1 1 0, 0 1 0, 0 0 1, 1 0 1, 1 1 1, 0 1 1 ] } "
                         "coordIndex [ 0 3 2 1 -1 4 5 6 7 -1 0 1 5 4 -1 1 2 6 5 -1 2 3 7 6 -1 3 0 4 7 -1 ]";

/// A face set read from the fields of one.
class FaceSet {
public:
  explicit FaceSet(std::string const &fields) : _reading("Shape { geometry IndexedFaceSet { " + fields + " } }") {
    set = static_cast<ozIndexedFaceSet *>(_reading.child<ozShape>(0)->getGeometry(0));
    set->cleanFields();
  }
  ozMFVec3f *normals() { return static_cast<ozNormalSet3f *>(set->getNormalSet())->vector(); }
  ozVec3f normalOf(unsigned int corner) {
    return normals()->get(static_cast<unsigned int>(set->normalIndex()->get(corner)));
  }
  ozIndexedFaceSet *set;

private:
  Reading _reading;
};

TEST(Geom, ACubeWithASmallCreaseGetsThreeNormalsAPosition) {
  FaceSet cube(std::string(Cube) + " creaseAngle 0.5");
  EXPECT_EQ(24u, cube.normals()->getCount());
  EXPECT_EQ(24u, cube.set->normalIndex()->getCount());
  EXPECT_TRUE(cube.normalOf(0) == ozVec3f(0, 0, -1));
  EXPECT_TRUE(cube.normalOf(4) == ozVec3f(0, 0, 1));
  EXPECT_EQ(ozGeoSet::PER_VERTEX_NORMAL, cube.set->getNormalBind());
}

TEST(Geom, ACubeWithAWideCreaseGetsTheMeanOfThreeFacesAPosition) {
  FaceSet cube(std::string(Cube) + " creaseAngle 1.6");
  ASSERT_EQ(8u, cube.normals()->getCount());
  float const third = static_cast<float>(-1 / sqrt(3.0));
  ozVec3f const normal = cube.normalOf(0);
  for (int i = 0; i < 3; ++i) EXPECT_NEAR(third, normal[i], 1e-6);
}

TEST(Geom, ACreaseOfZeroKeepsEvenEqualNormalsApart) {
  FaceSet flat("coord Coordinate { point [ 0 0 0, 1 0 0, 1 1 0, 0 1 0 ] } coordIndex [ 0 1 2 -1 0 2 3 -1 ]");
  EXPECT_EQ(6u, flat.normals()->getCount());
}

TEST(Geom, OnePositionUnderTwoIndicesIsSmoothedTogether) {
  FaceSet roof("coord Coordinate { point [ 0 0 0, 0 1 0, -1 0 -1, 0 0 0, 0 1 0, 1 0 -1 ] } "
               "coordIndex [ 0 1 2 -1 3 5 4 -1 ] creaseAngle 3");
  EXPECT_EQ(4u, roof.normals()->getCount());
  EXPECT_EQ(roof.set->normalIndex()->get(0), roof.set->normalIndex()->get(3));
}

TEST(Geom, PositiveAndNegativeZeroAreDifferentPositions) {
  FaceSet roof("coord Coordinate { point [ 0 0 0, 0 1 0, -1 0 -1, -0 0 0, 0 1 0, 1 0 -1 ] } "
               "coordIndex [ 0 1 2 -1 3 5 4 -1 ] creaseAngle 3");
  EXPECT_EQ(5u, roof.normals()->getCount());
}

TEST(Geom, AFaceTakesItsNormalFromItsFirstThreeCorners) {
  // The first corner is concave, so the normal is reversed.
  FaceSet face("coord Coordinate { point [ 1 0.1 0, 2 1 0, 0 1 0, 0 -1 0, 2 -1 0 ] } coordIndex [ 4 0 1 2 3 -1 ]");
  EXPECT_TRUE(face.normalOf(0) == ozVec3f(0, 0, -1));
}

TEST(Geom, ACornerIsComparedWithTheFirstOfItsGroupAndNotWithTheMean) {
  // Three faces about one edge, each turned half a radian further than the one before: with a crease of 0.75 the second
  // joins the first and the third is too far from it, though not from the mean of both.
  std::string points = "0 0 0, 0 0 1";
  for (double angle : {0.0, 0.5, 1.0}) {
    char text[64];
    snprintf(text, sizeof text, ", %.9f %.9f 0", cos(angle), sin(angle));
    points += text;
  }
  FaceSet fan("coord Coordinate { point [ " + points +
              " ] } coordIndex [ 0 1 2 -1 0 1 3 -1 0 1 4 -1 ] creaseAngle 0.75");
  EXPECT_EQ(fan.set->normalIndex()->get(0), fan.set->normalIndex()->get(3));
  EXPECT_NE(fan.set->normalIndex()->get(0), fan.set->normalIndex()->get(6));
  // z x (cos, sin, 0) = (-sin, cos, 0), turned by a quarter for the mean of the first two.
  ozVec3f const mean = fan.normalOf(0);
  EXPECT_NEAR(-sin(0.25), mean[0], 1e-6);
  EXPECT_NEAR(cos(0.25), mean[1], 1e-6);
}

TEST(Geom, NormalsOfFacesThatAreSeenFromBehindAreNotReversed) {
  FaceSet face("coord Coordinate { point [ 0 0 0, 1 0 0, 1 1 0 ] } coordIndex [ 0 1 2 -1 ] ccw FALSE");
  EXPECT_TRUE(face.normalOf(0) == ozVec3f(0, 0, 1));
}

TEST(Geom, TheIndicesOfMadeNormalsHoldNoMarks) {
  FaceSet two("coord Coordinate { point [ 0 0 0, 1 0 0, 1 1 0 ] } coordIndex [ 0 1 2 -1 0 2 1 -1 ]");
  ASSERT_EQ(6u, two.set->normalIndex()->getCount());
  for (unsigned int i = 0; i < 6; ++i) EXPECT_GE(two.set->normalIndex()->get(i), 0);
  EXPECT_NE(two.set->getCoordIndexSet(), two.set->getNormalIndexSet());
}

TEST(Geom, AMeshWithAllItsCornersAtOnePlaceEnds) {
  std::string text = "coord Coordinate { point [ 1 2 3 ] } coordIndex [";
  for (int i = 0; i < 12000; ++i) text += " 0 0 0 -1"; // all pairs: six hundred million comparisons
  FaceSet set(text + " ]");
  EXPECT_EQ(36000u, set.normals()->getCount());
}

TEST(Geom, GivenNormalsAreLeftAlone) {
  FaceSet face("coord Coordinate { point [ 0 0 0, 1 0 0, 1 1 0 ] } coordIndex [ 0 1 2 -1 ] "
               "normal Normal { vector [ 1 0 0 ] } normalPerVertex FALSE");
  EXPECT_EQ(1u, face.normals()->getCount());
  EXPECT_EQ(ozGeoSet::PER_PRIM_NORMAL, face.set->getNormalBind());
}

TEST(Geom, MadeNormalsBindPerVertexWhateverTheFileSays) {
  FaceSet face("coord Coordinate { point [ 0 0 0, 1 0 0, 1 1 0 ] } coordIndex [ 0 1 2 -1 ] normalPerVertex FALSE");
  EXPECT_EQ(ozGeoSet::PER_VERTEX_NORMAL, face.set->getNormalBind());
}

TEST(Geom, WithoutFacesTheNormalSetIsEmpty) {
  FaceSet none("");
  EXPECT_EQ(0u, none.normals()->getCount());
}

TEST(Geom, ColoursAreBoundOnlyWhereTheyAreAndTextureCoordinatesPerVertex) {
  FaceSet plain(Cube);
  EXPECT_EQ(ozGeoSet::NO_COLOR, plain.set->getColorBind());
  EXPECT_EQ(ozGeoSet::NO_TEX_COORD, plain.set->getTexCoordBind());
  FaceSet rich(std::string(Cube) + " color Color { color [ 1 0 0 ] } texCoord TextureCoordinate { point [ 0 0 ] }");
  EXPECT_EQ(ozGeoSet::PER_VERTEX_COLOR, rich.set->getColorBind());
  EXPECT_EQ(ozGeoSet::PER_VERTEX_TEX_COORD, rich.set->getTexCoordBind());
}

TEST(Geom, FacesTooShortAndCornersOutsideGetAZeroNormal) {
  FaceSet odd("coord Coordinate { point [ 0 0 0, 1 0 0, 1 1 0 ] } coordIndex [ 0 1 -1 0 1 9 -1 -1 0 1 2 -1 -7 ]");
  ozVec3f const zero;
  EXPECT_TRUE(odd.normalOf(0) == zero);
  EXPECT_TRUE(odd.normalOf(4) == zero); // the corner outside
  EXPECT_TRUE(odd.normalOf(5) == ozVec3f(0, 0, 1));
}

TEST(Geom, WithoutCoordinatesEveryCornerGetsAZeroNormal) {
  FaceSet none("coordIndex [ 0 1 2 -1 ]");
  EXPECT_TRUE(none.normalOf(2) == ozVec3f());
}

TEST(StaticBound, WithoutInputsTheBoundStaysDynamic) {
  FaceSet face(Cube);
  EXPECT_EQ(ozGeometry::DYNAMIC, face.set->getBoundMode());
}

TEST(StaticBound, IsAroundTheKeyValuesOfTheSources) {
  ozIndexedFaceSet *const set = new ozIndexedFaceSet;
  set->ref();
  ozCoordSet3f *const coords = new ozCoordSet3f;
  set->setCoordSet(coords);
  ozNormalInterpolator normals;
  normals.keyValue()->set(0, ozVec3f(1, 2, 3));
  normals.keyValue()->set(1, ozVec3f(-1, 5, 0));
  normals.value()->connect(coords->point());
  vlGeom::calcStaticBound(set);
  ozBoxBound box;
  set->getBoxBound(box);
  EXPECT_EQ(ozGeometry::STATIC, set->getBoundMode());
  EXPECT_TRUE(box.min == ozVec3f(-1, 2, 0));
  EXPECT_TRUE(box.max == ozVec3f(1, 5, 3));
  set->unref();
}

TEST(StaticBound, OfACoordinateInterpolatorAloneIsEmpty) {
  ozIndexedFaceSet *const set = new ozIndexedFaceSet;
  set->ref();
  ozCoordSet3f *const coords = new ozCoordSet3f;
  set->setCoordSet(coords);
  ozCoordinateInterpolator interpolator;
  interpolator.keyValue()->set(0, ozVec3f(1, 2, 3));
  interpolator.value()->connect(coords->point());
  vlGeom::calcStaticBound(set);
  ozBoxBound box;
  set->getBoxBound(box);
  EXPECT_EQ(ozGeometry::STATIC, set->getBoundMode());
  EXPECT_TRUE(box.isEmpty());
  set->unref();
}

TEST(StaticBound, ASourceWithoutKeyValuesIsPassedOver) {
  ozIndexedFaceSet *const set = new ozIndexedFaceSet;
  set->ref();
  ozCoordSet3f *const coords = new ozCoordSet3f;
  set->setCoordSet(coords);
  ozCoordSet3f other;
  ozNormalInterpolator normals;
  normals.keyValue()->set(0, ozVec3f(1, 1, 1));
  other.point()->connect(coords->point());
  normals.value()->connect(coords->point());
  vlGeom::calcStaticBound(set);
  ozBoxBound box;
  set->getBoxBound(box);
  EXPECT_TRUE(box.min == ozVec3f(1, 1, 1));
  set->unref();
}

TEST(PositionTableTest, HasAPrimeNumberOfBuckets) {
  EXPECT_EQ(3u, PositionTable::bucketCount(0));
  EXPECT_EQ(3u, PositionTable::bucketCount(3));
  EXPECT_EQ(7u, PositionTable::bucketCount(4));
  EXPECT_EQ(1021u, PositionTable::bucketCount(510));
  EXPECT_EQ(2147483647u, PositionTable::bucketCount(4000000000u));
}

TEST(PositionTableTest, HashesItsKeyByteByByte) {
  unsigned char const two[] = {1, 2};
  EXPECT_EQ(0x12u, PositionTable::hash(two, 2));
  // Eight bytes of 0xff, worked out by the rule with a wider type.
  unsigned char const many[8] = {255, 255, 255, 255, 255, 255, 255, 255};
  unsigned int h = 0;
  for (int i = 0; i < 8; ++i) {
    unsigned long long const wide = (static_cast<unsigned long long>(h) * 16 + 255) % 4294967296ull;
    h = static_cast<unsigned int>(wide ^ ((wide / 268435456ull) * 268435456ull >> 24));
  }
  EXPECT_EQ(h, PositionTable::hash(many, 8));
}

TEST(PositionTableTest, KeepsPositionsInTheOrderOfTheirFirstCorner) {
  PositionTable table(1);
  table.add(ozVec3f(1, 0, 0), 0, 0);
  table.add(ozVec3f(2, 0, 0), 0, 1);
  table.add(ozVec3f(1, 0, 0), 1, 2);
  ASSERT_EQ(2u, table.getCount());
  EXPECT_EQ(4u, table.get(0)->pairs.getCount());
  EXPECT_EQ(2, table.get(0)->pairs[3]);
  EXPECT_EQ(2u, table.get(1)->pairs.getCount());
}

} // namespace
