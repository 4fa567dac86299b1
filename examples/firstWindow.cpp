// A window that shows a cube. Drag with the left button to turn it; the q key ends the program.

#include <oz/OzScene3D.h>

namespace {

ozWindow *window;
ozGroup *scene;
ozTransform *turned;
ozPerspCamera *camera;
ozDrawAction *action;
int lastX;
float angle = 0.6f;

// Called when input has come in.
void handleEvents(void *) {
  ozEventArray &events = *window->getEvents();
  for (unsigned int i = 0; i < events.getCount(); i++) {
    ozEvent const &event = *events[i];
    if (event.type == ozEvent::MOUSE_DOWN_EVENT) lastX = event.x;
    if (event.type == ozEvent::MOTION_EVENT) {
      angle += 0.01f * static_cast<float>(event.x - lastX);
      lastX = event.x;
      turned->setRotation(0, 1, 0, angle);
    }
    if (event.type == ozEvent::KEY_DOWN_EVENT && event.key == 'q') {
      delete window;
      return;
    }
  }
}

// A frame: camera, clear, graph, swap.
void render(void *) {
  camera->draw(action);
  ozWindow::getContext()->clear(ozContext::CLEAR_COLOR | ozContext::CLEAR_DEPTH, 0.2f, 0.22f, 0.26f, 1);
  action->apply(scene);
  ozWindow::swapBuffers();
}

} // namespace

int main() {
  if (!ozWindow::checkDisplay()) return fprintf(stderr, "There is no display.\n"), 1;

  // The graph: a light, then a shape, which the light shines on because it is drawn after it.
  ozMaterial *material = new ozMaterial;
  material->setDiffuseColor(0.9f, 0.6f, 0.2f);
  ozAppearance *appearance = new ozAppearance;
  appearance->setMaterial(material);
  appearance->setLightEnable(1);
  ozShape *shape = new ozShape;
  shape->setAppearance(appearance);
  shape->addGeometry(new ozBox);
  turned = new ozTransform;
  turned->setRotation(0, 1, 0, angle);
  turned->addChild(shape);
  ozDirectionalLight *light = new ozDirectionalLight;
  light->setDirection(1, -1.5f, -2);
  light->setAmbientIntensity(1);
  scene = new ozGroup;
  scene->ref(); // the program keeps the root; the graph keeps the rest
  scene->addChild(light);
  scene->addChild(turned);

  camera = new ozPerspCamera;
  camera->setPosition(0, 1.5f, 6);
  camera->setOrientation(1, 0, 0, -0.24f); // radians: a little downwards
  action = new ozDrawAction;
  action->setCamera(camera);

  ozWindow::initSize(600, 600);
  window = new ozWindow("first window");
  window->getThisWindowContext()->setDepthEnable(1);
  window->setEventFunc(handleEvents, nullptr);
  ozWindow::setRenderFunc(render, nullptr);
  ozWindow::mainLoop(); // returns when the last window is gone

  scene->unref();
  delete action;
  return 0;
}
