// The mouse of a window drives the pick sensors of a graph.

#include "anim/sensorScene.h"
#include "window/windowFixture.h"

namespace {

/// A window whose events drive the sensors of a scene, as an application's event function does.
class WindowSensorTest : public WindowTest {
protected:
  void SetUp() override {
    window = open();
    update.call = [this] { ozWindow::updateSensors(scene.root, scene.camera); };
    window->setEventFunc(Callback::run, &update);
  }
  void TearDown() override {
    window->setEventFunc(nullptr, nullptr);
    window->resetEvents();
    client.button(window->getHWND(), false, 1, 499, 499);
    pumpUntil([=] { return window->getEvents()->getCount() > 0; });
    ozWindow::makeCurrent(window);
    ozWindow::updateSensors(scene.root, scene.camera);
    WindowTest::TearDown();
  }

  // The pixel that shows a point, y from the top as X counts.
  static int px(float x) { return static_cast<int>((x + 5) * 50 + 0.5f); }
  static int py(float y) { return 499 - static_cast<int>((y + 5) * 50 + 0.5f); }
  void motion(float x, float y, unsigned int state = 0) { client.motion(window->getHWND(), px(x), py(y), state); }
  void press(float x, float y) { client.button(window->getHWND(), true, 1, px(x), py(y)); }
  void release(float x, float y) { client.button(window->getHWND(), false, 1, px(x), py(y), Button1Mask); }

  ozWindow *window = nullptr;
  Callback update;
  SensorScene scene;
};

} // namespace

TEST_F(WindowSensorTest, HoveringAndLeavingReachATouchSensor) {
  ozTouchSensor *const sensor = new ozTouchSensor;
  scene.group->addChild(sensor);
  motion(0.5f, 0.25f);
  EXPECT_TRUE(pumpUntil([=] { return sensor->getIsOver(); }));
  ozVec3f point;
  sensor->getHitPoint(point);
  EXPECT_TRUE(point.almostEqual(ozVec3f(0.5f, 0.25f, 0), 0.02f));
  motion(3, 3);
  EXPECT_TRUE(pumpUntil([=] { return !sensor->getIsOver(); }));
}

TEST_F(WindowSensorTest, AClickReachesATouchSensor) {
  ozTouchSensor *const sensor = new ozTouchSensor;
  scene.group->addChild(sensor);
  press(0, 0);
  EXPECT_TRUE(pumpUntil([=] { return sensor->getIsActive(); }));
  release(0, 0);
  EXPECT_TRUE(pumpUntil([=] { return !sensor->getIsActive(); }));
  EXPECT_GT(sensor->getTouchTime().get(), 0.0);
}

TEST_F(WindowSensorTest, ADragMovesATransformThroughAPlaneSensor) {
  ozPlaneSensor *const sensor = new ozPlaneSensor;
  scene.group->addChild(sensor);
  ozTransform *const moved = new ozTransform;
  scene.root->addChild(moved);
  sensor->getField("translation")->connect(moved->getField("translation"));
  press(0, 0);
  motion(0.5f, 0.25f, Button1Mask);
  EXPECT_TRUE(pumpUntil([=] {
    ozVec3f translation;
    moved->getTranslation(translation);
    return translation.almostEqual(ozVec3f(0.5f, 0.25f, 0), 0.03f);
  }));
  motion(4, -4, Button1Mask);
  EXPECT_TRUE(pumpUntil([=] {
    ozVec3f translation;
    moved->getTranslation(translation);
    return translation.almostEqual(ozVec3f(4, -4, 0), 0.03f);
  }));
  release(4, -4);
  EXPECT_TRUE(pumpUntil([=] { return !sensor->getIsActive(); }));
  motion(1, 1);
  settle();
  ozVec3f translation;
  moved->getTranslation(translation);
  EXPECT_TRUE(translation.almostEqual(ozVec3f(4, -4, 0), 0.03f));
}

TEST_F(WindowSensorTest, ADragTurnsASphereSensor) {
  ozSphereSensor *const sensor = new ozSphereSensor;
  scene.group->addChild(sensor);
  press(0.9f, 0);
  motion(0, 0.9f, Button1Mask);
  float x = 0, y = 0, z = 0, radians = 0;
  EXPECT_TRUE(pumpUntil([&] {
    sensor->getRotation(&x, &y, &z, &radians);
    return radians > 0.1f;
  }));
  EXPECT_NEAR(radians, 1.5708f, 0.08f) << "about the square's centre, from +X to +Y";
  EXPECT_NEAR(z, 1, 0.15f);
}

TEST_F(WindowSensorTest, TheWheelIsNoClick) {
  ozTouchSensor *const sensor = new ozTouchSensor;
  scene.group->addChild(sensor);
  for (unsigned int wheel : {4, 5}) {
    client.button(window->getHWND(), true, wheel, px(0), py(0));
    client.button(window->getHWND(), false, wheel, px(0), py(0));
  }
  settle();
  EXPECT_EQ(sensor->getIsActive(), 0);
  EXPECT_EQ(sensor->getTouchTime().get(), 0.0);
  press(0, 0);
  EXPECT_TRUE(pumpUntil([=] { return sensor->getIsActive(); }));
  client.button(window->getHWND(), false, 4, px(0), py(0), Button1Mask);
  settle();
  EXPECT_EQ(sensor->getIsActive(), 1) << "nor a release";
}

// Press, release and a new press have all come before anybody looks.
TEST_F(WindowSensorTest, EventsThatHaveWaitedAreTakenInOrder) {
  ozTouchSensor *const sensor = new ozTouchSensor;
  scene.group->addChild(sensor);
  ozWindow::setFreeRun(1);
  press(0, 0);
  release(0, 0);
  press(0, 0);
  EXPECT_TRUE(pumpUntil([=] { return window->getEvents()->getCount() == 3; }));
  ozWindow::idleFunc();
  EXPECT_GT(sensor->getTouchTime().get(), 0.0);
  EXPECT_EQ(sensor->getIsActive(), 1);
}

TEST_F(WindowSensorTest, WithoutFunctionsAllThatPiledUpIsSeen) {
  ozTouchSensor *const sensor = new ozTouchSensor;
  scene.group->addChild(sensor);
  window->setEventFunc(nullptr, nullptr);
  press(0, 0);
  release(0, 0);
  EXPECT_TRUE(pumpUntil([=] { return window->getEvents()->getCount() == 2; }));
  ozWindow::makeCurrent(window);
  ozWindow::updateSensors(nullptr, scene.camera);
  ozWindow::updateSensors(scene.root, nullptr);
  EXPECT_EQ(sensor->getTouchTime().get(), 0.0);
  ozWindow::updateSensors(scene.root, scene.camera);
  EXPECT_GT(sensor->getTouchTime().get(), 0.0);
  window->resetEvents();
}
