// How fast files become graphs. The texts are made here, so that the numbers mean the same everywhere: large meshes as
// modellers export them, with normals and without, many small nodes, and animation keys.
#include "oz/OzScene3D.h"

#include <benchmark/benchmark.h>
#include <math.h>
#include <stdio.h>
#include <string.h>
#include <sys/mman.h>
#include <unistd.h>

#include <charconv>
#include <string>

#include "oz/vlInput.h"

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

// Vertices of a grid of cells over a rolling surface, as lines of three numbers.
template <class Point> std::string lines(int cells, Point point) {
  std::string text;
  for (int y = 0; y <= cells; ++y)
    for (int x = 0; x <= cells; ++x) {
      float v[3];
      point(static_cast<float>(x), static_cast<float>(y), v);
      text += number(v[0]) + " " + number(v[1]) + " " + number(v[2]) + ",\n";
    }
  return text;
}

// A mesh without normals, which the reader makes.
std::string mesh(int cells) {
  std::string text =
      "#VRML V2.0 utf8\nShape { appearance Appearance { material Material { diffuseColor 0.8 0.6 0.4 } }\n"
      "geometry IndexedFaceSet { creaseAngle 0.5 coord Coordinate { point [\n";
  text += lines(cells, [](float x, float y, float *v) {
    v[0] = x * 0.1f;
    v[1] = y * 0.1f;
    v[2] = fmodf(x * 7 + y * 13, 17) * 0.01f;
  });
  text += "] }\ncoordIndex [\n";
  for (int y = 0; y < cells; ++y)
    for (int x = 0; x < cells; ++x) {
      int const at = y * (cells + 1) + x;
      for (int corner : {at, at + 1, at + cells + 2, at + cells + 1}) text += std::to_string(corner) + ",";
      text += "-1,\n";
    }
  return text + "] } }\n";
}

// Sets of triangles with their normals.
std::string faceSets(int count, int cells) {
  std::string triangles;
  for (int y = 0; y < cells; ++y)
    for (int x = 0; x < cells; ++x) {
      int const at = y * (cells + 1) + x;
      for (int corner : {at, at + 1, at + cells + 2, -1, at, at + cells + 2, at + cells + 1, -1})
        triangles += std::to_string(corner) + (corner < 0 ? ",\n" : ", ");
    }
  std::string text = "#VRML V2.0 utf8\n";
  for (int i = 0; i < count; ++i) {
    float const phase = static_cast<float>(i);
    text += "Shape { appearance Appearance { material Material { diffuseColor 0.8 0.6 0.4 } }\n"
            "geometry IndexedFaceSet { coord Coordinate { point [\n";
    text += lines(cells, [phase](float x, float y, float *v) {
      v[0] = x * 0.25f - 12.5f;
      v[1] = y * 0.25f - 12.5f;
      v[2] = 3 * sinf(x * 0.1f + phase) * cosf(y * 0.1f);
    });
    text += "] }\nnormal Normal { vector [\n";
    text += lines(cells, [phase](float x, float y, float *v) {
      float const dx = -1.2f * cosf(x * 0.1f + phase) * cosf(y * 0.1f);
      float const dy = 1.2f * sinf(x * 0.1f + phase) * sinf(y * 0.1f);
      float const length = sqrtf(dx * dx + dy * dy + 1);
      v[0] = dx / length;
      v[1] = dy / length;
      v[2] = 1 / length;
    });
    text += "] }\ncoordIndex [\n" + triangles + "] } }\n";
  }
  return text;
}

// Twelve nodes a turn: named and shared ones, transforms and materials.
std::string nodes(int count) {
  std::string text = "#VRML V2.0 utf8\nDEF Unit Box { size 1 1 1 }\n";
  int made = 1;
  for (int i = 0; made < count; ++i, made += 12) {
    std::string const n = std::to_string(i), name = "Part" + n, paint = "Paint" + n;
    text += "DEF " + name + " Transform {\n  translation " + std::to_string(i % 100) + ".5 0 " +
            std::to_string(i / 100) + "\n  rotation 0 1 0 0.25\n  children [\n    DEF Shape" + n +
            " Shape {\n      appearance Appearance { material DEF " + paint +
            " Material { diffuseColor 0.8 0.6 0.4 specularColor 0.25 0.25 0.25 shininess 0.3 } }\n      geometry Box { "
            "size 2 0.5 1 }\n    }\n" +
            "    Transform { translation 0 1 0 children USE Shape" + n + " }\n" +
            "    Transform { scale 0.5 0.5 0.5 children [\n      Shape { appearance Appearance { material USE " +
            paint + " }\n        geometry Sphere { radius 0.75 } } ] }\n" +
            "    Group { children [ Transform { translation 0 2 0 children USE Shape" + n + " } ] }\n  ]\n}\n";
  }
  return text;
}

std::string keys(int count) {
  std::string text = "#VRML V2.0 utf8\nOrientationInterpolator { key [ ";
  for (int i = 0; i < count; ++i) text += number(static_cast<float>(i) / static_cast<float>(count)) + " ";
  text += "] keyValue [\n";
  for (int i = 0; i < count; ++i) text += "0.267261 0.534522 0.801784 " + number(static_cast<float>(i) * 1e-3f) + "\n";
  return text + "] }\n";
}

// The time of the reading alone: the graph is torn down beside the clock.
void read(benchmark::State &state, std::string const &text) {
  SceneFile const file(text);
  for (auto _ : state) {
    ozContainer *root = nullptr;
    ozPtrArray files;
    vlDB::readFile(file.path.c_str(), root, files);
    state.PauseTiming();
    if (root) root->unref();
    state.ResumeTiming();
    if (!root) {
      state.SkipWithError("cannot be read");
      break;
    }
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(file.size));
}

// What a loop does that only parts a text in memory into words and numbers and stores nothing: for orientation.
void tokenize(benchmark::State &state, std::string const &text) {
  for (auto _ : state) {
    double sum = 0;
    for (char const *at = text.data(), *end = at + text.size(); at < end;) {
      if (*at == '#')
        at = static_cast<char const *>(memchr(at, '\n', static_cast<size_t>(end - at)));
      else if (vlInput::isIdentStartChar(*at) && *at != '-')
        while (vlInput::isIdentChar(*at)) ++at;
      else {
        double value = 0;
        char const *const behind = std::from_chars(at, end, value).ptr;
        at = behind > at ? behind : at + 1;
        sum += value;
      }
    }
    benchmark::DoNotOptimize(sum);
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(text.size()));
}

void ReadFaceSets(benchmark::State &state) { read(state, faceSets(static_cast<int>(state.range(0)), 100)); }
void TokenizeFaceSets(benchmark::State &state) { tokenize(state, faceSets(static_cast<int>(state.range(0)), 100)); }
void ReadNodes(benchmark::State &state) { read(state, nodes(static_cast<int>(state.range(0)))); }
void TokenizeNodes(benchmark::State &state) { tokenize(state, nodes(static_cast<int>(state.range(0)))); }
void ReadMesh(benchmark::State &state) { read(state, mesh(static_cast<int>(state.range(0)))); }
void ReadKeys(benchmark::State &state) { read(state, keys(static_cast<int>(state.range(0)))); }

BENCHMARK(ReadFaceSets)->Arg(20)->Unit(benchmark::kMillisecond); // 20 MB
BENCHMARK(TokenizeFaceSets)->Arg(20)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadNodes)->Arg(50000)->Unit(benchmark::kMillisecond); // 2.6 MB
BENCHMARK(TokenizeNodes)->Arg(50000)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadMesh)->Arg(200)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadKeys)->Arg(50000)->Unit(benchmark::kMillisecond);

} // namespace
