#ifndef OZ_SEG_H
#define OZ_SEG_H

#include "oz/ozVec2f.h"

/// A line segment: an origin, a direction (a unit vector by convention; setters normalise nothing) and a length.
class OZ_API ozSeg {
public:
  /// Clears origin and direction and leaves the length unset.
  ozSeg() {}

  /// From a to b.
  void makePts(ozVec3f const &a, ozVec3f const &b);
  /// By heading and pitch in radians: heading 0 looks along +Y, and pitch rises towards +Z.
  void makePolar(ozVec3f const &origin, float heading, float pitch, float length);
  /// The part of s between the distances t0 and t1 from its origin. s may be this.
  void clip(ozSeg const *s, float t0, float t1);

  ozVec3f const &getOrigin() const { return _origin; }
  void getOrigin(ozVec3f &origin) const { origin = _origin; }
  void getOrigin(float *x, float *y, float *z) const { _origin.get(x, y, z); }
  void setOrigin(ozVec3f const &origin) { _origin = origin; }
  void setOrigin(float x, float y, float z) { _origin.set(x, y, z); }

  ozVec3f const &getDirection() const { return _direction; }
  void getDirection(ozVec3f &direction) const { direction = _direction; }
  void getDirection(float *x, float *y, float *z) const { _direction.get(x, y, z); }
  void setDirection(ozVec3f const &direction) { _direction = direction; }
  void setDirection(float x, float y, float z) { _direction.set(x, y, z); }

  float getLength() const { return _length; }
  void setLength(float length) { _length = length; }

private:
  ozVec3f _origin;
  ozVec3f _direction;
  float _length;
};

#endif
