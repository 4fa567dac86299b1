// The levels of state, and the application of a whole record of items.

#include "oz/ozContext.h"

// The order matters: transparency comes ahead of the materials that must obey it, and explicit blend functions behind
// those that transparency sets.
void ozContext::setStateElts(ozBitMask const &mask, _ozGfx const &values) {
  unsigned long long rest = static_cast<unsigned long long>(mask.getMask());
  for (; rest; rest &= rest - 1) applyItem(__builtin_ctzll(rest), values);
}

// clang-format off
void ozContext::applyItem(int item, _ozGfx const &values) {
  switch (item) {
  case TEXTURE_ITEM: return setTexture(values.texture);
  case TEX_ENABLE_ITEM: return setTexEnable(values.texEnable);
  case TEX_MODE_ITEM: return setTexMode(values.texMode);
  case TEX_BLEND_COLOR_ITEM: return setTexBlendColor(values.texBlendColor);
  case TEX_ENV_ITEM: return setTexEnv(values.texEnv);
  case TEX_GEN_ITEM: return setTexGen(values.texGen);
  case TEX_GEN_ENABLE_ITEM: return setTexGenEnable(values.texGenEnable);
  case LIGHT_ENABLE_ITEM: return setLightEnable(values.lightEnable);
  case SHADE_MODEL_ITEM: return setShadeModel(values.shadeModel);
  case TRANSP_ENABLE_ITEM: return setTranspEnable(values.transpEnable);
  case TRANSP_MODE_ITEM: return setTranspMode(values.transpMode);
  case ALPHA_FUNC_ITEM: return setAlphaFunc(values.alphaFunc);
  case ALPHA_REF_ITEM: return setAlphaRef(values.alphaRef);
  case BLEND_COLOR_ITEM: return setBlendColor(values.blendColor);
  case SRC_BLEND_FUNC_ITEM: return setSrcBlendFunc(values.srcBlendFunc);
  case DST_BLEND_FUNC_ITEM: return setDstBlendFunc(values.dstBlendFunc);
  case COLOR_MASK_ITEM: return setColorMask(values.colorMask);
  case DEPTH_FUNC_ITEM: return setDepthFunc(values.depthFunc);
  case DEPTH_MASK_ITEM: return setDepthMask(values.depthMask);
  case FOG_ENABLE_ITEM: return setFogEnable(values.fogEnable);
  case POLY_MODE_ITEM: return setPolyMode(values.polyMode);
  case LINE_STIPPLE_PATTERN_ITEM: return setLineStipplePattern(values.lineStipplePattern);
  case LINE_STIPPLE_FACTOR_ITEM: return setLineStippleFactor(values.lineStippleFactor);
  case TEX_TRANSFORM_ITEM: return setTexTransform(values.texTransform);
  case MATERIAL_ITEM: return setMaterial(values.material);
  case BACK_MATERIAL_ITEM: return setBackMaterial(values.backMaterial);
  case DEPTH_ENABLE_ITEM: return setDepthEnable(values.depthEnable);
  case MATERIAL_MODE_ENABLE_ITEM: return setMaterialModeEnable(values.materialModeEnable);
  case CULL_FACE_ITEM: return setCullFace(values.cullFace);
  case LINE_WIDTH_ITEM: return setLineWidth(values.lineWidth);
  case POINT_SIZE_ITEM: return setPointSize(values.pointSize);
  }
}
// clang-format on

void ozContext::pushState() {
  pushLights();
  pushFog(nullptr);
  if (++_stateLevel >= LEVEL_COUNT) return; // shares the top level, which curState is already
  _stateStack[_stateLevel].copy(*_curState);
  _curState = &_stateStack[_stateLevel];
}

void ozContext::popState() {
  OZ_REQUIRE(_stateLevel > 0, "popState without pushState");
  int const below = _stateLevel - 1;
  _ozGfx &lower = _stateStack[slot(below)];

  _whichSetState = _curState;
  ozBitMask touched = _curState->mask;
  touched.orEqual(lower.mask);
  setStateElts(touched, lower);
  // What this changes is not entered in the lower level, as meant.
  setStateElts(_defaultState->mask, *_defaultState);

  _whichSetState = _defaultState;
  _stateLevel = below;
  _curState = &lower;
  popFog();
  popLights();
  _stateDirty = 1;
}
