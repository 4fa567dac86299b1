#ifndef OZ_POLYGON_OFFSET_H
#define OZ_POLYGON_OFFSET_H

#include "oz/ozGroup.h"

/// A group whose children are drawn with their depth shifted, for decals and outlines. What it needs is found out when
/// the first object is made, so a rendering context should be current then; where OpenGL has it not, nothing below is
/// drawn.
class OZ_API ozPolygonOffset : public ozGroup {
  OZ_CLASS(ozPolygonOffset);

public:
  enum OffsetTypes : int {
    FILL_OFFSET = 0, ///< filled polygons
    LINE_OFFSET = 1, ///< polygons drawn as lines
    POINT_OFFSET = 2 ///< polygons drawn as points
  };

  ozPolygonOffset();

  /// FILL_OFFSET by default. With another value than these nothing below is drawn.
  OffsetTypes getOffsetType();
  void setOffsetType(OffsetTypes type);
  /// The shift by the polygon's slope in depth; 0 by default.
  float getFactor();
  void setFactor(float factor);
  /// The constant shift, in the smallest steps of the depth buffer; 0 by default.
  float getUnits();
  void setUnits(float units);

  /// The support level: 0 for none, 1 by an extension, 2 by OpenGL; -1 before the first detection.
  static int isSupported() { return _supported; }
  /// Finds out the support level from the current rendering context.
  static void extensionDetect();

  /// TRAV_PRUNE at once at support level 0.
  ozTravDirective drawVisit(ozDrawAction *action) override;

private:
  static int _supported;

  OffsetTypes _offsetType;
  float _factor;
  float _units;
};

#endif
