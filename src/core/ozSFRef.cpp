#include "oz/ozSFRef.h"

#include <stdio.h>

#include "oz/ozOutput.h"

int ozRefInfo::isBadType(ozContainer *c, char const *where, ozContainer *parent) const {
  if (!c || c->getType()->isDerivedFrom(_refType)) return 0;
  fprintf(stderr, "%s: Bad type - %s not derived from %s.  parent %s type %s\n", where, c->getType()->getName(),
          _refType->getName(), parent->getName() ? parent->getName() : "(null)", parent->getType()->getName());
  return 1;
}

ozSFRefInfo::ozSFRefInfo(char const *name, short id, char ozContainer::*member, ozType *refType)
    : ozRefInfo(name, id, member, refType) {
  setFieldType(ozSFRef::getClassType());
}

ozField *ozSFRefInfo::instantiate(ozContainer *container) { return new ozSFRef(container, getId()); }
void ozSFRefInfo::reset(ozContainer *container) { member(container) = nullptr; }
unsigned char ozSFRefInfo::isDefault(ozContainer *container) { return !member(container); }

void ozSFRefInfo::write(ozOutput *out, ozContainer *container) {
  if (preWrite(out, container)) return;
  static_cast<ozObject *>(member(container))->write(out);
  fputs("\n", out->getFile());
}

void ozSFRefInfo::copy(ozContainer *dst, ozContainer *src) {
  member(dst) = member(src);
  dst->refer(member(dst));
}

void ozSFRefInfo::set(ozContainer *container, ozContainer *c) {
  if (isBadType(c, "ozSFRef::set()", container)) return;
  container->refer(member(container), c);
  member(container) = c;
  fieldChanged(container);
}

OZ_DEFINE_TYPE_POINTER(ozSFRef, "ozSFRef", ozField)

void ozSFRef::addInfo(ozType *type, char const *name, short id, ozType *refType, char ozContainer::*member) {
  if (ozFieldInfo *info = new ozSFRefInfo(name, id, member, refType)) type->setFieldInfo(id, info);
}

ozSFRef::ozSFRef(ozContainer *parent, short id)
    : ozField(parent, id), _value(static_cast<ozContainer **>(getStorage())) {
  if (!_value) _value = new ozContainer *(nullptr);
}

ozSFRef::~ozSFRef() {
  if (getStorage()) return; // the container releases it
  getParent()->unrefer(*_value);
  delete _value;
}

void ozSFRef::copy(ozField *source) {
  if (source && source->getType()->isDerivedFrom(getClassType())) set(static_cast<ozSFRef *>(source)->get());
}

int ozSFRef::isBadType(ozContainer *c, char const *where) {
  return static_cast<ozRefInfo *>(getFieldInfo())->isBadType(c, where, getParent());
}

void ozSFRef::set(ozContainer *c) {
  if (isBadType(c, "ozSFRef::set()")) return;
  getParent()->refer(*_value, c);
  *_value = c;
  fieldChanged();
}
