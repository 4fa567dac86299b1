// The window: turns input into navigation, and draws a frame whenever there is reason to. A frame goes in this order:
// sensors, navigation and keys, clocks, drawing, title, sound.

#include "Viewer.h"
#include "FrameMeter.h"
#include "Options.h"
#include "Overlay.h"
#include "Scene.h"
#include "Snapshot.h"
#include "Speaker.h"
#include "Stage.h"
#include <GL/freeglut.h>
#include <cmath>
#include <cstdlib>
#include <unistd.h>

namespace {

double now() { return ozTime::getTimeOfDay().get(); }

std::string titleOf(std::vector<std::string> const &files) {
  std::string const first = files.front().substr(files.front().rfind('/') + 1);
  return files.size() == 1 ? first : first + " and " + std::to_string(files.size() - 1) + " more";
}

class Viewer {
public:
  Viewer(Scene &scene, Speaker &speaker, Options const &options);
  ~Viewer() { delete _context; }

private:
  // What a held button does.
  enum Drag { NO_DRAG, TURN, PAN, ZOOM, SENSOR };

  static int frameFunc(void *self) { return static_cast<Viewer *>(self)->frame(); }
  int frame();
  void handle(ozEvent const &event);
  void press(ozEvent const &event);
  void drag(int x, int y);
  void key(int character);
  void centreOnPick(int x, int y);
  void savePicture();
  void draw();
  void updateTitle();
  float aspect() const { return static_cast<float>(_width) / static_cast<float>(_height); }

  Scene &_scene;
  Speaker &_speaker;
  Options const &_options;
  ozWindow *_window; // null once it is closed or about to be
  ozContext *_context;
  Stage _stage;
  Overlay _overlay;
  Navigation _navigation;
  std::string const _name;
  int _width, _height;

  Drag _drag = NO_DRAG;
  int _dragX = 0, _dragY = 0; // where the mouse was
  double _pressTime = 0;      // of the last left press, for double clicks
  int _pressX = 0, _pressY = 0;

  FrameMeter _meter;
  bool _hasOverlay = false;
  bool _runsOn = false; // this frame follows the last without a pause
  bool _isDue = false;  // there is reason to draw
  bool _quits = false;
  double _titleTime = 0;
};

ozWindow *openWindow(Options const &options, std::string const &name) {
  ozWindow::initSize(options.width, options.height);
  return new ozWindow(name.c_str());
}

Viewer::Viewer(Scene &scene, Speaker &speaker, Options const &options)
    : _scene(scene), _speaker(speaker), _options(options), _window(openWindow(options, titleOf(options.files))),
      _context(_window->getThisWindowContext()), _stage(scene, options.background), _overlay(titleOf(options.files)),
      _navigation(options.azimuth, options.elevation), _name(titleOf(options.files)), _width(options.width),
      _height(options.height) {
  _stage.prepare(_context);
  _scene.startClocks(options.time);
  Scene::tick();
  _stage.frame(_navigation, aspect());
  ozWindow::setFrameFunc(frameFunc, this);
}

int Viewer::frame() {
  double const begin = now();
  ozEventArray const &events = *_window->getEvents();
  _isDue = _runsOn;
  // The sensors see the mouse under the camera of the frame that the user saw.
  ozWindow::updateSensors(_stage.root(), _stage.camera());
  for (unsigned int i = 0; i < events.getCount() && !_quits; i++) handle(*events[i]);
  if (_quits) {
    if (_window) delete _window;
    _window = nullptr;
    return 1;
  }
  _scene.wakeClocks();
  if (_isDue) {
    draw();
    _meter.count(begin, now(), _runsOn);
    updateTitle();
  }
  _runsOn = !_scene.isPaused() && _scene.isRunning();
  bool const sounds = _speaker.isOpen() && !_scene.isPaused() && _scene.isSounding();
  if (sounds) {
    _speaker.play(_stage.root(), _stage.camera());
    if (!_isDue) usleep(20000); // nothing to see, but the players must not run dry
  }
  return !(_runsOn || sounds);
}

void Viewer::handle(ozEvent const &event) {
  switch (event.type) {
  case ozEvent::RESHAPE_EVENT:
    if (event.x < 1 || event.y < 1) return;
    _width = event.x;
    _height = event.y;
    break;
  case ozEvent::CLOSE_EVENT:
    _window = nullptr; // the library deletes it
    _quits = true;
    return;
  case ozEvent::MOUSE_DOWN_EVENT:
    press(event);
    break;
  case ozEvent::MOUSE_UP_EVENT:
    _drag = NO_DRAG;
    break;
  case ozEvent::MOTION_EVENT:
    drag(event.x, event.y);
    break;
  case ozEvent::PASSIVE_MOTION_EVENT:
    if (!_scene.isTouchable()) return;
    break;
  case ozEvent::KEY_DOWN_EVENT:
    key(event.key);
    break;
  case ozEvent::DISPLAY_EVENT:
    break;
  default:
    return;
  }
  _isDue = true;
}

void Viewer::press(ozEvent const &event) {
  _dragX = event.x;
  _dragY = event.y;
  switch (event.buttons) {
  case ozEvent::LEFT_BUTTON: {
    double const time = now();
    bool const isSecond = time - _pressTime < 0.4 && std::abs(event.x - _pressX) + std::abs(event.y - _pressY) < 6;
    _pressTime = isSecond ? 0 : time;
    _pressX = event.x;
    _pressY = event.y;
    if (_scene.isDragging())
      _drag = SENSOR;
    else if (event.modifiers & GLUT_ACTIVE_SHIFT)
      _drag = PAN;
    else
      _drag = TURN;
    if (isSecond) centreOnPick(event.x, event.y);
    break;
  }
  case ozEvent::MIDDLE_BUTTON:
    _drag = PAN;
    break;
  case ozEvent::RIGHT_BUTTON:
    _drag = ZOOM;
    break;
  case ozEvent::WHEEL_UP_BUTTON:
    _navigation.zoom(1 / 1.1f);
    break;
  case ozEvent::WHEEL_DOWN_BUTTON:
    _navigation.zoom(1.1f);
    break;
  }
}

void Viewer::drag(int x, int y) {
  float const right = static_cast<float>(x - _dragX) / static_cast<float>(_height);
  float const up = static_cast<float>(y - _dragY) / static_cast<float>(_height);
  _dragX = x;
  _dragY = y;
  switch (_drag) {
  case TURN:
    _navigation.turn(right, up);
    break;
  case PAN:
    _navigation.pan(right, up);
    break;
  case ZOOM:
    _navigation.zoom(std::exp(-3 * up));
    break;
  default:
    break;
  }
}

void Viewer::centreOnPick(int x, int y) {
  ozHit hit;
  if (_stage.camera()->pick(_stage.root(), x, y, hit)) _navigation.centreOn(hit.worldPoint);
}

void Viewer::key(int character) {
  switch (character) {
  case 'r':
    _navigation.reset();
    _stage.frame(_navigation, aspect());
    break;
  case 'w':
    _stage.toggleWireframe(_context);
    break;
  case 'h':
    _stage.toggleHeadlight();
    break;
  case ' ':
    _scene.togglePause();
    break;
  case 'i':
    _hasOverlay = !_hasOverlay;
    break;
  case 's':
    savePicture();
    break;
  case 'f':
    glutFullScreenToggle();
    break;
  case '?':
    fputs(viewerKeys(), stdout);
    fflush(stdout);
    break;
  case 'q':
  case 27: // Esc
    _quits = true;
    break;
  }
}

void Viewer::savePicture() {
  std::string const stem = _options.files.front().substr(_options.files.front().rfind('/') + 1);
  std::string file;
  for (int i = 1; file.empty() || !access(file.c_str(), F_OK); i++) file = stem + "-" + std::to_string(i) + ".png";
  std::string reason;
  if (takePicture(_stage, _navigation, _width, _height).write(file, reason))
    printf("%s\n", file.c_str());
  else
    fprintf(stderr, "ozview: %s: %s\n", file.c_str(), reason.c_str());
  fflush(stdout);
}

void Viewer::draw() {
  _stage.draw(_navigation, _width, _height);
  if (_hasOverlay) _overlay.draw(_stage, _width, _height, _meter.time());
  ozWindow::swapBuffers();
}

void Viewer::updateTitle() {
  double const time = now();
  if (time - _titleTime < 0.5) return;
  _titleTime = time;
  char rate[32];
  snprintf(rate, sizeof rate, _meter.rate() < 10 ? "%.1f" : "%.0f", _meter.rate());
  ozWindow::setWindowTitle((_name + " - " + rate + " fps").c_str());
}

} // namespace

void runViewer(Scene &scene, Speaker &speaker, Options const &options) {
  Viewer viewer(scene, speaker, options);
  ozWindow::mainLoop();
}

char const *viewerKeys() {
  return "left drag          turn the scene\n"
         "middle drag        move it; so does left drag with shift\n"
         "right drag, wheel  zoom\n"
         "double click       centre on the picked point\n"
         "r                  the view as it was at first\n"
         "w                  wireframe on, off\n"
         "h                  headlight on, off\n"
         "i                  file name, time of a frame, shapes drawn and culled on, off\n"
         "space              stop the clocks, go on\n"
         "s                  save a PNG in the working directory\n"
         "f                  full screen on, off\n"
         "?                  these lines\n"
         "q, Esc             quit\n";
}
