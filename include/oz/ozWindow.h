#ifndef OZ_WINDOW_H
#define OZ_WINDOW_H

#include "oz/ozDList.h"
#include "oz/ozEvent.h"
#include "oz/ozObject.h"

class ozCamera;
class ozContext;
class ozNode;
class ozWindow;

/// A window's place in the list of all windows.
class OZ_API ozWindowItem : public ozDLink {
public:
  explicit ozWindowItem(ozWindow *window) : _window(window) {}
  ozWindow *getWindow() const { return _window; }

private:
  ozWindow *_window;
};

/// A top-level window with a context of its own, its input as a list of events, and the frame loop of the program.
///
///     ozWindow *window = new ozWindow("Scene");
///     window->setEventFunc(handleEvents, nullptr); // looks at getEvents()
///     ozWindow::setRenderFunc(render, nullptr);    // draws, then ozWindow::swapBuffers()
///     ozWindow::mainLoop();
///
/// The library draws and swaps nothing by itself. All functions of the application are called with the window at hand
/// current in the toolkit and its context current in OpenGL, and may delete any window.
///
/// All windows belong to the thread that made the first one. "The current window" is the toolkit's; calls on it do
/// nothing when there is none. The toolkit is initialised by whichever call needs it first, if nobody has done so.
class OZ_API ozWindow : public ozObject {
  OZ_OBJECT_CLASS(ozWindow);

public:
  /// What get() can be asked: the toolkit's numbers.
  enum QueryEnum : int {
    WINDOW_X = 100,
    WINDOW_Y,
    WINDOW_WIDTH,
    WINDOW_HEIGHT,
    WINDOW_BUFFER_SIZE,
    WINDOW_STENCIL_SIZE,
    WINDOW_DEPTH_SIZE,
    WINDOW_RED_SIZE,
    WINDOW_GREEN_SIZE,
    WINDOW_BLUE_SIZE,
    WINDOW_ALPHA_SIZE,
    WINDOW_ACCUM_RED_SIZE,
    WINDOW_ACCUM_GREEN_SIZE,
    WINDOW_ACCUM_BLUE_SIZE,
    WINDOW_ACCUM_ALPHA_SIZE,
    WINDOW_DOUBLEBUFFER,
    WINDOW_RGBA,
    WINDOW_PARENT,
    WINDOW_NUM_CHILDREN,
    WINDOW_COLORMAP_SIZE,
    WINDOW_NUM_SAMPLES,
    WINDOW_STEREO,
    WINDOW_CURSOR,
    SCREEN_WIDTH = 200,
    SCREEN_HEIGHT,
    SCREEN_WIDTH_MM,
    SCREEN_HEIGHT_MM,
    MENU_NUM_ITEMS = 300,
    DISPLAY_MODE_POSSIBLE = 400,
    INIT_WINDOW_X = 500,
    INIT_WINDOW_Y,
    INIT_WINDOW_WIDTH,
    INIT_WINDOW_HEIGHT,
    INIT_DISPLAY_MODE,
    ELAPSED_TIME = 700
  };
  /// What getDevice() can be asked: the toolkit's numbers.
  enum QueryDeviceEnum : int {
    HAS_KEYBOARD = 600,
    HAS_MOUSE,
    HAS_SPACEBALL,
    HAS_DIAL_AND_BUTTON_BOX,
    HAS_TABLET,
    NUM_MOUSE_BUTTONS,
    NUM_SPACEBALL_BUTTONS,
    NUM_BUTTON_BOX_BUTTONS,
    NUM_DIALS,
    NUM_TABLET_BUTTONS,
    DEVICE_IGNORE_KEY_REPEAT,
    DEVICE_KEY_REPEAT,
    HAS_JOYSTICK,
    OWNS_JOYSTICK,
    JOYSTICK_BUTTONS,
    JOYSTICK_AXES,
    JOYSTICK_POLL_RATE
  };

  /// Opens a window and makes it current. Null gives a window without title and decorations. When no window can be
  /// opened the toolkit ends the process with a message: ask checkDisplay first.
  explicit ozWindow(char const *title);
  ozWindow(ozWindow const &) = delete;
  ozWindow &operator=(ozWindow const &) = delete;
  /// Takes the window off the display. The context lives on, and so do the event objects.
  ~ozWindow() override;

  /// @name Parameters of the windows that follow
  /// @{

  /// A mask of the toolkit's display mode bits; 146 by default: colours, two buffers, depth, multisampling.
  static void initDisplayMode(unsigned long mode);
  /// Pixels from the upper left corner of the screen; -1, -1 by default: the window manager chooses.
  static void initPosition(int x, int y);
  /// Pixels; 500, 500 by default. With position 0, 0 and the size of the screen the window becomes full screen.
  static void initSize(int width, int height);
  /// 1 if the screen has a pixel format for the mode.
  static int checkDisplayMode(unsigned long mode);
  /// 0 when no display can be opened, or none that shows OpenGL. Prints nothing.
  static int checkDisplay();
  /// @}

  /// @name On the current window
  /// @{
  static void showWindow();
  static void hideWindow();
  static void iconifyWindow();
  static void pushWindow();
  static void popWindow();
  /// Pixels from the upper left corner of the screen.
  static void positionWindow(int x, int y);
  /// Pixels. A side below 1 prints a warning and changes nothing.
  static void reshapeWindow(int width, int height);
  /// Null takes the decorations away, a title brings them back.
  static void setWindowTitle(char const *title);
  static void setIconTitle(char const *title);
  static void swapBuffers();
  /// The context; null without a current window.
  static ozContext *getContext();
  /// Whether its pixels hold colours, not colour indices. 1 without a current window.
  static int isRGB();
  /// See processEvents. The function returns 0 to run on without input, anything else to wait for the next event.
  static void setFrameFunc(int (*function)(void *), void *data);
  /// @}

  /// Not on this platform: prints a warning if there is an argument.
  static void setDisplay(char const *display);

  /// Asks the toolkit. 0 when the question needs a current window and there is none.
  static int get(QueryEnum query);
  static int getDevice(QueryDeviceEnum query);
  /// Draws a character of one of the toolkit's bitmap fonts at the raster position of OpenGL.
  static void bitmapCharacter(void *font, int character);

  /// The toolkit's current window; null if it is none of this class.
  static ozWindow *getCurrent();
  /// Makes the window current in the toolkit. Null does nothing.
  static void setCurrent(ozWindow *window);
  /// Makes the window current in the toolkit and its context in OpenGL. Null does nothing.
  static void makeCurrent(ozWindow *window);

  /// The context, which the window makes and does not delete; null once somebody has.
  ozContext *getThisWindowContext() const { return _context; }
  /// What contexts draw to. Good for as long as the window lives.
  HDC getHDC() const { return _hdc; }
  /// The window system's id of the window.
  HWND getHWND() const { return _hwnd; }
  /// The title as it was set last; "" for none.
  char const *getTitle() const { return _title; }
  /// Null if it was never set.
  char const *getIconTitle() const { return _iconTitle; }
  void swapThisWindowBuffers();
  /// Whether the window is deleted when the user closes it, which is so by default. With 0 it stays and only gets the
  /// CLOSE_EVENT.
  void deleteOnClose(int on) { _deleteOnCloseFlag = on != 0; }

  /// @name Loop and events
  /// @{

  /// Runs until no window is left, then returns; it may be called again. Returns at once without a window.
  static void mainLoop();
  /// Called by processEvents when there are events and no frame function. Looks at getEvents.
  void setEventFunc(void (*function)(void *), void *data);
  /// One for all windows: draws the scene.
  static void setRenderFunc(void (*function)(void *), void *data);
  /// 1: idleFunc runs at every turn of the loop, without input, and events wait for it. 0, the default: each event is
  /// processed when it comes.
  static void setFreeRun(int on);
  /// Gives the window a TIMER_EVENT every so many milliseconds. A second call makes a second chain of shots.
  void enableTimer(unsigned int milliseconds);
  /// Ends the chains: each fires at most once more, without an event.
  void disableTimer() { _timerEnabled = 0; }
  int getTimerEnabled() const { return _timerEnabled; }
  /// Milliseconds; 0 at first.
  unsigned int getTimerInterval() const { return _timerInterval; }

  /// The events that have come since the last resetEvents, in order.
  ozEventArray *getEvents() { return &_events; }
  /// One frame. Updates the time sensors, unless free run has done that; calls the frame function and forgets the
  /// events, and lets its result switch free run. Without a frame function, if there are events, it calls the event
  /// function, forgets the events and, outside free run, calls the render function. Without both, events stay. At the
  /// end a window that was closed is deleted.
  void processEvents();
  /// Forgets the pending events.
  void resetEvents();

  /// Pixels from the left edge of the window in which the mouse was last.
  static int getMouseX() { return _MouseX; }
  /// Pixels from the bottom edge, as in events.
  static int getMouseY() { return _MouseY; }
  /// The buttons held: 1 left, 2 middle, 4 right.
  static int getMouseButtons() { return _MouseButtons; }
  /// Lets the pending mouse events of the current window drive the pick sensors in a graph.
  static void updateSensors(ozNode *root, ozCamera *camera);
  /// @}

  /// @name Callbacks
  /// What the toolkit calls, with the window at hand current. Positions count from the top, as the toolkit's do.
  /// @{
  static void displayFunc();
  static void reshapeFunc(int width, int height);
  /// Returns whether the window goes.
  static int closeFunc();
  /// Buttons from 0: left, middle, right, wheel up, wheel down; state 1 for a release.
  static void mouseFunc(int button, int state, int x, int y);
  static void motionFunc(int x, int y);
  static void passiveMotionFunc(int x, int y);
  static void keyboardFunc(unsigned char key, int x, int y);
  static void keyboardUpFunc(unsigned char key, int x, int y);
  static void specialFunc(int key, int x, int y);
  static void specialUpFunc(int key, int x, int y);
  /// The argument is the window.
  static void timerCallbackFunc(void *window);
  /// One turn of free run: the time sensors, processEvents of every window, the render function.
  static void idleFunc();
  /// @}

protected:
  ozWindow(char const *title, ozType *type);

private:
  friend struct ozWindowList;
  struct Context; // tells its window when it is deleted

  void init(char const *title);
  void registerCallbacks();
  void detach();

  static void crossingFunc(int state);
  static void destroyedFunc();
  static void timerShot(int windowId);
  static void deliverCloses();
  static void turn();
  static int timeUntilShot(int milliseconds);

  ozEvent *addEvent(int type);
  ozEvent *addInput(int type, int x, int y, int buttons);
  ozEvent *addMouse(int type, int x, int y, int buttons);
  static void mouseMoved(int type, int x, int y, int buttons);
  static void keyMoved(int type, int key, int x, int y);
  void shoot();
  void dispatch();

  ozContext *_context;
  HWND _hwnd;
  HDC _hdc;
  int _windowId; // the toolkit's number; 0 once the toolkit's window is gone
  char *_title;
  char *_iconTitle;
  int _height; // to turn y around
  int _isRGB;
  int (*_frameFunc)(void *);
  void *_frameData;
  void (*_eventFunc)(void *);
  void *_eventData;
  ozEventArray _freeEvents;
  ozEventArray _events;
  int _timerEnabled;
  unsigned int _timerInterval;
  int _nextShot; // on the toolkit's clock
  ozWindowItem *_item;
  unsigned char _deletePending;
  unsigned char _deleteOnCloseFlag;
  unsigned long _idlePass; // the last idle turn that has come by here

  static int _InitX, _InitY, _InitWidth, _InitHeight;
  static unsigned long _InitMode;
  static int _ScreenWidth, _ScreenHeight;
  static void (*_RenderFunc)(void *);
  static void *_RenderData;
  static int _FreeRun;
  static int _MouseX, _MouseY, _MouseButtons;
  static int _PickButtonDown;
  static unsigned long _Pass; // idle turns so far
};

#endif
