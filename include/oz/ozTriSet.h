#ifndef OZ_TRI_SET_H
#define OZ_TRI_SET_H

#include "oz/ozGeoSet.h"

/// Separate triangles.
class OZ_API ozTriSet : public ozGeoSet {
  OZ_CLASS(ozTriSet);
  OZ_COPYABLE(ozTriSet)

public:
  ozTriSet();

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
};

#endif
