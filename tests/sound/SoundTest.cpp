// The node: fields, the visit, the list of sounds to play. What it plays is in SoundMixTest.cpp.

#include "soundFixture.h"

#include <cmath>
#include <limits>

using ::testing::ElementsAre;

namespace {

/// A sound that notes whether it was found in reach.
class WatchedSound : public ozSound {
public:
  WatchedSound() : ozSound(ozSound::getClassType()) {}
  using ozSound::sound;
  void sound() override {
    ++heard;
    ozSound::sound();
  }
  int heard = 0;
};

class SoundNode : public SoundTest {
protected:
  SoundNode() {
    action.setMicrophone(microphone);
    sound->setSource(makeClip(makeSamples<int16_t>({1, 2, 3, 4}, ozAudioSamples::FLOAT_SAMPLE_TYPE)));
  }

  Held<WatchedSound> sound;
  Held<ozMicrophone> microphone;
  ozSoundAction action;
};

void expectVec(float x, float y, float z, ozVec3f const &v) {
  EXPECT_FLOAT_EQ(x, v[0]);
  EXPECT_FLOAT_EQ(y, v[1]);
  EXPECT_FLOAT_EQ(z, v[2]);
}

} // namespace

TEST_F(SoundNode, HasItsFieldsBehindThoseOfANode) {
  ozType *const vec = ozSFVec3f::getClassType(), *const number = ozSFFloat::getClassType();
  ozType *const type = ozSound::getClassType();
  expectFields(type, "Sound", ozNode::getClassType(), 2,
               {{"source", ozSFRef::getClassType()},
                {"control", ozSFEnum::getClassType()},
                {"location", vec},
                {"direction", vec},
                {"priority", number},
                {"currentFrame", number},
                {"intensity", number},
                {"maxIntensity", number},
                {"cullIntensity", number},
                {"maxFront", number},
                {"maxBack", number},
                {"minFront", number},
                {"minBack", number},
                {"spatialize", ozSFUByte::getClassType()}});
  EXPECT_EQ(ozAudioClip::getClassType(), refTypeOf(type, 2));
}

TEST_F(SoundNode, StartsWithItsDefaults) {
  Held<ozSound> fresh;
  ozVec3f v;
  EXPECT_EQ(nullptr, fresh->getSource());
  EXPECT_EQ(ozSound::PLAY, fresh->getControl());
  fresh->getLocation(v);
  expectVec(0, 0, 0, v);
  fresh->getDirection(v);
  expectVec(0, 0, 1, v);
  EXPECT_EQ(0, fresh->getPriority());
  EXPECT_EQ(0, fresh->getCurrentFrame());
  EXPECT_EQ(1, fresh->getIntensity());
  EXPECT_EQ(2, fresh->getMaxIntensity());
  EXPECT_EQ(0.1f, fresh->getCullIntensity());
  EXPECT_EQ(10, fresh->getMaxFront());
  EXPECT_EQ(10, fresh->getMaxBack());
  EXPECT_EQ(1, fresh->getMinFront());
  EXPECT_EQ(1, fresh->getMinBack());
  EXPECT_EQ(1, fresh->getSpatialize());
  EXPECT_EQ(0, fresh->getWasActive());
}

TEST_F(SoundNode, EachSetterReachesItsFieldAndItsGetter) {
  sound->setControl(ozSound::REWIND);
  sound->setLocation(1, 2, 3);
  sound->setDirection(ozVec3f(4, 5, 6));
  sound->setPriority(7);
  sound->setCurrentFrame(8);
  sound->setIntensity(9);
  sound->setMaxIntensity(10);
  sound->setCullIntensity(11);
  sound->setMaxFront(12);
  sound->setMaxBack(13);
  sound->setMinFront(14);
  sound->setMinBack(15);
  sound->setSpatialize(0);
  float x, y, z;
  ozVec3f v;
  EXPECT_EQ(2, sound->getControlHack());
  sound->getLocation(v);
  expectVec(1, 2, 3, v);
  sound->getDirection(&x, &y, &z);
  expectVec(4, 5, 6, ozVec3f(x, y, z));
  std::vector<float> const values = {sound->getPriority(),     sound->getCurrentFrame(),  sound->getIntensity(),
                                     sound->getMaxIntensity(), sound->getCullIntensity(), sound->getMaxFront(),
                                     sound->getMaxBack(),      sound->getMinFront(),      sound->getMinBack()};
  for (int i = 0; i < 9; ++i) {
    EXPECT_EQ(7 + i, values[i]);
    EXPECT_EQ(7 + i, static_cast<ozSFFloat *>(sound->getField(6 + i))->get());
  }
  EXPECT_EQ(0, sound->getSpatialize());
}

TEST_F(SoundNode, ControlsHaveTheirNames) {
  char const *const names[] = {"PLAY", "PAUSE", "REWIND", "FASTFORWARD", "STOP"};
  for (int i = 0; i < 5; ++i) {
    int value = -1;
    ozSound::getClassType()->getFieldInfo(3)->findEnum(names[i], value);
    EXPECT_EQ(i, value);
  }
}

TEST_F(SoundNode, TheFirstOneStartsSound) {
  SoundLists::SoundInitialized = 0;
  Held<ozSound> another;
  EXPECT_EQ(1, SoundLists::SoundInitialized);
}

// ---- the visit

TEST_F(SoundNode, AVisitFindsWhereItIsInTheWorld) {
  Held<ozTransform> transform;
  transform->setTranslation(1, 2, 3);
  transform->setScale(2, 2, 2);
  transform->addChild(sound);
  sound->setLocation(1, 0, 0);
  sound->setDirection(0, 0, -1);
  action.apply(transform);
  action.apply(transform); // a transform multiplies the matrix as it stands: up to date by now
  ozVec3f v;
  sound->getWorldPosition(v);
  expectVec(3, 2, 3, v);
  sound->getWorldDirection(v);
  expectVec(0, 0, -2, v); // as a vector: scaled, not moved
}

TEST_F(SoundNode, AVisitMeasuresHowItHasMovedSinceTheLast) {
  sound->setLocation(1, 0, 0);
  action.apply(sound);
  sound->setLocation(4, 4, 0);
  action.apply(sound);
  ozVec3f v;
  sound->getPreviousWorldPosition(v);
  expectVec(1, 0, 0, v);
  sound->getVelocity(v);
  expectVec(3, 4, 0, v);
  EXPECT_EQ(5, sound->getSpeed());
}

TEST_F(SoundNode, AVisitPullsAConnectedLocation) {
  Held<ozSound> from;
  from->connect(4, sound, 4);
  from->setLocation(0, 0, 5);
  action.apply(sound);
  ozVec3f v;
  sound->getWorldPosition(v);
  expectVec(0, 0, 5, v);
}

TEST_F(SoundNode, OneExactlyAtMaxFrontIsOutOfReach) {
  sound->setLocation(10, 0, 0);
  action.apply(sound);
  EXPECT_EQ(1, action.isAudible(sound));
  EXPECT_EQ(0, sound->heard);
  sound->setLocation(9.99f, 0, 0);
  action.apply(sound);
  EXPECT_EQ(0, action.isAudible(sound));
  EXPECT_EQ(1, sound->heard);
}

TEST_F(SoundNode, WithoutAMicrophoneItIsNeverStarted) {
  action.setMicrophone(nullptr);
  action.apply(sound);
  EXPECT_EQ(1, action.isAudible(sound));
  EXPECT_EQ(0, sound->heard);
  EXPECT_FALSE(SoundLists::isWaiting(sound));
}

// ---- the list

TEST_F(SoundNode, WithoutPlayersItWaitsInSilenceAndOnce) {
  EXPECT_EQ("", stderrOf([&] {
              action.apply(sound);
              action.apply(sound);
            }));
  EXPECT_EQ(2, sound->heard);
  ASSERT_EQ(1u, SoundLists::SoundsArray.getCount());
  EXPECT_EQ(sound.get(), SoundLists::SoundsArray[0]);
}

TEST_F(SoundNode, IsListedOnlyWhileItIsToBePlayed) {
  sound->setControl(ozSound::PAUSE);
  sound->ozSound::sound();
  EXPECT_FALSE(SoundLists::isWaiting(sound));
  EXPECT_EQ(1, sound->getWasActive()); // the clip is active all the same
  sound->setControl(ozSound::PLAY);
  sound->getSource()->playedOut = 1;
  sound->ozSound::sound();
  EXPECT_FALSE(SoundLists::isWaiting(sound));
  EXPECT_EQ(0, sound->getWasActive());
  sound->getSource()->playedOut = 0;
  sound->ozSound::sound();
  EXPECT_TRUE(SoundLists::isWaiting(sound));
  EXPECT_EQ(1, sound->getWasActive());
}

TEST_F(SoundNode, WithoutASourceNothingHappens) {
  sound->setSource(nullptr);
  sound->ozSound::sound();
  EXPECT_FALSE(SoundLists::isWaiting(sound));
  EXPECT_EQ(0, sound->getWasActive());
}

TEST_F(SoundNode, ACopyOfOneThatWaitsDoesNotWait) {
  sound->sound();
  Held<ozContainer> copied(sound->clone(ozContainer::CLONE_SHALLOW));
  EXPECT_EQ(1u, SoundLists::SoundsArray.getCount());
}

TEST_F(SoundNode, TakesItselfOffTheListWhenItGoes) {
  {
    Held<ozSound> other(makeSound({1, 2}));
    other->sound();
    EXPECT_EQ(1u, SoundLists::SoundsArray.getCount());
  }
  EXPECT_EQ(0u, SoundLists::SoundsArray.getCount());
}

// ---- attenuation

TEST_F(SoundNode, AttenuationFallsWithTheSquareOfTheDistance) {
  EXPECT_EQ(1, sound->getAttenuation(-0.001f));
  EXPECT_EQ(1, sound->getAttenuation(0));
  // 1 - 0.9 * d * d / 81
  EXPECT_FLOAT_EQ(0.9f, sound->getAttenuation(3));
  EXPECT_NEAR(0.1f, sound->getAttenuation(9), 1e-6f);
  EXPECT_EQ(0, sound->getAttenuation(9.001f));
}

TEST_F(SoundNode, TheRangeFollowsMaxFrontAndMinFront) {
  sound->setMaxFront(6);
  sound->setMinFront(2);
  EXPECT_FLOAT_EQ(1 - 0.9f * 4 / 16, sound->getAttenuation(2));
  EXPECT_NEAR(0.1f, sound->getAttenuation(4), 1e-6f);
}

TEST_F(SoundNode, TheRangeFollowsDistancesFromConnections) {
  Held<ozSound> from;
  from->connect(11, sound, 11);
  from->connect(13, sound, 13);
  from->setMaxFront(6);
  from->setMinFront(2);
  EXPECT_FLOAT_EQ(1 - 0.9f * 4 / 16, sound->getAttenuation(2));
}

TEST_F(SoundNode, AnEndlessRangeIsHeardInFullEverywhere) {
  sound->setMaxFront(std::numeric_limits<float>::infinity());
  EXPECT_EQ(1, sound->getAttenuation(1e6f));
}

TEST_F(SoundNode, TheFieldsForTheBackHaveNoEffectOnTheAttenuation) {
  sound->setMaxBack(2);
  sound->setMinBack(0);
  sound->setDirection(0, 1, 0);
  sound->setSpatialize(0);
  EXPECT_FLOAT_EQ(0.9f, sound->getAttenuation(3));
}

TEST_F(SoundNode, ARangeOfZeroDividesByNothing) {
  sound->setMaxFront(1);
  EXPECT_EQ(1, sound->getAttenuation(0));
  EXPECT_EQ(0, sound->getAttenuation(0.5f));
}

TEST_F(SoundNode, ACloneHasTheSameRange) {
  sound->setMaxFront(6);
  sound->setMinFront(2);
  Held<ozContainer> cloned(sound->clone(ozContainer::CLONE_SHALLOW));
  EXPECT_FLOAT_EQ(1 - 0.9f * 4 / 16, static_cast<ozSound *>(cloned.get())->getAttenuation(2));
}

TEST(Microphone, HasAPositionAndADirection) {
  expectFields(ozMicrophone::getClassType(), "Microphone", ozContainer::getClassType(), 0,
               {{"position", ozSFVec3f::getClassType()}, {"direction", ozSFVec3f::getClassType()}});
  Held<ozMicrophone> microphone;
  ozVec3f v;
  microphone->getPosition(v);
  expectVec(0, 0, 0, v);
  microphone->getDirection(v);
  expectVec(0, 0, -1, v);
  float x, y, z;
  microphone->setPosition(1, 2, 3);
  microphone->getPosition(&x, &y, &z);
  expectVec(1, 2, 3, ozVec3f(x, y, z));
  microphone->setDirection(ozVec3f(4, 5, 6));
  microphone->getDirection(v);
  expectVec(4, 5, 6, v);
}
