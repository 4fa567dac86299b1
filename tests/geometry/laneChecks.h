#ifndef TESTS_GEOMETRY_LANE_CHECKS_H
#define TESTS_GEOMETRY_LANE_CHECKS_H

#include "geometry/ozLane4.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <random>

// Each operation on four lanes gives in each lane what it gives on single floats, to the bit.

typedef std::mt19937 LaneDice;

inline float anyFloat(LaneDice &dice) {
  float const special[] = {0.0f,
                           -0.0f,
                           1.0f,
                           -1.0f,
                           std::numeric_limits<float>::infinity(),
                           -std::numeric_limits<float>::infinity(),
                           std::numeric_limits<float>::quiet_NaN(),
                           std::numeric_limits<float>::denorm_min(),
                           3e38f};
  if (dice() % 4 == 0) return special[dice() % 9];
  unsigned int const bits = static_cast<unsigned int>(dice());
  float value;
  memcpy(&value, &bits, sizeof value);
  return value == value ? value : 2.0f; // one kind of NaN is enough
}

inline bool sameFloat(float a, float b) { return (a != a && b != b) || !memcmp(&a, &b, sizeof a); }

inline void checkLanes() {
  LaneDice dice(1);
  for (int round = 0; round < 20000; ++round) {
    float a[4], b[4], c[4], result[4];
    for (float *lanes : {a, b, c})
      for (int i = 0; i < 4; ++i) lanes[i] = anyFloat(dice);
    ozLane4 const la = ozLane4::load(a), lb = ozLane4::load(b), lc = ozLane4::load(c);
    auto const expect = [&](char const *what, ozLane4 lanes, auto single) {
      lanes.store(result);
      for (int i = 0; i < 4; ++i)
        EXPECT_TRUE(sameFloat(result[i], single(i))) << what << " of " << a[i] << " and " << b[i] << ": " << result[i];
    };
    expect("sum", la + lb, [&](int i) { return a[i] + b[i]; });
    expect("difference", la - lb, [&](int i) { return a[i] - b[i]; });
    expect("product", la * lb, [&](int i) { return a[i] * b[i]; });
    expect("quotient", la / lb, [&](int i) { return a[i] / b[i]; });
    // As ozVec3f::length has it: the root in double.
    expect("root", root(la), [&](int i) { return static_cast<float>(std::sqrt(static_cast<double>(a[i]))); });
    expect("abs", abs(la), [&](int i) { return std::fabs(a[i]); });
    expect("fill", ozLane4::fill(a[0]), [&](int) { return a[0]; });
    expect("select", select(la < lb, lb, lc), [&](int i) { return a[i] < b[i] ? b[i] : c[i]; });
    expect("select", select(~(la <= lb), lb, lc), [&](int i) { return a[i] <= b[i] ? c[i] : b[i]; });

    int less = 0, notAbove = 0;
    for (int i = 0; i < 4; ++i) {
      less |= (a[i] < b[i]) << i;
      notAbove |= (a[i] <= b[i]) << i;
      if (a[i] != a[i]) a[i] = 3;
      if (b[i] != b[i]) b[i] = 4;
    }
    EXPECT_EQ((la < lb).bits(), less);
    EXPECT_EQ((la <= lb).bits(), notAbove);
    EXPECT_EQ(((la < lb) & (la <= lb)).bits(), less & notAbove);
    EXPECT_EQ(((la < lb) | (lb <= la)).bits() & ~less, (lb <= la).bits());
    EXPECT_EQ((~(la < lb)).bits(), ~less & 15);
    ozLane4 const na = ozLane4::load(a), nb = ozLane4::load(b);
    // Zeros count as equal, whatever their signs.
    auto const expectValue = [&](ozLane4 lanes, auto single) {
      lanes.store(result);
      for (int i = 0; i < 4; ++i) EXPECT_EQ(result[i], single(i));
    };
    expectValue(min(na, nb), [&](int i) { return a[i] < b[i] ? a[i] : b[i]; });
    expectValue(max(na, nb), [&](int i) { return a[i] < b[i] ? b[i] : a[i]; });
    if (::testing::Test::HasFailure()) return;
  }
  float const p[4][3] = {{0, 1, 2}, {10, 11, 12}, {20, 21, 22}, {30, 31, 32}};
  ozLane4 out[3];
  ozLane4::load3(p[0], p[1], p[2], p[3], out);
  for (int axis = 0; axis < 3; ++axis) {
    float lanes[4];
    out[axis].store(lanes);
    for (int i = 0; i < 4; ++i) EXPECT_EQ(lanes[i], static_cast<float>(10 * i + axis));
  }
}

#endif
