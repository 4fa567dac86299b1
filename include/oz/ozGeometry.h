#ifndef OZ_GEOMETRY_H
#define OZ_GEOMETRY_H

#include "oz/ozBound.h"
#include "oz/ozContext.h"
#include "oz/ozCopyable.h"
#include "oz/ozFieldAccess.h"
#include "oz/ozPlane.h"

class ozCompileAction;
class ozDrawAction;
class ozIsectAction;

/// What the test of a ray against one triangle works out first.
struct ozTriCache {
  ozPlane plane; ///< of the triangle, the normal of unit length or zero
  short axisU;   ///< the two axes that the triangle is projected along
  short axisV;
  float invDet; ///< 1 / twice the projected area, signed
};

/// Base of everything that a shape can draw. Keeps a bound in the geometry's own coordinates; subclasses compute it.
class OZ_API ozGeometry : public ozContainer {
  OZ_ABSTRACT_CLASS(ozGeometry);
  OZ_COPYABLE(ozGeometry)

public:
  enum BoundModeEnum : int {
    STATIC = 0, ///< the bound is what was last stored
    DYNAMIC = 1 ///< the bound follows the geometry
  };

  /// Draws into the context of the action. The context must be current.
  virtual void draw(ozDrawAction *action) = 0;
  /// Tests the action's current segment; returns 1 for a hit, which is then in the action's record. In this class the
  /// bound is the shape, and the segment is not shortened.
  virtual int isect(ozIsectAction *action);
  /// Builds or deletes a display list, in classes that have one. Does nothing in this class.
  virtual void compile(ozCompileAction *action);

  /// DYNAMIC by default.
  OZ_VALUE_ACCESS(BoundModeEnum, BoundMode, 1, _boundMode)
  /// Brings the bound up to date and copies its numbers.
  void getBoxBound(ozBoxBound &bound);
  /// Stores a bound. In mode DYNAMIC the next change of the geometry replaces it.
  void setBoxBound(ozBoxBound const &bound);

  /// Makes the context's setters passing statements of what is being drawn.
  static void setContextWhichSetStateAsCurrentState(ozContext *context) {
    context->_whichSetState = context->_curState;
  }
  /// Makes the context's setters lasting statements of the application again.
  static void setContextWhichSetStateAsDefaultState(ozContext *context) {
    context->_whichSetState = context->_defaultState;
  }
  /// What the application has set on the context, whatever is in force.
  static float getContextDefaultLineWidth(ozContext *context) { return context->getDefaultState().lineWidth; }
  static float getContextDefaultPointSize(ozContext *context) { return context->getDefaultState().pointSize; }
  static ozContext::CullFaceEnum getContextDefaultStateCullFace(ozContext *context) {
    return context->getDefaultState().cullFace;
  }

protected:
  void fieldChanged(short id) override;

  /// Whether the action's current segment meets the bound, as it stands.
  int isectBox(ozIsectAction *action) const;
  /// Tests the action's current segment against a triangle. A hit that is not farther than the present one shortens the
  /// segment and is entered in the action's record, with the normal and primIndex; returns 1 then, otherwise 0.
  /// BOTH_CULL culls nothing here: that test is the caller's.
  int isectTri(ozIsectAction *action, ozVec3f const &a, ozVec3f const &b, ozVec3f const &c,
               ozContext::CullFaceEnum cull, int primIndex) const;
  void cacheTri(ozTriCache *cache, ozVec3f const &a, ozVec3f const &b, ozVec3f const &c) const;

  ozBoxBound _boxBound;
  BoundModeEnum _boundMode;
};

#endif
