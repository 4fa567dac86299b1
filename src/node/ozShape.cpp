#include "oz/ozShape.h"

#include "node/visit.h"
#include "oz/ozAppearance.h"
#include "oz/ozContext.h"
#include "oz/ozDrawAction.h"
#include "oz/ozGeometry.h"

OZ_DEFINE_INSTANCES(ozShape)

OZ_DEFINE_TYPE(ozShape, "Shape", ozNode) {
  ozSFRef::addTypeField(type, "appearance", 2, ozAppearance::getClassType(), &ozShape::_appearance);
  ozMFRef::addTypeField(type, "geometry", 3, ozGeometry::getClassType(), &ozShape::_geometries);
}

ozShape::ozShape(ozType *type) : ozNode(type), _lastCullResult(0), _appearance(nullptr), _notes(nullptr) {
  initFieldDefaults(_ClassType);
}

ozShape::~ozShape() {
  if (_notes) setPathListCount(0);
  delete _notes;
  destroyFieldContents(_ClassType);
}

// ---- contents

ozAppearance *ozShape::getAppearance() { return read(2, _appearance); }
void ozShape::setAppearance(ozAppearance *appearance) { storeRef(2, _appearance, appearance); }

void ozShape::addGeometry(ozGeometry *geometry) {
  static_cast<ozMFRefInfo *>(getFieldInfo(3))->append(this, geometry);
  fieldChanged(3);
}

void ozShape::insertGeometry(int index, ozGeometry *geometry) {
  this->geometry()->insert(static_cast<unsigned int>(index), geometry);
  fieldChanged(3);
}

void ozShape::setGeometry(int index, ozGeometry *geometry) {
  this->geometry()->set(static_cast<unsigned int>(index), geometry);
  fieldChanged(3);
}

unsigned char ozShape::removeGeometry(ozGeometry *geometry) {
  unsigned char const removed = this->geometry()->remove(geometry);
  fieldChanged(3);
  return removed;
}

void ozShape::removeGeometry(int index) {
  this->geometry()->removeIndex(static_cast<unsigned int>(index));
  fieldChanged(3);
}

long int ozShape::replaceGeometry(ozGeometry *old, ozGeometry *now) {
  long int const index = this->geometry()->replace(old, now);
  fieldChanged(3);
  return index;
}

void ozShape::setGeometryCount(int count) {
  this->geometry()->setCount(static_cast<unsigned int>(count));
  fieldChanged(3);
}

long int ozShape::findGeometry(ozGeometry *geometry) { return this->geometry()->find(geometry); }
ozGeometry *ozShape::getGeometry(int index) {
  return static_cast<ozGeometry *>(read(3, _geometries)[static_cast<unsigned int>(index)]);
}
int ozShape::getGeometryCount() { return static_cast<int>(read(3, _geometries).getCount()); }

ozShape::Notes &ozShape::notes() {
  if (!_notes) _notes = new Notes;
  return *_notes;
}

ozPtrArray *ozShape::getPath(int index) const {
  return _notes ? static_cast<ozPtrArray *>(_notes->paths[static_cast<unsigned int>(index)]) : nullptr;
}

void ozShape::setPathListCount(int count) {
  ozPtrArray &paths = notes().paths;
  for (unsigned int i = static_cast<unsigned int>(count); i < paths.getCount(); ++i) {
    delete static_cast<ozPtrArray *>(paths[i]);
    paths.set(i, nullptr);
  }
  paths.setCount(static_cast<unsigned int>(count));
}

// ---- the bound

void ozShape::fieldChanged(short id) {
  if (_ClassType->isAncestorField(id)) {
    ozNode::fieldChanged(id);
    return;
  }
  if (id == 3 && _boundMode == DYNAMIC) propagateSideEffect(0);
  touchField(id);
}

void ozShape::childChanged(ozContainer *child, short id) {
  if (id == 0 && _boundMode == DYNAMIC)
    propagateSideEffect(0);
  else
    ozNode::childChanged(child, id);
}

void ozShape::cleanSideEffect(short id) {
  if (id != 0) {
    ozNode::cleanSideEffect(id);
    return;
  }
  ozBoxBound all;
  for (unsigned int i = 0; i < _geometries.getCount(); ++i) {
    if (!_geometries[i]) continue;
    ozBoxBound box;
    static_cast<ozGeometry *>(_geometries[i])->getBoxBound(box);
    all.extendBy(&box);
  }
  ozBoxBound const *boxes[] = {&all};
  _boxBound.around(boxes, 1);
  touchField(0);
}

// ---- visits

inline void ozShape::drawParts(ozDrawAction *action) {
  if (_appearance)
    _appearance->draw(action);
  else
    action->getContext()->drawApp(nullptr, 1);
  for (unsigned int i = 0; i < _geometries.getCount(); ++i)
    if (_geometries[i]) static_cast<ozGeometry *>(_geometries[i])->draw(action);
}

void ozShape::draw(ozDrawAction *action) {
  cleanFields();
  drawWithoutClean(action);
}

void ozShape::drawWithoutClean(ozDrawAction *action) { drawParts(action); }

void ozShape::isect(ozIsectAction *action) {
  cleanFields();
  if (ozMissesBox(_boxBound, action)) return;
  for (unsigned int i = 0; i < _geometries.getCount(); ++i) {
    ozGeometry *const geometry = static_cast<ozGeometry *>(_geometries[i]);
    if (!geometry) continue;
    action->pushPath(geometry);
    if (geometry->isect(action)) action->hit.shape = this;
    action->popPath();
  }
}

static ozTravDirective nothing(ozTravDirective verdict) { return verdict; }

ozTravDirective ozShape::visit(ozAction *action) {
  cleanFields();
  return ozFrame(this, action, nothing);
}

ozTravDirective ozShape::transformVisit(ozTransformAction *action) {
  cleanFields();
  return ozFrame(this, action, nothing);
}

ozTravDirective ozShape::vfCullVisit(ozVFCullAction *action) {
  cleanFields();
  return ozCulled(
      _boxBound, action, [&] { return ozFrame(this, action, nothing); }, &_lastCullResult);
}

ozTravDirective ozShape::drawVisit(ozDrawAction *action) {
  cleanFields();
  return ozCulledFrame(this, _boxBound, action, [&] {
    drawParts(action);
    return TRAV_CONT;
  });
}
