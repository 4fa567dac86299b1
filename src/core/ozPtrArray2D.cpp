// The cells lie row by row with the allocated columns as stride. Ahead of them stands a count of the tables that share
// them: assignment is shallow, and without the count two tables would free the same cells.
#include "oz/ozPtrArray2D.h"

#include "oz/ozGlobal.h"

#include <limits.h>
#include <stdlib.h>

ozPtrArray2D::ozPtrArray2D(int rows, int cols)
    : _rows(0), _cols(0), _allocatedRows(0), _allocatedCols(0), _cells(nullptr) {
  allocate(rows, cols);
}

ozPtrArray2D::ozPtrArray2D(ozPtrArray2D const &other)
    : _rows(0), _cols(0), _allocatedRows(0), _allocatedCols(0), _cells(nullptr) {
  *this = other;
}

ozPtrArray2D::~ozPtrArray2D() { release(); }

namespace {

size_t &sharers(void **cells) { return *reinterpret_cast<size_t *>(cells - 1); }

int atMostInt(long value) { return static_cast<int>(value < INT_MAX ? value : INT_MAX); }

} // namespace

ozPtrArray2D &ozPtrArray2D::operator=(ozPtrArray2D const &other) {
  if (this == &other) return *this;
  if (other._cells) ++sharers(other._cells);
  release();
  _rows = other._rows;
  _cols = other._cols;
  _allocatedRows = other._allocatedRows;
  _allocatedCols = other._allocatedCols;
  _cells = other._cells;
  return *this;
}

void ozPtrArray2D::release() {
  if (_cells && --sharers(_cells) == 0) free(_cells - 1);
  _cells = nullptr;
}

// Cells for a table, shared by one; false, and a message, if they cannot be had.
unsigned char ozPtrArray2D::makeCells(int rows, int cols, void **&cells) {
  size_t bytes;
  void **block = nullptr;
  if (!__builtin_mul_overflow(static_cast<size_t>(rows) * static_cast<size_t>(cols) + 1, sizeof(void *), &bytes))
    block = static_cast<void **>(malloc(bytes));
  if (!block) {
    ozGlobal::notify(ozGlobal::FATAL, ozGlobal::RESOURCE, "Cannot resize pointer table");
    return 0;
  }
  cells = block + 1;
  sharers(cells) = 1;
  return 1;
}

void ozPtrArray2D::allocate(int rows, int cols) {
  rows = rows > 0 ? rows : 0;
  cols = cols > 0 ? cols : 0;
  void **cells;
  if (!makeCells(rows, cols, cells)) return;
  release();
  _rows = _cols = 0;
  _allocatedRows = rows;
  _allocatedCols = cols;
  _cells = cells;
}

void ozPtrArray2D::reallocate(int rows, int cols) {
  int usedRows = _rows, usedCols = _cols;
  ozPtrArray2D old(*this);
  allocate(rows, cols);
  if (_cells == old._cells) return; // no memory: nothing has changed
  _rows = usedRows < _allocatedRows ? usedRows : _allocatedRows;
  _cols = usedCols < _allocatedCols ? usedCols : _allocatedCols;
  for (int row = 0; row < _rows; ++row)
    for (int col = 0; col < _cols; ++col) (*this)(row, col) = old(row, col);
}

// The direction that does not overflow also gets room ahead: twice its use and one, if that is more than it has.
static int roomAhead(int used, int allocated) {
  int ahead = atMostInt(2L * used + 1);
  return ahead > allocated ? ahead : allocated;
}

void ozPtrArray2D::addRow() {
  if (_rows == _allocatedRows) reallocate(atMostInt(2L * _allocatedRows + 1), roomAhead(_cols, _allocatedCols));
  if (_rows < _allocatedRows) ++_rows;
}

void ozPtrArray2D::addCol() {
  if (_cols == _allocatedCols) reallocate(roomAhead(_rows, _allocatedRows), atMostInt(2L * _allocatedCols + 1));
  if (_cols < _allocatedCols) ++_cols;
}
