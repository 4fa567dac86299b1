// The example models are whole: nothing in them is refused, and every class that the reader takes has one.

#include "program.h"
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <regex>

using testing::HasSubstr;
using testing::Not;

namespace {

// Every name that the reader knows or will know.
char const *const names[] = {
    "LineSet",
    "LineStripSet",
    "TriSet",
    "QuadSet",
    "PolySet",
    "TriStripSet",
    "IndexedLineSet",
    "IndexSet",
    "SphereSensor",
    "PlaneSensor",
    "Appearance",
    "AudioClip",
    "Billboard",
    "Box",
    "Collision",
    "Color",
    "ColorInterpolator",
    "Cone",
    "Coordinate",
    "Cylinder",
    "CoordinateInterpolator",
    "DirectionalLight",
    "Environment",
    "Group",
    "ImageTexture",
    "IndexedFaceSet",
    "Material",
    "Normal",
    "NormalInterpolator",
    "OrientationInterpolator",
    "PointLight",
    "PositionInterpolator",
    "ScalarInterpolator",
    "Shape",
    "Sound",
    "Sphere",
    "Switch",
    "TextureCoordinate",
    "TimeSensor",
    "TouchSensor",
    "Transform",
    "Inline",
};

std::vector<std::string> models() {
  std::vector<std::string> files;
  for (auto const &entry : std::filesystem::directory_iterator(OZ_SOURCE_DIR "/examples/models"))
    if (entry.path().extension() == ".wrl") files.push_back(entry.path().string());
  return files;
}

} // namespace

TEST(Models, ReadWithoutAnError) {
  for (std::string const &file : models()) {
    ViewerRun const run({file, "--info"});
    EXPECT_EQ(run.status, 0) << file;
    EXPECT_THAT(run.err, Not(HasSubstr("vl read error"))) << file;
  }
}

TEST(Models, ThereIsOneForEveryClassThatTheReaderTakes) {
  std::string all;
  for (std::string const &file : models()) all += textOf(file);
  Folder const folder;
  int taken = 0;
  for (char const *name : names) {
    std::string const file = folder.write("one.wrl", std::string("#VRML V2.0 utf8\n") + name + " { }\n");
    if (ViewerRun({file, "--info"}).err.find("Unknown class") != std::string::npos) continue;
    taken++;
    EXPECT_TRUE(std::regex_search(all, std::regex(std::string("[ \n]") + name + " \\{"))) << "no model has a " << name;
  }
  EXPECT_GE(taken, 40);
}

TEST(Models, TheShowpieceHasAnimationAndATouchSensor) {
  std::string const text = textOf(model("showpiece"));
  for (char const *what : {"TimeSensor {", "OrientationInterpolator {", "TouchSensor {", "touchTime TO"})
    EXPECT_THAT(text, HasSubstr(what));
}
