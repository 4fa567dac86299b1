#include "oz/ozGlobal.h"
#include "support/capture.h"

#include <gtest/gtest.h>

#include <string>

namespace {

typedef ozGlobal::NotifySeverityEnum Severity;
typedef ozGlobal::NotifyTypeEnum Type;

std::string notified(int severity, int type, char const *message) {
  return stderrOf([=] { ozGlobal::notify(static_cast<Severity>(severity), static_cast<Type>(type), message); });
}

TEST(Notify, PrintsSeverityTypeAndMessage) {
  EXPECT_EQ("(WARN, USAGE): a message\n", notified(2, 0, "a message"));
  EXPECT_EQ("(FATAL, RESOURCE): Cannot resize interleaved array\n", notified(1, 1, "Cannot resize interleaved array"));
}

TEST(Notify, KnowsAllSeverities) {
  char const *const texts[] = {"ALWAYS", "FATAL", "WARN", "NOTICE", "INFO", "DEBUG", "FP_DEBUG"};
  for (int i = 0; i < 7; ++i) EXPECT_EQ("(" + std::string(texts[i]) + ", USAGE): m\n", notified(i, 0, "m"));
}

TEST(Notify, KnowsAllTypes) {
  char const *const texts[] = {"USAGE",       "RESOURCE",   "SYSERR",     "ASSERT",       "PRINT", "INTERNAL",
                               "FP_OVERFLOW", "FP_DIVZERO", "FP_INVALID", "FP_UNDERFLOW", "MORE"};
  for (int i = 0; i < 11; ++i) EXPECT_EQ("(ALWAYS, " + std::string(texts[i]) + "): m\n", notified(0, i, "m"));
}

TEST(Notify, ItsEnumeratorsHaveTheValuesOfTheirTexts) {
  EXPECT_EQ(0, ozGlobal::ALWAYS);
  EXPECT_EQ(1, ozGlobal::FATAL);
  EXPECT_EQ(2, ozGlobal::WARN);
  EXPECT_EQ(3, ozGlobal::NOTICE);
  EXPECT_EQ(4, ozGlobal::INFO);
  EXPECT_EQ(5, ozGlobal::DEBUG);
  EXPECT_EQ(6, ozGlobal::FP_DEBUG);
  EXPECT_EQ(0, ozGlobal::USAGE);
  EXPECT_EQ(1, ozGlobal::RESOURCE);
  EXPECT_EQ(2, ozGlobal::SYSERR);
  EXPECT_EQ(3, ozGlobal::ASSERT);
  EXPECT_EQ(4, ozGlobal::PRINT);
  EXPECT_EQ(5, ozGlobal::INTERNAL);
  EXPECT_EQ(6, ozGlobal::FP_OVERFLOW);
  EXPECT_EQ(7, ozGlobal::FP_DIVZERO);
  EXPECT_EQ(8, ozGlobal::FP_INVALID);
  EXPECT_EQ(9, ozGlobal::FP_UNDERFLOW);
  EXPECT_EQ(10, ozGlobal::MORE);
}

TEST(Notify, AValueOutsideItsTablesPrintsTheNearestEntry) {
  EXPECT_EQ("(ALWAYS, USAGE): m\n", notified(-1, -1000, "m"));
  EXPECT_EQ("(FP_DEBUG, MORE): m\n", notified(7, 11, "m"));
  EXPECT_EQ("(FP_DEBUG, MORE): m\n", notified(2147483647, 2147483647, "m"));
}

TEST(Notify, AMessageWithALineEndPrintsAnEmptyLineAfterIt) {
  EXPECT_EQ("(WARN, USAGE): No inverse: singular matrix\n\n", notified(2, 0, "No inverse: singular matrix\n"));
}

TEST(Notify, PrintsPercentSignsAsTheyStand) { EXPECT_EQ("(INFO, PRINT): 100%s %n\n", notified(4, 4, "100%s %n")); }

TEST(Notify, OfNoMessagePrintsNone) { EXPECT_EQ("(INFO, PRINT): \n", notified(4, 4, nullptr)); }

TEST(Notify, AFatalMessageReturns) { // and the other thing it does not do is filter: each of these came through
  EXPECT_EQ("(FATAL, INTERNAL): m\n(DEBUG, INTERNAL): m\n", stderrOf([] {
              ozGlobal::notify(ozGlobal::FATAL, ozGlobal::INTERNAL, "m");
              ozGlobal::notify(ozGlobal::DEBUG, ozGlobal::INTERNAL, "m");
            }));
}

} // namespace
