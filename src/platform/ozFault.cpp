#include "oz/ozPlatform.h"
#include <cstdio>
#include <cstdlib>

void ozFault(char const *what, char const *file, int line) {
  std::fprintf(stderr, "%s:%d: %s\n", file, line, what);
  std::abort();
}
