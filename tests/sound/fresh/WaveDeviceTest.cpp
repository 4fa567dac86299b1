// A VRML file that is heard: what OpenAL would have played goes to a file.

#include "sound/soundFixture.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <time.h>

namespace {

class WaveDevice : public ::testing::Test {
protected:
  WaveDevice() {
    writeBytes("wave.conf", "[general]\ndrivers = wave\nchannels = stereo\nfrequency = 44100\nsample-type = int16\n"
                            "[wave]\nfile = heard.wav\n");
    setenv("ALSOFT_CONF", "wave.conf", 1);
    unsetenv("ALSOFT_DRIVERS");
  }
  ~WaveDevice() override {
    for (char const *name : {"steady.wav", "heard.wrl", "wave.conf", "heard.wav"}) std::remove(name);
  }

  // What is heard of a file at the origin within so many fiftieths of a second, both channels in turn. Samples of
  // "steady.wav" are a quarter of the full range.
  void hear(char const *scene, int seconds50, int wavFrames) {
    std::unique_ptr<ozAudioOutput> output(ozAudioOutput::createOpenAL());
    if (!output) GTEST_SKIP() << "the library was built without OpenAL";
    ozAudioOutput::install(output.get());
    writeBytes("steady.wav", wavBytes(shortBytes(std::vector<int16_t>(wavFrames, 8192)), 1, 44100, 16));
    writeBytes("heard.wrl", std::string("#VRML V2.0 utf8\n") + scene);
    ozContainer *root = nullptr;
    ozPtrArray files;
    ASSERT_TRUE(vlDB::readFile("heard.wrl", root, files));
    Held<ozContainer> held(root);
    if (static_cast<ozSound *>(static_cast<ozGroup *>(static_cast<ozGroup *>(root)->getChild(0))->getChild(0))
            ->getSource()
            ->getSamples()
            ->getLoadStatus() != ozAudioSamples::LOAD_COMPLETE)
      GTEST_SKIP() << "the library was built without libsndfile";
    static_cast<ozNode *>(root)->getBoxBound(); // brings the transform's matrix up to date
    Held<ozMicrophone> microphone;
    ozSoundAction action;
    action.setMicrophone(microphone);
    timespec const pause = {0, 20000000};
    for (int frame = 0; frame < seconds50; ++frame) {
      action.apply(static_cast<ozNode *>(root));
      nanosleep(&pause, nullptr);
    }
    ozAudioOutput::install(nullptr);
    output.reset();

    std::ifstream file("heard.wav", std::ios::binary);
    std::string const bytes{std::istreambuf_iterator<char>(file), {}};
    size_t const start = bytes.find("data");
    ASSERT_NE(std::string::npos, start);
    heard.resize((bytes.size() - start - 8) / 2);
    std::memcpy(heard.data(), &bytes[start + 8], heard.size() * 2);
  }

  // How many samples are within a fiftieth of a value.
  size_t countNear(double expected) const {
    size_t near = 0;
    for (int16_t value : heard) near += value > expected * 0.98 && value < expected * 1.02;
    return near;
  }

  std::vector<int16_t> heard;
};

} // namespace

TEST_F(WaveDevice, AFileWithASoundIsHeard) {
  hear("Transform { translation 0 0 -5 children\n"
       "  Sound { maxFront 11 source AudioClip { url \"steady.wav\" loop TRUE } } }\n",
       40, 4 * 44100);
  // 5 away, 4 behind minFront, of a range of 10: 1 - 0.9 * 16 / 100 of 8192.
  if (IsSkipped()) return;
  EXPECT_GT(countNear(8192 * 0.856), 2u * 44100 / 5); // at least a fifth of a second, both channels
}

TEST_F(WaveDevice, ADoublePitchIsHeardForHalfAsLongAndOnce) {
  // A fifth of a second until it is out: 4410 frames of both channels are left of it.
  hear("Transform { children\n"
       "  Sound { source AudioClip { url \"steady.wav\" pitch 2 startTime 1 stopTime 0 } } }\n",
       40, 8820);
  if (IsSkipped()) return;
  EXPECT_NEAR(2.0 * 4410, static_cast<double>(countNear(8192)), 200);
}

TEST_F(WaveDevice, ASoundOutOfReachIsNotHeard) {
  hear("Transform { translation 0 0 -11 children\n"
       "  Sound { maxFront 11 source AudioClip { url \"steady.wav\" loop TRUE } } }\n",
       10, 44100);
  size_t loud = 0;
  for (int16_t value : heard) loud += value > 50 || value < -50;
  EXPECT_EQ(0u, loud);
}
