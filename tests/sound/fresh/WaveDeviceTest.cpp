// A VRML file that is heard: what OpenAL would have played goes to a file.

#include "sound/soundFixture.h"

#include <cstdlib>
#include <memory>
#include <time.h>

TEST(WaveDevice, AFileWithASoundIsHeard) {
  // Four seconds at a quarter of the full range.
  writeBytes("steady.wav", wavBytes(shortBytes(std::vector<int16_t>(4 * 44100, 8192)), 1, 44100, 16));
  writeBytes("heard.wrl", "#VRML V2.0 utf8\n"
                          "Transform { translation 0 0 -5 children\n"
                          "  Sound { maxFront 11 source AudioClip { url \"steady.wav\" loop TRUE } } }\n");
  writeBytes("wave.conf", "[general]\ndrivers = wave\nchannels = stereo\nfrequency = 44100\nsample-type = int16\n"
                          "[wave]\nfile = heard.wav\n");
  setenv("ALSOFT_CONF", "wave.conf", 1);
  unsetenv("ALSOFT_DRIVERS");
  std::unique_ptr<ozAudioOutput> output(ozAudioOutput::createOpenAL());
  if (!output) GTEST_SKIP() << "the library was built without OpenAL";
  ozAudioOutput::install(output.get());

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
  for (int frame = 0; frame < 40; ++frame) {
    action.apply(static_cast<ozNode *>(root));
    nanosleep(&pause, nullptr);
  }
  ozAudioOutput::install(nullptr);
  output.reset();

  std::FILE *const file = std::fopen("heard.wav", "rb");
  ASSERT_NE(nullptr, file);
  std::fseek(file, 0, SEEK_END);
  std::vector<int16_t> heard(static_cast<size_t>(std::ftell(file)) / 2);
  std::fseek(file, 44, SEEK_SET);
  heard.resize(std::fread(heard.data(), 2, heard.size(), file));
  std::fclose(file);
  // 5 away, 4 behind minFront, of a range of 10: 1 - 0.9 * 16 / 100 of 8192.
  double const expected = 8192 * 0.856;
  size_t near = 0;
  for (int16_t value : heard) near += value > expected * 0.98 && value < expected * 1.02;
  EXPECT_GT(near, 2u * 44100 / 5); // at least a fifth of a second, both channels
  for (char const *name : {"steady.wav", "heard.wrl", "wave.conf", "heard.wav"}) std::remove(name);
}
