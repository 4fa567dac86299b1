#ifndef OZ_LINE_SET_H
#define OZ_LINE_SET_H

#include "oz/ozGeoSet.h"

/// Separate lines, two vertices each. A ray hits the bound of the set.
class OZ_API ozLineSet : public ozGeoSet {
  OZ_CLASS(ozLineSet);
  OZ_COPYABLE(ozLineSet)

public:
  ozLineSet();

  void draw(ozDrawAction *action) override;
  void calcBound(ozBoxBound &bound) override;
  int getPrimLen(int prim) override;
  /// Also applies the width: the context's default until one is set here.
  void beginDraw(ozGLAttrSet &attrs, ozContext *context) override;

  /// In pixels, 1 by default.
  OZ_VALUE_ACCESS(float, Width, 15, _width)

protected:
  static Kind const PrimKind;

  void fieldChanged(short id) override;
  void drawWithBpc(ozDrawAction *action);
  void drawWithoutBpc(ozDrawAction *action);

  float _width;
};

#endif
