// What culling computes with several numbers at once, against the rules in their scalar form: the same to the bit.

#include "oz/ozFrustum.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

namespace {

int const CASES = 1000000;

class Random {
public:
  float from(float low, float high) { return std::uniform_real_distribution<float>(low, high)(_engine); }
  int below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(_engine); }
  // Now and then a number at the edge of what there is.
  float odd(float low, float high) {
    float const numbers[] = {0.0f,
                             -0.0f,
                             1e-40f,
                             1e30f,
                             -1e30f,
                             std::numeric_limits<float>::max(),
                             std::numeric_limits<float>::infinity(),
                             -std::numeric_limits<float>::infinity(),
                             std::numeric_limits<float>::quiet_NaN()};
    return below(50) ? from(low, high) : numbers[below(9)];
  }
  ozVec3f vector(float size) {
    float const x = from(-size, size), y = from(-size, size);
    return ozVec3f(x, y, from(-size, size));
  }
  ozMatrix4f matrix() {
    ozMatrix4f m;
    ozVec3f const axis = vector(1), scale = vector(2), place = vector(50);
    m.makeRot(axis[0], axis[1], axis[2], from(-7, 7));
    m.preScale(scale[0], scale[1], scale[2], m);
    m.postTrans(m, place[0], place[1], place[2]);
    return m;
  }
  // Mostly a box as it should be, seldom an empty or a broken one.
  ozBoxBound box() {
    ozBoxBound b;
    for (int i = 0; i < 3; i++) {
      float const low = odd(-60, 60);
      b.min[i] = low;
      b.max[i] = below(40) ? low + from(0, below(2) ? 2.0f : 80.0f) : odd(-60, 60);
    }
    return b;
  }

private:
  std::mt19937 _engine{7};
};

bool sameBits(float a, float b) { return !memcmp(&a, &b, sizeof a) || (std::isnan(a) && std::isnan(b)); }

ozBoxBound movedByRule(ozBoxBound const &box, ozMatrix4f const &m) {
  ozBoxBound moved;
  for (int j = 0; j < 3; j++) {
    volatile float low = m[3][j], high = low;
    for (int i = 0; i < 3; i++) {
      float const a = box.min[i] * m[i][j], b = box.max[i] * m[i][j];
      low = low + (b > a ? a : b);
      high = high + (b > a ? b : a);
    }
    moved.min[j] = low;
    moved.max[j] = high;
  }
  return moved;
}

// The planes of a frustum of either kind, as its rules give them.
struct Planes {
  ozPlane at[6];
  explicit Planes(ozFrustum const &f) {
    float left, right, bottom, top, near, far;
    f.getDiagCorners(left, right, bottom, top, near, far);
    bool const ortho = f.getFrustType() == ozFrustum::ORTHOGRAPHIC;
    float const sides[6][4] = {{ortho ? -1 : -near, 0, ortho ? 0 : -left, ortho ? -left : 0},
                               {ortho ? 1 : near, 0, ortho ? 0 : right, ortho ? right : 0},
                               {0, 0, 1, -near},
                               {0, 0, -1, far},
                               {0, ortho ? -1 : -near, ortho ? 0 : -bottom, ortho ? -bottom : 0},
                               {0, ortho ? 1 : near, ortho ? 0 : top, ortho ? top : 0}};
    for (int i = 0; i < 6; i++) {
      at[i].normal.set(sides[i][0], sides[i][1], sides[i][2]);
      at[i].normal.normalize();
      at[i].offset = sides[i][3];
    }
  }
  int contains(ozBoxBound const &box) const {
    int result = 7;
    for (ozPlane const &plane : at)
      if (!(result &= plane.contains(&box))) return 0;
    if (box.min[0] > box.max[0]) return 0;
    return result > 3 ? result : result & ~2;
  }
};

ozFrustum frustum(Random &random) {
  ozFrustum f;
  float const left = random.from(-3, 1), bottom = random.from(-3, 1);
  if (random.below(2))
    f.makePersp(left, left + random.from(0.1f, 5), bottom, bottom + random.from(0.1f, 5));
  else
    f.makeOrtho(20 * left, 20 * left + random.from(1, 90), 20 * bottom, 20 * bottom + random.from(1, 90));
  f.setNearFar(random.from(0.5f, 5), random.from(20, 120));
  return f;
}

} // namespace

TEST(Culling, AMillionBoxesMoveAsTheRuleSays) {
  Random random;
  for (int i = 0; i < CASES; i++) {
    ozBoxBound const box = random.box();
    ozMatrix4f const m = random.matrix();
    ozBoxBound moved;
    moved.xform(&box, m);
    ozBoxBound const expected = movedByRule(box, m);
    for (int j = 0; j < 3; j++) {
      ASSERT_TRUE(sameBits(moved.min[j], expected.min[j])) << i << ": " << moved.min[j] << " " << expected.min[j];
      ASSERT_TRUE(sameBits(moved.max[j], expected.max[j])) << i << ": " << moved.max[j] << " " << expected.max[j];
    }
  }
}

TEST(Culling, ABoxMayBeMovedOntoItself) {
  Random random;
  for (int i = 0; i < 1000; i++) {
    ozBoxBound box = random.box();
    ozMatrix4f const m = random.matrix();
    ozBoxBound const expected = movedByRule(box, m);
    box.xform(&box, m);
    ASSERT_TRUE(sameBits(box.min[0], expected.min[0]) && sameBits(box.max[2], expected.max[2]));
  }
}

TEST(Culling, AMillionBoxesMeetTheFrustumAsItsPlanesSay) {
  Random random;
  int results[8] = {};
  for (int i = 0; i < CASES / 100; i++) {
    ozFrustum const f = frustum(random);
    Planes const planes(f);
    for (int k = 0; k < 100; k++) {
      ozBoxBound const box = random.box();
      int const expected = planes.contains(box);
      ASSERT_EQ(f.contains(&box), expected) << i << " " << k;
      results[expected]++;
    }
  }
  for (int common : {0, 1, 7}) EXPECT_GT(results[common], CASES / 1000) << common;
}

TEST(Culling, ABoxThatIsMovedOnTheWayMeetsTheFrustumAsTheMovedBoxDoesAndAnEmptyOneIsOutside) {
  Random random;
  for (int i = 0; i < CASES / 100; i++) {
    ozFrustum const f = frustum(random);
    for (int k = 0; k < 100; k++) {
      ozBoxBound const box = random.box();
      ozMatrix4f const m = random.matrix();
      ozBoxBound const moved = movedByRule(box, m);
      ASSERT_EQ(f.containsMoved(box, m), box.isEmpty() ? 0 : f.contains(&moved)) << i << " " << k;
    }
  }
}

TEST(Culling, MatricesMultiplyAsTheRuleSays) {
  Random random;
  for (int i = 0; i < CASES / 10; i++) {
    ozMatrix4f const a = random.matrix(), b = random.matrix();
    ozMatrix4f product;
    product.mult(a, b);
    for (int row = 0; row < 4; row++) {
      for (int col = 0; col < 3; col++) {
        volatile float expected = a[row][0] * b[0][col];
        expected = expected + a[row][1] * b[1][col];
        expected = expected + a[row][2] * b[2][col];
        if (row == 3) expected = expected + b[3][col];
        ASSERT_TRUE(sameBits(product[row][col], expected)) << i;
      }
      ASSERT_EQ(product[row][3], row == 3);
    }
  }
}

TEST(Culling, PointsAndVectorsMoveAsTheRuleSays) {
  Random random;
  for (int i = 0; i < CASES / 10; i++) {
    ozMatrix4f const m = random.matrix();
    ozVec3f const v(random.odd(-9, 9), random.odd(-9, 9), random.odd(-9, 9));
    ozVec3f point, vector = v;
    point.xformPt(v, m);
    vector.xformVec(vector, m);
    for (int j = 0; j < 3; j++) {
      volatile float expected = v[0] * m[0][j];
      expected = expected + v[1] * m[1][j];
      expected = expected + v[2] * m[2][j];
      ASSERT_TRUE(sameBits(vector[j], expected)) << i;
      expected = expected + m[3][j];
      ASSERT_TRUE(sameBits(point[j], expected)) << i;
    }
  }
}
