#include "geometry/ozTriSearch.h"

#include "geometry/ozHitNormal.h"
#include "oz/ozIsectAction.h"

// Plane first, then barycentric coordinates in the projection: Badouel, "An Efficient Ray-Polygon Intersection",
// Graphics Gems, 1990.
void ozTriSearch::test() {
  int const all = (1 << _waiting) - 1;
  _waiting = 0;
  ozTriCache4 const tri(_a, _b, _c);
  ozLane4 const zero = ozLane4::fill(0.0f), one = ozLane4::fill(1.0f);
  ozLane4 o[3], d[3];
  for (int i = 0; i < 3; ++i) {
    o[i] = ozLane4::fill(origin._v[i]);
    d[i] = ozLane4::fill(direction._v[i]);
  }
  ozLane4 const dn = ozTriCache4::dot(tri.normal, d);
  ozLane4 const t = (tri.offset - ozTriCache4::dot(o, tri.normal)) / dn;
  ozLaneMask hit = (zero <= t) & (t <= ozLane4::fill(limit)) & ~(abs(dn) < ozLane4::fill(OZ_TINY_EPSILON));
  if (_cull == ozContext::BACK_CULL) hit = hit & ~(zero <= dn);
  if (_cull == ozContext::FRONT_CULL) hit = hit & ~(dn <= zero);
  if (!(hit.bits() & all)) return;

  ozLane4 const pu = tri.alongU(d) * t + tri.alongU(o) - tri.alongU(tri.a);
  ozLane4 const pv = tri.alongV(d) * t + tri.alongV(o) - tri.alongV(tri.a);
  ozLane4 const beta = (pu * tri.alongV(tri.ac) - pv * tri.alongU(tri.ac)) * tri.invDet;
  ozLane4 const gamma = (pv * tri.alongU(tri.ab) - pu * tri.alongV(tri.ab)) * tri.invDet;
  hit = hit & (zero <= beta) & (beta <= one) & (zero <= gamma) & (beta + gamma <= one);
  int const hits = hit.bits() & all;
  if (!hits) return;

  float distance[4], normal[3][4];
  t.store(distance);
  for (int i = 0; i < 3; ++i) tri.normal[i].store(normal[i]);
  for (int i = 0; i < 4; ++i) {
    if (!(hits >> i & 1) || !(distance[i] <= limit)) continue;
    if (distance[i] == limit && _found && _numbers[i] < _number) continue;
    limit = distance[i];
    _found = true;
    _number = _numbers[i];
    _prim = _prims[i];
    _normal.set(normal[0][i], normal[1][i], normal[2][i]);
  }
}

int ozTriSearch::enter(ozIsectAction *action, ozGeometry const *geometry) const {
  if (!_found) return 0;
  action->getActiveSeg()->setLength(limit);
  action->hitGeometry(const_cast<ozGeometry *>(geometry));
  ozSetHitNormal(action->hit, _normal);
  action->hit.primIndex = _prim;
  return 1;
}
