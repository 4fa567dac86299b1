#ifndef OZ_PLANE_H
#define OZ_PLANE_H

#include "oz/ozBound.h"

/// A plane, and the half space behind it: a point p is inside when normal . p <= offset, so the normal points out. The
/// results of contains() with a bound and of isect() with two distances are bits of ozBound::BoundEnum.
class OZ_API ozPlane {
public:
  /// Clears the normal and leaves the offset unset.
  ozPlane() {}

  /// 1 or 0.
  virtual int contains(ozVec3f const &point) const;
  /// 0 outside, 3 across the plane, 7 inside.
  virtual int contains(ozSphereBound const *sphere) const;
  /// 0 outside, 3 across the plane, 7 if at least six corners are inside. Six, not eight: meant.
  virtual int contains(ozBoxBound const *box) const;
  /// Which ends of the segment are inside; if t0 is not null, the part inside is from t0 to t1.
  virtual int isect(ozSeg const *seg, float *t0, float *t1) const;
  /// 1 if the segment meets the plane, at the distance t; 0 if not, and t is 0 if they are parallel.
  virtual int isect(ozSeg const *seg, float *t) const;

  /// From a normal, which is normalised, and a point on the plane.
  void makeNormPt(ozVec3f const &normal, ozVec3f const &point);
  /// Through three points, counter-clockwise as seen from outside.
  void makePts(ozVec3f const &a, ozVec3f const &b, ozVec3f const &c);
  /// out = the point on the plane that is closest to p.
  void closestPtOn(ozVec3f const &p, ozVec3f &out) const;
  /// this = the plane transformed by a matrix of rotation, translation and uniform scale. It may be this.
  void orthoXform(ozPlane const *plane, ozMatrix4f const &m);

  ozVec3f normal;
  float offset;
};

#endif
