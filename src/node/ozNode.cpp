#include "oz/ozNode.h"

#include "oz/ozGroup.h"

OZ_DEFINE_ABSTRACT_CLASS(ozNode, "Node", ozContainer) {
  static char const *const names[] = {"STATIC", "DYNAMIC"};
  static int const values[] = {STATIC, DYNAMIC};
  ozSFBoxBound::addTypeField(type, "boxBound", 0, ozBoxBound(), &ozNode::_boxBound);
  ozSFEnum::addTypeField(type, "boundMode", 1, DYNAMIC, &ozNode::_boundMode);
  type->defineEnums(1, 2, names, values);
}

void ozNode::sound(ozSoundAction *) {}
void ozNode::isect(ozIsectAction *) {}
ozTravDirective ozNode::visit(ozAction *) { return TRAV_CONT; }
ozTravDirective ozNode::transformVisit(ozTransformAction *) { return TRAV_CONT; }
ozTravDirective ozNode::vfCullVisit(ozVFCullAction *) { return TRAV_CONT; }
ozTravDirective ozNode::drawVisit(ozDrawAction *) { return TRAV_CONT; }

ozBoxBound *ozNode::getBoxBound() {
  validateField(0);
  return &_boxBound;
}
void ozNode::getBoxBound(ozBoxBound &box) { box = read(0, _boxBound); }
void ozNode::setBoxBound(ozBoxBound const &box) { store(0, _boxBound, box); }
ozNode::BoundModeEnum ozNode::getBoundMode() { return read(1, _boundMode); }
void ozNode::setBoundMode(BoundModeEnum mode) { store(1, _boundMode, mode); }

void ozNode::getSphereBound(ozSphereBound &sphere) {
  ozBoxBound const &box = *getBoxBound();
  if (box.isEmpty()) {
    sphere.makeEmpty();
    return;
  }
  sphere.center.add(box.min, box.max);
  sphere.center *= 0.5f;
  sphere.radius = sphere.center.distance(box.max);
}

void ozNode::insertParent(ozGroup *group) {
  // The parents as they are now: the group becomes one more with each step.
  ozPtrArray parents(static_cast<unsigned int>(getParentCount()));
  for (int i = 0; i < getParentCount(); ++i) parents.append(getParent(i));
  for (unsigned int i = 0; i < parents.getCount(); ++i) {
    ozContainer *const parent = static_cast<ozContainer *>(parents[i]);
    if (parent == group || !parent->isOfType(ozGroup::getClassType())) continue;
    group->addChild(this);
    static_cast<ozGroup *>(parent)->replaceChild(this, group);
  }
}

void ozNode::fieldChanged(short id) {
  if (id == 0) {
    settleSideEffect(0); // what is stored stays, whatever was to be computed
    notifyParents(0);
  }
  touchField(id);
}
