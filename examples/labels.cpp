// Labels: the names of three solids on a turning disc. A text is placed by its position in space like any geometry,
// hidden by what is in front of it, and drawn flat at a size in pixels, however far away it is.

#include <oz/OzScene3D.h>

namespace {

ozGroup *scene;
ozPerspCamera *camera;
ozDrawAction *action;

// A solid with its name above it, at a place on the disc.
ozTransform *makeStand(ozGeometry *solid, char const *name, float x, float z) {
  ozAppearance *appearance = new ozAppearance;
  appearance->setMaterial(new ozMaterial);
  appearance->setLightEnable(1);
  ozShape *shape = new ozShape;
  shape->setAppearance(appearance);
  shape->addGeometry(solid);

  ozScreenAlignedText *text = new ozScreenAlignedText;
  text->setText(name);
  text->setPosition(0, 1.6f, 0);
  text->setColor(1, 0.85f, 0.4f, 1);
  text->setFace(ozScreenAlignedText::HELVETICA_BOLD);
  text->setSize(18);
  ozShape *label = new ozShape; // without an appearance, so that no light falls on it
  label->addGeometry(text);

  ozTransform *stand = new ozTransform;
  stand->setTranslation(x, 0, z);
  stand->addChild(shape);
  stand->addChild(label);
  return stand;
}

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
  return 0;
}

} // namespace

int main() {
  if (!ozWindow::checkDisplay()) return fprintf(stderr, "There is no display.\n"), 1;

  ozTransform *disc = new ozTransform;
  disc->addChild(makeStand(new ozBox, "Box", 0, 3));
  disc->addChild(makeStand(new ozSphere, "Sphere", 2.6f, -1.5f));
  disc->addChild(makeStand(new ozCone, "Cone", -2.6f, -1.5f));

  ozTimeSensor *clock = new ozTimeSensor;
  clock->setCycleInterval(12.0);
  clock->setLoop(1);
  ozOrientationInterpolator *turn = new ozOrientationInterpolator;
  for (int i = 0; i <= 4; i++) {
    turn->key()->set(static_cast<unsigned int>(i), static_cast<float>(i) / 4);
    turn->keyValue()->set(static_cast<unsigned int>(i), ozRotation(0, 1, 0, 90.0f * static_cast<float>(i)));
  }
  clock->getField("fraction_changed")->connect(turn->getField("set_fraction"));
  turn->getField("value_changed")->connect(disc->getField("set_rotation"));

  scene = new ozGroup;
  scene->ref();
  scene->addChild(new ozDirectionalLight);
  scene->addChild(disc);
  scene->addChild(clock);
  scene->addChild(turn);

  camera = new ozPerspCamera;
  camera->setPosition(0, 4, 11);
  camera->setOrientation(1, 0, 0, -0.3f);
  action = new ozDrawAction;
  action->setCamera(camera);

  ozWindow *window = new ozWindow("labels");
  window->getThisWindowContext()->setDepthEnable(1);
  ozWindow::setFrameFunc(frame, nullptr);
  ozWindow::mainLoop();

  scene->unref();
  delete action;
  return 0;
}
