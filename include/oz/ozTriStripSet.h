#ifndef OZ_TRI_STRIP_SET_H
#define OZ_TRI_STRIP_SET_H

#include "oz/ozGeoSet.h"

/// Triangle strips: each strip has as many vertices as its length says. May be compiled into a display list, which
/// follows the changes of the set.
class OZ_API ozTriStripSet : public ozGeoSet {
  OZ_CLASS(ozTriStripSet);
  OZ_COPYABLE(ozTriStripSet)

public:
  ozTriStripSet();

  void draw(ozDrawAction *action) override;
  int isect(ozIsectAction *action) override;
  void calcBound(ozBoxBound &bound) override;
  int getPrimLen(int prim) override;
  void setBPCullPrimNormModeEnable(unsigned char on) override;
  void getPrimFaceNormBB(int prim, int first, int len, ozVec3f &min, ozVec3f &max) override;
  void compile(ozCompileAction *action) override;

  /// The number of vertices of each strip. primCount says how many strips are drawn.
  ozMFInt *stripLength() const { return _stripLength; }

protected:
  static Kind const PrimKind;

  friend struct ozListDraw;

  void fieldChanged(short id) override;
  void init();
  void drawGeometry(ozGLAttrSet &attrs, ozDrawAction *action);
  void drawGeometryWithBpc(ozGLAttrSet &attrs, ozDrawAction *action);
  void drawGeometryWithoutBpc(ozGLAttrSet &attrs);

  ozMFInt *_stripLength;
  ozIntArray _stripLengths;
};

#endif
