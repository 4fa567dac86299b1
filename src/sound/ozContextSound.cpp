// What sound keeps in the context class: the lists of the whole process, and their start.

#include <stdio.h>

#include "oz/ozContext.h"
#include "oz/ozPtrArray.h"
#include "oz/ozSoundPlayer.h"

unsigned char ozContext::SoundInitialized = 0;
ozPtrArray &ozContext::SoundsArray = *new ozPtrArray;
ozPtrArray &ozContext::SoundPlayersArray = *new ozPtrArray;

void ozContext::initSound() {
  SoundInitialized = 1;
  for (int left = ozSoundPlayer::getNumAvailableSoundPlayers(); left > 0; --left) {
    ozSoundPlayer *const player = new ozSoundPlayer;
    player->ref();
    if (player->openAudioPort() == -1) {
      fprintf(stderr, "Warning - Failed to open AudioPort for Audio Resource\n");
      player->unref();
    } else {
      SoundPlayersArray.append(player);
    }
  }
}

// The output goes: so do its players. The next sound asks for new ones.
void ozContext::dropSoundPlayers() {
  while (unsigned int const count = SoundPlayersArray.getCount()) {
    ozSoundPlayer *const player = static_cast<ozSoundPlayer *>(SoundPlayersArray[count - 1]);
    SoundPlayersArray.removeIndex(count - 1);
    player->closeAudioPort();
    player->unref();
  }
  SoundInitialized = 0;
}
