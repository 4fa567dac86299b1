// Frames of the grid, drawn by the library and by hand, into an OpenGL that only counts and into Mesa.
#include "grid.h"
#include "handLoop.h"
#include "nullGL.h"

#include <benchmark/benchmark.h>

#include <GL/gl.h>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <malloc.h>
#include <memory>

namespace {

// A context with a viewport of 64 x 64 pixels, and the grid in it twice: as a graph and as flat arrays.
class Bench {
public:
  Bench() : _device(ozDevice::createOffscreen(64, 64)), _context(_device ? new ozContext(_device) : nullptr) {
    if (!_context) return;
    _context->makeCurrent(_device);
    _context->setViewport(0, 0, 64, 64);
    _context->setDepthEnable(1);
    size_t const before = mallinfo2().uordblks;
    grid.reset(new Grid);
    heapBytes = mallinfo2().uordblks - before;
    byHand.reset(new HandLoop(*grid));
    _action.setCamera(grid->camera);
    if (getenv("BENCH_UNCHECKED")) nullGL::mode = nullGL::COUNT;
    draw(); // what changes once is behind us
  }

  // Whether both make the same calls for a frame with everything in view.
  bool isFair() {
    std::vector<std::string> const library = logOf([&] { draw(); }), hand = logOf([&] { byHand->draw(*grid); });
    size_t const count = std::min(library.size(), hand.size());
    size_t const same = static_cast<size_t>(
        std::mismatch(library.begin(), library.begin() + static_cast<ptrdiff_t>(count), hand.begin()).first -
        library.begin());
    if (same == library.size() && same == hand.size()) return true;
    fprintf(stderr, "call %zu differs:\n  library: %s\n  by hand: %s\n", same,
            same < library.size() ? library[same].c_str() : "none", same < hand.size() ? hand[same].c_str() : "none");
    return false;
  }

  bool isReady() const { return grid != nullptr; }

  void draw() {
    grid->camera->draw(&_action);
    _context->clear(ozContext::CLEAR_COLOR | ozContext::CLEAR_DEPTH);
    _action.apply(grid->root);
  }

  std::unique_ptr<Grid> grid;
  std::unique_ptr<HandLoop> byHand;
  size_t heapBytes = 0;

private:
  template <class Frame> std::vector<std::string> logOf(Frame frame) {
    nullGL::log.clear();
    nullGL::mode = nullGL::LOG;
    frame();
    nullGL::mode = nullGL::PASS;
    return nullGL::log;
  }

  HDC _device;
  ozContext *_context;
  ozDrawAction _action;
};

// Made at the first benchmark and kept: the heap is then as it would be in a program.
Bench *bench(benchmark::State &state) {
  static Bench *const the = new Bench;
  // The check fills a log of 300,000 lines, which would drown all else in a profile.
  static bool const fair = the->isReady() && (getenv("BENCH_UNCHECKED") || the->isFair());
  if (!the->isReady()) return state.SkipWithError("no offscreen rendering here"), nullptr;
  if (!fair) return state.SkipWithError("the hand loop makes other calls than the library"), nullptr;
  return the;
}

// Times frames; items are boxes of the whole grid.
template <class Frame> void time(benchmark::State &state, nullGL::Mode mode, Frame frame) {
  Bench *const the = bench(state);
  if (!the) return;
  nullGL::mode = mode;
  frame(*the, 0);
  int number = 0;
  nullGL::calls = 0;
  for (auto _ : state) frame(*the, ++number);
  if (mode == nullGL::COUNT)
    state.counters["calls"] = static_cast<double>(nullGL::calls) / static_cast<double>(state.iterations());
  nullGL::mode = nullGL::PASS;
  the->grid->viewAll();
  state.SetItemsProcessed(state.iterations() * Grid::BOXES);
}

void gridNull(benchmark::State &state, bool byHand) {
  time(state, nullGL::COUNT, [=](Bench &the, int) { byHand ? (void)the.byHand->draw(*the.grid) : the.draw(); });
}
BENCHMARK_CAPTURE(gridNull, library, false);
BENCHMARK_CAPTURE(gridNull, hand, true);

void gridMesa(benchmark::State &state, bool byHand) {
  time(state, nullGL::PASS, [=](Bench &the, int) {
    byHand ? (void)the.byHand->draw(*the.grid) : the.draw();
    glFinish();
  });
}
BENCHMARK_CAPTURE(gridMesa, library, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(gridMesa, hand, true)->Unit(benchmark::kMillisecond);

void culledNull(benchmark::State &state, bool byHand) {
  time(state, nullGL::COUNT, [=](Bench &the, int frame) {
    if (frame == 0) the.grid->viewTenth();
    byHand ? (void)the.byHand->draw(*the.grid) : the.draw();
  });
}
BENCHMARK_CAPTURE(culledNull, library, false);
BENCHMARK_CAPTURE(culledNull, hand, true);

void dynamicNull(benchmark::State &state, bool byHand) {
  time(state, nullGL::COUNT, [=](Bench &the, int frame) {
    if (byHand) {
      the.byHand->turnAll(frame);
      the.byHand->draw(*the.grid);
    } else {
      the.grid->turnAll(frame);
      the.draw();
    }
  });
}
BENCHMARK_CAPTURE(dynamicNull, library, false);
BENCHMARK_CAPTURE(dynamicNull, hand, true);

void heapPerBox(benchmark::State &state) {
  Bench *const the = bench(state);
  if (!the) return;
  for (auto _ : state) benchmark::DoNotOptimize(the->heapBytes);
  state.counters["bytes"] = static_cast<double>(the->heapBytes) / Grid::BOXES;
}
BENCHMARK(heapPerBox)->Iterations(1);

} // namespace
