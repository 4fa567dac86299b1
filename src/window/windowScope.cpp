// The toolkit and deleted windows. Between the toolkit's loop and a callback of ours lie frames of the toolkit that use
// the window at hand once more, and the window that was current before it, whatever the callback did. A window deleted
// in a callback therefore only loses its ozWindow and goes off the screen; the toolkit is told by a timer shot that
// finds no callback running. Inside a loop that runs inside a callback there is no such shot.

#include "window/windowScope.h"

#include "oz/ozWindow.h"
#include "platform/ozDeviceRecord.h"
#include "platform/toolkitDisplay.h"

#include <GL/freeglut.h>
#include <vector>

ozWindowScope *ozWindowScope::_Innermost = nullptr;

namespace {

struct Retired {
  int id;
  HWND window;
};

std::vector<Retired> &retired() {
  static auto *const list = new std::vector<Retired>; // windows may die as late as the process
  return *list;
}

} // namespace

ozWindowScope::ozWindowScope(ozWindow *window) : _window(window), _outer(_Innermost) {
  _Innermost = this;
  ozWindow::makeCurrent(window);
}

ozWindowScope::~ozWindowScope() {
  _Innermost = _outer;
  // The toolkit is about to bind a window's context.
  ozDeviceRecord::releaseOffscreen();
  if (!_Innermost && !retired().empty() && glutGet(GLUT_INIT_STATE)) glutTimerFunc(0, destroyRetired, 0);
}

bool ozWindowScope::runs(ozWindow const *window) {
  for (ozWindowScope const *scope = _Innermost; scope; scope = scope->_outer)
    if (scope->_window == window) return true;
  return false;
}

void ozWindowScope::forget(ozWindow *window) {
  for (ozWindowScope *scope = _Innermost; scope; scope = scope->_outer)
    if (scope->_window == window) scope->_window = nullptr;
}

void ozWindowScope::retire(int windowId, HWND window) {
  toolkitDisplay::hide(window);
  retired().push_back({windowId, window});
  destroyRetired();
}

void ozWindowScope::destroyRetired(int) {
  if (_Innermost) return; // its end comes back here
  std::vector<Retired> windows;
  windows.swap(retired());
  for (Retired const &window : windows) {
    toolkitDisplay::releaseIfCurrent(window.window);
    glutDestroyWindow(window.id);
  }
}
