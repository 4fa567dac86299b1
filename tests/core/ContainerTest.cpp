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

TEST_F(ContainerTest, ConnectFetchesTheTargetsFieldFirst) {
  static std::vector<ozContainer *> order;
  struct Info : ozSFIntInfo {
    using ozSFIntInfo::ozSFIntInfo;
    ozField *instantiate(ozContainer *container) override {
      order.push_back(container);
      return ozSFIntInfo::instantiate(container);
    }
  };
  class Traced : public ozContainer {
  public:
    Traced() : ozContainer(type()) {}
    ozContainer *instantiate() override { return nullptr; }
    static ozType *type() {
      static ozType *type = nullptr;
      if (!type) {
        type = new ozType(ozContainer::getClassType(), "Traced");
        type->setFieldInfo(0, new Info("value", 0, ozMember(&Traced::value), 0));
      }
      return type;
    }
    int value = 0;
  };
  Traced from, to;
  from.connect(0, &to, 0);
  EXPECT_EQ((std::vector<ozContainer *>{&to, &from}), order);
  order.clear();
  Traced from2, to2;
  from2.disconnect(0, &to2, 0);
  EXPECT_EQ((std::vector<ozContainer *>{&to2, &from2}), order);
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

TEST_F(ContainerTest, AChangeRunsThroughAllConnectionsDepthFirstWithoutMovingAValue) {
  Thing d;
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  b.connect(Thing::NUMBER, &c, Thing::NUMBER);
  a.connect(Thing::NUMBER, &d, Thing::NUMBER);
  c.getNumber();
  d.getNumber();
  for (Thing *thing : {&b, &c, &d}) thing->changes.clear();
  a.setNumber(50);
  for (Thing *thing : {&b, &c, &d}) {
    EXPECT_TRUE(thing->number()->isDirty());
    EXPECT_EQ(7, thing->_number);
    EXPECT_TRUE(thing->changes.empty());
  }
}

TEST_F(ContainerTest, ADiamondGivesTheValueOnceAndEnds) {
  Thing d;
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  a.connect(Thing::NUMBER, &c, Thing::NUMBER);
  b.connect(Thing::NUMBER, &d, Thing::NUMBER);
  c.connect(Thing::NUMBER, &d, Thing::NUMBER);
  d.getNumber();
  d.changes.clear();
  a.setNumber(8);
  EXPECT_EQ(c.number(), d.number()->getSource()) << "the last that announced";
  EXPECT_EQ(8, d.getNumber());
  EXPECT_EQ(1u, d.changes.size());
}

TEST_F(ContainerTest, AFieldConnectedToItselfEnds) {
  a.connect(Thing::NUMBER, &a, Thing::NUMBER);
  a.setNumber(3);
  EXPECT_EQ(3, a.getNumber());
  EXPECT_FALSE(a.number()->isDirty());
}

TEST_F(ContainerTest, SettlingTheSourceKeepsItsLaterReadFromOverwriting) {
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  b.connect(Thing::NUMBER, &c, Thing::NUMBER);
  a.setNumber(1);
  c.setNumber(2);
  EXPECT_EQ(1, b.getNumber());
  EXPECT_EQ(2, c.getNumber());
}

TEST_F(ContainerTest, DisconnectOfAPairThatIsNotConnectedClearsTheFlagAlone) {
  c.connect(Thing::NUMBER, &a, Thing::NUMBER);
  c.connect(Thing::NUMBER, &b, Thing::NUMBER);
  c.setNumber(9);
  a.connect(Thing::VALUE, &b, Thing::VALUE);
  a.number()->disconnect(b.number());
  EXPECT_TRUE(b.number()->isDirty()) << "a field without outputs returns at once";
  a.connect(Thing::NUMBER, &c, Thing::VALUE);
  a.number()->disconnect(b.number());
  EXPECT_FALSE(b.number()->isDirty()) << "meant so";
  EXPECT_TRUE(b.hasPendingFields());
  EXPECT_EQ(9, b.getNumber());
}

TEST_F(ContainerTest, TheArraysOfConnectionsStayWhenTheyEndEmpty) {
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  a.disconnect(Thing::NUMBER, &b, Thing::NUMBER);
  ASSERT_NE(nullptr, a.number()->getOutputs());
  ASSERT_NE(nullptr, b.number()->getInputs());
  EXPECT_EQ(0u, a.number()->getOutputs()->getCount());
  EXPECT_EQ(0u, b.number()->getInputs()->getCount());
}

TEST_F(ContainerTest, ReconnectingAfterADisconnectionWorks) {
  for (int i = 0; i < 3; ++i) {
    a.connect(Thing::NUMBER, &b, Thing::NUMBER);
    a.setNumber(10 + i);
    EXPECT_EQ(10 + i, b.getNumber());
    a.disconnect(Thing::NUMBER, &b, Thing::NUMBER);
    a.setNumber(0);
    EXPECT_EQ(10 + i, b.getNumber());
  }
}

TEST(ContainerSource, ASourceThatDiesAfterItsTargetMovedOnIsNotMissed) {
  Thing b, c;
  {
    Thing a;
    a.connect(Thing::NUMBER, &b, Thing::NUMBER);
    a.disconnect(Thing::NUMBER, &b, Thing::NUMBER);
    c.connect(Thing::NUMBER, &b, Thing::NUMBER);
  }
  EXPECT_EQ(c.number(), b.number()->getSource());
  c.setNumber(5);
  EXPECT_EQ(5, b.getNumber());
}

TEST(ContainerSource, ATargetThatDiesFirstIsNotReachedByItsOldSource) {
  Thing a;
  {
    Thing b;
    a.connect(Thing::NUMBER, &b, Thing::NUMBER);
    a.disconnect(Thing::NUMBER, &b, Thing::NUMBER);
  }
  a.setNumber(1);
}

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

TEST_F(DirtyTracking, CleanFieldsServesTheLastRecordedFirst) {
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  a.connect(Thing::VALUE, &b, Thing::VALUE);
  ozField::cleanFields();
  b.changes.clear();
  a.setNumber(1);
  a.setValue(2);
  ozField::cleanFields();
  EXPECT_EQ((std::vector<short>{Thing::VALUE, Thing::NUMBER}), b.changes);
}

TEST_F(DirtyTracking, CleanFieldsServesWhatItsOwnWorkRecords) {
  struct Passer : Thing {
    Thing *next = nullptr;
    void fieldChanged(short id) override {
      Thing::fieldChanged(id);
      if (next) next->propagateSideEffect(DERIVED);
    }
  };
  Passer passer;
  a.connect(Thing::NUMBER, &passer, Thing::NUMBER);
  ozField::cleanFields();
  passer.next = &c;
  c._number = 4;
  a.setNumber(2);
  ozField::cleanFields();
  EXPECT_EQ(8, c._derived);
  passer.next = nullptr;
}

TEST_F(DirtyTracking, FieldsThatAreDirtyWhenItIsSwitchedOnStayUnrecorded) {
  ozField::enableDirtyFieldTracking(0);
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  a.setNumber(5);
  ozField::enableDirtyFieldTracking(1);
  a.setNumber(6); // already dirty: not recorded again
  ozField::cleanFields();
  EXPECT_EQ(7, b._number);
}

TEST_F(DirtyTracking, AFieldRecordedByHandIsServedWithoutTracking) {
  ozField::enableDirtyFieldTracking(0);
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  a.setNumber(5);
  b.number()->recordDirty(); // does nothing: it is dirty
  a.propagateSideEffect(Thing::DERIVED);
  a.getField(Thing::DERIVED)->recordDirty();
  ozField::cleanFields();
  EXPECT_EQ(7, b._number);
  EXPECT_EQ(10, a._derived);
  {
    Thing d;
    d.number()->recordDirty();
  }
  ozField::cleanFields(); // the record went with its field
}

TEST_F(DirtyTracking, WhatDiesIsCleanedFirst) {
  Thing *const d = new Thing;
  d->connect(Thing::NUMBER, &b, Thing::NUMBER);
  d->setNumber(41);
  d->unref();
  EXPECT_EQ(41, b._number) << "destruction settles all records, so that none outlives its field";
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
