#ifndef OZ_NODE_H
#define OZ_NODE_H

#include "oz/ozAction.h"
#include "oz/ozBound.h"
#include "oz/ozClass.h"

class ozDrawAction;
class ozGroup;
class ozIsectAction;
class ozSoundAction;
class ozTransformAction;
class ozVFCullAction;

/// Base of everything that can stand in a scene graph: a box around what is below, and a visit for each family of
/// actions.
///
/// The graph has no cycles but may share: a node with several parents is visited once for each. A graph is traversed by
/// one thread at a time, since a visit brings the fields of each node up to date.
class OZ_API ozNode : public ozContainer {
  OZ_ABSTRACT_CLASS(ozNode);

public:
  enum BoundModeEnum : int {
    STATIC = 0, ///< the box is what setBoxBound() stored last; no change below touches it
    DYNAMIC = 1 ///< the box is computed anew, when it is read, after a change below
  };

  /// Passes sounds on to their players. Does nothing here.
  virtual void sound(ozSoundAction *action);
  /// Tests the action's active segment against the geometry below. Does nothing here.
  virtual void isect(ozIsectAction *action);
  /// The visit of a plain ozAction; this and the following return TRAV_CONT here.
  virtual ozTravDirective visit(ozAction *action);
  virtual ozTravDirective transformVisit(ozTransformAction *action);
  virtual ozTravDirective vfCullVisit(ozVFCullAction *action);
  virtual ozTravDirective drawVisit(ozDrawAction *action);

  /// The box around the contents, in the parent's space, brought up to date. The pointer is to the node's own box.
  ozBoxBound *getBoxBound();
  void getBoxBound(ozBoxBound &box);
  /// Stores the box; in mode DYNAMIC the next change below replaces it.
  void setBoxBound(ozBoxBound const &box);
  /// DYNAMIC by default.
  BoundModeEnum getBoundMode();
  void setBoundMode(BoundModeEnum mode);
  /// The sphere around the corners of the box; empty if the box is.
  void getSphereBound(ozSphereBound &sphere);

  /// Puts the group between this node and each of its present parents that is a group. A node with several parents
  /// stands in the group as many times.
  void insertParent(ozGroup *group);

protected:
  void fieldChanged(short id) override;

  ozBoxBound _boxBound;
  BoundModeEnum _boundMode;
};

#endif
