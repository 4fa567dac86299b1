#include <gtest/gtest.h>

#include <set>

#include "oz/OzScene3D.h"

// The registry fills once in a process, so these tests build on each other in this order.

namespace {

TEST(TypeRegistry, IsEmptyBeforeAnyRegistration) {
  EXPECT_EQ(0, ozType::getNumTypes());
  EXPECT_EQ(nullptr, ozType::getType("Object"));
  EXPECT_EQ(nullptr, ozType::getType(0));
  EXPECT_EQ(0, ozType::getNumTypes());
}

TEST(TypeRegistry, ObjectComesFirstWhateverIsAskedFor) {
  ozType *const field = ozField::getClassType();
  ASSERT_NE(nullptr, field);
  EXPECT_EQ(nullptr, field->getAncestor());
  EXPECT_EQ(0, ozObject::getClassType()->getObjectID());
  EXPECT_EQ(1, field->getObjectID());
  EXPECT_EQ(2, ozType::getNumTypes());
}

TEST(TypeRegistry, AClassRegistersItsParentsFirst) {
  int const before = ozType::getNumTypes();
  ozType *const type = ozMFVec3f::getClassType();
  EXPECT_EQ(before + 2, ozType::getNumTypes());
  EXPECT_EQ(ozMField::getClassType()->getObjectID() + 1, type->getObjectID());
}

TEST(TypeRegistry, InitClassesRegistersEveryListedClassAndASecondCallReturnsAtOnce) {
  ozObject::initClasses();
  int const count = ozType::getNumTypes();
  ozObject::initClasses();
  EXPECT_EQ(count, ozType::getNumTypes());
  for (char const *name :
       {"Object",      "Data",        "Container", "Context",      "ozField",     "ozMField",   "ozSFRef",
        "ozMFRef",     "Image",       "Texture",   "TexGen",       "Material",    "Appearance", "Camera",
        "OrthoCamera", "PerspCamera", "ozAction",  "ozDrawAction", "IsectAction", "Hit"})
    EXPECT_NE(nullptr, ozType::getType(name)) << name;
}

template <class Single, class Multi> void expectShared(char const *name) {
  ozType *const found = ozType::getType(name);
  ozType *const later = Single::getClassType()->getObjectID() > Multi::getClassType()->getObjectID()
                            ? Single::getClassType()
                            : Multi::getClassType();
  EXPECT_EQ(later, found) << name << ": the class that registers later holds it";
  EXPECT_NE(Single::getClassType(), Multi::getClassType());
  EXPECT_STREQ(name, Single::getClassType()->getName());
  EXPECT_STREQ(name, Multi::getClassType()->getName());
  EXPECT_EQ(ozField::getClassType(), Single::getClassType()->getAncestor());
  EXPECT_EQ(ozMField::getClassType(), Multi::getClassType()->getAncestor());
}

template <class Single> void expectOwn(char const *name) {
  EXPECT_EQ(Single::getClassType(), ozType::getType(name)) << name;
  EXPECT_EQ(ozField::getClassType(), Single::getClassType()->getAncestor());
}

// Fields were touched above out of the listed order; both classes of a pair stay alive and correct all the same.
TEST(TypeRegistry, ThePairsOfFieldClassesShareANameAndTheLaterOneHoldsIt) {
  expectShared<ozSFByte, ozMFByte>("ozByte");
  expectShared<ozSFUByte, ozMFUByte>("ozUByte");
  expectShared<ozSFShort, ozMFShort>("ozShort");
  expectShared<ozSFInt, ozMFInt>("ozInt");
  expectShared<ozSFUInt, ozMFUInt>("ozUInt");
  expectShared<ozSFFloat, ozMFFloat>("ozFloat");
  expectShared<ozSFVec2f, ozMFVec2f>("ozVec2f");
  expectShared<ozSFVec4f, ozMFVec4f>("ozVec4f");
  expectShared<ozSFVec2s, ozMFVec2s>("ozVec2s");
  expectShared<ozSFVec3s, ozMFVec3s>("ozVec3s");
  expectShared<ozSFVec2i, ozMFVec2i>("ozVec2i");
  expectShared<ozSFVec3i, ozMFVec3i>("ozVec3i");
  expectShared<ozSFVec3b, ozMFVec3b>("ozVec3b");
  expectShared<ozSFVec4ub, ozMFVec4ub>("ozVec4ub");
  expectShared<ozSFMatrix4f, ozMFMatrix4f>("ozMatrix4f");
  expectShared<ozSFRotation, ozMFRotation>("ozRotation");
  expectShared<ozSFString, ozMFString>("ozString");
}

TEST(TypeRegistry, TheClassThatRegisteredLaterHoldsTheNameEvenIfItIsTheSingleValuedOne) {
  EXPECT_GT(ozSFVec3f::getClassType()->getObjectID(), ozMFVec3f::getClassType()->getObjectID());
  EXPECT_EQ(ozSFVec3f::getClassType(), ozType::getType("ozVec3f"));
  EXPECT_STREQ("ozVec3f", ozMFVec3f::getClassType()->getName());
}

TEST(TypeRegistry, SingleValuedFieldClassesWithoutAPairHoldTheirNames) {
  expectOwn<ozSFDouble>("ozDouble");
  expectOwn<ozSFEnum>("ozEnum");
  expectOwn<ozSFBitMask>("ozBitMask");
  expectOwn<ozSFName>("ozName");
  expectOwn<ozSFTime>("ozTime");
  expectOwn<ozSFSphereBound>("ozSphereBound");
  expectOwn<ozSFBoxBound>("ozBoxBound");
}

TEST(TypeRegistry, ParentsHaveLowerObjectIdsThanTheirChildrenAndNoIdIsGivenTwice) {
  std::set<int> ids;
  for (int i = 0; i < ozType::getNumTypes(); ++i) {
    ozType *const type = ozType::getType(i);
    EXPECT_TRUE(ids.insert(type->getObjectID()).second) << type->getName();
    if (!type->getAncestor()) continue;
    EXPECT_LT(type->getAncestor()->getObjectID(), type->getObjectID()) << type->getName();
  }
}

} // namespace
