#include "soundFixture.h"

#include <limits>

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// A player that shows its state, and whose port can be open without an output.
class OpenPlayer : public ozSoundPlayer {
public:
  OpenPlayer() : ozSoundPlayer(ozSoundPlayer::getClassType()) {}
  using ozSoundPlayer::_dirty;
  using ozSoundPlayer::_open;
};

/// A player in mid air, the microphone 4 away from a sound of 1000 frames a second, each of the value 1000.
class SoundPlayerTest : public SoundTest {
protected:
  SoundPlayerTest() : sound(makeSound(std::vector<int16_t>(600, 1000))) {
    player->setSound(sound);
    player->setMicrophonePosition(0, 0, 4);
    player->clean();
  }

  ozAudioClip *clip() { return sound->getSource(); }
  ozAudioSamples *samples() { return clip()->getSamples(); }
  int updateWithOutput() {
    ozAudioOutput::install(&output);
    EXPECT_EQ(0, player->openAudioPort());
    return player->update();
  }

  KeptOutput output;
  Held<ozSound> sound;
  Held<OpenPlayer> player;
};

float const Infinity = std::numeric_limits<float>::infinity();
float const NaN = std::numeric_limits<float>::quiet_NaN();

} // namespace

TEST_F(SoundPlayerTest, HasItsFieldsInPlace) {
  ozType *const vec = ozSFVec3f::getClassType(), *const number = ozSFFloat::getClassType();
  ozType *const whole = ozSFInt::getClassType(), *const ref = ozSFRef::getClassType();
  ozType *const type = ozSoundPlayer::getClassType();
  expectFields(type, "SoundPlayer", ozContainer::getClassType(), 0,
               {{"sound", ref},
                {"microphone", ref},
                {"soundPosition", vec},
                {"soundVelocity", vec},
                {"microphonePosition", vec},
                {"microphoneVelocity", vec},
                {"bufferLength", number},
                {"frequencyFactor", number},
                {"intensityFactor", number},
                {"numChannels", whole},
                {"queueSize", whole},
                {"lowWater", whole},
                {"highWater", whole}});
  EXPECT_EQ(ozSound::getClassType(), refTypeOf(type, 0));
  EXPECT_EQ(ozMicrophone::getClassType(), refTypeOf(type, 1));
}

TEST_F(SoundPlayerTest, StartsWithItsDefaults) {
  Held<OpenPlayer> fresh;
  EXPECT_EQ(nullptr, fresh->getSound());
  EXPECT_EQ(nullptr, fresh->getMicrophone());
  EXPECT_EQ(0.25f, fresh->getBufferLength());
  EXPECT_EQ(1, fresh->getFrequencyFactor());
  EXPECT_EQ(1, fresh->getIntensityFactor());
  EXPECT_EQ(2, fresh->getNumChannels());
  EXPECT_EQ(-1, fresh->getQueueSize());
  EXPECT_EQ(-1, fresh->getLowWater());
  EXPECT_EQ(-1, fresh->getHighWater());
  EXPECT_EQ(0, fresh->getUsed());
  EXPECT_EQ(0, fresh->_open);
  ozVec3f v;
  void (ozSoundPlayer::*const getters[])(ozVec3f &) = {
      &ozSoundPlayer::getSoundPosition, &ozSoundPlayer::getSoundVelocity, &ozSoundPlayer::getMicrophonePosition,
      &ozSoundPlayer::getMicrophoneVelocity};
  for (auto get : getters) {
    (fresh.get()->*get)(v);
    EXPECT_TRUE(v == ozVec3f(0, 0, 0));
  }
}

TEST_F(SoundPlayerTest, EachSetterReachesItsFieldAndItsGetter) {
  Held<ozMicrophone> microphone;
  player->setMicrophone(microphone);
  player->setSoundPosition(1, 2, 3);
  player->setSoundVelocity(ozVec3f(4, 5, 6));
  player->setMicrophonePosition(7, 8, 9);
  player->setMicrophoneVelocity(10, 11, 12);
  player->setBufferLength(13);
  player->setFrequencyFactor(14);
  player->setIntensityFactor(15);
  player->setNumChannels(16);
  player->setQueueSize(17);
  player->setLowWater(18);
  player->setHighWater(19);
  player->setUsed(20);
  EXPECT_EQ(microphone, player->getMicrophone());
  float x, y, z;
  ozVec3f v;
  player->getSoundPosition(v);
  EXPECT_TRUE(v == ozVec3f(1, 2, 3));
  player->getSoundVelocity(&x, &y, &z);
  EXPECT_TRUE(ozVec3f(x, y, z) == ozVec3f(4, 5, 6));
  player->getMicrophonePosition(v);
  EXPECT_TRUE(v == ozVec3f(7, 8, 9));
  EXPECT_TRUE(static_cast<ozSFVec3f *>(player->getField(5))->get() == ozVec3f(10, 11, 12));
  EXPECT_EQ(13, player->getBufferLength());
  EXPECT_EQ(14, player->getFrequencyFactor());
  EXPECT_EQ(15, player->getIntensityFactor());
  EXPECT_EQ(16, player->getNumChannels());
  EXPECT_EQ(17, player->getQueueSize());
  EXPECT_EQ(18, player->getLowWater());
  EXPECT_EQ(19, player->getHighWater());
  EXPECT_EQ(20, player->getUsed());
}

TEST_F(SoundPlayerTest, SomeFieldsHaveABitInTheDirtyMask) {
  EXPECT_EQ(0, player->_dirty);
  player->setSound(nullptr);
  EXPECT_EQ(1, player->_dirty);
  player->setMicrophone(nullptr);
  EXPECT_EQ(3, player->_dirty);
  player->clean();
  player->setSoundPosition(1, 2, 3);
  player->setSoundVelocity(1, 2, 3);
  player->setMicrophonePosition(1, 2, 3);
  player->setMicrophoneVelocity(1, 2, 3);
  player->setFrequencyFactor(1);
  player->setIntensityFactor(1);
  EXPECT_EQ(0, player->_dirty);
  player->setBufferLength(1);
  EXPECT_EQ(64, player->_dirty);
  player->setNumChannels(1);
  player->setQueueSize(1);
  player->setLowWater(1);
  static_cast<ozSFInt *>(player->getField(12))->set(1);
  EXPECT_EQ(64 + 512 + 1024 + 2048 + 4096, player->_dirty);
  player->clean();
  EXPECT_EQ(0, player->_dirty);
}

// ---- ports

TEST_F(SoundPlayerTest, WithoutAnOutputThereAreNoPorts) {
  EXPECT_EQ(0, ozSoundPlayer::getNumAvailableSoundPlayers());
  player->setBufferLength(1);
  EXPECT_EQ("ozSoundPlayer::openAudioPort - no audio ports available\n",
            stderrOf([&] { EXPECT_EQ(-1, player->openAudioPort()); }));
  EXPECT_EQ(0, player->_dirty);
  EXPECT_EQ(0, player->_open);
}

TEST_F(SoundPlayerTest, AnOpenPortIsNotOpenedAgain) {
  player->_open = 1;
  player->setBufferLength(1);
  EXPECT_EQ("", stderrOf([&] { EXPECT_EQ(0, player->openAudioPort()); }));
  EXPECT_EQ(0, player->_dirty);
  player->closeAudioPort();
  EXPECT_EQ(0, player->_open);
}

TEST_F(SoundPlayerTest, AnOutputGivesItsPorts) {
  ozAudioOutput::install(&output);
  EXPECT_EQ(2, ozSoundPlayer::getNumAvailableSoundPlayers());
  EXPECT_EQ(0, player->openAudioPort());
  EXPECT_EQ(1, player->_open);
  EXPECT_EQ(0, player->openAudioPort());
  EXPECT_EQ(1, ozSoundPlayer::getNumAvailableSoundPlayers());
  player->closeAudioPort();
  EXPECT_EQ(0, player->_open);
  EXPECT_THAT(output.closed, ElementsAre(10));
  player->closeAudioPort();
  EXPECT_THAT(output.closed, ElementsAre(10));
}

TEST_F(SoundPlayerTest, AnOutputWithoutAPortLeftIsAsNone) {
  output.free = 0;
  ozAudioOutput::install(&output);
  EXPECT_EQ("ozSoundPlayer::openAudioPort - no audio ports available\n",
            stderrOf([&] { EXPECT_EQ(-1, player->openAudioPort()); }));
  output.free = -4;
  EXPECT_EQ(0, ozSoundPlayer::getNumAvailableSoundPlayers());
}

TEST_F(SoundPlayerTest, ADestroyedPlayerClosesItsPort) {
  ozAudioOutput::install(&output);
  {
    Held<ozSoundPlayer> other;
    other->openAudioPort();
  }
  EXPECT_THAT(output.closed, ElementsAre(10));
}

TEST_F(SoundPlayerTest, APortGoesWithItsOutput) {
  updateWithOutput();
  KeptOutput next;
  ozAudioOutput::install(&next);
  EXPECT_EQ(0, player->update());
  EXPECT_EQ(0, player->_open);
  EXPECT_EQ(1u, output.writes.size());
  EXPECT_EQ(0, player->openAudioPort());
  EXPECT_EQ(50, player->update());
  EXPECT_EQ(1u, next.writes.size());
  ozAudioOutput::install(nullptr);
  player->closeAudioPort();
  EXPECT_THAT(next.closed, IsEmpty());
}

// ---- update without an output

TEST_F(SoundPlayerTest, AClosedPortIsNotUpdated) {
  player->setBufferLength(1);
  EXPECT_EQ(0, player->update());
  EXPECT_EQ(64, player->_dirty);
  EXPECT_EQ(1, player->getIntensityFactor());
}

TEST_F(SoundPlayerTest, WithoutAnOutputTheFactorsAreComputedAndNothingIsWritten) {
  player->_open = 1;
  clip()->setPitch(1.5f);
  player->setBufferLength(1);
  EXPECT_EQ("", stderrOf([&] { EXPECT_EQ(0, player->update()); }));
  EXPECT_EQ(0, player->_dirty);
  EXPECT_EQ(1.5f, player->getFrequencyFactor());
  EXPECT_FLOAT_EQ(0.9f, player->getIntensityFactor()); // 3 behind minFront: 1 - 0.9 * 9 / 81
}

TEST_F(SoundPlayerTest, TheIntensityIsThatOfTheSoundUpToItsMost) {
  player->_open = 1;
  sound->setIntensity(2);
  player->update();
  EXPECT_FLOAT_EQ(1.8f, player->getIntensityFactor());
  sound->setIntensity(3);
  player->update();
  EXPECT_EQ(2, player->getIntensityFactor()); // 2.7 cut at maxIntensity
}

TEST_F(SoundPlayerTest, TheIntensityEndsBehindMaxFront) {
  player->_open = 1;
  auto const at = [&](float distance) {
    player->setMicrophonePosition(0, distance, 0);
    player->update();
    return player->getIntensityFactor();
  };
  EXPECT_EQ(1, at(0.99f)); // before minFront, which is 1
  EXPECT_NEAR(0.1f, at(10), 1e-6f);
  EXPECT_EQ(0, at(10.01f));
}

TEST_F(SoundPlayerTest, TheFactorsAreWrittenWithoutTelling) {
  Held<OpenPlayer> follower;
  player->connect(8, follower, 8);
  EXPECT_EQ(1, follower->getIntensityFactor());
  player->_open = 1;
  player->update();
  EXPECT_FALSE(follower->getField(8)->isDirty());
  EXPECT_EQ(1, follower->getIntensityFactor());
}

TEST_F(SoundPlayerTest, TheDistanceIsMeasuredFromTheSoundsWorldPosition) {
  player->_open = 1;
  sound->setLocation(0, 0, 3.5f);
  ozSoundAction action;
  action.apply(sound);
  player->update();
  EXPECT_EQ(1, player->getIntensityFactor()); // half a unit away
}

TEST_F(SoundPlayerTest, WithoutASoundOrASourceItIsSilent) {
  player->_open = 1;
  player->setSound(nullptr);
  EXPECT_EQ(0, player->update());
  player->setSound(sound);
  sound->setSource(nullptr);
  EXPECT_EQ(0, player->update());
  EXPECT_EQ(1, player->getIntensityFactor());
}

// ---- update with an output

TEST_F(SoundPlayerTest, WritesWhatTheQueueHasRoomFor) {
  EXPECT_EQ(50, updateWithOutput()); // 100 samples of two channels each
  ASSERT_EQ(1u, output.writes.size());
  KeptOutput::Write const &write = output.writes[0];
  EXPECT_EQ(10, write.port);
  EXPECT_EQ(50, write.frames);
  EXPECT_EQ(2, write.channels);
  EXPECT_EQ(1000, write.rate);
  EXPECT_THAT(write.samples, Each(900)); // 0.9 of 1000
  EXPECT_EQ(50, sound->getCurrentFrame());
}

TEST_F(SoundPlayerTest, WritesNoMoreThanTheBufferLength) {
  output.room = 100000;
  player->setBufferLength(0.125f);
  EXPECT_EQ(125, updateWithOutput());
  player->setBufferLength(0);
  EXPECT_EQ(0, player->update());
  EXPECT_EQ(1u, output.writes.size());
}

TEST_F(SoundPlayerTest, ReturnsSamplesAsTheSoundCountsItsChannels) {
  samples()->setNumChannels(2);
  samples()->setNumFrames(300);
  player->setNumChannels(4);
  EXPECT_EQ(50, updateWithOutput()); // 25 frames of 4, counted as 2 each
  EXPECT_EQ(25, output.writes[0].frames);
}

TEST_F(SoundPlayerTest, SaysWhenTheBufferWasReckonedSmallerThanWhatCameBack) {
  samples()->setNumChannels(2);
  samples()->setNumFrames(300);
  player->setNumChannels(1);
  // (50 + 2) frames of 2 bytes, in frames of 4 bytes.
  EXPECT_EQ("\n\nbufSize = 26 frames (50 returned)\n\n", stderrOf([&] { EXPECT_EQ(100, updateWithOutput()); }));
}

TEST_F(SoundPlayerTest, ALowPitchLengthensTheBufferAndAHighOneLeavesIt) {
  samples()->setNumChannels(2);
  samples()->setNumFrames(300);
  player->setNumChannels(1);
  clip()->setPitch(0.5f); // (50 + 2) * 2 frames of 2 bytes, in frames of 4 bytes: 52 of them
  EXPECT_EQ("", stderrOf([&] { EXPECT_EQ(100, updateWithOutput()); }));
  clip()->setPitch(0.75f); // 69.33 frames of 2 bytes are 138 bytes, and those 34 frames of 4
  EXPECT_EQ("\n\nbufSize = 34 frames (50 returned)\n\n", stderrOf([&] { player->update(); }));
  clip()->setPitch(2);
  EXPECT_EQ("\n\nbufSize = 26 frames (50 returned)\n\n", stderrOf([&] { player->update(); }));
}

TEST_F(SoundPlayerTest, AFullQueueTakesNothing) {
  for (int room : {0, -7, 1}) {
    output.room = room;
    EXPECT_EQ("", stderrOf([&] { EXPECT_EQ(0, updateWithOutput()); }));
  }
  EXPECT_THAT(output.writes, IsEmpty());
}

TEST_F(SoundPlayerTest, AboveHighWaterNothingIsPlayed) {
  player->setQueueSize(5);
  player->setHighWater(4);
  clip()->setPitch(2);
  EXPECT_EQ(0, updateWithOutput());
  EXPECT_EQ(2, player->getFrequencyFactor());
  player->setHighWater(5);
  EXPECT_EQ(50, player->update());
  player->setQueueSize(2147483647);
  player->setHighWater(-2147483647);
  EXPECT_EQ(0, player->update());
}

TEST_F(SoundPlayerTest, BytesAreWrittenAsTheirShorts) {
  sound->setSource(makeClip(makeSamples(std::vector<int8_t>(600, 64), ozAudioSamples::FLOAT_SAMPLE_TYPE)));
  player->setMicrophonePosition(0, 0, 0);
  EXPECT_EQ(50, updateWithOutput());
  EXPECT_THAT(output.writes[0].samples, Each(16384));
}

TEST_F(SoundPlayerTest, WhatHasNoFormatIsSilent) {
  updateWithOutput();
  output.writes.clear();
  auto const isSilent = [&] {
    EXPECT_EQ("", stderrOf([&] { EXPECT_EQ(0, player->update()); }));
    EXPECT_THAT(output.writes, IsEmpty());
  };
  for (float rate : {0.0f, -44100.0f, Infinity, NaN}) {
    samples()->setSampleRate(rate);
    isSilent();
  }
  samples()->setSampleRate(1000);
  for (int none : {0, -3}) {
    samples()->setNumChannels(none);
    isSilent();
    samples()->setNumChannels(1);
    samples()->setSampleSize(none);
    isSilent();
    samples()->setSampleSize(2);
    player->setNumChannels(none);
    isSilent();
    player->setNumChannels(2);
  }
  clip()->setSamples(nullptr);
  isSilent();
}

TEST_F(SoundPlayerTest, NumbersWithoutMeaningDoNoHarm) {
  updateWithOutput();
  for (float value : {0.0f, -1.0f, 1e-30f, 1e30f, Infinity, NaN}) {
    clip()->setPitch(value);
    player->update();
    clip()->setPitch(1);
    player->setBufferLength(value);
    player->update();
    player->setBufferLength(0.25f);
    sound->setMaxFront(value);
    player->update();
    sound->setMaxFront(10);
    sound->setIntensity(value);
    player->update();
    sound->setIntensity(1);
    sound->setCurrentFrame(0);
  }
  player->setNumChannels(2147483647);
  EXPECT_EQ(0, player->update());
  player->setNumChannels(2);
  samples()->setNumChannels(2147483647);
  EXPECT_EQ(0, player->update());
}
