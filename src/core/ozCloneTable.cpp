// A connection is copied by whichever of its ends comes second. Until then the copy of a target hangs on the source's
// own source field. The copy of a source, however, is tied to the original target only when the whole operation is
// over: had the target heard of it, the original would follow its own copy.

#include "oz/ozCloneTable.h"

#include <stdio.h>

#include "oz/ozContainer.h"
#include "oz/ozField.h"
#include "oz/ozType.h"

struct ozCloneTable::Instance {
  int uses;
  ozContainer *source;
  ozContainer *clone;
};

struct ozCloneTable::Connection {
  ozField *from, *to;           // the source's
  ozField *cloneFrom, *cloneTo; // one of them still is the source's own
  ozField *source;              // where `to` pointed before it was tied to cloneFrom
  unsigned char tied, wasDirty;
};

ozCloneTable::ozCloneTable() : _clonedObject(nullptr) {}

ozCloneTable::~ozCloneTable() {
  for (unsigned int i = 0; i < _instances.getCount(); ++i) delete static_cast<Instance *>(_instances[i]);
  for (unsigned int i = 0; i < _connections.getCount(); ++i) delete static_cast<Connection *>(_connections[i]);
}

ozCloneTable::Scope::Scope(ozCloneTable *table, ozContainer *src) : _table(table), _cycle(table->_open.find(src) >= 0) {
  if (_cycle)
    fprintf(stderr, "ozContainer: the graph to be copied holds a cycle through a %s\n", src->getType()->getName());
  _table->_open.append(src);
}

ozCloneTable::Scope::~Scope() {
  _table->_open.removeIndex(_table->_open.getCount() - 1);
  if (!_table->_open.getCount()) _table->connectPending();
}

void ozCloneTable::addClonedInstance(ozContainer *src, ozContainer *clone) {
  _instances.insert(0, new Instance{1, src, clone});
}

ozContainer *ozCloneTable::getClonedInstance(ozContainer *src) {
  for (unsigned int i = 0; i < _instances.getCount(); ++i) {
    Instance *const record = static_cast<Instance *>(_instances[i]);
    if (record->source != src) continue;
    ozContainer *const clone = record->clone;
    if (record->uses++ == src->getParentCount()) {
      _instances.fastRemoveIndex(i);
      delete record;
    }
    return clone;
  }
  return nullptr;
}

void ozCloneTable::addClonedConnection(ozField *srcFrom, ozField *srcTo, ozField *cloneFrom, ozField *cloneTo) {
  _connections.insert(0, new Connection{srcFrom, srcTo, cloneFrom, cloneTo, nullptr, 0, 0});
}

// Takes out a record of which the end that is asked for is still the source's own.
ozCloneTable::Connection *ozCloneTable::takeConnection(ozField *srcFrom, ozField *srcTo, ozField *open) {
  for (unsigned int i = 0; i < _connections.getCount(); ++i) {
    Connection *const record = static_cast<Connection *>(_connections[i]);
    if (record->from != srcFrom || record->to != srcTo) continue;
    if (open && record->cloneFrom != open && record->cloneTo != open) continue;
    _connections.fastRemoveIndex(i);
    return record;
  }
  return nullptr;
}

void ozCloneTable::getClonedConnection(ozField *srcFrom, ozField *srcTo, ozField *&cloneFrom, ozField *&cloneTo) {
  Connection *const record = takeConnection(srcFrom, srcTo);
  cloneFrom = record ? record->cloneFrom : nullptr;
  cloneTo = record ? record->cloneTo : nullptr;
  delete record;
}

// Ties copied fields to targets that were not copied: from now on they feed these too.
void ozCloneTable::connectPending() {
  for (unsigned int i = _connections.getCount(); i-- > 0;) {
    Connection *const record = static_cast<Connection *>(_connections[i]);
    if (record->tied || record->cloneTo != record->to) continue;
    record->tied = 1;
    record->source = record->to->_source;
    record->wasDirty = record->to->_dirty;
    record->cloneFrom->connect(record->to);
  }
}

// Points back at the source of an earlier time.
void ozField::restore(ozField *source, int dirty) {
  setSource(source);
  if (source && !source->_outputs.has(this)) source->addFollower(this);
  setDirty(dirty);
}

void ozField::copyConnections(ozField *from, ozCloneTable *table) {
  for (unsigned int i = 0; i < from->_inputs.getCount(); ++i) {
    ozField *const input = from->_inputs.get(i);
    if (ozCloneTable::Connection *const record = table->takeConnection(input, from, from)) {
      if (record->tied) {
        record->cloneFrom->disconnect(from);
        from->restore(record->source, record->wasDirty);
      }
      record->cloneFrom->connect(this);
      delete record;
    } else {
      input->connect(this);
      table->addClonedConnection(input, from, input, this);
    }
  }
  for (unsigned int i = 0; i < from->_outputs.getCount(); ++i) {
    ozField *const output = from->_outputs.get(i);
    if (ozCloneTable::Connection *const record = table->takeConnection(from, output, from)) {
      from->disconnect(record->cloneTo); // stands behind `output`, so that the loop's place holds
      connect(record->cloneTo);
      record->cloneTo->setSource(this); // also where the two were connected before, as inside an engine
      delete record;
    } else {
      table->addClonedConnection(from, output, this, output);
    }
  }
}
