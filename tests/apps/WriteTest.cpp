#include "program.h"
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::HasSubstr;
using testing::StartsWith;

namespace {

// A graph of classes and fields that the reader takes as they are written.
char const tree[] = "#VRML V2.0 utf8\n"
                    "DEF Place Transform {\n"
                    "  translation 1 2 3\n"
                    "  scale 2 2 2\n"
                    "  children [\n"
                    "    DEF Lamp PointLight { location 0 4 0 color 1 0.5 0.25 }\n"
                    "    Group { children [ USE Lamp Transform { center 1 0 0 } ] }\n"
                    "  ]\n"
                    "}\n"
                    "TimeSensor { cycleInterval 4 loop TRUE }\n";

} // namespace

TEST(Write, WritesAGraphThatReadsBackTheSame) {
  Folder const folder;
  std::string const first = folder.write("tree.wrl", tree);
  ASSERT_EQ(ViewerRun({first, "--write=" + (folder / "second.wrl")}).status, 0);
  ViewerRun const again({folder / "second.wrl", "--write"});
  ASSERT_EQ(again.status, 0);
  EXPECT_EQ(again.err, "");
  EXPECT_EQ(again.out, textOf(folder / "second.wrl"));
}

TEST(Write, WritesNamesSharingAndValues) {
  Folder const folder;
  std::string const text = ViewerRun({folder.write("tree.wrl", tree), "--write"}).out;
  EXPECT_THAT(text, StartsWith("#VRML V2.0 utf8\n"));
  EXPECT_THAT(text, HasSubstr("DEF Place Transform {\n"));
  EXPECT_THAT(text, HasSubstr("translation 1"));
  EXPECT_THAT(text, HasSubstr("DEF Lamp PointLight {\n"));
  EXPECT_THAT(text, HasSubstr("USE Lamp"));
  EXPECT_THAT(text, HasSubstr("color 1"));
}

TEST(Write, TheReadBackGraphHoldsWhatTheFirstHeld) {
  Folder const folder;
  std::string const first = folder.write("tree.wrl", tree);
  ASSERT_EQ(ViewerRun({first, "--write=" + (folder / "second.wrl")}).status, 0);
  auto summary = [](std::string const &file) {
    std::string const info = ViewerRun({file, "--info", "--json"}).out;
    size_t const begin = info.find("\"nodes\""), end = info.find("\"readSeconds\"");
    return info.substr(begin, end - begin);
  };
  EXPECT_EQ(summary(folder / "second.wrl"), summary(first));
}

TEST(Write, SeveralFilesAreWrittenAsOneGraph) {
  Folder const folder;
  std::string const a = folder.write("a.wrl", "#VRML V2.0 utf8\nDEF A Group { }\n");
  std::string const b = folder.write("b.wrl", "#VRML V2.0 utf8\nDEF B Group { }\n");
  EXPECT_EQ(ViewerRun({a, b, "--write"}).out, "#VRML V2.0 utf8\n\nDEF A Group {\n}\nDEF B Group {\n}\n");
}
