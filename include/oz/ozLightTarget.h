#ifndef OZ_LIGHT_TARGET_H
#define OZ_LIGHT_TARGET_H

#include "oz/ozMatrix4f.h"

class ozLight;

/// What sits in one of the eight OpenGL lights, on one level of a context's light stack.
struct glLightTarget {
  int assigned = 0;         ///< 1 once a light has been put here. Nothing reads it.
  int on = 0;               ///< 1 while the OpenGL light is enabled on behalf of `light`
  ozLight *light = nullptr; ///< one counted reference per level that holds it
  ozMatrix4f matrix;        ///< the modelview matrix with which the light was last defined
};

#endif
