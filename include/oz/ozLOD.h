#ifndef OZ_LOD_H
#define OZ_LOD_H

#include "oz/ozSwitch.h"

/// A switch that chooses its child by the distance between the eye and its centre, at each culling and drawing.
/// Intersection uses the child that was chosen last.
class OZ_API ozLOD : public ozSwitch {
  OZ_CLASS(ozLOD);

public:
  ozLOD();

  /// The point, in the node's own space, from which the distance is taken. Unless it is set here, the first visit
  /// replaces it by the middle of the bound. As it stands, not brought up to date.
  void getCenter(ozVec3f &center) const { center = _center; }
  void setCenter(ozVec3f const &center);

  /// The distances between which the children are drawn, in rising order: n + 1 for n ranges; (0, 1000000) at first.
  ozMFFloat *ranges() { return _rangesField; }
  int getNumRanges();
  /// An end of a range. Without such a range: a message, and -1.
  float getRangeNear(int i) const;
  float getRangeFar(int i) const;
  /// Indices up to 9 alone; others are passed over.
  void setRange(int i, float near, float far);
  void setRangeNear(int i, float near);
  void setRangeFar(int i, float far);

  /// By how many children coarser this node is drawn. Below 1 (0 by default) the shift of all nodes applies. Read and
  /// stored as it stands: no connected field hears of it.
  int getOffsetOverride() const { return _offsetOverride; }
  void setOffsetOverride(int offset) { _offsetOverride = offset; }
  /// The shift of all nodes without one of their own; 0 by default.
  static int getOffset() { return _offset; }
  static void setOffset(int offset) { _offset = offset; }

  /// The child for the action's present place, which must be in the eye's space; NO_CHILD when nearer than the ranges.
  int whichChild(ozTransformAction *action);

  ozTravDirective vfCullVisit(ozVFCullAction *action) override;
  ozTravDirective drawVisit(ozDrawAction *action) override;

private:
  bool chooseChild(ozTransformAction *action);

  static int _offset;

  ozVec3f _center;
  ozFloatArray _ranges;
  int _offsetOverride;
  ozMFFloat *_rangesField;
  unsigned char _computeCenter;
};

#endif
