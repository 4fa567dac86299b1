#ifndef GEOMETRY_OZ_PICK_TREE_H
#define GEOMETRY_OZ_PICK_TREE_H

#include "geometry/ozTriSearch.h"

// A bounding volume hierarchy over the triangles of a set: nodes of up to four children each, and copies of the
// triangles in the order of the leaves.

struct ozPickTri {
  ozVec3f a, b, c;
  unsigned int number;
  int prim;
};

struct ozPickNode {
  enum { WIDTH = 4, LEAF_BITS = 3, LEAF_SIZE = 1 << LEAF_BITS, MAX_TRIS = 1 << (31 - LEAF_BITS) };
  enum SideEnum { LOW, HIGH };

  float side[2][3][WIDTH]; // by axis, then by child; what is no child has its sides the wrong way round
  int child[WIDTH];        // an index of a node, or, negative, the triangles of a leaf

  static int leaf(unsigned int first, unsigned int count) {
    return static_cast<int>(~(first << LEAF_BITS | (count - 1)));
  }
  static unsigned int leafFirst(int child) { return ~static_cast<unsigned int>(child) >> LEAF_BITS; }
  static unsigned int leafCount(int child) { return (~static_cast<unsigned int>(child) & (LEAF_SIZE - 1)) + 1; }
};

// Frees its memory when it goes.
class ozPickTree {
public:
  ozPickTree() : nodes(nullptr), tris(nullptr), nodeCount(0), bounded(0), triCount(0), reach(0) {}
  ~ozPickTree();
  ozPickTree(ozPickTree const &) = delete;
  ozPickTree &operator=(ozPickTree const &) = delete;

  // Tests all triangles that the segment may hit by the arithmetic of the test. False: it lies where that cannot be
  // told, and the search is untouched.
  bool search(ozTriSearch &search) const;

  ozPickNode *nodes; // the first is the root; null without bounded triangles
  ozPickTri *tris;   // the bounded ones in the order of the leaves, then the others
  unsigned int nodeCount, bounded, triCount;
  float reach; // the largest coordinate of a box
};

#endif
