#ifndef GEOMETRY_OZ_PRIM_ISECT_H
#define GEOMETRY_OZ_PRIM_ISECT_H

#include "geometry/ozPickIndex.h"
#include "oz/ozGeoSet.h"
#include "oz/ozIsectAction.h"

// The loop over the triangles of a set, shared by all sets that have some: visit(a, b, c, number, primIndex) for each.
template <class Split, class Visit>
void ozGeoSet::visitTris(VecReader const &coords, Kind const &kind, ozIntArray const *lengths, Split const &split,
                         Visit const &visit) const {
  unsigned int prims = _primCount > 0 ? static_cast<unsigned int>(_primCount) : 0;
  if (lengths && lengths->getCount() < prims) prims = lengths->getCount();
  unsigned int first = 0, number = 0;
  int position = 0;
  for (unsigned int prim = 0; prim < prims; ++prim) {
    int const given = lengths ? (*lengths)[prim] : kind.len;
    int const len = given > 0 ? given : 0;
    if (static_cast<unsigned int>(len) > coords.count - first) break;
    auto const triangle = [&](int a, int b, int c, int primIndex) {
      ozVec3f const *const pa = coords.get(first + static_cast<unsigned int>(a));
      ozVec3f const *const pb = coords.get(first + static_cast<unsigned int>(b));
      ozVec3f const *const pc = coords.get(first + static_cast<unsigned int>(c));
      ++position;
      if (pa && pb && pc) visit(*pa, *pb, *pc, number++, primIndex);
    };
    first += static_cast<unsigned int>(split(static_cast<int>(prim), position, len, triangle));
    if (first > coords.count) break;
  }
}

template <class Split>
int ozGeoSet::isectPrims(ozIsectAction *action, Kind const &kind, ozIntArray const *lengths,
                         ozContext::CullFaceEnum cull, Split split) {
  if (!hasWholeIndices(kind, lengths)) return 0;
  VecReader const coords = readCoords();
  ozTriSearch search(*action->getActiveSeg(), cull);
  if (_pickIndex) followPicks(coords, lengths);
  if (!_pickIndex || !_pickIndex->search(search)) {
    auto const triangles = [&](auto const &visit) { visitTris(coords, kind, lengths, split, visit); };
    unsigned int count = 0;
    triangles([&](ozVec3f const &a, ozVec3f const &b, ozVec3f const &c, unsigned int number, int primIndex) {
      search.add(a, b, c, number, primIndex);
      count = number + 1;
    });
    search.finish();
    if (count >= ozPickIndex::LEAST_TRIS && _pickIndexEnable) {
      if (!_pickIndex) followPicks(coords, lengths);
      if (_pickIndex->isDue(count)) _pickIndex->build(count, triangles);
    }
  }
  return search.enter(action, this);
}

#endif
