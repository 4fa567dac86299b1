#include "oz/ozMicrophone.h"

OZ_DEFINE_CLASS(ozMicrophone, "Microphone", ozContainer) {
  ozSFVec3f::addTypeField(type, "position", 0, ozVec3f(0, 0, 0), &ozMicrophone::_position);
  ozSFVec3f::addTypeField(type, "direction", 1, ozVec3f(0, 0, -1), &ozMicrophone::_direction);
}
