// Overrides: appearances that win over those of the shapes, field by field. The w key switches a wireframe view of the
// whole scene, the c key paints everything in one material; the graph itself stays as it is.

#include <oz/OzScene3D.h>

namespace {

ozGroup *scene;
ozPerspCamera *camera;
ozDrawAction *action;
ozAppearance *over;
ozMaterial *paint;
bool isWire, isPainted;

// An override sets only the fields that are to win; all others stay "inherited".
void update() {
  ozContext *const context = ozWindow::getContext();
  if (over) {
    context->popOverrideAppearance(); // drops the last reference
    over = nullptr;
  }
  if (!isWire && !isPainted) return;
  over = new ozAppearance;
  if (isWire) over->setPolyMode(ozContext::LINE_PMODE);
  if (isPainted) over->setMaterial(paint);
  context->pushOverrideAppearance(over);
}

void handleEvents(void *) {
  ozWindow *const window = ozWindow::getCurrent();
  ozEventArray &events = *window->getEvents();
  for (unsigned int i = 0; i < events.getCount(); i++) {
    if (events[i]->type != ozEvent::KEY_DOWN_EVENT) continue;
    if (events[i]->key == 'w') isWire = !isWire;
    if (events[i]->key == 'c') isPainted = !isPainted;
    if (events[i]->key == 'q') {
      delete window;
      return;
    }
  }
  update();
}

void render(void *) {
  camera->draw(action);
  ozWindow::getContext()->clear(ozContext::CLEAR_COLOR | ozContext::CLEAR_DEPTH, 0.2f, 0.22f, 0.26f, 1);
  action->apply(scene);
  ozWindow::swapBuffers();
}

} // namespace

int main() {
  if (!ozWindow::checkDisplay()) return fprintf(stderr, "There is no display.\n"), 1;

  scene = new ozGroup;
  scene->ref();
  scene->addChild(new ozDirectionalLight);
  ozGeometry *const solids[] = {new ozBox, new ozSphere, new ozCone};
  for (int i = 0; i < 3; i++) {
    ozMaterial *material = new ozMaterial;
    material->setDiffuseColor(i == 0, i == 1, i == 2);
    ozAppearance *appearance = new ozAppearance;
    appearance->setMaterial(material);
    appearance->setLightEnable(1);
    ozShape *shape = new ozShape;
    shape->setAppearance(appearance);
    shape->addGeometry(solids[i]);
    ozTransform *place = new ozTransform;
    place->setTranslation(3.0f * static_cast<float>(i - 1), 0, 0);
    place->setRotation(1, 1, 0, 0.5f);
    place->addChild(shape);
    scene->addChild(place);
  }
  paint = new ozMaterial;
  paint->ref();
  paint->setDiffuseColor(0.9f, 0.8f, 0.5f);

  camera = new ozPerspCamera;
  camera->setPosition(0, 0, 13);
  action = new ozDrawAction;
  action->setCamera(camera);

  ozWindow *window = new ozWindow("overrides: w, c, q");
  window->getThisWindowContext()->setDepthEnable(1);
  window->setEventFunc(handleEvents, nullptr);
  ozWindow::setRenderFunc(render, nullptr);
  ozWindow::mainLoop();

  paint->unref();
  scene->unref();
  delete action;
  return 0;
}
