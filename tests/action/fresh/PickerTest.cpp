#include <gtest/gtest.h>

#include "oz/ozCamera.h"
#include "oz/ozIsectAction.h"

TEST(Picker, IsMadeByTheFirstPickThatReachesTheViewport) {
  EXPECT_EQ(ozCamera::getPicker(), nullptr);
  auto *camera = new ozPerspCamera;
  camera->ref();
  ozHit hit;
  EXPECT_EQ(camera->pick(nullptr, 10, 5, hit, 0, 0, 10, 10), 0);
  EXPECT_EQ(ozCamera::getPicker(), nullptr);
  camera->pick(nullptr, 5, 5, hit, 0, 0, 10, 10);
  ozIsectAction *const picker = ozCamera::getPicker();
  ASSERT_NE(picker, nullptr);
  EXPECT_EQ(picker->getType(), ozIsectAction::getClassType());
  camera->pick(nullptr, 5, 5, hit, 0, 0, 10, 10);
  EXPECT_EQ(ozCamera::getPicker(), picker);
  camera->unref();
  ozCamera::setPicker(nullptr);
}
