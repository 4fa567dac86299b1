#include "Outline.h"
#include <cmath>

namespace {

// Corners around a circle of radius 1: a polygon with this many corners outside of it.
int const corners = 12;

// A prism around a round solid: its radius, and half its height around its centre.
template <class Add> void addRound(ozVec3f const &centre, float radius, float half, Add add) {
  float const around = std::fabs(radius) / std::cos(3.1415927f / corners);
  for (int i = 0; i < corners; i++) {
    float const angle = 6.2831855f * i / corners;
    for (float const y : {-half, half})
      add(ozVec3f(centre._v[0] + around * std::cos(angle), centre._v[1] + y, centre._v[2] + around * std::sin(angle)));
  }
}

template <class Add> void addGeometry(ozGeometry *geometry, Add add) {
  ozVec3f centre;
  if (geometry->isOfType(ozCylinder::getClassType())) {
    auto *const cylinder = static_cast<ozCylinder *>(geometry);
    cylinder->getCenter(centre);
    addRound(centre, cylinder->getRadius(), cylinder->getHeight() / 2, add);
  } else if (geometry->isOfType(ozCone::getClassType())) {
    auto *const cone = static_cast<ozCone *>(geometry);
    cone->getCenter(centre);
    addRound(centre, cone->getBottomRadius(), cone->getHeight() / 2, add);
  } else {
    ozBoxBound box;
    geometry->getBoxBound(box);
    for (int i = 0; i < 8 && !box.isEmpty(); i++)
      add(ozVec3f((i & 1 ? box.max : box.min)._v[0], (i & 2 ? box.max : box.min)._v[1],
                  (i & 4 ? box.max : box.min)._v[2]));
  }
}

class OutlineAction : public ozTransformAction {
public:
  ozTravDirective preVisit(ozNode *node) override {
    if (!node->isOfType(ozShape::getClassType())) return TRAV_CONT;
    ozShape *const shape = static_cast<ozShape *>(node);
    for (int i = 0; i < shape->getGeometryCount(); i++)
      if (ozGeometry *const geometry = shape->getGeometry(i))
        addGeometry(geometry, [this](ozVec3f point) {
          point.xformPt(point, *getMatrix());
          points.push_back(point);
        });
    return TRAV_CONT;
  }

  std::vector<ozVec3f> points;
};

} // namespace

std::vector<ozVec3f> outlineOf(ozNode *root) {
  OutlineAction action;
  action.apply(root);
  return action.points;
}
