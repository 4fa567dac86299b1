#include <gtest/gtest.h>

#include <vector>

#include "testContainers.h"

namespace {

struct DirtyTracking : ::testing::Test {
  Thing a, b, c; // on the stack: nobody counts them

  void SetUp() override { ozField::enableDirtyFieldTracking(1); }
  void TearDown() override { ozField::enableDirtyFieldTracking(0); }
};

TEST(DirtyTrackingDefault, TrackingIsOffUnlessAskedFor) { EXPECT_FALSE(ozField::isDirtyFieldTrackingEnabled()); }

TEST_F(DirtyTracking, CleanFieldsPullsAllThatWasRecorded) {
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  b.connect(Thing::NUMBER, &c, Thing::NUMBER);
  a.setNumber(12);
  ozField::cleanFields();
  EXPECT_EQ(12, b._number);
  EXPECT_EQ(12, c._number);
}

TEST_F(DirtyTracking, CleanFieldsServesTheLastRecordedFirst) {
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  a.connect(Thing::VALUE, &b, Thing::VALUE);
  ozField::cleanFields();
  b.changes.clear();
  a.setNumber(1);
  a.setValue(2);
  ozField::cleanFields();
  EXPECT_EQ((std::vector<short>{Thing::VALUE, Thing::NUMBER}), b.changes);
}

TEST_F(DirtyTracking, CleanFieldsServesWhatItsOwnWorkRecords) {
  struct Passer : Thing {
    Thing *next = nullptr;
    void fieldChanged(short id) override {
      Thing::fieldChanged(id);
      if (next) next->propagateSideEffect(DERIVED);
    }
  };
  Passer passer;
  a.connect(Thing::NUMBER, &passer, Thing::NUMBER);
  ozField::cleanFields();
  passer.next = &c;
  c._number = 4;
  a.setNumber(2);
  ozField::cleanFields();
  EXPECT_EQ(8, c._derived);
  passer.next = nullptr;
}

TEST_F(DirtyTracking, FieldsThatAreDirtyWhenItIsSwitchedOnStayUnrecorded) {
  ozField::enableDirtyFieldTracking(0);
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  a.setNumber(5);
  ozField::enableDirtyFieldTracking(1);
  a.setNumber(6); // already dirty: not recorded again
  ozField::cleanFields();
  EXPECT_EQ(7, b._number);
}

TEST_F(DirtyTracking, AFieldRecordedByHandIsServedWithoutTracking) {
  ozField::enableDirtyFieldTracking(0);
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  a.setNumber(5);
  b.number()->recordDirty(); // does nothing: it is dirty
  a.propagateSideEffect(Thing::DERIVED);
  a.getField(Thing::DERIVED)->recordDirty();
  ozField::cleanFields();
  EXPECT_EQ(7, b._number);
  EXPECT_EQ(10, a._derived);
  {
    Thing d;
    d.number()->recordDirty();
  }
  ozField::cleanFields(); // the record went with its field
}

TEST_F(DirtyTracking, WhatDiesIsCleanedFirst) {
  Thing *const d = new Thing;
  d->connect(Thing::NUMBER, &b, Thing::NUMBER);
  d->setNumber(41);
  d->unref();
  EXPECT_EQ(41, b._number) << "destruction settles all records, so that none outlives its field";
}

TEST_F(DirtyTracking, SideEffectsAreRecordedToo) {
  a.setNumber(2);
  a.propagateSideEffect(Thing::DERIVED);
  ozField::cleanFields();
  EXPECT_EQ(4, a._derived);
}

TEST_F(DirtyTracking, SwitchingOffForgetsTheRecords) {
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  a.setNumber(12);
  ozField::enableDirtyFieldTracking(0);
  ozField::cleanFields();
  EXPECT_EQ(7, b._number);
  EXPECT_EQ(12, b.getNumber());
}

TEST_F(DirtyTracking, AFieldThatDiesLeavesNoRecord) {
  {
    Thing d;
    a.connect(Thing::NUMBER, &d, Thing::NUMBER);
    ozField *const number = d.getField(Thing::NUMBER);
    number->recordDirty();
    a.disconnect(Thing::NUMBER, &d, Thing::NUMBER);
    d.freeUnconnectedFields();
  }
  ozField::cleanFields();
  EXPECT_EQ(0u, a.number()->getOutputs()->getCount());
}

} // namespace
