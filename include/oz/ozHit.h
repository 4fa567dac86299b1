#ifndef OZ_HIT_H
#define OZ_HIT_H

#include "oz/ozClass.h"
#include "oz/ozFieldInfoArray.h"
#include "oz/ozMatrix4f.h"
#include "oz/ozSeg.h"

class ozGeometry;
class ozShape;

/// The record of the nearest hit of a segment on geometry. It holds no references.
class OZ_API ozHit : public ozObject {
  OZ_OBJECT_CLASS(ozHit);

public:
  /// No hit.
  ozHit();
  ozHit(ozHit const &other);
  ozHit &operator=(ozHit const &other);
  ~ozHit() override;

  /// Whether something was hit.
  unsigned char isValid() const { return geometry != nullptr; }
  /// No hit: no geometry, no shape, an empty path. The rest stays as it was.
  void reset();

  ozRefArray path;      ///< from the root to the geometry, both included
  ozSeg ray;            ///< the segment that was cast
  ozVec3f worldPoint;   ///< the hit in the root's space
  ozVec3f localPoint;   ///< the hit in the geometry's space
  ozVec3f worldNormal;  ///< the surface normal in the root's space
  ozVec3f localNormal;  ///< the surface normal in the geometry's space
  ozMatrix4f matrix;    ///< from the geometry's space to the root's
  int primIndex;        ///< which primitive of the geometry
  ozGeometry *geometry; ///< null if nothing was hit
  ozShape *shape;       ///< the shape that holds the geometry
  float distance;       ///< along the segment, in the geometry's space

protected:
  explicit ozHit(ozType *type);
};

#endif
