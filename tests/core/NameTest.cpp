#include "oz/ozName.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

TEST(Name, EqualTextsHoldTheSameEntry) {
  char copy[] = "diffuseColor"; // not the literal's own address
  EXPECT_EQ(ozName("diffuseColor").getString(), ozName(copy).getString());
  EXPECT_EQ(ozNameEntry::insert("diffuseColor"), ozNameEntry::insert(copy));
  EXPECT_TRUE(ozName("diffuseColor") == ozName(copy));
  EXPECT_FALSE(ozName("diffuseColor") != ozName(copy));
}

TEST(Name, EachOfManyTextsKeepsItsEntry) {
  std::vector<char const *> texts;
  for (int i = 0; i < 40000; ++i) texts.push_back(ozName(("many" + std::to_string(i)).c_str()).getString());
  for (int i = 0; i < 40000; ++i) {
    std::string const text = "many" + std::to_string(i);
    ASSERT_EQ(texts[static_cast<size_t>(i)], ozName(text.c_str()).getString());
    ASSERT_EQ(text, texts[static_cast<size_t>(i)]);
  }
}

TEST(Name, DifferentTextsHoldDifferentEntries) {
  EXPECT_NE(ozNameEntry::insert("a"), ozNameEntry::insert("b"));
  EXPECT_FALSE(ozName("a") == ozName("b"));
  EXPECT_TRUE(ozName("a") != ozName("b"));
}

TEST(Name, AnEntryKeepsItsTextWhenTheGivenOneChanges) {
  char text[] = "before";
  ozName name(text);
  text[0] = 'X';
  EXPECT_STREQ("before", name.getString());
}

TEST(Name, IsAsSmallAsAPointer) { EXPECT_EQ(sizeof(void *), sizeof(ozName)); }

TEST(Name, TheDefaultNameIsTheEmptyText) {
  ozName name;
  EXPECT_STREQ("", name.getString());
  EXPECT_TRUE(!name);
  EXPECT_EQ(0u, name.getLength());
  EXPECT_TRUE(name == ozName(""));
}

TEST(Name, NullTextGivesTheEmptyName) {
  EXPECT_TRUE(ozName(static_cast<char const *>(nullptr)) == ozName());
  EXPECT_TRUE(ozName(ozString()) == ozName());
  EXPECT_EQ(ozNameEntry::insert(nullptr), ozNameEntry::insert(""));
}

TEST(Name, IsMadeFromAString) { EXPECT_EQ(ozName("points").getString(), ozName(ozString("points")).getString()); }

TEST(Name, CopiesShareTheEntry) {
  ozName name("x"), copy(name), assigned;
  assigned = name;
  EXPECT_EQ(name.getString(), copy.getString());
  EXPECT_EQ(name.getString(), assigned.getString());
}

TEST(Name, NotIsFalseForText) { EXPECT_FALSE(!ozName("a")); }

TEST(Name, LengthCountsTheCharacters) { EXPECT_EQ(5u, ozName("abcde").getLength()); }

TEST(Name, ComparesWithPlainText) {
  ozName name("abc");
  EXPECT_TRUE(name == "abc");
  EXPECT_TRUE("abc" == name);
  EXPECT_TRUE(name != "abd");
  EXPECT_TRUE("abd" != name);
  EXPECT_TRUE(ozName() == static_cast<char const *>(nullptr));
}

TEST(Name, ALongTextCanBeInterned) {
  std::string text(5000, 'q');
  ozName name(text.c_str());
  EXPECT_EQ(5000u, name.getLength());
  EXPECT_EQ(text, name.getString());
  EXPECT_EQ(name.getString(), ozName(text.c_str()).getString());
}

TEST(Name, TextsAroundTheSizeOfABlockStayWhole) {
  for (int length : {3997, 3998, 3999, 4000, 4001}) {
    std::string text(length, 'b'), next = "next" + std::to_string(length);
    ozName name(text.c_str()), other(next.c_str());
    EXPECT_EQ(text, name.getString()) << length;
    EXPECT_EQ(next, other.getString()) << length;
  }
}

TEST(Name, TextsBelow4000BytesShareBlocksInOrderAndLongerOnesHaveTheirOwn) {
  std::string whole(3998, 'w'), tooLong(3999, 't'); // 3999 and 4000 bytes with their end marks
  auto place = [](char const *text) { return ozName(text).getString(); };
  ozName fresh(whole.c_str()); // leaves one byte of its block: the next text begins another
  char const *first = place("block:1");
  EXPECT_EQ(first + 8, place("block:2"));
  ozName own(tooLong.c_str());
  EXPECT_EQ(first + 16, place("block:3")) << "the newest block still is the one of short texts";
  whole[0] = 'x';
  ozName next(whole.c_str());
  EXPECT_EQ(next.getString() + 3998, strchr(next.getString(), 0));
  EXPECT_NE(first + 24, place("block:4")) << "the newest block is a later one, though this one has room";
}

TEST(Name, ThousandsOfNamesKeepTheirTexts) { // many blocks, and several names in every bucket
  char const *seen[6000];
  for (int i = 0; i < 6000; ++i) seen[i] = ozName(("name number " + std::to_string(i)).c_str()).getString();
  for (int i = 0; i < 6000; ++i) {
    std::string text = "name number " + std::to_string(i);
    ASSERT_EQ(text, seen[i]);
    ASSERT_EQ(seen[i], ozName(text.c_str()).getString());
  }
}

TEST(Name, TextsOfOneHashStayApart) {
  // The shift comes back to 1 after five characters; the sixth and the first overlap by one bit.
  // 'b' ^ ('a' << 1) = 0x62 ^ 0xc2 = 0xa0 and '`' ^ ('`' << 1) = 0x60 ^ 0xc0 = 0xa0, with the same middle.
  char const *a = "bmmmma", *b = "`mmmm`";
  ASSERT_EQ(ozString::hash(a), ozString::hash(b));
  EXPECT_NE(ozNameEntry::insert(a), ozNameEntry::insert(b));
  EXPECT_STREQ(a, ozName(a).getString());
  EXPECT_STREQ(b, ozName(b).getString());
}

TEST(NameEntry, KnowsWhetherItIsEmpty) {
  EXPECT_TRUE(ozNameEntry::insert("")->isEmpty());
  EXPECT_FALSE(ozNameEntry::insert("e")->isEmpty());
}

TEST(NameEntry, KnowsWhetherATextIsItsOwn) {
  ozNameEntry const *entry = ozNameEntry::insert("entry");
  EXPECT_TRUE(entry->isEqual("entry"));
  EXPECT_FALSE(entry->isEqual("entr"));
  EXPECT_FALSE(entry->isEqual(nullptr));
  EXPECT_TRUE(ozNameEntry::insert("")->isEqual(nullptr));
}

TEST(NameEntry, HoldsTheFullHash) { EXPECT_EQ(97ul, ozNameEntry::insert("a")->getHash()); }

TEST(NameEntry, InitClassKeepsTheTableThatIsThere) {
  ozNameEntry const *entry = ozNameEntry::insert("kept");
  ozNameEntry::initClass();
  EXPECT_EQ(entry, ozNameEntry::insert("kept"));
}

} // namespace
