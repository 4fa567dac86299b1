#ifndef OZ_CYLINDER_H
#define OZ_CYLINDER_H

#include "oz/ozGeometry.h"

class ozTriStripSet;

/// A cylinder around the y axis. It is drawn and hit as the unit meshes that all cylinders share, moved and scaled by
/// the matrix.
class OZ_API ozCylinder : public ozGeometry {
  OZ_CLASS(ozCylinder);
  OZ_COPYABLE(ozCylinder)

public:
  ozCylinder();

  void draw(ozDrawAction *action) override;
  int isect(ozIsectAction *action) override;

  /// 1 by default.
  OZ_VALUE_ACCESS(float, Radius, 2, _radius)
  /// 2 by default.
  OZ_VALUE_ACCESS(float, Height, 3, _height)
  /// Which parts are there; all by default. The bound takes no notice of the top.
  OZ_VALUE_ACCESS(unsigned char, Side, 4, _side)
  OZ_VALUE_ACCESS(unsigned char, Top, 5, _top)
  OZ_VALUE_ACCESS(unsigned char, Bottom, 6, _bottom)
  /// The middle of the axis. The bound stays where it is with the centre at the origin.
  OZ_VEC3F_ACCESS(Center, 7, _center)

  /// A new mesh of a disk across the y axis, of so many corners, that faces up (dir > 0) or down.
  static ozTriStripSet *makeCircle(int sides, float radius, int dir, float y);
  /// A new mesh of the side of a cylinder or a truncated cone around the y axis, seen from outside.
  static ozTriStripSet *makePipe(int sides, float bottomRadius, float topRadius, float bottomY, float topY);

protected:
  void fieldChanged(short id) override;
  void cleanSideEffect(short id) override;

private:
  void calcBound();

  static ozTriStripSet *_BottomMesh;
  static ozTriStripSet *_TopMesh;
  static ozTriStripSet *_SideMesh;

  float _radius;
  float _height;
  unsigned char _side;
  unsigned char _top;
  unsigned char _bottom;
  ozVec3f _center;
};

#endif
