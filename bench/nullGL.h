#ifndef BENCH_NULL_GL_H
#define BENCH_NULL_GL_H

#include <string>
#include <vector>

/// Stands in front of OpenGL in this program: calls go on to libGL, or only count and return, so that what is timed is
/// who makes them.
namespace nullGL {

enum Mode : int {
  COUNT, ///< count and return
  PASS,  ///< go on to libGL
  LOG    ///< go on, and into the log
};
extern Mode mode;

/// The calls counted in mode COUNT.
extern unsigned long calls;

/// The calls in mode LOG: the name, and the values of numbers and of the vectors that matter to a draw.
extern std::vector<std::string> log;

} // namespace nullGL

#endif
