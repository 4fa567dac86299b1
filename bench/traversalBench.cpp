// What a frame costs besides OpenGL: culling, matrices and picking over a wide graph.
#include "oz/ozCamera.h"
#include "oz/ozContext.h"
#include "oz/ozDevice.h"
#include "oz/ozDrawAction.h"
#include "oz/ozGroup.h"
#include "oz/ozIsectAction.h"
#include "oz/ozShape.h"
#include "oz/ozTransform.h"
#include "oz/ozTriSet.h"

#include <benchmark/benchmark.h>

namespace {

ozShape *makeShape() {
  ozVec3f const corners[] = {ozVec3f(-0.4f, -0.4f, 0), ozVec3f(0.4f, -0.4f, 0), ozVec3f(0, 0.4f, 0.1f)};
  auto *coords = new ozCoordSet3f;
  coords->point()->setRange(0, 3, corners);
  auto *triangle = new ozTriSet;
  triangle->setPrimCount(1);
  triangle->setCoordSet(coords);
  auto *shape = new ozShape;
  shape->addGeometry(triangle);
  return shape;
}

// A square of side * side triangles in rows, each under a transform of its own, before a camera that sees them all or,
// moved aside, none.
struct Field {
  explicit Field(int side) {
    root->ref();
    camera->ref();
    for (int y = 0; y < side; y++) {
      auto *row = new ozGroup;
      for (int x = 0; x < side; x++) {
        auto *place = new ozTransform;
        place->setTranslation(static_cast<float>(x) - 0.5f * side, static_cast<float>(y) - 0.5f * side, 0);
        place->addChild(makeShape());
        row->addChild(place);
      }
      root->addChild(row);
    }
    camera->setPosition(0, 0, 2.0f * side);
    camera->setFarClip(10.0f * side);
  }
  ~Field() {
    root->unref();
    camera->unref();
  }
  ozGroup *const root = new ozGroup;
  ozPerspCamera *const camera = new ozPerspCamera;
};

void cull(benchmark::State &state) {
  int const side = static_cast<int>(state.range(0));
  Field field(side);
  ozVFCullAction action;
  action.setCamera(field.camera);
  for (auto _ : state) benchmark::DoNotOptimize(action.apply(field.root));
  state.SetItemsProcessed(state.iterations() * side * side);
}
BENCHMARK(cull)->Arg(10)->Arg(100);

void accumulateMatrices(benchmark::State &state) {
  int const side = static_cast<int>(state.range(0));
  Field field(side);
  ozTransformAction action;
  for (auto _ : state) benchmark::DoNotOptimize(action.apply(field.root));
  state.SetItemsProcessed(state.iterations() * side * side);
}
BENCHMARK(accumulateMatrices)->Arg(100);

// One triangle moves between two passes, so that bounds are brought up to date along its way to the root.
void cullAfterAMove(benchmark::State &state) {
  int const side = static_cast<int>(state.range(0));
  Field field(side);
  ozVFCullAction action;
  action.setCamera(field.camera);
  auto *moving = static_cast<ozTransform *>(static_cast<ozGroup *>(field.root->getChild(0))->getChild(0));
  float z = 0;
  for (auto _ : state) {
    moving->setTranslation(0, 0, z = z < 1 ? z + 0.01f : 0);
    benchmark::DoNotOptimize(action.apply(field.root));
  }
  state.SetItemsProcessed(state.iterations() * side * side);
}
BENCHMARK(cullAfterAMove)->Arg(100);

void drawAll(benchmark::State &state) {
  int const side = static_cast<int>(state.range(0));
  HDC const device = ozDevice::createOffscreen(64, 64);
  if (!device) {
    state.SkipWithError("no offscreen rendering here");
    return;
  }
  auto *context = new ozContext(device);
  context->makeCurrent(device);
  {
    Field field(side);
    ozDrawAction action;
    action.setCamera(field.camera);
    for (auto _ : state) {
      field.camera->draw(&action);
      context->clear(ozContext::CLEAR_COLOR | ozContext::CLEAR_DEPTH);
      benchmark::DoNotOptimize(action.apply(field.root));
    }
    state.SetItemsProcessed(state.iterations() * side * side);
  }
  ozContext::releaseCurrent();
  context->unref();
  ozDevice::destroy(device);
}
BENCHMARK(drawAll)->Arg(10)->Arg(100);

// A ray through the middle, which meets triangles of a few rows only.
void pick(benchmark::State &state) {
  int const side = static_cast<int>(state.range(0));
  Field field(side);
  ozHit hit;
  for (auto _ : state) benchmark::DoNotOptimize(field.camera->pick(field.root, 50, 50, hit, 0, 0, 101, 101));
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(pick)->Arg(10)->Arg(100);

} // namespace
