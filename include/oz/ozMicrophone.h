#ifndef OZ_MICROPHONE_H
#define OZ_MICROPHONE_H

#include "oz/ozClass.h"
#include "oz/ozFieldAccess.h"

/// Where sounds are heard.
class OZ_API ozMicrophone : public ozContainer {
  OZ_CLASS(ozMicrophone);

public:
  ozMicrophone();

  /// In the space of the graph's root; the origin by default.
  OZ_VEC3F_ACCESS(Position, 0, _position)
  /// Only kept; (0, 0, -1) by default.
  OZ_VEC3F_ACCESS(Direction, 1, _direction)

private:
  ozVec3f _position;
  ozVec3f _direction;
};

#endif
