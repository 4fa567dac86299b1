// Windows that are closed by the user, or deleted wherever an application may do so.

#include "window/windowFixture.h"

#include "support/capture.h"

TEST_F(WindowTest, ThatMayNotBeDeletedSurvivesAHundredRequestsInARow) {
  ozWindow *const window = open();
  window->deleteOnClose(0);
  for (int i = 0; i < 100; ++i) client.close(window->getHWND());
  EXPECT_TRUE(pumpUntil([=] { return countEvents(window, ozEvent::CLOSE_EVENT) >= 100; }));
  settle();
  EXPECT_EQ(countEvents(window, ozEvent::CLOSE_EVENT), 100u);
  EXPECT_EQ(lastEvent(window)->window, window);
  EXPECT_TRUE(client.isShown(window->getHWND()));
  EXPECT_EQ(ozWindow::getCurrent(), window);
}

TEST_F(WindowTest, SurvivesRequestsThatArriveOneByOne) {
  ozWindow *const window = open();
  window->deleteOnClose(0);
  for (unsigned int i = 1; i <= 100; ++i) {
    client.close(window->getHWND());
    ASSERT_TRUE(pumpUntil([=] { return countEvents(window, ozEvent::CLOSE_EVENT) == i; }));
  }
  EXPECT_TRUE(client.isShown(window->getHWND()));
}

// Of any message type and format: the toolkit itself looks at the first number alone.
TEST_F(WindowTest, SurvivesRequestsInADifferentGuise) {
  ozWindow *const window = open();
  window->deleteOnClose(0);
  XEvent event = {};
  event.xclient.type = ClientMessage;
  event.xclient.window = window->getHWND();
  event.xclient.message_type = XInternAtom(client.x, "ANOTHER_TYPE", False);
  event.xclient.format = 32;
  event.xclient.data.l[0] = static_cast<long>(XInternAtom(client.x, "WM_DELETE_WINDOW", False));
  XSendEvent(client.x, window->getHWND(), False, NoEventMask, &event);
  XSync(client.x, False);
  EXPECT_TRUE(pumpUntil([=] { return countEvents(window, ozEvent::CLOSE_EVENT); }));
  EXPECT_TRUE(client.isShown(window->getHWND()));
}

TEST_F(WindowTest, ARequestKeepsItsPlaceAmongTheInput) {
  ozWindow *const window = open();
  window->deleteOnClose(0);
  client.motion(window->getHWND(), 1, 1);
  client.close(window->getHWND());
  client.motion(window->getHWND(), 2, 2);
  EXPECT_TRUE(pumpUntil([=] { return window->getEvents()->getCount() == 3; }));
  EXPECT_EQ(window->getEvents()->get(0)->type, ozEvent::PASSIVE_MOTION_EVENT);
  EXPECT_EQ(window->getEvents()->get(1)->type, ozEvent::CLOSE_EVENT);
  EXPECT_EQ(window->getEvents()->get(2)->type, ozEvent::PASSIVE_MOTION_EVENT);
}

TEST_F(WindowTest, IsDeletedByARequest) {
  ozWindow *const window = open(), *const other = open();
  HWND const handle = window->getHWND();
  client.close(handle);
  EXPECT_TRUE(pumpUntil([&] { return !client.exists(handle); }));
  gone(window);
  EXPECT_TRUE(client.isShown(other->getHWND()));
}

TEST_F(WindowTest, GetsTheCloseEventAheadOfItsDeletion) {
  ozWindow *const window = open();
  int closes = 0;
  Callback count{[&] { closes += countEvents(ozWindow::getCurrent(), ozEvent::CLOSE_EVENT); }};
  window->setEventFunc(Callback::run, &count);
  HWND const handle = window->getHWND();
  client.close(handle);
  EXPECT_TRUE(pumpUntil([&] { return !client.exists(handle); }));
  EXPECT_EQ(closes, 1);
  gone(window);
}

TEST_F(WindowTest, CloseFuncTellsWhetherTheWindowGoes) {
  ozWindow *const window = open();
  window->deleteOnClose(0);
  EXPECT_EQ(ozWindow::closeFunc(), 0);
  EXPECT_EQ(ozWindow::getCurrent(), window);
  window->deleteOnClose(1);
  EXPECT_EQ(ozWindow::closeFunc(), 1);
  gone(window);
  EXPECT_EQ(ozWindow::getCurrent(), nullptr);
}

TEST_F(WindowTest, AnyTrueValueLetsItBeDeleted) {
  ozWindow *const window = open();
  window->deleteOnClose(256);
  EXPECT_EQ(ozWindow::closeFunc(), 1);
  gone(window);
}

TEST_F(WindowTest, InFreeRunTheCloseEventWaitsForTheIdleTurn) {
  ozWindow *const window = open();
  ozWindow::setFreeRun(1);
  ozWindow::makeCurrent(window);
  EXPECT_EQ(ozWindow::closeFunc(), 1);
  EXPECT_EQ(countEvents(window, ozEvent::CLOSE_EVENT), 1u);
  EXPECT_EQ(ozWindow::getCurrent(), window);
  ozWindow::idleFunc();
  gone(window);
  EXPECT_EQ(ozWindow::getCurrent(), nullptr);
}

namespace {

// What makes a window's event function run, one after the other.
enum CauseEnum { MOTION, BUTTON, KEY, SPECIAL, EXPOSE, RESIZE, TIMER, CLOSE, CAUSE_COUNT };

void cause(XClient &client, ozWindow *window, int which) {
  HWND const handle = window->getHWND();
  switch (which) {
  case MOTION:
    client.motion(handle, 1, 1);
    break;
  case BUTTON:
    client.button(handle, true, 1, 1, 1);
    break;
  case KEY:
    client.key(handle, true, XK_a, 1, 1);
    break;
  case SPECIAL:
    client.key(handle, true, XK_F1, 1, 1);
    break;
  case EXPOSE:
    client.expose(handle);
    break;
  case RESIZE:
    client.resize(handle, 250, 250);
    break;
  case TIMER:
    window->enableTimer(1);
    break;
  case CLOSE:
    client.close(handle);
    break;
  }
}

} // namespace

TEST_F(WindowTest, MayBeDeletedInItsOwnCallbackOfAnyKind) {
  for (int which = 0; which < CAUSE_COUNT; ++which) {
    ozWindow *const window = open();
    HWND const handle = window->getHWND();
    int calls = 0;
    Callback remove{[&] {
      ++calls;
      delete window;
    }};
    window->setEventFunc(Callback::run, &remove);
    cause(client, window, which);
    EXPECT_TRUE(pumpUntil([&] { return !client.exists(handle); })) << which;
    EXPECT_EQ(calls, 1) << which;
    gone(window);
    EXPECT_EQ(ozContext::getCurrent(), nullptr);
  }
}

TEST_F(WindowTest, MayBeDeletedInACallbackOfAnother) {
  for (int which = 0; which < CAUSE_COUNT; ++which) {
    ozWindow *const doomed = open(), *const window = open();
    window->deleteOnClose(0);
    HWND const handle = doomed->getHWND();
    bool deleted = false;
    Callback remove{[&] {
      if (!deleted) delete doomed;
      deleted = true;
      EXPECT_EQ(ozContext::getCurrent(), window->getThisWindowContext());
    }};
    window->setEventFunc(Callback::run, &remove);
    client.motion(handle, 5, 5); // late input for a window that is no more
    cause(client, window, which);
    EXPECT_TRUE(pumpUntil([&] { return deleted && !client.exists(handle); })) << which;
    gone(doomed);
    close(window);
    settle();
  }
}

// The toolkit is in the middle of its first work for the window then.
TEST_F(WindowTest, MayBeDeletedInItsVeryFirstCallback) {
  ozWindow *const other = open(), *const window = openOnly();
  HWND const handle = window->getHWND();
  Callback remove{[&] { delete window; }};
  window->setEventFunc(Callback::run, &remove);
  EXPECT_TRUE(pumpUntil([&] { return !client.exists(handle); }));
  gone(window);
  settle();
  EXPECT_TRUE(client.isShown(other->getHWND()));
}

TEST_F(WindowTest, MayBeDeletedByItsFrameFunctionAndTheRenderFunction) {
  ozWindow *const window = open(), *const other = open();
  FrameCallback frame{[&] {
    delete window;
    return 1;
  }};
  ozWindow::setCurrent(window);
  ozWindow::setFrameFunc(FrameCallback::run, &frame);
  window->processEvents();
  gone(window);

  Callback nothing{[] {}}, render{[&] { delete other; }};
  other->setEventFunc(Callback::run, &nothing);
  ozWindow::setRenderFunc(Callback::run, &render);
  HWND const handle = other->getHWND();
  client.motion(handle, 1, 1);
  EXPECT_TRUE(pumpUntil([&] { return !client.exists(handle); }));
  gone(other);
}

TEST_F(WindowTest, AllMayBeDeletedInAnIdleTurn) {
  ozWindow *const a = open(), *const b = open(), *const c = open();
  int calls = 0;
  FrameCallback removeNext{[&] {
    ++calls;
    delete b;
    return 0;
  }};
  FrameCallback removeAll{[&] {
    ++calls;
    delete a;
    delete c;
    return 0;
  }};
  ozWindow::setCurrent(a);
  ozWindow::setFrameFunc(FrameCallback::run, &removeNext);
  ozWindow::setCurrent(b);
  ozWindow::setFrameFunc(FrameCallback::run, &removeNext);
  ozWindow::setCurrent(c);
  ozWindow::setFrameFunc(FrameCallback::run, &removeAll);
  int renders = 0;
  Callback render{[&] { ++renders; }};
  ozWindow::setRenderFunc(Callback::run, &render);
  ozWindow::idleFunc();
  EXPECT_EQ(calls, 2) << "a and c";
  EXPECT_EQ(renders, 0) << "no window is left to draw in";
  for (ozWindow *window : {a, b, c}) gone(window);
  settle();
}

TEST_F(WindowTest, LateInputForADeletedWindowReachesNobody) {
  ozWindow *const window = open(), *const other = open();
  for (int i = 0; i < 10; ++i) {
    client.motion(window->getHWND(), i, i);
    client.close(window->getHWND());
  }
  close(window);
  settle();
  EXPECT_EQ(other->getEvents()->getCount(), 0u);
  EXPECT_TRUE(client.isShown(other->getHWND()));
}

// Whether it goes is settled when the request comes, not by what its event leads to.
TEST_F(WindowTest, ItsCloseEventComesTooLateToChangeWhetherItGoes) {
  ozWindow *const window = open();
  int now = 1;
  Callback change{[&] { window->deleteOnClose(now); }};
  window->setEventFunc(Callback::run, &change);
  window->deleteOnClose(0);
  EXPECT_EQ(ozWindow::closeFunc(), 0);
  ASSERT_EQ(ozWindow::getCurrent(), window);
  now = 0; // what it now goes by is 1
  EXPECT_EQ(ozWindow::closeFunc(), 1);
  EXPECT_EQ(ozWindow::getCurrent(), nullptr);
  gone(window);
}
