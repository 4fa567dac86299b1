#include "oz/vlError.h"

#include <stdarg.h>
#include <stdio.h>

#include "oz/vlInput.h"

void vlReadError::post(vlInput const *in, char const *format, ...) {
  char message[1024];
  va_list arguments;
  va_start(arguments, format);
  vsnprintf(message, sizeof message, format, arguments);
  va_end(arguments);
  ozString location;
  in->getLocationString(location);
  fprintf(stderr, "vl read error: %s\n%s\n", message, location.getString());
}

void vlDebugError::post(char const *where, char const *format, ...) {
  char message[1024];
  va_list arguments;
  va_start(arguments, format);
  vsnprintf(message, sizeof message, format, arguments);
  va_end(arguments);
  fprintf(stderr, "vl error in %s(): %s\n", where, message);
}
