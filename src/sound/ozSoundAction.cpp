#include "oz/ozSoundAction.h"

#include <stdio.h>

#include "oz/ozContext.h"
#include "oz/ozNode.h"
#include "oz/ozPtrArray.h"
#include "oz/ozSoundPlayer.h"

// The registered parent is the root of the actions and not the base class: meant.
OZ_DEFINE_TYPE(ozSoundAction, "SoundAction", ozAction) {}

ozSoundAction::ozSoundAction() : ozSoundAction(getClassType()) {}
ozSoundAction::ozSoundAction(ozType *type) : ozTransformAction(type) {}
ozSoundAction::ozSoundAction(ozSoundAction const &other) : ozTransformAction(other) {
  setMicrophone(other._microphone);
}
ozSoundAction &ozSoundAction::operator=(ozSoundAction const &other) {
  ozTransformAction::operator=(other);
  setMicrophone(other._microphone);
  return *this;
}
ozSoundAction::~ozSoundAction() { setMicrophone(nullptr); }

ozAction *ozSoundAction::instantiate() { return new ozSoundAction; }

void ozSoundAction::setMicrophone(ozMicrophone *microphone) {
  if (microphone) microphone->ref();
  if (_microphone) _microphone->unref();
  _microphone = microphone;
}

int ozSoundAction::isAudible(ozSound *sound) {
  if (!sound || !_microphone) return 1;
  ozVec3f place, ear;
  sound->getWorldPosition(place);
  _microphone->getPosition(ear);
  return !(sound->getMaxFront() > place.distance(ear));
}

ozSoundPlayer *ozSoundAction::findSoundPlayer(ozSound *sound) {
  ozPtrArray const &players = ozContext::SoundPlayersArray;
  ozSoundPlayer *unused = nullptr;
  for (unsigned int i = players.getCount(); i-- > 0;) {
    ozSoundPlayer *const player = static_cast<ozSoundPlayer *>(players[i]);
    if (player->getUsed()) continue;
    if (player->getSound() == sound) return player;
    if (!unused) unused = player;
  }
  return unused;
}

ozTravDirective ozSoundAction::apply(ozNode *root) {
  reset();
  if (root) root->sound(this);

  ozPtrArray &sounds = ozContext::SoundsArray;
  ozPtrArray const &players = ozContext::SoundPlayersArray;
  if (sounds.getCount() && !ozContext::SoundInitialized) ozContext::initSound(); // another output was installed
  for (unsigned int i = 0; i < players.getCount(); ++i) static_cast<ozSoundPlayer *>(players[i])->setUsed(0);
  unsigned int const most = sounds.getCount() < players.getCount() ? sounds.getCount() : players.getCount();
  for (unsigned int i = most; i-- > 0;) {
    if (i >= sounds.getCount()) continue; // a sound went with its last player
    ozSound *const sound = static_cast<ozSound *>(sounds[i]);
    ozSoundPlayer *const player = findSoundPlayer(sound);
    if (!player) {
      fprintf(stderr, "Error, No more Sound Players\n");
      return TRAV_CONT;
    }
    sounds.fastRemoveIndex(i);
    player->setSound(sound);
    if (_microphone) {
      ozVec3f ear;
      _microphone->getPosition(ear);
      player->setMicrophonePosition(ear);
    }
    player->setUsed(1);
    player->update();
  }
  return TRAV_CONT;
}
