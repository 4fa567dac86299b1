#include "oz/ozName.h"
#include "support/capture.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <sys/resource.h>
#include <unistd.h>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define OZ_SANITIZED 1
#endif

namespace {

char const *const Refused = "(FATAL, RESOURCE): Cannot allocate memory for text\n";

// The bytes of address space in use.
unsigned long addressSpace() {
  unsigned long pages = 0;
  std::ifstream("/proc/self/statm") >> pages;
  return pages * static_cast<unsigned long>(sysconf(_SC_PAGESIZE));
}

// A text of 64 megabytes, and no memory for a second one.
class TextMemory : public testing::Test {
protected:
  void SetUp() override {
#ifdef OZ_SANITIZED
    GTEST_SKIP() << "the sanitizer needs its address space";
#endif
    text.assign(64u << 20, 'm');
    ASSERT_EQ(0, getrlimit(RLIMIT_AS, &before));
    rlimit limit = {addressSpace() + (32ul << 20), before.rlim_max};
    ASSERT_EQ(0, setrlimit(RLIMIT_AS, &limit));
    limited = true;
  }
  void TearDown() override {
    if (limited) setrlimit(RLIMIT_AS, &before);
  }

  std::string text;
  rlimit before;
  bool limited = false;
};

TEST_F(TextMemory, ThatIsRefusedIsReportedOnceAndLeavesTheStringAsItWas) {
  ozString string("kept");
  EXPECT_EQ(Refused, stderrOf([&] { string = text.c_str(); }));
  EXPECT_STREQ("kept", string.getString());
  EXPECT_EQ(Refused, stderrOf([&] { string += text.c_str(); }));
  EXPECT_STREQ("kept", string.getString());
  EXPECT_EQ(Refused, stderrOf([&] { EXPECT_EQ(nullptr, ozString(text.c_str()).getString()); }));
}

TEST_F(TextMemory, ThatIsRefusedIsReportedOnceAndGivesTheEmptyName) {
  EXPECT_EQ(Refused, stderrOf([&] { EXPECT_TRUE(ozName(text.c_str()) == ozName()); }));
  EXPECT_STREQ("later", ozName("later").getString());
}

} // namespace
