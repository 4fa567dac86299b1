#include "geometry/geometryFixture.h"

#include <cmath>

namespace {

ozVec3f const DOWN(0, 0, -1), UP(0, 0, 1);

// Casts down from z = 10 at (x, y); gives the index of the primitive that was hit, -1 for none.
int hitFrom(ozGeometry *set, float x, float y, ozVec3f const &direction = DOWN) {
  ozIsectAction action;
  ozHit const &hit = cast(action, set, ozVec3f(x, y, direction[2] < 0 ? 10.0f : -10.0f), direction, 100);
  return hit.isValid() ? hit.primIndex : -1;
}

// A row of unit squares' lower right halves in the plane z = 0: triangle i has the corners (i, 0), (i+1, 0), (i+1, 1).
std::vector<ozVec3f> triangleRow(int count) {
  std::vector<ozVec3f> points;
  for (int i = 0; i < count; ++i) {
    float const x = static_cast<float>(i);
    points.push_back(ozVec3f(x, 0, 0));
    points.push_back(ozVec3f(x + 1, 0, 0));
    points.push_back(ozVec3f(x + 1, 1, 0));
  }
  return points;
}

TEST(TriSetIsect, TellsWhichTriangleWasHit) {
  Held<ozTriSet> set(triSet(triangleRow(3), 3));
  for (int i = 0; i < 3; ++i) EXPECT_EQ(hitFrom(set.get(), static_cast<float>(i) + 0.75f, 0.25f), i);
  EXPECT_EQ(hitFrom(set.get(), 0.25f, 0.75f), -1);
}

TEST(TriSetIsect, GoesThroughTheIndex) {
  Held<ozTriSet> set(triSet(triangleRow(3), 2));
  set->setCoordIndexSet(indexSet({6, 7, 8, 0, 1, 2}));
  EXPECT_EQ(hitFrom(set.get(), 2.75f, 0.25f), 0);
  EXPECT_EQ(hitFrom(set.get(), 0.75f, 0.25f), 1);
  EXPECT_EQ(hitFrom(set.get(), 1.75f, 0.25f), -1);
}

TEST(TriSetIsect, ReportsTheNearestWhateverTheOrder) {
  for (bool nearFirst : {true, false}) {
    std::vector<ozVec3f> points;
    for (float z : {nearFirst ? 5.0f : 1.0f, nearFirst ? 1.0f : 5.0f}) {
      points.push_back(ozVec3f(0, 0, z));
      points.push_back(ozVec3f(4, 0, z));
      points.push_back(ozVec3f(0, 4, z));
    }
    Held<ozTriSet> set(triSet(points, 2));
    ozIsectAction action;
    ozHit const &hit = cast(action, set.get(), ozVec3f(1, 1, 10), DOWN, 100);
    ASSERT_TRUE(hit.isValid());
    EXPECT_EQ(hit.distance, 5.0f);
    EXPECT_EQ(hit.primIndex, nearFirst ? 0 : 1);
    EXPECT_EQ(hit.geometry, set.get());
  }
}

TEST(TriSetIsect, OfEqualTrianglesTheLastIsHit) {
  for (int count = 1; count <= 10; ++count) {
    std::vector<ozVec3f> points;
    for (int i = 0; i < count; ++i)
      for (ozVec3f const &point : triangleRow(1)) points.push_back(point);
    Held<ozTriSet> set(triSet(points, count));
    EXPECT_EQ(hitFrom(set.get(), 0.75f, 0.25f), count - 1);
  }
}

TEST(TriSetIsect, CullsByTheCullFace) {
  Held<ozTriSet> set(triSet(triangleRow(1), 1));
  auto const hits = [&](ozContext::CullFaceEnum cull) {
    set->setCullFace(cull);
    return std::make_pair(hitFrom(set.get(), 0.75f, 0.25f, DOWN), hitFrom(set.get(), 0.75f, 0.25f, UP));
  };
  EXPECT_EQ(hits(ozContext::NO_CULL), std::make_pair(0, 0));
  EXPECT_EQ(hits(ozContext::BACK_CULL), std::make_pair(0, -1));
  EXPECT_EQ(hits(ozContext::FRONT_CULL), std::make_pair(-1, 0));
  EXPECT_EQ(hits(ozContext::BOTH_CULL), std::make_pair(-1, -1));
}

TEST(TriSetIsect, WithoutCoordinatesNothingIsHit) {
  Held<ozTriSet> set(new ozTriSet);
  set->setBoundMode(ozGeometry::STATIC);
  ozBoxBound box;
  box.min = -1.0f;
  box.max = 1.0f;
  set->setBoxBound(box);
  set->setPrimCount(1);
  EXPECT_EQ(hitFrom(set.get(), 0, 0), -1);
}

TEST(TriSetIsect, IsNotTestedBesideItsBound) {
  Held<ozTriSet> set(triSet(triangleRow(1), 1));
  ozBoxBound box;
  box.min.set(50, 50, 50);
  box.max.set(60, 60, 60);
  set->setBoundMode(ozGeometry::STATIC);
  set->setBoxBound(box);
  EXPECT_EQ(hitFrom(set.get(), 0.75f, 0.25f), -1);
}

TEST(TriSetIsect, ReturnsWhetherSomethingWasHit) {
  Held<ozTriSet> set(triSet(triangleRow(1), 1));
  ozIsectAction action;
  int result = -1;
  cast(action, set.get(), ozVec3f(0.75f, 0.25f, 10), DOWN, 100, &result);
  EXPECT_EQ(result, 1);
  cast(action, set.get(), ozVec3f(0.25f, 0.75f, 10), DOWN, 100, &result);
  EXPECT_EQ(result, 0);
}

TEST(TriSetIsect, ReadsInterleavedCoordinatesByTheirStride) {
  ozData *const data = new (4 * 12) ozData;
  float *const floats = static_cast<float *>(data->getData());
  float const values[] = {0, 0, 0, 9, 1, 0, 0, 9, 1, 1, 0, 9};
  for (int i = 0; i < 12; ++i) floats[i] = values[i];
  ozCoordSet3f *const coords = new ozCoordSet3f(data, 16, 0);
  coords->point()->setCount(3);
  Held<ozTriSet> set(new ozTriSet);
  set->setCoordSet(coords);
  set->setPrimCount(1);
  EXPECT_EQ(hitFrom(set.get(), 0.75f, 0.25f), 0);
}

TEST(QuadSetIsect, TestsBothHalvesOfAQuad) {
  std::vector<ozVec3f> points;
  for (float x : {0.0f, 5.0f}) {
    points.push_back(ozVec3f(x, 0, 0));
    points.push_back(ozVec3f(x + 1, 0, 0));
    points.push_back(ozVec3f(x + 1, 1, 0));
    points.push_back(ozVec3f(x, 1, 0));
  }
  Held<ozQuadSet> set(new ozQuadSet);
  set->setCoordSet(coordSet(points));
  set->setPrimCount(2);
  EXPECT_EQ(hitFrom(set.get(), 0.75f, 0.25f), 0); // (0, 1, 2)
  EXPECT_EQ(hitFrom(set.get(), 0.25f, 0.75f), 0); // (0, 2, 3)
  EXPECT_EQ(hitFrom(set.get(), 5.75f, 0.25f), 1);
  EXPECT_EQ(hitFrom(set.get(), 5.25f, 0.75f), 1);
  EXPECT_EQ(hitFrom(set.get(), 3, 0.5f), -1);
  set->setCullFace(ozContext::BOTH_CULL);
  EXPECT_EQ(hitFrom(set.get(), 0.75f, 0.25f), -1);
}

// A zigzag strip over unit squares: vertices (0, 0), (0, 1), (1, 0), (1, 1), ... turn clockwise as seen from above, so
// the strip is listed upper edge first.
std::vector<ozVec3f> zigzag(int count, float x0) {
  std::vector<ozVec3f> points;
  for (int i = 0; i < count; ++i)
    points.push_back(ozVec3f(x0 + static_cast<float>(i / 2), static_cast<float>(1 - i % 2), 0));
  return points;
}

std::vector<ozVec3f> twoStrips() {
  std::vector<ozVec3f> points = zigzag(5, 0);
  std::vector<ozVec3f> const more = zigzag(4, 10);
  points.insert(points.end(), more.begin(), more.end());
  return points;
}

TEST(TriStripSetIsect, CountsTrianglesOverTheWholeSet) {
  Held<ozTriStripSet> set(new ozTriStripSet);
  set->setCoordSet(coordSet(twoStrips()));
  setLengths(set->stripLength(), {5, 4});
  set->setPrimCount(2);
  // Strip one: (0,1) (0,0) (1,1) | (0,0) (1,1) (1,0) | (1,1) (1,0) (2,1); strip two alike from x = 10 on.
  EXPECT_EQ(hitFrom(set.get(), 0.25f, 0.75f), 0);
  EXPECT_EQ(hitFrom(set.get(), 0.75f, 0.25f), 1);
  EXPECT_EQ(hitFrom(set.get(), 1.25f, 0.75f), 2);
  EXPECT_EQ(hitFrom(set.get(), 10.25f, 0.75f), 3);
  EXPECT_EQ(hitFrom(set.get(), 10.75f, 0.25f), 4);
}

TEST(TriStripSetIsect, CullsAllItsTrianglesAlike) {
  Held<ozTriStripSet> set(new ozTriStripSet);
  set->setCoordSet(coordSet(zigzag(4, 0)));
  setLengths(set->stripLength(), {4});
  set->setPrimCount(1);
  EXPECT_EQ(hitFrom(set.get(), 0.25f, 0.75f, UP), -1);
  EXPECT_EQ(hitFrom(set.get(), 0.75f, 0.25f, UP), -1);
  set->setCullFace(ozContext::FRONT_CULL);
  EXPECT_EQ(hitFrom(set.get(), 0.25f, 0.75f, UP), 0);
  EXPECT_EQ(hitFrom(set.get(), 0.75f, 0.25f, UP), 1);
  EXPECT_EQ(hitFrom(set.get(), 0.25f, 0.75f), -1);
}

TEST(TriStripSetIsect, CullsNothingThroughAnIndex) {
  Held<ozTriStripSet> set(new ozTriStripSet);
  set->setCoordSet(coordSet(zigzag(4, 0)));
  set->setCoordIndexSet(indexSet({0, 1, 2, 3}));
  setLengths(set->stripLength(), {4});
  set->setPrimCount(1);
  EXPECT_EQ(hitFrom(set.get(), 0.25f, 0.75f), 0);
  EXPECT_EQ(hitFrom(set.get(), 0.25f, 0.75f, UP), 0);
  set->setCullFace(ozContext::BOTH_CULL);
  EXPECT_EQ(hitFrom(set.get(), 0.25f, 0.75f), -1);
}

TEST(TriFanSetIsect, CountsTrianglesOverTheWholeSet) {
  Held<ozTriFanSet> set(new ozTriFanSet);
  std::vector<ozVec3f> points = {ozVec3f(0, 0, 0),  ozVec3f(1, 0, 0),  ozVec3f(0, 1, 0),  ozVec3f(-1, 0, 0),
                                 ozVec3f(10, 0, 0), ozVec3f(11, 0, 0), ozVec3f(10, 1, 0), ozVec3f(9, 0, 0)};
  set->setCoordSet(coordSet(points));
  setLengths(set->fanLength(), {4, 4});
  set->setPrimCount(2);
  EXPECT_EQ(hitFrom(set.get(), 0.25f, 0.25f), 0);
  EXPECT_EQ(hitFrom(set.get(), -0.25f, 0.25f), 1);
  EXPECT_EQ(hitFrom(set.get(), 10.25f, 0.25f), 2);
  EXPECT_EQ(hitFrom(set.get(), 9.75f, 0.25f), 3);
  EXPECT_EQ(hitFrom(set.get(), 0.25f, 0.25f, UP), -1);
  set->setCoordIndexSet(indexSet({4, 5, 6, 7, 0, 1, 2, 3}));
  EXPECT_EQ(hitFrom(set.get(), 0.25f, 0.25f), 2);
  EXPECT_EQ(hitFrom(set.get(), 0.25f, 0.25f, UP), -1); // unlike strips, also through an index
}

TEST(PolySetIsect, TellsWhichPolygonWasHit) {
  Held<ozPolySet> set(new ozPolySet);
  std::vector<ozVec3f> points = {ozVec3f(0, 0, 0), ozVec3f(1, 0, 0), ozVec3f(1, 1, 0), ozVec3f(0, 1, 0),
                                 ozVec3f(5, 0, 0), ozVec3f(6, 0, 0), ozVec3f(6, 1, 0)};
  set->setCoordSet(coordSet(points));
  setLengths(set->polyLength(), {4, 3});
  set->setPrimCount(2);
  EXPECT_EQ(hitFrom(set.get(), 0.75f, 0.25f), 0);
  EXPECT_EQ(hitFrom(set.get(), 0.25f, 0.75f), 0);
  EXPECT_EQ(hitFrom(set.get(), 5.75f, 0.25f), 1);
}

TEST(PolySetIsect, APolygonThatIsNoneShiftsTheLaterOnesByTwo) {
  for (bool indexed : {false, true})
    for (int shortLength : {0, 1, 2}) {
      Held<ozPolySet> set(new ozPolySet);
      std::vector<ozVec3f> points = {ozVec3f(90, 90, 0), ozVec3f(90, 90, 0)};
      for (ozVec3f const &point : triangleRow(1)) points.push_back(point);
      set->setCoordSet(coordSet(points));
      if (indexed) set->setCoordIndexSet(indexSet({0, 1, 2, 3, 4}));
      setLengths(set->polyLength(), {shortLength, 3});
      set->setPrimCount(2);
      ozBoxBound box;
      box.min.set(0, 0, -1);
      box.max.set(100, 100, 1);
      set->setBoundMode(ozGeometry::STATIC);
      set->setBoxBound(box);
      EXPECT_EQ(hitFrom(set.get(), 0.75f, 0.25f), 1) << shortLength;
    }
}

TEST(PointSetIsect, IsHitAtItsBound) {
  Held<ozPointSet> points(new ozPointSet);
  points->setCoordSet(coordSet({ozVec3f(0, 0, 0), ozVec3f(4, 4, 4)}));
  points->setPrimCount(2);
  ozIsectAction action;
  int result = 0;
  ozHit const &hit = cast(action, points.get(), ozVec3f(2, 2, 10), DOWN, 50, &result);
  EXPECT_EQ(result, 1);
  EXPECT_EQ(hit.geometry, points.get());
  EXPECT_EQ(hit.distance, 50.0f);
  Held<ozLineSet> lines(new ozLineSet);
  lines->setCoordSet(points->getCoordSet());
  lines->setPrimCount(1);
  EXPECT_EQ(cast(action, lines.get(), ozVec3f(2, 2, 10), DOWN, 50).geometry, lines.get());
}

// ---- line strips

class Strip : public ozLineStripSet {
public:
  Strip() : ozLineStripSet(ozLineStripSet::getClassType()) {}
  using ozLineStripSet::createSegFromPoints;
  using ozLineStripSet::fillHitData;
  using ozLineStripSet::isectSegs;
};

class LineStripIsect : public ::testing::Test {
protected:
  LineStripIsect() {
    set->setCoordSet(coordSet({ozVec3f(0, 0, 0), ozVec3f(10, 0, 0), ozVec3f(10, 10, 0)}));
    set->setCoordIndexSet(indexSet({0, 1, 2}));
    setLengths(set->stripLength(), {3});
    set->setPrimCount(1);
  }
  // With the identity on top, the squared distance may be up to (1 + 1 + 1) * 2 = 6.
  ozHit const &at(float x, float y, int *result = nullptr) {
    return cast(action, set.get(), ozVec3f(x, y, 5), DOWN, 100, result);
  }
  Held<Strip> set{new Strip};
  ozIsectAction action;
};

TEST_F(LineStripIsect, ALineIsHitWithinItsTolerance) {
  ozHit const &hit = at(4, -2);
  ASSERT_TRUE(hit.isValid());
  EXPECT_EQ(hit.geometry, set.get());
  EXPECT_EQ(hit.primIndex, 0);
  EXPECT_EQ(hit.distance, 5.0f);
  EXPECT_EQ(hit.localPoint, ozVec3f(4, 0, 0)); // on the line, not on the ray
  EXPECT_EQ(hit.worldPoint, ozVec3f(4, 0, 0));
  EXPECT_FALSE(at(4, -2.5f).isValid()); // 6.25 is too far
}

TEST_F(LineStripIsect, TellsWhichPairOfTheIndexWasHit) { EXPECT_EQ(at(10, 7).primIndex, 1); }

TEST_F(LineStripIsect, TheEndsOfStripsDoNotCount) {
  set->stripLength()->set(0, 2);
  EXPECT_EQ(at(10, 7).primIndex, 1);
}

TEST_F(LineStripIsect, ReturnsOneWhetherOrNotSomethingWasHit) {
  int result = 0;
  EXPECT_FALSE(at(-50, 80, &result).isValid());
  EXPECT_EQ(result, 1);
}

TEST_F(LineStripIsect, WithoutAnIndexOrCoordinatesIsAMiss) {
  int result = 1;
  set->setCoordIndexSet(nullptr);
  EXPECT_FALSE(at(4, 0, &result).isValid());
  EXPECT_EQ(result, 0);
  set->setCoordIndexSet(indexSet({0, 1}));
  set->setCoordSet(nullptr);
  EXPECT_FALSE(at(4, 0, &result).isValid());
  EXPECT_EQ(result, 0);
  set->setCoordSet(coordSet({ozVec3f(0, 0, 0)}));
  set->setCoordIndexSet(new ozIndexSet);
  EXPECT_FALSE(at(4, 0, &result).isValid());
  EXPECT_EQ(result, 0);
}

TEST_F(LineStripIsect, LooksNeitherAtTheBoundNorAtTheCullFace) {
  set->setCullFace(ozContext::BOTH_CULL);
  ozBoxBound box;
  box.min.set(50, 50, 50);
  box.max.set(60, 60, 60);
  set->setBoundMode(ozGeometry::STATIC);
  set->setBoxBound(box);
  EXPECT_TRUE(at(4, 0).isValid());
}

TEST_F(LineStripIsect, TheToleranceGrowsWithScaleAndTranslation) {
  aim(action, ozVec3f(4, -3, 5), DOWN, 100);
  action.pushMatrix();
  set->isect(&action);
  EXPECT_FALSE(action.hit.isValid()); // 9 against 6
  action.translate(64, -32, 0);       // (64 + 32) / 32 = 3 more: 9
  set->isect(&action);
  ASSERT_TRUE(action.hit.isValid());
  EXPECT_EQ(action.hit.worldPoint, ozVec3f(68, -32, 0));
  action.popMatrix();
  aim(action, ozVec3f(4, -3, 5), DOWN, 100);
  action.pushMatrix();
  action.scale(1.5f, 1.5f, 1.5f); // 4.5 * 2 = 9; the ray stays as it is
  set->isect(&action);
  EXPECT_TRUE(action.hit.isValid());
  action.popMatrix();
}

TEST_F(LineStripIsect, ASegmentOfTwoPointsHasLengthOneAndTheirDifference) {
  ozSeg seg;
  set->createSegFromPoints(ozVec3f(1, 2, 3), ozVec3f(5, 7, 9), seg);
  EXPECT_EQ(seg.getOrigin(), ozVec3f(1, 2, 3));
  EXPECT_EQ(seg.getDirection(), ozVec3f(4, 5, 6));
  EXPECT_EQ(seg.getLength(), 1.0f);
}

TEST_F(LineStripIsect, FindsWhereTwoLinesAreClosest) {
  ozSeg seg, ray;
  float s, t;
  set->createSegFromPoints(ozVec3f(0, 0, 0), ozVec3f(8, 0, 0), seg);
  ray.setOrigin(2, -3, 1);
  ray.setDirection(0, 1, 0);
  ray.setLength(10);
  set->isectSegs(seg, ray, s, t);
  EXPECT_EQ(s, 0.25f);
  EXPECT_EQ(t, 3.0f);
  ray.setDirection(1, 0, 0); // parallel
  set->isectSegs(seg, ray, s, t);
  EXPECT_EQ(s, -1.0f);
  EXPECT_EQ(t, -1.0f);
}

TEST_F(LineStripIsect, BeyondTheEndsOfTheLineIsAMiss) {
  EXPECT_FALSE(at(-0.5f, 0).isValid());
  EXPECT_TRUE(at(0, 0).isValid());
}

} // namespace
