#include "support/goldenImage.h"
#include "support/offscreen.h"
#include <cstdlib>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

Image::Pixel const red = {255, 0, 0, 255}, blue = {0, 0, 255, 255};

class GoldenImage : public ::testing::Test {
protected:
  void SetUp() override {
    char pattern[] = "/tmp/goldenXXXXXX";
    ASSERT_NE(mkdtemp(pattern), nullptr);
    folder = pattern;
    golden = folder + "/golden.png";
    stem = folder + "/failures/picture";
    unsetenv("OZ_UPDATE_GOLDEN");
    ASSERT_TRUE(Image(100, 10, red).writePng(golden));
  }
  void TearDown() override { fs::remove_all(folder); }

  ::testing::AssertionResult compare(Image const &image) { return matchesImageFile(image, golden, stem, {8, 0.005}); }

  std::string folder, golden, stem;
};

} // namespace

TEST(Image, IsTheSameAfterWritingAndReading) {
  Image image(3, 2, blue);
  image.set(2, 0, {1, 2, 3, 4});
  std::string const path = ::testing::TempDir() + "roundtrip.png";
  ASSERT_TRUE(image.writePng(path));
  Image const read = Image::readPng(path);
  ASSERT_EQ(read.width(), 3);
  ASSERT_EQ(read.height(), 2);
  EXPECT_EQ(read.at(2, 0), (Image::Pixel{1, 2, 3, 4}));
  EXPECT_EQ(read.count(blue), 5);
  fs::remove(path);
}

TEST(Image, IsEmptyWhenTheFileIsNoPng) {
  EXPECT_TRUE(Image::readPng("/nonexistent.png").empty());
  EXPECT_TRUE(Image::readPng(__FILE__).empty());
}

TEST(Image, FlipsItsRows) {
  Image image(1, 3, red);
  image.set(0, 0, blue);
  image.flip();
  EXPECT_EQ(image.at(0, 2), blue);
  EXPECT_EQ(image.at(0, 0), red);
}

TEST(Image, CountsPixelsWithinATolerance) {
  Image image(4, 1, {100, 100, 100, 255});
  image.set(0, 0, {103, 100, 100, 255});
  EXPECT_EQ(image.count({100, 100, 100, 255}), 3);
  EXPECT_EQ(image.count({100, 100, 100, 255}, 3), 4);
}

TEST_F(GoldenImage, MatchesItself) { EXPECT_TRUE(compare(Image(100, 10, red))); }

TEST_F(GoldenImage, MatchesWithinTheChannelTolerance) {
  EXPECT_TRUE(compare(Image(100, 10, {247, 8, 0, 255})));
  EXPECT_FALSE(compare(Image(100, 10, {246, 0, 0, 255})));
}

TEST_F(GoldenImage, MatchesUpToTheShareOfPixels) {
  Image image(100, 10, red);
  for (int x = 0; x < 5; x++) image.set(x, 0, blue);
  EXPECT_TRUE(compare(image));
  image.set(5, 0, blue);
  EXPECT_FALSE(compare(image));
}

TEST_F(GoldenImage, FailsOnAnotherSize) { EXPECT_FALSE(compare(Image(10, 100, red))); }

TEST_F(GoldenImage, FailsWithoutAGoldenImage) {
  fs::remove(golden);
  EXPECT_FALSE(compare(Image(100, 10, red)));
  EXPECT_FALSE(fs::exists(golden));
}

TEST_F(GoldenImage, LeavesActualAndDifferenceImagesOnFailure) {
  Image image(100, 10, red);
  for (int x = 20; x < 30; x++) image.set(x, 4, blue);
  EXPECT_FALSE(compare(image));
  EXPECT_EQ(Image::readPng(stem + ".actual.png").at(20, 4), blue);
  Image const diff = Image::readPng(stem + ".difference.png");
  EXPECT_EQ(diff.count({255, 255, 255, 255}), 10);
  EXPECT_EQ(diff.at(25, 4), (Image::Pixel{255, 255, 255, 255}));
}

TEST_F(GoldenImage, IsRewrittenWhenAskedFor) {
  setenv("OZ_UPDATE_GOLDEN", "1", 1);
  EXPECT_TRUE(compare(Image(7, 5, blue)));
  unsetenv("OZ_UPDATE_GOLDEN");
  EXPECT_EQ(Image::readPng(golden).count(blue), 35);
}

class GoldenImageOffscreen : public OffscreenTest {};

TEST_F(GoldenImageOffscreen, MatchesADrawnTriangle) {
  glClear(GL_COLOR_BUFFER_BIT);
  glBegin(GL_TRIANGLES);
  glColor3f(1, 0, 0);
  glVertex2f(-0.75f, -0.75f);
  glColor3f(0, 1, 0);
  glVertex2f(0.75f, -0.75f);
  glColor3f(0, 0, 1);
  glVertex2f(0, 0.75f);
  glEnd();
  EXPECT_GOLDEN(gl.pixels(), "platform_triangle");
}
