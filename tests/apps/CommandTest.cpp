// Exit statuses and messages of the program.

#include "program.h"
#include "support/image.h"
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

using testing::HasSubstr;
using testing::StartsWith;

TEST(Command, WrongUsageEndsWithTwoAndPointsToTheHelp) {
  for (std::vector<std::string> const &arguments :
       {std::vector<std::string>{}, {"--nonsense"}, {model("solids"), "--size", "3"}, {"--output"}}) {
    ViewerRun const run(arguments);
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_THAT(run.err, StartsWith("ozview: "));
    EXPECT_THAT(run.err, HasSubstr("Try 'ozview --help'.\n"));
  }
}

TEST(Command, HelpGoesToTheStandardOutput) {
  ViewerRun const run({"--help"});
  EXPECT_EQ(run.status, 0);
  EXPECT_THAT(run.out, StartsWith("Usage: ozview [OPTION]... FILE...\n"));
  EXPECT_EQ(run.err, "");
}

TEST(Command, TheVersionIsTheLibrarys) {
  ViewerRun const run({"--version"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "ozview of OzScene3D 1.0.0\n");
}

TEST(Command, AMissingFileEndsWithOneAndTheReason) {
  ViewerRun const run({"/nowhere/none.wrl", "--info"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err, "ozview: /nowhere/none.wrl: No such file or directory\n");
}

TEST(Command, AFolderIsNoFile) {
  ViewerRun const run({"/tmp", "--info"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "ozview: /tmp: Is a directory\n");
}

TEST(Command, APipeIsNoFileAndDoesNotHang) {
  Folder const folder;
  ASSERT_EQ(mkfifo((folder / "pipe.wrl").c_str(), 0600), 0);
  ViewerRun const run({folder / "pipe.wrl", "--info"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "ozview: " + (folder / "pipe.wrl") + ": not a regular file\n");
}

TEST(Command, AFileWithoutTheHeaderEndsWithOneAndASingleLine) {
  for (char const *text : {"#VRML V1.0 ascii\nSeparator { }\n", "not a model at all { } [ ]\n", "", "\0\1\2"}) {
    Folder const folder;
    ViewerRun const run({folder.write("old.wrl", text), "--info"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, "ozview: " + folder.path + "/old.wrl" +
                           ": no VRML 2.0 file: its first line does not say \"#VRML V2.0 utf8\"\n");
  }
}

TEST(Command, AFileOfWhichNothingIsReadEndsWithOne) {
  Folder const folder;
  ViewerRun const run({folder.write("refused.wrl", "#VRML V2.0 utf8\nScript { }\n"), "--info"});
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.err, HasSubstr("Unsupported class \"Script\""));
  EXPECT_THAT(run.err, HasSubstr("refused.wrl: nothing in it can be shown\n"));
}

TEST(Command, OneUnreadableFileOfSeveralEndsWithOne) {
  ViewerRun const run({model("solids"), "/nowhere/none.wrl", "--info"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.out, "");
}

TEST(Command, AFileThatHoldsRefusedNodesAmongOthersIsRead) {
  Folder const folder;
  ViewerRun const run(
      {folder.write("some.wrl", "#VRML V2.0 utf8\nShape { geometry Box { } }\nViewpoint { }\n"), "--info"});
  EXPECT_EQ(run.status, 0);
  EXPECT_THAT(run.err, HasSubstr("Unsupported class \"Viewpoint\""));
  EXPECT_THAT(run.out, HasSubstr("triangles:   12\n"));
}

TEST(Command, AnUnwritablePictureEndsWithOneAndTheReason) {
  ViewerRun const run({model("solids"), "--output", "/nowhere/out.png", "--size", "20x20"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "ozview: /nowhere/out.png: No such file or directory\n");
}

TEST(Command, AnUnwritableGraphEndsWithOneAndTheReason) {
  ViewerRun const run({model("solids"), "--write=/nowhere/out.wrl"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "ozview: /nowhere/out.wrl: No such file or directory\n");
}

TEST(Command, WithoutADisplayTheSceneIsDrawnIntoAPng) {
  Program program({model("solids"), "--size", "60x40"});
  EXPECT_EQ(program.wait(), 0);
  EXPECT_EQ(program.out(), "There is no display: the picture is in solids.png\n");
  Image const picture = Image::readPng(program.folder / "solids.png");
  EXPECT_EQ(picture.width(), 60);
  EXPECT_EQ(picture.height(), 40);
}

TEST(Command, SeveralTasksAreDoneInOneRun) {
  Folder const folder;
  ViewerRun const run({model("solids"), "--info", "--write=" + (folder / "out.wrl"), "--output", folder / "out.png",
                       "--size", "40x30"});
  EXPECT_EQ(run.status, 0);
  EXPECT_THAT(run.out, HasSubstr("triangles:   812\n"));
  EXPECT_THAT(textOf(folder / "out.wrl"), StartsWith("#VRML V2.0 utf8\n"));
  EXPECT_EQ(Image::readPng(folder / "out.png").width(), 40);
}
