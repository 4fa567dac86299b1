#ifndef OZ_COMPILE_ACTION_H
#define OZ_COMPILE_ACTION_H

#include "oz/ozAction.h"

class ozContext;
class ozDrawAction;

/// The argument of ozGeometry::compile, which builds or deletes a geometry's display list. It walks nothing.
class OZ_API ozCompileAction : public ozAction {
  OZ_OBJECT_CLASS(ozCompileAction);

public:
  ozCompileAction();
  ozCompileAction(ozCompileAction const &other);
  ozCompileAction &operator=(ozCompileAction const &other);
  ~ozCompileAction() override;

  /// Takes the current context for the lists to come. The node is not touched; returns TRAV_CONT.
  ozTravDirective apply(ozNode *node) override;
  ozAction *instantiate() override;

  /// The context of the lists, the current one if none is known yet; the draw action gets it as well.
  ozContext *getContext();
  /// Lent to geometry while it records a list. Null if memory was out.
  ozDrawAction *getDrawAction() const { return _drawAction; }
  /// Whether geometry deletes its list and makes no new one. 0 by default.
  unsigned char getUncompile() const { return _uncompile; }
  void setUncompile(unsigned char uncompile) { _uncompile = uncompile; }

protected:
  explicit ozCompileAction(ozType *type);

private:
  ozContext *_context;
  ozDrawAction *_drawAction;
  unsigned char _uncompile;
};

#endif
