#ifndef OZ_BILLBOARD_H
#define OZ_BILLBOARD_H

#include "oz/ozGroup.h"
#include "oz/ozMatrix4f.h"

/// A group that turns its children towards the viewer when they are drawn, each at a position of its own.
///
/// Culling, intersection and all other visits see the children as they are; the bound holds them however they turn. All
/// children are turned alike: exact for an orthographic camera, close for a perspective one.
class OZ_API ozBillboard : public ozGroup {
  OZ_CLASS(ozBillboard);

public:
  enum ModeEnum : int {
    AXIAL = 0,        ///< about the axis alone
    POINT_SCREEN = 1, ///< towards the screen, with the screen's up
    POINT_OBJECT = 2  ///< towards the screen, with the axis up
  };
  enum VectorEnum : int {
    POS_X_AXIS = 0,
    POS_Y_AXIS = 1,
    POS_Z_AXIS = 2,
    NEG_X_AXIS = 3,
    NEG_Y_AXIS = 4,
    NEG_Z_AXIS = 5
  };

  ozBillboard();

  /// Where each child stands; one without an entry stands at (0, 0, 0).
  ozMFVec3f *position() { return _positionField; }
  /// AXIAL by default.
  ModeEnum getMode();
  void setMode(ModeEnum mode);
  int getModeHack() { return getMode(); }
  void setModeHack(int mode) { setMode(static_cast<ModeEnum>(mode)); }
  /// (0, 1, 0) by default; a new axis is normalised.
  void getAxis(ozVec3f &axis);
  void getAxis(float *x, float *y, float *z);
  void setAxis(ozVec3f const &axis);
  void setAxis(float x, float y, float z);
  /// The axis of the children that is to face the eye; POS_Z_AXIS by default.
  VectorEnum getForward();
  void setForward(VectorEnum forward);
  /// The axis of the children that is to stay up; POS_Y_AXIS by default. It must not lie along the forward one.
  VectorEnum getUp();
  void setUp(VectorEnum up);

  /// box = a box that holds the children however they are turned.
  void calcChildrenBound(ozBoxBound &box);
  /// The rotation of the children for the action's present place; out must be the identity. 0 if the view goes along
  /// the axis, so that there is none.
  unsigned char calculateTransform(ozDrawAction *action, ozMatrix4f &out);
  /// Takes the scale out of a matrix: its first three rows become unit vectors. A zero row stays.
  static void unscaleMatrix(ozMatrix4f &m);

  ozTravDirective drawVisit(ozDrawAction *action) override;

protected:
  void fieldChanged(short id) override;
  void cleanSideEffect(short id) override;

private:
  void turnAboutAxis(ozVec3f const &forward, ozVec3f const &eye, ozMatrix4f &out) const;
  ozTravDirective drawChild(unsigned int i, ozMatrix4f const &turn, ozDrawAction *action);

  ozVec3fArray _position;
  ModeEnum _mode;
  ozVec3f _axisOfRotation;
  VectorEnum _forward;
  VectorEnum _up;
  ozMFVec3f *_positionField;
};

#endif
