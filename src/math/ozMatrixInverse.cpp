#include "oz/ozGlobal.h"
#include "oz/ozMatrix4f.h"

#include <cmath>

// The determinant of a matrix that is about to be inverted; a singular one is reported and counts as 1.
static float usableDet3(ozMatrix4f const &m, char const *complaint) {
  float d = m.det3();
  if (!(std::fabs(d) < OZ_TINY_EPSILON)) return d; // what is no number is not singular
  ozGlobal::notify(ozGlobal::WARN, ozGlobal::USAGE, complaint);
  return 1.0f;
}

// Minus the old translation times the new 3 by 3 part, into the translation row.
void ozMatrix4f::invertTranslation(ozVec3f const &t) {
  ozVec3f moved;
  moved.xformVec(t, *this);
  moved.sub(ozVec3f(), moved); // rather than a negation, which makes -0 of 0
  setRow(3, moved);
}

void ozMatrix4f::invertAffine(ozMatrix4f const &m) {
  float d = usableDet3(m, "No inverse: singular matrix\n");
  ozMatrix4f r;
  for (int i = 0; i < 3; i++) {
    for (int j = 0; j < 3; j++) {
      // The adjugate: the cofactor of element [j][i], by cyclic indices, which give the sign.
      int r1 = (j + 1) % 3, r2 = (j + 2) % 3, c1 = (i + 1) % 3, c2 = (i + 2) % 3;
      r._m[i][j] = (m._m[r1][c1] * m._m[r2][c2] - m._m[r1][c2] * m._m[r2][c1]) / d;
    }
  }
  r.invertTranslation(ozVec3f(m._m[3]));
  *this = r;
}

void ozMatrix4f::invertOrtho(ozMatrix4f const &m) {
  float d = usableDet3(m, "singular matrix\n");
  float f = static_cast<float>(std::pow(static_cast<double>(d), -0.6666666865348816));
  ozMatrix4f r;
  for (int i = 0; i < 3; i++) {
    for (int j = 0; j < 3; j++) r._m[i][j] = m._m[j][i] * f;
  }
  r.invertTranslation(ozVec3f(m._m[3]));
  *this = r;
}

void ozMatrix4f::invertOrthoNorm(ozMatrix4f const &m) {
  ozVec3f translation(m._m[3]);
  ozMatrix4f r;
  r.transpose(m);
  r.setCol(3, 0, 0, 0, 1);
  r.setRow(3, 0, 0, 0, 1);
  r.invertTranslation(translation);
  *this = r;
}

int ozMatrix4f::invertFull(ozMatrix4f const &m) {
  // This looks at the last row, which holds the translation, not at the last column: a matrix with a translation takes
  // the general road. Meant.
  if (m._m[3][0] == 0 && m._m[3][1] == 0 && m._m[3][2] == 0 && m._m[3][3] == 1) {
    invertAffine(m);
    return 1;
  }
  *this = m;
  int index[4];
  if (!LUDecompMat(index)) {
    makeIdent();
    return 0;
  }
  ozMatrix4f solutions;
  for (int i = 0; i < 4; i++) LUBackSubMat(index, solutions[i]); // row i is the unit vector i
  transpose(solutions);
  return 1;
}

// Crout's method with implicit partial pivoting: Golub and Van Loan, "Matrix computations", chapter 3.
int ozMatrix4f::LUDecompMat(int *index) {
  float scale[4];
  for (int i = 0; i < 4; i++) {
    float largest = 0;
    for (float element : _m[i]) largest = std::fmax(largest, std::fabs(element));
    if (largest < OZ_EPSILON) return 0;
    scale[i] = 1.0f / largest;
  }
  for (int j = 0; j < 4; j++) {
    int pivot = j;
    float best = -1;
    for (int i = 0; i < 4; i++) {
      float sum = _m[i][j];
      for (int k = 0; k < (i < j ? i : j); k++) sum -= _m[i][k] * _m[k][j];
      _m[i][j] = sum;
      if (i >= j && scale[i] * std::fabs(sum) > best) {
        best = scale[i] * std::fabs(sum);
        pivot = i;
      }
    }
    if (pivot != j) {
      for (int k = 0; k < 4; k++) {
        float element = _m[pivot][k];
        _m[pivot][k] = _m[j][k];
        _m[j][k] = element;
      }
      scale[pivot] = scale[j];
    }
    index[j] = pivot;
    if (_m[j][j] == 0) return 0;
    for (int i = j + 1; i < 4; i++) _m[i][j] /= _m[j][j];
  }
  return 1;
}

void ozMatrix4f::LUBackSubMat(int const *index, float *b) const {
  int first = 4; // the first row whose right-hand side is not zero
  for (int i = 0; i < 4; i++) {
    float sum = b[index[i]];
    b[index[i]] = b[i];
    for (int j = first; j < i; j++) sum -= _m[i][j] * b[j];
    if (first == 4 && sum != 0) first = i;
    b[i] = sum;
  }
  for (int i = 3; i >= 0; i--) {
    float sum = b[i];
    for (int j = i + 1; j < 4; j++) sum -= _m[i][j] * b[j];
    b[i] = sum / _m[i][i];
  }
}
