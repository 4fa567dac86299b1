#ifndef OZ_VFCULL_ACTION_H
#define OZ_VFCULL_ACTION_H

#include "oz/ozBound.h"
#include "oz/ozTransformAction.h"

class ozCamera;

/// The walk that tests each node's bound against a camera's frustum, in the camera's space: the matrix stack starts
/// with the view matrix, so the top maps the current node's space to the eye's.
///
/// The status of each level is what ozFrustum::contains gives: 0 outside, 1 or 3 partly inside, 7 wholly inside; 2 at
/// the root. There are 256 levels: a push beyond them says so, keeps the status, and the walk goes on.
class OZ_API ozVFCullAction : public ozTransformAction {
  OZ_OBJECT_CLASS(ozVFCullAction);

public:
  ozVFCullAction();
  /// Takes over the camera without a reference of its own, and the cull stack; shares the matrix storage.
  ozVFCullAction(ozVFCullAction const &other);
  ozVFCullAction &operator=(ozVFCullAction const &other);
  ~ozVFCullAction() override;

  /// Walks with ozNode::vfCullVisit. A camera must have been set; root must not be null.
  ozTravDirective apply(ozNode *root) override;
  ozAction *instantiate() override;

  /// Back to the root: status 2, the camera's view matrix. A camera must have been set.
  void reset();

  /// Holds a reference on the camera.
  void setCamera(ozCamera *camera);
  ozCamera *getCamera() const { return _camera; }

  /// Tests a bound in the current node's space, one level deeper; returns the status there. An empty bound is outside.
  unsigned int pushCull(ozBoxBound const &box);
  unsigned int pushCull(ozSphereBound const &sphere);
  /// One level less; does nothing at the root.
  void popCull() {
    if (_cullDepth > 0) --_cullDepth;
  }

protected:
  enum { CULL_LEVELS = 256, CULL_ROOT = 2, CULL_INHERITED_INSIDE = 4 };

  explicit ozVFCullAction(ozType *type);

  int _cullStack[CULL_LEVELS];
  int _cullDepth;

private:
  template <class Test> unsigned int raiseCull(Test test);

  ozCamera *_camera;
  bool _holdsCamera; // false in a copy, which took over the pointer alone
};

#endif
