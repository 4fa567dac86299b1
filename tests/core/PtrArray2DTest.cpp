#include "oz/ozPtrArray2D.h"
#include "support/capture.h"

#include <gtest/gtest.h>

#include <limits.h>
#include <stdint.h>

namespace {

void *cell(int row, int col) { return reinterpret_cast<void *>(static_cast<intptr_t>(row * 1000 + col + 1)); }

// Writes a distinct value into each cell in use.
void fill(ozPtrArray2D &table) {
  for (int row = 0; row < table.getNRows(); ++row)
    for (int col = 0; col < table.getNCols(); ++col) table(row, col) = cell(row, col);
}

void expectFilled(ozPtrArray2D const &table, int rows, int cols) {
  for (int row = 0; row < rows; ++row)
    for (int col = 0; col < cols; ++col) ASSERT_EQ(cell(row, col), table(row, col)) << row << " " << col;
}

TEST(PtrArray2D, StartsWithNothingInUse) {
  ozPtrArray2D table(10, 100);
  EXPECT_EQ(0, table.getNRows());
  EXPECT_EQ(0, table.getNCols());
}

TEST(PtrArray2D, AddingCountsOneMoreRowOrColumn) {
  ozPtrArray2D table(4, 4);
  table.addRow();
  EXPECT_EQ(1, table.getNRows());
  EXPECT_EQ(0, table.getNCols());
  table.addCol();
  table.addCol();
  EXPECT_EQ(1, table.getNRows());
  EXPECT_EQ(2, table.getNCols());
}

TEST(PtrArray2D, LaysCellsOutRowByRowWithTheAllocatedColumnsAsStride) {
  ozPtrArray2D table(3, 7);
  table.addRow();
  table.addRow();
  table.addCol();
  EXPECT_EQ(&table(0, 0) + 7, &table(1, 0));
  EXPECT_EQ(&table(1, 0) + 1, &table(1, 1));
}

TEST(PtrArray2D, DoesNotMoveWhileThereIsRoom) {
  ozPtrArray2D table(2, 2);
  void **first = &table(0, 0);
  for (int i = 0; i < 2; ++i) table.addRow(), table.addCol();
  EXPECT_EQ(first, &table(0, 0));
}

TEST(PtrArray2D, AFullTableGrowsToTwiceItsRowsAndOne) {
  ozPtrArray2D table(1, 10);
  for (int i = 0; i < 3; ++i) table.addCol();
  table.addRow();
  fill(table);
  table.addRow(); // 2 * 1 + 1 rows; the larger of 2 * 3 + 1 and 10 columns
  EXPECT_EQ(&table(0, 0) + 10, &table(1, 0));
  void **first = &table(0, 0);
  table.addRow();
  EXPECT_EQ(first, &table(0, 0)) << "three rows fit";
  expectFilled(table, 1, 3);
  EXPECT_EQ(3, table.getNRows());
  EXPECT_EQ(3, table.getNCols());
}

TEST(PtrArray2D, RowsThatGrowTakeTwiceTheColumnsInUseAlong) {
  ozPtrArray2D table(1, 4);
  for (int i = 0; i < 4; ++i) table.addCol();
  table.addRow();
  fill(table);
  table.addRow(); // the larger of 2 * 4 + 1 and 4 columns
  EXPECT_EQ(&table(0, 0) + 9, &table(1, 0));
  expectFilled(table, 1, 4);
}

TEST(PtrArray2D, AFullTableGrowsToTwiceItsColumnsAndOne) {
  ozPtrArray2D table(10, 2);
  table.addRow();
  table.addRow();
  table.addCol();
  table.addCol();
  fill(table);
  table.addCol(); // 2 * 2 + 1 columns
  EXPECT_EQ(&table(0, 0) + 5, &table(1, 0));
  expectFilled(table, 2, 2);
  EXPECT_EQ(3, table.getNCols());
  EXPECT_EQ(2, table.getNRows());
}

TEST(PtrArray2D, ColumnsThatGrowTakeTwiceTheRowsInUseAlong) {
  ozPtrArray2D table(4, 1);
  table.addCol();
  for (int i = 0; i < 4; ++i) table.addRow();
  table.addCol(); // the larger of 2 * 4 + 1 and 4 rows
  void **first = &table(0, 0);
  while (table.getNRows() < 9) table.addRow();
  EXPECT_EQ(first, &table(0, 0)) << "nine rows fit";
  table.addRow();
  EXPECT_NE(first, &table(0, 0)) << "the tenth does not";
}

TEST(PtrArray2D, GrowsFromNothingAndKeepsItsCells) {
  ozPtrArray2D table(0, 0);
  for (int i = 0; i < 40; ++i) {
    table.addRow();
    table.addCol();
    fill(table);
  }
  for (int i = 0; i < 100; ++i) table.addRow();
  EXPECT_EQ(140, table.getNRows());
  EXPECT_EQ(40, table.getNCols());
  expectFilled(table, 40, 40);
}

TEST(PtrArray2D, ReallocateCopiesThePartInUse) {
  ozPtrArray2D table(2, 3);
  table.addRow();
  table.addRow();
  for (int i = 0; i < 3; ++i) table.addCol();
  fill(table);
  table.reallocate(8, 5);
  EXPECT_EQ(2, table.getNRows());
  EXPECT_EQ(3, table.getNCols());
  EXPECT_EQ(&table(0, 0) + 5, &table(1, 0));
  expectFilled(table, 2, 3);
}

TEST(PtrArray2D, ReallocateToLessKeepsWhatFits) {
  ozPtrArray2D table(4, 4);
  for (int i = 0; i < 4; ++i) table.addRow(), table.addCol();
  fill(table);
  table.reallocate(2, 3);
  EXPECT_EQ(2, table.getNRows());
  EXPECT_EQ(3, table.getNCols());
  expectFilled(table, 2, 3);
}

TEST(PtrArray2D, AllocateGivesNewRoom) {
  ozPtrArray2D table(1, 1);
  table.addRow();
  table.addCol();
  table.allocate(5, 6);
  EXPECT_EQ(0, table.getNRows());
  EXPECT_EQ(0, table.getNCols());
  EXPECT_EQ(&table(0, 0) + 6, &table(1, 0));
}

TEST(PtrArray2D, NegativeRoomIsNone) {
  ozPtrArray2D table(-3, -5);
  table.addRow();
  table.addCol();
  table(0, 0) = cell(0, 0);
  EXPECT_EQ(1, table.getNRows());
  EXPECT_EQ(1, table.getNCols());
}

TEST(PtrArray2D, CopiesShareTheirCells) {
  ozPtrArray2D table(2, 2), assigned(1, 1);
  table.addRow();
  table.addCol();
  fill(table);
  ozPtrArray2D copy(table);
  assigned = table;
  EXPECT_EQ(&table(0, 0), &copy(0, 0));
  EXPECT_EQ(&table(0, 0), &assigned(0, 0));
  EXPECT_EQ(1, assigned.getNRows());
  EXPECT_EQ(1, assigned.getNCols());
}

TEST(PtrArray2D, SharedCellsLiveAsLongAsTheLastTable) {
  ozPtrArray2D kept(1, 1);
  {
    ozPtrArray2D table(2, 2);
    table.addRow();
    table.addCol();
    fill(table);
    kept = table;
    table.addRow();
    table.addRow(); // allocates anew: the other keeps the old cells
    EXPECT_NE(&kept(0, 0), &table(0, 0));
  }
  expectFilled(kept, 1, 1);
  ozPtrArray2D &same = kept;
  kept = same;
  expectFilled(kept, 1, 1);
}

TEST(PtrArray2D, RoomThatCannotBeHadIsReportedOnceAndChangesNothing) {
  ozPtrArray2D table(2, 2);
  table.addRow();
  table.addCol();
  fill(table);
  EXPECT_EQ("(FATAL, RESOURCE): Cannot resize pointer table\n", stderrOf([&] { table.reallocate(INT_MAX, INT_MAX); }));
  EXPECT_EQ(1, table.getNRows());
  EXPECT_EQ(1, table.getNCols());
  expectFilled(table, 1, 1);
  EXPECT_EQ(&table(0, 0) + 2, &table(1, 0));
}

} // namespace
