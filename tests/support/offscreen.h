#ifndef TESTS_SUPPORT_OFFSCREEN_H
#define TESTS_SUPPORT_OFFSCREEN_H

#include "oz/ozDevice.h"
#include "platform/ozDeviceRecord.h"
#include "support/image.h"
#include <GL/gl.h>
#include <gtest/gtest.h>

/// The colours of the current read buffer, top row first.
inline Image readPixels(int width, int height) {
  Image image(width, height);
  glPixelStorei(GL_PACK_ALIGNMENT, 1);
  glReadPixels(0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, image.row(0));
  image.flip();
  return image;
}

/// An offscreen device with a current rendering context of its own, below and without ozContext.
class RawGL {
public:
  explicit RawGL(int width = 200, int height = 200)
      : device(ozDevice::createOffscreen(width, height)), context(device ? device->createContext() : nullptr),
        _width(width), _height(height) {
    ozDeviceRecord::makeCurrent(device, context);
  }

  ~RawGL() {
    if (context && context->isCurrent()) ozDeviceRecord::release();
    delete context;
    ozDevice::destroy(device);
  }

  RawGL(RawGL const &) = delete;
  RawGL &operator=(RawGL const &) = delete;

  Image pixels() const { return readPixels(_width, _height); }

  HDC const device;
  ozRenderContext *const context;

private:
  int _width, _height;
};

/// A test with a device of 200 x 200 pixels and a current rendering context.
class OffscreenTest : public ::testing::Test {
protected:
  void SetUp() override { ASSERT_TRUE(gl.context && gl.context->isCurrent()) << "no offscreen rendering here"; }

  RawGL gl;
};

#endif
