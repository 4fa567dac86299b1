#include "geometry/geometryFixture.h"

#include <cmath>

namespace {

// Opens what is protected, for any primitive set.
template <class Set> class Open : public Set {
public:
  Open() : Set(Set::getClassType()) {}
  using Set::_bpcTolerance;
  using Set::bpcBuildDataPrim;
  using Set::getNormBB;
  using Set::getNormBBDelta;
  using Set::getPrimNormBB;
  using Set::getRefPoint;
  using Set::getTriNormal;
};

struct Box {
  ozVec3f min, max;
};

template <class Set> Box faceBox(Set *set, int prim, int first, int len) {
  Box box;
  set->getPrimFaceNormBB(prim, first, len, box.min, box.max);
  return box;
}

ozVec3f const O(0, 0, 0), X(1, 0, 0), Y(0, 1, 0), Z(0, 0, 1);

TEST(BPCull, StartsWithoutDataAndRebuildsByItself) {
  Held<ozTriSet> set(new ozTriSet);
  EXPECT_FALSE(set->existsBPCullData());
  EXPECT_EQ(set->getBPCullPoint(), nullptr);
  EXPECT_EQ(set->getBPCullCenter(), nullptr);
  EXPECT_EQ(set->getBPCullDelta(), nullptr);
  EXPECT_EQ(set->getBPCullDynamicBuildMode(), 1);
}

TEST(BPCull, BoundsFacesByDefaultAndStoredNormalsInLineStrips) {
  EXPECT_EQ(Held<ozTriSet>(new ozTriSet)->getBPCullPrimNormModeEnable(), 0);
  EXPECT_EQ(Held<ozQuadSet>(new ozQuadSet)->getBPCullPrimNormModeEnable(), 0);
  EXPECT_EQ(Held<ozPolySet>(new ozPolySet)->getBPCullPrimNormModeEnable(), 0);
  EXPECT_EQ(Held<ozTriStripSet>(new ozTriStripSet)->getBPCullPrimNormModeEnable(), 0);
  EXPECT_EQ(Held<ozTriFanSet>(new ozTriFanSet)->getBPCullPrimNormModeEnable(), 0);
  EXPECT_EQ(Held<ozLineStripSet>(new ozLineStripSet)->getBPCullPrimNormModeEnable(), 1);
}

template <class Set> int modeAfterSetting(unsigned char on) {
  Held<Set> set(new Set);
  set->setBPCullPrimNormModeEnable(on);
  return set->getBPCullPrimNormModeEnable();
}

TEST(BPCull, LetsOnlySetsOfFacesChangeThat) {
  EXPECT_EQ(modeAfterSetting<ozTriSet>(1), 1);
  EXPECT_EQ(modeAfterSetting<ozQuadSet>(1), 1);
  EXPECT_EQ(modeAfterSetting<ozPolySet>(1), 1);
  EXPECT_EQ(modeAfterSetting<ozTriStripSet>(1), 1);
  EXPECT_EQ(modeAfterSetting<ozTriFanSet>(1), 1);
  EXPECT_EQ(modeAfterSetting<ozLineStripSet>(0), 1);
}

TEST(BPCull, KeepsAPointAnAxisAndAThresholdForEachPrimitive) {
  Held<ozTriSet> set(triSet({O, X, Y, Z, O, Y}, 2));
  set->buildBPCullData();
  ASSERT_TRUE(set->existsBPCullData());
  EXPECT_EQ(set->getBPCullPoint()[0], O);
  EXPECT_EQ(set->getBPCullCenter()[0], Z);
  EXPECT_EQ(set->getBPCullDelta()[0], 0.0f);
  EXPECT_EQ(set->getBPCullPoint()[1], Z);
  EXPECT_EQ(set->getBPCullCenter()[1], X); // (0 - z) x (y - z) = (0,0,-1) x (0,1,-1) = (1, 0, 0)
  EXPECT_EQ(set->getBPCullDelta()[1], 0.0f);
  set->deleteBPCullData();
  EXPECT_FALSE(set->existsBPCullData());
  EXPECT_EQ(set->getBPCullDelta(), nullptr);
}

TEST(BPCull, TakesVerticesThroughTheIndex) {
  Held<ozTriSet> set(triSet({O, X, Y, Z}, 1));
  set->setCoordIndexSet(indexSet({3, 0, 2}));
  set->buildBPCullData();
  EXPECT_EQ(set->getBPCullPoint()[0], Z);
  EXPECT_EQ(set->getBPCullCenter()[0], X);
}

TEST(BPCull, ADegeneratePrimitiveIsNeverCulled) {
  Held<ozTriSet> set(triSet({X, X, X}, 1));
  set->buildBPCullData();
  EXPECT_EQ(set->getBPCullCenter()[0], O);
  EXPECT_EQ(set->getBPCullDelta()[0], -2.0f);
}

TEST(BPCull, RefersToTheFirstVertexOfEachPrimitive) {
  Held<ozTriStripSet> set(new ozTriStripSet);
  set->setCoordSet(coordSet(somePoints(9)));
  setLengths(set->stripLength(), {4, 5});
  set->setPrimCount(2);
  set->buildBPCullData();
  EXPECT_EQ(set->getBPCullPoint()[0], ozVec3f(0, 0, 0));
  EXPECT_EQ(set->getBPCullPoint()[1], ozVec3f(4, 8, -4));
}

// ---- normals of faces

TEST(BPCull, ATriangleHasTheBoxOfItsNormalUsableOrNot) {
  Held<ozTriSet> set(triSet({O, X, Y, X, X, X}, 2));
  EXPECT_EQ(faceBox(set.get(), 0, 0, 3).min, Z);
  EXPECT_EQ(faceBox(set.get(), 0, 0, 3).max, Z);
  EXPECT_EQ(faceBox(set.get(), 1, 3, 3).min, O);
}

TEST(BPCull, AFanAndAPolygonHaveTheBoxOfTheirTriangles) {
  // A fan about z: its triangles (z, x, y) and (z, y, -x) have the normals (1, 1, 1)/sqrt 3 and (-1, 1, 1)/sqrt 3.
  std::vector<ozVec3f> const points = {Z, X, Y, ozVec3f(-1, 0, 0)};
  float const r = static_cast<float>(1 / std::sqrt(3.0));
  Held<ozTriFanSet> fan(new ozTriFanSet);
  Held<ozPolySet> poly(new ozPolySet);
  fan->setCoordSet(coordSet(points));
  poly->setCoordSet(coordSet(points));
  Box const box = faceBox(fan.get(), 0, 0, 4), other = faceBox(poly.get(), 0, 0, 4);
  EXPECT_TRUE(box.min.almostEqual(ozVec3f(-r, r, r), 1e-6f));
  EXPECT_TRUE(box.max.almostEqual(ozVec3f(r, r, r), 1e-6f));
  EXPECT_EQ(other.min, box.min);
  EXPECT_EQ(other.max, box.max);
}

TEST(BPCull, AStripTurnsEverySecondTriangle) {
  Held<ozTriStripSet> set(new ozTriStripSet);
  set->setCoordSet(coordSet({O, X, Y, ozVec3f(1, 1, 0), ozVec3f(0, 2, 0)}));
  Box const box = faceBox(set.get(), 0, 0, 5);
  EXPECT_EQ(box.min, Z);
  EXPECT_EQ(box.max, Z);
}

TEST(BPCull, ATriangleWithoutANormalDoesNotGrowTheBox) {
  Held<ozTriFanSet> set(new ozTriFanSet);
  set->setCoordSet(coordSet({O, X, X, Y}));
  EXPECT_EQ(faceBox(set.get(), 0, 0, 4).min, Z);
  Held<ozTriFanSet> flat(new ozTriFanSet);
  flat->setCoordSet(coordSet({X, X, X, X}));
  EXPECT_EQ(faceBox(flat.get(), 0, 0, 4).min, O);
}

TEST(BPCull, OtherSetsHaveNoFaces) {
  Held<ozLineSet> set(new ozLineSet);
  Box box = {X, Y};
  set->getPrimFaceNormBB(0, 0, 2, box.min, box.max);
  EXPECT_EQ(box.min, O);
  EXPECT_EQ(box.max, O);
}

class Quad : public ozQuadSet {
public:
  Quad() : ozQuadSet(ozQuadSet::getClassType()) {}
  using ozQuadSet::quadToTris;
};

TEST(BPCull, ChoosesAQuadsDiagonalByThePositionsOfItsCorners) {
  Held<Quad> set(new Quad);
  // With a = p0.p2, b = p1.p3, A = |p3|^2 |p1|^2 a^2, B = |p2|^2 |p0|^2 b^2.
  // a = 1, b = 2; A = 4*1*1 = 4, B = 1*1*4 = 4: equal, so 1
  EXPECT_EQ(set->quadToTris(X, Y, X, ozVec3f(0, 2, 0)), 1);
  // a = 2, b = 1; A = 1*1*4, B = 4*1*1: equal
  EXPECT_EQ(set->quadToTris(X, Y, ozVec3f(2, 0, 0), Y), 1);
  // a = 1, b = 1 with |p1|^2 = 2: A = 1*2*1 = 2, B = 1
  EXPECT_EQ(set->quadToTris(X, ozVec3f(1, 1, 0), X, Y), 0);
  // a > 0, b <= 0
  EXPECT_EQ(set->quadToTris(X, Y, X, ozVec3f(0, -1, 0)), 0);
  // a <= 0, b > 0
  EXPECT_EQ(set->quadToTris(X, Y, ozVec3f(-1, 0, 0), Y), 1);
  // a = -1, b = -1: A = 1, B = 1: equal
  EXPECT_EQ(set->quadToTris(X, Y, ozVec3f(-1, 0, 0), ozVec3f(0, -1, 0)), 1);
  // a = -1, b = -1, |p2|^2 = 2: A = 1, B = 2
  EXPECT_EQ(set->quadToTris(X, Y, ozVec3f(-1, 1, 0), ozVec3f(0, -1, 0)), 0);
}

TEST(BPCull, AQuadHasTheBoxOfTheTrianglesOnEitherSideOfItsDiagonal) {
  // Bent along p0-p2 and along p1-p3 alike: which two normals count tells the diagonal.
  float const r = static_cast<float>(std::sqrt(0.5));
  // p0 . p2 = -1 and p1 . p3 = 2 - 1 = 1: result 1, triangles (3, 0, 1) and (1, 2, 3).
  ozVec3f const p0(1, 0, 0), p1(0, 1, 1), p2(-1, 0, 0), p3(0, -1, 2);
  ozVec3f n1, n2, e1, e2;
  e1.sub(p0, p3);
  e2.sub(p1, p3);
  n1.cross(e1, e2);
  n1.normalize();
  e1.sub(p2, p1);
  e2.sub(p3, p1);
  n2.cross(e1, e2);
  n2.normalize();
  Held<ozQuadSet> set(new ozQuadSet);
  set->setCoordSet(coordSet({p0, p1, p2, p3}));
  Box const box = faceBox(set.get(), 0, 0, 4);
  for (int k = 0; k < 3; ++k) {
    EXPECT_NEAR(box.min[k], std::min(n1[k], n2[k]), 1e-6);
    EXPECT_NEAR(box.max[k], std::max(n1[k], n2[k]), 1e-6);
  }
  // p0 . p2 = 1 - 0.5 > 0 and p1 . p3 = -1: result 0, triangles (0, 1, 2) and (2, 3, 0), folded along p0-p2 = the y
  // axis.
  Held<ozQuadSet> bent(new ozQuadSet);
  bent->setCoordSet(coordSet({ozVec3f(0, 1, 0), ozVec3f(-1, 1, -1), ozVec3f(0, 2, 0), ozVec3f(1, 1, -1)}));
  Box const fold = faceBox(bent.get(), 0, 0, 4);
  EXPECT_NEAR(fold.max[0], r, 1e-6);
  EXPECT_NEAR(fold.min[0], -r, 1e-6);
}

TEST(BPCull, TellsWhetherATriangleHasANormal) {
  Held<Open<ozTriSet>> set(new Open<ozTriSet>);
  float x, y, z;
  EXPECT_TRUE(set->getTriNormal(O, ozVec3f(3, 0, 0), ozVec3f(0, 3, 0), x, y, z));
  EXPECT_EQ(ozVec3f(x, y, z), Z);
  EXPECT_FALSE(set->getTriNormal(X, X, X, x, y, z));
}

// ---- stored normals

Box normBox(ozGeoSet::NormalBindEnum bind, ozNormalSet *normals, int prim, int first, int len,
            ozIndexSet *index = nullptr) {
  Held<Open<ozTriSet>> set(new Open<ozTriSet>);
  set->setNormalSet(normals);
  set->setNormalBind(bind);
  set->setNormalIndexSet(index);
  Box box;
  set->getPrimNormBB(prim, first, len, box.min, box.max);
  return box;
}

TEST(BPCull, BoundsStoredNormalsByTheirBinding) {
  Held<ozNormalSet3f> normals(normalSet({X, Y, Z, ozVec3f(0, -1, 0)}));
  Box box = normBox(ozGeoSet::PER_VERTEX_NORMAL, normals.get(), 0, 1, 3);
  EXPECT_EQ(box.min, ozVec3f(0, -1, 0));
  EXPECT_EQ(box.max, ozVec3f(0, 1, 1));
  box = normBox(ozGeoSet::PER_VERTEX_NORMAL, normals.get(), 0, 2, 1);
  EXPECT_EQ(box.min, Z);
  EXPECT_EQ(box.max, Z);
  EXPECT_EQ(normBox(ozGeoSet::PER_PRIM_NORMAL, normals.get(), 1, 3, 3).min, Y);
  EXPECT_EQ(normBox(ozGeoSet::OVERALL_NORMAL, normals.get(), 2, 3, 3).max, X);
  EXPECT_EQ(normBox(ozGeoSet::NO_NORMAL, normals.get(), 2, 3, 3).max, O);
}

TEST(BPCull, BoundsStoredNormalsThroughTheirIndex) {
  Held<ozNormalSet3f> normals(normalSet({X, Y, Z}));
  EXPECT_EQ(normBox(ozGeoSet::PER_PRIM_NORMAL, normals.get(), 1, 0, 3, indexSet({0, 2})).min, Z);
}

TEST(BPCull, DoesNotReadShortNormalsAsFloats) {
  ozNormalSet3s *const normals = new ozNormalSet3s;
  normals->vector()->set(0, ozVec3s(0, 0, 32767));
  Held<ozTriSet> set(triSet({O, X, Y}, 1));
  set->setNormalSet(normals);
  set->setNormalBind(ozGeoSet::OVERALL_NORMAL);
  set->setBPCullPrimNormModeEnable(1);
  set->buildBPCullData();
  EXPECT_EQ(set->getBPCullDelta()[0], -2.0f);
}

TEST(BPCull, StoredNormalsTakeThePlaceOfFaceNormalsWhenAsked) {
  Held<ozTriSet> set(triSet({O, X, Y}, 1));
  set->setNormalSet(normalSet({X}));
  set->setNormalBind(ozGeoSet::OVERALL_NORMAL);
  set->buildBPCullData();
  EXPECT_EQ(set->getBPCullCenter()[0], Z);
  set->setBPCullPrimNormModeEnable(1);
  set->buildBPCullData();
  EXPECT_EQ(set->getBPCullCenter()[0], X);
}

// ---- the threshold

TEST(BPCull, TheThresholdIsMinusTheSineOfTheHalfAngleOfTheCone) {
  Held<Open<ozTriSet>> set(new Open<ozTriSet>);
  // The farthest corners (+-1, +-1, 1) of the box lie at the cosine 1/sqrt 3 from z: minus the sine is -sqrt(2/3).
  EXPECT_NEAR(set->getNormBBDelta(ozVec3f(-1, -1, 1), ozVec3f(1, 1, 1), Z), -std::sqrt(2.0 / 3.0), 1e-6);
  EXPECT_NEAR(set->getNormBBDelta(ozVec3f(0, 0, 1), ozVec3f(1, 0, 1), Z), -std::sqrt(0.5), 1e-6);
}

TEST(BPCull, TheThresholdOfAFlatPrimitiveIsZero) {
  Held<Open<ozTriSet>> set(new Open<ozTriSet>);
  EXPECT_EQ(set->getNormBBDelta(Z, Z, Z), 0.0f);
}

TEST(BPCull, NormalsOverMoreThanAHalfSpaceAreNeverCulled) {
  Held<Open<ozTriSet>> set(new Open<ozTriSet>);
  EXPECT_EQ(set->getNormBBDelta(ozVec3f(-1, -1, -1), ozVec3f(1, 1, 1), Z), -2.0f);
  EXPECT_EQ(set->getNormBBDelta(ozVec3f(0, 0, 0), ozVec3f(1, 0, 0), Z), -2.0f); // the cosine is 0
}

TEST(BPCull, ACornerWithoutLengthDoesNotCount) {
  Held<Open<ozTriSet>> set(new Open<ozTriSet>);
  EXPECT_EQ(set->getNormBBDelta(O, Z, Z), 0.0f);
}

// ---- the test of a primitive

class BPCullTest : public ::testing::Test {
protected:
  unsigned char front(ozGeoSet *set, ozVec3f const &eye, unsigned char ortho) {
    action.setViewVector(eye);
    action.setOrthoCamera(ortho);
    return set->isPrimBpcFrontFacing(0, &action);
  }
  ozDrawAction action;
};

TEST_F(BPCullTest, AFlatPrimitiveFacesTheEyeInFrontOfItsPlane) {
  Held<ozTriSet> set(triSet({ozVec3f(0, 0, 1), ozVec3f(1, 0, 1), ozVec3f(0, 1, 1)}, 1));
  set->buildBPCullData();
  EXPECT_TRUE(front(set.get(), ozVec3f(5, 5, 1.1f), 0));
  EXPECT_TRUE(front(set.get(), ozVec3f(5, 5, 1), 0)); // in the plane
  EXPECT_FALSE(front(set.get(), ozVec3f(5, 5, 0.9f), 0));
  // A direction is taken as it stands.
  EXPECT_TRUE(front(set.get(), ozVec3f(0, 0, 0.5f), 1));
  EXPECT_FALSE(front(set.get(), ozVec3f(0, 0, -1), 1));
}

TEST_F(BPCullTest, WithoutDataEveryPrimitiveFacesTheEye) {
  Held<ozTriSet> set(triSet({O, X, Y}, 1));
  EXPECT_TRUE(front(set.get(), ozVec3f(0, 0, -1), 1));
}

TEST_F(BPCullTest, APrimitiveThatNoDataWereBuiltForFacesTheEye) {
  Held<ozTriSet> set(triSet({O, Y, X, O, Y, X}, 1));
  set->buildBPCullData();
  set->setPrimCount(2); // rebuilds nothing
  action.setViewVector(Z);
  action.setOrthoCamera(1);
  EXPECT_FALSE(set->isPrimBpcFrontFacing(0, &action));
  EXPECT_TRUE(set->isPrimBpcFrontFacing(1, &action));
  EXPECT_TRUE(set->isPrimBpcFrontFacing(-1, &action));
}

TEST_F(BPCullTest, ANeverCulledPrimitiveFacesTheEyeFromEverywhere) {
  Held<ozTriSet> set(triSet({X, X, X}, 1));
  set->buildBPCullData();
  for (ozVec3f const &eye : {X, Y, Z, ozVec3f(-1, -1, -1)}) EXPECT_TRUE(front(set.get(), eye, 0));
}

// ---- when the data follow

TEST(BPCull, RebuildsWhenCoordinatesNormalsOrTheirIndicesAreReplaced) {
  Held<ozTriSet> set(triSet({O, X, Y}, 1));
  set->buildBPCullData();
  set->setCoordSet(coordSet({O, Y, X}));
  EXPECT_EQ(set->getBPCullCenter()[0], ozVec3f(0, 0, -1));
  set->setCoordIndexSet(indexSet({0, 2, 1}));
  EXPECT_EQ(set->getBPCullCenter()[0], Z);
  set->setBPCullPrimNormModeEnable(1);
  set->setNormalBind(ozGeoSet::OVERALL_NORMAL);
  set->setNormalSet(normalSet({X, Y}));
  EXPECT_EQ(set->getBPCullCenter()[0], X);
  set->setNormalIndexSet(indexSet({1}));
  EXPECT_EQ(set->getBPCullCenter()[0], Y);
}

TEST(BPCull, DoesNotRebuildForACountOrForTheContentOfTheCoordinates) {
  Held<ozTriSet> set(triSet({O, X, Y}, 1));
  set->buildBPCullData();
  static_cast<ozCoordSet3f *>(set->getCoordSet())->point()->set(1, Z);
  EXPECT_EQ(set->getBPCullCenter()[0], Z);
  ozVec3f *const points = set->getBPCullPoint();
  set->setPrimCount(1);
  EXPECT_EQ(set->getBPCullPoint(), points);
}

TEST(BPCull, DoesNotRebuildWhenAskedNotTo) {
  Held<ozTriSet> set(triSet({O, X, Y}, 1));
  set->buildBPCullData();
  set->setBPCullDynamicBuildMode(0);
  EXPECT_EQ(set->getBPCullDynamicBuildMode(), 0);
  set->setCoordSet(coordSet({O, Y, X}));
  EXPECT_EQ(set->getBPCullCenter()[0], Z);
}

TEST(BPCull, DoesNotBuildWhatWasNeverAskedFor) {
  Held<ozTriSet> set(triSet({O, X, Y}, 1));
  set->setCoordSet(coordSet({O, Y, X}));
  EXPECT_FALSE(set->existsBPCullData());
}

TEST(BPCull, BuildsWithLengthsAndCountsThatOverreach) {
  Held<ozPolySet> set(new ozPolySet);
  set->setCoordSet(coordSet({O, X, Y}));
  setLengths(set->polyLength(), {3, 2000000000, -4, 7});
  set->setPrimCount(6);
  set->buildBPCullData();
  EXPECT_EQ(set->getBPCullCenter()[0], Z);
  for (int i = 1; i < 6; ++i) EXPECT_EQ(set->getBPCullDelta()[i], -2.0f);
  Held<ozTriSet> negative(triSet({O, X, Y}, -2));
  negative->buildBPCullData();
  EXPECT_TRUE(negative->existsBPCullData());
}

} // namespace
