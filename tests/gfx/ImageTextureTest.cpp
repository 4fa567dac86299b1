#include "contextProbe.h"
#include "imageFixture.h"
#include "support/capture.h"
#include "support/glRecorder.h"
#include "support/image.h"
#include <cstdio>

namespace {

std::string nameOf(ozTexture &texture) {
  ozString name;
  texture.getFileName(name);
  return name.getString() ? name.getString() : "";
}

std::string nameOf(ozImage *image) {
  ozString name;
  image->getFileName(name);
  return name.getString();
}

// An application's own kind of texture, with a field more.
class Poster : public ozImageTexture {
  OZ_CLASS(Poster);

public:
  Poster();
  OZ_VALUE_ACCESS(int, Price, 8, _price)

private:
  int _price;
};
OZ_DEFINE_CLASS(Poster, "Poster", ozImageTexture) { ozSFInt::addTypeField(type, "price", 8, 0, &Poster::_price); }

} // namespace

TEST(ImageTexture, AFieldOfASubclassIsNoUrl) {
  Poster poster;
  poster.url()->set(0, "none such");
  poster.setFileName("mine");
  poster.setPrice(5);
  EXPECT_EQ(nameOf(poster), "mine");
}

TEST(ImageTexture, AddsAUrlToATexture) {
  ozImageTexture texture;
  EXPECT_EQ(texture.getField(7), texture.url());
  EXPECT_EQ(texture.getField("url"), texture.url());
  EXPECT_TRUE(texture.isOfType(ozTexture::getClassType()));
  EXPECT_NE(texture.getGLName(), 0u);
  EXPECT_EQ(texture.url()->getCount(), 0u);
}

TEST(ImageTexture, TakesItsNameFromTheFirstUrlWhileItHasNoImage) {
  ozImageTexture texture;
  texture.url()->set(texture.url()->getCount(), "none such");
  texture.url()->set(texture.url()->getCount(), "another");
  EXPECT_EQ(nameOf(texture), "none such");
  EXPECT_EQ(texture.imageLevel()->getCount(), 0u);
}

TEST(ImageTexture, NamesItsImageByTheFirstUrlAndLoadsIt) {
  ozImageTexture texture;
  ozImage *const image = new ozImage;
  texture.imageLevel()->append(image);
  texture.url()->set(texture.url()->getCount(), "none such");
  EXPECT_EQ(nameOf(image), "none such");
  EXPECT_EQ(nameOf(texture), "");
  EXPECT_EQ(image->isLoadPending(), 1);
}

TEST(ImageTexture, ReadsNothingForAnEmptyUrl) {
  ozImageTexture texture;
  texture.url()->set(texture.url()->getCount(), "none such");
  texture.url()->setCount(0);
  EXPECT_EQ(nameOf(texture), "none such");
}

TEST_F(ContextTest, SendsATextureAgainWhenItsUrlBringsAnotherPicture) {
  Image red(2, 2, {255, 0, 0, 255}), blue(4, 4, {0, 0, 255, 255});
  ASSERT_TRUE(red.writePng("red.png"));
  ASSERT_TRUE(blue.writePng("blue.png"));
  ozImageTexture texture;
  texture.url()->set(texture.url()->getCount(), "red.png");
  texture.draw(context);
  EXPECT_EQ(texture.imageLevel()->getCount(), 2u);
  texture.url()->set(0, "blue.png");
  EXPECT_EQ(texture.imageLevel()->getCount(), 1u);
  GLRecorder rec;
  texture.draw(context);
  EXPECT_EQ(rec.count("glTexImage2D"), 3);
  unsigned char pixel[4];
  glGetTexImage(GL_TEXTURE_2D, 2, GL_RGBA, GL_UNSIGNED_BYTE, pixel);
  EXPECT_EQ(pixel[2], 255);
  std::remove("red.png");
  std::remove("blue.png");
}

TEST_F(ContextTest, LoadsAPictureThatIsPendingAheadOfItsMipMaps) {
  ASSERT_TRUE(Image(4, 4, {0, 255, 0, 255}).writePng("green.png"));
  ozTexture texture(true);
  ozImage *const image = new ozImage;
  image->setFileName("green.png");
  texture.imageLevel()->append(image);
  texture.draw(context);
  EXPECT_EQ(texture.imageLevel()->getCount(), 3u);
  EXPECT_EQ(texture.getComponentCount(), image->getMemoryFormat() + 1);
  std::remove("green.png");
}

TEST_F(ContextTest, LoadsAPendingPictureWhenItIsDrawn) {
  ASSERT_TRUE(Image(4, 4, {0, 255, 0, 255}).writePng("green.png"));
  ozImage image;
  image.setFileName("green.png");
  GLRecorder rec;
  image.draw(0, 0, 0.5f);
  EXPECT_EQ(rec.count("glDrawPixels"), 1);
  std::remove("green.png");
}
