#include "geometry/ozPickTree.h"

#include <stdlib.h>

#include "geometry/ozLane4.h"
#include "geometry/ozPickBounds.h"
#include "geometry/ozPickBuilder.h"

ozPickTree::~ozPickTree() {
  free(nodes);
  free(tris);
}

namespace {

// A ray as the boxes see it. All is rounded so that a box is never missed that the exact ray meets within the bounds
// of ozPickBounds; see T. Ize, "Robust BVH Ray Traversal", 2013.
struct BoxRay {
  ozLane4 inverse[3];
  ozLane4 entered[3], left[3]; // the origin as the near and the far side see it, which are moved outwards
  int nearSide[3];
  bool usable;

  BoxRay(ozVec3f const &origin, ozVec3f const &direction, float reach) : usable(false) {
    float steepest = 0, farthest = 0;
    for (int i = 0; i < 3; ++i) {
      float const size = fabsf(direction._v[i]), place = fabsf(origin._v[i]);
      if (!(size <= 1024.0f && place <= ozPickBounds::LARGEST)) return;
      if (size > steepest) steepest = size;
      if (place > farthest) farthest = place;
    }
    if (!(steepest >= 1 / 1024.0f)) return;
    float const pad = ozPickBounds::RAY_FACTOR * (farthest + reach), least = ozPickBounds::ROUNDING * steepest;
    for (int i = 0; i < 3; ++i) {
      float const along = direction._v[i];
      // A direction that is nearly parallel to the faces is bent by less than the boxes are padded.
      float const slope = 1.0f / (fabsf(along) >= least ? along : copysignf(least, along));
      bool const back = slope < 0;
      inverse[i] = ozLane4::fill(slope);
      entered[i] = ozLane4::fill(origin._v[i] + (back ? -pad : pad));
      left[i] = ozLane4::fill(origin._v[i] - (back ? -pad : pad));
      nearSide[i] = back ? ozPickNode::HIGH : ozPickNode::LOW;
    }
    usable = true;
  }
};

struct Entry {
  int child;
  float near;
};

} // namespace

bool ozPickTree::search(ozTriSearch &search) const {
  BoxRay const ray(search.origin, search.direction, reach);
  if (!ray.usable) return false;
  auto const test = [&](unsigned int first, unsigned int count) {
    for (ozPickTri const *tri = tris + first, *const end = tri + count; tri != end; ++tri)
      search.add(tri->a, tri->b, tri->c, tri->number, tri->prim);
    search.finish();
  };
  test(bounded, triCount - bounded);
  if (!nodes) return true;

  Entry stack[ozPickBuilder::STACK];
  Entry *top = stack;
  for (int current = 0;;) {
    if (current < 0) {
      test(ozPickNode::leafFirst(current), ozPickNode::leafCount(current));
    } else {
      ozPickNode const &node = nodes[current];
      ozLane4 near = ozLane4::fill(0.0f), far = ozLane4::fill(search.limit);
      for (int i = 0; i < 3; ++i) {
        float const *const entry = node.side[ray.nearSide[i]][i], *const exit = node.side[!ray.nearSide[i]][i];
        near = max(near, (ozLane4::load(entry) - ray.entered[i]) * ray.inverse[i]);
        far = min(far, (ozLane4::load(exit) - ray.left[i]) * ray.inverse[i]);
      }
      if (int met = (near <= far).bits()) {
        // On with the nearest child; the others have to wait.
        float distance[ozPickNode::WIDTH];
        near.store(distance);
        Entry nearest = {0, 0.0f};
        for (bool first = true; met; met &= met - 1) {
          int const i = __builtin_ctz(static_cast<unsigned int>(met));
          Entry const other = {node.child[i], distance[i]};
          bool const nearer = first || other.near < nearest.near;
          if (!first) *top++ = nearer ? nearest : other;
          if (nearer) nearest = other;
          first = false;
        }
        current = nearest.child;
        continue;
      }
    }
    do {
      if (top == stack) return true;
      --top;
    } while (!(top->near <= search.limit));
    current = top->child;
  }
}
