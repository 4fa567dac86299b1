#include "oz/ozTriFanSet.h"

#include "geometry/ozDrawKind.h"
#include "geometry/ozListDraw.h"
#include "geometry/ozPrimIsect.h"

ozGeoSet::Kind const ozTriFanSet::PrimKind = {GL_TRIANGLE_FAN, 0, 0, Kind::EACH, 1};

OZ_DEFINE_LENGTHS(ozTriFanSet, "TriFanSet", _fanLength, _fanLengths) {
  ozMFInt::addTypeField(type, "fanLength", 15, &ozTriFanSet::_fanLengths);
}
OZ_DEFINE_LIST_DRAW(ozTriFanSet, &_fanLengths)
OZ_DEFINE_PRIM_NORM_MODE(ozTriFanSet)

void ozTriFanSet::init() {
  _fanLength = static_cast<ozMFInt *>(getField(15));
  initFieldDefaults(_ClassType);
  _bpcPrimNormMode = 0;
}

int ozTriFanSet::isect(ozIsectAction *action) {
  cleanFields();
  if (!isectBox(action) || !_coordSet || _cullFace == ozContext::BOTH_CULL) return 0;
  return isectPrims(action, PrimKind, &_fanLengths, _cullFace, [](int, int position, int len, auto const &triangle) {
    for (int k = 1; k + 1 < len; ++k) triangle(0, k, k + 1, position + k - 1);
    return len;
  });
}

void ozTriFanSet::getPrimFaceNormBB(int, int first, int len, ozVec3f &min, ozVec3f &max) {
  ozGeoSet::getPrimFaceNormBB(0, 0, 0, min, max);
  VecReader const coords = readCoords();
  bool any = false;
  for (int k = 1; k + 1 < len; ++k) addFaceNormal(coords, first, first + k, first + k + 1, min, max, any);
}
