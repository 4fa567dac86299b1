#include "oz/ozLineStripSet.h"

#include <math.h>

#include "geometry/ozDrawKind.h"
#include "oz/ozIsectAction.h"
#include "oz/ozRotation.h"

// One vertex goes out of every strip, whatever its length: meant so.
ozGeoSet::Kind const ozLineStripSet::PrimKind = {GL_LINE_STRIP, 0, 1, Kind::EACH, 0};

OZ_DEFINE_LENGTHS(ozLineStripSet, "LineStripSet", _stripLength, _stripLengths) {
  ozMFInt::addTypeField(type, "stripLength", 15, &ozLineStripSet::_stripLengths);
  ozSFFloat::addTypeField(type, "width", 16, 1.0f, &ozLineStripSet::_width);
}
OZ_DEFINE_DRAW(ozLineStripSet, &_stripLengths)

ozLineStripSet::~ozLineStripSet() { destroyFieldContents(_ClassType); }

void ozLineStripSet::init() {
  _stripLength = static_cast<ozMFInt *>(getField(15));
  initFieldDefaults(_ClassType);
  _bpcPrimNormMode = 1;
}

void ozLineStripSet::fieldChanged(short id) {
  if (id == 15) {
    lengthsChanged(id);
  } else if (id == 16) {
    _setMask.onBit(ozContext::LINE_WIDTH_ITEM);
    touchField(id);
  } else {
    ozGeoSet::fieldChanged(id);
  }
}

void ozLineStripSet::beginDraw(ozGLAttrSet &attrs, ozContext *context) {
  ozGeoSet::beginDraw(attrs, context);
  setContextWhichSetStateAsCurrentState(context);
  context->setLineWidth(_setMask.getBit(ozContext::LINE_WIDTH_ITEM) ? _width : getContextDefaultLineWidth(context));
  setContextWhichSetStateAsDefaultState(context);
}

// ---- rays

int ozLineStripSet::isect(ozIsectAction *action) {
  cleanFields();
  if (!_coordSet || !_coordIndexSet || !hasWholeIndices(PrimKind, &_stripLengths)) return 0;
  VecReader const coords = readCoords();
  if (!coords.vecCount || !coords.count) return 0;
  ozSeg &ray = *action->getActiveSeg();
  for (unsigned int j = 0; j + 1 < coords.count; ++j) { // the ends of strips do not count: meant so
    ozVec3f const *const p = coords.get(j), *const q = coords.get(j + 1);
    if (!p || !q) continue;
    ozSeg seg;
    float s, t;
    createSegFromPoints(*p, *q, seg);
    isectSegs(seg, ray, s, t);
    fillHitData(seg, s, ray, t, static_cast<int>(j), action);
  }
  return 1; // whether or not anything was hit: meant so
}

void ozLineStripSet::createSegFromPoints(ozVec3f const &p, ozVec3f const &q, ozSeg &seg) const {
  ozVec3f direction;
  direction.sub(q, p);
  seg.setOrigin(p);
  seg.setDirection(direction);
  seg.setLength(1.0f);
}

static float det(ozVec3f const &a, ozVec3f const &b, ozVec3f const &c) {
  ozVec3f bc;
  bc.cross(b, c);
  return a.dot(bc);
}

// Goldman, "Intersection of Two Lines in Three-Space", Graphics Gems, 1990.
void ozLineStripSet::isectSegs(ozSeg const &seg, ozSeg const &ray, float &s, float &t) const {
  s = t = -1.0f;
  ozVec3f c;
  c.cross(seg.getDirection(), ray.getDirection());
  float const cc = c.dot(c);
  if (!(cc > 0.0f)) return;
  ozVec3f e;
  e.sub(ray.getOrigin(), seg.getOrigin());
  s = det(e, ray.getDirection(), c) / cc;
  t = det(e, seg.getDirection(), c) / cc;
}

int ozLineStripSet::fillHitData(ozSeg const &seg, float s, ozSeg &ray, float t, int primIndex, ozIsectAction *action) {
  ozVec3f onLine;
  float d = -1.0f;
  if (s >= 0.0f && s <= seg.getLength() && t >= 0.0f && t <= ray.getLength()) {
    ozVec3f onRay;
    onLine.addScaled(seg.getOrigin(), s, seg.getDirection());
    onRay.addScaled(ray.getOrigin(), t, ray.getDirection());
    d = onLine.sqrDistance(onRay);
  }
  ozMatrix4f matrix;
  action->getMatrix(matrix);
  ozVec3f translation, scale;
  ozRotation rotation, scaleOrientation; // given a value first: what cannot be found stays as it was
  rotation = 0.0f;
  scaleOrientation = 0.0f;
  matrix.getTransforms(translation, rotation, scale, scaleOrientation);
  float const tolerance = (fabsf(translation[0]) + fabsf(translation[1]) + fabsf(translation[2])) * 0.03125f +
                          (scale[0] + scale[1] + scale[2]) * 2.0f;
  if (!(d >= 0.0f && d <= tolerance)) return 0;
  ray.setLength(t);
  action->hitGeometry(this);
  action->hit.localPoint = onLine;
  action->hit.worldPoint.xformPt(onLine, matrix);
  action->hit.primIndex = primIndex;
  return 1;
}
