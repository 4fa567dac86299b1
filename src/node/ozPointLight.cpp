#include "oz/ozLight.h"

OZ_DEFINE_CLASS(ozPointLight, "PointLight", ozLight) {
  ozSFVec3f::addTypeField(type, "location", 6, ozVec3f(0, 0, 0), &ozPointLight::_location);
  ozSFFloat::addTypeField(type, "radius", 7, 100.0f, &ozPointLight::_radius);
  ozSFVec3f::addTypeField(type, "attenuation", 8, ozVec3f(1, 0, 0), &ozPointLight::_attenuation);
}

void ozPointLight::fieldChanged(short id) {
  if (!takeOwnChange(_ClassType, id)) ozLight::fieldChanged(id);
}

void ozPointLight::sendPoint(int light, float oldSpecular, ozVec3f const *spotDirection, float cutOffAngle,
                             float exponent) const {
  ozVec4f const position(_location[0], _location[1], _location[2], 1.0f);
  send(light, position, oldSpecular, _attenuation, spotDirection, cutOffAngle, exponent);
}

// That the old specular light of a point light ignores its intensity is meant.
void ozPointLight::define(int light) { sendPoint(light, 1.0f, nullptr, 180.0f, 0.0f); }
