// The life of a window: opened through the toolkit, entered in the list, made current, closed.
//
// An ozWindow and the toolkit's window find each other through the toolkit's user data, which is trusted only as far as
// the list of windows knows it. When either goes first, the other forgets it: no callback reaches a deleted ozWindow,
// and none calls the toolkit for a window that it no longer has.

#include "oz/ozWindow.h"

#include "oz/ozContext.h"
#include "platform/ozDeviceRecord.h"
#include "platform/toolkitDisplay.h"
#include "window/windowList.h"
#include "window/windowScope.h"
#include "window/windowToolkit.h"

#include <GL/freeglut.h>
#include <stdlib.h>
#include <string.h>

OZ_DEFINE_TYPE(ozWindow, "Window", ozObject) {}

int ozWindow::_InitX = -1;
int ozWindow::_InitY = -1;
int ozWindow::_InitWidth = 500;
int ozWindow::_InitHeight = 500;
unsigned long ozWindow::_InitMode = GLUT_RGB | GLUT_DOUBLE | GLUT_DEPTH | GLUT_MULTISAMPLE;
int ozWindow::_ScreenWidth = 0;
int ozWindow::_ScreenHeight = 0;

// The window's context. Either may go first.
struct ozWindow::Context : ozContext {
  Context(HDC device, ozWindow *window) : ozContext(device, getClassType()), window(window) {}
  ~Context() override {
    if (window) window->_context = nullptr;
  }

  ozWindow *window; // null once deleted
};

ozWindow::ozWindow(char const *title) : ozWindow(title, getClassType()) {}

ozWindow::ozWindow(char const *title, ozType *type) : ozObject(type), _freeEvents(16), _events(16) { init(title); }

void ozWindow::init(char const *title) {
  _title = strdup(title ? title : "");
  _iconTitle = nullptr;
  _frameFunc = nullptr;
  _frameData = nullptr;
  _eventFunc = nullptr;
  _eventData = nullptr;
  _item = new ozWindowItem(this);
  ozWindowList::all().append(_item);
  _deleteOnCloseFlag = 1;
  _deletePending = 0;
  _timerEnabled = 0;
  _timerInterval = 0;
  _nextShot = 0;
  _isRGB = !(_InitMode & GLUT_INDEX);
  _idlePass = _Pass; // free run comes by from its next turn on
  _context = nullptr;
  _windowId = 0;

  windowToolkit::open();
  if (!_ScreenWidth) {
    _ScreenWidth = glutGet(GLUT_SCREEN_WIDTH);
    _ScreenHeight = glutGet(GLUT_SCREEN_HEIGHT);
  }
  glutInitDisplayMode(static_cast<unsigned int>(_InitMode));
  glutInitWindowPosition(_InitX, _InitY);
  glutInitWindowSize(_InitWidth, _InitHeight);
  _height = _InitHeight;

  ozDeviceRecord::releaseOffscreen();
  _windowId = glutCreateWindow(_title);
  glutSetWindowData(this);
  _hwnd = toolkitDisplay::watchCurrentWindow();
  if (!title) toolkitDisplay::setDecorated(_hwnd, false);
  if (_InitX == 0 && _InitY == 0 && _InitWidth == _ScreenWidth && _InitHeight == _ScreenHeight) glutFullScreen();
  registerCallbacks();

  _hdc = ozDeviceRecord::fromCurrentWindow();
  _context = new Context(_hdc, this);
  // Of this window alone: a step of the toolkit's loop would call back for the others.
  toolkitDisplay::settle();
  _height = glutGet(GLUT_WINDOW_HEIGHT);
  makeCurrent(this);
}

ozWindow::~ozWindow() {
  ozWindowScope::forget(this);
  ozContext *const current = ozContext::getCurrent(), *const own = _context;
  if (own) static_cast<Context *>(own)->window = nullptr;
  if (_windowId) {
    int const id = _windowId, before = glutGetWindow();
    setCurrent(this);
    glutSetWindowData(nullptr);
    glutCloseFunc(nullptr);
    detach();
    if (before && before != id) glutSetWindow(before);
    ozWindowScope::retire(id, _hwnd);
    if (current && current != own) current->makeCurrent(current->getHDC());
  }
  delete _item;
  free(_title);
  free(_iconTitle);
  if (_hdc) _hdc->unref();
  // The event objects stay allocated, and so does the context: meant. The application may hold them.
}

// The toolkit's window goes, or has gone.
void ozWindow::detach() {
  if (_context && ozContext::getCurrent() == _context) ozContext::releaseCurrent();
  toolkitDisplay::releaseIfCurrent(_hwnd);
  toolkitDisplay::forget(_hwnd);
  if (_hdc) _hdc->lose();
  _windowId = 0;
  _item->unlink();
}

void ozWindow::initDisplayMode(unsigned long mode) { _InitMode = mode; }

void ozWindow::initPosition(int x, int y) {
  _InitX = x;
  _InitY = y;
}

void ozWindow::initSize(int width, int height) {
  _InitWidth = width;
  _InitHeight = height;
}

ozWindow *ozWindow::getCurrent() {
  if (ozWindowList::isEmpty() || !windowToolkit::hasCurrentWindow()) return nullptr;
  return ozWindowList::find(glutGetWindowData());
}

void ozWindow::setCurrent(ozWindow *window) {
  if (!window || !window->_windowId || glutGetWindow() == window->_windowId) return;
  ozDeviceRecord::releaseOffscreen();
  glutSetWindow(window->_windowId);
}

void ozWindow::makeCurrent(ozWindow *window) {
  setCurrent(window);
  if (window && window->_context) window->_context->makeCurrent(window->_hdc);
}

void ozContext::makeCurrent(ozWindow *window) {
  if (window) makeCurrent(window->getHDC());
}
