#ifndef OZ_CONE_H
#define OZ_CONE_H

#include "oz/ozGeometry.h"

class ozTriStripSet;

/// A cone around the y axis, its apex up. It is drawn and hit as the unit meshes that all cones share, moved and scaled
/// by the matrix.
class OZ_API ozCone : public ozGeometry {
  OZ_CLASS(ozCone);
  OZ_COPYABLE(ozCone)

public:
  ozCone();

  void draw(ozDrawAction *action) override;
  int isect(ozIsectAction *action) override;

  /// 1 by default.
  OZ_VALUE_ACCESS(float, BottomRadius, 2, _bottomRadius)
  /// From the bottom to the apex, 2 by default.
  OZ_VALUE_ACCESS(float, Height, 3, _height)
  /// Which parts are there; both by default.
  OZ_VALUE_ACCESS(unsigned char, Side, 4, _side)
  OZ_VALUE_ACCESS(unsigned char, Bottom, 5, _bottom)
  /// The middle of the axis. The bound stays where it is with the centre at the origin.
  OZ_VEC3F_ACCESS(Center, 6, _center)

protected:
  void fieldChanged(short id) override;
  void cleanSideEffect(short id) override;

private:
  void calcBound();

  static ozTriStripSet *_BottomMesh;
  static ozTriStripSet *_SideMesh;

  float _bottomRadius;
  float _height;
  unsigned char _side;
  unsigned char _bottom;
  ozVec3f _center;
};

#endif
