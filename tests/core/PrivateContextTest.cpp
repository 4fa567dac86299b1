#include "oz/ozPrivate.h"
#include <gtest/gtest.h>
#include <thread>

TEST(Private, ForgetsAContextInEveryThread) {
  ozContext *const context = reinterpret_cast<ozContext *>(64), *const other = reinterpret_cast<ozContext *>(128);
  ozPrivate::setContext(context);
  std::thread([=] {
    ozPrivate::init();
    ozPrivate::setContext(context);
    std::thread([=] {
      ozPrivate::init();
      ozPrivate::setContext(other);
      ozPrivate::forgetContext(context);
      EXPECT_EQ(ozPrivate::getContext(), other);
      ozPrivate::fini();
    }).join();
    EXPECT_EQ(ozPrivate::getContext(), nullptr);
    ozPrivate::fini();
  }).join();
  EXPECT_EQ(ozPrivate::getContext(), nullptr);
  ozPrivate::forgetContext(context); // those of ended threads are not reached
}
