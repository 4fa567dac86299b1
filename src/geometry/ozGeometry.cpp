#include "oz/ozGeometry.h"

#include <math.h>

#include "geometry/ozHitNormal.h"
#include "oz/ozIsectAction.h"
#include "oz/ozSFByte.h"

OZ_DEFINE_ABSTRACT_CLASS(ozGeometry, "Geometry", ozContainer) {
  static char const *const names[] = {"STATIC", "DYNAMIC"};
  static int const values[] = {STATIC, DYNAMIC};
  ozSFBoxBound::addTypeField(type, "boxBound", 0, ozBoxBound(), &ozGeometry::_boxBound);
  ozSFEnum::addTypeField(type, "boundMode", 1, DYNAMIC, &ozGeometry::_boundMode);
  type->defineEnums(1, 2, names, values);
}

ozGeometry::ozGeometry(ozGeometry const &other) : ozGeometry(other.getType()) {
  ozCopyFields(_ClassType, this, &other);
}

ozGeometry &ozGeometry::operator=(ozGeometry const &other) {
  if (this != &other) ozAssignFields(_ClassType, this, &other);
  return *this;
}

void ozGeometry::fieldChanged(short id) {
  if (id < _ClassType->getAncestorFieldCount()) {
    ozContainer::fieldChanged(id);
    return;
  }
  if (id == 0) {
    settleSideEffect(0); // a pending recomputation must not replace what is stored now
    notifyParents(0);
  }
  touchField(id);
}

void ozGeometry::getBoxBound(ozBoxBound &bound) {
  validateField(0);
  bound.min = _boxBound.min;
  bound.max = _boxBound.max;
}

void ozGeometry::setBoxBound(ozBoxBound const &bound) {
  _boxBound.min = bound.min;
  _boxBound.max = bound.max;
  fieldChanged(0);
}

void ozGeometry::setContextWhichSetStateAsCurrentState(ozContext *context) {
  context->_whichSetState = context->_curState;
}
void ozGeometry::setContextWhichSetStateAsDefaultState(ozContext *context) {
  context->_whichSetState = context->_defaultState;
}
float ozGeometry::getContextDefaultLineWidth(ozContext *context) { return context->getDefaultState().lineWidth; }
float ozGeometry::getContextDefaultPointSize(ozContext *context) { return context->getDefaultState().pointSize; }
ozContext::CullFaceEnum ozGeometry::getContextDefaultStateCullFace(ozContext *context) {
  return context->getDefaultState().cullFace;
}

void ozGeometry::compile(ozCompileAction *) {}

// ---- rays

int ozGeometry::isectBox(ozIsectAction *action) const {
  return _boxBound.isect(action->getActiveSeg(), nullptr, nullptr);
}

int ozGeometry::isect(ozIsectAction *action) {
  cleanFields();
  if (!isectBox(action)) return 0;
  action->hitGeometry(this); // at the end of the segment, which nothing shortens: meant so
  return 1;
}

void ozGeometry::cacheTri(ozTriCache *cache, ozVec3f const &a, ozVec3f const &b, ozVec3f const &c) const {
  ozVec3f ab, ac;
  ab.sub(b, a);
  ac.sub(c, a);
  ozVec3f &normal = cache->plane.normal;
  normal.cross(ab, ac);
  normal.normalize();
  cache->plane.offset = normal.dot(a);

  // The projection along the longest component of the normal keeps the most of the area; ties go to the later test.
  float const nx = fabsf(normal[0]), ny = fabsf(normal[1]), nz = fabsf(normal[2]);
  bool const dropX = nx > ny && nx > nz;
  bool const dropY = !(nx > ny) && ny > nz;
  cache->axisU = dropX ? 1 : 0;
  cache->axisV = dropX || dropY ? 2 : 1;

  short const u = cache->axisU, v = cache->axisV;
  float det = ab[u] * ac[v] - ac[u] * ab[v];
  if (fabsf(det) < OZ_TINY_EPSILON) det = OZ_TINY_EPSILON;
  cache->invDet = 1.0f / det;
}

// Plane first, then barycentric coordinates in the projection: Badouel, "An Efficient Ray-Polygon Intersection",
// Graphics Gems, 1990.
int ozGeometry::isectTri(ozIsectAction *action, ozVec3f const &a, ozVec3f const &b, ozVec3f const &c,
                         ozContext::CullFaceEnum cull, int primIndex) const {
  ozTriCache cache;
  cacheTri(&cache, a, b, c);
  ozSeg &seg = *action->getActiveSeg();
  ozVec3f const &normal = cache.plane.normal, &direction = seg.getDirection(), &origin = seg.getOrigin();
  float const dn = normal.dot(direction);
  if (cull == ozContext::BACK_CULL && dn >= 0.0f) return 0;
  if (cull == ozContext::FRONT_CULL && dn <= 0.0f) return 0;
  if (fabsf(dn) < OZ_TINY_EPSILON) return 0;
  float const t = (cache.plane.offset - origin.dot(normal)) / dn;
  if (!(t >= 0.0f && t <= seg.getLength())) return 0;

  short const u = cache.axisU, v = cache.axisV;
  float const pu = direction[u] * t + origin[u] - a[u];
  float const pv = direction[v] * t + origin[v] - a[v];
  float const beta = (pu * (c[v] - a[v]) - pv * (c[u] - a[u])) * cache.invDet;
  if (!(beta >= 0.0f && beta <= 1.0f)) return 0;
  float const gamma = (pv * (b[u] - a[u]) - pu * (b[v] - a[v])) * cache.invDet;
  if (!(gamma >= 0.0f && beta + gamma <= 1.0f)) return 0;

  seg.setLength(t);
  action->hitGeometry(const_cast<ozGeometry *>(this));
  ozSetHitNormal(action->hit, normal);
  action->hit.primIndex = primIndex;
  return 1;
}
