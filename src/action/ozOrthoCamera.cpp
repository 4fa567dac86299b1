#include "oz/ozCamera.h"
#include "oz/ozSFByte.h"

OZ_DEFINE_INSTANCES(ozOrthoCamera)

OZ_DEFINE_TYPE(ozOrthoCamera, "OrthoCamera", ozCamera) {
  ozSFFloat::addTypeField(type, "width", 2, 1, &ozOrthoCamera::_width);
  ozSFFloat::addTypeField(type, "height", 3, 1, &ozOrthoCamera::_height);
  ozSFVec2f::addTypeField(type, "center", 4, ozVec2f(0, 0), &ozOrthoCamera::_center);
  ozSFFloat::addTypeField(type, "nearClip", 5, 1, &ozOrthoCamera::_nearClip);
  ozSFFloat::addTypeField(type, "farClip", 6, 1000, &ozOrthoCamera::_farClip);
  ozSFEnum::addTypeField(type, "aspectMode", 7, ozFrustum::FREE_ASPECT, &ozOrthoCamera::_aspectMode);
  ozSFFloat::addTypeField(type, "aspectRatio", 8, 1, &ozOrthoCamera::_aspectRatio);
}

ozOrthoCamera::ozOrthoCamera(ozType *type) : ozCamera(type) {
  initFieldDefaults(_ClassType);
  makeOrtho();
  _frustum.setNearFar(_nearClip, _farClip);
}

ozOrthoCamera::~ozOrthoCamera() { destroyFieldContents(_ClassType); }

void ozOrthoCamera::makeOrtho() {
  float const w = _width * 0.5f, h = _height * 0.5f;
  _frustum.makeOrtho(_center[0] - w, _center[0] + w, _center[1] - h, _center[1] + h);
}

void ozOrthoCamera::fieldChanged(short id) {
  if (id < _ClassType->getAncestorFieldCount()) return ozCamera::fieldChanged(id);
  float near, far;
  _frustum.getNearFar(near, far);
  switch (id) {
  case 2:
  case 3:
  case 4:
    makeOrtho();
    break;
  case 5:
    _frustum.setNearFar(_nearClip, far);
    break;
  case 6:
    _frustum.setNearFar(near, _farClip);
    break;
  case 7:
    _frustum.setAspectMode(_aspectMode);
    break;
  case 8:
    _frustum.setAspectRatio(_aspectRatio);
    break;
  }
  touchField(id);
}
