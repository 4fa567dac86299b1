#include "program.h"
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

// A mill of three blades: one shape, drawn three times.
char const mill[] = "#VRML V2.0 utf8\n"
                    "DEF Axle Transform { children [\n"
                    "  Transform { translation 10 0 0 children DEF Blade Shape { geometry Box { } } }\n"
                    "  Transform { translation -10 0 0 children USE Blade }\n"
                    "  Transform { translation 0 10 0 children USE Blade }\n"
                    "] }\n";

std::string infoOf(std::string const &text, bool json = false) {
  Folder const folder;
  std::vector<std::string> arguments{folder.write("model.wrl", text), "--info"};
  if (json) arguments.push_back("--json");
  ViewerRun const run(arguments);
  EXPECT_EQ(run.status, 0) << run.err;
  return run.out;
}

// The number of triangles that a geometry is said to have.
std::string trianglesOf(std::string const &geometry) {
  std::string const info = infoOf("#VRML V2.0 utf8\nShape { geometry " + geometry + " }\n");
  size_t const at = info.find("triangles:") + 10;
  size_t const number = info.find_first_not_of(' ', at);
  return info.substr(number, info.find('\n', at) - number);
}

} // namespace

TEST(Info, SharedNodesAreCountedOnceAndDrawnOnesEachTime) {
  std::string const info = infoOf(mill);
  EXPECT_THAT(info, HasSubstr("     4 Transform\n"));
  EXPECT_THAT(info, HasSubstr("     1 Shape\n"));
  EXPECT_THAT(info, HasSubstr("     1 Box\n"));
  EXPECT_THAT(info, HasSubstr("shapes:      3\n"));
  EXPECT_THAT(info, HasSubstr("triangles:   36\n"));
}

TEST(Info, TellsTheBoundsOfAll) { EXPECT_THAT(infoOf(mill), HasSubstr("bounds:      -11 -1 -1 to 11 11 1\n")); }

TEST(Info, TellsTheDefNamesInTheOrderOfTheGraph) {
  EXPECT_THAT(infoOf(mill), HasSubstr("DEF names:   2\n    Axle\n    Blade\n"));
}

TEST(Info, TellsTimeAndMemory) {
  std::string const info = infoOf(mill);
  EXPECT_THAT(info, ContainsRegex("read in:     [0-9]+\\.[0-9]+ s\n"));
  EXPECT_THAT(info, ContainsRegex("peak memory: [0-9]+\\.[0-9] MB\n"));
}

TEST(Info, AnEmptySceneHasNothing) {
  std::string const info = infoOf("#VRML V2.0 utf8\n");
  EXPECT_THAT(info, HasSubstr("shapes:      0\n"));
  EXPECT_THAT(info, HasSubstr("bounds:      empty\n"));
  EXPECT_THAT(info, HasSubstr("DEF names:   0\n"));
}

TEST(Info, CountsTheTrianglesOfEachGeometry) {
  EXPECT_EQ(trianglesOf("Box { }"), "12");
  EXPECT_EQ(trianglesOf("Sphere { }"), "200");
  EXPECT_EQ(trianglesOf("Cone { bottom FALSE }"), "64");
  EXPECT_EQ(trianglesOf("Cylinder { side FALSE }"), "60");
  EXPECT_EQ(trianglesOf("TriSet { primCount 7 }"), "7");
  EXPECT_EQ(trianglesOf("QuadSet { primCount 7 }"), "14");
  EXPECT_EQ(trianglesOf("PolySet { primCount 2 polyLength [ 3 6 9 ] }"), "5");
  EXPECT_EQ(trianglesOf("TriStripSet { primCount 3 stripLength [ 1 5 ] }"), "3");
  EXPECT_EQ(trianglesOf("LineSet { primCount 7 }"), "0");
  EXPECT_EQ(trianglesOf("IndexedFaceSet { coord Coordinate { point [ 0 0 0 1 0 0 1 1 0 0 1 0 ] }"
                        " coordIndex [ 0 1 2 3 -1 0 1 2 -1 ] }"),
            "3");
}

TEST(Info, ManySharedLevelsAreMultiplied) {
  std::string text = "#VRML V2.0 utf8\nDEF G0 Shape { geometry Box { } }\n";
  for (int i = 1; i <= 20; i++) {
    std::string const below = "USE G" + std::to_string(i - 1) + " ";
    text += "DEF G" + std::to_string(i) + " Group { children [ " + below + below + "] }\n";
  }
  // Level i stands at the top too, and draws the box 2^i times: in all 2^21 - 1 times.
  EXPECT_THAT(infoOf(text), HasSubstr("shapes:      2097151\n  triangles:   25165812\n"));
}

TEST(Info, JsonHasAnObjectForOneFile) {
  std::string const info = infoOf(mill, true);
  EXPECT_THAT(info, StartsWith("{\n  \"file\": \""));
  EXPECT_THAT(info, HasSubstr("\"nodes\": {\n    \"Appearance\": 1,\n    \"Box\": 1,\n    \"Shape\": 1,\n    "
                              "\"Transform\": 4\n  },"));
  EXPECT_THAT(info, HasSubstr("\"shapes\": 3,\n  \"triangles\": 36,\n"));
  EXPECT_THAT(info, HasSubstr("\"bounds\": {\"min\": [-11, -1, -1], \"max\": [11, 11, 1]},\n"));
  EXPECT_THAT(info, HasSubstr("\"defNames\": [\"Axle\", \"Blade\"],\n"));
  EXPECT_THAT(info, ContainsRegex("\"readSeconds\": [0-9]+\\.[0-9]+,\n  \"peakMemoryBytes\": [0-9]+\n}\n"));
}

TEST(Info, JsonOfAnEmptySceneHasNoBounds) {
  EXPECT_THAT(infoOf("#VRML V2.0 utf8\n", true), HasSubstr("\"bounds\": null,\n"));
}

TEST(Info, JsonHasAnArrayForSeveralFiles) {
  ViewerRun const run({model("solids"), model("groups"), "--info", "--json"});
  EXPECT_EQ(run.status, 0);
  EXPECT_THAT(run.out, StartsWith("[{\n"));
  EXPECT_THAT(run.out, HasSubstr("\n},\n{\n"));
  EXPECT_THAT(run.out, testing::EndsWith("\n}]\n"));
}

TEST(Info, JsonEscapesFileNames) {
  Folder const folder;
  ViewerRun const run({folder.write("a\"b\\c\n.wrl", "#VRML V2.0 utf8\n"), "--info", "--json"});
  EXPECT_EQ(run.status, 0);
  EXPECT_THAT(run.out, HasSubstr("a\\\"b\\\\c\\u000a.wrl\","));
}

TEST(Info, ASharedFileIsToldInFull) {
  if (!hasSharedFiles()) GTEST_SKIP() << "SKIPPED: no real files beside this checkout";
  ViewerRun const run({sharedFile("Rollers.wrl"), "--info"});
  EXPECT_EQ(run.status, 0);
  EXPECT_THAT(run.out, HasSubstr("     1 Cylinder\n"));
  EXPECT_THAT(run.out, HasSubstr("    Column\n"));
}
