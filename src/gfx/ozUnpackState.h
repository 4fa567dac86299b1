#ifndef OZ_UNPACK_STATE_H
#define OZ_UNPACK_STATE_H

#include <GL/gl.h>

/// Bitmaps and pixels are read as they lie while this lives, rows without a gap; afterwards as before.
class ozUnpackState {
public:
  ozUnpackState() {
    for (int i = 0; i < COUNT; ++i) glGetIntegerv(FIRST + static_cast<GLenum>(i), _before + i);
    for (int i = 0; i < COUNT; ++i) glPixelStorei(FIRST + static_cast<GLenum>(i), i == COUNT - 1);
  }
  ~ozUnpackState() {
    for (int i = 0; i < COUNT; ++i) glPixelStorei(FIRST + static_cast<GLenum>(i), _before[i]);
  }
  ozUnpackState(ozUnpackState const &) = delete;
  ozUnpackState &operator=(ozUnpackState const &) = delete;

private:
  // Six tokens in a row: byte and bit order, row length, skipped rows and pixels, and last the alignment.
  static constexpr GLenum FIRST = GL_UNPACK_SWAP_BYTES;
  enum { COUNT = 6 };
  static_assert(FIRST + COUNT - 1 == GL_UNPACK_ALIGNMENT, "the tokens follow each other");

  GLint _before[COUNT] = {0, 0, 0, 0, 0, 4};
};

#endif
