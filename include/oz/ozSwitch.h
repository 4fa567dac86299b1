#ifndef OZ_SWITCH_H
#define OZ_SWITCH_H

#include "oz/ozGroup.h"

class ozContext;

/// A group of which one child, all or none are drawn, culled and intersected. Plain visits, sound and the bound see all
/// children.
class OZ_API ozSwitch : public ozGroup {
  OZ_CLASS(ozSwitch);

public:
  enum : int { NO_CHILD = -1, ALL_CHILDREN = -2 };

  ozSwitch();

  /// The index of the child; NO_CHILD, which is the default, or ALL_CHILDREN. An index without a child stands for none.
  int getWhichChild();
  void setWhichChild(int which);

  /// With all children, the first is tried first. None is tried if the segment misses the box, however flat that is.
  void isect(ozIsectAction *action) override;
  /// TRAV_PRUNE without a test and without preVisit when no child is chosen.
  ozTravDirective vfCullVisit(ozVFCullAction *action) override;
  ozTravDirective drawVisit(ozDrawAction *action) override;

protected:
  int _whichChild;
};

/// A switch that draws a child by the context that is drawn to; culling and intersection go by "whichChild", which is 0
/// at first.
class OZ_API ozSwitchContext : public ozSwitch {
  OZ_CLASS(ozSwitchContext);

public:
  ozSwitchContext();

  /// The context of child i. The last context cannot be read: it and indices out of range give a message and null.
  ozContext *getContext(int i) const;
  /// Child i is drawn to this context, which is not referenced; a negative i is passed over.
  void setContext(int i, ozContext *context);

  /// Draws the child of the last entry that is the action's context; its verdict counts. A context without an entry
  /// gives a message and ends the traversal.
  ozTravDirective drawVisit(ozDrawAction *action) override;

private:
  ozPtrArray _contexts; // of ozContext *, not counted
};

#endif
