#ifndef GEOMETRY_OZ_HIT_NORMAL_H
#define GEOMETRY_OZ_HIT_NORMAL_H

#include "oz/ozHit.h"

// Enters a normal in the record of a hit whose matrix is known.
inline void ozSetHitNormal(ozHit &hit, ozVec3f const &normal) {
  hit.localNormal = normal;
  ozMatrix4f inverse, transposed;
  inverse.invertAffine(hit.matrix);
  transposed.transpose(inverse);
  hit.worldNormal.xformVec(normal, transposed);
}

#endif
