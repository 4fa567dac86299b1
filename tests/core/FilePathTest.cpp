#include "oz/ozGlobal.h"
#include "support/capture.h"

#include <gtest/gtest.h>

#include <stdio.h>
#include <stdlib.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// A directory of its own for each test, the working directory while the test lasts, and no path of any kind.
class FilePath : public testing::Test {
protected:
  void SetUp() override {
    char made[] = "/tmp/oz-path-XXXXXX";
    ASSERT_NE(nullptr, mkdtemp(made));
    root = made;
    ASSERT_NE(nullptr, getcwd(before, sizeof before));
    ASSERT_EQ(0, chdir(made));
    unsetenv("OZ_DATAFILE_PATH");
    ozGlobal::setFilePath(nullptr);
  }

  void TearDown() override {
    unsetenv("OZ_DATAFILE_PATH");
    ozGlobal::setFilePath(nullptr);
    ASSERT_EQ(0, chdir(before));
    ASSERT_EQ(0, system(("rm -rf " + root).c_str()));
  }

  static void makeDirectory(char const *name) { ASSERT_EQ(0, mkdir(name, 0755)); }

  static void makeFile(char const *name, char const *text = "x") {
    FILE *file = fopen(name, "w");
    ASSERT_NE(nullptr, file) << name;
    fputs(text, file);
    fclose(file);
  }

  static bool exists(char const *name) { return access(name, F_OK) == 0; }

  // The result of a search, or "!" and what the result holds when nothing was found.
  static std::string find(char const *name, ozGlobal::FileModeEnum mode = ozGlobal::READ_FMODE) {
    ozString result("left over");
    bool found = ozGlobal::findFile(name, result, mode);
    std::string text = result.getString() ? result.getString() : "(null)";
    return found ? text : "!" + text;
  }

  std::string root;
  char before[4096];
};

TEST_F(FilePath, IsNullWhenNoneIsSet) { EXPECT_EQ(nullptr, ozGlobal::getFilePath()); }

TEST_F(FilePath, IsGivenAsItWasSet) {
  ozGlobal::setFilePath("a::b:");
  EXPECT_STREQ("a::b:", ozGlobal::getFilePath());
  ozGlobal::setFilePath("c");
  EXPECT_STREQ("c", ozGlobal::getFilePath());
}

TEST_F(FilePath, IsTakenAwayByNullOrEmpty) {
  ozGlobal::setFilePath("a");
  ozGlobal::setFilePath(nullptr);
  EXPECT_EQ(nullptr, ozGlobal::getFilePath());
  ozGlobal::setFilePath("a");
  ozGlobal::setFilePath("");
  EXPECT_EQ(nullptr, ozGlobal::getFilePath());
}

TEST_F(FilePath, CanBeSetToItself) {
  ozGlobal::setFilePath("a:b");
  ozGlobal::setFilePath(ozGlobal::getFilePath());
  EXPECT_STREQ("a:b", ozGlobal::getFilePath());
}

TEST_F(FilePath, KeepsItsOwnCopy) {
  char path[] = "one";
  ozGlobal::setFilePath(path);
  path[0] = 'X';
  EXPECT_STREQ("one", ozGlobal::getFilePath());
}

TEST_F(FilePath, HoldsMoreThanItsFirstRoom) {
  std::string path = "d0";
  for (int i = 1; i < 30; ++i) path += ":d" + std::to_string(i);
  makeDirectory("d29");
  makeFile("d29/f");
  ozGlobal::setFilePath(path.c_str());
  EXPECT_EQ("d29/f", find("f"));
}

TEST_F(FilePath, AFileIsFoundUnderItsNameAsItStands) {
  makeFile("f");
  EXPECT_EQ("f", find("f"));
  EXPECT_EQ(root + "/f", find((root + "/f").c_str()));
}

TEST_F(FilePath, NullAndEmptyNamesAreNotFoundAndEmptyTheResult) {
  EXPECT_EQ("!(null)", find(nullptr));
  EXPECT_EQ("!(null)", find(""));
  ozString result("kept");
  EXPECT_EQ(0, ozGlobal::findFilePath(nullptr, result, ozGlobal::READ_FMODE));
  EXPECT_EQ(0, ozGlobal::findFilePath("", result, ozGlobal::READ_FMODE));
}

TEST_F(FilePath, AFileIsFoundInADirectoryOfThePath) {
  makeDirectory("a");
  makeDirectory("b");
  makeFile("b/f");
  ozGlobal::setFilePath("a:b");
  EXPECT_EQ("b/f", find("f"));
}

TEST_F(FilePath, EarlierDirectoriesGoFirst) {
  makeDirectory("a");
  makeDirectory("b");
  makeFile("a/f");
  makeFile("b/f");
  ozGlobal::setFilePath("b:a");
  EXPECT_EQ("b/f", find("f"));
}

TEST_F(FilePath, TheNameAsItStandsGoesBeforeThePath) {
  makeDirectory("a");
  makeFile("a/f");
  makeFile("f");
  ozGlobal::setFilePath("a");
  EXPECT_EQ("f", find("f"));
}

TEST_F(FilePath, ASlashIsAddedOnlyWhereThereIsNone) {
  makeDirectory("a");
  makeFile("a/f");
  ozGlobal::setFilePath("a/");
  EXPECT_EQ("a/f", find("f"));
}

TEST_F(FilePath, EmptyPiecesAreLeftOut) { // an empty piece would try "/f"
  makeDirectory("a");
  ozGlobal::setFilePath("a::");
  EXPECT_EQ("!a/f", find("f"));
  makeFile("a/f");
  ozGlobal::setFilePath("::b::a:");
  EXPECT_EQ("a/f", find("f"));
}

TEST_F(FilePath, TheWholePathIsNoPiece) {
  makeDirectory("a:b");
  makeFile("a:b/f");
  ozGlobal::setFilePath("a:b");
  EXPECT_EQ("!b/f", find("f"));
}

TEST_F(FilePath, TheEnvironmentsPathIsSearched) {
  makeDirectory("e");
  makeFile("e/f");
  setenv("OZ_DATAFILE_PATH", "d::e", 1);
  EXPECT_EQ("e/f", find("f"));
  EXPECT_STREQ("d::e", getenv("OZ_DATAFILE_PATH")) << "only a copy is split";
}

TEST_F(FilePath, TheEnvironmentsPathGoesBeforeTheOneThatWasSet) {
  makeDirectory("e");
  makeDirectory("a");
  makeFile("e/f");
  makeFile("a/f");
  setenv("OZ_DATAFILE_PATH", "e", 1);
  ozGlobal::setFilePath("a");
  EXPECT_EQ("e/f", find("f"));
}

TEST_F(FilePath, BothPathsAreSearched) {
  makeDirectory("e");
  makeDirectory("a");
  makeFile("a/f");
  setenv("OZ_DATAFILE_PATH", "e", 1);
  ozGlobal::setFilePath("a");
  EXPECT_EQ("a/f", find("f"));
}

TEST_F(FilePath, ANameWithADirectoryIsFoundUnderThePath) {
  makeDirectory("a");
  makeDirectory("a/sub");
  makeFile("a/sub/f");
  ozGlobal::setFilePath("a");
  EXPECT_EQ("a/sub/f", find("sub/f"));
}

TEST_F(FilePath, ANameWithADirectoryIsAlsoFoundByItsLastComponentWithTheSlash) {
  makeDirectory("a");
  makeFile("a/f");
  ozGlobal::setFilePath("a");
  EXPECT_EQ("a//f", find("elsewhere/deep/f"));
}

TEST_F(FilePath, FindFilePathDoesNotTryTheLastComponent) {
  makeDirectory("a");
  makeFile("a/f");
  ozGlobal::setFilePath("a");
  ozString result;
  EXPECT_EQ(0, ozGlobal::findFilePath("elsewhere/f", result, ozGlobal::READ_FMODE));
  EXPECT_STREQ("a/elsewhere/f", result.getString());
  EXPECT_EQ(1, ozGlobal::findFilePath("f", result, ozGlobal::READ_FMODE));
  EXPECT_STREQ("a/f", result.getString());
}

TEST_F(FilePath, TheResultOfAFailureIsTheLastNameTried) {
  ozGlobal::setFilePath("a:b");
  EXPECT_EQ("!b/f", find("f"));
  EXPECT_EQ("!b//f", find("sub/f"));
  ozGlobal::setFilePath(nullptr);
  EXPECT_EQ("!f", find("f"));
}

TEST_F(FilePath, AFailurePrintsNothing) {
  EXPECT_EQ("", stderrOf([] { find("f"); }));
}

TEST_F(FilePath, ADirectoryIsNoDataFile) {
  makeDirectory("f");
  makeDirectory("a");
  makeDirectory("a/f");
  makeDirectory("b");
  makeFile("b/f");
  ozGlobal::setFilePath("a:b");
  EXPECT_EQ("b/f", find("f"));
  EXPECT_EQ("!b//", find("sub/"));
}

TEST_F(FilePath, APipeIsNoDataFile) { // opening one would wait for a writer
  ASSERT_EQ(0, mkfifo("f", 0644));
  EXPECT_EQ("!f", find("f"));
}

TEST_F(FilePath, ADeviceIsNoDataFileToRead) { // a terminal would wait for its user
  ozString result;
  for (auto mode : {ozGlobal::READ_FMODE, ozGlobal::READ_BINARY_FMODE, ozGlobal::READ_TEXT_FMODE})
    EXPECT_EQ(0, ozGlobal::findFile("/dev/null", result, mode));
  EXPECT_EQ(1, ozGlobal::findFile("/dev/null", result, ozGlobal::WRITE_FMODE));
}

TEST_F(FilePath, TheNameMayBeTheResultsOwnText) {
  makeDirectory("a");
  makeFile("a/f");
  ozGlobal::setFilePath("a");
  ozString result("f");
  EXPECT_EQ(1, ozGlobal::findFile(result.getString(), result, ozGlobal::READ_FMODE));
  EXPECT_STREQ("a/f", result.getString());
  result = "f";
  EXPECT_EQ(1, ozGlobal::findFilePath(result.getString(), result, ozGlobal::READ_FMODE));
  EXPECT_STREQ("a/f", result.getString());
  result = "elsewhere/f";
  EXPECT_EQ(1, ozGlobal::findFile(result.getString(), result, ozGlobal::READ_FMODE));
  EXPECT_STREQ("a//f", result.getString());
}

TEST_F(FilePath, WritingCreatesTheFileAtTheFirstPlaceTried) {
  makeDirectory("a");
  ozGlobal::setFilePath("a");
  EXPECT_EQ("f", find("f", ozGlobal::WRITE_FMODE));
  EXPECT_TRUE(exists("f"));
  EXPECT_FALSE(exists("a/f"));
  EXPECT_EQ("a/none/f", (makeDirectory("a/none"), find("none/f", ozGlobal::WRITE_FMODE)));
  EXPECT_TRUE(exists("a/none/f"));
}

TEST_F(FilePath, ReadingCreatesNothing) {
  EXPECT_EQ("!f", find("f"));
  EXPECT_EQ("!f", find("f", ozGlobal::READ_BINARY_FMODE));
  EXPECT_EQ("!f", find("f", ozGlobal::READ_TEXT_FMODE));
  EXPECT_FALSE(exists("f"));
}

TEST_F(FilePath, TheThreeReadingModesFindAlikeAndKeepTheContents) {
  makeFile("f", "contents");
  for (int mode : {0, 2, 3, -5, 9}) EXPECT_EQ("f", find("f", static_cast<ozGlobal::FileModeEnum>(mode))) << mode;
  struct stat status;
  ASSERT_EQ(0, stat("f", &status));
  EXPECT_EQ(8, status.st_size);
}

} // namespace
