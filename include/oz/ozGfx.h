#ifndef OZ_GFX_H
#define OZ_GFX_H

#include "oz/ozBitMask.h"
#include "oz/ozMatrix4f.h"
#include "oz/ozVec2f.h"

/// @file
/// The plain record of all OpenGL state that appearances and geometry can touch.

class ozMaterial;
class ozTexGen;
class ozTexture;

/// The enumerations of the state items. Applications name them through ozContext, which derives from this:
/// ozContext::LINE_PMODE. They stand here because ozContext holds records that hold them.
class ozGfxEnums {
public:
  /// The number of each state item: its bit in every mask, and up to INHERIT_ITEM also its field id in ozAppearance.
  enum ItemEnum : int {
    TEXTURE_ITEM = 0,
    TEX_ENABLE_ITEM,
    TEX_MODE_ITEM,
    TEX_BLEND_COLOR_ITEM,
    TEX_ENV_ITEM,
    TEX_GEN_ITEM,
    TEX_GEN_ENABLE_ITEM,
    LIGHT_ENABLE_ITEM,
    SHADE_MODEL_ITEM,
    TRANSP_ENABLE_ITEM,
    TRANSP_MODE_ITEM,
    ALPHA_FUNC_ITEM,
    ALPHA_REF_ITEM,
    BLEND_COLOR_ITEM,
    SRC_BLEND_FUNC_ITEM,
    DST_BLEND_FUNC_ITEM,
    COLOR_MASK_ITEM,
    DEPTH_FUNC_ITEM,
    DEPTH_MASK_ITEM,
    FOG_ENABLE_ITEM,
    POLY_MODE_ITEM,
    LINE_STIPPLE_PATTERN_ITEM,
    LINE_STIPPLE_FACTOR_ITEM,
    TEX_TRANSFORM_ITEM,
    MATERIAL_ITEM,
    BACK_MATERIAL_ITEM,
    DEPTH_ENABLE_ITEM,
    MATERIAL_MODE_ENABLE_ITEM,
    INHERIT_ITEM, ///< no item: the field "inherit" of an appearance
    CULL_FACE_ITEM,
    LINE_WIDTH_ITEM,
    POINT_SIZE_ITEM,
    ITEM_COUNT
  };

  enum TexModeEnum : int { FAST_TEX, NICE_TEX, NON_PERSP_TEX, PERSP_TEX };
  enum TexEnvEnum : int { MODULATE_TENV, BLEND_TENV, REPLACE_TENV, ADD_TENV, DECAL_TENV };
  enum ShadeModelEnum : int { FLAT_SHADE, SMOOTH_SHADE };
  enum TranspModeEnum : int { FAST_TRANSP, NICE_TRANSP, BLEND_TRANSP, SCREEN_DOOR_TRANSP };
  enum AlphaFuncEnum : int {
    NEVER_AFUNC,
    LESS_AFUNC,
    EQUAL_AFUNC,
    LEQUAL_AFUNC,
    GREATER_AFUNC,
    NOTEQUAL_AFUNC,
    GEQUAL_AFUNC,
    ALWAYS_AFUNC
  };
  enum SrcBlendFuncEnum : int {
    ZERO_SBLEND,
    ONE_SBLEND,
    DST_COLOR_SBLEND,
    ONE_MINUS_DST_COLOR_SBLEND,
    SRC_ALPHA_SATURATE_SBLEND,
    SRC_ALPHA_SBLEND,
    ONE_MINUS_SRC_ALPHA_SBLEND,
    DST_ALPHA_SBLEND,
    ONE_MINUS_DST_ALPHA_SBLEND
  };
  enum DstBlendFuncEnum : int {
    ZERO_DBLEND,
    ONE_DBLEND,
    SRC_COLOR_DBLEND,
    ONE_MINUS_SRC_COLOR_DBLEND,
    SRC_ALPHA_DBLEND,
    ONE_MINUS_SRC_ALPHA_DBLEND,
    DST_ALPHA_DBLEND,
    ONE_MINUS_DST_ALPHA_DBLEND
  };
  enum DepthFuncEnum : int {
    NEVER_DFUNC,
    LESS_DFUNC,
    EQUAL_DFUNC,
    LEQUAL_DFUNC,
    GREATER_DFUNC,
    NOTEQUAL_DFUNC,
    GEQUAL_DFUNC,
    ALWAYS_DFUNC
  };
  enum MaterialModeEnum : int { NO_COLOR_MATERIAL, COLOR_MATERIAL };
  enum PolyModeEnum : int { POINT_PMODE, LINE_PMODE, FILL_PMODE };
  enum CullFaceEnum : int { NO_CULL, FRONT_CULL, BACK_CULL, BOTH_CULL };
};

/// One value for each state item, and a mask of the items that this record has seen change. Copied by value. The
/// objects are neither owned nor counted.
struct _ozGfx {
  /// Takes over the mask and every member.
  void copy(_ozGfx const &other) { *this = other; }

  ozBitMask mask;
  float alphaRef = 0.0f;
  ozGfxEnums::TexModeEnum texMode{};
  ozTexture *texture = nullptr;
  ozVec4f texBlendColor;
  ozGfxEnums::TexEnvEnum texEnv{};
  ozTexGen *texGen = nullptr;
  ozMaterial *material = nullptr; ///< of front faces
  ozGfxEnums::ShadeModelEnum shadeModel{};
  ozGfxEnums::TranspModeEnum transpMode{};
  ozGfxEnums::AlphaFuncEnum alphaFunc{};
  ozVec4f blendColor; ///< kept, never sent to OpenGL
  ozGfxEnums::SrcBlendFuncEnum srcBlendFunc{};
  ozGfxEnums::DstBlendFuncEnum dstBlendFunc{};
  ozVec4ub colorMask;
  ozGfxEnums::DepthFuncEnum depthFunc{};
  unsigned char depthMask = 0;
  ozGfxEnums::PolyModeEnum polyMode{};
  ozGfxEnums::CullFaceEnum cullFace{};
  ozGfxEnums::MaterialModeEnum materialModeEnable{};
  unsigned int lineStipplePattern = 0; ///< the low 16 bits count
  unsigned int lineStippleFactor = 0;
  ozMatrix4f texTransform;
  ozMaterial *backMaterial = nullptr;
  float lineWidth = 0.0f; ///< pixels
  float pointSize = 0.0f; ///< pixels
  unsigned char texEnable = 0;
  unsigned char texGenEnable = 0;
  unsigned char lightEnable = 0;
  unsigned char transpEnable = 0;
  unsigned char fogEnable = 0;
  unsigned char depthEnable = 0;
};

#endif
