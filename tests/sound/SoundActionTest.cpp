#include "soundFixture.h"

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

/// A microphone at the origin, sounds there too, and an output of two ports.
class SoundActionTest : public SoundTest {
protected:
  SoundActionTest() { action.setMicrophone(microphone); }

  void install() {
    ozAudioOutput::install(&output);
    ozContext::initSound();
  }
  static std::vector<int16_t> steady(int16_t value) { return std::vector<int16_t>(2000, value); }

  KeptOutput output;
  Held<ozMicrophone> microphone;
  ozSoundAction action;
};

/// A sound that goes on the list though nobody can hear it.
ozSound *waiting(ozSound *sound) {
  sound->sound();
  return sound;
}

} // namespace

TEST_F(SoundActionTest, IsRegisteredBelowTheRootOfTheActions) {
  EXPECT_STREQ("SoundAction", ozSoundAction::getClassType()->getName());
  EXPECT_EQ(ozAction::getClassType(), ozSoundAction::getClassType()->getAncestor());
  ozAction *const other = action.instantiate();
  EXPECT_EQ(ozSoundAction::getClassType(), other->getType());
  other->unref();
}

TEST_F(SoundActionTest, HoldsItsMicrophoneAndSoDoItsCopies) {
  EXPECT_EQ(2u, microphone->getRefCount());
  {
    ozSoundAction copied(action);
    EXPECT_EQ(microphone, copied.getMicrophone());
    EXPECT_EQ(3u, microphone->getRefCount());
    ozSoundAction assigned;
    assigned = copied;
    EXPECT_EQ(4u, microphone->getRefCount());
    assigned = assigned;
    EXPECT_EQ(4u, microphone->getRefCount());
  }
  action.setMicrophone(microphone);
  EXPECT_EQ(2u, microphone->getRefCount());
  action.setMicrophone(nullptr);
  EXPECT_EQ(1u, microphone->getRefCount());
}

TEST_F(SoundActionTest, StartsFromTheIdentity) {
  Held<ozSound> sound(makeSound({1}));
  action.pushMatrix();
  action.translate(5, 0, 0);
  EXPECT_EQ(TRAV_CONT, action.apply(sound));
  EXPECT_EQ(1, action.getMatrixDepth());
  ozVec3f v;
  sound->getWorldPosition(v);
  EXPECT_TRUE(v == ozVec3f(0, 0, 0));
}

TEST_F(SoundActionTest, ANullSoundIsNotInReach) { EXPECT_EQ(1, action.isAudible(nullptr)); }

TEST_F(SoundActionTest, ReachIsMeasuredFromTheMicrophone) {
  Held<ozSound> sound;
  microphone->setPosition(0, 0, 10);
  EXPECT_EQ(1, action.isAudible(sound));
  microphone->setPosition(0, 9, 0);
  EXPECT_EQ(0, action.isAudible(sound));
}

TEST_F(SoundActionTest, ASoundInReachIsPlayed) {
  install();
  Held<ozSound> sound(makeSound(steady(1000)));
  EXPECT_EQ("", stderrOf([&] { action.apply(sound); }));
  ASSERT_THAT(output.writes, SizeIs(1));
  EXPECT_THAT(output.writes[0].samples, Each(1000));
  EXPECT_FALSE(SoundLists::isWaiting(sound));
  EXPECT_EQ(1, SoundLists::player(1)->getUsed());
  EXPECT_EQ(0, SoundLists::player(0)->getUsed());
}

TEST_F(SoundActionTest, ThePlayerLearnsWhereTheMicrophoneIs) {
  install();
  Held<ozSound> sound(makeSound(steady(1000)));
  microphone->setPosition(0, 0, 4);
  action.apply(sound);
  ozVec3f v;
  SoundLists::player(1)->getMicrophonePosition(v);
  EXPECT_TRUE(v == ozVec3f(0, 0, 4));
  EXPECT_THAT(output.writes[0].samples, Each(900)); // 3 behind minFront: 1 - 0.9 * 9 / 81
}

TEST_F(SoundActionTest, WithoutAMicrophoneThePlayersPositionStays) {
  install();
  SoundLists::player(1)->setMicrophonePosition(0, 0, 2);
  action.setMicrophone(nullptr);
  Held<ozSound> sound(waiting(makeSound(steady(1000))));
  action.apply(nullptr);
  ozVec3f v;
  SoundLists::player(1)->getMicrophonePosition(v);
  EXPECT_TRUE(v == ozVec3f(0, 0, 2));
  EXPECT_THAT(output.writes, SizeIs(1));
}

TEST_F(SoundActionTest, ANullRootStillPlaysWhatWaits) {
  install();
  Held<ozSound> sound(waiting(makeSound(steady(1))));
  EXPECT_EQ(TRAV_CONT, action.apply(nullptr));
  EXPECT_THAT(output.writes, SizeIs(1));
}

TEST_F(SoundActionTest, MoreSoundsThanPlayersWaitForTheNextWalk) {
  install();
  Held<ozSound> a(waiting(makeSound(steady(100)))), b(waiting(makeSound(steady(200)))),
      c(waiting(makeSound(steady(300))));
  EXPECT_EQ("", stderrOf([&] { action.apply(nullptr); }));
  // From the second down: c moves into the place of b, and then into that of a.
  EXPECT_THAT(output.writes, SizeIs(2));
  EXPECT_EQ(b, SoundLists::player(1)->getSound());
  EXPECT_EQ(a, SoundLists::player(0)->getSound());
  ASSERT_EQ(1u, SoundLists::SoundsArray.getCount());
  EXPECT_TRUE(SoundLists::isWaiting(c));
  action.apply(nullptr);
  EXPECT_THAT(output.writes, SizeIs(3));
  EXPECT_THAT(output.writes[2].samples, Each(300));
}

TEST_F(SoundActionTest, ASoundKeepsItsPlayer) {
  install();
  Held<ozSound> a(makeSound(steady(100))), b(makeSound(steady(200)));
  SoundLists::player(0)->setSound(a);
  SoundLists::player(1)->setSound(b);
  EXPECT_EQ(SoundLists::player(0), action.findSoundPlayer(a));
  EXPECT_EQ(SoundLists::player(1), action.findSoundPlayer(b));
  SoundLists::player(0)->setUsed(1);
  EXPECT_EQ(SoundLists::player(1), action.findSoundPlayer(a)); // its own is in use
  SoundLists::player(1)->setUsed(1);
  EXPECT_EQ(nullptr, action.findSoundPlayer(a));
}

TEST_F(SoundActionTest, ASoundKeepsItsPortFromWalkToWalk) {
  install();
  Held<ozGroup> group;
  ozSound *const a = makeSound(steady(100)), *const b = makeSound(steady(200));
  group->addChild(a);
  group->addChild(b);
  auto const portOf = [&](short value) {
    for (KeptOutput::Write const &write : output.writes)
      if (write.samples[0] == value) return write.port;
    return -1;
  };
  action.apply(group);
  int const port = portOf(100);
  EXPECT_EQ(SoundLists::player(0)->getSound(), a); // b took the last
  b->setControl(ozSound::PAUSE);
  output.writes.clear();
  action.apply(group);
  EXPECT_THAT(output.writes, SizeIs(1));
  EXPECT_EQ(port, portOf(100));
}

TEST_F(SoundActionTest, EachWalkFreesThePlayers) {
  install();
  Held<ozSound> sound(makeSound(steady(1)));
  action.apply(sound);
  EXPECT_EQ(1, SoundLists::player(1)->getUsed());
  action.apply(nullptr);
  EXPECT_EQ(0, SoundLists::player(1)->getUsed());
}

TEST_F(SoundActionTest, ASoundWhoseSourceWentWhileItWaitedIsSilent) {
  install();
  Held<ozSound> sound(waiting(makeSound(steady(1))));
  sound->setSource(nullptr);
  EXPECT_EQ("", stderrOf([&] { action.apply(nullptr); }));
  EXPECT_THAT(output.writes, IsEmpty());
  EXPECT_FALSE(SoundLists::isWaiting(sound));
}

TEST_F(SoundActionTest, AStrangerTakesTheLastUnusedPlayer) {
  install();
  Held<ozSound> sound(makeSound(steady(1)));
  EXPECT_EQ(SoundLists::player(1), action.findSoundPlayer(sound));
  SoundLists::player(1)->setUsed(1);
  EXPECT_EQ(SoundLists::player(0), action.findSoundPlayer(sound));
}

TEST_F(SoundActionTest, SaysWhenNoPlayerIsLeft) {
  install();
  // One player twice: the second sound finds it in use.
  SoundLists::player(0)->ref();
  SoundLists::player(1)->unref();
  SoundLists::SoundPlayersArray.set(1, SoundLists::player(0));
  Held<ozSound> a(waiting(makeSound(steady(1)))), b(waiting(makeSound(steady(2))));
  EXPECT_EQ("Error, No more Sound Players\n", stderrOf([&] { EXPECT_EQ(TRAV_CONT, action.apply(nullptr)); }));
  EXPECT_TRUE(SoundLists::isWaiting(a));
  EXPECT_FALSE(SoundLists::isWaiting(b));
}

TEST_F(SoundActionTest, ASoundThatGoesWithItsPlayersReferenceIsNotPlayed) {
  install();
  ozSound *const gone = makeSound(steady(1));
  SoundLists::player(1)->setSound(gone); // the only reference
  gone->sound();
  SoundLists::player(0)->setUsed(1);
  Held<ozSound> other(waiting(makeSound(steady(2))));
  // The other one is first from the top, finds the last player unused, and ends the sound that it had.
  action.apply(nullptr);
  ASSERT_THAT(output.writes, SizeIs(1));
  EXPECT_THAT(output.writes[0].samples, Each(2));
  EXPECT_EQ(0u, SoundLists::SoundsArray.getCount());
}

TEST_F(SoundActionTest, AClipThatHasPlayedOutFallsSilent) {
  install();
  Held<ozSound> sound(makeSound({1, 2, 3}));
  action.apply(sound);
  ASSERT_THAT(output.writes, SizeIs(1));
  action.apply(sound);
  EXPECT_THAT(output.writes, SizeIs(1));
  sound->getSource()->setStartTime(-1.0);
  action.apply(sound);
  EXPECT_THAT(output.writes, SizeIs(2));
}
