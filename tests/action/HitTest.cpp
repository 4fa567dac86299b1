#include "oz/ozHit.h"

#include <gtest/gtest.h>

#include "action/probeNode.h"

namespace {

template <class T> T *some() {
  static int place;
  return reinterpret_cast<T *>(&place);
}

} // namespace

TEST(Hit, ItsTypeHangsFromObject) {
  EXPECT_STREQ(ozHit::getClassType()->getName(), "Hit");
  EXPECT_EQ(ozHit::getClassType()->getAncestor(), ozObject::getClassType());
}

TEST(Hit, ANewOneIsNoHit) {
  ozHit const hit;
  EXPECT_FALSE(hit.isValid());
  EXPECT_EQ(hit.geometry, nullptr);
  EXPECT_EQ(hit.shape, nullptr);
  EXPECT_EQ(hit.path.getCount(), 0u);
  EXPECT_EQ(hit.path.getSize(), 8u);
  EXPECT_EQ(hit.matrix, ozMatrix4f());
  EXPECT_EQ(hit.ray.getOrigin(), ozVec3f(0, 0, 0));
  EXPECT_EQ(hit.ray.getDirection(), ozVec3f(0, 0, 0));
  EXPECT_EQ(hit.ray.getLength(), 0);
}

TEST(Hit, IsValidOnceItHasAGeometry) {
  ozHit hit;
  hit.shape = some<ozShape>();
  EXPECT_FALSE(hit.isValid());
  hit.geometry = some<ozGeometry>();
  EXPECT_TRUE(hit.isValid());
}

TEST(Hit, ResetClearsGeometryShapeAndPathAlone) {
  Held<ProbeNode> node;
  ozHit hit;
  hit.shape = some<ozShape>();
  hit.geometry = some<ozGeometry>();
  hit.path.append(node);
  hit.distance = 3;
  hit.primIndex = 4;
  hit.reset();
  EXPECT_EQ(hit.geometry, nullptr);
  EXPECT_EQ(hit.shape, nullptr);
  EXPECT_EQ(hit.path.getCount(), 0u);
  EXPECT_EQ(hit.distance, 3);
  EXPECT_EQ(hit.primIndex, 4);
}

TEST(Hit, AssignmentAndCopyTakeEveryMemberAndAPathOfTheirOwn) {
  Held<ProbeNode> node;
  ozHit hit;
  hit.path.append(node);
  hit.ray.setOrigin(1, 2, 3);
  hit.ray.setDirection(0, 0, -1);
  hit.ray.setLength(9);
  hit.worldPoint.set(1, 0, 0);
  hit.localPoint.set(2, 0, 0);
  hit.worldNormal.set(3, 0, 0);
  hit.localNormal.set(4, 0, 0);
  hit.matrix.makeTrans(5, 0, 0);
  hit.primIndex = 6;
  hit.geometry = some<ozGeometry>();
  hit.shape = some<ozShape>();
  hit.distance = 7;
  ozHit assigned;
  assigned = hit;
  ozHit const copied(hit);
  hit.reset();
  for (ozHit const *other : {static_cast<ozHit const *>(&assigned), &copied}) {
    ASSERT_EQ(other->path.getCount(), 1u);
    EXPECT_EQ(other->path[0], node);
    EXPECT_EQ(other->ray.getOrigin(), ozVec3f(1, 2, 3));
    EXPECT_EQ(other->ray.getDirection(), ozVec3f(0, 0, -1));
    EXPECT_EQ(other->ray.getLength(), 9);
    EXPECT_EQ(other->worldPoint, ozVec3f(1, 0, 0));
    EXPECT_EQ(other->localPoint, ozVec3f(2, 0, 0));
    EXPECT_EQ(other->worldNormal, ozVec3f(3, 0, 0));
    EXPECT_EQ(other->localNormal, ozVec3f(4, 0, 0));
    EXPECT_EQ(other->matrix[3][0], 5);
    EXPECT_EQ(other->primIndex, 6);
    EXPECT_EQ(other->geometry, some<ozGeometry>());
    EXPECT_EQ(other->shape, some<ozShape>());
    EXPECT_EQ(other->distance, 7);
  }
}

TEST(Hit, AssignmentLeavesTheReferencesOnTheHitAlone) {
  Held<ozHit> held;
  ozHit const other;
  *held = other;
  EXPECT_EQ(held->getRefCount(), 1u);
}
