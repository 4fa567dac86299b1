// What a sound writes into the buffer of a player.

#include "soundFixture.h"

#include <limits>

using ::testing::Each;
using ::testing::ElementsAre;

namespace {

class SoundMix : public SoundTest {
protected:
  SoundMix() { ozAudioOutput::install(&output); }

  // The frames that a sound plays next, and a guard behind them that must stay.
  std::vector<short> play(ozSound *sound, int frames, float pitch = 1, float intensity = 1, int channels = 1) {
    std::vector<short> buffer(static_cast<size_t>(frames * channels) + 4, 12345);
    returned = sound->sound(reinterpret_cast<char *>(buffer.data()), frames, pitch, intensity, channels);
    EXPECT_THAT(std::vector<short>(buffer.end() - 4, buffer.end()), Each(12345));
    buffer.resize(buffer.size() - 4);
    return buffer;
  }

  template <class Sample>
  std::vector<short> playAll(std::vector<Sample> const &values, ozAudioSamples::SampleTypeEnum type) {
    Held<ozSound> sound;
    sound->setSource(makeClip(makeSamples(values, type)));
    return play(sound, static_cast<int>(values.size()));
  }

  KeptOutput output;
  int returned = -1;
};

/// The same without an output.
class SoundWithoutOutput : public SoundMix {
protected:
  SoundWithoutOutput() { ozAudioOutput::install(nullptr); }
};

auto const Unsigned = ozAudioSamples::UNSIGNED_INT_SAMPLE_TYPE;
auto const Float = ozAudioSamples::FLOAT_SAMPLE_TYPE;

} // namespace

TEST_F(SoundWithoutOutput, NoFormatIsGood) {
  Held<ozSound> sound(makeSound({1, 2, 3, 4}));
  std::vector<short> buffer;
  sound->getSource()->playedOut = 1;
  EXPECT_EQ("ozSound::sound - 'audio' has bad sample format\n", stderrOf([&] { buffer = play(sound, 3); }));
  EXPECT_EQ(3, returned);
  EXPECT_EQ(0, sound->getSource()->playedOut);
  EXPECT_EQ(0, sound->getCurrentFrame());
  EXPECT_THAT(buffer, Each(12345));
}

TEST_F(SoundWithoutOutput, ReturnsTheFramesAskedForEvenIfFewerAreLeft) {
  Held<ozSound> sound(makeSound({1, 2, 3, 4}));
  sound->setCurrentFrame(3);
  stderrOf([&] { play(sound, 10); });
  EXPECT_EQ(10, returned);
}

TEST_F(SoundWithoutOutput, NothingLeftOrNothingAskedForIsSilence) {
  Held<ozSound> sound(makeSound({1, 2, 3, 4}));
  EXPECT_EQ("", stderrOf([&] {
              for (float frame : {4.0f, 100.0f}) {
                sound->setCurrentFrame(frame);
                play(sound, 2);
                EXPECT_EQ(0, returned);
                EXPECT_EQ(frame, sound->getCurrentFrame());
              }
              sound->setCurrentFrame(0);
              play(sound, 0);
              EXPECT_EQ(0, returned);
              EXPECT_EQ(0, sound->sound(nullptr, -5, 1, 1, 1));
            }));
}

TEST_F(SoundMix, WithoutASourceOrSamplesItIsSilent) {
  Held<ozSound> sound;
  EXPECT_THAT(play(sound, 2), Each(12345));
  EXPECT_EQ(0, returned);
  sound->setSource(new ozAudioClip);
  EXPECT_THAT(play(sound, 2), Each(12345));
  EXPECT_EQ(0, returned);
}

// ---- formats

TEST_F(SoundMix, CentresUnsignedBytes) {
  EXPECT_THAT(playAll<uint8_t>({128, 0, 192, 255}, Unsigned), ElementsAre(0, -32768, 16384, 32512));
}

TEST_F(SoundMix, CentresUnsigned16Bits) {
  EXPECT_THAT(playAll<uint16_t>({32768, 0, 65535, 32769}, Unsigned), ElementsAre(0, -32768, 32767, 1));
}

TEST_F(SoundMix, CentresUnsigned32Bits) {
  EXPECT_THAT(playAll<uint32_t>({2147483648u, 0, 3221225472u}, Unsigned), ElementsAre(0, -32768, 16384));
}

TEST_F(SoundMix, TakesFloatsFromMinusOneToOneAndCutsBeyond) {
  EXPECT_THAT(playAll<float>({0, 0.5f, -0.5f, 1, -1, 7, -7}, Float),
              ElementsAre(0, 16384, -16384, 32767, -32768, 32767, -32768));
}

TEST_F(SoundMix, FloatsThatAreNoNumbersAreSilent) {
  EXPECT_THAT(playAll<float>({std::numeric_limits<float>::quiet_NaN()}, Float), ElementsAre(0));
}

TEST_F(SoundMix, WhereNoFloatFitsNumbersAreSigned) {
  EXPECT_THAT(playAll<int8_t>({0, 64, -128}, Float), ElementsAre(0, 16384, -32768));
  EXPECT_THAT(playAll<int16_t>({0, 1, -2, 32767, -32768}, Float), ElementsAre(0, 1, -2, 32767, -32768));
}

TEST_F(SoundMix, OtherFormatsAreToldAndSilent) {
  Held<ozSound> sound(makeSound({1, 2, 3, 4, 5, 6}));
  ozAudioSamples *const samples = sound->getSource()->getSamples();
  samples->setNumFrames(2);
  samples->setSampleSize(3);
  std::string const message = "ozSound::sound - 'audio' has bad sample format\n";
  EXPECT_EQ(message, stderrOf([&] { EXPECT_THAT(play(sound, 2), ElementsAre(0, 0)); }));
  EXPECT_EQ(2, returned);
  samples->setSampleSize(2);
  samples->setSampleTypeHack(77);
  EXPECT_EQ(message, stderrOf([&] { EXPECT_THAT(play(sound, 2), ElementsAre(0, 0)); }));
}

// ---- channels

TEST_F(SoundMix, OneChannelGoesToAll) {
  Held<ozSound> sound(makeSound({10, 20}));
  EXPECT_THAT(play(sound, 2, 1, 1, 2), ElementsAre(10, 10, 20, 20));
}

TEST_F(SoundMix, TwoChannelsStayApart) {
  Held<ozSound> sound(makeSound({10, -10, 20, -20}, 2));
  EXPECT_THAT(play(sound, 2, 1, 1, 2), ElementsAre(10, -10, 20, -20));
}

TEST_F(SoundMix, OneChannelTakesTheMeanOfTwo) {
  Held<ozSound> sound(makeSound({10, 30, 100, -100}, 2));
  EXPECT_THAT(play(sound, 2), ElementsAre(20, 0));
}

TEST_F(SoundMix, MoreChannelsTakeTheSourcesInTurn) {
  Held<ozSound> sound(makeSound({10, 30}, 2));
  EXPECT_THAT(play(sound, 1, 1, 1, 4), ElementsAre(10, 30, 10, 30));
}

TEST_F(SoundMix, WithoutAChannelNothingIsWritten) {
  Held<ozSound> sound(makeSound({10, 30}));
  for (int channels : {0, -3}) {
    char guard = 'g';
    EXPECT_EQ(0, sound->sound(&guard, 2, 1, 1, channels));
    EXPECT_EQ('g', guard);
  }
}

// ---- intensity and pitch

TEST_F(SoundMix, IntensityIsAFactor) {
  Held<ozSound> sound(makeSound({1000, -400, 30000}));
  EXPECT_THAT(play(sound, 2, 1, 0.5f), ElementsAre(500, -200));
  EXPECT_THAT(play(sound, 1, 1, 2), ElementsAre(32767));
}

TEST_F(SoundMix, AHalfPitchInterpolatesBetweenFrames) {
  Held<ozSound> sound(makeSound({0, 100, 200}));
  EXPECT_THAT(play(sound, 4, 0.5f), ElementsAre(0, 50, 100, 150));
  EXPECT_EQ(2, sound->getCurrentFrame());
}

TEST_F(SoundMix, ADoublePitchPassesEverySecondFrameOver) {
  Held<ozSound> sound(makeSound({0, 1, 2, 3, 4, 5, 6, 7}));
  EXPECT_THAT(play(sound, 3, 2), ElementsAre(0, 2, 4));
  EXPECT_EQ(6, sound->getCurrentFrame());
}

TEST_F(SoundMix, APitchThatGoesNowhereIsSilent) {
  Held<ozSound> sound(makeSound({1, 2, 3}));
  float const bad[] = {0, -1, std::numeric_limits<float>::infinity(), std::numeric_limits<float>::quiet_NaN()};
  for (float pitch : bad) {
    EXPECT_THAT(play(sound, 2, pitch), Each(12345));
    EXPECT_EQ(0, returned);
    EXPECT_EQ(0, sound->getCurrentFrame());
  }
}

// ---- the end

TEST_F(SoundMix, GoesOnWhereItEnded) {
  Held<ozSound> sound(makeSound({1, 2, 3, 4, 5}));
  EXPECT_THAT(play(sound, 2), ElementsAre(1, 2));
  EXPECT_EQ(2, sound->getCurrentFrame());
  EXPECT_EQ(0, sound->getSource()->playedOut);
  EXPECT_THAT(play(sound, 2), ElementsAre(3, 4));
}

TEST_F(SoundMix, AtTheEndSilenceFollowsAndTheClipIsPlayedOut) {
  Held<ozSound> sound(makeSound({1, 2, 3}));
  EXPECT_THAT(play(sound, 5), ElementsAre(1, 2, 3, 0, 0));
  EXPECT_EQ(5, returned);
  EXPECT_EQ(1, sound->getSource()->playedOut);
  EXPECT_EQ(0, sound->getCurrentFrame());
  sound->getSource()->eval();
  EXPECT_EQ(0, sound->getSource()->getIsActive());
}

TEST_F(SoundMix, ALoopBeginsAgainWithinTheBuffer) {
  Held<ozSound> sound(makeSound({1, 2, 3}));
  sound->getSource()->setLoop(1);
  EXPECT_THAT(play(sound, 8), ElementsAre(1, 2, 3, 1, 2, 3, 1, 2));
  EXPECT_EQ(2, sound->getCurrentFrame());
  EXPECT_THAT(play(sound, 2), ElementsAre(3, 1));
  EXPECT_EQ(0, sound->getSource()->playedOut);
}

TEST_F(SoundMix, ALoopInterpolatesFromItsEndToItsStart) {
  Held<ozSound> sound(makeSound({0, 100}));
  sound->getSource()->setLoop(1);
  EXPECT_THAT(play(sound, 4, 0.5f), ElementsAre(0, 50, 100, 50));
}

TEST_F(SoundMix, APitchOfManyFramesStaysInsideTheLoop) {
  Held<ozSound> sound(makeSound({0, 1, 2, 3, 4}));
  sound->getSource()->setLoop(1);
  EXPECT_THAT(play(sound, 4, 12), ElementsAre(0, 2, 4, 1)); // 12 is 2 of 5 onward
}

TEST_F(SoundMix, ReadsNoFurtherThanTheBytes) {
  Held<ozSound> sound(makeSound({1, 2, 3}));
  ozAudioSamples *const samples = sound->getSource()->getSamples();
  samples->samples()->setSize(6);
  samples->setNumFrames(1000000);
  EXPECT_THAT(play(sound, 5), ElementsAre(1, 2, 3, 0, 0));
  samples->setNumChannels(1000000);
  play(sound, 5);
  EXPECT_EQ(0, returned);
}

TEST_F(SoundMix, APlaceBehindTheEndIsTheEnd) {
  Held<ozSound> sound(makeSound({1, 2, 3}));
  sound->setCurrentFrame(77);
  play(sound, 2);
  EXPECT_EQ(0, returned);
  EXPECT_EQ(0, sound->getCurrentFrame());
  EXPECT_EQ(1, sound->getSource()->playedOut);
}

TEST_F(SoundMix, APlaceThatIsNoFrameReadsNothing) {
  Held<ozSound> sound(makeSound({1, 2, 3}));
  sound->setCurrentFrame(std::numeric_limits<float>::quiet_NaN());
  play(sound, 2);
  EXPECT_EQ(0, returned);
  sound->setCurrentFrame(-1e30f);
  EXPECT_THAT(play(sound, 2), ElementsAre(1, 2)); // from the start
}

TEST_F(SoundMix, KeepsItsPlaceInALongClipFinerThanAFloat) {
  // 2 to the 24th and on: a float counts only every second frame there.
  int const frames = (1 << 24) + 8;
  std::vector<int8_t> values(frames);
  for (int i = 0; i < 8; ++i) values[(1 << 24) + i] = static_cast<int8_t>(i);
  Held<ozSound> sound;
  sound->setSource(makeClip(makeSamples(values, Float)));
  sound->setCurrentFrame(1 << 24);
  std::vector<short> heard;
  for (int i = 0; i < 6; ++i) heard.push_back(play(sound, 1)[0]);
  EXPECT_THAT(heard, ElementsAre(0, 256, 512, 768, 1024, 1280));
}
