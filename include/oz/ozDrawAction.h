#ifndef OZ_DRAW_ACTION_H
#define OZ_DRAW_ACTION_H

#include "oz/ozVFCullAction.h"

class ozContext;

/// Draws a graph: one pass, depth first, in which each node is culled, positioned and drawn at once, in graph order.
/// Nothing is sorted, transparent shapes neither.
///
/// A frame is camera->draw(action), clearing the buffers, action->apply(root), ozWindow::swapBuffers. It must run on
/// the thread whose current context is the one wanted.
class OZ_API ozDrawAction : public ozVFCullAction {
  OZ_OBJECT_CLASS(ozDrawAction);

public:
  /// Which primitives geometry draws that culls its primitives in software. Any other value than these draws those that
  /// face away from the eye.
  enum BpcModeEnum : int {
    NO_BPC = 0,    ///< all, without a test
    FRONT_BPC = 1, ///< those that face the eye
    BACK_BPC = 2   ///< those that face away
  };

  ozDrawAction();
  ozDrawAction(ozDrawAction const &other);
  ozDrawAction &operator=(ozDrawAction const &other);
  ~ozDrawAction() override;

  /// Draws the graph below root, which may be null, in the current context. Leaves the context's state as it was. A
  /// camera must have been set.
  ozTravDirective apply(ozNode *root) override;
  ozAction *instantiate() override;

  /// As ozVFCullAction::reset.
  void reset() { ozVFCullAction::reset(); }

  /// The context of this walk; the current one if none is known yet. No reference is held.
  ozContext *getContext() {
    if (!_context) fixContext();
    return _context;
  }
  void setContext(ozContext *context) { _context = context; }

  BpcModeEnum getBPCullMode() const { return _bpCullMode; }
  void setBPCullMode(BpcModeEnum mode) { _bpCullMode = mode; }
  /// Where the eye is, in the current node's space: a direction with an orthographic camera, otherwise a position. With
  /// back-primitive culling on, transforms keep it up to date; above the first one it is what was set, (0, 0, 1) at
  /// first.
  ozVec3f const &getViewVector() const { return _viewVector; }
  void setViewVector(ozVec3f const &vector) { _viewVector = vector; }
  /// Computes the view vector from the accumulated matrix.
  void updateViewVector();
  /// Whether the view vector is a direction. apply() sets it by the class of the camera; 1 before that.
  unsigned char getOrthoCamera() const { return _orthoCamera; }
  void setOrthoCamera(unsigned char ortho) { _orthoCamera = ortho; }

protected:
  explicit ozDrawAction(ozType *type);

private:
  void fixContext();

  BpcModeEnum _bpCullMode;
  ozVec3f _viewVector;
  unsigned char _orthoCamera;
  ozContext *_context;
};

#endif
