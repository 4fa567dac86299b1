#include "oz/ozData.h"
#include "oz/ozType.h"

#include <gtest/gtest.h>

#include <limits.h>
#include <string.h>

namespace {

TEST(Data, HasTheSizeThatWasAskedFor) {
  ozData *data = new (1000) ozData;
  ASSERT_NE(nullptr, data);
  EXPECT_EQ(1000, data->getSize());
  data->unref();
}

TEST(Data, KeepsSizesOfEveryBlockApart) { // the size is stored ahead of the constructor, and has to outlive it
  ozData *blocks[64];
  for (unsigned int i = 0; i < 64; ++i) blocks[i] = new (i * 3) ozData;
  for (int i = 0; i < 64; ++i) {
    EXPECT_EQ(i * 3, blocks[i]->getSize());
    blocks[i]->unref();
  }
}

TEST(Data, ItsBytesLieBehindTheHeaderInOneAllocation) {
  ozData *data = new (16) ozData;
  EXPECT_EQ(reinterpret_cast<char *>(data) + sizeof(ozData), data->getData());
  memset(data->getData(), 0xff, 16);
  EXPECT_EQ(16, data->getSize());
  EXPECT_EQ(0u, data->getRefCount());
  data->unref();
}

TEST(Data, CannotBeMadeWithoutItsSize) {
  EXPECT_EQ(nullptr, new ozData);
  EXPECT_EQ(nullptr, ozData::operator new(sizeof(ozData)));
}

TEST(Data, ABlockThatCannotBeHadIsNull) { EXPECT_EQ(nullptr, new (UINT_MAX) ozData) << "an int cannot tell this size"; }

TEST(Data, MayHaveNoBytes) {
  ozData *data = new (0) ozData;
  ASSERT_NE(nullptr, data);
  EXPECT_EQ(0, data->getSize());
  ozData *copy = data->clone();
  EXPECT_EQ(0, copy->getSize());
  copy->unref();
  data->unref();
}

TEST(Data, IsACountedObject) {
  ozData *data = new (4) ozData;
  EXPECT_EQ(0u, data->getRefCount());
  data->ref();
  data->ref();
  EXPECT_FALSE(data->unref());
  EXPECT_TRUE(data->unref());
}

TEST(Data, RegistersAsData) {
  ozData *data = new (4) ozData;
  EXPECT_EQ(ozData::getClassType(), data->getType());
  EXPECT_STREQ("Data", data->getType()->getName());
  EXPECT_EQ(data->getType(), ozType::getType("Data"));
  EXPECT_TRUE(data->isOfType(ozObject::getClassType()));
  EXPECT_EQ(ozObject::getClassType(), ozData::getClassType()->getAncestor());
  data->unref();
}

TEST(Data, ACloneHasTheSameBytesAndCount0) {
  ozData *data = new (5) ozData;
  memcpy(data->getData(), "bytes", 5);
  data->ref();
  ozData *copy = data->clone();
  ASSERT_NE(nullptr, copy);
  EXPECT_NE(data, copy);
  EXPECT_EQ(5, copy->getSize());
  EXPECT_EQ(0, memcmp("bytes", copy->getData(), 5));
  EXPECT_EQ(0u, copy->getRefCount());
  EXPECT_EQ(data->getType(), copy->getType());
  static_cast<char *>(copy->getData())[0] = 'B';
  EXPECT_EQ(0, memcmp("bytes", data->getData(), 5));
  copy->unref();
  data->unref();
}

} // namespace
