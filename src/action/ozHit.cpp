#include "oz/ozHit.h"

OZ_DEFINE_TYPE(ozHit, "Hit", ozObject) {}

ozHit::ozHit() : ozHit(getClassType()) {}

ozHit::ozHit(ozType *type) : ozObject(type), path(8), primIndex(0), geometry(nullptr), shape(nullptr), distance(0) {
  ray.setLength(0);
}

ozHit::ozHit(ozHit const &other) : ozObject(other), path(8) { *this = other; }

// The record is copied, not the object's header: who holds this hit still does.
ozHit &ozHit::operator=(ozHit const &other) {
  path.set(other.path);
  ray = other.ray;
  worldPoint = other.worldPoint;
  localPoint = other.localPoint;
  worldNormal = other.worldNormal;
  localNormal = other.localNormal;
  matrix = other.matrix;
  primIndex = other.primIndex;
  geometry = other.geometry;
  shape = other.shape;
  distance = other.distance;
  return *this;
}

ozHit::~ozHit() = default;

void ozHit::reset() {
  geometry = nullptr;
  shape = nullptr;
  path.setCount(0);
}
