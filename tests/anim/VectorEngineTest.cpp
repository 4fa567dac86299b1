#include <gtest/gtest.h>

#include <limits.h>

#include "oz/ozCoordSet.h"
#include "oz/ozData.h"
#include "oz/ozInterpolator.h"
#include "oz/ozMorphEng.h"
#include "oz/ozSelectorEng.h"
#include "oz/ozSpline.h"
#include "oz/ozTransformEng.h"

namespace {

/// Coordinates that count how often they are told of a change.
class Points : public ozCoordSet3f {
public:
  Points() : ozCoordSet3f(ozCoordSet3f::getClassType()) {}
  int changes = 0;

  std::vector<float> xs() {
    std::vector<float> result;
    for (unsigned int i = 0; i < point()->getCount(); ++i) result.push_back(point()->get(i)[0]);
    return result;
  }

protected:
  void fieldChanged(short id) override {
    ++changes;
    ozCoordSet3f::fieldChanged(id);
  }
};

typedef std::vector<float> Floats;

template <class Field, class T> void fill(Field *field, std::vector<T> const &values) {
  for (unsigned int i = 0; i < values.size(); ++i) field->set(i, values[i]);
}

/// Vectors whose three components are alike.
std::vector<ozVec3f> vecs(Floats const &xs) {
  std::vector<ozVec3f> result;
  for (float x : xs) result.push_back(ozVec3f(x, x, x));
  return result;
}

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

void expectFields(ozContainer &object, int first, std::vector<std::pair<char const *, ozType *>> const &rows) {
  ASSERT_EQ(first + static_cast<int>(rows.size()), object.getType()->getFieldInfoCount());
  for (int i = 0; i < static_cast<int>(rows.size()); ++i) {
    EXPECT_STREQ(rows[i].first, object.getType()->getFieldInfo(first + i)->getName());
    EXPECT_EQ(rows[i].second, object.getType()->getFieldInfo(first + i)->getFieldType());
    EXPECT_TRUE(object.getType()->getFieldInfo(first + i)->isDefault(&object)) << rows[i].first;
  }
}

std::vector<int> list(ozShortArray const &ids) {
  std::vector<int> result;
  for (unsigned int i = 0; i < ids.getCount(); ++i) result.push_back(ids[i]);
  return result;
}

TEST(VectorEngines, HaveTheirFieldsInPlace) {
  ozMorphEng3f m3;
  ozMorphEng4f m4;
  ozSelectorEng3f s3;
  ozSelectorEng4f s4;
  ozTransformEng3f t3;
  ozType *const ints = ozMFInt::getClassType(), *const v3 = ozMFVec3f::getClassType(),
                *const v4 = ozMFVec4f::getClassType();
  ozType *const floats = ozMFFloat::getClassType();
  expectFields(m3, 3, {{"count", ints}, {"index", ints}, {"weight", floats}, {"input", v3}, {"output", v3}});
  expectFields(m4, 3, {{"count", ints}, {"index", ints}, {"weight", floats}, {"input", v4}, {"output", v4}});
  expectFields(s3, 3, {{"selector", ozSFInt::getClassType()}, {"input", v3}, {"value", ozSFVec3f::getClassType()}});
  expectFields(s4, 3, {{"selector", ozSFInt::getClassType()}, {"input", v4}, {"value", ozSFVec4f::getClassType()}});
  expectFields(t3, 3,
               {{"transformType", ozSFEnum::getClassType()},
                {"count", ints},
                {"index", ints},
                {"matrix", ozMFMatrix4f::getClassType()},
                {"input", v3},
                {"output", v3}});
  EXPECT_STREQ("MorphEng3f", m3.getType()->getName());
  EXPECT_STREQ("MorphEng4f", m4.getType()->getName());
  EXPECT_STREQ("SelectorEng3f", s3.getType()->getName());
  EXPECT_STREQ("SelectorEng4f", s4.getType()->getName());
  EXPECT_STREQ("TransformEng3f", t3.getType()->getName());
  EXPECT_STREQ("MorphEng", m3.getType()->getAncestor()->getName());
  EXPECT_STREQ("SelectorEng", s3.getType()->getAncestor()->getName());
  EXPECT_STREQ("TransformEng", t3.getType()->getAncestor()->getName());
  EXPECT_EQ((std::vector<int>{3, 4, 5, 6}), list(m3.getType()->getEngineInputs()));
  EXPECT_EQ((std::vector<int>{7}), list(m3.getType()->getEngineOutputs()));
  EXPECT_EQ((std::vector<int>{3, 4}), list(s3.getType()->getEngineInputs()));
  EXPECT_EQ((std::vector<int>{5}), list(s3.getType()->getEngineOutputs()));
  EXPECT_EQ((std::vector<int>{4, 5, 6, 7}), list(t3.getType()->getEngineInputs()));
  EXPECT_EQ((std::vector<int>{8}), list(t3.getType()->getEngineOutputs()));
}

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

TEST(Selector, PicksAnElement) {
  ozSelectorEng3f engine;
  fill(engine.input(), vecs({1, 2, 3}));
  engine.setSelector(2);
  EXPECT_EQ(2, engine.getSelector());
  EXPECT_TRUE(engine.value()->get() == ozVec3f(3, 3, 3));
  ozSelectorEng4f four;
  four.input()->set(0, ozVec4f(1, 2, 3, 4));
  EXPECT_TRUE(four.value()->get() == ozVec4f(1, 2, 3, 4));
}

TEST(Selector, OutOfRangeLeavesTheValue) {
  ozSelectorEng3f engine;
  fill(engine.input(), vecs({1, 2}));
  EXPECT_EQ(1.0f, engine.value()->get()[0]);
  for (int selector : {2, -1, INT_MAX, INT_MIN}) {
    engine.setSelector(selector);
    EXPECT_EQ(1.0f, engine.value()->get()[0]);
  }
}

class TransformEngine : public ::testing::Test {
protected:
  TransformEngine() { engine.output()->connect(points.point()); }
  ozMatrix4f moved(float x) {
    ozMatrix4f m;
    m.makeTrans(x, 0, 0);
    return m;
  }
  ozTransformEng3f engine;
  Points points;
};

TEST_F(TransformEngine, RunsEachSetThroughItsMatrix) {
  fill(engine.input(), vecs({1, 2, 3, 4}));
  fill(engine.matrix(), std::vector<ozMatrix4f>{moved(10), moved(20)});
  fill(engine.count(), std::vector<int>{1, 3});
  EXPECT_EQ((Floats{11, 22, 23}), points.xs()); // as long as the longest set, with positions that go on
}

TEST_F(TransformEngine, TheIdentityCopies) {
  fill(engine.input(), vecs({1, 2}));
  fill(engine.matrix(), std::vector<ozMatrix4f>{ozMatrix4f()});
  EXPECT_EQ((Floats{1, 2}), points.xs());
}

TEST_F(TransformEngine, VectorsLeaveTheTranslationOut) {
  ozMatrix4f m;
  m.makeScale(2, 2, 2);
  m.set(3, 0, 100);
  fill(engine.input(), vecs({1}));
  fill(engine.matrix(), std::vector<ozMatrix4f>{m});
  EXPECT_EQ((Floats{102}), points.xs());
  engine.setTransformType(ozTransformEng::VECTOR);
  EXPECT_EQ((Floats{102}), points.xs()); // the type alone computes nothing anew
  engine.input()->set(0, ozVec3f(3, 3, 3));
  EXPECT_EQ((Floats{6}), points.xs());
}

TEST_F(TransformEngine, AnIndexedSetReadsAndWritesAtItsIndices) {
  fill(points.point(), vecs({0, 0, 0}));
  fill(engine.input(), vecs({1, 2, 3}));
  fill(engine.matrix(), std::vector<ozMatrix4f>{moved(10)});
  fill(engine.count(), std::vector<int>{-3});
  fill(engine.index(), std::vector<int>{2, 0, 77});
  EXPECT_EQ((Floats{11, 0, 13}), points.xs());
}

TEST_F(TransformEngine, ATargetConnectedLaterGetsTheResult) {
  fill(engine.input(), vecs({1, 2}));
  fill(engine.matrix(), std::vector<ozMatrix4f>{moved(1)});
  points.xs();
  Points late;
  engine.output()->connect(late.point());
  EXPECT_EQ((Floats{2, 3}), late.xs());
}

TEST_F(TransformEngine, TheTypeIsAnEnumerationWithNames) {
  EXPECT_EQ(ozTransformEng::POINT, engine.getTransformType());
  EXPECT_STREQ("POINT", engine.getType()->mapEnum(3, 0));
  EXPECT_STREQ("VECTOR", engine.getType()->mapEnum(3, 1));
  engine.setTransformTypeHack(1);
  EXPECT_EQ(1, engine.getTransformTypeHack());
  EXPECT_EQ(ozTransformEng::VECTOR, engine.getTransformType());
}

} // namespace
