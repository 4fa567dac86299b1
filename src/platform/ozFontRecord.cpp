#include "platform/ozFontRecord.h"

#ifdef OZ_HAVE_FONTS

#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include <new>
#include <stdlib.h>
#include <string.h>
#include FT_FREETYPE_H
#include FT_SYNTHESIS_H

struct ozFontRecord::Face {
  ~Face() {
    if (face) FT_Done_Face(face);
    if (library) FT_Done_FreeType(library);
    free(bits);
  }

  FT_Library library = nullptr;
  FT_Face face = nullptr;
  bool slant = false; // asked for, but the face has none of its own
  bool thicken = false;
  unsigned char *bits = nullptr;
};

namespace {

enum { DEFAULT_PIXELS = 12, BOLD = 700 };

// The file of the best match, and which of its faces.
FcPattern *match(int weight, int italic, int family) {
  if (!FcInit()) return nullptr;
  FcPattern *const pattern = FcPatternCreate();
  if (!pattern) return nullptr;
  char const *const name = family == ozFontRecord::ROMAN ? "serif" : "sans-serif";
  FcPatternAddString(pattern, FC_FAMILY, reinterpret_cast<FcChar8 const *>(name));
  FcPatternAddInteger(pattern, FC_WEIGHT, weight >= BOLD ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
  FcPatternAddInteger(pattern, FC_SLANT, italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
  FcPatternAddBool(pattern, FC_SCALABLE, FcTrue);
  FcConfigSubstitute(nullptr, pattern, FcMatchPattern);
  FcDefaultSubstitute(pattern);
  FcResult result = FcResultNoMatch;
  FcPattern *const found = FcFontMatch(nullptr, pattern, &result);
  FcPatternDestroy(pattern);
  return found;
}

bool setSize(FT_Face face, int height) {
  if (!ozFontRecord::hasHeight(height)) return false;
  if (height == 0) height = DEFAULT_PIXELS;
  FT_Size_RequestRec request = {};
  // A line reaches from the ascender to the descender.
  request.type = height > 0 ? FT_SIZE_REQUEST_TYPE_REAL_DIM : FT_SIZE_REQUEST_TYPE_NOMINAL;
  request.height = (height > 0 ? height : -height) * 64L;
  return FT_Request_Size(face, &request) == 0;
}

} // namespace

ozFontRecord *ozFontRecord::create(int height, int weight, int italic, int family) {
  FcPattern *const found = match(weight, italic, family);
  if (!found) return nullptr;
  Face *const face = new (std::nothrow) Face;
  FcChar8 *file = nullptr;
  int index = 0;
  FcPatternGetInteger(found, FC_INDEX, 0, &index);
  bool const opened = face && FcPatternGetString(found, FC_FILE, 0, &file) == FcResultMatch &&
                      !FT_Init_FreeType(&face->library) &&
                      !FT_New_Face(face->library, reinterpret_cast<char *>(file), index, &face->face) &&
                      FT_IS_SCALABLE(face->face) && setSize(face->face, height);
  FcPatternDestroy(found);
  ozFontRecord *const record = opened ? new (std::nothrow) ozFontRecord(face) : nullptr;
  if (!record) {
    delete face;
    return nullptr;
  }
  face->slant = italic && !(face->face->style_flags & FT_STYLE_FLAG_ITALIC);
  face->thicken = weight >= BOLD && !(face->face->style_flags & FT_STYLE_FLAG_BOLD);
  return record;
}

ozFontRecord::~ozFontRecord() { delete _face; }

ozFontRecord::Glyph ozFontRecord::glyph(unsigned char character) {
  Glyph glyph = {};
  FT_Face const face = _face->face;
  unsigned int const index = FT_Get_Char_Index(face, character);
  if (!index && character < ' ') return glyph; // control characters take no room
  if (FT_Load_Glyph(face, index, FT_LOAD_TARGET_MONO | FT_LOAD_NO_BITMAP)) return glyph;
  FT_GlyphSlot const slot = face->glyph;
  if (_face->thicken) FT_GlyphSlot_Embolden(slot);
  if (_face->slant) FT_GlyphSlot_Oblique(slot);
  glyph.advance = static_cast<int>((slot->advance.x + 32) >> 6);
  if (FT_Render_Glyph(slot, FT_RENDER_MODE_MONO)) return glyph;

  FT_Bitmap const &bitmap = slot->bitmap;
  size_t const rows = bitmap.rows, bytes = (bitmap.width + 7) / 8;
  if (!rows || !bytes) return glyph;
  void *const bits = realloc(_face->bits, rows * bytes);
  if (!bits) return glyph;
  _face->bits = static_cast<unsigned char *>(bits);
  size_t const pitch = static_cast<size_t>(abs(bitmap.pitch));
  for (size_t row = 0; row < rows; ++row) {
    size_t const from = bitmap.pitch > 0 ? rows - 1 - row : row; // a positive pitch runs from the top down
    memcpy(_face->bits + row * bytes, bitmap.buffer + from * pitch, bytes);
  }
  glyph.width = static_cast<int>(bitmap.width);
  glyph.height = static_cast<int>(rows);
  glyph.left = slot->bitmap_left;
  glyph.bottom = slot->bitmap_top - glyph.height;
  glyph.bits = _face->bits;
  return glyph;
}

#else

struct ozFontRecord::Face {};

ozFontRecord *ozFontRecord::create(int, int, int, int) { return nullptr; }
ozFontRecord::~ozFontRecord() { delete _face; }
ozFontRecord::Glyph ozFontRecord::glyph(unsigned char) { return {}; }

#endif
