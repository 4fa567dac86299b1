// The toolkit destroys a window at once when it reads WM_DELETE_WINDOW from the X queue, and reads until the queue is
// empty, so a look into the queue ahead of it would always leave a gap. The message is therefore changed where no gap
// can be: in the function with which Xlib turns every ClientMessage from the wire into a queued event.

#include "platform/toolkitDisplay.h"

#include "platform/ozDeviceRecord.h"
// Xlib's own header for extensions: it alone declares XESetWireToEvent and XESetCloseDisplay.
#include <X11/Xlibint.h>
#undef min
#undef max
#include <GL/glx.h>
#include <poll.h>
#include <vector>

namespace {

typedef Bool (*WireToEvent)(Display *, XEvent *, xEvent *);

struct Watched {
  Window window;
  int closes; // messages that nobody has taken
  bool lost;  // nobody will: the window only waits for its end
};

struct Connection {
  Display *x = nullptr; // null once closed
  Atom deleteWindow = None;
  WireToEvent convertMessage = nullptr; // Xlib's own conversions
  WireToEvent convertDestroy = nullptr;
  std::vector<Watched> windows;
};

Connection &connection() {
  static Connection *const instance = new Connection; // windows may die as late as the process
  return *instance;
}

Watched *find(Window window) {
  for (Watched &watched : connection().windows)
    if (watched.window == window) return &watched;
  return nullptr;
}

// Called by Xlib with the display locked: no calls of Xlib from here.
Bool convertMessage(Display *x, XEvent *event, xEvent *wire) {
  if (!connection().convertMessage(x, event, wire)) return False;
  XClientMessageEvent const message = event->xclient;
  Watched *const watched = x == connection().x ? find(message.window) : nullptr;
  // Like the toolkit, which looks at no more than this number.
  if (!watched || static_cast<Atom>(message.data.l[0]) != connection().deleteWindow) return True;
  if (!watched->lost) ++watched->closes;
  XCrossingEvent leave = {};
  leave.type = LeaveNotify;
  leave.serial = message.serial;
  leave.send_event = message.send_event;
  leave.display = x;
  leave.window = message.window;
  event->xcrossing = leave;
  return True;
}

// The server has destroyed a window: no message for it can follow.
Bool convertDestroy(Display *x, XEvent *event, xEvent *wire) {
  if (!connection().convertDestroy(x, event, wire)) return False;
  if (Watched *watched = x == connection().x ? find(event->xdestroywindow.window) : nullptr) {
    *watched = connection().windows.back();
    connection().windows.pop_back();
  }
  return True;
}

int displayCloses(Display *, XExtCodes *) {
  connection().x = nullptr;
  connection().windows.clear();
  return 0;
}

void adopt(Display *x) {
  if (x == connection().x) return;
  if (XExtCodes *codes = XAddExtension(x)) XESetCloseDisplay(x, codes->extension, displayCloses);
  connection().x = x;
  connection().deleteWindow = XInternAtom(x, "WM_DELETE_WINDOW", False);
  connection().convertMessage = XESetWireToEvent(x, ClientMessage, convertMessage);
  connection().convertDestroy = XESetWireToEvent(x, DestroyNotify, convertDestroy);
}

} // namespace

bool toolkitDisplay::opens() {
  Display *const x = XOpenDisplay(nullptr);
  if (!x) return false;
  bool const showsOpenGL = glXQueryExtension(x, nullptr, nullptr);
  XCloseDisplay(x);
  return showsOpenGL;
}

HWND toolkitDisplay::watchCurrentWindow() {
  if (!glXGetCurrentDisplay()) return 0;
  adopt(glXGetCurrentDisplay());
  HWND const window = glXGetCurrentDrawable();
  connection().windows.push_back({window, 0, false});
  return window;
}

void toolkitDisplay::forget(HWND window) {
  if (Watched *watched = find(window)) *watched = {window, 0, true};
}

bool toolkitDisplay::takeClose(HWND window) {
  Watched *const watched = find(window);
  if (!watched || !watched->closes) return false;
  --watched->closes;
  return true;
}

HWND toolkitDisplay::windowToClose() {
  for (Watched const &watched : connection().windows)
    if (watched.closes) return watched.window;
  return 0;
}

void toolkitDisplay::waitForMessages(int milliseconds) {
  Display *const x = connection().x;
  if (!x || XPending(x) || windowToClose()) return;
  pollfd socket = {ConnectionNumber(x), POLLIN, 0};
  poll(&socket, 1, milliseconds);
}

void toolkitDisplay::settle() {
  if (connection().x) XSync(connection().x, False);
}

void toolkitDisplay::setDecorated(HWND window, bool on) {
  Display *const x = connection().x;
  if (!x) return;
  Atom const property = XInternAtom(x, "_MOTIF_WM_HINTS", False);
  enum { DECORATIONS_FLAG = 2, ALL_DECORATIONS = 1 };
  // flags, functions, decorations, input mode, status
  long const hints[5] = {DECORATIONS_FLAG, 0, on ? ALL_DECORATIONS : 0, 0, 0};
  XChangeProperty(x, window, property, property, 32, PropModeReplace, reinterpret_cast<unsigned char const *>(hints),
                  5);
}

void toolkitDisplay::hide(HWND window) {
  if (!connection().x) return;
  XUnmapWindow(connection().x, window);
  XFlush(connection().x);
}

void toolkitDisplay::releaseIfCurrent(HWND window) {
  if (glXGetCurrentContext() && glXGetCurrentDrawable() == window) ozDeviceRecord::release();
}
