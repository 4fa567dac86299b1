#ifndef OZ_BOUND_H
#define OZ_BOUND_H

#include "oz/ozMatrix4f.h"

class ozBoxBound;
class ozSeg;
class ozSphereBound;

/// A bounding volume. The operations that a kind of bound does not have write a warning to the standard error stream
/// and do nothing; contains() then gives 0.
///
/// No virtual destructor: bounds are values.
class OZ_API ozBound {
public:
  /// Bits of the results of contains() with a bound, and of isect(). So 0 is no overlap, 3 partly in, 7 wholly in, 31 a
  /// segment wholly inside, 11 one that starts inside and leaves, 19 one that enters and ends inside, 3 one that passes
  /// through.
  enum BoundEnum : int {
    BOUND_MAYBE = 1,    ///< may overlap
    BOUND_TRUE = 2,     ///< does overlap
    BOUND_ALL_IN = 4,   ///< wholly inside
    BOUND_START_IN = 8, ///< the start of the segment is inside
    BOUND_END_IN = 16   ///< the end of the segment is inside
  };

  virtual void makeEmpty() = 0;
  virtual int isEmpty() const = 0;
  virtual void around(ozBoxBound const *box);
  virtual void around(ozSphereBound const *sphere);
  /// Makes this the bound of n others or of n points; empty for a count below 1.
  virtual void around(ozBoxBound const **boxes, int n);
  virtual void around(ozSphereBound const **spheres, int n);
  virtual void around(ozVec3f const *points, int n);
  /// Grows as needed. An empty argument changes nothing.
  virtual void extendBy(ozSphereBound const *sphere);
  virtual void extendBy(ozBoxBound const *box);
  virtual void extendBy(ozVec3f const &point) = 0;
  virtual int contains(ozSphereBound const *sphere) const;
  virtual int contains(ozBoxBound const *box) const;
  /// 1 or 0.
  virtual int contains(ozVec3f const &point) const = 0;
  /// Bits of BoundEnum. On an overlap, and if t0 is not null, t0 and t1 take where the segment enters and leaves, as
  /// distances from its origin.
  virtual int isect(ozSeg const *seg, float *t0, float *t1) const = 0;
};

/// A box along the axes; empty if a minimum exceeds its maximum.
class OZ_API ozBoxBound : public ozBound {
public:
  /// Empty.
  ozBoxBound() { ozBoxBound::makeEmpty(); }

  using ozBound::around;
  using ozBound::contains;
  using ozBound::extendBy;

  void makeEmpty() override {
    min = OZ_INFINITY;
    max = -OZ_INFINITY;
  }
  int isEmpty() const override { return min._v[0] > max._v[0] || min._v[1] > max._v[1] || min._v[2] > max._v[2]; }
  void around(ozBoxBound const **boxes, int n) override;
  /// Empty spheres are passed over.
  void around(ozSphereBound const **spheres, int n) override;
  void around(ozVec3f const *points, int n) override;
  void extendBy(ozBoxBound const *box) override;
  void extendBy(ozVec3f const &point) override;
  /// 0 if the boxes are apart, 3 if they touch or overlap, but 4 if no minimum and no maximum of this box exceeds the
  /// other's. Meant as it stands.
  int contains(ozBoxBound const *box) const override;
  int contains(ozVec3f const &point) const override;
  int isect(ozSeg const *seg, float *t0, float *t1) const override;

  /// As extendBy, a little faster, for a box that is not empty.
  void nonEmptyExtendBy(ozVec3f const &point) {
    for (int i = 0; i < 3; i++) {
      if (point._v[i] < min._v[i])
        min._v[i] = point._v[i];
      else if (point._v[i] > max._v[i])
        max._v[i] = point._v[i];
    }
  }
  /// this = the box of the transformed box src; an empty one is not detected.
  void xform(ozBoxBound const *src, ozMatrix4f const &m);
  /// The number of axes along which the box extends by OZ_EPSILON or more.
  int dimension() const;
  /// n = the outward normal of the face on which p lies, within 0.0001 of the extent; zero if on none.
  void calcNorm(ozVec3f const &p, ozVec3f &n) const;
  bool operator==(ozBoxBound const &box) const { return min == box.min && max == box.max; }
  bool operator!=(ozBoxBound const &box) const { return !(*this == box); }
  /// Writes "%f %f %f %f %f %f": minimum, maximum.
  void write(ozOutput *output) const;

  ozVec3f min;
  ozVec3f max;
};

/// A sphere; empty if its radius is negative.
class OZ_API ozSphereBound : public ozBound {
public:
  /// Empty.
  ozSphereBound() : radius(-1) {}
  ozSphereBound(float x, float y, float z, float r) : center(x, y, z), radius(r) {}

  using ozBound::around;
  using ozBound::contains;
  using ozBound::extendBy;

  void makeEmpty() override {
    center = 0;
    radius = -1;
  }
  int isEmpty() const override { return radius < 0; }
  void around(ozBoxBound const **boxes, int n) override;
  /// The array may hold nulls.
  void around(ozSphereBound const **spheres, int n) override;
  void around(ozVec3f const *points, int n) override;
  void extendBy(ozSphereBound const *sphere) override;
  void extendBy(ozVec3f const &point) override;
  /// 0 apart, 3 partly in, 7 wholly in.
  int contains(ozSphereBound const *sphere) const override;
  int contains(ozVec3f const &point) const override { return radius * radius >= center.sqrDistance(point); }
  int isect(ozSeg const *seg, float *t0, float *t1) const override;

  /// this = src transformed, by the largest scale of m but never below 1: a sphere does not shrink. Meant.
  void xform(ozSphereBound const *src, ozMatrix4f const &m);
  /// this = src transformed by a matrix of uniform scale; the radius may shrink.
  void orthoXform(ozSphereBound const *src, ozMatrix4f const &m);
  bool operator==(ozSphereBound const &sphere) const { return center == sphere.center && radius == sphere.radius; }
  bool operator!=(ozSphereBound const &sphere) const { return !(*this == sphere); }
  /// Writes "%f %f %f %f": the centre, then the radius.
  void write(ozOutput *output) const;

  ozVec3f center;
  float radius;
};

#endif
