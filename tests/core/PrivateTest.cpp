#include "oz/ozPrivate.h"
#include "oz/ozThread.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

ozContext *context(int &stand) { return reinterpret_cast<ozContext *>(&stand); }

TEST(Private, TheLoadingThreadHasABlockWithTwoNulls) {
  ASSERT_NE(nullptr, ozPrivate::getPrivate());
  EXPECT_EQ(nullptr, ozPrivate::getContext());
  EXPECT_EQ(nullptr, ozPrivate::getUserData());
}

TEST(Private, IsABlockOfTwoWords) { EXPECT_EQ(2 * sizeof(void *), sizeof(ozPrivate)); }

TEST(Private, KeepsContextAndUserDataApart) {
  int a, b;
  ozPrivate::setContext(context(a));
  ozPrivate::setUserData(&b);
  EXPECT_EQ(context(a), ozPrivate::getContext());
  EXPECT_EQ(&b, ozPrivate::getUserData());
  ozPrivate::setContext(nullptr);
  EXPECT_EQ(nullptr, ozPrivate::getContext());
  EXPECT_EQ(&b, ozPrivate::getUserData());
  ozPrivate::setUserData(nullptr);
}

struct Seen {
  ozPrivate *block = nullptr;
  ozContext *context = nullptr;
  void *userData = nullptr;
};

TEST(Private, AThreadOfOzThreadStartsWithABlockOfItsOwnWithTwoNulls) {
  int a, b;
  ozPrivate::setContext(context(a));
  ozPrivate::setUserData(&a);
  struct Work {
    int *word;
    Seen before;
  } work = {&b, {reinterpret_cast<ozPrivate *>(&b), context(b), &b}};
  ozThread thread(
      [](void *data) {
        Work *work = static_cast<Work *>(data);
        work->before = {ozPrivate::getPrivate(), ozPrivate::getContext(), ozPrivate::getUserData()};
        ozPrivate::setContext(context(*work->word));
        ozPrivate::setUserData(work->word);
      },
      &work);
  thread.wait();
  EXPECT_NE(nullptr, work.before.block);
  EXPECT_NE(ozPrivate::getPrivate(), work.before.block);
  EXPECT_EQ(nullptr, work.before.context);
  EXPECT_EQ(nullptr, work.before.userData);
  EXPECT_EQ(context(a), ozPrivate::getContext()) << "the other thread's stores stay there";
  EXPECT_EQ(&a, ozPrivate::getUserData());
  ozPrivate::setContext(nullptr);
  ozPrivate::setUserData(nullptr);
}

TEST(Private, AThreadStartedOtherwiseHasNoBlockUntilInit) {
  Seen before, after;
  std::thread([&] {
    before.block = ozPrivate::getPrivate();
    ozPrivate::init();
    after.block = ozPrivate::getPrivate();
    after.context = ozPrivate::getContext();
    after.userData = ozPrivate::getUserData();
    ozPrivate::fini();
  }).join();
  EXPECT_EQ(nullptr, before.block);
  EXPECT_NE(nullptr, after.block);
  EXPECT_EQ(nullptr, after.context);
  EXPECT_EQ(nullptr, after.userData);
}

TEST(Private, InitGivesAnEmptyBlock) {
  int word;
  Seen after;
  std::thread([&] {
    ozPrivate::init();
    ozPrivate::setUserData(&word);
    ozPrivate::setContext(context(word));
    ozPrivate::init();
    after.context = ozPrivate::getContext();
    after.userData = ozPrivate::getUserData();
    ozPrivate::fini();
  }).join();
  EXPECT_EQ(nullptr, after.context);
  EXPECT_EQ(nullptr, after.userData);
}

TEST(Private, FiniLeavesTheSlotAsItWasAndFreesOnce) {
  ozPrivate *before = nullptr, *after = nullptr;
  std::thread([&] {
    ozPrivate::fini(); // no block: nothing to free
    ozPrivate::init();
    before = ozPrivate::getPrivate();
    ozPrivate::fini();
    after = ozPrivate::getPrivate();
    ozPrivate::fini();
  }).join();
  EXPECT_NE(nullptr, before);
  EXPECT_EQ(before, after);
}

TEST(Private, SetupGivesTheCallingThreadItsBlock) {
  ozPrivate *block = nullptr;
  std::thread([&] {
    ozPrivate::setup();
    block = ozPrivate::getPrivate();
    ozPrivate::cleanup();
  }).join();
  EXPECT_NE(nullptr, block);
}

TEST(Private, CleanupLeavesObjectsThatDieLaterWithoutAContext) {
  int word;
  ozContext *seen = context(word);
  std::thread([&] {
    ozPrivate::setup();
    ozPrivate::setContext(context(word));
    ozPrivate::cleanup();
    seen = ozPrivate::getContext();
  }).join();
  EXPECT_EQ(nullptr, seen);
}

#ifdef OZ_HARDENED
TEST(PrivateDeathTest, AskingForTheContextWithoutABlockIsAFault) {
  EXPECT_DEATH(std::thread([] { ozPrivate::getContext(); }).join(), "no private block");
  EXPECT_DEATH(std::thread([] { ozPrivate::setUserData(nullptr); }).join(), "no private block");
}
#endif

} // namespace
