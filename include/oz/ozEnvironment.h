#ifndef OZ_ENVIRONMENT_H
#define OZ_ENVIRONMENT_H

#include "oz/ozGroup.h"
#include "oz/ozSFRef.h"

class ozFog;
class ozLight;

/// A group that is a scope for lights and fog: its own, and those among its descendants, end with it.
///
/// Drawing never culls an environment as a whole.
class OZ_API ozEnvironment : public ozGroup {
  OZ_CLASS(ozEnvironment);

public:
  ozEnvironment();

  /// The lights, each an ozLight. They are drawn ahead of the children, in order.
  ozMFRef *light() { return _light; }

  /// Null by default, which leaves the fog outside in force.
  ozFog *getFog() { return read(4, _fog); }
  void setFog(ozFog *fog);

  ozTravDirective drawVisit(ozDrawAction *action) override;

private:
  ozTravDirective drawScope(ozDrawAction *action);

  ozMFRef *_light;
  ozRefArray _lights;
  ozFog *_fog;
};

#endif
