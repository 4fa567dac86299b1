#ifndef TESTS_GFX_IMAGE_FIXTURE_H
#define TESTS_GFX_IMAGE_FIXTURE_H

#include "oz/ozTexture.h"
#include <initializer_list>
#include <vector>

/// An image of bytes, with all pixels of one value or, with several, those.
inline ozImage *makeImage(int width, int height, ozImage::MemoryFormatEnum format,
                          std::vector<unsigned char> pixels = {}) {
  ozImage *const image = new ozImage;
  image->setWidth(width);
  image->setHeight(height);
  image->setMemoryFormat(format);
  pixels.resize(static_cast<size_t>(width) * height * (format + 1));
  image->pixels()->setRange(0, static_cast<unsigned int>(pixels.size()), pixels.data());
  return image;
}

inline ozImage *levelOf(ozTexture &texture, unsigned int level) {
  return static_cast<ozImage *>(texture.imageLevel()->get(level));
}

inline std::vector<int> pixelsOf(ozImage *image) {
  std::vector<int> pixels;
  for (unsigned int i = 0; i < image->pixels()->getCount(); ++i) pixels.push_back(image->pixels()->get(i));
  return pixels;
}

#endif
