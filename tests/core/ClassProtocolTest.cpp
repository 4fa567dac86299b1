#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "core/testContainers.h"

// A class with three fields, whole. The first test counts its lines.
class Lamp : public ozContainer {
  OZ_CLASS(Lamp);

public:
  Lamp();
  OZ_VALUE_ACCESS(float, Power, 0, _power)
  OZ_VALUE_ACCESS(int, Switch, 1, _switch)
  OZ_VEC3F_ACCESS(Place, 2, _place)
private:
  float _power;
  int _switch;
  ozVec3f _place;
};
OZ_DEFINE_CLASS(Lamp, "Lamp", ozContainer) {
  ozSFFloat::addTypeField(type, "power", 0, 60.0f, &Lamp::_power);
  ozSFInt::addTypeField(type, "switch", 1, 1, &Lamp::_switch);
  ozSFVec3f::addTypeField(type, "place", 2, ozVec3f(0, 2, 0), &Lamp::_place);
}
// The end of the class.

namespace {

TEST(ClassProtocol, AClassWithThreeFieldsTakesUnderTwentyLines) {
  std::ifstream source(OZ_SOURCE_DIR "/tests/core/ClassProtocolTest.cpp");
  std::string line;
  int lines = 0;
  bool inside = false;
  while (std::getline(source, line) && line != "// The end of the class.") {
    if (line == "class Lamp : public ozContainer {") inside = true;
    lines += inside && !line.empty();
  }
  EXPECT_GT(lines, 10);
  EXPECT_LT(lines, 20);
}

TEST(ClassProtocol, TheClassHasItsNameParentAndFields) {
  ozType *const type = Lamp::getClassType();
  EXPECT_STREQ("Lamp", type->getName());
  EXPECT_EQ(type, ozType::getType("Lamp"));
  EXPECT_EQ(ozContainer::getClassType(), type->getAncestor());
  ASSERT_EQ(3, type->getFieldInfoCount());
  EXPECT_STREQ("power", type->getFieldInfo(0)->getName());
  EXPECT_STREQ("place", type->getFieldInfo(2)->getName());
  Lamp::initClass();
  EXPECT_EQ(type, Lamp::getClassType()) << "it registers once";
}

TEST(ClassProtocol, AnObjectStartsAtTheDefaultsAndItsAccessorsWork) {
  Lamp lamp;
  EXPECT_EQ(60.0f, lamp.getPower());
  EXPECT_EQ(1, lamp.getSwitch());
  lamp.setPower(25);
  lamp.setPlace(1, 2, 3);
  float x, y, z;
  lamp.getPlace(&x, &y, &z);
  EXPECT_EQ(25.0f, lamp.getPower());
  EXPECT_EQ(3.0f, z);
}

TEST(ClassProtocol, ASetterReachesAConnectedField) {
  Lamp from, to;
  from.connect(0, &to, 0);
  from.setPower(12);
  EXPECT_EQ(12.0f, to.getPower());
}

TEST(ClassProtocol, InstantiateMakesAnEmptyObjectOfTheSameClass) {
  Lamp lamp;
  lamp.setPower(25);
  ozContainer *const made = lamp.instantiate();
  EXPECT_EQ(Lamp::getClassType(), made->getType());
  EXPECT_EQ(60.0f, static_cast<Lamp *>(made)->getPower());
  EXPECT_EQ(0u, made->getRefCount());
  made->unref();
}

TEST(ClassProtocol, ItWritesAndClonesItself) {
  Lamp lamp;
  lamp.setSwitch(0);
  EXPECT_EQ("\nLamp {\n  switch 0\n}", textOf(&lamp));
  ozContainer *const copy = lamp.clone(ozContainer::CLONE_DEEP);
  EXPECT_EQ("\nLamp {\n  switch 0\n}", textOf(copy));
  copy->unref();
}

TEST(ClassProtocol, ASubclassTakesTheDefaultsOfEachLevel) {
  SpecialThing thing;
  EXPECT_EQ(7, thing._number);
  EXPECT_EQ(3, thing._extra);
  EXPECT_EQ(SpecialThing::getClassType(), thing.getType());
  EXPECT_FALSE(thing.getField(0)->isDirty());
}

} // namespace
