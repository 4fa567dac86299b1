#include <gtest/gtest.h>

#include <malloc.h>

#include "oz/vlDB.h"
#include "readText.h"

namespace {

std::string const Header = "#VRML V2.0 utf8\n";
std::string const Note = "vl error in vlDB::readNodeInstance(): Reading Inline ";

size_t countOf(std::string const &text, std::string const &part) {
  size_t count = 0;
  for (size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += part.size()) ++count;
  return count;
}

TEST(Inline, TheFileBecomesTheChosenChild) {
  TextFile const inner(Header + "Group { } Transform { }", "inner.wrl");
  Reading const r("Inline { url \"inner.wrl\" }");
  EXPECT_EQ(Note + "inner.wrl\n", r.messages);
  ASSERT_EQ(1, r.count());
  ozInline *const node = r.child<ozInline>(0);
  ASSERT_EQ(ozInline::getClassType(), node->getType());
  ASSERT_EQ(1, node->getChildCount());
  EXPECT_EQ(0, node->getWhichChild());
  ozGroup *const sub = static_cast<ozGroup *>(node->getChild(0));
  ASSERT_EQ(2, sub->getChildCount());
  EXPECT_EQ(ozTransform::getClassType(), sub->getChild(1)->getType());
}

TEST(Inline, AMissingFileLeavesItEmptyWithTheNoteAlone) {
  Reading const r("Inline { url \"there/is/no/such.wrl\" }");
  EXPECT_EQ(Note + "there/is/no/such.wrl\n", r.messages);
  EXPECT_TRUE(r.ok);
  EXPECT_EQ(0, r.child<ozInline>(0)->getChildCount());
  EXPECT_EQ(ozSwitch::NO_CHILD, r.child<ozInline>(0)->getWhichChild());
}

TEST(Inline, TheNoteIsSafeForItsName) {
  EXPECT_EQ(Note + "%s%n.wrl\n", Reading("Inline { url \"%s%n.wrl\" }").messages);
}

TEST(Inline, ABrokenFileIsAChildAllTheSame) {
  TextFile const inner(Header + "Group { } Nonsense { }", "inner.wrl");
  Reading const r("Inline { url \"inner.wrl\" }");
  EXPECT_TRUE(r.ok);
  EXPECT_EQ(1, r.child<ozInline>(0)->getChildCount());
}

TEST(Inline, OfSeveralUrlsTheFirstCounts) {
  EXPECT_EQ(Note + "one.wrl\n", Reading("Inline { url [ \"one.wrl\" \"two.wrl\" ] }").messages);
}

TEST(Inline, WithoutAUrlTheLastFirstStringOfAnyFieldIsTaken) {
  Reading const r("Appearance { texture ImageTexture { url [ \"one.wrl\" \"two.wrl\" ] } } Inline { }");
  EXPECT_NE(std::string::npos, r.messages.find(Note + "one.wrl\n"));
  EXPECT_EQ(Note + "two.wrl\n" + Note + "two.wrl\n", Reading("Inline { url \"two.wrl\" } Inline { }").messages);
}

TEST(Inline, NamesDoNotCrossFiles) {
  TextFile const inner(Header + "USE outside DEF inside Group { }", "inner.wrl");
  Reading const r("DEF outside Group { } Inline { url \"inner.wrl\" } USE inside");
  EXPECT_EQ(
      Note + "inner.wrl\nvl read error: Unknown reference \"outside\"\nvl read error: Unknown reference \"inside\"\n",
      r.said());
}

TEST(Inline, ReadingGoesOnBehindItWithTheOuterFilesState) {
  TextFile const inner(Header + "\n\n\nShape { appearance Appearance { texture ImageTexture { url \"x.png\" } } }",
                       "inner.wrl");
  Reading const r("DEF a Group { }\nInline { url \"inner.wrl\" }\nUSE a Nonsense { }\nInline { }");
  ASSERT_EQ(4, r.count());
  EXPECT_EQ(r.child(0), r.child(2));
  EXPECT_NE(std::string::npos, r.messages.find("Unknown class \"Nonsense\"\n\tOccurred at line   4\n"));
  EXPECT_EQ(2u, countOf(r.messages, Note + "inner.wrl\n"));
}

TEST(Inline, AFileThatHoldsItselfEndsAtSixteenLevels) {
  TextFile const self(Header + "Inline { url \"self.wrl\" }", "self.wrl");
  Reading const r("Inline { url \"self.wrl\" }");
  EXPECT_EQ(1u, countOf(r.messages, "vl read error: Inlines are nested too deeply (16)\n"));
  int levels = 0;
  ozNode *node = r.child(0);
  while (node && node->getType() == ozInline::getClassType()) {
    ozInline *const outer = static_cast<ozInline *>(node);
    if (!outer->getChildCount()) break;
    ++levels;
    node = static_cast<ozGroup *>(outer->getChild(0))->getChild(0);
  }
  EXPECT_EQ(16, levels);
}

TEST(Inline, OneReadMakesAtMostAThousand) {
  TextFile const inner(Header, "inner.wrl");
  std::string text;
  for (int i = 0; i < 1002; ++i) text += "Inline { url \"inner.wrl\" }\n";
  Reading const r(text);
  EXPECT_EQ(2u, countOf(r.messages, "vl read error: Too many Inlines (1000)\n"));
  EXPECT_EQ(1, r.child<ozInline>(999)->getChildCount());
  EXPECT_EQ(0, r.child<ozInline>(1000)->getChildCount());
  Reading const next("Inline { url \"inner.wrl\" }"); // the count is that of one read
  EXPECT_EQ(1, next.child<ozInline>(0)->getChildCount());
}

TEST(Inline, ThousandsByDoublingEndToo) {
  TextFile const twice(Header + "Inline { url \"twice.wrl\" } Inline { url \"twice.wrl\" }", "twice.wrl");
  Reading const r("Inline { url \"twice.wrl\" }");
  EXPECT_EQ(1000u, countOf(r.messages, Note) - countOf(r.messages, "too deeply") - countOf(r.messages, "Too many"));
}

// Bytes in use; 0 where a sanitizer keeps the memory, which then finds what is lost by itself.
size_t bytesInUse() {
  struct mallinfo2 const info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

TEST(Inline, ItsUrlsGoWithIt) {
  std::string const text = "Inline { url [ \"x.wrl\" \"" + std::string(4 << 20, 'u') + "\" ] }";
  Reading const warm(text);
  size_t const before = bytesInUse();
  for (int i = 0; i < 4; ++i) Reading const r(text);
  EXPECT_LT(bytesInUse(), before + (4 << 20));
}

TEST(Inline, NestingCountsThroughFiles) {
  std::string deep;
  for (int i = 0; i < 600; ++i) deep += "Group { children ";
  std::string const end(600, '}');
  TextFile const inner(Header + deep + "Group { }" + end, "inner.wrl");
  Reading const r(deep + "Inline { url \"inner.wrl\" }" + end);
  EXPECT_NE(std::string::npos, r.messages.find("Nodes are nested too deeply (1000)"));
  ozBoxBound box;
  r.root->getBoxBound(box);
}

TEST(Inline, UseOfANodeThatHoldsOneCountsItsContents) {
  std::string deep;
  for (int i = 0; i < 600; ++i) deep += "Group { children ";
  std::string const end(600, '}');
  TextFile const inner(Header + deep + "Group { }" + end, "inner.wrl");
  Reading const r("DEF a Inline { url \"inner.wrl\" }" + deep + "USE a" + end);
  EXPECT_NE(std::string::npos, r.messages.find("Nodes are nested too deeply (1000)"));
}

} // namespace
