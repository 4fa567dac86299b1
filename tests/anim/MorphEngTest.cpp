#include "vectorEngines.h"

#include <gtest/gtest.h>

#include <limits.h>

#include <cmath>

#include "oz/ozData.h"
#include "oz/ozInterpolator.h"
#include "oz/ozMorphEng.h"
#include "oz/ozSelectorEng.h"
#include "oz/ozSpline.h"

namespace {

class Morph : public ::testing::Test {
protected:
  Morph() { engine.output()->connect(points.point()); }
  void set(Floats const &input, Floats const &weights, std::vector<int> const &counts = {},
           std::vector<int> const &indices = {}) {
    fill(engine.input(), vecs(input));
    fill(engine.weight(), weights);
    fill(engine.count(), counts);
    fill(engine.index(), indices);
  }
  ozMorphEng3f engine;
  Points points;
};

TEST_F(Morph, AveragesTwoSets) {
  set({0, 2, 4, 10, 20, 30}, {0.5f, 0.5f});
  EXPECT_EQ((Floats{5, 11, 17}), points.xs());
}

TEST_F(Morph, WithoutAConnectionDoesNoWorkAndItsOutputKeepsItsContents) {
  ozMorphEng3f alone;
  alone.output()->set(0, ozVec3f(7, 7, 7));
  fill(alone.input(), vecs({1, 2}));
  fill(alone.weight(), Floats{1});
  ASSERT_EQ(1u, alone.output()->getCount());
  EXPECT_EQ(7.0f, alone.output()->get(0)[0]);
}

TEST_F(Morph, WritesPastItsOwnOutputStraightIntoTheTargets) {
  set({1, 2}, {1});
  EXPECT_EQ((Floats{1, 2}), points.xs());
  EXPECT_EQ(0u, engine.output()->getCount());
}

TEST_F(Morph, AWeightOfZeroSkipsASetAndKeepsTheOthersInStep) {
  set({1, 2, 3, 4, 5, 6}, {1, 0, 2}, {-2, -2, -2}, {0, 1, 1, 0, 1, 0});
  // The third set adds 5 to the second and 6 to the first element, twice.
  EXPECT_EQ((Floats{13, 12}), points.xs());
}

TEST_F(Morph, AnIndexedFirstSetClearsTheResultUnlessItIsAsLong) {
  fill(points.point(), vecs({9, 9, 9}));
  set({1}, {1, 0}, {-1, 3}, {2});
  EXPECT_EQ((Floats{0, 0, 1}), points.xs());
  Points kept;
  fill(kept.point(), vecs({9, 9}));
  ozMorphEng3f second;
  second.output()->connect(kept.point());
  fill(second.input(), vecs({1, 2}));
  fill(second.weight(), Floats{1});
  fill(second.count(), std::vector<int>{-2});
  fill(second.index(), std::vector<int>{0, 0});
  EXPECT_EQ((Floats{2, 9}), kept.xs());
}

TEST_F(Morph, ADenseFirstSetZeroesWhatItDoesNotReach) {
  fill(points.point(), vecs({9, 9, 9}));
  set({1, 2, 5, 6, 7}, {3, 0}, {2, 3});
  EXPECT_EQ((Floats{3, 6, 0}), points.xs());
}

TEST_F(Morph, WithAllWeightsZeroTheResultHoldsWhatTheTargetHeld) {
  fill(points.point(), vecs({9, 8, 7}));
  set({1, 2, 3, 4}, {0, 0});
  EXPECT_EQ((Floats{9, 8}), points.xs());
}

TEST_F(Morph, StopsAtTheEndOfTheWeights) {
  set({1, 2, 3}, {1, 1}, {1, 1, 1});
  EXPECT_EQ((Floats{3}), points.xs());
}

TEST_F(Morph, WithoutWeightsDoesNothing) {
  fill(points.point(), vecs({9}));
  set({1, 2}, {});
  EXPECT_EQ((Floats{9}), points.xs());
}

TEST_F(Morph, GivesAllTargetsTheSameAndTellsEach) {
  Points other;
  engine.output()->connect(other.point());
  points.xs();
  points.changes = other.changes = 0;
  set({1, 2}, {2});
  EXPECT_EQ((Floats{2, 4}), points.xs());
  EXPECT_GE(points.changes, 1);
  EXPECT_GE(other.changes, 1);
  EXPECT_FALSE(other.point()->isDirty());
  EXPECT_EQ((Floats{2, 4}), other.xs());
}

TEST_F(Morph, OneChangeIsSummedOnce) {
  set({1, 2, 10, 20}, {1, 1});
  EXPECT_EQ((Floats{11, 22}), points.xs());
  points.cleanFields();
  EXPECT_EQ((Floats{11, 22}), points.xs());
  engine.weight()->set(1, 2);
  EXPECT_EQ((Floats{21, 42}), points.xs());
}

TEST_F(Morph, WhatATargetHeldIsAddedToOnceForOneChange) {
  fill(points.point(), vecs({9, 9}));
  // The first set writes element 0 twice and leaves element 1 as it is, as it is as long as the result.
  set({1, 2, 10, 20}, {1, 1}, {-2, 2}, {0, 0});
  Points other;
  engine.output()->connect(other.point());
  EXPECT_EQ((Floats{12, 29}), points.xs());
  EXPECT_EQ((Floats{12, 29}), other.xs());
  points.cleanFields();
  other.cleanFields();
  engine.output()->get();
  EXPECT_EQ((Floats{12, 29}), other.xs());
  EXPECT_EQ((Floats{12, 29}), points.xs());
  engine.weight()->set(1, 2);
  EXPECT_EQ((Floats{22, 69}), other.xs());
  EXPECT_EQ((Floats{22, 69}), points.xs());
}

TEST_F(Morph, ATargetConnectedLateDoesNotAddToTheOthersAnew) {
  fill(points.point(), vecs({9, 9}));
  set({1, 2, 10, 20}, {1, 1}, {-2, 2}, {0, 0});
  points.xs();
  Points late;
  engine.output()->connect(late.point());
  EXPECT_EQ((Floats{12, 29}), late.xs());
  EXPECT_EQ((Floats{12, 29}), points.xs());
}

TEST_F(Morph, AWeightOfOneAndAnIndexedSetAdd) {
  set({1, 2, 3, 4, 5}, {1, 1, 2}, {3, -1, -1}, {1, 2});
  EXPECT_EQ((Floats{1, 6, 13}), points.xs());
}

TEST_F(Morph, AnIndexedFirstSetIsScaled) {
  set({3, 4}, {2}, {-2}, {1, 0});
  EXPECT_EQ((Floats{8, 6}), points.xs());
}

TEST_F(Morph, ASetOfLengthZeroIsSkipped) {
  set({1, 2}, {1, 1, 3}, {0, 1, 1});
  EXPECT_EQ((Floats{7}), points.xs()); // 1 * 1 + 3 * 2
}

TEST_F(Morph, ASetOfWeightZeroIsNotEvenMultiplied) {
  set({INFINITY, 2}, {0, 1});
  EXPECT_EQ((Floats{2}), points.xs());
}

TEST_F(Morph, InputBeyondWholeSetsIsLeftOut) {
  set({1, 2, 10, 20, 100}, {1, 1});
  EXPECT_EQ((Floats{11, 22}), points.xs());
}

TEST_F(Morph, WithoutInputTheResultIsEmpty) {
  fill(points.point(), vecs({9}));
  set({}, {1});
  EXPECT_EQ((Floats{}), points.xs());
}

TEST_F(Morph, ATargetOfAnotherClassIsPassedOver) {
  ozMorphEng3f other;
  ozSelectorEng4f four;
  Points target;
  other.output()->connect(four.input());
  other.output()->connect(target.point());
  fill(other.input(), vecs({1, 2}));
  fill(other.weight(), Floats{3});
  EXPECT_EQ((Floats{3, 6}), target.xs());
  EXPECT_EQ(0u, four.input()->getCount());
}

TEST_F(Morph, EachTargetIsWrittenWithItsOwnStride) {
  ozData *const data = new (72) ozData;
  data->ref();
  {
    ozCoordSet3f interleaved(data, 24, 0);
    engine.output()->connect(interleaved.point());
    set({1, 2, 3}, {1});
    points.xs();
    float const *const floats = static_cast<float const *>(data->getData());
    EXPECT_EQ(1.0f, floats[0]);
    EXPECT_EQ(0.0f, floats[3]);
    EXPECT_EQ(2.0f, floats[6]);
    EXPECT_EQ(3.0f, floats[12]);
  }
  data->unref();
}

/// Coordinates that let go of all but one as soon as they are told of more.
class Miserly : public Points {
protected:
  void fieldChanged(short id) override {
    Points::fieldChanged(id);
    if (point()->getCount() > 1) {
      point()->setCount(1);
      point()->setSize(1);
    }
  }
};

TEST_F(Morph, NothingIsWrittenPastATargetThatShrinksWhenItIsTold) {
  Miserly first, second;
  ozMorphEng3f other;
  other.output()->connect(first.point());
  other.output()->connect(second.point());
  Floats many(1000, 5);
  fill(other.input(), vecs(many));
  fill(other.weight(), Floats{1});
  EXPECT_EQ((Floats{5}), first.xs());
  EXPECT_EQ((Floats{5}), second.xs());
}

TEST_F(Morph, ATargetConnectedAfterAnEvaluationGetsItsResult) {
  set({1, 2}, {2});
  points.xs();
  Points late;
  engine.output()->connect(late.point());
  EXPECT_EQ((Floats{2, 4}), late.xs());
  ozMorphEng3f other;
  Points only;
  fill(other.input(), vecs({3}));
  fill(other.weight(), Floats{1});
  other.output()->get();
  other.output()->connect(only.point());
  EXPECT_EQ((Floats{3}), only.xs());
}

TEST_F(Morph, WritesAnInterleavedTargetWithItsStride) {
  ozData *const data = new (96) ozData;
  data->ref();
  {
    ozCoordSet3f interleaved(data, 24, 0);
    ozMorphEng3f other;
    other.output()->connect(interleaved.point());
    fill(other.input(), vecs({1, 2, 3}));
    fill(other.weight(), Floats{1});
    EXPECT_EQ(3.0f, interleaved.point()->get(2)[0]);
    float const *const floats = static_cast<float const *>(data->getData());
    EXPECT_EQ(1.0f, floats[0]);
    EXPECT_EQ(0.0f, floats[3]);
    EXPECT_EQ(2.0f, floats[6]);
  }
  data->unref();
}

TEST_F(Morph, IndicesOutOfRangeArePassedOver) {
  set({1, 2, 3, 4}, {1}, {-4}, {0, 9, -1, 3});
  EXPECT_EQ((Floats{1, 0, 0, 4}), points.xs());
}

TEST_F(Morph, CountsBeyondTheInputUseWhatIsThere) {
  set({1, 2}, {1, 1}, {5, 5});
  EXPECT_EQ((Floats{1, 2, 0, 0, 0}), points.xs());
}

TEST_F(Morph, ACountWithoutAMagnitudeOrWithoutReasonComputesNothing) {
  for (int count : {INT_MIN, INT_MAX}) {
    ozMorphEng3f other;
    Points target;
    other.output()->connect(target.point());
    fill(other.input(), vecs({1}));
    fill(other.weight(), Floats{1});
    fill(other.count(), std::vector<int>{count});
    EXPECT_EQ(0u, target.point()->getCount());
  }
}

TEST(MorphFour, AddsUpFourFloats) {
  ozColorSet4f target;
  ozMorphEng4f engine;
  engine.output()->connect(target.color());
  engine.input()->set(0, ozVec4f(1, 2, 3, 4));
  engine.input()->set(1, ozVec4f(1, 1, 1, 1));
  fill(engine.weight(), Floats{1, 2});
  EXPECT_TRUE(target.color()->get(0) == ozVec4f(3, 4, 5, 6));
}

TEST(MorphFour, IndexesAndClearsAlike) {
  ozColorSet4f target;
  ozMorphEng4f engine;
  engine.output()->connect(target.color());
  engine.input()->set(0, ozVec4f(1, 2, 3, 4));
  engine.input()->set(1, ozVec4f(5, 6, 7, 8));
  engine.input()->set(2, ozVec4f(1, 1, 1, 1));
  fill(engine.weight(), Floats{2, 1});
  fill(engine.count(), std::vector<int>{-1, 2});
  fill(engine.index(), std::vector<int>{1});
  ASSERT_EQ(2u, target.color()->getCount());
  EXPECT_TRUE(target.color()->get(0) == ozVec4f(5, 6, 7, 8));
  EXPECT_TRUE(target.color()->get(1) == ozVec4f(3, 5, 7, 9));
}

TEST(MorphFour, ATargetConnectedAfterAnEvaluationGetsItsResult) {
  ozColorSet4f first, late;
  ozMorphEng4f engine;
  engine.output()->connect(first.color());
  engine.input()->set(0, ozVec4f(1, 2, 3, 4));
  fill(engine.weight(), Floats{1});
  ASSERT_EQ(1u, first.color()->getCount());
  engine.output()->connect(late.color());
  ASSERT_EQ(1u, late.color()->getCount());
  EXPECT_TRUE(late.color()->get(0) == ozVec4f(1, 2, 3, 4));
}

TEST(MorphAndSpline, AFractionBlendsATableOfShapes) {
  ozSpline spline;
  ozMorphEng3f engine;
  Points points;
  fill(spline.key(), Floats{0, 1, 2});
  spline.weight()->connect(engine.weight());
  engine.output()->connect(points.point());
  fill(engine.input(), vecs({0, 0, 10, 20, 100, 200}));
  spline.setFraction(0.5f);
  EXPECT_EQ((Floats{5, 10}), points.xs());
  spline.setFraction(1.5f);
  EXPECT_EQ((Floats{55, 110}), points.xs());
}

} // namespace
