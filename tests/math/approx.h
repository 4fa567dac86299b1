#ifndef TESTS_MATH_APPROX_H
#define TESTS_MATH_APPROX_H

#include "oz/ozMatrix4f.h"

#include <gtest/gtest.h>

#include <cmath>

/// Whether the numbers of two value objects, as plain arrays, agree within a tolerance.
inline testing::AssertionResult approxNumbers(float const *a, float const *b, int count, float tolerance) {
  for (int i = 0; i < count; i++) {
    if (!(std::fabs(a[i] - b[i]) <= tolerance)) {
      return testing::AssertionFailure() << "number " << i << ": " << a[i] << " and " << b[i];
    }
  }
  return testing::AssertionSuccess();
}

inline testing::AssertionResult approx(ozVec3f const &a, ozVec3f const &b, float tolerance = 1e-5f) {
  return approxNumbers(a._v, b._v, 3, tolerance);
}

inline testing::AssertionResult approx(ozVec4f const &a, ozVec4f const &b, float tolerance = 1e-5f) {
  return approxNumbers(a._v, b._v, 4, tolerance);
}

inline testing::AssertionResult approx(ozMatrix4f const &a, ozMatrix4f const &b, float tolerance = 1e-5f) {
  return approxNumbers(a[0], b[0], 16, tolerance);
}

#endif
