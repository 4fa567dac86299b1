#include <cmath>

#include "oz/ozCamera.h"
#include "oz/ozSFByte.h"

OZ_DEFINE_INSTANCES(ozPerspCamera)

OZ_DEFINE_TYPE(ozPerspCamera, "PerspCamera", ozCamera) {
  ozSFFloat::addTypeField(type, "horizFOV", 2, 0.7853982f, &ozPerspCamera::_horizFOV);
  ozSFFloat::addTypeField(type, "vertFOV", 3, 0.7853982f, &ozPerspCamera::_vertFOV);
  ozSFFloat::addTypeField(type, "horizFOVOff", 4, 0, &ozPerspCamera::_horizFOVOff);
  ozSFFloat::addTypeField(type, "vertFOVOff", 5, 0, &ozPerspCamera::_vertFOVOff);
  ozSFFloat::addTypeField(type, "nearClip", 6, 1, &ozPerspCamera::_nearClip);
  ozSFFloat::addTypeField(type, "farClip", 7, 1000, &ozPerspCamera::_farClip);
  ozSFEnum::addTypeField(type, "aspectMode", 8, ozFrustum::FREE_ASPECT, &ozPerspCamera::_aspectMode);
  ozSFFloat::addTypeField(type, "aspectRatio", 9, 1, &ozPerspCamera::_aspectRatio);
}

ozPerspCamera::ozPerspCamera(ozType *type) : ozCamera(type) {
  initFieldDefaults(_ClassType);
  float const t = std::tan(0.39269909f);
  _frustum.makePersp(-t, t, -t, t);
  _frustum.setNearFar(1, 1000);
}

ozPerspCamera::~ozPerspCamera() { destroyFieldContents(_ClassType); }

void ozPerspCamera::fieldChanged(short id) {
  if (id < _ClassType->getAncestorFieldCount()) return ozCamera::fieldChanged(id);
  float left, right, bottom, top, near, far;
  _frustum.getDiagCorners(&left, &right, &bottom, &top, &near, &far);
  switch (id) {
  case 2:
  case 4: {
    float const half = _horizFOV * 0.5f;
    right = -(std::tan(_horizFOVOff - half) * near);
    left = -(std::tan(_horizFOVOff + half) * near);
    _frustum.makePersp(left, right, bottom, top);
    break;
  }
  case 3:
  case 5: {
    float const half = _vertFOV * 0.5f;
    top = std::tan(_vertFOVOff + half) * near;
    bottom = std::tan(_vertFOVOff - half) * near;
    _frustum.makePersp(left, right, bottom, top);
    break;
  }
  case 6:
    _frustum.setNearFar(_nearClip, far);
    break;
  case 7:
    _frustum.setNearFar(near, _farClip);
    break;
  case 8:
    _frustum.setAspectMode(_aspectMode);
    break;
  case 9:
    _frustum.setAspectRatio(_aspectRatio);
    break;
  }
  touchField(id);
}
