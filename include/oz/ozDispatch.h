#ifndef OZ_DISPATCH_H
#define OZ_DISPATCH_H

#include "oz/ozObject.h"
#include "oz/ozPtrArray.h"
#include "oz/ozPtrArray2D.h"

class ozAction;

/// The two-key table behind ozDispatch: a row for each dispatcher class, a column for each class. What is bound is
/// flattened on demand, so that a look-up is one index: see getFunction().
class OZ_API ozActionFunTable {
public:
  typedef void (*Function)(ozAction *, ozObject *);

  ozActionFunTable() : ozActionFunTable(10, 100) {}
  ozActionFunTable(int rows, int cols);
  /// Shares the cells of the other table.
  ozActionFunTable &operator=(ozActionFunTable const &other);

  /// Gives a class its row.
  void addAction(ozType *type);
  /// Gives a class its column.
  void addObject(ozType *type);
  void setFunction(ozType *action, ozType *object, Function function);
  /// What is bound for the pair; else what the nearest ancestor of `object` has under the same action; else what the
  /// action's parent resolves; else nop. Both types must be registered.
  Function getFunction(ozType *action, ozType *object);
  /// Not implemented: says so and ends the process.
  void apply(ozAction *action, ozObject *object);

  int getRowCount() const { return _rowCount; }
  int getColCount() const { return _colCount; }
  int isDirty() const { return _dirty; }
  /// What getFunction() yields where nothing is bound: does nothing.
  static void nop(ozAction *action, ozObject *object);

private:
  void flatten();
  void flattenAction(ozType *action, ozType *object);
  void flattenObject(ozType *action, ozType *object, void *inherited);

  int _dirty;
  int _rowCount;
  int _colCount;
  ozPtrArray2D _bound;
  ozPtrArray2D _flat;
  ozPtrArray _rowTypes;
  ozPtrArray _colTypes;
  void *_nopFunction;
};

/// Base of an application's own dispatchers: functions are bound to pairs of (dispatcher class, object class) and
/// called by apply(). The traversals of the library do not use it.
class OZ_API ozDispatch : public ozObject {
  OZ_TYPE_POINTER;

public:
  explicit ozDispatch(ozType *type) : ozObject(type) {}

  static void bindFunction(ozType *dispatchType, ozType *objectType, void (*function)(ozDispatch *, ozObject *));
  /// Calls the function of (this object's class, the object's class).
  void apply(ozObject *object);

private:
  friend class ozType;

  static ozActionFunTable *getTable();
  static void registerAsDispatch(ozType *type);
  static void registerAsObject(ozType *type);

  static ozActionFunTable *_Table;
};

#endif
