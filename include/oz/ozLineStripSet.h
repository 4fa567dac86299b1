#ifndef OZ_LINE_STRIP_SET_H
#define OZ_LINE_STRIP_SET_H

#include "oz/ozGeoSet.h"

/// Connected lines: each strip has as many vertices as its length says.
class OZ_API ozLineStripSet : public ozGeoSet {
  OZ_CLASS(ozLineStripSet);
  OZ_COPYABLE(ozLineStripSet)

public:
  ozLineStripSet();

  void draw(ozDrawAction *action) override;
  /// Tests the lines between all consecutive entries of the coordinate index, across the ends of strips too, and takes
  /// a line for hit that the segment passes within a tolerance. Without an index or coordinates nothing is hit;
  /// otherwise returns 1 whether or not there was a hit.
  int isect(ozIsectAction *action) override;
  void calcBound(ozBoxBound &bound) override;
  int getPrimLen(int prim) override;
  /// Also applies the width: the context's default until one is set here.
  void beginDraw(ozGLAttrSet &attrs, ozContext *context) override;

  /// The number of vertices of each strip. primCount says how many strips are drawn.
  ozMFInt *stripLength() const { return _stripLength; }
  /// In pixels, 1 by default.
  OZ_VALUE_ACCESS(float, Width, 16, _width)

protected:
  static Kind const PrimKind;

  void fieldChanged(short id) override;
  void init();
  void drawWithBpc(ozDrawAction *action);
  void drawWithoutBpc(ozDrawAction *action);

  /// seg = from p to q, with the direction q - p as it is and the length 1.
  void createSegFromPoints(ozVec3f const &p, ozVec3f const &q, ozSeg &seg) const;
  /// Where the two lines are closest: s along seg, t along the ray, both -1 for parallels.
  void isectSegs(ozSeg const &seg, ozSeg const &ray, float &s, float &t) const;
  /// Enters the hit, if the two points are on their segments and close enough; returns 1 then.
  int fillHitData(ozSeg const &seg, float s, ozSeg &ray, float t, int primIndex, ozIsectAction *action);

  ozMFInt *_stripLength;
  ozIntArray _stripLengths;
  float _width;
};

#endif
