#include "oz/ozIndexedFaceSet.h"

#include "geometry/ozOwnIndices.h"

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
  ozOwnIndices::adopt(this, const_cast<ozIndexedFaceSet *>(&other));
  calcBindings();
  _setMask = other._setMask;
}

ozIndexedFaceSet &ozIndexedFaceSet::operator=(ozIndexedFaceSet const &other) {
  if (this == &other) return *this;
  ozPolySet::operator=(other);
  ozAssignFields(_ClassType, this, &other);
  ozOwnIndices::adopt(this, const_cast<ozIndexedFaceSet *>(&other));
  _setMask = other._setMask;
  return *this;
}

ozIndexedFaceSet::~ozIndexedFaceSet() {
  ozOwnIndices::release(this);
  destroyFieldContents(_ClassType);
}

void ozIndexedFaceSet::init() {
  _coordIndex = static_cast<ozMFInt *>(getField(20));
  _colorIndex = static_cast<ozMFInt *>(getField(21));
  _texCoordIndex = static_cast<ozMFInt *>(getField(22));
  _normalIndex = static_cast<ozMFInt *>(getField(23));
  initFieldDefaults(_ClassType);
  _colorBind = PER_VERTEX_COLOR;
  _normalBind = PER_VERTEX_NORMAL;
  ozOwnIndices::init(this);
  calcBindings();
  for (short id = 11; id <= 13; ++id) markSideEffect(id); // what nobody indexes follows the coordinates
}

void ozIndexedFaceSet::copy(ozContainer *src, ozCloneTable *table) {
  ozOwnIndices::copy(this, src, [=] { ozPolySet::copy(src, table); });
}

void ozIndexedFaceSet::recursiveCopy(ozContainer *src, ozCloneTable *table) {
  ozOwnIndices::copy(this, src, [=] { ozPolySet::recursiveCopy(src, table); });
}

void ozIndexedFaceSet::fieldChanged(short id) {
  if (id < _ClassType->getAncestorFieldCount()) {
    ozPolySet::fieldChanged(id);
    // How an attribute is bound, and the index of the coordinates, decide what one without indices follows. An index
    // set that was stored stays.
    if (id == 3 || id == 10) markSideEffect(11);
    if (id == 4 || id == 10) markSideEffect(12);
    if (id == 5 || id == 10) markSideEffect(13);
    if (id >= 11 && id <= 13) settleSideEffect(id);
    return;
  }
  switch (id) {
  case 16:
  case 17:
    setCullFace(!_solid ? ozContext::NO_CULL : !_ccw ? ozContext::FRONT_CULL : ozContext::BACK_CULL);
    break;
  case 20:
    propagateSideEffect(0);
    markSideEffect(10);
    markSideEffect(2);
    break;
  case 21:
    markSideEffect(12);
    break;
  case 22:
    markSideEffect(13);
    break;
  case 23:
    markSideEffect(11);
    break;
  case 24:
    setColorBind(_colorPerVertex ? PER_VERTEX_COLOR : PER_PRIM_COLOR);
    break;
  case 25:
    setNormalBind(_normalPerVertex ? PER_VERTEX_NORMAL : PER_PRIM_NORMAL);
    break;
  default:
    break;
  }
  touchField(id);
}

void ozIndexedFaceSet::cleanSideEffect(short id) {
  switch (id) {
  case 2:
  case 10:
    settleSideEffect(2); // both at once
    settleSideEffect(10);
    ozOwnIndices::flattenCoords(this, _coordIndex, _polyLength);
    break;
  case 11:
    ozOwnIndices::choose(this, 1, _normalIndex, _normalBind == PER_VERTEX_NORMAL);
    break;
  case 12:
    ozOwnIndices::choose(this, 2, _colorIndex, _colorBind == PER_VERTEX_COLOR);
    break;
  case 13:
    ozOwnIndices::choose(this, 3, _texCoordIndex, true);
    break;
  default:
    ozGeoSet::cleanSideEffect(id);
    break;
  }
}

void ozIndexedFaceSet::write(ozOutput *out) {
  static short const ids[] = {0, 1, 24, 25, 8, 7, 9, 6, 21, 23, 22, 20};
  writeFields(out, ids, 12);
}
