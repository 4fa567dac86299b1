#ifndef OZ_TYPE_H
#define OZ_TYPE_H

#include <new>

#include "oz/ozByteArray.h"
#include "oz/ozFieldInfoArray.h"
#include "oz/ozPtrArray.h"

/// The record of one class: its name, its place in the class tree, its field table and its two indices in the function
/// table of ozDispatch. One exists per registered class, made by the class's initClass and never freed.
///
/// Registration takes no lock: it must be finished before a second thread uses the library.
class OZ_API ozType {
public:
  /// Makes the record and enters it in the registry and under its ancestor, whose fields it takes over as they are now.
  /// The name is copied. A name that is already registered finds this record from now on.
  ozType(ozType *ancestor, char const *name);
  ozType(ozType const &) = delete;
  ozType &operator=(ozType const &) = delete;

  /// The class registered last under a name; null if there is none.
  static ozType *getType(char const *name);
  /// The index-th registered name's class, in the registry's own order; null past the end.
  static ozType *getType(int index);
  /// The number of distinct registered names.
  static int getNumTypes();

  /// Whether t is this class or an ancestor of it.
  unsigned char isDerivedFrom(ozType *t) const {
    for (ozType const *type = this; type; type = type->_ancestor)
      if (type == t) return 1;
    return 0;
  }
  ozType *getAncestor() const { return _ancestor; }
  char const *getName() const { return _name; }

  int getDescendentCount() const { return static_cast<int>(_descendents.getCount()); }
  /// The index-th direct child class, in order of registration. The index is not checked.
  ozType *getDescendent(int index) const;
  void addDescendent(ozType *child) { _descendents.append(child); }

  /// The fields of the class, inherited ones first; field ids are indices of this table.
  int getFieldInfoCount() const { return static_cast<int>(_fieldInfos->getCount()); }
  ozFieldInfo *getFieldInfo(int id) const {
    OZ_REQUIRE(id >= 0 && id < getFieldInfoCount(), "field id out of range");
    return (*_fieldInfos)[static_cast<unsigned int>(id)];
  }
  /// Enters or replaces a field for this class and for classes registered after it below this one.
  void setFieldInfo(int id, ozFieldInfo *info) { _fieldInfos->set(static_cast<unsigned int>(id), info); }
  int isAncestorField(short id) const { return id < _ancestorFieldCount; }
  /// The number of fields that come from the ancestor: the first id of this class's own.
  int getAncestorFieldCount() const { return _ancestorFieldCount; }

  /// Gives field `id` its enumeration: values[i] is written and read as names[i].
  void defineEnums(short id, int count, char const *const *names, int const *values);
  /// The name of a value of an enumeration field; "(nameless)" if it has none.
  char const *mapEnum(short id, int value);

  /// Sets which fields an engine reads and which it computes; the ancestor's come first.
  void setEngineIO(int inCount, short const *inIds, int outCount, short const *outIds);
  ozShortArray const &getEngineInputs() const { return _engineInputs; }
  ozShortArray const &getEngineOutputs() const { return _engineOutputs; }

  void *getUserData() const { return _userData; }
  void setUserData(void *data) { _userData = data; }
  /// Row in the function table of ozDispatch, -1 for a class that is no dispatcher.
  int getDispatchID() const { return _dispatchId; }
  void setDispatchID(int id) { _dispatchId = id; }
  /// Column in the function table of ozDispatch.
  int getObjectID() const { return _objectId; }
  void setObjectID(int id) { _objectId = id; }

  static void *operator new(size_t size) noexcept;
  static void operator delete(void *type) noexcept;

private:
  ozType *_ancestor;
  char *_name;
  ozFieldInfoArray *_fieldInfos;
  int _ancestorFieldCount;
  void *_userData;
  ozShortArray _engineInputs;
  ozShortArray _engineOutputs;
  ozPtrArray _descendents;
  int _dispatchId;
  int _objectId;
};

/// Defines what OZ_TYPE_POINTER declares, for a class without fields. The parent comes first, whose registration may
/// have brought this class along.
#define OZ_DEFINE_TYPE_POINTER(Class, Name, Parent)                                                                    \
  ozType *Class::_ClassType = nullptr;                                                                                 \
  void Class::initClass() {                                                                                            \
    ozType *const parent = Parent::getClassType();                                                                     \
    if (!_ClassType) _ClassType = new ozType(parent, Name);                                                            \
  }

#endif
