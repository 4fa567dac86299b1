// Text on the screen: fields, OpenGL calls, fonts and their lists.

#include "geometry/textFixture.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

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

TEST(ScreenAlignedText, AMoveMovesTheBoundOfItsShape) {
  Held<ozShape> shape(new ozShape);
  Text *const text = new Text;
  shape->addGeometry(text);
  ozBoxBound bound;
  shape->getBoxBound(bound);
  text->setPosition(1, 2, 3);
  shape->getBoxBound(bound);
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

// ---- drawing

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

TEST_F(TextDraw, ReservesANumberForEachCharacter) {
  int const before = ozContext::newId(2);
  made("x");
  int const after = ozContext::newId(2);
  EXPECT_EQ(after - before, 2 + 127);
}

TEST_F(TextDraw, TheDestructorDeletesItsListsOnce) {
  Text *const text = made("x");
  std::string const base = std::to_string(baseOf(text));
  GLRecorder rec;
  drop(text);
  EXPECT_THAT(rec.texts(), ElementsAre("glDeleteLists(" + base + ", 127)"));
}

// ---- fonts

TEST_F(TextFont, RecordsAllLists) {
  Text *const text = made("x");
  EXPECT_EQ(listsBuilt(text), 127);
  unsigned int const base = static_cast<unsigned int>(baseOf(text));
  for (unsigned int i = 0; i < 127; ++i) EXPECT_TRUE(glIsList(base + i)) << i;
}

TEST_F(TextFont, BuildingLeavesTheUnpackStateAsItWas) {
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

TEST_F(TextFont, TwoTextsOfOneFontBuildOnce) {
  Text *const first = made("x", 15), *const second = made("y", 15);
  EXPECT_EQ(listsBuilt(first), 127);
  EXPECT_EQ(listsBuilt(second), 0);
  EXPECT_EQ(baseOf(first), baseOf(second));
}

TEST_F(TextFont, OtherFacesAndSizesHaveListsOfTheirOwn) {
  Text *const first = made("x", 15), *const larger = made("y", 16), *const bold = made("z", 15, Text::HELVETICA_BOLD);
  first->draw(&action);
  EXPECT_EQ(listsBuilt(larger), 127);
  EXPECT_EQ(listsBuilt(bold), 127);
  EXPECT_NE(baseOf(first), baseOf(larger));
  EXPECT_NE(baseOf(first), baseOf(bold));
  EXPECT_NE(baseOf(larger), baseOf(bold));
}

TEST_F(TextFont, AChangedTextKeepsItsLists) {
  Text *const text = made("x");
  int const base = baseOf(text);
  text->setText("other");
  EXPECT_EQ(listsBuilt(text), 0);
  EXPECT_EQ(baseOf(text), base);
}

TEST_F(TextFont, AChangeOfFaceOrSizeIsSeenByATextThatUsesAnothersLists) {
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

TEST_F(TextFont, ASizeThatComesOverAConnectionIsSeen) {
  Text *const text = made("x", 15), *const source = made("y", 15);
  source->connect(5, text, 5);
  text->draw(&action);
  source->setSize(18);
  EXPECT_EQ(listsBuilt(text), 127);
  source->setSize(18);
  EXPECT_EQ(listsBuilt(text), 0);
}

TEST_F(TextFont, AnotherContextGetsListsOfItsOwnUnderTheSameNumbers) {
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

TEST_F(TextFont, TheListsOfAFontOutliveTheTextThatBuiltThem) {
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

TEST_F(TextFont, TheListsOfAFontOutliveATextThatTookAnotherFont) {
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

TEST_F(TextFont, AFontThatWentOutOfUseIsBuiltAnew) {
  Text *const text = made("x", 15);
  text->draw(&action);
  text->setSize(16);
  EXPECT_EQ(listsBuilt(text), 127);
  text->setSize(15);
  EXPECT_EQ(listsBuilt(text), 127);
  drop(text);
  EXPECT_EQ(listsBuilt(made("y", 15)), 127);
}

TEST_F(TextFont, UnknownFacesAndSizesFindNoFont) {
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

TEST_F(TextFont, NegativeSizesAreFontsLikeOthers) {
  Text *const last = made("x", -1, Text::HELVETICA_BOLD_OBLIQUE), *const other = made("y", -20, Text::TIMES);
  EXPECT_EQ(listsBuilt(last), 127);
  EXPECT_EQ(listsBuilt(other), 127);
  EXPECT_NE(baseOf(last), baseOf(other));
}

TEST_F(TextFont, ACopyHasListsAndValuesOfItsOwn) {
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

} // namespace
