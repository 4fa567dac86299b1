#ifndef OZ_PTR_ARRAY_2D_H
#define OZ_PTR_ARRAY_2D_H

#include "oz/ozPlatform.h"

#include <stddef.h>

/// A table of pointers that grows by rows and by columns. New cells are not cleared: the caller gives them a value.
/// Copies share the cells until one of them allocates anew; the cells go with the last table that shares them.
class OZ_API ozPtrArray2D {
public:
  /// Room for so many rows and columns, none of them in use.
  ozPtrArray2D(int rows, int cols);
  ozPtrArray2D(ozPtrArray2D const &);
  ozPtrArray2D &operator=(ozPtrArray2D const &);
  ~ozPtrArray2D();

  /// A cell; the indices are not tested.
  void *&operator()(int row, int col) const { return _cells[static_cast<size_t>(row) * _allocatedCols + col]; }

  /// Takes one more row or column into use, with more room if there is none left.
  void addRow();
  void addCol();
  /// Rows and columns in use.
  int getNRows() const { return _rows; }
  int getNCols() const { return _cols; }

  /// New room with nothing in use. What the table held is dropped.
  void allocate(int rows, int cols);
  /// New room with the cells in use copied into it. Sizes that cannot be had are reported and change nothing.
  void reallocate(int rows, int cols);

private:
  static unsigned char makeCells(int rows, int cols, void **&cells);
  void release();

  int _rows;
  int _cols;
  int _allocatedRows;
  int _allocatedCols;
  void **_cells;
};

#endif
