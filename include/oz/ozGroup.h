#ifndef OZ_GROUP_H
#define OZ_GROUP_H

#include "oz/ozNode.h"
#include "oz/ozSFRef.h"

/// A node with an ordered list of children, and the box around them.
///
/// Each operation that changes the list announces the change, also if it had nothing to do. The box is computed at the
/// next read or visit, once for any number of changes.
class OZ_API ozGroup : public ozNode {
  OZ_CLASS(ozGroup);

public:
  ozGroup();

  /// At the end of the list. Null is not added.
  void addChild(ozNode *child);
  void insertChild(int index, ozNode *child);
  void setChild(int index, ozNode *child);
  /// Takes out the first such child; returns 1 if there was one, otherwise 0.
  unsigned char removeChild(ozNode *child);
  void removeChild(int index);
  /// Puts a node in the place of the first such child; returns its index, -1 if there was none.
  long int replaceChild(ozNode *old, ozNode *now);
  /// The index of a child, -1 if it is none.
  long int findChild(ozNode *child);
  /// The child at an index, which must be below the count.
  ozNode *getChild(int index);
  int getChildCount();
  /// A lower count releases the children that it cuts off; a higher one adds nulls.
  void setChildCount(int count);
  /// The field "children" itself.
  ozMFRef *children() { return static_cast<ozMFRef *>(getField(2)); }

  /// box = the box around the children's boxes, each brought up to date; empty without children.
  void calcChildrenBound(ozBoxBound &box);

  using ozNode::clone;
  /// In mode CLONE_SHALLOW the copy shares the children, otherwise they are copied in the same mode. What is shared
  /// among the source's groups is shared among the copy's.
  ozContainer *clone(CloneEnum mode, ozCloneTable *table) override;
  ozContainer *clone(CloneEnum mode) override;

  /// Children hear sounds in order.
  void sound(ozSoundAction *action) override;
  /// Children are tried from the last to the first, so that of equally near hits the first child's wins. None is tried
  /// if the segment misses the box.
  void isect(ozIsectAction *action) override;
  /// Between preVisit and postVisit of the action, visits the children in order until one gives TRAV_TERM. TRAV_PRUNE
  /// of a child has no effect.
  ozTravDirective visit(ozAction *action) override;
  ozTravDirective transformVisit(ozTransformAction *action) override;
  /// As visit(), if the box is not outside the view; otherwise TRAV_PRUNE.
  ozTravDirective vfCullVisit(ozVFCullAction *action) override;
  ozTravDirective drawVisit(ozDrawAction *action) override;

protected:
  void fieldChanged(short id) override;
  void childChanged(ozContainer *child, short id) override;
  void cleanSideEffect(short id) override;

  ozShortRefArray<2> _children;
};

/// A group with a flag for the application's collision tests. The library stores the flag and never reads it.
class OZ_API ozCollision : public ozGroup {
  OZ_CLASS(ozCollision);

public:
  ozCollision();

  /// Whether the application should test this subtree. 1 by default.
  unsigned char getCollide();
  void setCollide(unsigned char collide);

private:
  unsigned char _collide;
};

#endif
