// What a stage counts, and the overlay that shows it.

#include "ozview/Stage.h"
#include "ozview/Overlay.h"
#include "ozview/Scene.h"
#include "program.h"
#include "support/fonts.h"
#include "support/offscreen.h"

namespace {

float const black[] = {0, 0, 0};
int const side = 200;

// A scene of one text, drawn from the front.
class StageTest : public testing::Test {
protected:
  StageTest() : navigation(0, 0), device(ozDevice::createOffscreen(side, side)), context(new ozContext(device)) {
    context->makeCurrent(device);
    context->setViewport(0, 0, side, side);
  }
  ~StageTest() override {
    stage.reset();
    delete context;
    ozDevice::destroy(device);
  }

  void draw(std::string const &text) {
    std::string reason;
    ASSERT_TRUE(scene.add(folder.write("scene.wrl", "#VRML V2.0 utf8\n" + text), reason)) << reason;
    stage.reset(new Stage(scene, black));
    stage->prepare(context);
    stage->frame(navigation, 1);
    stage->draw(navigation, side, side);
  }
  // How many pixels of the lines [from, to) are white, or whatever else.
  static int count(Image const &image, int from, int to) {
    int found = 0;
    for (int y = from; y < to; y++)
      for (int x = 0; x < image.width(); x++) found += image.at(x, y)[0] > 127;
    return found;
  }

  Folder folder;
  Scene scene;
  Navigation navigation;
  HDC device;
  ozContext *context;
  std::unique_ptr<Stage> stage;
};

char const fiveBoxes[] =
    "DEF B Transform { translation -8 0 0 children DEF S Shape { geometry Box { } } }\n"
    "Transform { translation -4 0 0 children USE S }\nShape { geometry Box { } }\n"
    "Transform { translation 4 0 0 children USE S }\nTransform { translation 8 0 0 children USE S }\n";

} // namespace

TEST_F(StageTest, EachUseOfAShapeInViewCountsAsDrawn) {
  draw(fiveBoxes);
  EXPECT_EQ(stage->shapesDrawn(), 5);
  EXPECT_EQ(stage->countShapes(), 5);
}

TEST_F(StageTest, ShapesOutOfViewAreCulled) {
  draw(fiveBoxes);
  navigation.zoom(1 / 6.0f); // the middle one alone fills the view
  stage->draw(navigation, side, side);
  EXPECT_EQ(stage->shapesDrawn(), 1);
  EXPECT_EQ(stage->countShapes(), 5);
}

TEST_F(StageTest, ShapesBehindTheEyeAreCulled) {
  draw("Shape { geometry Box { } }\nTransform { translation 0 0 -30 children Shape { geometry Box { } } }\n");
  navigation.centreOn(ozVec3f(0, 0, -30));
  navigation.zoom(1 / 4.0f);
  stage->draw(navigation, side, side);
  EXPECT_EQ(stage->shapesDrawn(), 1);
  EXPECT_EQ(stage->countShapes(), 2);
}

TEST_F(StageTest, OfTheLevelsOfDetailTheChosenOneCounts) {
  // No file brings any: the reader refuses them.
  auto const box = [] {
    auto *const shape = new ozShape;
    shape->addGeometry(new ozBox);
    return shape;
  };
  auto *const fine = new ozGroup, *const coarse = new ozGroup;
  fine->addChild(box());
  fine->addChild(box());
  coarse->addChild(box());
  auto *const levels = new ozLOD;
  levels->setRange(0, 0, 1);
  levels->setRange(1, 1, 1000);
  levels->addChild(fine);
  levels->addChild(coarse);
  scene.root()->addChild(levels);
  draw("Shape { geometry Box { } }\n");
  EXPECT_EQ(stage->shapesDrawn(), 2); // the file's own, and the coarse level
  EXPECT_EQ(stage->countShapes(), 2);
}

TEST_F(StageTest, TheOverlayWritesThreeLinesAtTheTopLeft) {
  SKIP_WITHOUT_FONT();
  draw("Transform { translation 0 -1000 0 children Shape { geometry Box { } } }\n");
  navigation.centreOn(ozVec3f(0, 1000, 0)); // nothing is in view
  stage->draw(navigation, side, side);
  EXPECT_EQ(count(readPixels(side, side), 0, side), 0);
  Overlay overlay("scene.wrl");
  overlay.draw(*stage, side, side, 0.01);
  Image const shown = readPixels(side, side);
  // A white line of text each 20 pixels, with room between them.
  for (int line = 0; line < 3; line++) {
    EXPECT_GT(count(shown, line * 20 + 6, line * 20 + 20), 30) << line;
    EXPECT_EQ(shown.at(5, line * 20 + 15), (Image::Pixel{0, 0, 0, 255})) << "a margin";
  }
  EXPECT_EQ(count(shown, 68, side), 0);
}

TEST_F(StageTest, TheOverlayLeavesTheNextFrameAsItWas) {
  draw(fiveBoxes);
  Image const before = readPixels(side, side);
  Overlay overlay("scene.wrl");
  overlay.draw(*stage, side, side, 0);
  stage->draw(navigation, side, side);
  Image const after = readPixels(side, side);
  for (int y = 0; y < side; y++)
    for (int x = 0; x < side; x++) ASSERT_EQ(after.at(x, y), before.at(x, y)) << x << " " << y;
}
