#include "oz/ozLight.h"

#include <GL/gl.h>
#include <stdlib.h>

#include "node/visit.h"
#include "oz/ozContext.h"
#include "oz/ozDrawAction.h"

unsigned char ozLight::useNewLighting = 1;

OZ_DEFINE_TYPE_AFTER(ozLight, "Light", ozNode, ozContext) {
  useNewLighting = getenv("USE_OLD_SPECULAR_LIGHTING") == nullptr;
  ozSFUByte::addTypeField(type, "on", 2, 1, &ozLight::_on);
  ozSFFloat::addTypeField(type, "intensity", 3, 1.0f, &ozLight::_intensity);
  ozSFFloat::addTypeField(type, "ambientIntensity", 4, 0.0f, &ozLight::_ambientIntensity);
  ozSFVec3f::addTypeField(type, "color", 5, ozVec3f(1, 1, 1), &ozLight::_color);
}
OZ_DEFINE_LEVEL(ozLight, ozNode)

unsigned char ozLight::unref() {
  if (getRefCount() == 1) ozContext::disableLight(this);
  return ozNode::unref();
}

void ozLight::fieldChanged(short id) {
  _glId.changed();
  ozNode::fieldChanged(id);
}

bool ozLight::takeOwnChange(ozType const *kind, short id) {
  if (id < kind->getAncestorFieldCount() || id >= kind->getFieldInfoCount()) return false;
  _glId.changed(); // and no announcement: meant so
  return true;
}

ozTravDirective ozLight::drawVisit(ozDrawAction *action) {
  return ozVisitFrame(this, action, [=] { return draw(action), TRAV_CONT; });
}

void ozLight::draw(ozDrawAction *action) {
  cleanFields();
  ozContext *const context = action->getContext();
  ozMatrix4f matrix;
  context->getMatrix(matrix);
  int match;
  int const slot = context->getLightTarget(this, matrix, match);
  if (needsDefinition(slot, match, context)) define(slot);
}

void ozLight::pop(ozMatrix4f const &matrix, ozContext *context) {
  int match;
  int const slot = context->getLightTarget(this, matrix, match);
  if (!needsDefinition(slot, match, context)) return;
  context->pushMatrix();
  context->loadMatrix(matrix);
  define(slot);
  context->popMatrix();
}

// Whether the light is not in place yet. A light that got no slot never is.
bool ozLight::needsDefinition(int slot, int match, ozContext *context) {
  bool const dirty = _glId.isDirty(context);
  return slot >= 0 && (dirty || match == -1);
}

void ozLight::send(int light, ozVec4f const &position, float oldSpecular, ozVec3f const &attenuation,
                   ozVec3f const *spotDirection, float cutOffAngle, float exponent) const {
  ozVec4f color(_intensity * _color[0], _intensity * _color[1], _intensity * _color[2], 1.0f);
  ozVec4f ambient(_ambientIntensity * _color[0], _ambientIntensity * _color[1], _ambientIntensity * _color[2], 1.0f);
  ozVec4f old(oldSpecular, oldSpecular, oldSpecular, 1.0f);
  unsigned int const glLight = GL_LIGHT0 + static_cast<unsigned int>(light);
  glLightfv(glLight, GL_POSITION, position._v);
  if (spotDirection) glLightfv(glLight, GL_SPOT_DIRECTION, spotDirection->_v);
  glLightfv(glLight, GL_DIFFUSE, color._v);
  glLightfv(glLight, GL_SPECULAR, useNewLighting ? color._v : old._v);
  glLightfv(glLight, GL_AMBIENT, ambient._v);
  glLightfv(glLight, GL_SPOT_CUTOFF, &cutOffAngle);
  glLightfv(glLight, GL_SPOT_EXPONENT, &exponent);
  glLightfv(glLight, GL_CONSTANT_ATTENUATION, &attenuation._v[0]);
  glLightfv(glLight, GL_LINEAR_ATTENUATION, &attenuation._v[1]);
  glLightfv(glLight, GL_QUADRATIC_ATTENUATION, &attenuation._v[2]);
}
