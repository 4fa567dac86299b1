#include "oz/ozSphere.h"

#include "geometry/ozHitNormal.h"
#include "geometry/ozSolid.h"
#include "oz/ozDrawAction.h"

ozTriStripSet *ozSphere::_Surface = nullptr;

OZ_DEFINE_SOLID(ozSphere, "Sphere") {
  ozSFVec3f::addTypeField(type, "center", 2, ozVec3f(0, 0, 0), &ozSphere::_center);
  ozSFFloat::addTypeField(type, "radius", 3, 1.0f, &ozSphere::_radius);
  _Surface = makeSphere(200);
}

void ozSphere::calcBound() {
  ozVec3f const radius(_radius, _radius, _radius);
  _boxBound.min.sub(_center, radius);
  _boxBound.max.add(_center, radius);
}

void ozSphere::draw(ozDrawAction *action) {
  cleanFields();
  ozUseMaterials(action->getContext());
  ozPlacement(_center, _radius, _radius).draw(action->getContext(), [action] { _Surface->draw(action); });
}

int ozSphere::isect(ozIsectAction *action) {
  cleanFields();
  if (_radius == 0.0f) return 0;
  ozSphereBound const sphere(_center[0], _center[1], _center[2], _radius);
  ozSeg *const seg = action->getActiveSeg();
  float nearest, farthest;
  if (!sphere.isect(seg, &nearest, &farthest)) return 0;
  seg->setLength(nearest);
  action->hitGeometry(this);
  ozVec3f normal;
  normal.sub(action->hit.localPoint, _center);
  normal.normalize();
  ozSetHitNormal(action->hit, normal);
  return 1;
}

// ---- the mesh

namespace {

ozVec3f const Right(1, 0, 0), Left(-1, 0, 0), Top(0, 1, 0), Bottom(0, -1, 0), Front(0, 0, 1), Back(0, 0, -1);

ozVec3f lerp(ozVec3f const &p, ozVec3f const &q, float t) {
  ozVec3f result;
  result.sub(q, p);
  result *= t;
  result += p;
  return result;
}

float arc(ozVec3f const &a, ozVec3f const &b) {
  float const cosine = a.dot(b);
  return acosf(cosine < -1.0f ? -1.0f : cosine > 1.0f ? 1.0f : cosine);
}

// Longitude and latitude, both from 0 to 1. A pole takes the middle of its quadrant.
ozVec2f texCoordOf(ozVec3f const &p, int quadrant) {
  ozVec2f result(0, arc(p, Bottom) / 3.1415927f);
  if (p[1] == 1.0f || p[1] == -1.0f) {
    result._v[0] = static_cast<float>(quadrant) * 0.25f + 0.125f;
    return result;
  }
  ozVec3f across(p[0], 0, p[2]);
  across.normalize();
  float const u = arc(across, Back) / 6.2831855f;
  result._v[0] = quadrant >= 2 ? 1 - u : u;
  return result;
}

} // namespace

// An octahedron whose faces are cut into rows and blown up to the sphere. A face is given by its apex and the ends of
// its base; each row is a strip.
ozTriStripSet *ozSphere::makeSphere(int triangles) {
  struct Face {
    ozVec3f apex, left, right;
  } const faces[8] = {{Top, Back, Left},    {Top, Left, Front},    {Top, Front, Right},    {Top, Right, Back},
                      {Bottom, Left, Back}, {Bottom, Front, Left}, {Bottom, Right, Front}, {Bottom, Back, Right}};
  int const root = triangles > 0 ? static_cast<int>(sqrt(triangles * 0.125)) : 0;
  int const n = root > 1 ? root : 1;
  ozMesh mesh(8LL * n * (n + 2), 8LL * n, ozGeoSet::PER_VERTEX_NORMAL);
  if (!mesh.point) return mesh.finish();
  int at = 0;
  for (int f = 0; f < 8; ++f) {
    Face const &face = faces[f];
    auto const emit = [&](ozVec3f point) {
      point.normalize();
      mesh.point[at] = mesh.normal[at] = point;
      mesh.texCoord[at++] = texCoordOf(point, f & 3);
    };
    for (int i = 0; i < n; ++i) {
      auto const part = [](int a, int b) { return static_cast<float>(a) / static_cast<float>(b); };
      ozVec3f const l1 = lerp(face.apex, face.right, part(i + 1, n)), l0 = lerp(face.apex, face.right, part(i, n));
      ozVec3f const r1 = lerp(face.apex, face.left, part(i + 1, n)), r0 = lerp(face.apex, face.left, part(i, n));
      emit(l1);
      emit(l0);
      for (int j = 1; j <= i; ++j) {
        emit(lerp(l1, r1, part(j, i + 1)));
        emit(lerp(l0, r0, part(j, i)));
      }
      emit(r1);
      mesh.length[f * n + i] = 3 + 2 * i;
    }
  }
  return mesh.finish();
}
