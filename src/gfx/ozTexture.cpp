// A texture object per context, made and filled when the texture is drawn there. The version tells a context whether it
// has this texture's latest state.

#include "oz/ozTexture.h"

#include <GL/gl.h>
#include <stdio.h>

#include "gfx/ozContextItem.h"
#include "gfx/ozUnpackAlignment.h"
#include "oz/ozContext.h"
#include "oz/ozOgl.h"

namespace {

enum FieldId : short { FILE_NAME = 0, IMAGE_LEVEL = 1, FORMAT = 2, MIN_FILTER = 5 };

short const ImageChanged = 3;

char const *const FormatNames[] = {"LUMINANCE",
                                   "LUMINANCE_ALPHA",
                                   "RGB",
                                   "RGBA",
                                   "ALPHA4",
                                   "ALPHA8",
                                   "ALPHA12",
                                   "ALPHA16",
                                   "LUMINANCE4",
                                   "LUMINANCE8",
                                   "LUMINANCE12",
                                   "LUMINANCE16",
                                   "LUMINANCE4_ALPHA4",
                                   "LUMINANCE6_ALPHA2",
                                   "LUMINANCE8_ALPHA8",
                                   "LUMINANCE12_ALPHA4",
                                   "LUMINANCE12_ALPHA12",
                                   "LUMINANCE16_ALPHA16",
                                   "INTENSITY",
                                   "INTENSITY4",
                                   "INTENSITY8",
                                   "INTENSITY12",
                                   "INTENSITY16",
                                   "RGB2",
                                   "RGB4",
                                   "RGB5",
                                   "RGB8",
                                   "RGB10",
                                   "RGB12",
                                   "RGB16",
                                   "RGBA2",
                                   "RGBA4",
                                   "RGB5_A1",
                                   "RGBA8",
                                   "RGB10_A2",
                                   "RGBA12",
                                   "RGBA16",
                                   "TEXEL8",
                                   "TEXEL16",
                                   "TEXEL32"};

} // namespace

OZ_DEFINE_TYPE_AFTER(ozTexture, "Texture", ozContainer, ozContext) {
  ozSFString::addTypeField(type, "fileName", FILE_NAME, ozString(), &ozTexture::_fileName);
  ozMFRef::addTypeField(type, "imageLevel", IMAGE_LEVEL, ozImage::getClassType(), &ozTexture::_imageLevel);

  ozSFEnum::addTypeField(type, "format", FORMAT, TEXEL16, &ozTexture::_format);
  int formats[TEXEL32 + 1];
  for (int i = 0; i <= TEXEL32; ++i) formats[i] = i;
  type->defineEnums(FORMAT, TEXEL32 + 1, FormatNames, formats);

  static char const *const repeatNames[] = {"CLAMP", "REPEAT"};
  static int const repeats[] = {CLAMP, REPEAT};
  ozSFEnum::addTypeField(type, "repeatS", 3, REPEAT, &ozTexture::_repeatS);
  ozSFEnum::addTypeField(type, "repeatT", 4, REPEAT, &ozTexture::_repeatT);
  type->defineEnums(3, 2, repeatNames, repeats);
  type->defineEnums(4, 2, repeatNames, repeats);

  static char const *const minNames[] = {"NEAREST_MIN", "LINEAR_MIN", "MIPMAP"};
  static int const minFilters[] = {NEAREST_MIN, LINEAR_MIN, MIPMAP};
  ozSFEnum::addTypeField(type, "minFilter", MIN_FILTER, MIPMAP, &ozTexture::_minFilter);
  type->defineEnums(MIN_FILTER, 3, minNames, minFilters);

  static char const *const magNames[] = {"NEAREST_MAG", "LINEAR_MAG"};
  static int const magFilters[] = {NEAREST_MAG, LINEAR_MAG};
  ozSFEnum::addTypeField(type, "magFilter", 6, LINEAR_MAG, &ozTexture::_magFilter);
  type->defineEnums(6, 2, magNames, magFilters);
}

ozContainer *ozTexture::instantiate() { return new ozTexture(true); }

ozTexture::ozTexture(bool textureObject) : ozTexture(getClassType(), textureObject) {}
ozTexture::ozTexture(ozType *type) : ozTexture(type, true) {}
ozTexture::ozTexture(ozType *type, bool textureObject) : ozContainer(type) { init(textureObject); }

void ozTexture::init(bool textureObject) {
  initFieldDefaults(_ClassType);
  _componentType = _format;
  int const name = textureObject ? ozContext::newTextureName() : -1;
  _textureName = name < 0 ? -1 : name;
}

ozTexture::~ozTexture() {
  deleteTextureObjects();
  ozContext::forget(this);
  destroyFieldContents(_ClassType);
}

ozImage *ozTexture::getImage(unsigned int level) const {
  return level < _imageLevel.getCount() ? static_cast<ozImage *>(_imageLevel[level]) : nullptr;
}

// So that the copying of the field does not count as a change.
void ozTexture::takeFileName(ozContainer *src) {
  if (src->isOfType(_ClassType)) _lastFileName = static_cast<ozTexture *>(src)->_fileName;
}

void ozTexture::copy(ozContainer *src, ozCloneTable *table) {
  takeFileName(src);
  ozContainer::copy(src, table);
}

void ozTexture::recursiveCopy(ozContainer *src, ozCloneTable *table) {
  takeFileName(src);
  ozContainer::recursiveCopy(src, table);
}

void ozTexture::findProperComponentType() {
  static struct {
    FormatEnum texel16, texel32;
  } const proper[] = {
      {LUMINANCE16, LUMINANCE16}, {LUMINANCE8_ALPHA8, LUMINANCE16_ALPHA16}, {RGB5, RGB8}, {RGBA4, RGBA8}};

  _componentType = _format;
  ozImage *const image = getImage(0);
  if (!image) return;
  unsigned int const format = static_cast<unsigned int>(image->getMemoryFormatHack());
  if (format > ozImage::RGBA) return;
  _componentCount = static_cast<int>(format) + 1;
  if (_format == TEXEL16) _componentType = proper[format].texel16;
  if (_format == TEXEL32) _componentType = proper[format].texel32;
}

void ozTexture::fieldChanged(short id) {
  switch (id) {
  case FILE_NAME:
    if (_fileName == _lastFileName) return;
    _lastFileName = _fileName;
    break;
  case IMAGE_LEVEL:
  case FORMAT:
    findProperComponentType();
    break;
  case MIN_FILTER:
    if (_minFilter != MIPMAP)
      dropLevels();
    else if (_imageLevel.getCount() == 1)
      createMipMaps();
    break;
  }
  touchField(id);
  _glId.changed();
}

// No version: a change of an image's pixels alone does not load the texture anew. Meant.
void ozTexture::childChanged(ozContainer *, short id) {
  if (id == ImageChanged) findProperComponentType();
}

void ozTexture::dropLevels() {
  while (_imageLevel.getCount() > 1) {
    unsigned int const last = _imageLevel.getCount() - 1;
    ozContainer *const image = _imageLevel[last];
    _imageLevel.setCount(last);
    unrefer(image);
  }
}

void ozTexture::imageLoaded() {
  dropLevels();
  _glId.changed();
}

void ozTexture::deleteTextureObjects() {
  if (_textureName < 0) return;
  ozContext::dropTextureObjects(_textureName);
  ozContext::deleteTextureName(_textureName);
  _textureName = -1; // the name may be another texture's from now on
}

unsigned int ozTexture::getGLName() const {
  return _textureName < 0 ? 0 : static_cast<unsigned int>(ozContext::getGLTextureName(_textureName));
}

unsigned char ozTexture::isTextureResident() const {
  if (_textureName < 0) return 0;
  GLuint const name = getGLName();
  GLboolean resident = GL_FALSE;
  return glAreTexturesResident(1, &name, &resident) ? 1 : 0;
}

void ozTexture::draw(ozContext *context) {
  cleanFields();
  if (_minFilter == MIPMAP && _imageLevel.getCount() == 1) createMipMaps();
  bool const dirty = _glId.isDirty(context); // always asked, so that the context knows what it has seen
  if (_textureName < 0) {
    glBindTexture(GL_TEXTURE_2D, 0);
  } else {
    glBindTexture(GL_TEXTURE_2D, context->claimTextureObject(_textureName));
    if (!dirty) return;
  }

  struct {
    GLenum what, value;
  } const parameters[] = {{GL_TEXTURE_MIN_FILTER, ozGL::token(ozOgl::glMinFilterTokens, _minFilter)},
                          {GL_TEXTURE_MAG_FILTER, ozGL::token(ozOgl::glMaxFilterTokens, _magFilter)},
                          {GL_TEXTURE_WRAP_S, ozGL::token(ozOgl::glRepeatTokens, _repeatS)},
                          {GL_TEXTURE_WRAP_T, ozGL::token(ozOgl::glRepeatTokens, _repeatT)}};
  for (auto const &parameter : parameters)
    if (parameter.value != ozGL::NO_TOKEN)
      glTexParameteri(GL_TEXTURE_2D, parameter.what, static_cast<GLint>(parameter.value));
  upload();
}

void ozTexture::upload() {
  for (unsigned int level = 0; level < _imageLevel.getCount(); ++level) {
    ozImage *const image = getImage(level);
    if (!image) continue;
    if (image->isLoadPending()) image->load();
    GLenum const format = ozGL::token(ozOgl::glInternalFormatTokens, _componentType); // load may have changed it
    if (format == ozGL::NO_TOKEN || !image->isWhole()) continue;
    ozUnpackAlignment bytes;
    glTexImage2D(GL_TEXTURE_2D, static_cast<GLint>(level), static_cast<GLint>(format), image->getWidth(),
                 image->getHeight(), 0, ozOgl::glExternalFormatTokens[image->getMemoryFormat()],
                 ozOgl::glExternalTypeTokens[image->getMemoryType()], image->pixels()->edit());
  }
}
