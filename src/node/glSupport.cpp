#include "node/glSupport.h"

#include <GL/gl.h>
#include <stdio.h>
#include <string.h>

#include <charconv>

char const *ozGLVersion() { return reinterpret_cast<char const *>(glGetString(GL_VERSION)); }

bool ozHasExtension(char *&list, char const *name) {
  if (!*name || strchr(name, ' ')) return false;
  if (!list) {
    GLubyte const *const now = glGetString(GL_EXTENSIONS);
    list = now ? strdup(reinterpret_cast<char const *>(now)) : nullptr;
  }
  if (!list) return false;
  size_t const length = strlen(name);
  for (char const *hit = list; (hit = strstr(hit, name)); hit += length)
    if ((hit == list || hit[-1] == ' ') && (hit[length] == ' ' || hit[length] == '\0')) return true;
  return false;
}

int ozSupportLevel(char *&list, char const *extension, char const *what) {
  char const *const version = ozGLVersion();
  if (!version) return 0;
  double number = 0;
  std::from_chars(version, version + strnlen(version, 3), number); // whatever the locale's decimal point
  if (number > 1.0) return 2;
  if (strncmp(version, "1.0", 3) != 0) {
    fprintf(stderr, "Unexpected GL_VERSION string!\n%s is disabled ...\n", what);
    return 0;
  }
  return ozHasExtension(list, extension) ? 1 : 0;
}
