#ifndef OZ_FOG_H
#define OZ_FOG_H

#include "oz/ozFieldAccess.h"
#include "oz/ozNode.h"
#include "oz/ozObjectId.h"

class ozContext;

/// Fog for what is drawn after it, up to the end of the scope that holds it (see ozLight). Nothing happens unless the
/// context's own fogEnable is on. Distances are eye distances.
class OZ_API ozFog : public ozNode {
  OZ_CLASS(ozFog);

public:
  enum FogModeEnum : int { LINEAR_FOG = 0, EXP_FOG = 1, EXP2_FOG = 2 };

  ozFog();

  /// 1 by default.
  OZ_VALUE_ACCESS(unsigned char, On, 2, _on)
  /// EXP_FOG by default.
  OZ_ENUM_ACCESS(FogModeEnum, Mode, 3, _mode)
  /// For the two exponential modes. 1 by default.
  OZ_VALUE_ACCESS(float, Density, 4, _density)
  /// Where linear fog begins. 0 by default.
  OZ_VALUE_ACCESS(float, Start, 5, _start)
  /// Where linear fog hides everything. 1 by default.
  OZ_VALUE_ACCESS(float, End, 6, _end)
  /// The fog colour of colour index mode. 1 by default.
  OZ_VALUE_ACCESS(float, Index, 7, _index)
  /// 0, 0, 0, 0 by default.
  OZ_VEC4_ACCESS(ozVec4f, float, Color, 8, _color)

  ozTravDirective drawVisit(ozDrawAction *action) override;
  /// Puts the fog into effect in the action's context.
  virtual void draw(ozDrawAction *action);

  /// For the context: the fog has come onto its stack and is sent anew at the next draw().
  void push() { _defined = 0; }
  /// For the context: the fog is back on top after `other`, and is sent if it differs.
  void pop(ozFog *other, ozContext *context);

protected:
  void fieldChanged(short id) override;
  /// Sends the parameters to OpenGL.
  virtual void define();

private:
  bool sameAs(ozFog const *other) const;

  unsigned char _on;
  FogModeEnum _mode;
  float _density;
  float _start;
  float _end;
  float _index;
  ozVec4f _color;
  ozObjectId _glId;
  unsigned char _defined;
};

#endif
