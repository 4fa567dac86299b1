#include "oz/ozVFCullAction.h"

#include <stdio.h>
#include <string.h>

#include "math/ozCulling.h"
#include "oz/ozCamera.h"
#include "oz/ozNode.h"

OZ_DEFINE_TYPE(ozVFCullAction, "ozVFCullAction", ozTransformAction) {}

ozVFCullAction::ozVFCullAction() : ozVFCullAction(getClassType()) {}

ozVFCullAction::ozVFCullAction(ozType *type)
    : ozTransformAction(type), _cullStack(), _cullDepth(0), _camera(nullptr), _holdsCamera(false) {
  _cullStack[0] = CULL_ROOT;
}

// The camera's count does not change with a copy, which is meant: the copy has no reference to give back.
ozVFCullAction::ozVFCullAction(ozVFCullAction const &other)
    : ozTransformAction(other), _cullDepth(other._cullDepth), _camera(other._camera), _holdsCamera(false) {
  memcpy(_cullStack, other._cullStack, sizeof _cullStack);
}

ozVFCullAction &ozVFCullAction::operator=(ozVFCullAction const &other) {
  if (this == &other) return *this;
  ozTransformAction::operator=(other);
  if (_camera != other._camera) {
    if (_holdsCamera) _camera->unref();
    _camera = other._camera;
    _holdsCamera = false;
  }
  memcpy(_cullStack, other._cullStack, sizeof _cullStack);
  _cullDepth = other._cullDepth;
  return *this;
}

ozVFCullAction::~ozVFCullAction() {
  if (_holdsCamera) _camera->unref();
}

ozAction *ozVFCullAction::instantiate() { return new ozVFCullAction; }

void ozVFCullAction::setCamera(ozCamera *camera) {
  if (camera) camera->ref(); // first: it may be the old one
  if (_holdsCamera) _camera->unref();
  _camera = camera;
  _holdsCamera = camera != nullptr;
}

void ozVFCullAction::reset() {
  OZ_REQUIRE(_camera, "a culling action without a camera");
  _cullDepth = 0;
  _cullStack[0] = CULL_ROOT;
  ozTransformAction::reset();
  ozMatrix4f view;
  _camera->getViewMat(view);
  multMatrix(view, UNIFORM_MAT);
}

ozTravDirective ozVFCullAction::apply(ozNode *root) {
  OZ_REQUIRE(root, "apply without a root");
  reset();
  begin(root);
  ozTravDirective const verdict = root->vfCullVisit(this);
  end(root);
  return verdict;
}

// One level deeper, if there is room; test() finds the status there.
template <class Test> inline unsigned int ozVFCullAction::raiseCull(Test test) {
  if (_cullDepth >= CULL_LEVELS - 1) {
    fprintf(stderr, "ozVFCullAction::pushCull() Scene graph is too deep (%d)\n", CULL_LEVELS);
    return static_cast<unsigned int>(_cullStack[_cullDepth]);
  }
  // The frustum tells "wholly inside" as 7, not 4, so that every node is tested. Meant.
  int const above = _cullStack[_cullDepth], status = above != CULL_INHERITED_INSIDE ? test() : above;
  _cullStack[++_cullDepth] = status;
  return static_cast<unsigned int>(status);
}

unsigned int ozVFCullAction::pushCull(ozBoxBound const &box) {
  return raiseCull([&] { return _camera->getBaseFrust()->containsMovedInline(box, *getMatrix()); });
}

unsigned int ozVFCullAction::pushCull(ozSphereBound const &sphere) {
  return raiseCull([&] {
    ozSphereBound inEye;
    if (getMatType() != UNIFORM_MAT)
      inEye.xform(&sphere, *getMatrix());
    else
      inEye.orthoXform(&sphere, *getMatrix());
    return _camera->getBaseFrust()->ozFrustum::contains(&inEye);
  });
}
