// Pictures of texts. What holds for any font is compared to the pixel.

#include "geometry/textFixture.h"
#include "platform/ozFontRecord.h"
#include "support/goldenImage.h"

#include <memory>

namespace {

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

class TextPixels : public TextFont {
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

// Sets the bits of the glyphs one after the other, from a pixel of a picture of 200 x 200 on.
Image composed(std::string const &text, ozFontRecord &font, int x, int y) {
  Image image(200, 200, {0, 0, 0, 255});
  for (char const c : text) {
    ozFontRecord::Glyph const glyph = font.glyph(static_cast<unsigned char>(c));
    for (int row = 0; row < glyph.height; ++row)
      for (int i = 0; i < glyph.width; ++i) {
        bool const isSet = glyph.bits[row * ((glyph.width + 7) / 8) + i / 8] & 0x80 >> i % 8;
        int const column = x + glyph.left + i, line = 199 - (y + glyph.bottom + row);
        if (isSet && column >= 0 && column < 200 && line >= 0 && line < 200)
          image.set(column, line, {255, 255, 255, 255});
      }
    x += glyph.advance;
  }
  return image;
}

TEST_F(TextPixels, AreTheGlyphsOfTheFaceOneAfterTheOther) {
  struct {
    int face, weight, italic, family;
  } const rows[] = {{Text::TIMES, 400, 0, 0x10},          {Text::TIMES_ITALIC, 400, 1, 0x10},
                    {Text::TIMES_BOLD, 700, 0, 0x10},     {Text::TIMES_BOLD_ITALIC, 700, 1, 0x10},
                    {Text::HELVETICA, 400, 0, 0x20},      {Text::HELVETICA_OBLIQUE, 400, 1, 0x20},
                    {Text::HELVETICA_BOLD, 700, 0, 0x20}, {Text::HELVETICA_BOLD_OBLIQUE, 700, 1, 0x20}};
  for (auto const &row : rows)
    for (int size : {12, 31}) {
      Text *const text = made("Rag, jump!~", size, row.face);
      text->setPosition(-0.5f, 0.25f, 0); // 50 from the left, 125 from the bottom
      std::unique_ptr<ozFontRecord> const font(ozFontRecord::create(size, row.weight, row.italic, row.family));
      ASSERT_TRUE(font);
      Image const image = shown(text), expected = composed("Rag, jump!~", *font, 50, 125);
      int different = 0;
      for (int y = 0; y < 200; ++y)
        for (int x = 0; x < 200; ++x) different += image.at(x, y)[0] != expected.at(x, y)[0];
      EXPECT_EQ(different, 0) << row.face << ' ' << size;
    }
}

TEST_F(TextPixels, ControlCharactersAndBytesFrom127OnTakeNoRoom) {
  Image const plain = shown(made("ab", 40)), image = shown(made("\ta\n\x7f\x80\xff"
                                                                "b\xc3\xa4",
                                                                40));
  for (int y = 0; y < 200; ++y)
    for (int x = 0; x < 200; ++x) ASSERT_EQ(image.at(x, y), plain.at(x, y)) << x << ' ' << y;
}

TEST_F(TextPixels, EachFaceLooksDifferent) {
  SKIP_WITH_ONE_FAMILY();
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

// Every font has a picture of its own: this one is that of the package which scripts/setup.sh installs.
TEST_F(TextPixels, OfLabelsInFrontOfABoxBehindItAndBesideIt) {
  if (fontFile("sans-serif") != "DejaVuSans.ttf" || fontFile("sans-serif", true) != "DejaVuSans-Bold.ttf" ||
      fontFile("serif") != "DejaVuSerif.ttf" || fontFile("serif", true) != "DejaVuSerif-Bold.ttf")
    GTEST_SKIP() << "SKIPPED: the golden image is of DejaVu, the fonts here are " << fontFile("sans-serif") << " and "
                 << fontFile("serif");
  OffscreenContext wide(360, 240);
  action.setContext(wide.context);
  Held<ozPerspCamera> camera(new ozPerspCamera);
  camera->setPosition(0, 0, 8);
  camera->setNearClip(1);
  camera->setFarClip(20);
  camera->setHorizFOV(0.72f);
  camera->setVertFOV(0.48f);
  action.setCamera(camera.get());

  Held<ozGroup> root(new ozGroup);
  ozAppearance *const appearance = new ozAppearance;
  ozMaterial *const material = new ozMaterial;
  material->setDiffuseColor(0.2f, 0.4f, 0.7f);
  appearance->setMaterial(material);
  appearance->setLightEnable(1);
  ozShape *const solid = new ozShape, *const labels = new ozShape;
  solid->setAppearance(appearance);
  solid->addGeometry(new ozBox);
  ozTransform *const turned = new ozTransform;
  turned->setRotation(0.6f, 0.8f, 0, 0.7f);
  turned->setTranslation(-1.4f, 0, 0);
  turned->addChild(solid);
  root->addChild(new ozDirectionalLight);
  root->addChild(turned);
  root->addChild(labels);

  auto const label = [&](char const *string, ozVec3f const &place, ozVec3f const &color, int size, int face) {
    Text *const text = new Text;
    text->setText(string);
    text->setPosition(place[0], place[1], place[2]);
    text->setColor(color[0], color[1], color[2], 1);
    text->setSize(size);
    text->setFace(face);
    labels->addGeometry(text);
  };
  ozVec3f const yellow(1, 0.9f, 0.3f), white(1, 1, 1);
  label("in front", ozVec3f(-2, 0, 2), yellow, 18, Text::HELVETICA_BOLD);
  label("behind it, far off to the right", ozVec3f(-2.3f, 1.3f, -2), yellow, 18, Text::HELVETICA);
  label("inside", ozVec3f(-1.4f, -0.5f, 0), yellow, 18, Text::HELVETICA); // not to be seen
  label("Times", ozVec3f(0.4f, 0.3f, 0), white, 28, Text::TIMES);
  label("Times bold", ozVec3f(0.4f, -0.2f, 0), white, 28, Text::TIMES_BOLD);
  label("Helvetica", ozVec3f(0.4f, -0.7f, 0), white, 28, Text::HELVETICA);
  label("Helvetica bold", ozVec3f(0.4f, -1.2f, 0), white, 20, Text::HELVETICA_BOLD);
  label("small: 0123456789 (}~", ozVec3f(0.4f, -1.6f, 0), white, 12, Text::HELVETICA);

  wide->setViewport(0, 0, 360, 240);
  wide->setDepthEnable(1);
  camera->draw(&action);
  wide->clear(ozContext::CLEAR_COLOR | ozContext::CLEAR_DEPTH, 0.1f, 0.1f, 0.25f, 1);
  action.apply(root.get());
  EXPECT_GOLDEN(wide.pixels(), "screen_text", {8, 0.01});
}

} // namespace
