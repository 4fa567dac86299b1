#include <gtest/gtest.h>

#include <string>

#include <limits.h>
#include <locale.h>
#include <math.h>
#include <stdlib.h>

#include "oz/OzScene3D.h"
#include "oz/vlInput.h"
#include "support/capture.h"

namespace {

/// A lexer on a text, behind a good header line unless told otherwise.
class Text {
public:
  explicit Text(std::string const &text, std::string const &header = "#VRML V2.0 utf8\n") : _text(header + text) {
    _file = fmemopen(_text.empty() ? const_cast<char *>("\n") : &_text[0], _text.empty() ? 1 : _text.size(), "r");
    in.setFilePointer(_file);
  }
  ~Text() { fclose(_file); }
  vlInput *operator->() { return &in; }
  std::string rest() {
    std::string rest;
    char c;
    while (in.get(c)) rest += c;
    return rest;
  }
  vlInput in;

private:
  std::string _text;
  FILE *_file;
};

std::string nameFrom(vlInput &in, unsigned char ident = 1) {
  ozName name;
  return in.read(name, ident) ? name.getString() : "(failed)";
}

std::string stringFrom(vlInput &in) {
  ozString text;
  return in.read(text) ? text.getString() : "(failed)";
}

TEST(Input, AHeaderMayHoldMoreThanTheVersion) {
  EXPECT_EQ(2.0f, vlInput::isASCIIHeader("#VRML V2.0 utf8 extra text"));
  EXPECT_EQ(2.0f, vlInput::isASCIIHeader("##VRML V2.0 utf8"));
  EXPECT_EQ(0.0f, vlInput::isASCIIHeader("#VRML V1.0 ascii"));
  Text text("word", "##VRML V2.0 utf8 and more\n");
  EXPECT_EQ("word", nameFrom(text.in));
  EXPECT_TRUE(text->isHeaderOk());
  EXPECT_EQ(2.0f, text->getVersion());
}

TEST(Input, AHeaderMayEndInCarriageReturnAndLineFeed) {
  Text text("word", "#VRML V2.0 utf8\r\n");
  EXPECT_EQ("word", nameFrom(text.in));
  EXPECT_TRUE(text->isHeaderOk());
}

TEST(Input, WhatStandsBehindACarriageReturnDoesNotCountForTheHeader) {
  CaptureStderr err;
  Text text("word", "#x\r#VRML V2.0 utf8\n");
  EXPECT_EQ(0.0f, text->getVersion());
}

TEST(Input, ABadHeaderIsReportedOnceAndTheStreamGoesOn) {
  CaptureStderr err;
  Text text("word", "#VRML V1.0 ascii\n");
  EXPECT_FALSE(text->skipWhiteSpace());
  EXPECT_EQ("vl read error: File does not have a valid header string\n\tOccurred at line   2\n", err.text());
  EXPECT_FALSE(text->isHeaderOk());
  EXPECT_TRUE(text->skipWhiteSpace());
  EXPECT_EQ("word", nameFrom(text.in));
  EXPECT_EQ(0.0f, text->getVersion());
}

TEST(Input, AFirstLineWithoutAHashIsNoHeaderAndIsNotConsumed) {
  Text text("word", "");
  EXPECT_FALSE(text->skipWhiteSpace());
  EXPECT_TRUE(text->isHeaderOk());
  EXPECT_EQ("word", nameFrom(text.in));
}

TEST(Input, AFirstLineLongerThanTheBufferIsABadHeader) {
  CaptureStderr err;
  Text text("word", "#VRML V2.0 utf8 " + std::string(300, 'x') + "\n");
  EXPECT_FALSE(text->skipWhiteSpace());
  EXPECT_NE(std::string::npos, err.text().find("File does not have a valid header string"));
  EXPECT_EQ("word", nameFrom(text.in));
}

TEST(Input, SettingAnotherStreamStartsAfresh) {
  CaptureStderr err;
  Text bad("\n\nx", "#VRML V1.0 ascii\n"), good("y");
  bad->skipWhiteSpace();
  bad->putBack("pending");
  bad->setFilePointer(good->getCurFile());
  EXPECT_TRUE(bad->isHeaderOk());
  EXPECT_EQ(1, bad->getLineNumber());
  EXPECT_EQ("y", nameFrom(bad.in));
}

TEST(Input, CharactersAreClassed) {
  for (char c : std::string("aZ09_-%*")) EXPECT_TRUE(vlInput::isIdentChar(c)) << c;
  for (char c : std::string(" .{}[]\"#+,\xe9")) EXPECT_FALSE(vlInput::isIdentChar(c)) << c;
  EXPECT_FALSE(vlInput::isIdentStartChar('7'));
  EXPECT_TRUE(vlInput::isIdentStartChar('-'));
  for (char c : std::string("a0.:/[]_,\xe9")) EXPECT_TRUE(vlInput::isNodeNameChar(c)) << c;
  for (char c : std::string("+'\"\\{} \t\x01")) EXPECT_FALSE(vlInput::isNodeNameChar(c)) << c;
  EXPECT_TRUE(vlInput::isNodeNameStartChar('_'));
  EXPECT_FALSE(vlInput::isNodeNameStartChar('7'));
  EXPECT_FALSE(vlInput::isNodeNameStartChar('.'));
}

TEST(Input, TheEndGives255AndIsIgnoredWhenPutBack) {
  Text text("");
  char c = 'x';
  EXPECT_FALSE(text->get(c));
  EXPECT_EQ(static_cast<char>(255), c);
  text->putBack(c);
  EXPECT_FALSE(text->get(c));
  EXPECT_TRUE(text->eof());
}

TEST(Input, ATokenPutBackIsReadAgainJoinedToTheStream) {
  Text text("tail rest");
  text->skipWhiteSpace();
  text->putBack("head");
  EXPECT_EQ("headtail", nameFrom(text.in));
}

TEST(Input, ATokenPutBackReplacesThePendingOne) {
  Text text(" rest");
  char c;
  text->skipWhiteSpace();
  text->putBack("first");
  text->get(c);
  text->putBack("second");
  EXPECT_EQ("secondrest", nameFrom(text.in));
}

TEST(Input, ACharacterPutBackStepsBackInAPendingToken) {
  Text text("x");
  char c;
  text->skipWhiteSpace();
  text->putBack("ab");
  text->get(c);
  text->putBack(c);
  EXPECT_EQ("abx", text.rest());
}

TEST(Input, CommentsAndWhiteSpaceAreSkippedAndLinesCounted) {
  Text text("# one\n\n \t # two\nword");
  EXPECT_EQ("word", nameFrom(text.in));
  EXPECT_EQ(5, text->getLineNumber());
  ozString where;
  text->getLocationString(where);
  EXPECT_STREQ("\tOccurred at line   5", where.getString());
}

TEST(Input, CommasAreNoWhiteSpace) {
  Text text(" ,");
  char c;
  EXPECT_TRUE(text->read(c));
  EXPECT_EQ(',', c);
}

TEST(Input, ACommentCutByTheEndIsReported) {
  CaptureStderr err;
  Text text("# no line end");
  EXPECT_TRUE(text->skipWhiteSpace());
  EXPECT_EQ("vl read error: EOF reached before end of comment\n\tOccurred at line   2\n", err.text());
}

TEST(Input, IntegersAreDecimalOctalAndHexadecimal) {
  Text text("12 -34 +5 010 0x1F -0x10 0");
  int const expected[] = {12, -34, 5, 8, 31, -16, 0};
  for (int value : expected) {
    int i = -1;
    EXPECT_TRUE(text->read(i));
    EXPECT_EQ(value, i);
  }
}

TEST(Input, AnUpperCaseXIsNoHexadecimalMark) {
  Text text("0X10");
  int i = -1;
  EXPECT_TRUE(text->read(i));
  EXPECT_EQ(0, i);
  EXPECT_EQ("X10", text.rest());
}

TEST(Input, HexadecimalWithoutDigitsFails) {
  Text text("0xg");
  int i;
  EXPECT_FALSE(text->read(i));
}

TEST(Input, EveryNumberTypeIsRead) {
  Text text("-7 7 -70000 8 9 10 1.5 2.5");
  short s;
  int i;
  long l;
  unsigned short us;
  unsigned int ui;
  unsigned long ul;
  float f;
  double d;
  EXPECT_TRUE(text->read(s) && s == -7);
  EXPECT_TRUE(text->read(i) && i == 7);
  EXPECT_TRUE(text->read(l) && l == -70000);
  EXPECT_TRUE(text->read(us) && us == 8);
  EXPECT_TRUE(text->read(ui) && ui == 9);
  EXPECT_TRUE(text->read(ul) && ul == 10);
  EXPECT_TRUE(text->read(f) && f == 1.5f);
  EXPECT_TRUE(text->read(d) && d == 2.5);
}

TEST(Input, AnUnsignedNumberHasNoSign) {
  Text text("-7");
  unsigned int i;
  EXPECT_FALSE(text->read(i));
}

TEST(Input, RealsTakePointAndExponent) {
  Text text("1 -2.5 +.5 3. 1e3 1.5E-2 010 -1e+2");
  float const expected[] = {1, -2.5f, 0.5f, 3, 1000, 0.015f, 10, -100};
  for (float value : expected) {
    float f = -1;
    EXPECT_TRUE(text->read(f));
    EXPECT_EQ(value, f);
  }
}

TEST(Input, APointASignOrAnOpenExponentIsNoReal) {
  for (char const *bad : {".", "-", "+", "1e", "1e+", "x", "-.e5"}) {
    Text text(bad);
    float f;
    EXPECT_FALSE(text->read(f)) << bad;
  }
}

TEST(Input, RealsAreTheNearestDoubles) {
  unsigned int seed = 1;
  auto const next = [&seed](unsigned int below) {
    seed = seed * 1664525u + 1013904223u;
    return (seed >> 8) % below;
  };
  for (int i = 0; i < 5000; ++i) {
    std::string number = next(3) ? "" : next(2) ? "-" : "+";
    for (unsigned int n = next(12) + 1; n > 0; --n) number += static_cast<char>('0' + next(10));
    if (next(4)) {
      number += '.';
      for (unsigned int n = next(12); n > 0; --n) number += static_cast<char>('0' + next(10));
    }
    if (!next(4)) number += "e" + std::to_string(static_cast<int>(next(80)) - 40);
    Text text(number);
    double d = 0;
    ASSERT_TRUE(text->read(d)) << number;
    EXPECT_EQ(strtod(number.c_str(), nullptr), d) << number;
  }
  Text text("-0 1e999 -1e999 1e-999");
  double zero, large, small, none;
  EXPECT_TRUE(text->read(zero) && text->read(large) && text->read(small) && text->read(none));
  EXPECT_TRUE(signbit(zero));
  EXPECT_EQ(HUGE_VAL, large);
  EXPECT_EQ(-HUGE_VAL, small);
  EXPECT_EQ(0.0, none);
}

TEST(Input, IntegersOutOfRangeAreTheNearest) {
  Text text("99999999999999999999 -99999999999999999999 99999999999999999999 089");
  long l = 0, least = 0;
  unsigned long ul = 0;
  int i = -1;
  EXPECT_TRUE(text->read(l) && text->read(least) && text->read(ul) && text->read(i));
  EXPECT_EQ(LONG_MAX, l);
  EXPECT_EQ(LONG_MIN, least);
  EXPECT_EQ(ULONG_MAX, ul);
  EXPECT_EQ(0, i); // octal: the digits end ahead of the 8
}

TEST(Input, ThePointOfANumberIsAPointInEveryLanguage) {
  std::string const usual = setlocale(LC_NUMERIC, nullptr);
  char const *set = nullptr;
  for (char const *name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "de_DE"})
    if (!set) set = setlocale(LC_NUMERIC, name);
  if (!set) GTEST_SKIP() << "no locale with a decimal comma here";
  Text text("1.5 0.12345678901234567890");
  double d = 0, e = 0;
  bool const read = text->read(d) && text->read(e);
  setlocale(LC_NUMERIC, usual.c_str());
  EXPECT_TRUE(read);
  EXPECT_EQ(1.5, d);
  EXPECT_EQ(0.12345678901234567890, e);
}

TEST(Input, ANumberMayHaveAnyLength) {
  Text text(std::string(100000, '1') + " 0." + std::string(100000, '0') + "1 " + std::string(5000, '9'));
  double d;
  int i;
  EXPECT_TRUE(text->read(d));
  EXPECT_TRUE(text->read(d) && d == 0.0);
  EXPECT_TRUE(text->read(i));
}

TEST(Input, AnIdentifierEndsAtTheFirstOtherCharacter) {
  Text text("node.field{x");
  EXPECT_EQ("node", nameFrom(text.in));
  EXPECT_EQ(".field{x", text.rest());
}

TEST(Input, ANameThatStartsWrongIsEmptyAndConsumesNothing) {
  Text text("7up");
  EXPECT_EQ("", nameFrom(text.in));
  EXPECT_EQ("7up", text.rest());
}

TEST(Input, ANameKeeps255Characters) {
  Text text(std::string(300, 'n') + " next");
  EXPECT_EQ(std::string(255, 'n'), nameFrom(text.in));
  EXPECT_EQ("next", nameFrom(text.in));
}

TEST(Input, ANameAtTheEndIsReadAndBehindItIsNone) {
  Text text("last");
  EXPECT_EQ("last", nameFrom(text.in));
  EXPECT_EQ("(failed)", nameFrom(text.in));
}

TEST(Input, AnUnrestrictedNameIsAWholeToken) {
  Text text("Transform{ x");
  EXPECT_EQ("Transform{", nameFrom(text.in, 0));
}

TEST(Input, StringsAreQuotedOrEndAtWhiteSpace) {
  Text text(R"( plain "two words" "" "a \" b" "back\slash" "end\\" tail)");
  EXPECT_EQ("plain", stringFrom(text.in));
  EXPECT_EQ("two words", stringFrom(text.in));
  EXPECT_EQ("", stringFrom(text.in));
  EXPECT_EQ("a \" b", stringFrom(text.in));
  EXPECT_EQ("back\\slash", stringFrom(text.in));
  EXPECT_EQ("end\\\" tail", stringFrom(text.in)); // the second backslash is read normally, and hides the quote
  EXPECT_EQ("(failed)", stringFrom(text.in));
}

TEST(Input, AStringKeepsLineFeedsAndTheCountStaysRight) {
  Text text("\"a\nb\" x");
  EXPECT_EQ("a\nb", stringFrom(text.in));
  EXPECT_EQ(3, text->getLineNumber());
}

TEST(Input, AStringMayBeLong) {
  for (size_t length : {254u, 255u, 256u, 510u, 100000u}) {
    Text text("\"" + std::string(length, 's') + "\"");
    EXPECT_EQ(std::string(length, 's'), stringFrom(text.in));
  }
}

TEST(Input, TheEndOfTheFileEndsAString) {
  Text text("\"open");
  EXPECT_EQ("open", stringFrom(text.in));
}

TEST(Input, BooleansAreNumbersOrWords) {
  Text text("TRUE FALSE 1 0");
  for (int expected : {1, 0, 1, 0}) {
    unsigned char value = 9;
    EXPECT_TRUE(text->readBool(value));
    EXPECT_EQ(expected, value);
  }
}

TEST(Input, OtherBooleansAreReported) {
  CaptureStderr err;
  Text text("2 maybe");
  unsigned char value;
  EXPECT_FALSE(text->readBool(value));
  EXPECT_FALSE(text->readBool(value));
  EXPECT_EQ("vl read error: Illegal value for vlSFBool: 2 (must be 0 or 1)\n\tOccurred at line   2\n"
            "vl read error: Unknown value (\"(must be TRUE or FALSE)\") for vlSFBool \n\tOccurred at line   2\n",
            err.text());
}

TEST(Input, AnotherStreamFindsTheNamesOfTheFirst) {
  Text text("");
  ozGroup *const group = new ozGroup;
  text->addReference(ozName("n"), group);
  text->setFilePointer(text->getCurFile());
  EXPECT_EQ(group, text->findReference(ozName("n")));
  group->unref();
}

TEST(Input, AHeaderWithoutALineEndIsGood) {
  Text text("", "#VRML V2.0 utf8");
  EXPECT_TRUE(text->skipWhiteSpace());
  EXPECT_EQ(2.0f, text->getVersion());
  EXPECT_EQ(1, text->getLineNumber());
}

TEST(Input, ABadHeaderFailsTheFirstCharacterToo) {
  CaptureStderr err;
  Text text("x", "#VRML V1.0 ascii\n");
  char c = 'y';
  EXPECT_FALSE(text->get(c));
  EXPECT_EQ(static_cast<char>(255), c);
  EXPECT_TRUE(text->get(c));
  EXPECT_EQ('x', c);
}

TEST(Input, NumbersAreNarrowed) {
  Text text("65537 4294967297 -1 65537");
  short s = 0;
  int i = 0, minus = 0;
  unsigned short us = 0;
  EXPECT_TRUE(text->read(s) && text->read(i) && text->read(minus) && text->read(us));
  EXPECT_EQ(1, s);
  EXPECT_EQ(1, i);
  EXPECT_EQ(-1, minus);
  EXPECT_EQ(1, us);
}

TEST(Input, WhatAFailedNumberHasTakenIsGone) {
  Text text("-x 1e+y");
  int i;
  float f;
  EXPECT_FALSE(text->read(i));
  EXPECT_EQ("x", stringFrom(text.in));
  EXPECT_FALSE(text->read(f));
  EXPECT_EQ("y", stringFrom(text.in));
}

TEST(Input, ANameUsedAgainFindsTheLaterObject) {
  Text text("");
  ozGroup *const first = new ozGroup, *const second = new ozGroup;
  text->addReference(ozName("n"), first);
  EXPECT_STREQ("n", first->getName());
  EXPECT_EQ(first, text->findReference(ozName("n")));
  text->addReference(ozName("n"), second);
  EXPECT_EQ(second, text->findReference(ozName("n")));
  EXPECT_EQ(nullptr, text->findReference(ozName("other")));
  first->unref();
  second->unref();
}

TEST(Input, APeekedWordIsReadAgain) {
  Text text("NULL next{a,b c averyveryverylongword");
  char word[16];
  EXPECT_TRUE(text->peekWord(word, sizeof word));
  EXPECT_STREQ("NULL", word);
  EXPECT_TRUE(text->peekWord(word, sizeof word));
  EXPECT_EQ("NULL", stringFrom(text.in));
  EXPECT_TRUE(text->peekWord(word, sizeof word));
  EXPECT_STREQ("next{a,b", word);
  EXPECT_EQ("next", nameFrom(text.in));
  EXPECT_TRUE(text->peekWord(word, sizeof word));
  EXPECT_STREQ("{a,b", word);
  EXPECT_EQ("{a,b", stringFrom(text.in));
  EXPECT_EQ("c", stringFrom(text.in));
  EXPECT_FALSE(text->peekWord(word, sizeof word));
  EXPECT_EQ("averyveryverylongword", stringFrom(text.in));
}

TEST(Input, APeekedStringLosesItsQuotes) {
  Text text("\"a b\" \"averyveryverylongword\" \"\" c");
  char word[16];
  EXPECT_TRUE(text->peekWord(word, sizeof word));
  EXPECT_STREQ("a b", word);
  EXPECT_EQ("a", stringFrom(text.in));
  EXPECT_EQ("b", stringFrom(text.in));
  EXPECT_FALSE(text->peekWord(word, sizeof word));
  EXPECT_STREQ("", word);
  EXPECT_EQ("averyveryverylongword", stringFrom(text.in));
  EXPECT_TRUE(text->peekWord(word, sizeof word));
  EXPECT_STREQ("", word);
  EXPECT_EQ("c", stringFrom(text.in));
}

TEST(Input, ACharacterPutBackAheadOfAPendingTokenDropsTheToken) {
  Text text("x");
  text->skipWhiteSpace();
  text->putBack("ab");
  text->putBack('c');
  EXPECT_EQ("x", text.rest());
}

TEST(Input, TheLowByteOfABooleanCounts) {
  Text text("256 257 258");
  unsigned char value = 9;
  EXPECT_TRUE(text->readBool(value));
  EXPECT_EQ(0, value);
  EXPECT_TRUE(text->readBool(value));
  EXPECT_EQ(1, value);
  EXPECT_EQ("vl read error: Illegal value for vlSFBool: 2 (must be 0 or 1)\n\tOccurred at line   2\n",
            stderrOf([&] { EXPECT_FALSE(text->readBool(value)); }));
}

TEST(Input, AStreamInErrorHasEnded) {
  vlInput in;
  FILE *const file = fopen("/proc/self/mem", "r"); // opens, and reading address 0 fails
  ASSERT_NE(nullptr, file);
  in.setFilePointer(file);
  char c;
  EXPECT_FALSE(in.get(c));
  EXPECT_TRUE(in.eof());
  fclose(file);
}

TEST(Input, ACommentCountsItsLineAndAStringsHashIsNoComment) {
  Text text("a# b\n\"# no comment\" c");
  EXPECT_EQ("a", nameFrom(text.in));
  EXPECT_EQ("# no comment", stringFrom(text.in));
  EXPECT_EQ(3, text->getLineNumber());
}

TEST(Input, WhatIsTakenCounts) {
  Text text("ab cd");
  text->skipWhiteSpace();
  long const start = text->getTaken();
  char word[16];
  text->peekWord(word, sizeof word);
  EXPECT_EQ(start, text->getTaken());
  nameFrom(text.in);
  EXPECT_EQ(start + 2, text->getTaken());
  text->putBack("ab");
  EXPECT_EQ(start, text->getTaken());
}

TEST(Input, StandardInputIsReadUnlessAStreamIsGiven) {
  vlInput in;
  EXPECT_EQ(stdin, in.getCurFile());
}

} // namespace
