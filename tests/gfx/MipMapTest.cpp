#include "contextProbe.h"
#include "imageFixture.h"
#include "support/capture.h"
#include "support/glRecorder.h"

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

namespace {

std::vector<std::pair<int, int>> sizes(ozTexture &texture) {
  std::vector<std::pair<int, int>> all;
  for (unsigned int i = 0; i < texture.imageLevel()->getCount(); ++i)
    all.emplace_back(levelOf(texture, i)->getWidth(), levelOf(texture, i)->getHeight());
  return all;
}

typedef std::vector<std::pair<int, int>> Sizes;

} // namespace

TEST_F(ContextTest, BuildsTheLevelsAtTheFirstDrawAndNeverAgain) {
  ozTexture texture(true);
  texture.imageLevel()->append(makeImage(4, 2, ozImage::RGB));
  GLRecorder rec;
  texture.draw(context);
  EXPECT_EQ(sizes(texture), (Sizes{{4, 2}, {2, 1}, {1, 1}}));
  EXPECT_EQ(rec.count("glTexImage2D"), 3);
  EXPECT_EQ(rec.count("glTexImage2D(GL_TEXTURE_2D, 2, GL_RGB5, 1, 1, 0, GL_RGB, GL_UNSIGNED_BYTE, ptr)"), 1);
  ozImage *const level = levelOf(texture, 1);
  rec.clear();
  texture.draw(context);
  EXPECT_EQ(rec.count("glTexImage2D"), 0);
  EXPECT_EQ(levelOf(texture, 1), level);
}

TEST(MipMaps, AreTheMeanOfFourPixelsCutOffToAByte) {
  ozTexture texture(false);
  texture.imageLevel()->append(makeImage(4, 2, ozImage::LUMINANCE, {0, 1, 10, 20, 2, 4, 30, 43}));
  texture.createMipMaps();
  EXPECT_THAT(pixelsOf(levelOf(texture, 1)), ElementsAre(1, 25)); // 7 / 4, 103 / 4
  EXPECT_THAT(pixelsOf(levelOf(texture, 2)), ElementsAre(13));    // (1 + 25 + 1 + 25) / 4
}

TEST(MipMaps, TakeEachComponentByItself) {
  ozTexture texture(false);
  texture.imageLevel()->append(
      makeImage(2, 2, ozImage::RGBA, {0, 100, 200, 255, 4, 100, 200, 255, 8, 100, 0, 255, 12, 100, 0, 255}));
  texture.createMipMaps();
  EXPECT_THAT(pixelsOf(levelOf(texture, 1)), ElementsAre(6, 100, 100, 255));
  EXPECT_EQ(levelOf(texture, 1)->getMemoryFormat(), ozImage::RGBA);
  EXPECT_EQ(levelOf(texture, 1)->getMemoryType(), ozImage::UNSIGNED_BYTE);
}

TEST(MipMaps, GoDownToOnePixelAlsoFromASingleRow) {
  ozTexture texture(false);
  texture.imageLevel()->append(makeImage(8, 1, ozImage::LUMINANCE, {0, 2, 4, 6, 8, 10, 12, 14}));
  texture.createMipMaps();
  EXPECT_EQ(sizes(texture), (Sizes{{8, 1}, {4, 1}, {2, 1}, {1, 1}}));
  EXPECT_THAT(pixelsOf(levelOf(texture, 1)), ElementsAre(1, 5, 9, 13));
}

TEST(MipMaps, NeedNoneForOnePixel) {
  ozTexture texture(false);
  texture.imageLevel()->append(makeImage(1, 1, ozImage::LUMINANCE));
  EXPECT_EQ(stderrOf([&] { texture.createMipMaps(); }), "");
  EXPECT_EQ(texture.imageLevel()->getCount(), 1u);
}

TEST(MipMaps, StayInTheirBuffersAndSaySoOnceALevel) {
  ozTexture texture(false);
  // 5 x 3 makes 2 x 1 (three steps of 2 by one of 3), and that 1 x 1 without a rest.
  texture.imageLevel()->append(
      makeImage(5, 3, ozImage::LUMINANCE, {10, 20, 30, 40, 50, 10, 20, 30, 40, 50, 0, 0, 0, 0, 0}));
  EXPECT_EQ(stderrOf([&] { texture.createMipMaps(); }), "Read/generation size mismatch\n");
  EXPECT_EQ(sizes(texture), (Sizes{{5, 3}, {2, 1}, {1, 1}}));
  EXPECT_THAT(pixelsOf(levelOf(texture, 1)), ElementsAre(15, 35));
  EXPECT_THAT(pixelsOf(levelOf(texture, 2)), ElementsAre(25));
}

TEST(MipMaps, StayInTheirBuffersForEverySmallSize) {
  CaptureStderr errors;
  for (int width = 1; width <= 17; ++width)
    for (int height = 1; height <= 17; ++height) {
      std::vector<unsigned char> const grey(static_cast<size_t>(width) * height * 3, 77);
      ozTexture texture(false);
      texture.imageLevel()->append(makeImage(width, height, ozImage::RGB, grey));
      texture.createMipMaps();
      unsigned int const last = texture.imageLevel()->getCount() - 1;
      EXPECT_EQ(sizes(texture)[last], std::make_pair(1, 1)) << width << " x " << height;
      for (unsigned int level = 1; level <= last; ++level) EXPECT_THAT(pixelsOf(levelOf(texture, level)), Each(77));
    }
}

TEST(MipMaps, ReadTheSourceAsBytesWhateverItsType) {
  ozTexture texture(false);
  ozImage *const image = makeImage(2, 2, ozImage::LUMINANCE, {4, 4, 4, 4});
  image->setMemoryType(ozImage::FLOAT);
  texture.imageLevel()->append(image);
  texture.createMipMaps();
  EXPECT_THAT(pixelsOf(levelOf(texture, 1)), ElementsAre(4));
}

TEST(MipMaps, AreNotMadeOfWhatIsNotThere) {
  ozTexture texture(false);
  texture.createMipMaps();
  EXPECT_EQ(texture.imageLevel()->getCount(), 0u);
  texture.imageLevel()->setCount(1);
  texture.createMipMaps();
  EXPECT_EQ(texture.imageLevel()->getCount(), 1u);
  ozImage *const image = makeImage(4, 4, ozImage::RGB);
  texture.imageLevel()->set(0, image);
  image->setMemoryFormatHack(9);
  texture.createMipMaps();
  image->setMemoryFormat(ozImage::RGBA); // a quarter of the pixels is missing
  texture.createMipMaps();
  image->setMemoryFormat(ozImage::RGB);
  image->setHeight(0x7fffffff);
  texture.createMipMaps();
  image->setWidth(-4);
  texture.createMipMaps();
  EXPECT_EQ(texture.imageLevel()->getCount(), 1u);
}

TEST(MipMaps, AreDroppedByAnotherFilterAndBuiltAnew) {
  ozTexture texture(false);
  texture.imageLevel()->append(makeImage(4, 4, ozImage::RGB));
  texture.createMipMaps();
  ozImage *const level = levelOf(texture, 1);
  level->ref();
  EXPECT_EQ(level->getParentCount(), 1);
  texture.setMinFilter(ozTexture::LINEAR_MIN);
  EXPECT_EQ(texture.imageLevel()->getCount(), 1u);
  EXPECT_EQ(level->getParentCount(), 0);
  EXPECT_EQ(level->getRefCount(), 1u);
  level->unref();
  texture.setMinFilter(ozTexture::MIPMAP);
  EXPECT_EQ(texture.imageLevel()->getCount(), 3u);
}

TEST(MipMaps, AreNotThereToBeDroppedWithoutALevel) {
  ozTexture texture(false);
  texture.setMinFilter(ozTexture::LINEAR_MIN);
  EXPECT_EQ(texture.imageLevel()->getCount(), 0u);
}
