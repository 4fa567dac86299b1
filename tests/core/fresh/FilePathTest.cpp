// The file path in a process that has never set one.
#include "oz/ozGlobal.h"

#include <gtest/gtest.h>

#include <stdlib.h>

namespace {

TEST(FreshFilePath, IsNullBeforeAnyIsSet) { EXPECT_EQ(nullptr, ozGlobal::getFilePath()); }

TEST(FreshFilePath, IsNotNeededForASearch) {
  unsetenv("OZ_DATAFILE_PATH");
  ozString result("left over");
  EXPECT_EQ(0, ozGlobal::findFile("no/such/file", result, ozGlobal::READ_FMODE));
  EXPECT_STREQ("/file", result.getString());
  EXPECT_EQ(nullptr, ozGlobal::getFilePath());
}

} // namespace
