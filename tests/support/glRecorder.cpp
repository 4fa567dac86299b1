#include "support/glRecorder.h"
#include "support/glLookUp.h"
#include "support/glText.h"
#include <GL/gl.h>
#include <GL/glx.h>
#include <cmath>
#include <cstring>
#include <dlfcn.h>
#include <type_traits>

namespace {

thread_local GLRecorder *innermost = nullptr;

bool isMeant(GLCall const &call, std::string const &nameOrText) {
  return call.name == nameOrText || call.text == nameOrText;
}

std::vector<GLCall> select(std::vector<GLCall> const &calls, std::initializer_list<char const *> names, bool wanted) {
  std::set<std::string> const set(names.begin(), names.end());
  std::vector<GLCall> chosen;
  for (GLCall const &call : calls)
    if (set.count(call.name) == (wanted ? 1 : 0)) chosen.push_back(call);
  return chosen;
}

} // namespace

GLRecorder::GLRecorder() : _passOn(true), _outer(innermost) { innermost = this; }
GLRecorder::~GLRecorder() { innermost = _outer; }

std::vector<GLCall> GLRecorder::named(std::initializer_list<char const *> names) const {
  return select(_calls, names, true);
}

std::vector<GLCall> GLRecorder::without(std::initializer_list<char const *> names) const {
  return select(_calls, names, false);
}

std::string GLRecorder::text() const {
  std::string all;
  for (GLCall const &call : _calls) all += call.text + "\n";
  return all;
}

std::vector<std::string> GLRecorder::texts() const { return textsOf(_calls); }

int GLRecorder::count(std::string const &nameOrText) const {
  int found = 0;
  for (GLCall const &call : _calls) found += isMeant(call, nameOrText);
  return found;
}

int GLRecorder::find(std::string const &nameOrText, int from) const {
  for (int i = from; i < int(_calls.size()); i++)
    if (isMeant(_calls[i], nameOrText)) return i;
  return -1;
}

std::vector<std::string> textsOf(std::vector<GLCall> const &calls) {
  std::vector<std::string> texts;
  for (GLCall const &call : calls) texts.push_back(call.text);
  return texts;
}

std::ostream &operator<<(std::ostream &out, GLCall const &call) { return out << call.text; }

::testing::Matcher<GLCall const &> IsCall(std::string const &name) { return ::testing::Field(&GLCall::name, name); }

::testing::Matcher<GLCall const &> IsCall(std::string const &name, std::vector<double> const &args, double tolerance) {
  std::vector<::testing::Matcher<double>> each;
  for (double arg : args) each.push_back(::testing::DoubleNear(arg, tolerance));
  return ::testing::AllOf(IsCall(name), ::testing::Field(&GLCall::args, ::testing::ElementsAreArray(each)));
}

// What the wrappers reach of a recorder.
struct GLRecorderAccess {
  // False when one of the recorders wants the call to go no further.
  static bool record(GLCall const &call) {
    bool pass = true;
    for (GLRecorder *rec = innermost; rec; rec = rec->_outer) {
      rec->_calls.push_back(call);
      pass = pass && rec->_passOn;
    }
    return pass;
  }

  static char const *string(unsigned int name) {
    for (GLRecorder *rec = innermost; rec; rec = rec->_outer) {
      auto found = rec->_strings.find(name);
      if (found != rec->_strings.end()) return found->second.c_str();
    }
    return nullptr;
  }

  static bool hides(char const *name) {
    for (GLRecorder *rec = innermost; rec; rec = rec->_outer)
      if (rec->_hidden.count(name)) return true;
    return false;
  }
};

namespace {

typedef GLFunction Function;

template <class Result, class... Args>
Result pass(Result (*next)(Args...), char const *name, char const *shape, Args... args) {
  if (!innermost) return next(args...);
  GLTeller teller(name, shape);
  (teller.add(args), ...);
  bool const on = GLRecorderAccess::record(teller.call());
  if constexpr (std::is_same_v<Result, GLubyte const *>) // glGetString
    if (char const *answer = GLRecorderAccess::string(teller.call().args.at(0)))
      return reinterpret_cast<GLubyte const *>(answer);
  return on ? next(args...) : Result();
}

} // namespace

#define OZ_AND(...) __VA_OPT__(, ) __VA_ARGS__

extern "C" {

#define GL_CALL(result, name, parameters, arguments, shape)                                                            \
  __attribute__((visibility("default"))) result name parameters {                                                      \
    typedef result(*Next) parameters;                                                                                  \
    static Next const next = reinterpret_cast<Next>(lookUpNextGL(#name));                                              \
    return pass(next, #name, shape OZ_AND arguments);                                                                  \
  }
#include "support/glCalls.inc"
#undef GL_CALL

} // extern "C"

namespace {

std::map<std::string, Function> const &wrappers() {
  static std::map<std::string, Function> const all = {
#define GL_CALL(result, name, parameters, arguments, shape) {#name, reinterpret_cast<Function>(&name)},
#include "support/glCalls.inc"
#undef GL_CALL
  };
  return all;
}

// A function that is looked up while somebody records is the wrapper of that name, if the platform has it at all.
Function lookUp(Function (*next)(GLubyte const *), char const *name) {
  if (!innermost) return next(reinterpret_cast<GLubyte const *>(name));
  if (GLRecorderAccess::hides(name)) return nullptr;
  auto found = wrappers().find(name);
  return found != wrappers().end() ? found->second : next(reinterpret_cast<GLubyte const *>(name));
}

} // namespace

extern "C" {

#define GL_LOOK_UP(name, Character)                                                                                    \
  __attribute__((visibility("default"))) Function name(Character const *entry) {                                       \
    typedef Function (*Next)(GLubyte const *);                                                                         \
    static Next const next = reinterpret_cast<Next>(dlsym(RTLD_NEXT, #name));                                          \
    return lookUp(next, reinterpret_cast<char const *>(entry));                                                        \
  }
GL_LOOK_UP(glXGetProcAddress, GLubyte)
GL_LOOK_UP(glXGetProcAddressARB, GLubyte)
GL_LOOK_UP(eglGetProcAddress, char)
#undef GL_LOOK_UP

} // extern "C"
