#include "support/capture.h"
#include "support/offscreen.h"
#include <cstring>
#include <future>
#include <gmock/gmock.h>
#include <thread>

namespace {

GLint get(GLenum what) {
  GLint value = -1;
  glGetIntegerv(what, &value);
  return value;
}

Image clearedImage(RawGL const &gl, float red, float green, float blue) {
  glClearColor(red, green, blue, 1);
  glClear(GL_COLOR_BUFFER_BIT);
  return gl.pixels();
}

} // namespace

TEST(Device, RefusesASizeBelowOnePixel) {
  EXPECT_EQ(ozDevice::createOffscreen(0, 10), nullptr);
  EXPECT_EQ(ozDevice::createOffscreen(10, 0), nullptr);
  EXPECT_EQ(ozDevice::createOffscreen(-1, 10), nullptr);
}

TEST(Device, RefusesASizeThatNoPlatformHas) { EXPECT_EQ(ozDevice::createOffscreen(1 << 30, 1 << 30), nullptr); }

TEST(Device, DestroyPassesOverNull) { ozDevice::destroy(nullptr); }

TEST(Device, NeedsNoXServer) {
  ::testing::FLAGS_gtest_death_test_style = "threadsafe";
  EXPECT_EXIT(
      {
        unsetenv("DISPLAY");
        unsetenv("WAYLAND_DISPLAY");
        RawGL gl;
        std::_Exit(gl.context && gl.context->isCurrent() && glGetString(GL_VERSION) ? 0 : 1);
      },
      ::testing::ExitedWithCode(0), "");
}

TEST_F(OffscreenTest, HasEightBitsOfEachColourAndTwentyFourOfDepth) {
  EXPECT_EQ(get(GL_RED_BITS), 8);
  EXPECT_EQ(get(GL_GREEN_BITS), 8);
  EXPECT_EQ(get(GL_BLUE_BITS), 8);
  EXPECT_EQ(get(GL_ALPHA_BITS), 8);
  EXPECT_EQ(get(GL_DEPTH_BITS), 24);
  EXPECT_EQ(get(GL_STENCIL_BITS), 8);
}

TEST_F(OffscreenTest, IsRGBA) {
  EXPECT_TRUE(gl.device->isRGBA());
  EXPECT_EQ(get(GL_RGBA_MODE), 1);
}

TEST_F(OffscreenTest, SwappingKeepsThePicture) {
  clearedImage(gl, 1, 0, 0);
  gl.device->swap();
  EXPECT_EQ(gl.pixels().at(5, 5), (Image::Pixel{255, 0, 0, 255}));
}

TEST(Device, FirstViewportIsItsSize) {
  RawGL gl(31, 17);
  GLint viewport[4];
  glGetIntegerv(GL_VIEWPORT, viewport);
  EXPECT_THAT(viewport, ::testing::ElementsAre(0, 0, 31, 17));
}

TEST_F(OffscreenTest, DrawsWithTheFixedFunctions) {
  clearedImage(gl, 0, 0, 1);
  glColor3f(1, 1, 0);
  glRectf(-1, 0, 1, 1);
  Image image = gl.pixels();
  EXPECT_EQ(image.at(100, 50), (Image::Pixel{255, 255, 0, 255}));
  EXPECT_EQ(image.at(100, 150), (Image::Pixel{0, 0, 255, 255}));
  EXPECT_EQ(image.count({255, 255, 0, 255}), 200 * 100);
}

TEST(Device, EachKeepsItsOwnPicture) {
  RawGL first, second;
  EXPECT_FALSE(first.context->isCurrent());
  EXPECT_TRUE(second.context->isCurrent());
  clearedImage(second, 0, 1, 0);
  ASSERT_TRUE(ozDeviceRecord::makeCurrent(first.device, first.context));
  clearedImage(first, 1, 0, 0);
  ASSERT_TRUE(ozDeviceRecord::makeCurrent(second.device, second.context));
  EXPECT_EQ(second.pixels().at(0, 0), (Image::Pixel{0, 255, 0, 255}));
}

TEST_F(OffscreenTest, ASecondContextIsSeparateAndSeparatelyDeletable) {
  glEnable(GL_LIGHTING);
  glNewList(10000, GL_COMPILE);
  glEndList();
  ozRenderContext *second = gl.device->createContext();
  ASSERT_NE(second, nullptr);
  EXPECT_FALSE(second->isCurrent());
  ASSERT_TRUE(ozDeviceRecord::makeCurrent(gl.device, second));
  EXPECT_TRUE(second->isCurrent());
  EXPECT_FALSE(gl.context->isCurrent());
  EXPECT_FALSE(glIsEnabled(GL_LIGHTING));
  EXPECT_FALSE(glIsList(10000));
  ozDeviceRecord::release();
  delete second;
  ASSERT_TRUE(ozDeviceRecord::makeCurrent(gl.device, gl.context));
  EXPECT_TRUE(glIsEnabled(GL_LIGHTING));
  EXPECT_TRUE(glIsList(10000));
}

TEST_F(OffscreenTest, OneContextDrawsToAnotherDevice) {
  RawGL other(50, 50);
  clearedImage(other, 0, 0, 1);
  ASSERT_TRUE(ozDeviceRecord::makeCurrent(other.device, gl.context));
  clearedImage(other, 0, 1, 0);
  ASSERT_TRUE(ozDeviceRecord::makeCurrent(other.device, other.context));
  EXPECT_EQ(other.pixels().count({0, 255, 0, 255}), 50 * 50);
}

TEST_F(OffscreenTest, ReleaseLeavesNothingCurrent) {
  ozDeviceRecord::release();
  EXPECT_FALSE(gl.context->isCurrent());
  EXPECT_EQ(glGetString(GL_VERSION), nullptr);
}

TEST_F(OffscreenTest, BindingNullLeavesNothingCurrent) {
  EXPECT_FALSE(ozDeviceRecord::makeCurrent(gl.device, nullptr));
  EXPECT_FALSE(gl.context->isCurrent());
  ASSERT_TRUE(ozDeviceRecord::makeCurrent(gl.device, gl.context));
  EXPECT_FALSE(ozDeviceRecord::makeCurrent(nullptr, gl.context));
  EXPECT_FALSE(gl.context->isCurrent());
}

TEST(Device, AContextOutlivesItAndCanStillBeBoundForItsObjects) {
  HDC device = ozDevice::createOffscreen(20, 20);
  ASSERT_NE(device, nullptr);
  ozRenderContext *context = device->createContext();
  ASSERT_TRUE(ozDeviceRecord::makeCurrent(device, context));
  glNewList(7, GL_COMPILE);
  glEndList();
  ozDeviceRecord::release();
  ozDevice::destroy(device);
  ASSERT_TRUE(ozDeviceRecord::makeCurrent(device, context));
  EXPECT_TRUE(glIsList(7));
  glDeleteLists(7, 1);
  device->swap();
  ozDeviceRecord::release();
  delete context;
}

TEST(Device, DestroyedWhileCurrentKeepsTheContextCurrent) {
  HDC device = ozDevice::createOffscreen(20, 20);
  ozRenderContext *context = device->createContext();
  ASSERT_TRUE(ozDeviceRecord::makeCurrent(device, context));
  ozDevice::destroy(device);
  EXPECT_TRUE(context->isCurrent());
  EXPECT_NE(glGetString(GL_VERSION), nullptr);
  ozDeviceRecord::release();
  delete context;
}

TEST(Device, ThreadsDrawAtTheSameTime) {
  auto draw = [](int shade) {
    for (int round = 0; round < 10; round++) {
      RawGL gl(40, 40);
      if (!gl.context || clearedImage(gl, shade / 255.f, 0, 0).count({(unsigned char)shade, 0, 0, 255}) != 1600)
        return false;
    }
    return true;
  };
  std::future<bool> threads[4];
  for (int i = 0; i < 4; i++) threads[i] = std::async(std::launch::async, draw, 51 * (i + 1));
  for (auto &thread : threads) EXPECT_TRUE(thread.get());
}

TEST(Device, WhatIsCurrentIsKeptForEachThread) {
  RawGL gl;
  std::thread([&] { EXPECT_FALSE(gl.context->isCurrent()); }).join();
  EXPECT_TRUE(gl.context->isCurrent());
}

TEST(Device, ThereIsNoWindowDeviceWithoutAWindow) {
  RawGL gl;
  EXPECT_EQ(ozDeviceRecord::fromCurrentWindow(), nullptr);
}

TEST(ProcAddress, FindsTheBlendEquation) {
  RawGL gl;
  auto blendEquation = reinterpret_cast<void (*)(GLenum)>(ozGetProcAddress("glBlendEquation"));
  ASSERT_NE(blendEquation, nullptr);
  blendEquation(GL_MAX);
  EXPECT_EQ(get(GL_BLEND_EQUATION), GL_MAX);
}
