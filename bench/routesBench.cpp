// What connections cost: a clock that drives interpolators into transforms, and wide fans of fields.
#include "oz/ozContainer.h"
#include "oz/ozInterpolator.h"
#include "oz/ozTimeSensor.h"
#include "oz/ozTransform.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <unistd.h>
#include <vector>

namespace {

// One clock, and as many times an interpolator with a transform behind it.
class Routes {
public:
  explicit Routes(int count) : _clock(new ozTimeSensor) {
    _clock->ref();
    _clock->setLoop(1);
    _clock->setCycleInterval(ozTime(1.0));
    _clock->setStartTime(ozTime::getTimeOfDay());
    float const keys[] = {0, 0.25f, 0.5f, 0.75f, 1};
    ozVec3f const values[] = {ozVec3f(0, 0, 0), ozVec3f(1, 0, 0), ozVec3f(1, 1, 0), ozVec3f(0, 1, 0), ozVec3f(0, 0, 0)};
    for (int i = 0; i < count; i++) {
      auto *const path = new ozPositionInterpolator;
      path->ref();
      path->key()->setRange(0, 5, keys);
      path->keyValue()->setRange(0, 5, values);
      _clock->getField("fraction_changed")->connect(path->getField("fraction"));
      auto *const place = new ozTransform;
      place->ref();
      path->getField("value")->connect(place->getField("translation"));
      _paths.push_back(path);
      _places.push_back(place);
    }
  }
  ~Routes() {
    for (ozContainer *path : _paths) path->unref();
    for (ozContainer *place : _places) place->unref();
    _clock->unref();
  }

  // The clock ticks, and everything behind it is read.
  __attribute__((noinline)) float step() { // a function of its own, for counting its instructions
    ozTimeSensor::updateSensors();
    float sum = 0, x, y, z;
    for (ozTransform *place : _places) {
      place->getTranslation(&x, &y, &z);
      sum += x;
    }
    return sum;
  }

private:
  ozTimeSensor *_clock;
  std::vector<ozPositionInterpolator *> _paths;
  std::vector<ozTransform *> _places;
};

void routes(benchmark::State &state) {
  Routes all(static_cast<int>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(all.step());
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(routes)->Arg(100)->Arg(10000)->Arg(100000);

// Connects so many fields to one, and destroys them in order, backwards or mixed. The objects are made beforehand.
void connectAndDestroy(benchmark::State &state) {
  int const count = static_cast<int>(state.range(0));
  std::vector<ozTransform *> targets(static_cast<size_t>(count));
  for (auto _ : state) {
    state.PauseTiming();
    auto *const source = new ozTransform;
    source->ref();
    ozField *const translation = source->getField("translation");
    for (ozTransform *&target : targets) {
      target = new ozTransform;
      target->ref();
      target->getField("translation");
    }
    state.ResumeTiming();
    for (ozTransform *target : targets) translation->connect(target->getField("translation"));
    state.PauseTiming();
    if (state.range(1) == 1) std::reverse(targets.begin(), targets.end());
    if (state.range(1) == 2) std::shuffle(targets.begin(), targets.end(), std::mt19937(1));
    state.ResumeTiming();
    for (ozTransform *target : targets) target->unref();
    state.PauseTiming();
    source->unref();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(connectAndDestroy)->ArgNames({"fields", "order"})->ArgsProduct({{1000, 100000}, {0, 1, 2}});

} // namespace
