#include "support/goldenImage.h"
#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace {

Image const nothing;

// White where a channel is off by more than the tolerance, black elsewhere.
Image difference(Image const &a, Image const &b, int tolerance) {
  Image result(a.width(), a.height(), {0, 0, 0, 255});
  for (int y = 0; y < a.height(); y++)
    for (int x = 0; x < a.width(); x++) {
      Image::Pixel const p = a.at(x, y), q = b.at(x, y);
      auto near = [=](int m, int n) { return std::abs(m - n) <= tolerance; };
      if (!std::equal(p.begin(), p.end(), q.begin(), near)) result.set(x, y, {255, 255, 255, 255});
    }
  return result;
}

::testing::AssertionResult fail(Image const &actual, Image const &diff, std::string const &stem) {
  std::error_code ignored;
  std::filesystem::create_directories(std::filesystem::path(stem).parent_path(), ignored);
  actual.writePng(stem + ".actual.png");
  if (!diff.empty()) diff.writePng(stem + ".difference.png");
  return ::testing::AssertionFailure() << "see " << std::filesystem::absolute(stem).string() << ".actual.png: ";
}

} // namespace

::testing::AssertionResult matchesImageFile(Image const &image, std::string const &path, std::string const &stem,
                                            GoldenTolerance tolerance) {
  char const *update = std::getenv("OZ_UPDATE_GOLDEN");
  if (update && std::string(update) == "1") {
    if (image.writePng(path)) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "cannot write " << path;
  }
  Image const golden = Image::readPng(path);
  if (golden.empty()) return fail(image, nothing, stem) << "there is no golden image " << path;
  if (golden.width() != image.width() || golden.height() != image.height())
    return fail(image, nothing, stem) << "size " << image.width() << "x" << image.height() << ", golden "
                                      << golden.width() << "x" << golden.height();
  Image const diff = difference(image, golden, tolerance.channel);
  int const off = diff.count({255, 255, 255, 255});
  if (off <= tolerance.share * image.width() * image.height()) return ::testing::AssertionSuccess();
  return fail(image, diff, stem) << off << " pixels of " << image.width() * image.height() << " are off by more than "
                                 << tolerance.channel;
}

::testing::AssertionResult matchesGolden(Image const &image, std::string const &name, GoldenTolerance tolerance) {
  return matchesImageFile(image, OZ_SOURCE_DIR "/tests/golden/" + name + ".png", "golden-failures/" + name, tolerance);
}
