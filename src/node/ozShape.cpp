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

ozShape::ozShape(ozType *type)
    : ozNode(type), _lastCullResult(0), _appearance(nullptr), _geometries(2u), _systemUserData(nullptr), _pathList(1u),
      _cullStatus(1u) {
  initFieldDefaults(_ClassType);
  _geometryField = static_cast<ozMFRef *>(getField(3));
}

ozShape::~ozShape() {
  setPathListCount(0);
  destroyFieldContents(_ClassType);
}

// ---- contents

ozAppearance *ozShape::getAppearance() { return read(2, _appearance); }
void ozShape::setAppearance(ozAppearance *appearance) { storeRef(2, _appearance, appearance); }

void ozShape::addGeometry(ozGeometry *geometry) {
  _geometryField->append(geometry);
  fieldChanged(3);
}

void ozShape::insertGeometry(int index, ozGeometry *geometry) {
  _geometryField->insert(static_cast<unsigned int>(index), geometry);
  fieldChanged(3);
}

void ozShape::setGeometry(int index, ozGeometry *geometry) {
  _geometryField->set(static_cast<unsigned int>(index), geometry);
  fieldChanged(3);
}

unsigned char ozShape::removeGeometry(ozGeometry *geometry) {
  unsigned char const removed = _geometryField->remove(geometry);
  fieldChanged(3);
  return removed;
}

void ozShape::removeGeometry(int index) {
  _geometryField->removeIndex(static_cast<unsigned int>(index));
  fieldChanged(3);
}

long int ozShape::replaceGeometry(ozGeometry *old, ozGeometry *now) {
  long int const index = _geometryField->replace(old, now);
  fieldChanged(3);
  return index;
}

void ozShape::setGeometryCount(int count) {
  _geometryField->setCount(static_cast<unsigned int>(count));
  fieldChanged(3);
}

long int ozShape::findGeometry(ozGeometry *geometry) { return _geometryField->find(geometry); }
ozGeometry *ozShape::getGeometry(int index) {
  return static_cast<ozGeometry *>(read(3, _geometries)[static_cast<unsigned int>(index)]);
}
int ozShape::getGeometryCount() { return static_cast<int>(read(3, _geometries).getCount()); }

ozPtrArray *ozShape::getPath(int index) const {
  return static_cast<ozPtrArray *>(_pathList[static_cast<unsigned int>(index)]);
}

void ozShape::setPathListCount(int count) {
  for (unsigned int i = static_cast<unsigned int>(count); i < _pathList.getCount(); ++i) {
    delete static_cast<ozPtrArray *>(_pathList[i]);
    _pathList.set(i, nullptr);
  }
  _pathList.setCount(static_cast<unsigned int>(count));
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

void ozShape::draw(ozDrawAction *action) {
  cleanFields();
  drawWithoutClean(action);
}

void ozShape::drawWithoutClean(ozDrawAction *action) {
  if (_appearance)
    _appearance->draw(action);
  else
    action->getContext()->drawApp(nullptr, 1);
  for (unsigned int i = 0; i < _geometries.getCount(); ++i)
    if (_geometries[i]) static_cast<ozGeometry *>(_geometries[i])->draw(action);
}

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
    drawWithoutClean(action);
    return TRAV_CONT;
  });
}
