#include "oz/vlGeom.h"

#include <math.h>

#include "oz/ozIndexedFaceSet.h"
#include "oz/ozInterpolator.h"
#include "vrml/PositionTable.h"

namespace {

// A mesh as the normal generator sees it. What a file gave wrong (lengths, indices) is passed over here.
class Mesh {
public:
  explicit Mesh(ozIndexedFaceSet *set)
      : _points(nullptr), _lengths(nullptr), _indices(nullptr), _pointCount(0), _indexCount(0), _faceCount(0) {
    int const prims = set->getPrimCount(); // brings the flat lists up to date
    ozMFInt *const lengths = set->polyLength();
    _lengths = lengths->edit();
    unsigned int const faces = prims < 0 ? 0 : static_cast<unsigned int>(prims);
    _faceCount = faces < lengths->getCount() ? faces : lengths->getCount();
    if (ozIndexSet *const indexSet = set->getCoordIndexSet()) {
      _indices = indexSet->index()->edit();
      _indexCount = indexSet->index()->getCount();
    }
    ozCoordSet *const coords = set->getCoordSet();
    if (coords && coords->isOfType(ozCoordSet3f::getClassType())) {
      ozMFVec3f *const points = static_cast<ozCoordSet3f *>(coords)->point();
      _points = points->edit();
      _pointCount = points->getCount();
    }
  }

  unsigned int faceCount() const { return _faceCount; }
  unsigned int cornerCount() const { return _indexCount; }
  // The number of corners of a face that starts at a corner, as far as there are indices.
  unsigned int length(unsigned int face, unsigned int first) const {
    unsigned int const left = _indexCount - first;
    if (_lengths[face] <= 0) return 0;
    return static_cast<unsigned int>(_lengths[face]) < left ? static_cast<unsigned int>(_lengths[face]) : left;
  }
  // The position of a corner; null if it has none.
  ozVec3f const *position(unsigned int corner) const {
    unsigned int const index = static_cast<unsigned int>(_indices[corner]);
    return index < _pointCount ? &_points[index] : nullptr;
  }
  ozVec3f faceNormal(unsigned int first, unsigned int length) const {
    ozVec3f normal;
    ozVec3f const *const a = length < 3 ? nullptr : position(first);
    ozVec3f const *const b = length < 3 ? nullptr : position(first + 1);
    ozVec3f const *const d = length < 3 ? nullptr : position(first + 2);
    if (!a || !b || !d) return normal;
    ozVec3f ab, ad;
    ab.sub(*b, *a);
    ad.sub(*d, *a);
    normal.cross(ab, ad);
    normal.normalize();
    return normal;
  }

private:
  ozVec3f const *_points;
  int const *_lengths;
  int const *_indices;
  unsigned int _pointCount, _indexCount, _faceCount;
};

// Parts the corners of one position into groups within the crease of their first, and gives each group its mean.
// Comparisons are limited, or a mesh with all its corners at one place would take for ever: when they are used up, what
// is left stays apart.
void smooth(ozIntArray &pairs, ozVec3fArray const &faceNormals, float cosCrease, ozIntArray &normalIndex,
            ozVec3fArray &normals, long &comparisons) {
  for (unsigned int s = 0; s < pairs.getCount(); s += 2) {
    ozVec3f const seed = faceNormals[static_cast<unsigned int>(pairs[s])];
    int const n = static_cast<int>(normals.getCount());
    normalIndex.set(static_cast<unsigned int>(pairs[s + 1]), n);
    ozVec3f sum = seed;
    int count = 1;
    int *const list = pairs.getArray();
    unsigned int end = pairs.getCount();
    for (unsigned int j = s + 2; j < end && comparisons > 0; --comparisons) {
      ozVec3f const &normal = faceNormals.getArray()[list[j]];
      // Against the first of the group, not its mean: the result depends on the order of the faces.
      if (seed.dot(normal) > cosCrease) {
        sum += normal;
        ++count;
        normalIndex.set(static_cast<unsigned int>(list[j + 1]), n);
        end -= 2;
        list[j] = list[end];
        list[j + 1] = list[end + 1];
      } else {
        j += 2;
      }
    }
    pairs.setCount(end);
    sum *= 1.0f / static_cast<float>(count);
    sum.normalize();
    normals.append(sum);
  }
}

} // namespace

void vlGeom::computeNorms(ozIndexedFaceSet *set, float creaseAngle) {
  float const cosCrease = static_cast<float>(cos(static_cast<double>(creaseAngle)));
  Mesh const mesh(set);
  PositionTable table(mesh.faceCount());
  ozVec3fArray faceNormals(mesh.faceCount());
  ozIntArray normalIndex(mesh.cornerCount()), strays;
  unsigned int corner = 0;
  for (unsigned int face = 0; face < mesh.faceCount(); ++face) {
    unsigned int const length = mesh.length(face, corner);
    faceNormals.append(mesh.faceNormal(corner, length));
    for (unsigned int end = corner + length; corner < end; ++corner) {
      if (ozVec3f const *const position = mesh.position(corner))
        table.add(*position, static_cast<int>(face), static_cast<int>(corner));
      else
        strays.append(static_cast<int>(corner));
    }
  }

  ozVec3fArray normals(table.getCount());
  normals.setExtension(table.getCount());
  long comparisons = (1L << 24) + 256L * mesh.cornerCount();
  for (unsigned int i = 0; i < table.getCount(); ++i)
    smooth(table.get(i)->pairs, faceNormals, cosCrease, normalIndex, normals, comparisons);
  for (unsigned int i = 0; i < strays.getCount(); ++i)
    normalIndex.set(static_cast<unsigned int>(strays[i]), static_cast<int>(normals.getCount()));
  if (strays.getCount()) normals.append(ozVec3f(0, 0, 0));

  ozNormalSet3f *const normalSet = new ozNormalSet3f;
  normalSet->vector()->set(normals);
  if (normalIndex.getCount()) set->normalIndex()->setRange(0, normalIndex.getCount(), normalIndex.getArray());
  set->setNormalSet(normalSet);
  set->setNormalBind(ozGeoSet::PER_VERTEX_NORMAL);
}

void vlGeom::calcStaticBound(ozIndexedFaceSet *set) {
  ozCoordSet *const coords = set->getCoordSet();
  ozField *const points = coords ? coords->findFieldObject(0) : nullptr;
  if (!points || points->getInputEnds().isEmpty()) return;
  ozFieldEnds const &sources = points->getInputEnds();
  ozBoxBound box;
  for (unsigned int i = 0; i < sources.getCount(); ++i) {
    ozContainer *const owner = sources.get(i)->getParent();
    // Left out are those that could be bounded: meant so.
    if (owner->isOfType(ozCoordinateInterpolator::getClassType())) continue;
    ozField *const values = owner->getField("keyValue");
    if (!values || values->getType() != ozMFVec3f::getClassType()) continue;
    ozVec3fArray const &points3 = static_cast<ozMFVec3f *>(values)->get();
    if (!points3.getCount()) continue;
    ozBoxBound sourceBox;
    sourceBox.around(points3.getArray(), static_cast<int>(points3.getCount()));
    box.extendBy(&sourceBox);
  }
  set->setBoxBound(box);
  set->setBoundMode(ozGeometry::STATIC);
}
