#ifndef OZVIEW_PICTURE_H
#define OZVIEW_PICTURE_H

#include <string>
#include <vector>

/// A picture of opaque pixels, which may be the mean of several frames.
class Picture {
public:
  Picture(int width, int height) : _width(width), _height(height), _frames(0), _sums(size_t(width) * height * 3) {}

  /// Adds the colours of the current read buffer. 256 frames fit.
  void addFrame();

  /// Writes a PNG. On failure, or where this program was built without PNG, `reason` tells why.
  bool write(std::string const &file, std::string &reason) const;

private:
  int _width, _height;
  int _frames;
  std::vector<unsigned short> _sums; // red, green, blue; rows from the bottom to the top
};

#endif
