#include "glxDevice.h"
#include "eglDevice.h"
// Xlib's own header for extensions: it alone declares XESetCloseDisplay.
#include <X11/Xlibint.h>
#undef min
#undef max
#include <GL/glx.h>
#include <vector>

// A connection to an X server that may be closed while contexts made through it still live.
struct glxDisplay {
  Display *x; // null once closed
};

namespace {

std::vector<std::shared_ptr<glxDisplay>> &displays() {
  static auto *list = new std::vector<std::shared_ptr<glxDisplay>>; // outlives the objects that die at exit
  return *list;
}

int displayCloses(Display *x, XExtCodes *) {
  for (auto &display : displays())
    if (display->x == x) display->x = nullptr;
  return 0;
}

std::shared_ptr<glxDisplay> findDisplay(Display *x) {
  for (auto &display : displays())
    if (display->x == x) return display;
  if (XExtCodes *codes = XAddExtension(x)) XESetCloseDisplay(x, codes->extension, displayCloses);
  displays().push_back(std::make_shared<glxDisplay>(glxDisplay{x}));
  return displays().back();
}

// The toolkit's context is shared with the device, which empties it when the window goes; any other is ours to destroy.
class GlxContext : public ozRenderContext {
public:
  GlxContext(ozDeviceRecord *device, std::shared_ptr<glxDisplay> display, std::shared_ptr<void *> context, bool own)
      : ozRenderContext(device), _display(display), _context(context), _own(own) {}

  ~GlxContext() override {
    if (_own && _display->x) glXDestroyContext(_display->x, native());
  }

  bool isCurrent() const override { return native() && glXGetCurrentContext() == native(); }
  GLXContext native() const { return static_cast<GLXContext>(*_context); }
  bool isOn(glxDisplay const *display) const { return _display.get() == display; }

private:
  std::shared_ptr<glxDisplay> _display;
  std::shared_ptr<void *> _context;
  bool _own;
};

GLXContext createNative(Display *x, GLXContext like) {
  int id = 0, screen = 0, count = 0;
  if (glXQueryContext(x, like, GLX_FBCONFIG_ID, &id) != Success ||
      glXQueryContext(x, like, GLX_SCREEN, &screen) != Success)
    return nullptr;
  int const wanted[] = {GLX_FBCONFIG_ID, id, None};
  GLXFBConfig *configs = glXChooseFBConfig(x, screen, wanted, &count);
  int type = GLX_RGBA_TYPE;
  glXQueryContext(x, like, GLX_RENDER_TYPE, &type);
  GLXContext context = configs && count ? glXCreateNewContext(x, configs[0], type, nullptr, True) : nullptr;
  if (configs) XFree(configs);
  return context;
}

} // namespace

glxDevice::glxDevice(std::shared_ptr<glxDisplay> display, unsigned long drawable, void *toolkitContext)
    : _display(display), _toolkitContext(std::make_shared<void *>(toolkitContext)), _drawable(drawable),
      _adopted(false), _rgba(true) {
  int type = GLX_RGBA_TYPE;
  if (glXQueryContext(display->x, static_cast<GLXContext>(toolkitContext), GLX_RENDER_TYPE, &type) == Success)
    _rgba = type != GLX_COLOR_INDEX_TYPE;
}

glxDevice *glxDevice::fromCurrent() {
  GLXContext context = glXGetCurrentContext();
  return context ? new glxDevice(findDisplay(glXGetCurrentDisplay()), glXGetCurrentDrawable(), context) : nullptr;
}

bool glxDevice::usable() const { return _drawable && _display->x; }

ozRenderContext *glxDevice::createContext() {
  if (!usable()) return nullptr;
  if (!_adopted) {
    _adopted = true;
    return new GlxContext(this, _display, _toolkitContext, false);
  }
  GLXContext context = createNative(_display->x, static_cast<GLXContext>(*_toolkitContext));
  return context ? new GlxContext(this, _display, std::make_shared<void *>(context), true) : nullptr;
}

bool glxDevice::bind(ozRenderContext *context) {
  GlxContext *mine = dynamic_cast<GlxContext *>(context);
  if (!mine || !mine->native() || !mine->isOn(_display.get()) || !usable()) return false;
  eglDevice::releaseCurrent();
  return glXMakeContextCurrent(_display->x, _drawable, _drawable, mine->native());
}

void glxDevice::releaseCurrent() {
  Display *x = glXGetCurrentDisplay();
  if (x && glXGetCurrentContext()) glXMakeContextCurrent(x, None, None, nullptr);
}

void glxDevice::swap() {
  if (usable()) glXSwapBuffers(_display->x, _drawable);
}

void glxDevice::lose() {
  _drawable = 0;
  *_toolkitContext = nullptr;
}

void (*glxDevice::procAddress(char const *name))() {
  return glXGetProcAddress(reinterpret_cast<GLubyte const *>(name));
}
