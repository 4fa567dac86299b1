#include "Picture.h"
#include <GL/gl.h>
#include <cerrno>
#include <cstdio>
#include <cstring>
#ifdef OZVIEW_HAVE_PNG
#include <png.h>
#endif

void Picture::addFrame() {
  std::vector<unsigned char> pixels(_sums.size());
  glPixelStorei(GL_PACK_ALIGNMENT, 1);
  glReadPixels(0, 0, _width, _height, GL_RGB, GL_UNSIGNED_BYTE, pixels.data());
  for (size_t i = 0; i < pixels.size(); i++) _sums[i] = static_cast<unsigned short>(_sums[i] + pixels[i]);
  _frames++;
}

#ifdef OZVIEW_HAVE_PNG

bool Picture::write(std::string const &file, std::string &reason) const {
  std::vector<unsigned char> pixels(_sums.size());
  for (size_t i = 0; i < pixels.size(); i++) pixels[i] = static_cast<unsigned char>((_sums[i] + _frames / 2) / _frames);

  FILE *const out = fopen(file.c_str(), "wb");
  if (!out) {
    reason = strerror(errno);
    return false;
  }
  png_image png = {};
  png.version = PNG_IMAGE_VERSION;
  png.width = static_cast<png_uint_32>(_width);
  png.height = static_cast<png_uint_32>(_height);
  png.format = PNG_FORMAT_RGB;
  // A negative stride: the last row in memory is the top one.
  bool const good = png_image_write_to_stdio(&png, out, 0, pixels.data(), -_width * 3, nullptr);
  reason = png.message;
  if (fclose(out) == 0 && good) return true;
  if (good) reason = strerror(errno);
  return false;
}

#else

bool Picture::write(std::string const &, std::string &reason) const {
  reason = "this program was built without PNG";
  return false;
}

#endif
