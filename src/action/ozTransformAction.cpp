#include "oz/ozTransformAction.h"

#include "oz/ozNode.h"

OZ_DEFINE_TYPE(ozTransformAction, "TransformAction", ozAction) {}

ozTransformAction::ozTransformAction() : ozTransformAction(getClassType()) {}

ozTransformAction::ozTransformAction(ozType *type) : ozAction(type), _matrices(256), _matTypes(256) { resetTypes(); }

ozTransformAction::ozTransformAction(ozTransformAction const &other)
    : ozAction(other), _matrices(other._matrices), _matTypes(256) {
  _matTypes.set(other._matTypes);
}

ozTransformAction &ozTransformAction::operator=(ozTransformAction const &other) {
  ozAction::operator=(other);
  _matrices = other._matrices;
  _matTypes.set(other._matTypes);
  return *this;
}

ozTransformAction::~ozTransformAction() = default;

ozAction *ozTransformAction::instantiate() { return new ozTransformAction; }

void ozTransformAction::resetTypes() {
  _matTypes.setCount(1);
  _matTypes.set(0, UNIFORM_MAT);
}

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
