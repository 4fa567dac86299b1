#ifndef OZ_ISECT_ACTION_H
#define OZ_ISECT_ACTION_H

#include "oz/ozHit.h"
#include "oz/ozTransformAction.h"

/// Casts a segment through a graph and keeps the nearest hit on geometry.
///
/// There is no list of hits: each accepted one shortens the active segment, so that only a nearer (or equally near)
/// candidate can follow it. The active segment is in the current node's space; there are 256 nested spaces.
class OZ_API ozIsectAction : public ozTransformAction {
  OZ_OBJECT_CLASS(ozIsectAction);

public:
  ozIsectAction();
  ozIsectAction(ozIsectAction const &other);
  ozIsectAction &operator=(ozIsectAction const &other);
  ~ozIsectAction() override;

  /// Casts `seg` through the graph below root, which may be null; the result stands in `hit`. Always returns TRAV_CONT;
  /// calls neither begin nor end.
  ozTravDirective apply(ozNode *root) override;
  ozAction *instantiate() override;

  /// The segment in the current space. Geometry that finds a hit sets its length to the hit's distance.
  ozSeg *getActiveSeg() { return _activeSeg; }
  /// Into a nested space, by the inverse of its matrix. A full stack says so and changes nothing.
  void pushSeg(ozMatrix4f const &inverse);
  /// Out of a space of the given matrix: a shortening is brought back into the parent's lengths.
  void popSeg(ozMatrix4f const &matrix);
  /// Out of a space without scale.
  void popSeg();

  /// The way from the root to what is visited now.
  void pushPath(ozContainer *container) { _path.append(container); }
  void popPath() {
    if (unsigned int const count = _path.getCount()) _path.setCount(count - 1);
  }

  /// Records a hit at the end of the active segment, whose length the caller has set to the distance. The caller writes
  /// normals and primitive index afterwards.
  void hitGeometry(ozGeometry *geometry);

  ozSeg seg; ///< what to cast; set by the caller
  ozHit hit; ///< the result of the last apply()

protected:
  enum { SEG_LEVELS = 256 };

  explicit ozIsectAction(ozType *type);

private:
  ozRefArray _path;
  int _segDepth;
  ozSeg _segStack[SEG_LEVELS];
  ozSeg *_activeSeg; // the entry of _segStack at _segDepth
};

#endif
