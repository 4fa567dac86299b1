#include <gtest/gtest.h>

#include <math.h>

#include "oz/ozInterpolator.h"
#include "oz/ozSpline.h"

namespace {

template <class Interpolator> void setKeys(Interpolator &interpolator, std::initializer_list<float> keys) {
  unsigned int i = 0;
  for (float key : keys) interpolator.key()->set(i++, key);
}

template <class Interpolator, class Value>
void setValues(Interpolator &interpolator, std::initializer_list<Value> values) {
  unsigned int i = 0;
  for (Value const &value : values) interpolator.keyValue()->set(i++, value);
}

TEST(Interpolator, HasItsFieldsInPlace) {
  struct Row {
    ozContainer *object;
    char const *name;
    ozType *keyValue, *value;
  };
  ozScalarInterpolator scalar;
  ozPositionInterpolator position;
  ozColorInterpolator color;
  ozOrientationInterpolator orientation;
  ozCoordinateInterpolator coordinate;
  ozNormalInterpolator normal;
  Row const rows[] = {
      {&scalar, "ScalarInterpolator", ozMFFloat::getClassType(), ozSFFloat::getClassType()},
      {&position, "PositionInterpolator", ozMFVec3f::getClassType(), ozSFVec3f::getClassType()},
      {&color, "ColorInterpolator", ozMFVec3f::getClassType(), ozSFVec3f::getClassType()},
      {&orientation, "OrientationInterpolator", ozMFRotation::getClassType(), ozSFRotation::getClassType()},
      {&coordinate, "CoordinateInterpolator", ozMFVec3f::getClassType(), ozMFVec3f::getClassType()},
      {&normal, "NormalInterpolator", ozMFVec3f::getClassType(), ozMFVec3f::getClassType()},
  };
  for (Row const &row : rows) {
    ozType *const type = row.object->getType();
    EXPECT_STREQ(row.name, type->getName());
    EXPECT_STREQ("fraction", type->getFieldInfo(3)->getName());
    EXPECT_STREQ("key", type->getFieldInfo(4)->getName());
    EXPECT_STREQ("keyValue", type->getFieldInfo(5)->getName());
    EXPECT_STREQ("value", type->getFieldInfo(6)->getName());
    EXPECT_EQ(7, type->getFieldInfoCount());
    EXPECT_EQ(ozSFFloat::getClassType(), type->getFieldInfo(3)->getFieldType());
    EXPECT_EQ(ozMFFloat::getClassType(), type->getFieldInfo(4)->getFieldType());
    EXPECT_EQ(row.keyValue, type->getFieldInfo(5)->getFieldType());
    EXPECT_EQ(row.value, type->getFieldInfo(6)->getFieldType());
    EXPECT_EQ(3u, type->getEngineInputs().getCount());
    ASSERT_EQ(1u, type->getEngineOutputs().getCount());
    EXPECT_EQ(6, type->getEngineOutputs()[0]);
    EXPECT_STREQ("Interpolator", type->getAncestor()->getName());
    for (int id = 0; id < 7; ++id) EXPECT_TRUE(type->getFieldInfo(id)->isDefault(row.object)) << id;
  }
  EXPECT_TRUE(orientation.value()->get() == ozRotation(0, 0, 1, 0));
  EXPECT_EQ(0.0f, scalar.value()->get());
  EXPECT_EQ(0.0f, scalar.getFraction());
}

TEST(Interpolator, BlendsBetweenTwoKeys) {
  ozScalarInterpolator s;
  setKeys(s, {0, 1});
  setValues(s, {10.0f, 20.0f});
  s.setFraction(0.25f);
  EXPECT_EQ(12.5f, s.value()->get());
}

TEST(Interpolator, OutsideTheKeysItGivesTheNearestEnd) {
  ozScalarInterpolator s;
  setKeys(s, {0.25f, 0.75f});
  setValues(s, {10.0f, 20.0f});
  float t = 0;
  s.setFraction(0.25f);
  EXPECT_EQ(0, s.getParam(t));
  EXPECT_EQ(1.0f, t);
  s.setFraction(-3);
  EXPECT_EQ(10.0f, s.value()->get());
  s.setFraction(0.75f);
  EXPECT_EQ(1, s.getParam(t));
  EXPECT_EQ(1.0f, t);
  s.setFraction(9);
  EXPECT_EQ(20.0f, s.value()->get());
}

TEST(Interpolator, OnAnInteriorKeyItGivesThatKeysValue) {
  ozScalarInterpolator s;
  setKeys(s, {0, 0.5f, 1});
  setValues(s, {1.0f, 7.0f, 2.0f});
  s.setFraction(0.5f);
  float t = 0;
  EXPECT_EQ(1, s.getParam(t));
  EXPECT_EQ(1.0f, t);
  EXPECT_EQ(7.0f, s.value()->get());
}

TEST(Interpolator, OfEqualKeysTheFirstWins) {
  ozScalarInterpolator s;
  setKeys(s, {0, 0.5f, 0.5f, 1});
  setValues(s, {0.0f, 1.0f, 2.0f, 3.0f});
  s.setFraction(0.5f);
  EXPECT_EQ(1.0f, s.value()->get());
}

TEST(Interpolator, WithoutKeysItDoesNothing) {
  ozScalarInterpolator s;
  ozCoordinateInterpolator c;
  setValues(s, {10.0f});
  setValues(c, {ozVec3f(1, 2, 3)});
  s.setFraction(0.5f);
  c.setFraction(0.5f);
  EXPECT_EQ(0.0f, s.value()->get());
  EXPECT_EQ(0u, c.value()->getCount());
}

TEST(Interpolator, WithFewerValuesThanKeysItKeepsItsValue) {
  ozScalarInterpolator s;
  setKeys(s, {0, 0.5f, 1});
  setValues(s, {10.0f});
  s.setFraction(0.75f);
  EXPECT_EQ(0.0f, s.value()->get());
}

TEST(Interpolator, ANaNFractionGivesTheLastKey) {
  ozScalarInterpolator s;
  setKeys(s, {0, 0.5f, 1});
  setValues(s, {1.0f, 2.0f, 3.0f});
  s.setFraction(NAN);
  EXPECT_EQ(3.0f, s.value()->get());
}

TEST(Interpolator, PositionsAndColoursBlendByComponent) {
  ozPositionInterpolator p;
  ozColorInterpolator c;
  setKeys(p, {0, 1});
  setKeys(c, {0, 1});
  setValues(p, {ozVec3f(0, 4, -8), ozVec3f(8, 0, 8)});
  setValues(c, {ozVec3f(0, 0.5f, 1), ozVec3f(1, 0.5f, 0)});
  p.setFraction(0.75f);
  c.setFraction(0.75f);
  EXPECT_TRUE(p.value()->get() == ozVec3f(6, 1, 4));
  EXPECT_TRUE(c.value()->get() == ozVec3f(0.75f, 0.5f, 0.25f));
}

TEST(Interpolator, OrientationsBlendBySlerp) {
  ozOrientationInterpolator o;
  ozRotation const a(0, 0, 1, 0), b(0, 0, 1, 1.5f);
  setKeys(o, {0, 1});
  setValues(o, {a, b});
  o.setFraction(0.3f);
  ozRotation expected;
  expected.slerp(0.3f, a, b);
  EXPECT_TRUE(o.value()->get() == expected);
  o.setFraction(1);
  EXPECT_TRUE(o.value()->get() == b);
}

TEST(Interpolator, CoordinatesBlendListByList) {
  ozCoordinateInterpolator c;
  setKeys(c, {0, 1});
  setValues(
      c, {ozVec3f(0, 0, 0), ozVec3f(1, 0, 0), ozVec3f(2, 0, 0), ozVec3f(0, 4, 0), ozVec3f(1, 4, 0), ozVec3f(2, 4, 8)});
  c.setFraction(0.5f);
  ASSERT_EQ(3u, c.value()->getCount());
  EXPECT_TRUE(c.value()->get(0) == ozVec3f(0, 2, 0));
  EXPECT_TRUE(c.value()->get(2) == ozVec3f(2, 2, 4));
  c.setFraction(1);
  EXPECT_TRUE(c.value()->get(1) == ozVec3f(1, 4, 0));
}

TEST(Interpolator, BlendedNormalsAreUnitVectorsAndThoseOnAKeyAreNot) {
  ozNormalInterpolator n;
  setKeys(n, {0, 1});
  setValues(n, {ozVec3f(2, 0, 0), ozVec3f(0, 2, 0)});
  n.setFraction(0.5f);
  ASSERT_EQ(1u, n.value()->getCount());
  EXPECT_NEAR(sqrt(0.5), n.value()->get(0)[0], 1e-6);
  EXPECT_NEAR(sqrt(0.5), n.value()->get(0)[1], 1e-6);
  n.setFraction(0);
  EXPECT_TRUE(n.value()->get(0) == ozVec3f(2, 0, 0));
}

TEST(Interpolator, AListReachesAConnectedListThatPullsIt) {
  ozCoordinateInterpolator c, target;
  c.value()->connect(target.keyValue());
  setKeys(c, {0, 1});
  setValues(c, {ozVec3f(0, 0, 0), ozVec3f(4, 4, 4)});
  c.setFraction(0.25f);
  ASSERT_EQ(1u, c.value()->getCount());
  EXPECT_TRUE(target.keyValue()->get(0) == ozVec3f(1, 1, 1));
}

class SplineTest : public ::testing::Test {
protected:
  SplineTest() { spline.weight()->connect(target.key()); }
  std::vector<float> weights(float fraction) {
    spline.setFraction(fraction);
    std::vector<float> result;
    for (unsigned int i = 0; i < spline.weight()->getCount(); ++i) result.push_back(spline.weight()->get(i));
    return result;
  }
  ozSpline spline;
  ozScalarInterpolator target;
};

typedef std::vector<float> Weights;

TEST_F(SplineTest, HasItsFieldsInPlace) {
  ozType *const type = spline.getType();
  char const *const names[] = {"key", "fraction", "basis", "weight"};
  for (int i = 0; i < 4; ++i) EXPECT_STREQ(names[i], type->getFieldInfo(3 + i)->getName());
  ozMatrix4f basis;
  spline.getBasis(basis);
  for (int i = 0; i < 16; ++i) EXPECT_EQ(0.0f, basis.get(i / 4, i % 4));
  ozMatrix4f const ident;
  spline.setBasis(ident);
  spline.getBasis(basis);
  EXPECT_TRUE(basis == ident);
}

TEST_F(SplineTest, AChangeOfTheBasisMarksTheWeightsAndTheBasisIsNotComputedWith) {
  setKeys(spline, {0, 1});
  EXPECT_EQ((Weights{0.75f, 0.25f}), weights(0.25f));
  EXPECT_FALSE(spline.weight()->isDirty());
  spline.setBasis(ozMatrix4f());
  EXPECT_TRUE(spline.weight()->isDirty());
  EXPECT_EQ((Weights{0.75f, 0.25f}), weights(0.25f));
}

TEST_F(SplineTest, OfEqualKeysTheWeightsLeaveTheStepOut) {
  setKeys(spline, {0, 0.5f, 0.5f, 1});
  EXPECT_EQ((Weights{0, 0, 1, 0}), weights(0.5f));
  EXPECT_EQ((Weights{0.5f, 0.5f, 0, 0}), weights(0.25f));
}

TEST_F(SplineTest, WeighsTheTwoKeysAroundTheFraction) {
  setKeys(spline, {0, 0.5f, 1});
  EXPECT_EQ((Weights{0.5f, 0.5f, 0}), weights(0.25f));
  EXPECT_EQ((Weights{0, 0.5f, 0.5f}), weights(0.75f));
  EXPECT_EQ((Weights{0, 1, 0}), weights(0.5f));
  EXPECT_EQ((Weights{1, 0, 0}), weights(0));
}

TEST_F(SplineTest, OutsideTheKeysAllWeightsAreZero) {
  setKeys(spline, {0, 0.5f, 1});
  EXPECT_EQ((Weights{0, 0, 0}), weights(1));
  EXPECT_EQ((Weights{0, 0, 0}), weights(7));
  EXPECT_EQ((Weights{0, 0, 0}), weights(-1));
}

TEST_F(SplineTest, KeysTooCloseToDivideByGiveTheLaterOne) {
  setKeys(spline, {0, 5e-16f});
  EXPECT_EQ((Weights{0, 1}), weights(2e-16f));
}

TEST(Spline, WithoutAConnectionComputesNothing) {
  ozSpline spline;
  setKeys(spline, {0, 1});
  spline.setFraction(0.5f);
  EXPECT_EQ(0u, spline.weight()->getCount());
}

} // namespace
