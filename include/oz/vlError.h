#ifndef VL_ERROR_H
#define VL_ERROR_H

#include "oz/ozPlatform.h"

class vlInput;

/// What the reader says about a file.
class OZ_API vlReadError {
public:
  /// Writes "vl read error: %s\n%s\n" to the standard error stream: the formatted message, and where in the file.
  static void post(vlInput const *in, char const *format, ...) __attribute__((format(printf, 2, 3)));
};

/// What the reader says about itself.
class OZ_API vlDebugError {
public:
  /// Writes "vl error in %s(): %s\n" to the standard error stream: the place, and the formatted message.
  static void post(char const *where, char const *format, ...) __attribute__((format(printf, 2, 3)));
};

#endif
