#include "oz/ozPlane.h"

#include "oz/ozSeg.h"

#include <cmath>

void ozPlane::makeNormPt(ozVec3f const &n, ozVec3f const &point) {
  ozVec3f const p = point; // either may be our own normal
  normal = n;
  normal.normalize();
  offset = normal.dot(p);
}

void ozPlane::makePts(ozVec3f const &a, ozVec3f const &b, ozVec3f const &c) {
  ozVec3f ab, ac, n;
  ab.sub(b, a);
  ac.sub(c, a);
  n.cross(ab, ac);
  makeNormPt(n, a);
}

void ozPlane::closestPtOn(ozVec3f const &p, ozVec3f &out) const {
  ozVec3f t;
  t.addScaled(p, -offset, normal);
  out.addScaled(p, -t.dot(normal), normal);
}

void ozPlane::orthoXform(ozPlane const *plane, ozMatrix4f const &m) {
  ozVec3f n, point;
  n.xformVec(plane->normal, m);
  point.scale(plane->offset, plane->normal);
  point.xformPt(point, m);
  makeNormPt(n, point);
}

int ozPlane::contains(ozVec3f const &point) const { return offset >= normal.dot(point); }

int ozPlane::contains(ozSphereBound const *sphere) const {
  float d = normal.dot(sphere->center) - offset;
  if (d > sphere->radius || sphere->radius < 0) return 0;
  return d < -sphere->radius ? 7 : 3;
}

int ozPlane::contains(ozBoxBound const *box) const {
  if (box->min._v[0] > box->max._v[0]) return 0;
  ozVec3f nearest, farthest; // the corners against the normal and along it
  for (int i = 0; i < 3; i++) {
    bool const rising = normal._v[i] >= 0;
    nearest._v[i] = rising ? box->min._v[i] : box->max._v[i];
    farthest._v[i] = rising ? box->max._v[i] : box->min._v[i];
  }
  if (!ozPlane::contains(nearest)) return 0;
  // Most boxes are far from the plane, so this spares their other corners.
  if (ozPlane::contains(farthest) && !box->ozBoxBound::isEmpty()) return 7;
  // Where the normal has no component either end of the box is nearest; they differ if one of them is infinite.
  auto isNearest = [&](int corner) {
    for (int i = 0; i < 3; i++)
      if (!(corner >> i & 1 ? normal._v[i] <= 0 : normal._v[i] >= 0)) return false;
    return true;
  };
  int inside = 0;
  for (int corner = 0; corner < 8; corner++) {
    if (ozPlane::contains(ozVec3f((corner & 1 ? box->max : box->min)._v[0], (corner & 2 ? box->max : box->min)._v[1],
                                  (corner & 4 ? box->max : box->min)._v[2])))
      inside++;
    else if (isNearest(corner))
      return 0;
  }
  return inside >= 6 ? 7 : 3; // six and not eight: meant
}

int ozPlane::isect(ozSeg const *seg, float *t) const {
  float const denominator = normal.dot(seg->getDirection());
  if (std::fabs(denominator) < OZ_TINY_EPSILON) {
    *t = 0;
    return 0;
  }
  *t = -(normal.dot(seg->getOrigin()) - offset) / denominator;
  return *t >= 0 && *t <= seg->getLength();
}

int ozPlane::isect(ozSeg const *seg, float *t0, float *t1) const {
  ozVec3f end;
  end.addScaled(seg->getOrigin(), seg->getLength(), seg->getDirection());
  int flags = 0;
  if (contains(seg->getOrigin())) flags += ozBound::BOUND_START_IN;
  if (contains(end)) flags += ozBound::BOUND_END_IN;
  if (flags == 0) return 0;
  if (t0) {
    *t0 = 0;
    *t1 = seg->getLength();
  }
  if (flags == 24) return 31;
  float crossing;
  if (t0 && isect(seg, &crossing)) *(flags & ozBound::BOUND_START_IN ? t1 : t0) = crossing;
  return flags + 3;
}
