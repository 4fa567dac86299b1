#include "oz/ozAtomic.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace {

TEST(Atomic, IncrementAddsOne) {
  unsigned int value = 41;
  EXPECT_EQ(1, ozAtomic::increment(value));
  EXPECT_EQ(42u, value);
}

TEST(Atomic, DecrementTakesOneAway) {
  unsigned int value = 42;
  EXPECT_EQ(1, ozAtomic::decrement(value));
  EXPECT_EQ(41u, value);
}

TEST(Atomic, DecrementTo0Gives0) {
  unsigned int value = 1;
  EXPECT_EQ(0, ozAtomic::decrement(value));
  EXPECT_EQ(0u, value);
}

TEST(Atomic, IncrementTo0Gives0) {
  unsigned int value = ~0u;
  EXPECT_EQ(0, ozAtomic::increment(value));
  EXPECT_EQ(0u, value);
}

TEST(Atomic, DecrementOf0WrapsAndGives1) {
  unsigned int value = 0;
  EXPECT_EQ(1, ozAtomic::decrement(value));
  EXPECT_EQ(~0u, value);
}

TEST(Atomic, ThreadsLoseNoCount) {
  unsigned int value = 1;
  int zeros[4] = {0, 0, 0, 0};
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t)
    threads.emplace_back([&value, &zeros, t] {
      for (int i = 0; i < 20000; ++i) {
        ozAtomic::increment(value);
        zeros[t] += !ozAtomic::decrement(value);
      }
    });
  for (std::thread &thread : threads) thread.join();
  EXPECT_EQ(1u, value);
  for (int count : zeros) EXPECT_EQ(0, count) << "the count of 1 that stood at first was never given up";
}

TEST(Atomic, AssignmentGivesItself) {
  ozAtomic a, b;
  EXPECT_EQ(&a, &(a = b));
}

} // namespace
