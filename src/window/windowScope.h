#ifndef WINDOW_SCOPE_H
#define WINDOW_SCOPE_H

/// @file
/// What a run of application code on behalf of a window stands in, from the toolkit's callback to its end.

#include "oz/ozPlatform.h"

class ozWindow;

/// Makes the window current in the toolkit and in OpenGL, and knows from then on whether it still exists.
class ozWindowScope {
public:
  explicit ozWindowScope(ozWindow *window);
  ~ozWindowScope();
  ozWindowScope(ozWindowScope const &) = delete;
  ozWindowScope &operator=(ozWindowScope const &) = delete;

  /// Null once the window is deleted.
  ozWindow *window() const { return _window; }

  /// Whether code on behalf of the window is running.
  static bool runs(ozWindow const *window);
  /// The window is deleted.
  static void forget(ozWindow *window);
  /// Gives the toolkit's part of a deleted window back to it: at once, or when no callback runs any more, because the
  /// toolkit goes on with the window at hand after its callback has returned.
  static void retire(int windowId, HWND window);

private:
  static void destroyRetired(int = 0);

  ozWindow *_window;
  ozWindowScope *_outer;
  static ozWindowScope *_Innermost;
};

#endif
