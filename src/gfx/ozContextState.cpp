// The setters of the state items, but those of blending. Each keeps the value in the default state where the
// application is speaking, stops if OpenGL holds it already, stores it and issues what follows. The value is stored
// ahead of the call, so that the draw() of an object sees itself in the cached state.

#include <GL/gl.h>

#include "gfx/ozContextItem.h"
#include "oz/ozFog.h"
#include "oz/ozMaterial.h"
#include "oz/ozOverrideGeoProp.h"
#include "oz/ozTexGen.h"
#include "oz/ozTexture.h"

using ozGL::enable;
using ozGL::token;

namespace {

enum : unsigned int { WHOLE_LINE = 65535 };

GLenum const TexEnvs[] = {GL_MODULATE, GL_BLEND, GL_REPLACE, GL_ADD, GL_DECAL};
GLenum const ShadeModels[] = {GL_FLAT, GL_SMOOTH};
GLenum const Comparisons[] = {GL_NEVER, GL_LESS, GL_EQUAL, GL_LEQUAL, GL_GREATER, GL_NOTEQUAL, GL_GEQUAL, GL_ALWAYS};
GLenum const PolyModes[] = {GL_POINT, GL_LINE, GL_FILL};
GLenum const CullFaces[] = {0, GL_FRONT, GL_BACK, GL_FRONT_AND_BACK};
GLenum const TexGenCoordinates[] = {GL_TEXTURE_GEN_S, GL_TEXTURE_GEN_T, GL_TEXTURE_GEN_R, GL_TEXTURE_GEN_Q};

} // namespace

void ozContext::setTexture(ozTexture *texture) {
  if (setItem(TEXTURE_ITEM, &_ozGfx::texture, texture) && texture) texture->draw(this);
}

void ozContext::setTexEnable(unsigned char on) {
  if (setItem(TEX_ENABLE_ITEM, &_ozGfx::texEnable, on)) enable(GL_TEXTURE_2D, on);
}

void ozContext::setTexMode(TexModeEnum mode) { setItem(TEX_MODE_ITEM, &_ozGfx::texMode, mode); }

// Alone among the setters it leaves stateDirty as it is, as meant.
void ozContext::setTexBlendColor(ozVec4f const &color) {
  unsigned char const stateDirty = _stateDirty;
  bool const changed = setItem(TEX_BLEND_COLOR_ITEM, &_ozGfx::texBlendColor, color);
  _stateDirty = stateDirty;
  if (changed) glTexEnvfv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_COLOR, _curState->texBlendColor._v);
}

void ozContext::setTexEnv(TexEnvEnum env) {
  if (!setItem(TEX_ENV_ITEM, &_ozGfx::texEnv, env)) return;
  GLenum const mode = token(TexEnvs, env);
  if (mode != ozGL::NO_TOKEN) glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, static_cast<GLint>(mode));
}

void ozContext::setTexGen(ozTexGen *texGen) {
  if (setItem(TEX_GEN_ITEM, &_ozGfx::texGen, texGen) && texGen) texGen->draw(this);
}

void ozContext::setTexGenEnable(unsigned char on) {
  if (!setItem(TEX_GEN_ENABLE_ITEM, &_ozGfx::texGenEnable, on)) return;
  ozTexGen *const texGen = _curState->texGen;
  if (!on) {
    for (GLenum coordinate : TexGenCoordinates) glDisable(coordinate);
  } else if (texGen) {
    int const modes[] = {texGen->getModeS(), texGen->getModeT(), texGen->getModeR(), texGen->getModeQ()};
    for (int i = 0; i < 4; ++i)
      if (modes[i]) glEnable(TexGenCoordinates[i]);
  }
}

void ozContext::setTexTransform(ozMatrix4f const &matrix) {
  if (!setItem(TEX_TRANSFORM_ITEM, &_ozGfx::texTransform, matrix)) return;
  GLint mode = GL_MODELVIEW;
  glGetIntegerv(GL_MATRIX_MODE, &mode);
  glMatrixMode(GL_TEXTURE);
  glLoadMatrixf(_curState->texTransform[0]);
  glMatrixMode(static_cast<GLenum>(mode));
}

void ozContext::setLightEnable(unsigned char on) {
  if (setItem(LIGHT_ENABLE_ITEM, &_ozGfx::lightEnable, on)) enable(GL_LIGHTING, on);
}

void ozContext::setShadeModel(ShadeModelEnum model) {
  if (!setItem(SHADE_MODEL_ITEM, &_ozGfx::shadeModel, model)) return;
  GLenum const mode = token(ShadeModels, model);
  if (mode != ozGL::NO_TOKEN) glShadeModel(mode);
}

void ozContext::setMaterial(ozMaterial *material) {
  if (setItem(MATERIAL_ITEM, &_ozGfx::material, material) && material) material->draw(ozMaterial::FRONT, this);
}

void ozContext::setBackMaterial(ozMaterial *material) {
  // A back material that was destroyed leaves two-sided lighting on, with null already in the cache.
  bool const changed = setItem(BACK_MATERIAL_ITEM, &_ozGfx::backMaterial, material);
  if (!changed && (material || !_twoSided)) return;
  _twoSided = material != nullptr;
  glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, _twoSided);
  if (material) material->draw(ozMaterial::BACK, this);
}

void ozContext::setMaterialModeEnable(int mode) {
  if (!setItem(MATERIAL_MODE_ENABLE_ITEM, &_ozGfx::materialModeEnable, static_cast<MaterialModeEnum>(mode))) return;
  if (mode) {
    glEnable(GL_COLOR_MATERIAL);
    glColorMaterial(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE);
    return;
  }
  glDisable(GL_COLOR_MATERIAL);
  if (_curState->material) _curState->material->draw(ozMaterial::FRONT, this);
  if (_curState->backMaterial) _curState->backMaterial->draw(ozMaterial::BACK, this);
}

void ozContext::setAlphaFunc(AlphaFuncEnum func) {
  if (!setItem(ALPHA_FUNC_ITEM, &_ozGfx::alphaFunc, func)) return;
  if (token(Comparisons, func) == ozGL::NO_TOKEN) return;
  enable(GL_ALPHA_TEST, func != ALWAYS_AFUNC);
  if (func != ALWAYS_AFUNC) issueAlphaFunc();
}

void ozContext::setAlphaRef(float ref) {
  if (setItem(ALPHA_REF_ITEM, &_ozGfx::alphaRef, ref)) issueAlphaFunc();
}

void ozContext::issueAlphaFunc() {
  GLenum const func = token(Comparisons, _curState->alphaFunc);
  if (func != ozGL::NO_TOKEN) glAlphaFunc(func, _curState->alphaRef);
}

void ozContext::setBlendColor(ozVec4f const &color) { setItem(BLEND_COLOR_ITEM, &_ozGfx::blendColor, color); }

void ozContext::setColorMask(ozVec4ub const &mask) {
  if (setItem(COLOR_MASK_ITEM, &_ozGfx::colorMask, mask))
    glColorMask(mask[0] != 0, mask[1] != 0, mask[2] != 0, mask[3] != 0);
}

void ozContext::setDepthEnable(unsigned char on) {
  if (setItem(DEPTH_ENABLE_ITEM, &_ozGfx::depthEnable, on)) enable(GL_DEPTH_TEST, on);
}

void ozContext::setDepthFunc(DepthFuncEnum func) {
  if (!setItem(DEPTH_FUNC_ITEM, &_ozGfx::depthFunc, func)) return;
  GLenum const comparison = token(Comparisons, func);
  if (comparison != ozGL::NO_TOKEN) glDepthFunc(comparison);
}

void ozContext::setDepthMask(unsigned char on) {
  if (setItem(DEPTH_MASK_ITEM, &_ozGfx::depthMask, on)) glDepthMask(on);
}

void ozContext::setFogEnable(unsigned char on) {
  keepDefault(FOG_ENABLE_ITEM, &_ozGfx::fogEnable, on);
  // Level 1 is the repetition by pushState; above that some scope has a fog of its own.
  if (_fogLevel > 1 && !_fogStack[slot(_fogLevel)]->getOn()) on = 0;
  if (change(FOG_ENABLE_ITEM, &_ozGfx::fogEnable, on)) enable(GL_FOG, on);
}

void ozContext::setPolyMode(PolyModeEnum mode) {
  if (!setItem(POLY_MODE_ITEM, &_ozGfx::polyMode, mode)) return;
  GLenum const fill = token(PolyModes, mode);
  if (fill != ozGL::NO_TOKEN) glPolygonMode(GL_FRONT_AND_BACK, fill);
}

void ozContext::setLineStipplePattern(unsigned int pattern) {
  if (!setItem(LINE_STIPPLE_PATTERN_ITEM, &_ozGfx::lineStipplePattern, pattern)) return;
  enable(GL_LINE_STIPPLE, pattern != WHOLE_LINE);
  if (pattern != WHOLE_LINE) issueLineStipple();
}

void ozContext::setLineStippleFactor(unsigned int factor) {
  if (setItem(LINE_STIPPLE_FACTOR_ITEM, &_ozGfx::lineStippleFactor, factor) &&
      _curState->lineStipplePattern != WHOLE_LINE)
    issueLineStipple();
}

void ozContext::issueLineStipple() {
  glLineStipple(static_cast<GLint>(_curState->lineStippleFactor), static_cast<GLushort>(_curState->lineStipplePattern));
}

// The default state keeps what was asked for; the override on top decides what is in force.
ozOverrideGeoProp *ozContext::findOverride(int item) const {
  if (_overrideGeoPropTop < 0) return nullptr;
  ozOverrideGeoProp *const top = _overrideGeoProps[_overrideGeoPropTop];
  ozBitMask mask;
  top->getOverride(mask);
  return mask.getBit(item) ? top : nullptr;
}

void ozContext::setCullFace(CullFaceEnum face) {
  keepDefault(CULL_FACE_ITEM, &_ozGfx::cullFace, face);
  if (ozOverrideGeoProp *const properties = findOverride(CULL_FACE_ITEM)) face = properties->getCullFace();
  if (!change(CULL_FACE_ITEM, &_ozGfx::cullFace, face)) return;
  GLenum const side = token(CullFaces, face);
  if (side == ozGL::NO_TOKEN) return;
  enable(GL_CULL_FACE, side != 0);
  if (side) glCullFace(side);
}

void ozContext::setLineWidth(float width) {
  keepDefault(LINE_WIDTH_ITEM, &_ozGfx::lineWidth, width);
  if (ozOverrideGeoProp *const properties = findOverride(LINE_WIDTH_ITEM)) width = properties->getLineWidth();
  if (change(LINE_WIDTH_ITEM, &_ozGfx::lineWidth, width)) glLineWidth(width);
}

void ozContext::setPointSize(float size) {
  keepDefault(POINT_SIZE_ITEM, &_ozGfx::pointSize, size);
  if (ozOverrideGeoProp *const properties = findOverride(POINT_SIZE_ITEM)) size = properties->getPointSize();
  if (change(POINT_SIZE_ITEM, &_ozGfx::pointSize, size)) glPointSize(size);
}
