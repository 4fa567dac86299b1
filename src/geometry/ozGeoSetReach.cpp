// How far a set may be drawn. Counts that are too large, lengths that are too few and indices that lead nowhere are met
// here, once a change and outside of all vertex loops: what is whole is drawn, and a set with a bad index not at all.

#include <limits.h>
#include <stdio.h>

#include "geometry/ozCountInUse.h"
#include "oz/ozGeoSet.h"

namespace {
enum FrequencyEnum { NEVER, OVERALL, PER_PRIM, PER_VERTEX };
} // namespace

// The number of elements of an attribute set. One of the application's own may keep them in field 0; otherwise it has
// to hold enough.
unsigned int ozGeoSet::elementCount(ozValueSet *set) {
  if (ozArray *const elements = set->elements()) {
    set->validateField(0);
    return ozCountInUse(*elements);
  }
  ozField *const field = set->getType()->getFieldInfoCount() > 0 ? set->getField(0) : nullptr;
  if (!field || !field->getType()->isDerivedFrom(ozMField::getClassType())) return UINT_MAX;
  return ozCountInUse(*static_cast<ozMField *>(field));
}

int *ozGeoSet::indicesOf(ozIndexSet *set) {
  set->validateField(0);
  return static_cast<ozIntArray *>(set->elements())->getArray();
}

// One attribute of the set.
struct ozGeoSet::Source {
  int frequency;
  unsigned int elements;
  ozIndexSet *indexSet;
  unsigned int indices;

  Source(ozValueSet *set, ozIndexSet *index, int bound)
      : frequency(set ? bound : static_cast<int>(NEVER)), elements(0), indexSet(index), indices(0) {
    if (frequency == NEVER) return;
    elements = elementCount(set);
    if (index) indices = elementCount(index);
  }
  // How many times the attribute can be sent.
  unsigned int available() const { return indexSet ? indices : elements; }
  bool isWhole(unsigned int used) const {
    if (!indexSet) return true;
    int const *const index = indicesOf(indexSet);
    for (unsigned int i = 0; i < used; ++i)
      if (static_cast<unsigned int>(index[i]) >= elements) return false;
    return true;
  }
};

void ozGeoSet::findReach(Kind const &kind, ozIntArray const *lengths) {
  unsigned int const count = lengths ? ozCountInUse(*lengths) : 0;
  if (_reach.lengths != count) forgetReach();
  _reach.lengths = count;
  if (_reach.isKept && isDescriptionFresh()) return;
  // The set's own fields take the mark off themselves when they change. The counts are looked at every time, since an
  // array may change without a word; the edits of an index only count upwards, so their sum tells all of them.
  unsigned int *key = _reach.keys, edits = 0;
  auto const see = [&](unsigned int *known, unsigned int value) {
    if (*known == value) return;
    *known = value;
    _reach.known = false;
  };
  auto const seeSet = [&](ozValueSet *set, ozIndexSet *indexSet) {
    see(key++, elementCount(set));
    if (!indexSet) return;
    see(key++, elementCount(indexSet));
    edits += indexSet->_edits;
  };
  if (_coordSet) seeSet(_coordSet, _coordIndexSet);
  if (_normalBindNow) seeSet(_normalSet, _normalIndexSet);
  if (_colorBindNow) seeSet(_colorSet, _colorIndexSet);
  if (_texCoordBindNow) seeSet(_texCoordSet, _texCoordIndexSet);
  see(key, edits);
  if (_reach.known) return;
  _reach.known = true;
  workOutReach(kind, lengths);
  if (!_reach.whole)
    fprintf(stderr, "%s \"%s\": an index is out of range, nothing is drawn\n", getType()->getName(),
            getName() ? getName() : "");
}

void ozGeoSet::workOutReach(Kind const &kind, ozIntArray const *lengths) {
  Source const sources[] = {
      Source(_coordSet, _coordIndexSet, PER_VERTEX),
      Source(_normalSet, _normalIndexSet, _normalBindNow),
      Source(_colorSet, _colorIndexSet, _colorBindNow),
      Source(_texCoordSet, _texCoordIndexSet, _texCoordBindNow ? PER_VERTEX : NEVER),
  };
  // The most primitives and vertices that all attributes can serve.
  unsigned int prims = _primCount > 0 ? static_cast<unsigned int>(_primCount) : 0, verts = INT_MAX;
  if (lengths && ozCountInUse(*lengths) < prims) prims = ozCountInUse(*lengths);
  for (Source const &source : sources) {
    unsigned int const available = source.available();
    if (source.frequency == OVERALL && !available) prims = 0;
    if (source.frequency == PER_PRIM && available < prims) prims = available;
    if (source.frequency == PER_VERTEX && available < verts) verts = available;
  }

  unsigned int used = 0;
  if (lengths) {
    int const least = getDrawPath() == IMMEDIATE_PATH ? kind.least : 0;
    unsigned int prim = 0;
    for (; prim < prims; ++prim) {
      int const length = (*lengths)[prim];
      unsigned int const taken = static_cast<unsigned int>(length < 0 ? 0 : length < least ? least : length);
      if (taken > verts - used) break;
      used += taken;
    }
    prims = prim;
  } else {
    unsigned int const len = static_cast<unsigned int>(kind.len);
    if (verts / len < prims) prims = verts / len;
    used = prims * len;
  }

  _reach.prims = static_cast<int>(prims);
  _reach.whole = true;
  for (Source const &source : sources) {
    unsigned int const needed = source.frequency == PER_VERTEX ? used
                                : source.frequency == PER_PRIM ? prims
                                : source.frequency == OVERALL  ? (prims ? 1 : 0)
                                                               : 0;
    if (needed && !source.isWhole(needed)) _reach.whole = false;
  }
}

bool ozGeoSet::hasWholeIndices(Kind const &kind, ozIntArray const *lengths) {
  findReach(kind, lengths);
  return _reach.whole;
}
