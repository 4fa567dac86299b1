#include "oz/ozCamera.h"

#include <GL/gl.h>

#include "oz/ozContext.h"
#include "oz/ozDrawAction.h"
#include "oz/ozIsectAction.h"
#include "oz/ozSFByte.h"

ozIsectAction *ozCamera::_Picker = nullptr;

OZ_DEFINE_CLASS(ozCamera, "Camera", ozContainer) {
  ozSFVec3f::addTypeField(type, "position", 0, ozVec3f(0, 0, 0), &ozCamera::_position);
  ozSFRotation::addTypeField(type, "orientation", 1, ozRotation(0, 0, 1, 0), &ozCamera::_orientation);
}

void ozCamera::setPosition(float x, float y, float z) { store(0, _position, ozVec3f(x, y, z)); }
void ozCamera::setPosition(ozVec3f const &position) { store(0, _position, position); }
void ozCamera::getPosition(float *x, float *y, float *z) { read(0, _position).get(x, y, z); }
void ozCamera::getPosition(ozVec3f &position) { position = read(0, _position); }

void ozCamera::setOrientation(float x, float y, float z, float radians) {
  store(1, _orientation, ozRotation(x, y, z, radians));
}
void ozCamera::setOrientation(ozRotation const &orientation) {
  float x, y, z, radians;
  orientation.get(&x, &y, &z, &radians);
  setOrientation(x, y, z, radians);
}
void ozCamera::getOrientation(float *x, float *y, float *z, float *radians) {
  read(1, _orientation).get(x, y, z, radians);
}
void ozCamera::getOrientation(ozRotation &orientation) { orientation = read(1, _orientation); }

void ozCamera::fieldChanged(short id) {
  if (id == 0 || id == 1) {
    float x, y, z, radians;
    _orientation.get(&x, &y, &z, &radians);
    _viewMatrix.makeRot(x, y, z, -radians);
    _viewMatrix.preTrans(-_position[0], -_position[1], -_position[2], _viewMatrix);
  }
  touchField(id);
}

void ozCamera::draw(ozDrawAction *action) {
  float left, right, bottom, top, near, far;
  _frustum.getDiagCorners(&left, &right, &bottom, &top, &near, &far);
  action->getContext(); // for its effect: the action's context is fixed from here on
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  if (_frustum.getFrustType() != ozFrustum::ORTHOGRAPHIC) {
    glFrustum(left, right, bottom, top, near, far);
  } else {
    float const cx = (left + right) * 0.5f, cy = (bottom + top) * 0.5f;
    float const w = right - left, h = top - bottom;
    glOrtho(cx - w * 0.5f, w * 0.5f + cx, cy - h * 0.5f, h * 0.5f + cy, near, far);
  }
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
  float x, y, z, degrees;
  _orientation.getDegrees(&x, &y, &z, &degrees);
  glRotatef(-degrees, x, y, z);
  glTranslatef(-_position[0], -_position[1], -_position[2]);
}

int ozCamera::pick(ozNode *root, int x, int y, ozHit &hit) {
  ozContext *const context = ozContext::getCurrent();
  if (!context) return 0;
  int vx, vy, vw, vh;
  context->getViewport(vx, vy, vw, vh);
  return pick(root, x, y, hit, vx, vy, vw, vh);
}

int ozCamera::pick(ozNode *root, int x, int y, ozHit &hit, int vx, int vy, int vw, int vh) {
  cleanFields();
  long long const dx = static_cast<long long>(x) - vx, dy = static_cast<long long>(y) - vy;
  if (dx < 0 || dx >= vw || dy < 0 || dy >= vh) return 0;
  if (!_Picker) setPicker(new ozIsectAction);
  if (!_Picker) return 0;

  float left, right, bottom, top, near, far;
  _frustum.getDiagCorners(&left, &right, &bottom, &top, &near, &far);
  float const u = static_cast<float>(dx) / static_cast<float>(vw) - 0.5f;
  float const v = static_cast<float>(dy) / static_cast<float>(vh) - 0.5f;
  ozVec3f origin, direction;
  if (_frustum.getFrustType() != ozFrustum::ORTHOGRAPHIC) {
    // By the right and top corners alone: the offsets of an asymmetric frustum are left out, which is meant.
    direction.set(u * 2 * right, v * 2 * top, -near);
    direction.normalize();
  } else {
    origin.set(u * (right - left) + (left + right) * 0.5f, v * (top - bottom) + (bottom + top) * 0.5f, 0);
    direction.set(0, 0, -1);
  }

  ozMatrix4f toWorld;
  float ax, ay, az, radians;
  _orientation.get(&ax, &ay, &az, &radians);
  toWorld.makeRot(ax, ay, az, radians);
  toWorld.postTrans(toWorld, _position[0], _position[1], _position[2]);
  origin.xformPt(origin, toWorld);
  direction.xformVec(direction, toWorld);

  ozSeg &ray = _Picker->seg;
  ray.setOrigin(origin);
  ray.setDirection(direction);
  ray.setLength(OZ_INFINITY);
  _Picker->apply(root);
  hit = _Picker->hit;
  return hit.isValid();
}

void ozCamera::setPicker(ozIsectAction *picker) {
  if (picker == _Picker) return;
  delete _Picker; // whatever its count: meant
  _Picker = picker;
}

OZ_DEFINE_CLASS(ozFrustumCamera, "FrustumCamera", ozCamera) {}

void ozFrustumCamera::setFrustum(ozFrustum *frustum) { _frustum.copy(frustum); }
