// The text forms of the value classes.
#include "oz/ozBitMask.h"
#include "oz/ozBound.h"
#include "oz/ozOutput.h"
#include "oz/ozRotation.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// What write() puts on the stream, at an indentation.
template <class Value> std::string written(Value const &value, int indent = 0) {
  char *text = nullptr;
  size_t size = 0;
  FILE *file = open_memstream(&text, &size);
  {
    ozOutput output(file);
    for (int i = 0; i < indent; i++) output.pushIndent();
    value.write(&output);
  }
  fclose(file);
  std::string result(text, size);
  free(text);
  return result;
}

TEST(Write, FloatsHaveSixDecimals) {
  EXPECT_EQ(written(ozVec2f(1, -2.5f)), "1.000000 -2.500000");
  EXPECT_EQ(written(ozVec3f(1, 0, 3)), "1.000000 0.000000 3.000000");
  EXPECT_EQ(written(ozVec4f(1, 2, 3, 0.125f)), "1.000000 2.000000 3.000000 0.125000");
}

TEST(Write, IntegersAreDecimal) {
  EXPECT_EQ(written(ozVec2i(-1, 2147483647)), "-1 2147483647");
  EXPECT_EQ(written(ozVec2s(-1, 32767)), "-1 32767");
  EXPECT_EQ(written(ozVec3i(1, -2, 3)), "1 -2 3");
  EXPECT_EQ(written(ozVec3s(1, -2, 3)), "1 -2 3");
  EXPECT_EQ(written(ozVec3b(1, -2, 127)), "1 -2 127");
}

TEST(Write, UnsignedBytesAreHexadecimal) { EXPECT_EQ(written(ozVec4ub(0, 10, 128, 255)), "0x0 0xa 0x80 0xff"); }

TEST(Write, ABitMaskHasItsHighWordFirstAndTheLowOneUnpadded) {
  ozBitMask m;
  EXPECT_EQ(written(m), "0x00");
  m.setMask(0x0000001200000034);
  EXPECT_EQ(written(m), "0x1234");
  m.on();
  EXPECT_EQ(written(m), "0xffffffffffffffff");
}

TEST(Write, AMatrixIsFourIndentedLines) {
  ozMatrix4f m;
  m.makeTrans(2, 3, 4);
  std::string const rows[4] = {"1.000000 0.000000 0.000000 0.000000\n", "0.000000 1.000000 0.000000 0.000000\n",
                               "0.000000 0.000000 1.000000 0.000000\n", "2.000000 3.000000 4.000000 1.000000\n"};
  EXPECT_EQ(written(m), rows[0] + rows[1] + rows[2] + rows[3]);
  std::string const step = [] { // what one step of indentation looks like is the stream's matter
    char *text = nullptr;
    size_t size = 0;
    FILE *file = open_memstream(&text, &size);
    {
      ozOutput output(file);
      output.pushIndent();
      output.indent();
    }
    fclose(file);
    std::string result(text, size);
    free(text);
    return result;
  }();
  EXPECT_FALSE(step.empty());
  EXPECT_EQ(written(m, 1), step + rows[0] + step + rows[1] + step + rows[2] + step + rows[3]);
}

TEST(Write, ARotationIsItsAxisAndThenTheDegrees) {
  ozRotation r;
  r.setDegrees(0, 0, 2, 70);
  EXPECT_EQ(written(r), "0.000000 0.000000 1.000000 70.000000");
}

TEST(Write, BoundsAreTheirNumbers) {
  ozBoxBound b;
  b.extendBy(ozVec3f(1, 2, 3));
  b.extendBy(ozVec3f(4, 5, 6));
  EXPECT_EQ(written(b), "1.000000 2.000000 3.000000 4.000000 5.000000 6.000000");
  EXPECT_EQ(written(ozSphereBound(1, 2, 3, 4)), "1.000000 2.000000 3.000000 4.000000");
}

} // namespace
