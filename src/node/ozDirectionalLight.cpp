#include "oz/ozLight.h"

OZ_DEFINE_CLASS(ozDirectionalLight, "DirectionalLight", ozLight) {
  ozSFVec3f::addTypeField(type, "direction", 6, ozVec3f(0, 0, -1), &ozDirectionalLight::_direction);
}

void ozDirectionalLight::fieldChanged(short id) {
  if (!takeOwnChange(_ClassType, id)) ozLight::fieldChanged(id);
}

void ozDirectionalLight::define(int light) {
  ozVec3f from = _direction;
  from.normalize(); // zero stays zero
  ozVec4f const position(0.0f - from[0], 0.0f - from[1], 0.0f - from[2], 0.0f);
  send(light, position, intensity(), ozVec3f(1, 0, 0));
}
