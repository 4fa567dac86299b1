#ifndef TESTS_SUPPORT_CAPTURE_H
#define TESTS_SUPPORT_CAPTURE_H

#include <string>

/// Catches what the process writes to a descriptor while this object lives, whichever way it is written (stdio,
/// streams, write). Captures of the same descriptor nest; the text then belongs to the innermost.
class Capture {
public:
  explicit Capture(int descriptor);
  ~Capture();
  Capture(Capture const &) = delete;
  Capture &operator=(Capture const &) = delete;

  /// Everything caught so far. The capture goes on.
  std::string text();

private:
  int _descriptor;
  int _saved;
  int _file;
};

/// CaptureStderr errors; ... EXPECT_EQ(errors.text(), "(warning, base): ...\n");
struct CaptureStderr : Capture {
  CaptureStderr() : Capture(2) {}
};

struct CaptureStdout : Capture {
  CaptureStdout() : Capture(1) {}
};

/// What call() writes to the standard error stream.
template <class Function> std::string stderrOf(Function call) {
  CaptureStderr errors;
  call();
  return errors.text();
}

/// What call() writes to the standard output stream.
template <class Function> std::string stdoutOf(Function call) {
  CaptureStdout output;
  call();
  return output.text();
}

#endif
