#include "oz/ozDispatch.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "oz/ozType.h"
#include "support/capture.h"

namespace {

void one(ozAction *, ozObject *) {}
void two(ozAction *, ozObject *) {}
void three(ozAction *, ozObject *) {}

/// A table with two trees of types of its own: actions A over B, objects O over P over Q, and R beside P.
class ActionFunTable : public ::testing::Test {
protected:
  ActionFunTable()
      : a(new ozType(nullptr, "A")), b(new ozType(a, "B")), o(new ozType(nullptr, "O")), p(new ozType(o, "P")),
        q(new ozType(p, "Q")), r(new ozType(o, "R")) {
    table.addAction(a);
    for (ozType *type : {o, p, q}) table.addObject(type);
    table.addAction(b);
    table.addObject(r);
  }
  ozType *const a, *const b, *const o, *const p, *const q, *const r;
  ozActionFunTable table{1, 1};
};

} // namespace

TEST_F(ActionFunTable, RowsAndColumnsAreCountedInOrder) {
  EXPECT_EQ(table.getRowCount(), 2);
  EXPECT_EQ(table.getColCount(), 4);
  EXPECT_EQ(a->getDispatchID(), 0);
  EXPECT_EQ(b->getDispatchID(), 1);
  EXPECT_EQ(o->getObjectID(), 0);
  EXPECT_EQ(q->getObjectID(), 2);
  EXPECT_EQ(r->getObjectID(), 3);
}

TEST_F(ActionFunTable, WithoutABindingEveryPairFindsNop) {
  for (ozType *action : {a, b})
    for (ozType *object : {o, p, q, r}) EXPECT_EQ(table.getFunction(action, object), &ozActionFunTable::nop);
}

TEST_F(ActionFunTable, EveryChangeMakesItDirtyAndALookUpClean) {
  EXPECT_TRUE(table.isDirty());
  table.getFunction(a, o);
  EXPECT_FALSE(table.isDirty());
  table.setFunction(a, o, one);
  EXPECT_TRUE(table.isDirty());
  table.getFunction(a, o);
  table.addObject(new ozType(p, "Late"));
  EXPECT_TRUE(table.isDirty());
  table.getFunction(a, o);
  table.addAction(new ozType(b, "LateAction"));
  EXPECT_TRUE(table.isDirty());
}

TEST_F(ActionFunTable, ANewTableIsCleanAndEmpty) {
  ozActionFunTable const fresh;
  EXPECT_FALSE(fresh.isDirty());
  EXPECT_EQ(fresh.getRowCount(), 0);
  EXPECT_EQ(fresh.getColCount(), 0);
}

TEST_F(ActionFunTable, ABindingCarriesDownTheObjectsAndThenTheActions) {
  table.setFunction(a, p, one);
  EXPECT_EQ(table.getFunction(a, o), &ozActionFunTable::nop);
  EXPECT_EQ(table.getFunction(a, p), &one);
  EXPECT_EQ(table.getFunction(a, q), &one);
  EXPECT_EQ(table.getFunction(a, r), &ozActionFunTable::nop);
  EXPECT_EQ(table.getFunction(b, q), &one);
  EXPECT_EQ(table.getFunction(b, r), &ozActionFunTable::nop);
}

TEST_F(ActionFunTable, TheActionsOwnAncestorBindingBeatsTheParentActionsNearerOne) {
  table.setFunction(a, q, one);
  table.setFunction(b, p, two);
  EXPECT_EQ(table.getFunction(b, q), &two);
  EXPECT_EQ(table.getFunction(a, q), &one);
}

TEST_F(ActionFunTable, WhatCameFromTheParentActionIsNotHandedDown) {
  table.setFunction(a, p, one);
  table.setFunction(a, q, three);
  // B has nothing of its own: for Q it looks at its parent anew, not at what it got for P.
  EXPECT_EQ(table.getFunction(b, p), &one);
  EXPECT_EQ(table.getFunction(b, q), &three);
}

TEST_F(ActionFunTable, ATypeOutsideTheTreesFindsNop) {
  auto *apart = new ozType(nullptr, "Apart");
  table.addObject(apart);
  EXPECT_EQ(table.getFunction(b, apart), &ozActionFunTable::nop);
}

TEST_F(ActionFunTable, ANegativeIdIsToldAndUsed) {
  table.getFunction(a, o);
  // The only row to be flattened is 1 now, so column -1 lies inside the table.
  a->setDispatchID(1);
  auto *stray = new ozType(o, "Stray");
  stray->setObjectID(-1);
  b->setDispatchID(1);
  table.setFunction(a, o, one);
  EXPECT_EQ(stdoutOf([&] {
              table.getFunction(a, o);
              fflush(stdout);
            }),
            "######### row = 1, col = -1 ############\n######### row = 1, col = -1 ############\n");
}

TEST_F(ActionFunTable, AssignmentSharesTheCells) {
  ozActionFunTable other;
  other = table;
  EXPECT_EQ(other.getRowCount(), 2);
  EXPECT_EQ(other.getColCount(), 4);
  table.setFunction(a, p, one);
  EXPECT_EQ(other.getFunction(a, q), &one);
}

TEST_F(ActionFunTable, ApplyEndsTheProcess) {
  ::testing::FLAGS_gtest_death_test_style = "threadsafe";
  EXPECT_EXIT(
      {
        dup2(2, 1);
        table.apply(nullptr, nullptr);
      },
      ::testing::KilledBySignal(SIGABRT), "ozActionFunTable::apply: not implemented.\n");
}
