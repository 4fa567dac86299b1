#include "Snapshot.h"
#include "Options.h"
#include "Scene.h"
#include "Stage.h"

namespace {

// Where in a pixel each of the frames is taken that a smooth picture is the mean of: sixteenths of a pixel, no two in
// the same row or column.
int const samples[][2] = {{1, -3}, {-1, 3}, {5, 1}, {-3, -5}, {-5, 5}, {-7, -1}, {3, 7}, {7, -7}};

} // namespace

Picture takePicture(Stage &stage, Navigation const &navigation, int width, int height) {
  Picture picture(width, height);
  for (auto const &sample : samples) {
    stage.draw(navigation, width, height, sample[0] / 16.0f, sample[1] / 16.0f);
    picture.addFrame();
  }
  return picture;
}

bool drawSnapshot(Scene &scene, Options const &options, std::string const &file, std::string &reason) {
  HDC const device = ozDevice::createOffscreen(options.width, options.height);
  if (!device) {
    reason = "a picture of that size cannot be drawn here";
    return false;
  }
  ozContext *const context = new ozContext(device);
  context->makeCurrent(device);
  context->setViewport(0, 0, options.width, options.height);
  bool good;
  {
    Stage stage(scene, options.background);
    stage.prepare(context);
    scene.startClocks(options.time);
    Scene::tick();
    Navigation navigation(options.azimuth, options.elevation);
    stage.frame(navigation, static_cast<float>(options.width) / options.height);
    good = takePicture(stage, navigation, options.width, options.height).write(file, reason);
  }
  delete context;
  ozDevice::destroy(device);
  return good;
}
