#include "oz/ozPrivate.h"

#include <new>
#include <stdlib.h>

__thread ozPrivate *ozPrivate::_Slot = nullptr;

namespace {

// The block that fini has still to free. The slot keeps its value after fini, so it cannot tell.
__thread ozPrivate *Live = nullptr;

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
  _Slot = Live = new (std::nothrow) ozPrivate;
}

// The slot keeps the freed block's address; that is meant. A second call frees nothing.
void ozPrivate::fini() {
  delete Live;
  Live = nullptr;
}
