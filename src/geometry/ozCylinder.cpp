#include "oz/ozCylinder.h"

#include "geometry/ozSolid.h"
#include "oz/ozDrawAction.h"

ozTriStripSet *ozCylinder::_BottomMesh = nullptr;
ozTriStripSet *ozCylinder::_TopMesh = nullptr;
ozTriStripSet *ozCylinder::_SideMesh = nullptr;

OZ_DEFINE_SOLID(ozCylinder, "Cylinder") {
  ozSFFloat::addTypeField(type, "radius", 2, 1.0f, &ozCylinder::_radius);
  ozSFFloat::addTypeField(type, "height", 3, 2.0f, &ozCylinder::_height);
  ozSFUByte::addTypeField(type, "side", 4, 1, &ozCylinder::_side);
  ozSFUByte::addTypeField(type, "top", 5, 1, &ozCylinder::_top);
  ozSFUByte::addTypeField(type, "bottom", 6, 1, &ozCylinder::_bottom);
  ozSFVec3f::addTypeField(type, "center", 7, ozVec3f(0, 0, 0), &ozCylinder::_center);
  _BottomMesh = makeCircle(32, 1.0f, -1, -1.0f);
  _TopMesh = makeCircle(32, 1.0f, 1, 1.0f);
  _SideMesh = makePipe(32, 1.0f, 1.0f, -1.0f, 1.0f);
}

void ozCylinder::calcBound() { ozBoundRound(_boxBound, _radius, _height, _side, _bottom); }

void ozCylinder::draw(ozDrawAction *action) {
  cleanFields();
  ozUseMaterials(action->getContext());
  ozPlacement(_center, _radius, _height * 0.5f).draw(action->getContext(), [this, action] {
    if (_side) _SideMesh->draw(action);
    if (_top) _TopMesh->draw(action);
    if (_bottom) _BottomMesh->draw(action);
  });
}

int ozCylinder::isect(ozIsectAction *action) {
  cleanFields();
  if (!isectBox(action)) return 0;
  // Another order than that of drawing: meant so.
  return ozPlacement(_center, _radius, _height * 0.5f).isect(action, this, [this, action] {
    int hit = 0;
    if (_top) hit |= _TopMesh->isect(action);
    if (_bottom) hit |= _BottomMesh->isect(action);
    if (_side) hit |= _SideMesh->isect(action);
    return hit;
  });
}

// ---- the meshes

static float const TwoPi = 6.28318548f;

// One strip that zigzags across the disk, between the corners counted from either end.
ozTriStripSet *ozCylinder::makeCircle(int sides, float radius, int dir, float y) {
  ozMesh mesh(sides, 1, ozGeoSet::OVERALL_NORMAL);
  if (!mesh.point) return mesh.finish();
  mesh.length[0] = sides;
  mesh.normal[0].set(0, dir > 0 ? 1.0f : -1.0f, 0);
  float step = TwoPi / static_cast<float>(sides);
  if (dir < 0) step = -step;
  bool fromHi = false;
  for (int k = 0, lo = 0, hi = sides - 1; lo <= hi; ++k) {
    float const a = static_cast<float>(fromHi ? hi-- : lo++) * step;
    float const c = cosf(a), s = sinf(a);
    mesh.point[k].set(radius * c, y, radius * s);
    // On a top, neighbours in the strip trade places, so that its image is not mirrored: meant so.
    int place = k;
    if (dir >= 0 && k > 0) {
      if (!fromHi)
        place = k - 1;
      else if (lo <= hi)
        place = k + 1;
    }
    mesh.texCoord[place].set(c / (2 * radius) + 0.5f, s / (2 * radius) + 0.5f);
    fromHi = !fromHi;
  }
  return mesh.finish();
}

ozTriStripSet *ozCylinder::makePipe(int sides, float bottomRadius, float topRadius, float bottomY, float topY) {
  ozMesh mesh(sides > 0 ? 2LL * sides + 2 : 0, 1, ozGeoSet::PER_VERTEX_NORMAL);
  if (!mesh.point) return mesh.finish();
  mesh.length[0] = 2 * sides + 2;
  float const slope = (bottomRadius - topRadius) / (topY - bottomY);
  float const ny = slope == 0.0f ? 0.0f : 1.0f / slope; // steeper than the surface's own on a cone: meant so
  float const step = -TwoPi / static_cast<float>(sides), du = 1.0f / static_cast<float>(sides);
  float a = 0, u = 0.5f;
  for (int i = 0; i <= sides; ++i) {
    float const s = sinf(a), c = cosf(a);
    int const low = 2 * i, high = low + 1;
    mesh.point[low].set(s * bottomRadius, bottomY, c * bottomRadius);
    mesh.point[high].set(s * topRadius, topY, c * topRadius);
    ozVec3f normal(s, ny, c);
    if (ny != 0.0f) normal.normalize();
    mesh.normal[low] = mesh.normal[high] = normal;
    mesh.texCoord[low].set(u, 0);
    mesh.texCoord[high].set(u, 1);
    a += step;
    u -= du;
  }
  return mesh.finish();
}
