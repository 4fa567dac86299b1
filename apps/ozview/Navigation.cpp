#include "Navigation.h"
#include <algorithm>
#include <cmath>

namespace {

float const radians = 0.017453292f;
float const verticalView = 40 * radians; // the angle that the picture's height spans
float const margin = 1.06f;              // how much more than the scene the framed picture shows

float tanHalfHeight() { return std::tan(verticalView / 2); }

ozVec3f cornerOf(ozBoxBound const &box, int i) {
  return ozVec3f((i & 1 ? box.max : box.min)._v[0], (i & 2 ? box.max : box.min)._v[1],
                 (i & 4 ? box.max : box.min)._v[2]);
}

float dot(ozVec3f const &a, ozVec3f const &b) { return a._v[0] * b._v[0] + a._v[1] * b._v[1] + a._v[2] * b._v[2]; }

ozVec3f sum(ozVec3f const &a, ozVec3f const &b, float factor) {
  return ozVec3f(a._v[0] + b._v[0] * factor, a._v[1] + b._v[1] * factor, a._v[2] + b._v[2] * factor);
}

} // namespace

Navigation::Navigation(float azimuth, float elevation)
    : _firstAzimuth(azimuth), _firstElevation(elevation), _azimuth(azimuth), _elevation(elevation), _centre(0, 0, 0),
      _distance(1) {}

ozVec3f Navigation::right() const { return ozVec3f(std::cos(_azimuth * radians), 0, -std::sin(_azimuth * radians)); }

ozVec3f Navigation::up() const {
  float const a = _azimuth * radians, e = _elevation * radians;
  return ozVec3f(-std::sin(a) * std::sin(e), std::cos(e), -std::cos(a) * std::sin(e));
}

ozVec3f Navigation::back() const {
  float const a = _azimuth * radians, e = _elevation * radians;
  return ozVec3f(std::sin(a) * std::cos(e), std::sin(e), std::cos(a) * std::cos(e));
}

ozVec3f Navigation::eye() const { return sum(_centre, back(), _distance); }

void Navigation::frame(ozBoxBound const &box, std::vector<ozVec3f> const &outline, float aspect) {
  _centre = box.isEmpty() ? ozVec3f(0, 0, 0) : sum(box.min, sum(box.max, box.min, -1), 0.5f);
  // Each point says how far away the eye must be to have it just in view.
  float const tall = tanHalfHeight() / margin, wide = tall * aspect;
  _distance = 0;
  for (ozVec3f const &point : outline) {
    ozVec3f const offset = sum(point, _centre, -1);
    float const beside = std::max(std::fabs(dot(offset, right())) / wide, std::fabs(dot(offset, up())) / tall);
    _distance = std::max(_distance, dot(offset, back()) + beside);
  }
  if (!(_distance > 0 && _distance < 1e9f)) _distance = 5; // nothing to see
}

void Navigation::reset() {
  _azimuth = _firstAzimuth;
  _elevation = _firstElevation;
}

void Navigation::turn(float right, float up) {
  _azimuth = std::remainder(_azimuth - right * 180, 360.0f);
  _elevation = std::clamp(_elevation - up * 180, -90.0f, 90.0f);
}

void Navigation::pan(float toRight, float toUp) {
  float const height = 2 * _distance * tanHalfHeight();
  _centre = sum(sum(_centre, right(), -toRight * height), up(), -toUp * height);
}

void Navigation::zoom(float factor) { _distance = std::clamp(_distance * factor, 1e-6f, 1e9f); }

void Navigation::place(ozPerspCamera *camera, ozBoxBound const &box, float aspect) const {
  camera->setPosition(eye());

  // The rotation about Y by the azimuth after the one about X by minus the elevation, as a quaternion.
  float const a = _azimuth * radians / 2, e = -_elevation * radians / 2;
  float const x = std::cos(a) * std::sin(e), y = std::sin(a) * std::cos(e), z = -std::sin(a) * std::sin(e);
  float const w = std::cos(a) * std::cos(e), length = std::sqrt(x * x + y * y + z * z);
  if (length > 0)
    camera->setOrientation(x / length, y / length, z / length, 2 * std::atan2(length, w));
  else
    camera->setOrientation(0, 0, 1, 0);

  float near = _distance, far = _distance;
  for (int i = 0; i < 8 && !box.isEmpty(); i++) {
    float const depth = _distance - dot(sum(cornerOf(box, i), _centre, -1), back());
    near = std::min(near, depth);
    far = std::max(far, depth);
  }
  far = std::max(far * 1.01f, _distance * 0.02f);
  near = std::max(near * 0.99f, far / 2000); // 24 bits of depth still tell the parts of a small scene apart
  camera->setVertFOV(verticalView);
  camera->setHorizFOV(2 * std::atan(tanHalfHeight() * aspect));
  camera->setNearClip(near);
  camera->setFarClip(far);
}
