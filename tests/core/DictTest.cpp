#include "oz/ozDict.h"

#include <gtest/gtest.h>

namespace {

int Values[8];

TEST(Dict, FindsWhatWasEntered) {
  ozDict dict(251);
  void *value = nullptr;
  EXPECT_TRUE(dict.enter(42, &Values[0]));
  EXPECT_TRUE(dict.find(42, value));
  EXPECT_EQ(&Values[0], value);
}

TEST(Dict, AnAbsentKeyGivesFalseAndNull) {
  ozDict dict(251);
  void *value = &Values[0];
  EXPECT_FALSE(dict.find(1, value));
  EXPECT_EQ(nullptr, value);
}

TEST(Dict, EnteringAPresentKeyIsFalseAndReplacesTheValue) {
  ozDict dict(251);
  void *value;
  EXPECT_TRUE(dict.enter(7, &Values[0]));
  EXPECT_FALSE(dict.enter(7, &Values[1]));
  EXPECT_TRUE(dict.find(7, value));
  EXPECT_EQ(&Values[1], value);
  EXPECT_TRUE(dict.remove(7));
  EXPECT_FALSE(dict.find(7, value));
}

TEST(Dict, KeysKeepAll64Bits) {
  ozDict dict(251);
  void *value;
  const unsigned long high = 0x100000000ul;
  EXPECT_TRUE(dict.enter(5, &Values[0]));
  EXPECT_TRUE(dict.enter(5 + high, &Values[1]));
  EXPECT_TRUE(dict.enter(~0ul, &Values[2]));
  EXPECT_TRUE(dict.find(5, value));
  EXPECT_EQ(&Values[0], value);
  EXPECT_TRUE(dict.find(5 + high, value));
  EXPECT_EQ(&Values[1], value);
  EXPECT_TRUE(dict.find(~0ul, value));
  EXPECT_EQ(&Values[2], value);
  EXPECT_FALSE(dict.find(0xfffffffful, value));
}

TEST(Dict, AddressesAreKeys) {
  ozDict dict(1021);
  void *value;
  for (int &v : Values) EXPECT_TRUE(dict.enter(reinterpret_cast<unsigned long>(&v), &v));
  for (int &v : Values) {
    EXPECT_TRUE(dict.find(reinterpret_cast<unsigned long>(&v), value));
    EXPECT_EQ(&v, value);
  }
}

TEST(Dict, AKeyOf0AndANullValueAreNothingSpecial) {
  ozDict dict(3);
  void *value = &Values[0];
  EXPECT_TRUE(dict.enter(0, nullptr));
  EXPECT_TRUE(dict.find(0, value));
  EXPECT_EQ(nullptr, value);
  EXPECT_FALSE(dict.enter(0, &Values[1]));
}

TEST(Dict, RemoveTellsWhetherTheKeyWasThere) {
  ozDict dict(251);
  dict.enter(1, &Values[0]);
  EXPECT_FALSE(dict.remove(2));
  EXPECT_TRUE(dict.remove(1));
  EXPECT_FALSE(dict.remove(1));
}

TEST(Dict, OneBucketHoldsManyKeys) {
  ozDict dict(1);
  void *value;
  for (unsigned long i = 0; i < 8; ++i) EXPECT_TRUE(dict.enter(i, &Values[i]));
  for (unsigned long i : {0, 4, 7}) EXPECT_TRUE(dict.remove(i)); // head, middle and tail of the chain
  for (unsigned long i = 0; i < 8; ++i) {
    bool kept = i != 0 && i != 4 && i != 7;
    EXPECT_EQ(kept, dict.find(i, value)) << i;
    EXPECT_EQ(kept ? &Values[i] : nullptr, value) << i;
  }
}

TEST(Dict, NewEntriesGoOnTheEndOfTheChain) {
  ozDict dict(4);
  dict.enter(1, &Values[0]);
  dict.enter(9, &Values[1]); // both in bucket 1
  ozDictEntry *first = *dict.findEntry(1);
  ASSERT_NE(nullptr, first);
  ASSERT_NE(nullptr, first->next);
  EXPECT_EQ(9ul, first->next->key);
  EXPECT_EQ(nullptr, first->next->next);
}

TEST(Dict, FindEntryGivesTheLinkThatPointsOrWouldPointAtTheEntry) {
  ozDict dict(4);
  dict.enter(1, &Values[0]);
  dict.enter(5, &Values[1]);
  EXPECT_EQ(&(*dict.findEntry(1))->next, dict.findEntry(5));
  EXPECT_EQ(&(*dict.findEntry(5))->next, dict.findEntry(9));
  EXPECT_EQ(nullptr, *dict.findEntry(9));
  EXPECT_EQ(&Values[1], (*dict.findEntry(5))->value);
}

TEST(Dict, HoldsManyMoreKeysThanItStartedWithBuckets) {
  ozDict dict(251);
  void *value;
  for (unsigned long i = 0; i < 100000; ++i) ASSERT_TRUE(dict.enter(i * 16, &Values[i % 8]));
  for (unsigned long i = 0; i < 100000; i += 3) ASSERT_TRUE(dict.remove(i * 16));
  for (unsigned long i = 0; i < 100000; ++i) {
    ASSERT_EQ(i % 3 != 0, dict.find(i * 16, value)) << i;
    ASSERT_EQ(i % 3 ? &Values[i % 8] : nullptr, value) << i;
    ASSERT_FALSE(dict.find(i * 16 + 8, value));
  }
  EXPECT_FALSE(dict.enter(16, nullptr));
  dict.clear();
  EXPECT_FALSE(dict.find(16, value));
  EXPECT_TRUE(dict.enter(16, &Values[1]));
}

TEST(Dict, ChainsStayShortHoweverManyKeysCome) {
  ozDict dict(1);
  for (unsigned long i = 0; i < 10000; ++i) dict.enter(i, nullptr);
  long hops = 0;
  for (unsigned long i = 0; i < 10000; ++i)
    for (ozDictEntry *entry = *dict.findEntry(i); entry; entry = entry->next) ++hops;
  EXPECT_LE(hops, 8 * 10000);
}

TEST(Dict, ClearTakesAllKeysOut) {
  ozDict dict(2);
  void *value;
  for (unsigned long i = 0; i < 8; ++i) dict.enter(i, &Values[i]);
  dict.clear();
  for (unsigned long i = 0; i < 8; ++i) EXPECT_FALSE(dict.find(i, value));
  EXPECT_TRUE(dict.enter(3, &Values[3]));
}

TEST(Dict, NoBucketsCountAsOne) {
  ozDict dict(0);
  void *value;
  EXPECT_TRUE(dict.enter(10, &Values[0]));
  EXPECT_TRUE(dict.find(10, value));
}

TEST(DictEntry, StartsAloneWithItsPair) {
  ozDictEntry entry(0x123456789ul, &Values[2]);
  EXPECT_EQ(0x123456789ul, entry.key);
  EXPECT_EQ(&Values[2], entry.value);
  EXPECT_EQ(nullptr, entry.next);
}

} // namespace
