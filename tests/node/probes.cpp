#include "probes.h"

Notes notes;

OZ_DEFINE_CLASS(ProbeNode, "ProbeNode", ozNode) {}

ProbeNode::ProbeNode(char const *name, float halfSize) : ProbeNode() {
  setName(name);
  setBoxBound(cubeAt(0, 0, 0, halfSize));
}

ozTravDirective ProbeNode::visited(char const *visit, ozTransformAction *action) {
  notes.push_back(std::string(visit) + " " + (getName() ? getName() : "?"));
  if (during) during();
  if (duringTransform && action) duringTransform(action);
  return verdict;
}

void ProbeNode::sound(ozSoundAction *action) { visited("sound", action); }
void ProbeNode::isect(ozIsectAction *action) { visited("isect", action); }
ozTravDirective ProbeNode::visit(ozAction *) { return visited("visit", nullptr); }
ozTravDirective ProbeNode::transformVisit(ozTransformAction *action) { return visited("transform", action); }
ozTravDirective ProbeNode::vfCullVisit(ozVFCullAction *action) { return visited("cull", action); }
ozTravDirective ProbeNode::drawVisit(ozDrawAction *action) { return visited("draw", action); }

OZ_DEFINE_CLASS(ProbeGeometry, "ProbeGeometry", ozGeometry) {}

ProbeGeometry::ProbeGeometry(char const *name, float halfSize) : ProbeGeometry() {
  setName(name);
  setBoxBound(cubeAt(0, 0, 0, halfSize));
}

void ProbeGeometry::draw(ozDrawAction *) { notes.push_back(std::string("draw ") + getName()); }

int ProbeGeometry::isect(ozIsectAction *action) {
  notes.push_back(std::string("isect ") + getName());
  if (hitAt < 0 || hitAt > action->getActiveSeg()->getLength()) return 0;
  action->getActiveSeg()->setLength(hitAt);
  action->hitGeometry(this);
  return 1;
}

OZ_DEFINE_CLASS(Holder, "Holder", ozContainer) {
  ozSFRef::addTypeField(type, "node", 0, ozNode::getClassType(), &Holder::_node);
}

ozBoxBound boxOf(float x0, float y0, float z0, float x1, float y1, float z1) {
  ozBoxBound box;
  box.min.set(x0, y0, z0);
  box.max.set(x1, y1, z1);
  return box;
}

ozBoxBound cubeAt(float x, float y, float z, float h) { return boxOf(x - h, y - h, z - h, x + h, y + h, z + h); }

ozSeg segment(float x, float y, float z, float dx, float dy, float dz, float length) {
  ozSeg seg;
  seg.setOrigin(ozVec3f(x, y, z));
  seg.setDirection(ozVec3f(dx, dy, dz));
  seg.setLength(length);
  return seg;
}

ozOrthoCamera *wideCamera() {
  ozOrthoCamera *const camera = new ozOrthoCamera;
  camera->setWidth(2000);
  camera->setHeight(2000);
  camera->setNearClip(-1000);
  camera->setFarClip(1000);
  return camera;
}
