#include <limits.h>

#include "geometry/ozSolid.h"

// Gives a field of a mesh its elements; null where they do not fit.
template <class Field> static typename Field::Value *room(Field *field, long long count) {
  unsigned int const n = static_cast<unsigned int>(count);
  field->setCount(n);
  return field->getSize() >= n ? field->edit() : nullptr;
}

ozMesh::ozMesh(long long vertices, long long strips, ozGeoSet::NormalBindEnum normalBind)
    : set(new ozTriStripSet), point(nullptr), normal(nullptr), texCoord(nullptr), length(nullptr) {
  if (vertices <= 0 || vertices > INT_MAX) return; // a strip's length is an int
  ozCoordSet3f *const coords = new ozCoordSet3f(1);
  ozNormalSet3f *const normals = new ozNormalSet3f(1);
  ozTexCoordSet2f *const texCoords = new ozTexCoordSet2f(1);
  set->setCoordSet(coords);
  set->setNormalSet(normals);
  set->setTexCoordSet(texCoords);
  set->setNormalBind(normalBind);
  set->setTexCoordBind(ozGeoSet::PER_VERTEX_TEX_COORD);
  ozVec3f *const points = room(coords->point(), vertices);
  normal = room(normals->vector(), normalBind == ozGeoSet::OVERALL_NORMAL ? 1 : vertices);
  texCoord = room(texCoords->point(), vertices);
  length = room(set->stripLength(), strips);
  if (!normal || !texCoord || !length) return;
  point = points;
  if (point) set->setPrimCount(static_cast<int>(strips));
}

ozTriStripSet *ozMesh::finish() {
  if (!point) return set;
  static_cast<ozCoordSet3f *>(set->getCoordSet())->point()->editDone();
  static_cast<ozNormalSet3f *>(set->getNormalSet())->vector()->editDone();
  static_cast<ozTexCoordSet2f *>(set->getTexCoordSet())->point()->editDone();
  set->stripLength()->editDone();
  return set;
}
