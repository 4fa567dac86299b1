// Culling of back primitives: for each primitive a point, the axis of a cone that holds its normals, and the cosine
// that the direction to the eye must reach against the axis for any part of it to face the eye.

#include <limits.h>
#include <math.h>
#include <stdlib.h>

#include "oz/ozDrawAction.h"
#include "oz/ozGeoSet.h"

void ozGeoSet::setBPCullPrimNormModeEnable(unsigned char) {}
unsigned char ozGeoSet::getBPCullPrimNormModeEnable() { return _bpcPrimNormMode; }

// Arrays of the application's are taken to have an entry for each primitive.
void ozGeoSet::setBPCullPoint(ozVec3f *points) {
  if (!_bpcCount) _bpcCount = INT_MAX;
  _bpcPoint = points;
}
void ozGeoSet::setBPCullCenter(ozVec3f *centers) {
  if (!_bpcCount) _bpcCount = INT_MAX;
  _bpcCenter = centers;
}
void ozGeoSet::setBPCullDelta(float *deltas) {
  if (!_bpcCount) _bpcCount = INT_MAX;
  _bpcDelta = deltas;
}

void ozGeoSet::deleteBPCullData() {
  free(_bpcPoint);
  free(_bpcCenter);
  free(_bpcDelta);
  _bpcPoint = _bpcCenter = nullptr;
  _bpcDelta = nullptr;
  _bpcCount = 0;
}

void ozGeoSet::buildBPCullData() {
  deleteBPCullData();
  int const count = getPrimCount();
  size_t const room = count > 0 ? static_cast<size_t>(count) : 1;
  _bpcPoint = static_cast<ozVec3f *>(calloc(room, sizeof(ozVec3f)));
  _bpcCenter = static_cast<ozVec3f *>(calloc(room, sizeof(ozVec3f)));
  _bpcDelta = static_cast<float *>(calloc(room, sizeof(float)));
  if (!_bpcPoint || !_bpcCenter || !_bpcDelta) {
    deleteBPCullData();
    return;
  }
  _bpcCount = count > 0 ? count : 0;
  int first = 0;
  for (int prim = 0; prim < count; ++prim) {
    int const len = getPrimLen(prim);
    bpcBuildDataPrim(prim, first, len, _bpcPoint[prim], _bpcCenter[prim], _bpcDelta[prim]);
    if (len > 0 && first <= INT_MAX - len) first += len;
  }
}

void ozGeoSet::bpcBuildDataPrim(int prim, int first, int len, ozVec3f &point, ozVec3f &center, float &delta) {
  unsigned int const count = readCoords().count, begin = static_cast<unsigned int>(first);
  unsigned int const there = begin < count ? count - begin : 0;
  if (len > 0 && static_cast<unsigned int>(len) > there) len = static_cast<int>(there);
  point = getRefPoint(prim, first, len);
  ozVec3f min, max;
  getNormBB(prim, first, len, min, max);
  center.add(min, max);
  center *= 0.5f;
  if (center.length() < _bpcTolerance) {
    center.zero();
    delta = -2.0f; // below every cosine: never culled
    return;
  }
  center.normalize();
  delta = getNormBBDelta(min, max, center);
}

ozVec3f ozGeoSet::getRefPoint(int, int first, int) {
  ozVec3f const *const point = readCoords().get(static_cast<unsigned int>(first));
  return point ? *point : ozVec3f();
}

void ozGeoSet::getNormBB(int prim, int first, int len, ozVec3f &min, ozVec3f &max) {
  if (_bpcPrimNormMode)
    getPrimNormBB(prim, first, len, min, max);
  else
    getPrimFaceNormBB(prim, first, len, min, max);
}

void ozGeoSet::getPrimNormBB(int prim, int first, int len, ozVec3f &min, ozVec3f &max) {
  VecReader const normals(_normalSet, _normalIndexSet);
  if (!normals.data) return;
  ozVec3f const *normal = nullptr;
  if (_normalBind == PER_VERTEX_NORMAL)
    normal = normals.get(static_cast<unsigned int>(first));
  else if (_normalBind == PER_PRIM_NORMAL)
    normal = normals.get(static_cast<unsigned int>(prim));
  else if (_normalBind == OVERALL_NORMAL)
    normal = normals.get(0);
  min = max = normal ? *normal : ozVec3f();
  if (_normalBind != PER_VERTEX_NORMAL || len <= 1) return;
  ozBoxBound box;
  box.min = box.max = min;
  for (int i = 1; i < len; ++i) {
    normal = normals.get(static_cast<unsigned int>(first) + static_cast<unsigned int>(i));
    if (!normal) break;
    box.nonEmptyExtendBy(*normal);
  }
  min = box.min;
  max = box.max;
}

void ozGeoSet::getPrimFaceNormBB(int, int, int, ozVec3f &min, ozVec3f &max) {
  min.zero();
  max.zero();
}

void ozGeoSet::addFaceNormal(VecReader const &coords, int a, int b, int c, ozVec3f &min, ozVec3f &max, bool &any) {
  ozVec3f const *const pa = coords.get(static_cast<unsigned int>(a));
  ozVec3f const *const pb = coords.get(static_cast<unsigned int>(b));
  ozVec3f const *const pc = coords.get(static_cast<unsigned int>(c));
  float normal[3];
  if (!pa || !pb || !pc || !getTriNormal(*pa, *pb, *pc, normal[0], normal[1], normal[2])) return;
  if (!any) {
    any = true;
    min = max = ozVec3f(normal);
    return;
  }
  ozBoxBound box;
  box.min = min;
  box.max = max;
  box.nonEmptyExtendBy(ozVec3f(normal));
  min = box.min;
  max = box.max;
}

unsigned char ozGeoSet::getTriNormal(ozVec3f const &a, ozVec3f const &b, ozVec3f const &c, float &x, float &y,
                                     float &z) {
  ozVec3f ab, ac, normal;
  ab.sub(b, a);
  ac.sub(c, a);
  normal.cross(ab, ac);
  normal.normalize();
  normal.get(&x, &y, &z);
  return normal.length() >= _bpcTolerance;
}

float ozGeoSet::getNormBBDelta(ozVec3f const &min, ozVec3f const &max, ozVec3f const &center) {
  float d = 1.0f;
  for (int i = 0; i < 8; ++i) {
    ozVec3f corner((i & 4 ? max : min)[0], (i & 2 ? max : min)[1], (i & 1 ? max : min)[2]);
    if (!(corner.length() > _bpcTolerance)) continue;
    corner.normalize();
    float const cosine = center.dot(corner);
    if (cosine < d) d = cosine;
  }
  if (d <= 0.0f) return -2.0f;
  if (d > 1.0f - _bpcTolerance) return 0.0f;
  return -sqrtf(1.0f - d * d); // minus the sine of the cone's half angle
}

unsigned char ozGeoSet::isPrimBpcFrontFacing(int prim, ozDrawAction *action) {
  if (!_bpcPoint || !_bpcCenter || !_bpcDelta || prim < 0 || prim >= _bpcCount) return 1;
  ozVec3f view = action->getViewVector();
  if (!action->getOrthoCamera()) {
    view -= _bpcPoint[prim];
    view.normalize();
  }
  return view.dot(_bpcCenter[prim]) >= _bpcDelta[prim];
}
