// The seam between players and an output.

#include "soundFixture.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

class AudioOutputTest : public SoundTest {
protected:
  static unsigned int players() { return SoundLists::SoundPlayersArray.getCount(); }
};

} // namespace

TEST_F(AudioOutputTest, NoneIsInstalledAtFirst) {
  EXPECT_EQ(nullptr, ozAudioOutput::getInstalled());
  EXPECT_EQ("", stderrOf([] { ozContext::initSound(); }));
  EXPECT_EQ(0u, players());
  EXPECT_EQ(1, SoundLists::SoundInitialized);
}

TEST_F(AudioOutputTest, EachPortGetsAPlayer) {
  KeptOutput output(3);
  ozAudioOutput::install(&output);
  EXPECT_EQ(&output, ozAudioOutput::getInstalled());
  EXPECT_EQ(0u, players());
  ozContext::initSound();
  EXPECT_EQ(3u, players());
  EXPECT_EQ(1u, SoundLists::player(0)->getRefCount());
  EXPECT_EQ(0, output.free);
}

TEST_F(AudioOutputTest, APortThatCannotBeOpenedCostsALine) {
  KeptOutput output(1);
  output.broken = 1;
  ozAudioOutput::install(&output);
  EXPECT_EQ("ozSoundPlayer::openAudioPort - no audio ports available\n"
            "Warning - Failed to open AudioPort for Audio Resource\n",
            stderrOf([] { ozContext::initSound(); }));
  EXPECT_EQ(1u, players());
  EXPECT_EQ(1, SoundLists::SoundInitialized);
}

TEST_F(AudioOutputTest, ASecondStartFindsNoPortLeft) {
  KeptOutput output(2);
  ozAudioOutput::install(&output);
  ozContext::initSound();
  EXPECT_EQ("", stderrOf([] { ozContext::initSound(); }));
  EXPECT_EQ(2u, players());
}

TEST_F(AudioOutputTest, TheNextSoundMakesThePlayers) {
  KeptOutput output(2);
  ozAudioOutput::install(&output);
  Held<ozSound> sound;
  EXPECT_EQ(2u, players());
}

TEST_F(AudioOutputTest, OneThatComesBehindTheSoundsIsStartedByTheNextWalk) {
  Held<ozSound> sound(makeSound({1, 2, 3}));
  KeptOutput output(2);
  ozAudioOutput::install(&output);
  Held<ozMicrophone> microphone;
  ozSoundAction action;
  action.setMicrophone(microphone);
  action.apply(sound);
  EXPECT_EQ(2u, players());
  EXPECT_THAT(output.writes, SizeIs(1));
}

TEST_F(AudioOutputTest, AWalkWithoutSoundsStartsNothing) {
  KeptOutput output(2);
  ozAudioOutput::install(&output);
  ozSoundAction().apply(nullptr);
  EXPECT_EQ(0u, players());
  EXPECT_EQ(0, SoundLists::SoundInitialized);
}

TEST_F(AudioOutputTest, AnotherOneEndsThePlayersOfTheFirst) {
  KeptOutput first(2), second(1);
  ozAudioOutput::install(&first);
  ozContext::initSound();
  ozAudioOutput::install(&first); // nothing changes
  EXPECT_EQ(2u, players());
  ozAudioOutput::install(&second);
  EXPECT_EQ(0u, players());
  EXPECT_THAT(first.closed, ElementsAre(11, 10));
  ozContext::initSound();
  EXPECT_EQ(1u, players());
}

TEST_F(AudioOutputTest, OneThatIsDestroyedTakesItselfBack) {
  Held<ozSoundPlayer> player;
  {
    KeptOutput output(2);
    ozAudioOutput::install(&output);
    player->openAudioPort();
    ozContext::initSound();
    EXPECT_EQ(1u, players());
  }
  EXPECT_EQ(nullptr, ozAudioOutput::getInstalled());
  EXPECT_EQ(0u, players());
  EXPECT_EQ(0, player->update());
}

TEST_F(AudioOutputTest, OneThatIsNotInstalledMayGoUnnoticed) {
  KeptOutput output(2);
  ozAudioOutput::install(&output);
  ozContext::initSound();
  { KeptOutput other(2); }
  EXPECT_EQ(&output, ozAudioOutput::getInstalled());
  EXPECT_EQ(2u, players());
}
