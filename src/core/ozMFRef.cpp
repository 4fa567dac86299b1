// The multi-valued reference field. Counts follow the array: what is new is referenced before what is old is released,
// so that an element common to both survives.

#include "oz/ozOutput.h"
#include "oz/ozSFRef.h"

ozMFRefInfo::ozMFRefInfo(char const *name, short id, char ozContainer::*member, ozType *refType)
    : ozRefInfo(name, id, member, refType) {
  setFieldType(ozMFRef::getClassType());
}

ozField *ozMFRefInfo::instantiate(ozContainer *container) { return new ozMFRef(container, getId()); }
void ozMFRefInfo::reset(ozContainer *container) { member(container).setCount(0); }
unsigned char ozMFRefInfo::isDefault(ozContainer *container) { return member(container).getCount() == 0; }

void ozMFRefInfo::write(ozOutput *out, ozContainer *container) {
  if (preWrite(out, container)) return;
  member(container).write(out);
  fputs("\n", out->getFile());
}

void ozMFRefInfo::copy(ozContainer *dst, ozContainer *src) {
  ozRefArray &to = member(dst), &from = member(src);
  to.setSize(from.getCount());
  if (to.getCount() > from.getCount()) to.setCount(from.getCount()); // not fresh, yet the count must not pass the size
  for (unsigned int i = 0; i < from.getCount(); ++i) {
    dst->refer(from[i]);
    to.set(i, from[i]);
  }
}

OZ_DEFINE_TYPE_POINTER(ozMFRef, "ozMFRef", ozMField)

void ozMFRef::addInfo(ozType *type, char const *name, short id, ozType *refType, char ozContainer::*member) {
  if (ozFieldInfo *info = new ozMFRefInfo(name, id, member, refType)) type->setFieldInfo(id, info);
}

ozMFRef::ozMFRef(ozContainer *parent, short id) : ozMField(parent, id) {
  _array = static_cast<ozRefArray *>(getStorage());
  if (!_array) _array = new ozRefArray;
}

ozMFRef::~ozMFRef() {
  if (getStorage()) return; // the container releases it
  releaseFrom(0);
  delete &array();
}

void ozMFRef::copy(ozField *source) {
  if (source && source->getType()->isDerivedFrom(getClassType())) set(static_cast<ozMFRef *>(source)->get());
}

int ozMFRef::isBadType(ozContainer *c, char const *where) {
  return static_cast<ozRefInfo *>(getFieldInfo())->isBadType(c, where, getParent());
}

// Releases the elements from start up to the smaller of count and end; returns where it stopped, or start if there was
// nothing to release. The pointers stay in the array.
unsigned int ozMFRef::releaseRange(unsigned int start, unsigned int end) {
  unsigned int i = start;
  for (; i < end && i < array().getCount(); ++i) getParent()->unrefer(array()[i]);
  return i;
}

void ozMFRef::releaseFrom(unsigned int n) {
  while (array().getCount() > n) {
    ozContainer *const dropped = array()[array().getCount() - 1];
    array().removeIndex(array().getCount() - 1);
    clearUpTo(array().getCount() + 1);
    getParent()->unrefer(dropped);
  }
}

// Nulls behind the end: a higher count must not bring back what was released.
void ozMFRef::clearUpTo(unsigned int was) {
  for (unsigned int i = array().getCount(); i < was; ++i) array().getArray()[i] = nullptr;
}

void ozMFRef::set(ozRefArray const &values) {
  for (unsigned int i = 0; i < values.getCount(); ++i)
    if (isBadType(values[i], "ozMFRef::set(const ozRefArray&) Bad type\n")) return;
  for (unsigned int i = 0; i < values.getCount(); ++i) getParent()->refer(values[i]);
  unsigned int const was = releaseRange(0, array().getCount());
  array().set(values);
  clearUpTo(was);
  finish<ozMFRef>([&](ozMFRef *output) { output->set(values); });
}

void ozMFRef::set(unsigned int i, ozContainer *c) {
  if (isBadType(c, "ozMFRef::set(int, ozContainer*)")) return;
  if (i < array().getCount())
    getParent()->refer(array()[i], c);
  else
    getParent()->refer(c);
  array().set(i, c);
  finish<ozMFRef>([=](ozMFRef *output) { output->set(i, c); });
}

void ozMFRef::setRange(unsigned int start, unsigned int n, ozContainer *const *values) {
  for (unsigned int i = 0; i < n; ++i)
    if (isBadType(values[i], "ozMFRef::setRange(int, int, ozContainer*[])")) return;
  for (unsigned int i = 0; i < n; ++i) getParent()->refer(values[i]);
  unsigned int const end = releaseRange(start, start + n);
  array().setRange(start, n, values);
  // What is forwarded begins behind the released range: meant so.
  finish<ozMFRef>([=](ozMFRef *output) { output->setRange(end, n, values); });
}

void ozMFRef::fillRange(unsigned int start, unsigned int n, ozContainer *c) {
  if (isBadType(c, "ozMFRef::fillRange(int, int, ozContainer*)\n")) return;
  getParent()->refer(c);
  unsigned int const end = releaseRange(start, start + n);
  array().fillRange(end, n, c);
  finish<ozMFRef>([=](ozMFRef *output) { output->fillRange(start, n, c); });
}

void ozMFRefInfo::append(ozContainer *container, ozContainer *c) {
  if (ozField *const field = container->findFieldObject(getId())) return static_cast<ozMFRef *>(field)->append(c);
  if (isBadType(c, "ozMFRef::append(int, ozContainer*)", container)) return;
  container->refer(c);
  member(container).append(c);
  fieldChanged(container);
}

void ozMFRef::append(ozContainer *c) {
  if (isBadType(c, "ozMFRef::append(int, ozContainer*)")) return;
  getParent()->refer(c);
  array().append(c);
  finish<ozMFRef>([=](ozMFRef *output) { output->append(c); });
}

void ozMFRef::insert(unsigned int i, ozContainer *c) {
  if (isBadType(c, "ozMFRef::insert(int, ozContainer*)")) return;
  getParent()->refer(c);
  array().insert(i, c);
  finish<ozMFRef>([=](ozMFRef *output) { output->insert(i, c); });
}

unsigned char ozMFRef::remove(ozContainer *c) {
  if (!array().remove(c)) return 0;
  clearUpTo(array().getCount() + 1);
  getParent()->unrefer(c);
  finish<ozMFRef>([=](ozMFRef *output) { output->remove(c); });
  return 1;
}

unsigned char ozMFRef::fastRemove(ozContainer *c) {
  if (!array().fastRemove(c)) return 0;
  clearUpTo(array().getCount() + 1);
  getParent()->unrefer(c);
  finish<ozMFRef>([=](ozMFRef *output) { output->fastRemove(c); });
  return 1;
}

void ozMFRef::removeIndex(unsigned int i) {
  if (i >= array().getCount()) return;
  ozContainer *const dropped = array()[i];
  array().removeIndex(i);
  clearUpTo(array().getCount() + 1);
  getParent()->unrefer(dropped);
  finish<ozMFRef>([=](ozMFRef *output) { output->removeIndex(i); });
}

void ozMFRef::fastRemoveIndex(unsigned int i) {
  if (i >= array().getCount()) return;
  ozContainer *const dropped = array()[i];
  array().fastRemoveIndex(i);
  clearUpTo(array().getCount() + 1);
  getParent()->unrefer(dropped);
  finish<ozMFRef>([=](ozMFRef *output) { output->fastRemoveIndex(i); });
}

long int ozMFRef::replace(ozContainer *old, ozContainer *now) {
  long int const i = array().replace(old, now);
  if (i < 0) return i;
  getParent()->refer(old, now);
  finish<ozMFRef>([=](ozMFRef *output) { output->replace(old, now); });
  return i;
}
