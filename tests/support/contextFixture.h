#ifndef TESTS_SUPPORT_CONTEXT_FIXTURE_H
#define TESTS_SUPPORT_CONTEXT_FIXTURE_H

#include "oz/ozContext.h"
#include "oz/ozDevice.h"
#include "support/offscreen.h"

/// An offscreen device with a context on it, made current. Ends both.
class OffscreenContext {
public:
  explicit OffscreenContext(int width = 200, int height = 200)
      : device(ozDevice::createOffscreen(width, height)), context(new ozContext(device)), _width(width),
        _height(height) {
    context->makeCurrent(device);
  }
  ~OffscreenContext() {
    delete context;
    ozDevice::destroy(device);
  }
  OffscreenContext(OffscreenContext const &) = delete;
  OffscreenContext &operator=(OffscreenContext const &) = delete;

  ozContext *operator->() const { return context; }
  Image pixels() const { return readPixels(_width, _height); }

  HDC const device;
  ozContext *const context;

private:
  int _width, _height;
};

/// A test with a device of 200 x 200 pixels and a fresh context, current in this thread.
class ContextTest : public ::testing::Test {
protected:
  void SetUp() override {
    ASSERT_EQ(ozContext::getCurrent(), gl.context);
    ASSERT_NE(glGetString(GL_VERSION), nullptr) << "no offscreen rendering here";
  }

  OffscreenContext gl;
  ozContext *const context = gl.context;
};

#endif
