// Devices of the toolkit's windows. A process of its own: it opens windows and ends the toolkit.

#include "support/offscreen.h"
#include <GL/freeglut.h>
#include <GL/glx.h>
#include <X11/Xutil.h>

namespace {

// A window of the toolkit with the device that was made from it.
class ToolkitWindow {
public:
  explicit ToolkitWindow(unsigned int mode = GLUT_RGBA | GLUT_DOUBLE | GLUT_DEPTH) {
    if (!glutGet(GLUT_INIT_STATE)) {
      int argc = 1;
      char name[] = "test", *argv[] = {name, nullptr};
      glutInit(&argc, argv);
      glutSetOption(GLUT_ACTION_ON_WINDOW_CLOSE, GLUT_ACTION_CONTINUE_EXECUTION);
    }
    glutInitDisplayMode(mode);
    glutInitWindowSize(64, 48);
    id = glutCreateWindow("device");
    glutDisplayFunc([] {});
    toolkitContext = glXGetCurrentContext();
    device = ozDeviceRecord::fromCurrentWindow();
  }

  ~ToolkitWindow() {
    close();
    device->unref();
  }

  // As a window's owner does: the device learns of it first.
  void close() {
    if (!id) return;
    device->lose();
    ozDeviceRecord::release();
    glutDestroyWindow(id);
    glutMainLoopEvent();
    id = 0;
  }

  int id;
  GLXContext toolkitContext;
  ozDeviceRecord *device;
};

Image::Pixel clearedPixel(float red, float green, float blue) {
  glClearColor(red, green, blue, 1);
  glClear(GL_COLOR_BUFFER_BIT);
  return readPixels(8, 8).at(4, 4);
}

} // namespace

TEST(WindowDevice, FirstContextIsTheToolkitsOwn) {
  ToolkitWindow window;
  ASSERT_NE(window.device, nullptr);
  ozRenderContext *context = window.device->createContext();
  ASSERT_NE(context, nullptr);
  EXPECT_TRUE(context->isCurrent());
  ozDeviceRecord::release();
  EXPECT_FALSE(context->isCurrent());
  ASSERT_TRUE(ozDeviceRecord::makeCurrent(window.device, context));
  EXPECT_EQ(glXGetCurrentContext(), window.toolkitContext);
  EXPECT_TRUE(context->isCurrent());
  delete context;
}

TEST(WindowDevice, DeletingTheAdoptedContextLeavesTheToolkitsAlive) {
  ToolkitWindow window;
  delete window.device->createContext();
  ozDeviceRecord::release();
  ToolkitWindow other;
  glutSetWindow(window.id);
  EXPECT_EQ(glXGetCurrentContext(), window.toolkitContext);
  EXPECT_EQ(clearedPixel(0, 1, 0), (Image::Pixel{0, 255, 0, 255}));
}

TEST(WindowDevice, SecondContextIsSeparateAndSeparatelyDeletable) {
  ToolkitWindow window;
  ozRenderContext *first = window.device->createContext(), *second = window.device->createContext();
  ASSERT_NE(second, nullptr);
  glEnable(GL_LIGHTING);
  glNewList(10000, GL_COMPILE);
  glEndList();
  ASSERT_TRUE(ozDeviceRecord::makeCurrent(window.device, second));
  EXPECT_TRUE(second->isCurrent());
  EXPECT_FALSE(first->isCurrent());
  EXPECT_FALSE(glIsEnabled(GL_LIGHTING));
  EXPECT_FALSE(glIsList(10000));
  ozDeviceRecord::release();
  delete second;
  ASSERT_TRUE(ozDeviceRecord::makeCurrent(window.device, first));
  EXPECT_TRUE(glIsEnabled(GL_LIGHTING));
  EXPECT_TRUE(glIsList(10000));
  delete first;
}

TEST(WindowDevice, IsBoundEvenWhenTheToolkitBelievesItCurrent) {
  ToolkitWindow window;
  ozRenderContext *context = window.device->createContext();
  glXMakeContextCurrent(glXGetCurrentDisplay(), None, None, nullptr);
  EXPECT_EQ(glutGetWindow(), window.id);
  ASSERT_TRUE(ozDeviceRecord::makeCurrent(window.device, context));
  EXPECT_EQ(glXGetCurrentContext(), window.toolkitContext);
  delete context;
}

TEST(WindowDevice, TwoWindowsKeepTheirOwn) {
  ToolkitWindow a, b;
  ozRenderContext *ofA = a.device->createContext(), *ofB = b.device->createContext();
  ASSERT_TRUE(ozDeviceRecord::makeCurrent(a.device, ofA));
  EXPECT_EQ(glXGetCurrentContext(), a.toolkitContext);
  EXPECT_EQ(clearedPixel(1, 0, 0), (Image::Pixel{255, 0, 0, 255}));
  ASSERT_TRUE(ozDeviceRecord::makeCurrent(b.device, ofB));
  EXPECT_EQ(glXGetCurrentContext(), b.toolkitContext);
  EXPECT_EQ(clearedPixel(0, 0, 1), (Image::Pixel{0, 0, 255, 255}));
  delete ofA;
  delete ofB;
}

TEST(WindowDevice, IsRGBA) {
  ToolkitWindow window;
  EXPECT_TRUE(window.device->isRGBA());
}

TEST(WindowDevice, SwappingShowsTheBackBuffer) {
  ToolkitWindow window;
  glutShowWindow();
  for (int turn = 0; turn < 20; turn++) glutMainLoopEvent();
  EXPECT_EQ(clearedPixel(0, 1, 1), (Image::Pixel{0, 255, 255, 255}));
  window.device->swap();
  XImage *shown = XGetImage(glXGetCurrentDisplay(), glXGetCurrentDrawable(), 4, 4, 1, 1, AllPlanes, ZPixmap);
  ASSERT_NE(shown, nullptr);
  EXPECT_EQ(XGetPixel(shown, 0, 0) & 0xffffff, 0x00ffffu);
  XDestroyImage(shown);
}

TEST(WindowDevice, AContextOutlivesItsWindow) {
  ToolkitWindow window;
  ozRenderContext *adopted = window.device->createContext(), *second = window.device->createContext();
  window.close();
  for (ozRenderContext *context : {adopted, second}) {
    EXPECT_FALSE(ozDeviceRecord::makeCurrent(window.device, context));
    EXPECT_EQ(glXGetCurrentContext(), nullptr);
    EXPECT_FALSE(context->isCurrent());
  }
  window.device->swap();
  EXPECT_EQ(window.device->createContext(), nullptr);
  delete adopted;
  delete second;
}

TEST(WindowDevice, GoesToAndFroWithAnOffscreenOne) {
  ToolkitWindow window;
  ozRenderContext *context = window.device->createContext();
  RawGL offscreen(16, 16);
  EXPECT_TRUE(offscreen.context->isCurrent());
  EXPECT_FALSE(context->isCurrent());
  EXPECT_EQ(clearedPixel(0, 0, 1), (Image::Pixel{0, 0, 255, 255}));
  ASSERT_TRUE(ozDeviceRecord::makeCurrent(window.device, context));
  EXPECT_EQ(clearedPixel(0, 1, 0), (Image::Pixel{0, 255, 0, 255}));
  ASSERT_TRUE(ozDeviceRecord::makeCurrent(offscreen.device, offscreen.context));
  EXPECT_EQ(offscreen.pixels().at(4, 4), (Image::Pixel{0, 0, 255, 255}));
  delete context;
}

TEST(WindowDevice, OffscreenContextsAndItsOwnDoNotMix) {
  ToolkitWindow window;
  RawGL offscreen;
  EXPECT_FALSE(ozDeviceRecord::makeCurrent(window.device, offscreen.context));
  EXPECT_FALSE(offscreen.context->isCurrent());
}

TEST(WindowDevice, TheToolkitBindsItsWindowsOnceAnOffscreenContextIsReleased) {
  ToolkitWindow a, b;
  RawGL offscreen;
  ozDeviceRecord::releaseOffscreen();
  EXPECT_FALSE(offscreen.context->isCurrent());
  glutSetWindow(a.id);
  EXPECT_EQ(glXGetCurrentContext(), a.toolkitContext);
  ozDeviceRecord::releaseOffscreen();
  EXPECT_EQ(glXGetCurrentContext(), a.toolkitContext);
}

// The last of this process: afterwards the toolkit's display is closed.
TEST(WindowDeviceLast, AContextOutlivesTheToolkitsDisplay) {
  ToolkitWindow window;
  ozRenderContext *adopted = window.device->createContext(), *second = window.device->createContext();
  ozDeviceRecord::release();
  glutExit();
  window.id = 0;
  EXPECT_FALSE(ozDeviceRecord::makeCurrent(window.device, second));
  EXPECT_FALSE(second->isCurrent());
  window.device->swap();
  delete adopted;
  delete second;
}
