#include "Stage.h"
#include "Scene.h"
#include <algorithm>

Stage::Stage(Scene const &scene, float const background[3])
    : _root(new ozEnvironment), _headlight(new ozDirectionalLight), _camera(new ozPerspCamera),
      _action(new Counting<ozDrawAction>), _wireframe(new ozAppearance), _isWireframe(false),
      _isTransparent(scene.isTransparent()) {
  std::copy(background, background + 3, _background);
  _root->ref();
  _camera->ref();
  _wireframe->ref();
  _root->light()->append(_headlight);
  _root->addChild(scene.root());
  _headlight->setIntensity(scene.hasLights() ? 0.6f : 0.9f);
  _headlight->setAmbientIntensity(0.7f); // what is turned away from every light still shows
  _wireframe->setPolyMode(ozContext::LINE_PMODE);
  _action->setCamera(_camera);
}

Stage::~Stage() {
  delete _action;
  _wireframe->unref();
  _camera->unref();
  _root->unref();
}

void Stage::prepare(ozContext *context) {
  context->setDepthEnable(1);
  // Files have no word for blending, only for transparency.
  context->setTranspEnable(_isTransparent);
}

void Stage::draw(Navigation const &navigation, int width, int height, float shiftX, float shiftY) {
  navigation.place(_camera, bound(), static_cast<float>(width) / height);

  // A little from above and from the left, so that shapes have a light and a dark side.
  ozVec3f const right = navigation.right(), up = navigation.up(), back = navigation.back();
  ozVec3f direction;
  for (int i = 0; i < 3; i++) direction._v[i] = 0.3f * right._v[i] - 0.4f * up._v[i] - back._v[i];
  _headlight->setDirection(direction);

  ozFrustum *const frustum = _camera->getBaseFrust();
  float left, rightEdge, bottom, top, near, far;
  frustum->getDiagCorners(left, rightEdge, bottom, top, near, far);
  float const dx = shiftX * (rightEdge - left) / width, dy = shiftY * (top - bottom) / height;
  if (shiftX != 0 || shiftY != 0) frustum->makePersp(left + dx, rightEdge + dx, bottom + dy, top + dy);

  _camera->draw(_action);
  _action->getContext()->clear(ozContext::CLEAR_COLOR | ozContext::CLEAR_DEPTH, _background[0], _background[1],
                               _background[2], 1);
  _action->count = 0;
  _action->apply(_root);
  if (shiftX != 0 || shiftY != 0) frustum->makePersp(left, rightEdge, bottom, top);
}

int Stage::countShapes() {
  // The same eye, so that levels of detail are chosen alike, in the middle of a volume around all there is.
  ozFrustumCamera *const all = new ozFrustumCamera;
  float x, y, z, angle;
  _camera->getPosition(&x, &y, &z);
  all->setPosition(x, y, z);
  ozSphereBound sphere;
  _root->getSphereBound(sphere);
  float const reach = 2 * (sphere.center.distance(ozVec3f(x, y, z)) + sphere.radius) + 1;
  _camera->getOrientation(&x, &y, &z, &angle);
  all->setOrientation(x, y, z, angle);
  all->getBaseFrust()->makeOrtho(-reach, reach, -reach, reach);
  all->getBaseFrust()->setNearFar(-reach, reach);
  Counting<ozVFCullAction> action;
  action.setCamera(all);
  action.apply(_root);
  return action.count;
}

void Stage::toggleWireframe(ozContext *context) {
  if (_isWireframe)
    context->popOverrideAppearance();
  else
    context->pushOverrideAppearance(_wireframe);
  _isWireframe = !_isWireframe;
}
