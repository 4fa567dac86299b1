// The meshes that solids are made of, against the formulas of circle, cone and sphere.

#include "geometry/geometryFixture.h"

#include <cmath>

namespace {

double const Pi = 3.14159265358979;

ozVec3fArray const &pointsOf(ozTriStripSet &mesh) {
  return static_cast<ozCoordSet3f *>(mesh.getCoordSet())->point()->get();
}
ozVec3fArray const &normalsOf(ozTriStripSet &mesh) {
  return static_cast<ozNormalSet3f *>(mesh.getNormalSet())->vector()->get();
}
ozVec2fArray const &texCoordsOf(ozTriStripSet &mesh) {
  return static_cast<ozTexCoordSet2f *>(mesh.getTexCoordSet())->point()->get();
}

#define EXPECT_VEC3(vec, x, y, z)                                                                                      \
  EXPECT_NEAR((vec)[0], x, 2e-6);                                                                                      \
  EXPECT_NEAR((vec)[1], y, 2e-6);                                                                                      \
  EXPECT_NEAR((vec)[2], z, 2e-6)
#define EXPECT_VEC2(vec, x, y)                                                                                         \
  EXPECT_NEAR((vec)[0], x, 2e-6);                                                                                      \
  EXPECT_NEAR((vec)[1], y, 2e-6)

// ---- circles

TEST(MakeCircle, IsOneStripWithOneNormal) {
  Held<ozTriStripSet> up(ozCylinder::makeCircle(6, 2, 1, 5)), down(ozCylinder::makeCircle(6, 2, -1, 5));
  EXPECT_EQ(up->getPrimCount(), 1);
  EXPECT_EQ(up->stripLength()->getCount(), 1u);
  EXPECT_EQ(up->getPrimLen(0), 6);
  EXPECT_EQ(up->getNormalBind(), ozGeoSet::OVERALL_NORMAL);
  EXPECT_EQ(up->getTexCoordBind(), ozGeoSet::PER_VERTEX_TEX_COORD);
  EXPECT_EQ(pointsOf(*up).getCount(), 6u);
  EXPECT_EQ(texCoordsOf(*up).getCount(), 6u);
  EXPECT_EQ(normalsOf(*up).getCount(), 1u);
  EXPECT_EQ(normalsOf(*up)[0], ozVec3f(0, 1, 0));
  EXPECT_EQ(normalsOf(*down)[0], ozVec3f(0, -1, 0));
}

TEST(MakeCircle, OfDirectionZeroFacesDownAndTurnsAsATop) {
  Held<ozTriStripSet> flat(ozCylinder::makeCircle(4, 1, 0, 0)), up(ozCylinder::makeCircle(4, 1, 1, 0));
  EXPECT_EQ(normalsOf(*flat)[0], ozVec3f(0, -1, 0));
  for (unsigned int i = 0; i < 4; ++i) {
    EXPECT_EQ(pointsOf(*flat)[i], pointsOf(*up)[i]);
    EXPECT_EQ(texCoordsOf(*flat)[i], texCoordsOf(*up)[i]);
  }
}

// The corner numbers in the order of the strip, for 6 and for 5 sides.
int const Zigzag6[] = {0, 5, 1, 4, 2, 3}, Zigzag5[] = {0, 4, 1, 3, 2};

TEST(MakeCircle, ZigzagsAcrossTheDisk) {
  for (int dir : {1, -1}) {
    Held<ozTriStripSet> mesh(ozCylinder::makeCircle(6, 2, dir, 5));
    for (unsigned int k = 0; k < 6; ++k) {
      double const a = dir * Zigzag6[k] * Pi / 3;
      EXPECT_VEC3(pointsOf(*mesh)[k], 2 * std::cos(a), 5, 2 * std::sin(a));
    }
  }
}

// s of corner number `corner` of a disk of radius 2 with n sides.
ozVec2f circleTexCoord(int corner, int n, int dir) {
  double const a = dir * corner * 2 * Pi / n;
  return ozVec2f(static_cast<float>(std::cos(a) / 4 + 0.5), static_cast<float>(std::sin(a) / 4 + 0.5));
}

TEST(MakeCircle, ABottomHasEachCornersOwnTexCoord) {
  Held<ozTriStripSet> mesh(ozCylinder::makeCircle(6, 2, -1, 5));
  for (unsigned int k = 0; k < 6; ++k) {
    ozVec2f const expected = circleTexCoord(Zigzag6[k], 6, -1);
    EXPECT_VEC2(texCoordsOf(*mesh)[k], expected[0], expected[1]) << k;
  }
}

TEST(MakeCircle, NeighboursTradeTexCoordsOnATop) {
  // Vertex 1 (from the end) hands its own to entry 2, vertex 2 to entry 1, 3 to 4, 4 to 3; the last one keeps it.
  int const from6[] = {0, 2, 1, 4, 3, 5};
  Held<ozTriStripSet> even(ozCylinder::makeCircle(6, 2, 1, 5));
  for (unsigned int k = 0; k < 6; ++k) {
    ozVec2f const expected = circleTexCoord(Zigzag6[from6[k]], 6, 1);
    EXPECT_VEC2(texCoordsOf(*even)[k], expected[0], expected[1]) << k;
  }
  int const from5[] = {0, 2, 1, 4, 3};
  Held<ozTriStripSet> odd(ozCylinder::makeCircle(5, 2, 1, 5));
  for (unsigned int k = 0; k < 5; ++k) {
    ozVec2f const expected = circleTexCoord(Zigzag5[from5[k]], 5, 1);
    EXPECT_VEC2(texCoordsOf(*odd)[k], expected[0], expected[1]) << k;
  }
}

TEST(MakeCircle, OfNoSidesIsAnEmptyMesh) {
  for (int sides : {0, -1, -2147483647 - 1}) {
    Held<ozTriStripSet> mesh(ozCylinder::makeCircle(sides, 1, 1, 0));
    EXPECT_EQ(mesh->getPrimCount(), 0);
    EXPECT_EQ(mesh->stripLength()->getCount(), 0u);
  }
}

TEST(MakeCircle, OfOneOrTwoSidesKeepsToItsArrays) {
  Held<ozTriStripSet> one(ozCylinder::makeCircle(1, 1, 1, 0)), two(ozCylinder::makeCircle(2, 1, 1, 0));
  EXPECT_EQ(pointsOf(*one).getCount(), 1u);
  EXPECT_EQ(texCoordsOf(*one).getCount(), 1u);
  EXPECT_EQ(pointsOf(*two).getCount(), 2u);
  EXPECT_EQ(texCoordsOf(*two).getCount(), 2u);
  EXPECT_VEC2(texCoordsOf(*two)[1], 0.0, 0.5);
}

// ---- pipes

TEST(MakePipe, IsOneStripOfTwoVerticesASideAndTwoToClose) {
  Held<ozTriStripSet> mesh(ozCylinder::makePipe(8, 2, 1, -3, 5));
  EXPECT_EQ(mesh->getPrimCount(), 1);
  EXPECT_EQ(mesh->getPrimLen(0), 18);
  EXPECT_EQ(mesh->getNormalBind(), ozGeoSet::PER_VERTEX_NORMAL);
  EXPECT_EQ(mesh->getTexCoordBind(), ozGeoSet::PER_VERTEX_TEX_COORD);
  EXPECT_EQ(pointsOf(*mesh).getCount(), 18u);
  EXPECT_EQ(normalsOf(*mesh).getCount(), 18u);
  EXPECT_EQ(texCoordsOf(*mesh).getCount(), 18u);
}

TEST(MakePipe, RunsAroundTheAxisFromTheFront) {
  Held<ozTriStripSet> mesh(ozCylinder::makePipe(8, 2, 1, -3, 5));
  for (unsigned int i = 0; i <= 8; ++i) {
    double const a = -Pi / 4 * i, u = 0.5 - i / 8.0;
    EXPECT_VEC3(pointsOf(*mesh)[2 * i], 2 * std::sin(a), -3, 2 * std::cos(a));
    EXPECT_VEC3(pointsOf(*mesh)[2 * i + 1], std::sin(a), 5, std::cos(a));
    EXPECT_VEC2(texCoordsOf(*mesh)[2 * i], u, 0);
    EXPECT_VEC2(texCoordsOf(*mesh)[2 * i + 1], u, 1);
  }
}

TEST(MakePipe, OfEqualRadiiHasLevelNormals) {
  Held<ozTriStripSet> mesh(ozCylinder::makePipe(8, 2, 2, -3, 5));
  for (unsigned int i = 0; i < 18; ++i) {
    double const a = -Pi / 4 * (i / 2);
    EXPECT_VEC3(normalsOf(*mesh)[i], std::sin(a), 0, std::cos(a));
  }
}

TEST(MakePipe, LiftsTheNormalsByTheReciprocalOfTheSlope) {
  // Radius 1 to 0 over a height of 2: the slope is 1/2, and the normal (s, 2, c) over the root of 5.
  Held<ozTriStripSet> mesh(ozCylinder::makePipe(8, 1, 0, -1, 1));
  double const length = std::sqrt(5.0);
  for (unsigned int i = 0; i < 18; ++i) {
    double const a = -Pi / 4 * (i / 2);
    EXPECT_VEC3(normalsOf(*mesh)[i], std::sin(a) / length, 2 / length, std::cos(a) / length);
  }
}

TEST(MakePipe, OfNoSidesIsAnEmptyMesh) {
  for (int sides : {0, -1, -2147483647 - 1}) {
    Held<ozTriStripSet> mesh(ozCylinder::makePipe(sides, 1, 1, 0, 1));
    EXPECT_EQ(mesh->getPrimCount(), 0);
    EXPECT_EQ(mesh->stripLength()->getCount(), 0u);
  }
}

TEST(MakePipe, OfMoreSidesThanAStripCanCountIsAnEmptyMesh) {
  Held<ozTriStripSet> mesh(ozCylinder::makePipe(2147483647, 1, 1, 0, 1));
  EXPECT_EQ(mesh->getPrimCount(), 0);
}

// ---- spheres

TEST(MakeSphere, CutsEachOfEightFacesIntoRows) {
  Held<ozTriStripSet> mesh(ozSphere::makeSphere(200));
  EXPECT_EQ(mesh->getPrimCount(), 40);
  EXPECT_EQ(mesh->stripLength()->getCount(), 40u);
  for (int i = 0; i < 40; ++i) EXPECT_EQ(mesh->getPrimLen(i), 3 + 2 * (i % 5));
  EXPECT_EQ(pointsOf(*mesh).getCount(), 280u);
  EXPECT_EQ(normalsOf(*mesh).getCount(), 280u);
  EXPECT_EQ(texCoordsOf(*mesh).getCount(), 280u);
  EXPECT_EQ(mesh->getNormalBind(), ozGeoSet::PER_VERTEX_NORMAL);
  EXPECT_EQ(mesh->getTexCoordBind(), ozGeoSet::PER_VERTEX_TEX_COORD);
}

TEST(MakeSphere, HasAtLeastAnOctahedron) {
  for (int triangles : {-100, 0, 8, 31}) {
    Held<ozTriStripSet> mesh(ozSphere::makeSphere(triangles));
    EXPECT_EQ(mesh->getPrimCount(), 8) << triangles;
    EXPECT_EQ(pointsOf(*mesh).getCount(), 24u);
  }
  Held<ozTriStripSet> finer(ozSphere::makeSphere(32));
  EXPECT_EQ(finer->getPrimCount(), 16);
}

TEST(MakeSphere, TakesTheFacesOfTheOctahedronInTheirOrder) {
  ozVec3f const a(1, 0, 0), b(-1, 0, 0), c(0, 1, 0), d(0, -1, 0), e(0, 0, 1), f(0, 0, -1);
  // apex, left, right; a strip starts on the right, goes over the apex and ends on the left.
  ozVec3f const faces[8][3] = {{c, f, b}, {c, b, e}, {c, e, a}, {c, a, f}, {d, b, f}, {d, e, b}, {d, a, e}, {d, f, a}};
  Held<ozTriStripSet> mesh(ozSphere::makeSphere(8));
  for (unsigned int i = 0; i < 8; ++i) {
    EXPECT_EQ(pointsOf(*mesh)[3 * i], faces[i][2]) << i;
    EXPECT_EQ(pointsOf(*mesh)[3 * i + 1], faces[i][0]) << i;
    EXPECT_EQ(pointsOf(*mesh)[3 * i + 2], faces[i][1]) << i;
  }
}

TEST(MakeSphere, PutsUnitPointsInRowsBetweenApexAndBase) {
  // The second row of the first face at n = 2: right base, apex's right edge, base middle, left edge's middle, left
  // base.
  Held<ozTriStripSet> mesh(ozSphere::makeSphere(32));
  double const h = std::sqrt(0.5);
  EXPECT_VEC3(pointsOf(*mesh)[0], -h, h, 0);
  EXPECT_VEC3(pointsOf(*mesh)[1], 0, 1, 0);
  EXPECT_VEC3(pointsOf(*mesh)[2], 0, h, -h);
  EXPECT_VEC3(pointsOf(*mesh)[3], -1, 0, 0);
  EXPECT_VEC3(pointsOf(*mesh)[4], -h, h, 0);
  EXPECT_VEC3(pointsOf(*mesh)[5], -h, 0, -h);
  EXPECT_VEC3(pointsOf(*mesh)[6], 0, h, -h);
  EXPECT_VEC3(pointsOf(*mesh)[7], 0, 0, -1);
}

TEST(MakeSphere, NormalsAreThePointsThemselves) {
  Held<ozTriStripSet> mesh(ozSphere::makeSphere(200));
  for (unsigned int i = 0; i < 280; ++i) {
    EXPECT_EQ(normalsOf(*mesh)[i], pointsOf(*mesh)[i]);
    EXPECT_NEAR(pointsOf(*mesh)[i].length(), 1, 1e-6);
  }
}

TEST(MakeSphere, TexCoordsAreLongitudeAndLatitude) {
  Held<ozTriStripSet> mesh(ozSphere::makeSphere(200));
  for (unsigned int i = 0; i < 280; ++i) {
    ozVec3f const p = pointsOf(*mesh)[i];
    unsigned int const quadrant = i / 35 % 4;
    ozVec2f const uv = texCoordsOf(*mesh)[i];
    EXPECT_NEAR(uv[1], 0.5 + std::asin(double(p[1])) / Pi, 1e-3) << i; // an arc cosine is steep at the poles
    if (p[1] == 1.0f || p[1] == -1.0f) {
      EXPECT_EQ(uv[0], static_cast<float>(quadrant) * 0.25f + 0.125f) << i;
      continue;
    }
    // From the back (u = 0) over the left (1/4) and the front (1/2) to the right (3/4).
    double u = std::atan2(double(-p[0]), double(-p[2])) / (2 * Pi);
    if (u < 0) u += 1;
    if (quadrant >= 2 && u < 0.25) u += 1; // the seam at the back, seen from the right
    if (quadrant < 2 && u > 0.75) u -= 1;
    EXPECT_NEAR(uv[0], u, 1e-3) << i;
  }
}

// ---- all of them

// Whether every triangle of the mesh, as OpenGL winds strips, turns the way its normal points.
void expectOutward(ozTriStripSet &mesh) {
  unsigned int first = 0;
  for (int prim = 0; prim < mesh.getPrimCount(); ++prim) {
    unsigned int const len = static_cast<unsigned int>(mesh.getPrimLen(prim));
    for (unsigned int k = 0; k + 2 < len; ++k) {
      unsigned int const i = first + k, odd = k & 1;
      ozVec3f ab, ac, face;
      ab.sub(pointsOf(mesh)[i + 1 + odd], pointsOf(mesh)[i]);
      ac.sub(pointsOf(mesh)[i + 2 - odd], pointsOf(mesh)[i]);
      face.cross(ab, ac);
      if (face.length() < 1e-6f) continue; // at the apex of a cone
      ozVec3f const normal = normalsOf(mesh)[normalsOf(mesh).getCount() == 1 ? 0 : i];
      EXPECT_GT(face.dot(normal), 0) << prim << ' ' << k;
    }
    first += len;
  }
}

TEST(SolidMeshes, AreSeenFromOutside) {
  expectOutward(*Held<ozTriStripSet>(ozCylinder::makeCircle(32, 1, 1, 1)));
  expectOutward(*Held<ozTriStripSet>(ozCylinder::makeCircle(32, 1, -1, -1)));
  expectOutward(*Held<ozTriStripSet>(ozCylinder::makePipe(32, 1, 1, -1, 1)));
  expectOutward(*Held<ozTriStripSet>(ozCylinder::makePipe(32, 1, 0, -1, 1)));
  expectOutward(*Held<ozTriStripSet>(ozSphere::makeSphere(200)));
}

} // namespace
