// Files as broken hardware, editors and enemies make them. Whatever comes out of such a file is used as any graph is:
// the test is that all of it ends, in a process that is as whole as before. Under the sanitizers it says much more.
#include <gtest/gtest.h>

#include <dirent.h>

#include <algorithm>
#include <vector>

#include "oz/vlDB.h"
#include "support/capture.h"
#include "support/contextFixture.h"
#include "useGraph.h"

namespace {

std::string contents(std::string const &path) {
  std::string text;
  FILE *const file = fopen(path.c_str(), "r");
  if (!file) return text;
  char buffer[4096];
  for (size_t n; (n = fread(buffer, 1, sizeof buffer, file)) > 0;) text.append(buffer, n);
  fclose(file);
  return text;
}

// The files that the fuzzers start from, in the order of their names.
std::vector<std::string> seeds() {
  std::string const folder = OZ_SOURCE_DIR "/tests/fuzz/corpus/";
  std::vector<std::string> names, texts;
  if (DIR *const dir = opendir(folder.c_str())) {
    while (dirent const *entry = readdir(dir))
      if (entry->d_name[0] != '.') names.push_back(entry->d_name);
    closedir(dir);
  }
  std::sort(names.begin(), names.end());
  for (std::string const &name : names) texts.push_back("#VRML V2.0 utf8\n" + contents(folder + name));
  return texts;
}

class Hostile : public ContextTest {
protected:
  Hostile() : sensors(ozTimeSensor::getSensorCount()) {
    action.setCamera(camera);
    camera->ref();
    camera->setPosition(0, 0, 20);
    camera->draw(&action);
  }
  ~Hostile() override { camera->unref(); }

  void use(std::string const &text) { readAndUse(text.data(), text.size(), &action); }

  CaptureStderr err; // what is said about these files fills pages
  ozPerspCamera *const camera = new ozPerspCamera;
  ozDrawAction action;
  int const sensors;
};

TEST_F(Hostile, AFileCutAnywhereIsReadAsFarAsItGoes) {
  std::vector<std::string> const texts = seeds();
  ASSERT_GE(texts.size(), 5u);
  for (std::string const &text : texts)
    for (size_t length = 0; length < text.size(); ++length) use(text.substr(0, length));
  EXPECT_EQ(sensors, ozTimeSensor::getSensorCount());
}

TEST_F(Hostile, AFileWithDamagedBytesIsReadAsFarAsItGoes) {
  unsigned int seed = 1;
  auto const next = [&seed](size_t below) {
    seed = seed * 1664525u + 1013904223u;
    return static_cast<size_t>(seed >> 8) % below;
  };
  for (std::string const &text : seeds())
    for (int i = 0; i < 150; ++i) {
      std::string damaged = text;
      for (size_t flips = 1 + next(8); flips > 0; --flips)
        damaged[next(damaged.size())] ^= static_cast<char>(1 << next(8));
      use(damaged);
    }
  EXPECT_EQ(sensors, ozTimeSensor::getSensorCount());
}

TEST_F(Hostile, AFileOfShuffledWordsIsReadAsFarAsItGoes) {
  unsigned int seed = 7;
  auto const next = [&seed](size_t below) {
    seed = seed * 1664525u + 1013904223u;
    return static_cast<size_t>(seed >> 8) % below;
  };
  std::vector<std::string> words;
  for (std::string const &text : seeds()) {
    std::string word;
    for (char c : text) {
      if (!isspace(static_cast<unsigned char>(c)))
        word += c;
      else if (!word.empty())
        words.push_back(word), word.clear();
    }
  }
  for (int i = 0; i < 300; ++i) {
    std::string text = "#VRML V2.0 utf8\n";
    for (int n = 0; n < 200; ++n) text += words[next(words.size())] + (next(12) ? " " : "\n");
    use(text);
  }
  EXPECT_EQ(sensors, ozTimeSensor::getSensorCount());
}

TEST_F(Hostile, BytesOfAnyKindAreNoFile) {
  std::string all;
  for (int i = 0; i < 256; ++i) all += static_cast<char>(i);
  for (char const *header : {"", "#", "#VRML V2.0 utf8", "#VRML V2.0 utf8\n", "#VRML V2.0 utf8\nGroup { children [ "})
    for (int shift = 0; shift < 256; shift += 5) {
      std::rotate(all.begin(), all.begin() + 5, all.end());
      use(header + all + all);
    }
}

} // namespace
