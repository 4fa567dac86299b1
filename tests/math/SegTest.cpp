#include "math/approx.h"
#include "oz/ozSeg.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

void expectSeg(ozSeg const &s, ozVec3f const &origin, ozVec3f const &direction, float length) {
  EXPECT_TRUE(approx(s.getOrigin(), origin));
  EXPECT_TRUE(approx(s.getDirection(), direction));
  EXPECT_NEAR(s.getLength(), length, 1e-5);
}

TEST(Seg, StartsWithoutOriginAndDirection) {
  ozSeg s;
  EXPECT_EQ(s.getOrigin(), ozVec3f());
  EXPECT_EQ(s.getDirection(), ozVec3f());
}

TEST(Seg, IsItsSevenNumbers) { EXPECT_EQ(sizeof(ozSeg), 28u); }

TEST(Seg, MembersAreSetAndReadAsTheyAre) {
  ozSeg s;
  s.setOrigin(ozVec3f(1, 2, 3));
  s.setDirection(ozVec3f(0, 0, 5)); // not normalised
  s.setLength(7);
  ozVec3f v;
  float x, y, z;
  s.getOrigin(v);
  EXPECT_EQ(v, ozVec3f(1, 2, 3));
  s.getOrigin(&x, &y, &z);
  EXPECT_EQ(ozVec3f(x, y, z), ozVec3f(1, 2, 3));
  s.getDirection(v);
  EXPECT_EQ(v, ozVec3f(0, 0, 5));
  s.getDirection(&x, &y, &z);
  EXPECT_EQ(ozVec3f(x, y, z), ozVec3f(0, 0, 5));
  EXPECT_EQ(s.getLength(), 7);
  s.setOrigin(4, 5, 6);
  s.setDirection(0, 9, 0);
  expectSeg(s, ozVec3f(4, 5, 6), ozVec3f(0, 9, 0), 7);
}

TEST(Seg, MakePtsGoesFromOnePointToAnother) {
  ozSeg s;
  s.makePts(ozVec3f(1, 1, 1), ozVec3f(1, 4, 5));
  expectSeg(s, ozVec3f(1, 1, 1), ozVec3f(0, 0.6f, 0.8f), 5);
  s.makePts(ozVec3f(), s.getOrigin()); // from its own members
  expectSeg(s, ozVec3f(), ozVec3f(1, 1, 1) /= std::sqrt(3.0f), std::sqrt(3.0f));
}

TEST(Seg, FromAPointToItselfHasNoDirectionAndNoLength) {
  ozSeg s;
  s.makePts(ozVec3f(1, 2, 3), ozVec3f(1, 2, 3));
  expectSeg(s, ozVec3f(1, 2, 3), ozVec3f(), 0);
}

TEST(Seg, ClipMeasuresByTheDirectionAsItIs) {
  ozSeg s, part;
  s.setDirection(0, 0, 2);
  s.setLength(10);
  part.clip(&s, 3, 4);
  expectSeg(part, ozVec3f(0, 0, 6), ozVec3f(0, 0, 2), 1);
}

TEST(Seg, MakePolarLooksAlongHeadingAndPitch) {
  ozSeg s;
  s.makePolar(ozVec3f(1, 2, 3), 0, 0, 4);
  expectSeg(s, ozVec3f(1, 2, 3), ozVec3f(0, 1, 0), 4);
  s.makePolar(ozVec3f(1, 2, 3), 0.5f, 0.25f, 4);
  double h = 0.5, p = 0.25;
  expectSeg(s, ozVec3f(1, 2, 3), ozVec3f(-std::sin(h) * std::cos(p), std::cos(h) * std::cos(p), std::sin(p)), 4);
}

TEST(Seg, ClipTakesAPart) {
  ozSeg s, part;
  s.makePts(ozVec3f(1, 1, 1), ozVec3f(1, 1, 11));
  part.clip(&s, 2, 5);
  expectSeg(part, ozVec3f(1, 1, 3), ozVec3f(0, 0, 1), 3);
  s.clip(&s, 2, 5);
  expectSeg(s, ozVec3f(1, 1, 3), ozVec3f(0, 0, 1), 3);
}

} // namespace
