// Windows opened, asked and deleted.

#include "window/windowFixture.h"

#include "support/capture.h"
#include "support/offscreen.h"

#include <GL/glx.h>
#include <string>

TEST_F(WindowTest, IsNoClassOfTheReader) {
  EXPECT_STREQ(ozWindow::getClassType()->getName(), "Window");
  EXPECT_EQ(ozWindow::getClassType()->getAncestor(), ozObject::getClassType());
}

TEST_F(WindowTest, IsCurrentWithItsContextOnceMade) {
  ozWindow *const window = openOnly();
  EXPECT_EQ(ozWindow::getCurrent(), window);
  ASSERT_NE(window->getThisWindowContext(), nullptr);
  EXPECT_EQ(ozContext::getCurrent(), window->getThisWindowContext());
  EXPECT_EQ(ozWindow::getContext(), window->getThisWindowContext());
  EXPECT_EQ(window->getThisWindowContext()->getHDC(), window->getHDC());
  EXPECT_EQ(glXGetCurrentDrawable(), window->getHWND());
  EXPECT_TRUE(client.isShown(window->getHWND()));
  EXPECT_EQ(window->getType(), ozWindow::getClassType());
}

TEST_F(WindowTest, AdoptsTheContextOfTheToolkit) {
  ozWindow *const window = openOnly();
  GLXContext const made = glXGetCurrentContext();
  ASSERT_NE(made, nullptr);
  ozWindow::makeCurrent(openOnly());
  EXPECT_NE(glXGetCurrentContext(), made);
  ozWindow::makeCurrent(window);
  EXPECT_EQ(glXGetCurrentContext(), made);
}

TEST_F(WindowTest, HasTheSizeSetFor) {
  open();
  EXPECT_EQ(ozWindow::get(ozWindow::WINDOW_WIDTH), 500);
  EXPECT_EQ(ozWindow::get(ozWindow::WINDOW_HEIGHT), 500);
  ozWindow::initSize(320, 200);
  ozWindow::initPosition(40, 30);
  openOnly();
  EXPECT_EQ(ozWindow::get(ozWindow::WINDOW_WIDTH), 320);
  EXPECT_EQ(ozWindow::get(ozWindow::WINDOW_HEIGHT), 200);
  EXPECT_EQ(ozWindow::get(ozWindow::WINDOW_X), 40);
  EXPECT_EQ(ozWindow::get(ozWindow::WINDOW_Y), 30);
  int x, y, width, height;
  ozWindow::getContext()->getViewport(x, y, width, height);
  EXPECT_EQ(width, 320);
  EXPECT_EQ(height, 200);
}

TEST_F(WindowTest, HasTheDisplayModeSetFor) {
  openOnly();
  EXPECT_EQ(ozWindow::get(ozWindow::WINDOW_DOUBLEBUFFER), 1);
  EXPECT_GT(ozWindow::get(ozWindow::WINDOW_DEPTH_SIZE), 0);
  ozWindow::initDisplayMode(GLUT_RGB | GLUT_DOUBLE | GLUT_STENCIL);
  openOnly();
  EXPECT_GT(ozWindow::get(ozWindow::WINDOW_STENCIL_SIZE), 0);
}

TEST_F(WindowTest, ChecksDisplayModesWithoutATrace) {
  openOnly();
  int const before = glutGet(GLUT_INIT_DISPLAY_MODE);
  EXPECT_EQ(ozWindow::checkDisplayMode(GLUT_RGB | GLUT_DOUBLE | GLUT_DEPTH), 1);
  EXPECT_EQ(ozWindow::checkDisplayMode(GLUT_INDEX | GLUT_STEREO | GLUT_ACCUM), 0);
  EXPECT_EQ(glutGet(GLUT_INIT_DISPLAY_MODE), before);
}

TEST_F(WindowTest, IsRGBWithoutTheIndexBit) {
  EXPECT_EQ(ozWindow::isRGB(), 1) << "without a window";
  openOnly();
  EXPECT_EQ(ozWindow::isRGB(), 1);
}

TEST_F(WindowTest, OfTheScreensSizeAtTheCornerBecomesFullScreen) {
  ozWindow::initPosition(0, 0);
  ozWindow::initSize(ozWindow::get(ozWindow::SCREEN_WIDTH), ozWindow::get(ozWindow::SCREEN_HEIGHT));
  openOnly();
  settle();
  EXPECT_EQ(glutGet(GLUT_FULL_SCREEN), 1);
  ozWindow::initPosition(1, 0);
  openOnly();
  settle();
  EXPECT_EQ(glutGet(GLUT_FULL_SCREEN), 0);
}

namespace {

std::string windowName(XClient &client, ozWindow *window) {
  char *name = nullptr;
  XFetchName(client.x, window->getHWND(), &name);
  std::string const result = name ? name : "(none)";
  if (name) XFree(name);
  return result;
}

std::string iconName(XClient &client, ozWindow *window) {
  char *name = nullptr;
  XGetIconName(client.x, window->getHWND(), &name);
  std::string const result = name ? name : "(none)";
  if (name) XFree(name);
  return result;
}

// What is asked of the window manager: -1 nothing, 0 no decorations, 1 all.
long decorations(XClient &client, ozWindow *window) {
  glFinish();
  Atom const property = XInternAtom(client.x, "_MOTIF_WM_HINTS", False);
  Atom type;
  int format;
  unsigned long count, left;
  unsigned char *data = nullptr;
  XGetWindowProperty(client.x, window->getHWND(), property, 0, 5, False, property, &type, &format, &count, &left,
                     &data);
  long result = -1;
  if (data && count == 5 && (reinterpret_cast<long *>(data)[0] & 2)) result = reinterpret_cast<long *>(data)[2];
  if (data) XFree(data);
  return result;
}

} // namespace

TEST_F(WindowTest, ShowsItsTitle) {
  ozWindow *const window = open("A title");
  EXPECT_STREQ(window->getTitle(), "A title");
  EXPECT_EQ(windowName(client, window), "A title");
  EXPECT_EQ(window->getIconTitle(), nullptr);
  ozWindow::setWindowTitle("Another");
  ozWindow::setIconTitle("Icon");
  settle();
  EXPECT_STREQ(window->getTitle(), "Another");
  EXPECT_STREQ(window->getIconTitle(), "Icon");
  EXPECT_EQ(windowName(client, window), "Another");
  EXPECT_EQ(iconName(client, window), "Icon");
}

TEST_F(WindowTest, TakesItsOwnTitle) {
  ozWindow *const window = open("Same");
  ozWindow::setWindowTitle(window->getTitle());
  EXPECT_STREQ(window->getTitle(), "Same");
}

TEST_F(WindowTest, WithoutTitleHasNoDecorations) {
  ozWindow *const window = open(nullptr);
  EXPECT_STREQ(window->getTitle(), "");
  EXPECT_EQ(decorations(client, window), 0);
  EXPECT_EQ(decorations(client, open("titled")), -1);
}

TEST_F(WindowTest, LosesDecorationsWithItsTitleAndGetsThemBack) {
  ozWindow *const window = open("titled");
  ozWindow::setWindowTitle(nullptr);
  settle();
  EXPECT_STREQ(window->getTitle(), "");
  EXPECT_EQ(decorations(client, window), 0);
  ozWindow::setWindowTitle("again");
  settle();
  EXPECT_EQ(decorations(client, window), 1);
}

TEST_F(WindowTest, ANullIconTitleIsNotPassedOn) {
  ozWindow *const window = open();
  ozWindow::setIconTitle("Icon");
  ozWindow::setIconTitle(nullptr);
  settle();
  EXPECT_EQ(window->getIconTitle(), nullptr);
  EXPECT_NE(iconName(client, window), "Icon");
}

TEST_F(WindowTest, IsHiddenAndShown) {
  ozWindow *const window = open();
  ozWindow::hideWindow();
  EXPECT_TRUE(pumpUntil([&] { return !client.isShown(window->getHWND()); }));
  ozWindow::showWindow();
  EXPECT_TRUE(pumpUntil([&] { return client.isShown(window->getHWND()); }));
}

// Without a window manager there is nobody to do it, but anybody can see it asked for.
TEST_F(WindowTest, AsksTheWindowManagerToIconify) {
  ozWindow *const window = open();
  XSelectInput(client.x, DefaultRootWindow(client.x), SubstructureNotifyMask);
  XSync(client.x, True);
  ozWindow::iconifyWindow();
  bool asked = false;
  EXPECT_TRUE(pumpUntil([&] {
    XEvent event;
    while (XCheckTypedEvent(client.x, ClientMessage, &event))
      asked = asked || (event.xclient.window == window->getHWND() &&
                        event.xclient.message_type == XInternAtom(client.x, "WM_CHANGE_STATE", False) &&
                        event.xclient.data.l[0] == IconicState);
    return asked;
  }));
}

TEST_F(WindowTest, BeingOpenedLeavesTheInputOfOthersWaiting) {
  ozWindow *const other = open();
  client.motion(other->getHWND(), 1, 1);
  openOnly();
  EXPECT_EQ(other->getEvents()->getCount(), 0u);
  EXPECT_TRUE(pumpUntil([=] { return countEvents(other, ozEvent::PASSIVE_MOTION_EVENT) == 1; }));
}

TEST_F(WindowTest, IsPositionedAndReshaped) {
  open();
  ozWindow::positionWindow(60, 70);
  EXPECT_TRUE(pumpUntil([] { return ozWindow::get(ozWindow::WINDOW_X) == 60; }));
  EXPECT_EQ(ozWindow::get(ozWindow::WINDOW_Y), 70);
  ozWindow::reshapeWindow(123, 45);
  EXPECT_TRUE(pumpUntil([] { return ozWindow::get(ozWindow::WINDOW_WIDTH) == 123; }));
  EXPECT_EQ(ozWindow::get(ozWindow::WINDOW_HEIGHT), 45);
}

TEST_F(WindowTest, ASizeBelowOneWarnsAndPassesNothingOn) {
  open();
  for (auto size : {std::pair<int, int>{0, 10}, {10, 0}, {-5, 10}}) {
    std::string const text = stderrOf([=] { ozWindow::reshapeWindow(size.first, size.second); });
    EXPECT_EQ(text.rfind("(WARN, ", 0), 0u) << text;
    settle();
    EXPECT_EQ(ozWindow::get(ozWindow::WINDOW_WIDTH), 500);
    EXPECT_EQ(ozWindow::get(ozWindow::WINDOW_HEIGHT), 500);
  }
  EXPECT_EQ(stderrOf([] { ozWindow::reshapeWindow(1, 1); }), "");
}

namespace {

// Whether the window is above the other.
bool isAbove(XClient &client, ozWindow *window, ozWindow *other) {
  Window root, parent, *children = nullptr;
  unsigned int count = 0;
  XQueryTree(client.x, DefaultRootWindow(client.x), &root, &parent, &children, &count);
  bool const above = std::find(children, children + count, window->getHWND()) >
                     std::find(children, children + count, other->getHWND());
  if (children) XFree(children);
  return above;
}

} // namespace

TEST_F(WindowTest, IsPushedBelowAndPoppedAbove) {
  ozWindow *const a = open(), *const b = open();
  ASSERT_TRUE(isAbove(client, b, a));
  ozWindow::setCurrent(b);
  ozWindow::pushWindow();
  EXPECT_TRUE(pumpUntil([&] { return isAbove(client, a, b); }));
  ozWindow::setCurrent(b);
  ozWindow::popWindow();
  EXPECT_TRUE(pumpUntil([&] { return isAbove(client, b, a); }));
}

TEST_F(WindowTest, TellsThatADisplayCannotBeSet) {
  EXPECT_EQ(stderrOf([] { ozWindow::setDisplay(nullptr); }), "");
  std::string const text = stderrOf([] { ozWindow::setDisplay(":0"); });
  EXPECT_EQ(text.rfind("(WARN, ", 0), 0u) << text;
  EXPECT_NE(text.find("not implemented on this platform"), std::string::npos) << text;
}

TEST_F(WindowTest, AsksTheToolkit) {
  EXPECT_EQ(ozWindow::get(ozWindow::SCREEN_WIDTH), DisplayWidth(client.x, DefaultScreen(client.x)));
  EXPECT_EQ(ozWindow::get(ozWindow::SCREEN_HEIGHT), DisplayHeight(client.x, DefaultScreen(client.x)));
  EXPECT_EQ(ozWindow::getDevice(ozWindow::HAS_KEYBOARD), 1);
  EXPECT_EQ(ozWindow::getDevice(ozWindow::HAS_MOUSE), 1);
  EXPECT_EQ(ozWindow::checkDisplay(), 1);
}

TEST_F(WindowTest, CallsWithoutACurrentWindowAreQuiet) {
  ASSERT_EQ(ozWindow::getCurrent(), nullptr);
  EXPECT_EQ(stderrOf([] {
              ozWindow::showWindow();
              ozWindow::hideWindow();
              ozWindow::iconifyWindow();
              ozWindow::pushWindow();
              ozWindow::popWindow();
              ozWindow::positionWindow(1, 1);
              ozWindow::reshapeWindow(10, 10);
              ozWindow::setWindowTitle("x");
              ozWindow::setWindowTitle(nullptr);
              ozWindow::setIconTitle("x");
              ozWindow::swapBuffers();
              ozWindow::setFrameFunc(nullptr, nullptr);
              ozWindow::setCurrent(nullptr);
              ozWindow::makeCurrent(nullptr);
              ozWindow::updateSensors(nullptr, nullptr);
              ozWindow::displayFunc();
              ozWindow::reshapeFunc(1, 1);
              ozWindow::mouseFunc(0, 0, 1, 1);
              ozWindow::motionFunc(1, 1);
              ozWindow::passiveMotionFunc(1, 1);
              ozWindow::keyboardFunc('a', 1, 1);
              ozWindow::keyboardUpFunc('a', 1, 1);
              ozWindow::specialFunc(1, 1, 1);
              ozWindow::specialUpFunc(1, 1, 1);
              ozWindow::timerCallbackFunc(nullptr);
              ozWindow::idleFunc();
              ozWindow::mainLoop();
            }),
            "");
  EXPECT_EQ(ozWindow::closeFunc(), 0);
  EXPECT_EQ(ozWindow::getContext(), nullptr);
  EXPECT_EQ(ozWindow::isRGB(), 1);
  for (int query = ozWindow::WINDOW_X; query <= ozWindow::WINDOW_CURSOR; ++query)
    EXPECT_EQ(ozWindow::get(static_cast<ozWindow::QueryEnum>(query)), 0);
}

TEST_F(WindowTest, WindowsOfTheToolkitAloneAreNoneOfThisClass) {
  open();
  glutInitDisplayMode(GLUT_RGB | GLUT_DOUBLE);
  int const id = glutCreateWindow("raw");
  glutDisplayFunc([] {});
  int mark = 0;
  glutSetWindowData(&mark);
  EXPECT_EQ(ozWindow::getCurrent(), nullptr);
  EXPECT_EQ(ozWindow::getContext(), nullptr);
  glutDestroyWindow(id);
  settle();
}

TEST_F(WindowTest, IsMadeCurrentInTheToolkitAlone) {
  ozWindow *const a = openOnly(), *const b = openOnly();
  ozWindow::setCurrent(a);
  EXPECT_EQ(ozWindow::getCurrent(), a);
  EXPECT_EQ(ozContext::getCurrent(), b->getThisWindowContext());
  ozWindow::makeCurrent(a);
  EXPECT_EQ(ozContext::getCurrent(), a->getThisWindowContext());
}

TEST_F(WindowTest, ContextIsMadeCurrentByTheWindow) {
  ozWindow *const a = openOnly();
  openOnly();
  a->getThisWindowContext()->makeCurrent(a);
  EXPECT_EQ(ozContext::getCurrent(), a->getThisWindowContext());
  EXPECT_EQ(glXGetCurrentDrawable(), a->getHWND());
}

TEST_F(WindowTest, TwoKeepTheirOwnStateAndViewport) {
  ozWindow *const a = open(), *const b = open();
  ozWindow::makeCurrent(a);
  a->getThisWindowContext()->setDepthMask(0);
  ozWindow::makeCurrent(b);
  EXPECT_EQ(b->getThisWindowContext()->getDepthMask(), 1);
  GLboolean mask = 0;
  glGetBooleanv(GL_DEPTH_WRITEMASK, &mask);
  EXPECT_EQ(mask, GL_TRUE);
  client.resize(a->getHWND(), 300, 100);
  EXPECT_TRUE(pumpUntil([=] { return countEvents(a, ozEvent::RESHAPE_EVENT); }));
  int x, y, width, height;
  a->getThisWindowContext()->getViewport(x, y, width, height);
  EXPECT_EQ(width, 300);
  EXPECT_EQ(height, 100);
  b->getThisWindowContext()->getViewport(x, y, width, height);
  EXPECT_EQ(width, 500);
  EXPECT_EQ(height, 500);
  ozWindow::makeCurrent(a);
  glGetBooleanv(GL_DEPTH_WRITEMASK, &mask);
  EXPECT_EQ(mask, GL_FALSE);
}

TEST_F(WindowTest, SwappingShowsWhatWasDrawn) {
  ozWindow *const window = open();
  window->getThisWindowContext()->clear(ozContext::CLEAR_COLOR, 0, 1, 1, 1);
  ozWindow::swapBuffers();
  glFinish();
  XImage *shown = XGetImage(client.x, window->getHWND(), 4, 4, 1, 1, AllPlanes, ZPixmap);
  ASSERT_NE(shown, nullptr);
  EXPECT_EQ(XGetPixel(shown, 0, 0) & 0xffffff, 0x00ffffu);
  XDestroyImage(shown);
}

TEST_F(WindowTest, DrawsACharacter) {
  open();
  ozContext *const context = ozWindow::getContext();
  context->clear(ozContext::CLEAR_COLOR);
  glLoadIdentity();
  glColor3f(1, 1, 1);
  glRasterPos2f(0, 0);
  ozWindow::bitmapCharacter(GLUT_BITMAP_HELVETICA_18, 'H');
  Image const pixels = readPixels(500, 500);
  int lit = 0;
  for (int y = 230; y < 252; ++y)
    for (int x = 250; x < 270; ++x) lit += pixels.at(x, y)[0] == 255;
  EXPECT_GT(lit, 20);
}

TEST_F(WindowTest, DeletedIsOffTheScreenAtOnceAndOffTheDisplayAfterAStep) {
  ozWindow *const window = open();
  HWND const handle = window->getHWND();
  close(window);
  EXPECT_FALSE(client.isShown(handle));
  glutMainLoopEvent();
  glutGet(GLUT_SCREEN_WIDTH);
  EXPECT_TRUE(pumpUntil([&] { return !client.exists(handle); }));
}

TEST_F(WindowTest, DeletedBeforeItsFirstStepDoesNoHarm) {
  close(openOnly());
  ozWindow *const window = open();
  settle();
  EXPECT_EQ(ozWindow::getCurrent(), window);
}

TEST_F(WindowTest, DeletingOneLeavesTheOtherCurrent) {
  ozWindow *const a = open(), *const b = open();
  ozWindow::makeCurrent(a);
  close(b);
  EXPECT_EQ(ozWindow::getCurrent(), a);
  EXPECT_EQ(ozContext::getCurrent(), a->getThisWindowContext());
  EXPECT_EQ(glXGetCurrentDrawable(), a->getHWND());
  close(a);
  EXPECT_EQ(ozWindow::getCurrent(), nullptr);
  EXPECT_EQ(ozContext::getCurrent(), nullptr);
  EXPECT_EQ(glXGetCurrentContext(), nullptr);
}

TEST_F(WindowTest, ContextOutlivesItsWindow) {
  ozWindow *const window = open();
  ozContext *const context = window->getThisWindowContext();
  close(window);
  settle();
  context->makeCurrent(context->getHDC());
  EXPECT_EQ(glXGetCurrentContext(), nullptr);
  delete context;
  ozWindow *const other = open();
  EXPECT_EQ(ozContext::getCurrent(), other->getThisWindowContext());
}

TEST_F(WindowTest, OutlivesItsContext) {
  ozWindow *const window = open();
  delete window->getThisWindowContext();
  EXPECT_EQ(window->getThisWindowContext(), nullptr);
  EXPECT_EQ(ozWindow::getContext(), nullptr);
  client.expose(window->getHWND());
  EXPECT_TRUE(pumpUntil([=] { return countEvents(window, ozEvent::DISPLAY_EVENT); }));
  client.resize(window->getHWND(), 200, 300);
  EXPECT_TRUE(pumpUntil([=] { return countEvents(window, ozEvent::RESHAPE_EVENT); }));
}

TEST_F(WindowTest, IsOpenedAndSteppedWhileAnOffscreenContextIsCurrent) {
  RawGL offscreen;
  ozWindow *const window = open();
  ozDeviceRecord::makeCurrent(offscreen.device, offscreen.context);
  ozWindow::makeCurrent(window);
  EXPECT_EQ(glXGetCurrentDrawable(), window->getHWND());
  ozDeviceRecord::makeCurrent(offscreen.device, offscreen.context);
  close(window);
}

TEST_F(WindowTest, DestroyedThroughTheToolkitIsForgotten) {
  ozWindow *const window = open(), *const other = open();
  HWND const handle = window->getHWND();
  ozWindow::setCurrent(window);
  glutDestroyWindow(glutGetWindow());
  EXPECT_TRUE(pumpUntil([&] { return !client.exists(handle); }));
  EXPECT_EQ(stderrOf([=] {
              ozWindow::makeCurrent(window);
              window->swapThisWindowBuffers();
              window->enableTimer(1);
              window->processEvents();
            }),
            "");
  ozWindow::makeCurrent(other);
  EXPECT_EQ(ozWindow::getCurrent(), other);
  close(window);
  settle();
  EXPECT_EQ(ozWindow::getCurrent(), other);
}
