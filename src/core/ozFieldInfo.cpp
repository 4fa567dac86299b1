#include <stdlib.h>
#include <string.h>

#include "oz/ozContainer.h"
#include "oz/ozField.h"
#include "oz/ozOutput.h"

static_assert(sizeof(char ozContainer::*) == sizeof(ptrdiff_t), "member pointers are offsets");

// Offset 0 stands for no member: the container's table pointer lies there, never a value.
static int offsetOf(char ozContainer::*member) {
  if (!member) return 0;
  ptrdiff_t offset;
  memcpy(&offset, &member, sizeof offset);
  return static_cast<int>(offset);
}

ozFieldInfo::ozFieldInfo(char const *name, short id, char ozContainer::*member)
    : _name(ozNameEntry::insert(name)), _id(id), _offset(offsetOf(member)), _aliases(nullptr), _fieldType(nullptr) {}

ozFieldInfo::~ozFieldInfo() {
  for (unsigned int i = 0; _aliases && i < _aliases->getCount(); ++i) delete static_cast<ozName *>(_aliases->get(i));
  delete _aliases;
  for (unsigned int i = 0; i < _enums.getCount(); ++i) {
    EnumEntry *const entry = static_cast<EnumEntry *>(_enums[i]);
    free(entry->name);
    delete entry;
  }
}

void ozFieldInfo::write(ozOutput *) {}

void ozFieldInfo::fieldChanged(ozContainer *container) const { container->fieldChanged(_id); }

void ozFieldInfo::addAlias(char const *name) {
  if (!_aliases) _aliases = new ozPtrArray;
  _aliases->append(new ozName(name));
}

unsigned char ozFieldInfo::matchAlias(char const *name) const {
  for (unsigned int i = 0; i < _aliases->getCount(); ++i)
    if (!strcmp(name, static_cast<ozName *>(_aliases->get(i))->getString())) return 1;
  return 0;
}

void ozFieldInfo::addEnum(int value, char const *name) { _enums.append(new EnumEntry{strdup(name), value}); }

char const *ozFieldInfo::mapEnum(int value) const {
  for (unsigned int i = 0; i < _enums.getCount(); ++i)
    if (static_cast<EnumEntry *>(_enums[i])->value == value) return static_cast<EnumEntry *>(_enums[i])->name;
  return "(nameless)";
}

unsigned char ozFieldInfo::findEnum(char const *name, int &value) const {
  for (unsigned int i = 0; i < _enums.getCount(); ++i) {
    EnumEntry const *const entry = static_cast<EnumEntry *>(_enums[i]);
    if (!strcmp(entry->name, name)) {
      value = entry->value;
      return 1;
    }
  }
  return 0;
}

int ozFieldInfo::preWrite(ozOutput *out, ozContainer *container) {
  if (isDefault(container)) return 1;
  out->indent();
  fprintf(out->getFile(), "%s ", getName());
  return 0;
}
