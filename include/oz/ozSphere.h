#ifndef OZ_SPHERE_H
#define OZ_SPHERE_H

#include "oz/ozGeometry.h"

class ozTriStripSet;

/// A sphere. It is drawn as the one unit mesh that all spheres share, moved and scaled by the matrix, and hit as the
/// sphere that it is.
class OZ_API ozSphere : public ozGeometry {
  OZ_CLASS(ozSphere);
  OZ_COPYABLE(ozSphere)

public:
  ozSphere();

  void draw(ozDrawAction *action) override;
  /// A segment that starts inside hits at its start.
  int isect(ozIsectAction *action) override;

  OZ_VEC3F_ACCESS(Center, 2, _center)
  /// 1 by default.
  OZ_VALUE_ACCESS(float, Radius, 3, _radius)

  /// A new mesh of the unit sphere: an octahedron whose faces are cut into about so many triangles in all, 8 at the
  /// least.
  static ozTriStripSet *makeSphere(int triangles);

protected:
  void fieldChanged(short id) override;
  void cleanSideEffect(short id) override;

private:
  void calcBound();

  static ozTriStripSet *_Surface;

  ozVec3f _center;
  float _radius;
};

#endif
