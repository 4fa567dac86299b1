#include "oz/ozTriStripSet.h"

#include "geometry/ozDrawKind.h"
#include "geometry/ozListDraw.h"
#include "geometry/ozPrimIsect.h"

// Two vertices go out of every strip, whatever its length: meant so.
ozGeoSet::Kind const ozTriStripSet::PrimKind = {GL_TRIANGLE_STRIP, 0, 2, Kind::EACH, 1};

OZ_DEFINE_LENGTHS(ozTriStripSet, "TriStripSet", _stripLength, _stripLengths) {
  ozMFInt::addTypeField(type, "stripLength", 15, &ozTriStripSet::_stripLengths);
}
OZ_DEFINE_LIST_DRAW(ozTriStripSet, &_stripLengths)
OZ_DEFINE_PRIM_NORM_MODE(ozTriStripSet)

void ozTriStripSet::init() {
  _stripLength = static_cast<ozMFInt *>(getField(15));
  initFieldDefaults(_ClassType);
  _bpcPrimNormMode = 0;
}

int ozTriStripSet::isect(ozIsectAction *action) {
  cleanFields();
  if (!isectBox(action) || !_coordSet || _cullFace == ozContext::BOTH_CULL) return 0;
  // Through an index both faces are hit, whatever the cull face: meant so.
  ozContext::CullFaceEnum const cull = _coordIndexSet ? ozContext::NO_CULL : _cullFace;
  return isectPrims(action, PrimKind, &_stripLengths, cull, [](int, int position, int len, auto const &triangle) {
    for (int k = 0; k + 2 < len; ++k) {
      if (k & 1)
        triangle(k + 1, k, k + 2, position + k);
      else
        triangle(k, k + 1, k + 2, position + k);
    }
    return len;
  });
}

void ozTriStripSet::getPrimFaceNormBB(int, int first, int len, ozVec3f &min, ozVec3f &max) {
  ozGeoSet::getPrimFaceNormBB(0, 0, 0, min, max);
  VecReader const coords = readCoords();
  bool any = false;
  for (int k = 0; k + 2 < len; ++k) {
    int const odd = k & 1;
    addFaceNormal(coords, first + k, first + k + 1 + odd, first + k + 2 - odd, min, max, any);
  }
}
