#include "oz/ozLight.h"

OZ_DEFINE_CLASS(ozSpotLight, "SpotLight", ozPointLight) {
  ozSFVec3f::addTypeField(type, "direction", 9, ozVec3f(0, 0, -1), &ozSpotLight::_direction);
  ozSFFloat::addTypeField(type, "exponent", 10, 0.0f, &ozSpotLight::_exponent);
  ozSFFloat::addTypeField(type, "cutOffAngle", 11, 180.0f, &ozSpotLight::_cutOffAngle);
}

void ozSpotLight::fieldChanged(short id) {
  if (!takeOwnChange(_ClassType, id)) ozPointLight::fieldChanged(id);
}

void ozSpotLight::define(int light) { sendPoint(light, intensity(), &_direction, _cutOffAngle, _exponent); }
