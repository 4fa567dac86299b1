// Pictures read from files, each written here and read back.

#include "gfx/imageFile.h"
#include "imageFixture.h"
#include "support/capture.h"
#include <cstdio>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <jpeglib.h>
#include <png.h>
#include <string>
#include <zlib.h>

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

namespace {

std::string const path = "picture.bin";

void writeBytes(std::string const &bytes) {
  std::FILE *const file = std::fopen(path.c_str(), "wb");
  std::fwrite(bytes.data(), 1, bytes.size(), file);
  std::fclose(file);
}

std::string readBytes() {
  std::string bytes;
  std::FILE *const file = std::fopen(path.c_str(), "rb");
  for (int c; (c = std::fgetc(file)) != EOF;) bytes += static_cast<char>(c);
  std::fclose(file);
  return bytes;
}

class ImageFile : public ::testing::Test {
protected:
  ~ImageFile() override { std::remove(path.c_str()); }

  // Rows from the top, as they stand in the file.
  void writePng(int width, int height, int type, int depth, std::vector<unsigned char> const &rows,
                std::vector<png_color> const &palette = {}, std::vector<unsigned char> alpha = {}) {
    std::FILE *const file = std::fopen(path.c_str(), "wb");
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, file);
    png_set_IHDR(png, info, width, height, depth, type, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    if (!palette.empty()) png_set_PLTE(png, info, palette.data(), static_cast<int>(palette.size()));
    if (!alpha.empty()) png_set_tRNS(png, info, alpha.data(), static_cast<int>(alpha.size()), nullptr);
    png_write_info(png, info);
    size_t const stride = rows.size() / height;
    for (int y = 0; y < height; ++y) png_write_row(png, rows.data() + y * stride);
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
    std::fclose(file);
  }

  void writeJpeg(int width, int height, int components, J_COLOR_SPACE space, std::vector<unsigned char> pixels) {
    std::FILE *const file = std::fopen(path.c_str(), "wb");
    jpeg_error_mgr errors;
    jpeg_compress_struct jpeg;
    jpeg.err = jpeg_std_error(&errors);
    jpeg_create_compress(&jpeg);
    jpeg_stdio_dest(&jpeg, file);
    jpeg.image_width = width;
    jpeg.image_height = height;
    jpeg.input_components = components;
    jpeg.in_color_space = space;
    jpeg_set_defaults(&jpeg);
    jpeg_set_quality(&jpeg, 100, TRUE);
    jpeg_start_compress(&jpeg, TRUE);
    for (int y = 0; y < height; ++y) {
      JSAMPROW row = pixels.data() + static_cast<size_t>(y) * width * components;
      jpeg_write_scanlines(&jpeg, &row, 1);
    }
    jpeg_finish_compress(&jpeg);
    jpeg_destroy_compress(&jpeg);
    std::fclose(file);
  }

  int load() {
    image.setFileName(path.c_str());
    return image.load();
  }

  void expectRefused() {
    EXPECT_EQ(stderrOf([&] { EXPECT_EQ(load(), 0); }), "ozImage::load() Could not read texture image " + path + ".");
    EXPECT_EQ(image.isLoadPending(), 0);
    EXPECT_EQ(image.getWidth(), 0);
    EXPECT_EQ(image.pixels()->getCount(), 0u);
  }

  ozImage image;
};

} // namespace

TEST_F(ImageFile, ReadsColoursFromTheBottomRowUp) {
  writePng(2, 2, PNG_COLOR_TYPE_RGB, 8, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
  EXPECT_EQ(stderrOf([&] { EXPECT_EQ(load(), 1); }), "");
  EXPECT_EQ(image.getWidth(), 2);
  EXPECT_EQ(image.getHeight(), 2);
  EXPECT_EQ(image.getMemoryFormat(), ozImage::RGB);
  EXPECT_EQ(image.getMemoryType(), ozImage::UNSIGNED_BYTE);
  EXPECT_THAT(pixelsOf(&image), ElementsAre(7, 8, 9, 10, 11, 12, 1, 2, 3, 4, 5, 6));
  EXPECT_EQ(image.isLoadPending(), 0);
}

TEST_F(ImageFile, ReadsColoursWithAlpha) {
  writePng(1, 2, PNG_COLOR_TYPE_RGB_ALPHA, 8, {1, 2, 3, 4, 5, 6, 7, 200});
  EXPECT_EQ(load(), 1);
  EXPECT_EQ(image.getMemoryFormat(), ozImage::RGBA);
  EXPECT_THAT(pixelsOf(&image), ElementsAre(5, 6, 7, 200, 1, 2, 3, 4));
}

TEST_F(ImageFile, ReadsGrey) {
  writePng(3, 1, PNG_COLOR_TYPE_GRAY, 8, {1, 128, 255});
  EXPECT_EQ(load(), 1);
  EXPECT_EQ(image.getMemoryFormat(), ozImage::LUMINANCE);
  EXPECT_THAT(pixelsOf(&image), ElementsAre(1, 128, 255));
}

TEST_F(ImageFile, ReadsGreyOfASingleBit) {
  writePng(3, 1, PNG_COLOR_TYPE_GRAY, 1, {0xa0});
  EXPECT_EQ(load(), 1);
  EXPECT_THAT(pixelsOf(&image), ElementsAre(255, 0, 255));
}

TEST_F(ImageFile, ReadsGreyWithAlpha) {
  writePng(2, 1, PNG_COLOR_TYPE_GRAY_ALPHA, 8, {1, 2, 3, 4});
  EXPECT_EQ(load(), 1);
  EXPECT_EQ(image.getMemoryFormat(), ozImage::LUMINANCE_ALPHA);
  EXPECT_THAT(pixelsOf(&image), ElementsAre(1, 2, 3, 4));
}

TEST_F(ImageFile, ReadsSixteenBitsAsBytes) {
  writePng(3, 1, PNG_COLOR_TYPE_GRAY, 16, {0, 0, 0x80, 0x80, 0xff, 0xff});
  EXPECT_EQ(load(), 1);
  EXPECT_EQ(image.getMemoryType(), ozImage::UNSIGNED_BYTE);
  EXPECT_THAT(pixelsOf(&image), ElementsAre(0, 128, 255));
}

TEST_F(ImageFile, ReadsAPalette) {
  writePng(2, 1, PNG_COLOR_TYPE_PALETTE, 8, {1, 0}, {{10, 20, 30}, {40, 50, 60}});
  EXPECT_EQ(load(), 1);
  EXPECT_EQ(image.getMemoryFormat(), ozImage::RGB);
  EXPECT_THAT(pixelsOf(&image), ElementsAre(40, 50, 60, 10, 20, 30));
}

TEST_F(ImageFile, ReadsATransparencyChunk) {
  writePng(2, 1, PNG_COLOR_TYPE_PALETTE, 8, {1, 0}, {{10, 20, 30}, {40, 50, 60}}, {0x40});
  EXPECT_EQ(load(), 1);
  EXPECT_EQ(image.getMemoryFormat(), ozImage::RGBA);
  EXPECT_THAT(pixelsOf(&image), ElementsAre(40, 50, 60, 255, 10, 20, 30, 0x40));
}

TEST_F(ImageFile, ReadsAJpeg) {
  std::vector<unsigned char> rows(16 * 16 * 3);
  for (size_t i = 0; i < rows.size(); i += 3) rows[i] = i < rows.size() / 2 ? 255 : 0; // red above black
  writeJpeg(16, 16, 3, JCS_RGB, rows);
  EXPECT_EQ(load(), 1);
  EXPECT_EQ(image.getWidth(), 16);
  EXPECT_EQ(image.getMemoryFormat(), ozImage::RGB);
  EXPECT_NEAR(image.pixels()->get(0), 0, 4); // the bottom row comes first
  EXPECT_NEAR(image.pixels()->get(16 * 16 * 3 - 3), 255, 4);
  EXPECT_NEAR(image.pixels()->get(16 * 16 * 3 - 2), 0, 4);
}

TEST_F(ImageFile, ReadsAGreyJpeg) {
  writeJpeg(8, 8, 1, JCS_GRAYSCALE, std::vector<unsigned char>(64, 100));
  EXPECT_EQ(load(), 1);
  EXPECT_EQ(image.getMemoryFormat(), ozImage::LUMINANCE);
  EXPECT_EQ(image.pixels()->getCount(), 64u);
  EXPECT_NEAR(image.pixels()->get(5), 100, 1);
}

TEST_F(ImageFile, ReadsAJpegOfFourInks) {
  std::vector<unsigned char> inks;
  for (int i = 0; i < 64; ++i) inks.insert(inks.end(), {255, 128, 0, 128}); // how much light each lets through
  writeJpeg(8, 8, 4, JCS_CMYK, inks);
  EXPECT_EQ(load(), 1);
  EXPECT_EQ(image.getMemoryFormat(), ozImage::RGB);
  EXPECT_NEAR(image.pixels()->get(0), 128, 2);
  EXPECT_NEAR(image.pixels()->get(1), 64, 2);
  EXPECT_NEAR(image.pixels()->get(2), 0, 2);
}

TEST_F(ImageFile, RefusesAPngThatEndsEarly) {
  std::vector<unsigned char> noise;
  for (int i = 0; i < 64 * 64; ++i) noise.push_back(static_cast<unsigned char>(i * i * 31 >> 3));
  writePng(64, 64, PNG_COLOR_TYPE_GRAY, 8, noise);
  std::string const whole = readBytes();
  for (size_t n : {size_t(9), size_t(20), size_t(33), whole.size() / 2, whole.size() - 20}) {
    writeBytes(whole.substr(0, n));
    expectRefused();
  }
}

TEST_F(ImageFile, RefusesAJpegThatEndsEarly) {
  std::vector<unsigned char> noise;
  for (int i = 0; i < 64 * 64; ++i) noise.push_back(static_cast<unsigned char>(i * i * 31 >> 3));
  writeJpeg(64, 64, 1, JCS_GRAYSCALE, noise);
  std::string const whole = readBytes();
  for (size_t n : {size_t(4), size_t(30), whole.size() / 2}) {
    writeBytes(whole.substr(0, n));
    expectRefused();
  }
}

TEST_F(ImageFile, RefusesAPngThatIsDamaged) {
  writePng(2, 2, PNG_COLOR_TYPE_RGB, 8, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
  std::string bytes = readBytes();
  bytes[bytes.size() - 20] ^= 0x55; // inside the pixels
  writeBytes(bytes);
  expectRefused();
}

TEST_F(ImageFile, RefusesMorePixelsASideThanItTakes) {
  writePng(16385, 1, PNG_COLOR_TYPE_GRAY, 8, std::vector<unsigned char>(16385));
  expectRefused();
  writePng(16384, 1, PNG_COLOR_TYPE_GRAY, 8, std::vector<unsigned char>(16384, 5));
  EXPECT_EQ(load(), 1);
  EXPECT_EQ(image.getWidth(), 16384);
}

TEST_F(ImageFile, RefusesAHugeClaimAheadOfAnyAllocation) {
  writePng(2, 2, PNG_COLOR_TYPE_RGB, 8, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
  std::string bytes = readBytes();
  std::memcpy(&bytes[16], "\x00\x00\x40\x00\x00\x00\x40\x00", 8); // 16384 x 16384 of three bytes
  unsigned long const sum = crc32(0, reinterpret_cast<Bytef const *>(&bytes[12]), 17);
  for (int i = 0; i < 4; ++i) bytes[29 + i] = static_cast<char>(sum >> (24 - 8 * i));
  writeBytes(bytes);
  expectRefused();
}

TEST_F(ImageFile, SurvivesEveryDamagedByte) {
  std::vector<std::string> files;
  writePng(4, 4, PNG_COLOR_TYPE_PALETTE, 8, std::vector<unsigned char>(16, 1), {{10, 20, 30}, {40, 50, 60}}, {9});
  files.push_back(readBytes());
  writeJpeg(16, 16, 3, JCS_RGB, std::vector<unsigned char>(16 * 16 * 3, 99));
  files.push_back(readBytes());
  for (std::string const &whole : files)
    for (size_t i = 0; i < whole.size(); ++i)
      for (int damage : {0x01, 0x80, 0xff}) {
        std::string bytes = whole;
        bytes[i] = static_cast<char>(bytes[i] ^ damage);
        writeBytes(bytes);
        ozImageFile file;
        if (file.read(path.c_str())) {
          EXPECT_LE(file.size(), size_t(256) << 20);
          EXPECT_NE(file.pixels, nullptr);
        }
      }
}

TEST_F(ImageFile, AllocatesUpToItsLimits) {
  EXPECT_FALSE(ozImageFile().allocate(0, 1, 1));
  EXPECT_FALSE(ozImageFile().allocate(1, 0, 1));
  EXPECT_FALSE(ozImageFile().allocate(1, 16385, 1));
  EXPECT_FALSE(ozImageFile().allocate(16384, 16384, 2));
  EXPECT_FALSE(ozImageFile().allocate(16384, 5462, 3));
  EXPECT_TRUE(ozImageFile().allocate(16384, 5461, 3));
}

TEST_F(ImageFile, RefusesADirectoryAndAnEmptyFile) {
  writeBytes("");
  expectRefused();
  EXPECT_FALSE(ozImageFile().read("."));
}

TEST_F(ImageFile, ShowsAPictureThatIsNamedByItsUrl) {
  writePng(2, 2, PNG_COLOR_TYPE_RGB, 8, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
  ozImageTexture texture;
  texture.url()->set(texture.url()->getCount(), path.c_str());
  ASSERT_EQ(texture.imageLevel()->getCount(), 1u);
  EXPECT_EQ(levelOf(texture, 0)->getWidth(), 2);
  EXPECT_EQ(texture.getComponentCount(), 3);
}
