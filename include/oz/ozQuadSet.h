#ifndef OZ_QUAD_SET_H
#define OZ_QUAD_SET_H

#include "oz/ozGeoSet.h"

/// Separate quadrilaterals, which must be flat and convex.
class OZ_API ozQuadSet : public ozGeoSet {
  OZ_CLASS(ozQuadSet);
  OZ_COPYABLE(ozQuadSet)

public:
  ozQuadSet();

  void draw(ozDrawAction *action) override;
  int isect(ozIsectAction *action) override;
  void calcBound(ozBoxBound &bound) override;
  int getPrimLen(int prim) override;
  void setBPCullPrimNormModeEnable(unsigned char on) override;
  void getPrimFaceNormBB(int prim, int first, int len, ozVec3f &min, ozVec3f &max) override;

protected:
  static Kind const PrimKind;

  void drawWithBpc(ozDrawAction *action);
  void drawWithoutBpc(ozDrawAction *action);
  /// Which diagonal the culling data split a quadrilateral along: 1 from p1 to p3, 0 from p0 to p2.
  int quadToTris(ozVec3f p0, ozVec3f p1, ozVec3f p2, ozVec3f p3);
};

#endif
