// Lights in scopes, and fog: a row of spheres that a warm spot light picks out, going off into fog. An environment is
// the scope of both: what stands outside sees neither.

#include <oz/OzScene3D.h>

namespace {

ozGroup *scene;
ozPerspCamera *camera;
ozDrawAction *action;

ozShape *makeSphere(float r, float g, float b) {
  ozMaterial *material = new ozMaterial;
  material->setDiffuseColor(r, g, b);
  material->setSpecularColor(0.5f, 0.5f, 0.5f);
  ozAppearance *appearance = new ozAppearance;
  appearance->setMaterial(material);
  appearance->setLightEnable(1);
  ozShape *shape = new ozShape;
  shape->setAppearance(appearance);
  shape->addGeometry(new ozSphere);
  return shape;
}

void ignoreEvents(void *) {}

void render(void *) {
  camera->draw(action);
  ozWindow::getContext()->clear(ozContext::CLEAR_COLOR | ozContext::CLEAR_DEPTH, 0.6f, 0.65f, 0.7f, 1);
  action->apply(scene);
  ozWindow::swapBuffers();
}

} // namespace

int main() {
  if (!ozWindow::checkDisplay()) return fprintf(stderr, "There is no display.\n"), 1;

  ozSpotLight *spot = new ozSpotLight;
  spot->setLocation(0, 4, 2);
  spot->setDirection(0, -0.6f, -1);
  spot->setCutOffAngle(40);
  spot->setExponent(8);
  spot->setColor(1, 0.85f, 0.6f);
  ozDirectionalLight *dusk = new ozDirectionalLight;
  dusk->setDirection(-1, -1, -0.5f);
  dusk->setIntensity(0.35f);
  dusk->setAmbientIntensity(1);

  ozFog *fog = new ozFog;
  fog->setMode(ozFog::LINEAR_FOG);
  fog->setStart(8);
  fog->setEnd(40);
  fog->setColor(0.6f, 0.65f, 0.7f, 1);

  ozEnvironment *environment = new ozEnvironment;
  environment->light()->append(spot);
  environment->light()->append(dusk);
  environment->setFog(fog);
  for (int i = 0; i < 10; i++) {
    ozTransform *place = new ozTransform;
    place->setTranslation(i % 2 ? 1.6f : -1.6f, 0, -3.5f * static_cast<float>(i));
    place->addChild(makeSphere(0.8f, 0.3f + 0.06f * static_cast<float>(i), 0.3f));
    environment->addChild(place);
  }
  scene = new ozGroup;
  scene->ref();
  scene->addChild(environment);

  camera = new ozPerspCamera;
  camera->setPosition(0, 1.5f, 8);
  camera->setOrientation(1, 0, 0, -0.1f);
  action = new ozDrawAction;
  action->setCamera(camera);

  ozWindow *window = new ozWindow("lights and fog");
  window->getThisWindowContext()->setDepthEnable(1);
  window->getThisWindowContext()->setFogEnable(1); // fog must be on in the default state as well
  window->setEventFunc(ignoreEvents, nullptr);
  ozWindow::setRenderFunc(render, nullptr);
  ozWindow::mainLoop();

  scene->unref();
  delete action;
  return 0;
}
