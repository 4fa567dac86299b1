#ifndef OZ_BLEND_EQUATION_H
#define OZ_BLEND_EQUATION_H

#include "oz/ozGroup.h"

/// A group whose children are blended with what is drawn already by an equation of its own. What it needs is found out
/// when the first object is made, so a rendering context should be current then; where OpenGL has it not, nothing
/// below is drawn.
class OZ_API ozBlendEquation : public ozGroup {
  OZ_CLASS(ozBlendEquation);

public:
  enum BlendEqEnum : int {
    ADD_BEQ = 0,
    SUBTRACT_BEQ = 1,
    REVERSE_SUBTRACT_BEQ = 2,
    MIN_BEQ = 3,
    MAX_BEQ = 4,
    ALPHA_MIN_BEQ = 5, ///< at support level 3 alone
    ALPHA_MAX_BEQ = 6  ///< at support level 3 alone
  };

  ozBlendEquation();

  /// ADD_BEQ by default.
  BlendEqEnum getEqMode();
  /// Takes ADD_BEQ in place of an equation that needs support level 3, where that is not there.
  void setEqMode(BlendEqEnum mode);

  /// The support level: 0 for none, 1 by an extension, 2 by OpenGL, 3 with the two alpha equations; -1 before the first
  /// detection.
  static int isSupported() { return _supported; }
  /// Finds out the support level from the current rendering context.
  static void extensionDetect();

  /// TRAV_PRUNE at once at support level 0.
  ozTravDirective drawVisit(ozDrawAction *action) override;

private:
  static int _supported;

  BlendEqEnum _eqMode;
};

#endif
