#ifndef OZ_TRI_FAN_SET_H
#define OZ_TRI_FAN_SET_H

#include "oz/ozGeoSet.h"

/// Triangle fans: each fan has as many vertices as its length says. May be compiled into a display list, which follows
/// the changes of the set.
class OZ_API ozTriFanSet : public ozGeoSet {
  OZ_CLASS(ozTriFanSet);
  OZ_COPYABLE(ozTriFanSet)

public:
  ozTriFanSet();

  void draw(ozDrawAction *action) override;
  int isect(ozIsectAction *action) override;
  void calcBound(ozBoxBound &bound) override;
  int getPrimLen(int prim) override;
  void setBPCullPrimNormModeEnable(unsigned char on) override;
  void getPrimFaceNormBB(int prim, int first, int len, ozVec3f &min, ozVec3f &max) override;
  void compile(ozCompileAction *action) override;

  /// The number of vertices of each fan. primCount says how many fans are drawn.
  ozMFInt *fanLength() const { return _fanLength; }

protected:
  static Kind const PrimKind;

  friend struct ozListDraw;

  void fieldChanged(short id) override;
  void init();
  void drawGeometry(ozGLAttrSet &attrs, ozDrawAction *action);
  void drawGeometryWithBpc(ozGLAttrSet &attrs, ozDrawAction *action);
  void drawGeometryWithoutBpc(ozGLAttrSet &attrs);

  ozMFInt *_fanLength;
  ozIntArray _fanLengths;
};

#endif
