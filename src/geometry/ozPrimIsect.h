#ifndef GEOMETRY_OZ_PRIM_ISECT_H
#define GEOMETRY_OZ_PRIM_ISECT_H

#include "oz/ozGeoSet.h"
#include "oz/ozIsectAction.h"

// The loop over the triangles of a set, shared by all sets that have some.
template <class Split>
int ozGeoSet::isectPrims(ozIsectAction *action, Kind const &kind, ozIntArray const *lengths,
                         ozContext::CullFaceEnum cull, Split split) {
  if (!hasWholeIndices(kind, lengths)) return 0;
  VecReader const coords = readCoords();
  unsigned int prims = _primCount > 0 ? static_cast<unsigned int>(_primCount) : 0;
  if (lengths && lengths->getCount() < prims) prims = lengths->getCount();
  unsigned int first = 0;
  int hits = 0;
  for (unsigned int prim = 0; prim < prims; ++prim) {
    int const given = lengths ? (*lengths)[prim] : kind.len;
    int const len = given > 0 ? given : 0;
    if (static_cast<unsigned int>(len) > coords.count - first) break;
    auto const triangle = [&](int a, int b, int c, int primIndex) {
      ozVec3f const *const pa = coords.get(first + static_cast<unsigned int>(a));
      ozVec3f const *const pb = coords.get(first + static_cast<unsigned int>(b));
      ozVec3f const *const pc = coords.get(first + static_cast<unsigned int>(c));
      if (pa && pb && pc) hits |= isectTri(action, *pa, *pb, *pc, cull, primIndex);
    };
    first += static_cast<unsigned int>(split(static_cast<int>(prim), len, triangle));
    if (first > coords.count) break;
  }
  return hits;
}

#endif
