#include "oz/ozObject.h"

#include <stdlib.h>

#include "oz/ozAtomic.h"
#include "oz/ozType.h"

ozType *ozObject::_ClassType = nullptr;

void ozObject::initClass() {
  if (!_ClassType) _ClassType = new ozType(nullptr, "Object");
}

ozObject::ozObject(ozType *type) : _refCount(0), _type(type) { _flags &= ~static_cast<unsigned int>(OBJECT_FLAGS); }

// The count travels with a copy, which is meant: a value copy is a duplicate of the header.
ozObject::ozObject(ozObject const &other) : _refCount(other._refCount), _type(other._type) {
  _flags = (_flags & ~static_cast<unsigned int>(COPIED_FLAGS)) | (other._flags & COPIED_FLAGS);
}

ozObject &ozObject::operator=(ozObject const &other) {
  _refCount = other._refCount;
  _type = other._type;
  _flags = (_flags & ~static_cast<unsigned int>(COPIED_FLAGS)) | (other._flags & COPIED_FLAGS);
  return *this;
}

ozObject::~ozObject() = default;

void ozObject::write(ozOutput *) {}

unsigned char ozObject::isOfType(ozType *t) const { return _type->isDerivedFrom(t); }

void ozObject::ref() { ozAtomic::increment(_refCount); }

unsigned char ozObject::unref() {
  if (_refCount != 0 && ozAtomic::decrement(_refCount)) return 0;
  delete this;
  return 1;
}

unsigned char ozObject::unrefNoDelete() { return !ozAtomic::decrement(_refCount); }

void *ozObject::operator new(size_t size) noexcept { return malloc(size); }
void ozObject::operator delete(void *object) noexcept { free(object); }
