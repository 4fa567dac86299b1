// The fields of the lights and of fog.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "oz/OzScene3D.h"

namespace {

#define EXPECT_FIELD(object, name, id, Field)                                                                          \
  {                                                                                                                    \
    ozField *const field = (object).getField(name);                                                                    \
    ASSERT_TRUE(field);                                                                                                \
    EXPECT_EQ(field->getId(), id);                                                                                     \
    EXPECT_EQ(field->getType(), Field::getClassType());                                                                \
  }

#define EXPECT_VALUE(object, Name, unset, other)                                                                       \
  EXPECT_EQ((object).get##Name(), unset);                                                                              \
  (object).set##Name(other);                                                                                           \
  EXPECT_EQ((object).get##Name(), other);

#define EXPECT_VEC3F(object, Name, unset)                                                                              \
  {                                                                                                                    \
    ozVec3f value;                                                                                                     \
    float x, y, z;                                                                                                     \
    (object).get##Name(value);                                                                                         \
    EXPECT_EQ(value, unset);                                                                                           \
    (object).set##Name(ozVec3f(7, 8, 9));                                                                              \
    (object).get##Name(&x, &y, &z);                                                                                    \
    EXPECT_EQ(ozVec3f(x, y, z), ozVec3f(7, 8, 9));                                                                     \
    (object).set##Name(1, 2, 3);                                                                                       \
    (object).get##Name(value);                                                                                         \
    EXPECT_EQ(value, ozVec3f(1, 2, 3));                                                                                \
  }

template <class Light> void expectLightFields(char const *name, int fieldCount) {
  Light light;
  EXPECT_STREQ(light.getType()->getName(), name);
  EXPECT_EQ(light.getType()->getFieldInfoCount(), fieldCount);
  EXPECT_FIELD(light, "on", 2, ozSFUByte);
  EXPECT_FIELD(light, "intensity", 3, ozSFFloat);
  EXPECT_FIELD(light, "ambientIntensity", 4, ozSFFloat);
  EXPECT_FIELD(light, "color", 5, ozSFVec3f);
  EXPECT_VALUE(light, On, 1, 0);
  EXPECT_VALUE(light, Intensity, 1.0f, 0.5f);
  EXPECT_VALUE(light, AmbientIntensity, 0.0f, 0.25f);
  EXPECT_VEC3F(light, Color, ozVec3f(1, 1, 1));
}

TEST(Light, EveryLightHasAColourAndIntensities) {
  expectLightFields<ozDirectionalLight>("DirectionalLight", 7);
  expectLightFields<ozPointLight>("PointLight", 9);
  expectLightFields<ozSpotLight>("SpotLight", 12);
  EXPECT_STREQ(ozLight::getClassType()->getName(), "Light");
  EXPECT_EQ(ozLight::getClassType()->getAncestor(), ozNode::getClassType());
  EXPECT_EQ(ozSpotLight::getClassType()->getAncestor(), ozPointLight::getClassType());
}

TEST(Light, ADirectionalOneHasADirection) {
  ozDirectionalLight light;
  EXPECT_FIELD(light, "direction", 6, ozSFVec3f);
  EXPECT_VEC3F(light, Direction, ozVec3f(0, 0, -1));
}

template <class Light> void expectPointFields() {
  Light light;
  EXPECT_FIELD(light, "location", 6, ozSFVec3f);
  EXPECT_FIELD(light, "radius", 7, ozSFFloat);
  EXPECT_FIELD(light, "attenuation", 8, ozSFVec3f);
  EXPECT_VEC3F(light, Location, ozVec3f(0, 0, 0));
  EXPECT_VALUE(light, Radius, 100.0f, 5.0f);
  EXPECT_VEC3F(light, Attenuation, ozVec3f(1, 0, 0));
}

TEST(Light, APointOneHasALocationARadiusAndAnAttenuation) {
  expectPointFields<ozPointLight>();
  expectPointFields<ozSpotLight>();
}

TEST(Light, ASpotHasADirectionAndACone) {
  ozSpotLight light;
  EXPECT_FIELD(light, "direction", 9, ozSFVec3f);
  EXPECT_FIELD(light, "exponent", 10, ozSFFloat);
  EXPECT_FIELD(light, "cutOffAngle", 11, ozSFFloat);
  EXPECT_VEC3F(light, Direction, ozVec3f(0, 0, -1));
  EXPECT_VALUE(light, Exponent, 0.0f, 64.0f);
  EXPECT_VALUE(light, CutOffAngle, 180.0f, 45.0f);
}

TEST(Light, AnnouncesTheFieldsOfEveryLight) {
  ozPointLight light, follower;
  light.connect(3, &follower, 3);
  light.setIntensity(0.5f);
  EXPECT_EQ(follower.getIntensity(), 0.5f);
}

TEST(Light, DoesNotAnnounceTheFieldsOfItsKind) {
  ozPointLight light, follower;
  light.connect(7, &follower, 7);
  EXPECT_EQ(follower.getRadius(), 100.0f);
  light.setRadius(5);
  EXPECT_EQ(follower.getRadius(), 100.0f);
}

// An application's own kind of light, with a field more.
class Lamp : public ozSpotLight {
  OZ_CLASS(Lamp);

public:
  Lamp();
  OZ_VALUE_ACCESS(int, Watts, 12, _watts)

private:
  int _watts;
};
OZ_DEFINE_CLASS(Lamp, "Lamp", ozSpotLight) { ozSFInt::addTypeField(type, "watts", 12, 60, &Lamp::_watts); }

TEST(Light, AnnouncesTheFieldOfASubclass) {
  Lamp lamp, follower;
  lamp.connect(12, &follower, 12);
  lamp.setWatts(100);
  EXPECT_EQ(follower.getWatts(), 100);
}

TEST(Light, TakesAValueOverAConnectionIntoAnyField) {
  ozPointLight source;
  ozSpotLight light;
  source.connect(3, &light, 10);
  source.setIntensity(0.5f);
  EXPECT_EQ(light.getExponent(), 0.5f);
}

TEST(Light, TellsWhenTheLastReferenceHasGone) {
  ozPointLight *const light = new ozPointLight;
  light->ref();
  light->ref();
  EXPECT_EQ(light->unref(), 0);
  EXPECT_EQ(light->unref(), 1);
}

TEST(Fog, HasSevenFieldsOfItsOwn) {
  ozFog fog;
  EXPECT_STREQ(fog.getType()->getName(), "Fog");
  EXPECT_EQ(fog.getType()->getFieldInfoCount(), 9);
  EXPECT_FIELD(fog, "on", 2, ozSFUByte);
  EXPECT_FIELD(fog, "mode", 3, ozSFEnum);
  EXPECT_FIELD(fog, "density", 4, ozSFFloat);
  EXPECT_FIELD(fog, "start", 5, ozSFFloat);
  EXPECT_FIELD(fog, "end", 6, ozSFFloat);
  EXPECT_FIELD(fog, "index", 7, ozSFFloat);
  EXPECT_FIELD(fog, "color", 8, ozSFVec4f);
}

TEST(Fog, ReadsAsItWasSet) {
  ozFog fog;
  EXPECT_VALUE(fog, On, 1, 0);
  EXPECT_VALUE(fog, Mode, ozFog::EXP_FOG, ozFog::LINEAR_FOG);
  EXPECT_VALUE(fog, ModeHack, 0, 2);
  EXPECT_EQ(fog.getMode(), ozFog::EXP2_FOG);
  EXPECT_VALUE(fog, Density, 1.0f, 0.5f);
  EXPECT_VALUE(fog, Start, 0.0f, 2.0f);
  EXPECT_VALUE(fog, End, 1.0f, 3.0f);
  EXPECT_VALUE(fog, Index, 1.0f, 4.0f);
  ozVec4f color;
  float r, g, b, a;
  fog.getColor(color);
  EXPECT_EQ(color, ozVec4f(0, 0, 0, 0));
  fog.setColor(ozVec4f(1, 2, 3, 4));
  fog.getColor(&r, &g, &b, &a);
  EXPECT_EQ(ozVec4f(r, g, b, a), ozVec4f(1, 2, 3, 4));
  fog.setColor(5, 6, 7, 8);
  fog.getColor(color);
  EXPECT_EQ(color, ozVec4f(5, 6, 7, 8));
}

TEST(Fog, NamesItsModes) {
  ozType *const type = ozFog::getClassType();
  EXPECT_STREQ(type->mapEnum(3, 0), "LINEAR_FOG");
  EXPECT_STREQ(type->mapEnum(3, 1), "EXP_FOG");
  EXPECT_STREQ(type->mapEnum(3, 2), "EXP2_FOG");
}

TEST(Fog, AnnouncesItsFields) {
  ozFog fog, follower;
  fog.connect(4, &follower, 4);
  fog.setDensity(0.5f);
  EXPECT_EQ(follower.getDensity(), 0.5f);
}

} // namespace
