#ifndef OZ_TEXTURE_H
#define OZ_TEXTURE_H

#include "oz/ozFieldInfoArray.h"
#include "oz/ozImage.h"
#include "oz/ozObjectId.h"
#include "oz/ozSFRef.h"

class ozContext;

/// A picture on surfaces: a pyramid of images, each half the size of the one before it, and how they are filtered and
/// repeated. An appearance refers to one; it takes effect where texEnable is on.
///
/// With the minification filter MIPMAP, which is the default, a texture with one image makes the others itself. Sizes
/// should be powers of two.
class OZ_API ozTexture : public ozContainer {
  OZ_CLASS(ozTexture);

public:
  enum FormatEnum : int {
    LUMINANCE = 0,
    LUMINANCE_ALPHA,
    RGB,
    RGBA,
    ALPHA4,
    ALPHA8,
    ALPHA12,
    ALPHA16,
    LUMINANCE4,
    LUMINANCE8,
    LUMINANCE12,
    LUMINANCE16,
    LUMINANCE4_ALPHA4,
    LUMINANCE6_ALPHA2,
    LUMINANCE8_ALPHA8,
    LUMINANCE12_ALPHA4,
    LUMINANCE12_ALPHA12,
    LUMINANCE16_ALPHA16,
    INTENSITY,
    INTENSITY4,
    INTENSITY8,
    INTENSITY12,
    INTENSITY16,
    RGB2,
    RGB4,
    RGB5,
    RGB8,
    RGB10,
    RGB12,
    RGB16,
    RGBA2,
    RGBA4,
    RGB5_A1,
    RGBA8,
    RGB10_A2,
    RGBA12,
    RGBA16,
    TEXEL8,
    TEXEL16, ///< about 16 bits a pixel, as the image's format suggests
    TEXEL32  ///< about 32 bits a pixel
  };
  enum RepeatEnum : int { CLAMP = 0, REPEAT = 1 };
  enum MinFilterEnum : int { NEAREST_MIN = 0, LINEAR_MIN = 1, MIPMAP = 2 };
  enum MagFilterEnum : int { NEAREST_MAG = 0, LINEAR_MAG = 1 };

  /// Whether OpenGL keeps the texture as an object, in each context that draws it. Without one every draw sends all
  /// pixels again; so it is too when the names of texture objects have run out.
  explicit ozTexture(bool textureObject);

protected:
  ozTexture(ozType *type, bool textureObject);

public:
  void copy(ozContainer *src, ozCloneTable *table) override;
  using ozContainer::copy;

  /// A name for the application's use; images have their own.
  void getFileName(ozString &name) { name = read(0, _fileName); }
  void setFileName(ozString const &name) { store(0, _fileName, name); }
  ozMFRef *imageLevel() { return static_cast<ozMFRef *>(getField(1)); }
  /// How OpenGL stores the texture. TEXEL16 by default.
  OZ_ENUM_ACCESS(FormatEnum, Format, 2, _format)
  /// What lies beyond 0 to 1 along each axis. REPEAT by default.
  OZ_ENUM_ACCESS(RepeatEnum, RepeatS, 3, _repeatS)
  OZ_ENUM_ACCESS(RepeatEnum, RepeatT, 4, _repeatT)
  /// MIPMAP by default. Any other filter drops all images but the first; MIPMAP makes them from it.
  OZ_ENUM_ACCESS(MinFilterEnum, MinFilter, 5, _minFilter)
  /// LINEAR_MAG by default.
  OZ_ENUM_ACCESS(MagFilterEnum, MagFilter, 6, _magFilter)

  /// The components of a pixel of the first image, 1 to 4.
  int getComponentCount() const { return _componentCount; }
  /// Makes the images below the first one, down to 1 by 1, each pixel the mean of four; the first is taken as bytes. A
  /// line on the standard error stream for each step where the size is no power of two.
  void createMipMaps();
  /// Settles the storage format and the number of components from `format` and the first image.
  void findProperComponentType();

  /// Gives up the texture objects in all contexts, and the name. The texture works without one from then on.
  void deleteTextureObjects();
  /// OpenGL's name of the texture objects, the same in all contexts; 0 for none.
  unsigned int getGLName() const;
  /// Whether the current OpenGL context holds the object in its fastest memory.
  unsigned char isTextureResident() const;

  /// Binds the texture in the current OpenGL context, which must be that of `context`, and sends it if the context has
  /// not seen its latest change.
  virtual void draw(ozContext *context);

protected:
  void fieldChanged(short id) override;
  void childChanged(ozContainer *child, short id) override;
  void recursiveCopy(ozContainer *src, ozCloneTable *table) override;

  /// The image of a level; null if there is none.
  ozImage *getImage(unsigned int level) const;
  /// The first image has new pixels: the levels made from it go, and every context loads the texture anew.
  void imageLoaded();

private:
  void init(bool textureObject);
  void takeFileName(ozContainer *src);
  void dropLevels();
  void upload();

  ozString _fileName;
  ozRefArray _imageLevel{5u};
  FormatEnum _format;
  RepeatEnum _repeatS;
  RepeatEnum _repeatT;
  MinFilterEnum _minFilter;
  MagFilterEnum _magFilter;

  ozObjectId _glId;
  ozString _lastFileName;
  int _componentType;
  int _componentCount = 3;
  int _textureName;
};

/// A texture that shows the picture of a file.
class OZ_API ozImageTexture : public ozTexture {
  OZ_CLASS(ozImageTexture);

public:
  ozImageTexture();

  /// Where the picture stands; the first entry counts. Setting it reads the file, see ozImage::load.
  ozMFString *url() { return static_cast<ozMFString *>(getField(7)); }

protected:
  void fieldChanged(short id) override;

private:
  void showFile(ozString const &name);

  ozStringArray _url;
};

#endif
