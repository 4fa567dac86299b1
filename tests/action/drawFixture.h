#ifndef TESTS_ACTION_DRAW_FIXTURE_H
#define TESTS_ACTION_DRAW_FIXTURE_H

#include "action/probeNode.h"
#include "oz/ozCamera.h"
#include "oz/ozContext.h"
#include "support/offscreen.h"

/// A context of its own on an offscreen device, and an action that sees along -Z from the origin.
class DrawFixture : public ::testing::Test {
protected:
  DrawFixture() : device(ozDevice::createOffscreen(64, 32)) { action.setCamera(camera); }
  ~DrawFixture() override {
    ozContext::releaseCurrent();
    context->unref();
    ozDevice::destroy(device);
  }
  void SetUp() override {
    ASSERT_NE(device, nullptr) << "no offscreen rendering here";
    context = new ozContext(device);
    context->ref();
    context->makeCurrent(device);
  }

  HDC const device;
  ozContext *context = nullptr;
  Held<ozPerspCamera> camera;
  Hooked<ozDrawAction> action;
};

#endif
