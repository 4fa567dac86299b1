#ifndef OZ_VECBASE_H
#define OZ_VECBASE_H

#include "oz/ozConstants.h"
#include "oz/ozPlatform.h"

#include <cmath>
#include <type_traits>

/// @file
/// What the nine vector classes of oz/ozVec2f.h have in common. Applications name those, never these templates.

class ozOutput;

/// Arithmetic of one component. Integers wrap around, and a division by zero gives a fixed value instead of a trap.
template <class T> struct ozVecArith {
  static constexpr bool IS_FLOAT = std::is_floating_point<T>::value;

  static T add(T a, T b) {
    if constexpr (IS_FLOAT)
      return a + b;
    else
      return static_cast<T>(static_cast<unsigned>(a) + static_cast<unsigned>(b));
  }
  static T sub(T a, T b) {
    if constexpr (IS_FLOAT)
      return a - b;
    else
      return static_cast<T>(static_cast<unsigned>(a) - static_cast<unsigned>(b));
  }
  static T mul(T a, T b) {
    if constexpr (IS_FLOAT)
      return a * b;
    else
      return static_cast<T>(static_cast<unsigned>(a) * static_cast<unsigned>(b));
  }
  static T negate(T a) {
    if constexpr (IS_FLOAT)
      return static_cast<T>(a * -1.0);
    else
      return sub(0, a);
  }
  static T div(T a, T b) {
    if (b == 0) return quotientByZero();
    if constexpr (IS_FLOAT)
      return a / b;
    else
      return static_cast<T>(static_cast<long long>(a) / b);
  }
  static T mod(T a, T b) { return b == 0 ? T(0) : static_cast<T>(static_cast<long long>(a) % b); }

  /// 32767 for int as for short: the two widths share the value, as meant.
  static constexpr T quotientByZero() {
    if constexpr (IS_FLOAT)
      return OZ_INFINITY;
    else if constexpr (sizeof(T) > 1)
      return 32767;
    else
      return std::is_signed<T>::value ? T(127) : T(255);
  }
};

template <class T, int> struct ozVecComponent { typedef T Type; };

/// The vector class V with components of type T, one for each of the indices I (0, 1, ...), and nothing else in it, so
/// that arrays of vectors go to OpenGL as they stand. Any result may be stored into an operand.
template <class V, class T, int... I> class OZ_API ozVecBase {
protected:
  typedef ozVecArith<T> Arith;
  struct Unused {};
  // With two int components the forms set(index, value) and set(x, y) are one and the same; it sets both components.
  typedef typename std::conditional<std::is_same<T, int>::value && sizeof...(I) == 2, Unused, int>::type SetIndex;

public:
  enum { SIZE = sizeof...(I) };

  /// All components 0.
  ozVecBase() = default;
  ozVecBase(typename ozVecComponent<T, I>::Type... value) : _v{value...} {}
  /// From an array of as many components.
  ozVecBase(T const *values) : _v{values[I]...} {}

  /// Exact, component by component; a NaN is unequal to everything.
  bool equal(V const &other) const { return (... && (_v[I] == other._v[I])); }
  bool operator==(V const &other) const { return equal(other); }
  bool operator!=(V const &other) const { return !equal(other); }

  /// One component; the index is not tested.
  T &operator[](int index) {
    OZ_REQUIRE(index >= 0 && index < SIZE, "vector index out of range");
    return _v[index];
  }
  T operator[](int index) const {
    OZ_REQUIRE(index >= 0 && index < SIZE, "vector index out of range");
    return _v[index];
  }

  /// One component, 0 for an index out of range.
  T get(int index) const { return index >= 0 && index < SIZE ? _v[index] : T(0); }
  /// Sets one component; does nothing for an index out of range. ozVec2i has no such form.
  void set(SetIndex index, T value) {
    if constexpr (std::is_same<SetIndex, int>::value) {
      if (index >= 0 && index < SIZE) _v[index] = value;
    }
  }

  void get(V &out) const { out = self(); }
  void get(typename ozVecComponent<T, I>::Type *...out) const { ((*out = _v[I]), ...); }
  void get(T *const out) const { ((out[I] = _v[I]), ...); }
  void set(V const &from) { self() = from; }
  void set(typename ozVecComponent<T, I>::Type... value) { ((_v[I] = value), ...); }
  void set(T const *const from) { ((_v[I] = from[I]), ...); }

  /// All components 0.
  void zero() { fill(0); }

  V operator-() const {
    V result;
    result.negate(self());
    return result;
  }
  V &operator*=(T factor) { return ((_v[I] = Arith::mul(_v[I], factor)), ..., self()); }
  V &operator+=(V const &b) { return ((_v[I] = Arith::add(_v[I], b._v[I])), ..., self()); }
  V &operator-=(V const &b) { return ((_v[I] = Arith::sub(_v[I], b._v[I])), ..., self()); }
  /// Divides each component. By 0 every component becomes OZ_INFINITY for floats, 32767 for int and short, 127 for char
  /// and 255 for unsigned char.
  V &operator/=(T divisor) { return ((_v[I] = Arith::div(_v[I], divisor)), ..., self()); }

  /// this = a + b
  void add(V const &a, V const &b) { ((_v[I] = Arith::add(a._v[I], b._v[I])), ...); }
  /// this = a - b
  void sub(V const &a, V const &b) { ((_v[I] = Arith::sub(a._v[I], b._v[I])), ...); }
  /// this = -a
  void negate(V const &a) { ((_v[I] = Arith::negate(a._v[I])), ...); }
  /// this = factor * a
  void scale(T factor, V const &a) { ((_v[I] = Arith::mul(factor, a._v[I])), ...); }

  /// The inner product, in the width of a component.
  T dot(V const &b) const {
    T sum = 0;
    return ((sum = I == 0 ? Arith::mul(_v[I], b._v[I]) : Arith::add(sum, Arith::mul(_v[I], b._v[I]))), ...);
  }

  /// Writes the components as text, separated by a space, without a line end.
  void write(ozOutput *output) const;

  /// The components as OpenGL takes them.
  T _v[sizeof...(I)] = {};

protected:
  V &self() { return static_cast<V &>(*this); }
  V const &self() const { return static_cast<V const &>(*this); }
  V &fill(T value) { return ((_v[I] = value), ..., self()); }

  /// this = a x b; the vectors of three components make it public.
  void cross(V const &a, V const &b) {
    static_assert(SIZE == 3, "only three components have a cross product");
    T x = Arith::sub(Arith::mul(a._v[1], b._v[2]), Arith::mul(a._v[2], b._v[1]));
    T y = Arith::sub(Arith::mul(a._v[2], b._v[0]), Arith::mul(a._v[0], b._v[2]));
    T z = Arith::sub(Arith::mul(a._v[0], b._v[1]), Arith::mul(a._v[1], b._v[0]));
    _v[0] = x, _v[1] = y, _v[2] = z;
  }
};

/// What vectors of integers add.
template <class V, class T, int... I> class OZ_API ozIntVecBase : public ozVecBase<V, T, I...> {
public:
  using ozVecBase<V, T, I...>::ozVecBase;

  /// The remainder of each component; by 0 every component becomes 0.
  V &operator%=(T divisor) { return ((this->_v[I] = ozVecArith<T>::mod(this->_v[I], divisor)), ..., this->self()); }
};

/// What vectors of floats add.
template <class V, int... I> class OZ_API ozFloatVecBase : public ozVecBase<V, float, I...> {
public:
  using ozVecBase<V, float, I...>::ozVecBase;

  /// this = a + s * b
  void addScaled(V const &a, float s, V const &b) { ((this->_v[I] = a._v[I] + s * b._v[I]), ...); }
  /// this = s * a + t * b
  void combine(float s, V const &a, float t, V const &b) { ((this->_v[I] = s * a._v[I] + t * b._v[I]), ...); }

  /// The sum of the squares is formed in float, its root in double.
  float length() const { return root(this->dot(this->self())); }
  /// The square of the distance to another point.
  float sqrDistance(V const &other) const {
    V difference;
    difference.sub(this->self(), other);
    return difference.dot(difference);
  }
  float distance(V const &other) const { return root(sqrDistance(other)); }

  /// Scales to length 1 and returns the old length. Below OZ_TINY_EPSILON the factor is OZ_INFINITY instead of the
  /// reciprocal, so that zero stays zero and a very short vector grows very large.
  float normalize() {
    float old = length();
    this->self() *= old < OZ_TINY_EPSILON ? OZ_INFINITY : 1.0f / old;
    return old;
  }

  /// 1 if each component is within the tolerance, the bounds included; otherwise 0.
  unsigned char almostEqual(V const &other, float tolerance) const {
    return (... && (this->_v[I] >= other._v[I] - tolerance && other._v[I] + tolerance >= this->_v[I]));
  }

private:
  static float root(float square) { return static_cast<float>(std::sqrt(static_cast<double>(square))); }
};

#endif
