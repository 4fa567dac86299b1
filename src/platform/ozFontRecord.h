#ifndef OZ_FONT_RECORD_H
#define OZ_FONT_RECORD_H

#include "oz/ozPlatform.h"

/// A face of the system at one size, which gives bitmaps of its glyphs.
class OZ_API ozFontRecord {
public:
  /// What kind of face: with serifs, or without.
  enum FamilyEnum : int { ROMAN = 0x10, SWISS = 0x20 };

  /// One bit a pixel, the highest bit of a byte leftmost; each row starts with a byte, and the bottom row comes first.
  struct Glyph {
    int width;
    int height;
    int left;    ///< from the origin to the left edge
    int bottom;  ///< from the base line up to the bottom edge
    int advance; ///< from the origin to that of the next glyph
    unsigned char const *bits;
  };

  /// Whether fonts of that height are made: up to 1024 pixels.
  static bool hasHeight(int height) { return height >= -1024 && height <= 1024; }
  /// The best match that there is, slanted and made bold where the face is not; null if there is none. The height is
  /// that of a line in pixels; below 0 the size of the face itself; 0 stands for 12.
  static ozFontRecord *create(int height, int weight, int italic, int family);
  ~ozFontRecord();
  ozFontRecord(ozFontRecord const &) = delete;
  ozFontRecord &operator=(ozFontRecord const &) = delete;

  /// The glyph of a character; empty where there is none to draw. The bits stay until the next call.
  Glyph glyph(unsigned char character);

private:
  struct Face; // the rasteriser's

  explicit ozFontRecord(Face *face) : _face(face) {}

  Face *_face;
};

#endif
