#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/capture.h"
#include "testContainers.h"

namespace {

/// A container with reference fields that own what they hold.
class Loose : public ozContainer {
  OZ_CLASS(Loose);

public:
  Loose();
};
OZ_DEFINE_CLASS(Loose, "Loose", ozContainer) {
  ozSFRef::addTypeField(type, "one", 0, Thing::getClassType(), nullptr);
  ozMFRef::addTypeField(type, "many", 1, Thing::getClassType(), nullptr);
}

class RefField : public ::testing::Test {
protected:
  void SetUp() override {
    _alive = Thing::Alive;
    parent = new Thing;
    parent->ref();
    for (Thing *&t : things) {
      t = new Thing;
      t->ref(); // the test's own
    }
    stranger = new Stranger;
    stranger->ref();
  }
  void TearDown() override {
    parent->unref();
    for (Thing *t : things) {
      EXPECT_EQ(1u, t->getRefCount());
      EXPECT_EQ(0, t->getParentCount());
      t->unref();
    }
    EXPECT_EQ(1u, stranger->getRefCount());
    stranger->unref();
    EXPECT_EQ(_alive, Thing::Alive);
  }

  /// References from `parent`, which are counts and parent entries alike: "0 2 1" for the first three things.
  std::string held() const {
    std::string text;
    for (Thing *t : things) {
      EXPECT_EQ(static_cast<int>(t->getRefCount()) - 1, t->getParentCount());
      for (int i = 0; i < t->getParentCount(); ++i) EXPECT_EQ(parent, t->getParent(i));
      text += (text.empty() ? "" : " ") + std::to_string(t->getParentCount());
    }
    return text;
  }
  /// What the array holds, by number: "0 - 2", "-" for null.
  std::string listed() const {
    std::string text;
    for (unsigned int i = 0; i < parent->_others.getCount(); ++i) {
      int number = 0;
      while (number < 4 && parent->_others[i] != things[number]) ++number;
      text += (i ? " " : "") + (number < 4 ? std::to_string(number) : parent->_others[i] ? "?" : "-");
    }
    return text;
  }
  bool announced(short id) const {
    bool const once = parent->changes == std::vector<short>{id};
    parent->changes.clear();
    return once;
  }
  std::string message(char const *where, char const *name = "(null)") const {
    return std::string(where) + ": Bad type - Stranger not derived from Thing.  parent " + name + " type Thing\n";
  }

  Thing *parent, *things[4];
  Stranger *stranger;
  int _alive;
};

// ---- ozSFRef

TEST_F(RefField, ClassesAreRegisteredUnderNamesOfTheirOwn) {
  EXPECT_EQ(ozSFRef::getClassType(), ozType::getType("ozSFRef"));
  EXPECT_EQ(ozMFRef::getClassType(), ozType::getType("ozMFRef"));
  EXPECT_EQ(ozSFRef::getClassType(), parent->other()->getType());
  EXPECT_EQ(ozMFRef::getClassType(), parent->others()->getType());
}

TEST_F(RefField, DescriptionsKnowTheRequiredType) {
  auto *const single = static_cast<ozSFRefInfo *>(parent->other()->getFieldInfo());
  auto *const multi = static_cast<ozMFRefInfo *>(parent->others()->getFieldInfo());
  EXPECT_EQ(Thing::getClassType(), single->getRefType());
  EXPECT_EQ(Thing::getClassType(), multi->getRefType());
  EXPECT_EQ(ozSFRef::getClassType(), single->getFieldType());
  EXPECT_EQ(ozMFRef::getClassType(), multi->getFieldType());
}

TEST_F(RefField, SetCountsTheObjectAndBecomesItsParent) {
  parent->other()->set(things[0]);
  EXPECT_EQ(things[0], parent->_other);
  EXPECT_EQ(things[0], parent->other()->get());
  EXPECT_EQ("1 0 0 0", held());
  EXPECT_TRUE(announced(Thing::OTHER));
  parent->other()->set(things[1]);
  EXPECT_EQ("0 1 0 0", held());
}

TEST_F(RefField, SetToNullReleasesAndIsAlwaysAccepted) {
  parent->other()->set(things[0]);
  EXPECT_FALSE(parent->other()->isDefault());
  EXPECT_EQ("", stderrOf([&] { parent->other()->set(nullptr); }));
  EXPECT_EQ(nullptr, parent->other()->get());
  EXPECT_TRUE(parent->other()->isDefault());
  EXPECT_EQ("0 0 0 0", held());
}

TEST_F(RefField, StoringTheSameObjectAgainKeepsItsCountsAndAnnounces) {
  Thing *const only = new Thing;
  parent->other()->set(only);
  parent->changes.clear();
  parent->other()->set(only);
  EXPECT_EQ(1u, only->getRefCount());
  EXPECT_EQ(1, only->getParentCount());
  EXPECT_TRUE(announced(Thing::OTHER));
}

TEST_F(RefField, AnObjectOfADerivedClassIsAccepted) {
  SpecialThing *const special = new SpecialThing;
  EXPECT_EQ("", stderrOf([&] { parent->other()->set(special); }));
  EXPECT_EQ(special, parent->_other);
}

TEST_F(RefField, AWrongTypeIsReportedAndChangesNothing) {
  parent->other()->set(things[0]);
  parent->changes.clear();
  EXPECT_EQ(message("ozSFRef::set()"), stderrOf([&] { parent->other()->set(stranger); }));
  EXPECT_EQ(things[0], parent->_other);
  EXPECT_EQ("1 0 0 0", held());
  EXPECT_TRUE(parent->changes.empty());
}

TEST_F(RefField, TheMessageNamesTheParent) {
  parent->setName("Joe");
  EXPECT_EQ(message("ozSFRef::set()", "Joe"), stderrOf([&] { parent->other()->set(stranger); }));
}

TEST_F(RefField, IsBadTypeCanBeAsked) {
  EXPECT_EQ(0, parent->other()->isBadType(nullptr, "here"));
  EXPECT_EQ(0, parent->other()->isBadType(things[0], "here"));
  EXPECT_EQ(message("here"), stderrOf([&] { EXPECT_EQ(1, parent->other()->isBadType(stranger, "here")); }));
  EXPECT_EQ(message("there"), stderrOf([&] { EXPECT_EQ(1, parent->others()->isBadType(stranger, "there")); }));
  EXPECT_EQ(0, parent->others()->isBadType(nullptr, "there"));
}

TEST_F(RefField, RemovingTheLastReferenceDestroysTheObjectBeforeFieldChanged) {
  static int aliveAtChange;
  struct Watcher : Thing {
    void fieldChanged(short id) override {
      aliveAtChange = Thing::Alive;
      Thing::fieldChanged(id);
    }
  };
  Watcher watcher;
  watcher.other()->set(new Thing);
  int const with = Thing::Alive;
  watcher.other()->set(nullptr);
  EXPECT_EQ(with - 1, aliveAtChange);
}

TEST_F(RefField, ASingleReferenceIsPulledAndCopied) {
  Thing source;
  source.connect(Thing::OTHER, parent, Thing::OTHER);
  source.other()->set(things[2]);
  EXPECT_EQ(things[2], parent->other()->get());
  source.other()->set(nullptr);
  parent->other()->set(things[1]);
  parent->other()->copy(source.number());
  EXPECT_EQ(things[1], parent->_other) << "of another class";
  source.other()->copy(parent->other());
  EXPECT_EQ(things[1], source._other);
  source.other()->set(nullptr);
}

TEST_F(RefField, TheSingleDescriptionResetsWithoutCounting) {
  parent->other()->set(things[0]);
  parent->other()->getFieldInfo()->reset(parent);
  EXPECT_EQ(nullptr, parent->_other);
  EXPECT_EQ("1 0 0 0", held());
  parent->unrefer(things[0]);
}

TEST_F(RefField, TheSingleDescriptionCopiesAndCountsWithoutReleasing) {
  Thing source;
  source.other()->set(things[0]);
  parent->other()->set(things[1]);
  parent->changes.clear();
  parent->other()->getFieldInfo()->copy(parent, &source);
  EXPECT_EQ(things[0], parent->_other);
  EXPECT_EQ(3u, things[0]->getRefCount());
  EXPECT_EQ(2u, things[1]->getRefCount()) << "not released, as meant for fresh destinations";
  EXPECT_TRUE(parent->changes.empty());
  parent->unrefer(things[1]);
  source.other()->set(nullptr);
}

TEST_F(RefField, FieldsThatOwnTheirReferencesReleaseThemWithTheContainer) {
  {
    Loose loose;
    EXPECT_EQ(nullptr, loose.getField(0)->getStorage());
    static_cast<ozSFRef *>(loose.getField(0))->set(things[0]);
    static_cast<ozMFRef *>(loose.getField(1))->append(things[0]);
    static_cast<ozMFRef *>(loose.getField(1))->append(things[1]);
    EXPECT_EQ(things[0], static_cast<ozSFRef *>(loose.getField(0))->get());
    EXPECT_EQ(2u, static_cast<ozMFRef *>(loose.getField(1))->getCount());
    EXPECT_EQ(3u, things[0]->getRefCount());
  }
  EXPECT_EQ(1u, things[0]->getRefCount());
}

// ---- ozMFRef: reading

TEST_F(RefField, AnArrayOfReferencesIsRead) {
  ozMFRef *const others = parent->others();
  EXPECT_TRUE(others->isDefault());
  others->append(things[0]);
  others->append(nullptr);
  others->append(things[1]);
  EXPECT_FALSE(others->isDefault());
  EXPECT_EQ(&parent->_others, &others->get());
  EXPECT_EQ(3u, others->getCount());
  EXPECT_EQ(things[1], others->get(2));
  EXPECT_EQ(nullptr, (*others)[1]);
  ozContainer *range[2];
  others->getRange(0, 2, range);
  EXPECT_EQ(things[0], range[0]);
  EXPECT_EQ(nullptr, range[1]);
  EXPECT_EQ(2, others->find(things[1]));
  EXPECT_EQ(-1, others->find(things[3]));
}

TEST_F(RefField, EveryReadOfAnArrayOfReferencesPulls) {
  Thing source;
  source.connect(Thing::OTHERS, parent, Thing::OTHERS);
  ozMFRef *const others = parent->others();
  source.others()->append(things[0]);
  EXPECT_EQ(0, others->find(things[0]));
  source.others()->set(0, things[1]);
  EXPECT_EQ(things[1], others->get(0));
  source.others()->set(0, things[2]);
  EXPECT_EQ(things[2], (*others)[0]);
  source.others()->set(0, things[3]);
  ozContainer *got = nullptr;
  others->getRange(0, 1, &got);
  EXPECT_EQ(things[3], got);
  source.others()->set(0, things[0]);
  EXPECT_EQ(things[0], others->edit()[0]);
  source.others()->setCount(0);
  EXPECT_EQ(0u, others->getCount());
  source.others()->append(things[0]);
  EXPECT_EQ(1u, others->get().getCount());
  source.others()->setCount(0);
}

TEST_F(RefField, AnEditOfTheRawArrayBypassesCountsAndChecks) {
  parent->others()->append(nullptr);
  parent->others()->edit()[0] = stranger;
  EXPECT_EQ(1u, stranger->getRefCount());
  parent->others()->edit()[0] = nullptr;
}

// ---- ozMFRef: edits

TEST_F(RefField, AppendAndInsertCountAndAnnounce) {
  ozMFRef *const others = parent->others();
  others->append(things[0]);
  EXPECT_TRUE(announced(Thing::OTHERS));
  others->insert(0, things[1]);
  EXPECT_TRUE(announced(Thing::OTHERS));
  others->insert(1, nullptr);
  EXPECT_EQ("1 - 0", listed());
  EXPECT_EQ("1 1 0 0", held());
}

TEST_F(RefField, SetOfOneReplacesBelowTheCountAndGrowsBeyond) {
  ozMFRef *const others = parent->others();
  others->append(things[0]);
  parent->changes.clear();
  others->set(0, things[1]);
  EXPECT_TRUE(announced(Thing::OTHERS));
  EXPECT_EQ("0 1 0 0", held());
  others->set(2, things[2]);
  EXPECT_EQ("1 - 2", listed());
  EXPECT_EQ("0 1 1 0", held());
}

TEST_F(RefField, SetOfAnArrayReferencesTheNewBeforeItReleasesTheOld) {
  ozMFRef *const others = parent->others();
  int const before = Thing::Alive;
  Thing *const common = new Thing;
  others->append(common);
  others->append(things[0]);
  ozRefArray array;
  array.append(things[1]);
  array.append(common);
  parent->changes.clear();
  others->set(array);
  EXPECT_TRUE(announced(Thing::OTHERS));
  EXPECT_EQ(before + 1, Thing::Alive);
  EXPECT_EQ(1u, common->getRefCount());
  EXPECT_EQ("0 1 0 0", held());
  EXPECT_EQ(common, others->get(1));
  others->set(others->get());
  EXPECT_EQ(1u, common->getRefCount());
}

TEST_F(RefField, SetRangeReleasesWhatItCovers) {
  ozMFRef *const others = parent->others();
  for (Thing *t : things) others->append(t);
  parent->changes.clear();
  ozContainer *const values[] = {things[0], nullptr};
  others->setRange(1, 2, values);
  EXPECT_TRUE(announced(Thing::OTHERS));
  EXPECT_EQ("0 0 - 3", listed());
  EXPECT_EQ("2 0 0 1", held());
  others->setRange(3, 2, values);
  EXPECT_EQ("0 0 - 0 -", listed());
  EXPECT_EQ("3 0 0 0", held());
}

TEST_F(RefField, FillRangeBehindTheEndHoldsOneCountHoweverManySlots) {
  ozMFRef *const others = parent->others();
  others->append(things[0]);
  parent->changes.clear();
  others->fillRange(1, 3, things[1]);
  EXPECT_TRUE(announced(Thing::OTHERS));
  EXPECT_EQ("0 1 1 1", listed());
  EXPECT_EQ("1 1 0 0", held());
  for (unsigned int i = 2; i < 4; ++i) others->edit()[i] = nullptr; // or the slots would be released once each
}

TEST_F(RefField, FillRangeOverElementsReleasesThemAndWritesBehindThem) {
  ozMFRef *const others = parent->others();
  others->append(things[0]);
  others->append(things[1]);
  others->fillRange(1, 2, things[2]);
  EXPECT_EQ("0 1 2 2", listed());
  EXPECT_EQ("1 0 1 0", held());
  others->edit()[1] = others->edit()[2] = nullptr;
}

TEST_F(RefField, AnElementReferencedTwiceHasTwoCountsAndRemoveTakesOneOfEach) {
  ozMFRef *const others = parent->others();
  others->append(things[0]);
  others->append(things[1]);
  others->append(things[0]);
  EXPECT_EQ("2 1 0 0", held());
  parent->changes.clear();
  EXPECT_TRUE(others->remove(things[0]));
  EXPECT_TRUE(announced(Thing::OTHERS));
  EXPECT_EQ("1 0", listed());
  EXPECT_EQ("1 1 0 0", held());
}

TEST_F(RefField, RemovalsKeepTheOrderOrFillTheGapWithTheLast) {
  ozMFRef *const others = parent->others();
  for (Thing *t : things) others->append(t);
  parent->changes.clear();
  others->removeIndex(0);
  EXPECT_TRUE(announced(Thing::OTHERS));
  EXPECT_EQ("1 2 3", listed());
  others->fastRemoveIndex(0);
  EXPECT_TRUE(announced(Thing::OTHERS));
  EXPECT_EQ("3 2", listed());
  EXPECT_TRUE(others->fastRemove(things[3]));
  EXPECT_TRUE(announced(Thing::OTHERS));
  EXPECT_EQ("2", listed());
  EXPECT_EQ("0 0 1 0", held());
}

TEST_F(RefField, ReplaceCountsTheNewAndReleasesTheOldWithoutACheck) {
  ozMFRef *const others = parent->others();
  others->append(things[0]);
  others->append(things[1]);
  parent->changes.clear();
  EXPECT_EQ(1, others->replace(things[1], things[2]));
  EXPECT_TRUE(announced(Thing::OTHERS));
  EXPECT_EQ("0 2", listed());
  EXPECT_EQ("1 0 1 0", held());
  EXPECT_EQ("", stderrOf([&] { EXPECT_EQ(0, others->replace(things[0], stranger)); }));
  EXPECT_EQ(stranger, others->get(0));
  EXPECT_EQ(2u, stranger->getRefCount());
}

TEST_F(RefField, EditsThatFindNothingAnnounceNothing) {
  ozMFRef *const others = parent->others();
  others->append(things[0]);
  parent->changes.clear();
  EXPECT_FALSE(others->remove(things[1]));
  EXPECT_FALSE(others->fastRemove(things[1]));
  EXPECT_LT(others->replace(things[1], things[2]), 0);
  others->removeIndex(1);
  others->fastRemoveIndex(1);
  EXPECT_TRUE(parent->changes.empty());
  EXPECT_EQ("1 0 0 0", held());
  EXPECT_EQ("0", listed());
}

TEST_F(RefField, ALowerCountReleasesWhatItCutsOff) {
  ozMFRef *const others = parent->others();
  for (Thing *t : things) others->append(t);
  parent->changes.clear();
  others->setCount(1);
  EXPECT_TRUE(announced(Thing::OTHERS));
  EXPECT_EQ("1 0 0 0", held());
  static_cast<ozMField *>(others)->setCount(0);
  EXPECT_EQ("0 0 0 0", held());
}

TEST_F(RefField, AHigherCountBringsNothingBack) {
  ozMFRef *const others = parent->others();
  for (Thing *t : things) others->append(t);
  others->setCount(2);
  others->remove(things[0]);
  others->fastRemove(things[1]);
  others->setCount(4);
  EXPECT_EQ("- - - -", listed());
  others->setCount(0);
  for (Thing *t : things) others->append(t);
  others->removeIndex(0);
  others->fastRemoveIndex(0);
  others->set(ozRefArray());
  others->set(5, things[0]);
  EXPECT_EQ("- - - - - 0", listed());
}

TEST_F(RefField, RemovingTheLastReferenceFromAnArrayDestroysTheObject) {
  int const before = Thing::Alive;
  for (int way = 0; way < 7; ++way) {
    Thing *const only = new Thing;
    ozMFRef *const others = parent->others();
    others->append(only);
    ozContainer *const none[] = {nullptr};
    if (way == 0) others->remove(only);
    if (way == 1) others->fastRemove(only);
    if (way == 2) others->removeIndex(0);
    if (way == 3) others->fastRemoveIndex(0);
    if (way == 4) others->replace(only, nullptr);
    if (way == 5) others->set(ozRefArray());
    if (way == 6) others->setRange(0, 1, none);
    EXPECT_EQ(before, Thing::Alive) << way;
    others->setCount(0);
  }
}

struct Refused {
  char const *where;
  void (*edit)(ozMFRef *field, Stranger *stranger, Thing *good);
};

TEST_F(RefField, EachCheckedEditRefusesAWrongTypeWithItsOwnWords) {
  static Refused const edits[] = {
      {"ozMFRef::set(int, ozContainer*)", [](ozMFRef *f, Stranger *s, Thing *) { f->set(0, s); }},
      {"ozMFRef::set(const ozRefArray&) Bad type\n",
       [](ozMFRef *f, Stranger *s, Thing *good) {
         ozRefArray array;
         array.append(good);
         array.append(s);
         array.append(good);
         f->set(array);
       }},
      {"ozMFRef::setRange(int, int, ozContainer*[])",
       [](ozMFRef *f, Stranger *s, Thing *good) {
         ozContainer *const values[] = {good, s};
         f->setRange(0, 2, values);
       }},
      {"ozMFRef::fillRange(int, int, ozContainer*)\n", [](ozMFRef *f, Stranger *s, Thing *) { f->fillRange(1, 2, s); }},
      {"ozMFRef::append(int, ozContainer*)", [](ozMFRef *f, Stranger *s, Thing *) { f->append(s); }},
      {"ozMFRef::insert(int, ozContainer*)", [](ozMFRef *f, Stranger *s, Thing *) { f->insert(0, s); }},
  };
  parent->others()->append(things[0]);
  parent->changes.clear();
  for (Refused const &refused : edits) {
    EXPECT_EQ(message(refused.where), stderrOf([&] { refused.edit(parent->others(), stranger, things[1]); }));
    EXPECT_EQ("0", listed()) << refused.where;
    EXPECT_EQ("1 0 0 0", held()) << refused.where;
    EXPECT_EQ(1u, stranger->getRefCount()) << refused.where;
    EXPECT_TRUE(parent->changes.empty()) << refused.where;
  }
}

TEST_F(RefField, AnArrayIsCopiedFromAFieldOfItsClassOnly) {
  Thing source;
  source.others()->append(things[0]);
  parent->others()->copy(source.others());
  EXPECT_TRUE(announced(Thing::OTHERS));
  EXPECT_EQ("0", listed());
  parent->others()->copy(source.points());
  parent->others()->copy(nullptr);
  EXPECT_EQ("0", listed());
  EXPECT_TRUE(parent->changes.empty());
  source.others()->setCount(0);
}

TEST_F(RefField, TheMultiDescriptionCopiesAndCounts) {
  Thing source;
  source.others()->append(things[0]);
  source.others()->append(nullptr);
  source.others()->append(things[0]);
  parent->others()->getFieldInfo()->copy(parent, &source);
  EXPECT_EQ("0 - 0", listed());
  EXPECT_EQ(3u, parent->_others.getSize());
  EXPECT_EQ(5u, things[0]->getRefCount());
  EXPECT_TRUE(parent->changes.empty());
  source.others()->setCount(0);
}

TEST_F(RefField, TheMultiDescriptionNeverLeavesACountAboveTheSize) {
  Thing source;
  source.others()->append(things[0]);
  for (int i = 1; i < 4; ++i) parent->others()->append(things[i]);
  parent->others()->getFieldInfo()->copy(parent, &source);
  EXPECT_EQ("0", listed());
  for (int i = 1; i < 4; ++i) parent->unrefer(things[i]); // not released, as meant for fresh destinations
  source.others()->setCount(0);
}

TEST_F(RefField, TheMultiDescriptionResetsWithoutCounting) {
  parent->others()->append(things[0]);
  parent->others()->getFieldInfo()->reset(parent);
  EXPECT_EQ("", listed());
  EXPECT_EQ("1 0 0 0", held());
  parent->unrefer(things[0]);
}

// ---- forwarding

class ForwardedRefs : public RefField {
protected:
  void SetUp() override {
    RefField::SetUp();
    parent->others()->setEventClass(ozField::EVENT_FORWARD);
    output = new Thing;
    output->ref();
    parent->connect(Thing::OTHERS, output, Thing::OTHERS);
    output->others()->getCount();
    output->changes.clear();
  }
  void TearDown() override {
    output->unref();
    RefField::TearDown();
  }
  void expectOutput(std::vector<ozContainer *> const &expected) {
    std::vector<ozContainer *> is;
    for (unsigned int i = 0; i < output->_others.getCount(); ++i) is.push_back(output->_others[i]);
    EXPECT_EQ(expected, is);
    EXPECT_EQ(std::vector<short>{Thing::OTHERS}, output->changes);
    output->changes.clear();
    EXPECT_TRUE(parent->changes.empty());
  }
  Thing *output;
};

TEST_F(ForwardedRefs, EachEditIsMadeOnTheOutputAndAnnouncedThereAlone) {
  ozMFRef *const others = parent->others();
  ozContainer *const a = things[0], *const b = things[1], *const c = things[2], *const d = things[3];
  others->append(a);
  expectOutput({a});
  others->insert(0, b);
  expectOutput({b, a});
  others->set(1, c);
  expectOutput({b, c});
  others->replace(c, d);
  expectOutput({b, d});
  ozContainer *const values[] = {a, c};
  others->setRange(2, 2, values);
  expectOutput({b, d, a, c});
  others->remove(d);
  expectOutput({b, a, c});
  others->fastRemove(b);
  expectOutput({c, a});
  others->removeIndex(0);
  expectOutput({a});
  others->append(b);
  expectOutput({a, b});
  others->fastRemoveIndex(0);
  expectOutput({b});
  ozRefArray array;
  array.append(c);
  array.append(d);
  others->set(array);
  expectOutput({c, d});
  others->setCount(1);
  expectOutput({c});
}

TEST_F(ForwardedRefs, FillRangeForwardsItsOwnArguments) {
  parent->others()->append(things[0]);
  output->changes.clear();
  parent->others()->fillRange(1, 1, things[1]);
  expectOutput({things[0], things[1]});
}

TEST_F(ForwardedRefs, SetRangeForwardsTheEndOfWhatItReleasedAsItsStart) {
  parent->others()->append(things[0]);
  output->changes.clear();
  ozContainer *const values[] = {things[1]};
  parent->others()->setRange(0, 1, values);
  EXPECT_EQ("1", listed());
  expectOutput({things[0], things[1]});
}

TEST_F(ForwardedRefs, WithoutAnOutputNobodyIsTold) {
  parent->disconnect(Thing::OTHERS, output, Thing::OTHERS);
  ozMFRef *const others = parent->others();
  others->append(things[0]);
  others->insert(0, things[1]);
  others->fillRange(2, 1, things[2]);
  others->removeIndex(0);
  others->setCount(0);
  EXPECT_TRUE(parent->changes.empty());
  EXPECT_EQ("0 0 0 0", held());
}

TEST_F(RefField, IsSetThroughItsDescriptionWithoutAnObject) {
  auto *const info = static_cast<ozSFRefInfo *>(Thing::getClassType()->getFieldInfo(Thing::OTHER));
  info->set(parent, things[0]);
  info->set(parent, things[1]);
  EXPECT_EQ(things[1], parent->_other);
  EXPECT_EQ(1u, things[0]->getRefCount());
  EXPECT_EQ(2u, things[1]->getRefCount());
  EXPECT_EQ(parent, things[1]->getParent(0));
  EXPECT_EQ((std::vector<short>{Thing::OTHER, Thing::OTHER}), parent->changes);
  EXPECT_EQ(nullptr, parent->findFieldObject(Thing::OTHER));
}

TEST_F(RefField, ItsDescriptionRefusesOtherClassesAsItDoes) {
  auto *const info = static_cast<ozSFRefInfo *>(Thing::getClassType()->getFieldInfo(Thing::OTHER));
  info->set(parent, things[0]);
  std::string const said = stderrOf([&] { info->set(parent, stranger); });
  EXPECT_EQ(said, stderrOf([&] { parent->other()->set(stranger); }));
  EXPECT_NE("", said);
  EXPECT_EQ(things[0], parent->_other);
}

} // namespace
