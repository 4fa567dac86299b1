#include "ozview/FrameMeter.h"
#include <gtest/gtest.h>

TEST(FrameMeter, CountsTheFramesOfASecondThatRunsOn) {
  FrameMeter meter;
  for (int i = 0; i < 40; i++) meter.count(i * 0.05, i * 0.05 + 0.01, i > 0); // a frame each 0.05 s
  EXPECT_NEAR(meter.rate(), 20, 0.5);
}

TEST(FrameMeter, LeavesOutPauses) {
  FrameMeter meter;
  for (int i = 0; i < 30; i++) meter.count(i * 10.0, i * 10.0 + 0.02, false); // one each ten seconds, 0.02 s long
  EXPECT_NEAR(meter.rate(), 50, 0.5);
}

TEST(FrameMeter, HasAnEstimateAfterTheFirstFrame) {
  FrameMeter meter;
  meter.count(5, 5.1, false);
  EXPECT_NEAR(meter.rate(), 10, 1e-6);
}
