// A process whose first call is a question.

#include "oz/ozWindow.h"

#include <GL/freeglut.h>
#include <gtest/gtest.h>

TEST(FirstQuery, InitialisesTheToolkit) {
  ASSERT_EQ(glutGet(GLUT_INIT_STATE), 0);
  EXPECT_EQ(ozWindow::checkDisplay(), 1);
  EXPECT_EQ(glutGet(GLUT_INIT_STATE), 0) << "checkDisplay does not";
  EXPECT_GT(ozWindow::get(ozWindow::SCREEN_WIDTH), 0);
  EXPECT_EQ(glutGet(GLUT_INIT_STATE), 1);
}
