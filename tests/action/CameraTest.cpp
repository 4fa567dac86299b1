#include "oz/ozCamera.h"

#include <cmath>
#include <gmock/gmock.h>

#include "action/probeNode.h"
#include "oz/ozContext.h"
#include "oz/ozSFByte.h"
#include "support/glRecorder.h"
#include "support/offscreen.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

double const Pi = 3.14159265358979;

/// A root that keeps the ray of a pick.
struct RayProbe {
  RayProbe() {
    node->work = [this](ozAction *action) {
      auto *isect = static_cast<ozIsectAction *>(action);
      ray = *isect->getActiveSeg();
      if (geometry) isect->hitGeometry(geometry);
    };
  }
  Held<ProbeNode> node;
  ozSeg ray;
  ozGeometry *geometry = nullptr;
};

ozGeometry *someGeometry() {
  static int place;
  return reinterpret_cast<ozGeometry *>(&place);
}

void expectNear(ozVec3f const &v, double x, double y, double z) {
  EXPECT_NEAR(v[0], x, 1e-5);
  EXPECT_NEAR(v[1], y, 1e-5);
  EXPECT_NEAR(v[2], z, 1e-5);
}

ozVec3f inEye(ozCamera &camera, float x, float y, float z) {
  ozMatrix4f view;
  camera.getViewMat(view);
  ozVec3f point;
  point.xformPt(ozVec3f(x, y, z), view);
  return point;
}

std::vector<GLCall> drawn(ozCamera &camera) {
  ozDrawAction action;
  GLRecorder recorder;
  recorder.passOn(false);
  camera.draw(&action);
  return recorder.calls();
}

} // namespace

TEST(Camera, ClassesHaveTheirNamesAndParents) {
  EXPECT_STREQ(ozCamera::getClassType()->getName(), "Camera");
  EXPECT_STREQ(ozFrustumCamera::getClassType()->getName(), "FrustumCamera");
  EXPECT_STREQ(ozPerspCamera::getClassType()->getName(), "PerspCamera");
  EXPECT_STREQ(ozOrthoCamera::getClassType()->getName(), "OrthoCamera");
  EXPECT_EQ(ozCamera::getClassType()->getAncestor(), ozContainer::getClassType());
  for (ozType *type : {ozFrustumCamera::getClassType(), ozPerspCamera::getClassType(), ozOrthoCamera::getClassType()})
    EXPECT_EQ(type->getAncestor(), ozCamera::getClassType());
}

TEST(Camera, HasAPositionAndAnOrientationField) {
  ozType *const type = ozCamera::getClassType();
  EXPECT_EQ(type->getFieldInfoCount(), 2);
  EXPECT_STREQ(type->getFieldInfo(0)->getName(), "position");
  EXPECT_STREQ(type->getFieldInfo(1)->getName(), "orientation");
  EXPECT_EQ(ozFrustumCamera::getClassType()->getFieldInfoCount(), 2);
}

TEST(Camera, StartsAtTheOriginUnturnedAboutZ) {
  Held<ozFrustumCamera> camera;
  float x = 9, y = 9, z = 9, radians = 9;
  camera->getPosition(&x, &y, &z);
  EXPECT_THAT((std::vector<float>{x, y, z}), ElementsAre(0, 0, 0));
  camera->getOrientation(&x, &y, &z, &radians);
  EXPECT_THAT((std::vector<float>{x, y, z, radians}), ElementsAre(0, 0, 1, 0));
  ozMatrix4f view;
  camera->getViewMat(view);
  EXPECT_EQ(view, ozMatrix4f());
}

TEST(Camera, PositionHasTwoFormsEachWay) {
  Held<ozFrustumCamera> camera;
  camera->setPosition(1, 2, 3);
  ozVec3f position;
  camera->getPosition(position);
  EXPECT_EQ(position, ozVec3f(1, 2, 3));
  camera->setPosition(ozVec3f(4, 5, 6));
  float x, y, z;
  camera->getPosition(&x, &y, &z);
  EXPECT_THAT((std::vector<float>{x, y, z}), ElementsAre(4, 5, 6));
}

TEST(Camera, OrientationSpeaksRadiansInFloatsAndDegreesInRotations) {
  Held<ozFrustumCamera> camera;
  camera->setOrientation(0, 1, 0, static_cast<float>(Pi / 2));
  ozRotation rotation;
  camera->getOrientation(rotation);
  EXPECT_NEAR(rotation.getAngleDegrees(), 90, 1e-4);
  float x, y, z, radians;
  camera->getOrientation(&x, &y, &z, &radians);
  EXPECT_NEAR(radians, Pi / 2, 1e-6);
}

TEST(Camera, OrientationTakesADegreesRotation) {
  Held<ozFrustumCamera> camera;
  ozRotation rotation;
  rotation.setDegrees(1, 0, 0, 30);
  camera->setOrientation(rotation);
  float x, y, z, radians;
  camera->getOrientation(&x, &y, &z, &radians);
  EXPECT_NEAR(radians, Pi / 6, 1e-6);
  EXPECT_EQ(x, 1);
}

TEST(Camera, OrientationNormalisesTheAxis) {
  Held<ozFrustumCamera> camera;
  camera->setOrientation(0, 2, 0, 1);
  float x, y, z, radians;
  camera->getOrientation(&x, &y, &z, &radians);
  EXPECT_THAT((std::vector<float>{x, y, z}), ElementsAre(0, 1, 0));
}

TEST(Camera, AVeryShortAxisBecomesZeroAndTheAngleIsKept) {
  Held<ozFrustumCamera> camera;
  camera->setOrientation(0.9e-5f, -0.9e-5f, 0.9e-5f, 1);
  float x, y, z, radians;
  camera->getOrientation(&x, &y, &z, &radians);
  EXPECT_THAT((std::vector<float>{x, y, z}), ElementsAre(0, 0, 0));
  EXPECT_NEAR(radians, 1, 1e-6);
  camera->setOrientation(0, 0, 1.1e-5f, 1);
  camera->getOrientation(&x, &y, &z, &radians);
  EXPECT_THAT((std::vector<float>{x, y, z}), ElementsAre(0, 0, 1));
}

TEST(Camera, TheViewMatrixUndoesPositionAndOrientation) {
  Held<ozFrustumCamera> camera;
  camera->setPosition(1, 2, 3);
  expectNear(inEye(*camera, 1, 2, 3), 0, 0, 0);
  expectNear(inEye(*camera, 1, 2, -7), 0, 0, -10);
  // Turned by 90 degrees about +Y it looks along -X.
  camera->setOrientation(0, 1, 0, static_cast<float>(Pi / 2));
  expectNear(inEye(*camera, 0, 2, 3), 0, 0, -1);
  expectNear(inEye(*camera, 1, 2, 2), 1, 0, 0);
}

TEST(Camera, GetViewMatPullsNoPendingField) {
  Held<ozFrustumCamera> leader, camera;
  leader->connect(0, camera, 0);
  leader->setPosition(0, 0, 5);
  expectNear(inEye(*camera, 0, 0, 0), 0, 0, 0);
  ozVec3f position;
  camera->getPosition(position);
  EXPECT_EQ(position, ozVec3f(0, 0, 5));
  expectNear(inEye(*camera, 0, 0, 0), 0, 0, -5);
  leader->disconnect(0, camera, 0);
}

TEST(Camera, AChangeReachesAConnectedField) {
  Held<ozFrustumCamera> leader, camera;
  leader->connect(1, camera, 1);
  leader->setOrientation(1, 0, 0, 1);
  float x, y, z, radians;
  camera->getOrientation(&x, &y, &z, &radians);
  EXPECT_NEAR(radians, 1, 1e-6);
  EXPECT_EQ(x, 1);
  leader->disconnect(1, camera, 1);
}

TEST(Camera, ACloneSeesTheSame) {
  Held<ozPerspCamera> camera;
  camera->setPosition(1, 2, 3);
  camera->setHorizFOV(1);
  Held<ozPerspCamera> clone(static_cast<ozPerspCamera *>(camera->clone(ozContainer::CLONE_SHALLOW)));
  expectNear(inEye(*clone, 1, 2, 3), 0, 0, 0);
  float left, right, bottom, top, near, far;
  clone->getBaseFrust()->getDiagCorners(left, right, bottom, top, near, far);
  EXPECT_NEAR(right, std::tan(0.5), 1e-6);
}

TEST(Camera, DrawLoadsAPerspectiveProjectionAndTheView) {
  Held<ozPerspCamera> camera;
  camera->setPosition(1, 2, 3);
  camera->setOrientation(0, 2, 0, 0.5f);
  double const t = std::tan(Pi / 8);
  EXPECT_THAT(drawn(*camera),
              ElementsAre(IsCall("glMatrixMode", {GL_PROJECTION}), IsCall("glLoadIdentity", {}),
                          IsCall("glFrustum", {-t, t, -t, t, 1, 1000}), IsCall("glMatrixMode", {GL_MODELVIEW}),
                          IsCall("glLoadIdentity", {}), IsCall("glRotatef", {-0.5 * 180 / Pi, 0, 1, 0}, 1e-4),
                          IsCall("glTranslatef", {-1, -2, -3})));
}

TEST(Camera, DrawLoadsAnOrthographicProjection) {
  Held<ozOrthoCamera> camera;
  camera->setWidth(8);
  camera->setHeight(6);
  camera->setCenter(1, 2);
  camera->setNearClip(0.5f);
  camera->setFarClip(50);
  auto const calls = drawn(*camera);
  ASSERT_EQ(calls.size(), 7u);
  EXPECT_THAT(calls[2], IsCall("glOrtho", {-3, 5, -1, 5, 0.5, 50}));
}

TEST(Camera, DrawUsesAnAsymmetricPerspectiveAsItStands) {
  Held<ozFrustumCamera> camera;
  ozFrustum frustum;
  frustum.setNearFar(2, 20);
  frustum.makePersp(-1, 2, -3, 4);
  camera->setFrustum(&frustum);
  EXPECT_EQ(camera->getBaseFrust()->getFrustType(), ozFrustum::ASYMMETRIC_PERSPECTIVE);
  EXPECT_THAT(drawn(*camera)[2], IsCall("glFrustum", {-1, 2, -3, 4, 2, 20}));
}

TEST(Camera, DrawHandsAZeroAxisToOpenGLAsItStands) {
  Held<ozFrustumCamera> camera;
  camera->setOrientation(0, 0, 0, 1);
  EXPECT_THAT(drawn(*camera)[5], IsCall("glRotatef", {-180 / Pi, 0, 0, 0}, 1e-4));
}

TEST(Camera, SetFrustumTakesACopy) {
  Held<ozFrustumCamera> camera;
  ozFrustum frustum;
  frustum.makeOrtho(-1, 2, -3, 4);
  camera->setFrustum(&frustum);
  EXPECT_NE(camera->getBaseFrust(), &frustum);
  frustum.makeOrtho(-9, 9, -9, 9);
  float left, right, bottom, top, near, far;
  camera->getBaseFrust()->getDiagCorners(left, right, bottom, top, near, far);
  EXPECT_THAT((std::vector<float>{left, right, bottom, top}), ElementsAre(-1, 2, -3, 4));
}

TEST(CameraPick, TheMiddlePixelLooksAlongTheViewDirection) {
  Held<ozPerspCamera> camera;
  camera->setPosition(1, 2, 3);
  camera->setOrientation(0, 1, 0, static_cast<float>(Pi / 2));
  RayProbe probe;
  ozHit hit;
  EXPECT_EQ(camera->pick(probe.node, 100, 50, hit, 0, 0, 200, 100), 0);
  EXPECT_THAT(probe.node->visits, ElementsAre("isect"));
  expectNear(probe.ray.getOrigin(), 1, 2, 3);
  expectNear(probe.ray.getDirection(), -1, 0, 0);
  EXPECT_EQ(probe.ray.getLength(), 3.4028235e37f);
}

TEST(CameraPick, APerspectiveRayGoesThroughThePixelCountedFromTheLowerLeft) {
  Held<ozPerspCamera> camera;
  camera->setHorizFOV(1);
  camera->setNearClip(2);
  RayProbe probe;
  ozHit hit;
  camera->pick(probe.node, 160, 45, hit, 10, 20, 200, 100);
  // A quarter of the width right of the middle, a quarter of the height below it.
  double x = 0.5 * std::tan(0.5), y = -0.5 * std::tan(Pi / 8), z = -1;
  double const length = std::sqrt(x * x + y * y + z * z);
  expectNear(probe.ray.getDirection(), x / length, y / length, z / length);
  expectNear(probe.ray.getOrigin(), 0, 0, 0);
}

TEST(CameraPick, TheOffsetsOfAnAsymmetricFrustumAreLeftOut) {
  Held<ozFrustumCamera> camera;
  ozFrustum frustum;
  frustum.makePersp(-1, 3, -1, 2);
  camera->setFrustum(&frustum);
  RayProbe probe;
  ozHit hit;
  camera->pick(probe.node, 0, 0, hit, 0, 0, 10, 10);
  double const length = std::sqrt(9 + 4 + 1.0);
  expectNear(probe.ray.getDirection(), -3 / length, -2 / length, -1 / length);
}

TEST(CameraPick, OrthographicRaysAreParallelAndStartBesideTheEye) {
  Held<ozOrthoCamera> camera;
  camera->setWidth(8);
  camera->setHeight(6);
  camera->setCenter(1, 2);
  camera->setPosition(0, 0, 10);
  RayProbe probe;
  ozHit hit;
  camera->pick(probe.node, 150, 25, hit, 0, 0, 200, 100);
  expectNear(probe.ray.getOrigin(), 0.25 * 8 + 1, -0.25 * 6 + 2, 10);
  expectNear(probe.ray.getDirection(), 0, 0, -1);
  EXPECT_EQ(probe.ray.getLength(), 3.4028235e37f);
}

TEST(CameraPick, APixelOutsideTheViewportGivesZeroAndLeavesTheHitAlone) {
  Held<ozPerspCamera> camera;
  RayProbe probe;
  probe.geometry = someGeometry();
  ozHit hit;
  hit.distance = 42;
  struct {
    int x, y;
  } const outside[] = {{9, 30}, {110, 30}, {50, 19}, {50, 70}};
  for (auto const &pixel : outside) EXPECT_EQ(camera->pick(probe.node, pixel.x, pixel.y, hit, 10, 20, 100, 50), 0);
  EXPECT_THAT(probe.node->visits, IsEmpty());
  EXPECT_EQ(hit.distance, 42);
  EXPECT_EQ(camera->pick(probe.node, 10, 20, hit, 10, 20, 100, 50), 1);
  EXPECT_EQ(camera->pick(probe.node, 109, 69, hit, 10, 20, 100, 50), 1);
  EXPECT_EQ(camera->pick(probe.node, 0, 0, hit, 0, 0, 0, 0), 0);
}

TEST(CameraPick, CopiesThePickersHit) {
  Held<ozPerspCamera> camera;
  RayProbe probe;
  probe.geometry = someGeometry();
  ozHit hit;
  EXPECT_EQ(camera->pick(probe.node, 5, 5, hit, 0, 0, 10, 10), 1);
  EXPECT_EQ(hit.geometry, someGeometry());
  EXPECT_EQ(hit.path.getCount(), 1u);
  EXPECT_EQ(hit.path[0], probe.node);
  probe.geometry = nullptr;
  EXPECT_EQ(camera->pick(probe.node, 5, 5, hit, 0, 0, 10, 10), 0);
  EXPECT_FALSE(hit.isValid());
}

TEST(CameraPick, WithoutARootNothingIsHit) {
  Held<ozPerspCamera> camera;
  ozHit hit;
  EXPECT_EQ(camera->pick(nullptr, 5, 5, hit, 0, 0, 10, 10), 0);
}

TEST(CameraPick, PullsPendingFieldsFirst) {
  Held<ozPerspCamera> leader, camera;
  leader->connect(0, camera, 0);
  leader->setPosition(4, 5, 6);
  RayProbe probe;
  ozHit hit;
  camera->pick(probe.node, 5, 5, hit, 0, 0, 10, 10);
  expectNear(probe.ray.getOrigin(), 4, 5, 6);
  leader->disconnect(0, camera, 0);
}

TEST(CameraPick, ASetPickerIsUsedAndTheOldOneDeleted) {
  struct Counted : ozIsectAction {
    explicit Counted(int &deaths) : deaths(deaths) {}
    ~Counted() override { ++deaths; }
    int &deaths;
  };
  int deaths = 0;
  auto *picker = new Counted(deaths);
  ozCamera::setPicker(picker);
  ozCamera::setPicker(picker);
  EXPECT_EQ(ozCamera::getPicker(), picker);
  Held<ozPerspCamera> camera;
  RayProbe probe;
  probe.geometry = someGeometry();
  ozHit hit;
  camera->pick(probe.node, 5, 5, hit, 0, 0, 10, 10);
  EXPECT_EQ(picker->hit.geometry, someGeometry());
  EXPECT_EQ(deaths, 0);
  ozCamera::setPicker(nullptr);
  EXPECT_EQ(deaths, 1);
  EXPECT_EQ(ozCamera::getPicker(), nullptr);
}

TEST(CameraPick, WithoutACurrentContextTheShortFormGivesZero) {
  ASSERT_EQ(ozContext::getCurrent(), nullptr);
  Held<ozPerspCamera> camera;
  RayProbe probe;
  ozHit hit;
  EXPECT_EQ(camera->pick(probe.node, 5, 5, hit), 0);
  EXPECT_THAT(probe.node->visits, IsEmpty());
}

TEST(PerspCamera, FieldsHaveTheirNamesIdsAndDefaults) {
  char const *const names[] = {"horizFOV", "vertFOV", "horizFOVOff", "vertFOVOff", "nearClip", "farClip"};
  float const defaults[] = {0.7853982f, 0.7853982f, 0, 0, 1, 1000};
  ozType *const type = ozPerspCamera::getClassType();
  EXPECT_EQ(type->getFieldInfoCount(), 10);
  Held<ozPerspCamera> camera;
  for (int i = 0; i < 6; ++i) {
    EXPECT_STREQ(type->getFieldInfo(i + 2)->getName(), names[i]);
    EXPECT_EQ(static_cast<ozSFFloat *>(camera->getField(i + 2))->get(), defaults[i]) << names[i];
  }
  EXPECT_STREQ(type->getFieldInfo(8)->getName(), "aspectMode");
  EXPECT_EQ(camera->getField(8)->getType(), ozSFEnum::getClassType());
  EXPECT_EQ(camera->getAspectMode(), 0);
  EXPECT_STREQ(type->getFieldInfo(9)->getName(), "aspectRatio");
  EXPECT_EQ(camera->getAspectRatio(), 1);
}

TEST(PerspCamera, AspectModeHasNoNames) { EXPECT_STREQ(ozPerspCamera::getClassType()->mapEnum(8, 0), "(nameless)"); }

namespace {

struct Corners {
  explicit Corners(ozCamera &camera) { camera.getBaseFrust()->getDiagCorners(left, right, bottom, top, near, far); }
  float left, right, bottom, top, near, far;
};

} // namespace

TEST(PerspCamera, SeesA45DegreePyramidFrom1To1000) {
  Held<ozPerspCamera> camera;
  Corners const c(*camera);
  double const t = std::tan(Pi / 8);
  EXPECT_NEAR(c.left, -t, 1e-6);
  EXPECT_NEAR(c.right, t, 1e-6);
  EXPECT_NEAR(c.bottom, -t, 1e-6);
  EXPECT_NEAR(c.top, t, 1e-6);
  EXPECT_EQ(c.near, 1);
  EXPECT_EQ(c.far, 1000);
  EXPECT_EQ(camera->getBaseFrust()->getFrustType(), ozFrustum::SYMMETRIC_PERSPECTIVE);
}

TEST(PerspCamera, HorizFOVLeavesTopAndBottomAlone) {
  Held<ozPerspCamera> camera;
  Corners const before(*camera);
  camera->setHorizFOV(1);
  EXPECT_EQ(camera->getHorizFOV(), 1);
  Corners const c(*camera);
  EXPECT_NEAR(c.right, std::tan(0.5), 1e-6);
  EXPECT_EQ(c.left, -c.right);
  EXPECT_EQ(c.bottom, before.bottom);
  EXPECT_EQ(c.top, before.top);
  EXPECT_EQ(camera->getBaseFrust()->getFrustType(), ozFrustum::SYMMETRIC_PERSPECTIVE);
}

TEST(PerspCamera, VertFOVLeavesLeftAndRightAlone) {
  Held<ozPerspCamera> camera;
  Corners const before(*camera);
  camera->setVertFOV(1);
  EXPECT_EQ(camera->getVertFOV(), 1);
  Corners const c(*camera);
  EXPECT_NEAR(c.top, std::tan(0.5), 1e-6);
  EXPECT_EQ(c.bottom, -c.top);
  EXPECT_EQ(c.left, before.left);
  EXPECT_EQ(c.right, before.right);
}

TEST(PerspCamera, APositiveHorizontalOffsetShiftsTheViewTowardsNegativeX) {
  Held<ozPerspCamera> camera;
  camera->setHorizFOVOff(0.2f);
  EXPECT_EQ(camera->getHorizFOVOff(), 0.2f);
  Corners const c(*camera);
  EXPECT_NEAR(c.right, -std::tan(0.2 - Pi / 8), 1e-6);
  EXPECT_NEAR(c.left, -std::tan(0.2 + Pi / 8), 1e-6);
  EXPECT_EQ(camera->getBaseFrust()->getFrustType(), ozFrustum::ASYMMETRIC_PERSPECTIVE);
}

TEST(PerspCamera, APositiveVerticalOffsetShiftsTheViewTowardsPositiveY) {
  Held<ozPerspCamera> camera;
  camera->setVertFOVOff(0.2f);
  EXPECT_EQ(camera->getVertFOVOff(), 0.2f);
  Corners const c(*camera);
  EXPECT_NEAR(c.top, std::tan(0.2 + Pi / 8), 1e-6);
  EXPECT_NEAR(c.bottom, std::tan(0.2 - Pi / 8), 1e-6);
}

TEST(PerspCamera, ANewNearKeepsTheAnglesAndTheFar) {
  Held<ozPerspCamera> camera;
  camera->setNearClip(2);
  EXPECT_EQ(camera->getNearClip(), 2);
  Corners const c(*camera);
  EXPECT_EQ(c.near, 2);
  EXPECT_EQ(c.far, 1000);
  EXPECT_NEAR(c.right, 2 * std::tan(Pi / 8), 1e-6);
  EXPECT_NEAR(c.top, 2 * std::tan(Pi / 8), 1e-6);
  camera->setHorizFOV(1);
  EXPECT_NEAR(Corners(*camera).right, 2 * std::tan(0.5), 1e-6);
}

TEST(PerspCamera, ANewFarKeepsTheRest) {
  Held<ozPerspCamera> camera;
  Corners const before(*camera);
  camera->setFarClip(50);
  EXPECT_EQ(camera->getFarClip(), 50);
  Corners const c(*camera);
  EXPECT_EQ(c.far, 50);
  EXPECT_EQ(c.near, 1);
  EXPECT_EQ(c.right, before.right);
}

TEST(PerspCamera, AspectModeAndRatioReshapeTheFrustum) {
  Held<ozPerspCamera> camera;
  camera->setAspectMode(ozFrustum::HEIGHT_ASPECT);
  camera->setAspectRatio(2);
  EXPECT_EQ(camera->getAspectMode(), ozFrustum::HEIGHT_ASPECT);
  EXPECT_EQ(camera->getAspectRatio(), 2);
  EXPECT_EQ(camera->getBaseFrust()->getAspectMode(), ozFrustum::HEIGHT_ASPECT);
  Corners const c(*camera);
  EXPECT_NEAR(c.right, 2 * std::tan(Pi / 8), 1e-6);
  EXPECT_NEAR(c.top, std::tan(Pi / 8), 1e-6);
}

TEST(PerspCamera, AFieldWrittenFromOutsideReachesTheFrustum) {
  Held<ozPerspCamera> camera;
  static_cast<ozSFFloat *>(camera->getField("horizFOV"))->set(1);
  EXPECT_NEAR(Corners(*camera).right, std::tan(0.5), 1e-6);
  static_cast<ozSFVec3f *>(camera->getField("position"))->set(ozVec3f(1, 2, 3));
  expectNear(inEye(*camera, 1, 2, 3), 0, 0, 0);
}

TEST(OrthoCamera, FieldsHaveTheirNamesIdsAndDefaults) {
  char const *const names[] = {"width", "height", "center", "nearClip", "farClip", "aspectMode", "aspectRatio"};
  ozType *const type = ozOrthoCamera::getClassType();
  EXPECT_EQ(type->getFieldInfoCount(), 9);
  for (int i = 0; i < 7; ++i) EXPECT_STREQ(type->getFieldInfo(i + 2)->getName(), names[i]);
  Held<ozOrthoCamera> camera;
  EXPECT_EQ(camera->getWidth(), 1);
  EXPECT_EQ(camera->getHeight(), 1);
  ozVec2f center(9, 9);
  camera->getCenter(center);
  EXPECT_EQ(center, ozVec2f(0, 0));
  EXPECT_EQ(camera->getNearClip(), 1);
  EXPECT_EQ(camera->getFarClip(), 1000);
  EXPECT_EQ(camera->getAspectMode(), 0);
  EXPECT_EQ(camera->getAspectRatio(), 1);
  EXPECT_STREQ(type->mapEnum(7, 0), "(nameless)");
}

TEST(OrthoCamera, SeesAUnitSquareAtFirst) {
  Held<ozOrthoCamera> camera;
  Corners const c(*camera);
  EXPECT_THAT((std::vector<float>{c.left, c.right, c.bottom, c.top, c.near, c.far}),
              ElementsAre(-0.5f, 0.5f, -0.5f, 0.5f, 1, 1000));
  EXPECT_EQ(camera->getBaseFrust()->getFrustType(), ozFrustum::ORTHOGRAPHIC);
}

TEST(OrthoCamera, WidthHeightAndCenterMakeTheRectangle) {
  Held<ozOrthoCamera> camera;
  camera->setWidth(8);
  camera->setHeight(6);
  camera->setCenter(ozVec2f(1, 2));
  float x, y;
  camera->getCenter(&x, &y);
  EXPECT_EQ(x, 1);
  EXPECT_EQ(y, 2);
  Corners const c(*camera);
  EXPECT_THAT((std::vector<float>{c.left, c.right, c.bottom, c.top}), ElementsAre(-3, 5, -1, 5));
}

TEST(OrthoCamera, NearAndFarLeaveTheRectangleAlone) {
  Held<ozOrthoCamera> camera;
  camera->setNearClip(0.5f);
  camera->setFarClip(20);
  EXPECT_EQ(camera->getNearClip(), 0.5f);
  EXPECT_EQ(camera->getFarClip(), 20);
  Corners const c(*camera);
  EXPECT_THAT((std::vector<float>{c.left, c.right, c.near, c.far}), ElementsAre(-0.5f, 0.5f, 0.5f, 20));
}

TEST(OrthoCamera, AspectModeAndRatioReshapeTheFrustum) {
  Held<ozOrthoCamera> camera;
  camera->setAspectMode(ozFrustum::WIDTH_ASPECT);
  camera->setAspectRatio(2);
  EXPECT_EQ(camera->getAspectMode(), ozFrustum::WIDTH_ASPECT);
  EXPECT_EQ(camera->getAspectRatio(), 2);
  Corners const c(*camera);
  EXPECT_THAT((std::vector<float>{c.left, c.right, c.bottom, c.top}), ElementsAre(-0.5f, 0.5f, -0.25f, 0.25f));
}
