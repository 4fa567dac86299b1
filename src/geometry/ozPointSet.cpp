#include "oz/ozPointSet.h"

#include "geometry/ozDrawKind.h"

ozGeoSet::Kind const ozPointSet::PrimKind = {GL_POINTS, 1, 0, Kind::POINTS, 1};

OZ_DEFINE_CLASS(ozPointSet, "PointSet", ozGeoSet) {
  ozSFFloat::addTypeField(type, "size", 15, 1.0f, &ozPointSet::_size);
}
OZ_DEFINE_UNCULLED_DRAW(ozPointSet)
OZ_DEFINE_FIXED_LENGTH(ozPointSet)

void ozPointSet::fieldChanged(short id) {
  if (id != 15) {
    ozGeoSet::fieldChanged(id);
    return;
  }
  _setMask.onBit(ozContext::POINT_SIZE_ITEM);
  touchField(id);
}

void ozPointSet::beginDraw(ozGLAttrSet &attrs, ozContext *context) {
  ozGeoSet::beginDraw(attrs, context);
  setContextWhichSetStateAsCurrentState(context);
  context->setPointSize(_setMask.getBit(ozContext::POINT_SIZE_ITEM) ? _size : getContextDefaultPointSize(context));
  setContextWhichSetStateAsDefaultState(context);
}
