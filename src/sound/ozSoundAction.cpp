#include "oz/ozSoundAction.h"

#include "oz/ozNode.h"

// The parent type is not the base class, which is meant.
OZ_DEFINE_TYPE(ozSoundAction, "SoundAction", ozAction) {}

ozSoundAction::ozSoundAction() : ozSoundAction(getClassType()) {}
ozSoundAction::ozSoundAction(ozType *type) : ozTransformAction(type) {}
ozSoundAction::~ozSoundAction() = default;

ozAction *ozSoundAction::instantiate() { return new ozSoundAction; }

ozTravDirective ozSoundAction::apply(ozNode *root) {
  reset();
  if (root) root->sound(this);
  return TRAV_CONT;
}
