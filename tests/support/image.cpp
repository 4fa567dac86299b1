#include "support/image.h"
#include <algorithm>
#include <cstdlib>
#include <png.h>

Image::Image(int width, int height, Pixel fill) : _width(width), _height(height), _bytes(size_t(width) * height * 4) {
  for (int y = 0; y < height; y++)
    for (int x = 0; x < width; x++) set(x, y, fill);
}

Image::Pixel Image::at(int x, int y) const {
  unsigned char const *from = row(y) + size_t(x) * 4;
  return {from[0], from[1], from[2], from[3]};
}

void Image::set(int x, int y, Pixel pixel) { std::copy(pixel.begin(), pixel.end(), row(y) + size_t(x) * 4); }

void Image::flip() {
  for (int y = 0; y < _height / 2; y++) std::swap_ranges(row(y), row(y + 1), row(_height - 1 - y));
}

int Image::count(Pixel wanted, int tolerance) const {
  int found = 0;
  for (int y = 0; y < _height; y++)
    for (int x = 0; x < _width; x++) {
      Pixel here = at(x, y);
      found += std::equal(here.begin(), here.end(), wanted.begin(),
                          [=](int a, int b) { return std::abs(a - b) <= tolerance; });
    }
  return found;
}

Image Image::readPng(std::string const &path) {
  png_image png = {};
  png.version = PNG_IMAGE_VERSION;
  if (!png_image_begin_read_from_file(&png, path.c_str())) return Image();
  png.format = PNG_FORMAT_RGBA;
  Image image(png.width, png.height);
  return png_image_finish_read(&png, nullptr, image.row(0), 0, nullptr) ? image : Image();
}

bool Image::writePng(std::string const &path) const {
  png_image png = {};
  png.version = PNG_IMAGE_VERSION;
  png.width = _width;
  png.height = _height;
  png.format = PNG_FORMAT_RGBA;
  return png_image_write_to_file(&png, path.c_str(), 0, _bytes.data(), 0, nullptr);
}
