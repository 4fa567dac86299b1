#ifndef OZ_SOUND_ACTION_H
#define OZ_SOUND_ACTION_H

#include "oz/ozTransformAction.h"

/// The walk that finds what can be heard.
class OZ_API ozSoundAction : public ozTransformAction {
  OZ_OBJECT_CLASS(ozSoundAction);

public:
  ozSoundAction();
  ~ozSoundAction() override;

  /// Walks with ozNode::sound; root may be null. Always returns TRAV_CONT; calls neither begin nor end.
  ozTravDirective apply(ozNode *root) override;
  ozAction *instantiate() override;

protected:
  explicit ozSoundAction(ozType *type);
};

#endif
