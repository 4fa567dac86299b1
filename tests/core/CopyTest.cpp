#include <gtest/gtest.h>

#include "testContainers.h"

namespace {

class CopyTest : public ::testing::Test {
protected:
  void SetUp() override { _alive = Thing::Alive; }
  void TearDown() override { EXPECT_EQ(_alive, Thing::Alive); }
  int _alive;
};

TEST_F(CopyTest, ACopyTakesOverAllFieldsAndCallsFieldChangedForEach) {
  Thing from, to;
  from.setNumber(5);
  from.setValue(2.5f);
  ozVec3f const points[] = {ozVec3f(1, 2, 3), ozVec3f(4, 5, 6)};
  from.points()->setRange(0, 2, points);
  to.copy(&from);
  EXPECT_EQ(5, to._number);
  EXPECT_EQ(2.5f, to._value);
  ASSERT_EQ(2u, to._points.getCount());
  EXPECT_TRUE(to._points[1] == points[1]);
  EXPECT_EQ(static_cast<size_t>(to.getType()->getFieldInfoCount()), to.changes.size());
}

TEST_F(CopyTest, ACopyOntoAClassWithFewerFieldsTakesTheSharedIds) {
  SpecialThing from;
  Thing to;
  from.setNumber(5);
  to.copy(&from);
  EXPECT_EQ(5, to._number);
}

TEST_F(CopyTest, ANameIsDuplicatedAndASourceWithoutOneLeavesIt) {
  Thing from, to;
  to.setName("old");
  to.copy(&from);
  EXPECT_STREQ("old", to.getName());
  from.setName("new");
  to.copy(&from);
  EXPECT_STREQ("new", to.getName());
  EXPECT_NE(from.getName(), to.getName());
}

TEST_F(CopyTest, AShallowCloneSharesChildrenAndUserData) {
  Thing *const from = new Thing, *const child = new Thing;
  from->ref();
  from->setOther(child);
  from->others()->append(child);
  from->setUserData(new (4) ozData);
  Thing *const copy = static_cast<Thing *>(from->clone(ozContainer::CLONE_SHALLOW));
  EXPECT_EQ(0u, copy->getRefCount());
  EXPECT_EQ(child, copy->getOther());
  EXPECT_EQ(child, copy->others()->get(0));
  EXPECT_EQ(4, child->getParentCount());
  EXPECT_EQ(from->getUserData(), copy->getUserData());
  copy->unref();
  EXPECT_EQ(2, child->getParentCount());
  from->unref();
}

TEST_F(CopyTest, ADeepCloneKeepsSharedObjectsShared) {
  Thing *const root = new Thing, *const shared = new Thing;
  root->ref();
  shared->setNumber(77);
  for (int i = 0; i < 3; ++i) {
    Thing *const middle = new Thing;
    middle->setOther(shared);
    root->others()->append(middle);
  }
  root->others()->append(nullptr);
  ozData *const data = new (4) ozData;
  root->setUserData(data);
  Thing *const copy = static_cast<Thing *>(root->clone(ozContainer::CLONE_DEEP));
  ASSERT_EQ(4u, copy->others()->getCount());
  ozContainer *const sharedCopy = static_cast<Thing *>(copy->others()->get(0))->getOther();
  EXPECT_NE(shared, sharedCopy);
  EXPECT_EQ(77, static_cast<Thing *>(sharedCopy)->getNumber());
  EXPECT_EQ(sharedCopy, static_cast<Thing *>(copy->others()->get(1))->getOther());
  EXPECT_EQ(sharedCopy, static_cast<Thing *>(copy->others()->get(2))->getOther());
  EXPECT_EQ(nullptr, copy->others()->get(3));
  EXPECT_EQ(3, sharedCopy->getParentCount());
  EXPECT_EQ(3, shared->getParentCount());
  EXPECT_NE(data, copy->getUserData());
  EXPECT_EQ(4, copy->getUserData()->getSize());
  copy->unref();
  root->unref();
}

// Two children of one root, the first feeding the second, or the reverse.
class CopiedConnection : public CopyTest, public ::testing::WithParamInterface<bool> {};

TEST_P(CopiedConnection, AConnectionInsideACloneIsBetweenTheCopiesAndTheSourceIsAsItWas) {
  Thing *const root = new Thing, *const first = new Thing, *const second = new Thing;
  root->ref();
  root->others()->append(first);
  root->others()->append(second);
  Thing *const from = GetParam() ? first : second, *const to = GetParam() ? second : first;
  from->connect(Thing::NUMBER, to, Thing::NUMBER);
  from->setNumber(31);
  to->getNumber();

  Thing *const copy = static_cast<Thing *>(root->clone(ozContainer::CLONE_DEEP));
  Thing *const fromCopy = static_cast<Thing *>(copy->others()->get(GetParam() ? 0 : 1));
  Thing *const toCopy = static_cast<Thing *>(copy->others()->get(GetParam() ? 1 : 0));

  ASSERT_EQ(1u, from->number()->getOutputs()->getCount());
  EXPECT_EQ(to->number(), from->number()->getOutputs()->get(0));
  ASSERT_EQ(1u, to->number()->getInputs()->getCount());
  EXPECT_EQ(from->number(), to->number()->getSource());
  EXPECT_FALSE(to->number()->isDirty());
  EXPECT_FALSE(to->hasPendingFields());
  ASSERT_EQ(1u, toCopy->number()->getInputs()->getCount());
  EXPECT_EQ(fromCopy->number(), toCopy->number()->getInputs()->get(0));
  ASSERT_EQ(1u, fromCopy->number()->getOutputs()->getCount());

  EXPECT_EQ(31, toCopy->getNumber());
  fromCopy->setNumber(32);
  EXPECT_EQ(32, toCopy->getNumber());
  EXPECT_EQ(31, to->getNumber());
  from->setNumber(33);
  EXPECT_EQ(33, to->getNumber());
  EXPECT_EQ(32, toCopy->getNumber());
  copy->unref();
  root->unref();
}

INSTANTIATE_TEST_SUITE_P(Order, CopiedConnection, ::testing::Bool());

TEST_F(CopyTest, ACloneFeedsAndIsFedByObjectsOutsideTheCopiedGraph) {
  Thing *const source = new Thing;
  source->ref();
  Thing before, after;
  before.connect(Thing::NUMBER, source, Thing::NUMBER);
  source->connect(Thing::VALUE, &after, Thing::VALUE);
  Thing *const copy = static_cast<Thing *>(source->clone(ozContainer::CLONE_DEEP));
  before.setNumber(8);
  EXPECT_EQ(8, copy->getNumber());
  EXPECT_EQ(8, source->getNumber());
  copy->setValue(4.5f);
  EXPECT_EQ(4.5f, after.getValue());
  source->setValue(5.5f);
  EXPECT_EQ(5.5f, after.getValue());
  copy->unref();
  source->unref();
}

TEST_F(CopyTest, CloningAGraphWithACycleEndsWithAMessage) {
  Thing *const a = new Thing, *const b = new Thing;
  a->ref();
  a->setOther(b);
  b->setOther(a);
  ::testing::internal::CaptureStderr();
  Thing *const copy = static_cast<Thing *>(a->clone(ozContainer::CLONE_DEEP));
  EXPECT_NE("", ::testing::internal::GetCapturedStderr());
  copy->unref();
  b->setOther(nullptr);
  a->unref();
}

TEST_F(CopyTest, TheTablesFreeSlotIsTheApplications) {
  ozCloneTable table;
  Thing a;
  EXPECT_EQ(nullptr, table.getClonedObject());
  table.setClonedObject(&a);
  EXPECT_EQ(&a, table.getClonedObject());
}

TEST_F(CopyTest, AnInstanceRecordGoesOnceEachParentHasBeenServed) {
  ozCloneTable table;
  Thing source, clone, p, q;
  source.addParent(&p);
  source.addParent(&q);
  EXPECT_EQ(nullptr, table.getClonedInstance(&source));
  table.addClonedInstance(&source, &clone); // one use
  EXPECT_EQ(&clone, table.getClonedInstance(&source));
  EXPECT_EQ(&clone, table.getClonedInstance(&source)); // the second use has been counted: the record goes
  EXPECT_EQ(nullptr, table.getClonedInstance(&source));
  source.removeParent(&p);
  source.removeParent(&q);
}

TEST_F(CopyTest, AConnectionRecordIsGivenOnce) {
  ozCloneTable table;
  Thing a, b;
  table.addClonedConnection(a.number(), b.number(), a.value(), b.value());
  ozField *from = nullptr, *to = nullptr;
  table.getClonedConnection(b.number(), a.number(), from, to);
  EXPECT_EQ(nullptr, from);
  EXPECT_EQ(nullptr, to);
  table.getClonedConnection(a.number(), b.number(), from, to);
  EXPECT_EQ(a.value(), from);
  EXPECT_EQ(b.value(), to);
  table.getClonedConnection(a.number(), b.number(), from, to);
  EXPECT_EQ(nullptr, from);
}

} // namespace
