// The images below the first: each pixel is the mean of four of the image above, a box filter.

#include <stdio.h>

#include "oz/ozTexture.h"

namespace {

struct Level {
  int width, height;
  unsigned char const *pixels;
};

// Returns whether the steps through `from` came out as the pixels of `to`.
bool halve(Level const &from, int components, int width, int height, unsigned char *to) {
  int const stepX = from.width / width, stepY = from.height / height;
  size_t const row = static_cast<size_t>(from.width) * components;
  int columns = 0, rows = 0;
  for (int y = 0; y < from.height; y += stepY, ++rows) {
    unsigned char const *const here = from.pixels + row * y;
    unsigned char const *const below = y == from.height - 1 ? here : here + row;
    columns = 0;
    for (int x = 0; x < from.width; x += stepX, ++columns) {
      if (columns >= width || rows >= height) continue; // a size that is no power of two takes more steps
      int const left = x * components, right = x == from.width - 1 ? left : left + components;
      unsigned char *const out = to + (static_cast<size_t>(rows) * width + columns) * components;
      for (int i = 0; i < components; ++i)
        out[i] =
            static_cast<unsigned char>((here[left + i] + here[right + i] + below[left + i] + below[right + i]) / 4);
    }
  }
  return columns == width && rows == height;
}

} // namespace

void ozTexture::createMipMaps() {
  ozImage *const source = getImage(0);
  if (!source) return;
  if (source->isLoadPending()) source->load();
  int const components = source->getMemoryFormatHack() + 1;
  Level above = {source->getWidth(), source->getHeight(), source->pixels()->edit()};
  if (components < 1 || components > 4 || above.width < 1 || above.height < 1) return;
  // The source is read as bytes, whatever its type says.
  size_t const row = static_cast<size_t>(above.width) * components;
  if (static_cast<size_t>(above.height) > source->pixels()->getCount() / row) return;

  for (unsigned int level = 1; above.width > 1 || above.height > 1; ++level) {
    int const width = above.width > 1 ? above.width / 2 : 1;
    int const height = above.height > 1 ? above.height / 2 : 1;
    ozImage *const image = new ozImage;
    if (!image) return;
    image->setWidth(width);
    image->setHeight(height);
    image->setMemoryFormatHack(components - 1);
    image->setMemoryType(ozImage::UNSIGNED_BYTE);
    image->pixels()->setCount(static_cast<unsigned int>(width) * height * components);
    unsigned char *const pixels = image->pixels()->edit();
    if (image->pixels()->getSize() < image->pixels()->getCount()) {
      image->unref();
      return;
    }
    if (!halve(above, components, width, height, pixels)) fputs("Read/generation size mismatch\n", stderr);
    image->pixels()->editDone();
    imageLevel()->set(level, image);
    above = {width, height, pixels};
  }
}
