#ifndef TESTS_SUPPORT_GL_LOOK_UP_H
#define TESTS_SUPPORT_GL_LOOK_UP_H

#include <GL/gl.h>
#include <dlfcn.h>

typedef void (*GLFunction)();

/// The function of OpenGL of a name that stands behind this program's own: the linked one, otherwise what the platform
/// finds.
inline GLFunction lookUpNextGL(char const *name) {
  typedef GLFunction (*LookUp)(GLubyte const *);
  static LookUp const lookUp = reinterpret_cast<LookUp>(dlsym(RTLD_NEXT, "glXGetProcAddressARB"));
  if (void *linked = dlsym(RTLD_NEXT, name)) return reinterpret_cast<GLFunction>(linked);
  return lookUp(reinterpret_cast<GLubyte const *>(name));
}

#endif
