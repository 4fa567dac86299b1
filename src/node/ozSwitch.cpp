#include "oz/ozSwitch.h"

#include "node/visit.h"
#include "oz/ozDrawAction.h"

OZ_DEFINE_CLASS(ozSwitch, "Switch", ozGroup) {
  ozSFInt::addTypeField(type, "whichChild", 3, NO_CHILD, &ozSwitch::_whichChild);
}

int ozSwitch::getWhichChild() { return read(3, _whichChild); }
void ozSwitch::setWhichChild(int which) { store(3, _whichChild, which); }

// Anything below ALL_CHILDREN counts as none.
static bool isNone(int which) { return which == ozSwitch::NO_CHILD || which < ozSwitch::ALL_CHILDREN; }

template <auto Visit, class Action>
static ozTravDirective visitChosen(ozNode *node, ozBoxBound const &box, ozRefArray const &children, int which,
                                   Action *action) {
  if (isNone(which)) return TRAV_PRUNE;
  return ozCulledFrame(node, box, action, [&] {
    if (which == ozSwitch::ALL_CHILDREN) return ozVisitChildren<Visit>(children, action);
    return ozVisitChild<Visit>(children, which, action) == TRAV_TERM ? TRAV_TERM : TRAV_CONT;
  });
}

ozTravDirective ozSwitch::vfCullVisit(ozVFCullAction *action) {
  cleanFields();
  return visitChosen<&ozNode::vfCullVisit>(this, _boxBound, _children, _whichChild, action);
}

ozTravDirective ozSwitch::drawVisit(ozDrawAction *action) {
  cleanFields();
  return visitChosen<&ozNode::drawVisit>(this, _boxBound, _children, _whichChild, action);
}

void ozSwitch::isect(ozIsectAction *action) {
  cleanFields();
  if (isNone(_whichChild) || !_boxBound.isect(action->getActiveSeg(), nullptr, nullptr)) return;
  if (_whichChild == ALL_CHILDREN) {
    ozForEachIndex(_children, [&](unsigned int i) {
      ozIsectChild(_children[i], action);
      return true;
    });
  } else if (_whichChild < static_cast<int>(_children.getCount())) {
    ozIsectChild(_children[static_cast<unsigned int>(_whichChild)], action);
  }
}
