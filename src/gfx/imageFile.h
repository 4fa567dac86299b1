#ifndef IMAGE_FILE_H
#define IMAGE_FILE_H

#include <stddef.h>

#include "oz/ozPlatform.h"

/// The pixels of an image file: unsigned bytes, bottom row first, 1 to 4 components (grey, grey and alpha, RGB, RGBA).
struct OZ_API ozImageFile {
  ozImageFile() = default;
  ozImageFile(ozImageFile const &) = delete;
  ozImageFile &operator=(ozImageFile const &) = delete;
  ~ozImageFile();

  /// Reads a PNG or JPEG file. False for anything else, a damaged file, and one of more than 16,384 pixels a side or
  /// 256 MB; nothing is printed.
  bool read(char const *path);

  size_t size() const { return static_cast<size_t>(width) * height * components; }

  unsigned int width = 0;
  unsigned int height = 0;
  unsigned int components = 0;
  unsigned char *pixels = nullptr; // malloc'ed

  /// For the decoders: makes room; false if the image is too large.
  bool allocate(unsigned int width, unsigned int height, unsigned int components);
};

#endif
