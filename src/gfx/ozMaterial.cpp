#include "oz/ozMaterial.h"

#include <GL/gl.h>

#include "core/nestedMember.h"
#include "gfx/ozStipple.h"
#include "oz/ozContext.h"

OZ_DEFINE_INSTANCES(ozMaterial)
OZ_DEFINE_TYPE_AFTER(ozMaterial, "Material", ozContainer, ozContext) {
  static_assert(sizeof(Shade) == 4 * sizeof(float), "OpenGL reads four floats");
  auto const shade = [](Shade ozMaterial::*member) { return ozNestedMember(member, &Shade::color); };
  ozSFFloat::addTypeField(type, "ambientIntensity", 0, 0.2f, &ozMaterial::_ambientIntensity);
  ozSFVec3f::addTypeField(type, "ambientColor", 1, ozVec3f(0.16f, 0.16f, 0.16f), shade(&ozMaterial::_ambient));
  ozSFVec3f::addTypeField(type, "diffuseColor", 2, ozVec3f(0.8f, 0.8f, 0.8f), shade(&ozMaterial::_diffuse));
  ozSFVec3f::addTypeField(type, "specularColor", 3, ozVec3f(0, 0, 0), shade(&ozMaterial::_specular));
  ozSFVec3f::addTypeField(type, "emissiveColor", 4, ozVec3f(0, 0, 0), shade(&ozMaterial::_emissive));
  ozSFShort::addTypeField(type, "ambientIndex", 5, 0, &ozMaterial::_ambientIndex);
  ozSFShort::addTypeField(type, "diffuseIndex", 6, 0, &ozMaterial::_diffuseIndex);
  ozSFShort::addTypeField(type, "specularIndex", 7, 0, &ozMaterial::_specularIndex);
  ozSFFloat::addTypeField(type, "shininess", 8, 0.2f, &ozMaterial::_shininess);
  ozSFFloat::addTypeField(type, "transparency", 9, 0.0f, &ozMaterial::_transparency);
  ozBuildDither();
}

ozMaterial::ozMaterial(ozType *type) : ozContainer(type) { initFieldDefaults(_ClassType); }
ozMaterial::~ozMaterial() {
  ozContext::forget(this);
  destroyFieldContents(_ClassType);
}

void ozMaterial::setShininess(float shininess) {
  float const least = 0.0078125f, most = 1.0f;
  store(8, _shininess, shininess < least ? least : shininess > most ? most : shininess);
}

static float luminance(ozVec3f const &color) { return 0.3f * color[0] + 0.59f * color[1] + 0.11f * color[2]; }

void ozMaterial::fieldChanged(short id) {
  if (id < _ClassType->getAncestorFieldCount()) {
    ozContainer::fieldChanged(id);
    return;
  }
  _glId.changed();
  if (id == 0) {
    _ambient.color.scale(_ambientIntensity, _diffuse.color);
    touchField(1);
  } else if (id == 1) {
    float const whole = luminance(_diffuse.color);
    bool const black = whole > -OZ_TINY_EPSILON && whole < OZ_TINY_EPSILON;
    _ambientIntensity = black ? 0.0f : luminance(_ambient.color) / whole;
    touchField(0);
  }
  touchField(id); // a new diffuse colour leaves the ambient one alone: meant so
}

void ozMaterial::drawColors(unsigned int face, float alpha, float specularAlpha, float emissiveAlpha) {
  _ambient.alpha = _diffuse.alpha = alpha;
  _specular.alpha = specularAlpha;
  _emissive.alpha = emissiveAlpha;
  auto const send = [face](unsigned int name, Shade const &shade) {
    glMaterialfv(face, name, reinterpret_cast<float const *>(&shade));
  };
  send(GL_AMBIENT, _ambient);
  send(GL_DIFFUSE, _diffuse);
  send(GL_SPECULAR, _specular);
  send(GL_EMISSION, _emissive);
}

void ozMaterial::draw(FaceEnum face, ozContext *context) {
  cleanFields();
  bool const dirty = context->isDirty(_glId.getId(), _glId.getVersion()) != 0;
  // The context stores a material ahead of drawing it: what it draws itself always goes on.
  if (context->getMaterial() != this && context->getBackMaterial() != this && !dirty) return;

  unsigned int const glFace = face != FRONT ? GL_BACK : GL_FRONT;
  if (context->getColorMode() != ozContext::RGBA_COLOR) {
    int const indexes[3] = {_ambientIndex, _diffuseIndex, _specularIndex};
    glMaterialiv(glFace, GL_COLOR_INDEXES, indexes);
    return;
  }
  ozContext::TranspModeEnum const mode = context->getTranspMode();
  if (context->getTranspEnable() && (mode == ozContext::FAST_TRANSP || mode == ozContext::SCREEN_DOOR_TRANSP)) {
    drawColors(glFace, 1.0f, 1.0f, 1.0f);
    if (unsigned int const *pattern = ozCoarseStipple(_transparency))
      glPolygonStipple(reinterpret_cast<GLubyte const *>(pattern));
  } else {
    float const alpha = 1.0f - _transparency;
    drawColors(glFace, alpha, 1.0f, alpha);
  }
  glMaterialf(glFace, GL_SHININESS, _shininess * 128.0f);
}
