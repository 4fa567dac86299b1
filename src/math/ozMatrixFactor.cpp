#include "math/ozFloat.h"
#include "oz/ozMatrix4f.h"
#include "oz/ozRotation.h"

#include <cstdio>

// The cyclic Jacobi method: Golub and Van Loan, "Matrix computations", section 8.5, with the thresholds that
// Rutishauser gives in Wilkinson and Reinsch, "Handbook for automatic computation", II/1.
void ozMatrix4f::jacobi3(ozMatrix4f const &m, float *values, ozVec3f *vectors, int &nrot) {
  double a[3][3], v[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}; // the columns of v are the eigenvectors
  double d[3], base[3], update[3] = {0, 0, 0};
  for (int i = 0; i < 3; i++) {
    for (int j = 0; j < 3; j++) a[i][j] = m._m[i][j];
    base[i] = d[i] = a[i][i];
    values[i] = static_cast<float>(d[i]);
  }
  nrot = 0;
  for (int sweep = 1; sweep <= 50; sweep++) {
    double sum = std::fabs(a[0][1]) + std::fabs(a[0][2]) + std::fabs(a[1][2]);
    if (sum == 0) break;
    double threshold = sweep <= 3 ? 0.2 * sum / 9 : 0;
    for (int p = 0; p < 2; p++) {
      for (int q = p + 1; q < 3; q++) {
        double g = 100.0 * std::fabs(a[p][q]);
        if (sweep > 3 && std::fabs(d[p]) + g == std::fabs(d[p]) && std::fabs(d[q]) + g == std::fabs(d[q])) {
          a[p][q] = 0; // negligible against both diagonals
          continue;
        }
        if (!(std::fabs(a[p][q]) > threshold)) continue;
        double h = d[q] - d[p], t;
        if (std::fabs(h) + g == std::fabs(h)) {
          t = a[p][q] / h;
        } else {
          double theta = 0.5 * h / a[p][q];
          t = 1.0 / (std::fabs(theta) + std::sqrt(1.0 + theta * theta));
          if (theta < 0) t = -t;
        }
        double c = 1.0 / std::sqrt(1.0 + t * t), s = t * c, tau = s / (1.0 + c);
        h = t * a[p][q];
        update[p] -= h;
        update[q] += h;
        d[p] -= h;
        d[q] += h;
        a[p][q] = 0;
        auto rotate = [s, tau](double &x, double &y) {
          double oldX = x, oldY = y;
          x = oldX - s * (oldY + oldX * tau);
          y = oldY + s * (oldX - oldY * tau);
        };
        int r = 3 - p - q; // the third index; only the elements above the diagonal are kept
        rotate(a[r < p ? r : p][r < p ? p : r], a[r < q ? r : q][r < q ? q : r]);
        for (double(&row)[3] : v) rotate(row[p], row[q]);
        nrot++;
      }
    }
    for (int i = 0; i < 3; i++) {
      base[i] += update[i];
      d[i] = base[i];
      update[i] = 0;
      values[i] = static_cast<float>(d[i]);
    }
  }
  for (int i = 0; i < 3; i++) {
    for (int j = 0; j < 3; j++) vectors[i][j] = static_cast<float>(v[j][i]);
  }
}

int ozMatrix4f::factor(ozMatrix4f &r, ozVec3f &s, ozMatrix4f &u, ozVec3f &t) const {
  ozMatrix4f a = *this; // the 3 by 3 part; the results may be this
  t.set(_m[3]);
  a.setRow(3, 0, 0, 0, 1);
  a.setCol(3, 0, 0, 0, 1);
  float d = a.det3();
  if (std::fabs(d) < 1e-12f) return 0;
  float sign = d < 0 ? -1.0f : 1.0f;

  ozMatrix4f transposed, square;
  transposed.transpose(a);
  square.fullMult(a, transposed);
  float values[3];
  ozVec3f vectors[3];
  int rotations;
  jacobi3(square, values, vectors, rotations);

  ozMatrix4f rows, inverseScale;
  for (int i = 0; i < 3; i++) {
    rows.setRow(i, vectors[i]);
    s[i] = static_cast<float>(std::sqrt(static_cast<double>(values[i]))) * sign;
    inverseScale[i][i] = 1.0f / s[i];
  }
  // The eigenvectors are rows, and yet r stands in front and its transpose behind. Meant.
  transposed.transpose(rows);
  u.fullMult(rows, inverseScale);
  u.fullMult(u, transposed);
  u.fullMult(u, a);
  r = rows;
  return 1;
}

void ozMatrix4f::getTransforms(ozVec3f &t, ozRotation &rot, ozVec3f &s, ozRotation &so) const {
  ozMatrix4f r, u;
  s = 0;
  factor(r, s, u, t);
  u.getOrthoRotation(rot);
  r.getOrthoRotation(so);
}

// The quaternion of a rotation matrix: K. Shoemake, "Animating rotation with quaternion curves", 1985.
void ozMatrix4f::getOrthoRotation(ozRotation &rot) const {
  float trace = _m[0][0] + _m[1][1] + _m[2][2];
  if (trace > 0) {
    float root = static_cast<float>(std::sqrt(static_cast<double>(trace + 1)));
    if (root > 2) {
      std::fputs("Warning: Magnitude of the matrix trace is > 3\n", stderr);
      return;
    }
    float f = 0.5f / root;
    ozVec3f axis(_m[1][2] - _m[2][1], _m[2][0] - _m[0][2], _m[0][1] - _m[1][0]);
    axis *= f;
    rot.setDegrees(axis, ozTwiceAcosDegrees(root * 0.5f));
    return;
  }
  int i = 0;
  if (_m[1][1] > _m[0][0]) i = 1;
  if (_m[2][2] > _m[i][i]) i = 2;
  int j = (i + 1) % 3, k = (j + 1) % 3;
  float root = static_cast<float>(std::sqrt(static_cast<double>(_m[i][i] - (_m[k][k] + _m[j][j]) + 1)));
  float f = 0.5f / root;
  float w = (_m[j][k] - _m[k][j]) * f;
  if (!(w >= -1 && w <= 1)) {
    std::fputs("Matrix is scaled - cannot calculate rotation\n", stderr);
    return;
  }
  ozVec3f q;
  q[i] = root * 0.5f;
  q[j] = (_m[i][j] + _m[j][i]) * f;
  q[k] = (_m[i][k] + _m[k][i]) * f;
  rot.setDegrees(q, ozTwiceAcosDegrees(w));
}
