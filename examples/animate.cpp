// Animation by connections: a clock drives an interpolator, and the interpolator a transform. No code runs between
// them: a change marks what depends on it, and the value is computed when the transform is drawn.

#include <oz/OzScene3D.h>

namespace {

ozGroup *scene;
ozPerspCamera *camera;
ozDrawAction *action;

int frame(void *) {
  ozWindow *const window = ozWindow::getCurrent();
  ozEventArray &events = *window->getEvents();
  for (unsigned int i = 0; i < events.getCount(); i++)
    if (events[i]->type == ozEvent::KEY_DOWN_EVENT && events[i]->key == 'q') {
      delete window;
      return 1;
    }
  camera->draw(action);
  ozWindow::getContext()->clear(ozContext::CLEAR_COLOR | ozContext::CLEAR_DEPTH, 0.2f, 0.22f, 0.26f, 1);
  action->apply(scene);
  ozWindow::swapBuffers();
  return 0; // go on at once; anything else waits for input
}

} // namespace

int main() {
  if (!ozWindow::checkDisplay()) return fprintf(stderr, "There is no display.\n"), 1;

  ozAppearance *appearance = new ozAppearance;
  appearance->setMaterial(new ozMaterial);
  appearance->setLightEnable(1);
  ozShape *shape = new ozShape;
  shape->setAppearance(appearance);
  shape->addGeometry(new ozSphere);
  ozTransform *ball = new ozTransform;
  ball->addChild(shape);

  ozTimeSensor *clock = new ozTimeSensor;
  clock->setCycleInterval(2.0);
  clock->setLoop(1);
  ozPositionInterpolator *path = new ozPositionInterpolator;
  for (int i = 0; i <= 8; i++) {
    float const t = static_cast<float>(i) / 8;
    path->key()->set(static_cast<unsigned int>(i), t);
    path->keyValue()->set(static_cast<unsigned int>(i), ozVec3f(0, 8 * t * (1 - t) - 1, 0));
  }
  clock->getField("fraction_changed")->connect(path->getField("set_fraction"));
  path->getField("value_changed")->connect(ball->getField("set_translation"));

  // Clock and interpolator stand in the graph only so that it keeps them.
  scene = new ozGroup;
  scene->ref();
  scene->addChild(new ozDirectionalLight);
  scene->addChild(ball);
  scene->addChild(clock);
  scene->addChild(path);

  camera = new ozPerspCamera;
  camera->setPosition(0, 0, 8);
  action = new ozDrawAction;
  action->setCamera(camera);

  ozWindow *window = new ozWindow("animation");
  window->getThisWindowContext()->setDepthEnable(1);
  ozWindow::setFrameFunc(frame, nullptr);
  ozWindow::mainLoop();

  scene->unref();
  delete action;
  return 0;
}
