#include "contextProbe.h"
#include "imageFixture.h"
#include "oz/ozOgl.h"
#include "support/capture.h"
#include "support/glRecorder.h"

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

namespace {

// What a texture sends, without the pixel storage around its images.
std::vector<std::string> drawn(ozTexture &texture, ozContext *context) {
  GLRecorder rec;
  texture.draw(context);
  return textsOf(rec.without({"glGetIntegerv", "glPixelStorei"}));
}

std::string bind(unsigned int name) { return "glBindTexture(GL_TEXTURE_2D, " + std::to_string(name) + ")"; }

} // namespace

TEST(Texture, HasDefaults) {
  ozTexture texture(true);
  ozString name("x");
  texture.getFileName(name);
  EXPECT_EQ(name.getString(), nullptr);
  EXPECT_EQ(texture.imageLevel()->getCount(), 0u);
  EXPECT_EQ(texture.imageLevel()->getSize(), 5u);
  EXPECT_EQ(texture.getFormat(), ozTexture::TEXEL16);
  EXPECT_EQ(texture.getRepeatS(), ozTexture::REPEAT);
  EXPECT_EQ(texture.getRepeatT(), ozTexture::REPEAT);
  EXPECT_EQ(texture.getMinFilter(), ozTexture::MIPMAP);
  EXPECT_EQ(texture.getMagFilter(), ozTexture::LINEAR_MAG);
}

TEST(Texture, HasItsFieldsInOrder) {
  ozTexture texture(false);
  static char const *const names[] = {"fileName", "imageLevel", "format",   "repeatS",
                                      "repeatT",  "minFilter",  "magFilter"};
  for (int id = 0; id < 7; ++id) EXPECT_EQ(texture.getField(names[id]), texture.getField(id)) << names[id];
  ozType *const type = ozTexture::getClassType();
  EXPECT_STREQ(type->mapEnum(2, 0), "LUMINANCE");
  EXPECT_STREQ(type->mapEnum(2, 4), "ALPHA4");
  EXPECT_STREQ(type->mapEnum(2, 8), "LUMINANCE4");
  EXPECT_STREQ(type->mapEnum(2, 12), "LUMINANCE4_ALPHA4");
  EXPECT_STREQ(type->mapEnum(2, 18), "INTENSITY");
  EXPECT_STREQ(type->mapEnum(2, 23), "RGB2");
  EXPECT_STREQ(type->mapEnum(2, 30), "RGBA2");
  EXPECT_STREQ(type->mapEnum(2, 36), "RGBA16");
  EXPECT_STREQ(type->mapEnum(2, 38), "TEXEL16");
  EXPECT_STREQ(type->mapEnum(3, 0), "CLAMP");
  EXPECT_STREQ(type->mapEnum(4, 1), "REPEAT");
  EXPECT_STREQ(type->mapEnum(5, 2), "MIPMAP");
  EXPECT_STREQ(type->mapEnum(6, 1), "LINEAR_MAG");
}

TEST(Texture, MapsItsEnumerationsToOpenGL) {
  EXPECT_EQ(ozOgl::glInternalFormatTokens[ozTexture::ALPHA16], unsigned(GL_ALPHA16));
  EXPECT_EQ(ozOgl::glInternalFormatTokens[ozTexture::LUMINANCE16_ALPHA16], unsigned(GL_LUMINANCE16_ALPHA16));
  EXPECT_EQ(ozOgl::glInternalFormatTokens[ozTexture::INTENSITY16], unsigned(GL_INTENSITY16));
  EXPECT_EQ(ozOgl::glInternalFormatTokens[ozTexture::RGB2], unsigned(GL_R3_G3_B2));
  EXPECT_EQ(ozOgl::glInternalFormatTokens[ozTexture::RGB16], unsigned(GL_RGB16));
  EXPECT_EQ(ozOgl::glInternalFormatTokens[ozTexture::RGB5_A1], unsigned(GL_RGB5_A1));
  EXPECT_EQ(ozOgl::glInternalFormatTokens[ozTexture::RGBA16], unsigned(GL_RGBA16));
  EXPECT_EQ(ozOgl::glInternalFormatTokens[ozTexture::TEXEL8], unsigned(GL_LUMINANCE));
  EXPECT_EQ(ozOgl::glInternalFormatTokens[ozTexture::TEXEL16], unsigned(GL_LUMINANCE_ALPHA));
  EXPECT_EQ(ozOgl::glInternalFormatTokens[ozTexture::TEXEL32], unsigned(GL_RGB));
  EXPECT_EQ(ozOgl::glExternalTypeTokens[ozImage::FLOAT], unsigned(GL_FLOAT));
  EXPECT_EQ(ozOgl::glExternalTypeTokens[ozImage::FOUR_BYTES], unsigned(GL_4_BYTES));
  EXPECT_EQ(ozOgl::glExternalFormatTokens[ozImage::RGBA], unsigned(GL_RGBA));
  EXPECT_EQ(ozOgl::glMinFilterTokens[ozTexture::MIPMAP], unsigned(GL_LINEAR_MIPMAP_LINEAR));
  EXPECT_EQ(ozOgl::glMaxFilterTokens[ozTexture::NEAREST_MAG], unsigned(GL_NEAREST));
  EXPECT_EQ(ozOgl::glRepeatTokens[ozTexture::CLAMP], unsigned(GL_CLAMP));
}

TEST_F(ContextTest, SendsATextureToItsObjectOnce) {
  ozTexture texture(true);
  texture.setMinFilter(ozTexture::LINEAR_MIN);
  texture.imageLevel()->append(makeImage(4, 2, ozImage::RGB));
  EXPECT_THAT(drawn(texture, context),
              ElementsAre(bind(texture.getGLName()), "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR)",
                          "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR)",
                          "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT)",
                          "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT)",
                          "glTexImage2D(GL_TEXTURE_2D, 0, GL_RGB5, 4, 2, 0, GL_RGB, GL_UNSIGNED_BYTE, ptr)"));
  EXPECT_THAT(drawn(texture, context), ElementsAre(bind(texture.getGLName())));
  EXPECT_GE(texture.getGLName(), 10000u);
  EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
}

TEST_F(ContextTest, SendsATextureAgainAfterAChangeOfAnyField) {
  ozTexture texture(true);
  texture.imageLevel()->append(makeImage(1, 1, ozImage::RGB));
  auto sent = [&] { return drawn(texture, context).size() > 1; };
  EXPECT_TRUE(sent());
  EXPECT_FALSE(sent());
  texture.setFormat(ozTexture::RGB8);
  EXPECT_TRUE(sent());
  texture.setRepeatS(ozTexture::CLAMP);
  EXPECT_TRUE(sent());
  texture.setRepeatT(ozTexture::CLAMP);
  EXPECT_TRUE(sent());
  texture.setMagFilter(ozTexture::NEAREST_MAG);
  EXPECT_TRUE(sent());
  texture.setMinFilter(ozTexture::NEAREST_MIN);
  EXPECT_TRUE(sent());
  texture.setFileName("a");
  EXPECT_TRUE(sent());
  texture.imageLevel()->set(0, makeImage(1, 1, ozImage::RGBA));
  EXPECT_TRUE(sent());
  EXPECT_FALSE(sent());
}

TEST_F(ContextTest, SendsNothingAgainForTheSameFileNameOrForNewPixels) {
  ozTexture texture(true);
  ozImage *const image = makeImage(1, 1, ozImage::RGB);
  texture.imageLevel()->append(image);
  texture.setFileName("a");
  drawn(texture, context);
  texture.setFileName("a");
  EXPECT_EQ(drawn(texture, context).size(), 1u);
  image->pixels()->set(0, 9);
  EXPECT_EQ(drawn(texture, context).size(), 1u);
}

TEST_F(ContextTest, SendsATextureWithoutAnObjectEachTime) {
  ozTexture texture(false);
  texture.setMinFilter(ozTexture::NEAREST_MIN);
  texture.imageLevel()->append(makeImage(1, 1, ozImage::LUMINANCE));
  for (int i = 0; i < 2; ++i) {
    std::vector<std::string> const calls = drawn(texture, context);
    EXPECT_EQ(calls.front(), bind(0));
    EXPECT_EQ(calls.back(),
              "glTexImage2D(GL_TEXTURE_2D, 0, GL_LUMINANCE16, 1, 1, 0, GL_LUMINANCE, GL_UNSIGNED_BYTE, ptr)");
  }
  EXPECT_EQ(texture.getGLName(), 0u);
  EXPECT_EQ(texture.isTextureResident(), 0);
}

TEST_F(ContextTest, SendsOnlyTheParametersOfATextureWithoutImages) {
  ozTexture texture(true);
  EXPECT_THAT(drawn(texture, context), ::testing::SizeIs(5));
  texture.imageLevel()->setCount(3);
  EXPECT_THAT(drawn(texture, context), ::testing::SizeIs(5));
}

TEST_F(ContextTest, SendsNoParameterThatNoTableHas) {
  ozTexture texture(true);
  texture.imageLevel()->append(makeImage(1, 1, ozImage::RGB));
  texture.setFormatHack(40);
  texture.setRepeatSHack(-1);
  texture.setRepeatTHack(2);
  texture.setMinFilterHack(3);
  texture.setMagFilterHack(1000000);
  EXPECT_THAT(drawn(texture, context), ElementsAre(bind(texture.getGLName())));
}

TEST_F(ContextTest, SendsImagesWithoutGapsAndPutsTheAlignmentBack) {
  glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
  ozTexture texture(true);
  texture.setMinFilter(ozTexture::LINEAR_MIN);
  texture.imageLevel()->append(makeImage(1, 2, ozImage::RGB, {255, 0, 0, 0, 0, 255}));
  texture.setFormat(ozTexture::RGB8);
  texture.draw(context);
  unsigned char seen[6];
  glPixelStorei(GL_PACK_ALIGNMENT, 1);
  glGetTexImage(GL_TEXTURE_2D, 0, GL_RGB, GL_UNSIGNED_BYTE, seen);
  EXPECT_THAT(seen, ElementsAre(255, 0, 0, 0, 0, 255));
  GLint alignment;
  glGetIntegerv(GL_UNPACK_ALIGNMENT, &alignment);
  EXPECT_EQ(alignment, 8);
}

TEST_F(ContextTest, SendsNoLevelThatIsNotWhole) {
  ozTexture texture(true);
  texture.setMinFilter(ozTexture::LINEAR_MIN);
  ozImage *const image = makeImage(4, 4, ozImage::RGB);
  texture.imageLevel()->append(image);
  image->pixels()->setCount(47);
  GLRecorder rec;
  texture.draw(context);
  EXPECT_EQ(rec.count("glTexImage2D"), 0);
}

TEST(Texture, FindsItsFormatFromTheFirstImage) {
  struct {
    ozImage::MemoryFormatEnum image;
    char const *texel16, *texel32;
    int components;
  } const cases[] = {{ozImage::LUMINANCE, "GL_LUMINANCE16", "GL_LUMINANCE16", 1},
                     {ozImage::LUMINANCE_ALPHA, "GL_LUMINANCE8_ALPHA8", "GL_LUMINANCE16_ALPHA16", 2},
                     {ozImage::RGB, "GL_RGB5", "GL_RGB8", 3},
                     {ozImage::RGBA, "GL_RGBA4", "GL_RGBA8", 4}};
  OffscreenContext gl;
  for (auto const &each : cases) {
    ozTexture texture(false);
    texture.imageLevel()->append(makeImage(1, 1, each.image));
    EXPECT_EQ(texture.getComponentCount(), each.components);
    EXPECT_THAT(drawn(texture, gl.context),
                Contains(StartsWith(std::string("glTexImage2D(GL_TEXTURE_2D, 0, ") + each.texel16 + ",")));
    texture.setFormat(ozTexture::TEXEL32);
    EXPECT_THAT(drawn(texture, gl.context),
                Contains(StartsWith(std::string("glTexImage2D(GL_TEXTURE_2D, 0, ") + each.texel32 + ",")));
    texture.setFormat(ozTexture::TEXEL8);
    EXPECT_THAT(drawn(texture, gl.context), Contains(StartsWith("glTexImage2D(GL_TEXTURE_2D, 0, GL_LUMINANCE,")));
    texture.setFormat(ozTexture::INTENSITY8);
    EXPECT_THAT(drawn(texture, gl.context), Contains(StartsWith("glTexImage2D(GL_TEXTURE_2D, 0, GL_INTENSITY8,")));
  }
}

TEST(Texture, FollowsAChangeOfItsImagesFormat) {
  OffscreenContext gl;
  ozTexture texture(false);
  texture.setFormat(ozTexture::TEXEL32);
  ozImage *const image = makeImage(1, 1, ozImage::RGBA);
  texture.imageLevel()->append(image);
  EXPECT_EQ(texture.getComponentCount(), 4);
  image->setMemoryFormat(ozImage::LUMINANCE);
  EXPECT_EQ(texture.getComponentCount(), 1);
  EXPECT_THAT(drawn(texture, gl.context), Contains(StartsWith("glTexImage2D(GL_TEXTURE_2D, 0, GL_LUMINANCE16,")));
}

TEST_F(ContextTest, GivesTexturesTheLowestFreeNames) {
  ozTexture *const first = new ozTexture(true);
  ozTexture second(true);
  EXPECT_EQ(second.getGLName(), first->getGLName() + 1);
  unsigned int const freed = first->getGLName();
  first->unref();
  ozTexture third(true);
  EXPECT_EQ(third.getGLName(), freed);
}

TEST_F(ContextTest, WorksWithoutAnObjectWhenTheNamesAreOut) {
  std::vector<int> names;
  for (int name; (name = ozContext::newTextureName()) >= 0;) names.push_back(name);
  {
    ozTexture texture(true);
    EXPECT_EQ(texture.getGLName(), 0u);
    EXPECT_EQ(drawn(texture, context).front(), bind(0));
  }
  for (int name : names) ozContext::deleteTextureName(name);
}

TEST_F(ContextTest, DeletesTheObjectOfADestroyedTextureInEachContextInItsTime) {
  OffscreenContext other;
  ozTexture *const texture = new ozTexture(true);
  int const name = static_cast<int>(texture->getGLName()) - 10000;
  texture->draw(other.context);
  context->makeCurrent(gl.device);
  texture->draw(context);
  GLRecorder rec;
  texture->unref();
  EXPECT_THAT(textsOf(rec.named("glDeleteTextures")),
              ElementsAre("glDeleteTextures(1, " + std::to_string(name + 10000) + ")"));
  EXPECT_EQ(ozContextProbe(context).texture(name), 0);
  EXPECT_EQ(ozContextProbe(other.context).texture(name), -1);

  ozTexture next(true);
  ASSERT_EQ(next.getGLName(), static_cast<unsigned>(name) + 10000);
  other->makeCurrent(other.device);
  std::vector<std::string> const calls = drawn(next, other.context);
  EXPECT_EQ(calls[0], "glDeleteTextures(1, " + std::to_string(name + 10000) + ")");
  EXPECT_EQ(calls[1], bind(next.getGLName()));
}

TEST_F(ContextTest, GivesUpItsNameWithItsObjects) {
  ozTexture texture(true);
  unsigned int const name = texture.getGLName();
  texture.deleteTextureObjects();
  EXPECT_EQ(texture.getGLName(), 0u);
  ozTexture next(true);
  EXPECT_EQ(next.getGLName(), name);
  texture.deleteTextureObjects();
  EXPECT_EQ(next.getGLName(), name);
  EXPECT_EQ(drawn(texture, context).front(), bind(0));
}

TEST_F(ContextTest, TellsWhetherATextureIsResident) {
  ozTexture texture(true);
  texture.draw(context);
  GLRecorder rec;
  EXPECT_EQ(texture.isTextureResident(), 1);
  EXPECT_EQ(rec.count("glAreTexturesResident"), 1);
}

TEST_F(ContextTest, CopiesAFileNameWithoutCountingItAsAChange) {
  ozTexture source(true);
  source.setFileName("a");
  ozTexture copied(true);
  copied.copy(&source);
  ozTexture *const cloned = static_cast<ozTexture *>(source.clone(ozContainer::CLONE_DEEP));
  for (ozTexture *texture : {&copied, cloned}) {
    texture->draw(context);
    texture->setFileName("a");
    EXPECT_EQ(drawn(*texture, context).size(), 1u); // nothing new
    ozString name;
    texture->getFileName(name);
    EXPECT_STREQ(name.getString(), "a");
  }
  EXPECT_NE(copied.getGLName(), source.getGLName());
  cloned->unref();
}

TEST(Texture, SharesItsImagesWithACopyAndNotWithADeepClone) {
  ozTexture source(true);
  source.setMinFilter(ozTexture::LINEAR_MIN);
  source.imageLevel()->append(makeImage(2, 2, ozImage::RGB, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
  ozTexture *const shallow = static_cast<ozTexture *>(source.clone(ozContainer::CLONE_SHALLOW));
  ozTexture *const deep = static_cast<ozTexture *>(source.clone(ozContainer::CLONE_DEEP));
  EXPECT_EQ(levelOf(*shallow, 0), levelOf(source, 0));
  EXPECT_NE(levelOf(*deep, 0), levelOf(source, 0));
  EXPECT_EQ(pixelsOf(levelOf(*deep, 0)), pixelsOf(levelOf(source, 0)));
  EXPECT_EQ(deep->getMinFilter(), ozTexture::LINEAR_MIN);
  EXPECT_EQ(deep->getComponentCount(), 3);
  shallow->unref();
  deep->unref();
}

TEST_F(ContextTest, ShowsThePixelsOfATextureOnASurface) {
  ozTexture texture(true);
  texture.setMinFilter(ozTexture::NEAREST_MIN);
  texture.setMagFilter(ozTexture::NEAREST_MAG);
  texture.setFormat(ozTexture::RGB8);
  texture.imageLevel()->append(makeImage(2, 2, ozImage::RGB, {255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255}));
  context->clear(1);
  context->setTexEnv(ozContext::REPLACE_TENV);
  context->setTexEnable(1);
  context->setTexture(&texture);
  glBegin(GL_QUADS);
  for (auto const &corner : {ozVec2f(0, 0), ozVec2f(1, 0), ozVec2f(1, 1), ozVec2f(0, 1)}) {
    glTexCoord2f(corner[0], corner[1]);
    glVertex2f(corner[0] * 2 - 1, corner[1] * 2 - 1);
  }
  glEnd();
  Image const seen = gl.pixels();
  EXPECT_EQ(seen.at(50, 150), (Image::Pixel{255, 0, 0, 255}));
  EXPECT_EQ(seen.at(150, 150), (Image::Pixel{0, 255, 0, 255}));
  EXPECT_EQ(seen.at(50, 50), (Image::Pixel{0, 0, 255, 255}));
  EXPECT_EQ(seen.at(150, 50), (Image::Pixel{255, 255, 255, 255}));
}
