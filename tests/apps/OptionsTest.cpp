#include "ozview/Options.h"
#include <gtest/gtest.h>

namespace {

struct Parsed : Options {
  explicit Parsed(std::vector<std::string> words) {
    words.insert(words.begin(), "ozview");
    std::vector<char *> argv;
    for (std::string &word : words) argv.push_back(&word[0]);
    argv.push_back(nullptr);
    verdict = parse(static_cast<int>(words.size()), argv.data(), fault);
  }
  Verdict verdict;
  std::string fault;
};

typedef std::vector<std::string> Words;

} // namespace

TEST(Options, WithoutAFileTheCommandLineIsWrong) {
  Parsed const parsed({});
  EXPECT_EQ(parsed.verdict, Options::WRONG);
  EXPECT_EQ(parsed.fault, "no FILE is given");
}

TEST(Options, AFileAloneAsksForAWindowOf800By600) {
  Parsed const parsed({"a.wrl"});
  EXPECT_EQ(parsed.verdict, Options::RUN);
  EXPECT_EQ(parsed.files, Words{"a.wrl"});
  EXPECT_FALSE(parsed.isBatch());
  EXPECT_EQ(parsed.width, 800);
  EXPECT_EQ(parsed.height, 600);
  EXPECT_EQ(parsed.time, 0);
}

TEST(Options, FilesAndOptionsMayComeInAnyOrder) {
  Parsed const parsed({"a.wrl", "--info", "b.wrl", "--output", "o.png", "c.wrl"});
  EXPECT_EQ(parsed.verdict, Options::RUN);
  EXPECT_EQ(parsed.files, (Words{"a.wrl", "b.wrl", "c.wrl"}));
  EXPECT_TRUE(parsed.info);
  EXPECT_EQ(parsed.output, "o.png");
}

TEST(Options, WordsBehindTwoDashesAreFiles) {
  Parsed const parsed({"--info", "--", "--odd.wrl", "-"});
  EXPECT_EQ(parsed.verdict, Options::RUN);
  EXPECT_EQ(parsed.files, (Words{"--odd.wrl", "-"}));
}

TEST(Options, SizeViewTimeAndBackgroundAreRead) {
  Parsed const parsed({"a.wrl", "--size", "320x200", "--view", "-45,10.5", "--time", "2.5", "--background", "1,0.5,0"});
  EXPECT_EQ(parsed.verdict, Options::RUN);
  EXPECT_EQ(parsed.width, 320);
  EXPECT_EQ(parsed.height, 200);
  EXPECT_EQ(parsed.azimuth, -45);
  EXPECT_EQ(parsed.elevation, 10.5f);
  EXPECT_EQ(parsed.time, 2.5);
  EXPECT_EQ(parsed.background[0], 1);
  EXPECT_EQ(parsed.background[1], 0.5f);
  EXPECT_EQ(parsed.background[2], 0);
}

TEST(Options, ATurnOfMoreThanARoundIsTheSameView) { EXPECT_EQ(Parsed({"a.wrl", "--view", "370,0"}).azimuth, 10); }

TEST(Options, ValuesOutOfRangeAreWrong) {
  for (Words const &words :
       {Words{"--size", "0x10"}, Words{"--size", "10"}, Words{"--size", "10x"}, Words{"--size", "10x10x10"},
        Words{"--size", "16385x1"}, Words{"--size", "-5x5"}, Words{"--view", "1"}, Words{"--view", "1,91"},
        Words{"--view", "1,2,3"}, Words{"--view", "a,b"}, Words{"--view", "nan,0"}, Words{"--time", "-1"},
        Words{"--time", "soon"}, Words{"--time", "inf"}, Words{"--time", ""}, Words{"--background", "1,1"},
        Words{"--background", "1,1,1.5"}, Words{"--background", "-1,0,0"}, Words{"--output", ""}}) {
    Parsed const parsed({"a.wrl", words[0], words[1]});
    EXPECT_EQ(parsed.verdict, Options::WRONG) << words[0] << " " << words[1];
    EXPECT_FALSE(parsed.fault.empty());
  }
}

TEST(Options, WhatIsWrongIsNamed) {
  EXPECT_EQ(Parsed({"a.wrl", "--size", "big"}).fault, "--size takes WxH, each from 1 to 16384, not \"big\"");
  EXPECT_EQ(Parsed({"a.wrl", "--sise", "5x5"}).fault, "no such option: \"--sise\"");
  EXPECT_EQ(Parsed({"a.wrl", "--output"}).fault, "an argument is missing for \"--output\"");
}

TEST(Options, AudioIsForTheWindow) {
  EXPECT_FALSE(Parsed({"a.wrl"}).audio);
  EXPECT_TRUE(Parsed({"a.wrl", "--audio"}).audio);
  for (char const *batch : {"--info", "--write", "--output=o.png"}) {
    Parsed const parsed({"a.wrl", "--audio", batch});
    EXPECT_EQ(parsed.verdict, Options::WRONG) << batch;
    EXPECT_EQ(parsed.fault, "--audio goes with the window");
  }
}

TEST(Options, JsonWithoutInfoIsWrong) {
  EXPECT_EQ(Parsed({"a.wrl", "--json"}).verdict, Options::WRONG);
  EXPECT_EQ(Parsed({"a.wrl", "--json", "--info"}).verdict, Options::RUN);
}

TEST(Options, HelpAndVersionNeedNoFile) {
  EXPECT_EQ(Parsed({"--help"}).verdict, Options::HELP);
  EXPECT_EQ(Parsed({"-h"}).verdict, Options::HELP);
  EXPECT_EQ(Parsed({"--version"}).verdict, Options::VERSION);
}

TEST(Options, TheWordBehindWriteIsOutWhenAFileComesAhead) {
  Parsed const parsed({"a.wrl", "--write", "b.wrl"});
  EXPECT_TRUE(parsed.write);
  EXPECT_EQ(parsed.writeTo, "b.wrl");
  EXPECT_EQ(parsed.files, Words{"a.wrl"});
}

TEST(Options, TheWordBehindWriteIsOutWhenItIsNoModel) {
  Parsed const parsed({"--write", "out.txt", "a.wrl"});
  EXPECT_EQ(parsed.writeTo, "out.txt");
  EXPECT_EQ(parsed.files, Words{"a.wrl"});
}

TEST(Options, AModelBehindALeadingWriteIsAFile) {
  Parsed const parsed({"--write", "a.WRL", "b.wrl"});
  EXPECT_TRUE(parsed.write);
  EXPECT_EQ(parsed.writeTo, "");
  EXPECT_EQ(parsed.files, (Words{"a.WRL", "b.wrl"}));
}

TEST(Options, WriteTakesOutBehindAnEqualsSign) {
  Parsed const parsed({"--write=copy.wrl", "a.wrl"});
  EXPECT_EQ(parsed.writeTo, "copy.wrl");
  EXPECT_EQ(parsed.files, Words{"a.wrl"});
}

TEST(Options, WriteWithoutOutWritesToTheStandardOutput) {
  EXPECT_EQ(Parsed({"a.wrl", "--write"}).writeTo, "");
  EXPECT_EQ(Parsed({"a.wrl", "--write", "-"}).writeTo, "");
  EXPECT_EQ(Parsed({"a.wrl", "--write", "--info"}).writeTo, "");
  EXPECT_TRUE(Parsed({"a.wrl", "--write", "--info"}).info);
}

TEST(Options, TheHelpTellsOfEveryOption) {
  std::string const help = Options::usage();
  for (char const *option : {"--output", "--size", "--time", "--view", "--background", "--info", "--json", "--write",
                             "--help", "--version", "OZ_DATAFILE_PATH", "Exit status"})
    EXPECT_NE(help.find(option), std::string::npos) << option;
}
