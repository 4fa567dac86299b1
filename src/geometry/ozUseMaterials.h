#ifndef GEOMETRY_OZ_USE_MATERIALS_H
#define GEOMETRY_OZ_USE_MATERIALS_H

#include "oz/ozGeometry.h"

/// Says to OpenGL that the materials give the colours.
inline void ozUseMaterials(ozContext *context) {
  ozGeometry::setContextWhichSetStateAsCurrentState(context);
  context->setMaterialModeEnable(0);
  ozGeometry::setContextWhichSetStateAsDefaultState(context);
}

#endif
