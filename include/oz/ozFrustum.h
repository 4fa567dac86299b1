#ifndef OZ_FRUSTUM_H
#define OZ_FRUSTUM_H

#include "oz/ozPlane.h"

/// The viewing volume of a camera, in eye space: it looks along -Z, near and far are positive distances.
class OZ_API ozFrustum {
public:
  /// How frust_calc treats the near rectangle.
  enum AspectModeEnum : int {
    FREE_ASPECT = 0,   ///< width and height stand
    HEIGHT_ASPECT = 1, ///< the height stands, the width follows by the aspect ratio
    WIDTH_ASPECT = 2   ///< the width stands, the height follows by the aspect ratio
  };
  /// The kinds that getFrustType tells.
  enum FrustTypeEnum : int { SYMMETRIC_PERSPECTIVE = 0, ORTHOGRAPHIC = 1, ASYMMETRIC_PERSPECTIVE = 2 };

  /// Perspective, near 1, far 1000, aspect mode 0, aspect ratio 1, a near rectangle from -0.5578517 to 0.5578517.
  ozFrustum();
  virtual ~ozFrustum() {}

  /// Copies all members; returns 1.
  virtual int copy(ozFrustum const *from);
  /// 0 outside, 1 perhaps inside, 7 wholly inside.
  virtual int contains(ozBoxBound const *box) const;
  /// 0 outside, 1 near a corner, 3 partly inside, 7 wholly inside.
  virtual int contains(ozSphereBound const *sphere) const;
  /// 1 or 0.
  virtual int contains(ozVec3f const &point) const;

  /// A perspective or orthographic volume by its near rectangle. Equal values compute nothing anew, but the type
  /// changes.
  void makePersp(float left, float right, float bottom, float top);
  void makeOrtho(float left, float right, float bottom, float top);
  /// A new near distance keeps the opening of a perspective volume.
  void setNearFar(float near, float far);
  void setAspectMode(AspectModeEnum mode);
  /// Ignored if 0 or less.
  void setAspectRatio(float ratio);

  int getFrustType() const { return _type; }
  void getNearFar(float *near, float *far) const { *near = _near, *far = _far; }
  void getNearFar(float &near, float &far) const { near = _near, far = _far; }
  AspectModeEnum getAspectMode() const { return _aspectMode; }
  float getAspectRatio() const { return _aspectRatio; }
  /// The corners: lower left, lower right, and then upper left ahead of upper right. Those of the far rectangle are the
  /// near ones scaled by far over near, whatever the type.
  void getNear(ozVec3f &ll, ozVec3f &lr, ozVec3f &ul, ozVec3f &ur) const { getCorners(_corners, ll, lr, ul, ur); }
  void getFar(ozVec3f &ll, ozVec3f &lr, ozVec3f &ul, ozVec3f &ur) const { getCorners(_corners + 4, ll, lr, ul, ur); }
  /// The near rectangle, and the two distances.
  void getDiagCorners(float *left, float *right, float *bottom, float *top, float *near, float *far) const;
  void getDiagCorners(float &left, float &right, float &bottom, float &top, float &near, float &far) const {
    getDiagCorners(&left, &right, &bottom, &top, &near, &far);
  }
  /// The projection matrix as OpenGL takes it.
  void getGLProjMat(ozMatrix4f &m) const;

  /// contains() of a box that is moved into eye space by a matrix first: what culling asks for every node. An empty box
  /// is outside.
  int containsMoved(ozBoxBound const &box, ozMatrix4f const &toEye) const;

protected:
  /// Brings rectangle, planes and corners up to date; the mode tells how the aspect ratio acts on the rectangle.
  void frust_calc(int mode);

private:
  enum { LEFT, RIGHT, NEAR, FAR, BOTTOM, TOP, PLANES };
  enum { LOWER_LEFT, LOWER_RIGHT, UPPER_RIGHT, UPPER_LEFT, FAR_LOWER_LEFT, CORNERS = 8 };

  static void getCorners(ozVec3f const *corners, ozVec3f &ll, ozVec3f &lr, ozVec3f &ul, ozVec3f &ur);
  void makeRectangle(float left, float right, float bottom, float top);
  void setRectangle(float left, float right, float bottom, float top);
  friend class ozVFCullAction;
  int containsMovedInline(ozBoxBound const &box, ozMatrix4f const &toEye) const;
  bool isWellInside(struct ozBox4 const &box) const;
  int contains(ozBox4 const &box) const;
  int containsCrossing(ozBox4 const &box) const;
  int containsOdd(ozBox4 const &box) const;
  int containsPlaneByPlane(ozBoxBound const *box) const;
  void setPlane(int plane, float x, float y, float z, float offset);

  int _type;
  float _near, _far;
  float _centerX, _centerY;
  AspectModeEnum _aspectMode;
  float _aspectRatio;
  ozVec3f _corners[CORNERS]; // the near ones, then the far ones, each from lower left counter-clockwise
  ozPlane _planes[PLANES];
  // The left, right, bottom and top plane once more, component by component, for tests of all four at once; and how far
  // a box may reach in X and Y, which is anywhere, and in Z.
  struct {
    float normals[3][4], offsets[4], lowest[4], highest[4];
  } _sides;
};

#endif
