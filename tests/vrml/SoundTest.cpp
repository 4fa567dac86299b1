// AudioClip and Sound in a file.

#include <gtest/gtest.h>

#include "readText.h"

namespace {

std::string const notFound = "ozAudioSamples::load() Could not open file no/bell.wav\n";

TEST(ReadSound, ASoundIsReadWithItsClip) {
  Reading const r(
      "Sound { source AudioClip { url [ \"no/bell.wav\" \"other.wav\" ] pitch 2 loop TRUE description \"a bell\""
      " startTime 3 } location 1 2 3 intensity 0.5 maxFront 20 spatialize FALSE control 1 }");
  EXPECT_TRUE(r.ok);
  EXPECT_EQ(notFound, r.messages);
  ASSERT_EQ(1, r.count());
  ozSound *const sound = r.child<ozSound>(0);
  ASSERT_EQ(ozSound::getClassType(), sound->getType());
  ozVec3f v;
  sound->getLocation(v);
  EXPECT_TRUE(v == ozVec3f(1, 2, 3));
  EXPECT_EQ(0.5f, sound->getIntensity());
  EXPECT_EQ(20, sound->getMaxFront());
  EXPECT_EQ(0, sound->getSpatialize());
  EXPECT_EQ(ozSound::PAUSE, sound->getControl());
  ozAudioClip *const clip = sound->getSource();
  ASSERT_NE(nullptr, clip);
  EXPECT_EQ(2u, clip->url()->getCount());
  EXPECT_EQ(2, clip->getPitch());
  EXPECT_EQ(1, clip->getLoop());
  EXPECT_EQ(3.0, clip->getStartTime().get());
}

TEST(ReadSound, AClipLooksForTheFirstFileOfItsUrl) {
  Reading const r("Sound { source AudioClip { url [ \"no/bell.wav\" \"other.wav\" ] } }");
  EXPECT_EQ(notFound, r.messages);
  ozAudioSamples *const samples = r.child<ozSound>(0)->getSource()->getSamples();
  ASSERT_NE(nullptr, samples);
  ozString name;
  samples->getFileName(name);
  EXPECT_STREQ("no/bell.wav", name.getString());
  EXPECT_EQ(ozAudioSamples::LOAD_NEEDED, samples->getLoadStatus());
}

TEST(ReadSound, AClipWithoutAUrlHasNoSamplesAndSaysNothing) {
  Reading const r("Sound { source AudioClip { } } Sound { source AudioClip { url [ ] } }");
  EXPECT_EQ("", r.messages);
  EXPECT_EQ(nullptr, r.child<ozSound>(0)->getSource()->getSamples());
  EXPECT_EQ(nullptr, r.child<ozSound>(1)->getSource()->getSamples());
}

TEST(ReadSound, AClipIsNoNodeAndNoSoundIsASource) {
  EXPECT_EQ(0, Reading("AudioClip { }").count());
  Reading const r("Sound { source Group { } }");
  EXPECT_EQ(nullptr, r.child<ozSound>(0)->getSource());
}

TEST(ReadSound, TheSamplesAreLoadedAsTheFileIsRead) {
  // One second of 8 bits: "RIFF", the sizes, the format, the samples.
  std::string const wav = std::string("RIFF\x28\0\0\0WAVEfmt \x10\0\0\0\1\0\1\0\xe8\3\0\0\xe8\3\0\0\1\0\x08\0"
                                      "data\4\0\0\0\x80\x81\x82\x83",
                                      48);
  TextFile const file(wav, "loaded.wav");
  Reading const r("Sound { source AudioClip { url \"loaded.wav\" } }");
  ozAudioSamples *const samples = r.child<ozSound>(0)->getSource()->getSamples();
  if (samples->getLoadStatus() != ozAudioSamples::LOAD_COMPLETE) GTEST_SKIP() << "the library reads no sound files";
  EXPECT_EQ("", r.messages);
  EXPECT_EQ(4, samples->getNumFrames());
  EXPECT_EQ(1000, samples->getSampleRate());
}

} // namespace
