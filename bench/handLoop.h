#ifndef BENCH_HAND_LOOP_H
#define BENCH_HAND_LOOP_H

#include "grid.h"

/// The grid as a program would draw it that knows nothing but this scene: flat arrays, one loop, a test of each box
/// against the six planes of the view, and the calls of OpenGL that the library makes, in the same order. The floor
/// that the library is measured against.
class HandLoop {
public:
  explicit HandLoop(Grid const &grid);

  /// Draws a frame as the grid's camera sees it; the lights and the buffers are included. Returns the boxes drawn.
  int draw(Grid const &grid);
  /// Turns each box by a little more than in the frame before: matrices and bounds.
  void turnAll(int frame);

private:
  enum { VERTICES = 24, INDICES = 36 };
  struct Box {
    float matrix[16];
    float min[3], max[3]; // of the turned box
    int look;
    bool isTurned;
  };
  struct Look {
    float ambient[4], diffuse[4], specular[4], emission[4], shininess;
  };
  struct Mesh {
    float points[VERTICES][3], normals[VERTICES][3];
    unsigned int indices[INDICES];
  };

  void bound(Box &box);

  std::vector<Box> _boxes;
  std::vector<Mesh> _meshes; // one a box
  Look _looks[Grid::MATERIALS];
};

#endif
