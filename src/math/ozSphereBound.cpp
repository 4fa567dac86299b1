#include "oz/ozBound.h"
#include "oz/ozSeg.h"

#include <cmath>

static float const LARGEST = 3.4028235e38f;
static float const POINT_SIZE = 1.1920929e-07f; // a radius up to this is a point's

static float root(float value) { return static_cast<float>(std::sqrt(static_cast<double>(value))); }

static float square(float value) { return value * value; }

void ozSphereBound::around(ozBoxBound const **boxes, int n) {
  if (n < 1) {
    makeEmpty();
    return;
  }
  ozBoxBound box;
  box.around(boxes, n);
  center.add(box.min, box.max);
  center *= 0.5f;
  ozVec3f half;
  half.sub(box.max, center);
  radius = half[0] < 0 ? -1 : half.length();
}

void ozSphereBound::around(ozVec3f const *points, int n) {
  ozBoxBound box;
  box.around(points, n);
  ozBoxBound const *boxes[1] = {&box};
  around(boxes, 1);
}

namespace {

// The largest sphere; null if there is none.
ozSphereBound const *largest(ozSphereBound const *const *spheres, int n) {
  ozSphereBound const *choice = nullptr;
  float best = -1;
  for (int i = 0; i < n; i++) {
    ozSphereBound const *sphere = spheres[i];
    if (!sphere || !(sphere->radius > best)) continue;
    choice = sphere;
    best = sphere->radius <= POINT_SIZE ? 0 : sphere->radius > LARGEST ? LARGEST : sphere->radius;
  }
  return choice;
}

bool reachesOutOf(ozSphereBound const &outer, ozSphereBound const &sphere) {
  return square(outer.radius - sphere.radius) < outer.center.sqrDistance(sphere.center);
}

ozBoxBound boxOf(ozSphereBound const &sphere) {
  ozSphereBound const *one[1] = {&sphere};
  ozBoxBound box;
  box.around(one, 1);
  return box;
}

} // namespace

// Starts from the largest sphere. If all the others lie in it that is the result, and exactly so. If the last of them
// alone does not, it is extended by that one. Otherwise a box around what follows the first outsider gives the centre,
// and a last pass grows the radius until every sphere is inside.
void ozSphereBound::around(ozSphereBound const **spheres, int n) {
  if (!spheres || n < 1) {
    makeEmpty();
    return;
  }
  if (n == 1) {
    if (spheres[0]) *this = *spheres[0];
    return;
  }
  ozSphereBound const *choice = largest(spheres, n);
  if (!choice) {
    makeEmpty();
    return;
  }
  ozSphereBound result = *choice;
  ozSphereBound const *outsider = nullptr;
  ozBoxBound box;
  bool boxOpen = false;
  for (int i = 0; i < n; i++) {
    ozSphereBound const *sphere = spheres[i];
    if (!sphere || sphere == choice || !(sphere->radius >= 0 && sphere->radius <= LARGEST)) continue;
    if (!outsider) {
      if (reachesOutOf(result, *sphere)) outsider = sphere;
      continue;
    }
    if (!boxOpen) {
      box = boxOf(result);
      ozBoxBound const first = boxOf(*outsider);
      box.extendBy(&first);
      boxOpen = true;
    }
    ozBoxBound const later = boxOf(*sphere);
    box.extendBy(&later);
  }
  if (outsider && !boxOpen) result.extendBy(outsider);
  if (boxOpen) {
    result.center.add(box.min, box.max);
    result.center *= 0.5f;
    ozVec3f extent;
    extent.sub(box.max, box.min);
    result.radius = std::fmax(extent[0], std::fmax(extent[1], extent[2])) * 0.5f;
  }
  for (int i = 0; outsider && i < n; i++) {
    ozSphereBound const *sphere = spheres[i];
    if (!sphere || !(sphere->radius > POINT_SIZE && sphere->radius < LARGEST)) continue;
    if (reachesOutOf(result, *sphere)) result.radius = result.center.distance(sphere->center) + sphere->radius;
  }
  *this = result;
}

void ozSphereBound::extendBy(ozVec3f const &point) {
  ozVec3f const p = point; // it may be our own centre
  if (isEmpty()) {
    center = p;
    radius = 0;
    return;
  }
  ozVec3f d;
  d.sub(center, p);
  float d2 = d.dot(d);
  if (radius * radius >= d2) return;
  float dist = root(d2);
  ozVec3f farPoint;
  farPoint.addScaled(center, radius / dist, d);
  center.add(farPoint, p);
  center *= 0.5f;
  radius = (dist + radius) / 2;
}

void ozSphereBound::extendBy(ozSphereBound const *sphere) {
  if (sphere->isEmpty()) return;
  if (isEmpty()) {
    *this = *sphere;
    return;
  }
  ozVec3f d;
  d.sub(sphere->center, center);
  float d2 = d.dot(d), other = sphere->radius;
  if (!(d2 > OZ_TINY_EPSILON)) {
    if (other > radius) radius = other;
    return;
  }
  if (square(radius - other) >= d2) {
    if (other > radius) *this = *sphere;
    return;
  }
  float dist = root(d2);
  ozVec3f u = d, low, high;
  u /= dist;
  low.addScaled(center, -radius, u);
  high.addScaled(sphere->center, other, u);
  center.add(low, high);
  center *= 0.5f;
  radius = (dist + radius + other) / 2;
}

int ozSphereBound::contains(ozSphereBound const *sphere) const {
  float d2 = center.sqrDistance(sphere->center), other = sphere->radius;
  if (d2 > square(radius + other) || radius < 0 || other < 0) return 0;
  if (other > radius) return BOUND_MAYBE | BOUND_TRUE;
  return square(radius - other) >= d2 ? BOUND_MAYBE | BOUND_TRUE | BOUND_ALL_IN : BOUND_MAYBE | BOUND_TRUE;
}

int ozSphereBound::isect(ozSeg const *seg, float *t0, float *t1) const {
  ozVec3f oc;
  oc.sub(seg->getOrigin(), center);
  float const length = seg->getLength();
  float const b = 2 * seg->getDirection().dot(oc);
  float const discriminant = b * b - 4 * (oc.dot(oc) - radius * radius);
  if (discriminant < 0) return 0;
  float const s = root(discriminant);
  float const a = (-b - s) / 2, c = (s - b) / 2;
  if (a > length || c < 0 || radius < 0) return 0;
  bool const startsIn = a <= 0, endsIn = c >= length;
  if (t0) {
    *t0 = startsIn ? 0 : a;
    *t1 = endsIn ? length : c;
  }
  return BOUND_MAYBE | BOUND_TRUE | (startsIn && endsIn ? BOUND_ALL_IN : 0) | (startsIn ? BOUND_START_IN : 0) |
         (endsIn ? BOUND_END_IN : 0);
}

static float rowSquare(ozMatrix4f const &m, int row) {
  ozVec3f v(m._m[row]);
  return v.dot(v);
}

void ozSphereBound::xform(ozSphereBound const *src, ozMatrix4f const &m) {
  float largest = 1; // not below: a sphere never gets smaller, which is safe for culling. Meant.
  for (int i = 0; i < 3; i++) largest = std::fmax(largest, rowSquare(m, i));
  center.xformPt(src->center, m);
  radius = src->radius * root(largest);
}

void ozSphereBound::orthoXform(ozSphereBound const *src, ozMatrix4f const &m) {
  center.xformPt(src->center, m);
  radius = src->radius * root(rowSquare(m, 0));
}
