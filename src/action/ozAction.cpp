#include "oz/ozAction.h"

#include "oz/ozNode.h"

OZ_DEFINE_TYPE(ozAction, "ozAction", ozObject) {}

ozAction::ozAction() : ozAction(getClassType()) {}
ozAction::ozAction(ozType *type) : ozObject(type), _skipsVisits(false) { init(); }
ozAction &ozAction::operator=(ozAction const &other) {
  ozObject::operator=(other);
  _userData = other._userData;
  return *this;
}
ozAction::~ozAction() = default;

ozAction *ozAction::instantiate() { return new ozAction; }

ozTravDirective ozAction::apply(ozNode *root) {
  OZ_REQUIRE(root, "apply without a root");
  begin(root);
  ozTravDirective const verdict = root->visit(this);
  end(root);
  return verdict;
}

void ozAction::begin(ozNode *) {}
void ozAction::end(ozNode *) {}
ozTravDirective ozAction::preVisit(ozNode *) { return TRAV_CONT; }
ozTravDirective ozAction::postVisit(ozNode *) { return TRAV_CONT; }
