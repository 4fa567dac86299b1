#ifndef GEOMETRY_OZ_PICK_INDEX_H
#define GEOMETRY_OZ_PICK_INDEX_H

#include "geometry/ozPickBuilder.h"

// What a large set keeps to answer rays faster: an account of what the rays since its last change have cost, and, once
// that is what building costs, a tree. The answers are those of the loop over all triangles, to the bit.
class ozPickIndex {
public:
  enum { LEAST_TRIS = 256 }; // below, the loop is as good

  // What the triangles were read from. While it stays the same, so do they.
  struct Source {
    void const *coords, *index;
    unsigned int stride, coordCount, count, prims, lengths, setEdits, indexEdits;

    bool operator==(Source const &other) const {
      return coords == other.coords && index == other.index && stride == other.stride &&
             coordCount == other.coordCount && count == other.count && prims == other.prims &&
             lengths == other.lengths && setEdits == other.setEdits && indexEdits == other.indexEdits;
    }
  };

  ozPickIndex() : _source(), _tested(0), _tree(nullptr), _worthless(false) {}
  ~ozPickIndex() { delete _tree; }
  ozPickIndex(ozPickIndex const &) = delete;
  ozPickIndex &operator=(ozPickIndex const &) = delete;

  // Forgets what was learnt from another source.
  void follow(Source const &source) {
    if (source == _source) return;
    delete _tree;
    _tree = nullptr;
    _tested = 0;
    _worthless = false;
    _source = source;
  }
  // False if the loop has to do it.
  bool search(ozTriSearch &search) const { return _tree && _tree->search(search); }
  // After a loop over so many triangles: whether the loops have cost enough.
  bool isDue(unsigned int tris);
  // triangles(visit) calls visit(a, b, c, number, prim) for each, and does so twice.
  template <class Triangles> void build(unsigned int count, Triangles const &triangles);

private:
  Source _source;
  unsigned long long _tested; // triangles
  ozPickTree *_tree;
  bool _worthless; // the tree could not be built
};

template <class Triangles> void ozPickIndex::build(unsigned int count, Triangles const &triangles) {
  ozPickBuilder builder;
  _tree = new ozPickTree;
  _worthless = true;
  if (builder.begin(count)) {
    triangles(
        [&](ozVec3f const &a, ozVec3f const &b, ozVec3f const &c, unsigned int, int) { builder.addBox(a, b, c); });
    if (builder.arrange(*_tree)) {
      triangles([&](ozVec3f const &a, ozVec3f const &b, ozVec3f const &c, unsigned int, int prim) {
        builder.addTri(a, b, c, prim);
      });
      _worthless = false;
      return;
    }
  }
  delete _tree;
  _tree = nullptr;
}

#endif
