#include "oz/ozImage.h"

#include <GL/gl.h>
#include <stdio.h>

#include "gfx/imageFile.h"
#include "gfx/ozUnpackAlignment.h"
#include "oz/ozContext.h"
#include "oz/ozGlobal.h"
#include "oz/ozOgl.h"

namespace {

short const PixelsId = 5;
short const ParentsNumber = 3; // what textures are told, whichever field has changed

unsigned int const TypeSizes[] = {1, 1, 2, 2, 4, 4, 4, 2, 3, 4};

} // namespace

OZ_DEFINE_CLASS(ozImage, "Image", ozContainer) {
  ozSFString::addTypeField(type, "fileName", 0, "noName", &ozImage::_fileName);
  ozSFInt::addTypeField(type, "width", 1, 0, &ozImage::_width);
  ozSFInt::addTypeField(type, "height", 2, 0, &ozImage::_height);
  ozSFEnum::addTypeField(type, "memoryFormat", 3, RGB, &ozImage::_memoryFormat);
  static char const *const formatNames[] = {"LUMINANCE", "LUMINANCE_ALPHA", "RGB", "RGBA"};
  static int const formats[] = {LUMINANCE, LUMINANCE_ALPHA, RGB, RGBA};
  type->defineEnums(3, 4, formatNames, formats);
  ozSFEnum::addTypeField(type, "memoryType", 4, UNSIGNED_BYTE, &ozImage::_memoryType);
  static char const *const typeNames[] = {"BYTE",         "UNSIGNED_BYTE", "SHORT",     "UNSIGNED_SHORT", "INT",
                                          "UNSIGNED_INT", "FLOAT",         "TWO_BYTES", "THREE_BYTES",    "FOUR_BYTES"};
  static int const types[] = {BYTE,         UNSIGNED_BYTE, SHORT,     UNSIGNED_SHORT, INT,
                              UNSIGNED_INT, FLOAT,         TWO_BYTES, THREE_BYTES,    FOUR_BYTES};
  type->defineEnums(4, 10, typeNames, types);
  ozMFUByte::addTypeField(type, "pixels", PixelsId, &ozImage::_pixels);
}

// Nothing else happens: a field connected to this one does not hear of the change. Meant.
void ozImage::fieldChanged(short) { notifyParents(ParentsNumber); }

void ozImage::setFileName(ozString const &name) {
  store(0, _fileName, name);
  _loadPending = 1;
}

int ozImage::load() {
  ozString found;
  if (!_fileName || !ozGlobal::findFile(_fileName.getString(), found, ozGlobal::READ_FMODE)) return 0;
  _loadPending = 0;
  ozImageFile file;
  if (!file.read(found.getString())) {
    fprintf(stderr, "ozImage::load() Could not read texture image %s.", _fileName.getString());
    return 0;
  }
  setWidth(static_cast<int>(file.width));
  setHeight(static_cast<int>(file.height));
  setMemoryFormat(static_cast<MemoryFormatEnum>(file.components - 1));
  setMemoryType(UNSIGNED_BYTE);
  pixels()->setCount(static_cast<unsigned int>(file.size()));
  pixels()->setRange(0, static_cast<unsigned int>(file.size()), file.pixels);
  return 1;
}

bool ozImage::isWhole() {
  cleanFields();
  if (_width < 1 || _height < 1) return false;
  if (static_cast<unsigned int>(_memoryFormat) > RGBA || static_cast<unsigned int>(_memoryType) > FOUR_BYTES)
    return false;
  size_t const row =
      static_cast<size_t>(_width) * (static_cast<unsigned int>(_memoryFormat) + 1) * TypeSizes[_memoryType];
  unsigned int const there = _pixels.getCount() < _pixels.getSize() ? _pixels.getCount() : _pixels.getSize();
  return static_cast<unsigned int>(_height) <= there / row;
}

void ozImage::draw(float x, float y, float z) {
  if (_loadPending) load();
  if (!isWhole()) return;
  static GLenum const modes[] = {GL_MODELVIEW, GL_PROJECTION};
  for (GLenum const mode : modes) {
    glMatrixMode(mode);
    glPushMatrix();
    glLoadIdentity();
  }
  glOrtho(-0.5, 0.5, -0.5, 0.5, -0.5, 0.5);
  glRasterPos3f(x - 0.5f, y - 0.5f, z - 0.5f);
  {
    ozUnpackAlignment bytes;
    glDrawPixels(_width, _height, ozOgl::glExternalFormatTokens[_memoryFormat],
                 ozOgl::glExternalTypeTokens[_memoryType], _pixels.getArray());
  }
  glPopMatrix();
  glMatrixMode(GL_MODELVIEW);
  glPopMatrix();
}
