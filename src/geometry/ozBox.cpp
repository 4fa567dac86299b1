#include "oz/ozBox.h"

#include <GL/gl.h>

#include "geometry/ozSolid.h"
#include "oz/ozDrawAction.h"

OZ_DEFINE_SOLID(ozBox, "Box") {
  ozSFVec3f::addTypeField(type, "size", 2, ozVec3f(2, 2, 2), &ozBox::_size);
  ozSFVec3f::addTypeField(type, "center", 3, ozVec3f(0, 0, 0), &ozBox::_center);
}

void ozBox::calcBound() {
  ozVec3f half;
  half.scale(0.5f, _size);
  _boxBound.max.add(half, _center);
  half.negate(half);
  _boxBound.min.add(half, _center);
}

namespace {

struct Face {
  float normal[3];
  float corners[4][3]; // signs, counterclockwise seen from outside
};

Face const Faces[6] = {
    {{0, 0, 1}, {{-1, -1, 1}, {1, -1, 1}, {1, 1, 1}, {-1, 1, 1}}},
    {{0, 0, -1}, {{1, -1, -1}, {-1, -1, -1}, {-1, 1, -1}, {1, 1, -1}}},
    {{1, 0, 0}, {{1, -1, 1}, {1, -1, -1}, {1, 1, -1}, {1, 1, 1}}},
    {{-1, 0, 0}, {{-1, -1, -1}, {-1, -1, 1}, {-1, 1, 1}, {-1, 1, -1}}},
    {{0, 1, 0}, {{-1, 1, 1}, {1, 1, 1}, {1, 1, -1}, {-1, 1, -1}}},
    {{0, -1, 0}, {{-1, -1, -1}, {1, -1, -1}, {1, -1, 1}, {-1, -1, 1}}},
};

// What each corner of a face hands on to the next. The first one of the box gets what OpenGL holds: meant so.
float const NextTexCoords[4][2] = {{1, 0}, {1, 1}, {0, 1}, {0, 0}};

} // namespace

void ozBox::draw(ozDrawAction *action) {
  cleanFields();
  ozUseMaterials(action->getContext());
  ozVec3f half;
  half.scale(0.5f, _size);
  glBegin(GL_QUADS);
  for (Face const &face : Faces) {
    glNormal3fv(face.normal);
    for (int i = 0; i < 4; ++i) {
      float const *const sign = face.corners[i];
      float const vertex[3] = {sign[0] * half[0] + _center[0], sign[1] * half[1] + _center[1],
                               sign[2] * half[2] + _center[2]};
      glVertex3fv(vertex);
      glTexCoord2fv(NextTexCoords[i]);
    }
  }
  glEnd();
}

int ozBox::isect(ozIsectAction *action) {
  cleanFields();
  int const edges = (_size[0] != 0.0f) + (_size[1] != 0.0f) + (_size[2] != 0.0f);
  if (edges < 2) return 0; // no surface
  float nearest, farthest;
  ozSeg *const seg = action->getActiveSeg();
  int const result = _boxBound.isect(seg, &nearest, &farthest);
  if (!result || (result & ozBound::BOUND_START_IN)) return 0;
  seg->clip(seg, 0, nearest);
  action->hitGeometry(this);
  return 1;
}
