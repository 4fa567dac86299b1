#ifndef GEOMETRY_OZ_PICK_BUILDER_H
#define GEOMETRY_OZ_PICK_BUILDER_H

#include "geometry/ozPickTree.h"

// Builds an ozPickTree from triangles that are given twice, in the same order:
//   begin(count), addBox(...) for each, arrange(tree), addTri(...) for each.
// Each call says whether there was memory enough, and the tree is worth it.
class ozPickBuilder {
public:
  enum {
    MAX_DEPTH = 48,     // below, ranges are halved
    HALVING_STEPS = 16, // more levels than there can be then, as each node hands on quarters of its range
    STACK = (MAX_DEPTH + HALVING_STEPS) * (ozPickNode::WIDTH - 1) + 1
  };

  ozPickBuilder()
      : _refs(nullptr), _places(nullptr), _count(0), _added(0), _bounded(0), _unbounded(0), _room(0), _tree(nullptr) {}
  ~ozPickBuilder();
  ozPickBuilder(ozPickBuilder const &) = delete;
  ozPickBuilder &operator=(ozPickBuilder const &) = delete;

  bool begin(unsigned int count);
  void addBox(ozVec3f const &a, ozVec3f const &b, ozVec3f const &c);
  bool arrange(ozPickTree &tree);
  void addTri(ozVec3f const &a, ozVec3f const &b, ozVec3f const &c, int prim);

private:
  struct Ref;
  struct Range;

  int newNode();
  bool split(Range const &range, Range &left, Range &right);
  void halve(Range const &range, Range &left, Range &right);
  void measure(Range &range) const;
  int build(Range const &range, int depth);

  Ref *_refs;            // the boxes of the bounded triangles from the front, the unbounded ones from the back
  unsigned int *_places; // where a triangle goes in the tree, by its number
  unsigned int _count, _added, _bounded, _unbounded, _room;
  ozPickTree *_tree;
};

#endif
