#include "anim/sensorScene.h"

#include "oz/ozHit.h"
#include "support/contextFixture.h"

#include <cmath>

namespace {

/// A hit whose ray falls along -Z on (x, y).
struct Ray : ozHit {
  Ray(float x, float y) {
    ray.setOrigin(x, y, 10);
    ray.setDirection(0, 0, -1);
    ray.setLength(100);
  }
};

#define EXPECT_VEC(vector, ...) EXPECT_TRUE((vector).almostEqual(ozVec3f(__VA_ARGS__), 1e-4f)) << text(vector)

std::string text(ozVec3f const &v) {
  return std::to_string(v[0]) + " " + std::to_string(v[1]) + " " + std::to_string(v[2]);
}

ozVec3f translationOf(ozPlaneSensor &sensor) {
  ozVec3f translation;
  sensor.getTranslation(translation);
  return translation;
}

ozVec3f trackPointOf(ozPlaneSensor &sensor) {
  ozVec3f point;
  sensor.getTrackPoint(point);
  return point;
}

} // namespace

TEST(PlaneSensor, HasItsFields) {
  ozPlaneSensor sensor;
  ozType *const type = sensor.getType();
  EXPECT_STREQ(type->getName(), "PlaneSensor");
  EXPECT_EQ(type->getAncestor(), ozPickSensor::getClassType());
  ASSERT_EQ(type->getFieldInfoCount(), 11);
  char const *const names[] = {"autoOffset",  "offset",     "maxPosition", "minPosition",
                               "translation", "trackPoint", "coordFrame"};
  ozType *const types[] = {ozSFUByte::getClassType(), ozSFVec3f::getClassType(), ozSFVec2f::getClassType(),
                           ozSFVec2f::getClassType(), ozSFVec3f::getClassType(), ozSFVec3f::getClassType(),
                           ozSFEnum::getClassType()};
  for (int i = 0; i < 7; ++i) {
    EXPECT_STREQ(type->getFieldInfo(4 + i)->getName(), names[i]);
    EXPECT_EQ(type->getFieldInfo(4 + i)->getFieldType(), types[i]);
  }
  EXPECT_STREQ(type->mapEnum(10, 0), "LOCAL");
  EXPECT_STREQ(type->mapEnum(10, 1), "WORLD");
  EXPECT_EQ(sensor.getAutoOffset(), 1);
  float x, y, z;
  sensor.getOffset(&x, &y, &z);
  EXPECT_EQ(ozVec3f(x, y, z), ozVec3f(0, 0, 0));
  sensor.getMaxPosition(&x, &y);
  EXPECT_EQ(ozVec2f(x, y), ozVec2f(-1, -1));
  sensor.getMinPosition(&x, &y);
  EXPECT_EQ(ozVec2f(x, y), ozVec2f(0, 0));
  EXPECT_EQ(translationOf(sensor), ozVec3f(0, 0, 0));
  EXPECT_EQ(trackPointOf(sensor), ozVec3f(0, 0, 0));
  EXPECT_EQ(sensor.getCoordFrame(), ozPickSensor::LOCAL);
}

TEST(PlaneSensor, TakesWhatIsSet) {
  ozPlaneSensor sensor;
  sensor.setAutoOffset(0);
  EXPECT_EQ(sensor.getAutoOffset(), 0);
  sensor.setOffset(1, 2, 3);
  ozVec3f v;
  sensor.getOffset(v);
  EXPECT_EQ(v, ozVec3f(1, 2, 3));
  sensor.setMaxPosition(4, 5);
  sensor.setMinPosition(ozVec2f(-4, -5));
  ozVec2f max, min;
  sensor.getMaxPosition(max);
  sensor.getMinPosition(min);
  EXPECT_EQ(max, ozVec2f(4, 5));
  EXPECT_EQ(min, ozVec2f(-4, -5));
  sensor.setTranslation(7, 8, 9);
  EXPECT_EQ(translationOf(sensor), ozVec3f(7, 8, 9));
  sensor.setCoordFrame(ozPickSensor::WORLD);
  EXPECT_EQ(sensor.getCoordFrame(), ozPickSensor::WORLD);
  sensor.setCoordFrameHack(0);
  EXPECT_EQ(sensor.getCoordFrameHack(), 0);
}

TEST(PlaneSensor, ADragBecomesATranslation) {
  ozPlaneSensor sensor;
  sensor.beginGrab(Ray(1, 1));
  EXPECT_EQ(sensor.getIsActive(), 1);
  EXPECT_VEC(trackPointOf(sensor), 1, 1, 0);
  EXPECT_VEC(translationOf(sensor), 0, 0, 0);
  sensor.motion(Ray(3, -2));
  EXPECT_VEC(trackPointOf(sensor), 3, -2, 0);
  EXPECT_VEC(translationOf(sensor), 2, -3, 0);
  sensor.endGrab(Ray(3, -2));
  EXPECT_EQ(sensor.getIsActive(), 0);
}

TEST(PlaneSensor, ASecondDragGoesOnFromTheFirst) {
  ozPlaneSensor sensor;
  sensor.beginGrab(Ray(0, 0));
  sensor.motion(Ray(2, 0));
  sensor.endGrab(Ray(2, 0));
  ozVec3f offset;
  sensor.getOffset(offset);
  EXPECT_VEC(offset, 2, 0, 0);
  sensor.beginGrab(Ray(5, 5));
  EXPECT_VEC(translationOf(sensor), 2, 0, 0);
  sensor.motion(Ray(5, 6));
  EXPECT_VEC(translationOf(sensor), 2, 1, 0);
}

TEST(PlaneSensor, WithoutAutoOffsetItStartsAgainFromTheOffset) {
  ozPlaneSensor sensor;
  sensor.setAutoOffset(0);
  sensor.beginGrab(Ray(0, 0));
  sensor.motion(Ray(2, 0));
  sensor.endGrab(Ray(2, 0));
  sensor.beginGrab(Ray(2, 0));
  EXPECT_VEC(translationOf(sensor), 0, 0, 0);
  sensor.setOffset(0, 0, 4);
  sensor.motion(Ray(3, 0));
  EXPECT_VEC(translationOf(sensor), 1, 0, 4);
}

TEST(PlaneSensor, AnAxisWithEqualLimitsIsPinnedAndOneWithARangeKept) {
  ozPlaneSensor sensor;
  sensor.setMinPosition(0, 0);
  sensor.setMaxPosition(0, 10);
  sensor.beginGrab(Ray(0, 0));
  sensor.motion(Ray(3, 4));
  EXPECT_VEC(translationOf(sensor), 0, 4, 0);
  EXPECT_VEC(trackPointOf(sensor), 3, 4, 0);
  sensor.motion(Ray(3, 40));
  EXPECT_VEC(translationOf(sensor), 0, 10, 0);
  sensor.motion(Ray(-3, -4));
  EXPECT_VEC(translationOf(sensor), 0, 0, 0);
}

TEST(PlaneSensor, LimitsTheWrongWayRoundKeepNothing) {
  ozPlaneSensor sensor;
  sensor.setMinPosition(1, -2);
  sensor.setMaxPosition(0, 2);
  sensor.beginGrab(Ray(0, 0));
  sensor.motion(Ray(-7, 7));
  EXPECT_VEC(translationOf(sensor), -7, 2, 0);
}

TEST(PlaneSensor, DoesNothingWithoutAGrab) {
  ozPlaneSensor sensor;
  sensor.motion(Ray(3, 3));
  EXPECT_EQ(trackPointOf(sensor), ozVec3f(0, 0, 0));
}

TEST(PlaneSensor, DisabledInADragItHearsNoMore) {
  ozPlaneSensor sensor;
  sensor.beginGrab(Ray(0, 0));
  sensor.motion(Ray(1, 0));
  sensor.setEnabled(0);
  EXPECT_EQ(sensor.getIsActive(), 0);
  sensor.motion(Ray(3, 0));
  EXPECT_VEC(translationOf(sensor), 1, 0, 0);
}

TEST(PlaneSensor, ARayBesideThePlaneAndAnEmptyHitChangeNothing) {
  ozPlaneSensor sensor;
  sensor.beginGrab(Ray(0, 0));
  sensor.motion(Ray(1, 0));
  Ray along(5, 5);
  along.ray.setDirection(1, 0, 0);
  sensor.motion(along);
  sensor.motion(ozHit());
  Ray away(5, 5);
  away.ray.setDirection(0, 0, 1);
  sensor.motion(away);
  Ray shortOf(5, 5);
  shortOf.ray.setLength(9);
  sensor.motion(shortOf);
  EXPECT_VEC(translationOf(sensor), 1, 0, 0);
  EXPECT_VEC(trackPointOf(sensor), 1, 0, 0);
}

// The ray ends 1 above the plane in the world, but the space is twice as large: the length must follow.
TEST(PlaneSensor, TheRaysLengthIsScaledIntoTheWorkingSpace) {
  ozTransform transform;
  transform.setScale(0.5f, 0.5f, 0.5f);
  transform.ref();
  ozPlaneSensor sensor;
  Ray start(1, 0);
  start.path.append(&transform);
  sensor.beginGrab(start);
  EXPECT_VEC(trackPointOf(sensor), 2, 0, 0);
  Ray shortOf(2, 0);
  shortOf.ray.setLength(9);
  sensor.motion(shortOf);
  EXPECT_VEC(trackPointOf(sensor), 2, 0, 0);
  Ray reaching(2, 0);
  reaching.ray.setLength(11);
  sensor.motion(reaching);
  EXPECT_VEC(trackPointOf(sensor), 4, 0, 0);
  transform.unrefNoDelete();
}

// p = inner point * scale 2, then turned a quarter about Z, then moved by (3, 0, 0).
TEST(PlaneSensor, TheWorkingSpaceIsThatOfTheWholePath) {
  ozTransform outer, inner;
  outer.ref();
  inner.ref();
  outer.setTranslation(3, 0, 0);
  outer.setRotation(0, 0, 1, 1.5707963f);
  inner.setScale(2, 2, 2);
  ozGroup between;
  between.ref();
  ozPlaneSensor sensor;
  Ray start(3, 4);
  for (ozNode *node : {static_cast<ozNode *>(&outer), static_cast<ozNode *>(&between), static_cast<ozNode *>(&inner)})
    start.path.append(node);
  sensor.beginGrab(start);
  EXPECT_VEC(trackPointOf(sensor), 2, 0, 0);
  Ray further(1, 4);
  sensor.motion(further);
  EXPECT_VEC(trackPointOf(sensor), 2, 1, 0);
  EXPECT_VEC(translationOf(sensor), 0, 1, 0);
  for (ozNode *node : {static_cast<ozNode *>(&outer), static_cast<ozNode *>(&between), static_cast<ozNode *>(&inner)})
    node->unrefNoDelete();
}

TEST(PlaneSensor, ThePathEndsAtTheSensor) {
  ozTransform outer, inner;
  outer.ref();
  inner.ref();
  outer.setTranslation(3, 0, 0);
  inner.setTranslation(50, 0, 0);
  ozPlaneSensor sensor;
  sensor.ref();
  Ray start(4, 0);
  start.path.append(&outer);
  start.path.append(&sensor);
  start.path.append(&inner);
  sensor.beginGrab(start);
  EXPECT_VEC(trackPointOf(sensor), 1, 0, 0);
  outer.unrefNoDelete();
  inner.unrefNoDelete();
  sensor.unrefNoDelete();
}

TEST(PlaneSensor, InTheWorldItDragsInTheGeometrysPlane) {
  ozPlaneSensor sensor;
  sensor.setCoordFrame(ozPickSensor::WORLD);
  Ray start(1, 2);
  start.matrix.makeTrans(7, 8, 3);
  sensor.beginGrab(start);
  EXPECT_VEC(trackPointOf(sensor), 1, 2, 3);
  sensor.motion(Ray(2, 2));
  EXPECT_VEC(translationOf(sensor), 1, 0, 0);
}

// A quarter turn about X takes +Z to -Y: the plane is y = -2.
TEST(PlaneSensor, InTheWorldThePlaneMayBeTurnedAndScaled) {
  ozPlaneSensor sensor;
  sensor.setCoordFrame(ozPickSensor::WORLD);
  Ray start(0, 0);
  start.ray.setOrigin(1, 10, 4);
  start.ray.setDirection(0, -1, 0);
  start.matrix.makeRot(1, 0, 0, 1.5707963f);
  start.matrix.postTrans(start.matrix, 0, -2, 0);
  sensor.beginGrab(start);
  EXPECT_VEC(trackPointOf(sensor), 1, -2, 4);

  ozPlaneSensor scaled;
  scaled.setCoordFrame(ozPickSensor::WORLD);
  Ray above(1, 1);
  above.matrix.makeScale(2, 2, 2);
  above.matrix.postTrans(above.matrix, 0, 0, 6);
  scaled.beginGrab(above);
  EXPECT_VEC(trackPointOf(scaled), 1, 1, 6);
}

TEST(PlaneSensor, AnUnknownFrameDragsNothing) {
  ozPlaneSensor sensor;
  sensor.setCoordFrameHack(7);
  sensor.beginGrab(Ray(1, 1));
  EXPECT_EQ(sensor.getIsActive(), 1);
  sensor.motion(Ray(2, 2));
  EXPECT_EQ(trackPointOf(sensor), ozVec3f(0, 0, 0));
}

TEST(PlaneSensor, FollowsTheMouseInAGraph) {
  OffscreenContext gl(500, 500);
  SensorScene scene;
  scene.transform->setTranslation(2, 0, 0);
  ozPlaneSensor *const sensor = new ozPlaneSensor;
  scene.group->addChild(sensor);
  scene.mouse(2, 0, 1);
  scene.mouse(2.5f, 0.5f, 1);
  EXPECT_TRUE(translationOf(*sensor).almostEqual(ozVec3f(0.5f, 0.5f, 0), 0.03f));
  scene.mouse(4.5f, 0, 1);
  EXPECT_TRUE(translationOf(*sensor).almostEqual(ozVec3f(2.5f, 0, 0), 0.03f)) << "off the shape";
  EXPECT_TRUE(trackPointOf(*sensor).almostEqual(ozVec3f(2.5f, 0, 0), 0.03f)) << "in its space";
  ozPickSensor::updateSensors(scene.root, scene.camera, -50, 900, 1);
  EXPECT_TRUE(translationOf(*sensor).almostEqual(ozVec3f(2.5f, 0, 0), 0.03f)) << "outside the viewport";
  scene.mouse(4.5f, 0, 0);
  EXPECT_EQ(sensor->getIsActive(), 0);
}

TEST(PlaneSensor, TakesVectorsInBothForms) {
  ozPlaneSensor sensor;
  float x, y, z;
  sensor.setOffset(ozVec3f(1, 2, 3));
  sensor.getOffset(&x, &y, &z);
  EXPECT_EQ(ozVec3f(x, y, z), ozVec3f(1, 2, 3));
  sensor.setTranslation(ozVec3f(4, 5, 6));
  sensor.getTranslation(&x, &y, &z);
  EXPECT_EQ(ozVec3f(x, y, z), ozVec3f(4, 5, 6));
  sensor.setMaxPosition(ozVec2f(7, 8));
  sensor.getMaxPosition(&x, &y);
  EXPECT_EQ(ozVec2f(x, y), ozVec2f(7, 8));
  sensor.setMinPosition(-7, -8);
  sensor.getMinPosition(&x, &y);
  EXPECT_EQ(ozVec2f(x, y), ozVec2f(-7, -8));
  sensor.beginGrab(Ray(1, 2));
  sensor.getTrackPoint(&x, &y, &z);
  EXPECT_EQ(ozVec3f(x, y, z), ozVec3f(1, 2, 0));
}

TEST(PlaneSensor, DragsByWhatIsConnectedToIt) {
  ozPlaneSensor sensor, source;
  for (short id : {short(5), short(6), short(7)}) source.connect(id, &sensor, id);
  source.setOffset(0, 0, 9);
  source.setMinPosition(0, 0);
  source.setMaxPosition(1, 2);
  sensor.beginGrab(Ray(0, 0));
  sensor.motion(Ray(4, 4));
  EXPECT_VEC(translationOf(sensor), 1, 2, 9);
}

TEST(PlaneSensor, ALimitThatIsNoNumberLimitsNothing) {
  ozPlaneSensor sensor;
  sensor.setMinPosition(0, 0);
  sensor.setMaxPosition(std::nanf(""), 1);
  sensor.beginGrab(Ray(0, 0));
  sensor.motion(Ray(-3, 4));
  EXPECT_VEC(translationOf(sensor), -3, 1, 0);
}
