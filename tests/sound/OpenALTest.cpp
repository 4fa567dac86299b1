// The output that comes with the library, without a device to be heard on.

#include "soundFixture.h"

#include <cstdlib>
#include <dlfcn.h>
#include <memory>
#include <time.h>

namespace {

class OpenALTest : public SoundTest {
protected:
  void SetUp() override {
    setenv("ALSOFT_DRIVERS", "null", 1);
    output.reset(ozAudioOutput::createOpenAL());
    if (!output) GTEST_SKIP() << "the library was built without OpenAL";
  }

  // Waits until a port has room again; false if that never comes.
  bool waitForRoom(int port, int room) {
    timespec const pause = {0, 5000000};
    for (int turn = 0; turn < 1000; ++turn) {
      if (output->getRoom(port) >= room) return true;
      nanosleep(&pause, nullptr);
    }
    return false;
  }

  std::unique_ptr<ozAudioOutput> output;
  std::vector<short> const samples = std::vector<short>(200000, 1000);
};

} // namespace

TEST_F(OpenALTest, HasSixteenPorts) {
  EXPECT_EQ(16, output->getNumChannels());
  std::vector<int> ports;
  for (int i = 0; i < 16; ++i) ports.push_back(output->open());
  for (int i = 0; i < 16; ++i)
    for (int k = 0; k < i; ++k) EXPECT_NE(ports[i], ports[k]);
  EXPECT_EQ(0, output->getNumChannels());
  EXPECT_EQ(-1, output->open());
  output->close(ports[7]);
  EXPECT_EQ(1, output->getNumChannels());
  EXPECT_GE(output->open(), 0);
}

TEST_F(OpenALTest, AQueueFillsAndPlaysOut) {
  int const port = output->open();
  int const room = output->getRoom(port);
  ASSERT_GT(room, 882);
  EXPECT_EQ(441, output->write(port, samples.data(), 441, 2, 44100)); // a hundredth of a second
  EXPECT_EQ(room - 882, output->getRoom(port));
  EXPECT_TRUE(waitForRoom(port, room));
  EXPECT_EQ(441, output->write(port, samples.data(), 441, 2, 44100)); // and starts again
  EXPECT_TRUE(waitForRoom(port, room));
}

TEST_F(OpenALTest, TakesNoMoreThanThereIsRoomFor) {
  int const port = output->open();
  int const room = output->getRoom(port);
  ASSERT_LT(room, 200000);
  EXPECT_EQ(room, output->write(port, samples.data(), 200000, 1, 1000));
  EXPECT_EQ(0, output->getRoom(port));
  EXPECT_EQ(0, output->write(port, samples.data(), 10, 1, 1000));
}

TEST_F(OpenALTest, ManySmallWritesEndInAFullQueue) {
  int const port = output->open();
  int taken = 0;
  for (int i = 0; i < 1000; ++i) taken += output->write(port, samples.data(), 1, 1, 10); // a tenth of a second each
  EXPECT_GE(taken, 10);
  EXPECT_LT(taken, 1000);
  EXPECT_EQ(0, output->getRoom(port));
}

TEST_F(OpenALTest, AnotherFormatTakesThePlaceOfTheQueue) {
  int const port = output->open();
  int const room = output->getRoom(port);
  EXPECT_EQ(1000, output->write(port, samples.data(), 1000, 1, 1000));
  EXPECT_EQ(500, output->write(port, samples.data(), 500, 2, 1000));
  EXPECT_EQ(room - 1000, output->getRoom(port));
  EXPECT_EQ(100, output->write(port, samples.data(), 100, 2, 500));
  EXPECT_EQ(room - 200, output->getRoom(port));
}

TEST_F(OpenALTest, PlaysSurround) {
  int const port = output->open();
  for (int channels : {4, 6, 8}) EXPECT_EQ(10, output->write(port, samples.data(), 10, channels, 1000)) << channels;
}

TEST_F(OpenALTest, RefusesWhatItCannotPlay) {
  int const port = output->open();
  EXPECT_EQ(0, output->write(port, samples.data(), 10, 3, 1000));
  EXPECT_EQ(0, output->write(port, samples.data(), 10, 0, 1000));
  EXPECT_EQ(0, output->write(port, samples.data(), 10, -1, 1000));
  EXPECT_EQ(0, output->write(port, samples.data(), 0, 1, 1000));
  EXPECT_EQ(0, output->write(port, samples.data(), -5, 1, 1000));
  float const rates[] = {0, -1, 1e30f, std::numeric_limits<float>::quiet_NaN()};
  for (float rate : rates) EXPECT_EQ(0, output->write(port, samples.data(), 10, 1, rate)) << rate;
}

TEST_F(OpenALTest, PortsThatAreNotOpenAreNotThere) {
  for (int port : {-1, 0, 15, 16, 1000}) {
    EXPECT_EQ(0, output->getRoom(port));
    EXPECT_EQ(0, output->write(port, samples.data(), 10, 1, 1000));
    output->close(port);
  }
  EXPECT_EQ(16, output->getNumChannels());
}

namespace {

/// A graph on the output: a sound of 1000 frames a second where the microphone is.
class OpenALGraphTest : public OpenALTest {
protected:
  void SetUp() override {
    OpenALTest::SetUp();
    ozAudioOutput::install(output.get());
    if (!output) return;
    sound.reset(new Held<ozSound>(makeSound(std::vector<int16_t>(5000, 1000)))); // starts the players
    action.setMicrophone(microphone);
  }
  void TearDown() override {
    sound.reset();
    ozAudioOutput::install(nullptr);
  }

  ozSound *get() { return sound->get(); }
  // The frame that is next after a walk, which must say nothing.
  float play() {
    EXPECT_EQ("", stderrOf([&] { action.apply(get()); }));
    return get()->getCurrentFrame();
  }

  std::unique_ptr<Held<ozSound>> sound;
  Held<ozMicrophone> microphone;
  ozSoundAction action;
};

} // namespace

TEST_F(OpenALGraphTest, PlaysAQuarterOfASecondAhead) {
  EXPECT_EQ(16u, SoundLists::SoundPlayersArray.getCount());
  EXPECT_EQ(250, play());
}

TEST_F(OpenALGraphTest, PlaysTwiceAsFastAtADoublePitch) {
  get()->getSource()->setPitch(2);
  EXPECT_EQ(500, play());
}

TEST_F(OpenALGraphTest, ALoopGoesOnFromItsStart) {
  get()->getSource()->getSamples()->setNumFrames(100);
  get()->getSource()->setLoop(1);
  EXPECT_EQ(50, play()); // 250 frames are two rounds and a half
  EXPECT_EQ(0, get()->getSource()->playedOut);
}

TEST_F(OpenALGraphTest, AShortSoundEndsAndIsPlayedOnce) {
  get()->getSource()->getSamples()->setNumFrames(100);
  EXPECT_EQ(0, play());
  EXPECT_EQ(1, get()->getSource()->playedOut);
  play();
  EXPECT_EQ(0, get()->getSource()->getIsActive());
  EXPECT_EQ(0u, SoundLists::SoundsArray.getCount());
}

TEST_F(OpenALGraphTest, OutOfReachNothingIsPlayed) {
  microphone->setPosition(0, 0, 10);
  EXPECT_EQ(0, play());
}

TEST_F(OpenALGraphTest, ARateOfZeroNoSamplesAndNoSourceAreSilent) {
  ozAudioClip *const clip = get()->getSource();
  clip->getSamples()->setSampleRate(0);
  EXPECT_EQ(0, play());
  clip->setSamples(nullptr);
  EXPECT_EQ(0, play());
  get()->setSource(nullptr);
  EXPECT_EQ(0, play());
}

TEST_F(OpenALGraphTest, AFullQueueWaits) {
  get()->getSource()->getSamples()->setSampleRate(100); // ten seconds a walk: none of it is played meanwhile
  get()->getSource()->setLoop(1);
  SoundLists::player(15)->setBufferLength(10);
  for (int i = 0; i < 40; ++i) play();
  float const place = get()->getCurrentFrame();
  EXPECT_EQ(place, play());
}

TEST_F(OpenALGraphTest, ThePortsComeBackWithThePlayers) {
  EXPECT_EQ(0, output->getNumChannels());
  ozAudioOutput::install(nullptr);
  EXPECT_EQ(16, output->getNumChannels());
}

TEST_F(OpenALGraphTest, TheApplicationsContextStaysCurrent) {
  // By name: the library links to what these tests do not.
  auto const openDevice = reinterpret_cast<void *(*)(char const *)>(dlsym(RTLD_DEFAULT, "alcOpenDevice"));
  auto const create = reinterpret_cast<void *(*)(void *, int const *)>(dlsym(RTLD_DEFAULT, "alcCreateContext"));
  auto const make = reinterpret_cast<char (*)(void *)>(dlsym(RTLD_DEFAULT, "alcMakeContextCurrent"));
  auto const current = reinterpret_cast<void *(*)()>(dlsym(RTLD_DEFAULT, "alcGetCurrentContext"));
  auto const destroy = reinterpret_cast<void (*)(void *)>(dlsym(RTLD_DEFAULT, "alcDestroyContext"));
  auto const closeDevice = reinterpret_cast<char (*)(void *)>(dlsym(RTLD_DEFAULT, "alcCloseDevice"));
  ASSERT_TRUE(openDevice && create && make && current && destroy && closeDevice);
  void *const device = openDevice(nullptr);
  void *const own = create(device, nullptr);
  make(own);
  EXPECT_EQ(250, play());
  EXPECT_EQ(own, current());
  ozAudioOutput::install(nullptr);
  output.reset();
  EXPECT_EQ(own, current());
  make(nullptr);
  destroy(own);
  closeDevice(device);
}
