#include "vrml/readState.h"

#include <stdio.h>

#include <initializer_list>

#include "oz/ozContainer.h"
#include "oz/ozDict.h"
#include "oz/ozSFRef.h"
#include "oz/vlError.h"

vlReadState::vlReadState(vlReadState *outerState)
    : outer(outerState), depth(0), inlineDepth(outerState ? outerState->inlineDepth + 1 : 0),
      inlines(outerState ? outerState->inlines : &_ownInlines), _ownInlines(0) {
  made.setExtension(1024);
}

vlReadState::~vlReadState() {
  for (unsigned int i = 0; i < referenceRoutes.getCount(); ++i) delete static_cast<Route *>(referenceRoutes[i]);
}

void vlReadState::keep(ozContainer *obj) {
  obj->ref();
  made.append(obj);
}

static bool isConnected(ozContainer *obj) {
  for (int id = 0; id < obj->getType()->getFieldInfoCount(); ++id) {
    ozField *const field = obj->findFieldObject(id);
    if (!field) continue;
    for (ozFieldArray *ends : {field->getInputs(), field->getOutputs()})
      for (unsigned int i = 0; ends && i < ends->getCount(); ++i)
        if (ends->get(i)->getParent() != obj) return true;
  }
  return false;
}

void vlReadState::release(ozContainer *root) {
  for (unsigned int i = 0; i < made.getCount(); ++i) {
    ozContainer *const obj = static_cast<ozContainer *>(made[i]);
    if (obj == root || (obj->getRefCount() == 1 && isConnected(obj))) obj->unrefNoDelete();
    else obj->unref();
  }
  made.setCount(0);
}

namespace {

// Whether a container can be reached from a field: through what the field refers to, or will take over along routes.
class Reach {
public:
  explicit Reach(ozContainer *target) : _target(target), _seen(1021) {}

  bool from(ozField *field) {
    if (!_seen.enter(reinterpret_cast<unsigned long>(field), field)) return false;
    for (unsigned int i = 0; field->getInputs() && i < field->getInputs()->getCount(); ++i)
      if (from(field->getInputs()->get(i))) return true;
    if (field->getType()->isDerivedFrom(ozMFRef::getClassType())) {
      ozRefArray const &elements = static_cast<ozMFRefInfo *>(field->getFieldInfo())->member(field->getParent());
      for (unsigned int i = 0; i < elements.getCount(); ++i)
        if (elements[i] && from(elements[i])) return true;
      return false;
    }
    ozContainer *const element = static_cast<ozSFRefInfo *>(field->getFieldInfo())->member(field->getParent());
    return element && from(element);
  }

private:
  bool from(ozContainer *c) {
    if (c == _target) return true;
    if (!_seen.enter(reinterpret_cast<unsigned long>(c), c)) return false;
    for (int id = 0; id < c->getType()->getFieldInfoCount(); ++id) {
      ozFieldInfo *const info = c->getType()->getFieldInfo(id);
      bool const refers = info->getFieldType()->isDerivedFrom(ozSFRef::getClassType()) ||
                          info->getFieldType()->isDerivedFrom(ozMFRef::getClassType());
      if (refers && info->getOffset() && from(c->getField(id))) return true;
    }
    return false;
  }

  ozContainer *_target;
  ozDict _seen;
};

} // namespace

void vlReadState::connectReferences() {
  for (unsigned int i = 0; i < referenceRoutes.getCount(); ++i) {
    Route const *const route = static_cast<Route *>(referenceRoutes[i]);
    if (Reach(route->to->getParent()).from(route->from))
      vlDebugError::post("vlDB::readRoute", "A route from %s to %s would make a node contain itself",
                         route->from->getName(), route->to->getName());
    else
      route->from->connect(route->to);
  }
}
