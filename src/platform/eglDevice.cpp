#include "eglDevice.h"
#include "glxDevice.h"
#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <atomic>
#include <initializer_list>

namespace {

struct Egl {
  EGLDisplay display = EGL_NO_DISPLAY;
  EGLConfig config = nullptr;
};

// The rendering API is a property of the thread, and what "current" means depends on it.
void bindApi() { eglBindAPI(EGL_OPENGL_API); }

// Depth and stencil sizes are least sizes; a configuration without stencil is better than none.
EGLConfig chooseConfig(EGLDisplay display) {
  for (EGLint stencil : {8, 0}) {
    EGLint const wanted[] = {EGL_SURFACE_TYPE,
                             EGL_PBUFFER_BIT,
                             EGL_RENDERABLE_TYPE,
                             EGL_OPENGL_BIT,
                             EGL_RED_SIZE,
                             8,
                             EGL_GREEN_SIZE,
                             8,
                             EGL_BLUE_SIZE,
                             8,
                             EGL_ALPHA_SIZE,
                             8,
                             EGL_DEPTH_SIZE,
                             24,
                             EGL_STENCIL_SIZE,
                             stencil,
                             EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    if (eglChooseConfig(display, wanted, &config, 1, &count) && count) return config;
  }
  return nullptr;
}

bool open(Egl &egl, EGLDisplay display) {
  if (display == EGL_NO_DISPLAY || !eglInitialize(display, nullptr, nullptr)) return false;
  egl.config = chooseConfig(display);
  if (egl.config) egl.display = display;
  return egl.config != nullptr;
}

Egl openFirst() {
  Egl egl;
  bindApi();
  if (!open(egl, eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr)))
    if (!open(egl, eglGetPlatformDisplay(EGL_PLATFORM_DEVICE_EXT, EGL_DEFAULT_DISPLAY, nullptr)))
      open(egl, eglGetDisplay(EGL_DEFAULT_DISPLAY));
  return egl;
}

// Mesa makes a surface of any size and fails later, when it is drawn to.
bool fits(Egl const &egl, int width, int height) {
  EGLint most[2] = {0, 0};
  eglGetConfigAttrib(egl.display, egl.config, EGL_MAX_PBUFFER_WIDTH, &most[0]);
  eglGetConfigAttrib(egl.display, egl.config, EGL_MAX_PBUFFER_HEIGHT, &most[1]);
  return width <= most[0] && height <= most[1];
}

std::atomic<bool> opened(false); // spares a process that only has windows the opening in releaseCurrent

// One display serves all threads. It is never terminated: objects may die as late as the process.
Egl const &egl() {
  static Egl const instance = openFirst();
  opened.store(true, std::memory_order_release);
  return instance;
}

class EglContext : public ozRenderContext {
public:
  EglContext(ozDeviceRecord *device, EGLContext context) : ozRenderContext(device), native(context) {}
  ~EglContext() override { eglDestroyContext(egl().display, native); }

  bool isCurrent() const override {
    bindApi();
    return eglGetCurrentContext() == native;
  }

  EGLContext const native;
};

} // namespace

eglDevice::eglDevice(EGLConfig config, EGLSurface surface) : _config(config), _surface(surface) {}
eglDevice::~eglDevice() { lose(); }

eglDevice *eglDevice::create(int width, int height) {
  if (egl().display == EGL_NO_DISPLAY || !fits(egl(), width, height)) return nullptr;
  EGLint const size[] = {EGL_WIDTH, width, EGL_HEIGHT, height, EGL_NONE};
  EGLSurface surface = eglCreatePbufferSurface(egl().display, egl().config, size);
  return surface == EGL_NO_SURFACE ? nullptr : new eglDevice(egl().config, surface);
}

ozRenderContext *eglDevice::createContext() {
  bindApi();
  EGLContext context = eglCreateContext(egl().display, _config, EGL_NO_CONTEXT, nullptr);
  return context == EGL_NO_CONTEXT ? nullptr : new EglContext(this, context);
}

bool eglDevice::bind(ozRenderContext *context) {
  EglContext *mine = dynamic_cast<EglContext *>(context);
  if (!mine) return false;
  glxDevice::releaseCurrent();
  bindApi();
  return eglMakeCurrent(egl().display, _surface, _surface, mine->native);
}

void eglDevice::releaseCurrent() {
  if (!opened.load(std::memory_order_acquire)) return;
  bindApi();
  if (eglGetCurrentContext() != EGL_NO_CONTEXT)
    eglMakeCurrent(egl().display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
}

void eglDevice::swap() {}

void eglDevice::lose() {
  // A surface that is current somewhere is kept by EGL until it no longer is.
  if (_surface != EGL_NO_SURFACE) eglDestroySurface(egl().display, _surface);
  _surface = EGL_NO_SURFACE;
}
