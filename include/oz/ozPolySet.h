#ifndef OZ_POLY_SET_H
#define OZ_POLY_SET_H

#include "oz/ozGeoSet.h"

/// Polygons, each with as many vertices as its length says. They are drawn as they stand and must be flat and convex.
class OZ_API ozPolySet : public ozGeoSet {
  OZ_CLASS(ozPolySet);
  OZ_COPYABLE(ozPolySet)

public:
  ozPolySet();

  void draw(ozDrawAction *action) override;
  int isect(ozIsectAction *action) override;
  void calcBound(ozBoxBound &bound) override;
  int getPrimLen(int prim) override;
  void setBPCullPrimNormModeEnable(unsigned char on) override;
  void getPrimFaceNormBB(int prim, int first, int len, ozVec3f &min, ozVec3f &max) override;

  /// The number of vertices of each polygon. primCount says how many polygons are drawn.
  ozMFInt *polyLength() const { return _polyLength; }

protected:
  static Kind const PrimKind;

  void fieldChanged(short id) override;
  void init();
  void drawWithBpc(ozDrawAction *action);
  void drawWithoutBpc(ozDrawAction *action);

  ozMFInt *_polyLength;
  ozIntArray _polyLengths;
};

#endif
