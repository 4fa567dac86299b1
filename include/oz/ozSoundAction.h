#ifndef OZ_SOUND_ACTION_H
#define OZ_SOUND_ACTION_H

#include "oz/ozTransformAction.h"

class ozMicrophone;
class ozSound;
class ozSoundPlayer;

/// The walk that finds what can be heard, and has it played. Apply it once a frame. Without a microphone no sound is
/// ever started.
class OZ_API ozSoundAction : public ozTransformAction {
  OZ_OBJECT_CLASS(ozSoundAction);

public:
  ozSoundAction();
  ozSoundAction(ozSoundAction const &other);
  ozSoundAction &operator=(ozSoundAction const &other);
  ~ozSoundAction() override;

  /// Walks with ozNode::sound, then gives the sounds to play to the players and updates these; root may be null. Sounds
  /// that are more than the players wait for the next walk. Always returns TRAV_CONT; calls neither begin nor end.
  ozTravDirective apply(ozNode *root) override;
  ozAction *instantiate() override;

  /// Where the sounds are heard. The action holds a reference; null for none.
  void setMicrophone(ozMicrophone *microphone);
  ozMicrophone *getMicrophone() const { return _microphone; }

  /// The unused player that had the sound before, otherwise any unused one, the last first; null if all are in use.
  ozSoundPlayer *findSoundPlayer(ozSound *sound);
  /// 0 if the sound is within its maxFront of the microphone, otherwise 1: the name says the opposite. Meant so.
  int isAudible(ozSound *sound);

protected:
  explicit ozSoundAction(ozType *type);

private:
  ozMicrophone *_microphone = nullptr;
};

#endif
