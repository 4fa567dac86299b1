// Needs a process in which no context class exists yet.

#include "oz/ozContext.h"
#include <gtest/gtest.h>

TEST(TextureNameCount, CanBeSetUntilTheClassIsInUse) {
  EXPECT_EQ(ozContext::setDefaultQtyTextureNames(20001), 0);
  EXPECT_EQ(ozContext::setDefaultQtyTextureNames(20000), 1);
  EXPECT_EQ(ozContext::setDefaultQtyTextureNames(3), 1);
  EXPECT_EQ(ozContext::newTextureName(), 0);
  EXPECT_EQ(ozContext::setDefaultQtyTextureNames(4), 0);
  EXPECT_EQ(ozContext::newTextureName(), 1);
  EXPECT_EQ(ozContext::newTextureName(), 2);
  EXPECT_LT(ozContext::newTextureName(), 0);
  ozContext::deleteTextureName(1);
  EXPECT_EQ(ozContext::newTextureName(), 1);
}
