#ifndef VL_GEOM_H
#define VL_GEOM_H

#include "oz/ozPlatform.h"

class ozIndexedFaceSet;

/// What the reader does to every face set that it has read.
class OZ_API vlGeom {
public:
  /// Makes the normals that a file did not give: corners at one position share a normal, the mean of their faces',
  /// where these lie within the crease angle (in radians) of the first of them. A face's normal is that of its first
  /// three corners. Fills "normalSet" and "normalIndex", one index a corner, and binds normals per vertex.
  static void computeNorms(ozIndexedFaceSet *set, float creaseAngle);

  /// Fixes the bound of a set whose coordinates are fed by other fields: a box around all key values of the sources,
  /// those of ozCoordinateInterpolator excepted. Without sources the bound stays as it is.
  static void calcStaticBound(ozIndexedFaceSet *set);
};

#endif
