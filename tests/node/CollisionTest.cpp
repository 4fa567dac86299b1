#include "probes.h"

#include <gtest/gtest.h>

TEST(Collision, IsAGroupOfTheNameCollision) {
  EXPECT_STREQ(ozCollision::getClassType()->getName(), "Collision");
  EXPECT_EQ(ozCollision::getClassType()->getAncestor(), ozGroup::getClassType());
}

TEST(Collision, HasTheFieldCollide) {
  ASSERT_EQ(ozCollision::getClassType()->getFieldInfoCount(), 4);
  EXPECT_STREQ(ozCollision::getClassType()->getFieldInfo(3)->getName(), "collide");
  EXPECT_EQ(ozCollision::getClassType()->getFieldInfo(3)->getFieldType(), ozSFUByte::getClassType());
}

TEST(Collision, CollidesByDefault) {
  Held<ozCollision> collision;
  EXPECT_EQ(collision->getCollide(), 1);
}

TEST(Collision, KeepsTheFlag) {
  Held<ozCollision> collision;
  collision->setCollide(0);
  EXPECT_EQ(collision->getCollide(), 0);
}

TEST(Collision, ASetFlagReachesAConnectedField) {
  Held<ozCollision> from, to;
  from->connect(3, to, 3);
  from->setCollide(7);
  EXPECT_EQ(to->getCollide(), 7);
}

TEST(Collision, ChangingTheFlagLeavesTheBoundAlone) {
  Held<ozCollision> collision;
  collision->setCollide(0);
  EXPECT_FALSE(collision->hasPendingFields());
}

TEST(Collision, MakesCollisions) {
  Held<ozCollision> collision;
  Held<ozContainer> made(collision->instantiate());
  EXPECT_EQ(made->getType(), ozCollision::getClassType());
}
