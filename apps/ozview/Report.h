#ifndef OZVIEW_REPORT_H
#define OZVIEW_REPORT_H

#include "Scene.h"
#include <cstdio>
#include <map>
#include <string>
#include <vector>

/// What one file holds.
struct Report {
  explicit Report(Scene::Part const &part);

  void writeText(FILE *out) const;
  void writeJson(FILE *out) const;

  std::string file;
  std::map<std::string, long> nodes; ///< how many objects of each class, shared ones once
  long long shapes;                  ///< as often as they are drawn
  long long triangles;               ///< likewise
  ozBoxBound bound;
  std::vector<std::string> names; ///< of DEF, in the order of the graph
  double readSeconds;
  long peakMemory; ///< bytes, of the process so far
};

/// Reports on all parts: one after the other, or as JSON one object or an array of them.
void writeReports(Scene const &scene, bool json, FILE *out);

#endif
