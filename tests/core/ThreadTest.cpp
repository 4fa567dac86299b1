#include "oz/ozPrivate.h"
#include "oz/ozThread.h"
#include "support/capture.h"

#include <gtest/gtest.h>

#include <atomic>
#include <pthread.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <thread>
#include <time.h>
#include <unistd.h>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define OZ_SANITIZED 1
#endif

namespace {

double seconds() {
  timespec now;
  clock_gettime(CLOCK_MONOTONIC, &now);
  return now.tv_sec + now.tv_nsec * 1e-9;
}

void addOne(void *data) { ++*static_cast<std::atomic<int> *>(data); }

struct Gate {
  std::atomic<int> open{0}, passed{0};
};

void passGate(void *data) {
  Gate *gate = static_cast<Gate *>(data);
  while (!gate->open) ozThread::sleep(1000);
  gate->passed = 1;
}

TEST(Thread, RunsItsFunctionWithItsArgument) {
  std::atomic<int> runs(0);
  ozThread thread(addOne, &runs);
  thread.wait();
  EXPECT_EQ(1, runs);
}

TEST(Thread, RunsOnAnotherThread) {
  unsigned long id = 0;
  ozThread thread([](void *data) { *static_cast<unsigned long *>(data) = ozThread::getID(); }, &id);
  thread.wait();
  EXPECT_NE(0ul, id);
  EXPECT_NE(ozThread::getID(), id);
}

TEST(Thread, WaitLastsUntilTheEnd) {
  std::atomic<int> done(0);
  ozThread thread(
      [](void *data) {
        ozThread::sleep(30000);
        addOne(data);
      },
      &done);
  thread.wait();
  EXPECT_EQ(1, done);
}

TEST(Thread, WaitingTwiceIsHarmless) {
  std::atomic<int> runs(0);
  ozThread thread(addOne, &runs);
  thread.wait();
  thread.wait();
  EXPECT_EQ(1, runs);
}

TEST(Thread, AHandleOnTheCallingThreadStartsNothingAndDoesNotWaitForItself) {
  ozThread self;
  self.wait();
  SUCCEED();
}

TEST(Thread, AHandleOnTheCallingThreadCanStartOne) {
  std::atomic<int> runs(0);
  ozThread thread;
  EXPECT_EQ("", stderrOf([&] {
              thread.start(addOne, &runs);
              thread.wait();
            }));
  EXPECT_EQ(1, runs);
}

TEST(Thread, AThreadThatWaitsForItselfGoesOn) {
  struct Self {
    ozThread thread;
    std::atomic<int> ready{0}, done{0};
  } self;
  self.thread.start(
      [](void *data) {
        Self *self = static_cast<Self *>(data);
        while (!self->ready) ozThread::sleep(1000);
        self->thread.wait();
        self->done = 1;
      },
      &self);
  self.ready = 1;
  while (!self.done) ozThread::sleep(1000);
  self.thread.wait();
  EXPECT_EQ(1, self.done);
}

TEST(Thread, TheDestructorDoesNotWait) {
  Gate gate;
  { ozThread thread(passGate, &gate); }
  EXPECT_EQ(0, gate.passed);
  gate.open = 1;
  while (!gate.passed) ozThread::sleep(1000);
  ozThread::sleep(20000); // the thread's last steps
}

TEST(Thread, AStartedHandleSaysSoAndStartsAllTheSame) {
  std::atomic<int> runs(0);
  ozThread thread(addOne, &runs);
  thread.wait(); // ended, and still counts as started
  EXPECT_EQ("attempted to start already executing thread\n", stderrOf([&] { thread.start(addOne, &runs); }));
  thread.wait();
  EXPECT_EQ(2, runs);
}

TEST(Thread, WaitingIsForTheThreadThatWasStartedLast) {
  Gate gate;
  std::atomic<int> runs(0);
  ozThread thread(passGate, &gate);
  EXPECT_EQ("attempted to start already executing thread\n", stderrOf([&] { thread.start(addOne, &runs); }));
  thread.wait();
  EXPECT_EQ(1, runs);
  EXPECT_EQ(0, gate.passed);
  gate.open = 1;
  while (!gate.passed) ozThread::sleep(1000);
  ozThread::sleep(20000); // the thread's last steps
}

// In a process of its own: the first start needs more address space than it may have, the second does not.
[[noreturn]] void startBeyondTheLimit() {
  std::atomic<int> runs(0);
  ozThread thread;
  rlimit limit = {1ul << 30, 1ul << 30};
  setrlimit(RLIMIT_AS, &limit);
  thread.setStackSize(0x7fffffffu);
  thread.start(addOne, &runs);
  thread.wait();
  thread.setStackSize(1 << 20);
  thread.start(addOne, &runs); // the flag stayed 0: no word of a second start
  thread.wait();
  _exit(runs == 1 ? 0 : 1);
}

TEST(Thread, AThreadThatCannotBeMadeIsReported) {
#ifdef OZ_SANITIZED
  GTEST_SKIP() << "the sanitizer needs its address space";
#endif
  EXPECT_EXIT(startBeyondTheLimit(), testing::ExitedWithCode(0), "^failed to create thread\n$");
}

size_t stackOf(unsigned int asked) {
  size_t size = 0;
  ozThread thread;
  thread.setStackSize(asked);
  thread.start(
      [](void *data) {
        pthread_attr_t attributes;
        pthread_getattr_np(pthread_self(), &attributes);
        pthread_attr_getstacksize(&attributes, static_cast<size_t *>(data));
        pthread_attr_destroy(&attributes);
      },
      &size);
  thread.wait();
  return size;
}

TEST(Thread, HasTheStackThatWasAskedFor) { // more than a default one, and no stack left over from another thread
  EXPECT_GE(stackOf(40u << 20), 40u << 20);
  EXPECT_LT(stackOf(40u << 20), 41u << 20);
}

TEST(Thread, AStackSizeOf0IsThePlatformsDefault) {
  size_t least = 0;
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_attr_getstacksize(&attributes, &least);
  pthread_attr_destroy(&attributes);
  EXPECT_GE(stackOf(0), least - (1u << 16));
}

TEST(Thread, AStackSizeBelowThePlatformsLeastIsRaisedToIt) {
  size_t size = 0;
  EXPECT_EQ("", stderrOf([&] { size = stackOf(1); }));
  EXPECT_GE(size, static_cast<size_t>(sysconf(_SC_THREAD_STACK_MIN)));
  EXPECT_LT(size, 1u << 20);
}

TEST(Thread, ExitEndsTheThreadAndItsBlock) {
  struct Steps {
    std::atomic<int> before{0}, after{0};
  } steps;
  ozThread thread(
      [](void *data) {
        Steps *steps = static_cast<Steps *>(data);
        steps->before = ozPrivate::getPrivate() != nullptr;
        if (steps->before) ozThread::exit();
        steps->after = 1;
      },
      &steps);
  thread.wait();
  EXPECT_EQ(1, steps.before);
  EXPECT_EQ(0, steps.after);
}

TEST(Thread, ManyThreadsComeAndGo) {
  std::atomic<int> runs(0);
  for (int i = 0; i < 200; ++i) {
    ozThread a(addOne, &runs), b(addOne, &runs);
    a.wait();
    b.wait();
  }
  EXPECT_EQ(400, runs);
}

TEST(Thread, TheIdIsTheSystemsOwn) {
  EXPECT_EQ(static_cast<unsigned long>(syscall(SYS_gettid)), ozThread::getID());
  EXPECT_EQ(ozThread::getID(), ozThread::getID());
}

TEST(Thread, CountsTheProcessors) {
  EXPECT_GE(ozThread::numProcessors(), 1);
  EXPECT_EQ(sysconf(_SC_NPROCESSORS_ONLN), ozThread::numProcessors());
}

TEST(Thread, SleepsForMicrosecondsCutToMilliseconds) {
  double before = seconds();
  ozThread::sleep(20999);
  double slept = seconds() - before;
  EXPECT_GE(slept, 0.020);
  EXPECT_LT(slept, 2.0);
}

TEST(Thread, ASleepBelowAMillisecondOnlyYields) {
  auto timesGivenUp = [] {
    rusage usage;
    getrusage(RUSAGE_THREAD, &usage);
    return usage.ru_nvcsw;
  };
  long const before = timesGivenUp();
  for (int i = 0; i < 1000; ++i) ozThread::sleep(999);
  EXPECT_LT(timesGivenUp() - before, 500); // a real sleep gives the processor up each time
}

} // namespace
