// A process without a display: what asks is answered quietly.

#include "oz/ozWindow.h"

#include "support/capture.h"

#include <GL/freeglut.h>
#include <gtest/gtest.h>
#include <stdlib.h>

TEST(WindowWithoutDisplay, IsToldByCheckDisplay) {
  for (char const *display : {":4711", ""}) {
    setenv("DISPLAY", display, 1);
    EXPECT_EQ(stderrOf([] { EXPECT_EQ(ozWindow::checkDisplay(), 0); }), "");
  }
  unsetenv("DISPLAY");
  EXPECT_EQ(ozWindow::checkDisplay(), 0);
}

TEST(WindowWithoutDisplay, QueriesAreQuiet) {
  unsetenv("DISPLAY");
  EXPECT_EQ(stderrOf([] {
              EXPECT_EQ(ozWindow::get(ozWindow::SCREEN_WIDTH), 0);
              EXPECT_EQ(ozWindow::getDevice(ozWindow::HAS_MOUSE), 0);
              EXPECT_EQ(ozWindow::checkDisplayMode(146), 0);
              EXPECT_EQ(ozWindow::getCurrent(), nullptr);
              EXPECT_EQ(ozWindow::getContext(), nullptr);
              EXPECT_EQ(ozWindow::isRGB(), 1);
              ozWindow::setFreeRun(1);
              ozWindow::setFreeRun(0);
              ozWindow::showWindow();
              ozWindow::setWindowTitle("x");
              ozWindow::swapBuffers();
              ozWindow::idleFunc();
              ozWindow::mainLoop();
            }),
            "");
  EXPECT_EQ(glutGet(GLUT_INIT_STATE), 0);
}

TEST(WindowWithoutDisplayDeathTest, OpeningOneEndsInTheToolkitsMessage) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  unsetenv("DISPLAY");
  EXPECT_EXIT(new ozWindow("none"), ::testing::ExitedWithCode(1), "failed to open display");
}
