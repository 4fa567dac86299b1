// What is sent to OpenGL for a set, a primitive and a vertex. Each combination of attributes has a function of its own,
// which a table picks once a draw, so that no vertex asks how its attributes are bound. Cursors advance as they send.

#include <string.h>

#include <GL/gl.h>

#include "gfx/ozStipple.h"
#include "oz/ozData.h"
#include "oz/ozGeoSet.h"
#include "oz/ozMaterial.h"

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

// Whether a fourth float stands behind each of the colours. Only a tight view on shared data may have none behind the
// last: such colours are drawn without a stipple.
bool hasFourthFloats(ozColorSet *set) {
  if (!set->isOfType(ozColorSet3f::getClassType())) return true;
  ozVec3fArray const &colors = static_cast<ozColorSet3f *>(set)->color()->get();
  if (!colors.getData() || !colors.getCount()) return true;
  size_t const last = colors.getOffset() + static_cast<size_t>(colors.getStride()) * (colors.getCount() - 1);
  return last + 4 * sizeof(float) <= static_cast<size_t>(colors.getData()->getSize());
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

// ---- the start of a draw

template <class Set> inline void ozGeoSet::describe(Set *set, ozIndexSet *indexSet, ozGLAttr &attr) {
  set->cleanFields();
  set->getGLAttr(attr);
  attr.index = indexSet ? indicesOf(indexSet) : nullptr;
}

void ozGeoSet::beginDraw(ozGLAttrSet &attrs, ozContext *context) {
  setContextWhichSetStateAsCurrentState(context);
  cleanFields();
  bool const kept = recallDescription(attrs);
  if (!kept && _texCoordBindNow) describe(_texCoordSet, _texCoordIndexSet, attrs.texCoord);
  if (!kept && _normalBindNow) describe(_normalSet, _normalIndexSet, attrs.normal);
  if (_colorBindNow) {
    if (!kept) describe(_colorSet, _colorIndexSet, attrs.color);
    bool door = context->getTranspEnable() && (context->getTranspMode() == ozContext::FAST_TRANSP ||
                                               context->getTranspMode() == ozContext::SCREEN_DOOR_TRANSP);
    if (door) {
      ozMaterial::getClassType(); // its registration builds the patterns
      door = hasFourthFloats(_colorSet);
    }
    OverallSwitch[2] = door ? &ozGeoSet::overallDrawCScrDoor : &ozGeoSet::overallDrawC;
    OverallSwitch[3] = door ? &ozGeoSet::overallDrawCNScrDoor : &ozGeoSet::overallDrawCN;
    PerPrimSwitch[2] = door ? &ozGeoSet::perPrimDrawCScrDoor : &ozGeoSet::perPrimDrawC;
    PerPrimSwitch[3] = door ? &ozGeoSet::perPrimDrawCNScrDoor : &ozGeoSet::perPrimDrawCN;
  } else if (context->getMaterialModeEnable()) {
    glColor4f(1, 1, 1, 1);
  }
  context->setCullFace(_setMask.getBit(ozContext::CULL_FACE_ITEM) ? _cullFace
                                                                  : getContextDefaultStateCullFace(context));
  if (!kept && _coordSet) describe(_coordSet, _coordIndexSet, attrs.coord);
  setContextWhichSetStateAsDefaultState(context);
}
