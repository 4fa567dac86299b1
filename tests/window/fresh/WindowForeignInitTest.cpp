// A process that has initialised the toolkit itself, with arguments of its own.

#include "oz/ozDevice.h"
#include "oz/ozWindow.h"

#include <GL/freeglut.h>
#include <gtest/gtest.h>

// Keeps the OpenGL driver loaded to the end, so that the leak check can name it.
static HDC const Offscreen = ozDevice::createOffscreen(1, 1);

TEST(WindowOfAGlutProgram, LeavesTheProgramsInitialisationAlone) {
  ozDevice::destroy(Offscreen);
  char name[] = "program", iconic[] = "-iconic", other[] = "--other";
  char *arguments[] = {name, iconic, other, nullptr};
  int count = 3;
  glutInit(&count, arguments);
  ASSERT_EQ(count, 2);
  glutSetOption(GLUT_ACTION_ON_WINDOW_CLOSE, GLUT_ACTION_GLUTMAINLOOP_RETURNS);
  ozWindow *const window = new ozWindow("mine");
  EXPECT_EQ(ozWindow::getCurrent(), window);
  EXPECT_EQ(glutGet(GLUT_ACTION_ON_WINDOW_CLOSE), GLUT_ACTION_GLUTMAINLOOP_RETURNS);
  delete window;
  glutMainLoopEvent();
}
