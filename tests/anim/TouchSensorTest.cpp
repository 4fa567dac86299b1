#include "anim/sensorScene.h"

#include "oz/ozHit.h"
#include "support/contextFixture.h"

namespace {

class TouchSensor : public ::testing::Test {
protected:
  TouchSensor() : sensor(new ozTouchSensor) { scene.group->addChild(sensor); }
  void TearDown() override { scene.mouse(-4, -4, 0); }

  OffscreenContext gl{500, 500};
  SensorScene scene;
  ozTouchSensor *const sensor;
};

} // namespace

TEST(TouchSensorClass, HasItsFields) {
  ozTouchSensor sensor;
  ozType *const type = sensor.getType();
  EXPECT_STREQ(type->getName(), "TouchSensor");
  EXPECT_EQ(type->getAncestor(), ozPickSensor::getClassType());
  ASSERT_EQ(type->getFieldInfoCount(), 9);
  char const *const names[] = {"hitNormal", "hitPoint", "hitTexCoord", "isOver", "touchTime"};
  ozType *const types[] = {ozSFVec3f::getClassType(), ozSFVec3f::getClassType(), ozSFVec2f::getClassType(),
                           ozSFUByte::getClassType(), ozSFTime::getClassType()};
  for (int i = 0; i < 5; ++i) {
    EXPECT_STREQ(type->getFieldInfo(4 + i)->getName(), names[i]);
    EXPECT_EQ(type->getFieldInfo(4 + i)->getFieldType(), types[i]);
  }
  float x, y, z;
  sensor.getHitNormal(&x, &y, &z);
  EXPECT_EQ(ozVec3f(x, y, z), ozVec3f(0, 0, 1));
  sensor.getHitPoint(&x, &y, &z);
  EXPECT_EQ(ozVec3f(x, y, z), ozVec3f(0, 0, 0));
  sensor.getHitTexCoord(&x, &y);
  EXPECT_EQ(ozVec2f(x, y), ozVec2f(0, 0));
  EXPECT_EQ(sensor.getIsOver(), 0);
  EXPECT_EQ(sensor.getTouchTime().get(), 0.0);
}

TEST_F(TouchSensor, HoveringTellsWhere) {
  scene.transform->setTranslation(2, 0, 0);
  scene.mouse(2.5f, 0.25f, 0);
  EXPECT_EQ(sensor->getIsOver(), 1);
  EXPECT_EQ(sensor->getIsActive(), 0);
  ozVec3f point, normal;
  sensor->getHitPoint(point);
  EXPECT_TRUE(point.almostEqual(ozVec3f(0.5f, 0.25f, 0), 0.02f)) << "in the geometry's space";
  sensor->getHitNormal(normal);
  EXPECT_TRUE(normal.almostEqual(ozVec3f(0, 0, 1), 1e-5f));
  scene.mouse(2, 0, 0);
  sensor->getHitPoint(point);
  EXPECT_TRUE(point.almostEqual(ozVec3f(0, 0, 0), 0.02f));
}

TEST_F(TouchSensor, LeavingClearsIsOverAndKeepsThePoint) {
  scene.mouse(0.5f, 0, 0);
  scene.mouse(3, 3, 0);
  EXPECT_EQ(sensor->getIsOver(), 0);
  ozVec3f point;
  sensor->getHitPoint(point);
  EXPECT_TRUE(point.almostEqual(ozVec3f(0.5f, 0, 0), 0.02f));
}

TEST_F(TouchSensor, AClickGivesATouchTime) {
  double const before = ozTime::getTimeOfDay().get();
  scene.mouse(0, 0, 1);
  EXPECT_EQ(sensor->getIsActive(), 1);
  EXPECT_EQ(sensor->getIsOver(), 1);
  EXPECT_EQ(sensor->getTouchTime().get(), 0.0);
  scene.mouse(0, 0, 0);
  EXPECT_EQ(sensor->getIsActive(), 0);
  EXPECT_GE(sensor->getTouchTime().get(), before);
  EXPECT_LE(sensor->getTouchTime().get(), ozTime::getTimeOfDay().get());
}

TEST_F(TouchSensor, AReleaseElsewhereGivesNone) {
  scene.mouse(0, 0, 1);
  scene.mouse(3, 3, 1);
  EXPECT_EQ(sensor->getIsOver(), 0);
  EXPECT_EQ(sensor->getIsActive(), 1);
  scene.mouse(3, 3, 0);
  EXPECT_EQ(sensor->getIsActive(), 0);
  EXPECT_EQ(sensor->getTouchTime().get(), 0.0);
}

TEST_F(TouchSensor, IsOverIsAnnouncedOnlyWhenItChanges) {
  ozTouchSensor follower;
  sensor->connect(7, &follower, 7);
  follower.cleanFields();
  scene.mouse(0, 0, 0);
  EXPECT_TRUE(follower.hasPendingFields());
  follower.cleanFields();
  scene.mouse(0.5f, 0, 0);
  EXPECT_FALSE(follower.hasPendingFields());
  scene.mouse(3, 3, 0);
  EXPECT_TRUE(follower.hasPendingFields());
}

TEST_F(TouchSensor, NothingWritesTheTexCoord) {
  ozTouchSensor follower;
  sensor->connect(6, &follower, 6);
  follower.cleanFields();
  scene.mouse(0.5f, 0.5f, 0);
  scene.mouse(0.5f, 0.5f, 1);
  scene.mouse(0.5f, 0.5f, 0);
  EXPECT_GT(sensor->getTouchTime().get(), 0.0);
  EXPECT_FALSE(follower.hasPendingFields());
  ozVec2f coord(7, 7);
  sensor->getHitTexCoord(coord);
  EXPECT_EQ(coord, ozVec2f(0, 0));
}
