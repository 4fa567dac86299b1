// The dirty bound: a change below marks the box of each group above it, once, and the next read or visit of a group
// computes its box and those below it that are marked. A group in mode STATIC stops the marks.

#include "oz/ozGroup.h"

#include "node/visit.h"
#include "oz/ozCloneTable.h"
#include "oz/ozData.h"
#include "oz/ozDrawAction.h"

OZ_DEFINE_INSTANCES(ozGroup)

OZ_DEFINE_TYPE(ozGroup, "Group", ozNode) {
  ozMFRef::addTypeField(type, "children", 2, ozNode::getClassType(), &ozGroup::_children);
}

ozGroup::ozGroup(ozType *type) : ozNode(type) { initFieldDefaults(_ClassType); }

ozGroup::~ozGroup() { destroyFieldContents(_ClassType); }

// ---- the list of children

void ozGroup::addChild(ozNode *child) {
  if (child) static_cast<ozMFRefInfo *>(getFieldInfo(2))->append(this, child);
  fieldChanged(2); // also for null, which is meant
}

void ozGroup::insertChild(int index, ozNode *child) {
  children()->insert(static_cast<unsigned int>(index), child);
  fieldChanged(2);
}

void ozGroup::setChild(int index, ozNode *child) {
  children()->set(static_cast<unsigned int>(index), child);
  fieldChanged(2);
}

unsigned char ozGroup::removeChild(ozNode *child) {
  unsigned char const removed = children()->remove(child);
  fieldChanged(2);
  return removed;
}

void ozGroup::removeChild(int index) {
  children()->removeIndex(static_cast<unsigned int>(index));
  fieldChanged(2);
}

long int ozGroup::replaceChild(ozNode *old, ozNode *now) {
  long int const index = children()->replace(old, now);
  fieldChanged(2);
  return index;
}

void ozGroup::setChildCount(int count) {
  children()->setCount(static_cast<unsigned int>(count));
  fieldChanged(2);
}

long int ozGroup::findChild(ozNode *child) { return children()->find(child); }
ozNode *ozGroup::getChild(int index) {
  return static_cast<ozNode *>(read(2, _children)[static_cast<unsigned int>(index)]);
}
int ozGroup::getChildCount() { return static_cast<int>(read(2, _children).getCount()); }

// ---- the bound

void ozGroup::fieldChanged(short id) {
  if (id != 2) {
    ozNode::fieldChanged(id);
    return;
  }
  if (_boundMode == DYNAMIC) propagateSideEffect(0);
  touchField(2);
}

void ozGroup::childChanged(ozContainer *child, short id) {
  if (id == 0 && _boundMode == DYNAMIC)
    propagateSideEffect(0);
  else
    ozNode::childChanged(child, id);
}

void ozGroup::cleanSideEffect(short id) {
  if (id != 0) {
    ozNode::cleanSideEffect(id);
    return;
  }
  settleSideEffect(0); // first: in a graph that holds a cycle the computation comes back here
  calcChildrenBound(_boxBound);
  touchField(0);
}

void ozGroup::calcChildrenBound(ozBoxBound &box) {
  validateField(2);
  ozBoxBound all;
  bool first = true;
  for (unsigned int i = 0; i < _children.getCount(); ++i) {
    if (!_children[i]) continue;
    ozBoxBound const *const child = static_cast<ozNode *>(_children[i])->getBoxBound();
    if (first)
      all = *child;
    else
      all.ozBoxBound::extendBy(child);
    first = false;
  }
  box = all;
}

// ---- copying

ozContainer *ozGroup::clone(CloneEnum mode) {
  ozCloneTable table;
  return clone(mode, &table);
}

ozContainer *ozGroup::clone(CloneEnum mode, ozCloneTable *table) {
  ozGroup *const copied = static_cast<ozGroup *>(instantiate());
  if (!copied) return nullptr;
  // Connections to nodes further down wait until the children are copied too.
  ozCloneTable::Scope connections(table, copied);
  copied->copy(this, table);
  if (mode == CLONE_DEEP && getUserData()) copied->setUserData(getUserData()->clone());
  if (mode != CLONE_CHILDREN && mode != CLONE_DEEP) return copied;
  int const count = copied->getChildCount();
  if (count == 0) return copied; // also where copy() met this very group further out and has said so
  ozCloneTable::Scope scope(table, this);
  for (int i = 0; i < count; ++i) {
    ozNode *const child = copied->getChild(i);
    if (!child) continue;
    // The copy has added one parent, so this one is shared in the source.
    bool const shared = child->getParentCount() > 2;
    ozContainer *now = shared ? table->getClonedInstance(child) : nullptr;
    if (!now) {
      now = child->clone(mode, table);
      if (shared) table->addClonedInstance(child, now);
    }
    copied->setChild(i, static_cast<ozNode *>(now));
  }
  return copied;
}

// ---- visits

void ozGroup::sound(ozSoundAction *action) { ozSoundChildren(_children, action); }

void ozGroup::isect(ozIsectAction *action) {
  cleanFields();
  if (!ozMissesBox(_boxBound, action)) ozIsectChildren(_children, action);
}

ozTravDirective ozGroup::visit(ozAction *action) {
  cleanFields();
  return ozVisitFrame(this, action, [&] { return ozVisitChildren<&ozNode::visit>(_children, action); });
}

ozTravDirective ozGroup::transformVisit(ozTransformAction *action) {
  cleanFields();
  return ozVisitFrame(this, action, [&] { return ozVisitChildren<&ozNode::transformVisit>(_children, action); });
}

ozTravDirective ozGroup::vfCullVisit(ozVFCullAction *action) {
  cleanFields();
  return ozCulledFrame(this, _boxBound, action,
                       [&] { return ozVisitChildren<&ozNode::vfCullVisit>(_children, action); });
}

ozTravDirective ozGroup::drawVisit(ozDrawAction *action) {
  cleanFields();
  return ozCulledFrame(this, _boxBound, action, [&] { return ozVisitChildren<&ozNode::drawVisit>(_children, action); });
}
