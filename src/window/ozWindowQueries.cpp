// What a window asks of the toolkit and sets in it. The toolkit ends the process on a call without a window, so each
// call looks first.

#include "oz/ozContext.h"
#include "oz/ozGlobal.h"
#include "oz/ozWindow.h"
#include "platform/ozDeviceRecord.h"
#include "platform/toolkitDisplay.h"
#include "window/windowToolkit.h"

#include <GL/freeglut.h>
#include <stdlib.h>
#include <string.h>

static_assert(int(ozWindow::WINDOW_CURSOR) == GLUT_WINDOW_CURSOR &&
                  int(ozWindow::SCREEN_HEIGHT_MM) == GLUT_SCREEN_HEIGHT_MM &&
                  int(ozWindow::MENU_NUM_ITEMS) == GLUT_MENU_NUM_ITEMS &&
                  int(ozWindow::DISPLAY_MODE_POSSIBLE) == GLUT_DISPLAY_MODE_POSSIBLE &&
                  int(ozWindow::INIT_DISPLAY_MODE) == GLUT_INIT_DISPLAY_MODE &&
                  int(ozWindow::ELAPSED_TIME) == GLUT_ELAPSED_TIME,
              "the toolkit's numbers");
static_assert(int(ozWindow::HAS_KEYBOARD) == GLUT_HAS_KEYBOARD &&
                  int(ozWindow::JOYSTICK_POLL_RATE) == GLUT_JOYSTICK_POLL_RATE,
              "the toolkit's numbers");

int ozWindow::checkDisplay() { return windowToolkit::isOpen() || toolkitDisplay::opens(); }

int ozWindow::checkDisplayMode(unsigned long mode) {
  if (!windowToolkit::isReady()) return 0;
  int const before = glutGet(GLUT_INIT_DISPLAY_MODE);
  glutInitDisplayMode(static_cast<unsigned int>(mode));
  int const possible = glutGet(GLUT_DISPLAY_MODE_POSSIBLE);
  glutInitDisplayMode(static_cast<unsigned int>(before));
  return possible != 0;
}

namespace {

// One of the toolkit's operations on its current window.
template <class... Values> void onCurrent(void (*operation)(Values...), Values... values) {
  if (windowToolkit::hasCurrentWindow()) operation(values...);
}

bool needsWindow(int query) {
  return (query >= GLUT_WINDOW_X && query <= GLUT_WINDOW_FORMAT_ID) || query == GLUT_WINDOW_SRGB ||
         query == GLUT_WINDOW_BORDER_WIDTH || query == GLUT_WINDOW_HEADER_HEIGHT || query == GLUT_FULL_SCREEN;
}

void replace(char *&text, char const *now) {
  char *const copy = now ? strdup(now) : nullptr; // first: it may be the old one
  free(text);
  text = copy;
}

} // namespace

void ozWindow::showWindow() { onCurrent(glutShowWindow); }
void ozWindow::hideWindow() { onCurrent(glutHideWindow); }
void ozWindow::iconifyWindow() { onCurrent(glutIconifyWindow); }
void ozWindow::pushWindow() { onCurrent(glutPushWindow); }
void ozWindow::popWindow() { onCurrent(glutPopWindow); }
void ozWindow::positionWindow(int x, int y) { onCurrent(glutPositionWindow, x, y); }

void ozWindow::reshapeWindow(int width, int height) {
  if (width < 1 || height < 1)
    ozGlobal::notify(ozGlobal::WARN, ozGlobal::USAGE, "ozWindow::reshapeWindow: width and height must be at least 1");
  else
    onCurrent(glutReshapeWindow, width, height);
}

void ozWindow::setWindowTitle(char const *title) {
  ozWindow *const window = getCurrent();
  if (!window) return;
  toolkitDisplay::setDecorated(window->_hwnd, title != nullptr);
  if (title) glutSetWindowTitle(title);
  replace(window->_title, title ? title : "");
}

void ozWindow::setIconTitle(char const *title) {
  onCurrent<char const *>(glutSetIconTitle, title ? title : "");
  if (ozWindow *window = getCurrent()) replace(window->_iconTitle, title);
}

void ozWindow::setDisplay(char const *display) {
  if (display)
    ozGlobal::notify(ozGlobal::WARN, ozGlobal::USAGE, "ozWindow::setDisplay: not implemented on this platform");
}

int ozWindow::get(QueryEnum query) {
  if (!windowToolkit::isReady() || (needsWindow(query) && !windowToolkit::hasCurrentWindow())) return 0;
  return glutGet(static_cast<GLenum>(query));
}

int ozWindow::getDevice(QueryDeviceEnum query) {
  return windowToolkit::isReady() ? glutDeviceGet(static_cast<GLenum>(query)) : 0;
}

void ozWindow::bitmapCharacter(void *font, int character) {
  if (windowToolkit::isReady()) glutBitmapCharacter(font, character);
}

ozContext *ozWindow::getContext() {
  ozWindow *const window = getCurrent();
  return window ? window->_context : nullptr;
}

int ozWindow::isRGB() {
  ozWindow *const window = getCurrent();
  return window ? window->_isRGB : 1;
}

void ozWindow::swapBuffers() {
  if (ozWindow *window = getCurrent()) window->swapThisWindowBuffers();
}

void ozWindow::swapThisWindowBuffers() {
  if (_hdc) _hdc->swap();
}
