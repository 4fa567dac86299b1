// Large sets build an index for rays. It must not be seen: whatever the mesh and the ray, the record of a hit is the
// same, to the bit, as that of a set that has no index.

#include "geometry/geometryFixture.h"

#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <random>

namespace {

float const INF = std::numeric_limits<float>::infinity();
float const NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();
int const WARM_UP = 40; // rays after which any large set has built its index

class Dice {
public:
  explicit Dice(unsigned int seed) : _engine(seed) {}
  unsigned int below(unsigned int end) { return _engine() % end; }
  bool once(unsigned int in) { return below(in) == 0; }
  float between(float from, float to) {
    return from + (to - from) * (static_cast<float>(_engine() >> 8) / static_cast<float>(1 << 24));
  }
  ozVec3f point(float size) {
    float const x = between(-size, size), y = between(-size, size);
    return ozVec3f(x, y, between(-size, size));
  }

private:
  std::mt19937 _engine;
};

typedef std::vector<ozVec3f> Points;

// ---- meshes, as lists of points of which each three are a triangle, each four a quad and so on

Points soup(Dice &dice, int count, float size, float triangle) {
  Points points;
  while (static_cast<int>(points.size()) < count) {
    ozVec3f const at = dice.point(size);
    for (int i = 0; i < 3; ++i) {
      ozVec3f corner = dice.point(triangle);
      corner += at;
      points.push_back(corner);
    }
  }
  return points;
}

// Points on few coordinates: many equal triangles, edges in common, planes along the axes.
Points lattice(Dice &dice, int count, unsigned int steps) {
  Points points;
  for (int i = 0; i < count; ++i) {
    float const x = static_cast<float>(dice.below(steps)), y = static_cast<float>(dice.below(steps));
    points.push_back(ozVec3f(x, y, static_cast<float>(dice.below(steps))));
  }
  return points;
}

Points terrain(Dice &dice, int side, float height) {
  Points points;
  for (int y = 0; y < side; ++y)
    for (int x = 0; x < side; ++x) {
      float const u = static_cast<float>(x), v = static_cast<float>(y);
      for (ozVec3f const &corner : {ozVec3f(u, v, 0), ozVec3f(u + 1, v, 0), ozVec3f(u, v + 1, 0), ozVec3f(u, v + 1, 0),
                                    ozVec3f(u + 1, v, 0), ozVec3f(u + 1, v + 1, 0)}) {
        ozVec3f raised = corner;
        raised[2] = height * std::sin(corner[0] * 0.7f + corner[1] * 1.1f);
        points.push_back(raised);
      }
    }
  (void)dice;
  return points;
}

// Slivers down to the limits of the numbers, each about some point.
Points slivers(Dice &dice, int count) {
  Points points;
  for (int i = 0; i < count; i += 3) {
    ozVec3f const a = dice.point(5);
    ozVec3f b = dice.point(dice.once(2) ? 3.0f : 1e-3f), c = b;
    float const thin = std::pow(10.0f, dice.between(-9, 0));
    c.addScaled(b, thin, dice.point(1));
    b += a;
    c += a;
    points.insert(points.end(), {a, b, c});
  }
  return points;
}

// Spoils some coordinates with what a float can be.
void spoil(Dice &dice, Points &points, unsigned int oneIn) {
  float const values[] = {NOT_A_NUMBER, INF, -INF,  3e38f,  -3e38f, 1e30f,  1e19f, 1e18f,
                          1e10f,        0,   -0.0f, 1e-45f, 1e-38f, 1e-20f, 1e-8f, 1e5f};
  for (ozVec3f &point : points)
    if (dice.once(oneIn)) point[static_cast<int>(dice.below(3))] = values[dice.below(16)];
}

Points scaled(Points points, float factor, ozVec3f const &offset = ozVec3f()) {
  for (ozVec3f &point : points) {
    point *= factor;
    point += offset;
  }
  return points;
}

// ---- sets

enum Kind { TRIS, QUADS, STRIPS, FANS, POLYS, KINDS };

ozGeoSet *makeSet(Kind kind, Dice dice, ozCoordSet3f *coords, ozIndexSet *index, unsigned int count) {
  ozGeoSet *set = nullptr;
  std::vector<int> lengths;
  if (kind == TRIS || kind == QUADS) {
    if (kind == TRIS)
      set = new ozTriSet;
    else
      set = new ozQuadSet;
    set->setPrimCount(static_cast<int>(count / (kind == TRIS ? 3 : 4)));
  } else {
    for (unsigned int used = 0; used < count;) {
      unsigned int const length = kind == POLYS && dice.once(50) ? dice.below(3) : 3 + dice.below(8);
      if (used + length > count) break;
      lengths.push_back(static_cast<int>(length));
      used += length < 3 ? 2 : length;
    }
    auto const give = [&](auto *made, ozMFInt *field) {
      field->setRange(0, static_cast<unsigned int>(lengths.size()), lengths.data());
      made->setPrimCount(static_cast<int>(lengths.size()));
      set = made;
    };
    if (kind == STRIPS) {
      auto *const made = new ozTriStripSet;
      give(made, made->stripLength());
    } else if (kind == FANS) {
      auto *const made = new ozTriFanSet;
      give(made, made->fanLength());
    } else {
      auto *const made = new ozPolySet;
      give(made, made->polyLength());
    }
  }
  set->setCoordSet(coords);
  set->setCoordIndexSet(index);
  return set;
}

// ---- the arithmetic of single floats that both have to give the results of

struct Found {
  int prim = -1;
  float distance = 0;
  ozVec3f normal;
};

void tryTriangle(ozSeg const &seg, ozVec3f const *p, int cull, int prim, Found &found) {
  ozVec3f ab, ac, normal;
  ab.sub(p[1], p[0]);
  ac.sub(p[2], p[0]);
  normal.cross(ab, ac);
  normal.normalize();
  float const offset = normal.dot(p[0]), size[3] = {std::fabs(normal[0]), std::fabs(normal[1]), std::fabs(normal[2])};
  int u = 0, v = 1;
  if (size[0] > size[1]) {
    if (size[0] > size[2]) u = 1, v = 2;
  } else if (size[1] > size[2]) {
    v = 2;
  }
  float det = ab[u] * ac[v] - ac[u] * ab[v];
  if (std::fabs(det) < 1e-15f) det = 1e-15f;
  float const inverse = 1.0f / det;

  ozVec3f const &origin = seg.getOrigin(), &direction = seg.getDirection();
  float const dn = normal.dot(direction);
  if ((cull == ozContext::BACK_CULL && dn >= 0) || (cull == ozContext::FRONT_CULL && dn <= 0)) return;
  if (std::fabs(dn) < 1e-15f) return;
  float const t = (offset - origin.dot(normal)) / dn, length = found.prim < 0 ? seg.getLength() : found.distance;
  if (!(t >= 0 && t <= length)) return;
  float const pu = direction[u] * t + origin[u] - p[0][u], pv = direction[v] * t + origin[v] - p[0][v];
  float const beta = (pu * ac[v] - pv * ac[u]) * inverse;
  if (!(beta >= 0 && beta <= 1)) return;
  float const gamma = (pv * ab[u] - pu * ab[v]) * inverse;
  if (!(gamma >= 0 && beta + gamma <= 1)) return;
  found.prim = prim;
  found.distance = t;
  found.normal = normal;
}

// The same triangles twice, with and without an index, in a bound that lets every ray through.
class Twins {
public:
  Twins(Kind kind, Points const &points, bool indexed, unsigned int seed)
      : _points(points), _plain(kind == TRIS && !indexed) {
    auto *const coords = new ozCoordSet3f;
    unsigned int count = static_cast<unsigned int>(points.size());
    coords->point()->setRange(0, count, points.data());
    ozIndexSet *index = nullptr;
    Dice dice(seed);
    if (indexed) {
      std::vector<int> values;
      for (unsigned int i = 0; i < count; ++i)
        values.push_back(static_cast<int>(dice.once(10) ? dice.below(count) : i));
      index = new ozIndexSet;
      index->index()->setRange(0, count, values.data());
    }
    for (auto *set : {&with, &without}) {
      set->reset(new Held<ozGeoSet>(makeSet(kind, dice, coords, index, count)));
      ozBoxBound box;
      box.min = -3e38f;
      box.max = 3e38f;
      (**set)->setBoundMode(ozGeometry::STATIC);
      (**set)->setBoxBound(box);
    }
    (*without)->setPickIndexEnable(0);
  }

  void setCull(ozContext::CullFaceEnum cull) {
    _cull = cull;
    (*with)->setCullFace(cull);
    (*without)->setCullFace(cull);
  }

  // Casts one ray into both. Returns whether it hit something; says what differs.
  bool agree(ozVec3f const &origin, ozVec3f const &direction, float length, std::string &difference) {
    int const a = cast(*with, origin, direction, length, _a), b = cast(*without, origin, direction, length, _b);
    auto const compare = [&](char const *what, void const *one, void const *other, size_t size) {
      if (memcmp(one, other, size)) difference += std::string(" ") + what;
    };
    compare("result", &a, &b, sizeof a);
    compare("segment", _a.getActiveSeg(), _b.getActiveSeg(), sizeof(ozSeg));
    if (a && b) {
      compare("distance", &_a.hit.distance, &_b.hit.distance, sizeof(float));
      compare("primIndex", &_a.hit.primIndex, &_b.hit.primIndex, sizeof(int));
      compare("localPoint", &_a.hit.localPoint, &_b.hit.localPoint, sizeof(ozVec3f));
      compare("worldPoint", &_a.hit.worldPoint, &_b.hit.worldPoint, sizeof(ozVec3f));
      compare("localNormal", &_a.hit.localNormal, &_b.hit.localNormal, sizeof(ozVec3f));
      compare("worldNormal", &_a.hit.worldNormal, &_b.hit.worldNormal, sizeof(ozVec3f));
    }
    if (_plain && length != 0) { // a segment without length meets no bound
      Found found;
      for (size_t i = 0; i + 3 <= _points.size(); i += 3)
        tryTriangle(_b.seg, &_points[i], _cull, static_cast<int>(i / 3), found);
      if (b != (found.prim >= 0)) difference += " whether there is a hit";
      if (b && found.prim >= 0) {
        compare("primIndex by single floats", &found.prim, &_b.hit.primIndex, sizeof(int));
        compare("distance by single floats", &found.distance, &_b.hit.distance, sizeof(float));
        compare("normal by single floats", &found.normal, &_b.hit.localNormal, sizeof(ozVec3f));
      }
    }
    return b;
  }

  // Rays of all sorts; returns how many hit.
  int castMany(Dice &dice, int count, float size) {
    int hits = 0;
    for (int i = 0; i < count; ++i) {
      ozVec3f origin = dice.point(size * (dice.once(8) ? 1000.0f : 2.0f)), direction, target = dice.point(size);
      switch (dice.below(6)) {
      case 0: // at a corner
        target = _points[dice.below(static_cast<unsigned int>(_points.size()))];
        break;
      case 1: { // at the middle of an edge
        unsigned int const at = dice.below(static_cast<unsigned int>(_points.size()) - 1);
        target.combine(0.5f, _points[at], 0.5f, _points[at + 1]);
        break;
      }
      case 2: // from a corner
        origin = _points[dice.below(static_cast<unsigned int>(_points.size()))];
        break;
      default: { // at the inside of what may be a triangle
        unsigned int const at = dice.below(static_cast<unsigned int>(_points.size()) / 3) * 3;
        float const s = dice.between(0, 1), t = dice.between(0, 1 - s);
        target.combine(s, _points[at], t, _points[at + 1]);
        target.addScaled(target, 1 - s - t, _points[at + 2]);
      }
      }
      direction.sub(target, origin);
      if (dice.once(4)) { // along an axis
        int const axis = static_cast<int>(dice.below(3));
        float const sign = dice.once(2) ? 1.0f : -1.0f;
        origin = target;
        origin[axis] -= sign * 3 * size;
        direction = ozVec3f();
        direction[axis] = sign;
      }
      if (dice.once(10)) direction[static_cast<int>(dice.below(3))] = 0;
      direction.normalize();
      if (dice.once(20)) direction *= dice.between(0, 5);
      float const lengths[] = {1e38f, 1e38f, 1e38f, 3 * size, size, INF};
      float length = lengths[dice.below(6)];
      if (dice.once(100)) {
        float const odd[] = {0, -1, NOT_A_NUMBER, 1e-30f};
        length = odd[dice.below(4)];
      }
      if (dice.once(100)) {
        float const odd[] = {NOT_A_NUMBER, INF, 1e25f, 1e-40f, 0, -1e30f};
        (dice.once(2) ? origin : direction)[static_cast<int>(dice.below(3))] = odd[dice.below(6)];
      }
      std::string difference;
      hits += agree(origin, direction, length, difference);
      EXPECT_EQ(difference, "") << "ray " << i << " from " << origin[0] << " " << origin[1] << " " << origin[2]
                                << " along " << direction[0] << " " << direction[1] << " " << direction[2] << " to "
                                << length;
      if (!difference.empty()) break;
    }
    return hits;
  }

  std::unique_ptr<Held<ozGeoSet>> with, without;

private:
  static int cast(Held<ozGeoSet> &set, ozVec3f const &origin, ozVec3f const &direction, float length,
                  ozIsectAction &action) {
    aim(action, origin, direction, length);
    return set->isect(&action);
  }

  Points _points;
  bool _plain;
  int _cull = ozContext::BACK_CULL;
  ozIsectAction _a, _b;
};

// Each kind of primitives with each cull face, with an index set and without. Returns how many rays hit.
int compareAll(Points const &points, float size, int rays = 60) {
  int hits = 0;
  unsigned int seed = 0;
  for (int kind = 0; kind < KINDS; ++kind)
    for (bool indexed : {false, true}) {
      Dice dice(++seed);
      Twins twins(static_cast<Kind>(kind), points, indexed, seed);
      twins.setCull(ozContext::NO_CULL);
      hits += twins.castMany(dice, WARM_UP, size);
      for (ozContext::CullFaceEnum cull : {ozContext::NO_CULL, ozContext::BACK_CULL, ozContext::FRONT_CULL}) {
        twins.setCull(cull);
        hits += twins.castMany(dice, rays, size);
      }
    }
  return hits;
}

// ---- the answers

TEST(PickIndex, HitsWhatTheLoopHitsInRandomMeshes) {
  Dice dice(1);
  EXPECT_GT(compareAll(soup(dice, 1500, 5, 1), 5), 1000);
  EXPECT_GT(compareAll(soup(dice, 6000, 5, 0.2f), 5), 300);
  EXPECT_GT(compareAll(soup(dice, 1500, 0.1f, 5), 5), 1000);
}

TEST(PickIndex, HitsTheLastOfEqualTriangles) {
  Dice dice(2);
  EXPECT_GT(compareAll(lattice(dice, 1500, 2), 2), 1000);
  EXPECT_GT(compareAll(lattice(dice, 3000, 4), 4), 1000);
  Points same;
  for (int i = 0; i < 500; ++i) same.insert(same.end(), {ozVec3f(0, 0, 0), ozVec3f(1, 0, 0), ozVec3f(0, 1, 0)});
  EXPECT_GT(compareAll(same, 1), 300);
}

TEST(PickIndex, HitsWhatTheLoopHitsInASurface) {
  Dice dice(3);
  EXPECT_GT(compareAll(terrain(dice, 24, 2), 24), 800);
  EXPECT_GT(compareAll(terrain(dice, 24, 0), 24), 300); // flat
}

TEST(PickIndex, HitsWhatTheLoopHitsInSlivers) {
  Dice dice(4);
  EXPECT_GT(compareAll(slivers(dice, 3000), 5, 250), 200);
}

TEST(PickIndex, HitsWhatTheLoopHitsAmongValuesThatAreNoPlaces) {
  Dice dice(5);
  for (unsigned int oneIn : {3u, 20u, 300u}) {
    Points points = soup(dice, 2100, 5, 1);
    spoil(dice, points, oneIn);
    EXPECT_GT(compareAll(points, 5), 50);
  }
  Points points = terrain(dice, 20, 1);
  spoil(dice, points, 40);
  EXPECT_GT(compareAll(points, 20), 500);
}

TEST(PickIndex, HitsWhatTheLoopHitsAtAnySize) {
  Dice dice(6);
  Points const points = soup(dice, 1200, 1, 0.5f);
  for (float factor : {1e-30f, 1e-12f, 1e-8f, 1e-6f, 1e-3f, 1e4f, 1e8f, 1e12f, 1e17f, 1e20f, 1e30f})
    compareAll(scaled(points, factor), factor, 60);
  EXPECT_GT(compareAll(scaled(points, 1, ozVec3f(1e5f, -1e5f, 1e5f)), 1e5f, 100), 100);
  EXPECT_GT(compareAll(scaled(points, 1e-3f, ozVec3f(1, 1, 1)), 1, 100), 100);
}

TEST(PickIndex, HitsWhatTheLoopHitsWhereDepthsAndSizesSpreadWidely) {
  // Triangles that shrink towards a corner, so that each split cuts off a few: as deep a tree as can be.
  Dice dice(7);
  Points points;
  for (float at = 1e10f; at > 1e-6f; at *= 0.97f)
    for (int i = 0; i < 3; ++i) {
      ozVec3f corner = dice.point(0.2f * at);
      corner += ozVec3f(at, 0.5f * at, -at);
      points.push_back(corner);
    }
  EXPECT_GT(compareAll(points, 1), 300);
}

} // namespace
