#ifndef TOOLKIT_DISPLAY_H
#define TOOLKIT_DISPLAY_H

#include "oz/ozPlatform.h"

/// The toolkit's connection to the X server, for what the toolkit itself does not offer: a say in the closing of
/// windows, waiting for messages, decorations. Everything does nothing while the connection is closed.
namespace toolkitDisplay {

/// Whether a display can be opened that shows OpenGL.
bool opens();

/// The window whose rendering context is current. From now on the toolkit never sees a WM_DELETE_WINDOW message for it:
/// each arrives, in its place among the other messages, as a LeaveNotify, and waits for takeClose.
HWND watchCurrentWindow();
/// The messages that come until the window is destroyed are nobody's, and still never the toolkit's.
void forget(HWND window);
/// Takes one message to close the window; false if there is none.
bool takeClose(HWND window);
/// A window with messages to close it that nobody has taken; 0 if there is none.
HWND windowToClose();

/// Returns when a message waits or the milliseconds are over.
void waitForMessages(int milliseconds);
/// Returns when the server has done everything that it was asked.
void settle();

void setDecorated(HWND window, bool on);
/// Takes the window off the screen at once.
void hide(HWND window);
/// Makes nothing current if OpenGL draws to this window.
void releaseIfCurrent(HWND window);

} // namespace toolkitDisplay

#endif
