#ifndef GEOMETRY_OZ_DRAW_KIND_H
#define GEOMETRY_OZ_DRAW_KIND_H

#include <GL/gl.h>

#include "oz/ozDrawAction.h"
#include "oz/ozGeoSet.h"

/// Defines how a class chooses whether its primitives are tested, and its two ways to draw them.
#define OZ_DEFINE_DRAW(Class, lengths)                                                                                 \
  void Class::draw(ozDrawAction *action) {                                                                             \
    if (action->getBPCullMode() != ozDrawAction::NO_BPC)                                                               \
      drawWithBpc(action);                                                                                             \
    else                                                                                                               \
      drawWithoutBpc(action);                                                                                          \
  }                                                                                                                    \
  void Class::drawWithBpc(ozDrawAction *action) { drawSet(action->getContext(), PrimKind, lengths, action); }          \
  OZ_DEFINE_PLAIN_DRAW(Class, lengths)

#define OZ_DEFINE_PLAIN_DRAW(Class, lengths)                                                                           \
  void Class::drawWithoutBpc(ozDrawAction *action) { drawSet(action->getContext(), PrimKind, lengths, nullptr); }

/// Defines the drawing of a class that has no culling: the loop with the test stays empty.
#define OZ_DEFINE_UNCULLED_DRAW(Class)                                                                                 \
  void Class::draw(ozDrawAction *action) { drawWithoutBpc(action); }                                                   \
  void Class::drawWithBpc(ozDrawAction *) {}                                                                           \
  OZ_DEFINE_PLAIN_DRAW(Class, nullptr)

/// What counts as set explicitly is carried over by an assignment, too.
#define OZ_DEFINE_SET_ASSIGNMENT(Class)                                                                                \
  Class &Class::operator=(Class const &other) {                                                                        \
    if (this == &other) return *this;                                                                                  \
    ozGeoSet::operator=(other);                                                                                        \
    ozAssignFields(_ClassType, this, &other);                                                                          \
    _setMask = other._setMask;                                                                                         \
    return *this;                                                                                                      \
  }

/// Defines the bound and the length of primitives that all have the same number of vertices, and copies.
#define OZ_DEFINE_FIXED_LENGTH(Class)                                                                                  \
  Class::Class(Class const &other) : ozGeoSet(other) { ozCopyFields(_ClassType, this, &other); }                       \
  OZ_DEFINE_SET_ASSIGNMENT(Class)                                                                                      \
  void Class::calcBound(ozBoxBound &bound) { boundCoords(bound, PrimKind.len, nullptr); }                              \
  int Class::getPrimLen(int) { return PrimKind.len; }

/// Defines the same for primitives with lengths of their own, the field of the lengths, and copies.
#define OZ_DEFINE_LENGTHS(Class, Name, field, member)                                                                  \
  OZ_DEFINE_INSTANCES(Class)                                                                                           \
  Class::Class(ozType *type) : ozGeoSet(type) { init(); }                                                              \
  Class::Class(Class const &other) : ozGeoSet(other) {                                                                 \
    unsigned char const mode = _bpcPrimNormMode;                                                                       \
    init();                                                                                                            \
    _bpcPrimNormMode = mode;                                                                                           \
    ozCopyFields(_ClassType, this, &other);                                                                            \
  }                                                                                                                    \
  OZ_DEFINE_SET_ASSIGNMENT(Class)                                                                                      \
  void Class::calcBound(ozBoxBound &bound) { boundCoords(bound, 0, &member); }                                         \
  int Class::getPrimLen(int prim) {                                                                                    \
    ozIntArray const &lengths = field->get();                                                                          \
    return prim >= 0 && static_cast<unsigned int>(prim) < lengths.getCount()                                           \
               ? lengths[static_cast<unsigned int>(prim)]                                                              \
               : 0;                                                                                                    \
  }                                                                                                                    \
  OZ_DEFINE_TYPE(Class, Name, ozGeoSet)

/// Defines that the culling data can be built from the faces or from the stored normals.
#define OZ_DEFINE_PRIM_NORM_MODE(Class)                                                                                \
  void Class::setBPCullPrimNormModeEnable(unsigned char on) { _bpcPrimNormMode = on; }

#endif
