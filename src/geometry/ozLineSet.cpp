#include "oz/ozLineSet.h"

#include "geometry/ozDrawKind.h"

ozGeoSet::Kind const ozLineSet::PrimKind = {GL_LINES, 2, 0, Kind::ALL, 0};

OZ_DEFINE_CLASS(ozLineSet, "LineSet", ozGeoSet) {
  ozSFFloat::addTypeField(type, "width", 15, 1.0f, &ozLineSet::_width);
}
OZ_DEFINE_UNCULLED_DRAW(ozLineSet)
OZ_DEFINE_FIXED_LENGTH(ozLineSet)

void ozLineSet::fieldChanged(short id) {
  if (id != 15) {
    ozGeoSet::fieldChanged(id);
    return;
  }
  _setMask.onBit(ozContext::LINE_WIDTH_ITEM);
  touchField(id);
}

void ozLineSet::beginDraw(ozGLAttrSet &attrs, ozContext *context) {
  ozGeoSet::beginDraw(attrs, context);
  setContextWhichSetStateAsCurrentState(context);
  context->setLineWidth(_setMask.getBit(ozContext::LINE_WIDTH_ITEM) ? _width : getContextDefaultLineWidth(context));
  setContextWhichSetStateAsDefaultState(context);
}
