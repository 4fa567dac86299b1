// Glyph bitmaps, by what every face has in common.

#include "platform/ozFontRecord.h"
#include "support/fonts.h"

#include <memory>

namespace {

typedef std::unique_ptr<ozFontRecord> Font;

Font font(int height, int weight = 400, int italic = 0, int family = ozFontRecord::SWISS) {
  return Font(ozFontRecord::create(height, weight, italic, family));
}

bool pixel(ozFontRecord::Glyph const &glyph, int x, int y) {
  return glyph.bits[y * ((glyph.width + 7) / 8) + x / 8] >> (7 - x % 8) & 1;
}

int ink(ozFontRecord::Glyph const &glyph) {
  int count = 0;
  for (int y = 0; y < glyph.height; ++y)
    for (int x = 0; x < glyph.width; ++x) count += pixel(glyph, x, y);
  return count;
}

// The middle of the ink of a row.
double middle(ozFontRecord::Glyph const &glyph, int y) {
  double sum = 0, count = 0;
  for (int x = 0; x < glyph.width; ++x)
    if (pixel(glyph, x, y)) sum += x, ++count;
  return sum / count;
}

class FontRecord : public ::testing::Test {
protected:
  void SetUp() override { SKIP_WITHOUT_FONT(); }
};

TEST_F(FontRecord, StandsOnTheBaseLine) {
  Font const f = font(40);
  ASSERT_TRUE(f);
  EXPECT_EQ(f->glyph('H').bottom, 0);
  EXPECT_LT(f->glyph('p').bottom, -2);
  EXPECT_GT(f->glyph('-').bottom, 5);
}

TEST_F(FontRecord, APositiveHeightIsThatOfALine) {
  Font const f = font(100);
  ASSERT_TRUE(f);
  ozFontRecord::Glyph const tall = f->glyph('A');
  EXPECT_GT(tall.bottom + tall.height, 50);
  EXPECT_LT(tall.bottom + tall.height, 100);
  int const descent = -f->glyph('g').bottom;
  EXPECT_LE(tall.height + descent, 100);
}

TEST_F(FontRecord, ANegativeHeightLeavesTheRoomOfALineOut) {
  Font const line = font(100), face = font(-100);
  ASSERT_TRUE(line && face);
  EXPECT_GT(face->glyph('A').height, line->glyph('A').height);
}

TEST_F(FontRecord, NoHeightStandsForTwelve) {
  Font const none = font(0), twelve = font(12);
  ASSERT_TRUE(none && twelve);
  EXPECT_EQ(none->glyph('A').height, twelve->glyph('A').height);
}

TEST_F(FontRecord, HeightsThatNoScreenHasFindNoFont) {
  EXPECT_TRUE(ozFontRecord::hasHeight(1024));
  EXPECT_TRUE(font(1024));
  EXPECT_FALSE(font(1025));
  EXPECT_FALSE(font(-1025));
  EXPECT_FALSE(font(2147483647));
  EXPECT_FALSE(font(-2147483647 - 1));
}

TEST_F(FontRecord, ASpaceHasRoomAndNoInk) {
  Font const f = font(40);
  ASSERT_TRUE(f);
  EXPECT_GT(f->glyph(' ').advance, 4);
  EXPECT_EQ(ink(f->glyph(' ')), 0);
}

TEST_F(FontRecord, ControlCharactersTakeNoRoom) {
  Font const f = font(40);
  ASSERT_TRUE(f);
  for (unsigned char c : {0, 1, 9, 10, 13, 31}) {
    EXPECT_EQ(f->glyph(c).advance, 0) << int(c);
    EXPECT_EQ(f->glyph(c).width, 0) << int(c);
  }
}

TEST_F(FontRecord, RowsRunFromTheBottomUp) {
  Font const f = font(40);
  ASSERT_TRUE(f);
  ozFontRecord::Glyph const letter = f->glyph('L'); // its bar is at the bottom
  int low = 0, high = 0;
  for (int x = 0; x < letter.width; ++x) low += pixel(letter, x, 0), high += pixel(letter, x, letter.height - 1);
  EXPECT_GT(low, high);
}

TEST_F(FontRecord, WideLettersAdvanceFurther) {
  if (fontFile("sans-serif").find("Mono") != std::string::npos)
    GTEST_SKIP() << "SKIPPED: in " << fontFile("sans-serif") << " all letters are of one width";
  Font const f = font(40);
  ASSERT_TRUE(f);
  EXPECT_GT(f->glyph('W').advance, 2 * f->glyph('i').advance);
}

TEST_F(FontRecord, ABoldFaceHasMoreInk) {
  for (int family : {ozFontRecord::ROMAN, ozFontRecord::SWISS}) {
    Font const plain = font(40, 400, 0, family), bold = font(40, 700, 0, family);
    ASSERT_TRUE(plain && bold);
    EXPECT_GT(ink(bold->glyph('I')), ink(plain->glyph('I'))) << family;
  }
}

TEST_F(FontRecord, AnItalicFaceLeansToTheRight) {
  for (int family : {ozFontRecord::ROMAN, ozFontRecord::SWISS})
    for (int weight : {400, 700}) {
      Font const f = font(60, weight, 1, family);
      ASSERT_TRUE(f);
      ozFontRecord::Glyph const bar = f->glyph('I');
      EXPECT_GT(middle(bar, bar.height - 1), middle(bar, 0) + 4) << family << ' ' << weight;
      Font const upright = font(60, weight, 0, family);
      ASSERT_TRUE(upright);
      ozFontRecord::Glyph const straight = upright->glyph('I');
      EXPECT_NEAR(middle(straight, straight.height - 1), middle(straight, 0), 0.5);
    }
}

TEST_F(FontRecord, TheRomanFamilyHasSerifsAndTheSwissNone) {
  SKIP_WITH_ONE_FAMILY();
  Font const roman = font(60, 400, 0, ozFontRecord::ROMAN), swiss = font(60);
  ASSERT_TRUE(roman && swiss);
  // The foot of an l, against its stem.
  auto const widthOfRow = [](ozFontRecord::Glyph const &glyph, int y) {
    int count = 0;
    for (int x = 0; x < glyph.width; ++x) count += pixel(glyph, x, y);
    return count;
  };
  ozFontRecord::Glyph const serif = roman->glyph('l');
  EXPECT_GT(widthOfRow(serif, 0), 2 * widthOfRow(serif, serif.height / 2));
  ozFontRecord::Glyph const sans = swiss->glyph('l');
  EXPECT_EQ(widthOfRow(sans, 0), widthOfRow(sans, sans.height / 2));
}

} // namespace
