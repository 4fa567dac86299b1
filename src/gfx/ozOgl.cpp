#include "oz/ozOgl.h"

#include <GL/gl.h>

unsigned int const ozOgl::glExternalFormatTokens[4] = {GL_LUMINANCE, GL_LUMINANCE_ALPHA, GL_RGB, GL_RGBA};

unsigned int const ozOgl::glExternalTypeTokens[10] = {GL_BYTE,    GL_UNSIGNED_BYTE, GL_SHORT, GL_UNSIGNED_SHORT,
                                                      GL_INT,     GL_UNSIGNED_INT,  GL_FLOAT, GL_2_BYTES,
                                                      GL_3_BYTES, GL_4_BYTES};

unsigned int const ozOgl::glInternalFormatTokens[40] = {
    GL_LUMINANCE,
    GL_LUMINANCE_ALPHA,
    GL_RGB,
    GL_RGBA,
    GL_ALPHA4,
    GL_ALPHA8,
    GL_ALPHA12,
    GL_ALPHA16,
    GL_LUMINANCE4,
    GL_LUMINANCE8,
    GL_LUMINANCE12,
    GL_LUMINANCE16,
    GL_LUMINANCE4_ALPHA4,
    GL_LUMINANCE6_ALPHA2,
    GL_LUMINANCE8_ALPHA8,
    GL_LUMINANCE12_ALPHA4,
    GL_LUMINANCE12_ALPHA12,
    GL_LUMINANCE16_ALPHA16,
    GL_INTENSITY,
    GL_INTENSITY4,
    GL_INTENSITY8,
    GL_INTENSITY12,
    GL_INTENSITY16,
    GL_R3_G3_B2,
    GL_RGB4,
    GL_RGB5,
    GL_RGB8,
    GL_RGB10,
    GL_RGB12,
    GL_RGB16,
    GL_RGBA2,
    GL_RGBA4,
    GL_RGB5_A1,
    GL_RGBA8,
    GL_RGB10_A2,
    GL_RGBA12,
    GL_RGBA16,
    GL_LUMINANCE,       // TEXEL8, TEXEL16 and TEXEL32 come here only while a texture has no image
    GL_LUMINANCE_ALPHA, //
    GL_RGB,
};

unsigned int const ozOgl::glMinFilterTokens[3] = {GL_NEAREST, GL_LINEAR, GL_LINEAR_MIPMAP_LINEAR};
unsigned int const ozOgl::glMaxFilterTokens[2] = {GL_NEAREST, GL_LINEAR};
unsigned int const ozOgl::glRepeatTokens[2] = {GL_CLAMP, GL_REPEAT};
