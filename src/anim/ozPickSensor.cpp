// Who is under the pointer, and who holds the grab. An update gathers the sensors of the lowest group on the hit's path
// that has enabled ones, stamps them with the number of the update, and calls those concerned; a sensor tells from its
// stamp whether the pointer is over it. The lists hold bare pointers, which a sensor's destructor takes out again.

#include "oz/ozPickSensor.h"

#include "oz/ozCamera.h"
#include "oz/ozGroup.h"
#include "oz/ozHit.h"
#include "oz/ozTransform.h"

#include <initializer_list>

ozPtrArray *ozPickSensor::_PrevList = nullptr;
ozPtrArray *ozPickSensor::_PickList = nullptr;
ozPtrArray *ozPickSensor::_GrabList = nullptr;
int ozPickSensor::_Grabbing = 0;
int ozPickSensor::_UpdateFrame = 0;

OZ_DEFINE_TYPE(ozPickSensor, "PickSensor", ozNode) {
  ozSFUByte::addTypeField(type, "enabled", 2, 1, &ozPickSensor::_enabled);
  ozSFUByte::addTypeField(type, "isActive", 3, 0, &ozPickSensor::_isActive);
  _PrevList = new ozPtrArray(4u);
  _PickList = new ozPtrArray(4u);
  _GrabList = new ozPtrArray(4u);
}

ozPickSensor::ozPickSensor(ozType *type) : ozNode(type), _lastPickFrame(-1) { initFieldDefaults(_ClassType); }

ozPickSensor::~ozPickSensor() {
  for (ozPtrArray *list : {_PrevList, _PickList, _GrabList})
    while (list->remove(this)) {
    }
  destroyFieldContents(_ClassType);
}

void ozPickSensor::draw(ozDrawAction *) {}

void ozPickSensor::fieldChanged(short id) {
  if (id != 2)
    ozNode::fieldChanged(id);
  else if (!_enabled && _isActive == 1)
    setIsActive(0); // "enabled" itself is not touched: meant
}

namespace {

// Keeps what a hit tells of while sensors are called: the application may take it out of the graph meanwhile. Objects
// without references are the application's own, and stay so.
class PathHold {
public:
  explicit PathHold(ozHit const &hit) {
    for (unsigned int i = 0; i < hit.path.getCount(); ++i) {
      if (!hit.path[i] || !hit.path[i]->getRefCount()) continue;
      hit.path[i]->ref();
      _held.append(hit.path[i]);
    }
  }
  ~PathHold() {
    for (unsigned int i = 0; i < _held.getCount(); ++i) _held[i]->unref();
  }
  PathHold(PathHold const &) = delete;
  PathHold &operator=(PathHold const &) = delete;

private:
  ozRefArray _held;
};

// Calls each sensor of a list, which may lose sensors on the way.
void forEach(ozPtrArray const &list, void (ozPickSensor::*call)(ozHit const &), ozHit const &hit) {
  for (unsigned int i = 0; i < list.getCount();) {
    ozPickSensor *const sensor = static_cast<ozPickSensor *>(list[i]);
    (sensor->*call)(hit);
    if (i < list.getCount() && list[i] == sensor) ++i;
  }
}

} // namespace

void ozPickSensor::collectPicked(ozHit const &hit) {
  for (unsigned int i = hit.path.getCount(); i-- > 0 && !_PickList->getCount();) {
    ozContainer *const entry = hit.path[i];
    if (!entry || !entry->isOfType(ozNode::getClassType())) continue;
    for (int p = 0; p < entry->getParentCount(); ++p) {
      if (!entry->getParent(p)->isOfType(ozGroup::getClassType())) continue;
      ozGroup *const group = static_cast<ozGroup *>(entry->getParent(p));
      for (int c = 0; c < group->getChildCount(); ++c) {
        ozNode *const child = group->getChild(c);
        if (!child || !child->isOfType(getClassType())) continue;
        ozPickSensor *const sensor = static_cast<ozPickSensor *>(child);
        if (!sensor->getEnabled()) continue;
        _PickList->append(sensor);
        sensor->_lastPickFrame = _UpdateFrame;
      }
    }
  }
}

void ozPickSensor::updateSensors(ozNode *root, ozCamera *camera, int x, int y, int buttonDown) {
  if (!root || !camera || !getClassType()) return;
  ozHit hit;
  _PickList->setCount(0);
  if (camera->pick(root, x, y, hit)) collectPicked(hit);
  PathHold const hold(hit);

  if (_Grabbing && buttonDown) {
    forEach(*_GrabList, &ozPickSensor::motion, hit);
  } else if (buttonDown) {
    _Grabbing = 1;
    _GrabList->set(*_PickList);
    forEach(*_GrabList, &ozPickSensor::beginGrab, hit);
  } else {
    if (_Grabbing) {
      _Grabbing = 0;
      forEach(*_GrabList, &ozPickSensor::endGrab, hit);
      _GrabList->setCount(0);
    }
    updatePickedSensors(hit);
  }
  ++_UpdateFrame;
}

void ozPickSensor::updatePickedSensors(ozHit const &hit) {
  for (unsigned int i = 0; i < _PrevList->getCount();) {
    ozPickSensor *const sensor = static_cast<ozPickSensor *>(_PrevList->get(i));
    if (sensor->_lastPickFrame == _UpdateFrame) {
      ++i;
      continue;
    }
    sensor->motion(hit); // the last that it hears: the pointer has left
    if (i < _PrevList->getCount() && _PrevList->get(i) == sensor) _PrevList->fastRemoveIndex(i);
  }
  forEach(*_PickList, &ozPickSensor::motion, hit);
  _PrevList->set(*_PickList);
}

// The whole path counts, also transforms below the group of the sensor: meant.
void ozPickSensor::calcWorkingSpace(ozPtrArray const &path) {
  _workingMatrix.makeIdent();
  for (unsigned int i = 0; i < path.getCount() && path[i] != this; ++i) {
    ozContainer *const entry = static_cast<ozContainer *>(path[i]);
    if (!entry || !entry->isOfType(ozTransform::getClassType())) continue;
    ozMatrix4f matrix;
    static_cast<ozTransform *>(entry)->getMatrix(matrix);
    _workingMatrix.preMult(matrix);
  }
  _workingMatrix.invertAffine(_workingMatrix);
}

bool ozPickSensor::getDragSegment(ozHit const &hit, CoordFrameEnum frame, ozSeg &segment) const {
  if (hit.ray.getDirection() == ozVec3f()) return false; // nothing was hit
  segment = hit.ray;
  if (frame == WORLD) return true;
  if (frame != LOCAL) return false;
  ozVec3f origin, direction;
  origin.xformPt(hit.ray.getOrigin(), _workingMatrix);
  direction.xformVec(hit.ray.getDirection(), _workingMatrix);
  segment.setOrigin(origin);
  segment.setLength(hit.ray.getLength() * direction.normalize());
  segment.setDirection(direction);
  return true;
}
