#include "anim/sensorScene.h"

#include "oz/ozHit.h"
#include "support/capture.h"

#include <cmath>
#include <gtest/gtest.h>

namespace {

double const DEGREE = 3.14159265358979 / 180;

/// A hit whose ray falls along -Z on (x, y), on a surface at a distance of 1 from the origin.
struct Ray : ozHit {
  Ray(double x, double y) {
    ray.setOrigin(static_cast<float>(x), static_cast<float>(y), 5);
    ray.setDirection(0, 0, -1);
    ray.setLength(100);
    localPoint.set(0, 0, 1);
  }
};

ozVec3f trackPointOf(ozSphereSensor &sensor) {
  ozVec3f point;
  sensor.getTrackPoint(point);
  return point;
}

// The rotation as axis and degrees.
void expectRotation(ozSphereSensor &sensor, float x, float y, float z, float degrees) {
  float ax, ay, az, radians;
  sensor.getRotation(&ax, &ay, &az, &radians);
  EXPECT_NEAR(radians, degrees * DEGREE, 2e-3);
  if (degrees == 0) return;
  EXPECT_NEAR(ax, x, 1e-3);
  EXPECT_NEAR(ay, y, 1e-3);
  EXPECT_NEAR(az, z, 1e-3);
}

} // namespace

TEST(SphereSensor, HasItsFields) {
  ozSphereSensor sensor;
  ozType *const type = sensor.getType();
  EXPECT_STREQ(type->getName(), "SphereSensor");
  EXPECT_EQ(type->getAncestor(), ozPickSensor::getClassType());
  ASSERT_EQ(type->getFieldInfoCount(), 9);
  char const *const names[] = {"autoOffset", "offset", "rotation", "trackPoint", "coordFrame"};
  ozType *const types[] = {ozSFUByte::getClassType(), ozSFRotation::getClassType(), ozSFRotation::getClassType(),
                           ozSFVec3f::getClassType(), ozSFEnum::getClassType()};
  for (int i = 0; i < 5; ++i) {
    EXPECT_STREQ(type->getFieldInfo(4 + i)->getName(), names[i]);
    EXPECT_EQ(type->getFieldInfo(4 + i)->getFieldType(), types[i]);
  }
  EXPECT_STREQ(type->mapEnum(8, 0), "LOCAL");
  EXPECT_STREQ(type->mapEnum(8, 1), "WORLD");
  EXPECT_EQ(sensor.getAutoOffset(), 1);
  float x, y, z, radians;
  sensor.getOffset(&x, &y, &z, &radians);
  EXPECT_EQ(ozVec4f(x, y, z, radians), ozVec4f(0, 0, 1, 0));
  sensor.getRotation(&x, &y, &z, &radians);
  EXPECT_EQ(ozVec4f(x, y, z, radians), ozVec4f(0, 0, 1, 0));
  EXPECT_EQ(trackPointOf(sensor), ozVec3f(0, 0, 0));
  EXPECT_EQ(sensor.getCoordFrame(), ozPickSensor::LOCAL);
}

TEST(SphereSensor, TheOffsetIsGivenInRadiansAndHeldInDegrees) {
  ozSphereSensor sensor;
  sensor.setOffset(0, 3, 4, 0.5f);
  ozRotation offset;
  sensor.getOffset(offset);
  ozVec3f axis;
  float degrees;
  offset.getDegrees(axis, &degrees);
  EXPECT_TRUE(axis.almostEqual(ozVec3f(0, 0.6f, 0.8f), 1e-6f));
  EXPECT_NEAR(degrees, 28.647888, 1e-4);
  sensor.setOffset(0.000009f, 0, -0.000009f, 1);
  sensor.getOffset(offset);
  offset.getDegrees(axis, &degrees);
  EXPECT_EQ(axis, ozVec3f(0, 0, 0));
  EXPECT_NEAR(degrees, 57.295776, 1e-4);
}

TEST(SphereSensor, ADragOverTheSphereTurnsByItsAngle) {
  ozSphereSensor sensor;
  sensor.beginGrab(Ray(0, 0));
  EXPECT_EQ(sensor.getIsActive(), 1);
  EXPECT_TRUE(trackPointOf(sensor).almostEqual(ozVec3f(0, 0, 1), 1e-5f));
  expectRotation(sensor, 0, 0, 1, 0);
  sensor.motion(Ray(std::sin(30 * DEGREE), 0));
  EXPECT_TRUE(trackPointOf(sensor).almostEqual(ozVec3f(0.5f, 0, 0.8660254f), 1e-4f));
  expectRotation(sensor, 0, 1, 0, 30);
  sensor.motion(Ray(0, std::sin(45 * DEGREE)));
  expectRotation(sensor, -1, 0, 0, 45);
  sensor.endGrab(Ray(0, 0));
  EXPECT_EQ(sensor.getIsActive(), 0);
}

// 90 degrees to the plane through the centre, times 1.5 radii.
TEST(SphereSensor, OffTheSphereThePlaneTurnsFurther) {
  ozSphereSensor sensor;
  sensor.beginGrab(Ray(0, 0));
  sensor.motion(Ray(1.5, 0));
  EXPECT_TRUE(trackPointOf(sensor).almostEqual(ozVec3f(1.5f, 0, 0), 1e-5f));
  expectRotation(sensor, 0, 1, 0, 135);
}

TEST(SphereSensor, TheRadiusIsTheHitsDistanceFromTheOrigin) {
  ozSphereSensor sensor;
  Ray start(0, 0);
  start.localPoint.set(0, 0, 2);
  sensor.beginGrab(start);
  EXPECT_TRUE(trackPointOf(sensor).almostEqual(ozVec3f(0, 0, 2), 1e-5f));
  sensor.motion(Ray(1, 0));
  expectRotation(sensor, 0, 1, 0, 30);
}

TEST(SphereSensor, ASecondDragGoesOnFromTheFirst) {
  ozSphereSensor sensor;
  double const half = std::sin(30 * DEGREE);
  sensor.beginGrab(Ray(0, 0));
  sensor.motion(Ray(half, 0));
  sensor.endGrab(Ray(half, 0));
  sensor.beginGrab(Ray(0, 0));
  expectRotation(sensor, 0, 1, 0, 30);
  sensor.motion(Ray(half, 0));
  expectRotation(sensor, 0, 1, 0, 60);
}

TEST(SphereSensor, WithoutAutoOffsetItStartsAgain) {
  ozSphereSensor sensor;
  sensor.setAutoOffset(0);
  sensor.beginGrab(Ray(0, 0));
  sensor.motion(Ray(0.5, 0));
  sensor.endGrab(Ray(0.5, 0));
  sensor.beginGrab(Ray(0, 0));
  expectRotation(sensor, 0, 0, 1, 0);
}

// Quaternions: (0, s, 0, s) * (s, 0, 0, s) with s the root of 1/2 is (1, 1, -1, 1) / 2: 120 degrees.
TEST(SphereSensor, TheOffsetIsTheSecondFactor) {
  ozSphereSensor sensor;
  sensor.setOffset(1, 0, 0, static_cast<float>(90 * DEGREE));
  sensor.beginGrab(Ray(0, 0));
  sensor.motion(Ray(1, 0));
  expectRotation(sensor, 0.57735f, 0.57735f, -0.57735f, 120);
}

TEST(SphereSensor, RaysThatMissBothAndEmptyHitsChangeNothing) {
  ozSphereSensor sensor;
  sensor.beginGrab(Ray(0, 0));
  sensor.motion(Ray(0.5, 0));
  Ray beside(0, 7);
  beside.ray.setDirection(1, 0, 0);
  sensor.motion(beside);
  sensor.motion(ozHit());
  expectRotation(sensor, 0, 1, 0, 30);
  EXPECT_TRUE(trackPointOf(sensor).almostEqual(ozVec3f(0.5f, 0, 0.8660254f), 1e-4f));
}

TEST(SphereSensor, DoesNothingWithoutAGrabOrOnceDisabled) {
  ozSphereSensor sensor;
  sensor.motion(Ray(0.5, 0));
  EXPECT_EQ(trackPointOf(sensor), ozVec3f(0, 0, 0));
  sensor.beginGrab(Ray(0, 0));
  sensor.setEnabled(0);
  sensor.motion(Ray(0.5, 0));
  EXPECT_TRUE(trackPointOf(sensor).almostEqual(ozVec3f(0, 0, 1), 1e-5f));
}

TEST(SphereSensor, InLocalSpaceItTurnsAboutTheGeometrysOrigin) {
  ozTransform transform;
  transform.ref();
  transform.setTranslation(3, 0, 0);
  ozSphereSensor sensor;
  Ray start(3, 0);
  start.path.append(&transform);
  sensor.beginGrab(start);
  EXPECT_TRUE(trackPointOf(sensor).almostEqual(ozVec3f(0, 0, 1), 1e-5f));
  sensor.motion(Ray(3.5, 0));
  expectRotation(sensor, 0, 1, 0, 30);
  transform.unrefNoDelete();
}

// The plane stands as far behind the centre as the eye is in front of it: z = -5.
TEST(SphereSensor, InTheWorldItTurnsAboutTheGeometrysPlace) {
  ozSphereSensor sensor;
  sensor.setCoordFrame(ozPickSensor::WORLD);
  Ray start(3, 0);
  start.matrix.makeTrans(3, 0, 0);
  sensor.beginGrab(start);
  EXPECT_TRUE(trackPointOf(sensor).almostEqual(ozVec3f(3, 0, 1), 1e-5f));
  sensor.motion(Ray(3.5, 0));
  expectRotation(sensor, 0, 1, 0, 30);
  sensor.motion(Ray(5, 0));
  EXPECT_TRUE(trackPointOf(sensor).almostEqual(ozVec3f(5, 0, -5), 1e-4f));
}

TEST(SphereSensor, AnUnknownFrameDragsNothing) {
  ozSphereSensor sensor;
  sensor.setCoordFrameHack(-3);
  sensor.beginGrab(Ray(0, 0));
  sensor.motion(Ray(0.5, 0));
  EXPECT_EQ(trackPointOf(sensor), ozVec3f(0, 0, 0));
}

TEST(SphereSensor, NothingIsPrintedInADrag) {
  EXPECT_EQ(stderrOf([] {
              ozSphereSensor sensor;
              sensor.beginGrab(Ray(0, 0));
              for (int i = -20; i <= 20; ++i)
                for (int j = -20; j <= 20; ++j) sensor.motion(Ray(i * 0.1, j * 0.1));
              sensor.endGrab(Ray(0, 0));
            }),
            "");
}

TEST(SphereSensor, AHitAtTheOriginGivesNoRotationThatIsNoNumber) {
  ozSphereSensor sensor;
  Ray start(0, 0);
  start.localPoint.set(0, 0, 0);
  sensor.beginGrab(start);
  sensor.motion(Ray(1, 0));
  float x, y, z, radians;
  sensor.getRotation(&x, &y, &z, &radians);
  EXPECT_TRUE(std::isfinite(x) && std::isfinite(y) && std::isfinite(z) && std::isfinite(radians));
}

// A sphere of radius 1 in a space of scale 2 has radius 2 in the world: half of it from the axis are 30 degrees.
TEST(SphereSensor, InTheWorldTheSphereIsScaledWithTheGeometry) {
  ozSphereSensor sensor;
  sensor.setCoordFrame(ozPickSensor::WORLD);
  Ray start(0, 0);
  start.matrix.makeScale(2, 2, 2);
  sensor.beginGrab(start);
  EXPECT_TRUE(trackPointOf(sensor).almostEqual(ozVec3f(0, 0, 2), 1e-5f));
  sensor.motion(Ray(1, 0));
  expectRotation(sensor, 0, 1, 0, 30);
}

TEST(SphereSensor, TakesItsOffsetAsARotationToo) {
  ozSphereSensor sensor;
  sensor.setOffset(ozRotation(0, 1, 0, static_cast<float>(90 * DEGREE)));
  float x, y, z, radians;
  sensor.getOffset(&x, &y, &z, &radians);
  EXPECT_EQ(ozVec3f(x, y, z), ozVec3f(0, 1, 0));
  EXPECT_NEAR(radians, 90 * DEGREE, 1e-6);
  sensor.setAutoOffset(0);
  EXPECT_EQ(sensor.getAutoOffset(), 0);
}
