#ifndef OZ_POINT_SET_H
#define OZ_POINT_SET_H

#include "oz/ozGeoSet.h"

/// Points, one vertex each. A ray hits the bound of the set.
class OZ_API ozPointSet : public ozGeoSet {
  OZ_CLASS(ozPointSet);
  OZ_COPYABLE(ozPointSet)

public:
  ozPointSet();

  void draw(ozDrawAction *action) override;
  void calcBound(ozBoxBound &bound) override;
  int getPrimLen(int prim) override;
  /// Also applies the size: the context's default until one is set here.
  void beginDraw(ozGLAttrSet &attrs, ozContext *context) override;

  /// In pixels, 1 by default.
  OZ_VALUE_ACCESS(float, Size, 15, _size)

protected:
  static Kind const PrimKind;

  void fieldChanged(short id) override;
  void drawWithBpc(ozDrawAction *action);
  void drawWithoutBpc(ozDrawAction *action);

  float _size;
};

#endif
