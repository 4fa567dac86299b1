#ifndef OZ_GL_ATTR_H
#define OZ_GL_ATTR_H

/// One vertex attribute as the drawing code sees it: where the elements lie and how OpenGL takes one. Lives for the
/// length of one draw call; the cursors advance while primitives are sent.
struct ozGLAttr {
  char *data;                   ///< first element; a cursor while there is no index
  int *index;                   ///< cursor into an index array, or null
  int type;                     ///< OpenGL's component type
  short stride;                 ///< bytes from one element to the next
  short size;                   ///< number of components
  void (*glFunc)(void const *); ///< the OpenGL call that sends one element
};

/// The four attributes of one draw call. Its cursors are used up by drawing: a second pass needs a fresh one.
struct ozGLAttrSet {
  ozGLAttr color;
  ozGLAttr normal;
  ozGLAttr texCoord;
  ozGLAttr coord;
};

#endif
