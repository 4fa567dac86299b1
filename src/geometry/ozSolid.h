#ifndef GEOMETRY_OZ_SOLID_H
#define GEOMETRY_OZ_SOLID_H

#include <math.h>

#include "geometry/ozUseMaterials.h"
#include "oz/ozGeometry.h"
#include "oz/ozIsectAction.h"
#include "oz/ozTriStripSet.h"

// What the solids share: the frame of the classes, and how a unit mesh is put where the solid is.

/// Defines a solid but for its fields, its bound and what it draws. Every change makes the bound stale, whatever the
/// bound mode and whichever field, the bound itself included: meant so.
#define OZ_DEFINE_SOLID(Class, Name)                                                                                   \
  OZ_DEFINE_INSTANCES(Class)                                                                                           \
  Class::Class(ozType *type) : ozGeometry(type) {                                                                      \
    initFieldDefaults(_ClassType);                                                                                     \
    calcBound();                                                                                                       \
  }                                                                                                                    \
  Class::Class(Class const &other) : ozGeometry(other) { ozCopyFields(_ClassType, this, &other); }                     \
  Class &Class::operator=(Class const &other) {                                                                        \
    if (this == &other) return *this;                                                                                  \
    ozGeometry::operator=(other);                                                                                      \
    ozAssignFields(_ClassType, this, &other);                                                                          \
    return *this;                                                                                                      \
  }                                                                                                                    \
  Class::~Class() { destroyFieldContents(_ClassType); }                                                                \
  void Class::fieldChanged(short id) {                                                                                 \
    propagateSideEffect(0);                                                                                            \
    touchField(id);                                                                                                    \
  }                                                                                                                    \
  void Class::cleanSideEffect(short id) {                                                                              \
    if (id != 0) {                                                                                                     \
      ozContainer::cleanSideEffect(id);                                                                                \
      return;                                                                                                          \
    }                                                                                                                  \
    calcBound();                                                                                                       \
    touchField(0);                                                                                                     \
  }                                                                                                                    \
  OZ_DEFINE_TYPE(Class, Name, ozGeometry)

/// Where unit meshes go, and how large. A solid of the mesh's own size and place costs no matrix.
struct ozPlacement {
  ozPlacement(ozVec3f const &place, float scaleSideways, float scaleUp)
      : center(place), sideways(scaleSideways), up(scaleUp), scaled(sideways != 1.0f || up != 1.0f),
        moved(place[0] != 0.0f || place[1] != 0.0f || place[2] != 0.0f) {}

  ozVec3f const center;
  float const sideways; ///< the scale along x and z
  float const up;       ///< the scale along y
  bool const scaled;
  bool const moved;

  template <class Draw> void draw(ozContext *context, Draw drawMeshes) const {
    if (!scaled && !moved) {
      drawMeshes();
      return;
    }
    context->pushMatrix();
    if (moved) context->translate(center[0], center[1], center[2]);
    if (scaled) {
      context->scale(sideways, up, sideways);
      unsigned char const normalize = context->getNormalizeEnable();
      context->setNormalizeEnable(1);
      drawMeshes();
      context->setNormalizeEnable(normalize);
    } else {
      drawMeshes();
    }
    context->popMatrix();
  }

  /// Tests the meshes, and reports what is hit as a hit on the solid.
  template <class Isect> int isect(ozIsectAction *action, ozGeometry *solid, Isect isectMeshes) const {
    int hit;
    if (!scaled && !moved) {
      hit = isectMeshes();
    } else {
      ozMatrix4f matrix, inverse;
      matrix.makeScale(sideways, up, sideways);
      matrix.setRow(3, center[0], center[1], center[2], 1.0f);
      if (!(fabsf(matrix.det3()) >= OZ_TINY_EPSILON)) return 0; // what is flattened is not hit
      inverse.invertAffine(matrix);
      action->pushMatrix();
      action->multMatrix(matrix, static_cast<ozTransformAction::MatTypeEnum>(2)); // a kind of its own: meant so
      action->pushSeg(inverse);
      hit = isectMeshes();
      action->popSeg(matrix);
      action->popMatrix();
    }
    if (!hit) return 0;
    action->hit.geometry = solid;
    return 1;
  }
};

/// The common bound of cones and cylinders, which looks neither at the centre nor at a top: meant so.
inline void ozBoundRound(ozBoxBound &bound, float radius, float height, unsigned char side, unsigned char bottom) {
  if (!side && !bottom) {
    bound.makeEmpty();
    return;
  }
  float const r = radius * 1.41421354f;
  bound.min.set(-r, height * -0.5f, -r);
  bound.max.set(r, side == 1 ? height * 0.5f : height * -0.5f, r);
}

/// A mesh of triangle strips in the making. The arrays have their final size; they are null, and the mesh is empty,
/// where there is nothing to make or no room to make it.
struct ozMesh {
  /// One normal a vertex, or one for all.
  ozMesh(long long vertices, long long strips, ozGeoSet::NormalBindEnum normalBind);
  /// Tells the set that the arrays are filled.
  ozTriStripSet *finish();

  ozTriStripSet *const set;
  ozVec3f *point;
  ozVec3f *normal;
  ozVec2f *texCoord;
  int *length;
};

#endif
