#include "probes.h"

#include <gtest/gtest.h>

TEST(Inline, HasTheFieldsOfVRML) {
  ozType *const type = ozInline::getClassType();
  EXPECT_STREQ(type->getName(), "Inline");
  EXPECT_EQ(type->getAncestor(), ozSwitch::getClassType());
  ASSERT_EQ(type->getFieldInfoCount(), 7);
  EXPECT_STREQ(type->getFieldInfo(4)->getName(), "url");
  EXPECT_EQ(type->getFieldInfo(4)->getFieldType(), ozMFString::getClassType());
  EXPECT_STREQ(type->getFieldInfo(5)->getName(), "bboxSize");
  EXPECT_EQ(type->getFieldInfo(5)->getFieldType(), ozSFVec3f::getClassType());
  EXPECT_STREQ(type->getFieldInfo(6)->getName(), "bboxCenter");
  EXPECT_EQ(type->getFieldInfo(6)->getFieldType(), ozSFVec3f::getClassType());
}

TEST(Inline, StartsWithoutContents) {
  Held<ozInline> node;
  EXPECT_EQ(node->getWhichChild(), -1);
  EXPECT_EQ(node->url()->getCount(), 0u);
  EXPECT_EQ(node->url(), node->getField(4));
  ozVec3f v(1, 1, 1);
  node->getBboxSize(v);
  EXPECT_VEC(v, 0, 0, 0);
  v.set(1, 1, 1);
  node->getBboxCenter(v);
  EXPECT_VEC(v, 0, 0, 0);
}

TEST(Inline, KeepsTheBoxThatAFilePromisesInTwoForms) {
  Held<ozInline> node;
  ozVec3f v;
  float x, y, z;
  node->setBboxSize(1, 2, 3);
  node->getBboxSize(v);
  EXPECT_VEC(v, 1, 2, 3);
  node->setBboxSize(ozVec3f(4, 5, 6));
  node->getBboxSize(&x, &y, &z);
  EXPECT_VEC(ozVec3f(x, y, z), 4, 5, 6);
  node->setBboxCenter(7, 8, 9);
  node->getBboxCenter(v);
  EXPECT_VEC(v, 7, 8, 9);
  node->setBboxCenter(ozVec3f(1, 1, 2));
  node->getBboxCenter(&x, &y, &z);
  EXPECT_VEC(ozVec3f(x, y, z), 1, 1, 2);
}

TEST(Inline, ThePromisedBoxIsNoBound) {
  Held<ozInline> node;
  node->setBboxSize(1, 2, 3);
  EXPECT_TRUE(node->getBoxBound()->isEmpty());
}

TEST(Inline, ReadsFollowConnectedFields) {
  Held<ozInline> from, to;
  for (short id = 4; id <= 6; ++id) from->connect(id, to, id);
  from->url()->set(0, "a.wrl");
  from->setBboxSize(1, 2, 3);
  from->setBboxCenter(4, 5, 6);
  EXPECT_STREQ((*to->url())[0].getString(), "a.wrl");
  ozVec3f v;
  to->getBboxSize(v);
  EXPECT_VEC(v, 1, 2, 3);
  to->getBboxCenter(v);
  EXPECT_VEC(v, 4, 5, 6);
}
