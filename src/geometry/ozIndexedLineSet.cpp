#include "oz/ozIndexedLineSet.h"

#include <GL/gl.h>

#include "geometry/ozOwnIndices.h"
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
  ozOwnIndices::adopt(this, const_cast<ozIndexedLineSet *>(&other));
  calcBindings();
  _setMask = other._setMask;
}

ozIndexedLineSet &ozIndexedLineSet::operator=(ozIndexedLineSet const &other) {
  if (this == &other) return *this;
  ozLineStripSet::operator=(other);
  ozAssignFields(_ClassType, this, &other);
  ozOwnIndices::adopt(this, const_cast<ozIndexedLineSet *>(&other));
  _setMask = other._setMask;
  return *this;
}

ozIndexedLineSet::~ozIndexedLineSet() {
  ozOwnIndices::release(this);
  destroyFieldContents(_ClassType);
}

void ozIndexedLineSet::init() {
  _coordIndex = static_cast<ozMFInt *>(getField(17));
  _colorIndex = static_cast<ozMFInt *>(getField(18));
  initFieldDefaults(_ClassType);
  _colorBind = PER_VERTEX_COLOR;
  _bpcPrimNormMode = 1;
  ozOwnIndices::init(this);
  refer(_colorIndexSet, _coordIndexSet); // colours that nobody indexes follow the coordinates
  _colorIndexSet = _coordIndexSet;
  calcBindings();
}

void ozIndexedLineSet::copy(ozContainer *src, ozCloneTable *table) {
  ozOwnIndices::copy(this, src, [=] { ozLineStripSet::copy(src, table); });
}

void ozIndexedLineSet::recursiveCopy(ozContainer *src, ozCloneTable *table) {
  ozOwnIndices::copy(this, src, [=] { ozLineStripSet::recursiveCopy(src, table); });
}

// Flattens at once, unlike the face set. A change of the width sets nothing here: meant so.
void ozIndexedLineSet::fieldChanged(short id) {
  if (id < _ClassType->getAncestorFieldCount()) {
    ozGeoSet::fieldChanged(id);
    if ((id == 4 || id == 10) && !_copying && !_colorIndices.getCount())
      ozOwnIndices::choose(this, 2, _colorIndex, _colorBind == PER_VERTEX_COLOR);
    return;
  }
  if (id == 19)
    setColorBind(_colorPerVertex ? PER_VERTEX_COLOR : PER_PRIM_COLOR);
  else if (id == 17 && !_copying)
    ozOwnIndices::flattenCoords(this, _coordIndex, _stripLength);
  else if (id == 18 && !_copying)
    ozOwnIndices::choose(this, 2, _colorIndex, _colorBind == PER_VERTEX_COLOR);
  touchField(id);
}

void ozIndexedLineSet::draw(ozDrawAction *action) {
  if (getColorBind() == NO_COLOR) glColor3f(1, 1, 1);
  ozContext *const context = action->getContext();
  if (!context->getTexEnable() && !context->getLightEnable()) {
    ozLineStripSet::draw(action);
    return;
  }
  context->pushState();
  setContextWhichSetStateAsCurrentState(context); // only while this is drawn
  context->setTexEnable(0);
  context->setLightEnable(0);
  setContextWhichSetStateAsDefaultState(context);
  ozLineStripSet::draw(action);
  context->popState();
}

void ozIndexedLineSet::write(ozOutput *out) {
  static short const ids[] = {0, 1, 19, 8, 6, 18, 17};
  writeFields(out, ids, 7);
}
