#include "geometry/geometryFixture.h"

#include <cmath>

namespace {

// A geometry of nothing, that opens what is protected.
class Plain : public ozGeometry {
  OZ_CLASS(Plain);

public:
  Plain();
  void draw(ozDrawAction *) override {}
  void cleanSideEffect(short id) override {
    ++cleanings;
    _boxBound.min = 1.0f;
    _boxBound.max = 2.0f;
    touchField(id);
  }
  using ozGeometry::cacheTri;
  using ozGeometry::isectBox;
  using ozGeometry::isectTri;
  using ozGeometry::propagateSideEffect;
  int cleanings = 0;
};
OZ_DEFINE_CLASS(Plain, "geometry test plain", ozGeometry) {}

ozBoxBound box(ozVec3f const &min, ozVec3f const &max) {
  ozBoxBound bound;
  bound.min = min;
  bound.max = max;
  return bound;
}

TEST(Geometry, HasABoundAndItsMode) {
  EXPECT_STREQ(ozGeometry::getClassType()->getName(), "Geometry");
  Held<Plain> plain(new Plain);
  EXPECT_STREQ(plain->getField(0)->getName(), "boxBound");
  EXPECT_EQ(plain->getField(0)->getType(), ozSFBoxBound::getClassType());
  EXPECT_STREQ(plain->getField(1)->getName(), "boundMode");
  EXPECT_EQ(plain->getField(1)->getType(), ozSFEnum::getClassType());
  EXPECT_STREQ(ozGeometry::getClassType()->mapEnum(1, 0), "STATIC");
  EXPECT_STREQ(ozGeometry::getClassType()->mapEnum(1, 1), "DYNAMIC");
  EXPECT_EQ(ozGeometry::STATIC, 0);
}

TEST(Geometry, StartsDynamicWithAnEmptyBound) {
  Held<Plain> plain(new Plain);
  ozBoxBound bound;
  plain->getBoxBound(bound);
  EXPECT_TRUE(bound.isEmpty());
  EXPECT_EQ(plain->getBoundMode(), ozGeometry::DYNAMIC);
  EXPECT_EQ(ozGeometry::DYNAMIC, 1);
}

TEST(Geometry, StoresABoundAndItsMode) {
  Held<Plain> plain(new Plain);
  plain->setBoxBound(box(ozVec3f(-1, -2, -3), ozVec3f(4, 5, 6)));
  plain->setBoundMode(ozGeometry::STATIC);
  ozBoxBound bound;
  plain->getBoxBound(bound);
  EXPECT_EQ(bound.min, ozVec3f(-1, -2, -3));
  EXPECT_EQ(bound.max, ozVec3f(4, 5, 6));
  EXPECT_EQ(plain->getBoundMode(), ozGeometry::STATIC);
}

TEST(Geometry, RecomputesAStaleBoundWhenItIsRead) {
  Held<Plain> plain(new Plain);
  plain->propagateSideEffect(0);
  ozBoxBound bound;
  plain->getBoxBound(bound);
  EXPECT_EQ(plain->cleanings, 1);
  EXPECT_EQ(bound.max, ozVec3f(2, 2, 2));
}

TEST(Geometry, AStoredBoundIsNotReplacedByOneThatWasStale) {
  Held<Plain> plain(new Plain);
  plain->propagateSideEffect(0);
  plain->setBoxBound(box(ozVec3f(0, 0, 0), ozVec3f(9, 9, 9)));
  ozBoxBound bound;
  plain->getBoxBound(bound);
  EXPECT_EQ(bound.max, ozVec3f(9, 9, 9));
}

TEST(Geometry, ABoundStoredThroughItsFieldIsNotReplacedEither) {
  Held<Plain> plain(new Plain);
  plain->propagateSideEffect(0);
  static_cast<ozSFBoxBound *>(plain->getField(0))->set(box(ozVec3f(0, 0, 0), ozVec3f(9, 9, 9)));
  ozBoxBound bound;
  plain->getBoxBound(bound);
  EXPECT_EQ(bound.max, ozVec3f(9, 9, 9));
}

TEST(Geometry, AChangedBoundReachesAConnectedField) {
  Held<Plain> a(new Plain), b(new Plain);
  a->connect(0, b.get(), 0);
  a->setBoxBound(box(ozVec3f(0, 0, 0), ozVec3f(3, 3, 3)));
  ozBoxBound bound;
  b->getBoxBound(bound);
  EXPECT_EQ(bound.max, ozVec3f(3, 3, 3));
}

TEST(Geometry, PullingAStaleBoundThatIsConnectedFollowsNoNullSource) {
  Held<Plain> b(new Plain);
  {
    Held<Plain> a(new Plain);
    a->connect(0, b.get(), 0);
    a->propagateSideEffect(0);
    a->setBoxBound(box(ozVec3f(0, 0, 0), ozVec3f(3, 3, 3)));
  }
  b->propagateSideEffect(0);
  ozBoxBound bound;
  b->getBoxBound(bound);
  EXPECT_EQ(b->cleanings, 1);
}

TEST(Geometry, WithoutATestOfItsOwnIsHitAtItsBound) {
  Held<Plain> plain(new Plain);
  plain->setBoxBound(box(ozVec3f(-1, -1, -1), ozVec3f(1, 1, 1)));
  ozIsectAction action;
  aim(action, ozVec3f(0, 0, 5), ozVec3f(0, 0, -1), 20);
  action.pushMatrix();
  action.translate(10, 0, 0);
  EXPECT_EQ(plain->isect(&action), 1);
  EXPECT_EQ(action.hit.geometry, plain.get());
  EXPECT_EQ(action.hit.distance, 20.0f); // nothing shortens the segment
  EXPECT_EQ(action.hit.localPoint, ozVec3f(0, 0, -15));
  EXPECT_EQ(action.hit.worldPoint, ozVec3f(10, 0, -15));
  EXPECT_EQ(action.hit.matrix, *action.getMatrix());
  EXPECT_EQ(action.getActiveSeg()->getLength(), 20.0f);
  action.popMatrix();
}

TEST(Geometry, IsMissedBesideItsBound) {
  Held<Plain> plain(new Plain);
  plain->setBoxBound(box(ozVec3f(-1, -1, -1), ozVec3f(1, 1, 1)));
  ozIsectAction action;
  int result = 1;
  EXPECT_FALSE(cast(action, plain.get(), ozVec3f(3, 0, 5), ozVec3f(0, 0, -1), 20, &result).isValid());
  EXPECT_EQ(result, 0);
  EXPECT_EQ(plain->isectBox(&action), 0);
}

// ---- triangles

TEST(Geometry, ProjectsATriangleAlongTheLongestComponentOfItsNormal) {
  Held<Plain> plain(new Plain);
  ozTriCache cache;
  // normal +z
  plain->cacheTri(&cache, ozVec3f(0, 0, 2), ozVec3f(4, 0, 2), ozVec3f(0, 2, 2));
  EXPECT_EQ(cache.plane.normal, ozVec3f(0, 0, 1));
  EXPECT_EQ(cache.plane.offset, 2.0f);
  EXPECT_EQ(cache.axisU, 0);
  EXPECT_EQ(cache.axisV, 1);
  EXPECT_EQ(cache.invDet, 1.0f / 8.0f);
  // normal +x: y, z
  plain->cacheTri(&cache, ozVec3f(3, 0, 0), ozVec3f(3, 1, 0), ozVec3f(3, 0, 1));
  EXPECT_EQ(cache.plane.normal, ozVec3f(1, 0, 0));
  EXPECT_EQ(cache.axisU, 1);
  EXPECT_EQ(cache.axisV, 2);
  EXPECT_EQ(cache.invDet, 1.0f);
  // normal +y: x, z, where the order of the axes turns the sign
  plain->cacheTri(&cache, ozVec3f(0, 5, 0), ozVec3f(0, 5, 1), ozVec3f(1, 5, 0));
  EXPECT_EQ(cache.plane.normal, ozVec3f(0, 1, 0));
  EXPECT_EQ(cache.plane.offset, 5.0f);
  EXPECT_EQ(cache.axisU, 0);
  EXPECT_EQ(cache.axisV, 2);
  EXPECT_EQ(cache.invDet, -1.0f);
}

TEST(Geometry, ProjectsALevelTriangleAlongZ) {
  Held<Plain> plain(new Plain);
  ozTriCache cache;
  plain->cacheTri(&cache, ozVec3f(1, 0, 0), ozVec3f(0, 1, 0), ozVec3f(0, 0, 1)); // normal (1, 1, 1)
  EXPECT_EQ(cache.axisU, 0);
  EXPECT_EQ(cache.axisV, 1);
}

TEST(Geometry, GivesATriangleWithoutAreaTheLargestFactorAndNoNormal) {
  Held<Plain> plain(new Plain);
  ozTriCache cache;
  plain->cacheTri(&cache, ozVec3f(0, 0, 0), ozVec3f(1, 1, 1), ozVec3f(2, 2, 2));
  EXPECT_EQ(cache.plane.normal, ozVec3f(0, 0, 0));
  EXPECT_EQ(cache.invDet, 1.0f / 1e-15f);
}

// A triangle in the plane z = 1, counter-clockwise as seen from +z.
ozVec3f const A(0, 0, 1), B(4, 0, 1), C(0, 4, 1);

class TriIsect : public ::testing::Test {
protected:
  int test(ozVec3f const &origin, ozVec3f const &direction, float length, int cull = 0) {
    aim(action, origin, direction, length);
    return plain->isectTri(&action, A, B, C, static_cast<ozContext::CullFaceEnum>(cull), 17);
  }
  Held<Plain> plain{new Plain};
  ozIsectAction action;
};

TEST_F(TriIsect, AHitIsEnteredInTheRecord) {
  ASSERT_EQ(test(ozVec3f(1, 1, 5), ozVec3f(0, 0, -1), 100), 1);
  EXPECT_EQ(action.getActiveSeg()->getLength(), 4.0f);
  EXPECT_EQ(action.hit.geometry, plain.get());
  EXPECT_EQ(action.hit.distance, 4.0f);
  EXPECT_EQ(action.hit.localPoint, ozVec3f(1, 1, 1));
  EXPECT_EQ(action.hit.worldPoint, ozVec3f(1, 1, 1));
  EXPECT_EQ(action.hit.localNormal, ozVec3f(0, 0, 1));
  EXPECT_EQ(action.hit.worldNormal, ozVec3f(0, 0, 1));
  EXPECT_EQ(action.hit.primIndex, 17);
}

TEST_F(TriIsect, AHitShortensTheSegmentSoThatOnlyNearerOnesFollow) {
  ASSERT_EQ(test(ozVec3f(1, 1, 5), ozVec3f(0, 0, -1), 100), 1);
  ozVec3f const back(0, 0, -3);
  ozVec3f a, b, c;
  a.add(A, back);
  b.add(B, back);
  c.add(C, back);
  EXPECT_EQ(plain->isectTri(&action, a, b, c, ozContext::NO_CULL, 18), 0);
  EXPECT_EQ(plain->isectTri(&action, A, B, C, ozContext::NO_CULL, 19), 1); // as near: the last one counts
  EXPECT_EQ(action.hit.primIndex, 19);
}

TEST_F(TriIsect, WhatLiesBesideBehindOrBeyondIsMissed) {
  EXPECT_EQ(test(ozVec3f(3, 3, 5), ozVec3f(0, 0, -1), 100), 0);
  EXPECT_EQ(test(ozVec3f(-1, 1, 5), ozVec3f(0, 0, -1), 100), 0);
  EXPECT_EQ(test(ozVec3f(1, -1, 5), ozVec3f(0, 0, -1), 100), 0);
  EXPECT_EQ(test(ozVec3f(1, 1, 5), ozVec3f(0, 0, 1), 100), 0);
  EXPECT_EQ(test(ozVec3f(1, 1, 5), ozVec3f(0, 0, -1), 3.9f), 0);
  EXPECT_FALSE(action.hit.isValid());
}

TEST_F(TriIsect, EdgesAndCornersBelongToTheTriangle) {
  EXPECT_EQ(test(ozVec3f(2, 2, 5), ozVec3f(0, 0, -1), 100), 1);
  EXPECT_EQ(test(ozVec3f(0, 0, 5), ozVec3f(0, 0, -1), 4), 1);
  EXPECT_EQ(test(ozVec3f(4, 0, 5), ozVec3f(0, 0, -1), 100), 1);
}

TEST_F(TriIsect, CullingLooksAtTheSideThatTheRayComesFrom) {
  ozVec3f const front(1, 1, 5), behind(1, 1, -5), down(0, 0, -1), up(0, 0, 1);
  EXPECT_EQ(test(front, down, 100, ozContext::BACK_CULL), 1);
  EXPECT_EQ(test(behind, up, 100, ozContext::BACK_CULL), 0);
  EXPECT_EQ(test(front, down, 100, ozContext::FRONT_CULL), 0);
  EXPECT_EQ(test(behind, up, 100, ozContext::FRONT_CULL), 1);
  for (int both : {0, 3}) {
    EXPECT_EQ(test(front, down, 100, both), 1);
    EXPECT_EQ(test(behind, up, 100, both), 1);
  }
}

TEST_F(TriIsect, ARayInThePlaneIsNeverReported) { EXPECT_EQ(test(ozVec3f(-1, 1, 1), ozVec3f(1, 0, 0), 100), 0); }

TEST_F(TriIsect, ATriangleWithoutAreaIsNeverHit) {
  aim(action, ozVec3f(1, 1, 5), ozVec3f(0, 0, -1), 100);
  EXPECT_EQ(plain->isectTri(&action, A, A, A, ozContext::NO_CULL, 0), 0);
  EXPECT_EQ(plain->isectTri(&action, ozVec3f(0, 0, 0), ozVec3f(1, 1, 1), ozVec3f(2, 2, 2), ozContext::NO_CULL, 0), 0);
}

TEST_F(TriIsect, TheWorldNormalGoesByTheInverseTransposed) {
  aim(action, ozVec3f(0, 0, 5), ozVec3f(0, 0, -1), 100);
  action.pushMatrix();
  action.scale(2, 1, 1);
  // The plane x + z = 1: the normal (1, 0, 1) / sqrt(2) becomes (1/2, 0, 1) / sqrt(2) under a scale of 2 along x.
  ASSERT_EQ(plain->isectTri(&action, ozVec3f(1, -5, 0), ozVec3f(1, 5, 0), ozVec3f(-5, 0, 6), ozContext::NO_CULL, 0), 1);
  action.popMatrix();
  float const r = static_cast<float>(std::sqrt(0.5));
  EXPECT_TRUE(action.hit.localNormal.almostEqual(ozVec3f(r, 0, r), 1e-6f));
  EXPECT_TRUE(action.hit.worldNormal.almostEqual(ozVec3f(r / 2, 0, r), 1e-6f));
}

TEST_F(TriIsect, AgreesWithArithmeticInDoubleOnManyRays) {
  unsigned int state = 12345;
  auto const random = [&] {
    state = state * 1664525u + 1013904223u;
    return static_cast<float>(state >> 8) / (1 << 23) - 1.0f;
  };
  int hits = 0;
  for (int i = 0; i < 2000; ++i) {
    ozVec3f p[3], origin(random() * 3, random() * 3, random() * 3), direction;
    for (ozVec3f &corner : p) corner.set(random(), random(), random());
    direction.sub(ozVec3f(random() / 2, random() / 2, random() / 2), origin);
    direction.normalize();
    // Moller and Trumbore, with doubles.
    double e1[3], e2[3], d[3], t0[3], h[3], q[3];
    for (int k = 0; k < 3; ++k) {
      e1[k] = double(p[1][k]) - p[0][k];
      e2[k] = double(p[2][k]) - p[0][k];
      d[k] = direction[k];
      t0[k] = double(origin[k]) - p[0][k];
    }
    auto const cross = [](double const *a, double const *b, double *out) {
      for (int k = 0; k < 3; ++k) out[k] = a[(k + 1) % 3] * b[(k + 2) % 3] - a[(k + 2) % 3] * b[(k + 1) % 3];
    };
    auto const dot = [](double const *a, double const *b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; };
    cross(d, e2, h);
    double const det = dot(e1, h);
    cross(t0, e1, q);
    double const u = dot(t0, h) / det, v = dot(d, q) / det, t = dot(e2, q) / det;
    double const edge = std::min({u, v, 1 - u - v, t});
    if (std::fabs(det) < 1e-3 || std::fabs(edge) < 1e-3) continue; // too close to call in floats
    aim(action, origin, direction, 1000);
    int const hit = plain->isectTri(&action, p[0], p[1], p[2], ozContext::NO_CULL, 0);
    EXPECT_EQ(hit, edge > 0 ? 1 : 0);
    if (!hit) continue;
    EXPECT_NEAR(action.hit.distance, t, 1e-3);
    ++hits;
  }
  EXPECT_GT(hits, 20);
}

class GeometryContext : public ContextTest {};

TEST_F(GeometryContext, TurnsWhereTheContextsSettersWrite) {
  context->setLineWidth(3);
  ozGeometry::setContextWhichSetStateAsCurrentState(context);
  context->setLineWidth(5);
  context->setCullFace(ozContext::FRONT_CULL);
  EXPECT_EQ(context->getLineWidth(), 5.0f);
  EXPECT_EQ(ozGeometry::getContextDefaultLineWidth(context), 3.0f);
  EXPECT_EQ(ozGeometry::getContextDefaultStateCullFace(context), ozContext::NO_CULL);
  ozGeometry::setContextWhichSetStateAsDefaultState(context);
  context->setCullFace(ozContext::BACK_CULL);
  EXPECT_EQ(ozGeometry::getContextDefaultStateCullFace(context), ozContext::BACK_CULL);
}

} // namespace
