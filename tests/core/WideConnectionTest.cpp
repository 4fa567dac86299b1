// Fields with very many connections: the lists are indexed, and answer as lists that are searched.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
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

Fields contents(ozFieldEnds const &ends) {
  Fields fields;
  for (unsigned int i = 0; i < ends.getCount(); ++i) fields.push_back(ends.get(i));
  return fields;
}

void drop(Fields &fields, ozField *field) { fields.erase(std::find(fields.begin(), fields.end(), field)); }

// Notes that a mark reached it, and does something then.
struct Listener : Thing {
  void dirtyFieldOutputs(ozField *f) override {
    if (heard) heard(this);
    Thing::dirtyFieldOutputs(f);
  }
  std::function<void(Listener *)> heard;
};

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

// The same where nobody looks at the list after each step, nor ever asks for the array.
struct UnseenConnections : WideConnection {
  UnseenConnections() : WideConnection(500) {
    for (size_t i = 0; i < others.size(); ++i) {
      hub.number()->connect(field(i));
      expected.push_back(field(i));
    }
  }
  ozFieldEnds const &ends() { return hub.number()->getOutputEnds(); }
  // Takes out so many, anywhere, without a look at the list.
  void takeOut(size_t count) {
    for (; count; --count) {
      size_t const at = random() % expected.size();
      hub.number()->disconnect(expected[at]);
      expected.erase(expected.begin() + static_cast<long>(at));
    }
  }
  void clean() {
    for (auto &other : others) other->getNumber();
  }

  std::mt19937 random{11};
  Fields expected;
};

TEST_F(UnseenConnections, KeepTheirOrderWhenManyAreTakenOutAnywhere) {
  for (size_t count : {1u, 63u, 64u, 65u, 200u, 100u}) {
    takeOut(count);
    ASSERT_EQ(expected, contents(ends())) << count;
  }
}

TEST_F(UnseenConnections, ConnectAtTheEndAfterManyWereTakenOut) {
  for (int round = 0; round < 20; ++round) {
    takeOut(150);
    for (size_t i = 0; i < others.size(); ++i) {
      if (std::find(expected.begin(), expected.end(), field(i)) != expected.end()) continue;
      hub.number()->connect(field(i));
      expected.push_back(field(i));
    }
    takeOut(100);
    for (int i = 0; i < 100; ++i) {
      ozField *const target = field(random() % others.size());
      hub.number()->connect(target);
      if (std::find(expected.begin(), expected.end(), target) == expected.end()) expected.push_back(target);
    }
    if (round % 3 == 0) {
      ASSERT_EQ(expected, contents(ends())) << round;
    }
  }
  EXPECT_EQ(expected, contents(ends()));
}

TEST_F(UnseenConnections, AreWholeInTheArrayThatSomebodyAsksForAfterwards) {
  takeOut(300);
  ozFieldArray *const array = hub.number()->getOutputs();
  EXPECT_EQ(expected, contents(array));
  takeOut(150);
  EXPECT_EQ(expected, contents(array));
}

TEST_F(UnseenConnections, AreWholeInTheArrayThatSomebodyHoldsMeanwhile) {
  ozFieldArray const *const array = hub.number()->getOutputs();
  while (!expected.empty()) {
    takeOut(1);
    ASSERT_EQ(expected.size(), array->getCount());
    ASSERT_EQ(expected, contents(array));
  }
}

TEST_F(UnseenConnections, HearAChangeAfterManyOthersWereTakenOut) {
  clean();
  takeOut(300);
  hub.setNumber(5);
  for (size_t i = 0; i < others.size(); ++i) {
    bool const connected = std::find(expected.begin(), expected.end(), field(i)) != expected.end();
    EXPECT_EQ(connected, field(i)->isDirty()) << i;
    EXPECT_EQ(connected ? 5 : 7, others[i]->getNumber()) << i;
  }
}

TEST_F(UnseenConnections, CanAllBeTakenOutAndConnectedAgain) {
  for (int round = 0; round < 3; ++round) {
    EXPECT_FALSE(ends().isEmpty());
    takeOut(expected.size() - 1);
    EXPECT_FALSE(ends().isEmpty());
    takeOut(1);
    EXPECT_TRUE(ends().isEmpty());
    EXPECT_EQ(0u, ends().getCount());
    for (size_t i = others.size(); i-- > 0;) {
      hub.number()->connect(field(i));
      expected.push_back(field(i));
    }
    EXPECT_EQ(expected, contents(ends()));
  }
}

TEST_F(UnseenConnections, AreNotFoundOnceTakenOut) {
  Fields const before = expected;
  takeOut(300);
  for (ozField *target : before) { // again: those that are out stay out, and the others go now
    if (std::find(expected.begin(), expected.end(), target) == expected.end()) hub.number()->disconnect(target);
  }
  EXPECT_EQ(expected, contents(ends()));
  for (ozField *target : before) hub.number()->disconnect(target);
  EXPECT_TRUE(ends().isEmpty());
}

TEST_F(UnseenConnections, OfInputsKeepTheirOrderTooAndTheMarkGoesWithTheLast) {
  Thing sink;
  expected.clear();
  for (size_t i = 0; i < others.size(); ++i) {
    field(i)->connect(sink.number());
    expected.push_back(field(i));
  }
  std::shuffle(others.begin(), others.end(), random);
  for (size_t i = 0; i < 400; ++i) {
    drop(expected, field(i));
    others[i].reset();
  }
  EXPECT_EQ(expected, contents(sink.number()->getInputEnds()));
  others.erase(others.begin(), others.begin() + 400);
  others.back()->setNumber(3);
  while (others.size() > 1) others.erase(others.begin());
  EXPECT_EQ(Fields{others[0]->number()}, contents(sink.number()->getInputEnds()));
  EXPECT_EQ(3, sink.getNumber());
  others.clear();
  EXPECT_TRUE(sink.number()->getInputEnds().isEmpty());
}

TEST_F(UnseenConnections, FollowAVectorUnderRandomConnectsDisconnectsAndLooks) {
  for (int round = 0; round < 4; ++round) {
    Thing source; // of the last one somebody holds the array from the middle on
    ozFieldArray const *held = nullptr;
    Fields reference;
    for (int run = 0; run < 300; ++run) {
      if (round == 3 && run == 150) held = source.number()->getOutputs();
      // Runs of one sort, short and long, from one place or from all over.
      bool const adding = random() % 2;
      size_t const length = random() % (random() % 2 ? 400 : 4), from = random() % others.size();
      bool const inARow = random() % 3 == 0;
      for (size_t i = 0; i < length; ++i) {
        ozField *const target = field((inARow ? from + i : random()) % others.size());
        auto const at = std::find(reference.begin(), reference.end(), target);
        if (adding) {
          source.number()->connect(target);
          if (at == reference.end()) reference.push_back(target);
        } else {
          source.number()->disconnect(target);
          if (at != reference.end()) reference.erase(at);
        }
      }
      ASSERT_EQ(reference.empty(), source.number()->getOutputEnds().isEmpty());
      if (held) {
        ASSERT_EQ(reference, contents(held)) << run;
      }
      if (random() % 3 == 0) {
        ASSERT_EQ(reference, contents(source.number()->getOutputEnds())) << run;
      }
    }
    ASSERT_EQ(reference, contents(source.number()->getOutputs()));
  }
}

// What a listener takes out during a walk is missing at once: those behind it move up, and the place counts on.
TEST(ConnectionWalk, GoesOnAtTheNextPlaceWhenAListenerTakesOutOthers) {
  for (size_t burst : {1u, 2u, 70u, 150u}) {
    Thing source;
    std::vector<std::unique_ptr<Listener>> listeners;
    Fields list, heard, expected;
    for (int i = 0; i < 400; ++i) {
      listeners.emplace_back(new Listener);
      source.number()->connect(listeners.back()->number());
      list.push_back(listeners.back()->number());
    }
    // Which go at which step: the same choice for the walk and for the vector.
    auto const choose = [burst](Fields const &from, size_t step) {
      Fields chosen;
      if (step % 10 == 0)
        for (size_t i = 0; i < burst && i * 3 + step < from.size(); ++i) chosen.push_back(from[i * 3 + step]);
      return chosen;
    };
    Fields mirror = list;
    for (auto &listener : listeners)
      listener->heard = [&](Listener *who) {
        for (ozField *gone : choose(mirror, heard.size())) {
          source.number()->disconnect(gone);
          drop(mirror, gone);
        }
        heard.push_back(who->number());
      };
    source.setNumber(1);
    for (size_t i = 0; i < 400 && i < list.size(); ++i) {
      ozField *const next = list[i];
      for (ozField *gone : choose(list, expected.size())) drop(list, gone);
      expected.push_back(next);
    }
    EXPECT_EQ(expected, heard) << burst;
    EXPECT_EQ(list, contents(source.number()->getOutputEnds())) << burst;
    for (auto &listener : listeners) listener->heard = nullptr;
  }
}

TEST(ConnectionWalk, EndsWhenAListenerTakesOutEverything) {
  Thing source;
  std::vector<std::unique_ptr<Listener>> listeners;
  size_t heard = 0;
  for (int i = 0; i < 200; ++i) {
    listeners.emplace_back(new Listener);
    source.number()->connect(listeners.back()->number());
  }
  for (auto &listener : listeners)
    listener->heard = [&](Listener *) {
      if (++heard < 50) return;
      for (size_t i = 0; i < listeners.size(); ++i)
        source.number()->disconnect(listeners[(i * 77) % listeners.size()]->number());
    };
  source.setNumber(1);
  EXPECT_EQ(50u, heard);
  EXPECT_TRUE(source.number()->getOutputEnds().isEmpty());
}

TEST_F(UnseenConnections, ThatAreGoneInAnyOrderAndDieInAnotherLeaveASourceThatCanDie) {
  {
    Thing source;
    for (size_t i = 0; i < others.size(); ++i) source.number()->connect(field(i));
    for (size_t i = 0; i < others.size(); ++i) source.number()->disconnect(field(i)); // all still follow it
    std::shuffle(others.begin(), others.end(), random);
    others.resize(200);
  }
  for (size_t i = 0; i < others.size(); ++i) EXPECT_EQ(nullptr, field(i)->getSource());
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
