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

TEST_F(WideConnection, AFieldsFirstConnectionMakesListsOfRoomForOne) {
  hub.number()->connect(field(0));
  EXPECT_EQ(1u, hub.number()->getOutputs()->getSize());
  EXPECT_EQ(1u, field(0)->getInputs()->getSize());
}

} // namespace
