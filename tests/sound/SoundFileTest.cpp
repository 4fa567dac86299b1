// Sound files, each written here and read back.

#include "soundFixture.h"

#include <cstdlib>
#include <sndfile.h>

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::FloatNear;

namespace {

class SoundFile : public ::testing::Test {
protected:
  ~SoundFile() override { std::remove(path); }

  // Writes a file of a format with the decoder's own counterpart.
  void write(int format, int channels, int rate, std::vector<float> const &values) {
    SF_INFO info = {};
    info.format = format;
    info.channels = channels;
    info.samplerate = rate;
    SNDFILE *const file = sf_open(path, SFM_WRITE, &info);
    ASSERT_NE(nullptr, file) << sf_strerror(nullptr);
    sf_writef_float(file, values.data(), static_cast<sf_count_t>(values.size()) / channels);
    sf_close(file);
  }

  std::string load() {
    samples->setFileName(path);
    return stderrOf([&] { samples->load(); });
  }

  void expectRefused() {
    EXPECT_EQ("ozAudioSamples::load - failed loading sound.bin - audio not yet avail on non-ZTK platforms\n", load());
    EXPECT_EQ(ozAudioSamples::LOAD_NEEDED, samples->getLoadStatus());
    EXPECT_EQ(0, samples->getNumFrames());
  }

  void expectFormat(int frames, int channels, float rate, int size, ozAudioSamples::SampleTypeEnum type) {
    EXPECT_EQ(frames, samples->getNumFrames());
    EXPECT_EQ(channels, samples->getNumChannels());
    EXPECT_EQ(rate, samples->getSampleRate());
    EXPECT_EQ(size, samples->getSampleSize());
    EXPECT_EQ(type, samples->getSampleType());
    EXPECT_EQ(ozAudioSamples::LOAD_COMPLETE, samples->getLoadStatus());
    EXPECT_EQ(static_cast<unsigned int>(frames * channels * size), samples->samples()->getCount());
  }

  template <class Sample> std::vector<Sample> values() {
    Sample const *const first = reinterpret_cast<Sample const *>(samples->samples()->get().getArray());
    return std::vector<Sample>(first, first + samples->samples()->getCount() / sizeof(Sample));
  }

  char const *const path = "sound.bin";
  Held<ozAudioSamples> samples;
};

auto const Unsigned = ozAudioSamples::UNSIGNED_INT_SAMPLE_TYPE;
auto const Float = ozAudioSamples::FLOAT_SAMPLE_TYPE;

std::vector<float> sine(int count) {
  std::vector<float> values(count);
  for (int i = 0; i < count; ++i) values[i] = 0.5f * std::sin(0.05f * static_cast<float>(i));
  return values;
}

} // namespace

TEST_F(SoundFile, AWavFileOf16BitsBecomesUnsignedNumbers) {
  writeBytes(path, wavBytes(shortBytes({0, 1, -1, 32767, -32768, 100}), 2, 22050, 16));
  EXPECT_EQ("", load());
  expectFormat(3, 2, 22050, 2, Unsigned);
  EXPECT_THAT(values<uint16_t>(), ElementsAre(32768, 32769, 32767, 65535, 0, 32868));
}

TEST_F(SoundFile, AWavFileOf8BitsKeepsItsBytes) {
  writeBytes(path, wavBytes(std::string("\x80\x00\xff\x40", 4), 1, 8000, 8));
  EXPECT_EQ("", load());
  expectFormat(4, 1, 8000, 1, Unsigned);
  EXPECT_THAT(values<uint8_t>(), ElementsAre(128, 0, 255, 64));
}

TEST_F(SoundFile, AWavFileOf24BitsBecomesFloats) {
  writeBytes(path, wavBytes(std::string("\0\0\x40\0\0\xc0", 6), 1, 48000, 24));
  EXPECT_EQ("", load());
  expectFormat(2, 1, 48000, 4, Float);
  EXPECT_THAT(values<float>(), ElementsAre(0.5f, -0.5f));
}

TEST_F(SoundFile, AnAiffFileIsRead) {
  write(SF_FORMAT_AIFF | SF_FORMAT_PCM_16, 1, 11025, {0, 0.5f, -0.5f, -1});
  EXPECT_EQ("", load());
  expectFormat(4, 1, 11025, 2, Unsigned);
  EXPECT_THAT(values<uint16_t>(), ElementsAre(32768, testing::AllOf(testing::Ge(49151), testing::Le(49152)),
                                              testing::AllOf(testing::Ge(16384), testing::Le(16385)),
                                              testing::AllOf(testing::Ge(0), testing::Le(1))));
}

TEST_F(SoundFile, AFlacFileIsRead) {
  write(SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 2, 44100, sine(2000));
  EXPECT_EQ("", load());
  expectFormat(1000, 2, 44100, 2, Unsigned);
  std::vector<float> const expected = sine(2000);
  std::vector<uint16_t> const got = values<uint16_t>();
  for (size_t i = 0; i < got.size(); ++i) ASSERT_NEAR(expected[i], (got[i] - 32768) / 32768.0, 1e-4) << i;
}

TEST_F(SoundFile, AnOggFileBecomesFloats) {
  write(SF_FORMAT_OGG | SF_FORMAT_VORBIS, 1, 44100, sine(8000));
  EXPECT_EQ("", load());
  expectFormat(8000, 1, 44100, 4, Float);
  std::vector<float> const expected = sine(8000), got = values<float>();
  for (size_t i = 1000; i < 7000; ++i) ASSERT_NEAR(expected[i], got[i], 0.1) << i; // it is a lossy format
}

TEST_F(SoundFile, ALongFileIsReadToItsEnd) {
  std::vector<int16_t> ramp(1000000);
  for (size_t i = 0; i < ramp.size(); ++i) ramp[i] = static_cast<int16_t>(i * 7);
  writeBytes(path, wavBytes(shortBytes(ramp), 1, 44100, 16));
  EXPECT_EQ("", load());
  expectFormat(1000000, 1, 44100, 2, Unsigned);
  std::vector<uint16_t> const got = values<uint16_t>();
  for (size_t i = 0; i < got.size(); ++i) ASSERT_EQ(static_cast<uint16_t>(ramp[i] + 32768), got[i]) << i;
}

TEST_F(SoundFile, IsReadOnceOnly) {
  writeBytes(path, wavBytes(shortBytes({1, 2}), 1, 1000, 16));
  load();
  samples->setNumFrames(1);
  EXPECT_EQ("", load());
  EXPECT_EQ(1, samples->getNumFrames());
}

TEST_F(SoundFile, OtherKindsOfFilesAreRefusedThoughTheDecoderKnowsThem) {
  write(SF_FORMAT_AU | SF_FORMAT_PCM_16, 1, 8000, {0, 0.5f});
  expectRefused();
}

TEST_F(SoundFile, AnEmptyOneIsRefused) {
  writeBytes(path, wavBytes("", 1, 8000, 16));
  expectRefused();
  writeBytes(path, "");
  expectRefused();
  writeBytes(path, "RIFF\4\0\0\0WAV"); // one byte short of a beginning
  expectRefused();
}

TEST_F(SoundFile, AHeaderAloneIsRefused) {
  writeBytes(path, wavBytes("", 1, 8000, 16).substr(0, 20));
  expectRefused();
  writeBytes(path, "fLaC" + std::string(40, '\xff'));
  expectRefused();
  writeBytes(path, "OggS" + std::string(40, '\xff'));
  expectRefused();
  writeBytes(path, "FORM" + std::string(4, '\xff') + "AIFF" + std::string(40, '\xff'));
  expectRefused();
}

TEST_F(SoundFile, AClaimOfMoreThanThereIsCostsNoMemory) {
  std::string bytes = wavBytes(shortBytes({5, 6}), 1, 8000, 16);
  bytes.replace(4, 4, "\xff\xff\xff\x7f", 4);
  bytes.replace(40, 4, "\xf0\xff\xff\x7f", 4);
  writeBytes(path, bytes);
  load();
  EXPECT_LE(samples->samples()->getSize(), 1u << 20); // what is there may be taken or left
}

TEST_F(SoundFile, MoreThan256MegabytesAreRefused) {
  // Silence packs well: 68 million floats of 4 bytes in a small file.
  SF_INFO info = {};
  info.format = SF_FORMAT_FLAC | SF_FORMAT_PCM_24;
  info.channels = 8;
  info.samplerate = 44100;
  SNDFILE *const file = sf_open(path, SFM_WRITE, &info);
  ASSERT_NE(nullptr, file);
  std::vector<int> const silence(8 * 85000);
  for (int i = 0; i < 100; ++i) sf_writef_int(file, silence.data(), 85000);
  sf_close(file);
  expectRefused();
}

TEST_F(SoundFile, DamagedFilesDoNoHarm) {
  std::vector<int> const formats = {SF_FORMAT_WAV | SF_FORMAT_PCM_16, SF_FORMAT_AIFF | SF_FORMAT_PCM_16,
                                    SF_FORMAT_FLAC | SF_FORMAT_PCM_16, SF_FORMAT_OGG | SF_FORMAT_VORBIS};
  unsigned int random = 1;
  for (int format : formats) {
    write(format, 1, 8000, sine(400));
    std::string whole;
    std::FILE *const file = std::fopen(path, "rb");
    for (int c; (c = std::fgetc(file)) != EOF;) whole += static_cast<char>(c);
    std::fclose(file);
    for (int turn = 0; turn < 60; ++turn) {
      std::string bytes = whole;
      for (int i = 0; i < 3; ++i) {
        random = random * 1664525u + 1013904223u;
        bytes[(random >> 8) % (turn % 2 ? 60 : bytes.size())] = static_cast<char>(random >> 24);
      }
      if (turn % 3 == 0) bytes.resize(bytes.size() * (turn + 1) / 61);
      writeBytes(path, bytes);
      Held<ozAudioSamples> read;
      read->setFileName(path);
      stderrOf([&] { read->load(); });
      if (read->getLoadStatus() != ozAudioSamples::LOAD_COMPLETE) continue;
      EXPECT_EQ(read->samples()->getCount(),
                static_cast<unsigned int>(read->getNumFrames() * read->getNumChannels() * read->getSampleSize()));
      EXPECT_GT(read->getSampleRate(), 0);
    }
  }
}
