#include "oz/ozString.h"
#include "oz/ozStringDict.h"

#include <gtest/gtest.h>

#include <string>

namespace {

int Values[8];

TEST(StringDict, FindsWhatWasEntered) {
  ozStringDict dict(251);
  void *value = nullptr;
  EXPECT_TRUE(dict.enter("Box", &Values[0]));
  EXPECT_TRUE(dict.find("Box", value));
  EXPECT_EQ(&Values[0], value);
}

TEST(StringDict, AnAbsentKeyGivesFalseAndNull) {
  ozStringDict dict(251);
  void *value = &Values[0];
  EXPECT_FALSE(dict.find("Box", value));
  EXPECT_EQ(nullptr, value);
}

TEST(StringDict, EnteringAPresentKeyIsFalseAndReplacesTheValue) {
  ozStringDict dict(251);
  void *value;
  EXPECT_TRUE(dict.enter("ozVec3f", &Values[0]));
  EXPECT_FALSE(dict.enter("ozVec3f", &Values[1]));
  EXPECT_EQ(1u, dict.getSize());
  EXPECT_TRUE(dict.find("ozVec3f", value));
  EXPECT_EQ(&Values[1], value);
}

TEST(StringDict, SizeCountsTheKeys) {
  ozStringDict dict(251);
  EXPECT_EQ(0u, dict.getSize());
  dict.enter("a", nullptr);
  dict.enter("b", nullptr);
  EXPECT_EQ(2u, dict.getSize());
  dict.remove("a");
  EXPECT_EQ(1u, dict.getSize());
  dict.remove("a");
  EXPECT_EQ(1u, dict.getSize());
  dict.clear();
  EXPECT_EQ(0u, dict.getSize());
}

TEST(StringDict, KeepsACopyOfTheKey) {
  ozStringDict dict(251);
  void *value;
  char key[] = "key";
  dict.enter(key, &Values[0]);
  key[0] = 'h';
  EXPECT_TRUE(dict.find("key", value));
  EXPECT_FALSE(dict.find("hey", value));
}

TEST(StringDict, RemoveTellsWhetherTheKeyWasThere) {
  ozStringDict dict(251);
  void *value;
  dict.enter("a", &Values[0]);
  EXPECT_FALSE(dict.remove("b"));
  EXPECT_TRUE(dict.remove("a"));
  EXPECT_FALSE(dict.remove("a"));
  EXPECT_FALSE(dict.find("a", value));
}

TEST(StringDict, ANullKeyCountsAsTheEmptyText) {
  ozStringDict dict(251);
  void *value;
  EXPECT_TRUE(dict.enter(nullptr, &Values[0]));
  EXPECT_FALSE(dict.enter("", &Values[1]));
  EXPECT_TRUE(dict.find(nullptr, value));
  EXPECT_EQ(&Values[1], value);
  EXPECT_TRUE(dict.remove(nullptr));
}

TEST(StringDict, GetWalksTheBucketsInOrderAndEachChainFromItsHead) {
  // One-character keys hash to their codes: with 4 buckets "d" (100) is in 0, "a" and "e" (97, 101) in 1, "b" in 2.
  ozStringDict dict(4);
  dict.enter("b", &Values[0]);
  dict.enter("e", &Values[1]);
  dict.enter("a", &Values[2]);
  dict.enter("d", &Values[3]);
  int *const expected[] = {&Values[3], &Values[1], &Values[2], &Values[0]};
  for (unsigned int i = 0; i < 4; ++i) {
    void *value = nullptr;
    EXPECT_TRUE(dict.get(i, value)) << i;
    EXPECT_EQ(expected[i], value) << i;
  }
}

TEST(StringDict, GetPastTheEndIsFalseAndNull) {
  ozStringDict dict(4);
  void *value = &Values[0];
  EXPECT_FALSE(dict.get(0, value));
  EXPECT_EQ(nullptr, value);
  dict.enter("a", &Values[0]);
  value = &Values[0];
  EXPECT_FALSE(dict.get(1, value));
  EXPECT_EQ(nullptr, value);
  EXPECT_FALSE(dict.get(~0u, value));
}

TEST(StringDict, KeysOfOneHashStayApart) { // see the hash: the sixth character overlaps the first by one bit
  char const *a = "bmmmma", *b = "`mmmm`";
  ASSERT_EQ(ozString::hash(a), ozString::hash(b));
  ozStringDict dict(251);
  void *value;
  EXPECT_TRUE(dict.enter(a, &Values[0]));
  EXPECT_TRUE(dict.enter(b, &Values[1]));
  dict.find(a, value);
  EXPECT_EQ(&Values[0], value);
  dict.find(b, value);
  EXPECT_EQ(&Values[1], value);
}

TEST(StringDict, FindEntryGivesTheLinkThatPointsOrWouldPointAtTheEntry) {
  ozStringDict dict(4);
  dict.enter("a", &Values[0]);
  dict.enter("e", &Values[1]);
  ozStringDictEntry *first = *dict.findEntry("a");
  ASSERT_NE(nullptr, first);
  EXPECT_STREQ("a", first->key);
  EXPECT_EQ(&first->next, dict.findEntry("e"));
  EXPECT_EQ(&(*dict.findEntry("e"))->next, dict.findEntry("i"));
  EXPECT_EQ(nullptr, *dict.findEntry("i"));
}

TEST(StringDict, ManyKeysInFewBucketsAreAllFound) {
  ozStringDict dict(2);
  void *value;
  for (int i = 0; i < 500; ++i) EXPECT_TRUE(dict.enter(std::to_string(i).c_str(), Values + i % 8));
  EXPECT_EQ(500u, dict.getSize());
  for (int i = 0; i < 500; i += 2) EXPECT_TRUE(dict.remove(std::to_string(i).c_str()));
  for (int i = 0; i < 500; ++i) {
    EXPECT_EQ(i % 2, dict.find(std::to_string(i).c_str(), value)) << i;
    EXPECT_EQ(i % 2 ? Values + i % 8 : nullptr, value) << i;
  }
}

TEST(StringDict, NewEntriesGoOnTheEndOfTheChain) {
  ozStringDict dict(1);
  char const *const keys[] = {"c", "a", "b"};
  for (char const *key : keys) dict.enter(key, nullptr);
  ozStringDictEntry *entry = *dict.findEntry("c");
  for (char const *key : keys) {
    ASSERT_NE(nullptr, entry);
    EXPECT_STREQ(key, entry->key);
    entry = entry->next;
  }
  EXPECT_EQ(nullptr, entry);
}

TEST(StringDict, ClearTakesAllKeysOut) {
  ozStringDict dict(2);
  void *value;
  dict.enter("a", &Values[0]);
  dict.enter("b", &Values[1]);
  dict.clear();
  EXPECT_FALSE(dict.find("a", value));
  EXPECT_FALSE(dict.get(0, value));
  EXPECT_TRUE(dict.enter("a", &Values[2]));
}

TEST(StringDict, NoBucketsCountAsOne) {
  ozStringDict dict(0);
  void *value;
  EXPECT_TRUE(dict.enter("a", &Values[0]));
  EXPECT_TRUE(dict.find("a", value));
}

TEST(StringDictEntry, StartsAloneWithItsPair) {
  char key[] = "key";
  ozStringDictEntry entry(key, &Values[2]);
  EXPECT_STREQ("key", entry.key);
  EXPECT_NE(key, entry.key);
  EXPECT_EQ(&Values[2], entry.value);
  EXPECT_EQ(nullptr, entry.next);
}

TEST(StringDictEntry, ANullKeyCountsAsTheEmptyText) {
  ozStringDictEntry entry(nullptr, &Values[2]);
  EXPECT_STREQ("", entry.key);
}

} // namespace
