// --output: what is drawn, and golden images of the models.

#include "program.h"
#include "support/goldenImage.h"
#include <cmath>

namespace {

Image draw(std::vector<std::string> arguments, int width = 320, int height = 240) {
  Folder const folder;
  arguments.insert(arguments.end(),
                   {"--size", std::to_string(width) + "x" + std::to_string(height), "--output", folder / "out.png"});
  ViewerRun const run(arguments);
  EXPECT_EQ(run.status, 0) << run.err;
  return Image::readPng(folder / "out.png");
}

Image drawText(std::string const &text, std::vector<std::string> arguments, int width = 100, int height = 100) {
  Folder const folder;
  arguments.insert(arguments.begin(), folder.write("model.wrl", "#VRML V2.0 utf8\n" + text));
  return draw(arguments, width, height);
}

Image::Pixel const black{0, 0, 0, 255}, white{255, 255, 255, 255};
std::vector<std::string> const onBlack{"--background", "0,0,0", "--view", "0,0"};

// Where the pixels of a colour lie.
struct Extent {
  Extent(Image const &image, Image::Pixel wanted) : left(image.width()), right(-1), top(image.height()), bottom(-1) {
    for (int y = 0; y < image.height(); y++)
      for (int x = 0; x < image.width(); x++) {
        Image::Pixel const here = image.at(x, y);
        for (int i = 0; i < 3; i++)
          if (std::abs(here[i] - wanted[i]) > 60) goto next;
        left = std::min(left, x);
        right = std::max(right, x);
        top = std::min(top, y);
        bottom = std::max(bottom, y);
      next:;
      }
  }
  int left, right, top, bottom;
};

} // namespace

TEST(Picture, HasTheSizeThatWasAskedFor) {
  Image const picture = draw({model("solids")}, 123, 77);
  EXPECT_EQ(picture.width(), 123);
  EXPECT_EQ(picture.height(), 77);
}

TEST(Picture, IsOf800By600WithoutASize) {
  Folder const folder;
  ASSERT_EQ(ViewerRun({model("lines"), "--output", folder / "out.png"}).status, 0);
  Image const picture = Image::readPng(folder / "out.png");
  EXPECT_EQ(picture.width(), 800);
  EXPECT_EQ(picture.height(), 600);
}

TEST(Picture, AnEmptySceneShowsTheBackground) {
  Image const picture = drawText("", {"--background", "1,0.2,0"}, 20, 20);
  EXPECT_EQ(picture.count({255, 51, 0, 255}, 1), 400);
}

TEST(Picture, AnUnlitBoxIsWhiteAndNearlyFillsTheFrame) {
  Image const picture = drawText("Shape { geometry Box { } }", onBlack);
  Extent const box(picture, white);
  EXPECT_GT(box.right - box.left, 80);
  EXPECT_GE(box.left, 1);
  EXPECT_LE(box.right, 98);
  EXPECT_NEAR(box.left + box.right, 99, 2) << "in the middle";
  EXPECT_NEAR(box.top + box.bottom, 99, 2);
}

TEST(Picture, AWideSceneFillsTheWidthOfAWidePicture) {
  Extent const box(drawText("Shape { geometry Box { size 40 1 1 } }", onBlack, 200, 100), white);
  EXPECT_GT(box.right - box.left, 175);
  EXPECT_LE(box.right, 199);
}

TEST(Picture, EdgesAreSmooth) {
  // A turned edge gives many tones between black and white.
  Image const picture = drawText("Transform { rotation 0 0 1 0.3 children Shape { geometry Box { } } }", onBlack);
  int const between = 100 * 100 - picture.count(white) - picture.count(black);
  EXPECT_GT(between, 100);
}

TEST(Picture, TheViewTellsFromWhere) {
  // A small box on the right of a large one, towards +X: from +X it stands in front, in the middle.
  std::string const text =
      "Shape { appearance Appearance { material Material { diffuseColor 0 0 0 } } geometry Box { } }"
      "Transform { translation 3 0 0 children Shape { geometry Box { size 0.5 0.5 0.5 } } }";
  Extent const front(drawText(text, {"--background", "0,0,0", "--view", "0,0"}), white);
  EXPECT_GT(front.left, 60);
  Extent const side(drawText(text, {"--background", "0,0,0", "--view", "90,0"}), white);
  EXPECT_NEAR(side.left + side.right, 99, 2);
  Extent const behind(drawText(text, {"--background", "0,0,0", "--view", "180,0"}), white);
  EXPECT_LT(behind.right, 40);
}

TEST(Picture, AnElevationLooksFromAbove) {
  // From above, what stands in front is lower in the picture.
  std::string const text =
      "Shape { appearance Appearance { material Material { diffuseColor 0 0 0 } } geometry Box { } }"
      "Transform { translation 0 0 3 children Shape { geometry Box { size 0.5 0.5 0.5 } } }";
  Extent const small(drawText(text, {"--background", "0,0,0", "--view", "0,80"}), white);
  EXPECT_GT(small.top, 55);
}

TEST(Picture, TimeMovesWhatTheClocksDrive) {
  std::string const text =
      "DEF Clock TimeSensor { cycleInterval 100 loop TRUE }\n"
      "DEF Path PositionInterpolator { key [ 0 1 ] keyValue [ -4 0 0 4 0 0 ] }\n"
      "DEF Ball Transform { children Shape { geometry Box { } } }\n"
      "Shape { appearance Appearance { material Material { diffuseColor 0 0 0 } } geometry Box { size 12 0.1 0.1 } }\n"
      "ROUTE Clock.fraction_changed TO Path.set_fraction\nROUTE Path.value_changed TO Ball.set_translation\n";
  auto middle = [&](char const *time) {
    Extent const ball(drawText(text, {"--background", "0,0,0", "--view", "0,0", "--time", time}, 200, 100), white);
    return (ball.left + ball.right) / 2.0;
  };
  double const first = middle("0"), half = middle("50"), late = middle("75"), nextRound = middle("150");
  EXPECT_NEAR(half, 99.5, 2);
  EXPECT_LT(first, 60);
  EXPECT_NEAR(late - half, (half - first) / 2, 3);
  EXPECT_NEAR(nextRound, half, 2);
}

TEST(Picture, TransparentMaterialsLetThroughWhatLiesBehind) {
  std::string const text =
      "Shape { geometry Box { } }\n"
      "Transform { translation 0 0 2 children Shape {\n"
      "  appearance Appearance { material Material { diffuseColor 0 0 0 transparency 0.5 } } geometry Box { } } }\n";
  Image const picture = drawText(text, onBlack);
  EXPECT_NEAR(picture.at(50, 50)[0], 127, 20);
}

TEST(Picture, FilesThatAModelNamesAreFoundBesideIt) {
  Folder const folder;
  std::filesystem::create_directory(folder / "sub");
  Image(4, 4, {255, 0, 0, 255}).writePng(folder / "sub/red.png");
  std::string const model =
      folder.write("sub/model.wrl", "#VRML V2.0 utf8\nShape {\n"
                                    "  appearance Appearance { texture ImageTexture { url \"red.png\" } }\n"
                                    "  geometry Sphere { } }\n");
  Image const picture = draw({model}, 50, 50); // the program runs in another folder
  Image::Pixel const middle = picture.at(25, 25);
  EXPECT_GT(middle[0], 200);
  EXPECT_LT(middle[1], 50);
}

TEST(Picture, SeveralFilesAreShownTogether) {
  Folder const folder;
  std::string const a =
      folder.write("a.wrl", "#VRML V2.0 utf8\nTransform { translation -3 0 0 children Shape { geometry Box { } } }\n");
  std::string const b =
      folder.write("b.wrl", "#VRML V2.0 utf8\nTransform { translation 3 0 0 children Shape { geometry Box { } } }\n");
  std::vector<std::string> arguments{a, b};
  arguments.insert(arguments.end(), onBlack.begin(), onBlack.end());
  Image const picture = draw(arguments, 200, 100);
  EXPECT_EQ(picture.at(30, 50), white);
  EXPECT_EQ(picture.at(170, 50), white);
  EXPECT_EQ(picture.at(100, 50), black);
}

// Golden images.

class ModelPicture : public testing::TestWithParam<char const *> {};

TEST_P(ModelPicture, LooksAsItShould) {
  EXPECT_GOLDEN(draw({model(GetParam()), "--time", "0.7"}), std::string("model_") + GetParam());
}

INSTANTIATE_TEST_SUITE_P(Models, ModelPicture,
                         testing::Values("animation", "faces", "groups", "lights", "lines", "primitives", "sensors",
                                         "choices", "showpiece", "solids", "texture", "waves"),
                         [](auto const &info) { return info.param; });

// A real file, how long after its start, and the name of its picture.
struct SharedPictureCase {
  char const *file, *time, *name;
};

class SharedPicture : public testing::TestWithParam<SharedPictureCase> {};

TEST_P(SharedPicture, LooksAsItShould) {
  if (!hasSharedFiles()) GTEST_SKIP() << "SKIPPED: no real files beside this checkout";
  EXPECT_GOLDEN(draw({sharedFile(GetParam().file), "--time", GetParam().time}), std::string("real_") + GetParam().name);
}

INSTANTIATE_TEST_SUITE_P(
    Files, SharedPicture,
    testing::Values(SharedPictureCase{"HelloWorld.wrl", "0", "hello_world"},
                    SharedPictureCase{"LED_0201_0603Metric.wrl", "0", "led_0201"},
                    SharedPictureCase{"LED_0805_2012Metric.wrl", "0", "led_0805"},
                    SharedPictureCase{"LQFP-48_7x7mm_P0.5mm.wrl", "0", "lqfp_48"},
                    SharedPictureCase{"MotionCaptureROM.WRL", "0", "motion_capture"},
                    SharedPictureCase{"MotionCaptureROM.WRL", "3", "motion_capture_later"},
                    SharedPictureCase{"PQFP-256_28x28mm_P0.4mm.wrl", "0", "pqfp_256"},
                    SharedPictureCase{"PinHeader_2x04_P2.00mm_Horizontal.wrl", "0", "pin_header"},
                    SharedPictureCase{"Rollers.wrl", "1", "rollers"},
                    SharedPictureCase{"USB_C_Receptacle_GCT_USB4105-xx-A_16P_TopMnt_Horizontal.wrl", "0", "usb_c"}),
    [](auto const &info) { return info.param.name; });
