#ifndef OZ_ACTION_H
#define OZ_ACTION_H

#include "oz/ozClass.h"
#include "oz/ozObject.h"

class ozNode;

/// What a visit tells its caller. The verdicts are ordered: a visit that has two returns the larger.
enum ozTravDirective : int {
  TRAV_CONT = 0,  ///< go on
  TRAV_PRUNE = 1, ///< the subtree was skipped; the caller goes on with the next sibling
  TRAV_TERM = 2   ///< stop the whole traversal
};

/// A walk over a graph, depth first, and the state of that walk.
///
/// Each family of actions has a visit of its own on ozNode (visit, transformVisit, vfCullVisit, drawVisit, isect,
/// sound): apply() calls it on the root, and nodes call it on their children. An action may live on the stack, may be
/// applied any number of times, and belongs to the thread that applies it. Copies are shallow.
class OZ_API ozAction : public ozObject {
  OZ_OBJECT_CLASS(ozAction);

public:
  ozAction();
  ozAction(ozAction const &other) : ozObject(other), _userData(other._userData), _skipsVisits(false) {}
  ozAction &operator=(ozAction const &other);
  ~ozAction() override;

  /// Walks the graph below root, which must not be null, with ozNode::visit; returns the root's verdict.
  virtual ozTravDirective apply(ozNode *root);
  /// Called once ahead of a walk. Does nothing here.
  virtual void begin(ozNode *root);
  /// Called by each node ahead of its own work; another verdict than TRAV_CONT makes the node skip it. For
  /// applications.
  virtual ozTravDirective preVisit(ozNode *node);
  /// Called by each node after its own work, also if that was skipped. For applications.
  virtual ozTravDirective postVisit(ozNode *node);
  /// Called once after a walk. Does nothing here.
  virtual void end(ozNode *root);
  /// A new action of the same class.
  virtual ozAction *instantiate();

  /// Back to the state that each walk starts from. Does nothing here.
  void reset() {}
  /// Back to what a new action has: no user data.
  void init() { _userData = nullptr; }

  /// The caller's own.
  void *getUserData() const { return _userData; }
  void setUserData(void *data) { _userData = data; }

  /// Whether nodes may leave out preVisit and postVisit.
  bool skipsVisits() const { return _skipsVisits; }

protected:
  explicit ozAction(ozType *type);

  /// For the length of a walk: nobody has overridden preVisit or postVisit.
  void skipVisits(bool skip) { _skipsVisits = skip; }

private:
  void *_userData;
  bool _skipsVisits; // never copied: the copy may be of a class that overrides them
};

#endif
