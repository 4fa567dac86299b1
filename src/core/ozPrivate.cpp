#include "oz/ozPrivate.h"

#include <mutex>
#include <new>
#include <stdlib.h>

__thread ozPrivate *ozPrivate::_Slot = nullptr;

namespace {

struct Block : ozPrivate {
  Block *next;
};

// The block that fini has still to free. The slot keeps its value after fini, so it cannot tell.
__thread Block *Live = nullptr;

// All blocks, for forgetContext alone. Threads come and go at any time, so this list is guarded. Never destroyed.
Block *Blocks = nullptr;
std::mutex &blocksMutex() {
  static std::mutex *const mutex = new std::mutex;
  return *mutex;
}

// Stands in after cleanup, so that objects that die still later find no context rather than no block.
ozPrivate Spent;

// Ahead of every other initialiser of the library, so that cleanup comes behind all of its destructors.
__attribute__((constructor(101))) void setupAtLoad() {
  ozPrivate::setup();
  atexit(ozPrivate::cleanup);
}

} // namespace

void ozPrivate::setup() { init(); }

void ozPrivate::cleanup() {
  fini();
  _Slot = &Spent;
}

void ozPrivate::init() {
  fini();
  _Slot = Live = new (std::nothrow) Block;
  if (!Live) return;
  std::lock_guard<std::mutex> guard(blocksMutex());
  Live->next = Blocks;
  Blocks = Live;
}

// The slot keeps the freed block's address; that is meant. A second call frees nothing.
void ozPrivate::fini() {
  if (!Live) return;
  {
    std::lock_guard<std::mutex> guard(blocksMutex());
    Block **link = &Blocks;
    while (*link != Live) link = &(*link)->next;
    *link = Live->next;
  }
  delete Live;
  Live = nullptr;
}

void ozPrivate::forgetContext(ozContext *context) {
  std::lock_guard<std::mutex> guard(blocksMutex());
  for (Block *block = Blocks; block; block = block->next) {
    ozContext *expected = context; // other threads write their own block
    __atomic_compare_exchange_n(&block->_context, &expected, nullptr, false, __ATOMIC_RELAXED, __ATOMIC_RELAXED);
  }
}
