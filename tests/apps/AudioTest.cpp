// The sounds of a scene, as the viewer lets them be heard. What the audio device would have played goes to a file.

#include "program.h"
#include <cstdint>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

using testing::HasSubstr;

namespace {

class AudioTest : public testing::Test {
protected:
  AudioTest() : heard(folder / "heard.wav") {
    setenv("ALSOFT_CONF",
           folder
               .write("wave.conf", "[general]\ndrivers = wave\nchannels = stereo\nfrequency = 44100\n"
                                   "sample-type = int16\n[wave]\nfile = " +
                                       heard + "\n")
               .c_str(),
           1);
    unsetenv("ALSOFT_DRIVERS");
  }
  ~AudioTest() override {
    unsetenv("ALSOFT_CONF");
    unsetenv("ALSOFT_DRIVERS");
  }

  // How many samples were played that are louder than a hundredth of the range.
  size_t loudSamples() {
    std::string const bytes = textOf(heard);
    size_t loud = 0;
    for (size_t at = 44; at + 2 <= bytes.size(); at += 2) {
      int16_t sample;
      memcpy(&sample, &bytes[at], 2);
      loud += sample > 327 || sample < -327;
    }
    return loud;
  }

  // Shows the bell until it has been heard, or for so many hundredths of a second.
  void show(std::vector<std::string> options, int most) {
    options.insert(options.end(), {"--size", "100x100", model("sound")});
    Program program(options, true);
    for (int i = 0; i < most && program.isRunning() && loudSamples() <= 4000; i++) usleep(10000);
    isShown = program.isRunning();
    err = program.err();
  }

  Folder folder;
  std::string const heard;
  bool isShown = false;
  std::string err;
};

} // namespace

TEST_F(AudioTest, WithAudioTheSoundsOfASceneAreHeard) {
  show({"--audio"}, 2000);
  if (err.find("no audio device") != std::string::npos) GTEST_SKIP() << "SKIPPED: built without an audio output";
  EXPECT_TRUE(isShown);
  EXPECT_GT(loudSamples(), 4000u) << err;
}

TEST_F(AudioTest, WithoutTheOptionTheSceneIsSilent) {
  show({}, 150);
  EXPECT_TRUE(isShown);
  EXPECT_FALSE(std::filesystem::exists(heard)) << "no device has been opened";
}

TEST_F(AudioTest, WithoutADeviceTheSceneIsShownAllTheSame) {
  setenv("ALSOFT_DRIVERS", "none", 1);
  show({"--audio"}, 150);
  EXPECT_TRUE(isShown);
  EXPECT_THAT(err, HasSubstr("ozview: there is no audio device: the sounds stay silent\n"));
}
