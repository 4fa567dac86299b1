#include "contextProbe.h"
#include "imageFixture.h"
#include "support/capture.h"
#include "support/glRecorder.h"
#include <cstdio>

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

// Hears what an image tells its parents.
struct Listener : ozTexture {
  Listener() : ozTexture(false) {}
  void childChanged(ozContainer *child, short id) override {
    heard.push_back(id);
    ozTexture::childChanged(child, id);
  }
  std::vector<int> heard;
};

} // namespace

TEST(Image, HasDefaults) {
  ozImage image;
  ozString name;
  image.getFileName(name);
  EXPECT_STREQ(name.getString(), "noName");
  EXPECT_EQ(image.getWidth(), 0);
  EXPECT_EQ(image.getHeight(), 0);
  EXPECT_EQ(image.getMemoryFormat(), ozImage::RGB);
  EXPECT_EQ(image.getMemoryType(), ozImage::UNSIGNED_BYTE);
  EXPECT_EQ(image.pixels()->getCount(), 0u);
  EXPECT_EQ(image.isLoadPending(), 0);
}

TEST(Image, HasItsFieldsInOrder) {
  ozImage image;
  static char const *const names[] = {"fileName", "width", "height", "memoryFormat", "memoryType", "pixels"};
  for (int id = 0; id < 6; ++id) EXPECT_EQ(image.getField(names[id]), image.getField(id)) << names[id];
  static char const *const formats[] = {"LUMINANCE", "LUMINANCE_ALPHA", "RGB", "RGBA"};
  for (int i = 0; i < 4; ++i) EXPECT_STREQ(ozImage::getClassType()->mapEnum(3, i), formats[i]);
  static char const *const types[] = {"BYTE",         "UNSIGNED_BYTE", "SHORT",     "UNSIGNED_SHORT", "INT",
                                      "UNSIGNED_INT", "FLOAT",         "TWO_BYTES", "THREE_BYTES",    "FOUR_BYTES"};
  for (int i = 0; i < 10; ++i) EXPECT_STREQ(ozImage::getClassType()->mapEnum(4, i), types[i]);
}

TEST(Image, TellsItsTexturesOneNumberForEveryChange) {
  Listener texture;
  ozImage *const image = new ozImage;
  texture.imageLevel()->append(image);
  image->setFileName("none such");
  image->setWidth(1);
  image->setHeight(1);
  image->setMemoryFormat(ozImage::RGBA);
  image->setMemoryType(ozImage::FLOAT);
  image->pixels()->set(image->pixels()->getCount(), 7);
  EXPECT_THAT(texture.heard, ElementsAre(3, 3, 3, 3, 3, 3));
}

TEST(Image, DoesNotTellConnectedFields) {
  ozImage from, to;
  from.getField(1)->connect(to.getField(1));
  to.cleanFields();
  from.setWidth(9);
  EXPECT_EQ(to.getWidth(), 0);
}

TEST(Image, AwaitsLoadingAfterAFileNameIsSet) {
  ozImage image;
  image.setFileName("none such");
  EXPECT_EQ(image.isLoadPending(), 1);
}

TEST(Image, AwaitsAFileThatIsNotThereInSilence) {
  ozImage image;
  image.setFileName("none such");
  EXPECT_EQ(stderrOf([&] { EXPECT_EQ(image.load(), 0); }), "");
  EXPECT_EQ(image.isLoadPending(), 1);
}

TEST(Image, LoadsNothingWithoutAName) {
  ozImage image;
  image.setFileName(ozString());
  EXPECT_EQ(stderrOf([&] { EXPECT_EQ(image.load(), 0); }), "");
  image.setFileName("");
  EXPECT_EQ(stderrOf([&] { EXPECT_EQ(image.load(), 0); }), "");
}

TEST(Image, SaysOnceThatAFileIsNoPicture) {
  std::FILE *const file = std::fopen("noPicture.txt", "w");
  std::fputs("no picture", file);
  std::fclose(file);
  ozImage image;
  image.setFileName("noPicture.txt");
  EXPECT_EQ(stderrOf([&] { EXPECT_EQ(image.load(), 0); }),
            "ozImage::load() Could not read texture image noPicture.txt.");
  EXPECT_EQ(image.isLoadPending(), 0);
  EXPECT_EQ(image.getWidth(), 0);
  std::remove("noPicture.txt");
}

TEST_F(ContextTest, DrawsAnImageAcrossTheViewport) {
  ozImage *const image = makeImage(2, 3, ozImage::LUMINANCE_ALPHA);
  GLRecorder rec;
  image->draw(0.5f, 0.25f, 0.5f);
  std::vector<std::string> const calls = rec.texts();
  EXPECT_THAT(calls, ElementsAre("glMatrixMode(GL_MODELVIEW)", "glPushMatrix()", "glLoadIdentity()",
                                 "glMatrixMode(GL_PROJECTION)", "glPushMatrix()", "glLoadIdentity()",
                                 "glOrtho(-0.5, 0.5, -0.5, 0.5, -0.5, 0.5)", "glRasterPos3f(0, -0.25, 0)",
                                 "glGetIntegerv(GL_UNPACK_ALIGNMENT, ptr)", "glPixelStorei(GL_UNPACK_ALIGNMENT, 1)",
                                 "glDrawPixels(2, 3, GL_LUMINANCE_ALPHA, GL_UNSIGNED_BYTE, ptr)",
                                 "glPixelStorei(GL_UNPACK_ALIGNMENT, 4)", "glPopMatrix()", "glMatrixMode(GL_MODELVIEW)",
                                 "glPopMatrix()"));
  image->unref();
}

TEST_F(ContextTest, DrawsTheRowsOfAnImageFromTheBottomUp) {
  ozImage *const image = makeImage(3, 2, ozImage::RGB, {255, 0, 0, 0, 255, 0, 0, 0, 255, 9, 9, 9, 8, 8, 8, 7, 7, 7});
  context->clear(1);
  image->draw(0.25f, 0.25f, 0.5f);
  Image const seen = gl.pixels();
  EXPECT_EQ(seen.at(50, 149), (Image::Pixel{255, 0, 0, 255}));
  EXPECT_EQ(seen.at(51, 149), (Image::Pixel{0, 255, 0, 255}));
  EXPECT_EQ(seen.at(52, 149), (Image::Pixel{0, 0, 255, 255}));
  EXPECT_EQ(seen.at(50, 148), (Image::Pixel{9, 9, 9, 255}));
  EXPECT_EQ(seen.at(52, 148), (Image::Pixel{7, 7, 7, 255}));
  image->unref();
}

TEST_F(ContextTest, DrawsNothingOfAnImageThatIsNotWhole) {
  ozImage *const image = makeImage(2, 2, ozImage::RGB);
  GLRecorder rec;
  auto drawn = [&] {
    rec.clear();
    image->draw(0, 0, 0);
    return rec.calls().size();
  };
  EXPECT_GT(drawn(), 0u);
  image->setWidth(0);
  EXPECT_EQ(drawn(), 0u);
  image->setWidth(-2);
  EXPECT_EQ(drawn(), 0u);
  image->setWidth(2);
  image->setHeight(3);
  EXPECT_EQ(drawn(), 0u);
  image->setWidth(0x7fffffff);
  image->setHeight(0x7fffffff);
  EXPECT_EQ(drawn(), 0u);
  image->setWidth(2);
  image->setHeight(2);
  image->setMemoryType(ozImage::SHORT);
  EXPECT_EQ(drawn(), 0u);
  image->setMemoryTypeHack(10);
  EXPECT_EQ(drawn(), 0u);
  image->setMemoryType(ozImage::BYTE);
  image->setMemoryFormatHack(-1);
  EXPECT_EQ(drawn(), 0u);
  image->setMemoryFormat(ozImage::RGB);
  EXPECT_GT(drawn(), 0u);
  image->unref();
}

TEST(Image, CountsTheBytesOfEachType) {
  static int const bytes[] = {1, 1, 2, 2, 4, 4, 4, 2, 3, 4};
  for (int type = 0; type < 10; ++type) {
    ozImage image;
    image.setWidth(3);
    image.setHeight(2);
    image.setMemoryFormat(ozImage::RGBA);
    image.setMemoryTypeHack(type);
    image.pixels()->setCount(3 * 2 * 4 * bytes[type] - 1);
    EXPECT_FALSE(image.isWhole()) << type;
    image.pixels()->set(image.pixels()->getCount(), 0);
    EXPECT_TRUE(image.isWhole()) << type;
  }
}
