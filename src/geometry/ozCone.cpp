#include "oz/ozCone.h"

#include "geometry/ozSolid.h"
#include "oz/ozCylinder.h"
#include "oz/ozDrawAction.h"

ozTriStripSet *ozCone::_BottomMesh = nullptr;
ozTriStripSet *ozCone::_SideMesh = nullptr;

OZ_DEFINE_SOLID(ozCone, "Cone") {
  ozSFFloat::addTypeField(type, "bottomRadius", 2, 1.0f, &ozCone::_bottomRadius);
  ozSFFloat::addTypeField(type, "height", 3, 2.0f, &ozCone::_height);
  ozSFUByte::addTypeField(type, "side", 4, 1, &ozCone::_side);
  ozSFUByte::addTypeField(type, "bottom", 5, 1, &ozCone::_bottom);
  ozSFVec3f::addTypeField(type, "center", 6, ozVec3f(0, 0, 0), &ozCone::_center);
  _BottomMesh = ozCylinder::makeCircle(32, 1.0f, -1, -1.0f);
  _SideMesh = ozCylinder::makePipe(32, 1.0f, 0.0f, -1.0f, 1.0f);
}

void ozCone::calcBound() { ozBoundRound(_boxBound, _bottomRadius, _height, _side, _bottom); }

void ozCone::draw(ozDrawAction *action) {
  cleanFields();
  ozUseMaterials(action->getContext());
  ozPlacement(_center, _bottomRadius, _height * 0.5f).draw(action->getContext(), [this, action] {
    if (_side) _SideMesh->draw(action);
    if (_bottom) _BottomMesh->draw(action);
  });
}

int ozCone::isect(ozIsectAction *action) {
  cleanFields();
  if (!isectBox(action)) return 0;
  return ozPlacement(_center, _bottomRadius, _height * 0.5f).isect(action, this, [this, action] {
    int hit = 0;
    if (_bottom) hit |= _BottomMesh->isect(action);
    if (_side) hit |= _SideMesh->isect(action);
    return hit;
  });
}
