#include <gtest/gtest.h>

#include "testContainers.h"

namespace {

struct ContainerTest : ::testing::Test {
  Thing a, b, c; // on the stack: nobody counts them
};

TEST_F(ContainerTest, ANewContainerHasNoParentNameOrUserData) {
  EXPECT_EQ(0, a.getParentCount());
  EXPECT_EQ(nullptr, a.getParent(0));
  EXPECT_EQ(nullptr, a.getName());
  EXPECT_EQ(nullptr, a.getUserData());
  EXPECT_FALSE(a.hasPendingFields());
}

TEST_F(ContainerTest, SettingAFieldWithoutAFieldObjectOnlyCallsFieldChanged) {
  a.setNumber(3);
  EXPECT_EQ(3, a.getNumber());
  EXPECT_EQ(std::vector<short>{Thing::NUMBER}, a.changes);
}

TEST_F(ContainerTest, ASideEffectTellsTheParentsOnceUntilItIsRead) {
  b.addParent(&a);
  b.propagateSideEffect(Thing::DERIVED);
  b.propagateSideEffect(Thing::DERIVED);
  ASSERT_EQ(1u, a.childChanges.size());
  EXPECT_EQ(&b, a.childChanges[0].first);
  EXPECT_EQ(Thing::DERIVED, a.childChanges[0].second);
  b.setNumber(4);
  EXPECT_EQ(8, b.getDerived());
  EXPECT_EQ(1, b.cleanings);
  EXPECT_EQ(8, b.getDerived());
  EXPECT_EQ(1, b.cleanings);
  b.propagateSideEffect(Thing::DERIVED);
  EXPECT_EQ(2u, a.childChanges.size());
}

TEST_F(ContainerTest, ADirectChangeOverridesAPendingRecomputation) {
  a.getField(Thing::DERIVED);
  a.propagateSideEffect(Thing::DERIVED);
  static_cast<ozSFInt *>(a.getField(Thing::DERIVED))->set(5);
  EXPECT_EQ(5, a.getDerived());
  EXPECT_EQ(0, a.cleanings);
}

TEST_F(ContainerTest, CleaningEndsWhenARoundSettlesNothing) {
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  b.stubborn = true;
  b.cleanFields();
  EXPECT_TRUE(b.hasPendingFields());
}

TEST_F(ContainerTest, ParentsAreOneEntryAReference) {
  c.addParent(&a);
  EXPECT_EQ(&a, c.getParent(0));
  EXPECT_EQ(nullptr, c.getParent(1));
  c.addParent(&a);
  c.addParent(&b);
  EXPECT_EQ(3, c.getParentCount());
  EXPECT_EQ(1, c.removeParent(&a));
  EXPECT_EQ(2, c.getParentCount());
  EXPECT_EQ(0, c.removeParent(&c));
  EXPECT_EQ(1, c.removeParent(&a));
  EXPECT_EQ(1, c.getParentCount());
  EXPECT_EQ(&b, c.getParent(0));
  EXPECT_EQ(-1, c.removeParent(&a));
  EXPECT_EQ(0, c.removeParent(&b));
  EXPECT_EQ(0, c.getParentCount());
}

TEST_F(ContainerTest, EachParentEntryIsNotifiedInOrder) {
  c.addParent(&a);
  c.notifyParents(4);
  EXPECT_EQ(1u, a.childChanges.size());
  c.addParent(&b);
  c.addParent(&a);
  c.notifyParents(5);
  EXPECT_EQ(3u, a.childChanges.size());
  EXPECT_EQ(1u, b.childChanges.size());
}

TEST_F(ContainerTest, ReferringToWhatIsHeldAlreadyKeepsItAlive) {
  int const before = Thing::Alive;
  Thing *held = new Thing;
  a.refer(held);
  a.refer(held, held);
  EXPECT_EQ(1u, held->getRefCount());
  EXPECT_EQ(1, held->getParentCount());
  a.unrefer(held);
  EXPECT_EQ(before, Thing::Alive);
}

TEST_F(ContainerTest, NamesAreFoundPlainAndInTheirEventForms) {
  ozField *const field = a.getField("number");
  ASSERT_NE(nullptr, field);
  EXPECT_EQ(field, a.getField(Thing::NUMBER));
  EXPECT_EQ(field, a.getField("set_number"));
  EXPECT_EQ(field, a.getField("number_changed"));
  EXPECT_EQ(field, a.getField("xxxxnumber" + 4));
  EXPECT_EQ(nullptr, a.getField("nothing"));
  EXPECT_EQ(nullptr, a.getField("set_nothing"));
  EXPECT_EQ(nullptr, a.getField("nothing_changed"));
}

TEST_F(ContainerTest, SetAnywhereInANameDropsTheFirstFourCharacters) {
  EXPECT_EQ(nullptr, a.getField("numberset_")); // leaves "erset_"
  a.getType()->getFieldInfo(Thing::NUMBER)->addAlias("erset_");
  EXPECT_EQ(a.getField(Thing::NUMBER), a.getField("set_erset_"));
  EXPECT_EQ(a.getField(Thing::NUMBER), a.getField("wxyzerset_"));
}

TEST_F(ContainerTest, UnconnectedSingleFieldsAreTakenBackAndMultiFieldsStay) {
  a.getField(Thing::NUMBER);
  a.getField(Thing::VALUE);
  a.freeUnconnectedFields();
  a.setNumber(1);
  ozField *const points = a.getField(Thing::POINTS);
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  ozField *const number = a.getField(Thing::NUMBER);
  a.freeUnconnectedFields();
  EXPECT_EQ(points, a.getField(Thing::POINTS));
  EXPECT_EQ(number, a.getField(Thing::NUMBER));
}

TEST_F(ContainerTest, UserDataHoldsOneCountAndTakesTheNewBeforeTheOld) {
  ozData *const data = new (8) ozData;
  a.setUserData(data);
  EXPECT_EQ(1u, data->getRefCount());
  a.setUserData(data);
  EXPECT_EQ(1u, data->getRefCount());
  b.setUserData(data);
  EXPECT_EQ(2u, data->getRefCount());
  a.setUserData(nullptr);
  EXPECT_EQ(1u, data->getRefCount());
}

TEST_F(ContainerTest, ANameMayBeSetToItself) {
  a.setName("first");
  a.setName(a.getName());
  EXPECT_STREQ("first", a.getName());
  a.setName(nullptr);
  EXPECT_EQ(nullptr, a.getName());
}

// ---- field objects

TEST_F(ContainerTest, AFieldObjectIsMadeAtTheFirstRequestAndKept) {
  a.setNumber(1); // touches no field object
  ozField *const field = a.getField(Thing::NUMBER);
  EXPECT_EQ(field, a.getField(Thing::NUMBER));
  EXPECT_NE(field, a.getField(Thing::VALUE));
  EXPECT_NE(field, b.getField(Thing::NUMBER));
}

TEST_F(ContainerTest, TheFirstFieldThatMatchesANameIsGiven) {
  EXPECT_EQ(a.getField(Thing::OTHER), a.getField("other"));
  EXPECT_EQ(a.getField(Thing::OTHERS), a.getField("others"));
}

TEST_F(ContainerTest, TheEventFormsFollowTheirRules) {
  EXPECT_EQ(a.getField(Thing::TEXT), a.getField("set_text"));
  Stranger stranger;
  EXPECT_EQ(nullptr, stranger.getField("sizeset_")) << "leaves set_";
  EXPECT_EQ(a.getField(Thing::TEXT), a.getField("text_changed_and_more"));
  EXPECT_EQ(nullptr, a.getField("set_text_changed")) << "one form at a time: the first rule leaves text_changed";
  EXPECT_EQ(nullptr, a.getField("_changed"));
  EXPECT_EQ(nullptr, a.getField("set_"));
  EXPECT_EQ(nullptr, a.getField(""));
}

TEST_F(ContainerTest, FreedFieldObjectsAreMadeAgainOnRequest) {
  ozField *const before = a.getField(Thing::NUMBER);
  before->setEventClass(ozField::EVENT_OUT_ONLY);
  a.freeUnconnectedFields();
  EXPECT_EQ(ozField::EVENT_ANY, a.getField(Thing::NUMBER)->getEventClass()) << "a new object";
}

TEST_F(ContainerTest, FieldsThatWereConnectedOnceAreTakenBackToo) {
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  a.disconnect(Thing::NUMBER, &b, Thing::NUMBER);
  b.number()->setEventClass(ozField::EVENT_OUT_ONLY);
  b.freeUnconnectedFields();
  EXPECT_EQ(ozField::EVENT_ANY, b.number()->getEventClass());
}

TEST_F(ContainerTest, FreeingWithoutAnyFieldObjectsDoesNothing) {
  a.freeUnconnectedFields();
  a.setNumber(5);
  EXPECT_EQ(5, a.getNumber());
}

// ---- changes

TEST_F(ContainerTest, CleanFieldsBringsEverythingUpToDate) {
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  a.connect(Thing::VALUE, &b, Thing::VALUE);
  a.setNumber(6);
  a.setValue(0.5f);
  b.propagateSideEffect(Thing::DERIVED);
  EXPECT_TRUE(b.hasPendingFields());
  b.cleanFields();
  EXPECT_FALSE(b.hasPendingFields());
  EXPECT_EQ(6, b._number);
  EXPECT_EQ(0.5f, b._value);
  EXPECT_EQ(12, b._derived);
  b.cleanings = 0;
  b.cleanFields();
  EXPECT_EQ(0, b.cleanings);
}

TEST_F(ContainerTest, ASideEffectIsComputedBeforeTheMarkIsCleared) {
  struct Asker : Thing {
    bool pendingWhileCleaning = false;
    void cleanSideEffect(short id) override {
      pendingWhileCleaning = hasPendingFields();
      Thing::cleanSideEffect(id);
    }
  };
  Asker asker;
  asker.propagateSideEffect(Thing::DERIVED);
  asker.getDerived();
  EXPECT_TRUE(asker.pendingWhileCleaning);
  EXPECT_FALSE(asker.hasPendingFields());
}

TEST_F(ContainerTest, ASideEffectMarksWithoutMakingAFieldObject) {
  a.propagateSideEffect(Thing::DERIVED);
  a.freeUnconnectedFields();
  EXPECT_EQ(14, a.getDerived());
}

TEST_F(ContainerTest, IdsFrom64OnHaveNoMark) {
  a.propagateSideEffect(64);
  EXPECT_FALSE(a.hasPendingFields());
  a.validateField(64);
  EXPECT_EQ(0, a.cleanings);
}

// A parent that lets its child go while it is told of a change.
struct Leaver : Thing {
  void childChanged(ozContainer *child, short id) override {
    Thing::childChanged(child, id);
    static_cast<Thing *>(child)->removeParent(this);
  }
};

TEST_F(ContainerTest, ParentsMayLeaveWhileTheyAreTold) {
  Leaver leaver;
  c.addParent(&leaver);
  c.addParent(&a);
  c.notifyParents(1);
  EXPECT_EQ(1u, leaver.childChanges.size());
  EXPECT_EQ(1, c.getParentCount());
  c.addParent(&leaver);
  c.addParent(&leaver);
  c.notifyParents(1);
  EXPECT_LE(1, c.getParentCount());
}

TEST_F(ContainerTest, ParentsThatComeAndGoKeepTheirOrder) {
  Thing d;
  Thing *const parents[] = {&a, &b, &d, &a, &d};
  std::vector<ozContainer *> expected;
  for (int i = 0; i < 300; ++i) {
    c.addParent(parents[i % 5]);
    expected.push_back(parents[i % 5]);
    if (expected.size() < 4) continue;
    ozContainer *const gone = expected[i % 3 ? 0 : 2];
    c.removeParent(gone);
    for (size_t k = 0; k < expected.size(); ++k)
      if (expected[k] == gone) {
        expected.erase(expected.begin() + static_cast<std::ptrdiff_t>(k));
        break;
      }
    ASSERT_EQ(3, c.getParentCount());
    for (int k = 0; k < 3; ++k) ASSERT_EQ(expected[static_cast<size_t>(k)], c.getParent(k)) << i;
  }
}

TEST_F(ContainerTest, ReferOfNullDoesNothing) {
  a.refer(nullptr);
  a.unrefer(nullptr);
  a.refer(nullptr, nullptr);
  EXPECT_EQ(0, a.getParentCount());
}

TEST_F(ContainerTest, ReferReleasesTheOldAfterItTookTheNew) {
  int const before = Thing::Alive;
  Thing *const first = new Thing, *const second = new Thing;
  a.refer(first);
  first->setOther(second);
  a.refer(first, second); // second lives in first alone, and first goes
  EXPECT_EQ(before + 1, Thing::Alive);
  EXPECT_EQ(1u, second->getRefCount());
  EXPECT_EQ(&a, second->getParent(0));
  a.unrefer(second);
  EXPECT_EQ(before, Thing::Alive);
}

TEST_F(ContainerTest, ABitwiseCopySharesEverythingAndCountsNothing) {
  Stranger from;
  from.setName("original");
  from.setUserData(new (4) ozData);
  from.getField(0);
  alignas(Stranger) char place[sizeof(Stranger)];
  Stranger *const copy = new (place) Stranger(from); // never destroyed: it owns nothing of what it points at
  EXPECT_EQ(from.getName(), copy->getName());
  EXPECT_EQ(from.getUserData(), copy->getUserData());
  EXPECT_EQ(1u, copy->getUserData()->getRefCount());
  EXPECT_EQ(from.getField(0), copy->getField(0));
  EXPECT_EQ(from.getType(), copy->getType());
}

// ---- destruction

TEST(ContainerDestruction, TheSubgraphBelowGoesWithTheLastCount) {
  int const before = Thing::Alive;
  Thing *const root = new Thing;
  root->ref();
  Thing *const middle = new Thing, *const shared = new Thing;
  root->others()->append(middle);
  root->others()->append(nullptr);
  root->setOther(shared);
  middle->setOther(shared);
  middle->others()->append(new Thing);
  root->unref();
  EXPECT_EQ(before, Thing::Alive);
}

TEST(ContainerDestruction, AChildThatOthersHoldLosesItsParentEntry) {
  Thing *const child = new Thing;
  child->ref();
  {
    Thing parent;
    parent.setOther(child);
    EXPECT_EQ(1, child->getParentCount());
  }
  EXPECT_EQ(0, child->getParentCount());
  EXPECT_EQ(1u, child->getRefCount());
  child->unref();
}

TEST(ContainerDestruction, UserDataIsReleased) {
  ozData *const data = new (4) ozData;
  data->ref();
  {
    Thing thing;
    thing.setUserData(data);
    EXPECT_EQ(2u, data->getRefCount());
  }
  EXPECT_EQ(1u, data->getRefCount());
  data->unref();
}

TEST(ContainerDestruction, ConnectionsInsideOneObjectGoWithIt) {
  Thing thing;
  thing.connect(Thing::NUMBER, &thing, Thing::DERIVED);
  thing.connect(Thing::DERIVED, &thing, Thing::NUMBER);
}

TEST(ContainerFields, ArePendingOneByOne) {
  Thing *const source = new Thing, *const thing = new Thing;
  source->value()->connect(thing->value());
  thing->propagateSideEffect(Thing::DERIVED);
  EXPECT_TRUE(thing->isFieldPending(Thing::VALUE));
  EXPECT_TRUE(thing->isFieldPending(Thing::DERIVED));
  EXPECT_FALSE(thing->isFieldPending(Thing::NUMBER));
  thing->getValue();
  thing->getDerived();
  EXPECT_FALSE(thing->isFieldPending(Thing::VALUE));
  EXPECT_FALSE(thing->isFieldPending(Thing::DERIVED));
  source->unref();
  thing->unref();
}

} // namespace
