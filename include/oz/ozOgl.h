#ifndef OZ_OGL_H
#define OZ_OGL_H

#include "oz/ozPlatform.h"

/// The OpenGL values of the enumerations of textures and images, each table in the order of its enumeration.
class OZ_API ozOgl {
public:
  static unsigned int const glExternalFormatTokens[4];  ///< ozImage::MemoryFormatEnum
  static unsigned int const glExternalTypeTokens[10];   ///< ozImage::MemoryTypeEnum
  static unsigned int const glInternalFormatTokens[40]; ///< ozTexture::FormatEnum
  static unsigned int const glMinFilterTokens[3];       ///< ozTexture::MinFilterEnum
  static unsigned int const glMaxFilterTokens[2];       ///< ozTexture::MagFilterEnum
  static unsigned int const glRepeatTokens[2];          ///< ozTexture::RepeatEnum
};

#endif
