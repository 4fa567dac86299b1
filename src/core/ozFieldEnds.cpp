#include "core/FieldList.h"
#include "oz/ozField.h"

ozFieldEnds::~ozFieldEnds() {
  if (!(_ends & SINGLE)) delete static_cast<FieldList *>(list());
}

bool ozFieldEnds::has(ozField *field) const {
  if (_ends & SINGLE) return single() == field;
  return _ends && static_cast<FieldList *>(list())->has(field);
}

void ozFieldEnds::add(ozField *field) {
  if (!_ends || _ends == SINGLE)
    _ends = reinterpret_cast<unsigned long>(field) | SINGLE;
  else
    makeList()->add(field);
}

bool ozFieldEnds::take(ozField *field) {
  if (!(_ends & SINGLE)) return _ends && static_cast<FieldList *>(list())->take(field);
  if (single() != field) return false;
  _ends = SINGLE;
  return true;
}

FieldList *ozFieldEnds::makeList() {
  if (_ends && !(_ends & SINGLE)) return static_cast<FieldList *>(list());
  FieldList *const made = new FieldList;
  if (single()) made->add(single());
  ozFieldArray *const array = made;
  _ends = reinterpret_cast<unsigned long>(array);
  return made;
}
