#include "oz/ozDrawAction.h"

#include <typeinfo>

#include "oz/ozCamera.h"
#include "oz/ozContext.h"
#include "oz/ozNode.h"

OZ_DEFINE_TYPE(ozDrawAction, "ozDrawAction", ozVFCullAction) {}

ozDrawAction::ozDrawAction() : ozDrawAction(getClassType()) {}

ozDrawAction::ozDrawAction(ozType *type)
    : ozVFCullAction(type), _bpCullMode(NO_BPC), _viewVector(0, 0, 1), _orthoCamera(1), _context(nullptr) {}

ozDrawAction::ozDrawAction(ozDrawAction const &) = default;
ozDrawAction &ozDrawAction::operator=(ozDrawAction const &) = default;
ozDrawAction::~ozDrawAction() = default;

ozAction *ozDrawAction::instantiate() { return new ozDrawAction; }

void ozDrawAction::fixContext() { _context = ozContext::getCurrent(); }

ozTravDirective ozDrawAction::apply(ozNode *root) {
  fixContext();
  OZ_REQUIRE(_context, "drawing without a current context");
  reset();
  _orthoCamera = getCamera()->isOfType(ozOrthoCamera::getClassType());
  // A visit may call setContext(): what is pushed here is popped here.
  ozContext *const context = _context;
  context->setNormalizeEnable(0);
  context->pushState();
  begin(root);
  skipVisits(typeid(*this) == typeid(ozDrawAction));
  ozTravDirective const verdict = root ? root->drawVisit(this) : TRAV_CONT;
  skipVisits(false);
  end(root);
  context->popState();
  return verdict;
}

void ozDrawAction::updateViewVector() {
  ozMatrix4f toLocal;
  toLocal.invertFull(*getMatrix());
  // Row 2 is the eye's Z axis in local space, row 3 the eye's position. No division by its w, which is meant.
  toLocal.getRow(_orthoCamera ? 2 : 3, _viewVector);
}
