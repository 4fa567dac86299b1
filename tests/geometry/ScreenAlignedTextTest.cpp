// Text on the screen: fields, fonts and their lists, and what is drawn.

#include "geometry/geometryFixture.h"

#include <algorithm>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

typedef ozScreenAlignedText Text;

TEST(ScreenAlignedText, HasItsNameAndFields) {
  ozType *const type = Text::getClassType();
  EXPECT_STREQ(type->getName(), "ScreenAlignedText");
  EXPECT_EQ(type->getAncestor(), ozGeometry::getClassType());
  ASSERT_EQ(type->getFieldInfoCount(), 7);
  struct {
    char const *name;
    ozType *type;
  } const rows[] = {{"text", ozSFString::getClassType()},
                    {"position", ozSFVec3f::getClassType()},
                    {"color", ozSFVec4f::getClassType()},
                    {"fontSize", ozSFInt::getClassType()},
                    {"fontFace", ozSFEnum::getClassType()}};
  for (int i = 0; i < 5; ++i) {
    EXPECT_STREQ(type->getFieldInfo(2 + i)->getName(), rows[i].name);
    EXPECT_EQ(type->getFieldInfo(2 + i)->getFieldType(), rows[i].type);
  }
  Held<ozContainer> made(Held<Text>(new Text)->instantiate());
  EXPECT_EQ(made->getType(), type);
}

TEST(ScreenAlignedText, NamesItsFaces) {
  char const *const names[] = {"TIMES",     "TIMES_ITALIC",      "TIMES_BOLD",     "TIMES_BOLD_ITALIC",
                               "HELVETICA", "HELVETICA_OBLIQUE", "HELVETICA_BOLD", "HELVETICA_BOLD_OBLIQUE"};
  for (int i = 0; i < 8; ++i) EXPECT_STREQ(Text::getClassType()->mapEnum(6, i), names[i]);
  EXPECT_EQ(Text::TIMES, 0);
  EXPECT_EQ(Text::HELVETICA_BOLD_OBLIQUE, 7);
}

TEST(ScreenAlignedText, StartsEmptyWhiteAndSmall) {
  Held<Text> text(new Text);
  ozString string("x");
  text->getText(string);
  EXPECT_STREQ(string.getString(), "");
  float x, y, z, r, g, b, a;
  text->getPosition(&x, &y, &z);
  EXPECT_EQ(ozVec3f(x, y, z), ozVec3f(0, 0, 0));
  text->getColor(&r, &g, &b, &a);
  EXPECT_EQ(ozVec4f(r, g, b, a), ozVec4f(1, 1, 1, 1));
  EXPECT_EQ(text->getSize(), 12);
  EXPECT_EQ(text->getFace(), Text::HELVETICA);
}

TEST(ScreenAlignedText, StoresWhatIsSet) {
  Held<Text> text(new Text);
  text->setText(ozString("two words"));
  text->setPosition(1, 2, 3);
  text->setColor(0.1f, 0.2f, 0.3f, 0.4f);
  text->setSize(33);
  text->setFace(Text::TIMES_BOLD);
  ozString string;
  text->getText(string);
  EXPECT_STREQ(string.getString(), "two words");
  float x, y, z, r, g, b, a;
  text->getPosition(&x, &y, &z);
  EXPECT_EQ(ozVec3f(x, y, z), ozVec3f(1, 2, 3));
  text->getColor(&r, &g, &b, &a);
  EXPECT_EQ(ozVec4f(r, g, b, a), ozVec4f(0.1f, 0.2f, 0.3f, 0.4f));
  EXPECT_EQ(text->getSize(), 33);
  EXPECT_EQ(text->getFace(), 2);
}

TEST(ScreenAlignedText, IsATinyBoxAroundItsPosition) {
  Held<Text> text(new Text);
  text->setBoundMode(ozGeometry::STATIC); // makes no difference
  text->setPosition(1, 2, 3);
  ozBoxBound bound;
  text->getBoxBound(bound);
  EXPECT_EQ(bound.min, ozVec3f(1 - 0.0001f, 2 - 0.0001f, 3 - 0.0001f));
  EXPECT_EQ(bound.max, ozVec3f(1 + 0.0001f, 2 + 0.0001f, 3 + 0.0001f));
}

TEST(ScreenAlignedText, IsHitAsThatBox) {
  Held<Text> text(new Text);
  text->setText("wide");
  text->setPosition(1, 2, 3);
  ozIsectAction action;
  EXPECT_TRUE(cast(action, text.get(), ozVec3f(1, 2, 9), ozVec3f(0, 0, -1), 100).isValid());
  EXPECT_FALSE(cast(action, text.get(), ozVec3f(1.001f, 2, 9), ozVec3f(0, 0, -1), 100).isValid());
}

class TextDraw : public DrawTest {
protected:
  Text *made(char const *string, int size = 12, int face = Text::HELVETICA) {
    Text *const text = new Text;
    text->ref();
    text->setText(ozString(string));
    text->setSize(size);
    text->setFace(face);
    _texts.push_back(text);
    return text;
  }
  void drop(Text *text) {
    _texts.erase(std::find(_texts.begin(), _texts.end(), text));
    text->unref();
  }
  void TearDown() override {
    for (Text *text : _texts) text->unref();
  }

  int listsBuilt(Text *text) {
    GLRecorder rec;
    text->draw(&action);
    return rec.count("glNewList");
  }
  int baseOf(Text *text) {
    GLRecorder rec;
    text->draw(&action);
    return static_cast<int>(rec.named("glListBase")[0].args[0]);
  }

private:
  std::vector<Text *> _texts;
};

TEST_F(TextDraw, SendsColourPlaceAndText) {
  Text *const text = made("Hi!");
  text->setPosition(1, 2, 3);
  text->setColor(0.5f, 0.25f, 0.125f, 1);
  text->draw(&action);
  glPixelStorei(GL_UNPACK_ROW_LENGTH, 7);
  glPixelStorei(GL_UNPACK_SWAP_BYTES, 1);
  glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
  std::string const base = std::to_string(baseOf(text));
  EXPECT_THAT(draw(text),
              ElementsAre("glColor4f(0.5, 0.25, 0.125, 1)", "glRasterPos3f(1, 2, 3)",
                          "glGetIntegerv(GL_UNPACK_SWAP_BYTES, ptr)", "glGetIntegerv(GL_UNPACK_LSB_FIRST, ptr)",
                          "glGetIntegerv(GL_UNPACK_ROW_LENGTH, ptr)", "glGetIntegerv(GL_UNPACK_SKIP_ROWS, ptr)",
                          "glGetIntegerv(GL_UNPACK_SKIP_PIXELS, ptr)", "glGetIntegerv(GL_UNPACK_ALIGNMENT, ptr)",
                          "glPixelStorei(GL_UNPACK_SWAP_BYTES, 0)", "glPixelStorei(GL_UNPACK_LSB_FIRST, 0)",
                          "glPixelStorei(GL_UNPACK_ROW_LENGTH, 0)", "glPixelStorei(GL_UNPACK_SKIP_ROWS, 0)",
                          "glPixelStorei(GL_UNPACK_SKIP_PIXELS, 0)", "glPixelStorei(GL_UNPACK_ALIGNMENT, 1)",
                          "glListBase(" + base + ")", "glCallLists(3, GL_UNSIGNED_BYTE, 72, 105, 33)",
                          "glPixelStorei(GL_UNPACK_SWAP_BYTES, 1)", "glPixelStorei(GL_UNPACK_LSB_FIRST, 0)",
                          "glPixelStorei(GL_UNPACK_ROW_LENGTH, 7)", "glPixelStorei(GL_UNPACK_SKIP_ROWS, 0)",
                          "glPixelStorei(GL_UNPACK_SKIP_PIXELS, 0)", "glPixelStorei(GL_UNPACK_ALIGNMENT, 8)",
                          "glColor4f(1, 1, 1, 1)"));
}

TEST_F(TextDraw, WithoutStorageOnlyTheColourIsSetAndReset) {
  Text *const text = made("x");
  text->setText(ozString());
  text->draw(&action);
  EXPECT_THAT(draw(text), ElementsAre("glColor4f(1, 1, 1, 1)", "glRasterPos3f(0, 0, 0)", "glColor4f(1, 1, 1, 1)"));
}

TEST_F(TextDraw, AnEmptyTextWithStorageCallsNoLists) {
  Text *const text = made("");
  GLRecorder rec;
  text->draw(&action);
  EXPECT_EQ(rec.named("glCallLists").size(), 1u);
  EXPECT_EQ(rec.named("glCallLists")[0].args[0], 0);
}

TEST_F(TextDraw, MaterialsGiveTheColours) {
  Text *const text = made("x");
  context->setMaterialModeEnable(ozContext::COLOR_MATERIAL);
  GLRecorder rec;
  text->draw(&action);
  EXPECT_EQ(rec.count("glDisable(GL_COLOR_MATERIAL)"), 1);
  EXPECT_EQ(context->getDefaultState().materialModeEnable, ozContext::COLOR_MATERIAL);
}

TEST_F(TextDraw, BytesWithoutAListDrawNothing) {
  Text *const text = made("a\x7f"
                          "b\xc3\xa4"
                          "c\xff");
  GLRecorder rec;
  text->draw(&action);
  EXPECT_THAT(textsOf(rec.named("glCallLists")),
              ElementsAre("glCallLists(1, GL_UNSIGNED_BYTE, 97)", "glCallLists(1, GL_UNSIGNED_BYTE, 98)",
                          "glCallLists(1, GL_UNSIGNED_BYTE, 99)"));
}

TEST_F(TextDraw, TakesAConnectedValueFirst) {
  Text *const text = made("x"), *const source = made("y");
  source->connect(3, text, 3);
  source->setPosition(4, 5, 6);
  GLRecorder rec;
  text->draw(&action);
  EXPECT_EQ(rec.count("glRasterPos3f(4, 5, 6)"), 1);
}

// ---- fonts

TEST_F(TextDraw, RecordsAllLists) {
  Text *const text = made("x");
  EXPECT_EQ(listsBuilt(text), 127);
  unsigned int const base = static_cast<unsigned int>(baseOf(text));
  for (unsigned int i = 0; i < 127; ++i) EXPECT_TRUE(glIsList(base + i)) << i;
}

TEST_F(TextDraw, BuildingLeavesTheUnpackStateAsItWas) {
  Text *const text = made("x");
  GLenum const names[] = {GL_UNPACK_SWAP_BYTES, GL_UNPACK_LSB_FIRST,   GL_UNPACK_ROW_LENGTH,
                          GL_UNPACK_SKIP_ROWS,  GL_UNPACK_SKIP_PIXELS, GL_UNPACK_ALIGNMENT};
  GLint const odd[] = {1, 1, 11, 3, 5, 2};
  for (int i = 0; i < 6; ++i) glPixelStorei(names[i], odd[i]);
  EXPECT_EQ(listsBuilt(text), 127);
  for (int i = 0; i < 6; ++i) {
    GLint now = -1;
    glGetIntegerv(names[i], &now);
    EXPECT_EQ(now, odd[i]) << i;
  }
}

TEST_F(TextDraw, TwoTextsOfOneFontBuildOnce) {
  Text *const first = made("x", 15), *const second = made("y", 15);
  EXPECT_EQ(listsBuilt(first), 127);
  EXPECT_EQ(listsBuilt(second), 0);
  EXPECT_EQ(baseOf(first), baseOf(second));
}

TEST_F(TextDraw, OtherFacesAndSizesHaveListsOfTheirOwn) {
  Text *const first = made("x", 15), *const larger = made("y", 16), *const bold = made("z", 15, Text::HELVETICA_BOLD);
  first->draw(&action);
  EXPECT_EQ(listsBuilt(larger), 127);
  EXPECT_EQ(listsBuilt(bold), 127);
  EXPECT_NE(baseOf(first), baseOf(larger));
  EXPECT_NE(baseOf(first), baseOf(bold));
  EXPECT_NE(baseOf(larger), baseOf(bold));
}

TEST_F(TextDraw, AChangedTextKeepsItsLists) {
  Text *const text = made("x");
  int const base = baseOf(text);
  text->setText("other");
  EXPECT_EQ(listsBuilt(text), 0);
  EXPECT_EQ(baseOf(text), base);
}

TEST_F(TextDraw, AChangeOfFaceOrSizeIsSeenByATextThatUsesAnothersLists) {
  Text *const first = made("x", 15), *const second = made("y", 15);
  first->draw(&action);
  second->draw(&action);
  second->setSize(18);
  EXPECT_EQ(listsBuilt(second), 127);
  EXPECT_NE(baseOf(second), baseOf(first));
  second->setFace(Text::TIMES);
  EXPECT_EQ(listsBuilt(second), 127);
  second->setSize(15);
  second->setFace(Text::HELVETICA);
  EXPECT_EQ(listsBuilt(second), 0);
  EXPECT_EQ(baseOf(second), baseOf(first));
}

TEST_F(TextDraw, AnotherContextGetsListsOfItsOwnUnderTheSameNumbers) {
  Text *const text = made("x", 15);
  int const base = baseOf(text);
  OffscreenContext other;
  action.setContext(other.context);
  EXPECT_EQ(listsBuilt(text), 127);
  EXPECT_EQ(listsBuilt(text), 0);
  EXPECT_EQ(baseOf(text), base);
  context->makeCurrent(gl.device);
  action.setContext(context);
  EXPECT_EQ(listsBuilt(text), 0);
}

TEST_F(TextDraw, TheListsOfAFontOutliveTheTextThatBuiltThem) {
  Text *const first = made("x", 15), *const second = made("y", 15), *const third = made("z", 15);
  first->draw(&action);
  second->draw(&action);
  unsigned int const base = static_cast<unsigned int>(baseOf(second));
  {
    GLRecorder rec;
    drop(first);
    EXPECT_EQ(rec.count("glDeleteLists(" + std::to_string(base) + ", 127)"), 0);
  }
  EXPECT_TRUE(glIsList(base));
  EXPECT_EQ(listsBuilt(third), 0);
  EXPECT_EQ(baseOf(third), static_cast<int>(base));
  drop(second);
  EXPECT_TRUE(glIsList(base));
  drop(third);
  EXPECT_FALSE(glIsList(base));
}

TEST_F(TextDraw, TheListsOfAFontOutliveATextThatTookAnotherFont) {
  Text *const first = made("x", 15), *const second = made("y", 15);
  first->draw(&action);
  second->draw(&action);
  int const base = baseOf(second);
  first->setSize(20);
  EXPECT_EQ(listsBuilt(first), 127);
  EXPECT_NE(baseOf(first), base);
  EXPECT_EQ(baseOf(second), base);
  second->setSize(21); // the last user of the old one
  second->draw(&action);
  EXPECT_FALSE(glIsList(static_cast<unsigned int>(base)));
}

TEST_F(TextDraw, AFontThatWentOutOfUseIsBuiltAnew) {
  Text *const text = made("x", 15);
  text->draw(&action);
  text->setSize(16);
  EXPECT_EQ(listsBuilt(text), 127);
  text->setSize(15);
  EXPECT_EQ(listsBuilt(text), 127);
  drop(text);
  EXPECT_EQ(listsBuilt(made("y", 15)), 127);
}

TEST_F(TextDraw, TheDestructorDeletesItsListsOnce) {
  Text *const text = made("x");
  std::string const base = std::to_string(baseOf(text));
  GLRecorder rec;
  drop(text);
  EXPECT_THAT(rec.texts(), ElementsAre("glDeleteLists(" + base + ", 127)"));
}

TEST_F(TextDraw, ReservesANumberForEachCharacter) {
  int const before = ozContext::newId(2);
  made("x");
  int const after = ozContext::newId(2);
  EXPECT_EQ(after - before, 2 + 127);
}

TEST_F(TextDraw, UnknownFacesAndSizesFindNoFont) {
  Text *const text = made("x", 15);
  unsigned int const base = static_cast<unsigned int>(baseOf(text));
  for (int face : {-1, 8, 2147483647, -2147483647 - 1}) {
    text->setFace(face);
    EXPECT_EQ(listsBuilt(text), 0) << face;
    EXPECT_FALSE(glIsList(base)) << face;
  }
  text->setFace(Text::TIMES);
  EXPECT_EQ(listsBuilt(text), 127);
  for (int size : {1025, 2147483647, -2147483647 - 1}) {
    text->setSize(size);
    EXPECT_EQ(listsBuilt(text), 0) << size;
    EXPECT_FALSE(glIsList(base)) << size;
  }
}

TEST_F(TextDraw, NegativeSizesAreFontsLikeOthers) {
  Text *const last = made("x", -1, Text::HELVETICA_BOLD_OBLIQUE), *const other = made("y", -20, Text::TIMES);
  EXPECT_EQ(listsBuilt(last), 127);
  EXPECT_EQ(listsBuilt(other), 127);
  EXPECT_NE(baseOf(last), baseOf(other));
}

TEST_F(TextDraw, ACopyHasListsAndValuesOfItsOwn) {
  Text *const text = made("x", 15);
  text->draw(&action);
  Held<Text> copy(new Text(*text));
  text->setSize(16);
  text->draw(&action);
  EXPECT_EQ(listsBuilt(copy.get()), 127);
  EXPECT_EQ(copy->getSize(), 15);
  EXPECT_NE(baseOf(copy.get()), baseOf(text));
  Held<Text> assigned(new Text);
  *assigned = *text;
  EXPECT_EQ(assigned->getSize(), 16);
  EXPECT_EQ(baseOf(assigned.get()), baseOf(text));
}

// ---- pixels

// The box around the pixels that are not black.
struct Ink {
  int left = 9999, top = 9999, right = -1, bottom = -1, count = 0;
  explicit Ink(Image const &image) {
    for (int y = 0; y < image.height(); ++y)
      for (int x = 0; x < image.width(); ++x)
        if (image.at(x, y)[0] || image.at(x, y)[1] || image.at(x, y)[2]) {
          left = std::min(left, x);
          right = std::max(right, x);
          top = std::min(top, y);
          bottom = std::max(bottom, y);
          ++count;
        }
  }
};

class TextPixels : public TextDraw {
protected:
  Image shown(Text *text) {
    context->clear(ozContext::CLEAR_COLOR);
    text->draw(&action);
    return gl.pixels();
  }
};

TEST_F(TextPixels, ATextStandsOnItsPosition) {
  Text *const text = made("H", 40);
  text->setPosition(-0.5f, 0.25f, 0); // of 200 x 200 pixels: 50 from the left, 125 from the bottom
  Ink const ink(shown(text));
  EXPECT_GE(ink.left, 50);
  EXPECT_LE(ink.left, 56);
  EXPECT_EQ(ink.bottom, 200 - 125 - 1);
  EXPECT_GT(ink.bottom - ink.top, 20);
  EXPECT_LT(ink.bottom - ink.top, 40);
}

TEST_F(TextPixels, CharactersFollowEachOther) {
  Ink const one(shown(made("i", 40))), three(shown(made("iii", 40)));
  EXPECT_EQ(three.count, 3 * one.count);
  EXPECT_GT(three.right, one.right + 10);
  EXPECT_EQ(three.left, one.left);
}

TEST_F(TextPixels, HasItsColour) {
  Text *const text = made("I", 40);
  text->setColor(1, 0.5f, 0, 1);
  Image const image = shown(text);
  Ink const ink(image);
  Image::Pixel const pixel = image.at((ink.left + ink.right) / 2, (ink.top + ink.bottom) / 2);
  EXPECT_EQ(pixel[0], 255);
  EXPECT_NEAR(pixel[1], 128, 1);
  EXPECT_EQ(pixel[2], 0);
}

TEST_F(TextPixels, IsTheSameSizeAtAnyScale) {
  Text *const text = made("H", 40);
  Ink const before(shown(text));
  glScalef(0.5f, 0.25f, 1);
  Ink const after(shown(text));
  EXPECT_EQ(after.right - after.left, before.right - before.left);
  EXPECT_EQ(after.bottom - after.top, before.bottom - before.top);
}

TEST_F(TextPixels, IsGoneWhenItsPositionIsClipped) {
  Text *const text = made("HHHH", 40);
  text->setPosition(-1.01f, 0, 0);
  EXPECT_EQ(Ink(shown(text)).count, 0);
}

TEST_F(TextPixels, EachFaceLooksDifferent) {
  std::vector<Image> images;
  for (int face = 0; face < 8; ++face) images.push_back(shown(made("Rag", 40, face)));
  for (size_t a = 0; a < 8; ++a)
    for (size_t b = 0; b < a; ++b) {
      int different = 0;
      for (int y = 0; y < 200; ++y)
        for (int x = 0; x < 200; ++x) different += images[a].at(x, y) != images[b].at(x, y);
      EXPECT_GT(different, 20) << a << ' ' << b;
    }
}

} // namespace
