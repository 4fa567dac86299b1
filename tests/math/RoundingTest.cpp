// Every intermediate float is rounded as IEEE single, at whatever level the library is optimised: the results are bit
// for bit those of the same formula with each step forced through memory.
#include "oz/ozBound.h"
#include "oz/ozRotation.h"
#include "oz/ozSeg.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

// A float that goes through memory at every step.
struct Stored {
  volatile float value;
  Stored(float v) : value(v) {}
  Stored(Stored const &other) : value(other.value) {}
  Stored &operator=(Stored const &) = delete;
  operator float() const { return value; }
};
Stored operator+(Stored const &a, Stored const &b) { return Stored(a.value + b.value); }
Stored operator-(Stored const &a, Stored const &b) { return Stored(a.value - b.value); }
Stored operator*(Stored const &a, Stored const &b) { return Stored(a.value * b.value); }
Stored operator/(Stored const &a, Stored const &b) { return Stored(a.value / b.value); }
Stored root(Stored const &a) {
  volatile double wide = a.value;
  volatile double result = std::sqrt(wide);
  return Stored(static_cast<float>(result));
}

class Rounding : public testing::Test {
protected:
  float number() {
    _seed = _seed * 6364136223846793005ull + 1442695040888963407ull;
    return static_cast<float>(static_cast<int>(_seed >> 40) - (1 << 23)) / (1 << 20);
  }
  ozVec3f vector() {
    float x = number(), y = number();
    return ozVec3f(x, y, number());
  }
  static Stored dot(ozVec3f const &a, ozVec3f const &b) {
    return Stored(a[0]) * Stored(b[0]) + Stored(a[1]) * Stored(b[1]) + Stored(a[2]) * Stored(b[2]);
  }

  static int const ROUNDS = 5000;

private:
  unsigned long long _seed = 2024;
};

TEST_F(Rounding, OfLengthsAndDistances) {
  for (int i = 0; i < ROUNDS; i++) {
    ozVec3f a = vector(), b = vector();
    ASSERT_EQ(a.length(), root(dot(a, a)));
    ozVec3f d(Stored(a[0]) - Stored(b[0]), Stored(a[1]) - Stored(b[1]), Stored(a[2]) - Stored(b[2]));
    ASSERT_EQ(a.sqrDistance(b), dot(d, d));
    ASSERT_EQ(a.distance(b), root(dot(d, d)));
    ozVec3f n = a;
    n.normalize();
    Stored reciprocal = Stored(1) / root(dot(a, a));
    for (int k = 0; k < 3; k++) ASSERT_EQ(n[k], Stored(a[k]) * reciprocal);
  }
}

TEST_F(Rounding, OfTransforms) {
  for (int i = 0; i < ROUNDS; i++) {
    ozMatrix4f a, b, m;
    for (int k = 0; k < 12; k++) a[k / 3][k % 3] = number(), b[k / 3][k % 3] = number();
    ozVec3f v = vector(), p;
    p.xformPt(v, a);
    m.mult(a, b);
    for (int j = 0; j < 3; j++) {
      ozVec3f column(a[0][j], a[1][j], a[2][j]), other(b[0][j], b[1][j], b[2][j]);
      ASSERT_EQ(p[j], dot(v, column) + Stored(a[3][j]));
      for (int k = 0; k < 4; k++) {
        Stored sum = dot(ozVec3f(a[k]), other);
        ASSERT_EQ(m[k][j], k < 3 ? sum : sum + Stored(b[3][j]));
      }
    }
  }
}

TEST_F(Rounding, OfQuaternions) {
  for (int i = 0; i < ROUNDS; i++) {
    float angle = number();
    ozVec3f axis = vector();
    ozVec4f q;
    q.qInit(axis, angle);
    Stored length = root(dot(axis, axis));
    volatile double half = static_cast<double>(angle) * 0.5;
    Stored w(static_cast<float>(std::cos(half)));
    volatile double wide = w.value, rest = 1.0 - wide * wide;
    volatile double s = std::sqrt(rest);
    Stored sine(static_cast<float>(s));
    for (int k = 0; k < 3; k++) ASSERT_EQ(q[k], Stored(axis[k]) / length * sine * length);
    ASSERT_EQ(q[3], w * length);

    ozRotation r(axis, angle);
    ozVec3f unit;
    r.getAxis(unit);
    r.get(q);
    volatile double turn = r.getAngle() * 0.5;
    Stored sinus(static_cast<float>(std::sin(turn)));
    for (int k = 0; k < 3; k++) {
      ASSERT_EQ(unit[k], Stored(axis[k]) / length);
      ASSERT_EQ(q[k], Stored(unit[k]) * sinus);
    }
  }
}

TEST_F(Rounding, OfSpheres) {
  for (int i = 0; i < ROUNDS; i++) {
    ozSphereBound s(number(), number(), number(), std::fabs(number()));
    ozSeg seg;
    ozVec3f end = vector();
    seg.makePts(vector(), end);
    float t0, t1;
    if (s.isect(&seg, &t0, &t1) != 3) continue;
    ozVec3f const &o = seg.getOrigin();
    ozVec3f oc(Stored(o[0]) - Stored(s.center[0]), Stored(o[1]) - Stored(s.center[1]),
               Stored(o[2]) - Stored(s.center[2]));
    Stored b = Stored(2) * dot(seg.getDirection(), oc);
    Stored d = root(b * b - Stored(4) * (dot(oc, oc) - Stored(s.radius) * Stored(s.radius)));
    ASSERT_EQ(t0, (Stored(-b) - d) / Stored(2));
    ASSERT_EQ(t1, (d - b) / Stored(2));
  }
}

} // namespace
