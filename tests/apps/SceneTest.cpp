#include "ozview/Scene.h"
#include "ozview/Walk.h"
#include "program.h"
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

// A scene of one text.
class Loaded : public Scene {
public:
  explicit Loaded(std::string const &text) {
    std::string reason;
    EXPECT_TRUE(add(folder.write("scene.wrl", "#VRML V2.0 utf8\n" + text), reason)) << reason;
  }
  template <class T> T *find(std::string const &name) {
    for (ozContainer *container : everythingBelow(root()))
      if (container->getName() && name == container->getName()) return static_cast<T *>(container);
    return nullptr;
  }
  Folder folder;
};

} // namespace

TEST(Scene, AClockThatRunsForEverStartsAtItsBeginning) {
  Loaded scene("DEF Clock TimeSensor { cycleInterval 1000 loop TRUE }\n");
  scene.startClocks(0);
  Scene::tick();
  EXPECT_NEAR(scene.find<ozTimeSensor>("Clock")->getFractionChanged(), 0, 0.001);
}

TEST(Scene, AnAgeMovesTheClocksOn) {
  Loaded scene("DEF Clock TimeSensor { cycleInterval 1000 loop TRUE }\n");
  scene.startClocks(250);
  Scene::tick();
  EXPECT_NEAR(scene.find<ozTimeSensor>("Clock")->getFractionChanged(), 0.25, 0.001);
  EXPECT_TRUE(scene.isRunning());
}

TEST(Scene, AnAgeBeyondACycleGoesAroundWithIt) {
  Loaded scene("DEF Clock TimeSensor { cycleInterval 1000 loop TRUE }\n");
  scene.startClocks(3600);
  Scene::tick();
  EXPECT_NEAR(scene.find<ozTimeSensor>("Clock")->getFractionChanged(), 0.6, 0.001);
}

TEST(Scene, AClockOfASingleCycleLongPastStaysStill) {
  Loaded scene("DEF Clock TimeSensor { cycleInterval 1000 }\n");
  scene.startClocks(250);
  Scene::tick();
  EXPECT_FALSE(scene.find<ozTimeSensor>("Clock")->getIsActive());
  EXPECT_EQ(scene.find<ozTimeSensor>("Clock")->getFractionChanged(), 0);
  EXPECT_FALSE(scene.isRunning());
}

TEST(Scene, ASceneWithoutClocksDoesNotRun) { EXPECT_FALSE(Loaded("Shape { geometry Box { } }\n").isRunning()); }

TEST(Scene, ClocksAreTickedBesideThoseThatEnd) {
  std::string text;
  for (int i = 0; i < 20; i++) text += "TimeSensor { }\n";
  Loaded scene(text + "DEF Clock TimeSensor { cycleInterval 1000 loop TRUE }\n");
  scene.startClocks(500);
  Scene::tick();
  EXPECT_NEAR(scene.find<ozTimeSensor>("Clock")->getFractionChanged(), 0.5, 0.001);
}

TEST(Scene, APauseKeepsTheClocksWhereTheyAre) {
  Loaded scene("DEF Clock TimeSensor { cycleInterval 1 loop TRUE }\n");
  ozTimeSensor *const clock = scene.find<ozTimeSensor>("Clock");
  scene.startClocks(0.2);
  Scene::tick();
  float const before = clock->getFractionChanged();
  scene.togglePause();
  EXPECT_TRUE(scene.isPaused());
  usleep(400000);
  Scene::tick();
  EXPECT_EQ(clock->getFractionChanged(), before);
  EXPECT_FALSE(scene.isRunning());
  scene.togglePause();
  Scene::tick();
  EXPECT_FALSE(scene.isPaused());
  EXPECT_NEAR(clock->getFractionChanged(), before, 0.1);
  EXPECT_TRUE(scene.isRunning());
}

TEST(Scene, APauseLeavesDisabledClocksDisabled) {
  Loaded scene("DEF Clock TimeSensor { enabled FALSE }\n");
  scene.togglePause();
  scene.togglePause();
  EXPECT_FALSE(scene.find<ozTimeSensor>("Clock")->getEnabled());
}

TEST(Scene, AStartThatARouteBringsWakesAClock) {
  Loaded scene("DEF First TimeSensor { } DEF Second TimeSensor { cycleInterval 1000 }\n"
               "ROUTE First.startTime TO Second.set_startTime\n");
  scene.startClocks(0);
  Scene::tick();
  EXPECT_FALSE(scene.isRunning());
  scene.find<ozTimeSensor>("First")->setStartTime(ozTime::getTimeOfDay());
  scene.wakeClocks();
  Scene::tick();
  EXPECT_TRUE(scene.find<ozTimeSensor>("Second")->getIsActive());
}

TEST(Scene, KnowsWhatItBrings) {
  EXPECT_TRUE(Loaded("Shape { appearance Appearance { material Material { transparency 0.5 } } }\n").isTransparent());
  EXPECT_FALSE(Loaded("Shape { appearance Appearance { material Material { } } }\n").isTransparent());
  EXPECT_TRUE(Loaded("Group { children PointLight { } }\n").hasLights());
  EXPECT_FALSE(Loaded("Group { }\n").hasLights());
  EXPECT_TRUE(Loaded("TouchSensor { }\n").isTouchable());
  EXPECT_FALSE(Loaded("Group { }\n").isTouchable());
}

TEST(Scene, SeveralFilesStandInOneGraph) {
  Scene scene;
  std::string reason;
  ASSERT_TRUE(scene.add(model("solids"), reason));
  ASSERT_TRUE(scene.add(model("groups"), reason));
  EXPECT_EQ(scene.root()->getChildCount(), 2);
  EXPECT_EQ(scene.parts().size(), 2u);
}

TEST(Walk, EverythingIsFoundOnceAndInOrder) {
  Loaded scene("DEF A Group { children [ DEF B Group { } DEF C Shape { geometry DEF D Box { } } USE B ] }\n");
  std::string names;
  for (ozContainer *container : everythingBelow(scene.root()))
    if (container->getName()) names += container->getName();
  EXPECT_EQ(names, "ABCD");
}
