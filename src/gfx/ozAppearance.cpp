// An appearance is a record of state values and two masks over it. `inherit`, the record's own mask, is what the
// application sees: a bit that is on means that the field does not count. The set mask is what drawing uses. Every
// change of a field goes through fieldChanged, which keeps the two in step.

#include "oz/ozAppearance.h"

#include <initializer_list>

#include "core/nestedMember.h"
#include "oz/ozDrawAction.h"
#include "oz/ozMaterial.h"
#include "oz/ozSFRef.h"
#include "oz/ozTexGen.h"
#include "oz/ozTexture.h"

namespace {

// The fields, in the order of their registration, which is meant to differ from that of the ids.
#define OZ_APPEARANCE_FIELDS(REF, ENUM, VALUE)                                                                         \
  REF(texture, 0, ozTexture)                                                                                           \
  VALUE(texEnable, 1, ozSFUByte, 0)                                                                                    \
  ENUM(texMode, 2, FAST_TEX, "FAST_TEX", "NICE_TEX", "NON_PERSP_TEX", "PERSP_TEX")                                     \
  VALUE(texBlendColor, 3, ozSFVec4f, ozVec4f(0, 0, 0, 0))                                                              \
  ENUM(texEnv, 4, MODULATE_TENV, "MODULATE_TENV", "BLEND_TENV", "REPLACE_TENV", "ADD_TENV", "DECAL_TENV")              \
  REF(texGen, 5, ozTexGen)                                                                                             \
  VALUE(texGenEnable, 6, ozSFUByte, 0)                                                                                 \
  REF(material, 24, ozMaterial)                                                                                        \
  VALUE(lightEnable, 7, ozSFUByte, 0)                                                                                  \
  ENUM(shadeModel, 8, SMOOTH_SHADE, "FLAT_SHADE", "SMOOTH_SHADE")                                                      \
  VALUE(transpEnable, 9, ozSFUByte, 0)                                                                                 \
  ENUM(transpMode, 10, BLEND_TRANSP, "FAST_TRANSP", "NICE_TRANSP", "BLEND_TRANSP", "SCREEN_DOOR_TRANSP")               \
  ENUM(alphaFunc, 11, ALWAYS_AFUNC, "NEVER_AFUNC", "LESS_AFUNC", "EQUAL_AFUNC", "LEQUAL_AFUNC", "GREATER_AFUNC",       \
       "NOTEQUAL_AFUNC", "GEQUAL_AFUNC", "ALWAYS_AFUNC")                                                               \
  VALUE(alphaRef, 12, ozSFFloat, 0.0f)                                                                                 \
  VALUE(blendColor, 13, ozSFVec4f, ozVec4f(0, 0, 0, 0))                                                                \
  ENUM(srcBlendFunc, 14, ONE_SBLEND, "ZERO_SBLEND", "ONE_SBLEND", "DST_COLOR_SBLEND", "ONE_MINUS_DST_COLOR_SBLEND",    \
       "SRC_ALPHA_SATURATE_SBLEND", "SRC_ALPHA_SBLEND", "ONE_MINUS_SRC_ALPHA_SBLEND", "DST_ALPHA_SBLEND",              \
       "ONE_MINUS_DST_ALPHA_SBLEND")                                                                                   \
  ENUM(dstBlendFunc, 15, ZERO_DBLEND, "ZERO_DBLEND", "ONE_DBLEND", "SRC_COLOR_DBLEND", "ONE_MINUS_SRC_COLOR_DBLEND",   \
       "SRC_ALPHA_DBLEND", "ONE_MINUS_SRC_ALPHA_DBLEND", "DST_ALPHA_DBLEND", "ONE_MINUS_DST_ALPHA_DBLEND")             \
  VALUE(colorMask, 16, ozSFVec4ub, ozVec4ub(255, 255, 255, 255))                                                       \
  VALUE(depthEnable, 26, ozSFUByte, 0)                                                                                 \
  ENUM(depthFunc, 17, LESS_DFUNC, "NEVER_DFUNC", "LESS_DFUNC", "EQUAL_DFUNC", "LEQUAL_DFUNC", "GREATER_DFUNC",         \
       "NOTEQUAL_DFUNC", "GEQUAL_DFUNC", "ALWAYS_DFUNC")                                                               \
  VALUE(depthMask, 18, ozSFUByte, 1)                                                                                   \
  VALUE(fogEnable, 19, ozSFUByte, 0)                                                                                   \
  ENUM(materialModeEnable, 27, NO_COLOR_MATERIAL, "NO_COLOR_MATERIAL", "COLOR_MATERIAL")                               \
  ENUM(polyMode, 20, FILL_PMODE, "POINT_PMODE", "LINE_PMODE", "FILL_PMODE")                                            \
  VALUE(lineStipplePattern, 21, ozSFUInt, 65535)                                                                       \
  VALUE(lineStippleFactor, 22, ozSFUInt, 1)                                                                            \
  VALUE(texTransform, 23, ozSFMatrix4f, ozMatrix4f())                                                                  \
  REF(backMaterial, 25, ozMaterial)

// Names the values of an enumeration field, from 0.
void nameValues(ozType *type, short id, std::initializer_list<char const *> names) {
  int values[16];
  int count = 0;
  for (; count < static_cast<int>(names.size()); ++count) values[count] = count;
  type->defineEnums(id, count, names.begin(), values);
}

// Copies the value of one state item.
typedef void (*CopyItem)(_ozGfx &to, _ozGfx const &from);
template <auto Member> void copyItem(_ozGfx &to, _ozGfx const &from) { to.*Member = from.*Member; }

struct CopyTable {
  CopyItem of[ozContext::INHERIT_ITEM];
};

constexpr CopyTable makeCopyTable() {
  CopyTable table{};
#define OZ_COPY(member, id, ...) table.of[id] = copyItem<&_ozGfx::member>;
  OZ_APPEARANCE_FIELDS(OZ_COPY, OZ_COPY, OZ_COPY)
#undef OZ_COPY
  return table;
}

constexpr CopyTable Copies = makeCopyTable();

} // namespace

OZ_DEFINE_INSTANCES(ozAppearance)
OZ_DEFINE_TYPE_AFTER(ozAppearance, "Appearance", ozContainer, ozContext) {
#define OZ_MEMBER(member) ozNestedMember(&ozAppearance::_gfx, &_ozGfx::member)
#define OZ_ADD_REF(member, id, Class)                                                                                  \
  ozSFRef::addTypeField(type, #member, id, Class::getClassType(), OZ_MEMBER(member));
#define OZ_ADD_ENUM(member, id, value, ...)                                                                            \
  ozSFEnum::addTypeField(type, #member, id, ozContext::value, OZ_MEMBER(member));                                      \
  nameValues(type, id, {__VA_ARGS__});
#define OZ_ADD_VALUE(member, id, Field, value) Field::addTypeField(type, #member, id, value, OZ_MEMBER(member));
  OZ_APPEARANCE_FIELDS(OZ_ADD_REF, OZ_ADD_ENUM, OZ_ADD_VALUE)
  ozSFBitMask::addTypeField(type, "inherit", 28, ozBitMask(1), OZ_MEMBER(mask));
}

ozAppearance::ozAppearance(ozType *type) : ozContainer(type) { init(); }

void ozAppearance::init() {
  initFieldDefaults(_ClassType); // all but what follows
  _setMask.off();
  _changed = 0;
  _noRefs = 0;
  _gfx.cullFace = ozContext::NO_CULL;
  _gfx.lineWidth = 1.0f;
  _gfx.pointSize = 1.0f;
}

ozAppearance::~ozAppearance() {
  if (_noRefs) {
    initFieldDefaults(_ClassType); // lets go of what was never counted
  } else {
    ozContext::forget(this);
  }
  destroyFieldContents(_ClassType);
}

ozAppearance::ozAppearance(ozAppearance const &other) : ozAppearance(other.getType()) { take(other); }

ozAppearance &ozAppearance::operator=(ozAppearance const &other) {
  take(other);
  for (short id = 0; id <= ozContext::INHERIT_ITEM; ++id) touchField(id);
  return *this;
}

void ozAppearance::take(ozAppearance const &other) {
  const_cast<ozAppearance &>(other).cleanFields();
  if (&other == this) return;
  unreferAll(); // nothing goes that the other one holds
  _gfx = other._gfx;
  _setMask = other._setMask;
  _changed = other._changed;
  _noRefs = other._noRefs;
  referAll();
}

void ozAppearance::referAll() {
  if (_noRefs) return;
  refer(_gfx.texture);
  refer(_gfx.texGen);
  refer(_gfx.material);
  refer(_gfx.backMaterial);
}

void ozAppearance::unreferAll() {
  if (_noRefs) return;
  unrefer(_gfx.texture);
  unrefer(_gfx.texGen);
  unrefer(_gfx.material);
  unrefer(_gfx.backMaterial);
}

template <class T> void ozAppearance::storeCounted(short id, T *&member, T *value) {
  if (_noRefs)
    store(id, member, value);
  else
    storeRef(id, member, value);
}

void ozAppearance::setTexture(ozTexture *texture) { storeCounted(0, _gfx.texture, texture); }
void ozAppearance::setTexGen(ozTexGen *texGen) { storeCounted(5, _gfx.texGen, texGen); }
void ozAppearance::setMaterial(ozMaterial *material) { storeCounted(24, _gfx.material, material); }
void ozAppearance::setBackMaterial(ozMaterial *material) { storeCounted(25, _gfx.backMaterial, material); }

void ozAppearance::fieldChanged(short id) {
  if (id == 28) {
    _setMask.notEqual(_gfx.mask); // the complement, bits 29 to 63 included
  } else {
    _gfx.mask.offBit(id);
    _setMask.onBit(id);
  }
  touchField(id);
  _changed = 1;
}

// Field by field what `over` sets, otherwise what `under` sets; the rest stays inherited.
void ozAppearance::merge(ozAppearance &over, ozAppearance &under) {
  ozBitMask overInherits, underInherits;
  over.getInherit(overInherits);
  under.getInherit(underInherits);
  for (short id = 0; id < 28; ++id) {
    bool const underneath = overInherits.getBit(id) != 0;
    if (underneath && underInherits.getBit(id)) continue;
    ozAppearance &from = underneath ? under : over;
    from.validateField(id);
    Copies.of[id](_gfx, from._gfx); // as the setter does while references do not count
    fieldChanged(id);
  }
}

void ozAppearance::draw(ozDrawAction *action) {
  cleanFields();
  action->getContext()->drawApp(this, _changed);
  _changed = 0;
}
