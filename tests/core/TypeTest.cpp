#include <gtest/gtest.h>

#include <string>

#include "testContainers.h"

namespace {

ozFieldInfo *addNumber(ozType *type, char const *name, short id) {
  ozSFInt::addTypeField(type, name, id, 0, nullptr);
  return type->getFieldInfo(id);
}

TEST(Type, IsDerivedFromItselfAndItsAncestors) {
  ozType *const thing = Thing::getClassType(), *const special = SpecialThing::getClassType();
  EXPECT_TRUE(special->isDerivedFrom(special));
  EXPECT_TRUE(special->isDerivedFrom(thing));
  EXPECT_TRUE(special->isDerivedFrom(ozContainer::getClassType()));
  EXPECT_TRUE(special->isDerivedFrom(ozObject::getClassType()));
  EXPECT_FALSE(thing->isDerivedFrom(special));
  EXPECT_FALSE(special->isDerivedFrom(Stranger::getClassType()));
}

TEST(Type, IsNotDerivedFromNull) { EXPECT_FALSE(Thing::getClassType()->isDerivedFrom(nullptr)); }

TEST(Type, KnowsItsAncestorAndName) {
  EXPECT_EQ(Thing::getClassType(), SpecialThing::getClassType()->getAncestor());
  EXPECT_EQ(nullptr, ozObject::getClassType()->getAncestor());
  EXPECT_EQ(nullptr, ozField::getClassType()->getAncestor());
  EXPECT_STREQ("SpecialThing", SpecialThing::getClassType()->getName());
}

TEST(Type, KeepsACopyOfItsName) {
  char name[] = "TypeTestCopied";
  ozType *const type = new ozType(nullptr, name);
  name[0] = 'X';
  EXPECT_STREQ("TypeTestCopied", type->getName());
  EXPECT_EQ(type, ozType::getType("TypeTestCopied"));
}

TEST(Type, ListsItsDirectDescendentsInOrderOfRegistration) {
  ozType *const root = new ozType(nullptr, "TypeTestRoot");
  EXPECT_EQ(0, root->getDescendentCount());
  ozType *const first = new ozType(root, "TypeTestFirst"), *const second = new ozType(root, "TypeTestSecond");
  new ozType(first, "TypeTestGrandchild");
  ASSERT_EQ(2, root->getDescendentCount());
  EXPECT_EQ(first, root->getDescendent(0));
  EXPECT_EQ(second, root->getDescendent(1));
  EXPECT_EQ(1, first->getDescendentCount());
}

TEST(Type, AddDescendentAppends) {
  ozType *const root = new ozType(nullptr, "TypeTestAdds"), *const other = new ozType(nullptr, "TypeTestAdded");
  root->addDescendent(other);
  ASSERT_EQ(1, root->getDescendentCount());
  EXPECT_EQ(other, root->getDescendent(0));
}

TEST(Type, ALaterClassTakesASharedNameOverAndTheNameCountsOnce) {
  ozType *const first = new ozType(nullptr, "TypeTestShared");
  int const count = ozType::getNumTypes();
  ozType *const second = new ozType(nullptr, "TypeTestShared");
  EXPECT_EQ(count, ozType::getNumTypes());
  EXPECT_EQ(second, ozType::getType("TypeTestShared"));
  EXPECT_STREQ("TypeTestShared", first->getName());
}

TEST(Type, ANameThatWasNeverRegisteredFindsNothingAndChangesNothing) {
  int const count = ozType::getNumTypes();
  EXPECT_EQ(nullptr, ozType::getType("TypeTestNever"));
  EXPECT_EQ(nullptr, ozType::getType("thing")) << "case counts";
  EXPECT_EQ(count, ozType::getNumTypes());
}

TEST(Type, EachIndexBelowTheCountFindsARegisteredClassAndNoneBeyond) {
  Thing::getClassType();
  int const count = ozType::getNumTypes();
  ASSERT_GT(count, 0);
  for (int i = 0; i < count; ++i) {
    ASSERT_NE(nullptr, ozType::getType(i));
    EXPECT_EQ(ozType::getType(i), ozType::getType(ozType::getType(i)->getName()));
  }
  EXPECT_EQ(nullptr, ozType::getType(count));
  EXPECT_EQ(nullptr, ozType::getType(-1));
}

TEST(Type, ASubclassSharesTheFieldDescriptionsOfItsAncestor) {
  ozType *const thing = Thing::getClassType(), *const special = SpecialThing::getClassType();
  EXPECT_EQ(thing->getFieldInfoCount() + 1, special->getFieldInfoCount());
  EXPECT_EQ(thing->getFieldInfoCount(), special->getAncestorFieldCount());
  for (int id = 0; id < thing->getFieldInfoCount(); ++id) {
    EXPECT_EQ(thing->getFieldInfo(id), special->getFieldInfo(id));
    EXPECT_TRUE(special->isAncestorField(static_cast<short>(id)));
    EXPECT_FALSE(thing->isAncestorField(static_cast<short>(id)));
  }
  EXPECT_FALSE(special->isAncestorField(static_cast<short>(thing->getFieldInfoCount())));
}

TEST(Type, AFieldOfAnInheritedIdIsReplacedForTheClassAndItsLaterSubclassesOnly) {
  ozType *const base = new ozType(nullptr, "TypeTestBase");
  ozFieldInfo *const inherited = addNumber(base, "number", 0);
  ozType *const early = new ozType(base, "TypeTestEarly"), *const below = new ozType(early, "TypeTestBelow");
  ozFieldInfo *const own = addNumber(early, "own", 0);
  ozType *const late = new ozType(early, "TypeTestLate");
  EXPECT_NE(inherited, own);
  EXPECT_EQ(inherited, base->getFieldInfo(0));
  EXPECT_EQ(inherited, below->getFieldInfo(0));
  EXPECT_EQ(own, early->getFieldInfo(0));
  EXPECT_EQ(own, late->getFieldInfo(0));
  EXPECT_EQ(1, early->getFieldInfoCount());
}

TEST(Type, FieldsAddedLaterDoNotReachDescendents) {
  ozType *const base = new ozType(nullptr, "TypeTestGrows"), *const below = new ozType(base, "TypeTestStays");
  addNumber(base, "number", 0);
  EXPECT_EQ(1, base->getFieldInfoCount());
  EXPECT_EQ(0, below->getFieldInfoCount());
}

TEST(Type, TheFieldCountIsAboveTheHighestIdThatWasSet) {
  ozType *const type = new ozType(nullptr, "TypeTestTable");
  ozFieldInfo *const fourth = addNumber(type, "fourth", 4);
  EXPECT_EQ(5, type->getFieldInfoCount());
  for (short id = 0; id < 4; ++id) addNumber(type, "other", id);
  EXPECT_EQ(5, type->getFieldInfoCount());
  EXPECT_EQ(fourth, type->getFieldInfo(4));
}

TEST(Type, EnumerationsAreDefinedInOrderAndMapped) {
  ozType *const type = new ozType(nullptr, "TypeTestEnums");
  ozSFEnum::addTypeField(type, "mode", 0, 0, nullptr);
  char const *names[] = {"ONE", "TWO", "ALSO_TWO"};
  int const values[] = {1, 2, 2};
  type->defineEnums(0, 3, names, values);
  EXPECT_EQ(3u, type->getFieldInfo(0)->getEnums().getCount());
  EXPECT_STREQ("ONE", type->mapEnum(0, 1));
  EXPECT_STREQ("TWO", type->mapEnum(0, 2)) << "the first of two names wins";
  EXPECT_STREQ("(nameless)", type->mapEnum(0, 3));
}

std::string idsOf(ozShortArray const &ids) {
  std::string text;
  for (unsigned int i = 0; i < ids.getCount(); ++i) text += std::to_string(ids[i]) + " ";
  return text;
}

TEST(Type, EngineListsBeginWithTheAncestorsAndAreSizedExactly) {
  ozType *const base = new ozType(nullptr, "TypeTestEngine"), *const below = new ozType(base, "TypeTestEngineBelow");
  short in[] = {1, 2}, out[] = {3}, inBelow[] = {4}, outBelow[] = {5, 6};
  base->setEngineIO(2, in, 1, out);
  below->setEngineIO(1, inBelow, 2, outBelow);
  EXPECT_EQ("1 2 ", idsOf(base->getEngineInputs()));
  EXPECT_EQ("3 ", idsOf(base->getEngineOutputs()));
  EXPECT_EQ("1 2 4 ", idsOf(below->getEngineInputs()));
  EXPECT_EQ("3 5 6 ", idsOf(below->getEngineOutputs()));
  EXPECT_EQ(3u, below->getEngineInputs().getSize());
  EXPECT_EQ(3u, below->getEngineOutputs().getSize());
}

TEST(Type, EngineListsMayBeEmpty) {
  ozType *const type = new ozType(nullptr, "TypeTestNoEngine");
  EXPECT_EQ("", idsOf(type->getEngineInputs()));
  type->setEngineIO(0, nullptr, 0, nullptr);
  EXPECT_EQ("", idsOf(type->getEngineInputs()));
  EXPECT_EQ("", idsOf(type->getEngineOutputs()));
}

TEST(Type, UserDataStartsNullAndIsTheApplications) {
  ozType *const type = new ozType(nullptr, "TypeTestData");
  int data = 0;
  EXPECT_EQ(nullptr, type->getUserData());
  type->setUserData(&data);
  EXPECT_EQ(&data, type->getUserData());
}

TEST(Type, EveryClassHasAnObjectIdFieldClassesToo) {
  EXPECT_GE(ozSFInt::getClassType()->getObjectID(), 0);
  EXPECT_EQ(-1, ozSFInt::getClassType()->getDispatchID());
  EXPECT_GE(ozDispatch::getClassType()->getDispatchID(), 0);
}

TEST(Type, ObjectIdsAreGivenInOrder) {
  ozType *const first = new ozType(nullptr, "TypeTestId1"), *const second = new ozType(nullptr, "TypeTestId2");
  EXPECT_EQ(first->getObjectID() + 1, second->getObjectID());
}

TEST(Type, ItsIdsCanBeSet) {
  ozType *const type = new ozType(nullptr, "TypeTestIds");
  int const id = type->getObjectID();
  type->setObjectID(12);
  type->setDispatchID(13);
  EXPECT_EQ(12, type->getObjectID());
  EXPECT_EQ(13, type->getDispatchID());
  type->setObjectID(id);
  type->setDispatchID(-1);
}

struct Named {
  ozType *(*getClassType)();
  char const *name;
  ozType *(*getAncestor)();
};

TEST(Type, CoreClassesCarryTheirNamesAndAncestors) {
  Named const classes[] = {
      {ozData::getClassType, "Data", ozObject::getClassType},
      {ozContainer::getClassType, "Container", ozObject::getClassType},
      {ozDispatch::getClassType, "ozDispatch", ozObject::getClassType},
      {ozMField::getClassType, "ozMField", ozField::getClassType},
      {ozSFRef::getClassType, "ozSFRef", ozField::getClassType},
      {ozMFRef::getClassType, "ozMFRef", ozMField::getClassType},
  };
  for (Named const &named : classes) {
    EXPECT_STREQ(named.name, named.getClassType()->getName());
    EXPECT_EQ(named.getAncestor(), named.getClassType()->getAncestor());
  }
  EXPECT_STREQ("Object", ozObject::getClassType()->getName());
  EXPECT_STREQ("ozField", ozField::getClassType()->getName());
}

} // namespace
