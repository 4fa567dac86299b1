#include "oz/ozLOD.h"

#include <stdio.h>

#include "oz/ozDrawAction.h"

int ozLOD::_offset = 0;

OZ_DEFINE_INSTANCES(ozLOD)

OZ_DEFINE_TYPE(ozLOD, "LOD", ozSwitch) {
  ozSFVec3f::addTypeField(type, "center", 4, ozVec3f(0, 0, 0), &ozLOD::_center);
  ozMFFloat::addTypeField(type, "ranges", 5, &ozLOD::_ranges);
  ozSFInt::addTypeField(type, "offsetOverride", 6, 0, &ozLOD::_offsetOverride);
}

ozLOD::ozLOD(ozType *type) : ozSwitch(type), _computeCenter(1) {
  initFieldDefaults(_ClassType);
  _rangesField = static_cast<ozMFFloat *>(getField(5));
  _whichChild = 0;
  _ranges.append(0);
  _ranges.append(1000000);
}

ozLOD::~ozLOD() { destroyFieldContents(_ClassType); }

void ozLOD::setCenter(ozVec3f const &center) {
  store(4, _center, center);
  _computeCenter = 0;
}

int ozLOD::getNumRanges() { return static_cast<int>(read(5, _ranges).getCount()) - 1; }

static bool isRange(ozFloatArray const &ranges, int i) { return i >= 0 && i < static_cast<int>(ranges.getCount()) - 1; }

float ozLOD::getRangeNear(int i) const {
  if (isRange(_ranges, i)) return _ranges[static_cast<unsigned int>(i)];
  fprintf(stderr, "ozLOD(%p)::getRangeNear: attempting to read uninitialized range %d\n",
          static_cast<void const *>(this), i);
  return -1;
}

float ozLOD::getRangeFar(int i) const {
  if (isRange(_ranges, i)) return _ranges[static_cast<unsigned int>(i) + 1];
  fprintf(stderr, "ozLOD(%p)::getRangeFar: attempting to read uninitialized range %d\n",
          static_cast<void const *>(this), i);
  return -1;
}

void ozLOD::setRange(int i, float near, float far) {
  setRangeNear(i, near);
  setRangeFar(i, far);
}

void ozLOD::setRangeNear(int i, float near) {
  unsigned int const index = static_cast<unsigned int>(i);
  if (index <= 9) _rangesField->set(index, near); // no more, though the array could grow: meant
}

void ozLOD::setRangeFar(int i, float far) {
  unsigned int const index = static_cast<unsigned int>(i);
  if (index <= 9) _rangesField->set(index + 1, far);
}

int ozLOD::whichChild(ozTransformAction *action) {
  if (_computeCenter) { // once: the centre does not follow later changes of the children, which is meant
    ozSphereBound sphere;
    getSphereBound(sphere);
    _center = sphere.center;
    _computeCenter = 0;
  }
  int const count = static_cast<int>(_ranges.getCount());
  ozVec3f eye;
  eye.xformPt(_center, *action->getMatrix());
  float const distance = eye.length();
  if (count == 0 || !(distance >= _ranges[0])) return NO_CHILD;
  int i = 1;
  while (i < count && !(_ranges[static_cast<unsigned int>(i)] > distance)) ++i;
  long long const shift = _offsetOverride >= 1 ? _offsetOverride : _offset;
  long long const child = shift - 1 + i, last = getChildCount() - 1;
  return static_cast<int>(child < last ? child : last);
}

// Chooses the child for this pass; false where there is none.
bool ozLOD::chooseChild(ozTransformAction *action) {
  cleanFields();
  int const which = whichChild(action);
  if (which < 0 || which >= static_cast<int>(_ranges.getCount()) - 1) return false;
  setWhichChild(which);
  return true;
}

ozTravDirective ozLOD::vfCullVisit(ozVFCullAction *action) {
  return chooseChild(action) ? ozSwitch::vfCullVisit(action) : TRAV_CONT;
}

ozTravDirective ozLOD::drawVisit(ozDrawAction *action) {
  return chooseChild(action) ? ozSwitch::drawVisit(action) : TRAV_CONT;
}
