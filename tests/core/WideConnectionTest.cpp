// Fields with very many connections: the lists are indexed, and answer as lists that are searched.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <vector>

#include "testContainers.h"

namespace {

typedef std::vector<ozField *> Fields;

Fields contents(ozFieldArray const *list) {
  Fields fields;
  for (unsigned int i = 0; list && i < list->getCount(); ++i) fields.push_back(list->get(i));
  return fields;
}

struct WideConnection : ::testing::Test {
  explicit WideConnection(size_t count = 300) {
    for (size_t i = 0; i < count; ++i) others.emplace_back(new Thing);
  }
  ozField *field(size_t i) { return others[i]->number(); }

  Thing hub;
  std::vector<std::unique_ptr<Thing>> others; // nobody counts them
};

TEST_F(WideConnection, OutputsKeepTheOrderOfASearchedListUnderRandomConnectsAndDisconnects) {
  std::mt19937 random(7);
  Fields expected;
  for (int step = 0; step < 20000; ++step) {
    ozField *const target = field(random() % others.size());
    auto const at = std::find(expected.begin(), expected.end(), target);
    // Mostly connects, then mostly disconnects, so that the list grows long and ends up empty again and again.
    if (random() % 8 < (step / 2000 % 2 ? 1u : 6u)) {
      hub.number()->connect(target);
      if (at == expected.end()) expected.push_back(target);
    } else {
      hub.number()->disconnect(target);
      if (at != expected.end()) expected.erase(at);
    }
    ASSERT_EQ(expected, contents(hub.number()->getOutputs())) << step;
    ASSERT_EQ(std::count(expected.begin(), expected.end(), target),
              target->getInputs() ? target->getInputs()->getCount() : 0);
  }
}

TEST_F(WideConnection, InputsKeepTheOrderOfASearchedListUnderRandomConnectsAndDisconnects) {
  std::mt19937 random(8);
  Fields expected;
  for (int step = 0; step < 20000; ++step) {
    ozField *const source = field(random() % others.size());
    auto const at = std::find(expected.begin(), expected.end(), source);
    if (random() % 8 < (step / 2000 % 2 ? 1u : 6u)) {
      source->connect(hub.number());
      if (at == expected.end()) expected.push_back(source);
    } else {
      source->disconnect(hub.number());
      if (at != expected.end()) expected.erase(at);
    }
    ASSERT_EQ(expected, contents(hub.number()->getInputs())) << step;
  }
}

TEST_F(WideConnection, TargetsThatDieInAnyOrderLeaveTheOthersInTheirs) {
  for (int round = 0; round < 3; ++round) {
    Thing source;
    Fields expected;
    std::vector<std::unique_ptr<Thing>> targets;
    for (int i = 0; i < 200; ++i) {
      targets.emplace_back(new Thing);
      source.number()->connect(targets.back()->number());
      expected.push_back(targets.back()->number());
    }
    if (round == 1) std::reverse(targets.begin(), targets.end());
    if (round == 2) std::shuffle(targets.begin(), targets.end(), std::mt19937(9));
    for (std::unique_ptr<Thing> &target : targets) {
      expected.erase(std::find(expected.begin(), expected.end(), target->number()));
      target.reset();
      ASSERT_EQ(expected, contents(source.number()->getOutputs()));
    }
  }
}

TEST_F(WideConnection, ASourceThatDiesLetsGoOfAllItsTargets) {
  {
    Thing source;
    for (size_t i = 0; i < others.size(); ++i) source.number()->connect(field(i));
  }
  for (size_t i = 0; i < others.size(); ++i) {
    EXPECT_EQ(0u, field(i)->getInputs()->getCount());
    EXPECT_EQ(nullptr, field(i)->getSource());
  }
}

TEST_F(WideConnection, ManyTargetsThatWereDisconnectedLoseASourceThatDies) {
  {
    Thing source;
    for (size_t i = 0; i < others.size(); ++i) source.number()->connect(field(i));
    for (size_t i = 0; i < others.size(); ++i) source.number()->disconnect(field(i));
    // Some of them follow another source by now, and some are connected again.
    for (size_t i = 0; i < others.size(); i += 3) hub.number()->connect(field(i));
    for (size_t i = 1; i < others.size(); i += 3) source.number()->connect(field(i));
    EXPECT_EQ(source.number(), field(2)->getSource());
  }
  for (size_t i = 0; i < others.size(); ++i) EXPECT_EQ(i % 3 == 0 ? hub.number() : nullptr, field(i)->getSource()) << i;
}

TEST_F(WideConnection, AChangeReachesEveryTargetOnceInTheOrderOfConnection) {
  for (size_t i = others.size(); i-- > 0;) hub.number()->connect(field(i));
  hub.number()->disconnect(field(17));
  for (auto &other : others) other->getNumber();
  hub.setNumber(5);
  for (size_t i = 0; i < others.size(); ++i) EXPECT_EQ(i != 17, field(i)->isDirty()) << i;
  for (size_t i = 0; i < others.size(); ++i) EXPECT_EQ(i == 17 ? 7 : 5, others[i]->getNumber()) << i;
}

TEST_F(WideConnection, AListThatIsHeldWhileItChangesShowsEveryChange) {
  hub.number()->connect(field(0));
  ozFieldArray *const held = hub.number()->getOutputs();
  for (size_t i = 1; i < others.size(); ++i) {
    hub.number()->connect(field(i));
    ASSERT_EQ(i + 1, held->getCount());
    ASSERT_EQ(field(i), held->get(held->getCount() - 1));
  }
  while (held->getCount()) {
    ozField *const gone = held->get(held->getCount() / 3);
    hub.number()->disconnect(gone);
    ASSERT_EQ(-1, held->find(gone));
  }
  EXPECT_EQ(held, hub.number()->getOutputs());
}

TEST_F(WideConnection, AListWhoseRoomSomebodyChangedStaysWhole) {
  Fields expected;
  for (size_t i = 0; i < 100; ++i) {
    hub.number()->connect(field(i));
    expected.push_back(field(i));
  }
  hub.number()->disconnect(field(0));
  hub.number()->getOutputs()->setSize(1000);
  hub.number()->disconnect(field(1));
  hub.number()->getOutputs()->setSize(98);
  for (size_t i = 100; i < others.size(); ++i) {
    hub.number()->connect(field(i));
    expected.push_back(field(i));
  }
  hub.number()->connect(field(50));
  expected.erase(expected.begin(), expected.begin() + 2);
  EXPECT_EQ(expected, contents(hub.number()->getOutputs()));
}

TEST(ConnectionArrays, AreOfSizeOneAtTheFirstConnection) {
  Thing a, b;
  EXPECT_EQ(nullptr, a.number()->getOutputs());
  EXPECT_EQ(nullptr, b.number()->getInputs());
  a.number()->connect(b.number());
  EXPECT_EQ(1u, a.number()->getOutputs()->getSize());
  EXPECT_EQ(1u, b.number()->getInputs()->getSize());
  EXPECT_EQ(nullptr, a.number()->getInputs());
  EXPECT_EQ(nullptr, b.number()->getOutputs());
}

TEST(ConnectionArrays, StayEmptyWhenTheLastConnectionGoesWhetherAskedForBeforeOrNot) {
  for (bool asked : {false, true}) {
    Thing a, b;
    a.number()->connect(b.number());
    ozFieldArray *const outputs = asked ? a.number()->getOutputs() : nullptr;
    a.number()->disconnect(b.number());
    ASSERT_NE(nullptr, a.number()->getOutputs());
    ASSERT_NE(nullptr, b.number()->getInputs());
    EXPECT_EQ(0u, a.number()->getOutputs()->getCount());
    EXPECT_EQ(0u, b.number()->getInputs()->getCount());
    EXPECT_EQ(asked ? outputs : a.number()->getOutputs(), a.number()->getOutputs());
    a.number()->connect(b.number());
    EXPECT_EQ(Fields{b.number()}, contents(a.number()->getOutputs()));
    EXPECT_EQ(Fields{a.number()}, contents(b.number()->getInputs()));
  }
}

TEST(ConnectionArrays, FollowConnectionsMadeLater) {
  Thing a, b, c;
  a.number()->connect(b.number());
  ozFieldArray *const outputs = a.number()->getOutputs();
  a.number()->connect(c.number());
  EXPECT_EQ((Fields{b.number(), c.number()}), contents(outputs));
  a.number()->disconnect(b.number());
  EXPECT_EQ(Fields{c.number()}, contents(outputs));
}

TEST(ConnectionArrays, HoldTheEndsThatAFieldGivesWithoutThem) {
  Thing a, targets[6];
  ozFieldEnds const &ends = a.number()->getOutputEnds();
  EXPECT_FALSE(ends.wereAny());
  EXPECT_EQ(0u, ends.getCount());
  Fields expected;
  for (Thing &target : targets) {
    a.number()->connect(target.number());
    expected.push_back(target.number());
    ASSERT_EQ(expected.size(), ends.getCount());
    for (unsigned int i = 0; i < ends.getCount(); ++i) EXPECT_EQ(expected[i], ends.get(i));
  }
  EXPECT_EQ(expected, contents(a.number()->getOutputs()));
  for (Thing &target : targets) a.number()->disconnect(target.number());
  EXPECT_TRUE(ends.wereAny());
  EXPECT_EQ(0u, ends.getCount());
}

TEST(ConnectionArrays, AFieldTiedToItselfDiesInPeace) {
  Thing *const a = new Thing;
  a->number()->connect(a->number());
  EXPECT_EQ(Fields{a->number()}, contents(a->number()->getInputs()));
  delete a;
}

TEST(ConnectionArrays, DisconnectingWhereNothingWasEverConnectedLeavesTheMarkOfTheOther) {
  Thing a, b;
  b.number()->setDirty(1);
  a.number()->disconnect(b.number());
  EXPECT_TRUE(b.number()->isDirty());
  a.number()->connect(b.number());
  a.number()->disconnect(b.number());
  b.number()->setDirty(1);
  a.number()->disconnect(b.number()); // not connected, but the array exists: the mark goes
  EXPECT_FALSE(b.number()->isDirty());
}

} // namespace
