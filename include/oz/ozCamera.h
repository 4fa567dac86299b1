#ifndef OZ_CAMERA_H
#define OZ_CAMERA_H

#include "oz/ozClass.h"
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

  float getHorizFOV();
  void setHorizFOV(float radians);
  float getVertFOV();
  void setVertFOV(float radians);
  /// Turns the view sideways within the frustum; a positive offset shifts it towards -X.
  float getHorizFOVOff();
  void setHorizFOVOff(float radians);
  /// A positive offset shifts the view towards +Y.
  float getVertFOVOff();
  void setVertFOVOff(float radians);
  /// Positive distances from the eye.
  float getNearClip();
  void setNearClip(float distance);
  float getFarClip();
  void setFarClip(float distance);
  /// See ozFrustum.
  ozFrustum::AspectModeEnum getAspectMode();
  void setAspectMode(ozFrustum::AspectModeEnum mode);
  float getAspectRatio();
  void setAspectRatio(float ratio);

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

  float getWidth();
  void setWidth(float width);
  float getHeight();
  void setHeight(float height);
  /// The middle of the view, in eye space.
  void getCenter(ozVec2f &center);
  void getCenter(float *x, float *y);
  void setCenter(ozVec2f const &center);
  void setCenter(float x, float y);
  float getNearClip();
  void setNearClip(float distance);
  float getFarClip();
  void setFarClip(float distance);
  ozFrustum::AspectModeEnum getAspectMode();
  void setAspectMode(ozFrustum::AspectModeEnum mode);
  float getAspectRatio();
  void setAspectRatio(float ratio);

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
