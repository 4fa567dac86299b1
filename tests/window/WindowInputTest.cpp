// Input that becomes events: real messages of another client of the X server, and the callbacks themselves.

#include "window/windowFixture.h"

#include <GL/glx.h>

TEST_F(WindowTest, StartsWithAReshapeAndADisplayEvent) {
  ozWindow *const window = openOnly();
  EXPECT_TRUE(pumpUntil([=] { return countEvents(window, ozEvent::DISPLAY_EVENT); }));
  ozEvent const *const first = window->getEvents()->get(0);
  EXPECT_EQ(first->type, ozEvent::RESHAPE_EVENT);
  EXPECT_EQ(first->window, window);
  EXPECT_EQ(first->x, 500);
  EXPECT_EQ(first->y, 500);
}

TEST_F(WindowTest, AResizeGivesAReshapeEventAndAViewport) {
  ozWindow *const window = open();
  client.resize(window->getHWND(), 640, 480);
  EXPECT_TRUE(pumpUntil([=] { return countEvents(window, ozEvent::RESHAPE_EVENT); }));
  ozEvent const *const event = lastEvent(window, ozEvent::RESHAPE_EVENT);
  EXPECT_EQ(event->x, 640);
  EXPECT_EQ(event->y, 480);
  int x, y, width, height;
  window->getThisWindowContext()->getViewport(x, y, width, height);
  EXPECT_EQ(x, 0);
  EXPECT_EQ(y, 0);
  EXPECT_EQ(width, 640);
  EXPECT_EQ(height, 480);
}

TEST_F(WindowTest, AnExposureGivesADisplayEvent) {
  ozWindow *const window = open();
  client.expose(window->getHWND());
  EXPECT_TRUE(pumpUntil([=] { return window->getEvents()->getCount() > 0; }));
  EXPECT_EQ(lastEvent(window)->type, ozEvent::DISPLAY_EVENT);
  EXPECT_EQ(lastEvent(window)->window, window);
}

TEST_F(WindowTest, CountsYFromTheBottom) {
  ozWindow *const window = open();
  ozWindow::motionFunc(3, 0);
  EXPECT_EQ(lastEvent(window)->y, 499);
  EXPECT_EQ(lastEvent(window)->x, 3);
  ozWindow::motionFunc(3, 499);
  EXPECT_EQ(lastEvent(window)->y, 0);
}

TEST_F(WindowTest, CountsYFromTheBottomOfItsPresentHeight) {
  ozWindow *const window = open();
  client.resize(window->getHWND(), 500, 200);
  EXPECT_TRUE(pumpUntil([=] { return countEvents(window, ozEvent::RESHAPE_EVENT); }));
  ozWindow::motionFunc(0, 0);
  EXPECT_EQ(lastEvent(window)->y, 199);
}

TEST_F(WindowTest, ButtonsGiveEventsOfTheOneButton) {
  ozWindow *const window = open();
  struct {
    unsigned int x11;
    int mask;
  } const buttons[] = {{1, 1}, {2, 2}, {3, 4}};
  for (auto const &button : buttons) {
    window->resetEvents();
    client.button(window->getHWND(), true, button.x11, 10, 20);
    EXPECT_TRUE(pumpUntil([=] { return window->getEvents()->getCount() == 1; }));
    ozEvent const *const down = lastEvent(window);
    EXPECT_EQ(down->type, ozEvent::MOUSE_DOWN_EVENT);
    EXPECT_EQ(down->window, window);
    EXPECT_EQ(down->buttons, button.mask);
    EXPECT_EQ(down->x, 10);
    EXPECT_EQ(down->y, 479);
    EXPECT_EQ(ozWindow::getMouseButtons(), button.mask);
    EXPECT_EQ(ozWindow::getMouseX(), 10);
    EXPECT_EQ(ozWindow::getMouseY(), 479);
    client.button(window->getHWND(), false, button.x11, 11, 21, Button1Mask << (button.x11 - 1));
    EXPECT_TRUE(pumpUntil([=] { return window->getEvents()->getCount() == 2; }));
    ozEvent const *const up = lastEvent(window);
    EXPECT_EQ(up->type, ozEvent::MOUSE_UP_EVENT);
    EXPECT_EQ(up->buttons, button.mask);
    EXPECT_EQ(ozWindow::getMouseButtons(), 0);
    EXPECT_EQ(ozWindow::getMouseX(), 11);
    EXPECT_EQ(ozWindow::getMouseY(), 478);
  }
}

TEST_F(WindowTest, HeldButtonsAddUp) {
  ozWindow *const window = open();
  ozWindow::mouseFunc(0, 0, 0, 0);
  ozWindow::mouseFunc(2, 0, 0, 0);
  EXPECT_EQ(lastEvent(window)->buttons, 4) << "the one button";
  EXPECT_EQ(ozWindow::getMouseButtons(), 5);
  ozWindow::motionFunc(1, 1);
  EXPECT_EQ(lastEvent(window)->buttons, 5) << "all that are held";
  ozWindow::keyboardFunc('a', 1, 1);
  EXPECT_EQ(lastEvent(window)->buttons, 5);
  ozWindow::mouseFunc(0, 1, 0, 0);
  EXPECT_EQ(lastEvent(window)->buttons, 1);
  EXPECT_EQ(ozWindow::getMouseButtons(), 4);
  ozWindow::mouseFunc(2, 1, 0, 0);
  EXPECT_EQ(ozWindow::getMouseButtons(), 0);
}

TEST_F(WindowTest, MotionWithAButtonHeldCarriesTheMask) {
  ozWindow *const window = open();
  client.button(window->getHWND(), true, 2, 5, 5);
  client.motion(window->getHWND(), 30, 40, Button2Mask | ShiftMask);
  EXPECT_TRUE(pumpUntil([=] { return window->getEvents()->getCount() == 2; }));
  ozEvent const *const event = lastEvent(window);
  EXPECT_EQ(event->type, ozEvent::MOTION_EVENT);
  EXPECT_EQ(event->buttons, 2);
  EXPECT_EQ(event->x, 30);
  EXPECT_EQ(event->y, 459);
  EXPECT_EQ(event->modifiers, 1);
  EXPECT_EQ(ozWindow::getMouseX(), 30);
  EXPECT_EQ(ozWindow::getMouseY(), 459);
  ozWindow::mouseFunc(1, 1, 0, 0);
}

TEST_F(WindowTest, MotionWithoutButtonCarriesNone) {
  ozWindow *const window = open();
  client.motion(window->getHWND(), 31, 41, ControlMask);
  EXPECT_TRUE(pumpUntil([=] { return window->getEvents()->getCount() == 1; }));
  ozEvent const *const event = lastEvent(window);
  EXPECT_EQ(event->type, ozEvent::PASSIVE_MOTION_EVENT);
  EXPECT_EQ(event->buttons, 0);
  EXPECT_EQ(event->x, 31);
  EXPECT_EQ(event->y, 458);
  EXPECT_EQ(event->modifiers, 2);
  EXPECT_EQ(ozWindow::getMouseX(), 31);
  EXPECT_EQ(ozWindow::getMouseY(), 458);
}

TEST_F(WindowTest, TheWheelGivesButtonsThatAreNeverHeld) {
  ozWindow *const window = open();
  ozWindow::mouseFunc(0, 0, 0, 0);
  window->resetEvents();
  int const masks[] = {8, 16};
  for (unsigned int wheel = 0; wheel < 2; ++wheel) {
    client.button(window->getHWND(), true, 4 + wheel, 7, 8, Button1Mask);
    client.button(window->getHWND(), false, 4 + wheel, 7, 8, Button1Mask);
    EXPECT_TRUE(pumpUntil([=] { return window->getEvents()->getCount() == 2; }));
    EXPECT_EQ(window->getEvents()->get(0)->type, ozEvent::MOUSE_DOWN_EVENT);
    EXPECT_EQ(window->getEvents()->get(0)->buttons, masks[wheel]);
    EXPECT_EQ(window->getEvents()->get(1)->type, ozEvent::MOUSE_UP_EVENT);
    EXPECT_EQ(window->getEvents()->get(1)->buttons, masks[wheel]);
    EXPECT_EQ(ozWindow::getMouseButtons(), 1);
    window->resetEvents();
  }
  ozWindow::mouseFunc(0, 1, 0, 0);
}

TEST_F(WindowTest, FurtherButtonsArePassedOver) {
  ozWindow *const window = open();
  for (unsigned int button = 6; button < 10; ++button) client.button(window->getHWND(), true, button, 7, 8);
  client.motion(window->getHWND(), 1, 1);
  EXPECT_TRUE(pumpUntil([=] { return window->getEvents()->getCount() > 0; }));
  EXPECT_EQ(window->getEvents()->getCount(), 1u);
  ozWindow::mouseFunc(-1, 0, 0, 0);
  EXPECT_EQ(window->getEvents()->getCount(), 1u);
}

TEST_F(WindowTest, KeysGiveCharactersAndModifiers) {
  ozWindow *const window = open();
  client.motion(window->getHWND(), 100, 100);
  EXPECT_TRUE(pumpUntil([=] { return window->getEvents()->getCount() == 1; }));
  window->resetEvents();
  client.key(window->getHWND(), true, XK_a, 50, 60);
  client.key(window->getHWND(), false, XK_a, 51, 61);
  client.key(window->getHWND(), true, XK_a, 50, 60, ShiftMask | Mod1Mask);
  EXPECT_TRUE(pumpUntil([=] { return window->getEvents()->getCount() == 3; }));
  ozEvent const *const down = window->getEvents()->get(0);
  EXPECT_EQ(down->type, ozEvent::KEY_DOWN_EVENT);
  EXPECT_EQ(down->key, 'a');
  EXPECT_EQ(down->x, 50);
  EXPECT_EQ(down->y, 439);
  EXPECT_EQ(down->buttons, 0);
  EXPECT_EQ(down->modifiers, 0);
  ozEvent const *const up = window->getEvents()->get(1);
  EXPECT_EQ(up->type, ozEvent::KEY_UP_EVENT);
  EXPECT_EQ(up->key, 'a');
  EXPECT_EQ(up->x, 51);
  EXPECT_EQ(up->y, 438);
  ozEvent const *const shifted = window->getEvents()->get(2);
  EXPECT_EQ(shifted->key, 'A');
  EXPECT_EQ(shifted->modifiers, 1 | 4);
  EXPECT_EQ(ozWindow::getMouseX(), 100) << "keys do not move the mouse";
  EXPECT_EQ(ozWindow::getMouseY(), 399);
}

TEST_F(WindowTest, SpecialKeysGiveTheirCodes) {
  ozWindow *const window = open();
  client.key(window->getHWND(), true, XK_F1, 50, 60, ControlMask);
  client.key(window->getHWND(), false, XK_Left, 51, 61);
  EXPECT_TRUE(pumpUntil([=] { return window->getEvents()->getCount() == 2; }));
  ozEvent const *const down = window->getEvents()->get(0);
  EXPECT_EQ(down->type, ozEvent::SPECIAL_DOWN_EVENT);
  EXPECT_EQ(down->key, GLUT_KEY_F1);
  EXPECT_EQ(down->x, 50);
  EXPECT_EQ(down->y, 439);
  EXPECT_EQ(down->modifiers, 2);
  ozEvent const *const up = window->getEvents()->get(1);
  EXPECT_EQ(up->type, ozEvent::SPECIAL_UP_EVENT);
  EXPECT_EQ(up->key, GLUT_KEY_LEFT);
  EXPECT_EQ(up->y, 438);
}

TEST_F(WindowTest, InputGoesToTheWindowItWasFor) {
  ozWindow *const a = open(), *const b = open();
  client.motion(a->getHWND(), 1, 2);
  client.motion(b->getHWND(), 3, 4);
  EXPECT_TRUE(pumpUntil([=] { return a->getEvents()->getCount() && b->getEvents()->getCount(); }));
  EXPECT_EQ(a->getEvents()->getCount(), 1u);
  EXPECT_EQ(lastEvent(a)->x, 1);
  EXPECT_EQ(lastEvent(a)->window, a);
  EXPECT_EQ(b->getEvents()->getCount(), 1u);
  EXPECT_EQ(lastEvent(b)->x, 3);
  EXPECT_EQ(lastEvent(b)->window, b);
}

TEST_F(WindowTest, WithoutFunctionsEventsPileUp) {
  ozWindow *const window = open();
  for (int i = 0; i < 100; ++i) ozWindow::motionFunc(i, 0);
  ASSERT_EQ(window->getEvents()->getCount(), 100u);
  for (unsigned int i = 0; i < 100; ++i) EXPECT_EQ(window->getEvents()->get(i)->x, static_cast<int>(i));
  window->processEvents();
  EXPECT_EQ(window->getEvents()->getCount(), 100u);
}

TEST_F(WindowTest, UsesSpentEventsAgainFromTheLast) {
  ozWindow *const window = open();
  ozWindow::motionFunc(1, 1);
  ozWindow::motionFunc(2, 2);
  ozEvent *const first = window->getEvents()->get(0), *const second = window->getEvents()->get(1);
  window->resetEvents();
  EXPECT_EQ(window->getEvents()->getCount(), 0u);
  ozWindow::motionFunc(3, 3);
  ozWindow::motionFunc(4, 4);
  EXPECT_EQ(window->getEvents()->get(0), second);
  EXPECT_EQ(window->getEvents()->get(1), first);
}

TEST_F(WindowTest, WhatAnEventDoesNotSetStaysFromTheLastUse) {
  ozWindow *const window = open();
  ozWindow::keyboardFunc('k', 7, 8);
  window->resetEvents();
  ozWindow::displayFunc();
  ozEvent const *const event = lastEvent(window);
  EXPECT_EQ(event->type, ozEvent::DISPLAY_EVENT);
  EXPECT_EQ(event->key, 'k');
  EXPECT_EQ(event->x, 7);
  EXPECT_EQ(event->y, 491);
}

TEST_F(WindowTest, TheTimerShootsUntilDisabled) {
  ozWindow *const window = open();
  EXPECT_EQ(window->getTimerEnabled(), 0);
  EXPECT_EQ(window->getTimerInterval(), 0u);
  window->enableTimer(2);
  EXPECT_EQ(window->getTimerEnabled(), 1);
  EXPECT_EQ(window->getTimerInterval(), 2u);
  EXPECT_TRUE(pumpUntil([=] { return countEvents(window, ozEvent::TIMER_EVENT) >= 3; }));
  EXPECT_EQ(lastEvent(window)->window, window);
  window->disableTimer();
  EXPECT_EQ(window->getTimerEnabled(), 0);
  window->resetEvents();
  usleep(20000);
  settle();
  EXPECT_EQ(countEvents(window, ozEvent::TIMER_EVENT), 0u);
}

TEST_F(WindowTest, EnablingTheTimerTwiceMakesTwoChains) {
  ozWindow *const once = open(), *const twice = open();
  once->enableTimer(400);
  twice->enableTimer(400);
  twice->enableTimer(400);
  usleep(450000);
  glutMainLoopEvent();
  EXPECT_EQ(countEvents(once, ozEvent::TIMER_EVENT), 1u);
  EXPECT_EQ(countEvents(twice, ozEvent::TIMER_EVENT), 2u);
}

TEST_F(WindowTest, AShotForADisabledTimerDoesNothing) {
  ozWindow *const window = open();
  ozWindow::timerCallbackFunc(window);
  EXPECT_EQ(window->getEvents()->getCount(), 0u);
}

TEST_F(WindowTest, TimersOfDeletedWindowsReachNobody) {
  ozWindow *const window = open(), *const other = open();
  window->enableTimer(1);
  close(window);
  usleep(5000);
  settle();
  ozWindow::timerCallbackFunc(window);
  EXPECT_EQ(other->getEvents()->getCount(), 0u);
}

TEST_F(WindowTest, CallbacksRunWithTheirWindowAndContextCurrent) {
  ozWindow *const b = open(), *const a = open(); // a above, or it would never be exposed
  int calls = 0;
  Callback check{[&] {
    ++calls;
    EXPECT_EQ(ozWindow::getCurrent(), a);
    EXPECT_EQ(ozContext::getCurrent(), a->getThisWindowContext());
    EXPECT_EQ(glXGetCurrentDrawable(), a->getHWND());
  }};
  a->setEventFunc(Callback::run, &check);
  HWND const handle = a->getHWND();
  std::function<void()> const causes[] = {
      [&] { client.motion(handle, 1, 1); },           [&] { client.button(handle, true, 1, 1, 1); },
      [&] { client.button(handle, false, 1, 1, 1); }, [&] { client.key(handle, true, XK_a, 1, 1); },
      [&] { client.key(handle, true, XK_F1, 1, 1); }, [&] { client.expose(handle); },
      [&] { client.resize(handle, 300, 300); },       [&] { a->enableTimer(1); },
  };
  for (auto const &cause : causes) {
    ozWindow::makeCurrent(b);
    int const before = calls;
    cause();
    EXPECT_TRUE(pumpUntil([&] { return calls > before; })) << &cause - causes;
  }
  a->disableTimer();
}

// Each callback sets what its type of event has, and leaves the rest as a spent record holds it.
TEST_F(WindowTest, EventsSetTheirOwnMembersAlone) {
  ozWindow *const window = open();
  enum { KEY = 1, PLACE = 2, BUTTONS = 4, MODIFIERS = 8, INPUT = PLACE | BUTTONS | MODIFIERS };
  struct {
    int type;
    void (*call)();
    int sets;
  } const cases[] = {
      {ozEvent::RESHAPE_EVENT, [] { ozWindow::reshapeFunc(500, 500); }, PLACE},
      {ozEvent::DISPLAY_EVENT, [] { ozWindow::displayFunc(); }, 0},
      {ozEvent::CLOSE_EVENT, [] { ozWindow::closeFunc(); }, 0},
      {ozEvent::MOUSE_DOWN_EVENT, [] { ozWindow::mouseFunc(0, 0, 5, 5); }, INPUT},
      {ozEvent::MOUSE_UP_EVENT, [] { ozWindow::mouseFunc(0, 1, 5, 5); }, INPUT},
      {ozEvent::MOTION_EVENT, [] { ozWindow::motionFunc(5, 5); }, INPUT},
      {ozEvent::PASSIVE_MOTION_EVENT, [] { ozWindow::passiveMotionFunc(5, 5); }, INPUT},
      {ozEvent::KEY_DOWN_EVENT, [] { ozWindow::keyboardFunc('a', 5, 5); }, KEY | INPUT},
      {ozEvent::KEY_UP_EVENT, [] { ozWindow::keyboardUpFunc('a', 5, 5); }, KEY | INPUT},
      {ozEvent::SPECIAL_DOWN_EVENT, [] { ozWindow::specialFunc(1, 5, 5); }, KEY | INPUT},
      {ozEvent::SPECIAL_UP_EVENT, [] { ozWindow::specialUpFunc(1, 5, 5); }, KEY | INPUT},
      {ozEvent::TIMER_EVENT, [] { ozWindow::timerCallbackFunc(ozWindow::getCurrent()); }, 0},
  };
  window->deleteOnClose(0);
  window->enableTimer(100000);
  int const before = -9999;
  for (auto const &c : cases) {
    ozWindow::displayFunc();
    ozEvent *const record = lastEvent(window);
    record->key = record->x = record->y = record->buttons = record->modifiers = before;
    window->resetEvents();
    c.call();
    ASSERT_EQ(lastEvent(window), record) << c.type;
    EXPECT_EQ(record->type, c.type);
    EXPECT_EQ(record->window, window) << c.type;
    EXPECT_EQ(record->key != before, (c.sets & KEY) != 0) << c.type;
    EXPECT_EQ(record->x != before, (c.sets & PLACE) != 0) << c.type;
    EXPECT_EQ(record->y != before, (c.sets & PLACE) != 0) << c.type;
    EXPECT_EQ(record->buttons != before, (c.sets & BUTTONS) != 0) << c.type;
    EXPECT_EQ(record->modifiers != before, (c.sets & MODIFIERS) != 0) << c.type;
    window->resetEvents();
  }
  window->disableTimer();
}

TEST_F(WindowTest, TheEventsOfADeletedWindowStayWithTheApplication) {
  ozWindow *const window = open();
  ozWindow::motionFunc(7, 0);
  ozEvent *const spent = lastEvent(window);
  window->resetEvents();
  ozWindow::motionFunc(8, 0);
  ozWindow::motionFunc(9, 0);
  ASSERT_EQ(window->getEvents()->get(0), spent);
  ozEvent *const pending = lastEvent(window);
  close(window);
  EXPECT_EQ(spent->x, 8);
  EXPECT_EQ(pending->x, 9);
  delete spent;
  delete pending;
}
