#ifndef OZ_TEX_GEN_H
#define OZ_TEX_GEN_H

#include "oz/ozClass.h"
#include "oz/ozFieldAccess.h"
#include "oz/ozObjectId.h"
#include "oz/ozSFByte.h"

class ozContext;

/// How OpenGL makes texture coordinates: a mode and a plane for each of S, T, R and Q. It takes effect in an appearance
/// that refers to it and has texGenEnable on. A change reaches OpenGL when it is next drawn as a new one.
class OZ_API ozTexGen : public ozContainer {
  OZ_CLASS(ozTexGen);

public:
  enum ModeEnum : int {
    OFF = 0,
    EYE_LINEAR = 1,       ///< the distance from the plane, in OpenGL's eye-linear mode
    EYE_LINEAR_IDENT = 2, ///< the distance from the plane, given under the identity matrix
    OBJECT_LINEAR = 3,    ///< the distance from the plane in the shape's own frame
    SPHERE_MAP = 4        ///< the reflection in a sphere; for S and T
  };

  ozTexGen();

  /// OFF by default.
  OZ_ENUM_ACCESS(ModeEnum, ModeS, 0, _modeS)
  OZ_ENUM_ACCESS(ModeEnum, ModeT, 1, _modeT)
  OZ_ENUM_ACCESS(ModeEnum, ModeR, 2, _modeR)
  OZ_ENUM_ACCESS(ModeEnum, ModeQ, 3, _modeQ)
  /// The coefficients of x, y, z and 1; the axis of the coordinate by default.
  OZ_VEC4_ACCESS(ozVec4f, float, PlaneS, 4, _planeS)
  OZ_VEC4_ACCESS(ozVec4f, float, PlaneT, 5, _planeT)
  OZ_VEC4_ACCESS(ozVec4f, float, PlaneR, 6, _planeR)
  OZ_VEC4_ACCESS(ozVec4f, float, PlaneQ, 7, _planeQ)

  /// Sends modes and planes to the current OpenGL context, which must be that of `context`.
  virtual void draw(ozContext *context);

protected:
  void fieldChanged(short id) override;

private:
  ModeEnum _modeS, _modeT, _modeR, _modeQ;
  ozVec4f _planeS, _planeT, _planeR, _planeQ;
  ozObjectId _glId;
};

#endif
