#include "oz/ozMatStack4f.h"
#include "support/capture.h"

#include <gtest/gtest.h>

namespace {

ozMatrix4f trans(float x, float y, float z) {
  ozMatrix4f m;
  m.makeTrans(x, y, z);
  return m;
}

TEST(MatStack4f, StartsWithOneIdentity) {
  ozMatStack4f stack;
  EXPECT_EQ(stack.getDepth(), 1);
  EXPECT_EQ(*stack.getTop(), ozMatrix4f());
}

TEST(MatStack4f, HoldsSixtyFourMatricesUnlessToldOtherwise) {
  ozMatStack4f stack;
  for (int i = 0; i < 63; i++) EXPECT_EQ(stack.push(), 1);
  EXPECT_EQ(stack.getDepth(), 64);
  EXPECT_EQ(stderrOf([&] { EXPECT_EQ(stack.push(), 0); }), "(WARN, USAGE): ozMatStack4f::push() - Matrix stack full\n");
}

TEST(MatStack4f, PushCopiesTheTop) {
  ozMatStack4f stack(3);
  stack.load(trans(1, 2, 3));
  ozMatrix4f *below = stack.getTop();
  EXPECT_EQ(stack.push(), 1);
  EXPECT_EQ(stack.getTop(), below + 1);
  EXPECT_EQ(*stack.getTop(), trans(1, 2, 3));
  stack.load(trans(4, 5, 6));
  EXPECT_EQ(*below, trans(1, 2, 3));
}

TEST(MatStack4f, PushIdentStartsAFreshMatrix) {
  ozMatStack4f stack(2);
  stack.push();
  stack.load(trans(4, 5, 6));
  stack.pop();
  stack.load(trans(1, 2, 3));
  EXPECT_EQ(stack.pushIdent(), 1);
  EXPECT_EQ(*stack.getTop(), ozMatrix4f());
  EXPECT_EQ(stack.pop(), 1);
  EXPECT_EQ(*stack.getTop(), trans(1, 2, 3));
}

TEST(MatStack4f, AFullStackStaysAsItIs) {
  ozMatStack4f stack(2);
  EXPECT_EQ(stack.push(), 1);
  stack.load(trans(1, 2, 3));
  EXPECT_EQ(stderrOf([&] { EXPECT_EQ(stack.push(), 0); }), "(WARN, USAGE): ozMatStack4f::push() - Matrix stack full\n");
  EXPECT_EQ(stderrOf([&] { EXPECT_EQ(stack.pushIdent(), 0); }),
            "(WARN, USAGE): ozMatStack4f::pushIdent() - Matrix stack full\n");
  EXPECT_EQ(stack.getDepth(), 2);
  EXPECT_EQ(*stack.getTop(), trans(1, 2, 3));
}

TEST(MatStack4f, PushPreMultLeavesTheLevelBelow) {
  ozMatStack4f stack(2);
  stack.load(trans(1, 2, 3));
  ozMatrix4f scale, expected(2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 1, 2, 3, 1); // the scale acts first
  scale.makeScale(2, 2, 2);
  EXPECT_EQ(stack.pushPreMult(scale), 1);
  EXPECT_EQ(stack.getDepth(), 2);
  EXPECT_EQ(*stack.getTop(), expected);
  EXPECT_EQ(stack.pop(), 1);
  EXPECT_EQ(*stack.getTop(), trans(1, 2, 3));
}

TEST(MatStack4f, PushPreMultOnAFullStackReportsAndMultipliesItsTop) {
  ozMatStack4f stack(1);
  EXPECT_EQ(stderrOf([&] { EXPECT_EQ(stack.pushPreMult(trans(1, 2, 3)), 0); }),
            "(WARN, USAGE): ozMatStack4f::push() - Matrix stack full\n");
  EXPECT_EQ(stack.getDepth(), 1);
  EXPECT_EQ(*stack.getTop(), trans(1, 2, 3));
}

TEST(MatStack4f, PopAtTheBaseResetsItAndReports) {
  ozMatStack4f stack(2);
  stack.load(trans(1, 2, 3));
  EXPECT_EQ(stderrOf([&] { EXPECT_EQ(stack.pop(), 0); }), "(WARN, USAGE): ozMatStack4f::pop() - Matrix stack empty\n");
  EXPECT_EQ(stack.getDepth(), 1);
  EXPECT_EQ(*stack.getTop(), ozMatrix4f());
}

TEST(MatStack4f, ResetGoesBackToOneIdentity) {
  ozMatStack4f stack(4);
  ozMatrix4f *base = stack.getTop();
  stack.load(trans(1, 2, 3));
  stack.push(), stack.push();
  stack.reset();
  EXPECT_EQ(stack.getDepth(), 1);
  EXPECT_EQ(stack.getTop(), base);
  EXPECT_EQ(*base, ozMatrix4f());
}

TEST(MatStack4f, InitStartsAnewWithAnotherCapacity) {
  ozMatStack4f stack(2);
  stack.load(trans(1, 2, 3));
  stack.push();
  stack.init(3);
  EXPECT_EQ(stack.getDepth(), 1);
  EXPECT_EQ(*stack.getTop(), ozMatrix4f());
  EXPECT_EQ(stack.push() + stack.push(), 2);
  EXPECT_NE(stderrOf([&] { EXPECT_EQ(stack.push(), 0); }), "");
}

TEST(MatStack4f, ACapacityBelowOneCountsAsOne) {
  for (int capacity : {0, -5}) {
    ozMatStack4f stack(capacity);
    EXPECT_EQ(stack.getDepth(), 1);
    EXPECT_NE(stderrOf([&] { EXPECT_EQ(stack.push(), 0); }), "");
  }
}

TEST(MatStack4f, LoadIdentAndGetWorkOnTheTop) {
  ozMatStack4f stack;
  stack.load(trans(1, 2, 3));
  ozMatrix4f m;
  stack.get(m);
  EXPECT_EQ(m, trans(1, 2, 3));
  stack.loadIdent();
  EXPECT_EQ(*stack.getTop(), ozMatrix4f());
}

TEST(MatStack4f, TransformsAreAppliedToTheTop) {
  ozMatrix4f const start(1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 10, 0, 11, 12, 13, 1);
  ozMatrix4f expected;
  ozMatStack4f stack;
  auto check = [&](char const *what) {
    EXPECT_EQ(*stack.getTop(), expected) << what;
    stack.load(start);
  };
  stack.load(start);
  stack.preMult(trans(1, 2, 3)), expected.mult(trans(1, 2, 3), start), check("preMult");
  stack.postMult(trans(1, 2, 3)), expected.mult(start, trans(1, 2, 3)), check("postMult");
  stack.preTrans(1, 2, 3), expected.preTrans(1, 2, 3, start), check("preTrans");
  stack.postTrans(1, 2, 3), expected.postTrans(start, 1, 2, 3), check("postTrans");
  stack.preRot(1, 2, 3, 1), expected.preRot(1, 2, 3, 1, start), check("preRot");
  stack.postRot(1, 2, 3, 1), expected.postRot(start, 1, 2, 3, 1), check("postRot");
  stack.preScale(1, 2, 3), expected.preScale(1, 2, 3, start), check("preScale");
  stack.postScale(1, 2, 3), expected.postScale(start, 1, 2, 3), check("postScale");
}

} // namespace

TEST(MatStack4f, ACopySharesTheMatricesWithADepthOfItsOwn) {
  auto *first = new ozMatStack4f(4);
  first->push();
  ozMatStack4f copy(*first);
  first->preTrans(1, 2, 3);
  EXPECT_EQ(copy.getTop(), first->getTop());
  EXPECT_EQ(copy.getTop()->get(3, 0), 1);
  first->pop();
  EXPECT_EQ(copy.getDepth(), 2);
  delete first;
  EXPECT_EQ(copy.getTop()->get(3, 2), 3);
}

TEST(MatStack4f, AssignmentSharesTheMatricesAndLetsTheOldOnesGo) {
  ozMatStack4f first(4), other(2);
  other = first;
  other = other;
  first.preTrans(1, 2, 3);
  EXPECT_EQ(other.getTop()->get(3, 1), 2);
  other.init(2);
  EXPECT_EQ(other.getTop()->get(3, 1), 0);
  EXPECT_EQ(first.getTop()->get(3, 1), 2);
}
