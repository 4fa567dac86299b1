#ifndef OZ_SCREEN_ALIGNED_TEXT_H
#define OZ_SCREEN_ALIGNED_TEXT_H

#include "oz/ozGeometry.h"

class ozFontRecord;

/// A line of text that stands flat on the screen at a point in space, at a size in pixels. The current matrix places
/// the point; a text whose point is clipped is not drawn at all.
///
/// The glyphs are bitmaps in display lists, one a character, made once a face, size and context and shared by all texts
/// that use them. Text is drawn with the lighting and texturing that is in force. As a shape it is a tiny box around
/// its position.
class OZ_API ozScreenAlignedText : public ozGeometry {
  OZ_CLASS(ozScreenAlignedText);
  OZ_COPYABLE(ozScreenAlignedText)

public:
  /// The roman faces have serifs, the others have none.
  enum FontFaceEnum : int {
    TIMES = 0,
    TIMES_ITALIC = 1,
    TIMES_BOLD = 2,
    TIMES_BOLD_ITALIC = 3,
    HELVETICA = 4,
    HELVETICA_OBLIQUE = 5,
    HELVETICA_BOLD = 6,
    HELVETICA_BOLD_OBLIQUE = 7
  };

  ozScreenAlignedText();

  void draw(ozDrawAction *action) override;

  /// Bytes of 127 and above draw nothing. Empty by default.
  OZ_CLASS_ACCESS(ozString, Text, 2, _text)
  /// Where the text begins, on its base line.
  OZ_VEC3F_ACCESS(Position, 3, _position)
  /// White by default.
  OZ_VEC4_ACCESS(ozVec4f, float, Color, 4, _color)
  /// The height of a line in pixels, 12 by default. Below 0: the size without the room for accents and the like. Faces
  /// of more than 1024 pixels are not to be had.
  OZ_VALUE_ACCESS(int, Size, 5, _fontSize)
  /// FontFaceEnum, HELVETICA by default. Other values find no font.
  int getFace() { return read(6, _fontFace); }
  void setFace(int face) { store(6, _fontFace, static_cast<FontFaceEnum>(face)); }

protected:
  void fieldChanged(short id) override;
  void cleanSideEffect(short id) override;
  void init();

private:
  ozFontRecord *queryFont() const;
  void buildFont(ozContext *context);
  void takeFont(int key);
  void leaveFont();

  ozString _text;
  ozVec3f _position;
  ozVec4f _color;
  int _fontSize;
  FontFaceEnum _fontFace;

  int _ownBase;  // the display lists that this object has reserved, and its id
  int _listBase; // those that it draws with: its own, or those of the first text with this font
  int _fontKey;  // of the font that it uses
  int _version;
};

#endif
