// A lexer that reads ahead gives what one that takes the stream by the character gives, and its numbers are those of
// the C library.
#include <gtest/gtest.h>

#include <math.h>
#include <stdlib.h>
#include <string.h>

#include <string>
#include <vector>

#include "oz/OzScene3D.h"
#include "oz/vlInput.h"
#include "support/capture.h"

namespace {

class Random {
public:
  explicit Random(unsigned int seed) : _state(seed * 2654435761u + 1) {}
  unsigned int below(unsigned int n) {
    _state = _state * 6364136223846793005ull + 1442695040888963407ull;
    return static_cast<unsigned int>(_state >> 33) % n;
  }
  std::string digits(unsigned int most) {
    std::string text;
    for (unsigned int n = below(most) + 1; n > 0; --n) text += static_cast<char>('0' + below(10));
    return text;
  }
  char const *of(std::vector<char const *> const &all) { return all[below(static_cast<unsigned int>(all.size()))]; }

private:
  unsigned long _state;
};

/// A lexer on a text behind a good header line.
class Lexer {
public:
  Lexer(std::string const &text, bool ahead) : _text("#VRML V2.0 utf8\n" + text) {
    _file = fmemopen(&_text[0], _text.size(), "r");
    in.setFilePointer(_file);
    if (ahead) in.readAhead();
  }
  ~Lexer() { fclose(_file); }
  FILE *file() const { return _file; }
  vlInput in;

private:
  std::string _text;
  FILE *_file;
};

std::string bits(double value) {
  char text[32];
  unsigned long word;
  memcpy(&word, &value, sizeof word);
  snprintf(text, sizeof text, "%016lx", word);
  return text;
}

// Does `steps` operations, drawn from a seed, and writes down all that can be seen.
std::string protocolOf(vlInput &in, unsigned int seed, int steps) {
  Random random(seed);
  std::string seen;
  char last = 'x';
  bool fresh = false; // a character taken from the stream may go back once
  for (int i = 0; i < steps; ++i) {
    unsigned int const operation = random.below(13);
    long l = 0;
    unsigned long ul = 0;
    int n = 0;
    float f = 0;
    double d = 0;
    unsigned char b = 9, ok = 2;
    char c = 0, word[16] = "";
    ozName name;
    ozString string;
    switch (operation) {
    case 0:
      ok = in.read(d), seen += bits(d);
      break;
    case 1:
      ok = in.read(f), seen += bits(static_cast<double>(f));
      break;
    case 2:
      ok = in.read(n), seen += std::to_string(n);
      break;
    case 3:
      ok = in.read(l), seen += std::to_string(l);
      break;
    case 4:
      ok = in.read(ul), seen += std::to_string(ul);
      break;
    case 5:
      ok = in.read(name, 1), seen += name.getString();
      break;
    case 6:
      ok = in.read(string), seen += string.getString() ? string.getString() : "(null)";
      break;
    case 7:
      ok = in.peekWord(word, sizeof word), seen += word;
      break;
    case 8:
      ok = in.read(c), seen += c;
      break;
    case 9:
      ok = in.get(c), seen += c;
      break;
    case 10:
      ok = in.skipWhiteSpace();
      break;
    case 11:
      ok = in.readBool(b), seen += std::to_string(b);
      break;
    default:
      if (fresh) in.putBack(last);
      break;
    }
    fresh = (operation == 8 || operation == 9) && ok;
    last = c;
    seen += "|" + std::to_string(operation) + " " + std::to_string(ok) + " " + std::to_string(in.eof()) + " " +
            std::to_string(in.getTaken()) + " " + std::to_string(in.getLineNumber()) + "\n";
  }
  return seen;
}

void expectSame(std::string const &text, unsigned int seed, int steps) {
  std::string seen[2], said[2];
  for (int ahead = 0; ahead < 2; ++ahead) {
    Lexer lexer(text, ahead);
    said[ahead] = stderrOf([&] { seen[ahead] = protocolOf(lexer.in, seed, steps); });
  }
  ASSERT_EQ(seen[0], seen[1]) << "seed " << seed << "\n" << text.substr(0, 500);
  ASSERT_EQ(said[0], said[1]) << "seed " << seed;
}

std::string awkwardText(Random &random, int words) {
  static std::vector<char const *> const pieces = {"Transform",
                                                   "DEF ",
                                                   "USE",
                                                   "{",
                                                   "}",
                                                   "[",
                                                   "]",
                                                   ",",
                                                   "# note\n",
                                                   "\n",
                                                   " ",
                                                   "\t",
                                                   "\r\n",
                                                   "\"a b\"",
                                                   "\"\\\"\n\"",
                                                   "-",
                                                   "+",
                                                   ".",
                                                   "1e",
                                                   "1e+",
                                                   "-.5",
                                                   "5.",
                                                   "0x1f",
                                                   "0X1F",
                                                   "010",
                                                   "00",
                                                   "0xg",
                                                   "1.5.3",
                                                   "inf",
                                                   "nan",
                                                   "TRUE",
                                                   "FALSE",
                                                   "\xff",
                                                   "\xe9",
                                                   "\x01",
                                                   "a.b",
                                                   "NULL",
                                                   "1e5",
                                                   "-1E-7",
                                                   "+0",
                                                   "a#b ",
                                                   "123456789012345678901",
                                                   "averyveryveryverylongword",
                                                   "0.000000000000000000000000000001",
                                                   "1e400",
                                                   "-1e-400",
                                                   "4.9e-324",
                                                   "2.2250738585072011e-308"};
  std::string text;
  for (int i = 0; i < words; ++i) {
    switch (random.below(8)) {
    case 0:
      text += random.digits(25);
      break;
    case 1:
      text += random.digits(8) + "." + random.digits(12);
      break;
    case 2:
      text += '\0';
      break;
    case 3:
      text += std::string(random.below(40), "n7 \xff"[random.below(4)]);
      break;
    default:
      text += random.of(pieces);
    }
    if (random.below(3)) text += ' ';
  }
  return text;
}

TEST(ReadAhead, GivesWhatTheStreamGives) {
  for (unsigned int seed = 0; seed < 3000; ++seed) {
    Random random(seed);
    expectSame(awkwardText(random, 30), seed, 60);
    if (HasFatalFailure()) return;
  }
}

TEST(ReadAhead, GivesTheSameAcrossTheBordersOfBlocks) {
  for (unsigned int seed = 0; seed < 200; ++seed) {
    Random random(seed);
    std::string const space(65536u - 200u + random.below(150), ' ');
    expectSame(space + awkwardText(random, 60), seed, 100);
    if (HasFatalFailure()) return;
  }
}

TEST(ReadAhead, TakesAnyNumberOfCharactersBack) {
  std::string text;
  for (int i = 0; i < 100000; ++i) text += static_cast<char>('a' + i % 23);
  Lexer lexer(text, true);
  lexer.in.skipWhiteSpace();
  char c;
  for (int round = 0; round < 2; ++round) {
    for (size_t i = 0; i < text.size(); ++i) ASSERT_TRUE(lexer.in.get(c) && c == text[i]) << i;
    EXPECT_FALSE(lexer.in.get(c));
    EXPECT_TRUE(lexer.in.eof());
    for (size_t i = text.size(); i-- > 0;) lexer.in.putBack(text[i]);
    EXPECT_FALSE(lexer.in.eof());
    EXPECT_EQ(16, lexer.in.getTaken()); // the header line
  }
}

TEST(ReadAhead, OtherwiseTheStreamStandsBehindWhatWasTaken) {
  Lexer lexer("12 word", false);
  int n;
  ASSERT_TRUE(lexer.in.read(n));
  EXPECT_EQ(16 + 2, ftell(lexer.file()));
}

TEST(ReadAhead, EndsWithTheStream) {
  Lexer first("1 2 3", true), second("4", false);
  int n = 0;
  ASSERT_TRUE(first.in.read(n));
  first.in.setFilePointer(second.file());
  ASSERT_TRUE(first.in.read(n));
  EXPECT_EQ(4, n);
  EXPECT_EQ(17, first.in.getTaken());
}

// As atof and strtol have it, in both ways of reading.
void expectReal(std::string const &number) {
  for (bool ahead : {false, true}) {
    Lexer lexer(number + " ", ahead);
    double d = 0;
    ASSERT_TRUE(lexer.in.read(d)) << number;
    EXPECT_EQ(bits(atof(number.c_str())), bits(d)) << number;
    Lexer again(number + " ", ahead);
    float f = 0;
    ASSERT_TRUE(again.in.read(f)) << number;
    EXPECT_EQ(bits(static_cast<double>(static_cast<float>(atof(number.c_str())))), bits(static_cast<double>(f)))
        << number;
  }
}

TEST(ReadAhead, RandomRealsAreThoseOfTheCLibrary) {
  Random random(3);
  for (int i = 0; i < 20000; ++i) {
    std::string number = random.of({"", "-", "+"}) + random.digits(random.below(4) ? 9 : 24);
    if (random.below(4)) number += "." + (random.below(8) ? random.digits(random.below(4) ? 9 : 24) : "");
    if (!random.below(3)) number += random.of({"e", "E", "e-", "e+"}) + random.digits(random.below(8) ? 2 : 4);
    expectReal(number);
  }
}

TEST(ReadAhead, EveryFloatComesBackFromItsText) {
  Random random(5);
  for (int i = 0; i < 20000; ++i) {
    unsigned int const word = random.below(1u << 16) << 16 | random.below(1u << 16);
    float f;
    memcpy(&f, &word, sizeof f);
    if (!isfinite(f)) continue;
    char text[64];
    for (char const *format : {"%.9g", "%.17g", "%.6f", "%g"}) {
      snprintf(text, sizeof text, format, static_cast<double>(f));
      expectReal(text);
    }
  }
}

TEST(ReadAhead, AwkwardRealsAreThoseOfTheCLibrary) {
  for (char const *number :
       {"0", "-0", "+0", "0.", ".0", "-.0e5", "0e99999999999999999999", "0e-400", "1e308", "1.7976931348623157e308",
        "1.7976931348623158e308", "1.7976931348623159e308", "1e309", "-1e99999999999999999999", "4.9e-324", "2.4e-324",
        "2.5e-324", "-4.9406564584124654e-324", "2.2250738585072011e-308", "2.2250738585072014e-308", "1e-999",
        "9007199254740992", "9007199254740993", "9007199254740993.0000000000000000000000000000001",
        "9007199254740991e22", "9007199254740992e-22", "9007199254740993e-22", "1e22", "1e23", "1e-22", "1e-23",
        "8.5e22", "18446744073709551615", "18446744073709551616", "36893488147419103233", "99999999999999999999",
        "0.30000001192092896",
        // halfway between two floats, and a bit more than a double can tell: the double comes first
        "1.00000005960464477539", "1.000000059604644775390625", "1.00000005960464477539062500000000001", "16777217",
        "16777217.0000000001", "3.4028235677973366e38", "3.4028236e38", "1e39", "1.4e-45", "7e-46", "1.17549435e-38"})
    expectReal(number);
  expectReal(std::string(400, '9'));
  expectReal("0." + std::string(400, '0') + "1");
  expectReal("1" + std::string(400, '0') + "e-400");
  expectReal("0." + std::string(320, '0') + "123456789e330");
}

TEST(ReadAhead, WhatIsNoRealFailsOrEndsEarly) {
  for (bool ahead : {false, true}) {
    for (char const *bad : {"inf ", "nan ", "-inf ", "x ", ". ", "- ", "1e ", "1e+ ", "-.e1 ", ", "}) {
      Lexer lexer(bad, ahead);
      double d;
      EXPECT_FALSE(lexer.in.read(d)) << bad;
    }
    Lexer lexer("0x1p3 1.5.25 2f ", ahead); // no hexadecimal, a second point, a letter
    double d = -1;
    ozString rest;
    EXPECT_TRUE(lexer.in.read(d) && lexer.in.read(rest));
    EXPECT_EQ(0.0, d);
    EXPECT_STREQ("x1p3", rest.getString());
    EXPECT_TRUE(lexer.in.read(d) && d == 1.5);
    EXPECT_TRUE(lexer.in.read(d) && d == 0.25);
    EXPECT_TRUE(lexer.in.read(d) && d == 2.0 && lexer.in.read(rest));
    EXPECT_STREQ("f", rest.getString());
  }
}

TEST(ReadAhead, IntegersAreThoseOfTheCLibrary) {
  Random random(9);
  std::vector<std::string> numbers = {"0",
                                      "-0",
                                      "+0",
                                      "00",
                                      "010",
                                      "0x1F",
                                      "-0xff",
                                      "0x7fffffffffffffff",
                                      "0xffffffffffffffffff",
                                      "999999999999999999",
                                      "9223372036854775807",
                                      "9223372036854775808",
                                      "-9223372036854775808",
                                      "-9223372036854775809",
                                      "18446744073709551616"};
  for (int i = 0; i < 5000; ++i) numbers.push_back(random.of({"", "-", "+"}) + random.digits(22));
  for (std::string const &number : numbers) {
    if (number.find_first_of("89") != std::string::npos && number[number.find_first_of("0123456789")] == '0')
      continue; // octal ends ahead of these
    for (bool ahead : {false, true}) {
      Lexer lexer(number + " ", ahead), again(number + " ", ahead),
          plain(number.substr(number[0] == '-' || number[0] == '+') + " ", ahead);
      long l = 0;
      int n = 0;
      unsigned long ul = 0;
      ASSERT_TRUE(lexer.in.read(l) && again.in.read(n) && plain.in.read(ul)) << number;
      EXPECT_EQ(strtol(number.c_str(), nullptr, 0), l) << number;
      EXPECT_EQ(static_cast<int>(strtol(number.c_str(), nullptr, 0)), n) << number;
      EXPECT_EQ(strtoul(number.c_str() + (number[0] == '-' || number[0] == '+'), nullptr, 0), ul) << number;
    }
  }
}

} // namespace
