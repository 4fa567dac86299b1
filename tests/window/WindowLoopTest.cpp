// Frames, free run and the main loop.

#include "window/windowFixture.h"

#include "oz/ozTimeSensor.h"
#include "support/offscreen.h"

#include <GL/glx.h>

namespace {

// Counts its evaluations: each tick of the clock makes one.
class TickCounter : public ozTimeSensor {
public:
  void eval() override { ++ticks; }
  int ticks = 0;
};

} // namespace

TEST_F(WindowTest, AnEventCallsTheEventFunctionThenTheRenderFunction) {
  ozWindow *const window = open();
  std::vector<std::string> calls;
  Callback look{[&] { calls.push_back("event " + std::to_string(window->getEvents()->getCount())); }};
  Callback render{[&] { calls.push_back("render " + std::to_string(window->getEvents()->getCount())); }};
  window->setEventFunc(Callback::run, &look);
  ozWindow::setRenderFunc(Callback::run, &render);
  ozWindow::motionFunc(1, 1);
  EXPECT_EQ(calls, (std::vector<std::string>{"event 1", "render 0"}));
  window->processEvents();
  EXPECT_EQ(calls.size(), 2u) << "without events nothing is called";
}

TEST_F(WindowTest, AFrameFunctionTakesThePlaceOfTheOthers) {
  ozWindow *const window = open();
  int frames = 0, others = 0;
  FrameCallback frame{[&] { return ++frames; }};
  Callback other{[&] { ++others; }};
  ozWindow::setFrameFunc(FrameCallback::run, &frame);
  window->setEventFunc(Callback::run, &other);
  ozWindow::setRenderFunc(Callback::run, &other);
  ozWindow::motionFunc(1, 1);
  EXPECT_EQ(frames, 1);
  EXPECT_EQ(others, 0);
  EXPECT_EQ(window->getEvents()->getCount(), 0u);
  window->processEvents();
  EXPECT_EQ(frames, 2) << "also without events";
}

TEST_F(WindowTest, AFrameFunctionIsSetOnTheCurrentWindowAlone) {
  ozWindow *const a = open(), *const b = open();
  int frames = 0;
  FrameCallback frame{[&] { return ++frames; }};
  ozWindow::setCurrent(a);
  ozWindow::setFrameFunc(FrameCallback::run, &frame);
  b->processEvents();
  EXPECT_EQ(frames, 0);
  a->processEvents();
  EXPECT_EQ(frames, 1);
}

TEST_F(WindowTest, AFrameFunctionSwitchesFreeRun) {
  ozWindow *const window = open();
  int result = 0, frames = 0;
  FrameCallback frame{[&] { return ++frames, result; }};
  ozWindow::setFrameFunc(FrameCallback::run, &frame);
  ozWindow::motionFunc(1, 1);
  EXPECT_EQ(frames, 1);
  ozWindow::motionFunc(2, 2);
  EXPECT_EQ(frames, 1) << "it said to run on: events wait for the idle turn";
  EXPECT_EQ(window->getEvents()->getCount(), 1u);
  result = 5;
  ozWindow::idleFunc();
  EXPECT_EQ(frames, 2);
  ozWindow::motionFunc(3, 3);
  EXPECT_EQ(frames, 3) << "it said to wait: the next event makes a frame";
}

TEST_F(WindowTest, InFreeRunEventsWaitAndTheIdleTurnRendersOnce) {
  ozWindow *const a = open(), *const b = open();
  int looks = 0, renders = 0;
  Callback look{[&] { ++looks; }}, render{[&] { ++renders; }};
  a->setEventFunc(Callback::run, &look);
  b->setEventFunc(Callback::run, &look);
  ozWindow::setRenderFunc(Callback::run, &render);
  ozWindow::setFreeRun(1);
  ozWindow::setCurrent(a);
  ozWindow::motionFunc(1, 1);
  ozWindow::setCurrent(b);
  ozWindow::motionFunc(1, 1);
  EXPECT_EQ(looks, 0);
  ozWindow::idleFunc();
  EXPECT_EQ(looks, 2);
  EXPECT_EQ(renders, 1);
  EXPECT_EQ(a->getEvents()->getCount() + b->getEvents()->getCount(), 0u);
}

TEST_F(WindowTest, AnIdleTurnGoesThroughTheWindowsInOrderEachCurrent) {
  ozWindow *const a = open(), *const b = open();
  std::vector<ozWindow *> seen;
  FrameCallback frame{[&] {
    seen.push_back(ozWindow::getCurrent());
    EXPECT_EQ(ozContext::getCurrent(), ozWindow::getContext());
    EXPECT_EQ(glXGetCurrentDrawable(), ozWindow::getCurrent()->getHWND());
    return 0;
  }};
  for (ozWindow *window : {b, a}) {
    ozWindow::setCurrent(window);
    ozWindow::setFrameFunc(FrameCallback::run, &frame);
  }
  RawGL offscreen;
  ozWindow::idleFunc();
  EXPECT_EQ(seen, (std::vector<ozWindow *>{a, b}));
}

TEST_F(WindowTest, TheClockTicksOncePerFrame) {
  ozWindow *const a = open();
  open();
  TickCounter *const counter = new TickCounter;
  counter->ref();
  ozWindow::makeCurrent(a);
  ozWindow::motionFunc(1, 1);
  EXPECT_EQ(counter->ticks, 1) << "outside free run with each event";
  ozWindow::setFreeRun(1);
  ozWindow::motionFunc(1, 1);
  EXPECT_EQ(counter->ticks, 1) << "in free run not with events";
  ozWindow::idleFunc();
  EXPECT_EQ(counter->ticks, 2) << "once a turn, whatever the number of windows";
  counter->unref();
}

TEST_F(WindowTest, MainLoopReturnsWithTheLastWindow) {
  ozWindow *const a = openOnly(), *const b = openOnly();
  HWND const first = a->getHWND(), second = b->getHWND();
  int closes = 0;
  Callback next{[&] {
    if (!countEvents(ozWindow::getCurrent(), ozEvent::CLOSE_EVENT)) return;
    if (++closes == 1) client.close(second);
  }};
  a->setEventFunc(Callback::run, &next);
  b->setEventFunc(Callback::run, &next);
  client.close(first);
  ozWindow::mainLoop();
  EXPECT_EQ(closes, 2);
  EXPECT_FALSE(client.exists(first));
  EXPECT_FALSE(client.exists(second));
  EXPECT_EQ(ozWindow::getCurrent(), nullptr);
  gone(a);
  gone(b);
}

TEST_F(WindowTest, MainLoopRunsAgainForANewWindow) {
  for (int round = 0; round < 3; ++round) {
    ozWindow *const window = openOnly();
    HWND const handle = window->getHWND();
    client.close(handle);
    ozWindow::mainLoop();
    EXPECT_FALSE(client.exists(handle));
    gone(window);
  }
}

TEST_F(WindowTest, MainLoopSurvivesRequestsThatAreNotGranted) {
  ozWindow *const window = openOnly();
  window->deleteOnClose(0);
  int closes = 0;
  Callback count{[&] {
    closes += countEvents(window, ozEvent::CLOSE_EVENT);
    if (closes == 100) delete window;
  }};
  window->setEventFunc(Callback::run, &count);
  for (int i = 0; i < 100; ++i) client.close(window->getHWND());
  ozWindow::mainLoop();
  EXPECT_EQ(closes, 100);
  gone(window);
}

TEST_F(WindowTest, MainLoopRunsFramesWithoutInputInFreeRun) {
  ozWindow *const window = openOnly();
  int frames = 0;
  FrameCallback frame{[&] {
    if (++frames == 50) delete window;
    return 0;
  }};
  ozWindow::setFrameFunc(FrameCallback::run, &frame);
  ozWindow::mainLoop();
  EXPECT_EQ(frames, 50);
  gone(window);
}

TEST_F(WindowTest, MainLoopRunsTimers) {
  ozWindow *const window = openOnly();
  int shots = 0;
  Callback count{[&] {
    shots += countEvents(window, ozEvent::TIMER_EVENT);
    if (shots == 5) delete window;
  }};
  window->setEventFunc(Callback::run, &count);
  window->enableTimer(3);
  ozWindow::mainLoop();
  EXPECT_EQ(shots, 5);
  gone(window);
}

TEST_F(WindowTest, MainLoopWaitsWithoutTurningTheProcessor) {
  ozWindow *const window = openOnly();
  Callback remove{[&] {
    if (countEvents(window, ozEvent::TIMER_EVENT)) delete window;
  }};
  window->setEventFunc(Callback::run, &remove);
  window->enableTimer(500);
  timespec before, after;
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &before);
  ozWindow::mainLoop();
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &after);
  double const used = (after.tv_sec - before.tv_sec) + (after.tv_nsec - before.tv_nsec) * 1e-9;
  EXPECT_LT(used, 0.2);
  gone(window);
}

TEST_F(WindowTest, MainLoopRunsInsideACallback) {
  ozWindow *const outer = openOnly();
  HWND const handle = outer->getHWND();
  bool done = false;
  Callback nest{[&] {
    delete outer;
    ozWindow *const inner = new ozWindow("inner");
    client.close(inner->getHWND());
    ozWindow::mainLoop();
    done = true;
  }};
  outer->setEventFunc(Callback::run, &nest);
  client.motion(handle, 1, 1);
  ozWindow::mainLoop();
  EXPECT_TRUE(done);
  EXPECT_FALSE(client.exists(handle));
  gone(outer);
}

// The toolkit still uses the window whose callback it called, and the one that was current before.
TEST_F(WindowTest, ALoopInsideACallbackMayDeleteTheWindowsAround) {
  ozWindow *const a = open(), *const b = open();
  HWND const handles[] = {a->getHWND(), b->getHWND()};
  bool nested = false;
  Callback nest{[&] {
    if (nested) return;
    nested = true;
    client.close(handles[0]);
    client.close(handles[1]);
    ozWindow::mainLoop();
    for (HWND handle : handles) EXPECT_FALSE(client.isShown(handle));
  }};
  b->setEventFunc(Callback::run, &nest);
  ozWindow::makeCurrent(a);
  client.expose(b->getHWND());
  ozWindow::mainLoop();
  EXPECT_TRUE(nested);
  for (HWND handle : handles) EXPECT_FALSE(client.exists(handle));
  gone(a);
  gone(b);
}

TEST_F(WindowTest, MainLoopEndsWhenTheToolkitDestroysTheLastWindow) {
  ozWindow *const window = openOnly();
  glutTimerFunc(
      1, [](int id) { glutDestroyWindow(id); }, glutGetWindow());
  ozWindow::mainLoop();
  EXPECT_EQ(ozWindow::getCurrent(), nullptr);
  close(window);
}

TEST_F(WindowTest, ACallbackMayLeaveAnOffscreenContextCurrent) {
  ozWindow *const a = open(), *const b = open();
  RawGL offscreen;
  ozDeviceRecord::releaseOffscreen(); // as the main loop does ahead of a turn
  Callback draw{[&] { ozDeviceRecord::makeCurrent(offscreen.device, offscreen.context); }};
  a->setEventFunc(Callback::run, &draw);
  client.motion(a->getHWND(), 1, 1);
  client.motion(b->getHWND(), 1, 1);
  EXPECT_TRUE(pumpUntil([=] { return b->getEvents()->getCount() > 0; }));
}

TEST_F(WindowTest, AWindowMayBeOpenedInACallback) {
  ozWindow *const window = open();
  ozWindow *opened = nullptr;
  Callback create{[&] {
    if (!opened) opened = openOnly();
  }};
  window->setEventFunc(Callback::run, &create);
  client.motion(window->getHWND(), 1, 1);
  EXPECT_TRUE(pumpUntil([&] { return opened && countEvents(opened, ozEvent::DISPLAY_EVENT); }));
}

TEST_F(WindowTest, TheClockTicksAheadOfTheFrameFunction) {
  open();
  TickCounter *const counter = new TickCounter;
  counter->ref();
  int seen = 0;
  FrameCallback frame{[&] { return seen = counter->ticks; }};
  ozWindow::setFrameFunc(FrameCallback::run, &frame);
  ozWindow::motionFunc(1, 1);
  EXPECT_EQ(seen, 1);
  counter->unref();
}

TEST_F(WindowTest, AnIdleTurnRendersWithoutAnyWindowToo) {
  ASSERT_EQ(ozWindow::getCurrent(), nullptr);
  int renders = 0;
  Callback render{[&] { ++renders; }};
  ozWindow::setRenderFunc(Callback::run, &render);
  ozWindow::idleFunc();
  EXPECT_EQ(renders, 1);
}

TEST_F(WindowTest, MainLoopDeletesWhatWasClosedInAFreeRunThatIsOver) {
  ozWindow *const window = open();
  ozWindow::setFreeRun(1);
  ozWindow::makeCurrent(window);
  ASSERT_EQ(ozWindow::closeFunc(), 1);
  ozWindow::setFreeRun(0);
  int idle = 0;
  window->enableTimer(500); // would keep the loop alive, and says so
  Callback count{[&] { idle += countEvents(window, ozEvent::TIMER_EVENT); }};
  window->setEventFunc(Callback::run, &count);
  ozWindow::mainLoop();
  EXPECT_EQ(idle, 0);
  gone(window);
}

TEST_F(WindowTest, ALoopInsideACloseEventDoesNotRunTheEventAgain) {
  ozWindow *const window = openOnly();
  int closes = 0;
  Callback removeBoth{[&] {
    if (!countEvents(ozWindow::getCurrent(), ozEvent::TIMER_EVENT)) return;
    delete window;
    delete ozWindow::getCurrent();
  }};
  Callback ask{[&] {
    if (!countEvents(window, ozEvent::CLOSE_EVENT)) return;
    if (++closes > 1) return;
    ozWindow *const dialog = new ozWindow("sure?");
    dialog->setEventFunc(Callback::run, &removeBoth);
    dialog->enableTimer(50);
    ozWindow::mainLoop();
  }};
  window->setEventFunc(Callback::run, &ask);
  client.close(window->getHWND());
  ozWindow::mainLoop();
  EXPECT_EQ(closes, 1);
  gone(window);
}

namespace {

class DerivedWindow : public ozWindow {
  OZ_OBJECT_CLASS(DerivedWindow);

public:
  DerivedWindow() : ozWindow("derived", getClassType()) {}
};

OZ_DEFINE_TYPE(DerivedWindow, "DerivedWindow", ozWindow) {}

} // namespace

TEST_F(WindowTest, MayBeDerivedFrom) {
  DerivedWindow *const window = new DerivedWindow;
  windows.push_back(window);
  EXPECT_EQ(window->getType(), DerivedWindow::getClassType());
  EXPECT_STREQ(window->getTitle(), "derived");
  EXPECT_EQ(ozWindow::getCurrent(), window);
}

TEST_F(WindowTest, AnItemOfTheListKnowsItsWindow) {
  ozWindow *const window = open();
  ozWindowItem const item(window);
  EXPECT_EQ(item.getWindow(), window);
  EXPECT_FALSE(item.isLinked());
}
