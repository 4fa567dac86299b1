// What a text does where no font is installed. Fontconfig reads its configuration once a process.

#include "geometry/geometryFixture.h"

#include <cstdio>
#include <stdlib.h>

namespace {

class NoFont : public DrawTest {
protected:
  static void SetUpTestSuite() {
    FILE *const file = fopen("no-fonts.conf", "w");
    fputs("<?xml version=\"1.0\"?>\n<fontconfig></fontconfig>\n", file);
    fclose(file);
    setenv("FONTCONFIG_FILE", "no-fonts.conf", 1);
    setenv("FONTCONFIG_PATH", ".", 1);
  }
};

TEST_F(NoFont, TheTextCallGoesOnWithListsThatDoNotExist) {
  int const base = ozContext::newId(1) + 1; // the text's, if it is the next to take some
  Held<ozScreenAlignedText> text(new ozScreenAlignedText);
  text->setText("abc");
  GLRecorder rec;
  text->draw(&action);
  EXPECT_EQ(rec.count("glDeleteLists(" + std::to_string(base) + ", 127)"), 1);
  EXPECT_EQ(rec.count("glNewList"), 0);
  EXPECT_EQ(rec.count("glListBase(" + std::to_string(base) + ")"), 1);
  EXPECT_EQ(rec.count("glCallLists(3, GL_UNSIGNED_BYTE, 97, 98, 99)"), 1);
  EXPECT_EQ(rec.texts().back(), "glColor4f(1, 1, 1, 1)");
}

TEST_F(NoFont, TheNextDirtyDrawTriesAgain) {
  Held<ozScreenAlignedText> text(new ozScreenAlignedText);
  text->setText("abc");
  text->draw(&action);
  {
    GLRecorder rec;
    text->draw(&action);
    EXPECT_EQ(rec.count("glDeleteLists"), 0); // nothing has changed
  }
  text->setText("def");
  GLRecorder rec;
  text->draw(&action);
  EXPECT_EQ(rec.count("glDeleteLists"), 1);
}

TEST_F(NoFont, AnotherTextOfThatFontTriesForItself) {
  Held<ozScreenAlignedText> first(new ozScreenAlignedText), second(new ozScreenAlignedText);
  first->draw(&action);
  GLRecorder rec;
  second->draw(&action);
  EXPECT_EQ(rec.count("glDeleteLists"), 1);
}

} // namespace
