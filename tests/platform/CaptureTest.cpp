#include "support/capture.h"
#include <cstdio>
#include <gtest/gtest.h>
#include <iostream>
#include <unistd.h>

TEST(Capture, HoldsWhatStdioAndStreamsAndDescriptorsWriteInOrder) {
  CaptureStderr errors;
  std::fprintf(stderr, "a%d\n", 1);
  std::cerr << "b2\n";
  EXPECT_EQ(write(2, "c3\n", 3), 3);
  EXPECT_EQ(errors.text(), "a1\nb2\nc3\n");
}

TEST(Capture, GoesOnAfterTheTextIsTaken) {
  CaptureStdout output;
  std::printf("one");
  EXPECT_EQ(output.text(), "one");
  std::printf(" two");
  EXPECT_EQ(output.text(), "one two");
}

TEST(Capture, KeepsTheTwoStreamsApart) {
  CaptureStdout output;
  EXPECT_EQ(stderrOf([] {
              std::fputs("wrong", stderr);
              std::puts("right");
            }),
            "wrong");
  EXPECT_EQ(output.text(), "right\n");
}

TEST(Capture, GivesTheStreamBackToTheCaptureAround) {
  CaptureStderr outer;
  EXPECT_EQ(stderrOf([] { std::fputs("inner", stderr); }), "inner");
  std::fputs("outer", stderr);
  EXPECT_EQ(outer.text(), "outer");
}

TEST(Capture, KeepsZeroBytesAndLongTexts) {
  std::string const longText(300000, 'x');
  EXPECT_EQ(stdoutOf([&] {
              std::fputs(longText.c_str(), stdout);
              std::fputc(0, stdout);
            }),
            longText + std::string(1, '\0'));
}
