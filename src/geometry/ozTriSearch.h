#ifndef GEOMETRY_OZ_TRI_SEARCH_H
#define GEOMETRY_OZ_TRI_SEARCH_H

#include "geometry/ozLane4.h"
#include "oz/ozGeometry.h"
#include "oz/ozSeg.h"

class ozIsectAction;

// What the test of a ray against four triangles works out first; see ozTriCache.
struct ozTriCache4 {
  ozLane4 a[3], ab[3], ac[3];
  ozLane4 normal[3], offset;
  ozLaneMask dropX, dropY; // the axis that is left out of the projection; otherwise it is z
  ozLane4 invDet;

  ozTriCache4(ozVec3f const *const pa[4], ozVec3f const *const pb[4], ozVec3f const *const pc[4]) {
    ozLane4 b[3], c[3];
    ozLane4::load3(pa[0]->_v, pa[1]->_v, pa[2]->_v, pa[3]->_v, a);
    ozLane4::load3(pb[0]->_v, pb[1]->_v, pb[2]->_v, pb[3]->_v, b);
    ozLane4::load3(pc[0]->_v, pc[1]->_v, pc[2]->_v, pc[3]->_v, c);
    for (int i = 0; i < 3; ++i) {
      ab[i] = b[i] - a[i];
      ac[i] = c[i] - a[i];
    }
    for (int i = 0; i < 3; ++i) {
      int const j = (i + 1) % 3, k = (i + 2) % 3;
      normal[i] = ab[j] * ac[k] - ab[k] * ac[j];
    }
    // As ozVec3f::normalize: a very short one grows very large, and zero stays zero.
    ozLane4 const length = root(dot(normal, normal)), one = ozLane4::fill(1.0f);
    ozLane4 const tiny = ozLane4::fill(OZ_TINY_EPSILON), infinity = ozLane4::fill(OZ_INFINITY);
    ozLane4 const factor = select(length < tiny, infinity, one / length);
    for (int i = 0; i < 3; ++i) normal[i] = normal[i] * factor;
    offset = dot(normal, a);

    // The projection along the longest component of the normal keeps the most of the area; ties go to the later test.
    ozLane4 const nx = abs(normal[0]), ny = abs(normal[1]), nz = abs(normal[2]);
    ozLaneMask const overY = ny < nx;
    dropX = overY & (nz < nx);
    dropY = (nz < ny) & ~overY;
    ozLane4 const det = alongU(ab) * alongV(ac) - alongU(ac) * alongV(ab);
    invDet = one / select(abs(det) < tiny, tiny, det);
  }

  static ozLane4 dot(ozLane4 const *a, ozLane4 const *b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
  // The two components that are left in the projection.
  ozLane4 alongU(ozLane4 const *vector) const { return select(dropX, vector[1], vector[0]); }
  ozLane4 alongV(ozLane4 const *vector) const { return select(dropX | dropY, vector[2], vector[1]); }
};

// The same of one triangle.
inline void ozCacheTri(ozTriCache &cache, ozVec3f const &a, ozVec3f const &b, ozVec3f const &c) {
  ozVec3f const *const pa[4] = {&a, &a, &a, &a}, *const pb[4] = {&b, &b, &b, &b}, *const pc[4] = {&c, &c, &c, &c};
  ozTriCache4 const four(pa, pb, pc);
  auto const first = [](ozLane4 lanes) {
    float values[4];
    lanes.store(values);
    return values[0];
  };
  for (int i = 0; i < 3; ++i) cache.plane.normal._v[i] = first(four.normal[i]);
  cache.plane.offset = first(four.offset);
  bool const dropX = four.dropX.bits() & 1, dropY = four.dropY.bits() & 1;
  cache.axisU = dropX ? 1 : 0;
  cache.axisV = dropX || dropY ? 2 : 1;
  cache.invDet = first(four.invDet);
}

// The search of a segment for the nearest among triangles. The candidates may come in any order: of equally near ones
// that with the highest number counts, as if they came by number.
class ozTriSearch {
public:
  ozTriSearch(ozSeg const &seg, ozContext::CullFaceEnum cull)
      : origin(seg.getOrigin()), direction(seg.getDirection()), limit(seg.getLength()), _cull(cull), _waiting(0),
        _found(false), _number(0), _prim(0) {}

  // Takes a triangle, whose corners have to stay up to the next finish(). Four are tested at a time.
  void add(ozVec3f const &a, ozVec3f const &b, ozVec3f const &c, unsigned int number, int prim) {
    _a[_waiting] = &a;
    _b[_waiting] = &b;
    _c[_waiting] = &c;
    _numbers[_waiting] = number;
    _prims[_waiting] = prim;
    if (++_waiting == 4) test();
  }
  // Tests those that wait for others to come.
  void finish() {
    if (!_waiting) return;
    for (int i = _waiting; i < 4; ++i) {
      _a[i] = _a[0];
      _b[i] = _b[0];
      _c[i] = _c[0];
    }
    test();
  }
  // Shortens the action's segment to what was found and records it as a hit on the geometry; returns 0 if that is
  // nothing.
  int enter(ozIsectAction *action, ozGeometry const *geometry) const;

  ozVec3f const origin, direction;
  float limit; // no triangle beyond this distance counts: the end of the segment, or the nearest found so far

private:
  void test();

  ozContext::CullFaceEnum const _cull;
  int _waiting;
  ozVec3f const *_a[4], *_b[4], *_c[4];
  unsigned int _numbers[4];
  int _prims[4];

  bool _found;
  unsigned int _number;
  int _prim;
  ozVec3f _normal;
};

#endif
