// The segment stack: entry 0 is the segment in the root's space, and each nested space adds its own. What shortens the
// active segment inside a space is carried down on leaving it, so that the walk never accepts a farther hit.

#include "oz/ozIsectAction.h"

#include <cmath>
#include <stdio.h>

#include "oz/ozNode.h"

// The parent type is not the base class, which is meant.
OZ_DEFINE_TYPE(ozIsectAction, "IsectAction", ozAction) {}

ozIsectAction::ozIsectAction() : ozIsectAction(getClassType()) {}

ozIsectAction::ozIsectAction(ozType *type) : ozTransformAction(type), _path(8), _segDepth(0), _activeSeg(_segStack) {
  seg.setLength(0);
  for (ozSeg &entry : _segStack) entry.setLength(0);
}

ozIsectAction::ozIsectAction(ozIsectAction const &other)
    : ozTransformAction(other), seg(other.seg), hit(other.hit), _path(8), _segDepth(other._segDepth) {
  *this = other;
}

ozIsectAction &ozIsectAction::operator=(ozIsectAction const &other) {
  ozTransformAction::operator=(other);
  seg = other.seg;
  hit = other.hit;
  _path.set(other._path);
  _segDepth = other._segDepth;
  for (int i = 0; i <= _segDepth; ++i) _segStack[i] = other._segStack[i];
  _activeSeg = _segStack + _segDepth;
  return *this;
}

ozIsectAction::~ozIsectAction() = default;

ozAction *ozIsectAction::instantiate() { return new ozIsectAction; }

// No reset of the matrix stack, which is meant: it starts as the identity, and a finished walk leaves it so.
ozTravDirective ozIsectAction::apply(ozNode *root) {
  hit.reset();
  _segDepth = 0;
  _activeSeg = _segStack;
  *_activeSeg = seg;
  hit.ray = seg;
  if (root) {
    pushPath(root);
    root->isect(this);
    popPath();
  }
  return TRAV_CONT;
}

void ozIsectAction::pushSeg(ozMatrix4f const &inverse) {
  if (_segDepth >= SEG_LEVELS - 1) {
    fprintf(stderr, "ozIsectAction::pushSeg() Scene graph is too deep (%d)\n", SEG_LEVELS);
    return;
  }
  ozSeg const &outer = *_activeSeg;
  _activeSeg = _segStack + ++_segDepth;
  ozVec3f origin, direction;
  origin.xformPt(outer.getOrigin(), inverse);
  direction.xformVec(outer.getDirection(), inverse);
  float const factor = direction.normalize();
  _activeSeg->setOrigin(origin);
  _activeSeg->setDirection(direction);
  _activeSeg->setLength(outer.getLength() * factor);
}

void ozIsectAction::popSeg() {
  if (_segDepth == 0) return;
  float const length = _activeSeg->getLength();
  _activeSeg = _segStack + --_segDepth;
  _activeSeg->setLength(length);
}

void ozIsectAction::popSeg(ozMatrix4f const &matrix) {
  if (_segDepth == 0) return;
  ozSeg &inner = *_activeSeg;
  _activeSeg = _segStack + --_segDepth;
  ozVec3f direction;
  direction.xformVec(inner.getDirection(), matrix);
  inner.setDirection(direction);
  // A matrix that flattens the direction has no inverse, and what was found behind it says nothing about this space.
  float const scale = direction.length(), length = scale * inner.getLength();
  if (scale > 0 && std::isfinite(length)) _activeSeg->setLength(length);
}

void ozIsectAction::hitGeometry(ozGeometry *geometry) {
  float const length = _activeSeg->getLength();
  hit.geometry = geometry;
  hit.distance = length;
  hit.localPoint.addScaled(_activeSeg->getOrigin(), length, _activeSeg->getDirection());
  getMatrix(hit.matrix);
  hit.worldPoint.xformPt(hit.localPoint, hit.matrix);
  hit.path.set(_path);
}
