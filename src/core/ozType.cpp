#include "oz/ozType.h"

#include <stdlib.h>
#include <string.h>

#include "oz/ozDispatch.h"
#include "oz/ozField.h"
#include "oz/ozObject.h"
#include "oz/ozStringDict.h"

// Made with the first type and never destroyed: objects may ask for their class while the process exits.
static ozStringDict *Registry = nullptr;

ozType::ozType(ozType *ancestor, char const *name)
    : _ancestor(ancestor), _name(nullptr), _fieldInfos(nullptr), _ancestorFieldCount(0), _userData(nullptr),
      _descendents(1), _dispatchId(-1), _objectId(-1) {
  // The function table takes the first registered type as the root of the class tree.
  if (!Registry && strcmp(name, "Object") != 0) ozObject::getClassType();

  _fieldInfos = new ozFieldInfoArray(2);
  _name = strdup(name);
  if (_ancestor) _ancestor->addDescendent(this);

  // By name: this may be the type of ozDispatch itself, which is not published yet.
  bool dispatcher = false;
  for (ozType *type = this; type && !dispatcher; type = type->_ancestor)
    dispatcher = !strcmp(type->_name, "ozDispatch");
  if (dispatcher)
    ozDispatch::registerAsDispatch(this);
  else
    ozDispatch::registerAsObject(this);

  if (_ancestor) {
    _ancestorFieldCount = _ancestor->getFieldInfoCount();
    for (int id = 0; id < _ancestorFieldCount; ++id) setFieldInfo(id, _ancestor->getFieldInfo(id));
  }

  if (!Registry) Registry = new ozStringDict(251);
  Registry->enter(_name, this);
}

ozType *ozType::getType(char const *name) {
  void *type = nullptr;
  if (Registry && name) Registry->find(name, type);
  return static_cast<ozType *>(type);
}

ozType *ozType::getType(int index) {
  void *type = nullptr;
  if (Registry && index >= 0) Registry->get(static_cast<unsigned int>(index), type);
  return static_cast<ozType *>(type);
}

int ozType::getNumTypes() { return Registry ? static_cast<int>(Registry->getSize()) : 0; }

ozType *ozType::getDescendent(int index) const {
  return static_cast<ozType *>(_descendents[static_cast<unsigned int>(index)]);
}

void ozType::defineEnums(short id, int count, char const *const *names, int const *values) {
  for (int i = 0; i < count; ++i) getFieldInfo(id)->addEnum(values[i], names[i]);
}

char const *ozType::mapEnum(short id, int value) { return getFieldInfo(id)->mapEnum(value); }

static void joinIds(ozShortArray &ids, ozShortArray const *inherited, int count, short const *own) {
  unsigned int const first = inherited ? inherited->getCount() : 0;
  ids.setSize(first + static_cast<unsigned int>(count));
  ids.setCount(first + static_cast<unsigned int>(count));
  if (first) ids.setRange(0, first, inherited->getArray());
  if (count) ids.setRange(first, static_cast<unsigned int>(count), own);
}

void ozType::setEngineIO(int inCount, short const *inIds, int outCount, short const *outIds) {
  joinIds(_engineInputs, _ancestor ? &_ancestor->_engineInputs : nullptr, inCount, inIds);
  joinIds(_engineOutputs, _ancestor ? &_ancestor->_engineOutputs : nullptr, outCount, outIds);
}

void *ozType::operator new(size_t size) noexcept { return malloc(size); }
void ozType::operator delete(void *type) noexcept { free(type); }
