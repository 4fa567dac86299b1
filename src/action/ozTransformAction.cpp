#include "oz/ozTransformAction.h"

#include "oz/ozNode.h"

OZ_DEFINE_TYPE(ozTransformAction, "TransformAction", ozAction) {}

ozTransformAction::ozTransformAction() : ozTransformAction(getClassType()) {}

ozTransformAction::ozTransformAction(ozType *type) : ozAction(type), _matrices(LEVELS), _matTypes() {}

ozTransformAction::ozTransformAction(ozTransformAction const &) = default;
ozTransformAction &ozTransformAction::operator=(ozTransformAction const &) = default;
ozTransformAction::~ozTransformAction() = default;

ozAction *ozTransformAction::instantiate() { return new ozTransformAction; }

void ozTransformAction::reset() {
  _matrices.reset();
  resetTypes();
  ozAction::reset();
}

ozTravDirective ozTransformAction::apply(ozNode *root) {
  OZ_REQUIRE(root, "apply without a root");
  reset();
  begin(root);
  ozTravDirective const verdict = root->transformVisit(this);
  end(root);
  return verdict;
}

void ozTransformAction::scale(float x, float y, float z) {
  _matrices.preScale(x, y, z);
  if (!(x == y && y == z)) setMatType(NON_UNIFORM_MAT);
}
