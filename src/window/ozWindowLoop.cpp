// Frames and the loop. A frame is processEvents of a window; outside free run each event makes one, in free run each
// idle turn makes one of every window. Application code may delete any window anywhere, so after each call of it the
// scope is asked whether the window is still there.

#include "oz/ozPickSensor.h"
#include "oz/ozTimeSensor.h"
#include "oz/ozWindow.h"
#include "platform/ozDeviceRecord.h"
#include "platform/toolkitDisplay.h"
#include "window/windowList.h"
#include "window/windowScope.h"
#include "window/windowToolkit.h"

#include <GL/freeglut.h>

void (*ozWindow::_RenderFunc)(void *) = nullptr;
void *ozWindow::_RenderData = nullptr;
int ozWindow::_FreeRun = 0;
int ozWindow::_PickButtonDown = 0;
unsigned long ozWindow::_Pass = 0;

void ozWindow::setFrameFunc(int (*function)(void *), void *data) {
  ozWindow *const window = getCurrent();
  if (!window) return;
  window->_frameFunc = function;
  window->_frameData = data;
}

void ozWindow::setEventFunc(void (*function)(void *), void *data) {
  _eventFunc = function;
  _eventData = data;
}

void ozWindow::setRenderFunc(void (*function)(void *), void *data) {
  _RenderFunc = function;
  _RenderData = data;
}

void ozWindow::setFreeRun(int on) {
  _FreeRun = on;
  // For programs that run the toolkit's own loop.
  if (windowToolkit::isReady()) glutIdleFunc(on ? idleFunc : nullptr);
}

void ozWindow::processEvents() {
  ozWindowScope const scope(this);
  if (!_FreeRun) ozTimeSensor::updateSensors();
  if (!scope.window()) return;

  if (_frameFunc) {
    setFreeRun(_frameFunc(_frameData) == 0);
    if (!scope.window()) return;
    resetEvents();
  } else if (_eventFunc && _events.getCount()) {
    _eventFunc(_eventData);
    if (!scope.window()) return;
    resetEvents();
    if (_RenderFunc && !_FreeRun) _RenderFunc(_RenderData);
    if (!scope.window()) return;
  }
  if (_deletePending) delete this;
}

void ozWindow::idleFunc() {
  unsigned long const pass = ++_Pass;
  bool const anyWindow = !ozWindowList::isEmpty();
  ozTimeSensor::updateSensors();
  while (ozWindow *window = ozWindowList::nextOfPass(pass)) {
    window->_idlePass = pass;
    window->processEvents();
  }
  // A turn that has lost its last window has nothing to draw in any more.
  if (!_RenderFunc || (anyWindow && ozWindowList::isEmpty())) return;
  // The last window of the turn; any other if that one is gone.
  ozWindow *const current = getCurrent();
  ozWindowScope const scope(current ? current : ozWindowList::first());
  _RenderFunc(_RenderData);
}

void ozWindow::updateSensors(ozNode *root, ozCamera *camera) {
  ozWindow *const window = getCurrent();
  if (!window || !root || !camera) return;
  ozWindowScope const scope(window);
  int const held = ozEvent::LEFT_BUTTON | ozEvent::MIDDLE_BUTTON | ozEvent::RIGHT_BUTTON;
  for (unsigned int i = 0; scope.window() && i < window->_events.getCount(); ++i) {
    ozEvent const *const event = window->_events.get(i);
    switch (event->type) {
    case ozEvent::MOUSE_DOWN_EVENT:
    case ozEvent::MOUSE_UP_EVENT:
      if (!(event->buttons & held)) continue; // the wheel
      _PickButtonDown = event->type == ozEvent::MOUSE_DOWN_EVENT;
      break;
    case ozEvent::MOTION_EVENT:
    case ozEvent::PASSIVE_MOTION_EVENT:
      break;
    default:
      continue;
    }
    ozPickSensor::updateSensors(root, camera, event->x, event->y, _PickButtonDown);
  }
}

void ozWindow::mainLoop() {
  if (ozWindowList::isEmpty()) return;
  while (!ozWindowList::isEmpty()) {
    turn();
    // The toolkit does not tell when the application's own timers are due: they wait no longer than this.
    int const atMost = 10;
    if (!_FreeRun && !ozWindowList::isEmpty()) toolkitDisplay::waitForMessages(timeUntilShot(atMost));
  }
  // The toolkit destroys windows in its next step.
  if (windowToolkit::isOpen()) glutMainLoopEvent();
  toolkitDisplay::settle();
}

void ozWindow::turn() {
  ozDeviceRecord::releaseOffscreen();
  glutMainLoopEvent();
  deliverCloses();
  if (_FreeRun && !ozWindowList::isEmpty()) idleFunc(); // the toolkit's step never calls it
  // Closed in free run, which ended ahead of the idle turn that would have deleted it.
  while (ozWindow *window = _FreeRun ? nullptr : ozWindowList::firstClosed()) window->processEvents();
}

// Those that crossingFunc has not had: the application may have put another callback in its place.
void ozWindow::deliverCloses() {
  while (HWND const handle = toolkitDisplay::windowToClose()) {
    toolkitDisplay::takeClose(handle);
    if (ozWindow *window = ozWindowList::findHandle(handle)) {
      setCurrent(window);
      closeFunc();
    }
  }
}

// Milliseconds until the next shot of a window's timer, at most so many.
int ozWindow::timeUntilShot(int milliseconds) {
  int const now = glutGet(GLUT_ELAPSED_TIME);
  ozDListIter<ozWindowItem, ozDLink> items(ozWindowList::all());
  while (ozWindowItem *item = items.next()) {
    ozWindow const &window = *item->getWindow();
    int const left = window._nextShot - now;
    if (window._timerEnabled && left < milliseconds) milliseconds = left < 0 ? 0 : left;
  }
  return milliseconds;
}
