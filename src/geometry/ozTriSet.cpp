#include "oz/ozTriSet.h"

#include "geometry/ozDrawKind.h"
#include "geometry/ozPrimIsect.h"

ozGeoSet::Kind const ozTriSet::PrimKind = {GL_TRIANGLES, 3, 0, Kind::ALL, 0};

OZ_DEFINE_CLASS(ozTriSet, "TriSet", ozGeoSet) {}
OZ_DEFINE_DRAW(ozTriSet, nullptr)
OZ_DEFINE_FIXED_LENGTH(ozTriSet)
OZ_DEFINE_PRIM_NORM_MODE(ozTriSet)

int ozTriSet::isect(ozIsectAction *action) {
  cleanFields();
  if (!isectBox(action) || !_coordSet || _cullFace == ozContext::BOTH_CULL) return 0;
  return isectPrims(action, PrimKind, nullptr, _cullFace, [](int prim, int, int len, auto const &triangle) {
    triangle(0, 1, 2, prim);
    return len;
  });
}

void ozTriSet::getPrimFaceNormBB(int, int first, int, ozVec3f &min, ozVec3f &max) {
  VecReader const coords = readCoords();
  ozVec3f const *const a = coords.get(static_cast<unsigned int>(first));
  ozVec3f const *const b = coords.get(static_cast<unsigned int>(first) + 1);
  ozVec3f const *const c = coords.get(static_cast<unsigned int>(first) + 2);
  float normal[3] = {};
  if (a && b && c) getTriNormal(*a, *b, *c, normal[0], normal[1], normal[2]); // usable or not
  min = max = ozVec3f(normal);
}
