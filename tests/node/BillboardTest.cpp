#include "probes.h"

#include "support/capture.h"

#include <cmath>
#include <gtest/gtest.h>

namespace {

float const Pi = 3.14159265f;

/// A billboard "b" at the origin, and a camera that is moved around it.
class BillboardTest : public ::testing::Test {
protected:
  BillboardTest() : camera(wideCamera()) {
    b->setName("b");
    draw.setCamera(camera);
  }

  /// The rotation for an eye that was moved on a circle about an axis, away from the z axis.
  bool turnFor(float x, float y, float z, float radians) {
    camera->setOrientation(x, y, z, radians);
    draw.reset();
    out.makeIdent();
    return b->calculateTransform(&draw, out) != 0;
  }
  ozVec3f turned(float x, float y, float z) const {
    ozVec3f v(x, y, z);
    v.xformVec(v, out);
    return v;
  }

  Held<ozBillboard> b;
  Held<ozOrthoCamera> camera;
  Noting<ozDrawAction> draw;
  ozMatrix4f out;
};

ozVec3f unit(int v) {
  ozVec3f u(0, 0, 0);
  u._v[v % 3] = v < 3 ? 1.0f : -1.0f;
  return u;
}

} // namespace

TEST(Billboard, HasItsFields) {
  ozType *const type = ozBillboard::getClassType();
  EXPECT_STREQ(type->getName(), "Billboard");
  EXPECT_EQ(type->getAncestor(), ozGroup::getClassType());
  ASSERT_EQ(type->getFieldInfoCount(), 8);
  char const *const names[] = {"position", "mode", "axisOfRotation", "forward", "up"};
  ozType *const types[] = {ozMFVec3f::getClassType(), ozSFEnum::getClassType(), ozSFVec3f::getClassType(),
                           ozSFEnum::getClassType(), ozSFEnum::getClassType()};
  for (int i = 0; i < 5; ++i) {
    EXPECT_STREQ(type->getFieldInfo(3 + i)->getName(), names[i]);
    EXPECT_EQ(type->getFieldInfo(3 + i)->getFieldType(), types[i]);
  }
}

TEST(Billboard, NamesItsEnumerations) {
  ozType *const type = ozBillboard::getClassType();
  char const *const modes[] = {"AXIAL", "POINT_SCREEN", "POINT_OBJECT"};
  for (int i = 0; i < 3; ++i) EXPECT_STREQ(type->mapEnum(4, i), modes[i]);
  char const *const vectors[] = {"POS_X_AXIS", "POS_Y_AXIS", "POS_Z_AXIS", "NEG_X_AXIS", "NEG_Y_AXIS", "NEG_Z_AXIS"};
  for (int i = 0; i < 6; ++i) {
    EXPECT_STREQ(type->mapEnum(6, i), vectors[i]);
    EXPECT_STREQ(type->mapEnum(7, i), vectors[i]);
  }
  EXPECT_EQ(ozBillboard::POINT_OBJECT, 2);
  EXPECT_EQ(ozBillboard::NEG_Z_AXIS, 5);
}

TEST(Billboard, StartsAxialAboutYWithZForwardAndYUp) {
  Held<ozBillboard> b;
  EXPECT_EQ(b->getMode(), ozBillboard::AXIAL);
  EXPECT_EQ(b->getForward(), ozBillboard::POS_Z_AXIS);
  EXPECT_EQ(b->getUp(), ozBillboard::POS_Y_AXIS);
  EXPECT_EQ(b->position()->getCount(), 0u);
  EXPECT_EQ(b->position(), b->getField(3));
  ozVec3f axis;
  b->getAxis(axis);
  EXPECT_VEC(axis, 0, 1, 0);
}

TEST(Billboard, KeepsWhatIsSet) {
  Held<ozBillboard> b;
  b->setMode(ozBillboard::POINT_OBJECT);
  EXPECT_EQ(b->getMode(), ozBillboard::POINT_OBJECT);
  EXPECT_EQ(b->getModeHack(), 2);
  b->setModeHack(1);
  EXPECT_EQ(b->getMode(), ozBillboard::POINT_SCREEN);
  b->setForward(ozBillboard::NEG_X_AXIS);
  EXPECT_EQ(b->getForward(), ozBillboard::NEG_X_AXIS);
  b->setUp(ozBillboard::POS_Z_AXIS);
  EXPECT_EQ(b->getUp(), ozBillboard::POS_Z_AXIS);
}

TEST(Billboard, NormalisesItsAxisAtEachChange) {
  Held<ozBillboard> b;
  ozVec3f axis;
  float x, y, z;
  b->setAxis(0, 3, 4);
  b->getAxis(axis);
  EXPECT_VEC(axis, 0, 0.6, 0.8);
  b->setAxis(ozVec3f(0, 0, 9));
  b->getAxis(&x, &y, &z);
  EXPECT_VEC(ozVec3f(x, y, z), 0, 0, 1);
  static_cast<ozSFVec3f *>(b->getField(5))->set(ozVec3f(5, 0, 0));
  b->getAxis(axis);
  EXPECT_VEC(axis, 1, 0, 0);
}

TEST(Billboard, SetValuesReachConnectedFields) {
  Held<ozBillboard> from, to;
  for (short id = 4; id <= 7; ++id) from->connect(id, to, id);
  from->setMode(ozBillboard::POINT_OBJECT);
  from->setAxis(1, 0, 0);
  from->setForward(ozBillboard::NEG_Y_AXIS);
  from->setUp(ozBillboard::NEG_Z_AXIS);
  EXPECT_EQ(to->getMode(), ozBillboard::POINT_OBJECT);
  EXPECT_EQ(to->getForward(), ozBillboard::NEG_Y_AXIS);
  EXPECT_EQ(to->getUp(), ozBillboard::NEG_Z_AXIS);
  ozVec3f axis;
  to->getAxis(axis);
  EXPECT_VEC(axis, 1, 0, 0);
}

TEST(Billboard, NormalisesAnAxisThatAConnectionBrings) {
  Held<ozTransform> from;
  Held<ozBillboard> to;
  from->getField("translation")->connect(to->getField(5));
  from->setTranslation(0, 0, 4);
  ozVec3f axis;
  to->getAxis(axis);
  EXPECT_VEC(axis, 0, 0, 1);
}

// ---- the bound

TEST_F(BillboardTest, InModeAxialTheBoundHoldsTheChildTurnedAboutTheAxis) {
  ProbeNode *const child = new ProbeNode;
  child->setBoxBound(cubeAt(3, 5, 0, 1));
  b->addChild(child);
  float const r = std::sqrt(3.0f) + 3;
  EXPECT_BOX(*b->getBoxBound(), -r, 5 - r, -r, r, 5 + r, r);
}

TEST_F(BillboardTest, InTheOtherModesTheBoundHoldsTheChildTurnedAboutItsOrigin) {
  ProbeNode *const child = new ProbeNode;
  child->setBoxBound(cubeAt(3, 4, 0, 1));
  b->addChild(child);
  float const r = std::sqrt(3.0f) + 5;
  for (int mode : {1, 2}) {
    b->setModeHack(mode);
    ozBoxBound box;
    b->calcChildrenBound(box);
    EXPECT_BOX(box, -r, -r, -r, r, r, r);
  }
}

TEST_F(BillboardTest, TheBoundFollowsThePositions) {
  ProbeNode *const first = new ProbeNode("first", 1), *const second = new ProbeNode("second", 1);
  b->addChild(first);
  b->addChild(second);
  b->position()->set(0, ozVec3f(10, 0, 0));
  float const r = std::sqrt(3.0f);
  EXPECT_BOX(*b->getBoxBound(), -r, -r, -r, 10 + r, r, r); // the second has no entry
  b->position()->set(1, ozVec3f(0, 20, 0));
  EXPECT_BOX(*b->getBoxBound(), -r, -r, -r, 10 + r, 20 + r, r);
}

TEST_F(BillboardTest, EmptyAndNullChildrenDoNotCountForTheBound) {
  b->addChild(new ProbeNode);
  EXPECT_TRUE(b->getBoxBound()->isEmpty());
  b->addChild(new ProbeNode("a", 1));
  b->setChildCount(3);
  float const r = std::sqrt(3.0f);
  EXPECT_BOX(*b->getBoxBound(), -r, -r, -r, r, r, r);
}

TEST_F(BillboardTest, OnlyPositionsAndInModeAxialTheAxisMarkTheBound) {
  b->addChild(new ProbeNode("a", 1));
  b->getBoxBound();
  b->setAxis(1, 0, 0);
  EXPECT_TRUE(b->hasPendingFields());
  b->getBoxBound();
  b->setMode(ozBillboard::POINT_OBJECT);
  EXPECT_FALSE(b->hasPendingFields());
  b->setAxis(0, 1, 0);
  EXPECT_FALSE(b->hasPendingFields());
  b->setForward(ozBillboard::NEG_X_AXIS);
  b->setUp(ozBillboard::POS_Z_AXIS);
  EXPECT_FALSE(b->hasPendingFields());
  b->position()->set(0, ozVec3f(1, 1, 1));
  EXPECT_TRUE(b->hasPendingFields());
}

TEST_F(BillboardTest, AChangeOfAChildMarksTheBound) {
  ProbeNode *const child = new ProbeNode("a", 1);
  b->addChild(child);
  b->getBoxBound();
  child->setBoxBound(cubeAt(0, 0, 0, 2));
  EXPECT_TRUE(b->hasPendingFields());
}

TEST_F(BillboardTest, InModeStaticNothingMarksTheBound) {
  b->setBoundMode(ozNode::STATIC);
  b->setAxis(1, 0, 0);
  b->position()->set(0, ozVec3f(1, 1, 1));
  EXPECT_FALSE(b->hasPendingFields());
}

// ---- scale

TEST(BillboardUnscale, MakesTheRowsUnitVectors) {
  ozMatrix4f m;
  m.makeTrans(1, 2, 3);
  m.preRot(0, 0, 1, 0.5f, m);
  ozMatrix4f rotation = m;
  m.preScale(2, 3, 4, m);
  ozBillboard::unscaleMatrix(m);
  EXPECT_TRUE(m.almostEqual(rotation, 1e-6f));
}

TEST(BillboardUnscale, LeavesAZeroRow) {
  ozMatrix4f m;
  m.makeScale(2, 0, 4);
  ozBillboard::unscaleMatrix(m);
  EXPECT_EQ(m, ozMatrix4f(1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1));
}

// ---- the rotation

TEST_F(BillboardTest, AxialTurnsForwardTowardsTheEyeAndStaysUpright) {
  for (float angle : {0.3f, 1.5f, 2.8f, -0.7f, -2.0f}) {
    ASSERT_TRUE(turnFor(0, 1, 0, angle));
    EXPECT_VEC(turned(0, 0, 1), std::sin(angle), 0, std::cos(angle));
    EXPECT_VEC(turned(0, 1, 0), 0, 1, 0);
  }
}

TEST_F(BillboardTest, AxialTurnsOnlyAboutTheAxisForAnEyeAbove) {
  ASSERT_TRUE(turnFor(1, 0, 0, -0.6f)); // the eye was lifted
  EXPECT_VEC(turned(0, 0, 1), 0, 0, 1);
  EXPECT_VEC(turned(0, 1, 0), 0, 1, 0);
}

TEST_F(BillboardTest, AxialFacesAnEyeExactlyBehindIt) {
  ozMatrix4f behind(-1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1);
  draw.reset();
  draw.loadMatrix(behind);
  ASSERT_TRUE(b->calculateTransform(&draw, out));
  EXPECT_VEC(turned(0, 0, 1), 0, 0, -1);
  EXPECT_VEC(turned(0, 1, 0), 0, 1, 0);
}

TEST_F(BillboardTest, AxialTurnsTheForwardAxisChosen) {
  b->setForward(ozBillboard::NEG_X_AXIS);
  ASSERT_TRUE(turnFor(0, 1, 0, 0.4f));
  EXPECT_VEC(turned(-1, 0, 0), std::sin(0.4f), 0, std::cos(0.4f));
  EXPECT_VEC(turned(0, 1, 0), 0, 1, 0);
}

TEST_F(BillboardTest, WithTheEyeOnTheAxisThereIsNoRotation) {
  b->setAxis(0, 0, 1);
  b->setForward(ozBillboard::POS_X_AXIS);
  b->setUp(ozBillboard::POS_Y_AXIS);
  for (int mode : {0, 2}) {
    b->setModeHack(mode);
    EXPECT_FALSE(turnFor(0, 0, 1, 0));
    EXPECT_FALSE(turnFor(0, 1, 0, 0) && turnFor(1, 0, 0, 0));
  }
  b->setAxis(0, 0, -1);
  EXPECT_FALSE(turnFor(0, 0, 1, 0));
  b->setMode(ozBillboard::POINT_SCREEN);
  EXPECT_TRUE(turnFor(0, 0, 1, 0));
}

TEST_F(BillboardTest, WithForwardAlongTheAxisThereIsNoRotation) {
  for (auto forward : {ozBillboard::POS_Y_AXIS, ozBillboard::NEG_Y_AXIS}) {
    b->setForward(forward);
    b->setUp(ozBillboard::POS_Z_AXIS);
    for (int mode : {0, 2}) {
      b->setModeHack(mode);
      EXPECT_FALSE(turnFor(0, 1, 0, 0.5f));
    }
    b->setMode(ozBillboard::POINT_SCREEN);
    EXPECT_TRUE(turnFor(0, 1, 0, 0.5f));
  }
}

TEST_F(BillboardTest, PointScreenTakesTheAxesOfTheCamera) {
  b->setMode(ozBillboard::POINT_SCREEN);
  ASSERT_TRUE(turnFor(0, 0, 1, Pi / 2)); // the camera lies on its side
  EXPECT_VEC(turned(1, 0, 0), 0, 1, 0);
  EXPECT_VEC(turned(0, 1, 0), -1, 0, 0);
  EXPECT_VEC(turned(0, 0, 1), 0, 0, 1);
  ASSERT_TRUE(turnFor(1, 0, 0, -0.6f));
  EXPECT_VEC(turned(0, 0, 1), 0, std::sin(0.6f), std::cos(0.6f));
  EXPECT_VEC(turned(0, 1, 0), 0, std::cos(0.6f), -std::sin(0.6f));
}

TEST_F(BillboardTest, PointObjectFacesTheScreenWithTheAxisUp) {
  b->setMode(ozBillboard::POINT_OBJECT);
  ASSERT_TRUE(turnFor(0, 0, 1, Pi / 2)); // the camera's roll does not count
  EXPECT_VEC(turned(0, 0, 1), 0, 0, 1);
  EXPECT_VEC(turned(0, 1, 0), 0, 1, 0);
  EXPECT_VEC(turned(1, 0, 0), 1, 0, 0);
  ASSERT_TRUE(turnFor(1, 0, 0, -0.6f)); // the eye was lifted, and is faced
  EXPECT_VEC(turned(0, 0, 1), 0, std::sin(0.6f), std::cos(0.6f));
}

TEST_F(BillboardTest, EachForwardAndUpGiveARotation) {
  b->setMode(ozBillboard::POINT_SCREEN);
  camera->setPosition(1, 2, 3);
  for (int forward = 0; forward < 6; ++forward) {
    for (int up = 0; up < 6; ++up) {
      if (forward % 3 == up % 3) continue;
      b->setForward(static_cast<ozBillboard::VectorEnum>(forward));
      b->setUp(static_cast<ozBillboard::VectorEnum>(up));
      ASSERT_TRUE(turnFor(0, 1, 0, 0.5f));
      ozVec3f const f = unit(forward), u = unit(up);
      EXPECT_VEC(turned(f[0], f[1], f[2]), std::sin(0.5f), 0, std::cos(0.5f));
      EXPECT_VEC(turned(u[0], u[1], u[2]), 0, 1, 0);
      EXPECT_NEAR(out.det3(), 1, 1e-5); // not a mirror image
      EXPECT_EQ(out[3][3], 1);
      EXPECT_VEC(ozVec3f(out[3]), 0, 0, 0);
    }
  }
}

TEST_F(BillboardTest, WithTheAxisUpEachForwardAndUpGiveARotationToo) {
  b->setMode(ozBillboard::POINT_OBJECT);
  for (int forward : {0, 2, 3, 5}) {
    for (int up = 0; up < 6; ++up) {
      if (forward % 3 == up % 3) continue;
      b->setForward(static_cast<ozBillboard::VectorEnum>(forward));
      b->setUp(static_cast<ozBillboard::VectorEnum>(up));
      ASSERT_TRUE(turnFor(1, 0, 0, -0.5f)); // the eye was lifted
      ozVec3f const f = unit(forward), u = unit(up);
      EXPECT_VEC(turned(f[0], f[1], f[2]), 0, std::sin(0.5f), std::cos(0.5f));
      EXPECT_VEC(turned(u[0], u[1], u[2]), 0, std::cos(0.5f), -std::sin(0.5f));
      EXPECT_NEAR(out.det3(), 1, 1e-5); // not a mirror image
    }
  }
}

TEST_F(BillboardTest, AnAxisCountsAsTheForwardOneWithinOneTenMillionth) {
  b->setForward(ozBillboard::POS_Y_AXIS);
  b->setUp(ozBillboard::POS_Z_AXIS);
  b->setAxis(5e-8f, 1, 0);
  EXPECT_FALSE(turnFor(0, 1, 0, 0.5f));
  b->setAxis(1e-6f, 1, 0);
  EXPECT_TRUE(turnFor(0, 1, 0, 0.5f));
}

TEST_F(BillboardTest, NothingStaysFromOneEyeToTheNext) {
  ASSERT_TRUE(turnFor(0, 1, 0, 0.5f));
  ozMatrix4f const first = out;
  ASSERT_TRUE(turnFor(0, 1, 0, -1.5f));
  ASSERT_TRUE(turnFor(0, 1, 0, 0.5f));
  EXPECT_EQ(out, first);
}

TEST_F(BillboardTest, ForwardAndUpAlongOneLineHarmNothing) {
  for (int mode : {0, 1, 2}) {
    b->setModeHack(mode);
    for (int forward = 0; forward < 6; ++forward) {
      for (int up : {forward, (forward + 3) % 6}) {
        b->setForward(static_cast<ozBillboard::VectorEnum>(forward));
        b->setUp(static_cast<ozBillboard::VectorEnum>(up));
        turnFor(0, 1, 0, 0.5f);
        EXPECT_EQ(out[3][3], 1);
      }
    }
  }
}

TEST_F(BillboardTest, ValuesThatAreNoEnumeratorsLeaveTheIdentity) {
  b->setModeHack(3);
  EXPECT_TRUE(turnFor(0, 1, 0, 0.5f));
  EXPECT_EQ(out, ozMatrix4f());
  b->setModeHack(1);
  for (int bad : {-1, 6, 1000000}) {
    b->setForward(static_cast<ozBillboard::VectorEnum>(bad));
    EXPECT_TRUE(turnFor(0, 1, 0, 0.5f));
    EXPECT_EQ(out, ozMatrix4f());
    b->setForward(ozBillboard::POS_Z_AXIS);
    b->setUp(static_cast<ozBillboard::VectorEnum>(bad));
    EXPECT_TRUE(turnFor(0, 1, 0, 0.5f));
    EXPECT_EQ(out, ozMatrix4f());
    b->setUp(ozBillboard::POS_Y_AXIS);
  }
}

TEST_F(BillboardTest, AScaleAboveHasNoEffectOnTheRotation) {
  for (int mode : {0, 1, 2}) {
    b->setModeHack(mode);
    ASSERT_TRUE(turnFor(0, 1, 0, 0.5f));
    ozMatrix4f const plain = out;
    draw.scale(2, 3, 4);
    out.makeIdent();
    ASSERT_TRUE(b->calculateTransform(&draw, out));
    EXPECT_TRUE(out.almostEqual(plain, 1e-5f));
  }
}

TEST_F(BillboardTest, AScaleOfZeroAboveHarmsNothing) {
  for (int mode : {0, 1, 2}) {
    b->setModeHack(mode);
    turnFor(0, 1, 0, 0.5f);
    draw.scale(0, 1, 0);
    out.makeIdent();
    stderrOf([&] { b->calculateTransform(&draw, out); });
    for (int i = 0; i < 4; ++i)
      for (int j = 0; j < 4; ++j) EXPECT_TRUE(std::isfinite(out[i][j]));
  }
}
