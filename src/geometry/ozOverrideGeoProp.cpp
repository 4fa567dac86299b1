#include "oz/ozOverrideGeoProp.h"

OZ_DEFINE_TYPE(ozOverrideGeoProp, "OverrideGeoProp", ozObject) {}

ozOverrideGeoProp::ozOverrideGeoProp() : ozOverrideGeoProp(getClassType()) {}
ozOverrideGeoProp::ozOverrideGeoProp(ozType *type) : ozObject(type) { init(); }

void ozOverrideGeoProp::init() {
  _gfx.mask.off();
  _gfx.cullFace = ozContext::NO_CULL;
}

void ozOverrideGeoProp::setCullFace(ozContext::CullFaceEnum cullFace) {
  _gfx.mask.onBit(ozContext::CULL_FACE_ITEM);
  _gfx.cullFace = cullFace;
}

void ozOverrideGeoProp::setLineWidth(float width) {
  _gfx.mask.onBit(ozContext::LINE_WIDTH_ITEM);
  _gfx.lineWidth = width;
}

void ozOverrideGeoProp::setPointSize(float size) {
  _gfx.mask.onBit(ozContext::POINT_SIZE_ITEM);
  _gfx.pointSize = size;
}
