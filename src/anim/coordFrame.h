#ifndef COORD_FRAME_H
#define COORD_FRAME_H

#include "oz/ozPickSensor.h"

/// Gives a field "coordFrame" its names.
inline void defineCoordFrames(ozType *type, short id) {
  static char const *const names[] = {"LOCAL", "WORLD"};
  static int const values[] = {ozPickSensor::LOCAL, ozPickSensor::WORLD};
  type->defineEnums(id, 2, names, values);
}

#endif
