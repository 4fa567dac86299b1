// Copying and cloning. A copy takes the fields in id order, each with its connections; a connection of which both ends
// are copied ends up between the two copies, and the source graph is back as it was.

#include <stdio.h>

#include "oz/ozCloneTable.h"
#include "oz/ozContainer.h"
#include "oz/ozData.h"
#include "oz/ozSFRef.h"
#include "oz/ozType.h"

void ozContainer::copy(ozContainer *src, ozCloneTable *table) { copyFrame(src, table, false); }

void ozContainer::copy(ozContainer *src) {
  ozCloneTable table;
  copy(src, &table);
}

ozContainer *ozContainer::clone(CloneEnum mode, ozCloneTable *table) {
  ozContainer *const copied = instantiate();
  if (!copied) return nullptr;
  if (mode == CLONE_SHALLOW || mode == CLONE_CHILDREN)
    copied->copy(this); // with a table of its own: meant so
  else
    copied->recursiveCopy(this, table);
  return copied;
}

ozContainer *ozContainer::clone(CloneEnum mode) {
  ozCloneTable table;
  return clone(mode, &table);
}

void ozContainer::recursiveCopy(ozContainer *src, ozCloneTable *table) { copyFrame(src, table, true); }

void ozContainer::copyFrame(ozContainer *src, ozCloneTable *table, bool deep) {
  if (src == this) return;
  ozCloneTable::Scope scope(table, src);
  if (scope.isCycle()) return;
  src->cleanFields();
  if (src->_name) setName(src->_name);
  if (!deep) {
    setUserData(src->_userData);
  } else if (src->_userData) {
    setUserData(src->_userData->clone());
  }
  int count = src->getFieldInfoCount();
  if (count > getFieldInfoCount()) count = getFieldInfoCount();
  for (int i = 0; i < count; ++i) {
    short const id = static_cast<short>(i);
    ozFieldInfo *const info = getFieldInfo(id), *const from = src->getFieldInfo(id);
    if (info->getOffset() != from->getOffset() || info->getFieldType() != from->getFieldType()) {
      getField(i)->copy(src->getField(i)); // of an unrelated class: its member lies elsewhere
    } else if (info->getOffset()) {        // otherwise the field object owns its value
      if (deep)
        copyReferences(info, src, table);
      else
        info->copy(this, src);
    }
    if (ozField *const field = src->findFieldObject(i)) getField(i)->copyConnections(field, table);
    fieldChanged(id);
  }
}

ozContainer *ozContainer::cloneChild(ozContainer *child, ozCloneTable *table) {
  if (!child->hasFlag(PARENT_ARRAY_FLAG)) return child->clone(CLONE_DEEP, table);
  ozContainer *copied = table->getClonedInstance(child);
  if (!copied) {
    copied = child->clone(CLONE_DEEP, table);
    table->addClonedInstance(child, copied);
  }
  return copied;
}

// Copies one field of a deep copy: what a reference field holds is cloned.
void ozContainer::copyReferences(ozFieldInfo *info, ozContainer *src, ozCloneTable *table) {
  if (info->getFieldType()->isDerivedFrom(ozSFRef::getClassType())) {
    ozContainer *const child = static_cast<ozSFRefInfo *>(info)->member(src);
    if (!child) {
      info->copy(this, src);
      return;
    }
    ozContainer *const copied = cloneChild(child, table);
    refer(copied);
    static_cast<ozSFRefInfo *>(info)->member(this) = copied;
  } else if (info->getFieldType()->isDerivedFrom(ozMFRef::getClassType())) {
    ozMFRef *const from = static_cast<ozMFRef *>(src->getField(info->getId()));
    ozMFRef *const to = static_cast<ozMFRef *>(getField(info->getId()));
    for (unsigned int i = 0; i < from->getCount(); ++i)
      to->set(i, from->get(i) ? cloneChild(from->get(i), table) : nullptr);
  } else {
    info->copy(this, src);
  }
}
