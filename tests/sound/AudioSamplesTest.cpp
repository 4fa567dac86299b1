#include "soundFixture.h"

#include <limits>
#include <sys/stat.h>
#include <unistd.h>

using ::testing::ElementsAre;

namespace {

template <class Sample> std::vector<Sample> valuesOf(ozAudioSamples *samples) {
  std::vector<Sample> values(samples->samples()->getCount() / sizeof(Sample));
  std::memcpy(values.data(), samples->samples()->get().getArray(), values.size() * sizeof(Sample));
  return values;
}

template <class Sample> std::vector<Sample> scaled(std::vector<Sample> const &values, float scale) {
  Held<ozAudioSamples> samples(makeSamples(values, ozAudioSamples::UNSIGNED_INT_SAMPLE_TYPE));
  samples->setSampleScale(scale);
  samples->scale();
  return valuesOf<Sample>(samples);
}

/// Counts what becomes of its samples.
class WatchedSamples : public ozAudioSamples {
public:
  WatchedSamples() : ozAudioSamples(ozAudioSamples::getClassType()) {}
  std::vector<short> changes;

protected:
  void fieldChanged(short id) override {
    changes.push_back(id);
    ozAudioSamples::fieldChanged(id);
  }
};

} // namespace

TEST(Audio, IsAContainerWithoutFieldsOfItsOwn) {
  expectFields(ozAudio::getClassType(), "Audio", ozContainer::getClassType(), 0, {});
  Held<ozAudio> audio;
  EXPECT_EQ(audio->getType(), ozAudio::getClassType());
  Held<ozContainer> other(audio->instantiate());
  EXPECT_EQ(other->getType(), ozAudio::getClassType());
}

TEST(AudioSamples, HasItsFieldsInPlace) {
  expectFields(ozAudioSamples::getClassType(), "AudioSamples", ozContainer::getClassType(), 0,
               {{"fileName", ozSFString::getClassType()},
                {"samples", ozMFUByte::getClassType()},
                {"numFrames", ozSFInt::getClassType()},
                {"numChannels", ozSFInt::getClassType()},
                {"sampleRate", ozSFFloat::getClassType()},
                {"sampleSize", ozSFInt::getClassType()},
                {"sampleType", ozSFEnum::getClassType()},
                {"sampleScale", ozSFFloat::getClassType()},
                {"loadStatus", ozSFEnum::getClassType()}});
}

TEST(AudioSamples, StartsEmptyAsStereoOf16BitsAt44100) {
  Held<ozAudioSamples> samples;
  ozString name;
  samples->getFileName(name);
  EXPECT_STREQ("noName", name.getString());
  EXPECT_EQ(0u, samples->samples()->getCount());
  EXPECT_EQ(0, samples->getNumFrames());
  EXPECT_EQ(2, samples->getNumChannels());
  EXPECT_EQ(44100.0f, samples->getSampleRate());
  EXPECT_EQ(2, samples->getSampleSize());
  EXPECT_EQ(ozAudioSamples::FLOAT_SAMPLE_TYPE, samples->getSampleType());
  EXPECT_EQ(1.0f, samples->getSampleScale());
  EXPECT_EQ(ozAudioSamples::LOAD_NEEDED, samples->getLoadStatus());
}

TEST(AudioSamples, EachSetterReachesItsFieldAndItsGetter) {
  Held<WatchedSamples> samples;
  samples->setFileName("bell.wav");
  samples->setNumFrames(12);
  samples->setNumChannels(1);
  samples->setSampleRate(8000);
  samples->setSampleSize(4);
  samples->setSampleType(ozAudioSamples::UNSIGNED_INT_SAMPLE_TYPE);
  samples->setSampleScale(0.5f);
  samples->setLoadStatus(ozAudioSamples::LOAD_PENDING);
  EXPECT_THAT(samples->changes, ElementsAre(0, 2, 3, 4, 5, 6, 7, 8));
  ozString name;
  samples->getFileName(name);
  EXPECT_STREQ("bell.wav", name.getString());
  EXPECT_EQ(12, samples->getNumFrames());
  EXPECT_EQ(1, samples->getNumChannels());
  EXPECT_EQ(8000, samples->getSampleRate());
  EXPECT_EQ(4, samples->getSampleSize());
  EXPECT_EQ(0, samples->getSampleTypeHack());
  EXPECT_EQ(0.5f, samples->getSampleScale());
  EXPECT_EQ(2, samples->getLoadStatusHack());
}

TEST(AudioSamples, GivesTheFieldOfItsSamples) {
  Held<ozAudioSamples> samples;
  EXPECT_EQ(samples->getField(1), samples->samples());
}

TEST(AudioSamples, EnumeratorsHaveTheirNames) {
  ozFieldInfo *const type = ozAudioSamples::getClassType()->getFieldInfo(6);
  ozFieldInfo *const status = ozAudioSamples::getClassType()->getFieldInfo(8);
  std::vector<std::pair<char const *, int>> const types = {{"UNSIGNED_INT_SAMPLE_TYPE", 0}, {"FLOAT_SAMPLE_TYPE", 1}};
  for (auto const &row : types) {
    int value = -1;
    type->findEnum(row.first, value);
    EXPECT_EQ(row.second, value) << row.first;
  }
  std::vector<std::pair<char const *, int>> const statuses = {
      {"LOAD_NEEDED", 0}, {"LOAD_FAILED", 1}, {"LOAD_PENDING", 2}, {"LOAD_COMPLETE", 3}};
  for (auto const &row : statuses) {
    int value = -1;
    status->findEnum(row.first, value);
    EXPECT_EQ(row.second, value) << row.first;
  }
}

// ---- load

TEST(AudioSamplesLoad, AFileThatIsNotThereCostsALineAndLeavesTheStatus) {
  Held<ozAudioSamples> samples;
  samples->setFileName("no/such/sound.wav");
  EXPECT_EQ("ozAudioSamples::load() Could not open file no/such/sound.wav\n", stderrOf([&] { samples->load(); }));
  EXPECT_EQ(ozAudioSamples::LOAD_NEEDED, samples->getLoadStatus());
  samples->setLoadStatus(ozAudioSamples::LOAD_PENDING);
  stderrOf([&] { samples->load(); });
  EXPECT_EQ(ozAudioSamples::LOAD_PENDING, samples->getLoadStatus());
}

TEST(AudioSamplesLoad, AFileThatIsNoSoundCostsALineAndLeavesTheStatus) {
  writeBytes("nosound.txt", "This is no sound at all, and long enough to be one.");
  Held<ozAudioSamples> samples;
  samples->setFileName("nosound.txt");
  EXPECT_EQ("ozAudioSamples::load - failed loading nosound.txt - audio not yet avail on non-ZTK platforms\n",
            stderrOf([&] { samples->load(); }));
  EXPECT_EQ(ozAudioSamples::LOAD_NEEDED, samples->getLoadStatus());
  EXPECT_EQ(0u, samples->samples()->getCount());
  EXPECT_EQ(0, samples->getNumFrames());
  std::remove("nosound.txt");
}

TEST(AudioSamplesLoad, SaysNothingOnceItIsComplete) {
  Held<ozAudioSamples> samples;
  samples->setFileName("no/such/sound.wav");
  samples->setLoadStatus(ozAudioSamples::LOAD_COMPLETE);
  EXPECT_EQ("", stderrOf([&] { samples->load(); }));
}

TEST(AudioSamplesLoad, ANullNameIsAFileThatIsNotThere) {
  Held<ozAudioSamples> samples;
  samples->setFileName(ozString());
  EXPECT_EQ("ozAudioSamples::load() Could not open file \n", stderrOf([&] { samples->load(); }));
}

TEST(AudioSamplesLoad, PullsANameFromAConnection) {
  Held<ozAudioSamples> from, to;
  from->connect(0, to, 0);
  from->setFileName("no/such/connected.wav");
  EXPECT_EQ("ozAudioSamples::load() Could not open file no/such/connected.wav\n", stderrOf([&] { to->load(); }));
}

TEST(AudioSamplesLoad, LooksAlongTheFilePathAndTellsTheNameAsItWasGiven) {
  ASSERT_EQ(0, mkdir("soundpath", 0700));
  writeBytes("soundpath/nosound.txt", "no sound");
  ozString const before(ozGlobal::getFilePath());
  ozGlobal::setFilePath("soundpath");
  Held<ozAudioSamples> samples;
  samples->setFileName("nosound.txt");
  EXPECT_EQ("ozAudioSamples::load - failed loading nosound.txt - audio not yet avail on non-ZTK platforms\n",
            stderrOf([&] { samples->load(); }));
  ozGlobal::setFilePath(before.getString());
  std::remove("soundpath/nosound.txt");
  rmdir("soundpath");
}

TEST(AudioSamplesLoad, TriesAgainInAnyOtherStatus) {
  Held<ozAudioSamples> samples;
  for (int status : {0, 1, 2, 77}) {
    samples->setLoadStatusHack(status);
    EXPECT_EQ("ozAudioSamples::load() Could not open file noName\n", stderrOf([&] { samples->load(); }));
    EXPECT_EQ(status, samples->getLoadStatusHack());
  }
}

TEST(AudioSamplesLoad, ADeviceIsNoSoundFile) { // and one that waits for its user must not be waited for
  Held<ozAudioSamples> samples;
  samples->setFileName("/dev/zero");
  EXPECT_EQ("ozAudioSamples::load() Could not open file /dev/zero\n", stderrOf([&] { samples->load(); }));
}

// ---- scale

TEST(AudioSamplesScale, ReadsOneByteAsSignedAndCutsAt255) {
  EXPECT_THAT(scaled<uint8_t>({100, 3, 156 /* -100 */}, 2), ElementsAre(200, 6, 56 /* -200 in 8 bits */));
  EXPECT_THAT(scaled<uint8_t>({100}, 3), ElementsAre(255));
}

TEST(AudioSamplesScale, ReadsTwoBytesAsUnsignedAndCutsAt65535) {
  EXPECT_THAT(scaled<uint16_t>({1000, 40000, 3}, 2), ElementsAre(2000, 65535, 6));
}

TEST(AudioSamplesScale, ReadsFourBytesAndCutsAt4294967295) {
  EXPECT_THAT(scaled<uint32_t>({16, 4000000000u}, 2), ElementsAre(32u, 4294967295u));
  EXPECT_THAT(scaled<uint32_t>({4294967295u}, 1), ElementsAre(4294967295u)); // a float makes one more of it
}

TEST(AudioSamplesScale, CutsFractionsOff) { EXPECT_THAT(scaled<uint16_t>({3, 7, 100}, 0.5f), ElementsAre(1, 3, 50)); }

TEST(AudioSamplesScale, DoesNotClampTheBottom) {
  EXPECT_THAT(scaled<uint16_t>({5}, -1), ElementsAre(65531)); // -5 in 16 bits
}

TEST(AudioSamplesScale, LeavesOtherSizesAlone) {
  Held<ozAudioSamples> samples(makeSamples<uint8_t>({1, 2, 3, 4, 5, 6}, ozAudioSamples::UNSIGNED_INT_SAMPLE_TYPE));
  samples->setSampleScale(2);
  for (int size : {3, 0, -1, 8}) {
    samples->setSampleSize(size);
    samples->scale();
  }
  EXPECT_THAT(valuesOf<uint8_t>(samples), ElementsAre(1, 2, 3, 4, 5, 6));
}

TEST(AudioSamplesScale, CountsFramesAsIfEachWereOneSample) {
  Held<ozAudioSamples> samples(makeSamples<uint16_t>({1, 2, 3, 4}, ozAudioSamples::UNSIGNED_INT_SAMPLE_TYPE, 2));
  samples->setSampleScale(10);
  samples->scale();
  EXPECT_THAT(valuesOf<uint16_t>(samples), ElementsAre(10, 20, 3, 4));
}

TEST(AudioSamplesScale, StaysInsideTheBytes) {
  Held<ozAudioSamples> samples(makeSamples<uint8_t>({1, 0, 2, 0, 3}, ozAudioSamples::UNSIGNED_INT_SAMPLE_TYPE));
  samples->samples()->setSize(5);
  samples->setSampleSize(2);
  samples->setNumFrames(1000000);
  samples->setSampleScale(2);
  samples->scale();
  EXPECT_THAT(valuesOf<uint8_t>(samples), ElementsAre(2, 0, 4, 0, 3));
  samples->setNumFrames(-4);
  samples->scale();
  EXPECT_THAT(valuesOf<uint8_t>(samples), ElementsAre(2, 0, 4, 0, 3));
}

TEST(AudioSamplesScale, TakesFactorsThatAreNoNumbers) {
  float const infinity = std::numeric_limits<float>::infinity();
  EXPECT_THAT(scaled<uint16_t>({0, 5}, infinity), ElementsAre(0, 65535));
  EXPECT_THAT(scaled<uint16_t>({5}, std::numeric_limits<float>::quiet_NaN()), ElementsAre(0));
}

TEST(AudioSamplesScale, TellsOfTheNewSamplesOnce) {
  Held<WatchedSamples> samples;
  samples->samples()->setCount(2);
  samples->setNumFrames(1);
  samples->changes.clear();
  samples->scale();
  EXPECT_THAT(samples->changes, ElementsAre(1));
}
