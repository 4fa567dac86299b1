#ifndef OZ_CAMERA_H
#define OZ_CAMERA_H

#include "oz/ozClass.h"
#include "oz/ozFieldAccess.h"
#include "oz/ozFrustum.h"
#include "oz/ozMatrix4f.h"
#include "oz/ozRotation.h"

class ozDrawAction;
class ozHit;
class ozIsectAction;
class ozNode;

/// Where a graph is seen from: a position, an orientation and a view frustum. A camera stands beside the graph.
///
/// It loads OpenGL's matrices, culls for ozVFCullAction, and turns a pixel into a picking ray. An unturned camera looks
/// along -Z with +Y up.
class OZ_API ozCamera : public ozContainer {
  OZ_CLASS(ozCamera);

public:
  ozCamera();

  /// Loads the projection and modelview matrices of OpenGL; the matrix mode is modelview afterwards.
  virtual void draw(ozDrawAction *action);
  /// Casts a ray through the pixel (x, y), counted from the lower left, of the given viewport. Returns 1 and fills in
  /// hit if geometry is hit. Otherwise returns 0; for a pixel outside the viewport hit is left alone. The ray of a
  /// perspective camera takes no account of an offset of the frustum.
  virtual int pick(ozNode *root, int x, int y, ozHit &hit, int vx, int vy, int vw, int vh);
  /// The same in the current context's viewport; 0 without a current context.
  virtual int pick(ozNode *root, int x, int y, ozHit &hit);

  /// In the space of the graph's root. (0, 0, 0) by default.
  void setPosition(float x, float y, float z);
  void setPosition(ozVec3f const &position);
  void getPosition(float *x, float *y, float *z);
  void getPosition(ozVec3f &position);

  /// Axis and radians. The axis is normalised; one shorter than 0.00001 in each component becomes zero, which turns
  /// nothing. (0, 0, 1, 0) by default.
  void setOrientation(float x, float y, float z, float radians);
  void setOrientation(ozRotation const &orientation);
  void getOrientation(float *x, float *y, float *z, float *radians);
  /// The rotation holds degrees.
  void getOrientation(ozRotation &orientation);

  /// From the root's space to the eye's. Pending fields are not brought up to date.
  void getViewMat(ozMatrix4f &matrix) const { matrix = _viewMatrix; }
  /// The frustum itself, in eye space.
  ozFrustum *getBaseFrust() { return &_frustum; }

  /// The action that all cameras pick with; made at the first pick if none was set.
  static ozIsectAction *getPicker() { return _Picker; }
  /// Deletes the old one and takes over the new one, which must come from new.
  static void setPicker(ozIsectAction *picker);

protected:
  void fieldChanged(short id) override;

  ozFrustum _frustum;

private:
  static ozIsectAction *_Picker;

  ozVec3f _position;
  ozRotation _orientation;
  ozMatrix4f _viewMatrix; // follows position and orientation
};

/// A camera whose frustum the application supplies.
class OZ_API ozFrustumCamera : public ozCamera {
  OZ_CLASS(ozFrustumCamera);

public:
  ozFrustumCamera();

  /// Takes over a copy.
  void setFrustum(ozFrustum *frustum);
};

/// A perspective camera, by its angles of view in radians. The defaults: 45 degrees each way, from 1 to 1000.
class OZ_API ozPerspCamera : public ozCamera {
  OZ_CLASS(ozPerspCamera);

public:
  ozPerspCamera();

  OZ_VALUE_ACCESS(float, HorizFOV, 2, _horizFOV)
  OZ_VALUE_ACCESS(float, VertFOV, 3, _vertFOV)
  /// Turns the view sideways within the frustum; a positive offset shifts it towards -X.
  OZ_VALUE_ACCESS(float, HorizFOVOff, 4, _horizFOVOff)
  /// A positive offset shifts the view towards +Y.
  OZ_VALUE_ACCESS(float, VertFOVOff, 5, _vertFOVOff)
  /// Positive distances from the eye.
  OZ_VALUE_ACCESS(float, NearClip, 6, _nearClip)
  OZ_VALUE_ACCESS(float, FarClip, 7, _farClip)
  /// See ozFrustum.
  OZ_VALUE_ACCESS(ozFrustum::AspectModeEnum, AspectMode, 8, _aspectMode)
  OZ_VALUE_ACCESS(float, AspectRatio, 9, _aspectRatio)

protected:
  void fieldChanged(short id) override;

private:
  float _horizFOV;
  float _vertFOV;
  float _horizFOVOff;
  float _vertFOVOff;
  float _nearClip;
  float _farClip;
  ozFrustum::AspectModeEnum _aspectMode;
  float _aspectRatio;
};

/// An orthographic camera, by the size of what it sees. The defaults: 1 by 1 around the axis, from 1 to 1000.
class OZ_API ozOrthoCamera : public ozCamera {
  OZ_CLASS(ozOrthoCamera);

public:
  ozOrthoCamera();

  OZ_VALUE_ACCESS(float, Width, 2, _width)
  OZ_VALUE_ACCESS(float, Height, 3, _height)
  /// The middle of the view, in eye space.
  void getCenter(ozVec2f &center) { center = read(4, _center); }
  void getCenter(float *x, float *y) { read(4, _center).get(x, y); }
  void setCenter(ozVec2f const &center) { store(4, _center, center); }
  void setCenter(float x, float y) { store(4, _center, ozVec2f(x, y)); }
  /// Positive distances from the eye.
  OZ_VALUE_ACCESS(float, NearClip, 5, _nearClip)
  OZ_VALUE_ACCESS(float, FarClip, 6, _farClip)
  /// See ozFrustum.
  OZ_VALUE_ACCESS(ozFrustum::AspectModeEnum, AspectMode, 7, _aspectMode)
  OZ_VALUE_ACCESS(float, AspectRatio, 8, _aspectRatio)

protected:
  void fieldChanged(short id) override;

private:
  void makeOrtho();

  float _width;
  float _height;
  ozVec2f _center;
  float _nearClip;
  float _farClip;
  ozFrustum::AspectModeEnum _aspectMode;
  float _aspectRatio;
};

#endif
