#include "window/windowToolkit.h"

#include "platform/toolkitDisplay.h"

#include <GL/freeglut.h>
#include <errno.h>

bool windowToolkit::isOpen() { return glutGet(GLUT_INIT_STATE); }

void windowToolkit::open() {
  if (isOpen()) return;
  char *arguments[] = {program_invocation_name, nullptr};
  int count = 1;
  glutInit(&count, arguments);
}

bool windowToolkit::isReady() {
  if (isOpen()) return true;
  if (!toolkitDisplay::opens()) return false;
  open();
  return true;
}

bool windowToolkit::hasCurrentWindow() { return isOpen() && glutGetWindow(); }
