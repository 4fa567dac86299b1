// The example programs do what their first lines say.

#include "program.h"
#include "window/windowFixture.h"
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <gmock/gmock.h>

using testing::HasSubstr;
using testing::StartsWith;

namespace {

std::string example(std::string const &name) { return OZ_EXAMPLES_DIR "/" + name; }

std::string outputOf(std::string const &name, std::vector<std::string> const &arguments = {}) {
  Program program(arguments, false, example(name));
  EXPECT_EQ(program.wait(), 0) << program.err();
  return program.out();
}

} // namespace

TEST(Examples, BuildGraphTellsTheBoundsOfItsGraph) {
  EXPECT_EQ(outputOf("buildGraph"), "three pyramids: (-1, 0, -1) to (7, 2, 1)\n"
                                    "the last one doubled: (-1, 0, -2) to (8, 4, 2)\n"
                                    "the shape has 3 parents\n");
}

TEST(Examples, PickFindsTheSphereAndTheWayToIt) {
  EXPECT_EQ(outputOf("pick"), "hit a Sphere at (1.00, 0.00, 1.00)\n"
                              "in its own space at (0.00, 0.00, 1.00)\n"
                              "by way of Group aside globe Sphere\n"
                              "nothing in the corner\n");
}

TEST(Examples, OwnNodeConnectsItsField) {
  EXPECT_EQ(outputOf("ownNode"), "Ramp at 45 degrees: its box is 2.8284 high\n" // 2 times the root of 2
                                 "the follower rises by 0.5\n"
                                 "and now by 0.25\n");
}

TEST(Examples, WriteGraphWritesASharedShapeOnce) {
  std::string const text = outputOf("writeGraph");
  EXPECT_THAT(text, StartsWith("#VRML V2.0 utf8\n"));
  EXPECT_THAT(text, HasSubstr("DEF wheel Shape {\n"));
  EXPECT_THAT(text, HasSubstr("USE wheel"));
  EXPECT_THAT(text, HasSubstr("# the wheel of the copy has 2 parents\n"));
}

TEST(Examples, ReadFileFindsANodeByItsName) {
  std::string const text = outputOf("readFile", {model("showpiece"), "Sails"});
  EXPECT_THAT(text, HasSubstr("Sails is a Transform\nand is twice as large now\n"));
}

TEST(Examples, OffscreenDrawsACone) {
  Program program({"cone.ppm"}, false, example("offscreen"));
  ASSERT_EQ(program.wait(), 0) << program.err();
  std::string const picture = textOf(program.folder / "cone.ppm");
  ASSERT_EQ(picture.size(), 15u + 320 * 240 * 3);
  EXPECT_THAT(picture, StartsWith("P6 320 240 255\n"));
  auto red = [&](int x, int y) { return static_cast<unsigned char>(picture[15 + (y * 320 + x) * 3]); };
  EXPECT_EQ(red(5, 5), 255) << "the background is white";
  EXPECT_LT(red(160, 150), 200) << "the cone is blue";
}

TEST(Examples, SoundMovesOutOfHearing) {
  Folder const folder;
  std::string const heard = folder / "heard.wav";
  std::string const settings = "[general]\ndrivers = wave\nchannels = mono\nfrequency = 11025\nsample-type = int16\n";
  setenv("ALSOFT_CONF", folder.write("wave.conf", settings + "[wave]\nfile = " + heard + "\n").c_str(), 1);
  Program program({model("sound"), "30"}, false, example("sound"));
  int const status = program.wait();
  unsetenv("ALSOFT_CONF");
  if (status == 1 && program.err() == "There is no audio device.\n") GTEST_SKIP() << "built without OpenAL";
  EXPECT_EQ(status, 0) << program.err();
  EXPECT_EQ(program.out(), "heard from 0 to 30\n");

  // The bell ends ten units away, a third of the way.
  std::string const bytes = textOf(heard);
  std::vector<int16_t> played(bytes.size() / 2);
  memcpy(played.data(), bytes.data(), played.size() * 2);
  size_t const quarter = played.size() / 4;
  auto const loud = [](int16_t sample) { return sample > 327 || sample < -327; }; // a hundredth of the range
  EXPECT_GT(std::count_if(played.begin(), played.begin() + quarter, loud), 1000);
  EXPECT_EQ(std::count_if(played.end() - quarter, played.end(), loud), 0);
}

class WindowExample : public testing::TestWithParam<char const *> {};

TEST_P(WindowExample, ShowsAWindowUntilItIsClosed) {
  XSetErrorHandler([](Display *, XErrorEvent *) { return 0; });
  XClient client;
  Program program({}, true, example(GetParam()));
  Window root, parent, *children = nullptr;
  unsigned int count = 0;
  for (int i = 0; i < 1000 && program.isRunning() && !count; i++) {
    usleep(10000);
    XQueryTree(client.x, DefaultRootWindow(client.x), &root, &parent, &children, &count);
  }
  ASSERT_EQ(count, 1u) << program.err();
  for (int i = 0; i < 1000 && !client.isShown(children[0]); i++) usleep(10000);
  client.close(children[0]);
  EXPECT_EQ(program.wait(10), 0);
  EXPECT_EQ(program.err(), "");
  XFree(children);
}

INSTANTIATE_TEST_SUITE_P(Windows, WindowExample,
                         testing::Values("firstWindow", "animate", "labels", "lightsAndFog", "overrides"),
                         [](auto const &info) { return info.param; });
