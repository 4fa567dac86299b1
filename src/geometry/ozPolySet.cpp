#include "oz/ozPolySet.h"

#include "geometry/ozDrawKind.h"
#include "geometry/ozPrimIsect.h"

ozGeoSet::Kind const ozPolySet::PrimKind = {GL_POLYGON, 0, 0, Kind::POLYGONS, 1};

OZ_DEFINE_LENGTHS(ozPolySet, "PolySet", _polyLength, _polyLengths) {
  ozMFInt::addTypeField(type, "polyLength", 15, &ozPolySet::_polyLengths);
}
OZ_DEFINE_DRAW(ozPolySet, &_polyLengths)
OZ_DEFINE_PRIM_NORM_MODE(ozPolySet)

ozPolySet::~ozPolySet() { destroyFieldContents(_ClassType); }

void ozPolySet::init() {
  _polyLength = static_cast<ozMFInt *>(getField(15));
  initFieldDefaults(_ClassType);
  _bpcPrimNormMode = 0;
}

void ozPolySet::fieldChanged(short id) {
  if (id == 15)
    lengthsChanged(id);
  else
    ozGeoSet::fieldChanged(id);
}

int ozPolySet::isect(ozIsectAction *action) {
  cleanFields();
  if (!isectBox(action) || !_coordSet || _cullFace == ozContext::BOTH_CULL) return 0;
  return isectPrims(action, PrimKind, &_polyLengths, _cullFace, [](int prim, int, int len, auto const &triangle) {
    for (int k = 1; k + 1 < len; ++k) triangle(0, k, k + 1, prim);
    return len < 3 ? 2 : len; // a polygon that is none shifts the later ones: meant so
  });
}

void ozPolySet::getPrimFaceNormBB(int, int first, int len, ozVec3f &min, ozVec3f &max) {
  ozGeoSet::getPrimFaceNormBB(0, 0, 0, min, max);
  VecReader const coords = readCoords();
  bool any = false;
  for (int k = 1; k + 1 < len; ++k) addFaceNormal(coords, first, first + k, first + k + 1, min, max, any);
}
