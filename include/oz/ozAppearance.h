#ifndef OZ_APPEARANCE_H
#define OZ_APPEARANCE_H

#include "oz/ozContext.h"
#include "oz/ozFieldAccess.h"

class ozDrawAction;

/// How a shape looks: a value for each state item of ozContext, and which of them it sets.
///
/// Setting a field makes it count, whatever the value. A field never set is inherited: the default state of the context
/// applies, and nothing along the graph does. To take a field back to inherited, set its bit with setInherit.
///
/// Field ids are the numbers of the context's state items. The meaning of each item is told at ozContext.
class OZ_API ozAppearance : public ozContainer {
  OZ_CLASS(ozAppearance);

public:
  ozAppearance();
  /// Takes over the values, what counts and the references, each counted. The copy is an object of its own; name, user
  /// data, parents and connections are no part of it.
  ozAppearance(ozAppearance const &other);
  ozAppearance &operator=(ozAppearance const &other);

  ozTexture *getTexture() { return read(0, _gfx.texture); }
  void setTexture(ozTexture *texture);
  OZ_VALUE_ACCESS(unsigned char, TexEnable, 1, _gfx.texEnable)
  OZ_ENUM_ACCESS(ozContext::TexModeEnum, TexMode, 2, _gfx.texMode)
  OZ_VEC4_ACCESS(ozVec4f, float, TexBlendColor, 3, _gfx.texBlendColor)
  OZ_ENUM_ACCESS(ozContext::TexEnvEnum, TexEnv, 4, _gfx.texEnv)
  ozTexGen *getTexGen() { return read(5, _gfx.texGen); }
  void setTexGen(ozTexGen *texGen);
  OZ_VALUE_ACCESS(unsigned char, TexGenEnable, 6, _gfx.texGenEnable)
  OZ_VALUE_ACCESS(unsigned char, LightEnable, 7, _gfx.lightEnable)
  OZ_ENUM_ACCESS(ozContext::ShadeModelEnum, ShadeModel, 8, _gfx.shadeModel)
  OZ_VALUE_ACCESS(unsigned char, TranspEnable, 9, _gfx.transpEnable)
  OZ_ENUM_ACCESS(ozContext::TranspModeEnum, TranspMode, 10, _gfx.transpMode)
  OZ_ENUM_ACCESS(ozContext::AlphaFuncEnum, AlphaFunc, 11, _gfx.alphaFunc)
  OZ_VALUE_ACCESS(float, AlphaRef, 12, _gfx.alphaRef)
  OZ_VEC4_ACCESS(ozVec4f, float, BlendColor, 13, _gfx.blendColor)
  OZ_ENUM_ACCESS(ozContext::SrcBlendFuncEnum, SrcBlendFunc, 14, _gfx.srcBlendFunc)
  OZ_ENUM_ACCESS(ozContext::DstBlendFuncEnum, DstBlendFunc, 15, _gfx.dstBlendFunc)
  OZ_VEC4_ACCESS(ozVec4ub, unsigned char, ColorMask, 16, _gfx.colorMask)
  OZ_ENUM_ACCESS(ozContext::DepthFuncEnum, DepthFunc, 17, _gfx.depthFunc)
  OZ_VALUE_ACCESS(unsigned char, DepthMask, 18, _gfx.depthMask)
  OZ_VALUE_ACCESS(unsigned char, FogEnable, 19, _gfx.fogEnable)
  OZ_ENUM_ACCESS(ozContext::PolyModeEnum, PolyMode, 20, _gfx.polyMode)
  OZ_VALUE_ACCESS(unsigned int, LineStipplePattern, 21, _gfx.lineStipplePattern)
  OZ_VALUE_ACCESS(unsigned int, LineStippleFactor, 22, _gfx.lineStippleFactor)
  OZ_CLASS_ACCESS(ozMatrix4f, TexTransform, 23, _gfx.texTransform)
  /// The material of both faces, or of the front if there is a back material.
  ozMaterial *getMaterial() { return read(24, _gfx.material); }
  void setMaterial(ozMaterial *material);
  ozMaterial *getBackMaterial() { return read(25, _gfx.backMaterial); }
  void setBackMaterial(ozMaterial *material);
  OZ_VALUE_ACCESS(unsigned char, DepthEnable, 26, _gfx.depthEnable)
  OZ_ENUM_ACCESS(ozContext::MaterialModeEnum, MaterialModeEnable, 27, _gfx.materialModeEnable)

  /// The fields that do not count: a bit per field id, all on in a new appearance. Setting it makes all fields count
  /// whose bits are off, bits 29 to 31 included: cull face, line width and point size, which are NO_CULL, 1 and 1 here.
  OZ_CLASS_ACCESS(ozBitMask, Inherit, 28, _gfx.mask)

  /// The values of all items; the mask is that of getInherit. Not brought up to date.
  _ozGfx *getGfx() { return &_gfx; }
  /// The items that this appearance sets.
  ozBitMask const &getSetMask() const { return _setMask; }

  /// Applies the appearance to the action's context, see ozContext::drawApp.
  virtual void draw(ozDrawAction *action);

protected:
  void fieldChanged(short id) override;

private:
  friend class ozContext; // merges appearances, and makes one that sets everything

  void init();
  void take(ozAppearance const &other);
  void referAll();
  void unreferAll();
  void merge(ozAppearance &over, ozAppearance &under);
  template <class T> void storeCounted(short id, T *&member, T *value);

  _ozGfx _gfx;
  ozBitMask _setMask;
  unsigned char _changed; // since the last draw(), in whichever context that was
  unsigned char _noRefs;  // the reference setters do not count
};

#endif
