#ifndef GEOMETRY_OZ_LIST_DRAW_H
#define GEOMETRY_OZ_LIST_DRAW_H

#include <GL/gl.h>

#include "oz/ozCompileAction.h"
#include "oz/ozDrawAction.h"
#include "oz/ozGeoSet.h"

// Drawing through a display list, for the two classes that have one. A list holds what drawGeometry sends, with the
// culling of the frame that recorded it; the start of the draw stays outside.
struct ozListDraw {
  template <class Set> static void compile(Set *set, ozCompileAction *action, ozIntArray const *lengths) {
    unsigned int const list = static_cast<unsigned int>(set->_listId);
    if (set->_listId < 0)
      set->_listId = ozContext::newId(1);
    else
      glDeleteLists(list, 1);
    if (action->getUncompile()) return;
    ozGLAttrSet attrs;
    int const open = set->openDraw(attrs, action->getContext(), Set::PrimKind, lengths);
    glNewList(static_cast<unsigned int>(set->_listId), GL_COMPILE);
    if (open) set->drawGeometry(attrs, action->getDrawAction());
    glEndList();
  }

  template <class Set> static void draw(Set *set, ozDrawAction *action, ozIntArray const *lengths) {
    ozGLAttrSet attrs;
    ozContext *const context = action->getContext();
    if (!set->openDraw(attrs, context, Set::PrimKind, lengths)) return;
    if (set->_listId < 1) {
      set->drawGeometry(attrs, action);
      return;
    }
    unsigned int const list = static_cast<unsigned int>(set->_listId);
    if (context->isDirty(set->_listId, static_cast<int>(set->_version))) {
      glDeleteLists(list, 1);
      glNewList(list, GL_COMPILE);
      set->drawGeometry(attrs, action);
      glEndList();
    }
    glCallList(list);
  }

  template <class Set> static void release(Set *set) {
    if (set->_listId <= 0) return;
    glDeleteLists(static_cast<unsigned int>(set->_listId), 1);
    ozContext::freeId(set->_listId, 1);
  }
};

/// Defines the drawing of such a class, its destructor and what a change of its lengths does.
#define OZ_DEFINE_LIST_DRAW(Class, lengths)                                                                            \
  Class::~Class() {                                                                                                    \
    ozListDraw::release(this);                                                                                         \
    destroyFieldContents(_ClassType);                                                                                  \
  }                                                                                                                    \
  void Class::fieldChanged(short id) {                                                                                 \
    if (id != 15) {                                                                                                    \
      ozGeoSet::fieldChanged(id);                                                                                      \
      return;                                                                                                          \
    }                                                                                                                  \
    lengthsChanged(id);                                                                                                \
    ++_version;                                                                                                        \
  }                                                                                                                    \
  void Class::compile(ozCompileAction *action) { ozListDraw::compile(this, action, lengths); }                         \
  void Class::draw(ozDrawAction *action) { ozListDraw::draw(this, action, lengths); }                                  \
  void Class::drawGeometry(ozGLAttrSet &attrs, ozDrawAction *action) {                                                 \
    if (action && action->getBPCullMode() != ozDrawAction::NO_BPC)                                                     \
      drawGeometryWithBpc(attrs, action);                                                                              \
    else                                                                                                               \
      drawGeometryWithoutBpc(attrs);                                                                                   \
  }                                                                                                                    \
  void Class::drawGeometryWithBpc(ozGLAttrSet &attrs, ozDrawAction *action) {                                          \
    drawPrims(attrs, PrimKind, lengths, action);                                                                       \
  }                                                                                                                    \
  void Class::drawGeometryWithoutBpc(ozGLAttrSet &attrs) { drawPrims(attrs, PrimKind, lengths, nullptr); }

#endif
