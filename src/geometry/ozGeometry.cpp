#include "oz/ozGeometry.h"

#include "geometry/ozTriSearch.h"
#include "oz/ozIsectAction.h"
#include "oz/ozSFByte.h"

OZ_DEFINE_ABSTRACT_CLASS(ozGeometry, "Geometry", ozContainer) {
  static char const *const names[] = {"STATIC", "DYNAMIC"};
  static int const values[] = {STATIC, DYNAMIC};
  ozSFBoxBound::addTypeField(type, "boxBound", 0, ozBoxBound(), &ozGeometry::_boxBound);
  ozSFEnum::addTypeField(type, "boundMode", 1, DYNAMIC, &ozGeometry::_boundMode);
  type->defineEnums(1, 2, names, values);
}

ozGeometry::ozGeometry(ozGeometry const &other) : ozGeometry(other.getType()) {
  ozCopyFields(_ClassType, this, &other);
}

ozGeometry &ozGeometry::operator=(ozGeometry const &other) {
  if (this != &other) ozAssignFields(_ClassType, this, &other);
  return *this;
}

void ozGeometry::fieldChanged(short id) {
  if (id < _ClassType->getAncestorFieldCount()) {
    ozContainer::fieldChanged(id);
    return;
  }
  if (id == 0) {
    settleSideEffect(0); // a pending recomputation must not replace what is stored now
    notifyParents(0);
  }
  touchField(id);
}

void ozGeometry::getBoxBound(ozBoxBound &bound) {
  validateField(0);
  bound.min = _boxBound.min;
  bound.max = _boxBound.max;
}

void ozGeometry::setBoxBound(ozBoxBound const &bound) {
  _boxBound.min = bound.min;
  _boxBound.max = bound.max;
  fieldChanged(0);
}

void ozGeometry::compile(ozCompileAction *) {}

// ---- rays

int ozGeometry::isectBox(ozIsectAction *action) const {
  return _boxBound.isect(action->getActiveSeg(), nullptr, nullptr);
}

int ozGeometry::isect(ozIsectAction *action) {
  cleanFields();
  if (!isectBox(action)) return 0;
  action->hitGeometry(this); // at the end of the segment, which nothing shortens: meant so
  return 1;
}

void ozGeometry::cacheTri(ozTriCache *cache, ozVec3f const &a, ozVec3f const &b, ozVec3f const &c) const {
  ozCacheTri(*cache, a, b, c);
}

int ozGeometry::isectTri(ozIsectAction *action, ozVec3f const &a, ozVec3f const &b, ozVec3f const &c,
                         ozContext::CullFaceEnum cull, int primIndex) const {
  ozTriSearch search(*action->getActiveSeg(), cull);
  search.add(a, b, c, 0, primIndex);
  search.finish();
  return search.enter(action, this);
}
