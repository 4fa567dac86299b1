#ifndef BENCH_GRID_H
#define BENCH_GRID_H

#include "oz/OzScene3D.h"

#include <vector>

/// The scene that most benchmarks share: a square of 100 x 100 boxes in the plane z = 0, on a lattice of step 2.5, each
/// with a transform, a shape and a set of 12 indexed triangles of its own. The boxes stand in groups of ten, which are
/// spatially compact, ten of those in a group, and so on: three levels of groups below the root.
class Grid {
public:
  static int const SIDE = 100, BOXES = SIDE * SIDE, MATERIALS = 10;

  Grid();
  ~Grid();
  Grid(Grid const &) = delete;
  Grid &operator=(Grid const &) = delete;

  /// Places the camera ahead of the plane so that it sees all boxes.
  void viewAll();
  /// Places the camera in the middle of the plane, 36 degrees wide, about a tenth of the boxes in view.
  void viewTenth();
  /// Turns each box by a little more than in the frame before.
  void turnAll(int frame);

  ozEnvironment *root; ///< with one directional light
  ozPerspCamera *camera;
  std::vector<ozTransform *> places; ///< of the boxes, in the order in which they are drawn
  std::vector<ozTriSet *> sets;
  ozAppearance *looks[MATERIALS]; ///< box i has look i % MATERIALS
};

#endif
