#ifndef OZ_BOX_H
#define OZ_BOX_H

#include "oz/ozGeometry.h"

/// A box along the axes, given by its size and its centre, with one texture image on each face.
class OZ_API ozBox : public ozGeometry {
  OZ_CLASS(ozBox);
  OZ_COPYABLE(ozBox)

public:
  ozBox();

  void draw(ozDrawAction *action) override;
  /// A segment that starts inside misses. A hit has no normal.
  int isect(ozIsectAction *action) override;

  /// The lengths of the edges, 2 by default.
  OZ_VEC3F_ACCESS(Size, 2, _size)
  OZ_VEC3F_ACCESS(Center, 3, _center)

protected:
  void fieldChanged(short id) override;
  void cleanSideEffect(short id) override;

private:
  void calcBound();

  ozVec3f _size;
  ozVec3f _center;
};

#endif
