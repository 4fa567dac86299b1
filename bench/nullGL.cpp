#include "nullGL.h"
#include "support/glLookUp.h"
#include "support/glText.h"

namespace nullGL {

Mode mode = PASS;
unsigned long calls = 0;
std::vector<std::string> log;

} // namespace nullGL

namespace {

template <class Result, class... Args>
Result goOn(Result (*next)(Args...), char const *name, char const *shape, Args... args) {
  if (nullGL::mode == nullGL::LOG) {
    GLTeller teller(name, shape);
    (teller.add(args), ...);
    nullGL::log.push_back(teller.call().text);
  }
  return next(args...);
}

template <class Result> Result nothing() {
  if constexpr (!std::is_void_v<Result>) return Result();
}

} // namespace

#define OZ_AND(...) __VA_OPT__(, ) __VA_ARGS__

extern "C" {

#define GL_CALL(result, name, parameters, arguments, shape)                                                            \
  __attribute__((visibility("default"))) result name parameters {                                                      \
    if (nullGL::mode == nullGL::COUNT) {                                                                               \
      ++nullGL::calls;                                                                                                 \
      return nothing<result>();                                                                                        \
    }                                                                                                                  \
    typedef result(*Next) parameters;                                                                                  \
    static Next const next = reinterpret_cast<Next>(lookUpNextGL(#name));                                              \
    return goOn(next, #name, shape OZ_AND arguments);                                                                  \
  }
#include "support/glCalls.inc"
#undef GL_CALL

} // extern "C"
