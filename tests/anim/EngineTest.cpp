#include <gtest/gtest.h>

#include "oz/ozEngine.h"
#include "oz/ozMFByte.h"
#include "oz/ozSFByte.h"
#include "oz/ozTimeSensor.h"

namespace {

/// Adds two numbers, and counts how often it does.
class Adder : public ozEngine {
  OZ_CLASS(Adder);

public:
  Adder();
  void eval() override {
    ++evaluations;
    static_cast<ozSFInt *>(getField(5))->set(_a + _b);
    ozIntArray both(2);
    both.append(_a);
    both.append(_b);
    static_cast<ozMFInt *>(getField(6))->set(both);
  }
  void setA(int a) { store(3, _a, a); }
  void setB(int b) { store(4, _b, b); }
  int getSum() { return read(5, _sum); }
  ozField *trigger() { return getField(2); }
  int evaluations = 0;
  int _a, _b, _sum;
  ozIntArray _both;
};

OZ_DEFINE_CLASS(Adder, "Adder", ozEngine) {
  ozSFInt::addTypeField(type, "a", 3, 1, &Adder::_a);
  ozSFInt::addTypeField(type, "b", 4, 2, &Adder::_b);
  ozSFInt::addTypeField(type, "sum", 5, 0, &Adder::_sum);
  ozMFInt::addTypeField(type, "both", 6, &Adder::_both);
  static short const in[] = {3, 4}, out[] = {5, 6};
  type->setEngineIO(2, in, 2, out);
}

/// A class below Adder with an output more.
class Doubler : public Adder {
  OZ_CLASS(Doubler);

public:
  Doubler();
  int _twice;
};

OZ_DEFINE_CLASS(Doubler, "Doubler", Adder) {
  ozSFInt::addTypeField(type, "twice", 7, 0, &Doubler::_twice);
  static short const out[] = {7};
  type->setEngineIO(0, nullptr, 1, out);
}

TEST(Engine, DoesNotEvaluateAtConstructionAndStartsClean) {
  Adder adder;
  EXPECT_EQ(0, adder.evaluations);
  EXPECT_FALSE(adder.trigger()->isDirty());
  EXPECT_FALSE(adder.hasPendingFields());
  EXPECT_EQ(0, adder.getSum());
  EXPECT_EQ(0, adder.evaluations);
}

TEST(Engine, IsANodeWithATriggerAtIdTwo) {
  Adder adder;
  EXPECT_TRUE(adder.isOfType(ozNode::getClassType()));
  EXPECT_STREQ("Engine", ozEngine::getClassType()->getName());
  EXPECT_STREQ("trigger", adder.getType()->getFieldInfo(2)->getName());
  EXPECT_EQ(0, static_cast<ozSFInt *>(adder.trigger())->get());
  EXPECT_FALSE(adder.needsEval());
}

TEST(Engine, ConnectsItsInputsToTheTriggerAndMakesItsOutputsForward) {
  Adder adder;
  ASSERT_EQ(2u, adder.trigger()->getInputs()->getCount());
  EXPECT_EQ(adder.getField(3), adder.trigger()->getInputs()->get(0));
  EXPECT_EQ(adder.getField(4), adder.trigger()->getInputs()->get(1));
  EXPECT_EQ(ozField::EVENT_FORWARD, adder.getField(5)->getEventClass());
  EXPECT_EQ(ozField::EVENT_FORWARD, adder.getField(6)->getEventClass());
  EXPECT_EQ(ozField::EVENT_ANY, adder.getField(3)->getEventClass());
}

TEST(Engine, TwoChangesAndOneReadEvaluateOnce) {
  Adder adder;
  adder.setA(10);
  adder.setB(20);
  EXPECT_EQ(0, adder.evaluations);
  EXPECT_EQ(30, adder.getSum());
  EXPECT_EQ(1, adder.evaluations);
}

TEST(Engine, TwoReadsWithoutAChangeEvaluateOnce) {
  Adder adder;
  adder.setA(10);
  adder.getSum();
  adder.getSum();
  EXPECT_EQ(1, adder.evaluations);
}

TEST(Engine, ManyReadersOfAChainCostOneEvaluationEach) {
  Adder first, second, third;
  first.connect(5, &second, 3);
  second.connect(5, &third, 3);
  second.connect(5, &third, 4);
  first.setA(3); // 3 + 2 = 5; 5 + 2 = 7; 7 + 7 = 14
  EXPECT_EQ(14, third.getSum());
  EXPECT_EQ(1, first.evaluations);
  EXPECT_EQ(1, second.evaluations);
  EXPECT_EQ(1, third.evaluations);
}

TEST(Engine, AMultiValuedOutputReachesConnectedArraysWhileTheEngineEvaluates) {
  Adder engine, target;
  struct Holder : Adder {
  } holder;
  engine.getField(6)->connect(holder.getField(6));
  static_cast<ozMFInt *>(holder.getField(6))->setEventClass(ozField::EVENT_ANY);
  engine.setA(4);
  engine.getSum();
  ASSERT_EQ(2u, holder._both.getCount());
  EXPECT_EQ(4, holder._both[0]);
  EXPECT_EQ(2, holder._both[1]);
  EXPECT_EQ(1, engine.evaluations);
}

TEST(Engine, ReadingAMarkedOutputOfAnEngineWithACleanTriggerDoesNotEvaluate) {
  Adder adder;
  adder.getField(5)->setDirty(1);
  adder.getSum();
  EXPECT_EQ(0, adder.evaluations);
  EXPECT_TRUE(adder.getField(5)->isDirty());
}

TEST(Engine, WritingTheTriggerWhileOutputsAreMarkedHangsNothing) {
  Adder adder;
  adder.setA(4);
  static_cast<ozSFInt *>(adder.trigger())->set(1);
  adder.cleanFields();
  adder.setA(5);
  EXPECT_EQ(7, adder.getSum());
}

TEST(Engine, ATargetThatPullsDuringEvaluationDoesNotEvaluateAgain) {
  Adder first, second;
  first.connect(5, &second, 3);
  second.getSum();
  first.setA(100);
  EXPECT_EQ(104, second.getSum());
  EXPECT_EQ(1, first.evaluations);
}

TEST(Engine, KnowsItsOutputs) {
  Adder adder;
  ozTimeSensor sensor;
  EXPECT_TRUE(ozEngine::isEngineOutput(&adder, 5));
  EXPECT_FALSE(ozEngine::isEngineOutput(&adder, 3));
  EXPECT_FALSE(ozEngine::isEngineOutput(&adder, 2));
  EXPECT_FALSE(ozEngine::isEngineOutput(&sensor, 2));
}

TEST(Engine, ASubclassInheritsInputsAndAddsOutputs) {
  ozShortArray const &out = Doubler::getClassType()->getEngineOutputs();
  ASSERT_EQ(3u, out.getCount());
  EXPECT_EQ(5, out[0]);
  EXPECT_EQ(7, out[2]);
  EXPECT_EQ(2u, Doubler::getClassType()->getEngineInputs().getCount());
}

class EngineClone : public ::testing::TestWithParam<int> {};

TEST_P(EngineClone, IsMarkedAtOnceAndEvaluatesOnItsOwn) {
  Adder *const adder = new Adder;
  adder->ref();
  adder->setA(10);
  adder->getSum();
  Adder *const copy = static_cast<Adder *>(adder->clone(static_cast<ozContainer::CloneEnum>(GetParam())));
  EXPECT_TRUE(copy->getField(5)->isDirty());
  EXPECT_TRUE(copy->trigger()->isDirty());
  EXPECT_EQ(12, copy->getSum());
  EXPECT_EQ(1, copy->evaluations);
  copy->setB(5);
  EXPECT_EQ(15, copy->getSum());
  EXPECT_EQ(12, adder->getSum());
  EXPECT_EQ(1, adder->evaluations);
  ASSERT_EQ(1u, adder->getField(3)->getOutputs()->getCount());
  EXPECT_EQ(adder->trigger(), adder->getField(3)->getOutputs()->get(0));
  ASSERT_EQ(2u, copy->trigger()->getInputs()->getCount());
  copy->unref();
  adder->unref();
}

INSTANTIATE_TEST_SUITE_P(Modes, EngineClone, ::testing::Values(0, 1, 2));

} // namespace
