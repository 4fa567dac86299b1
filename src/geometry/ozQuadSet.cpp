#include "oz/ozQuadSet.h"

#include "geometry/ozDrawKind.h"
#include "geometry/ozPrimIsect.h"

ozGeoSet::Kind const ozQuadSet::PrimKind = {GL_QUADS, 4, 0, Kind::ALL, 0};

OZ_DEFINE_CLASS(ozQuadSet, "QuadSet", ozGeoSet) {}
OZ_DEFINE_DRAW(ozQuadSet, nullptr)
OZ_DEFINE_FIXED_LENGTH(ozQuadSet)
OZ_DEFINE_PRIM_NORM_MODE(ozQuadSet)

int ozQuadSet::isect(ozIsectAction *action) {
  cleanFields();
  if (!isectBox(action) || !_coordSet || _cullFace == ozContext::BOTH_CULL) return 0;
  return isectPrims(action, PrimKind, nullptr, _cullFace, [](int prim, int, int len, auto const &triangle) {
    triangle(0, 1, 2, prim);
    triangle(0, 2, 3, prim);
    return len;
  });
}

// It looks at the positions themselves, not at edges: meant so.
int ozQuadSet::quadToTris(ozVec3f p0, ozVec3f p1, ozVec3f p2, ozVec3f p3) {
  float const a = p0.dot(p2), b = p1.dot(p3);
  float const first = p3.dot(p3) * p1.dot(p1) * a * a;
  float const second = p2.dot(p2) * p0.dot(p0) * b * b;
  if (a > 0.0f) return b > 0.0f ? first <= second : 0;
  return b > 0.0f ? 1 : second <= first;
}

void ozQuadSet::getPrimFaceNormBB(int, int first, int, ozVec3f &min, ozVec3f &max) {
  ozGeoSet::getPrimFaceNormBB(0, 0, 0, min, max);
  VecReader const coords = readCoords();
  ozVec3f const *corner[4];
  for (int i = 0; i < 4; ++i)
    if (!(corner[i] = coords.get(static_cast<unsigned int>(first + i)))) return;
  bool any = false;
  if (quadToTris(*corner[0], *corner[1], *corner[2], *corner[3])) {
    addFaceNormal(coords, first + 3, first, first + 1, min, max, any);
    addFaceNormal(coords, first + 1, first + 2, first + 3, min, max, any);
  } else {
    addFaceNormal(coords, first, first + 1, first + 2, min, max, any);
    addFaceNormal(coords, first + 2, first + 3, first, min, max, any);
  }
}
