#include "oz/ozPlatform.h"
#include <csignal>
#include <gtest/gtest.h>

TEST(Fault, PrintsOneLineAndAborts) {
  EXPECT_EXIT(ozFault("index in range", "ozArray.cpp", 12), ::testing::KilledBySignal(SIGABRT),
              "^ozArray.cpp:12: index in range\n$");
}

TEST(Fault, ARequirementThatHoldsDoesNothing) {
  int asked = 1;
  OZ_REQUIRE(asked == 1, "one");
  EXPECT_EQ(asked, 1);
}

#ifdef OZ_HARDENED
TEST(Fault, ARequirementThatFailsIsAFaultInHardenedBuilds) {
  EXPECT_EXIT(OZ_REQUIRE(1 > 2, "order"), ::testing::KilledBySignal(SIGABRT), "FaultTest.cpp:[0-9]+: order\n$");
}
#else
TEST(Fault, ARequirementIsNotEvenEvaluatedInOrdinaryBuilds) {
  int asked = 0;
  OZ_REQUIRE(++asked > 5, "never");
  EXPECT_EQ(asked, 0);
}
#endif
