#include "oz/ozRotation.h"

#include "math/ozFloat.h"
#include "oz/ozMatrix4f.h"

unsigned char ozRotation::almostEqual(ozRotation const &r, float tolerance) const {
  return ozVec4f(_axis[0], _axis[1], _axis[2], _angle)
      .almostEqual(ozVec4f(r._axis[0], r._axis[1], r._axis[2], r._angle), tolerance);
}

void ozRotation::setAxis(ozVec3f const &axis) {
  float length = axis.length();
  if (ozIsSmall(axis))
    _axis = 0;
  else
    _axis.set(axis[0] / length, axis[1] / length, axis[2] / length);
}

void ozRotation::set(ozVec4f const &q) {
  ozVec3f axis(q._v);
  if (ozIsSmall(axis)) {
    makeIdentity();
    return;
  }
  float w = q[3] / q.length();
  setDegrees(axis, ozTwiceAcosDegrees(w));
}

void ozRotation::set(ozVec3f const &from, ozVec3f const &to) {
  ozVec3f a = from, b = to;
  if (!ozIsSmall(a)) a.normalize();
  if (!ozIsSmall(b)) b.normalize();
  float c = a.dot(b);
  if (c > 0.99999f) {
    makeIdentity();
    return;
  }
  ozVec3f axis;
  if (c >= -0.99999f) {
    axis.cross(from, to);
    axis.normalize();
    float angle = ozTwiceAcosDegrees(std::sqrt((c + 1) / 2));
    _axis = axis;
    _angle = angle;
    return;
  }
  for (int i = 0; i < 3; i++) {
    ozVec3f unit;
    unit[i] = 1;
    axis.cross(from, unit);
    if (axis.length() >= OZ_EPSILON) break;
  }
  axis.normalize();
  _axis = axis;
  _angle = 0; // a rotation of nothing, though the vectors are opposite: meant
}

void ozRotation::set(ozMatrix4f const &matrix) { matrix.getOrthoRotation(*this); }

void ozRotation::get(ozVec4f &q) const {
  double half = getAngle() * 0.5;
  float s = static_cast<float>(std::sin(half)), c = static_cast<float>(std::cos(half));
  q.set(_axis[0] * s, _axis[1] * s, _axis[2] * s, c);
}

void ozRotation::get(ozMatrix4f &matrix) const { matrix.makeRot(_axis[0], _axis[1], _axis[2], getAngle()); }

void ozRotation::mult(ozRotation const &a, ozRotation const &b) {
  ozVec4f p, q;
  a.get(p);
  b.get(q);
  p.qProduct(q);
  set(p);
}

void ozRotation::multVec(ozVec3f const &v, ozVec3f &out) const {
  ozVec4f q, product;
  get(q);
  product = q;
  product.qProduct(ozVec4f(v[0], v[1], v[2], 0));
  q.qConjugate();
  product.qProduct(q);
  out.set(product._v);
}

void ozRotation::slerp(float t, ozRotation const &a, ozRotation const &b) {
  ozVec4f p, q;
  a.get(p);
  b.get(q);
  float d = p.dot(q);
  if (d < 0) {
    q.negate(q);
    d = -d;
  }
  float scaleA = 1 - t, scaleB = t;
  if (1 - d >= OZ_EPSILON) {
    // The cosine of d stands where an arc cosine would be expected. Meant: the timing of interpolators depends on it.
    float omega = static_cast<float>(std::cos(static_cast<double>(d)));
    float f = static_cast<float>(1.0 / std::sin(static_cast<double>(omega)));
    scaleA = static_cast<float>(std::sin(static_cast<double>((1 - t) * omega))) * f;
    scaleB = static_cast<float>(std::sin(static_cast<double>(omega * t))) * f;
  }
  p.combine(scaleA, p, scaleB, q);
  set(p);
}

int ozRotation::isIdentity() const { return ozIsSmall(_axis) || _angle == 0; }
