#include "oz/ozThread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <new>
#include <stdlib.h>

// Every new and delete of the process counts, those of the library too.

namespace {

std::atomic<long> Alive(0), Made(0);

void *make(size_t size) {
  void *memory = malloc(size ? size : 1);
  if (memory) ++Alive, ++Made;
  return memory;
}

void drop(void *memory) {
  if (memory) --Alive;
  free(memory);
}

} // namespace

void *operator new(size_t size) {
  void *memory = make(size);
  if (!memory) abort();
  return memory;
}
void *operator new(size_t size, std::nothrow_t const &) noexcept { return make(size); }
void operator delete(void *memory) noexcept { drop(memory); }
void operator delete(void *memory, size_t) noexcept { drop(memory); }
void operator delete(void *memory, std::nothrow_t const &) noexcept { drop(memory); }

namespace {

// What is left of a hundred threads that ran function, one after the other.
long leftBy(void (*function)(void *)) {
  long const before = Alive;
  for (int i = 0; i < 100; ++i) ozThread(function, nullptr).wait();
  return Alive - before;
}

TEST(ThreadMemory, AThreadFreesItsRecordAndItsPrivateBlock) {
  long const made = Made;
  EXPECT_EQ(0, leftBy([](void *) {}));
  EXPECT_LE(made + 200, Made) << "a record and a block each";
}

TEST(ThreadMemory, AThreadThatExitsFreesThemToo) {
  EXPECT_EQ(0, leftBy([](void *) { ozThread::exit(); }));
}

TEST(ThreadMemory, TheRecordIsFreedBeforeTheFunctionRuns) {
  static long inside;
  long const before = Alive;
  ozThread([](void *) { inside = Alive; }, nullptr).wait();
  EXPECT_EQ(1, inside - before) << "the private block alone";
}

} // namespace
