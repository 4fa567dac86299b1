#include "vectorEngines.h"

#include <gtest/gtest.h>

#include <limits.h>

#include <cmath>

#include "oz/ozMorphEng.h"
#include "oz/ozSelectorEng.h"
#include "oz/ozTransformEng.h"

namespace {

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

TEST(VectorEngines, WorkInAChain) {
  ozMorphEng3f morph;
  ozTransformEng3f transform;
  Points points;
  morph.output()->connect(transform.input());
  transform.output()->connect(points.point());
  fill(morph.input(), vecs({1, 2, 10, 20}));
  fill(morph.weight(), Floats{1, 1});
  ozMatrix4f twice;
  twice.makeScale(2, 2, 2);
  transform.matrix()->set(0, twice);
  EXPECT_EQ((Floats{22, 44}), points.xs());
  morph.weight()->set(0, 0);
  EXPECT_EQ((Floats{20, 40}), points.xs());
  twice.makeScale(3, 3, 3);
  transform.matrix()->set(0, twice);
  EXPECT_EQ((Floats{30, 60}), points.xs());
  points.cleanFields();
  EXPECT_FALSE(points.hasPendingFields());
  morph.input()->set(3, ozVec3f(7, 7, 7));
  EXPECT_TRUE(points.hasPendingFields());
  EXPECT_EQ((Floats{30, 21}), points.xs());
}

TEST(VectorEngines, MayFeedThemselves) {
  ozMorphEng3f engine;
  fill(engine.input(), vecs({1, 2}));
  fill(engine.weight(), Floats{2});
  engine.output()->connect(engine.input());
  engine.output()->get();
  EXPECT_EQ(2u, engine.input()->getCount());
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

TEST(Selector, StartsAtTheFirstElementWithAZeroVector) {
  ozSelectorEng3f three;
  ozSelectorEng4f four;
  EXPECT_EQ(0, three.getSelector());
  EXPECT_TRUE(three.value()->get() == ozVec3f(0, 0, 0));
  EXPECT_TRUE(four.value()->get() == ozVec4f(0, 0, 0, 0));
}

TEST(Selector, FollowsAConnectedSelector) {
  ozSelectorEng3f from, to;
  from.connect(3, &to, 3);
  fill(to.input(), vecs({1, 2, 3}));
  from.setSelector(1);
  EXPECT_TRUE(to.value()->get() == ozVec3f(2, 2, 2));
  EXPECT_EQ(1, to.getSelector());
}

TEST(Selector, OutOfRangeOfFourFloatsLeavesTheValueToo) {
  ozSelectorEng4f engine;
  engine.input()->set(0, ozVec4f(1, 2, 3, 4));
  EXPECT_EQ(4.0f, engine.value()->get()[3]);
  for (int selector : {1, -1, INT_MAX, INT_MIN}) {
    engine.setSelector(selector);
    EXPECT_EQ(4.0f, engine.value()->get()[3]);
  }
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

TEST_F(TransformEngine, AnIndexedSetLeavesTheTranslationOutOfVectors) {
  ozMatrix4f m;
  m.makeScale(2, 2, 2);
  m.set(3, 0, 100);
  engine.setTransformType(ozTransformEng::VECTOR);
  fill(engine.input(), vecs({1, 3}));
  engine.matrix()->set(0, m);
  fill(engine.count(), std::vector<int>{-2});
  fill(engine.index(), std::vector<int>{1, 0});
  EXPECT_EQ((Floats{2, 6}), points.xs());
}

TEST_F(TransformEngine, AnotherTypeThanVectorsCountsAsPoints) {
  engine.setTransformTypeHack(7);
  fill(engine.input(), vecs({1}));
  engine.matrix()->set(0, moved(10));
  EXPECT_EQ((Floats{11}), points.xs());
}

TEST_F(TransformEngine, AnIndexedSetMovesThePositionsOfTheNextOne) {
  fill(points.point(), vecs({0, 0, 0}));
  fill(engine.input(), vecs({1, 2, 3}));
  fill(engine.matrix(), std::vector<ozMatrix4f>{moved(10), moved(20), moved(30)});
  fill(engine.count(), std::vector<int>{-1, 1, -3});
  fill(engine.index(), std::vector<int>{2, 0});
  EXPECT_EQ((Floats{31, 22, 13}), points.xs()); // the last set has one index alone
}

TEST_F(TransformEngine, ASetOfLengthZeroUsesUpItsMatrix) {
  fill(engine.input(), vecs({1}));
  fill(engine.matrix(), std::vector<ozMatrix4f>{moved(10), moved(20)});
  fill(engine.count(), std::vector<int>{0, 1});
  EXPECT_EQ((Floats{21}), points.xs());
}

TEST_F(TransformEngine, PartsTheInputEvenlyAmongTheMatricesWithoutCounts) {
  fill(engine.input(), vecs({1, 2, 3, 4}));
  fill(engine.matrix(), std::vector<ozMatrix4f>{moved(10), moved(20)});
  EXPECT_EQ((Floats{11, 12}), points.xs()); // as long as one set; the second lies past it
}

TEST_F(TransformEngine, StopsAtTheEndOfTheMatrices) {
  fill(points.point(), vecs({5, 5}));
  fill(engine.input(), vecs({1, 2}));
  engine.matrix()->set(0, moved(10));
  fill(engine.count(), std::vector<int>{1, -2});
  fill(engine.index(), std::vector<int>{0, 1});
  EXPECT_EQ((Floats{11, 5}), points.xs());
}

TEST_F(TransformEngine, WithoutMatricesOrConnectionsDoesNothing) {
  fill(points.point(), vecs({9}));
  fill(engine.input(), vecs({1, 2}));
  EXPECT_EQ((Floats{9}), points.xs());
  ozTransformEng3f alone;
  alone.output()->set(0, ozVec3f(7, 7, 7));
  fill(alone.input(), vecs({1, 2}));
  alone.matrix()->set(0, moved(1));
  ASSERT_EQ(1u, alone.output()->getCount());
  EXPECT_EQ(7.0f, alone.output()->get(0)[0]);
}

TEST_F(TransformEngine, TheIdentityAloneCopiesInfiniteVectors) {
  engine.input()->set(0, ozVec3f(INFINITY, 1, 2));
  engine.matrix()->set(0, ozMatrix4f());
  EXPECT_TRUE(points.point()->get(0) == ozVec3f(INFINITY, 1, 2));
  ozMatrix4f nearly;
  nearly.set(3, 1, 1e-20f);
  engine.matrix()->set(0, nearly);
  EXPECT_NE(points.point()->get(0)[1], 1.0f); // infinity times zero is no number
}

TEST_F(TransformEngine, GivesAllTargetsTheSameAndTellsEach) {
  Points other;
  engine.output()->connect(other.point());
  fill(engine.input(), vecs({1, 2}));
  points.changes = other.changes = 0;
  engine.matrix()->set(0, moved(1));
  EXPECT_EQ((Floats{2, 3}), points.xs());
  EXPECT_GE(points.changes, 1);
  EXPECT_GE(other.changes, 1);
  EXPECT_EQ((Floats{2, 3}), other.xs());
}

TEST_F(TransformEngine, CountsAndIndicesOutOfRangeStayInsideTheArrays) {
  fill(engine.input(), vecs({1, 2}));
  fill(engine.matrix(), std::vector<ozMatrix4f>{moved(10), moved(20)});
  fill(engine.count(), std::vector<int>{5, -4});
  fill(engine.index(), std::vector<int>{-1, 4, 3, 1});
  // The first set has two elements of input; of the second set's indices only 1 is in both arrays.
  EXPECT_EQ((Floats{11, 22, 0, 0, 0}), points.xs());
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
