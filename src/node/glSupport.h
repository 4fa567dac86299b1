#ifndef OZ_NODE_GL_SUPPORT_H
#define OZ_NODE_GL_SUPPORT_H

/// @file
/// What the groups around a piece of raster state ask of the OpenGL at hand.

/// The version string of the current rendering context; null without one.
char const *ozGLVersion();

/// Whether the list of extensions names one, as a whole word. A copy of the list, taken at the first question, stays in
/// `list`: the string itself goes with the rendering context.
bool ozHasExtension(char *&list, char const *name);

/// The support level of something that OpenGL has from version 1.1 on, and an extension for 1.0: 2, 1, or 0 for none.
/// A version that is neither is complained of, with what is disabled.
int ozSupportLevel(char *&list, char const *extension, char const *what);

#endif
