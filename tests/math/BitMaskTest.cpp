#include "oz/ozBitMask.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>

namespace {

ozBitMask mask(long long bits) {
  ozBitMask m;
  m.setMask(bits);
  return m;
}

long long const A = 0x00000000FFFF00F0, B = 0x0000FF000F0F0F0F;

TEST(BitMask, IsOneIntegerStoredLowWordFirst) {
  ozBitMask m = mask(0x1122334455667788);
  EXPECT_EQ(sizeof m, 8u);
  unsigned words[2];
  std::memcpy(words, &m, 8);
  EXPECT_EQ(words[0], 0x55667788u);
  EXPECT_EQ(words[1], 0x11223344u);
}

TEST(BitMask, StartsEmpty) { EXPECT_EQ(ozBitMask().getMask(), 0); }

TEST(BitMask, IsAllOnOrAllOffByANumber) {
  EXPECT_EQ(ozBitMask(7).getMask(), -1);
  EXPECT_EQ(ozBitMask(0).getMask(), 0);
  ozBitMask m;
  m.set(-3);
  EXPECT_EQ(m.getMask(), -1);
  m.set(0);
  EXPECT_EQ(m.getMask(), 0);
}

TEST(BitMask, OnAndOffSwitchAllBits) {
  ozBitMask m;
  m.on();
  EXPECT_EQ(m.getMask(), -1);
  m.off();
  EXPECT_EQ(m.getMask(), 0);
}

TEST(BitMask, OneBitIsSwitchedOnAndOff) {
  for (int bit : {0, 31, 32, 63}) {
    ozBitMask m;
    m.onBit(bit);
    EXPECT_EQ(static_cast<unsigned long long>(m.getMask()), 1ull << bit);
    EXPECT_TRUE(m.getBit(bit));
    m.on();
    m.offBit(bit);
    EXPECT_EQ(static_cast<unsigned long long>(m.getMask()), ~(1ull << bit));
    EXPECT_FALSE(m.getBit(bit));
    m.on();
    m.andNotBit(bit);
    EXPECT_EQ(static_cast<unsigned long long>(m.getMask()), ~(1ull << bit));
  }
}

TEST(BitMask, BitNumbersOutOfRangeChangeNothingAndAreOff) {
  for (int bit : {64, 65, 96, INT_MAX, -1, -64, INT_MIN}) {
    ozBitMask m = mask(A);
    m.onBit(bit);
    m.offBit(bit);
    m.andNotBit(bit);
    EXPECT_EQ(m.getMask(), A) << bit;
    m.on();
    EXPECT_FALSE(m.getBit(bit)) << bit;
  }
}

TEST(BitMask, CombinesWithAnother) {
  ozBitMask m, b = mask(B);
  m.set(b);
  EXPECT_EQ(m.getMask(), B);
  m = mask(A), m.andEqual(b);
  EXPECT_EQ(m.getMask(), A & B);
  m = mask(A), m.andNotEqual(b);
  EXPECT_EQ(m.getMask(), A & ~B);
  m = mask(A), m.orEqual(b);
  EXPECT_EQ(m.getMask(), A | B);
  m = mask(A), m.orNotEqual(b);
  EXPECT_EQ(m.getMask(), A | ~B);
  m = mask(A), m.xorEqual(b);
  EXPECT_EQ(m.getMask(), A ^ B);
}

TEST(BitMask, NotEqualAssignsTheComplement) {
  ozBitMask m = mask(A);
  m.notEqual(mask(B));
  EXPECT_EQ(m.getMask(), ~B);
  m.notEqual(m);
  EXPECT_EQ(m.getMask(), B);
}

TEST(BitMask, NotZeroTellsWhetherAnyBitIsOn) {
  EXPECT_FALSE(ozBitMask().notZero());
  EXPECT_TRUE(mask(1).notZero());
  EXPECT_TRUE(mask(1ll << 40).notZero());
}

TEST(BitMask, IsEqualIfBothWordsAre) {
  EXPECT_TRUE(mask(A) == mask(A));
  EXPECT_FALSE(mask(A) == mask(A ^ 1));
  EXPECT_FALSE(mask(A) == mask(A ^ (1ll << 50)));
  EXPECT_TRUE(mask(A) != mask(B));
}

} // namespace
