// How sound comes into a process that has touched nothing yet.

#include "sound/soundFixture.h"

#include <algorithm>

namespace {

int idOf(ozType *type) { return type->getObjectID(); }

} // namespace

TEST(SoundStart, ThePlayerPullsTheNodesInAheadOfTheFields) {
  ozObject::initClasses();
  ozType *const player = ozSoundPlayer::getClassType();
  EXPECT_LT(idOf(ozContainer::getClassType()), idOf(player));
  EXPECT_LT(idOf(player), idOf(ozSound::getClassType()));
  EXPECT_LT(idOf(ozSound::getClassType()), idOf(ozContext::getClassType()));
  EXPECT_LT(idOf(ozNode::getClassType()), idOf(ozSound::getClassType()));
  EXPECT_LT(idOf(ozSound::getClassType()), idOf(ozSFByte::getClassType()));
  EXPECT_LT(idOf(ozSFByte::getClassType()), idOf(ozAudio::getClassType()));
  EXPECT_LT(idOf(ozAudio::getClassType()), idOf(ozSoundAction::getClassType()));
  EXPECT_LT(idOf(ozSound::getClassType()), idOf(ozGroup::getClassType()));
}

TEST(SoundStart, TheListOfActiveClipsHasRoomForFour) {
  EXPECT_EQ(4u, ozAudioClip::getActiveClips().getSize());
  EXPECT_EQ(0u, ozAudioClip::getActiveClips().getCount());
}

TEST(SoundStart, NothingIsStartedUntilTheFirstSound) {
  EXPECT_EQ(0, SoundLists::SoundInitialized);
  ozSoundAction().apply(nullptr);
  EXPECT_EQ(0, SoundLists::SoundInitialized);
  EXPECT_EQ("", stderrOf([] { Held<ozSound> sound; }));
  EXPECT_EQ(1, SoundLists::SoundInitialized);
  EXPECT_EQ(0u, SoundLists::SoundPlayersArray.getCount());
}

TEST(SoundStart, ASoundThatIsNeverFreedDoesNoHarmAtExit) {
  static Held<ozSound> sound(makeSound({1, 2, 3}));
  sound->sound();
  EXPECT_TRUE(SoundLists::isWaiting(sound));
}
