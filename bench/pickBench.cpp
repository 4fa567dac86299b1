// Rays into one large set of triangles, before and after it has built its index, and rays into the grid of boxes.
#include "grid.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <ctime>
#include <malloc.h>
#include <vector>

namespace {

int const CELLS_X = 1000, CELLS_Y = 500, TRIANGLES = 2 * CELLS_X * CELLS_Y;

// A grid over the unit square, displaced by waves and a little noise.
class Terrain {
public:
  Terrain() : root(new ozShape), set(new ozTriSet) {
    std::vector<ozVec3f> points;
    std::vector<int> index;
    unsigned int seed = 1;
    for (int y = 0; y <= CELLS_Y; y++)
      for (int x = 0; x <= CELLS_X; x++) {
        float const u = static_cast<float>(x) / CELLS_X, v = static_cast<float>(y) / CELLS_Y;
        seed = seed * 1664525u + 1013904223u;
        float const noise = static_cast<float>(seed >> 8) / (1 << 24);
        points.push_back(ozVec3f(u, v, 0.05f * std::sin(20 * u) * std::cos(15 * v) + 0.001f * noise));
      }
    for (int y = 0; y < CELLS_Y; y++)
      for (int x = 0; x < CELLS_X; x++) {
        int const a = y * (CELLS_X + 1) + x, b = a + 1, c = b + CELLS_X, d = c + 1;
        for (int corner : {a, b, d, a, d, c}) index.push_back(corner);
      }
    auto *const coords = new ozCoordSet3f;
    coords->point()->setRange(0, static_cast<unsigned int>(points.size()), points.data());
    auto *const indexSet = new ozIndexSet;
    indexSet->index()->setRange(0, static_cast<unsigned int>(index.size()), index.data());
    set->setCoordSet(coords);
    set->setCoordIndexSet(indexSet);
    set->setPrimCount(TRIANGLES);
    root->addGeometry(set);
    root->ref();
  }
  ~Terrain() { root->unref(); }
  Terrain(Terrain const &) = delete;
  Terrain &operator=(Terrain const &) = delete;

  // The next of a series of rays that slant down onto the grid from all sides.
  bool cast() {
    float const x = next(), y = next(), z = 0.3f + 0.7f * next();
    _action.seg.makePts(ozVec3f(2 * next() - 0.5f, 2 * next() - 0.5f, z), ozVec3f(x, y, 0));
    _action.seg.setLength(10);
    _action.apply(root);
    return _action.hit.isValid();
  }

  ozShape *const root;
  ozTriSet *const set;

private:
  float next() {
    _seed = _seed * 1664525u + 1013904223u;
    return static_cast<float>(_seed >> 8) / (1 << 24);
  }
  unsigned int _seed = 7;
  ozIsectAction _action;
};

double heapBytes() {
  struct mallinfo2 const info = mallinfo2();
  return static_cast<double>(info.uordblks + info.hblkhd);
}

void raysIntoLargeSet(benchmark::State &state) {
  Terrain terrain;
  terrain.set->setPickIndexEnable(static_cast<unsigned char>(state.range(0)));
  terrain.cast();
  if (state.range(0)) {
    // The ray that builds is one like those before it, and takes as much more of the processor as building does.
    double last = 0;
    for (int rays = 1; rays < 100000; rays++) {
      double const before = heapBytes();
      clock_t const start = clock();
      terrain.cast();
      double const seconds = static_cast<double>(clock() - start) / CLOCKS_PER_SEC, grown = heapBytes() - before;
      if (grown > TRIANGLES) {
        state.counters["buildSeconds"] = seconds - last;
        state.counters["bytesPerTriangle"] = grown / TRIANGLES;
        state.counters["raysBefore"] = rays;
        break;
      }
      last = seconds;
    }
  }
  int64_t hits = 0;
  for (auto _ : state) hits += terrain.cast();
  state.SetItemsProcessed(state.iterations());
  state.counters["hitShare"] = static_cast<double>(hits) / static_cast<double>(state.iterations());
}
BENCHMARK(raysIntoLargeSet)->ArgName("indexed")->Arg(0)->Arg(1);

// Rays through the pixels of a window that sees all boxes.
void raysIntoGrid(benchmark::State &state) {
  int const side = 512;
  Grid grid;
  ozHit hit;
  unsigned int seed = 7;
  int64_t hits = 0;
  for (auto _ : state) {
    seed = seed * 1664525u + 1013904223u;
    hits += grid.camera->pick(grid.root, static_cast<int>(seed >> 8) % side, static_cast<int>(seed >> 17) % side, hit,
                              0, 0, side, side);
  }
  state.SetItemsProcessed(state.iterations());
  state.counters["hitShare"] = static_cast<double>(hits) / static_cast<double>(state.iterations());
}
BENCHMARK(raysIntoGrid);

} // namespace
