#ifndef OZ_UNPACK_ALIGNMENT_H
#define OZ_UNPACK_ALIGNMENT_H

#include <GL/gl.h>

/// Rows of pixels follow each other without a gap while this lives.
class ozUnpackAlignment {
public:
  ozUnpackAlignment() {
    glGetIntegerv(GL_UNPACK_ALIGNMENT, &_before);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
  }
  ~ozUnpackAlignment() { glPixelStorei(GL_UNPACK_ALIGNMENT, _before); }
  ozUnpackAlignment(ozUnpackAlignment const &) = delete;
  ozUnpackAlignment &operator=(ozUnpackAlignment const &) = delete;

private:
  GLint _before = 4;
};

#endif
