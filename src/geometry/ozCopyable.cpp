#include "oz/ozCopyable.h"

void ozCopyFields(ozType *level, ozContainer *fresh, ozContainer const *from) {
  ozContainer *const source = const_cast<ozContainer *>(from); // reading brings a field up to date
  for (int id = level->getAncestorFieldCount(); id < level->getFieldInfoCount(); ++id) {
    source->validateField(static_cast<short>(id));
    level->getFieldInfo(id)->copy(fresh, source);
  }
}

void ozAssignFields(ozType *level, ozContainer *to, ozContainer const *from) {
  for (int id = level->getAncestorFieldCount(); id < level->getFieldInfoCount(); ++id)
    to->getField(id)->copy(const_cast<ozContainer *>(from)->getField(id));
}
