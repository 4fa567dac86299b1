#ifndef TESTS_WINDOW_FIXTURE_H
#define TESTS_WINDOW_FIXTURE_H

#include "oz/ozContext.h"
#include "oz/ozWindow.h"

#include <gtest/gtest.h>

#include <GL/freeglut.h>
#include <algorithm>
#include <functional>
#include <time.h>
#include <unistd.h>
#include <vector>

// Last: their macros.
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/keysym.h>

/// Another client of the X server, as a window manager or a user's input would be.
class XClient {
public:
  XClient() : x(XOpenDisplay(nullptr)) {}
  ~XClient() { XCloseDisplay(x); }
  XClient(XClient const &) = delete;
  XClient &operator=(XClient const &) = delete;

  void close(HWND window) {
    XEvent event = {};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = XInternAtom(x, "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = static_cast<long>(XInternAtom(x, "WM_DELETE_WINDOW", False));
    send(window, event);
  }

  /// Button as X counts, from 1; y from the top; state: modifiers and buttons held before.
  void button(HWND window, bool press, unsigned int button, int px, int py, unsigned int state = 0) {
    XEvent event = {};
    event.xbutton.type = press ? ButtonPress : ButtonRelease;
    event.xbutton.button = button;
    event.xbutton.x = px;
    event.xbutton.y = py;
    event.xbutton.state = state;
    sendInput(window, event);
  }

  void motion(HWND window, int px, int py, unsigned int state = 0) {
    XEvent event = {};
    event.xmotion.type = MotionNotify;
    event.xmotion.x = px;
    event.xmotion.y = py;
    event.xmotion.state = state;
    sendInput(window, event);
  }

  void key(HWND window, bool press, KeySym key, int px, int py, unsigned int state = 0) {
    XEvent event = {};
    event.xkey.type = press ? KeyPress : KeyRelease;
    event.xkey.keycode = XKeysymToKeycode(x, key);
    event.xkey.x = px;
    event.xkey.y = py;
    event.xkey.state = state;
    sendInput(window, event);
  }

  void expose(HWND window) {
    XEvent event = {};
    event.xexpose.type = Expose;
    event.xexpose.window = window;
    send(window, event);
  }

  void resize(HWND window, unsigned int width, unsigned int height) {
    XResizeWindow(x, window, width, height);
    XSync(x, False);
  }

  /// Whether it is on the display, seen or not.
  bool exists(HWND window) {
    Window root, parent, *children = nullptr;
    unsigned int count = 0;
    XQueryTree(x, DefaultRootWindow(x), &root, &parent, &children, &count);
    bool const found = std::find(children, children + count, window) != children + count;
    if (children) XFree(children);
    return found;
  }

  bool isShown(HWND window) {
    XWindowAttributes attributes;
    return exists(window) && XGetWindowAttributes(x, window, &attributes) && attributes.map_state == IsViewable;
  }

  Display *const x;

private:
  void send(HWND window, XEvent &event) {
    XSendEvent(x, window, False, NoEventMask, &event); // no mask: to the client that made the window
    XSync(x, False);
  }
  // Key, button and motion events agree in these.
  void sendInput(HWND window, XEvent &event) {
    event.xkey.window = window;
    event.xkey.root = DefaultRootWindow(x);
    event.xkey.time = CurrentTime;
    event.xkey.same_screen = True;
    send(window, event);
  }
};

/// Takes the toolkit's steps until the condition holds; false after five seconds without.
template <class Condition> bool pumpUntil(Condition condition) {
  time_t const end = time(nullptr) + 5;
  while (!condition()) {
    glutMainLoopEvent();
    if (condition()) return true;
    if (time(nullptr) > end) return false;
    usleep(1000);
  }
  return true;
}

/// Functions as an application gives them to windows.
struct Callback {
  std::function<void()> call;
  static void run(void *callback) { static_cast<Callback *>(callback)->call(); }
};
struct FrameCallback {
  std::function<int()> call;
  static int run(void *callback) { return static_cast<FrameCallback *>(callback)->call(); }
};

inline unsigned int countEvents(ozWindow *window, int type) {
  unsigned int count = 0;
  for (unsigned int i = 0; i < window->getEvents()->getCount(); ++i) count += window->getEvents()->get(i)->type == type;
  return count;
}

inline ozEvent *lastEvent(ozWindow *window) {
  unsigned int const count = window->getEvents()->getCount();
  return count ? window->getEvents()->get(count - 1) : nullptr;
}

/// The last event of a type; null if there is none.
inline ozEvent *lastEvent(ozWindow *window, int type) {
  for (unsigned int i = window->getEvents()->getCount(); i-- > 0;)
    if (window->getEvents()->get(i)->type == type) return window->getEvents()->get(i);
  return nullptr;
}

/// A test that leaves the class as a new process has it, with the windows that open() made deleted.
class WindowTest : public ::testing::Test {
protected:
  /// A window of 500 x 500 whose first events have come and are forgotten.
  ozWindow *open(char const *title = "test") {
    ozWindow *const window = openOnly(title);
    EXPECT_TRUE(pumpUntil(
        [=] { return countEvents(window, ozEvent::RESHAPE_EVENT) && countEvents(window, ozEvent::DISPLAY_EVENT); }));
    settle();
    window->resetEvents();
    ozWindow::makeCurrent(window);
    return window;
  }
  ozWindow *openOnly(char const *title = "test") {
    windows.push_back(new ozWindow(title));
    return windows.back();
  }
  /// Deletes a window, or forgets one that the library has deleted.
  void close(ozWindow *window) {
    gone(window);
    delete window;
  }
  void gone(ozWindow *window) { windows.erase(std::remove(windows.begin(), windows.end(), window), windows.end()); }

  static void settle() {
    for (int i = 0; i < 3; ++i) glutMainLoopEvent();
  }

  void TearDown() override {
    ozWindow::setFreeRun(0);
    ozWindow::setRenderFunc(nullptr, nullptr);
    while (!windows.empty()) close(windows.back());
    settle();
    ozWindow::initPosition(-1, -1);
    ozWindow::initSize(500, 500);
    ozWindow::initDisplayMode(146);
  }

  XClient client;
  std::vector<ozWindow *> windows;
};

#endif
