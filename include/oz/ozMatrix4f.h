#ifndef OZ_MATRIX4F_H
#define OZ_MATRIX4F_H

#include "oz/ozFloat4.h"
#include "oz/ozVec2f.h"

class ozRotation;

/// A 4 by 4 matrix: 16 floats, row by row. Vectors are rows and multiply from the left; the translation stands in row
/// 3, and a transform that is applied first stands on the left of a product. OpenGL takes the 16 floats as they stand.
/// Angles are radians unless told otherwise. Any result may be stored into an operand.
class OZ_API ozMatrix4f {
public:
  /// The identity.
  ozMatrix4f() = default;
  /// Row by row.
  ozMatrix4f(float m00, float m01, float m02, float m03, float m10, float m11, float m12, float m13, float m20,
             float m21, float m22, float m23, float m30, float m31, float m32, float m33)
      : _m{{m00, m01, m02, m03}, {m10, m11, m12, m13}, {m20, m21, m22, m23}, {m30, m31, m32, m33}} {}

  /// Makes the identity, whatever the number. Meant.
  ozMatrix4f &operator=(float) { return makeIdent(), *this; }
  /// this = this * m, as postMult.
  ozMatrix4f &operator*=(ozMatrix4f const &m) { return postMult(m), *this; }

  /// Exact, element by element.
  bool equal(ozMatrix4f const &m) const;
  bool operator==(ozMatrix4f const &m) const { return equal(m); }
  bool operator!=(ozMatrix4f const &m) const { return !equal(m); }
  /// 1 if each element is within the tolerance, the bounds included; otherwise 0.
  unsigned char almostEqual(ozMatrix4f const &m, float tolerance) const;

  /// A row; the index is not tested.
  float *operator[](int row) { return _m[row]; }
  float const *operator[](int row) const { return _m[row]; }

  /// One element. Out of range: gives 0, sets nothing.
  float get(int row, int col) const { return inside(row) && inside(col) ? _m[row][col] : 0.0f; }
  void set(int row, int col, float value) {
    if (inside(row) && inside(col)) _m[row][col] = value;
  }
  void get(ozMatrix4f &out) const { out = *this; }
  void set(ozMatrix4f const &from) { *this = from; }
  /// From 16 floats, row by row.
  void set(float const *from);

  /// A row or column, as its first three elements or all four. Out of range: gives 0s, sets nothing.
  void getRow(int row, ozVec3f &out) const;
  void getRow(int row, float *x, float *y, float *z, float *w) const;
  void setRow(int row, ozVec3f const &from);
  void setRow(int row, float x, float y, float z, float w);
  void getCol(int col, ozVec3f &out) const;
  void getCol(int col, float *x, float *y, float *z, float *w) const;
  void setCol(int col, ozVec3f const &from);
  void setCol(int col, float x, float y, float z, float w);

  void makeIdent() { *this = ozMatrix4f(); }
  void makeTrans(float x, float y, float z);
  void makeScale(float x, float y, float z);
  /// The rotation about an axis of any length; the identity for an axis shorter than OZ_EPSILON.
  void makeRot(float x, float y, float z, float radians);
  /// Three rotations in degrees: c about y first, then b about x, then a about z.
  void makeEuler(float a, float b, float c);
  /// The rotation that takes one unit vector to another.
  void makeVecRotVec(ozVec3f const &from, ozVec3f const &to);

  /// this = a * b for affine matrices: the fourth column of the result is (0, 0, 0, 1).
  void mult(ozMatrix4f const &a, ozMatrix4f const &b);
  /// this = a * b, all of it.
  void fullMult(ozMatrix4f const &a, ozMatrix4f const &b);
  /// this = m * this, affine: m acts first.
  void preMult(ozMatrix4f const &m) { mult(m, *this); }
  /// this = this * m, affine: m acts last.
  void postMult(ozMatrix4f const &m) { mult(*this, m); }

  /// "pre" puts the new transform in front of m, where it acts first on a point; "post" behind.
  void preTrans(float x, float y, float z, ozMatrix4f const &m);
  void postTrans(ozMatrix4f const &m, float x, float y, float z);
  void preRot(float x, float y, float z, float radians, ozMatrix4f const &m);
  void postRot(ozMatrix4f const &m, float x, float y, float z, float radians);
  void preScale(float x, float y, float z, ozMatrix4f const &m);
  /// Leaves the fourth column as it is in m.
  void postScale(ozMatrix4f const &m, float x, float y, float z);

  void transpose(ozMatrix4f const &m);

  /// The determinant of the upper left 3 by 3 part, of three given rows and columns, of the whole.
  float det3() const { return det3(0, 1, 2, 0, 1, 2); }
  float det3(int r1, int r2, int r3, int c1, int c2, int c3) const {
    return _m[r1][c1] * (_m[r2][c2] * _m[r3][c3] - _m[r2][c3] * _m[r3][c2]) -
           _m[r1][c2] * (_m[r2][c1] * _m[r3][c3] - _m[r2][c3] * _m[r3][c1]) +
           _m[r1][c3] * (_m[r2][c1] * _m[r3][c2] - _m[r2][c2] * _m[r3][c1]);
  }
  float det4() const {
    return _m[0][0] * det3(1, 2, 3, 1, 2, 3) - _m[0][1] * det3(1, 2, 3, 0, 2, 3) + _m[0][2] * det3(1, 2, 3, 0, 1, 3) -
           _m[0][3] * det3(1, 2, 3, 0, 1, 2);
  }

  /// this = the inverse of an affine m. A singular one is reported and taken to have the determinant 1.
  void invertAffine(ozMatrix4f const &m);
  /// this = the inverse of a rotation with uniform scale and a translation. A singular one is reported likewise.
  void invertOrtho(ozMatrix4f const &m);
  /// this = the inverse of a rotation and a translation.
  void invertOrthoNorm(ozMatrix4f const &m);
  /// this = the inverse of any m: returns 1, or makes the identity and returns 0 if there is none.
  int invertFull(ozMatrix4f const &m);

  /// LU decomposition in place, Crout's method with implicit partial pivoting. The four entries of index take the
  /// permutation. Returns 0 if a row has no element of at least OZ_EPSILON or a pivot is 0, otherwise 1.
  int LUDecompMat(int *index);
  /// Solves for the right-hand side b, in place, with a matrix that LUDecompMat has decomposed.
  void LUBackSubMat(int const *index, float *b) const;

  /// Takes the matrix apart: t the translation, r the rows of eigenvectors, s the scales, u the rotation. Returns 0,
  /// with only t set, if the absolute value of the determinant is below 1e-12; otherwise 1.
  int factor(ozMatrix4f &r, ozVec3f &s, ozMatrix4f &u, ozVec3f &t) const;
  /// Eigenvalues and eigenvectors of the symmetric 3 by 3 part of m, unsorted; nrot counts the rotations made.
  static void jacobi3(ozMatrix4f const &m, float *values, ozVec3f *vectors, int &nrot);
  /// Translation, rotation, scale and scale orientation, by factor. Give the rotations a value first: one that cannot
  /// be found stays as it was.
  void getTransforms(ozVec3f &t, ozRotation &rot, ozVec3f &s, ozRotation &so) const;
  /// The axis and angle of a rotation matrix. Otherwise one line on the standard error stream, and rot stays as it was.
  void getOrthoRotation(ozRotation &rot) const;

  /// Writes four lines of four numbers, each indented.
  void write(ozOutput *output) const;

  /// The elements as OpenGL takes them.
  float _m[4][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};

private:
  static bool inside(int index) { return index >= 0 && index < 4; }
  void makeAxisAngle(ozVec3f const &axis, float c, float s);
  void invertTranslation(ozVec3f const &t);
};

inline void ozVec3f::xformVec(ozVec3f const &v, ozMatrix4f const &m) {
  float const x = v._v[0], y = v._v[1], z = v._v[2];
#if OZ_FLOAT4
  ozStore3(_v, x * ozLoad4(m._m[0]) + y * ozLoad4(m._m[1]) + z * ozLoad4(m._m[2]));
#else
  for (int j = 0; j < 3; j++) _v[j] = x * m._m[0][j] + y * m._m[1][j] + z * m._m[2][j];
#endif
}

inline void ozVec3f::xformPt(ozVec3f const &v, ozMatrix4f const &m) {
  float const x = v._v[0], y = v._v[1], z = v._v[2];
#if OZ_FLOAT4
  ozStore3(_v, x * ozLoad4(m._m[0]) + y * ozLoad4(m._m[1]) + z * ozLoad4(m._m[2]) + ozLoad4(m._m[3]));
#else
  for (int j = 0; j < 3; j++) _v[j] = x * m._m[0][j] + y * m._m[1][j] + z * m._m[2][j] + m._m[3][j];
#endif
}

inline void ozVec4f::xform(ozVec4f const &v, ozMatrix4f const &m) {
  float const x = v._v[0], y = v._v[1], z = v._v[2], w = v._v[3];
  for (int j = 0; j < 4; j++) _v[j] = x * m._m[0][j] + y * m._m[1][j] + z * m._m[2][j] + w * m._m[3][j];
}

inline void ozVec3f::fullXformPt(ozVec3f const &v, ozMatrix4f const &m) {
  float w = v._v[0] * m._m[0][3] + v._v[1] * m._m[1][3] + v._v[2] * m._m[2][3] + m._m[3][3];
  xformPt(v, m);
  if (std::fabs(w - 1.0f) <= OZ_EPSILON) return;
  if (std::fabs(w) < OZ_TINY_EPSILON) w = OZ_TINY_EPSILON;
  *this *= 1.0f / w;
}

#endif
