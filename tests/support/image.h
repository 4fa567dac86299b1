#ifndef TESTS_SUPPORT_IMAGE_H
#define TESTS_SUPPORT_IMAGE_H

#include <array>
#include <string>
#include <vector>

/// RGBA pixels with 8 bits each, top row first.
class Image {
public:
  typedef std::array<unsigned char, 4> Pixel;

  Image() : Image(0, 0) {}
  Image(int width, int height, Pixel fill = {0, 0, 0, 0});

  int width() const { return _width; }
  int height() const { return _height; }
  bool empty() const { return _bytes.empty(); }

  /// x runs to the right, y down.
  Pixel at(int x, int y) const;
  void set(int x, int y, Pixel);

  /// The bytes of a row and of those below it.
  unsigned char *row(int y) { return _bytes.data() + size_t(y) * _width * 4; }
  unsigned char const *row(int y) const { return const_cast<Image *>(this)->row(y); }

  /// Turns the image upside down.
  void flip();

  /// How many pixels have this colour, with each channel at most tolerance off.
  int count(Pixel, int tolerance = 0) const;

  /// An empty image when there is no such file or it is no PNG.
  static Image readPng(std::string const &path);
  bool writePng(std::string const &path) const;

private:
  int _width, _height;
  std::vector<unsigned char> _bytes;
};

#endif
