#ifndef OZ_IMAGE_H
#define OZ_IMAGE_H

#include "oz/ozClass.h"
#include "oz/ozFieldAccess.h"
#include "oz/ozMFByte.h"

/// A rectangle of pixels, given by the application or read from a file. Rows run from the bottom to the top and follow
/// each other without a gap; the components of a pixel are those of memoryFormat, each a number of memoryType.
///
/// A change tells the textures that show the image, but the pixels reach OpenGL only with a change of the texture
/// itself.
class OZ_API ozImage : public ozContainer {
  OZ_CLASS(ozImage);

public:
  enum MemoryFormatEnum : int { LUMINANCE = 0, LUMINANCE_ALPHA = 1, RGB = 2, RGBA = 3 };
  enum MemoryTypeEnum : int {
    BYTE = 0,
    UNSIGNED_BYTE = 1,
    SHORT = 2,
    UNSIGNED_SHORT = 3,
    INT = 4,
    UNSIGNED_INT = 5,
    FLOAT = 6,
    TWO_BYTES = 7,
    THREE_BYTES = 8,
    FOUR_BYTES = 9
  };

  ozImage();

  /// "noName" by default. A new name is looked for when the image is next needed, or by load().
  void getFileName(ozString &name) { name = read(0, _fileName); }
  void setFileName(ozString const &name);
  /// Pixels; 0 by default.
  OZ_VALUE_ACCESS(int, Width, 1, _width)
  OZ_VALUE_ACCESS(int, Height, 2, _height)
  /// RGB by default.
  OZ_ENUM_ACCESS(MemoryFormatEnum, MemoryFormat, 3, _memoryFormat)
  /// UNSIGNED_BYTE by default.
  OZ_ENUM_ACCESS(MemoryTypeEnum, MemoryType, 4, _memoryType)
  ozMFUByte *pixels() { return static_cast<ozMFUByte *>(getField(5)); }

  /// Looks for the file as ozGlobal::findFile does and reads it: PNG and JPEG, where the library was built with them,
  /// into unsigned bytes of the format that the file has. Returns 1 if it could. A file that cannot be read costs a
  /// line on the standard error stream; one that is not found costs nothing and is looked for again at the next use.
  int load();
  /// Whether a file has been named that no load() has found since.
  unsigned char isLoadPending() const { return _loadPending; }

  /// Draws the pixels over what is there, with the lower left corner at (x, y), each from 0 to 1 across the viewport; z
  /// is the depth, 0.5 in the middle.
  virtual void draw(float x, float y, float z);

  /// Whether sizes, format and type are good and the pixels are all there.
  bool isWhole();

protected:
  void fieldChanged(short id) override;

private:
  ozString _fileName;
  int _width;
  int _height;
  MemoryFormatEnum _memoryFormat;
  MemoryTypeEnum _memoryType;
  ozUByteArray _pixels;
  unsigned char _loadPending = 0;
};

#endif
