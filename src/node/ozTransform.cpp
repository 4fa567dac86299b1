// A transform is kept as parts and as a matrix. The parts are the truth; the matrix, its inverse and the two boxes are
// made from them on demand. The kind mask says what the parts amount to, so that pure translations and rotations take a
// short path, in the action as in OpenGL, and a transform that was never touched costs nothing.

#include "oz/ozTransform.h"

#include <GL/gl.h>

#include <cmath>

#include "node/visit.h"
#include "oz/ozContext.h"
#include "oz/ozDrawAction.h"
#include "oz/ozSoundAction.h"

int ozTransform::_maxOglStackDepth = -1;

OZ_DEFINE_INSTANCES(ozTransform)

OZ_DEFINE_TYPE(ozTransform, "Transform", ozGroup) {
  ozSFVec3f::addTypeField(type, "translation", 3, ozVec3f(0, 0, 0), &ozTransform::_translation);
  ozSFRotation::addTypeField(type, "rotation", 4, ozRotation(0, 0, 0, 0), &ozTransform::_rotation);
  ozSFVec3f::addTypeField(type, "scale", 5, ozVec3f(1, 1, 1), &ozTransform::_scale);
  ozSFRotation::addTypeField(type, "scaleOrientation", 6, ozRotation(0, 0, 0, 0), &ozTransform::_scaleOrientation);
  ozSFVec3f::addTypeField(type, "center", 7, ozVec3f(0, 0, 0), &ozTransform::_center);
}

ozTransform::ozTransform(ozType *type)
    : ozGroup(type), _kind(0), _stale(0), _singular(false), _savedNormalize(0), _restoreNormalize(0),
      _inverse(nullptr) {
  initFieldDefaults(_ClassType);
}

ozTransform::~ozTransform() {
  delete _inverse;
  destroyFieldContents(_ClassType);
}

// ---- parts

void ozTransform::getTranslation(float *x, float *y, float *z) { readPart(3, _translation).get(x, y, z); }
void ozTransform::getTranslation(ozVec3f &translation) { translation = readPart(3, _translation); }
void ozTransform::setTranslation(float x, float y, float z) { storePart(3, _translation, ozVec3f(x, y, z)); }
void ozTransform::setTranslation(ozVec3f const &translation) { storePart(3, _translation, translation); }

void ozTransform::getRotation(float *x, float *y, float *z, float *radians) {
  readPart(4, _rotation).get(x, y, z, radians);
}
void ozTransform::getRotation(ozRotation &rotation) { rotation = read(4, _rotation); }
void ozTransform::setRotation(float x, float y, float z, float radians) {
  storePart(4, _rotation, ozRotation(x, y, z, radians));
}
void ozTransform::setRotation(ozRotation const &rotation) {
  float x, y, z, radians;
  rotation.get(&x, &y, &z, &radians);
  setRotation(x, y, z, radians);
}

void ozTransform::getScale(float *x, float *y, float *z) { readPart(5, _scale).get(x, y, z); }
void ozTransform::getScale(ozVec3f &scale) { scale = readPart(5, _scale); }
void ozTransform::setScale(float x, float y, float z) { storePart(5, _scale, ozVec3f(x, y, z)); }
void ozTransform::setScale(ozVec3f const &scale) { storePart(5, _scale, scale); }

void ozTransform::getScaleOrientation(float *x, float *y, float *z, float *radians) {
  readPart(6, _scaleOrientation).get(x, y, z, radians);
}
void ozTransform::getScaleOrientation(ozRotation &rotation) { rotation = read(6, _scaleOrientation); }
void ozTransform::setScaleOrientation(float x, float y, float z, float radians) {
  storePart(6, _scaleOrientation, ozRotation(x, y, z, radians));
}
void ozTransform::setScaleOrientation(ozRotation const &rotation) {
  float x, y, z, radians;
  rotation.get(&x, &y, &z, &radians);
  setScaleOrientation(x, y, z, radians);
}

void ozTransform::getCenter(float *x, float *y, float *z) { readPart(7, _center).get(x, y, z); }
void ozTransform::getCenter(ozVec3f &center) { center = readPart(7, _center); }
void ozTransform::setCenter(float x, float y, float z) { storePart(7, _center, ozVec3f(x, y, z)); }
void ozTransform::setCenter(ozVec3f const &center) { storePart(7, _center, center); }

// ---- matrix

void ozTransform::getMatrix(ozMatrix4f &matrix) {
  freshMatrix();
  matrix = _matrix;
}

void ozTransform::setMatrix(ozMatrix4f const &matrix) {
  _matrix = matrix;
  _kind = UNEVEN | GIVEN;
  _stale &= ~MATRIX;
  _stale |= INVERSE;
  cleanParts(); // marks the matrix as stale again, so that it follows from the parts: meant
  if (_boundMode != DYNAMIC) return;
  _stale |= BOX;
  propagateSideEffect(0);
}

// Whether the parts are no more than a rotation and a translation.
bool ozTransform::isRigid() const {
  return _scale[0] == 1 && _scale[1] == 1 && _scale[2] == 1 && _center[0] == 0 && _center[1] == 0 && _center[2] == 0 &&
         _scaleOrientation.getAngle() == 0;
}

void ozTransform::cleanMatrix() {
  _stale &= ~MATRIX;
  ozMatrix4f &m = _matrix;
  float const angle = _rotation.getAngle(), scaleAngle = _scaleOrientation.getAngle();
  ozVec3f axis, scaleAxis;
  _rotation.getAxis(axis);
  if (isRigid() && std::isfinite(angle)) {
    // What the products below come to, to the bit: they add zeros, for the signs of other zeros.
    ozVec3f const place(_translation[0] + 0.0f, _translation[1] + 0.0f, _translation[2] + 0.0f);
    if (angle == 0) {
      m.makeTrans(place[0], place[1], place[2]);
    } else {
      m.makeRot(axis[0], axis[1], axis[2], angle);
      m.mult(m, ozMatrix4f());
      m.setRow(3, place);
    }
    return;
  }
  _scaleOrientation.getAxis(scaleAxis);
  m.makeTrans(_translation[0], _translation[1], _translation[2]);
  m.preTrans(_center[0], _center[1], _center[2], m);
  if (angle != 0) m.preRot(axis[0], axis[1], axis[2], angle, m);
  if (scaleAngle != 0) m.preRot(scaleAxis[0], scaleAxis[1], scaleAxis[2], scaleAngle, m);
  m.preScale(_scale[0], _scale[1], _scale[2], m);
  if (scaleAngle != 0) m.preRot(scaleAxis[0], scaleAxis[1], scaleAxis[2], -scaleAngle, m);
  m.preTrans(-_center[0], -_center[1], -_center[2], m);
}

void ozTransform::cleanParts() {
  ozVec3f translation, scale;
  ozRotation rotation(0, 0, 0, 0), scaleOrientation(0, 0, 0, 0);
  _matrix.getTransforms(translation, rotation, scale, scaleOrientation);
  _translation = translation;
  _rotation = rotation;
  _scale = scale;
  _scaleOrientation = scaleOrientation;
  touchField(7);
  for (short id = 3; id <= 6; ++id) fieldChanged(id);
  _stale &= ~PARTS;
}

void ozTransform::freshInverse() {
  if (_inverse && !(_stale & INVERSE)) return;
  freshMatrix();
  if (!_inverse) _inverse = new ozMatrix4f;
  _inverse->invertAffine(_matrix);
  _singular = !(std::fabs(_matrix.det3()) >= OZ_TINY_EPSILON);
  _stale &= ~INVERSE;
}

// ---- changes

void ozTransform::updateKind(short id) {
  if (id == 3 || id == 7) {
    _kind |= MOVED; // whatever the value, and for good: meant
  } else if (id == 4) {
    _kind &= ~TURNED;
    if (_rotation.getAngle() != 0) _kind |= TURNED;
  } else if (id == 5) {
    // The scale orientation counts as it is now; a later change of it alone changes nothing. Meant.
    _kind &= ~(SCALED | UNEVEN);
    bool const uniform = _scale[0] == _scale[1] && _scale[1] == _scale[2];
    if (uniform && _scale[0] == 1) return;
    _kind |= uniform && _scaleOrientation.getAngle() == 0 ? SCALED : UNEVEN;
  }
}

void ozTransform::fieldChanged(short id) {
  if (_ClassType->isAncestorField(id)) {
    ozGroup::fieldChanged(id);
    if (id == 2) _stale |= CHILD_BOX;
    return;
  }
  _stale |= MATRIX | INVERSE;
  updateKind(id);
  if (_boundMode == DYNAMIC) {
    _stale |= BOX;
    propagateSideEffect(0);
  }
  touchField(id);
}

void ozTransform::childChanged(ozContainer *child, short id) {
  if (id == 0) _stale |= CHILD_BOX;
  ozGroup::childChanged(child, id);
}

void ozTransform::cleanSideEffect(short id) {
  if (id != 0) {
    ozGroup::cleanSideEffect(id);
    return;
  }
  settleSideEffect(0); // first, as in ozGroup
  if (_stale & CHILD_BOX) {
    calcChildrenBound(_childBox);
    _stale &= ~CHILD_BOX;
    _stale |= BOX;
  }
  if (_stale & BOX) {
    freshMatrix();
    if (_childBox.isEmpty())
      _boxBound.makeEmpty();
    else
      _boxBound.xform(&_childBox, _matrix);
    _stale &= ~BOX;
  }
  touchField(0);
}

// ---- visits

// One more level of the action, with this transform in front of what was on top.
void ozTransform::pushInto(ozTransformAction *action) {
  if (isPlain(MOVED)) {
    action->pushMatrix();
    action->translate(_translation[0], _translation[1], _translation[2]);
  } else if (isPlain(TURNED)) {
    float x, y, z, radians;
    _rotation.get(&x, &y, &z, &radians);
    action->pushMatrix();
    action->rotate(x, y, z, radians);
  } else {
    freshMatrix();
    action->pushMatrix(_matrix, static_cast<ozTransformAction::MatTypeEnum>(_kind & UNEVEN));
  }
}

bool ozTransform::isOglStackFull(ozDrawAction *action) {
  return _maxOglStackDepth >= 1 && action->getMatrixDepth() >= _maxOglStackDepth;
}

void ozTransform::transformPushMatrix(ozTransformAction *action) {
  if (_kind) pushInto(action);
}

void ozTransform::drawPushMatrix(ozDrawAction *action) {
  if (!_kind) return;
  pushInto(action);
  bool const full = isOglStackFull(action);
  if (!full) glPushMatrix();
  // With OpenGL's stack full, the short paths tell OpenGL nothing: meant.
  if (isPlain(MOVED)) {
    if (!full) glTranslatef(_translation[0], _translation[1], _translation[2]);
  } else if (isPlain(TURNED)) {
    float x, y, z, degrees;
    _rotation.getDegrees(&x, &y, &z, &degrees);
    if (!full) glRotatef(degrees, x, y, z);
  } else {
    if (_kind & (SCALED | UNEVEN)) {
      _savedNormalize = action->getContext()->getNormalizeEnable();
      _restoreNormalize = 1;
      action->getContext()->setNormalizeEnable(1);
    }
    // The action's stack starts with the view matrix, so its top is all that OpenGL needs.
    if (full)
      glLoadMatrixf((*action->getMatrix())[0]);
    else
      glMultMatrixf(_matrix[0]);
  }
}

void ozTransform::drawPopMatrix(ozDrawAction *action) {
  bool const full = isOglStackFull(action);
  action->popMatrix();
  if (full)
    glLoadMatrixf((*action->getMatrix())[0]);
  else
    glPopMatrix();
}

// The children, with the view vector in their space.
ozTravDirective ozTransform::drawChildrenSeen(ozDrawAction *action) {
  ozVec3f const view = action->getViewVector();
  action->updateViewVector();
  ozTravDirective const verdict = ozVisitChildren<&ozNode::drawVisit>(_children, action);
  action->setViewVector(view);
  return verdict;
}

ozTravDirective ozTransform::drawVisit(ozDrawAction *action) {
  cleanFields();
  return ozCulled(_boxBound, action, [&] {
    return ozFrame(this, action, [&](ozTravDirective verdict) {
      bool const moved = _kind != 0;
      if (verdict == TRAV_CONT) {
        drawPushMatrix(action);
        verdict = action->getBPCullMode() == ozDrawAction::NO_BPC
                      ? ozVisitChildren<&ozNode::drawVisit>(_children, action)
                      : drawChildrenSeen(action);
      }
      // From here on also where preVisit has kept the transform from being entered: meant.
      if (_restoreNormalize) action->getContext()->setNormalizeEnable(_savedNormalize);
      if (moved) drawPopMatrix(action);
      return verdict;
    });
  });
}

// Runs loop() with this transform on the action's stack.
template <class Loop> ozTravDirective ozTransform::visitMoved(ozTransformAction *action, Loop loop) {
  bool const moved = _kind != 0;
  transformPushMatrix(action);
  ozTravDirective const verdict = loop();
  if (moved) action->popMatrix();
  return verdict;
}

ozTravDirective ozTransform::transformVisit(ozTransformAction *action) {
  cleanFields();
  return ozVisitFrame(this, action, [&] {
    return visitMoved(action, [&] { return ozVisitChildren<&ozNode::transformVisit>(_children, action); });
  });
}

ozTravDirective ozTransform::vfCullVisit(ozVFCullAction *action) {
  cleanFields();
  return ozCulledFrame(this, _boxBound, action, [&] {
    return visitMoved(action, [&] { return ozVisitChildren<&ozNode::vfCullVisit>(_children, action); });
  });
}

void ozTransform::isect(ozIsectAction *action) {
  cleanFields();
  if (ozMissesBox(_boxBound, action)) return;
  freshInverse();
  if (_singular) return; // what is flattened cannot be hit, and must not disturb the segment
  pushInto(action);
  action->pushSeg(*_inverse);
  ozIsectChildren(_children, action);
  if (_kind & (SCALED | UNEVEN))
    action->popSeg(_matrix);
  else
    action->popSeg();
  action->popMatrix();
}

void ozTransform::sound(ozSoundAction *action) {
  cleanFields();
  action->pushMatrix();
  // The matrix as it stands, up to date or not: meant.
  action->multMatrix(_matrix, static_cast<ozTransformAction::MatTypeEnum>(_kind & UNEVEN));
  ozSoundChildren(_children, action);
  action->popMatrix();
}
