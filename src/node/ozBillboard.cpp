// The rotation is found in the billboard's own space: the rows of the inverse of the unscaled top matrix are the eye's
// axes there, and the children's axes are laid along them.

#include "oz/ozBillboard.h"

#include <GL/gl.h>

#include <cmath>
#include <new>

#include "node/visit.h"
#include "oz/ozDrawAction.h"

namespace {

float const Tolerance = 1e-07f;

char const *const VectorNames[] = {"POS_X_AXIS", "POS_Y_AXIS", "POS_Z_AXIS", "NEG_X_AXIS", "NEG_Y_AXIS", "NEG_Z_AXIS"};
int const VectorValues[] = {0, 1, 2, 3, 4, 5};

// The handedness of the third axis by forward + up * 6; 0 where the two lie along one line.
int const Signs[36] = {
    0,  1,  -1, 0,  -1, 1,  //
    -1, 0,  1,  1,  0,  -1, //
    1,  -1, 0,  -1, 1,  0,  //
    0,  -1, 1,  0,  1,  -1, //
    1,  0,  -1, -1, 0,  1,  //
    -1, 1,  0,  1,  -1, 0,  //
};

bool isVector(int v) { return v >= 0 && v < 6; }

ozVec3f unitVector(int v) {
  ozVec3f unit(0, 0, 0);
  unit._v[v % 3] = v < 3 ? 1.0f : -1.0f;
  return unit;
}

bool same(ozVec3f const &a, ozVec3f const &b) { return a.almostEqual(b, Tolerance); }

ozVec3f opposite(ozVec3f const &a) {
  ozVec3f v;
  v.negate(a);
  return v;
}

ozVec3f unitCross(ozVec3f const &a, ozVec3f const &b) {
  ozVec3f v;
  v.cross(a, b);
  v.normalize();
  return v;
}

} // namespace

OZ_DEFINE_INSTANCES(ozBillboard)

OZ_DEFINE_TYPE(ozBillboard, "Billboard", ozGroup) {
  static char const *const modeNames[] = {"AXIAL", "POINT_SCREEN", "POINT_OBJECT"};
  static int const modeValues[] = {AXIAL, POINT_SCREEN, POINT_OBJECT};
  ozMFVec3f::addTypeField(type, "position", 3, &ozBillboard::_position);
  ozSFEnum::addTypeField(type, "mode", 4, AXIAL, &ozBillboard::_mode);
  ozSFVec3f::addTypeField(type, "axisOfRotation", 5, ozVec3f(0, 1, 0), &ozBillboard::_axisOfRotation);
  ozSFEnum::addTypeField(type, "forward", 6, POS_Z_AXIS, &ozBillboard::_forward);
  ozSFEnum::addTypeField(type, "up", 7, POS_Y_AXIS, &ozBillboard::_up);
  type->defineEnums(4, 3, modeNames, modeValues);
  type->defineEnums(6, 6, VectorNames, VectorValues);
  type->defineEnums(7, 6, VectorNames, VectorValues);
}

ozBillboard::ozBillboard(ozType *type) : ozGroup(type) {
  initFieldDefaults(_ClassType);
  _positionField = static_cast<ozMFVec3f *>(getField(3));
}

ozBillboard::~ozBillboard() { destroyFieldContents(_ClassType); }

ozBillboard::ModeEnum ozBillboard::getMode() { return read(4, _mode); }
void ozBillboard::setMode(ModeEnum mode) { store(4, _mode, mode); }
void ozBillboard::getAxis(ozVec3f &axis) { axis = read(5, _axisOfRotation); }
void ozBillboard::getAxis(float *x, float *y, float *z) { read(5, _axisOfRotation).get(x, y, z); }
void ozBillboard::setAxis(ozVec3f const &axis) { store(5, _axisOfRotation, axis); }
void ozBillboard::setAxis(float x, float y, float z) { store(5, _axisOfRotation, ozVec3f(x, y, z)); }
ozBillboard::VectorEnum ozBillboard::getForward() { return read(6, _forward); }
void ozBillboard::setForward(VectorEnum forward) { store(6, _forward, forward); }
ozBillboard::VectorEnum ozBillboard::getUp() { return read(7, _up); }
void ozBillboard::setUp(VectorEnum up) { store(7, _up, up); }

// ---- the bound

void ozBillboard::fieldChanged(short id) {
  if (_ClassType->isAncestorField(id)) {
    ozGroup::fieldChanged(id);
    return;
  }
  if (id == 5) _axisOfRotation.normalize();
  // A change of the mode does not mark the bound, which is meant.
  if (_boundMode == DYNAMIC && (id == 3 || (id == 5 && _mode == AXIAL))) propagateSideEffect(0);
  touchField(id);
}

void ozBillboard::cleanSideEffect(short id) {
  if (id != 0) {
    ozGroup::cleanSideEffect(id);
    return;
  }
  settleSideEffect(0); // first, as in ozGroup
  calcChildrenBound(_boxBound);
  touchField(0);
}

void ozBillboard::calcChildrenBound(ozBoxBound &box) {
  validateField(2);
  unsigned int const count = _children.getCount();
  ozSphereBound *const spheres = new (std::nothrow) ozSphereBound[count ? count : 1];
  if (!spheres) return;
  ozPtrArray all(count);
  for (unsigned int i = 0; i < count && i < _children.getCount(); ++i) {
    if (!_children[i]) continue;
    ozSphereBound &sphere = spheres[i];
    static_cast<ozNode *>(_children[i])->getSphereBound(sphere);
    // What the child may be turned about: its own origin, or in mode AXIAL the nearest point of the axis.
    ozVec3f pivot(0, 0, 0);
    if (_mode == AXIAL) pivot.scale(_axisOfRotation.dot(sphere.center), _axisOfRotation);
    sphere.radius += pivot.distance(sphere.center);
    sphere.center = pivot;
    if (i < _position.getCount()) sphere.center += _position[i];
    all.append(&sphere);
  }
  box.around(const_cast<ozSphereBound const **>(reinterpret_cast<ozSphereBound **>(all.getArray())),
             static_cast<int>(all.getCount()));
  delete[] spheres;
}

// ---- the rotation

void ozBillboard::unscaleMatrix(ozMatrix4f &m) {
  float factor[3];
  for (int i = 0; i < 3; ++i) {
    float const length = ozVec3f(m[i]).length();
    factor[i] = length > 0 ? 1.0f / length : 1.0f;
  }
  m.preScale(factor[0], factor[1], factor[2], m);
}

void ozBillboard::turnAboutAxis(ozVec3f const &forward, ozVec3f const &eye, ozMatrix4f &out) const {
  ozVec3f const &axis = _axisOfRotation;
  ozVec3f const from = unitCross(axis, forward), to = unitCross(axis, eye);
  if (same(from, to)) {
    out.makeIdent();
    return;
  }
  float cosine = from.dot(to);
  if (cosine > 1) cosine = 1;
  if (cosine < -1) cosine = -1;
  // The axis or its opposite, so that the sign of the angle needs no test. Exactly opposite directions have no such
  // product; any of the two will do then.
  ozVec3f about = unitCross(from, to);
  if (about.length() == 0) about = axis;
  out.makeRot(about[0], about[1], about[2], std::acos(cosine));
}

unsigned char ozBillboard::calculateTransform(ozDrawAction *action, ozMatrix4f &out) {
  if (!isVector(_forward) || !isVector(_up)) return 1;
  ozVec3f const forward = unitVector(_forward), &axis = _axisOfRotation;
  if (_mode != POINT_SCREEN && (same(axis, forward) || same(axis, opposite(forward)))) return 0;

  ozMatrix4f top;
  action->getMatrix(top);
  unscaleMatrix(top);
  ozMatrix4f inverse;
  inverse.invertFull(top);
  ozVec3f x(inverse[0]), y(inverse[1]), z(inverse[2]); // the eye's axes in this space
  if (_mode != POINT_SCREEN && (same(axis, z) || same(axis, opposite(z)))) return 0;
  if (_mode == AXIAL) turnAboutAxis(forward, z, out);
  if (_mode != POINT_SCREEN && _mode != POINT_OBJECT) return 1;

  if (_mode == POINT_OBJECT) {
    y.addScaled(axis, -z.dot(axis), z);
    y.normalize();
    x.cross(y, z);
  }
  if (_forward > 2) z.negate(z);
  if (_up > 2) y.negate(y);
  if (Signs[_forward + _up * 6] < 0) x.negate(x);
  int const forwardRow = _forward % 3, upRow = _up % 3, thirdRow = 3 - forwardRow - upRow;
  out.setRow(forwardRow, z[0], z[1], z[2], 0);
  out.setRow(upRow, y[0], y[1], y[2], 0);
  out.setRow(thirdRow, x[0], x[1], x[2], 0); // no row at all where forward and up lie along one line
  out.setRow(3, 0, 0, 0, 1);
  return 1;
}

// ---- drawing

ozTravDirective ozBillboard::drawChild(unsigned int i, ozMatrix4f const &turn, ozDrawAction *action) {
  ozVec3f at(0, 0, 0);
  if (i < _position.getCount()) at = _position[i];
  action->pushMatrix();
  action->translate(at[0], at[1], at[2]);
  action->multMatrix(turn, static_cast<ozTransformAction::MatTypeEnum>(2));
  glPushMatrix(); // whatever the depth of OpenGL's stack: meant
  glTranslatef(at[0], at[1], at[2]);
  glMultMatrixf(turn._m[0]);
  bool const viewSaved = action->getBPCullMode() != ozDrawAction::NO_BPC;
  ozVec3f const view = action->getViewVector();
  if (viewSaved) action->updateViewVector();
  ozTravDirective const verdict = static_cast<ozNode *>(_children[i])->drawVisit(action);
  action->popMatrix();
  glPopMatrix();
  if (viewSaved) action->setViewVector(view);
  return verdict;
}

ozTravDirective ozBillboard::drawVisit(ozDrawAction *action) {
  cleanFields();
  return ozCulledFrame(this, _boxBound, action, [&] {
    ozMatrix4f turn;
    if (!calculateTransform(action, turn)) return TRAV_CONT; // seen along its axis, a billboard vanishes
    ozTravDirective verdict = TRAV_CONT;
    ozForEachIndex(_children, [&](unsigned int i) {
      if (drawChild(i, turn, action) == TRAV_TERM) verdict = TRAV_TERM;
      return verdict != TRAV_TERM;
    });
    return verdict;
  });
}
