// Which light sits in which of the eight OpenGL lights, level by level. Each level holds a reference on its lights. New
// lights fill the slots from the top down, and a light that is found again keeps its slot.

#include <GL/gl.h>

#include "gfx/ozContextItem.h"
#include "gfx/ozContextTables.h"
#include "oz/ozLight.h"

namespace {

GLenum glLight(int slot) { return static_cast<GLenum>(GL_LIGHT0 + slot); }

int findLight(glLightTarget const *targets, ozLight const *light) {
  for (int i = 0; i < ozContext::LIGHT_COUNT; ++i)
    if (targets[i].light == light) return i;
  return -1;
}

} // namespace

void ozContext::pushLights() {
  if (++_lightLevel >= LEVEL_COUNT) return; // shares the top level
  glLightTarget const *const from = _lightTargets[_lightLevel - 1];
  for (int i = 0; i < LIGHT_COUNT; ++i) {
    _lightTargets[_lightLevel][i] = from[i];
    if (from[i].light) from[i].light->ref();
  }
}

void ozContext::popLights() {
  OZ_REQUIRE(_lightLevel > 0, "popLights without pushLights");
  if (_lightLevel >= LEVEL_COUNT) {
    --_lightLevel;
    return;
  }
  glLightTarget const *const below = _lightTargets[_lightLevel - 1];
  for (int i = 0; i < LIGHT_COUNT; ++i) {
    glLightTarget &target = _lightTargets[_lightLevel][i];
    if (target.light && target.on) {
      int const j = findLight(below, target.light);
      if (j < 0) {
        glDisable(glLight(i));
      } else {
        if (!below[j].on) glDisable(glLight(j));
        target.light->pop(below[j].matrix, this);
      }
    }
    releaseLight(target);
  }
  --_lightLevel;
}

// A light that goes with its last reference still finds itself here, and is switched off.
void ozContext::releaseLight(glLightTarget &target) {
  if (target.light) target.light->unref();
  target.light = nullptr;
}

void ozContext::putLight(glLightTarget &target, ozLight *light) {
  ozLight *const old = target.light;
  light->ref();
  target.light = light;
  target.assigned = 1;
  if (old) old->unref();
}

int ozContext::getLightTarget(ozLight *light, ozMatrix4f const &matrix, int &match) {
  int const on = light->getOn() != 0;
  match = -1;
  glLightTarget *const targets = lightLevel(_lightLevel);
  int i = findLight(targets, light);
  if (i >= 0 && targets[i].on == on) {
    if (targets[i].matrix == matrix)
      match = i;
    else
      targets[i].matrix = matrix;
    return i;
  }
  if (i < 0) {
    for (i = LIGHT_COUNT - 1; i >= 0 && targets[i].light;) --i;
    if (i < 0)
      for (i = LIGHT_COUNT - 1; i >= 0 && targets[i].on;) --i;
    if (i < 0) return -1;
    putLight(targets[i], light);
  }
  ozGL::enable(glLight(i), on);
  targets[i].on = on;
  targets[i].matrix = matrix;
  return i;
}

void ozContext::disableLight(ozLight *light) {
  forEachContext([=](ozContext &context) {
    glLightTarget *const targets = context.lightLevel(context._lightLevel);
    for (int i = 0; i < LIGHT_COUNT; ++i) {
      if (targets[i].light != light || targets[i].on != 1) continue;
      targets[i].on = 0;
      glDisable(glLight(i));
    }
  });
}

void ozContext::disableLightTargets() {
  glLightTarget *const targets = lightLevel(_lightLevel);
  for (int i = 0; i < LIGHT_COUNT; ++i) {
    if (targets[i].on != 1) continue;
    targets[i].on = 0;
    glDisable(glLight(i));
  }
}

ozLight *ozContext::getLight(int i) const {
  if (static_cast<unsigned int>(i) >= LIGHT_COUNT) return nullptr;
  return _lightTargets[slot(_lightLevel)][i].light;
}
