// What the nine vector classes have in common.
#include "oz/ozVec2f.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>
#include <type_traits>
#include <utility>

namespace {

template <class V> class Vec : public testing::Test {
public:
  typedef typename std::decay<decltype(std::declval<V const &>()[0])>::type T;
  static constexpr int N = V::SIZE;

  // The vector (first, first + step, ...).
  static V row(int first, int step = 1) {
    T values[4];
    for (int i = 0; i < 4; i++) values[i] = static_cast<T>(first + i * step);
    return V(values);
  }
  static void expect(V const &v, int first, int step = 1) {
    for (int i = 0; i < N; i++) EXPECT_EQ(v[i], static_cast<T>(first + i * step)) << "component " << i;
  }
};

typedef testing::Types<ozVec2f, ozVec3f, ozVec4f, ozVec2i, ozVec3i, ozVec2s, ozVec3s, ozVec3b, ozVec4ub> AllVecs;
TYPED_TEST_SUITE(Vec, AllVecs);

#define T typename TestFixture::T
#define N TestFixture::N

TYPED_TEST(Vec, IsItsComponentsAndNothingElse) {
  EXPECT_EQ(sizeof(TypeParam), N * sizeof(T));
  EXPECT_TRUE(std::is_trivially_copyable<TypeParam>::value);
  TypeParam v = this->row(3);
  T const *bytes = reinterpret_cast<T const *>(&v);
  for (int i = 0; i < N; i++) EXPECT_EQ(bytes[i], static_cast<T>(3 + i));
}

TYPED_TEST(Vec, StartsAsZero) { this->expect(TypeParam(), 0, 0); }

TYPED_TEST(Vec, CopiesFromAVectorAndFromAnArray) {
  T values[4] = {9, 8, 7, 6};
  TypeParam a(values);
  this->expect(a, 9, -1);
  TypeParam b(a);
  this->expect(b, 9, -1);
  TypeParam c;
  c = a;
  this->expect(c, 9, -1);
}

TYPED_TEST(Vec, AssignmentOfOneValueFillsAllComponents) {
  TypeParam v = this->row(1);
  EXPECT_EQ(&(v = static_cast<T>(5)), &v);
  this->expect(v, 5, 0);
}

TYPED_TEST(Vec, IsEqualOnlyIfEveryComponentIs) {
  TypeParam a = this->row(1), b = a;
  EXPECT_TRUE(a == b && a.equal(b) && !(a != b));
  for (int i = 0; i < N; i++) {
    b = a;
    b[i] = 77;
    EXPECT_TRUE(!(a == b) && !a.equal(b) && a != b) << "component " << i;
  }
}

TYPED_TEST(Vec, AnIndexGivesAndTakesAComponent) {
  TypeParam v;
  for (int i = 0; i < N; i++) v[i] = static_cast<T>(4 + i);
  TypeParam const &constant = v;
  for (int i = 0; i < N; i++) EXPECT_EQ(constant[i], static_cast<T>(4 + i));
}

TYPED_TEST(Vec, GettingAComponentOutOfRangeGivesZero) {
  TypeParam v = this->row(4);
  for (int i = 0; i < N; i++) EXPECT_EQ(v.get(i), static_cast<T>(4 + i));
  for (int i : {-1, N, INT_MAX, INT_MIN}) EXPECT_EQ(v.get(i), 0);
}

TYPED_TEST(Vec, CopiesOutToAVectorAndToAnArray) {
  TypeParam v = this->row(4), w;
  v.get(w);
  this->expect(w, 4);
  T values[5] = {0, 0, 0, 0, 99};
  v.get(values);
  for (int i = 0; i < N; i++) EXPECT_EQ(values[i], static_cast<T>(4 + i));
  EXPECT_EQ(values[N], N == 4 ? T(99) : T(0));
}

TYPED_TEST(Vec, CopiesInFromAVectorAndFromAnArray) {
  T const values[4] = {9, 8, 7, 6};
  TypeParam v, w;
  v.set(values);
  this->expect(v, 9, -1);
  w.set(v);
  this->expect(w, 9, -1);
}

TYPED_TEST(Vec, NegatesIntoACopyAndIntoItself) {
  TypeParam v = this->row(1), w;
  this->expect(-v, -1, -1);
  this->expect(v, 1);
  w.negate(v);
  this->expect(w, -1, -1);
  v.negate(v);
  this->expect(v, -1, -1);
}

TYPED_TEST(Vec, AddsAndSubtractsByComponent) {
  TypeParam a = this->row(10), b = this->row(1, 2), v;
  v.add(a, b);
  this->expect(v, 11, 3);
  v.sub(a, b);
  this->expect(v, 9, -1);
  v = a;
  EXPECT_EQ(&(v += b), &v);
  this->expect(v, 11, 3);
  EXPECT_EQ(&(v -= b), &v);
  this->expect(v, 10);
}

TYPED_TEST(Vec, ScalesAndDividesByComponent) {
  TypeParam v;
  v.scale(3, this->row(2));
  this->expect(v, 6, 3);
  EXPECT_EQ(&(v *= 2), &v);
  this->expect(v, 12, 6);
  EXPECT_EQ(&(v /= 6), &v);
  this->expect(v, 2, 1);
}

TYPED_TEST(Vec, TheResultMayBeAnOperand) {
  TypeParam a = this->row(10), b = this->row(1, 2);
  a.add(a, b);
  this->expect(a, 11, 3);
  b.sub(a, b);
  this->expect(b, 10, 1);
  b.add(b, b);
  this->expect(b, 20, 2);
  b.scale(2, b);
  this->expect(b, 40, 4);
  b += b;
  this->expect(b, 80, 8);
  TypeParam const &same = b;
  b -= same;
  this->expect(b, 0, 0);
  b = this->row(2);
  b *= b[1];
  this->expect(b, 6, 3);
  b /= b[0];
  EXPECT_EQ(b[0], 1);
}

TYPED_TEST(Vec, TheInnerProductSumsTheProducts) {
  int sum = 0;
  for (int i = 0; i < N; i++) sum += (1 + i) * (2 + i);
  EXPECT_EQ(this->row(1).dot(this->row(2)), static_cast<T>(sum));
}

#undef T
#undef N

template <class V, class = void> struct HasZero : std::false_type {};
template <class V> struct HasZero<V, decltype(std::declval<V &>().zero())> : std::true_type {};

template <class V> void expectZeroClears() {
  EXPECT_TRUE(HasZero<V>::value);
  V v;
  v = 7;
  v.zero();
  EXPECT_EQ(v, V());
}

TEST(Vectors, ZeroClearsAllComponents) {
  expectZeroClears<ozVec2f>();
  expectZeroClears<ozVec3f>();
  expectZeroClears<ozVec4f>();
  expectZeroClears<ozVec2i>();
  expectZeroClears<ozVec3i>();
  expectZeroClears<ozVec2s>();
  expectZeroClears<ozVec3s>();
  expectZeroClears<ozVec3b>();
}

TEST(Vectors, FourUnsignedBytesHaveNoZero) { EXPECT_FALSE(HasZero<ozVec4ub>::value); }

TEST(Vectors, CompactTypesTakeTheirBytesOnly) {
  EXPECT_EQ(sizeof(ozVec3s), 6u);
  EXPECT_EQ(sizeof(ozVec3b), 3u);
}

TEST(Vectors, AreMadeAndSetFromTheirComponents) {
  ozVec2f f2(1, 2);
  ozVec3f f3(1, 2, 3);
  ozVec4f f4(1, 2, 3, 4);
  ozVec3i i3(1, 2, 3);
  ozVec4ub u4(1, 2, 3, 4);
  EXPECT_TRUE(f2[0] == 1 && f2[1] == 2 && f3[2] == 3 && f4[3] == 4 && i3[2] == 3 && u4[3] == 4);
  f2.set(5.0f, 6.0f);
  f3.set(5, 6, 7);
  f4.set(5, 6, 7, 8);
  i3.set(5, 6, 7);
  u4.set(5, 6, 7, 8);
  EXPECT_TRUE(f2 == ozVec2f(5, 6) && f3 == ozVec3f(5, 6, 7) && f4 == ozVec4f(5, 6, 7, 8));
  EXPECT_TRUE(i3 == ozVec3i(5, 6, 7) && u4 == ozVec4ub(5, 6, 7, 8));
}

TEST(Vectors, CopyOutToOnePointerAComponent) {
  float x, y, z, w;
  ozVec4f(1, 2, 3, 4).get(&x, &y, &z, &w);
  EXPECT_TRUE(x == 1 && y == 2 && z == 3 && w == 4);
  ozVec2f(5, 6).get(&x, &y);
  EXPECT_TRUE(x == 5 && y == 6);
  char a, b, c;
  ozVec3b(1, -2, 3).get(&a, &b, &c);
  EXPECT_TRUE(a == 1 && b == -2 && c == 3);
}

TEST(Vectors, SettingAComponentOutOfRangeChangesNothing) {
  ozVec3f v(1, 2, 3);
  EXPECT_EQ(v.get(3), 0);
  v.set(3, 9);
  v.set(-1, 9);
  EXPECT_EQ(v, ozVec3f(1, 2, 3));
  v.set(1, 9);
  EXPECT_EQ(v, ozVec3f(1, 9, 3));
  ozVec2f f(1, 2);
  f.set(1, 7.0f);
  f.set(2, 8.0f);
  EXPECT_EQ(f, ozVec2f(1, 7));
  ozVec3i i(1, 2, 3);
  i.set(2, 7);
  i.set(3, 8);
  EXPECT_EQ(i, ozVec3i(1, 2, 7));
  ozVec2s s(1, 2);
  s.set(1, static_cast<short>(7));
  EXPECT_EQ(s, ozVec2s(1, 7));
  ozVec4ub u(1, 2, 3, 4);
  u.set(3, 7);
  u.set(4, 7);
  EXPECT_EQ(u, ozVec4ub(1, 2, 3, 7));
}

TEST(Vectors, TwoIntsSetsBothComponents) {
  ozVec2i v(8, 9);
  v.set(0, 5);
  EXPECT_EQ(v, ozVec2i(0, 5));
}

TEST(Vectors, ANaNIsUnequalToEverything) {
  float nan = std::numeric_limits<float>::quiet_NaN();
  ozVec3f v(1, nan, 3);
  EXPECT_FALSE(v == v);
  EXPECT_FALSE(v.equal(v));
  EXPECT_TRUE(v != v);
}

TEST(Vectors, FloatsDividedByZeroTakeTheWorkingInfinity) {
  ozVec2f a(1, -2);
  ozVec3f b(0, -2, 3);
  ozVec4f c(1, -2, 3, 0);
  a /= 0;
  b /= -0.0f;
  c /= 0;
  ozVec3f all;
  all = 3.4028235e37f;
  EXPECT_EQ(a, ozVec2f(3.4028235e37f, 3.4028235e37f));
  EXPECT_EQ(b, all);
  EXPECT_EQ(c, ozVec4f(3.4028235e37f, 3.4028235e37f, 3.4028235e37f, 3.4028235e37f));
}

TEST(Vectors, IntsAndShortsDividedByZeroTake32767) {
  ozVec2i a(1, 0);
  ozVec3i b(1, -2, 100000);
  ozVec2s c(1, 0);
  ozVec3s d(1, -2, 3);
  a /= 0, b /= 0, c /= 0, d /= 0;
  EXPECT_EQ(a, ozVec2i(32767, 32767));
  EXPECT_EQ(b, ozVec3i(32767, 32767, 32767));
  EXPECT_EQ(c, ozVec2s(32767, 32767));
  EXPECT_EQ(d, ozVec3s(32767, 32767, 32767));
}

TEST(Vectors, BytesDividedByZeroTakeTheirLargestValue) {
  ozVec3b a(1, -2, 0);
  ozVec4ub b(1, 2, 0, 4);
  a /= 0, b /= 0;
  EXPECT_EQ(a, ozVec3b(127, 127, 127));
  EXPECT_EQ(b, ozVec4ub(255, 255, 255, 255));
}

template <class V> void expectRemainders() {
  V v;
  v = 17;
  EXPECT_EQ(&(v %= 5), &v);
  V two;
  two = 2;
  EXPECT_EQ(v, two);
  v %= 0;
  EXPECT_EQ(v, V());
}

TEST(Vectors, IntegersHaveARemainderWhichIsZeroByZero) {
  expectRemainders<ozVec2i>();
  expectRemainders<ozVec3i>();
  expectRemainders<ozVec2s>();
  expectRemainders<ozVec3s>();
  expectRemainders<ozVec3b>();
  expectRemainders<ozVec4ub>();
}

TEST(Vectors, IntegerDivisionTruncatesTowardsZero) {
  ozVec3i v(7, -7, 6);
  v /= 2;
  EXPECT_EQ(v, ozVec3i(3, -3, 3));
  ozVec3s r(7, -7, 6);
  r %= 4;
  EXPECT_EQ(r, ozVec3s(3, -3, 2));
}

TEST(Vectors, TheLeastIntegerDividedByMinusOneWraps) {
  ozVec2i v(INT_MIN, 4);
  v /= -1;
  EXPECT_EQ(v, ozVec2i(INT_MIN, -4));
  v.set(INT_MIN, 4);
  v %= -1;
  EXPECT_EQ(v, ozVec2i(0, 0));
  ozVec2s s(SHRT_MIN, 4);
  s /= -1;
  EXPECT_EQ(s, ozVec2s(SHRT_MIN, -4));
  ozVec3b b(-128, 4, 0);
  b /= -1;
  EXPECT_EQ(b, ozVec3b(-128, -4, 0));
}

TEST(Vectors, IntegerOverflowWraps) {
  ozVec2i v(INT_MAX, INT_MIN);
  v += ozVec2i(1, -1);
  EXPECT_EQ(v, ozVec2i(INT_MIN, INT_MAX));
  v -= ozVec2i(1, -1);
  EXPECT_EQ(v, ozVec2i(INT_MAX, INT_MIN));
  EXPECT_EQ(-ozVec2i(INT_MIN, 1), ozVec2i(INT_MIN, -1));
  v.scale(65536, ozVec2i(65536, 65537));
  EXPECT_EQ(v, ozVec2i(0, 65536));
  ozVec2s s(SHRT_MAX, 0);
  s += ozVec2s(1, 0);
  EXPECT_EQ(s, ozVec2s(SHRT_MIN, 0));
  ozVec4ub u(250, 0, 0, 0);
  u += ozVec4ub(10, 0, 0, 0);
  EXPECT_EQ(u, ozVec4ub(4, 0, 0, 0));
}

TEST(Vectors, TheInnerProductOfIntegersHasTheWidthOfAComponent) {
  EXPECT_EQ(ozVec3b(100, 0, 0).dot(ozVec3b(3, 0, 0)), 44);            // 300 - 256
  EXPECT_EQ(ozVec4ub(200, 200, 0, 0).dot(ozVec4ub(1, 1, 0, 0)), 144); // 400 - 256
  EXPECT_EQ(ozVec2s(300, 0).dot(ozVec2s(300, 0)), 24464);             // 90000 - 65536
  EXPECT_EQ(ozVec3i(65536, 1, 0).dot(ozVec3i(65536, 5, 0)), 5);       // 2^32 + 5
}

template <class V> void expectCross() {
  V v, a(1, 2, 3), b(4, 5, 7);
  v.cross(a, b);
  EXPECT_EQ(v, V(-1, 5, -3)); // by hand: 14 - 15, 12 - 7, 5 - 8
  a.cross(a, b);
  EXPECT_EQ(a, V(-1, 5, -3));
  V c(1, 2, 3);
  b.cross(c, b);
  EXPECT_EQ(b, V(-1, 5, -3));
  c.cross(c, c);
  EXPECT_EQ(c, V());
}

TEST(Vectors, ThreeComponentsHaveACrossProduct) {
  expectCross<ozVec3f>();
  expectCross<ozVec3i>();
  expectCross<ozVec3s>();
  expectCross<ozVec3b>();
}

} // namespace
