#include "oz/ozCompileAction.h"

#include "oz/ozContext.h"
#include "oz/ozDrawAction.h"

OZ_DEFINE_TYPE(ozCompileAction, "CompileAction", ozAction) {}

ozCompileAction::ozCompileAction() : ozCompileAction(getClassType()) {}

ozCompileAction::ozCompileAction(ozType *type)
    : ozAction(type), _context(nullptr), _drawAction(new ozDrawAction), _uncompile(0) {
  if (_drawAction) _drawAction->ref();
}

ozCompileAction::ozCompileAction(ozCompileAction const &other)
    : ozAction(other), _context(other._context), _drawAction(other._drawAction), _uncompile(other._uncompile) {
  if (_drawAction) _drawAction->ref();
}

ozCompileAction &ozCompileAction::operator=(ozCompileAction const &other) {
  ozAction::operator=(other);
  _context = other._context;
  if (other._drawAction) other._drawAction->ref();
  if (_drawAction) _drawAction->unref();
  _drawAction = other._drawAction;
  _uncompile = other._uncompile;
  return *this;
}

ozCompileAction::~ozCompileAction() {
  if (_drawAction) _drawAction->unref();
}

ozAction *ozCompileAction::instantiate() { return new ozCompileAction; }

ozTravDirective ozCompileAction::apply(ozNode *) {
  _context = nullptr;
  getContext();
  return TRAV_CONT;
}

ozContext *ozCompileAction::getContext() {
  if (!_context) _context = ozContext::getCurrent();
  if (_drawAction) _drawAction->setContext(_context);
  return _context;
}
