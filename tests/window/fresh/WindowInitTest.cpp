// A process that never heard of the toolkit.

#include "oz/ozDevice.h"
#include "oz/ozWindow.h"

#include <GL/freeglut.h>
#include <gtest/gtest.h>

// Keeps the OpenGL driver loaded to the end, so that the leak check can name it.
static HDC const Offscreen = ozDevice::createOffscreen(1, 1);

TEST(FirstWindow, NeedsNoToolkit) {
  ozDevice::destroy(Offscreen);
  ASSERT_EQ(glutGet(GLUT_INIT_STATE), 0);
  ozWindow::initSize(64, 48);
  ozWindow *const window = new ozWindow("first");
  EXPECT_EQ(glutGet(GLUT_INIT_STATE), 1);
  EXPECT_EQ(ozWindow::getCurrent(), window);
  delete window;
  glutMainLoopEvent();
}

// The toolkit takes its windows with it. The ozWindow lives on without.
TEST(FirstWindow, SurvivesTheEndOfTheToolkit) {
  ozWindow *const window = new ozWindow("first");
  glutExit();
  EXPECT_EQ(ozWindow::getCurrent(), nullptr);
  ozWindow::mainLoop();
  window->processEvents();
  window->swapThisWindowBuffers();
  delete window;
}
