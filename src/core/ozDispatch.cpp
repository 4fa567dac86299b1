#include "oz/ozDispatch.h"

#include <stdio.h>
#include <stdlib.h>

#include "oz/ozType.h"

static void *toPointer(ozActionFunTable::Function function) { return reinterpret_cast<void *>(function); }

ozActionFunTable::ozActionFunTable(int rows, int cols)
    : _dirty(0), _rowCount(0), _colCount(0), _bound(rows, cols), _flat(rows, cols),
      _rowTypes(static_cast<unsigned int>(rows)), _colTypes(static_cast<unsigned int>(rows)),
      _nopFunction(toPointer(nop)) {}

ozActionFunTable &ozActionFunTable::operator=(ozActionFunTable const &other) {
  _dirty = other._dirty;
  _rowCount = other._rowCount;
  _colCount = other._colCount;
  _bound = other._bound;
  _flat = other._flat;
  _rowTypes.set(other._rowTypes);
  _colTypes.set(other._colTypes);
  return *this;
}

void ozActionFunTable::nop(ozAction *, ozObject *) {}

void ozActionFunTable::addAction(ozType *type) {
  type->setDispatchID(_rowCount);
  _rowTypes.set(static_cast<unsigned int>(_rowCount), type);
  _bound.addRow();
  _flat.addRow();
  for (int col = 0; col < _colCount; ++col) {
    _bound(_rowCount, col) = nullptr;
    _flat(_rowCount, col) = _nopFunction;
  }
  ++_rowCount;
  _dirty = 1;
}

void ozActionFunTable::addObject(ozType *type) {
  type->setObjectID(_colCount);
  _colTypes.set(static_cast<unsigned int>(_colCount), type);
  _bound.addCol();
  _flat.addCol();
  // The types of fields hang from no object type, so that flattening never reaches their columns.
  for (int row = 0; row < _rowCount; ++row) {
    _bound(row, _colCount) = nullptr;
    _flat(row, _colCount) = _nopFunction;
  }
  ++_colCount;
  _dirty = 1;
}

void ozActionFunTable::setFunction(ozType *action, ozType *object, Function function) {
  _bound(action->getDispatchID(), object->getObjectID()) = toPointer(function);
  _dirty = 1;
}

ozActionFunTable::Function ozActionFunTable::getFunction(ozType *action, ozType *object) {
  if (_dirty) flatten();
  return reinterpret_cast<Function>(_flat(action->getDispatchID(), object->getObjectID()));
}

void ozActionFunTable::apply(ozAction *, ozObject *) {
  fputs("ozActionFunTable::apply: not implemented.\n", stdout);
  fflush(stdout); // abort() drops what is buffered
  abort();
}

void ozActionFunTable::flatten() {
  if (_rowCount && _colCount) flattenAction(static_cast<ozType *>(_rowTypes[0]), static_cast<ozType *>(_colTypes[0]));
  _dirty = 0;
}

void ozActionFunTable::flattenAction(ozType *action, ozType *object) {
  flattenObject(action, object, nullptr);
  for (int i = 0; i < action->getDescendentCount(); ++i) flattenAction(action->getDescendent(i), object);
}

void ozActionFunTable::flattenObject(ozType *action, ozType *object, void *inherited) {
  int const row = action->getDispatchID(), col = object->getObjectID();
  if (row < 0 || col < 0) printf("######### row = %d, col = %d ############\n", row, col);
  void *const bound = _bound(row, col);
  void *const carried = bound ? bound : inherited;
  void *result = carried;
  if (!result) {
    result = row != 0 && action->getAncestor() ? _flat(action->getAncestor()->getDispatchID(), col) : _nopFunction;
  }
  _flat(row, col) = result;
  // What came from the parent action is looked up anew for each object: `carried` goes down, not `result`.
  for (int i = 0; i < object->getDescendentCount(); ++i) flattenObject(action, object->getDescendent(i), carried);
}

OZ_DEFINE_TYPE_POINTER(ozDispatch, "ozDispatch", ozObject)
ozActionFunTable *ozDispatch::_Table = nullptr;

// One in the process, never freed.
ozActionFunTable *ozDispatch::getTable() {
  if (!_Table) _Table = new ozActionFunTable(10, 100);
  return _Table;
}

void ozDispatch::registerAsDispatch(ozType *type) {
  getTable()->addAction(type);
  getTable()->addObject(type);
}

void ozDispatch::registerAsObject(ozType *type) { getTable()->addObject(type); }

void ozDispatch::bindFunction(ozType *dispatchType, ozType *objectType, void (*function)(ozDispatch *, ozObject *)) {
  getTable()->setFunction(dispatchType, objectType, reinterpret_cast<ozActionFunTable::Function>(function));
}

void ozDispatch::apply(ozObject *object) {
  typedef void (*Bound)(ozDispatch *, ozObject *);
  reinterpret_cast<Bound>(getTable()->getFunction(getType(), object->getType()))(this, object);
}
