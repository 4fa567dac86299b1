// How fast files become graphs. The texts are made here, so that the numbers mean the same everywhere: a large mesh as
// modellers export them, many small nodes, and animation keys.
#include "oz/OzScene3D.h"

#include <benchmark/benchmark.h>
#include <stdio.h>
#include <sys/mman.h>
#include <unistd.h>

#include <string>

namespace {

class SceneFile {
public:
  explicit SceneFile(std::string const &text) : _fd(memfd_create("scene", 0)), size(text.size()) {
    for (size_t at = 0; at < text.size();) {
      ssize_t const written = write(_fd, text.data() + at, text.size() - at);
      if (written <= 0) break;
      at += static_cast<size_t>(written);
    }
    path = "/proc/self/fd/" + std::to_string(_fd);
  }
  ~SceneFile() { close(_fd); }

private:
  int _fd;

public:
  size_t const size;
  std::string path;
};

std::string number(float value) {
  char text[32];
  snprintf(text, sizeof text, "%.6f", static_cast<double>(value));
  return text;
}

// A grid of cells with a face each, over a rolling surface.
std::string mesh(int cells) {
  std::string text =
      "#VRML V2.0 utf8\nShape { appearance Appearance { material Material { diffuseColor 0.8 0.6 0.4 } }\n"
      "geometry IndexedFaceSet { creaseAngle 0.5 coord Coordinate { point [\n";
  for (int y = 0; y <= cells; ++y)
    for (int x = 0; x <= cells; ++x)
      text += number(static_cast<float>(x) * 0.1f) + " " + number(static_cast<float>(y) * 0.1f) + " " +
              number(static_cast<float>((x * 7 + y * 13) % 17) * 0.01f) + ",\n";
  text += "] }\ncoordIndex [\n";
  for (int y = 0; y < cells; ++y)
    for (int x = 0; x < cells; ++x) {
      int const at = y * (cells + 1) + x;
      for (int corner : {at, at + 1, at + cells + 2, at + cells + 1}) text += std::to_string(corner) + ",";
      text += "-1,\n";
    }
  return text + "] } }\n";
}

std::string nodes(int count) {
  std::string text = "#VRML V2.0 utf8\nDEF S Shape { appearance Appearance { material Material { } } }\n";
  for (int i = 0; i < count; ++i)
    text += "DEF T" + std::to_string(i) + " Transform { translation " + std::to_string(i) +
            " 0 0 rotation 0 1 0 0.5 children [ USE S, Shape { geometry LineSet { } } ] }\n";
  return text;
}

std::string keys(int count) {
  std::string text = "#VRML V2.0 utf8\nOrientationInterpolator { key [ ";
  for (int i = 0; i < count; ++i) text += number(static_cast<float>(i) / static_cast<float>(count)) + " ";
  text += "] keyValue [\n";
  for (int i = 0; i < count; ++i) text += "0.267261 0.534522 0.801784 " + number(static_cast<float>(i) * 1e-3f) + "\n";
  return text + "] }\n";
}

void read(benchmark::State &state, SceneFile const &file) {
  for (auto _ : state) {
    ozContainer *root = nullptr;
    ozPtrArray files;
    vlDB::readFile(file.path.c_str(), root, files);
    if (!root) {
      state.SkipWithError("cannot be read");
      break;
    }
    root->unref();
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(file.size));
}

void ReadMesh(benchmark::State &state) { read(state, SceneFile(mesh(static_cast<int>(state.range(0))))); }
void ReadNodes(benchmark::State &state) { read(state, SceneFile(nodes(static_cast<int>(state.range(0))))); }
void ReadKeys(benchmark::State &state) { read(state, SceneFile(keys(static_cast<int>(state.range(0))))); }

BENCHMARK(ReadMesh)->Arg(200)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadNodes)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadKeys)->Arg(50000)->Unit(benchmark::kMillisecond);

} // namespace
