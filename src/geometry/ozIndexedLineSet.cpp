#include "oz/ozIndexedLineSet.h"

#include <GL/gl.h>

#include "geometry/indexedSets.h"
#include "oz/ozContext.h"
#include "oz/ozDrawAction.h"

OZ_DEFINE_INSTANCES(ozIndexedLineSet)

OZ_DEFINE_TYPE(ozIndexedLineSet, "IndexedLineSet", ozLineStripSet) {
  ozMFInt::addTypeField(type, "coordIndex", 17, &ozIndexedLineSet::_coordIndices);
  ozMFInt::addTypeField(type, "colorIndex", 18, &ozIndexedLineSet::_colorIndices);
  ozSFUByte::addTypeField(type, "colorPerVertex", 19, 1, &ozIndexedLineSet::_colorPerVertex);
}

ozIndexedLineSet::ozIndexedLineSet(ozType *type) : ozLineStripSet(type) { init(); }

ozIndexedLineSet::ozIndexedLineSet(ozIndexedLineSet const &other) : ozLineStripSet(other) {
  init();
  ozCopyFields(_ClassType, this, &other);
  _colorBind = other._colorBind;
  ozIndexedSets::reclaim(*this, other);
  flattenCoordIndices();
}

ozIndexedLineSet &ozIndexedLineSet::operator=(ozIndexedLineSet const &other) {
  if (this == &other) return *this;
  _copying = 1;
  ozIndexedSets::release(*this);
  ozLineStripSet::operator=(other);
  ozAssignFields(_ClassType, this, &other);
  ozIndexedSets::reclaim(*this, other);
  _copying = 0;
  flattenCoordIndices();
  return *this;
}

ozIndexedLineSet::~ozIndexedLineSet() { destroyFieldContents(_ClassType); }

void ozIndexedLineSet::init() {
  _coordIndex = static_cast<ozMFInt *>(getField(17));
  _colorIndex = static_cast<ozMFInt *>(getField(18));
  _copying = 0;
  initFieldDefaults(_ClassType);
  _colorBind = PER_VERTEX_COLOR;
  _bpcPrimNormMode = 1;
  ozIndexedSets::begin(*this);
  calcBindings();
}

void ozIndexedLineSet::copy(ozContainer *src, ozCloneTable *table) {
  _copying = 1;
  ozIndexedSets::release(*this);
  ozLineStripSet::copy(src, table);
  if (src->isOfType(_ClassType)) ozIndexedSets::reclaim(*this, *static_cast<ozIndexedLineSet *>(src));
  _copying = 0;
  flattenCoordIndices();
}

void ozIndexedLineSet::recursiveCopy(ozContainer *src, ozCloneTable *table) {
  _copying = 1;
  ozIndexedSets::release(*this);
  ozLineStripSet::recursiveCopy(src, table);
  if (src->isOfType(_ClassType)) ozIndexedSets::reclaim(*this, *static_cast<ozIndexedLineSet *>(src));
  _copying = 0;
  flattenCoordIndices();
}

// Derives what the lists say: the coordinates' part and the colours'.
void ozIndexedLineSet::flattenCoordIndices() {
  if (_coordIndexSet) flattenVRMLIndices(_coordIndex, _coordIndexSet, _stripLength);
  setPrimCount(static_cast<int>(_stripLength->getCount()));
  if (_own.isDerived(12, _colorIndexSet, _coordIndexSet))
    ozIndexedSets::derive(*this, 12, _colorIndex, _colorBind == PER_PRIM_COLOR);
}

// Beside the fields of its own the class passes all to ozGeoSet: the lengths and the width do nothing more, so that the
// width set here is not drawn with. Meant so.
void ozIndexedLineSet::fieldChanged(short id) {
  switch (_copying && id >= 17 ? -1 : id) {
  case -1: break;
  case 4:
    ozGeoSet::fieldChanged(id);
    if (!_copying && _own.isDerived(12, _colorIndexSet, _coordIndexSet))
      ozIndexedSets::derive(*this, 12, _colorIndex, _colorBind == PER_PRIM_COLOR);
    return;
  case 17:
    flattenVRMLIndices(_coordIndex, _coordIndexSet, _stripLength);
    setPrimCount(static_cast<int>(_stripLength->getCount()));
    break;
  case 18: ozIndexedSets::derive(*this, 12, _colorIndex, _colorBind == PER_PRIM_COLOR); break;
  case 19: setColorBind(_colorPerVertex ? PER_VERTEX_COLOR : PER_PRIM_COLOR); break;
  default: ozGeoSet::fieldChanged(id); return;
  }
  touchField(id);
}

void ozIndexedLineSet::draw(ozDrawAction *action) {
  ozContext *const context = action->getContext();
  if (getColorBind() == NO_COLOR) glColor3f(1, 1, 1);
  if (!context->getTexEnable() && !context->getLightEnable()) {
    ozLineStripSet::draw(action);
    return;
  }
  context->pushState();
  setContextWhichSetStateAsCurrentState(context); // the application's own settings stay what they are
  context->setTexEnable(0);
  context->setLightEnable(0);
  setContextWhichSetStateAsDefaultState(context);
  ozLineStripSet::draw(action);
  context->popState();
}

void ozIndexedLineSet::write(ozOutput *out) {
  static short const ids[] = {0, 1, 19, 8, 6, 18, 17};
  writeFields(out, ids, sizeof ids / sizeof ids[0]);
}
