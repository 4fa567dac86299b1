#include "oz/ozGlobal.h"

#include <stdio.h>

namespace {

char const *const SeverityText[] = {"ALWAYS", "FATAL", "WARN", "NOTICE", "INFO", "DEBUG", "FP_DEBUG"};
char const *const TypeText[] = {"USAGE",       "RESOURCE",   "SYSERR",     "ASSERT",       "PRINT", "INTERNAL",
                                "FP_OVERFLOW", "FP_DIVZERO", "FP_INVALID", "FP_UNDERFLOW", "MORE"};

// The entry of a table at an index, or the nearest one.
template <int N> char const *nearest(char const *const (&table)[N], int index) {
  return table[index < 0 ? 0 : index < N ? index : N - 1];
}

} // namespace

void ozGlobal::notify(NotifySeverityEnum severity, NotifyTypeEnum type, char const *message) {
  fprintf(stderr, "(%s, %s): %s\n", nearest(SeverityText, severity), nearest(TypeText, type), message ? message : "");
}
