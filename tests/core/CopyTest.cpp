#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/capture.h"
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
  Thing *copy = nullptr;
  EXPECT_EQ("ozContainer: the graph to be copied holds a cycle through a Thing\n",
            stderrOf([&] { copy = static_cast<Thing *>(a->clone(ozContainer::CLONE_DEEP)); }));
  copy->unref();
  b->setOther(nullptr);
  a->unref();
}

TEST_F(CopyTest, CloningASharedObjectWithinACycleEndsToo) {
  Thing *const root = new Thing, *const a = new Thing, *const b = new Thing;
  root->ref();
  root->setOther(a);
  a->setOther(b);
  b->setOther(a);
  Thing *copy = nullptr;
  EXPECT_EQ("ozContainer: the graph to be copied holds a cycle through a Thing\n",
            stderrOf([&] { copy = static_cast<Thing *>(root->clone(ozContainer::CLONE_DEEP)); }));
  copy->unref();
  b->setOther(nullptr);
  root->unref();
}

TEST_F(CopyTest, TheSourceIsBroughtUpToDateFirst) {
  Thing before, source;
  before.connect(Thing::NUMBER, &source, Thing::NUMBER);
  before.setNumber(6);
  source.propagateSideEffect(Thing::DERIVED);
  Thing to;
  to.copy(&source);
  EXPECT_EQ(6, source._number);
  EXPECT_EQ(12, to._derived);
  Thing *const clone = static_cast<Thing *>(source.clone(ozContainer::CLONE_DEEP));
  EXPECT_EQ(12, clone->_derived);
  clone->unref();
}

TEST_F(CopyTest, ADeepCopyCallsFieldChangedForEachFieldInIdOrder) {
  Thing source;
  Thing *const clone = static_cast<Thing *>(source.clone(ozContainer::CLONE_DEEP));
  std::vector<short> ids;
  for (short id = 0; id < source.getType()->getFieldInfoCount(); ++id) ids.push_back(id);
  EXPECT_EQ(ids, clone->changes);
  Thing to;
  to.copy(&source);
  EXPECT_EQ(ids, to.changes);
  clone->unref();
}

TEST_F(CopyTest, CopyingAnObjectOntoItselfChangesNothing) {
  Thing thing;
  Thing *const child = new Thing;
  thing.setOther(child);
  thing.others()->append(child);
  thing.setName("me");
  thing.copy(&thing);
  EXPECT_EQ(2u, child->getRefCount());
  EXPECT_EQ(1u, thing.others()->getCount());
  EXPECT_STREQ("me", thing.getName());
}

TEST_F(CopyTest, ACopyFromAnUnrelatedClassTakesTheFieldsOfTheSameClassById) {
  Stranger stranger;
  stranger._size = 77;
  Thing thing;
  thing.copy(&stranger); // both have an int at id 0
  EXPECT_EQ(77, thing._number);
  EXPECT_EQ(1.5f, thing._value);
  thing.setNumber(5);
  stranger.copy(&thing);
  EXPECT_EQ(5, stranger._size);
}

TEST_F(CopyTest, ACopyIsTheVirtualFormWithATableOfItsOwn) {
  static ozCloneTable *used;
  struct Noting : Thing {
    using Thing::copy;
    void copy(ozContainer *src, ozCloneTable *table) override {
      used = table;
      Thing::copy(src, table);
    }
  };
  Noting to;
  Thing from;
  to.copy(&from);
  EXPECT_NE(nullptr, used);
}

/// Notes by which road it was cloned.
struct Cloned : Thing {
  std::string road;
  ozCloneTable *table = nullptr;
  ozContainer *instantiate() override { return new Cloned; }
  using Thing::copy;
  void copy(ozContainer *src, ozCloneTable *t) override {
    road += "copy2 ";
    table = t;
    Thing::copy(src, t);
  }
  void copy(ozContainer *src) override {
    road += "copy1 ";
    Thing::copy(src);
  }
  void recursiveCopy(ozContainer *src, ozCloneTable *t) override {
    road += "recursive ";
    table = t;
    Thing::recursiveCopy(src, t);
  }
};

TEST_F(CopyTest, ModesZeroAndOneAreShallowWithATableOfTheirOwnAndAllOthersDeep) {
  Cloned source;
  ozCloneTable table;
  for (int mode : {0, 1, 2, 3}) {
    Cloned *const clone = static_cast<Cloned *>(source.clone(static_cast<ozContainer::CloneEnum>(mode), &table));
    EXPECT_EQ(mode < 2 ? "copy1 copy2 " : "recursive ", clone->road);
    EXPECT_EQ(mode >= 2, clone->table == &table);
    EXPECT_EQ(0u, clone->getRefCount());
    clone->unref();
  }
}

TEST_F(CopyTest, AChildWithOneParentIsClonedAndReferencedOnce) {
  Thing root;
  Thing *const child = new Thing;
  child->setNumber(3);
  root.setOther(child);
  Thing *const copy = static_cast<Thing *>(root.clone(ozContainer::CLONE_DEEP));
  Thing *const childCopy = static_cast<Thing *>(copy->_other);
  ASSERT_NE(nullptr, childCopy);
  EXPECT_NE(child, childCopy);
  EXPECT_EQ(3, childCopy->_number);
  EXPECT_EQ(1u, childCopy->getRefCount());
  EXPECT_EQ(1, childCopy->getParentCount());
  EXPECT_EQ(copy, childCopy->getParent(0));
  EXPECT_EQ(1u, child->getRefCount());
  copy->unref();
}

TEST_F(CopyTest, AnObjectSharedWithOthersOutsideIsClonedOnceInside) {
  Thing root, outside;
  Thing *const shared = new Thing;
  root.setOther(shared);
  root.others()->append(shared);
  outside.setOther(shared);
  Thing *const copy = static_cast<Thing *>(root.clone(ozContainer::CLONE_DEEP));
  EXPECT_NE(shared, copy->_other);
  EXPECT_EQ(copy->_other, copy->_others[0]);
  EXPECT_EQ(2u, copy->_other->getRefCount());
  EXPECT_EQ(3u, shared->getRefCount());
  copy->unref();
}

TEST_F(CopyTest, ASourceWithoutUserDataLeavesThatOfADeepCopyAndClearsThatOfAShallowOne) {
  struct Open : Thing {
    using Thing::recursiveCopy;
  };
  Thing source;
  Open deep, shallow;
  deep.setUserData(new (4) ozData);
  shallow.setUserData(new (4) ozData);
  ozCloneTable table;
  deep.recursiveCopy(&source, &table);
  shallow.copy(&source);
  EXPECT_NE(nullptr, deep.getUserData());
  EXPECT_EQ(nullptr, shallow.getUserData());
}

// ---- connections

TEST_F(CopyTest, ConnectionsWithinOneObjectAreBetweenTheFieldsOfTheCopy) {
  for (bool up : {false, true}) {
    Thing source;
    short const from = up ? Thing::NUMBER : Thing::DERIVED, to = up ? Thing::DERIVED : Thing::NUMBER;
    source.connect(from, &source, to);
    Thing *const copy = static_cast<Thing *>(source.clone(ozContainer::CLONE_DEEP));
    ASSERT_EQ(1u, copy->getField(from)->getOutputs()->getCount());
    EXPECT_EQ(copy->getField(to), copy->getField(from)->getOutputs()->get(0));
    ASSERT_EQ(1u, copy->getField(to)->getInputs()->getCount());
    ASSERT_EQ(1u, source.getField(from)->getOutputs()->getCount());
    EXPECT_EQ(source.getField(to), source.getField(from)->getOutputs()->get(0));
    EXPECT_EQ(1u, source.getField(to)->getInputs()->getCount());
    copy->unref();
  }
}

TEST_F(CopyTest, AFieldConnectedToItselfIsCopiedSo) {
  Thing source;
  source.connect(Thing::NUMBER, &source, Thing::NUMBER);
  Thing *const copy = static_cast<Thing *>(source.clone(ozContainer::CLONE_SHALLOW));
  ASSERT_EQ(1u, copy->number()->getOutputs()->getCount());
  EXPECT_EQ(copy->number(), copy->number()->getOutputs()->get(0));
  ASSERT_EQ(1u, source.number()->getOutputs()->getCount());
  EXPECT_EQ(source.number(), source.number()->getOutputs()->get(0));
  copy->unref();
}

TEST_F(CopyTest, ManyConnectionsBetweenChildrenAllEndBetweenTheCopies) {
  Thing *const root = new Thing;
  root->ref();
  Thing *children[5];
  for (Thing *&child : children) root->others()->append(child = new Thing);
  for (int i = 0; i < 5; ++i)
    for (int k = 0; k < 5; ++k)
      if (i != k) children[i]->connect(Thing::NUMBER, children[k], Thing::DERIVED);
  Thing *const copy = static_cast<Thing *>(root->clone(ozContainer::CLONE_DEEP));
  for (Thing *graph : {root, copy})
    for (int i = 0; i < 5; ++i) {
      Thing *const child = static_cast<Thing *>(graph->_others[static_cast<unsigned int>(i)]);
      ASSERT_EQ(4u, child->number()->getOutputs()->getCount());
      ASSERT_EQ(4u, child->getField(Thing::DERIVED)->getInputs()->getCount());
      for (unsigned int k = 0; k < 4; ++k) {
        EXPECT_EQ(graph, static_cast<Thing *>(child->number()->getOutputs()->get(k)->getParent())->getParent(0));
        EXPECT_EQ(
            graph,
            static_cast<Thing *>(child->getField(Thing::DERIVED)->getInputs()->get(k)->getParent())->getParent(0));
      }
    }
  copy->unref();
  root->unref();
}

TEST_F(CopyTest, CloningMarksNothingBehindTheSource) {
  Thing *const root = new Thing, *const first = new Thing, *const second = new Thing;
  root->ref();
  root->others()->append(first);
  root->others()->append(second);
  Thing after;
  first->connect(Thing::NUMBER, second, Thing::NUMBER);
  second->connect(Thing::NUMBER, &after, Thing::NUMBER);
  second->connect(Thing::VALUE, first, Thing::VALUE);
  after.getNumber();
  first->getValue();
  ozContainer *const copy = root->clone(ozContainer::CLONE_SHALLOW);
  EXPECT_FALSE(after.hasPendingFields());
  EXPECT_FALSE(first->hasPendingFields());
  EXPECT_FALSE(second->hasPendingFields());
  copy->unref();
  ozContainer *const deep = root->clone(ozContainer::CLONE_DEEP);
  EXPECT_FALSE(first->hasPendingFields());
  EXPECT_FALSE(second->hasPendingFields());
  EXPECT_EQ(first->number(), second->number()->getSource());
  deep->unref();
  root->unref();
}

TEST_F(CopyTest, OneTableForTwoClonesOfAnObjectLeavesItsConnectionsAlone) {
  Thing from, to;
  from.connect(Thing::NUMBER, &to, Thing::NUMBER);
  ozCloneTable table;
  Thing *const one = static_cast<Thing *>(from.clone(ozContainer::CLONE_DEEP, &table));
  Thing *const two = static_cast<Thing *>(from.clone(ozContainer::CLONE_DEEP, &table));
  from.setNumber(1);
  EXPECT_EQ(1, to.getNumber());
  one->setNumber(2);
  EXPECT_EQ(2, to.getNumber());
  two->setNumber(3);
  EXPECT_EQ(3, to.getNumber());
  EXPECT_EQ(3u, to.number()->getInputs()->getCount());
  one->unref();
  two->unref();
  from.setNumber(4);
  EXPECT_EQ(4, to.getNumber());
}

TEST_F(CopyTest, OneTableForBothEndsJoinsTheClonesAndFreesTheSourceAgain) {
  Thing *const from = new Thing;
  Thing to;
  from->connect(Thing::NUMBER, &to, Thing::NUMBER);
  from->setNumber(11);
  to.getNumber();
  ozCloneTable table;
  Thing *const fromCopy = static_cast<Thing *>(from->clone(ozContainer::CLONE_DEEP, &table));
  EXPECT_EQ(fromCopy->number(), to.number()->getSource()) << "as long as only one end is copied";
  Thing *const toCopy = static_cast<Thing *>(to.clone(ozContainer::CLONE_DEEP, &table));
  EXPECT_EQ(from->number(), to.number()->getSource());
  EXPECT_EQ(1u, to.number()->getInputs()->getCount());
  EXPECT_FALSE(to.number()->isDirty());
  ASSERT_EQ(1u, toCopy->number()->getInputs()->getCount());
  EXPECT_EQ(fromCopy->number(), toCopy->number()->getInputs()->get(0));
  fromCopy->setNumber(12);
  EXPECT_EQ(12, toCopy->getNumber());
  EXPECT_EQ(11, to.getNumber());
  fromCopy->unref();
  toCopy->unref();
  from->unref();
  EXPECT_EQ(nullptr, to.number()->getSource());
}

TEST_F(CopyTest, AnOldSourceThatIsRestoredAndThenDiesLeavesNoPointer) {
  Thing *const old = new Thing;
  Thing from, to;
  old->connect(Thing::NUMBER, &to, Thing::NUMBER);
  from.connect(Thing::NUMBER, &to, Thing::NUMBER);
  old->setNumber(3);
  old->disconnect(Thing::NUMBER, &to, Thing::NUMBER); // stays the source
  ASSERT_EQ(old->number(), to.number()->getSource());
  ozCloneTable table;
  Thing *const fromCopy = static_cast<Thing *>(from.clone(ozContainer::CLONE_DEEP, &table));
  Thing *const toCopy = static_cast<Thing *>(to.clone(ozContainer::CLONE_DEEP, &table));
  old->unref();
  EXPECT_EQ(nullptr, to.number()->getSource());
  from.setNumber(9);
  EXPECT_EQ(9, to.getNumber());
  fromCopy->unref();
  toCopy->unref();
}

TEST_F(CopyTest, AShallowCopyIsFedByAndFeedsWhatTheSourceIsTiedTo) {
  Thing before, source, after, copy;
  before.connect(Thing::NUMBER, &source, Thing::NUMBER);
  source.connect(Thing::VALUE, &after, Thing::VALUE);
  copy.copy(&source);
  before.setNumber(8);
  EXPECT_EQ(8, copy.getNumber());
  copy.setValue(4.5f);
  EXPECT_EQ(4.5f, after.getValue());
  EXPECT_EQ(2u, before.number()->getOutputs()->getCount());
  EXPECT_EQ(2u, after.value()->getInputs()->getCount());
}

TEST_F(CopyTest, OnlyFieldObjectsOfTheSourceMakeFieldObjectsOfTheCopy) {
  static int made = 0;
  class Traced : public ozContainer {
  public:
    struct Info : ozSFIntInfo {
      using ozSFIntInfo::ozSFIntInfo;
      ozField *instantiate(ozContainer *container) override {
        ++made;
        return ozSFIntInfo::instantiate(container);
      }
    };
    Traced() : ozContainer(type()) {}
    ozContainer *instantiate() override { return new Traced; }
    static ozType *type() {
      static ozType *type = nullptr;
      if (!type) {
        type = new ozType(ozContainer::getClassType(), "CopyTestTraced");
        type->setFieldInfo(0, new Info("a", 0, ozMember(&Traced::a), 0));
        type->setFieldInfo(1, new Info("b", 1, ozMember(&Traced::b), 0));
      }
      return type;
    }
    int a = 0, b = 0;
  };
  Traced from, to;
  from.getField(1);
  made = 0;
  to.copy(&from);
  EXPECT_EQ(1, made);
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
