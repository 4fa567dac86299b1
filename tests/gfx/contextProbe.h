#ifndef TESTS_GFX_CONTEXT_PROBE_H
#define TESTS_GFX_CONTEXT_PROBE_H

#include "oz/ozFog.h"
#include "oz/ozGeometry.h"
#include "oz/ozLight.h"
#include "oz/ozMaterial.h"
#include "oz/ozTexGen.h"
#include "oz/ozTexture.h"
#include "support/contextFixture.h"
#include <gmock/gmock.h>
#include <vector>

/// What a context shows to nobody else.
struct ozContextProbe {
  explicit ozContextProbe(ozContext *context) : c(context) {}

  bool stateDirty() const { return c->_stateDirty; }
  void cleanState() { c->_stateDirty = 0; }
  bool writesDefault() const { return c->_whichSetState == c->_defaultState; }
  void writeCurrent() { c->_whichSetState = c->_curState; }
  void writeDefault() { c->_whichSetState = c->_defaultState; }
  void const *lastAppearance() const { return c->_lastAppearance; }
  ozBitMask lastSetMask() const { return c->_lastSetMask; }
  int texture(int name) const { return c->_textureObjects[name]; }
  unsigned int versionRoom() const { return c->_objectVersions.getSize(); }
  bool isCurrent() const { return c->_isCurrent; }
  glLightTarget const &target(int i) const { return c->_lightTargets[ozContext::slot(c->_lightLevel)][i]; }
  ozFog *fog() const { return c->_fogStack[ozContext::slot(c->_fogLevel)]; }

  ozContext *c;
};

/// Objects that note when they are drawn and send nothing.
struct NotedTexture : ozTexture {
  NotedTexture() : ozTexture(false) {}
  void draw(ozContext *context) override {
    ++draws;
    sawItself = context->getTexture() == this;
  }
  int draws = 0;
  bool sawItself = false;
};

struct NotedTexGen : ozTexGen {
  void draw(ozContext *context) override {
    ++draws;
    sawItself = context->getTexGen() == this;
  }
  int draws = 0;
  bool sawItself = false;
};

struct NotedMaterial : ozMaterial {
  void draw(FaceEnum face, ozContext *context) override {
    faces.push_back(face);
    sawItself = context->getMaterial() == this || context->getBackMaterial() == this;
  }
  std::vector<int> faces;
  bool sawItself = false;
};

#endif
