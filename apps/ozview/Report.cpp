#include "Report.h"
#include "Walk.h"
#include <algorithm>
#include <sys/resource.h>
#include <unordered_map>

namespace {

// The meshes of the round solids are the same at every size.
enum { BOX_TRIANGLES = 12, SIDE_TRIANGLES = 64, DISK_TRIANGLES = 30, SPHERE_TRIANGLES = 200 };

// What primitives of given lengths come to: all vertices but two of each.
long long fanTriangles(ozGeoSet *set, ozMFInt *lengths) {
  long long triangles = 0;
  unsigned int const count = lengths->get().getCount();
  for (unsigned int i = 0; i < count && i < static_cast<unsigned int>(std::max(set->getPrimCount(), 0)); i++)
    triangles += std::max(lengths->get(i) - 2, 0);
  return triangles;
}

long long trianglesOf(ozContainer *geometry) {
  auto is = [=](ozType *type) { return geometry->isOfType(type) != 0; };
  if (is(ozBox::getClassType())) return BOX_TRIANGLES;
  if (is(ozSphere::getClassType())) return SPHERE_TRIANGLES;
  if (is(ozCone::getClassType())) {
    auto *const cone = static_cast<ozCone *>(geometry);
    return (cone->getSide() ? SIDE_TRIANGLES : 0) + (cone->getBottom() ? DISK_TRIANGLES : 0);
  }
  if (is(ozCylinder::getClassType())) {
    auto *const cylinder = static_cast<ozCylinder *>(geometry);
    return (cylinder->getSide() ? SIDE_TRIANGLES : 0) + (cylinder->getTop() ? DISK_TRIANGLES : 0) +
           (cylinder->getBottom() ? DISK_TRIANGLES : 0);
  }
  if (is(ozTriSet::getClassType())) return std::max(static_cast<ozTriSet *>(geometry)->getPrimCount(), 0);
  if (is(ozQuadSet::getClassType())) return 2LL * std::max(static_cast<ozQuadSet *>(geometry)->getPrimCount(), 0);
  if (is(ozPolySet::getClassType())) {
    auto *const set = static_cast<ozPolySet *>(geometry);
    return fanTriangles(set, set->polyLength());
  }
  if (is(ozTriStripSet::getClassType())) {
    auto *const set = static_cast<ozTriStripSet *>(geometry);
    return fanTriangles(set, set->stripLength());
  }
  if (is(ozTriFanSet::getClassType())) {
    auto *const set = static_cast<ozTriFanSet *>(geometry);
    return fanTriangles(set, set->fanLength());
  }
  return 0;
}

// How much is drawn below a container. Shared parts are counted each time, but walked once.
struct Drawn {
  long long shapes = 0, triangles = 0;
};

Drawn countDrawn(ozContainer *container, std::unordered_map<ozContainer *, Drawn> &known) {
  auto const found = known.find(container);
  if (found != known.end()) return found->second;
  Drawn sum;
  known[container] = sum;
  sum.shapes = container->isOfType(ozShape::getClassType()) ? 1 : 0;
  sum.triangles = trianglesOf(container);
  forEachReference(container, [&](ozContainer *held) {
    Drawn const below = countDrawn(held, known);
    sum.shapes += below.shapes; // the reader bounds how often anything is drawn
    sum.triangles += below.triangles;
  });
  return known[container] = sum;
}

// A text as JSON has it. Bytes above ASCII become "?": a file name need not be UTF-8.
std::string quoted(std::string const &text) {
  std::string result = "\"";
  for (char const c : text) {
    unsigned char const byte = static_cast<unsigned char>(c);
    char buffer[8];
    if (c == '"' || c == '\\')
      (result += '\\') += c;
    else if (byte < 32)
      (void)snprintf(buffer, sizeof buffer, "\\u%04x", byte), result += buffer;
    else
      result += byte < 127 ? c : '?';
  }
  return result + "\"";
}

} // namespace

Report::Report(Scene::Part const &part) : file(part.file), readSeconds(part.readSeconds) {
  rusage usage;
  getrusage(RUSAGE_SELF, &usage);
  peakMemory = usage.ru_maxrss * 1024; // the system counts kilobytes

  for (ozContainer *container : everythingBelow(part.root)) {
    if (container == part.root) continue; // the reader's own, around whatever the file holds
    nodes[container->getType()->getName()]++;
    if (char const *const name = container->getName()) names.push_back(name);
  }
  std::unordered_map<ozContainer *, Drawn> known;
  Drawn const drawn = countDrawn(part.root, known);
  shapes = drawn.shapes;
  triangles = drawn.triangles;
  part.root->getBoxBound(bound);
}

void Report::writeText(FILE *out) const {
  fprintf(out, "%s\n", file.c_str());
  fprintf(out, "  shapes:      %lld\n  triangles:   %lld\n", shapes, triangles);
  if (bound.isEmpty())
    fprintf(out, "  bounds:      empty\n");
  else
    fprintf(out, "  bounds:      %g %g %g to %g %g %g\n", bound.min._v[0], bound.min._v[1], bound.min._v[2],
            bound.max._v[0], bound.max._v[1], bound.max._v[2]);
  fprintf(out, "  read in:     %.3f s\n  peak memory: %.1f MB\n  nodes:\n", readSeconds, peakMemory / 1048576.0);
  for (auto const &entry : nodes) fprintf(out, "    %6ld %s\n", entry.second, entry.first.c_str());
  fprintf(out, "  DEF names:   %zu\n", names.size());
  for (std::string const &name : names) fprintf(out, "    %s\n", name.c_str());
}

void Report::writeJson(FILE *out) const {
  fprintf(out, "{\n  \"file\": %s,\n  \"nodes\": {", quoted(file).c_str());
  char const *separator = "";
  for (auto const &entry : nodes) {
    fprintf(out, "%s\n    %s: %ld", separator, quoted(entry.first).c_str(), entry.second);
    separator = ",";
  }
  fprintf(out, "\n  },\n  \"shapes\": %lld,\n  \"triangles\": %lld,\n  \"bounds\": ", shapes, triangles);
  if (bound.isEmpty())
    fprintf(out, "null");
  else
    fprintf(out, "{\"min\": [%.9g, %.9g, %.9g], \"max\": [%.9g, %.9g, %.9g]}", bound.min._v[0], bound.min._v[1],
            bound.min._v[2], bound.max._v[0], bound.max._v[1], bound.max._v[2]);
  fprintf(out, ",\n  \"defNames\": [");
  separator = "";
  for (std::string const &name : names) {
    fprintf(out, "%s%s", separator, quoted(name).c_str());
    separator = ", ";
  }
  fprintf(out, "],\n  \"readSeconds\": %.6f,\n  \"peakMemoryBytes\": %ld\n}", readSeconds, peakMemory);
}

void writeReports(Scene const &scene, bool json, FILE *out) {
  bool const isArray = json && scene.parts().size() > 1;
  char const *separator = isArray ? "[" : "";
  for (Scene::Part const &part : scene.parts()) {
    fputs(separator, out);
    separator = json ? ",\n" : "";
    if (json)
      Report(part).writeJson(out);
    else
      Report(part).writeText(out);
  }
  if (json) fputs(isArray ? "]\n" : "\n", out);
}
