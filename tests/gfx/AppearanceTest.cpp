// The fields of an appearance: what each is called, holds and does to the masks.

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "oz/OzScene3D.h"
#include "support/capture.h"

namespace {

using ::testing::ElementsAre;

typedef std::function<bool(ozAppearance &)> Check;
typedef std::function<void(ozAppearance &)> Change;

struct FieldCase {
  char const *name;
  int id;
  ozType *(*fieldType)();
  Check isDefault; // through the getter
  Change change;   // through the setter, to another value
  Check isChanged;
};

std::ostream &operator<<(std::ostream &out, FieldCase const &field) { return out << field.name; }

ozMaterial *sharedMaterial() {
  static ozMaterial *const material = [] {
    ozMaterial *const made = new ozMaterial;
    made->ref();
    return made;
  }();
  return material;
}

ozTexture *sharedTexture() {
  static ozTexture *const texture = [] {
    ozTexture *const made = new ozTexture(true);
    made->ref();
    return made;
  }();
  return texture;
}

ozTexGen *sharedTexGen() {
  static ozTexGen *const texGen = [] {
    ozTexGen *const made = new ozTexGen;
    made->ref();
    return made;
  }();
  return texGen;
}

template <class T> T got(ozAppearance &a, void (ozAppearance::*get)(T &)) {
  T value;
  (a.*get)(value);
  return value;
}

#define VALUE_CASE(name, id, Field, Name, unset, other)                                                                \
  {                                                                                                                    \
    name, id, Field::getClassType, [](ozAppearance &a) { return a.get##Name() == unset; },                             \
        [](ozAppearance &a) { a.set##Name(other); }, [](ozAppearance &a) { return a.get##Name() == other; }            \
  }

#define CLASS_CASE(name, id, Field, T, Name, unset, other)                                                             \
  {                                                                                                                    \
    name, id, Field::getClassType, [](ozAppearance &a) { return got<T>(a, &ozAppearance::get##Name) == unset; },       \
        [](ozAppearance &a) { a.set##Name(other); },                                                                   \
        [](ozAppearance &a) { return got<T>(a, &ozAppearance::get##Name) == other; }                                   \
  }

ozMatrix4f scaled() {
  ozMatrix4f matrix;
  matrix.makeScale(2, 3, 4);
  return matrix;
}

FieldCase const Cases[] = {
    VALUE_CASE("texture", 0, ozSFRef, Texture, nullptr, sharedTexture()),
    VALUE_CASE("texEnable", 1, ozSFUByte, TexEnable, 0, 1),
    VALUE_CASE("texMode", 2, ozSFEnum, TexMode, ozContext::FAST_TEX, ozContext::PERSP_TEX),
    CLASS_CASE("texBlendColor", 3, ozSFVec4f, ozVec4f, TexBlendColor, ozVec4f(0, 0, 0, 0), ozVec4f(1, 2, 3, 4)),
    VALUE_CASE("texEnv", 4, ozSFEnum, TexEnv, ozContext::MODULATE_TENV, ozContext::DECAL_TENV),
    VALUE_CASE("texGen", 5, ozSFRef, TexGen, nullptr, sharedTexGen()),
    VALUE_CASE("texGenEnable", 6, ozSFUByte, TexGenEnable, 0, 1),
    VALUE_CASE("material", 24, ozSFRef, Material, nullptr, sharedMaterial()),
    VALUE_CASE("lightEnable", 7, ozSFUByte, LightEnable, 0, 1),
    VALUE_CASE("shadeModel", 8, ozSFEnum, ShadeModel, ozContext::SMOOTH_SHADE, ozContext::FLAT_SHADE),
    VALUE_CASE("transpEnable", 9, ozSFUByte, TranspEnable, 0, 1),
    VALUE_CASE("transpMode", 10, ozSFEnum, TranspMode, ozContext::BLEND_TRANSP, ozContext::SCREEN_DOOR_TRANSP),
    VALUE_CASE("alphaFunc", 11, ozSFEnum, AlphaFunc, ozContext::ALWAYS_AFUNC, ozContext::LESS_AFUNC),
    VALUE_CASE("alphaRef", 12, ozSFFloat, AlphaRef, 0.0f, 0.5f),
    CLASS_CASE("blendColor", 13, ozSFVec4f, ozVec4f, BlendColor, ozVec4f(0, 0, 0, 0), ozVec4f(4, 3, 2, 1)),
    VALUE_CASE("srcBlendFunc", 14, ozSFEnum, SrcBlendFunc, ozContext::ONE_SBLEND, ozContext::SRC_ALPHA_SBLEND),
    VALUE_CASE("dstBlendFunc", 15, ozSFEnum, DstBlendFunc, ozContext::ZERO_DBLEND, ozContext::ONE_DBLEND),
    CLASS_CASE("colorMask", 16, ozSFVec4ub, ozVec4ub, ColorMask, ozVec4ub(255, 255, 255, 255), ozVec4ub(1, 0, 2, 0)),
    VALUE_CASE("depthEnable", 26, ozSFUByte, DepthEnable, 0, 1),
    VALUE_CASE("depthFunc", 17, ozSFEnum, DepthFunc, ozContext::LESS_DFUNC, ozContext::GEQUAL_DFUNC),
    VALUE_CASE("depthMask", 18, ozSFUByte, DepthMask, 1, 0),
    VALUE_CASE("fogEnable", 19, ozSFUByte, FogEnable, 0, 1),
    VALUE_CASE("materialModeEnable", 27, ozSFEnum, MaterialModeEnable, ozContext::NO_COLOR_MATERIAL,
               ozContext::COLOR_MATERIAL),
    VALUE_CASE("polyMode", 20, ozSFEnum, PolyMode, ozContext::FILL_PMODE, ozContext::LINE_PMODE),
    VALUE_CASE("lineStipplePattern", 21, ozSFUInt, LineStipplePattern, 65535u, 0x0f0fu),
    VALUE_CASE("lineStippleFactor", 22, ozSFUInt, LineStippleFactor, 1u, 3u),
    CLASS_CASE("texTransform", 23, ozSFMatrix4f, ozMatrix4f, TexTransform, ozMatrix4f(), scaled()),
    VALUE_CASE("backMaterial", 25, ozSFRef, BackMaterial, nullptr, sharedMaterial()),
};

ozBitMask allBut(int id) {
  ozBitMask mask(1);
  mask.offBit(id);
  return mask;
}

ozBitMask only(int id) {
  ozBitMask mask;
  mask.onBit(id);
  return mask;
}

class AppearanceField : public ::testing::TestWithParam<FieldCase> {
protected:
  ozAppearance appearance;
};

TEST_P(AppearanceField, IsFoundUnderItsNameAndId) {
  ozField *const field = appearance.getField(GetParam().name);
  ASSERT_TRUE(field);
  EXPECT_EQ(field->getId(), GetParam().id);
  EXPECT_EQ(field->getType(), GetParam().fieldType());
}

TEST_P(AppearanceField, HasItsDefault) { EXPECT_TRUE(GetParam().isDefault(appearance)); }

TEST_P(AppearanceField, ReadsAsItWasSet) {
  GetParam().change(appearance);
  EXPECT_TRUE(GetParam().isChanged(appearance));
}

TEST_P(AppearanceField, CountsOnceItIsSetAndNoOtherDoes) {
  GetParam().change(appearance);
  EXPECT_EQ(got<ozBitMask>(appearance, &ozAppearance::getInherit), allBut(GetParam().id));
  EXPECT_EQ(appearance.getSetMask(), only(GetParam().id));
}

TEST_P(AppearanceField, PassesAChangeOnToWhatItIsConnectedTo) {
  ozAppearance follower;
  appearance.connect(static_cast<short>(GetParam().id), &follower, static_cast<short>(GetParam().id));
  GetParam().change(appearance);
  EXPECT_TRUE(GetParam().isChanged(follower));
  EXPECT_EQ(follower.getSetMask(), only(GetParam().id));
}

TEST_P(AppearanceField, IsCopiedIntoAClone) {
  GetParam().change(appearance);
  ozAppearance *const copy = static_cast<ozAppearance *>(appearance.clone(ozContainer::CLONE_SHALLOW));
  EXPECT_TRUE(GetParam().isChanged(*copy));
  EXPECT_EQ(got<ozBitMask>(*copy, &ozAppearance::getInherit), allBut(GetParam().id));
  EXPECT_EQ(copy->getSetMask(), only(GetParam().id));
  copy->unref();
}

INSTANTIATE_TEST_SUITE_P(Each, AppearanceField, ::testing::ValuesIn(Cases),
                         [](auto const &info) { return std::string(info.param.name); });

struct EnumCase {
  int id;
  std::vector<std::string> names;
};

EnumCase const Enums[] = {
    {2, {"FAST_TEX", "NICE_TEX", "NON_PERSP_TEX", "PERSP_TEX"}},
    {4, {"MODULATE_TENV", "BLEND_TENV", "REPLACE_TENV", "ADD_TENV", "DECAL_TENV"}},
    {8, {"FLAT_SHADE", "SMOOTH_SHADE"}},
    {10, {"FAST_TRANSP", "NICE_TRANSP", "BLEND_TRANSP", "SCREEN_DOOR_TRANSP"}},
    {11,
     {"NEVER_AFUNC", "LESS_AFUNC", "EQUAL_AFUNC", "LEQUAL_AFUNC", "GREATER_AFUNC", "NOTEQUAL_AFUNC", "GEQUAL_AFUNC",
      "ALWAYS_AFUNC"}},
    {14,
     {"ZERO_SBLEND", "ONE_SBLEND", "DST_COLOR_SBLEND", "ONE_MINUS_DST_COLOR_SBLEND", "SRC_ALPHA_SATURATE_SBLEND",
      "SRC_ALPHA_SBLEND", "ONE_MINUS_SRC_ALPHA_SBLEND", "DST_ALPHA_SBLEND", "ONE_MINUS_DST_ALPHA_SBLEND"}},
    {15,
     {"ZERO_DBLEND", "ONE_DBLEND", "SRC_COLOR_DBLEND", "ONE_MINUS_SRC_COLOR_DBLEND", "SRC_ALPHA_DBLEND",
      "ONE_MINUS_SRC_ALPHA_DBLEND", "DST_ALPHA_DBLEND", "ONE_MINUS_DST_ALPHA_DBLEND"}},
    {17,
     {"NEVER_DFUNC", "LESS_DFUNC", "EQUAL_DFUNC", "LEQUAL_DFUNC", "GREATER_DFUNC", "NOTEQUAL_DFUNC", "GEQUAL_DFUNC",
      "ALWAYS_DFUNC"}},
    {20, {"POINT_PMODE", "LINE_PMODE", "FILL_PMODE"}},
    {27, {"NO_COLOR_MATERIAL", "COLOR_MATERIAL"}},
};

TEST(Appearance, NamesTheValuesOfItsEnumerationsFromZero) {
  for (EnumCase const &field : Enums) {
    ozFieldInfo *const info = ozAppearance::getClassType()->getFieldInfo(field.id);
    ASSERT_EQ(info->getEnums().getCount(), field.names.size()) << info->getName();
    for (size_t value = 0; value < field.names.size(); ++value)
      EXPECT_EQ(info->mapEnum(static_cast<int>(value)), field.names[value]);
  }
}

#define EXPECT_HACK(Name, id, number)                                                                                  \
  {                                                                                                                    \
    ozAppearance a;                                                                                                    \
    a.set##Name##Hack(number);                                                                                         \
    EXPECT_EQ(static_cast<int>(a.get##Name()), number);                                                                \
    EXPECT_EQ(a.get##Name##Hack(), number);                                                                            \
    EXPECT_EQ(a.getSetMask(), only(id));                                                                               \
  }

TEST(Appearance, TakesEnumerationsAsPlainNumbersToo) {
  EXPECT_HACK(TexMode, 2, 3);
  EXPECT_HACK(TexEnv, 4, 3);
  EXPECT_HACK(ShadeModel, 8, 0);
  EXPECT_HACK(TranspMode, 10, 3);
  EXPECT_HACK(AlphaFunc, 11, 4);
  EXPECT_HACK(SrcBlendFunc, 14, 8);
  EXPECT_HACK(DstBlendFunc, 15, 7);
  EXPECT_HACK(DepthFunc, 17, 5);
  EXPECT_HACK(PolyMode, 20, 1);
  EXPECT_HACK(MaterialModeEnable, 27, 1);
}

TEST(Appearance, KeepsANumberThatIsNoEnumerator) {
  ozAppearance appearance;
  appearance.setPolyModeHack(-7);
  EXPECT_EQ(appearance.getPolyModeHack(), -7);
}

TEST(Appearance, TakesAndGivesColoursComponentByComponent) {
  ozAppearance a;
  float r, g, b, w;
  a.setTexBlendColor(1, 2, 3, 4);
  a.getTexBlendColor(&r, &g, &b, &w);
  EXPECT_THAT((std::vector<float>{r, g, b, w}), ElementsAre(1, 2, 3, 4));
  a.setBlendColor(5, 6, 7, 8);
  a.getBlendColor(&r, &g, &b, &w);
  EXPECT_THAT((std::vector<float>{r, g, b, w}), ElementsAre(5, 6, 7, 8));
  unsigned char cr, cg, cb, ca;
  a.setColorMask(9, 10, 0, 12);
  a.getColorMask(&cr, &cg, &cb, &ca);
  EXPECT_THAT((std::vector<int>{cr, cg, cb, ca}), ElementsAre(9, 10, 0, 12));
  ozBitMask expected;
  for (int id : {3, 13, 16}) expected.onBit(id);
  EXPECT_EQ(a.getSetMask(), expected);
}

TEST(Appearance, IsAContainerNamedAppearanceWithTwentyNineFields) {
  EXPECT_STREQ(ozAppearance::getClassType()->getName(), "Appearance");
  EXPECT_EQ(ozAppearance::getClassType()->getAncestor(), ozContainer::getClassType());
  EXPECT_EQ(ozAppearance::getClassType()->getFieldInfoCount(), 29);
}

TEST(Appearance, InheritsEverythingAtFirst) {
  ozAppearance appearance;
  EXPECT_EQ(got<ozBitMask>(appearance, &ozAppearance::getInherit), ozBitMask(1));
  EXPECT_EQ(appearance.getSetMask(), ozBitMask(0));
  EXPECT_EQ(appearance.getField("inherit")->getId(), 28);
  EXPECT_EQ(appearance.getField("inherit")->getType(), ozSFBitMask::getClassType());
}

TEST(Appearance, HoldsNoCullAndOneForWhatIsNoField) {
  ozAppearance appearance;
  EXPECT_EQ(appearance.getGfx()->cullFace, ozContext::NO_CULL);
  EXPECT_EQ(appearance.getGfx()->lineWidth, 1.0f);
  EXPECT_EQ(appearance.getGfx()->pointSize, 1.0f);
}

TEST(Appearance, SettingAFieldToItsDefaultMakesItCount) {
  ozAppearance appearance;
  appearance.setTexEnable(0);
  EXPECT_EQ(appearance.getSetMask(), only(1));
}

TEST(Appearance, InheritAllOnesEmptiesTheSetMask) {
  ozAppearance appearance;
  appearance.setDepthEnable(1);
  appearance.setInherit(ozBitMask(1));
  EXPECT_EQ(appearance.getSetMask(), ozBitMask(0));
}

TEST(Appearance, InheritAllZeroesSetsAllSixtyFourBits) {
  ozAppearance appearance;
  appearance.setInherit(ozBitMask(0));
  EXPECT_EQ(appearance.getSetMask(), ozBitMask(1));
}

TEST(Appearance, AFieldSetAfterInheritCountsAgain) {
  ozAppearance appearance;
  appearance.setInherit(ozBitMask(1));
  appearance.setFogEnable(1);
  EXPECT_EQ(got<ozBitMask>(appearance, &ozAppearance::getInherit), allBut(19));
}

TEST(Appearance, GivesItsRecordOfValues) {
  ozAppearance appearance;
  appearance.setAlphaRef(0.25f);
  EXPECT_EQ(appearance.getGfx()->alphaRef, 0.25f);
  EXPECT_EQ(appearance.getGfx()->mask, allBut(12));
}

TEST(Appearance, HoldsACountOnWhatItRefersTo) {
  ozMaterial *const material = new ozMaterial;
  material->ref();
  {
    ozAppearance appearance;
    appearance.setMaterial(material);
    appearance.setBackMaterial(material);
    EXPECT_EQ(material->getRefCount(), 3u);
    EXPECT_EQ(material->getParentCount(), 2);
    appearance.setMaterial(nullptr);
    EXPECT_EQ(material->getRefCount(), 2u);
  }
  EXPECT_EQ(material->getRefCount(), 1u);
  EXPECT_EQ(material->getParentCount(), 0);
  material->unref();
}

TEST(Appearance, SettingTheSameMaterialAgainKeepsItAlive) {
  ozMaterial *const material = new ozMaterial;
  ozAppearance appearance;
  appearance.setMaterial(material);
  appearance.setMaterial(material);
  EXPECT_EQ(material->getRefCount(), 1u);
}

TEST(Appearance, RefusesAnObjectOfAnotherClassThroughAField) {
  ozAppearance appearance, other;
  other.ref();
  stderrOf([&] { static_cast<ozSFRef *>(appearance.getField("material"))->set(&other); });
  EXPECT_EQ(appearance.getMaterial(), nullptr);
}

TEST(Appearance, AnAssignmentTakesOverTheMasks) {
  ozAppearance from, to;
  from.setPolyMode(ozContext::LINE_PMODE);
  to = from;
  EXPECT_EQ(to.getPolyMode(), ozContext::LINE_PMODE);
  EXPECT_EQ(to.getSetMask(), only(20));
}

TEST(Appearance, ACopyTakesOverTheMasks) {
  ozAppearance from;
  from.setPolyMode(ozContext::POINT_PMODE);
  ozAppearance to(from);
  EXPECT_EQ(to.getPolyMode(), ozContext::POINT_PMODE);
  EXPECT_EQ(to.getSetMask(), only(20));
}

TEST(Appearance, ACopyCountsWhatItRefersToAndIsAnObjectOfItsOwn) {
  ozMaterial *const material = new ozMaterial;
  ozAppearance from;
  from.ref();
  from.setMaterial(material);
  {
    ozAppearance to(from), assigned;
    assigned.setMaterial(new ozMaterial);
    assigned = from;
    EXPECT_EQ(to.getRefCount(), 0u);
    EXPECT_EQ(to.getMaterial(), material);
    EXPECT_EQ(assigned.getMaterial(), material);
    EXPECT_EQ(material->getRefCount(), 3u);
  }
  EXPECT_EQ(material->getRefCount(), 1u);
}

TEST(Appearance, AnAssignmentIsAnnounced) {
  ozAppearance from, to, follower;
  to.connect(12, &follower, 12);
  from.setAlphaRef(0.5f);
  to = from;
  EXPECT_EQ(follower.getAlphaRef(), 0.5f);
}

TEST(Appearance, MakesAnotherOfItsClass) {
  ozAppearance appearance;
  ozContainer *const made = appearance.instantiate();
  EXPECT_EQ(made->getType(), ozAppearance::getClassType());
  made->unref();
}

} // namespace
