#include <gtest/gtest.h>

#include <math.h>
#include <time.h>

#include <algorithm>

#include "oz/ozSFByte.h"
#include "oz/ozTimeSensor.h"

namespace {

/// A sensor that notes which of its fields were announced, and whose evaluation can be counted.
class Clock : public ozTimeSensor {
public:
  Clock() : ozTimeSensor(ozTimeSensor::getClassType()) {}
  void eval() override {
    ++evaluations;
    ozTimeSensor::eval();
  }
  std::vector<short> announced;
  int evaluations = 0;

protected:
  void fieldChanged(short id) override {
    announced.push_back(id);
    ozTimeSensor::fieldChanged(id);
  }
};

/// Receives a field and does something about each change.
class Listener : public ozContainer {
  OZ_CLASS(Listener);

public:
  Listener();
  unsigned char _value;
};

OZ_DEFINE_CLASS(Listener, "Listener", ozContainer) { ozSFUByte::addTypeField(type, "value", 0, 0, &Listener::_value); }

double now() { return ozTime::getTimeOfDay().get(); }

void sleepFor(double seconds) {
  timespec const t = {static_cast<time_t>(seconds), static_cast<long>((seconds - static_cast<time_t>(seconds)) * 1e9)};
  nanosleep(&t, nullptr);
}

bool has(std::vector<short> const &ids, short id) { return std::find(ids.begin(), ids.end(), id) != ids.end(); }

TEST(TimeSensor, HasItsFieldsInPlace) {
  ozTimeSensor sensor;
  struct {
    char const *name;
    ozType *type;
  } const rows[] = {{"cycleInterval", ozSFTime::getClassType()},
                    {"enabled", ozSFUByte::getClassType()},
                    {"loop", ozSFUByte::getClassType()},
                    {"startTime", ozSFTime::getClassType()},
                    {"stopTime", ozSFTime::getClassType()},
                    {"cycleTime", ozSFTime::getClassType()},
                    {"fraction_changed", ozSFFloat::getClassType()},
                    {"isActive", ozSFUByte::getClassType()},
                    {"time", ozSFTime::getClassType()}};
  ozType *const type = sensor.getType();
  EXPECT_STREQ("TimeSensor", type->getName());
  EXPECT_STREQ("Node", type->getAncestor()->getName());
  ASSERT_EQ(11, type->getFieldInfoCount());
  for (int i = 0; i < 9; ++i) {
    EXPECT_STREQ(rows[i].name, type->getFieldInfo(2 + i)->getName());
    EXPECT_EQ(rows[i].type, type->getFieldInfo(2 + i)->getFieldType());
  }
  EXPECT_EQ(1.0, sensor.getCycleInterval().get());
  EXPECT_EQ(1, sensor.getEnabled());
  EXPECT_EQ(0, sensor.getLoop());
  EXPECT_EQ(0.0, sensor.getStartTime().get());
  EXPECT_EQ(0.0, sensor.getStopTime().get());
  EXPECT_EQ(0.0, sensor.getCycleTime().get());
  EXPECT_EQ(0.0f, sensor.getFractionChanged());
  EXPECT_EQ(0, sensor.getIsActive());
  EXPECT_EQ(0.0, sensor.getTime().get());
  for (short id = 7; id <= 10; ++id) EXPECT_EQ(ozField::EVENT_FORWARD, sensor.getField(id)->getEventClass());
}

TEST(TimeSensor, IsCountedWhileItExists) {
  int const before = ozTimeSensor::getSensorCount();
  {
    ozTimeSensor a, b;
    EXPECT_EQ(before + 2, ozTimeSensor::getSensorCount());
  }
  EXPECT_EQ(before, ozTimeSensor::getSensorCount());
}

TEST(TimeSensor, ANewOneWithDefaultsLeavesTheListAtTheFirstTickWithoutAnEvent) {
  Clock clock;
  ozTimeSensor::updateSensors();
  EXPECT_EQ(1, clock.evaluations);
  EXPECT_EQ(0, clock.getIsActive());
  EXPECT_FALSE(has(clock.announced, 9));
  ozTimeSensor::updateSensors();
  EXPECT_EQ(1, clock.evaluations);
}

TEST(TimeSensor, OneThatHasNotStartedYetStaysOnTheList) {
  Clock clock;
  clock.setStartTime(now() + 1000);
  ozTimeSensor::updateSensors();
  ozTimeSensor::updateSensors();
  EXPECT_EQ(2, clock.evaluations);
  EXPECT_EQ(0, clock.getIsActive());
}

TEST(TimeSensor, ALoopNeverEndsAndItsFractionRuns) {
  Clock clock;
  clock.setLoop(1);
  clock.setCycleInterval(100.0);
  double const start = now() - 25;
  clock.setStartTime(start);
  ozTimeSensor::updateSensors();
  EXPECT_EQ(1, clock.getIsActive());
  EXPECT_NEAR(0.25, clock.getFractionChanged(), 0.05);
  EXPECT_EQ(start, clock.getCycleTime().get());
  clock.announced.clear();
  ozTimeSensor::updateSensors();
  EXPECT_FALSE(has(clock.announced, 9));
  EXPECT_FALSE(has(clock.announced, 7));
}

TEST(TimeSensor, AStopTimeAtOrBelowTheStartTimeIsPassedOver) {
  for (double ahead : {0.0, 5.0}) {
    Clock clock;
    clock.setLoop(1);
    clock.setCycleInterval(100.0);
    double const start = now() - 25;
    clock.setStopTime(start - ahead);
    clock.setStartTime(start);
    ozTimeSensor::updateSensors();
    EXPECT_EQ(1, clock.getIsActive());
    EXPECT_GT(clock.getTime().get(), start + 20); // not clamped either
    ozTimeSensor::updateSensors();
    EXPECT_EQ(1, clock.getIsActive());
  }
}

TEST(TimeSensor, ExactlyOnTheBoundaryOfACycleTheFractionIsOne) {
  Clock clock;
  clock.setLoop(1);
  // So short that every time of day, as a double, is a whole number of cycles from the start.
  clock.setCycleInterval(ldexp(1.0, -30));
  clock.setStartTime(floor(now()) - 10);
  ozTimeSensor::updateSensors();
  EXPECT_EQ(1, clock.getIsActive());
  EXPECT_EQ(1.0f, clock.getFractionChanged());
  ozTimeSensor::updateSensors();
  EXPECT_EQ(1.0f, clock.getFractionChanged());
}

TEST(TimeSensor, ReadingAnOutputDoesNotEvaluate) {
  Clock clock;
  clock.setLoop(1);
  clock.setStartTime(now() - 25);
  EXPECT_EQ(0, clock.getIsActive());
  EXPECT_EQ(0.0f, clock.getFractionChanged());
  EXPECT_EQ(0.0, clock.getTime().get());
  EXPECT_EQ(0.0, clock.getCycleTime().get());
  EXPECT_EQ(0, clock.evaluations);
}

TEST(TimeSensor, WritesCycleTimeThenTimeThenFractionThenIsActive) {
  Clock clock;
  clock.setLoop(1);
  clock.setCycleInterval(100.0);
  clock.setStartTime(now() - 25);
  clock.announced.clear();
  ozTimeSensor::updateSensors();
  EXPECT_EQ((std::vector<short>{7, 10, 8, 9}), clock.announced);
}

TEST(TimeSensor, AOneShotRunsOneCycleAndEndsOnFractionOne) {
  Clock clock;
  clock.setCycleInterval(0.05);
  clock.setStartTime(now());
  ozTimeSensor::updateSensors();
  EXPECT_EQ(1, clock.getIsActive());
  sleepFor(0.08);
  clock.announced.clear();
  ozTimeSensor::updateSensors();
  EXPECT_EQ(0, clock.getIsActive());
  EXPECT_EQ(1.0f, clock.getFractionChanged());
  EXPECT_FALSE(has(clock.announced, 7));
  int const evaluations = clock.evaluations;
  ozTimeSensor::updateSensors();
  EXPECT_EQ(evaluations, clock.evaluations);
}

TEST(TimeSensor, TheTimeOfTheLastReportIsTheEndOfTheCycle) {
  Clock clock;
  clock.setCycleInterval(0.05);
  double const start = now();
  clock.setStartTime(start);
  ozTimeSensor::updateSensors();
  sleepFor(0.08);
  ozTimeSensor::updateSensors();
  EXPECT_NEAR(start + 0.05, clock.getTime().get(), 1e-6); // doubles of today's seconds are that fine
}

TEST(TimeSensor, AStopTimeEndsItAndClampsItsTime) {
  Clock clock;
  clock.setLoop(1);
  clock.setCycleInterval(10.0);
  double const start = now(), stop = start + 0.05;
  clock.setStartTime(start);
  clock.setStopTime(stop);
  ozTimeSensor::updateSensors();
  EXPECT_EQ(1, clock.getIsActive());
  sleepFor(0.08);
  ozTimeSensor::updateSensors();
  EXPECT_EQ(0, clock.getIsActive());
  EXPECT_EQ(stop, clock.getTime().get());
}

TEST(TimeSensor, WritingCycleTimeMakesTimeTheFreshTimeOfDay) {
  Clock clock;
  clock.setLoop(1);
  clock.setCycleInterval(100.0);
  clock.setStartTime(now() - 25);
  double const before = now();
  ozTimeSensor::updateSensors();
  // With cycleTime written, time is read again behind it: never older than the tick.
  EXPECT_GE(clock.getTime().get(), before);
  EXPECT_LE(clock.getTime().get(), now());
}

TEST(TimeSensor, DisablingAnActiveOneEndsItAndEnablingPutsItBack) {
  Clock clock;
  clock.setLoop(1);
  clock.setStartTime(now() - 1);
  ozTimeSensor::updateSensors();
  clock.setEnabled(0);
  EXPECT_EQ(1, clock.getIsActive());
  ozTimeSensor::updateSensors();
  EXPECT_EQ(0, clock.getIsActive());
  int const evaluations = clock.evaluations;
  ozTimeSensor::updateSensors();
  EXPECT_EQ(evaluations, clock.evaluations);
  clock.setEnabled(1);
  ozTimeSensor::updateSensors();
  EXPECT_EQ(1, clock.getIsActive());
}

TEST(TimeSensor, WhileItRunsStartTimeAndCycleIntervalAreRefusedInSilence) {
  Clock clock;
  Clock other;
  double const start = now() - 1;
  clock.setLoop(1);
  clock.setCycleInterval(100.0);
  clock.setStartTime(start);
  ozTimeSensor::updateSensors();
  clock.connect(5, &other, 5);
  other.getStartTime();
  clock.setStartTime(start + 5);
  clock.setCycleInterval(7.0);
  EXPECT_EQ(start, clock.getStartTime().get());
  EXPECT_EQ(100.0, clock.getCycleInterval().get());
  EXPECT_FALSE(other.getField(5)->isDirty());
}

TEST(TimeSensor, WhileItRunsAStopTimeAtOrBeforeTheStartIsRefused) {
  Clock clock;
  double const start = now() - 1;
  clock.setLoop(1);
  clock.setStartTime(start);
  ozTimeSensor::updateSensors();
  clock.setStopTime(start);
  EXPECT_EQ(0.0, clock.getStopTime().get());
  clock.setStopTime(start - 5);
  EXPECT_EQ(0.0, clock.getStopTime().get());
  clock.setStopTime(start + 500);
  EXPECT_EQ(start + 500, clock.getStopTime().get());
}

TEST(TimeSensor, ACycleIntervalThatIsNotPositiveIsRefused) {
  ozTimeSensor sensor;
  for (double bad : {0.0, -3.0}) {
    sensor.setCycleInterval(bad);
    EXPECT_EQ(1.0, sensor.getCycleInterval().get());
  }
  sensor.setCycleInterval(2.0);
  sensor.setCycleInterval(-1.0);
  EXPECT_EQ(2.0, sensor.getCycleInterval().get());
}

TEST(TimeSensor, AnInputWrittenAgainWakesAFinishedSensor) {
  Clock clock;
  ozTimeSensor::updateSensors();
  int const evaluations = clock.evaluations;
  clock.setLoop(0);
  ozTimeSensor::updateSensors();
  EXPECT_EQ(evaluations + 1, clock.evaluations);
}

TEST(TimeSensor, TheSensorAfterOneThatLeavesIsPassedOverAtThatTick) {
  Clock first, second;
  second.setLoop(1);
  ozTimeSensor::updateSensors(); // the first leaves
  EXPECT_EQ(1, first.evaluations);
  EXPECT_EQ(0, second.evaluations);
  ozTimeSensor::updateSensors();
  EXPECT_EQ(1, second.evaluations);
}

/// Destroys a sensor as soon as its value changes.
class Destroyer : public Listener {
public:
  ozTimeSensor *victim = nullptr;

protected:
  void dirtyFieldOutputs(ozField *f) override {
    Listener::dirtyFieldOutputs(f);
    if (victim) {
      ozTimeSensor *const gone = victim;
      victim = nullptr;
      gone->unref();
    }
  }
};

TEST(TimeSensor, AListenerMayDestroyTheSensorThatItListensTo) {
  int const before = ozTimeSensor::getSensorCount();
  Destroyer destroyer;
  ozTimeSensor *const sensor = new ozTimeSensor;
  sensor->ref();
  sensor->setLoop(1);
  sensor->connect(9, &destroyer, 0);
  destroyer.victim = sensor;
  ozTimeSensor::updateSensors();
  EXPECT_EQ(before, ozTimeSensor::getSensorCount());
}

TEST(TimeSensor, AListenerMayDestroyAnotherSensor) {
  int const before = ozTimeSensor::getSensorCount();
  {
    Destroyer destroyer;
    ozTimeSensor first;
    ozTimeSensor *const other = new ozTimeSensor;
    other->ref();
    first.setLoop(1);
    first.connect(9, &destroyer, 0);
    destroyer.victim = other;
    ozTimeSensor::updateSensors();
    EXPECT_EQ(before + 1, ozTimeSensor::getSensorCount());
  }
}

TEST(TimeSensor, TheTickMarksWhatIsConnected) {
  Listener listener;
  ozTimeSensor sensor;
  sensor.setLoop(1);
  sensor.connect(9, &listener, 0);
  static_cast<ozSFUByte *>(listener.getField(0))->get();
  ozTimeSensor::updateSensors();
  EXPECT_TRUE(listener.getField(0)->isDirty());
  EXPECT_EQ(1, static_cast<ozSFUByte *>(listener.getField(0))->get());
}

} // namespace
