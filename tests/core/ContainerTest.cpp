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

TEST_F(ContainerTest, AConnectionCopiesWhenTheTargetIsRead) {
  a.setNumber(3);
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  EXPECT_EQ(7, b._number);
  EXPECT_TRUE(b.number()->isDirty());
  b.changes.clear();
  EXPECT_EQ(3, b.getNumber());
  EXPECT_EQ(std::vector<short>{Thing::NUMBER}, b.changes);
  EXPECT_FALSE(b.number()->isDirty());
}

TEST_F(ContainerTest, TwoSetsAndOneReadMakeOneCopy) {
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  b.getNumber();
  b.changes.clear();
  a.setNumber(4);
  a.setNumber(5);
  EXPECT_EQ(5, b.getNumber());
  EXPECT_EQ(1u, b.changes.size());
}

TEST_F(ContainerTest, AChainIsPulledFromItsFarEnd) {
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  b.connect(Thing::NUMBER, &c, Thing::NUMBER);
  a.setNumber(11);
  EXPECT_EQ(11, c.getNumber());
  EXPECT_EQ(11, b._number);
}

TEST_F(ContainerTest, ACycleSettlesAtOnceAndLeavesNothingBusy) {
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  b.connect(Thing::NUMBER, &a, Thing::NUMBER);
  a.setNumber(21);
  EXPECT_EQ(21, b._number);
  b.setNumber(22);
  EXPECT_EQ(22, a._number);
  a.setNumber(23);
  EXPECT_EQ(23, b.getNumber());
}

TEST_F(ContainerTest, ConnectingAPairTwiceDoesNothingMore) {
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  b.getNumber();
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  EXPECT_EQ(1u, a.number()->getOutputs()->getCount());
  EXPECT_EQ(1u, b.number()->getInputs()->getCount());
  EXPECT_FALSE(b.number()->isDirty());
}

TEST_F(ContainerTest, OfTwoInputsTheLastToAnnounceAChangeIsRead) {
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  c.connect(Thing::NUMBER, &b, Thing::NUMBER);
  a.setNumber(1);
  c.setNumber(2);
  EXPECT_EQ(2, b.getNumber());
  c.setNumber(4);
  a.setNumber(3);
  EXPECT_EQ(3, b.getNumber());
}

TEST_F(ContainerTest, ASetOnADirtyFieldStandsAndSettlesItsSource) {
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  b.connect(Thing::NUMBER, &c, Thing::NUMBER);
  a.setNumber(9);
  c.setNumber(100);
  EXPECT_FALSE(c.number()->isDirty());
  EXPECT_EQ(9, b._number);
  EXPECT_FALSE(b.number()->isDirty());
  EXPECT_EQ(100, c.getNumber());
}

TEST_F(ContainerTest, DisconnectingTheLastInputLeavesTheFieldCleanWithItsOldValue) {
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  a.setNumber(9);
  a.disconnect(Thing::NUMBER, &b, Thing::NUMBER);
  EXPECT_FALSE(b.number()->isDirty());
  EXPECT_FALSE(b.hasPendingFields());
  EXPECT_EQ(7, b.getNumber());
  EXPECT_NE(nullptr, a.number()->getOutputs());
}

TEST_F(ContainerTest, DisconnectingOneOfTwoInputsLeavesTheNextReadToTheOldSource) {
  c.connect(Thing::NUMBER, &b, Thing::NUMBER);
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  a.setNumber(9);
  a.disconnect(Thing::NUMBER, &b, Thing::NUMBER);
  EXPECT_FALSE(b.number()->isDirty());
  EXPECT_TRUE(b.hasPendingFields());
  EXPECT_EQ(9, b.getNumber());
}

TEST(ContainerSource, AFieldThatDiesIsNobodysSourceAnyMore) {
  Thing b, c;
  {
    Thing a;
    c.connect(Thing::NUMBER, &b, Thing::NUMBER);
    a.connect(Thing::NUMBER, &b, Thing::NUMBER);
    a.setNumber(9);
    a.disconnect(Thing::NUMBER, &b, Thing::NUMBER);
    EXPECT_EQ(a.number(), b.number()->getSource());
  }
  EXPECT_EQ(nullptr, b.number()->getSource());
  EXPECT_EQ(7, b.getNumber());
  EXPECT_FALSE(b.hasPendingFields());
}

TEST(ContainerSource, AConnectedFieldThatDiesIsTakenOutOfBothSides) {
  Thing a;
  {
    Thing b;
    a.connect(Thing::NUMBER, &b, Thing::NUMBER);
    b.connect(Thing::VALUE, &a, Thing::VALUE);
  }
  EXPECT_EQ(0u, a.number()->getOutputs()->getCount());
  EXPECT_EQ(0u, a.value()->getInputs()->getCount());
  EXPECT_EQ(nullptr, a.value()->getSource());
  a.setNumber(1);
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
  EXPECT_EQ(nullptr, a.getField("numberset_"));  // leaves "erset_"
  EXPECT_EQ(a.getField("number"), a.getField("set_number"));
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

struct DirtyTracking : ContainerTest {
  void SetUp() override { ozField::enableDirtyFieldTracking(1); }
  void TearDown() override { ozField::enableDirtyFieldTracking(0); }
};

TEST(DirtyTrackingDefault, TrackingIsOffUnlessAskedFor) { EXPECT_FALSE(ozField::isDirtyFieldTrackingEnabled()); }

TEST_F(DirtyTracking, CleanFieldsPullsAllThatWasRecorded) {
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  b.connect(Thing::NUMBER, &c, Thing::NUMBER);
  a.setNumber(12);
  ozField::cleanFields();
  EXPECT_EQ(12, b._number);
  EXPECT_EQ(12, c._number);
}

TEST_F(DirtyTracking, SideEffectsAreRecordedToo) {
  a.setNumber(2);
  a.propagateSideEffect(Thing::DERIVED);
  ozField::cleanFields();
  EXPECT_EQ(4, a._derived);
}

TEST_F(DirtyTracking, SwitchingOffForgetsTheRecords) {
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  a.setNumber(12);
  ozField::enableDirtyFieldTracking(0);
  ozField::cleanFields();
  EXPECT_EQ(7, b._number);
  EXPECT_EQ(12, b.getNumber());
}

TEST_F(DirtyTracking, AFieldThatDiesLeavesNoRecord) {
  {
    Thing d;
    a.connect(Thing::NUMBER, &d, Thing::NUMBER);
    ozField *const number = d.getField(Thing::NUMBER);
    number->recordDirty();
    a.disconnect(Thing::NUMBER, &d, Thing::NUMBER);
    d.freeUnconnectedFields();
  }
  ozField::cleanFields();
  EXPECT_EQ(0u, a.number()->getOutputs()->getCount());
}

} // namespace
