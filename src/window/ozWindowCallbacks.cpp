// The toolkit's callbacks: each becomes an event of the window at hand, which is processed at once or, in free run,
// waits for the next idle turn.

#include "oz/ozContext.h"
#include "oz/ozWindow.h"
#include "platform/ozDeviceRecord.h"
#include "platform/toolkitDisplay.h"
#include "window/windowList.h"
#include "window/windowScope.h"

#include <GL/freeglut.h>

int ozWindow::_MouseX = 0;
int ozWindow::_MouseY = 0;
int ozWindow::_MouseButtons = 0;

void ozWindow::registerCallbacks() {
  glutReshapeFunc(reshapeFunc);
  glutEntryFunc(crossingFunc); // the toolkit's own close callback comes too late for a veto
  glutCloseFunc(destroyedFunc);
  glutMouseFunc(mouseFunc);
  glutMotionFunc(motionFunc);
  glutPassiveMotionFunc(passiveMotionFunc);
  glutDisplayFunc(displayFunc);
  glutSpecialFunc(specialFunc);
  glutSpecialUpFunc(specialUpFunc);
  glutKeyboardFunc(keyboardFunc);
  glutKeyboardUpFunc(keyboardUpFunc);
}

ozEvent *ozWindow::addEvent(int type) {
  unsigned int const spare = _freeEvents.getCount();
  ozEvent *const event = spare ? _freeEvents.get(spare - 1) : new ozEvent;
  if (spare) _freeEvents.setCount(spare - 1);
  event->type = type;
  event->window = this;
  _events.append(event);
  return event;
}

void ozWindow::resetEvents() {
  for (unsigned int i = 0; i < _events.getCount(); ++i) _freeEvents.append(_events.get(i));
  _events.setCount(0);
}

// y counts from the top.
ozEvent *ozWindow::addInput(int type, int x, int y, int buttons) {
  ozEvent *const event = addEvent(type);
  event->x = x;
  event->y = _height - y - 1;
  event->buttons = buttons;
  event->modifiers = glutGetModifiers();
  return event;
}

ozEvent *ozWindow::addMouse(int type, int x, int y, int buttons) {
  ozEvent *const event = addInput(type, x, y, buttons);
  _MouseX = event->x;
  _MouseY = event->y;
  return event;
}

void ozWindow::dispatch() {
  if (!_FreeRun) processEvents();
}

void ozWindow::reshapeFunc(int width, int height) {
  ozWindowScope const scope(getCurrent());
  ozWindow *const window = scope.window();
  if (!window) return;
  window->_height = glutGet(GLUT_WINDOW_HEIGHT);
  if (window->_context && ozContext::getCurrent() == window->_context)
    window->_context->setViewport(0, 0, width, height);
  ozEvent *const event = window->addEvent(ozEvent::RESHAPE_EVENT);
  event->x = width;
  event->y = height;
  window->dispatch();
}

void ozWindow::displayFunc() {
  ozWindowScope const scope(getCurrent());
  ozWindow *const window = scope.window();
  if (!window) return;
  window->_height = glutGet(GLUT_WINDOW_HEIGHT);
  window->addEvent(ozEvent::DISPLAY_EVENT);
  window->dispatch();
}

int ozWindow::closeFunc() {
  ozWindowScope const scope(getCurrent());
  ozWindow *const window = scope.window();
  if (!window) return 0;
  int const goes = window->_deleteOnCloseFlag; // read now: the window may not survive its event
  window->_deletePending = window->_deleteOnCloseFlag;
  window->addEvent(ozEvent::CLOSE_EVENT);
  window->dispatch();
  return goes;
}

void ozWindow::crossingFunc(int) {
  ozWindow *const window = getCurrent();
  if (window && toolkitDisplay::takeClose(window->_hwnd)) closeFunc();
}

// Somebody else had the toolkit destroy the window.
void ozWindow::destroyedFunc() {
  if (ozWindow *window = getCurrent()) window->detach();
}

void ozWindow::mouseFunc(int button, int state, int x, int y) {
  static int const Masks[] = {ozEvent::LEFT_BUTTON, ozEvent::MIDDLE_BUTTON, ozEvent::RIGHT_BUTTON,
                              ozEvent::WHEEL_UP_BUTTON, ozEvent::WHEEL_DOWN_BUTTON};
  int const held = ozEvent::LEFT_BUTTON | ozEvent::MIDDLE_BUTTON | ozEvent::RIGHT_BUTTON; // the wheel never is
  if (button < 0 || button >= static_cast<int>(sizeof Masks / sizeof *Masks)) return;

  ozWindowScope const scope(getCurrent());
  ozWindow *const window = scope.window();
  if (!window) return;
  int const mask = Masks[button];
  if (state == GLUT_UP) {
    window->addMouse(ozEvent::MOUSE_UP_EVENT, x, y, mask);
    _MouseButtons &= ~mask;
  } else {
    window->addMouse(ozEvent::MOUSE_DOWN_EVENT, x, y, mask);
    _MouseButtons |= mask & held;
  }
  window->dispatch();
}

void ozWindow::mouseMoved(int type, int x, int y, int buttons) {
  ozWindowScope const scope(getCurrent());
  ozWindow *const window = scope.window();
  if (!window) return;
  window->addMouse(type, x, y, buttons);
  window->dispatch();
}

void ozWindow::motionFunc(int x, int y) { mouseMoved(ozEvent::MOTION_EVENT, x, y, _MouseButtons); }
void ozWindow::passiveMotionFunc(int x, int y) { mouseMoved(ozEvent::PASSIVE_MOTION_EVENT, x, y, 0); }

// The mouse position of getMouseX and getMouseY stays: meant.
void ozWindow::keyMoved(int type, int key, int x, int y) {
  ozWindowScope const scope(getCurrent());
  ozWindow *const window = scope.window();
  if (!window) return;
  window->addInput(type, x, y, _MouseButtons)->key = key;
  window->dispatch();
}

void ozWindow::keyboardFunc(unsigned char key, int x, int y) { keyMoved(ozEvent::KEY_DOWN_EVENT, key, x, y); }
void ozWindow::keyboardUpFunc(unsigned char key, int x, int y) { keyMoved(ozEvent::KEY_UP_EVENT, key, x, y); }
void ozWindow::specialFunc(int key, int x, int y) { keyMoved(ozEvent::SPECIAL_DOWN_EVENT, key, x, y); }
void ozWindow::specialUpFunc(int key, int x, int y) { keyMoved(ozEvent::SPECIAL_UP_EVENT, key, x, y); }

void ozWindow::shoot() {
  if (!_windowId) return;
  glutTimerFunc(_timerInterval, timerShot, _windowId);
  _nextShot = glutGet(GLUT_ELAPSED_TIME) + static_cast<int>(_timerInterval);
}

// The toolkit's timers carry a number: the window's, which is never given twice.
void ozWindow::timerShot(int windowId) {
  if (ozWindow *window = ozWindowList::findId(windowId)) timerCallbackFunc(window);
}

void ozWindow::timerCallbackFunc(void *data) {
  ozWindow *const window = ozWindowList::find(data);
  if (!window || !window->_timerEnabled) return;
  ozWindowScope const scope(window);
  window->shoot();
  window->addEvent(ozEvent::TIMER_EVENT);
  window->dispatch();
}

void ozWindow::enableTimer(unsigned int milliseconds) {
  _timerInterval = milliseconds;
  _timerEnabled = 1;
  shoot();
}
