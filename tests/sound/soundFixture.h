#ifndef TESTS_SOUND_FIXTURE_H
#define TESTS_SOUND_FIXTURE_H

// What the tests of this room share: an output that remembers what it is given, samples, little sound files, and a way
// to the lists of the process.

#include "node/probes.h"
#include "oz/OzScene3D.h"
#include "support/capture.h"
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

/// The lists of the whole process, as an output reaches them.
struct SoundLists : ozContext {
  using ozContext::SoundInitialized;
  using ozContext::SoundPlayersArray;
  using ozContext::SoundsArray;

  static bool isWaiting(ozSound *sound) { return SoundsArray.find(sound) >= 0; }
  static ozSoundPlayer *player(unsigned int i) { return static_cast<ozSoundPlayer *>(SoundPlayersArray[i]); }
};

/// An output of a few ports, of which each write is kept.
class KeptOutput : public ozAudioOutput {
public:
  explicit KeptOutput(int ports = 2, int queueRoom = 100) : room(queueRoom), free(ports) {}

  int getNumChannels() override { return free + broken; }
  int open() override {
    if (free < 1) return -1;
    --free;
    return 10 + opened++;
  }
  int getRoom(int) override { return room; }
  int write(int port, short const *samples, int frames, int channels, float rate) override {
    writes.push_back({port, std::vector<short>(samples, samples + frames * channels), frames, channels, rate});
    return frames;
  }
  void close(int port) override {
    closed.push_back(port);
    ++free;
  }

  struct Write {
    int port;
    std::vector<short> samples;
    int frames;
    int channels;
    float rate;
  };
  int room;
  int free;
  int broken = 0; ///< ports that are promised and cannot be opened
  int opened = 0;
  std::vector<Write> writes;
  std::vector<int> closed;
};

/// Nothing installed before and after; the list of sounds empty.
class SoundTest : public ::testing::Test {
protected:
  SoundTest() { ozAudioOutput::install(nullptr); }
  ~SoundTest() override {
    ozAudioOutput::install(nullptr);
    SoundLists::SoundsArray.setCount(0);
  }
};

/// Samples of a format.
template <class Sample>
ozAudioSamples *makeSamples(std::vector<Sample> const &values, ozAudioSamples::SampleTypeEnum type, int channels = 1) {
  ozAudioSamples *const samples = new ozAudioSamples;
  unsigned int const bytes = static_cast<unsigned int>(values.size() * sizeof(Sample));
  samples->samples()->setCount(bytes);
  samples->samples()->setRange(0, bytes, reinterpret_cast<unsigned char const *>(values.data()));
  samples->setNumFrames(static_cast<int>(values.size()) / channels);
  samples->setNumChannels(channels);
  samples->setSampleSize(sizeof(Sample));
  samples->setSampleType(type);
  samples->setSampleRate(1000);
  return samples;
}

/// A clip that plays its samples from now on until they are out.
inline ozAudioClip *makeClip(ozAudioSamples *samples) {
  ozAudioClip *const clip = new ozAudioClip;
  clip->setSamples(samples);
  clip->setStopTime(-2.0);
  return clip;
}

/// A sound of signed 16-bit samples, at full intensity at the origin.
inline ozSound *makeSound(std::vector<int16_t> const &values, int channels = 1) {
  ozSound *const sound = new ozSound;
  sound->setSource(makeClip(makeSamples(values, ozAudioSamples::FLOAT_SAMPLE_TYPE, channels)));
  return sound;
}

inline double now() { return ozTime::getTimeOfDay().get(); }

struct FieldRow {
  char const *name;
  ozType *type;
};

/// The fields that a class adds, with their ids from `first` on.
inline void expectFields(ozType *type, char const *name, ozType *parent, int first, std::vector<FieldRow> const &rows) {
  EXPECT_STREQ(name, type->getName());
  EXPECT_EQ(parent, type->getAncestor());
  EXPECT_EQ(first, type->getAncestorFieldCount());
  ASSERT_EQ(first + static_cast<int>(rows.size()), type->getFieldInfoCount());
  for (size_t i = 0; i < rows.size(); ++i) {
    ozFieldInfo *const info = type->getFieldInfo(first + static_cast<int>(i));
    EXPECT_STREQ(rows[i].name, info->getName());
    EXPECT_EQ(rows[i].type, info->getFieldType()) << rows[i].name;
  }
}

inline ozType *refTypeOf(ozType *type, int id) {
  return static_cast<ozSFRefInfo *>(type->getFieldInfo(id))->getRefType();
}

inline void writeBytes(std::string const &path, std::string const &bytes) {
  std::FILE *const file = std::fopen(path.c_str(), "wb");
  std::fwrite(bytes.data(), 1, bytes.size(), file);
  std::fclose(file);
}

/// A WAV file of whole numbers, as its makers define it: little-endian.
inline std::string wavBytes(std::string const &data, int channels, int rate, int bits) {
  auto const number = [](unsigned int value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> (8 * i));
    return text;
  };
  int const frame = channels * bits / 8;
  std::string const format = number(1, 2) + number(channels, 2) + number(rate, 4) + number(rate * frame, 4) +
                             number(frame, 2) + number(bits, 2);
  std::string const chunks =
      "WAVEfmt " + number(16, 4) + format + "data" + number(static_cast<unsigned int>(data.size()), 4) + data;
  return "RIFF" + number(static_cast<unsigned int>(chunks.size()), 4) + chunks;
}

inline std::string shortBytes(std::vector<int16_t> const &values) {
  return std::string(reinterpret_cast<char const *>(values.data()), values.size() * 2);
}

#endif
