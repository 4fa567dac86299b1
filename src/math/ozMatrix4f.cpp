#include "oz/ozMatrix4f.h"

#include "math/ozFloat.h"

#include <cstring>

bool ozMatrix4f::equal(ozMatrix4f const &m) const {
  for (int i = 0; i < 4; i++) {
    for (int j = 0; j < 4; j++) {
      if (_m[i][j] != m._m[i][j]) return false;
    }
  }
  return true;
}

unsigned char ozMatrix4f::almostEqual(ozMatrix4f const &m, float tolerance) const {
  for (int i = 0; i < 4; i++) {
    if (!ozVec4f(_m[i]).almostEqual(ozVec4f(m._m[i]), tolerance)) return 0;
  }
  return 1;
}

void ozMatrix4f::set(float const *from) { std::memmove(_m, from, sizeof _m); }

void ozMatrix4f::getRow(int row, ozVec3f &out) const { out.set(get(row, 0), get(row, 1), get(row, 2)); }

void ozMatrix4f::getRow(int row, float *x, float *y, float *z, float *w) const {
  *x = get(row, 0), *y = get(row, 1), *z = get(row, 2), *w = get(row, 3);
}

void ozMatrix4f::setRow(int row, ozVec3f const &from) {
  for (int j = 0; j < 3; j++) set(row, j, from[j]);
}

void ozMatrix4f::setRow(int row, float x, float y, float z, float w) {
  set(row, 0, x), set(row, 1, y), set(row, 2, z), set(row, 3, w);
}

void ozMatrix4f::getCol(int col, ozVec3f &out) const { out.set(get(0, col), get(1, col), get(2, col)); }

void ozMatrix4f::getCol(int col, float *x, float *y, float *z, float *w) const {
  *x = get(0, col), *y = get(1, col), *z = get(2, col), *w = get(3, col);
}

void ozMatrix4f::setCol(int col, ozVec3f const &from) {
  for (int i = 0; i < 3; i++) set(i, col, from[i]);
}

void ozMatrix4f::setCol(int col, float x, float y, float z, float w) {
  set(0, col, x), set(1, col, y), set(2, col, z), set(3, col, w);
}

void ozMatrix4f::makeTrans(float x, float y, float z) {
  makeIdent();
  setRow(3, ozVec3f(x, y, z));
}

void ozMatrix4f::makeScale(float x, float y, float z) {
  makeIdent();
  _m[0][0] = x, _m[1][1] = y, _m[2][2] = z;
}

// The rotation matrix of a unit quaternion, as in K. Shoemake, "Animating rotation with quaternion curves", 1985.
void ozMatrix4f::makeRot(float x, float y, float z, float radians) {
  makeIdent();
  float square = x * x + y * y + z * z;
  if (square < OZ_EPSILON_SQUARED) return;
  // Nearly a unit axis: the first-order expansion of the inverse root does.
  float inverse = square > 0.9996f && square < 1.001f
                      ? 1.5f - 0.5f * square
                      : static_cast<float>(1.0 / std::sqrt(static_cast<double>(square)));
  float factor = inverse * static_cast<float>(std::sin(radians * 0.5));
  float w = static_cast<float>(std::cos(radians * 0.5));
  float qx = x * factor, qy = y * factor, qz = z * factor;
  _m[0][0] = 1 - 2 * (qy * qy + qz * qz);
  _m[0][1] = 2 * (qx * qy + qz * w);
  _m[0][2] = 2 * (qz * qx - qy * w);
  _m[1][0] = 2 * (qx * qy - qz * w);
  _m[1][1] = 1 - 2 * (qx * qx + qz * qz);
  _m[1][2] = 2 * (qx * w + qz * qy);
  _m[2][0] = 2 * (qy * w + qz * qx);
  _m[2][1] = 2 * (qz * qy - qx * w);
  _m[2][2] = 1 - 2 * (qx * qx + qy * qy);
}

namespace {

struct SinCos {
  float s = 0, c = 1;
  explicit SinCos(float degrees) {
    if (degrees == 0) return; // exact, and most angles are
    double radians = degrees * static_cast<double>(OZ_TO_RADIANS);
    s = static_cast<float>(std::sin(radians));
    c = static_cast<float>(std::cos(radians));
  }
};

} // namespace

void ozMatrix4f::makeEuler(float a, float b, float c) {
  SinCos const A(a), B(b), C(c);
  makeIdent();
  setRow(0, ozVec3f(C.c * A.c - C.s * B.s * A.s, C.c * A.s + C.s * B.s * A.c, -C.s * B.c));
  setRow(1, ozVec3f(-B.c * A.s, B.c * A.c, B.s));
  setRow(2, ozVec3f(C.c * B.s * A.s + C.s * A.c, C.s * A.s - C.c * B.s * A.c, C.c * B.c));
}

// The axis-angle matrix (Rodrigues' formula) from a unit axis and the angle's cosine and sine.
void ozMatrix4f::makeAxisAngle(ozVec3f const &n, float c, float s) {
  float const t = 1 - c, x = n[0], y = n[1], z = n[2];
  makeIdent();
  setRow(0, ozVec3f(t * x * x + c, t * x * y + z * s, t * x * z - y * s));
  setRow(1, ozVec3f(t * x * y - z * s, t * y * y + c, t * y * z + x * s));
  setRow(2, ozVec3f(t * x * z + y * s, t * y * z - x * s, t * z * z + c));
}

void ozMatrix4f::makeVecRotVec(ozVec3f const &from, ozVec3f const &to) {
  float c = from.dot(to);
  ozVec3f n;
  n.cross(from, to);
  float s = n.length();
  if (std::fabs(s) < OZ_TINY_EPSILON) {
    if (c >= 0) {
      makeIdent();
      return;
    }
    // Opposite vectors: half a turn about any axis across them.
    float x = std::fabs(from[0]), y = std::fabs(from[1]), z = std::fabs(from[2]);
    ozVec3f e;
    e[y >= x ? (z >= x ? 0 : 2) : (z >= y ? 1 : 2)] = 1;
    n.cross(from, e);
    n.normalize();
  } else {
    n /= s;
  }
  makeAxisAngle(n, c, s);
}

void ozMatrix4f::mult(ozMatrix4f const &a, ozMatrix4f const &b) {
#if OZ_FLOAT4
  ozFloat4 const b0 = ozLoad4(b._m[0]), b1 = ozLoad4(b._m[1]), b2 = ozLoad4(b._m[2]), b3 = ozLoad4(b._m[3]);
  ozFloat4 rows[4];
  for (int i = 0; i < 4; i++) {
    ozFloat4 const row = ozLoad4(a._m[i]);
    rows[i] = ozLane4Of<0>(row) * b0 + ozLane4Of<1>(row) * b1 + ozLane4Of<2>(row) * b2;
  }
  rows[3] += b3;
  // The fourth column is that of the identity.
  ozBits4 const kept = {-1, -1, -1, 0}, one = {0, 0, 0, 0x3f800000};
  for (int i = 0; i < 3; i++) ozStore4(_m[i], ozFloatsOf(ozBitsOf(rows[i]) & kept));
  ozStore4(_m[3], ozFloatsOf((ozBitsOf(rows[3]) & kept) | one));
#else
  ozMatrix4f r; // the fourth column is that of the identity
  for (int i = 0; i < 4; i++) {
    for (int j = 0; j < 3; j++) {
      r._m[i][j] = a._m[i][0] * b._m[0][j] + a._m[i][1] * b._m[1][j] + a._m[i][2] * b._m[2][j];
    }
  }
  for (int j = 0; j < 3; j++) r._m[3][j] += b._m[3][j];
  *this = r;
#endif
}

void ozMatrix4f::fullMult(ozMatrix4f const &a, ozMatrix4f const &b) {
  ozMatrix4f r;
  for (int i = 0; i < 4; i++) {
    for (int j = 0; j < 4; j++) {
      r._m[i][j] =
          a._m[i][0] * b._m[0][j] + a._m[i][1] * b._m[1][j] + a._m[i][2] * b._m[2][j] + a._m[i][3] * b._m[3][j];
    }
  }
  *this = r;
}

void ozMatrix4f::preTrans(float x, float y, float z, ozMatrix4f const &m) {
  *this = m;
  for (int j = 0; j < 4; j++) _m[3][j] = x * _m[0][j] + y * _m[1][j] + z * _m[2][j] + _m[3][j];
}

void ozMatrix4f::postTrans(ozMatrix4f const &m, float x, float y, float z) {
  *this = m;
  for (float(&row)[4] : _m) {
    row[0] += row[3] * x;
    row[1] += row[3] * y;
    row[2] += row[3] * z;
  }
}

void ozMatrix4f::preRot(float x, float y, float z, float radians, ozMatrix4f const &m) {
  ozMatrix4f rotation;
  rotation.makeRot(x, y, z, radians);
  mult(rotation, m);
}

void ozMatrix4f::postRot(ozMatrix4f const &m, float x, float y, float z, float radians) {
  ozMatrix4f rotation;
  rotation.makeRot(x, y, z, radians);
  mult(m, rotation);
}

void ozMatrix4f::preScale(float x, float y, float z, ozMatrix4f const &m) {
  *this = m;
  for (int j = 0; j < 4; j++) {
    _m[0][j] *= x;
    _m[1][j] *= y;
    _m[2][j] *= z;
  }
}

void ozMatrix4f::postScale(ozMatrix4f const &m, float x, float y, float z) {
  *this = m;
  for (float(&row)[4] : _m) {
    row[0] *= x;
    row[1] *= y;
    row[2] *= z;
  }
}

void ozMatrix4f::transpose(ozMatrix4f const &m) {
  ozMatrix4f r;
  for (int i = 0; i < 4; i++) {
    for (int j = 0; j < 4; j++) r._m[i][j] = m._m[j][i];
  }
  *this = r;
}
