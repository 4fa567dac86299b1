// What a context passes on without remembering it, or remembers outside the levels: matrices, buffers, viewport, the
// treatment of normals and of the viewer.

#include <GL/gl.h>
#include <string.h>

#include "gfx/ozContextItem.h"

void ozContext::pushMatrix() {
  ++_matrixDepth;
  glPushMatrix();
}

void ozContext::pushIdentMatrix() {
  pushMatrix();
  glLoadIdentity();
}

void ozContext::popMatrix() {
  --_matrixDepth;
  glPopMatrix();
}

void ozContext::loadIdentMatrix() { glLoadIdentity(); }
void ozContext::loadMatrix(ozMatrix4f const &matrix) { glLoadMatrixf(matrix[0]); }
void ozContext::multMatrix(ozMatrix4f const &matrix) { glMultMatrixf(matrix[0]); }
void ozContext::getMatrix(ozMatrix4f &matrix) { glGetFloatv(GL_MODELVIEW_MATRIX, matrix[0]); }
void ozContext::translate(float x, float y, float z) { glTranslatef(x, y, z); }
void ozContext::scale(float x, float y, float z) { glScalef(x, y, z); }
void ozContext::rotate(float x, float y, float z, float angle) { glRotatef(angle, x, y, z); }

void ozContext::clear(int what) { clear(what, 0.0f, 0.0f, 0.0f, 1.0f); }

void ozContext::clear(int what, float r, float g, float b, float a) {
  GLbitfield buffers = 0;
  if (what & CLEAR_COLOR) {
    glClearColor(r, g, b, a);
    buffers |= GL_COLOR_BUFFER_BIT;
  }
  if (what & CLEAR_DEPTH) {
    glClearDepth(1.0);
    buffers |= GL_DEPTH_BUFFER_BIT;
  }
  glClear(buffers); // also without a buffer, as meant
}

void ozContext::setViewport(int x, int y, int width, int height) {
  int const viewport[] = {x, y, width, height};
  if (!memcmp(_viewport, viewport, sizeof viewport)) return;
  glViewport(x, y, width, height);
  memcpy(_viewport, viewport, sizeof viewport);
}

void ozContext::getViewport(int &x, int &y, int &width, int &height) const {
  x = _viewport[0];
  y = _viewport[1];
  width = _viewport[2];
  height = _viewport[3];
}

void ozContext::setNormalizeEnable(unsigned char on) {
  if (_normalizeEnable == on) return;
  _normalizeEnable = on;
  ozGL::enable(GL_NORMALIZE, on);
}

void ozContext::setLocalViewer(unsigned char on) {
  if (_localViewer == on) return;
  _localViewer = on;
  glLightModeli(GL_LIGHT_MODEL_LOCAL_VIEWER, on);
}
