// What is sent to OpenGL for a set, a primitive and a vertex. Each combination of attributes has a function of its own,
// which a table picks once a draw, so that no vertex asks how its attributes are bound. Cursors advance as they send.

#include <string.h>

#include <GL/gl.h>

#include "gfx/ozStipple.h"
#include "oz/ozGeoSet.h"

namespace {

inline void send(ozGLAttr const &attr) {
  attr.glFunc(attr.index ? attr.data + static_cast<ptrdiff_t>(attr.stride) * *attr.index : attr.data);
}

template <bool ADVANCE> inline void sendNext(ozGLAttr &attr) {
  send(attr);
  if (!ADVANCE) return;
  if (attr.index)
    ++attr.index;
  else
    attr.data += attr.stride;
}

// The fourth float is taken at the data cursor, never through the index, and whether or not the colours have four. It
// counts as transparency: 1 picks the empty pattern. All of it meant so.
void setStipple(ozGLAttr const &color) {
  float alpha;
  memcpy(&alpha, color.data + 3 * sizeof(float), sizeof alpha);
  glPolygonStipple(reinterpret_cast<GLubyte const *>(ozDitherStipple(alpha)));
}

// For a set (ADVANCE false) or a primitive: the normal, then the colour.
template <bool ADVANCE, bool N, bool C, bool DOOR> inline void sendForPrim(ozGLAttrSet &attrs) {
  if (N) sendNext<ADVANCE>(attrs.normal);
  if (C && DOOR) setStipple(attrs.color);
  if (C) sendNext<ADVANCE>(attrs.color);
}

// For a vertex: the coordinate comes last, because it is what emits the vertex.
template <bool C, bool N, bool T> inline void sendForVertex(ozGLAttrSet &attrs) {
  if (C) sendNext<true>(attrs.color);
  if (N) sendNext<true>(attrs.normal);
  if (T) sendNext<true>(attrs.texCoord);
  sendNext<true>(attrs.coord);
}

// Nothing resets these states after the draw; every draw through arrays sets all four.
template <bool C, bool N, bool T> inline void setArrays(ozGLAttrSet const &attrs) {
  if (C) {
    glEnableClientState(GL_COLOR_ARRAY);
    glColorPointer(attrs.color.size, static_cast<GLenum>(attrs.color.type), attrs.color.stride, attrs.color.data);
  } else {
    glDisableClientState(GL_COLOR_ARRAY);
  }
  if (N) {
    glEnableClientState(GL_NORMAL_ARRAY);
    glNormalPointer(static_cast<GLenum>(attrs.normal.type), attrs.normal.stride, attrs.normal.data);
  } else {
    glDisableClientState(GL_NORMAL_ARRAY);
  }
  if (T) {
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glTexCoordPointer(attrs.texCoord.size, static_cast<GLenum>(attrs.texCoord.type), attrs.texCoord.stride,
                      attrs.texCoord.data);
  } else {
    glDisableClientState(GL_TEXTURE_COORD_ARRAY);
  }
  glEnableClientState(GL_VERTEX_ARRAY);
  glVertexPointer(attrs.coord.size, static_cast<GLenum>(attrs.coord.type), attrs.coord.stride, attrs.coord.data);
}

} // namespace

// ---- the functions by name

#define OZ_PRIM_FUNCTION(name, advance, n, c, door)                                                                    \
  void ozGeoSet::name(ozGLAttrSet &attrs) { sendForPrim<advance, n, c, door>(attrs); }
#define OZ_VERTEX_FUNCTIONS(suffix, c, n, t)                                                                           \
  void ozGeoSet::perVertDraw##suffix(ozGLAttrSet &attrs) { sendForVertex<c, n, t>(attrs); }                            \
  void ozGeoSet::vertArrayDraw##suffix(ozGLAttrSet &attrs) { setArrays<c, n, t>(attrs); }

void ozGeoSet::overallDraw0(ozGLAttrSet &) {}
OZ_PRIM_FUNCTION(overallDrawN, false, true, false, false)
OZ_PRIM_FUNCTION(overallDrawC, false, false, true, false)
OZ_PRIM_FUNCTION(overallDrawCN, false, true, true, false)
OZ_PRIM_FUNCTION(overallDrawCScrDoor, false, false, true, true)
OZ_PRIM_FUNCTION(overallDrawCNScrDoor, false, true, true, true)
void ozGeoSet::perPrimDraw0(ozGLAttrSet &) {}
OZ_PRIM_FUNCTION(perPrimDrawN, true, true, false, false)
OZ_PRIM_FUNCTION(perPrimDrawC, true, false, true, false)
OZ_PRIM_FUNCTION(perPrimDrawCN, true, true, true, false)
OZ_PRIM_FUNCTION(perPrimDrawCScrDoor, true, false, true, true)
OZ_PRIM_FUNCTION(perPrimDrawCNScrDoor, true, true, true, true)
OZ_VERTEX_FUNCTIONS(0, false, false, false)
OZ_VERTEX_FUNCTIONS(T, false, false, true)
OZ_VERTEX_FUNCTIONS(N, false, true, false)
OZ_VERTEX_FUNCTIONS(NT, false, true, true)
OZ_VERTEX_FUNCTIONS(C, true, false, false)
OZ_VERTEX_FUNCTIONS(CT, true, false, true)
OZ_VERTEX_FUNCTIONS(CN, true, true, false)
OZ_VERTEX_FUNCTIONS(CNT, true, true, true)

ozGeoSet::DrawFunction ozGeoSet::OverallSwitch[4] = {&ozGeoSet::overallDraw0, &ozGeoSet::overallDrawN,
                                                     &ozGeoSet::overallDrawC, &ozGeoSet::overallDrawCN};
ozGeoSet::DrawFunction ozGeoSet::PerPrimSwitch[4] = {&ozGeoSet::perPrimDraw0, &ozGeoSet::perPrimDrawN,
                                                     &ozGeoSet::perPrimDrawC, &ozGeoSet::perPrimDrawCN};
ozGeoSet::DrawFunction ozGeoSet::PerVertSwitch[8] = {
    &ozGeoSet::perVertDraw0, &ozGeoSet::perVertDrawT,  &ozGeoSet::perVertDrawN,  &ozGeoSet::perVertDrawNT,
    &ozGeoSet::perVertDrawC, &ozGeoSet::perVertDrawCT, &ozGeoSet::perVertDrawCN, &ozGeoSet::perVertDrawCNT};
ozGeoSet::DrawFunction const ozGeoSet::VertArraySwitch[8] = {
    &ozGeoSet::vertArrayDraw0, &ozGeoSet::vertArrayDrawT,  &ozGeoSet::vertArrayDrawN,  &ozGeoSet::vertArrayDrawNT,
    &ozGeoSet::vertArrayDrawC, &ozGeoSet::vertArrayDrawCT, &ozGeoSet::vertArrayDrawCN, &ozGeoSet::vertArrayDrawCNT};
