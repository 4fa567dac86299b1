#include "core/FieldList.h"
#include "oz/ozField.h"

ozFieldEnds::~ozFieldEnds() { delete findList(); }

FieldList *ozFieldEnds::findList() const {
  if (_ends & SINGLE) return nullptr;
  return static_cast<FieldList *>(reinterpret_cast<ozFieldArray *>(_ends & ~static_cast<unsigned long>(BITS)));
}

FieldList *ozFieldEnds::makeList() {
  if (FieldList *const list = findList()) return list;
  FieldList *const made = new FieldList;
  if (single()) made->add(single());
  ozFieldArray *const array = made;
  _ends = reinterpret_cast<unsigned long>(array);
  return made;
}

bool ozFieldEnds::isEmpty() const {
  FieldList *const list = findList();
  return list ? list->isEmpty() : !single();
}

bool ozFieldEnds::has(ozField *field) const {
  if (_ends & SINGLE) return single() == field;
  FieldList *const list = findList();
  return list && list->has(field);
}

void ozFieldEnds::add(ozField *field) {
  if (!_ends || _ends == SINGLE)
    _ends = reinterpret_cast<unsigned long>(field) | SINGLE;
  else
    makeList()->add(field);
}

bool ozFieldEnds::take(ozField *field) {
  if (_ends & SINGLE) {
    if (single() != field) return false;
    _ends = SINGLE;
    return true;
  }
  FieldList *const list = findList();
  if (!list || !list->take(field)) return false;
  _ends |= TAKEN;
  return true;
}

void ozFieldEnds::settle() const {
  findList()->settle();
  _ends &= ~static_cast<unsigned long>(TAKEN);
}

// For the caller nothing changes: where there was ever a field, there has always been an array.
ozFieldArray *ozFieldEnds::show() const {
  if (!_ends) return nullptr;
  const_cast<ozFieldEnds *>(this)->makeList()->show();
  return list();
}
