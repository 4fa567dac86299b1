#include <gtest/gtest.h>

#include <vector>

#include "testContainers.h"

namespace {

struct Connection : ::testing::Test {
  Thing a, b, c; // on the stack: nobody counts them
};

TEST_F(Connection, AConnectionCopiesWhenTheTargetIsRead) {
  a.setNumber(3);
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  EXPECT_EQ(7, b._number);
  EXPECT_TRUE(b.number()->isDirty());
  b.changes.clear();
  EXPECT_EQ(3, b.getNumber());
  EXPECT_EQ(std::vector<short>{Thing::NUMBER}, b.changes);
  EXPECT_FALSE(b.number()->isDirty());
}

TEST_F(Connection, TwoSetsAndOneReadMakeOneCopy) {
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  b.getNumber();
  b.changes.clear();
  a.setNumber(4);
  a.setNumber(5);
  EXPECT_EQ(5, b.getNumber());
  EXPECT_EQ(1u, b.changes.size());
}

TEST_F(Connection, AChainIsPulledFromItsFarEnd) {
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  b.connect(Thing::NUMBER, &c, Thing::NUMBER);
  a.setNumber(11);
  EXPECT_EQ(11, c.getNumber());
  EXPECT_EQ(11, b._number);
}

TEST_F(Connection, ACycleSettlesAtOnceAndLeavesNothingBusy) {
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  b.connect(Thing::NUMBER, &a, Thing::NUMBER);
  a.setNumber(21);
  EXPECT_EQ(21, b._number);
  b.setNumber(22);
  EXPECT_EQ(22, a._number);
  a.setNumber(23);
  EXPECT_EQ(23, b.getNumber());
}

TEST_F(Connection, ConnectingAPairTwiceDoesNothingMore) {
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  b.getNumber();
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  EXPECT_EQ(1u, a.number()->getOutputs()->getCount());
  EXPECT_EQ(1u, b.number()->getInputs()->getCount());
  EXPECT_FALSE(b.number()->isDirty());
}

TEST_F(Connection, OfTwoInputsTheLastToAnnounceAChangeIsRead) {
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  c.connect(Thing::NUMBER, &b, Thing::NUMBER);
  a.setNumber(1);
  c.setNumber(2);
  EXPECT_EQ(2, b.getNumber());
  c.setNumber(4);
  a.setNumber(3);
  EXPECT_EQ(3, b.getNumber());
}

TEST_F(Connection, ASetOnADirtyFieldStandsAndSettlesItsSource) {
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  b.connect(Thing::NUMBER, &c, Thing::NUMBER);
  a.setNumber(9);
  c.setNumber(100);
  EXPECT_FALSE(c.number()->isDirty());
  EXPECT_EQ(9, b._number);
  EXPECT_FALSE(b.number()->isDirty());
  EXPECT_EQ(100, c.getNumber());
}

TEST_F(Connection, DisconnectingTheLastInputLeavesTheFieldCleanWithItsOldValue) {
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  a.setNumber(9);
  a.disconnect(Thing::NUMBER, &b, Thing::NUMBER);
  EXPECT_FALSE(b.number()->isDirty());
  EXPECT_FALSE(b.hasPendingFields());
  EXPECT_EQ(7, b.getNumber());
  EXPECT_NE(nullptr, a.number()->getOutputs());
}

TEST_F(Connection, DisconnectingOneOfTwoInputsLeavesTheNextReadToTheOldSource) {
  c.connect(Thing::NUMBER, &b, Thing::NUMBER);
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  a.setNumber(9);
  a.disconnect(Thing::NUMBER, &b, Thing::NUMBER);
  EXPECT_FALSE(b.number()->isDirty());
  EXPECT_TRUE(b.hasPendingFields());
  EXPECT_EQ(9, b.getNumber());
}

TEST_F(Connection, ConnectFetchesTheTargetsFieldFirst) {
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

TEST_F(Connection, AChangeRunsThroughAllConnectionsDepthFirstWithoutMovingAValue) {
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

TEST_F(Connection, ADiamondGivesTheValueOnceAndEnds) {
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

TEST_F(Connection, AFieldConnectedToItselfEnds) {
  a.connect(Thing::NUMBER, &a, Thing::NUMBER);
  a.setNumber(3);
  EXPECT_EQ(3, a.getNumber());
  EXPECT_FALSE(a.number()->isDirty());
}

TEST_F(Connection, SettlingTheSourceKeepsItsLaterReadFromOverwriting) {
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  b.connect(Thing::NUMBER, &c, Thing::NUMBER);
  a.setNumber(1);
  c.setNumber(2);
  EXPECT_EQ(1, b.getNumber());
  EXPECT_EQ(2, c.getNumber());
}

TEST_F(Connection, DisconnectOfAPairThatIsNotConnectedClearsTheFlagAlone) {
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

TEST_F(Connection, TheArraysOfConnectionsStayWhenTheyEndEmpty) {
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  a.disconnect(Thing::NUMBER, &b, Thing::NUMBER);
  ASSERT_NE(nullptr, a.number()->getOutputs());
  ASSERT_NE(nullptr, b.number()->getInputs());
  EXPECT_EQ(0u, a.number()->getOutputs()->getCount());
  EXPECT_EQ(0u, b.number()->getInputs()->getCount());
}

TEST_F(Connection, ReconnectingAfterADisconnectionWorks) {
  for (int i = 0; i < 3; ++i) {
    a.connect(Thing::NUMBER, &b, Thing::NUMBER);
    a.setNumber(10 + i);
    EXPECT_EQ(10 + i, b.getNumber());
    a.disconnect(Thing::NUMBER, &b, Thing::NUMBER);
    a.setNumber(0);
    EXPECT_EQ(10 + i, b.getNumber());
  }
}

TEST(ConnectionSource, AFieldThatDiesIsNobodysSourceAnyMore) {
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

TEST(ConnectionSource, AConnectedFieldThatDiesIsTakenOutOfBothSides) {
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

TEST(ConnectionSource, ASourceThatDiesAfterItsTargetMovedOnIsNotMissed) {
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

TEST(ConnectionSource, ATargetThatDiesFirstIsNotReachedByItsOldSource) {
  Thing a;
  {
    Thing b;
    a.connect(Thing::NUMBER, &b, Thing::NUMBER);
    a.disconnect(Thing::NUMBER, &b, Thing::NUMBER);
  }
  a.setNumber(1);
}

} // namespace
