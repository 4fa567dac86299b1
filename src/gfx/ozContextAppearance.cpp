// How a record of items, and with it an appearance, comes into force. The context remembers what the last source set:
// what that had and the new one has not goes back to the default state, then the new one's items follow. So a change
// from one appearance to the next costs the items in which they differ, and the same one again costs a few comparisons.

#include "oz/ozAppearance.h"
#include "oz/ozContext.h"

// Equals no appearance: what stands for sources that may not be passed over next time.
static void const *const NoAppearance = reinterpret_cast<void const *>(1);

// ---- a whole record of items

// clang-format off
inline void ozContext::applyItem(int item, _ozGfx const &values) {
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

// The order matters: transparency comes ahead of the materials that must obey it, and explicit blend functions behind
// those that transparency sets.
__attribute__((always_inline)) inline void ozContext::applyItems(ozBitMask const &mask, _ozGfx const &values) {
  unsigned long long rest = static_cast<unsigned long long>(mask.getMask());
  for (; rest; rest &= rest - 1) applyItem(__builtin_ctzll(rest), values);
}

void ozContext::setStateElts(ozBitMask const &mask, _ozGfx const &values) { applyItems(mask, values); }

// ---- an appearance

void ozContext::drawApp(ozAppearance *appearance, unsigned char force) {
  if (_overrideAppearanceTop < 0)
    applyAppearance(appearance, force, appearance);
  else
    drawOverridden(_overrideAppearances[_overrideAppearanceTop], appearance, force);
}

void ozContext::drawOverridden(ozAppearance *over, ozAppearance *appearance, unsigned char force) {
  if (!appearance) {
    over->cleanFields();
    return applyAppearance(over, force, over);
  }
  ozAppearance merged;
  merged._noRefs = 1;
  merged.merge(*over, *appearance);
  applyAppearance(&merged, force, NoAppearance);
}

// Applies the source, null for the default state, and remembers it as `known`.
void ozContext::applyAppearance(ozAppearance *source, unsigned char force, void const *known) {
  if (source && source == _lastAppearance && !force && !_stateDirty) return;

  _ozGfx const &values = source ? source->_gfx : *_defaultState;
  ozBitMask const setMask = source ? source->_setMask : _defaultState->mask;
  ozBitMask leftOver = _lastSetMask;
  leftOver.andNotEqual(setMask);

  _whichSetState = _curState;
  if (leftOver.notZero()) setStateElts(leftOver, *_defaultState);
  // What an object of the application draws may change the originals, so what comes behind the first one is copied.
  unsigned long long const objects = ~0ull << TEXTURE_ITEM & (1ull << TEXTURE_ITEM | 1ull << TEX_GEN_ITEM |
                                                              1ull << MATERIAL_ITEM | 1ull << BACK_MATERIAL_ITEM);
  unsigned long long const items = static_cast<unsigned long long>(setMask.getMask()), first = items & objects;
  if ((leftOver.getMask() & static_cast<long long>(objects)) || (first & (~first + 1)) * 2 <= items)
    setStateElts(setMask, _ozGfx(values));
  else
    applyItems(setMask, values); // the usual case
  _whichSetState = _defaultState;

  _lastAppearance = known ? known : NoAppearance;
  _lastSetMask = setMask;
  _stateDirty = 0;
}
