#include "oz/ozObject.h"

#include <gtest/gtest.h>

#include "core/testContainers.h"

namespace {

int Alive = 0;

/// An object that shows its flag word.
class Probe : public ozObject {
public:
  Probe() : ozObject(Stranger::getClassType()) { ++Alive; }
  explicit Probe(ozType *type) : ozObject(type) { ++Alive; }
  Probe(Probe const &other) : ozObject(other) { ++Alive; }
  Probe &operator=(Probe const &) = default;
  ~Probe() override { --Alive; }

  bool bit(int i) const { return hasFlag(static_cast<FlagEnum>(1u << i)); }
  void setBit(int i) { setFlag(static_cast<FlagEnum>(1u << i), true); }
  void clearBit(int i) { setFlag(static_cast<FlagEnum>(1u << i), false); }
};

TEST(Object, StartsWithCount0AndItsType) {
  Probe probe;
  EXPECT_EQ(0u, probe.getRefCount());
  EXPECT_EQ(Stranger::getClassType(), probe.getType());
}

TEST(Object, StartsWithItsOwnFlagsCleared) {
  Probe probe;
  for (int i = 4; i <= 9; ++i) EXPECT_FALSE(probe.bit(i)) << i;
}

TEST(Object, AFlagIsSetAndClearedAlone) {
  Probe probe;
  probe.setBit(3);
  probe.setBit(5);
  probe.clearBit(3);
  EXPECT_FALSE(probe.bit(3));
  EXPECT_TRUE(probe.bit(5));
}

TEST(Object, RefThenUnrefDestroysIt) {
  Probe *const probe = new Probe;
  probe->ref();
  EXPECT_EQ(1u, probe->getRefCount());
  EXPECT_TRUE(probe->unref());
  EXPECT_EQ(0, Alive);
}

TEST(Object, UnrefWithoutAnyRefDestroysItToo) {
  Probe *const probe = new Probe;
  EXPECT_TRUE(probe->unref());
  EXPECT_EQ(0, Alive);
}

TEST(Object, UnrefLeavesAnObjectThatOthersHold) {
  Probe *const probe = new Probe;
  probe->ref();
  probe->ref();
  EXPECT_FALSE(probe->unref());
  EXPECT_EQ(1u, probe->getRefCount());
  EXPECT_EQ(1, Alive);
  probe->unref();
}

TEST(Object, UnrefNoDeleteReachesZeroAndLeavesTheObjectAlive) {
  Probe *const probe = new Probe;
  probe->ref();
  probe->ref();
  EXPECT_FALSE(probe->unrefNoDelete());
  EXPECT_TRUE(probe->unrefNoDelete());
  EXPECT_EQ(0u, probe->getRefCount());
  EXPECT_EQ(1, Alive);
  probe->unref();
}

TEST(Object, IsOfItsTypeAndItsAncestors) {
  SpecialThing thing;
  EXPECT_TRUE(thing.isOfType(SpecialThing::getClassType()));
  EXPECT_TRUE(thing.isOfType(Thing::getClassType()));
  EXPECT_TRUE(thing.isOfType(ozObject::getClassType()));
  EXPECT_FALSE(thing.isOfType(Stranger::getClassType()));
  EXPECT_FALSE(thing.isOfType(nullptr));
}

TEST(Object, ACopyCarriesTheCountTheTypeAndTheTenFlags) {
  Probe from;
  from.ref();
  from.ref();
  for (int i = 0; i <= 9; ++i) from.setBit(i);
  from.setBit(10);
  Probe const copy(from);
  EXPECT_EQ(2u, copy.getRefCount());
  EXPECT_EQ(from.getType(), copy.getType());
  for (int i = 0; i <= 9; ++i) EXPECT_TRUE(copy.bit(i)) << i;
  EXPECT_FALSE(copy.bit(10));
}

TEST(Object, AssignmentLeavesTheOtherFlagsOfTheDestination) {
  Probe from(Stranger::getClassType()), to(Thing::getClassType());
  from.ref();
  from.setBit(0);
  from.setBit(31);
  to.setBit(1);
  to.setBit(10);
  to = from;
  EXPECT_EQ(1u, to.getRefCount());
  EXPECT_EQ(Stranger::getClassType(), to.getType());
  EXPECT_TRUE(to.bit(0));
  EXPECT_FALSE(to.bit(1));
  EXPECT_TRUE(to.bit(10));
  EXPECT_FALSE(to.bit(31));
}

TEST(Object, WritesNothing) {
  Probe probe;
  EXPECT_EQ("", textOf(&probe));
}

TEST(Object, ContainersClearTheTwoLowFlags) {
  struct Flagged : Stranger {
    bool bit(int i) const { return hasFlag(static_cast<FlagEnum>(1u << i)); }
  };
  Flagged flagged;
  EXPECT_FALSE(flagged.bit(0));
  EXPECT_FALSE(flagged.bit(1));
}

} // namespace
