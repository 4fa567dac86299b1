#include "ozview/Navigation.h"
#include <cmath>
#include <gtest/gtest.h>

namespace {

void expectPoint(ozVec3f const &point, float x, float y, float z, float tolerance = 1e-4f) {
  EXPECT_NEAR(point._v[0], x, tolerance);
  EXPECT_NEAR(point._v[1], y, tolerance);
  EXPECT_NEAR(point._v[2], z, tolerance);
}

ozBoxBound boxAround(float x, float y, float z, float half) {
  ozBoxBound box;
  box.min = ozVec3f(x - half, y - half, z - half);
  box.max = ozVec3f(x + half, y + half, z + half);
  return box;
}

std::vector<ozVec3f> cornersOf(ozBoxBound const &box) {
  std::vector<ozVec3f> corners;
  for (int i = 0; i < 8; i++)
    corners.push_back(ozVec3f((i & 1 ? box.max : box.min)._v[0], (i & 2 ? box.max : box.min)._v[1],
                              (i & 4 ? box.max : box.min)._v[2]));
  return corners;
}

Navigation framed(float azimuth, float elevation, ozBoxBound const &box, float aspect = 1) {
  Navigation navigation(azimuth, elevation);
  navigation.frame(box, cornersOf(box), aspect);
  return navigation;
}

struct PlacedCamera {
  PlacedCamera(Navigation const &navigation, ozBoxBound const &box, float aspect = 1) : camera(new ozPerspCamera) {
    camera->ref();
    navigation.place(camera, box, aspect);
    camera->getViewMat(view);
  }
  ~PlacedCamera() { camera->unref(); }
  ozVec3f seen(ozVec3f const &point) const {
    ozVec3f result;
    result.xformPt(point, view);
    return result;
  }
  ozPerspCamera *camera;
  ozMatrix4f view;
};

} // namespace

TEST(Navigation, AtZeroTheEyeLooksAlongMinusZ) {
  Navigation const navigation = framed(0, 0, boxAround(1, 2, 3, 1));
  expectPoint(navigation.centre(), 1, 2, 3);
  expectPoint(navigation.eye(), 1, 2, 3 + navigation.distance());
}

TEST(Navigation, APositiveAzimuthLooksFromTheRight) {
  Navigation const navigation = framed(90, 0, boxAround(0, 0, 0, 1));
  expectPoint(navigation.eye(), navigation.distance(), 0, 0);
}

TEST(Navigation, APositiveElevationLooksFromAbove) {
  Navigation const navigation = framed(0, 90, boxAround(0, 0, 0, 1));
  expectPoint(navigation.eye(), 0, navigation.distance(), 0);
}

TEST(Navigation, TheCameraSeesTheCentreStraightAheadAtTheDistance) {
  for (float azimuth : {0.0f, 30.0f, -120.0f, 180.0f})
    for (float elevation : {0.0f, 20.0f, -70.0f}) {
      ozBoxBound const box = boxAround(4, -1, 2, 1.5f);
      Navigation const navigation = framed(azimuth, elevation, box);
      expectPoint(PlacedCamera(navigation, box).seen(navigation.centre()), 0, 0, -navigation.distance(), 1e-3f);
    }
}

TEST(Navigation, TheCameraStaysUpright) {
  ozBoxBound const box = boxAround(0, 0, 0, 1);
  Navigation const navigation = framed(40, 30, box);
  PlacedCamera const placed(navigation, box);
  EXPECT_NEAR(placed.seen(ozVec3f(0, 1, 0))._v[0], 0, 1e-4f);
  EXPECT_GT(placed.seen(ozVec3f(0, 1, 0))._v[1], 0);
}

TEST(Navigation, AFramedBoxIsWhollyInViewAndAsLargeAsCanBe) {
  for (float aspect : {0.5f, 1.0f, 2.0f}) {
    ozBoxBound const box = boxAround(1, 2, 3, 2);
    Navigation const navigation = framed(30, 20, box, aspect);
    PlacedCamera const placed(navigation, box, aspect);
    float const tall = std::tan(placed.camera->getVertFOV() / 2), wide = std::tan(placed.camera->getHorizFOV() / 2);
    EXPECT_NEAR(wide / tall, aspect, 1e-3f);
    float outermost = 0;
    for (ozVec3f const &corner : cornersOf(box)) {
      ozVec3f const seen = placed.seen(corner);
      outermost =
          std::max({outermost, std::fabs(seen._v[0] / seen._v[2]) / wide, std::fabs(seen._v[1] / seen._v[2]) / tall});
    }
    EXPECT_LT(outermost, 1);
    EXPECT_GT(outermost, 0.9f);
  }
}

TEST(Navigation, NearAndFarPlanesEncloseTheBoxClosely) {
  ozBoxBound const box = boxAround(0, 0, 0, 1);
  Navigation const navigation = framed(0, 0, box);
  PlacedCamera const placed(navigation, box);
  EXPECT_LT(placed.camera->getNearClip(), navigation.distance() - 1);
  EXPECT_GT(placed.camera->getNearClip(), 0.9f * (navigation.distance() - 1));
  EXPECT_GT(placed.camera->getFarClip(), navigation.distance() + 1);
  EXPECT_LT(placed.camera->getFarClip(), 1.1f * (navigation.distance() + 1));
}

TEST(Navigation, TheNearPlaneStaysAheadOfAnEyeInsideTheBox) {
  ozBoxBound const box = boxAround(0, 0, 0, 1);
  Navigation navigation = framed(0, 0, box);
  navigation.zoom(0.001f);
  PlacedCamera const placed(navigation, box);
  EXPECT_GT(placed.camera->getNearClip(), 0);
  EXPECT_LT(placed.camera->getNearClip(), placed.camera->getFarClip());
}

TEST(Navigation, AnEmptySceneIsLookedAtFromSomewhere) {
  Navigation navigation(30, 20);
  navigation.frame(ozBoxBound(), {}, 1);
  expectPoint(navigation.centre(), 0, 0, 0);
  EXPECT_GT(navigation.distance(), 0);
  PlacedCamera const placed(navigation, ozBoxBound());
  EXPECT_LT(placed.camera->getNearClip(), placed.camera->getFarClip());
}

TEST(Navigation, ADragOfTheWholeHeightTurnsHalfARound) {
  Navigation navigation(0, 0);
  navigation.turn(1, 0);
  EXPECT_NEAR(std::fabs(navigation.azimuth()), 180, 1e-3f);
}

TEST(Navigation, ADragToTheRightTakesTheSceneAlong) {
  Navigation navigation = framed(0, 0, boxAround(0, 0, 0, 1));
  navigation.turn(0.1f, 0);
  EXPECT_LT(navigation.eye()._v[0], 0) << "the eye goes to the left";
}

TEST(Navigation, TheElevationStopsAtThePoles) {
  Navigation navigation(0, 0);
  navigation.turn(0, -5);
  EXPECT_EQ(navigation.elevation(), 90);
  navigation.turn(0, 9);
  EXPECT_EQ(navigation.elevation(), -90);
}

TEST(Navigation, APanKeepsWhatIsUnderThePointerUnderIt) {
  ozBoxBound const box = boxAround(0, 0, 0, 1);
  Navigation navigation = framed(25, -15, box);
  navigation.pan(0.25f, -0.1f); // of the picture's height
  PlacedCamera const placed(navigation, box);
  ozVec3f const seen = placed.seen(ozVec3f(0, 0, 0)); // was in the middle
  float const height = 2 * navigation.distance() * std::tan(placed.camera->getVertFOV() / 2);
  expectPoint(seen, 0.25f * height, -0.1f * height, -navigation.distance(), 1e-3f);
}

TEST(Navigation, AZoomScalesTheDistance) {
  Navigation navigation = framed(0, 0, boxAround(0, 0, 0, 1));
  float const before = navigation.distance();
  navigation.zoom(0.5f);
  EXPECT_FLOAT_EQ(navigation.distance(), before / 2);
}

TEST(Navigation, CentringKeepsSideAndDistance) {
  Navigation navigation = framed(30, 20, boxAround(0, 0, 0, 1));
  float const before = navigation.distance();
  navigation.centreOn(ozVec3f(1, 1, 1));
  expectPoint(navigation.centre(), 1, 1, 1);
  EXPECT_EQ(navigation.distance(), before);
  EXPECT_EQ(navigation.azimuth(), 30);
}

TEST(Navigation, AResetGoesBackToTheFirstAngles) {
  Navigation navigation(30, 20);
  navigation.turn(0.3f, 0.2f);
  navigation.reset();
  EXPECT_EQ(navigation.azimuth(), 30);
  EXPECT_EQ(navigation.elevation(), 20);
}
