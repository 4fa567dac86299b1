// How far a set may be drawn. Counts that are too large, lengths that are too few and indices that lead nowhere are met
// here, once a change and outside of all vertex loops: what is whole is drawn, and a set with a bad index not at all.

#include <limits.h>
#include <stdio.h>
#include <string.h>

#include <GL/gl.h>

#include "oz/ozGeoSet.h"

namespace {

template <class Array> unsigned int inUse(Array &array) {
  unsigned int const count = array.getCount(), size = array.getSize();
  return count < size ? count : size; // shrinking an array can leave its count above its size
}

enum FrequencyEnum { NEVER, OVERALL, PER_PRIM, PER_VERTEX };

} // namespace

// The number of elements of an attribute set. One of the application's own may keep them in field 0; otherwise it has
// to hold enough.
inline unsigned int ozGeoSet::elementCount(ozValueSet *set) {
  if (ozArray *const elements = set->elements()) {
    set->validateField(0);
    return inUse(*elements);
  }
  ozField *const field = set->getType()->getFieldInfoCount() > 0 ? set->getField(0) : nullptr;
  if (!field || !field->getType()->isDerivedFrom(ozMField::getClassType())) return UINT_MAX;
  return inUse(*static_cast<ozMField *>(field));
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
  unsigned int const count = lengths ? inUse(*lengths) : 0;
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
  if (lengths && inUse(*lengths) < prims) prims = inUse(*lengths);
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

// ---- what is kept from one draw to the next

namespace {

// How OpenGL takes the elements of the library's own sets.
struct Format {
  ozType *(*type)();
  ozGLAttr attr; // but for the addresses
};
template <class Function> Format format(ozType *(*type)(), int glType, short stride, short size, Function *function) {
  return {type, {nullptr, nullptr, glType, stride, size, reinterpret_cast<void (*)(void const *)>(function)}};
}
Format const formats[] = {
    format(ozCoordSet3f::getClassType, GL_FLOAT, 12, 3, glVertex3fv),
    format(ozNormalSet3f::getClassType, GL_FLOAT, 12, 3, glNormal3fv),
    format(ozTexCoordSet2f::getClassType, GL_FLOAT, 8, 2, glTexCoord2fv),
    format(ozColorSet4f::getClassType, GL_FLOAT, 16, 4, glColor4fv),
    format(ozNormalSet3s::getClassType, GL_SHORT, 6, 3, glNormal3sv),
};
int const formatCount = sizeof formats / sizeof *formats;

bool isSilent(ozValueSet *set) {
  ozField *const field = set->findFieldObject(0);
  return field && field->getEventClass() == ozField::EVENT_FORWARD;
}

} // namespace

// Calls see(set, attribute) for the sets that are bound, until it gives false. Returns whether it never did.
template <class See> bool ozGeoSet::forEachBound(See see) {
  return see(static_cast<ozValueSet *>(_coordSet), &ozGLAttrSet::coord) &&
         (!_normalBindNow || see(static_cast<ozValueSet *>(_normalSet), &ozGLAttrSet::normal)) &&
         (!_texCoordBindNow || see(static_cast<ozValueSet *>(_texCoordSet), &ozGLAttrSet::texCoord)) &&
         (!_colorBindNow || see(static_cast<ozValueSet *>(_colorSet), &ozGLAttrSet::color));
}

// Keeps what the sets have just said, if all of them are the library's own with tight arrays, which tell of each
// change, and share one index. To be called with the reach known.
void ozGeoSet::keepDescription() {
  if (getDrawPath() == IMMEDIATE_PATH || (_coordIndexSet && isSilent(_coordIndexSet))) return;
  unsigned char kinds[Reach::KEPT];
  int count = 0;
  bool const plain = forEachBound([&](ozValueSet *set, ozGLAttr ozGLAttrSet::*) {
    if (count == Reach::KEPT || !set->elements() || isSilent(set)) return false;
    int kind = 0;
    while (kind < formatCount && formats[kind].type() != set->getType()) ++kind;
    if (kind == formatCount || set->elements()->getStride() != static_cast<unsigned int>(formats[kind].attr.stride))
      return false;
    kinds[count++] = static_cast<unsigned char>(kind);
    return true;
  });
  if (!plain || (_coordIndexSet && _coordIndexSet->getType() != ozIndexSet::getClassType())) return;
  memcpy(_reach.kinds, kinds, sizeof kinds);
  _reach.moves = ozArray::getMoveCount();
  count = 0;
  forEachBound([&](ozValueSet *set, ozGLAttr ozGLAttrSet::*) {
    _reach.kept.data[count] = set->elements()->getArray();
    _reach.kept.counts[count++] = inUse(*set->elements());
    return true;
  });
  _reach.kept.index = _coordIndexSet ? indicesOf(_coordIndexSet) : nullptr;
  _reach.kept.indices = _coordIndexSet ? elementCount(_coordIndexSet) : 0;
  _reach.isKept = true;
}

// Takes the addresses anew where some array has moved. False, and all is forgotten, if one has changed without a word.
bool ozGeoSet::refreshDescription() {
  unsigned int const moves = ozArray::getMoveCount();
  int at = 0;
  bool const same = forEachBound([&](ozValueSet *set, ozGLAttr ozGLAttrSet::*) {
    _reach.kept.data[at] = set->elements()->getArray();
    return inUse(*set->elements()) == _reach.kept.counts[at++] && !isSilent(set);
  });
  if (!same || (_coordIndexSet && elementCount(_coordIndexSet) != _reach.kept.indices)) {
    forgetReach();
    return false;
  }
  if (_coordIndexSet) _reach.kept.index = indicesOf(_coordIndexSet);
  _reach.moves = moves;
  return true;
}

bool ozGeoSet::recallDescription(ozGLAttrSet &attrs) {
  if (!_reach.isKept || !isDescriptionFresh()) return false;
  int at = 0;
  return forEachBound([&](ozValueSet *, ozGLAttr ozGLAttrSet::*attribute) {
    ozGLAttr &attr = attrs.*attribute;
    attr = formats[_reach.kinds[at]].attr;
    attr.data = _reach.kept.data[at++];
    attr.index = _reach.kept.index;
    return true;
  });
}

bool ozGeoSet::hasWholeIndices(Kind const &kind, ozIntArray const *lengths) {
  findReach(kind, lengths);
  return _reach.whole;
}
