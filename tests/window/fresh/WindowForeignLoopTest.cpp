// A process that runs the toolkit's own loop, which it can do but once.

#include "oz/ozDevice.h"
#include "oz/ozWindow.h"

#include <GL/freeglut.h>
#include <gtest/gtest.h>

// Keeps the OpenGL driver loaded to the end, so that the leak check can name it.
static HDC const Offscreen = ozDevice::createOffscreen(1, 1);

namespace {

int Frames = 0;

int frame(void *) {
  if (++Frames < 20) return 0;
  // From here on the frames wait for input. Nobody gives any.
  glutTimerFunc(
      100, [](int) { glutLeaveMainLoop(); }, 0);
  return 1;
}

} // namespace

TEST(WindowInTheToolkitsLoop, RunsFreeUntilTheFrameFunctionSaysToWait) {
  ozDevice::destroy(Offscreen);
  ozWindow *const window = new ozWindow("mine");
  for (int i = 0; i < 5; ++i) glutMainLoopEvent(); // its first events
  glutSetOption(GLUT_ACTION_ON_WINDOW_CLOSE, GLUT_ACTION_CONTINUE_EXECUTION);
  window->resetEvents();
  ozWindow::setFrameFunc(frame, nullptr);
  ozWindow::setFreeRun(1);
  glutMainLoop();
  EXPECT_EQ(Frames, 20);
  delete window;
}
