#include "soundFixture.h"

#include <cmath>

using ::testing::ElementsAre;

namespace {

/// A clip that notes the changes of its fields.
class WatchedClip : public ozAudioClip {
public:
  WatchedClip() : ozAudioClip(ozAudioClip::getClassType()) {}
  std::vector<short> changes;

protected:
  void fieldChanged(short id) override {
    changes.push_back(id);
    ozAudioClip::fieldChanged(id);
  }
};

/// A clip of 500 frames at 1000 a second.
class AudioClipTest : public ::testing::Test {
protected:
  AudioClipTest() {
    clip->setSamples(makeSamples(std::vector<int16_t>(500), ozAudioSamples::FLOAT_SAMPLE_TYPE));
    clip->changes.clear();
  }

  bool isListed() const { return ozAudioClip::getActiveClips().find(clip.get()) >= 0; }

  Held<WatchedClip> clip;
};

} // namespace

TEST(AudioClip, HasItsFieldsInPlace) {
  ozType *const type = ozAudioClip::getClassType();
  expectFields(type, "AudioClip", ozContainer::getClassType(), 0,
               {{"url", ozMFString::getClassType()},
                {"samples", ozSFRef::getClassType()},
                {"pitch", ozSFFloat::getClassType()},
                {"doppler", ozSFUByte::getClassType()},
                {"loop", ozSFUByte::getClassType()},
                {"startTime", ozSFTime::getClassType()},
                {"stopTime", ozSFTime::getClassType()},
                {"duration", ozSFTime::getClassType()},
                {"isActive", ozSFUByte::getClassType()},
                {"description", ozSFString::getClassType()}});
  EXPECT_EQ(ozAudioSamples::getClassType(), refTypeOf(type, 1));
}

TEST(AudioClip, StartsWithItsDefaults) {
  Held<ozAudioClip> clip;
  EXPECT_EQ(0u, clip->url()->getCount());
  EXPECT_EQ(nullptr, clip->getSamples());
  EXPECT_EQ(1.0f, clip->getPitch());
  EXPECT_EQ(1, clip->getDoppler());
  EXPECT_EQ(0, clip->getLoop());
  EXPECT_EQ(-1.0, clip->getStartTime().get());
  EXPECT_EQ(0.0, clip->getStopTime().get());
  EXPECT_EQ(-1.0, clip->getDuration().get());
  EXPECT_EQ(1, clip->getIsActive());
  ozString text("x");
  clip->getDescription(text);
  EXPECT_FALSE(!!text);
  EXPECT_EQ(0, clip->playedOut);
  EXPECT_EQ(clip->url(), clip->getField(0));
}

TEST_F(AudioClipTest, EachSetterReachesItsFieldAndItsGetter) {
  clip->setPitch(2);
  clip->setDoppler(0);
  clip->setLoop(1);
  clip->setStartTime(5.0);
  clip->setStopTime(6.0);
  clip->setDescription("a bell");
  EXPECT_THAT(clip->changes, ElementsAre(2, 3, 4, 5, 6, 9));
  EXPECT_EQ(2, clip->getPitch());
  EXPECT_EQ(0, clip->getDoppler());
  EXPECT_EQ(1, clip->getLoop());
  EXPECT_EQ(5.0, clip->getStartTime().get());
  EXPECT_EQ(6.0, clip->getStopTime().get());
  ozString text;
  clip->getDescription(text);
  EXPECT_STREQ("a bell", text.getString());
}

TEST_F(AudioClipTest, ANewClipEndsAtItsFirstEvaluationAndTells) {
  Held<ozAudioClip> listener;
  clip->connect(8, listener, 4);
  EXPECT_EQ(1, listener->getLoop());
  clip->eval();
  EXPECT_THAT(clip->changes, ElementsAre(8));
  EXPECT_TRUE(listener->getField(4)->isDirty());
  EXPECT_EQ(0, listener->getLoop());
  EXPECT_EQ(0, clip->getIsActive());
  clip->changes.clear();
  clip->eval();
  EXPECT_THAT(clip->changes, ElementsAre());
}

TEST_F(AudioClipTest, ALoopingClipStaysActivePastItsStopTimeAndWhenPlayedOut) {
  clip->setLoop(1);
  clip->eval();
  EXPECT_EQ(1, clip->getIsActive());
  clip->setStopTime(-5.0); // at or below the start: until the samples are out
  clip->playedOut = 1;
  clip->eval();
  EXPECT_EQ(1, clip->getIsActive());
}

TEST_F(AudioClipTest, OneWithItsStopNotBehindItsStartPlaysUntilItIsOut) {
  for (double stop : {-1.0, -7.0}) {
    clip->setStopTime(stop);
    clip->eval();
    EXPECT_EQ(1, clip->getIsActive());
    clip->playedOut = 1;
    clip->eval();
    EXPECT_EQ(0, clip->getIsActive());
  }
}

TEST_F(AudioClipTest, OneWithAStopTimeToComeIsActiveEvenIfPlayedOut) {
  clip->setStopTime(now() + 1000);
  clip->playedOut = 1;
  clip->eval();
  EXPECT_EQ(1, clip->getIsActive());
}

TEST_F(AudioClipTest, AheadOfItsStartTimeNothingChanges) {
  clip->setStartTime(now() + 1000);
  clip->eval();
  EXPECT_EQ(1, clip->getIsActive());
  EXPECT_EQ(0.0, clip->sampleDuration);
}

TEST_F(AudioClipTest, WithoutSamplesNothingChanges) {
  clip->setSamples(nullptr);
  clip->eval();
  EXPECT_EQ(1, clip->getIsActive());
  EXPECT_EQ(0.0, clip->sampleDuration);
}

TEST_F(AudioClipTest, WritingEitherTimeArmsItAgain) {
  clip->playedOut = 1;
  clip->setStartTime(-1.0);
  EXPECT_EQ(0, clip->playedOut);
  clip->playedOut = 1;
  clip->setStopTime(-1.0);
  EXPECT_EQ(0, clip->playedOut);
  clip->playedOut = 1;
  clip->setPitch(1);
  clip->setLoop(0);
  EXPECT_EQ(1, clip->playedOut);
}

TEST_F(AudioClipTest, AStartTimeFromAConnectionArmsItAgainToo) {
  Held<ozAudioClip> from;
  from->setStartTime(-3.0);
  from->connect(5, clip, 5);
  clip->setStopTime(-9.0);
  clip->eval();
  clip->playedOut = 1;
  clip->eval();
  ASSERT_EQ(0, clip->getIsActive());
  from->setStartTime(now() - 1);
  clip->eval();
  EXPECT_EQ(0, clip->playedOut);
  EXPECT_EQ(1, clip->getIsActive());
  EXPECT_LT(0.0, clip->getStartTime().get());
}

TEST_F(AudioClipTest, ATimeThatIsNoNumberMakesItInactive) {
  clip->setLoop(1); // or it would be inactive anyway
  double const nan = std::nan("");
  for (bool isStart : {true, false}) {
    clip->setStartTime(isStart ? nan : -1.0);
    clip->setStopTime(isStart ? now() + 1000 : nan);
    static_cast<ozSFUByte *>(clip->getField(8))->set(1);
    clip->eval();
    EXPECT_EQ(0, clip->getIsActive());
  }
}

TEST_F(AudioClipTest, LoopingOneStartsOnlyAtItsStartTime) {
  clip->eval();
  ASSERT_EQ(0, clip->getIsActive());
  clip->setLoop(1);
  clip->setStartTime(now() + 1000);
  clip->eval();
  EXPECT_EQ(0, clip->getIsActive());
}

TEST_F(AudioClipTest, TellsOfANewUrlAndOfNewSamples) {
  clip->url()->set(0, "bell.wav");
  clip->setSamples(nullptr);
  EXPECT_THAT(clip->changes, ElementsAre(0, 1));
}

TEST_F(AudioClipTest, KnowsTheLengthOfItsSamplesInSeconds) {
  clip->eval();
  EXPECT_EQ(0.5, clip->sampleDuration);
  clip->getSamples()->setSampleRate(0);
  clip->eval();
  EXPECT_TRUE(std::isinf(clip->sampleDuration));
}

TEST_F(AudioClipTest, PullsItsConnectedFieldsAheadOfTheEvaluation) {
  Held<ozAudioClip> from;
  from->connect(4, clip, 4);
  from->setLoop(1);
  clip->eval();
  EXPECT_EQ(1, clip->getIsActive());
}

TEST_F(AudioClipTest, StandsOnTheListFromBecomingActiveToBecomingInactive) {
  clip->eval();
  EXPECT_FALSE(isListed());
  clip->setLoop(1);
  clip->eval();
  EXPECT_TRUE(isListed());
  clip->setLoop(0);
  clip->eval();
  EXPECT_FALSE(isListed());
}

TEST_F(AudioClipTest, OneThatIsActiveFromTheStartNeverEntersTheList) {
  clip->setLoop(1);
  clip->eval();
  EXPECT_EQ(1, clip->getIsActive());
  EXPECT_FALSE(isListed());
}

TEST_F(AudioClipTest, IsOnTheListOnce) {
  clip->eval();
  clip->setLoop(1);
  clip->eval();
  unsigned int const count = ozAudioClip::getActiveClips().getCount();
  static_cast<ozSFUByte *>(clip->getField(8))->set(0); // somebody else wrote it
  clip->eval();
  EXPECT_EQ(1, clip->getIsActive());
  EXPECT_EQ(count, ozAudioClip::getActiveClips().getCount());
}

TEST(AudioClip, TakesItselfOffTheListWhenItGoes) {
  unsigned int const before = ozAudioClip::getActiveClips().getCount();
  {
    Held<ozAudioClip> clip;
    clip->setSamples(new ozAudioSamples);
    clip->eval();
    clip->setLoop(1);
    clip->eval();
    EXPECT_EQ(before + 1, ozAudioClip::getActiveClips().getCount());
  }
  EXPECT_EQ(before, ozAudioClip::getActiveClips().getCount());
}

TEST(AudioClip, HoldsItsSamplesAndRefusesOtherObjects) {
  Held<ozAudioSamples> samples;
  {
    Held<ozAudioClip> clip;
    clip->setSamples(samples);
    EXPECT_EQ(2u, samples->getRefCount());
    EXPECT_NE("", stderrOf([&] { static_cast<ozSFRef *>(clip->getField(1))->set(clip); }));
    EXPECT_EQ(samples, clip->getSamples());
  }
  EXPECT_EQ(1u, samples->getRefCount());
}

TEST(AudioClip, IsCopiedWithItsUrlAndSharedSamples) {
  Held<ozAudioClip> clip;
  clip->url()->set(0, "bell.wav");
  clip->setPitch(3);
  clip->setSamples(new ozAudioSamples);
  Held<ozContainer> copied(clip->clone(ozContainer::CLONE_SHALLOW));
  ozAudioClip *const other = static_cast<ozAudioClip *>(copied.get());
  ASSERT_EQ(1u, other->url()->getCount());
  EXPECT_STREQ("bell.wav", other->url()->get(0).getString());
  EXPECT_EQ(3, other->getPitch());
  EXPECT_EQ(clip->getSamples(), other->getSamples());
}
