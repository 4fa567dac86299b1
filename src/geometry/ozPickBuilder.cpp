// Ranges of boxes are split where the surface area heuristic, evaluated at the borders of evenly spaced bins of
// centroids along the widest axis, finds the cheapest place: I. Wald, "On fast Construction of SAH-based Bounding
// Volume Hierarchies", 2007. A node takes the splits of two levels at once.

#include "geometry/ozPickBuilder.h"

#include <float.h>
#include <stdlib.h>
#include <string.h>

#include "geometry/ozLane4.h"
#include "geometry/ozPickBounds.h"

namespace {

int const BINS = 16;
unsigned int const SMALL = 4;     // so few triangles are always a leaf
float const NODE_COST = 0.5f;     // of one more split, in tests of four triangles
unsigned int const NOWHERE = ~0u; // the place of a triangle that is never hit

struct Box {
  ozLane4 low = ozLane4::fill(FLT_MAX), high = ozLane4::fill(-FLT_MAX);

  void add(ozLane4 l, ozLane4 h) {
    low = min(low, l);
    high = max(high, h);
  }
  void add(Box const &other) { add(other.low, other.high); }
  float halfArea() const {
    float size[4];
    (high - low).store(size);
    return size[0] * size[1] + size[1] * size[2] + size[2] * size[0];
  }
};

// Triangles are tested by fours.
float testCost(unsigned int count) { return static_cast<float>((count + 3) / 4); }

struct Bin {
  Box box;
  unsigned int count = 0;
};

} // namespace

// The fourth lanes take part in the arithmetic and mean nothing: the number is stored so that it is an ordinary float.
struct ozPickBuilder::Ref {
  float low[3];
  unsigned int number;
  float high[3];
  float one;

  static unsigned int const OFFSET = 0x10000000;
  ozLane4 lowLane() const { return ozLane4::load(low); }
  ozLane4 highLane() const { return ozLane4::load(high); }
};

struct ozPickBuilder::Range {
  unsigned int first, count;
  Box box;     // around the boxes
  Box centers; // around the sums of low and high

  void add(Ref const &ref) {
    box.add(ref.lowLane(), ref.highLane());
    addCenter(ref);
  }
  void addCenter(Ref const &ref) {
    ozLane4 const sum = ref.lowLane() + ref.highLane();
    centers.add(sum, sum);
  }
};

ozPickBuilder::~ozPickBuilder() {
  free(_refs);
  free(_places);
}

bool ozPickBuilder::begin(unsigned int count) {
  if (count >= ozPickNode::MAX_TRIS) return false;
  _count = count;
  _refs = static_cast<Ref *>(malloc((count ? count : 1) * sizeof(Ref)));
  return _refs != nullptr;
}

void ozPickBuilder::addBox(ozVec3f const &a, ozVec3f const &b, ozVec3f const &c) {
  unsigned int const number = _added++;
  if (number >= _count) return;
  Ref &ref = _refs[_bounded];
  ozPickBounds::KindEnum const kind = ozPickBounds::around(a, b, c, ref.low, ref.high);
  ref.one = 1.0f;
  ref.number = number + Ref::OFFSET;
  if (kind == ozPickBounds::BOUNDED) ++_bounded;
  // Where this one stands is free again, and so is all behind it up to those that stand there already.
  if (kind == ozPickBounds::UNBOUNDED) _refs[_count - ++_unbounded].number = number + Ref::OFFSET;
}

bool ozPickBuilder::arrange(ozPickTree &tree) {
  if (_added != _count || _unbounded > _count / 2) return false;
  _tree = &tree;
  if (_bounded) {
    Range all;
    all.first = 0;
    all.count = _bounded;
    measure(all);
    float low[4], high[4];
    all.box.low.store(low);
    all.box.high.store(high);
    for (int i = 0; i < 3; ++i) {
      if (-low[i] > tree.reach) tree.reach = -low[i];
      if (high[i] > tree.reach) tree.reach = high[i];
    }
    if (build(all, 0) < 0) return false;
    void *const fitted = realloc(tree.nodes, tree.nodeCount * sizeof(ozPickNode));
    if (fitted) tree.nodes = static_cast<ozPickNode *>(fitted);
  }
  _places = static_cast<unsigned int *>(malloc((_count ? _count : 1) * sizeof(unsigned int)));
  if (!_places) return false;
  for (unsigned int i = 0; i < _count; ++i) _places[i] = NOWHERE;
  for (unsigned int i = 0; i < _bounded; ++i) _places[_refs[i].number - Ref::OFFSET] = i;
  for (unsigned int i = 0; i < _unbounded; ++i) _places[_refs[_count - 1 - i].number - Ref::OFFSET] = _bounded + i;
  free(_refs); // before the triangles take their place
  _refs = nullptr;
  tree.bounded = _bounded;
  tree.triCount = _bounded + _unbounded;
  tree.tris = static_cast<ozPickTri *>(malloc((tree.triCount ? tree.triCount : 1) * sizeof(ozPickTri)));
  _added = 0;
  return tree.tris != nullptr;
}

void ozPickBuilder::addTri(ozVec3f const &a, ozVec3f const &b, ozVec3f const &c, int prim) {
  unsigned int const number = _added++;
  if (number >= _count || _places[number] == NOWHERE) return;
  ozPickTri &tri = _tree->tris[_places[number]];
  tri.a = a;
  tri.b = b;
  tri.c = c;
  tri.number = number;
  tri.prim = prim;
}

int ozPickBuilder::newNode() {
  if (_tree->nodeCount == _room) {
    unsigned int const room = _room ? _room + _room / 2 : _bounded / 8 + 16;
    void *const grown = realloc(_tree->nodes, room * sizeof(ozPickNode));
    if (!grown) return -1;
    _tree->nodes = static_cast<ozPickNode *>(grown);
    _room = room;
  }
  return static_cast<int>(_tree->nodeCount++);
}

void ozPickBuilder::measure(Range &range) const {
  range.box = range.centers = Box();
  for (Ref const *ref = _refs + range.first, *const end = ref + range.count; ref != end; ++ref) range.add(*ref);
}

void ozPickBuilder::halve(Range const &range, Range &left, Range &right) {
  left.first = range.first;
  left.count = range.count / 2;
  right.first = range.first + left.count;
  right.count = range.count - left.count;
  measure(left);
  measure(right);
}

// Whether to split; false leaves the refs as they were.
bool ozPickBuilder::split(Range const &range, Range &left, Range &right) {
  float origin[4], size[4];
  range.centers.low.store(origin);
  (range.centers.high - range.centers.low).store(size);
  int const axis = size[0] > size[1] ? (size[0] > size[2] ? 0 : 2) : (size[1] > size[2] ? 1 : 2);
  float const scale = BINS * (1 - 4 * FLT_EPSILON) / size[axis], start = origin[axis];
  if (!(scale > 0 && scale <= FLT_MAX)) return false;
  auto const binOf = [=](Ref const &ref) {
    int const bin = static_cast<int>((ref.low[axis] + ref.high[axis] - start) * scale);
    return bin < BINS ? bin : BINS - 1;
  };

  Bin bins[BINS];
  Ref *const begin = _refs + range.first, *const end = begin + range.count;
  for (Ref const *ref = begin; ref != end; ++ref) {
    Bin &bin = bins[binOf(*ref)];
    bin.box.add(ref->lowLane(), ref->highLane());
    ++bin.count;
  }

  float rightCost[BINS];
  Box grown;
  unsigned int count = 0;
  for (int i = BINS - 1; i > 0; --i) {
    grown.add(bins[i].box);
    count += bins[i].count;
    rightCost[i] = count ? grown.halfArea() * testCost(count) : 0.0f;
  }
  grown = Box();
  count = 0;
  int best = 0; // the first bin on the right
  float bestCost = FLT_MAX;
  for (int i = 1; i < BINS; ++i) {
    grown.add(bins[i - 1].box);
    count += bins[i - 1].count;
    if (!count || count == range.count) continue;
    float const cost = grown.halfArea() * testCost(count) + rightCost[i];
    if (cost < bestCost) {
      bestCost = cost;
      best = i;
    }
  }
  if (!best) return false;
  float const area = range.box.halfArea();
  if (range.count <= ozPickNode::LEAF_SIZE && !(bestCost + NODE_COST * area < area * testCost(range.count)))
    return false;

  left.box = left.centers = right.box = right.centers = Box();
  for (int i = 0; i < BINS; ++i) (i < best ? left : right).box.add(bins[i].box);
  Ref *low = begin, *high = end;
  for (;;) {
    for (; low != high && binOf(*low) < best; ++low) left.addCenter(*low);
    for (; low != high && binOf(high[-1]) >= best; --high) right.addCenter(high[-1]);
    if (low == high) break;
    Ref const moved = *low;
    *low = high[-1];
    high[-1] = moved;
  }
  left.first = range.first;
  left.count = static_cast<unsigned int>(low - begin);
  right.first = range.first + left.count;
  right.count = range.count - left.count;
  return true;
}

// Makes the node of a range and all below it; -1 without memory.
int ozPickBuilder::build(Range const &range, int depth) {
  int const index = newNode();
  if (index < 0) return -1;
  int const WIDTH = ozPickNode::WIDTH;
  Range parts[WIDTH];
  bool whole[WIDTH] = {}; // not to be split further
  parts[0] = range;
  int count = 1;
  bool const deep = depth >= MAX_DEPTH;
  while (count < WIDTH) {
    int next = -1;
    float cost = -1;
    for (int i = 0; i < count; ++i) {
      if (whole[i] || parts[i].count <= SMALL) continue;
      float const own = (deep ? 1.0f : parts[i].box.halfArea()) * static_cast<float>(parts[i].count);
      if (next < 0 || own > cost) {
        next = i;
        cost = own;
      }
    }
    if (next < 0) break;
    Range left, right;
    if (deep ? parts[next].count > ozPickNode::LEAF_SIZE && (halve(parts[next], left, right), true)
             : split(parts[next], left, right)) {
      parts[next] = left;
      parts[count++] = right;
    } else if (!deep && parts[next].count > ozPickNode::LEAF_SIZE) {
      halve(parts[next], left, right);
      parts[next] = left;
      parts[count++] = right;
    } else {
      whole[next] = true;
    }
  }

  int children[WIDTH] = {};
  for (int i = 0; i < count; ++i) {
    bool const leaf = whole[i] || parts[i].count <= SMALL;
    children[i] = leaf ? ozPickNode::leaf(parts[i].first, parts[i].count) : build(parts[i], depth + 1);
    if (!leaf && children[i] < 0) return -1;
  }
  ozPickNode &node = _tree->nodes[index];
  for (int i = 0; i < WIDTH; ++i) {
    node.child[i] = children[i];
    Box const box = i < count ? parts[i].box : Box();
    float low[4], high[4];
    box.low.store(low);
    box.high.store(high);
    for (int axis = 0; axis < 3; ++axis) {
      node.side[ozPickNode::LOW][axis][i] = low[axis];
      node.side[ozPickNode::HIGH][axis][i] = high[axis];
    }
  }
  return index;
}
