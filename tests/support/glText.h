#ifndef TESTS_SUPPORT_GL_TEXT_H
#define TESTS_SUPPORT_GL_TEXT_H

#include "support/glRecorder.h"
#include <type_traits>

/// Puts one call into words: arguments are added in order and told as the shape says (see glCalls.inc).
class GLTeller {
public:
  GLTeller(char const *name, char const *shape) : _shape(shape) { _call.name = name; }

  template <class T> void add(T value) {
    if constexpr (!std::is_pointer_v<T>) {
      addScalar(value, std::is_floating_point_v<T>);
    } else if constexpr (std::is_arithmetic_v<std::remove_pointer_t<T>>) {
      addVector(value);
    } else {
      addPointer(value);
    }
  }

  /// Whole once all arguments are added.
  GLCall const &call();

private:
  void addScalar(double value, bool isFloat);
  void addPointer(void const *pointer);
  void addIndices(void const *indices);
  void put(double value, std::string const &text);

  template <class T> void addVector(T const *values) {
    int const count = vectorLength();
    if (count < 0 || !values) return addPointer(values);
    _shape++;
    for (int i = 0; i < count; i++) put(values[i], number(values[i], std::is_floating_point_v<T>));
  }

  // The length that the shape gives the next vector; -1 for a pointer that is not looked into.
  int vectorLength() const;
  std::string number(double value, bool isFloat) const;

  GLCall _call;
  std::string _arguments;
  char const *_shape;
  double _pname = 0;   // the last enumerator
  int _lastNumber = 0; // the last whole number
};

/// "GL_LIGHTING" for 0x0B50; "" for a value that has no name of its own.
std::string glName(unsigned int value);

#endif
