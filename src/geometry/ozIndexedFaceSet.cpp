#include "oz/ozIndexedFaceSet.h"

#include <initializer_list>

#include "geometry/indexedSets.h"

OZ_DEFINE_INSTANCES(ozIndexedFaceSet)

OZ_DEFINE_TYPE(ozIndexedFaceSet, "IndexedFaceSet", ozPolySet) {
  ozSFUByte::addTypeField(type, "ccw", 16, 1, &ozIndexedFaceSet::_ccw);
  ozSFUByte::addTypeField(type, "solid", 17, 1, &ozIndexedFaceSet::_solid);
  ozSFUByte::addTypeField(type, "convex", 18, 1, &ozIndexedFaceSet::_convex);
  ozSFFloat::addTypeField(type, "creaseAngle", 19, 0.0f, &ozIndexedFaceSet::_creaseAngle);
  ozMFInt::addTypeField(type, "coordIndex", 20, &ozIndexedFaceSet::_coordIndices);
  ozMFInt::addTypeField(type, "colorIndex", 21, &ozIndexedFaceSet::_colorIndices);
  ozMFInt::addTypeField(type, "texCoordIndex", 22, &ozIndexedFaceSet::_texCoordIndices);
  ozMFInt::addTypeField(type, "normalIndex", 23, &ozIndexedFaceSet::_normalIndices);
  ozSFUByte::addTypeField(type, "colorPerVertex", 24, 1, &ozIndexedFaceSet::_colorPerVertex);
  ozSFUByte::addTypeField(type, "normalPerVertex", 25, 1, &ozIndexedFaceSet::_normalPerVertex);
}

ozIndexedFaceSet::ozIndexedFaceSet(ozType *type) : ozPolySet(type) { init(); }

ozIndexedFaceSet::ozIndexedFaceSet(ozIndexedFaceSet const &other) : ozPolySet(other) {
  init();
  ozCopyFields(_ClassType, this, &other);
  _colorBind = other._colorBind;
  _normalBind = other._normalBind;
  ozIndexedSets::reclaim(*this, other);
  for (short id : {2, 10, 11, 12, 13}) markSideEffect(id);
}

ozIndexedFaceSet &ozIndexedFaceSet::operator=(ozIndexedFaceSet const &other) {
  if (this == &other) return *this;
  ozIndexedSets::release(*this);
  ozPolySet::operator=(other);
  ozAssignFields(_ClassType, this, &other);
  ozIndexedSets::reclaim(*this, other);
  return *this;
}

ozIndexedFaceSet::~ozIndexedFaceSet() { destroyFieldContents(_ClassType); }

void ozIndexedFaceSet::init() {
  _coordIndex = static_cast<ozMFInt *>(getField(20));
  _colorIndex = static_cast<ozMFInt *>(getField(21));
  _texCoordIndex = static_cast<ozMFInt *>(getField(22));
  _normalIndex = static_cast<ozMFInt *>(getField(23));
  initFieldDefaults(_ClassType);
  _colorBind = PER_VERTEX_COLOR;
  _normalBind = PER_VERTEX_NORMAL;
  ozIndexedSets::begin(*this);
  calcBindings();
}

void ozIndexedFaceSet::copy(ozContainer *src, ozCloneTable *table) {
  ozIndexedSets::release(*this);
  ozPolySet::copy(src, table);
  if (src->isOfType(_ClassType)) ozIndexedSets::reclaim(*this, *static_cast<ozIndexedFaceSet *>(src));
}

void ozIndexedFaceSet::recursiveCopy(ozContainer *src, ozCloneTable *table) {
  ozIndexedSets::release(*this);
  ozPolySet::recursiveCopy(src, table);
  if (src->isOfType(_ClassType)) ozIndexedSets::reclaim(*this, *static_cast<ozIndexedFaceSet *>(src));
}

void ozIndexedFaceSet::fieldChanged(short id) {
  switch (id) {
  case 3:
  case 4:
    // A list that is empty stands for another order now.
    ozPolySet::fieldChanged(id);
    if (_own.isDerived(id + 8, ozIndexedSets::member(*this, id + 8), _coordIndexSet)) markSideEffect(id + 8);
    return;
  case 16:
  case 17: setCullFace(!_solid ? ozContext::NO_CULL : !_ccw ? ozContext::FRONT_CULL : ozContext::BACK_CULL); break;
  case 20:
    propagateSideEffect(0);
    markSideEffect(10);
    markSideEffect(2);
    break;
  case 21: markSideEffect(12); break;
  case 22: markSideEffect(13); break;
  case 23: markSideEffect(11); break;
  case 24: setColorBind(_colorPerVertex ? PER_VERTEX_COLOR : PER_PRIM_COLOR); break;
  case 25: setNormalBind(_normalPerVertex ? PER_VERTEX_NORMAL : PER_PRIM_NORMAL); break;
  default:
    if (id < _ClassType->getAncestorFieldCount()) {
      ozPolySet::fieldChanged(id);
      return;
    }
  }
  touchField(id);
}

void ozIndexedFaceSet::cleanSideEffect(short id) {
  switch (id) {
  case 2:
  case 10:
    if (_coordIndexSet) flattenVRMLIndices(_coordIndex, _coordIndexSet, _polyLength);
    // By the lengths as a whole, stale ones included: meant so.
    setPrimCount(static_cast<int>(_polyLength->getCount()));
    clearSideEffect(2);
    clearSideEffect(10);
    break;
  case 11: ozIndexedSets::derive(*this, id, _normalIndex, _normalBind == PER_PRIM_NORMAL); break;
  case 12: ozIndexedSets::derive(*this, id, _colorIndex, _colorBind == PER_PRIM_COLOR); break;
  case 13: ozIndexedSets::derive(*this, id, _texCoordIndex, false); break;
  default: ozPolySet::cleanSideEffect(id);
  }
}

void ozIndexedFaceSet::write(ozOutput *out) {
  static short const ids[] = {0, 1, 24, 25, 8, 7, 9, 6, 21, 23, 22, 20};
  writeFields(out, ids, sizeof ids / sizeof ids[0]);
}
