// Reading fields through their handles, and finding them by name.
#include "oz/ozAppearance.h"
#include "oz/ozSFByte.h"
#include "oz/ozTransform.h"
#include "oz/ozType.h"

#include <benchmark/benchmark.h>

namespace {

void readHandle(benchmark::State &state) {
  auto *const transform = new ozTransform;
  transform->ref();
  auto *const visible = static_cast<ozSFVec3f *>(transform->getField("translation"));
  ozVec3f value;
  for (auto _ : state) {
    for (int i = 0; i < 1000; i++) {
      visible->get(value);
      benchmark::DoNotOptimize(value);
    }
  }
  state.SetItemsProcessed(state.iterations() * 1000);
  transform->unref();
}
BENCHMARK(readHandle);

// Each field of the class in turn, by name.
void getFieldByName(benchmark::State &state) {
  auto *const appearance = new ozAppearance;
  appearance->ref();
  ozType *const type = appearance->getType();
  int const count = type->getFieldInfoCount();
  for (int id = 0; id < count; id++) appearance->getField(id);
  for (auto _ : state)
    for (int id = 0; id < count; id++) {
      char const *const name = type->getFieldInfo(id)->getName();
      benchmark::DoNotOptimize(appearance->getField(name));
    }
  state.SetItemsProcessed(state.iterations() * count);
  state.counters["fields"] = count;
  appearance->unref();
}
BENCHMARK(getFieldByName);

} // namespace
