#include "oz/ozString.h"

#include <gtest/gtest.h>

#include <string>

namespace {

char const *const Null = nullptr;

TEST(String, IsNullWhenNeverSet) {
  ozString s;
  EXPECT_EQ(nullptr, s.getString());
  EXPECT_EQ(0, s.getLength());
  EXPECT_TRUE(!s);
}

TEST(String, IsNullFromANullText) {
  ozString s(Null);
  EXPECT_EQ(nullptr, s.getString());
  EXPECT_EQ(0, s.getLength());
}

TEST(String, IsNotNullFromTheEmptyText) {
  ozString s("");
  ASSERT_NE(nullptr, s.getString());
  EXPECT_STREQ("", s.getString());
  EXPECT_TRUE(!s);
  EXPECT_EQ(0, s.getLength());
}

TEST(String, KeepsACopyOfTheText) {
  char text[] = "text";
  ozString s(text);
  text[0] = 'n';
  EXPECT_STREQ("text", s.getString());
  EXPECT_EQ(4, s.getLength());
  EXPECT_FALSE(!s);
}

TEST(String, IsOnePointer) { EXPECT_EQ(sizeof(char *), sizeof(ozString)); }

TEST(String, CopiesHaveTheirOwnText) {
  ozString a("one"), b(a), c;
  c = a;
  a = "two";
  EXPECT_STREQ("one", b.getString());
  EXPECT_STREQ("one", c.getString());
  EXPECT_NE(b.getString(), c.getString());
}

TEST(String, CopiesOfANullStringAreNull) {
  ozString a, b(a), c("x");
  c = a;
  EXPECT_EQ(nullptr, b.getString());
  EXPECT_EQ(nullptr, c.getString());
}

TEST(String, CopiesOfAnEmptyTextAreNotNull) {
  ozString a(""), b(a), c;
  c = a;
  EXPECT_NE(nullptr, b.getString());
  EXPECT_NE(nullptr, c.getString());
}

TEST(String, AssignsText) {
  ozString s("old");
  s = "new text";
  EXPECT_STREQ("new text", s.getString());
}

TEST(String, AssigningNullMakesItNull) {
  ozString s("old");
  s = Null;
  EXPECT_EQ(nullptr, s.getString());
}

TEST(String, IsAssignedToItselfThroughItsOwnText) {
  ozString s("itself");
  s = s.getString();
  EXPECT_STREQ("itself", s.getString());
  s = s.getString() + 2;
  EXPECT_STREQ("self", s.getString());
  ozString &same = s;
  s = same;
  EXPECT_STREQ("self", s.getString());
}

TEST(String, AddsTextAtTheEnd) {
  ozString s("ab");
  s += "cd";
  EXPECT_STREQ("abcd", s.getString());
  EXPECT_EQ(4, s.getLength());
}

TEST(String, AddingToANullStringSetsIt) {
  ozString s;
  s += "x";
  EXPECT_STREQ("x", s.getString());
}

TEST(String, AddingTheEmptyTextToANullStringSetsItToThat) {
  ozString s;
  s += "";
  EXPECT_STREQ("", s.getString());
}

TEST(String, AddingNullDoesNothing) {
  ozString s("ab"), never;
  s += Null;
  never += Null;
  EXPECT_STREQ("ab", s.getString());
  EXPECT_EQ(nullptr, never.getString());
}

TEST(String, AddsItsOwnText) {
  ozString s("ab");
  s += s.getString();
  EXPECT_STREQ("abab", s.getString());
  s += s.getString() + 3;
  EXPECT_STREQ("ababb", s.getString());
}

TEST(String, MakeEmptyMakesItNull) {
  ozString s("text");
  s.makeEmpty();
  EXPECT_EQ(nullptr, s.getString());
  s.makeEmpty();
  EXPECT_EQ(nullptr, s.getString());
  s = "again";
  EXPECT_STREQ("again", s.getString());
}

TEST(String, ComparesByText) {
  EXPECT_TRUE(ozString("a") == ozString("a"));
  EXPECT_FALSE(ozString("a") == ozString("b"));
  EXPECT_TRUE(ozString("a") != ozString("b"));
  EXPECT_FALSE(ozString("a") != ozString("a"));
  EXPECT_TRUE(ozString("a") == "a");
  EXPECT_TRUE("a" == ozString("a"));
  EXPECT_TRUE(ozString("a") != "b");
  EXPECT_TRUE("b" != ozString("a"));
}

TEST(String, ComparesNullAndEmptyAlike) {
  EXPECT_TRUE(ozString() == ozString(""));
  EXPECT_TRUE(ozString("") == ozString());
  EXPECT_TRUE(ozString() == ozString());
  EXPECT_TRUE(ozString() == "");
  EXPECT_TRUE(ozString("") == Null);
  EXPECT_FALSE(ozString() != "");
  EXPECT_FALSE(ozString() == "a");
}

TEST(StringHash, OfNullOrEmptyIs0) {
  EXPECT_EQ(0u, ozString::hash(nullptr));
  EXPECT_EQ(0u, ozString::hash(""));
  EXPECT_EQ(0u, ozString().hash());
}

TEST(StringHash, ShiftsEachCharacterByFiveMore) {
  EXPECT_EQ(0x61u, ozString::hash("a"));
  EXPECT_EQ(0x61u ^ (0x62u << 5), ozString::hash("ab"));
  EXPECT_EQ(0x61u ^ (0x62u << 5) ^ (0x63u << 10) ^ (0x64u << 15) ^ (0x65u << 20), ozString::hash("abcde"));
}

TEST(StringHash, ShiftsWrapBehind24) { // 25 becomes 1
  EXPECT_EQ((0x61u ^ (0x62u << 5) ^ (0x63u << 10) ^ (0x64u << 15) ^ (0x65u << 20)) ^ (0x66u << 1),
            ozString::hash("abcdef"));
  // 0 5 10 15 20 1 6 11 16 21 2 7 12 17 22 3 8 13 18 23 4 9 14 19 24 5: the 25th character is shifted by 24.
  unsigned int expected = 0;
  for (unsigned int shift :
       {0, 5, 10, 15, 20, 1, 6, 11, 16, 21, 2, 7, 12, 17, 22, 3, 8, 13, 18, 23, 4, 9, 14, 19, 24, 5})
    expected ^= 0x7au << shift;
  EXPECT_EQ(expected, ozString::hash(std::string(26, 'z').c_str()));
}

TEST(StringHash, TakesCharactersAsSigned) {
  EXPECT_EQ(0xffffffe9u, ozString::hash("\xe9"));
  EXPECT_EQ(0x61u ^ 0xfffffd20u, ozString::hash("a\xe9"));
}

TEST(StringHash, OfAnObjectIsThatOfItsText) { EXPECT_EQ(ozString::hash("abc"), ozString("abc").hash()); }

} // namespace
