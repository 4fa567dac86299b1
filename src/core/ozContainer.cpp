// The change machinery. Invariants: a set bit of the dirty mask means that an input of that field holds a newer value;
// a set bit of the side-effect mask means that all parents have been told, which is why a burst of changes stops at the
// first container that has the bit. Setting marks, reading computes.

#include "oz/ozContainer.h"

#include <stdlib.h>
#include <string.h>

#include "oz/ozData.h"
#include "oz/ozSFRef.h"
#include "oz/ozString.h"
#include "oz/ozType.h"

/// The parents of a container that has had several, in one block. Parents go mostly in the order in which they came, as
/// a graph is torn down: taking the first one away moves nothing.
struct ozParentList {
  unsigned int first, end, room; // entries[first] to entries[end - 1] are in use
  ozContainer *entries[1];

  unsigned int getCount() const { return end - first; }
  ozContainer *get(unsigned int i) const { return entries[first + i]; }

  /// The list, which may be null, with room for one more entry at its end; null if there is no memory.
  static ozParentList *withRoom(ozParentList *list) {
    if (list && list->end < list->room) return list;
    unsigned int const room = list ? list->room + list->room / 2 + 2 : 2;
    size_t const bytes = sizeof(ozParentList) + (room - 1) * sizeof(ozContainer *);
    ozParentList *const wider = static_cast<ozParentList *>(realloc(list, bytes));
    if (!wider) return nullptr;
    if (!list) wider->first = wider->end = 0;
    wider->room = room;
    return wider;
  }

  /// Takes out the first entry equal to one; returns whether there was one.
  unsigned char remove(ozContainer *parent) {
    unsigned int at = first;
    while (at < end && entries[at] != parent) ++at;
    if (at == end) return 0;
    if (at == first) {
      ++first;
    } else {
      --end;
      memmove(entries + at, entries + at + 1, (end - at) * sizeof *entries);
    }
    if (first > getCount() + 16) close();
    return 1;
  }

private:
  // Closes the gap ahead of the first one, lest the list grow for ever as parents come and go.
  void close() {
    memmove(entries, entries + first, getCount() * sizeof *entries);
    end -= first;
    first = 0;
  }
};

static ozParentList *listOf(void *parents) { return static_cast<ozParentList *>(parents); }

OZ_DEFINE_TYPE_POINTER(ozContainer, "Container", ozObject)

ozContainer::ozContainer(ozType *type)
    : ozObject(type), _parents(nullptr), _userData(nullptr), _name(nullptr), _dirtyMask(0), _sideEffectMask(0) {
  setFlag(PARENT_ARRAY_FLAG, false);
  setFlag(CONTAINER_FLAG, false);
}

ozContainer::~ozContainer() {
  free(_name);
  if (_userData) _userData->unref();
  _fields.keepIf([](ozField *field) {
    delete field;
    return false;
  });
  if (hasFlag(PARENT_ARRAY_FLAG)) free(_parents);
}

void ozContainer::setUserData(ozData *data) {
  if (data) data->ref();
  if (_userData) _userData->unref();
  _userData = data;
}

void ozContainer::setName(char const *name) {
  char *const copy = name ? strdup(name) : nullptr; // first: the text may be the old name
  free(_name);
  _name = copy;
}

ozFieldInfo *ozContainer::getFieldInfo(short id) const { return getType()->getFieldInfo(id); }
int ozContainer::getFieldInfoCount() const { return getType()->getFieldInfoCount(); }

void ozContainer::initFieldDefaults(ozType *level) {
  for (int id = level->getAncestorFieldCount(); id < level->getFieldInfoCount(); ++id)
    if (level->getFieldInfo(id)->getOffset()) level->getFieldInfo(id)->reset(this);
}

void ozContainer::destroyFieldContents(ozType *level) {
  ozField::cleanFields();
  for (int id = level->getAncestorFieldCount(); id < level->getFieldInfoCount(); ++id) {
    ozFieldInfo *const info = level->getFieldInfo(id);
    if (!info->getOffset()) continue; // the field object owns its value
    if (info->getFieldType()->isDerivedFrom(ozSFRef::getClassType())) {
      ozContainer *&member = static_cast<ozSFRefInfo *>(info)->member(this);
      unrefer(member);
      member = nullptr;
    } else if (info->getFieldType()->isDerivedFrom(ozMFRef::getClassType())) {
      ozRefArray &members = static_cast<ozMFRefInfo *>(info)->member(this);
      for (unsigned int i = 0; i < members.getCount(); ++i) unrefer(members[i]);
      members.setCount(0);
    }
  }
}

// ---- field objects

void ozFieldSlots::set(ozField *field, int count) {
  int const id = field->getId();
  if (!_slots || ((_slots & SINGLE) && single()->getId() == id)) {
    _slots = reinterpret_cast<unsigned long>(field) | SINGLE;
    return;
  }
  if ((_slots & SINGLE) || id >= table()->count) {
    ozField *const other = _slots & SINGLE ? single() : nullptr;
    Table *const old = other ? nullptr : table();
    if (id >= count) count = id + 1;
    if (other && other->getId() >= count) count = other->getId() + 1;
    Table *const wider =
        static_cast<Table *>(calloc(1, sizeof(Table) + static_cast<size_t>(count) * sizeof(ozField *)));
    if (!wider) return;
    wider->count = count;
    for (int i = 0; old && i < old->count; ++i) wider->at[i] = old->at[i];
    if (other) wider->at[other->getId()] = other;
    free(old);
    _slots = reinterpret_cast<unsigned long>(wider);
  }
  table()->at[id] = field;
}

// A field is out of its place while it is looked at: one that is being deleted can no longer be found.
template <class Visit> void ozFieldSlots::keepIf(Visit visit) {
  if (_slots & SINGLE) {
    ozField *const field = single();
    _slots = 0;
    if (visit(field)) set(field, 0);
    return;
  }
  if (!_slots) return;
  bool used = false;
  for (int id = 0; id < table()->count; ++id) {
    ozField *const field = table()->at[id];
    if (!field) continue;
    table()->at[id] = nullptr;
    if (!visit(field)) continue;
    table()->at[id] = field;
    used = true;
  }
  if (used) return;
  free(table());
  _slots = 0;
}

void ozContainer::addField(ozField *field) { _fields.set(field, getFieldInfoCount()); }

ozField *ozContainer::getField(int id) {
  OZ_REQUIRE(id >= 0 && id < getFieldInfoCount(), "field id out of range");
  if (ozField *const field = findFieldObject(id)) return field;
  getFieldInfo(static_cast<short>(id))->instantiate(this);
  return findFieldObject(id);
}

static ozFieldInfo *match(ozType *type, char const *name) {
  for (int id = 0; id < type->getFieldInfoCount(); ++id)
    if (type->getFieldInfo(id)->match(name)) return type->getFieldInfo(id);
  return nullptr;
}

ozFieldInfo *ozContainer::findFieldInfo(char const *name) const {
  if (ozFieldInfo *const info = match(getType(), name)) return info;
  // That "set_" may stand anywhere while the first four characters are dropped is meant.
  if (strstr(name, "set_")) return match(getType(), name + 4);
  char const *const suffix = strstr(name, "_changed");
  if (!suffix) return nullptr;
  ozString event(name);
  const_cast<char *>(event.getString())[suffix - name] = '\0';
  return match(getType(), event.getString());
}

ozField *ozContainer::getField(char const *name) {
  ozFieldInfo *const info = findFieldInfo(name);
  return info ? getField(info->getId()) : nullptr;
}

void ozContainer::connect(short id, ozContainer *other, short otherId) {
  ozField *const target = other->getField(otherId);
  getField(id)->connect(target);
}

void ozContainer::disconnect(short id, ozContainer *other, short otherId) {
  ozField *const target = other->getField(otherId);
  getField(id)->disconnect(target);
}

void ozContainer::freeUnconnectedFields() {
  // Engines keep pointers to their fields. They live in a room above this one, so they are known by name.
  static ozType *engine = nullptr;
  if (!engine) engine = ozType::getType("Engine");
  if ((engine && isOfType(engine)) || _fields.isEmpty()) return;
  ozField::cleanFields();
  _fields.keepIf([](ozField *field) {
    bool const connected = !field->getInputEnds().isEmpty() || !field->getOutputEnds().isEmpty();
    if (connected || field->getType()->isDerivedFrom(ozMField::getClassType())) return true;
    delete field;
    return false;
  });
}

// ---- changes

void ozContainer::fieldChanged(short id) { touchField(id); }
void ozContainer::childChanged(ozContainer *, short) {}
void ozContainer::cleanSideEffect(short) {}

void ozContainer::touchFieldObject(short id) {
  ozField *const field = findFieldObject(id);
  if (!field) return;
  _sideEffectMask &= ~wideBit(id); // a direct change overrides a pending recomputation
  if (field->_dirty) {
    field->setDirty(0);
    ozField *const source = field->_source;
    if (source && source->_dirty) source->_parent->cleanFieldInputs(source);
  }
  if (!field->_busy && field->_outputs.getCount()) {
    field->_busy = 1;
    field->dirtyOutputs();
    field->_busy = 0;
  }
}

void ozContainer::dirtyFieldOutputs(ozField *f) {
  f->setDirty(1);
  f->_busy = 1;
  f->dirtyOutputs();
  f->_busy = 0;
}

void ozContainer::cleanFieldInputs(ozField *f) {
  f->setDirty(0);
  if (!f->_source) return;
  f->_busy = 1;
  f->copy(f->_source);
  f->_busy = 0;
}

void ozContainer::validatePending(short id) {
  long long const bit = wideBit(id);
  if (_sideEffectMask & bit) {
    cleanSideEffect(id);
    _sideEffectMask &= ~bit;
  }
  if (_dirtyMask & bit) {
    if (ozField *const field = findFieldObject(id))
      cleanFieldInputs(field);
    else
      _dirtyMask &= ~bit; // of an id that field 31, whose narrow bit stands for more, brought along
  }
}

void ozContainer::internalCleanFields(long long mask) {
  while (mask) {
    long long const before = mask;
    for (short id = 0; id < 64 && mask; ++id, mask >>= 1)
      if (mask & 1) validateField(id);
    mask = _dirtyMask | _sideEffectMask;
    if ((mask & before) == before) return; // nothing settles: an override that marks its field again
  }
}

void ozContainer::notifyParents(short id) {
  if (hasFlag(PARENT_ARRAY_FLAG)) {
    int const count = getParentCount();
    for (int i = 0; i < count && i < getParentCount(); ++i) getParent(i)->childChanged(this, id);
  } else if (_parents) {
    static_cast<ozContainer *>(_parents)->childChanged(this, id);
  }
}

void ozContainer::propagateSideEffect(short id) {
  long long const bit = wideBit(id);
  if (_sideEffectMask & bit) return;
  _sideEffectMask |= bit;
  notifyParents(id);
  if (ozField::isDirtyFieldTrackingEnabled()) getField(id)->recordDirty();
}

// ---- parents

int ozContainer::getParentCount() const {
  if (hasFlag(PARENT_ARRAY_FLAG)) return static_cast<int>(listOf(_parents)->getCount());
  return _parents ? 1 : 0;
}

ozContainer *ozContainer::getParent(int index) const {
  if (hasFlag(PARENT_ARRAY_FLAG)) return listOf(_parents)->get(static_cast<unsigned int>(index));
  return index == 0 ? static_cast<ozContainer *>(_parents) : nullptr;
}

void ozContainer::addParent(ozContainer *parent) {
  bool const isList = hasFlag(PARENT_ARRAY_FLAG);
  if (!isList && !_parents) {
    _parents = parent;
    return;
  }
  ozParentList *const parents = ozParentList::withRoom(isList ? listOf(_parents) : nullptr);
  if (!parents) return;
  if (!isList) parents->entries[parents->end++] = static_cast<ozContainer *>(_parents);
  parents->entries[parents->end++] = parent;
  _parents = parents;
  setFlag(PARENT_ARRAY_FLAG, true);
}

// The two modes answer in different codes, which is meant.
int ozContainer::removeParent(ozContainer *parent) {
  if (!hasFlag(PARENT_ARRAY_FLAG)) {
    if (_parents != parent) return -1;
    _parents = nullptr;
    return 0;
  }
  ozParentList *const parents = listOf(_parents);
  int const removed = parents->remove(parent);
  if (parents->getCount() == 1) {
    _parents = parents->get(0);
    free(parents);
    setFlag(PARENT_ARRAY_FLAG, false);
  }
  return removed;
}

void ozContainer::refer(ozContainer *c) {
  if (!c) return;
  c->ref();
  c->addParent(this);
}

void ozContainer::refer(ozContainer *old, ozContainer *c) {
  refer(c); // new before old: storing what is there already must not destroy it
  unrefer(old);
}

void ozContainer::unrefer(ozContainer *c) {
  if (!c) return;
  c->removeParent(this);
  c->unref();
}
