#ifndef OZ_NODE_VISIT_H
#define OZ_NODE_VISIT_H

#include "oz/ozFieldInfoArray.h"
#include "oz/ozIsectAction.h"
#include "oz/ozNode.h"

/// @file
/// What all visits are made of: the frame around a node's own work, and the loop over children. Each stands here once,
/// for every kind of visit and every node.

/// The larger of two verdicts.
inline ozTravDirective ozLarger(ozTravDirective a, ozTravDirective b) { return a > b ? a : b; }

/// Calls op(i) for i from 0 up to the count at the start, but never past the present one: what op visits may take
/// children out.
template <class Op> inline void ozForEachIndex(ozRefArray const &children, Op op) {
  unsigned int const count = children.getCount();
  for (unsigned int i = 0; i < count && i < children.getCount(); ++i)
    if (children[i] && !op(i)) return;
}

/// Visits the children in order with an operation of ozNode such as &ozNode::drawVisit; TRAV_TERM of a child ends the
/// loop and is the result, everything else of a child has no effect. Nulls are passed over.
template <auto Visit, class Action> inline ozTravDirective ozVisitChildren(ozRefArray const &children, Action *action) {
  ozTravDirective verdict = TRAV_CONT;
  ozForEachIndex(children, [&](unsigned int i) {
    if ((static_cast<ozNode *>(children[i])->*Visit)(action) == TRAV_TERM) verdict = TRAV_TERM;
    return verdict != TRAV_TERM;
  });
  return verdict;
}

/// Visits one child; the result is its verdict. One that is not there is passed over.
template <auto Visit, class Action>
inline ozTravDirective ozVisitChild(ozRefArray const &children, int index, Action *action) {
  if (index < 0 || index >= static_cast<int>(children.getCount())) return TRAV_CONT;
  ozNode *const child = static_cast<ozNode *>(children[static_cast<unsigned int>(index)]);
  return child ? (child->*Visit)(action) : TRAV_CONT;
}

/// As ozVisitChildren for ozNode::sound, which has no verdict.
inline void ozSoundChildren(ozRefArray const &children, ozSoundAction *action) {
  ozForEachIndex(children, [&](unsigned int i) {
    static_cast<ozNode *>(children[i])->sound(action);
    return true;
  });
}

/// Tests one child, with its entry in the path.
inline void ozIsectChild(ozContainer *child, ozIsectAction *action) {
  if (!child) return;
  action->pushPath(child);
  static_cast<ozNode *>(child)->isect(action);
  action->popPath();
}

/// Tests the children from the last to the first: of equally near hits the one that is tried last wins.
inline void ozIsectChildren(ozRefArray const &children, ozIsectAction *action) {
  for (unsigned int i = children.getCount(); i-- > 0;)
    if (i < children.getCount()) ozIsectChild(children[i], action);
}

/// Whether the action's segment misses a box. One that is flat in two directions or more is not tested.
inline bool ozMissesBox(ozBoxBound const &box, ozIsectAction *action) {
  return box.dimension() >= 2 && !box.isect(action->getActiveSeg(), nullptr, nullptr);
}

/// preVisit, work(verdict of preVisit), postVisit; the result is the larger of what the last two say.
template <class Action, class Work> inline ozTravDirective ozFrame(ozNode *node, Action *action, Work work) {
  if (action->skipsVisits()) return work(TRAV_CONT);
  ozTravDirective const verdict = work(action->preVisit(node));
  return ozLarger(verdict, action->postVisit(node));
}

/// The same with work() done only if preVisit has nothing against it.
template <class Action, class Work> inline ozTravDirective ozVisitFrame(ozNode *node, Action *action, Work work) {
  return ozFrame(node, action, [&](ozTravDirective verdict) { return verdict == TRAV_CONT ? work() : verdict; });
}

/// Tests a box against the view; if it is not outside, the verdict is frame(), otherwise TRAV_PRUNE. The status found
/// goes to `status`, if given.
template <class Action, class Frame>
inline ozTravDirective ozCulled(ozBoxBound const &box, Action *action, Frame frame, int *status = nullptr) {
  unsigned int const found = action->pushCull(box);
  if (status) *status = static_cast<int>(found);
  ozTravDirective const verdict = found ? frame() : TRAV_PRUNE;
  action->popCull();
  return verdict;
}

/// A frame inside a test against the view.
template <class Action, class Work>
inline ozTravDirective ozCulledFrame(ozNode *node, ozBoxBound const &box, Action *action, Work work) {
  return ozCulled(box, action, [&] { return ozVisitFrame(node, action, work); });
}

#endif
