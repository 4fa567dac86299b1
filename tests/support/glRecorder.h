#ifndef TESTS_SUPPORT_GL_RECORDER_H
#define TESTS_SUPPORT_GL_RECORDER_H

#include <cstdint>
#include <gmock/gmock.h>
#include <initializer_list>
#include <map>
#include <set>
#include <string>
#include <vector>

/// One call of OpenGL. Pointers to vectors (glVertex3fv, glLoadMatrixf, glMaterialfv, the indices of glDrawElements)
/// are told by the values they point to; other pointers (glVertexPointer, glTexImage2D) by their address.
struct GLCall {
  std::string name;
  std::vector<double> args; ///< All arguments in order, vectors unrolled.
  std::string text;         ///< "glMaterialfv(GL_FRONT, GL_AMBIENT, 0.2, 0.2, 0.2, 1)"; pointers are "ptr" or "NULL".
};

std::ostream &operator<<(std::ostream &, GLCall const &);

/// Records the calls of OpenGL that this thread makes while the recorder lives, whoever makes them: the wrappers of
/// this program stand in front of libGL. Recorders nest, and each sees all calls of its time.
///
///     GLRecorder rec;
///     shape->draw(action);
///     EXPECT_THAT(rec.texts(), ElementsAre("glBegin(GL_TRIANGLES)", ...));
///     EXPECT_THAT(rec.named("glColor4f"), ElementsAre(IsCall("glColor4f", {1, 0, 0, 0.5})));
class GLRecorder {
public:
  GLRecorder();
  ~GLRecorder();
  GLRecorder(GLRecorder const &) = delete;
  GLRecorder &operator=(GLRecorder const &) = delete;

  std::vector<GLCall> const &calls() const { return _calls; }

  /// Only the calls with one of these names.
  std::vector<GLCall> named(std::string const &name) const { return named({name.c_str()}); }
  std::vector<GLCall> named(std::initializer_list<char const *> names) const;

  /// All but the calls with one of these names, such as queries that do not matter.
  std::vector<GLCall> without(std::initializer_list<char const *> names) const;

  /// One line a call.
  std::string text() const;
  std::vector<std::string> texts() const;

  /// How often a name, or with parentheses a whole call ("glEnable(GL_FOG)"), was called.
  int count(std::string const &nameOrText) const;

  /// Where a call stands, counted from 0; -1 when it does not.
  int find(std::string const &nameOrText, int from = 0) const;

  void clear() { _calls.clear(); }

  /// With false, calls are recorded and go no further: those with a result yield 0.
  void passOn(bool on) { _passOn = on; }

  /// What glGetString answers from now on.
  void answerString(unsigned int name, char const *text) { _strings[name] = text; }

  /// The run-time look-up no longer finds this function.
  void hideEntryPoint(char const *name) { _hidden.insert(name); }

private:
  friend struct GLRecorderAccess;

  std::vector<GLCall> _calls;
  std::map<unsigned int, std::string> _strings;
  std::set<std::string> _hidden;
  bool _passOn;
  GLRecorder *_outer;
};

std::vector<std::string> textsOf(std::vector<GLCall> const &);

/// A pointer as GLCall::args tells it.
inline double addressArg(void const *pointer) { return double(reinterpret_cast<std::uintptr_t>(pointer)); }

/// Matches a call by name and by arguments, each of which may be off by tolerance.
::testing::Matcher<GLCall const &> IsCall(std::string const &name, std::vector<double> const &args,
                                          double tolerance = 1e-6);

/// Matches any call of that name.
::testing::Matcher<GLCall const &> IsCall(std::string const &name);

#endif
