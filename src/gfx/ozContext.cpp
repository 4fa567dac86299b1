// The life of a context: made, made current, deleted, and how all contexts forget an object that goes.
//
// The cache stands on three pointers. curState is the record of the present level and holds what OpenGL holds; every
// comparison is made against it. defaultState holds what the application has set. whichSetState is defaultState between
// drawing and curState while something is being applied, and says whether a setter writes the default state too.

#include "oz/ozContext.h"

#include <GL/gl.h>

#include "gfx/ozContextTables.h"
#include "oz/ozAppearance.h"
#include "oz/ozFog.h"
#include "oz/ozLight.h"
#include "platform/ozDeviceRecord.h"

OZ_DEFINE_TYPE(ozContext, "Context", ozObject) {
  Tables &shared = tables();
  shared.textureNames.setCount(shared.textureNameCount);
}

ozContext::Tables &ozContext::tables() {
  static Tables *const shared = new Tables; // never deleted, see Tables
  return *shared;
}

namespace {

// What a new rendering context holds, which is why init issues no state calls.
void setStartValues(_ozGfx &gfx) {
  gfx = _ozGfx();
  gfx.shadeModel = ozContext::SMOOTH_SHADE;
  gfx.transpMode = ozContext::BLEND_TRANSP;
  gfx.alphaFunc = ozContext::ALWAYS_AFUNC;
  gfx.srcBlendFunc = ozContext::ONE_SBLEND;
  gfx.colorMask = 255;
  gfx.depthFunc = ozContext::LESS_DFUNC;
  gfx.depthMask = 1;
  gfx.polyMode = ozContext::FILL_PMODE;
  gfx.lineStipplePattern = 65535;
  gfx.lineStippleFactor = 1;
  gfx.lineWidth = 1.0f;
  gfx.pointSize = 1.0f;
}

// Also on a thread without a block, where an object may die.
ozContext *currentOfAnyThread() { return ozPrivate::getPrivate() ? ozPrivate::getContext() : nullptr; }

} // namespace

ozContext::ozContext(HDC device) : ozContext(device, getClassType()) {}

ozContext::ozContext(HDC device, ozType *type) : ozObject(type), _objectVersions(32u) { init(device); }

void ozContext::init(HDC device) {
  ozFog *const fog = new ozFog;
  fog->setOn(0);
  fog->ref();
  _fogStack[0] = fog;

  _curState = _stateStack;
  _defaultState = _whichSetState = &_defaultGfx;
  setStartValues(_stateStack[0]);
  _defaultGfx.copy(_stateStack[0]);

  _ownAppearance = new ozAppearance;
  _ownAppearance->ref();
  _ownAppearance->setInherit(ozBitMask(0)); // so that it sets all 64 bits
  _lastAppearance = _ownAppearance;
  _lastSetMask.on();

  if (device) {
    _renderContext = device->createContext();
    _colorMode = device->isRGBA() ? RGBA_COLOR : INDEX_COLOR;
  }

  ozPtrArray &contexts = tables().contexts;
  long const empty = contexts.find(nullptr);
  contexts.set(empty < 0 ? contexts.getCount() : static_cast<unsigned int>(empty), this);

  // No rendering context is current yet, so this has no lasting effect. It stands here all the same, as meant.
  glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
  _textureObjects.setCount(tables().textureNameCount);
}

ozContext::~ozContext() {
  while (_overrideAppearanceTop >= 0) popOverrideAppearance();
  while (_overrideGeoPropTop >= 0) popOverrideGeoProp();

  if (isThreadsCurrent() || (_renderContext && _renderContext->isCurrent())) ozDeviceRecord::release();
  ozPrivate::forgetContext(this);
  delete _renderContext;
  if (_device) _device->unref();
  tables().contexts.replace(this, nullptr);

  for (int level = 0; level <= slot(_lightLevel); ++level)
    for (glLightTarget &target : _lightTargets[level]) releaseLight(target);
  for (int level = 0; level <= slot(_fogLevel); ++level) _fogStack[level]->unref();
  _ownAppearance->unref();
}

bool ozContext::isThreadsCurrent() const { return currentOfAnyThread() == this; }

void ozContext::makeCurrent(HDC device) {
  ozContext *const current = getCurrent();
  // The platform is asked too: the toolkit or the application may have bound another context behind our back.
  if (current == this && _isCurrent && device == _device && _renderContext && _renderContext->isCurrent()) return;
  if (current) current->_isCurrent = 0;

  ozPrivate::setContext(this);
  if (device) device->ref();
  if (_device) _device->unref();
  _device = device;
  _curState = &_stateStack[slot(_stateLevel)];
  ozDeviceRecord::makeCurrent(_device, _renderContext);

  if (!_viewportKnown) {
    glGetIntegerv(GL_VIEWPORT, _viewport);
    _viewportKnown = 1;
  }
  _isCurrent = 1;
  // On every switch: only the lights' own ambient terms count.
  GLfloat const black[] = {0.0f, 0.0f, 0.0f, 1.0f};
  glLightModelfv(GL_LIGHT_MODEL_AMBIENT, black);
  if (_textureObjectClean) cleanTextureObjects();
}

void ozContext::releaseCurrent() {
  ozContext *const current = getCurrent();
  if (!current) return;
  ozDeviceRecord::release();
  current->_isCurrent = 0;
  ozPrivate::setContext(nullptr);
}

template <class T> void ozContext::forgetMember(T *_ozGfx::*member, T *object) {
  forEachContext([=](ozContext &context) {
    for (int level = 0; level <= slot(context._stateLevel); ++level)
      if (context._stateStack[level].*member == object) context._stateStack[level].*member = nullptr;
    if (context._defaultGfx.*member == object) context._defaultGfx.*member = nullptr;
  });
}

void ozContext::forget(ozTexture *texture) { forgetMember(&_ozGfx::texture, texture); }
void ozContext::forget(ozTexGen *texGen) { forgetMember(&_ozGfx::texGen, texGen); }

void ozContext::forget(ozMaterial *material) {
  forgetMember(&_ozGfx::material, material);
  forgetMember(&_ozGfx::backMaterial, material);
}

void ozContext::forget(ozAppearance *appearance) {
  forEachContext([=](ozContext &context) {
    if (context._lastAppearance == appearance) context._lastAppearance = nullptr;
  });
}
