// Who is under the pointer and who holds the grab.

#include "anim/sensorScene.h"

#include "oz/ozHit.h"
#include "support/contextFixture.h"

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

namespace {

std::vector<std::string> Log;

/// Notes what it is told, and whether the pointer was over it.
class Probe : public ozPickSensor {
  OZ_CLASS(Probe);

public:
  Probe();
  explicit Probe(char const *name) : Probe() { setName(name); }

  void beginGrab(ozHit const &) override {
    setIsActive(1);
    note("begin");
  }
  void motion(ozHit const &hit) override { note(hit.isValid() ? "motion" : "motion off"); }
  void endGrab(ozHit const &) override {
    setIsActive(0);
    note("end");
  }
  using ozPickSensor::setIsActive;

  std::function<void()> then; // done once, in the next call

private:
  void note(std::string const &what) {
    Log.push_back(std::string(getName()) + " " + what + (isPicked() ? " over" : ""));
    std::function<void()> now;
    now.swap(then);
    if (now) now();
  }
};

OZ_DEFINE_CLASS(Probe, "Probe", ozPickSensor) {}

class Listener : public ozContainer {
  OZ_CLASS(Listener);

public:
  Listener();
  unsigned char _value;
};

OZ_DEFINE_CLASS(Listener, "SensorListener", ozContainer) {
  ozSFUByte::addTypeField(type, "value", 0, 0, &Listener::_value);
}

typedef std::vector<std::string> Calls;

class PickSensor : public ::testing::Test {
protected:
  void SetUp() override {
    scene.mouse(-4, -4, 0); // away from whatever a test before has left
    Log.clear();
  }
  void TearDown() override { scene.mouse(-4, -4, 0); }

  Calls taken() {
    Calls calls;
    calls.swap(Log);
    return calls;
  }

  OffscreenContext gl{500, 500};
  SensorScene scene;
};

} // namespace

TEST(PickSensorClass, HasItsFields) {
  ozType *const type = ozPickSensor::getClassType();
  EXPECT_STREQ(type->getName(), "PickSensor");
  EXPECT_EQ(type->getAncestor(), ozNode::getClassType());
  ASSERT_EQ(type->getFieldInfoCount(), 4);
  EXPECT_STREQ(type->getFieldInfo(2)->getName(), "enabled");
  EXPECT_STREQ(type->getFieldInfo(3)->getName(), "isActive");
  EXPECT_EQ(type->getFieldInfo(2)->getFieldType(), ozSFUByte::getClassType());
  EXPECT_EQ(type->getFieldInfo(3)->getFieldType(), ozSFUByte::getClassType());
  Probe probe;
  EXPECT_EQ(probe.getEnabled(), 1);
  EXPECT_EQ(probe.getIsActive(), 0);
  EXPECT_FALSE(probe.isPicked());
  probe.draw(nullptr);
}

TEST(PickSensorClass, CoordFramesHaveTheirNumbers) {
  EXPECT_EQ(ozPickSensor::LOCAL, 0);
  EXPECT_EQ(ozPickSensor::WORLD, 1);
}

TEST(PickSensorClass, DisablingAnActiveOneEndsItsActivity) {
  Probe probe;
  probe.setIsActive(1);
  probe.setEnabled(0);
  EXPECT_EQ(probe.getIsActive(), 0);
  probe.setIsActive(1);
  probe.setEnabled(1);
  EXPECT_EQ(probe.getIsActive(), 1);
}

TEST(PickSensorClass, EnabledTellsItsConnectionsNothing) {
  Probe probe;
  Listener listener;
  probe.connect(2, &listener, 0);
  listener.cleanFields();
  probe.setEnabled(0);
  EXPECT_FALSE(listener.hasPendingFields());
}

TEST(PickSensorClass, TheEndOfActivityReachesItsConnections) {
  Probe probe;
  Listener listener;
  probe.setIsActive(1);
  probe.connect(3, &listener, 0);
  listener.cleanFields();
  EXPECT_EQ(listener._value, 1);
  probe.setEnabled(0);
  EXPECT_TRUE(listener.hasPendingFields());
  listener.cleanFields();
  EXPECT_EQ(listener._value, 0);
}

TEST_F(PickSensor, SeesMotionOverItsSiblings) {
  scene.group->addChild(new Probe("a"));
  scene.mouse(0, 0, 0);
  EXPECT_EQ(taken(), (Calls{"a motion over"}));
  scene.mouse(0.5f, 0, 0);
  EXPECT_EQ(taken(), (Calls{"a motion over"}));
}

TEST_F(PickSensor, SeesOneLastMotionWhenThePointerLeaves) {
  scene.group->addChild(new Probe("a"));
  scene.mouse(0, 0, 0);
  taken();
  scene.mouse(3, 3, 0);
  EXPECT_EQ(taken(), (Calls{"a motion off"}));
  scene.mouse(3, 3.5f, 0);
  EXPECT_EQ(taken(), Calls());
}

TEST_F(PickSensor, WithoutRootOrCameraNothingHappens) {
  scene.group->addChild(new Probe("a"));
  ozPickSensor::updateSensors(nullptr, scene.camera, 250, 250, 0);
  ozPickSensor::updateSensors(scene.root, nullptr, 250, 250, 0);
  EXPECT_EQ(taken(), Calls());
}

TEST_F(PickSensor, APressGrabsAllOfTheGroupInChildOrder) {
  scene.group->insertChild(0, new Probe("a"));
  scene.group->addChild(new Probe("b"));
  scene.mouse(0, 0, 1);
  EXPECT_EQ(taken(), (Calls{"a begin over", "b begin over"}));
  scene.mouse(0, 0, 1);
  EXPECT_EQ(taken(), (Calls{"a motion over", "b motion over"}));
  scene.mouse(0, 0, 0);
  EXPECT_EQ(taken(), (Calls{"a end over", "b end over", "a motion over", "b motion over"}));
}

TEST_F(PickSensor, HoldsTheGrabOffTheShape) {
  scene.group->addChild(new Probe("a"));
  scene.mouse(0, 0, 1);
  taken();
  scene.mouse(3, 3, 1);
  EXPECT_EQ(taken(), (Calls{"a motion off"}));
  scene.mouse(3, 3, 0);
  EXPECT_EQ(taken(), (Calls{"a end"}));
  scene.mouse(3, 3, 0);
  EXPECT_EQ(taken(), Calls());
}

TEST_F(PickSensor, APressOnNothingGrabsNobodyUntilTheRelease) {
  scene.group->addChild(new Probe("a"));
  scene.mouse(3, 3, 1);
  scene.mouse(0, 0, 1);
  EXPECT_EQ(taken(), Calls());
  scene.mouse(0, 0, 0);
  EXPECT_EQ(taken(), (Calls{"a motion over"}));
}

TEST_F(PickSensor, OfTheLowestGroupWins) {
  scene.root->addChild(new Probe("high"));
  scene.group->addChild(new Probe("middle"));
  scene.mouse(0, 0, 0);
  EXPECT_EQ(taken(), (Calls{"middle motion over"}));
  scene.transform->addChild(new Probe("low"));
  scene.mouse(0, 0, 0);
  EXPECT_EQ(taken(), (Calls{"middle motion", "low motion over"})) << "middle has lost the pointer";
}

TEST_F(PickSensor, DisabledOnesDoNotStopTheSearch) {
  scene.root->addChild(new Probe("high"));
  Probe *const low = new Probe("low");
  low->setEnabled(0);
  scene.group->addChild(low);
  scene.mouse(0, 0, 0);
  EXPECT_EQ(taken(), (Calls{"high motion over"}));
}

TEST_F(PickSensor, CountsInEveryGroupThatHoldsWhatWasHit) {
  ozGroup *const other = new ozGroup;
  other->addChild(scene.transform);
  other->addChild(new Probe("other"));
  scene.root->addChild(other);
  scene.group->addChild(new Probe("here"));
  scene.mouse(0, 0, 0);
  EXPECT_EQ(taken(), (Calls{"here motion over", "other motion over"}));
}

TEST_F(PickSensor, NullChildrenArePassedOver) {
  scene.group->addChild(new Probe("a"));
  scene.group->setChildCount(5);
  scene.mouse(0, 0, 0);
  EXPECT_EQ(taken(), (Calls{"a motion over"}));
}

TEST_F(PickSensor, ADeletedOneIsInNoList) {
  Probe *const a = new Probe("a");
  scene.group->addChild(a);
  scene.mouse(0, 0, 0);
  scene.mouse(0, 0, 1);
  taken();
  scene.group->removeChild(a);
  scene.mouse(0, 0, 1);
  scene.mouse(3, 3, 0);
  EXPECT_EQ(taken(), Calls());
}

TEST_F(PickSensor, MayDeleteOthersInACallOfAnyKind) {
  struct Case {
    char const *what;
    int before, down; // the button before, and at the call in question
    float x;
    Calls expected; // without a, which goes in the middle, too
  } const cases[] = {
      {"hovering", 0, 0, 0, {"b motion over", "d motion over"}},
      // The last takes the place of each that has left: a, then d, then c, then b.
      {"leaving", 0, 0, 3, {"d motion off", "c motion off", "b motion off"}},
      {"the press", 0, 1, 0, {"b begin over", "d begin over"}},
      {"the drag", 1, 1, 0, {"b motion over", "d motion over"}},
      {"the release", 1, 0, 3, {"b end", "d end", "b motion off", "d motion off"}},
  };
  for (Case const &c : cases) {
    Probe *const probes[] = {new Probe("a"), new Probe("b"), new Probe("c"), new Probe("d")};
    for (Probe *probe : probes) scene.group->addChild(probe);
    scene.mouse(0, 0, 0);
    scene.mouse(0, 0, c.before);
    taken();
    probes[1]->then = [&] {
      scene.group->removeChild(probes[0]); // the last reference: each is gone
      scene.group->removeChild(probes[2]);
    };
    scene.mouse(c.x, 0, c.down);
    Calls calls = taken();
    calls.erase(std::remove_if(calls.begin(), calls.end(), [](std::string const &call) { return call[0] == 'a'; }),
                calls.end());
    EXPECT_EQ(calls, c.expected) << c.what;
    scene.mouse(0, 0, 0);
    scene.group->removeChild(probes[1]);
    scene.group->removeChild(probes[3]);
    scene.mouse(3, 3, 0);
    taken();
  }
}

TEST_F(PickSensor, IsPickedOnlyDuringTheUpdate) {
  Probe *const a = new Probe("a");
  scene.group->addChild(a);
  scene.mouse(0, 0, 0);
  EXPECT_EQ(taken(), (Calls{"a motion over"}));
  EXPECT_FALSE(a->isPicked());
}

TEST_F(PickSensor, DisabledUnderThePointerItSeesOneLastMotion) {
  Probe *const a = new Probe("a");
  scene.group->addChild(a);
  scene.mouse(0, 0, 0);
  taken();
  a->setEnabled(0);
  scene.mouse(0, 0, 0);
  EXPECT_EQ(taken(), (Calls{"a motion"}));
  scene.mouse(0, 0, 0);
  EXPECT_EQ(taken(), Calls());
}

// The first takes the geometry away; the second still drags in its space.
TEST_F(PickSensor, MayTakeWhatWasHitOutOfTheGraph) {
  Probe *const a = new Probe("a");
  ozPlaneSensor *const plane = new ozPlaneSensor;
  scene.group->addChild(a);
  scene.group->addChild(plane);
  scene.transform->setTranslation(2, 0, 0);
  a->then = [&] { scene.group->removeChild(scene.transform); };
  scene.mouse(2.5f, 0, 1);
  EXPECT_EQ(taken(), (Calls{"a begin over"}));
  ozVec3f point;
  plane->getTrackPoint(point);
  EXPECT_TRUE(point.almostEqual(ozVec3f(0.5f, 0, 0), 0.02f));
}

TEST_F(PickSensor, LeavesAGraphThatNobodyCountsAlone) {
  ozGroup root;
  root.addChild(scene.group);
  scene.group->addChild(new Probe("a"));
  ozPickSensor::updateSensors(&root, scene.camera, 250, 250, 0);
  EXPECT_EQ(taken(), (Calls{"a motion over"}));
  EXPECT_EQ(root.getRefCount(), 0u);
  EXPECT_EQ(root.getChildCount(), 1);
}
