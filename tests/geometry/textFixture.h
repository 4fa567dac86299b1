#ifndef TESTS_GEOMETRY_TEXT_FIXTURE_H
#define TESTS_GEOMETRY_TEXT_FIXTURE_H

#include "geometry/geometryFixture.h"
#include "support/fonts.h"

#include <algorithm>

typedef ozScreenAlignedText Text;

/// A test that draws texts in a fresh context; whether there is a font makes no difference to it.
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

/// A test that needs a font, whichever it is.
class TextFont : public TextDraw {
protected:
  void SetUp() override {
    TextDraw::SetUp();
    SKIP_WITHOUT_FONT();
  }
};

#endif
