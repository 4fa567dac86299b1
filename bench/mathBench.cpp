// The hot paths of the value classes: what culling, traversal and picking do once or more for every node.
#include "oz/ozFrustum.h"
#include "oz/ozMatStack4f.h"
#include "oz/ozRotation.h"
#include "oz/ozSeg.h"

#include <benchmark/benchmark.h>

namespace {

int const COUNT = 256;

// Numbers that look random and are the same in every run.
class Numbers {
public:
  float next(float from, float to) {
    _seed = _seed * 1664525u + 1013904223u;
    return from + (to - from) * static_cast<float>(_seed >> 8) / (1 << 24);
  }
  ozVec3f point(float size) {
    float x = next(-size, size), y = next(-size, size);
    return ozVec3f(x, y, next(-size, size));
  }

private:
  unsigned _seed = 1;
};

ozMatrix4f placed() {
  ozMatrix4f m;
  m.makeRot(1, 2, 3, 0.7f);
  m.postTrans(m, 4, 5, 6);
  return m;
}

// Boxes or spheres of which some lie inside the default frustum, some across its sides and most outside.
struct Scene {
  ozBoxBound boxes[COUNT];
  ozSphereBound spheres[COUNT];
  Scene() {
    Numbers numbers;
    for (int i = 0; i < COUNT; i++) {
      ozVec3f center = numbers.point(100), half;
      half = numbers.next(1, 20);
      boxes[i].min.sub(center, half);
      boxes[i].max.add(center, half);
      spheres[i].center = center;
      spheres[i].radius = half[0];
    }
  }
};

void transformPoints(benchmark::State &state) {
  Numbers numbers;
  ozMatrix4f const m = placed();
  static ozVec3f points[COUNT], moved[COUNT];
  for (ozVec3f &point : points) point = numbers.point(100);
  for (auto _ : state) {
    for (int i = 0; i < COUNT; i++) moved[i].xformPt(points[i], m);
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * COUNT);
}
BENCHMARK(transformPoints);

void multiplyMatrices(benchmark::State &state) {
  Numbers numbers;
  ozMatrix4f const b = placed();
  static ozMatrix4f from[COUNT], to[COUNT];
  for (ozMatrix4f &m : from) m.makeRot(1, 2, 3, numbers.next(0, 6));
  for (auto _ : state) {
    for (int i = 0; i < COUNT; i++) to[i].mult(from[i], b);
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * COUNT);
}
BENCHMARK(multiplyMatrices);

void pushMultiplyPop(benchmark::State &state) {
  ozMatStack4f stack;
  ozMatrix4f const m = placed();
  for (auto _ : state) {
    stack.push();
    stack.preMult(m);
    benchmark::DoNotOptimize(stack.getTop());
    stack.pop();
  }
}
BENCHMARK(pushMultiplyPop);

void invertAffineMatrix(benchmark::State &state) {
  ozMatrix4f const m = placed();
  for (auto _ : state) {
    ozMatrix4f inverse;
    inverse.invertAffine(m);
    benchmark::DoNotOptimize(inverse);
  }
}
BENCHMARK(invertAffineMatrix);

void transformBoxes(benchmark::State &state) {
  Scene const scene;
  ozMatrix4f const m = placed();
  for (auto _ : state) {
    for (ozBoxBound const &box : scene.boxes) {
      ozBoxBound moved;
      moved.xform(&box, m);
      benchmark::DoNotOptimize(moved);
    }
  }
  state.SetItemsProcessed(state.iterations() * COUNT);
}
BENCHMARK(transformBoxes);

template <class Bound> void cull(benchmark::State &state, Bound const (&bounds)[COUNT]) {
  ozFrustum const frustum;
  for (auto _ : state) {
    for (Bound const &bound : bounds) benchmark::DoNotOptimize(frustum.contains(&bound));
  }
  state.SetItemsProcessed(state.iterations() * COUNT);
}

void cullBoxes(benchmark::State &state) {
  Scene const scene;
  cull(state, scene.boxes);
}
BENCHMARK(cullBoxes);

void cullSpheres(benchmark::State &state) {
  Scene const scene;
  cull(state, scene.spheres);
}
BENCHMARK(cullSpheres);

void intersectBoxes(benchmark::State &state) {
  Scene const scene;
  ozSeg seg;
  seg.makePts(ozVec3f(-100, -90, -80), ozVec3f(100, 80, 90));
  for (auto _ : state) {
    for (ozBoxBound const &box : scene.boxes) {
      float t0, t1;
      benchmark::DoNotOptimize(box.isect(&seg, &t0, &t1));
    }
  }
  state.SetItemsProcessed(state.iterations() * COUNT);
}
BENCHMARK(intersectBoxes);

void interpolateRotations(benchmark::State &state) {
  ozRotation const a(0, 1, 0, 0.5f), b(1, 0, 0, 1.5f);
  float t = 0;
  for (auto _ : state) {
    ozRotation r;
    r.slerp(t, a, b);
    benchmark::DoNotOptimize(r);
    t = t < 1 ? t + 0.001f : 0;
  }
}
BENCHMARK(interpolateRotations);

} // namespace
