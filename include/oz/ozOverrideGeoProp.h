#ifndef OZ_OVERRIDE_GEO_PROP_H
#define OZ_OVERRIDE_GEO_PROP_H

#include "oz/ozContext.h"

/// Forces a cull face, a line width or a point size on all geometry that is drawn while it is on a context's stack: see
/// ozContext::pushOverrideGeoProp. Nothing is set at first.
class OZ_API ozOverrideGeoProp : public ozObject {
  OZ_OBJECT_CLASS(ozOverrideGeoProp);

public:
  ozOverrideGeoProp();

  void setCullFace(ozContext::CullFaceEnum cullFace);
  ozContext::CullFaceEnum getCullFace() const { return _gfx.cullFace; }
  /// In pixels.
  void setLineWidth(float width);
  float getLineWidth() const { return _gfx.lineWidth; }
  /// In pixels.
  void setPointSize(float size);
  float getPointSize() const { return _gfx.pointSize; }

  /// Which of them are set: bit 29 the cull face, 30 the line width, 31 the point size.
  void getOverride(ozBitMask &mask) const { mask = _gfx.mask; }
  void setOverride(ozBitMask const &mask) { _gfx.mask = mask; }
  _ozGfx *getGfx() { return &_gfx; }

protected:
  explicit ozOverrideGeoProp(ozType *type);
  void init();

private:
  _ozGfx _gfx;
};

#endif
