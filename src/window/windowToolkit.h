#ifndef WINDOW_TOOLKIT_H
#define WINDOW_TOOLKIT_H

/// The toolkit ends the process when it is called without display, initialisation or current window: these are asked
/// first.
namespace windowToolkit {

/// Initialises the toolkit if nobody has. Ends the process with the toolkit's message if there is no display.
void open();
bool isOpen();
/// Opens it if there is a display.
bool isReady();
/// Whether it has a current window, the library's or another.
bool hasCurrentWindow();

} // namespace windowToolkit

#endif
