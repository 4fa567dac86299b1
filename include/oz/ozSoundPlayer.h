#ifndef OZ_SOUND_PLAYER_H
#define OZ_SOUND_PLAYER_H

#include "oz/ozMicrophone.h"
#include "oz/ozSound.h"

class ozAudioOutput;

/// One channel of the audio output: computes what a sound plays there. ozContext::initSound() makes one for each port
/// of the installed ozAudioOutput, and ozSoundAction gives them their sounds.
class OZ_API ozSoundPlayer : public ozContainer {
  OZ_CLASS(ozSoundPlayer);

public:
  ozSoundPlayer();

  OZ_REF_ACCESS(ozSound, Sound, 0, _sound)
  /// Only kept.
  OZ_REF_ACCESS(ozMicrophone, Microphone, 1, _microphone)
  /// Only kept; update() asks the sound.
  OZ_VEC3F_ACCESS(SoundPosition, 2, _soundPosition)
  OZ_VEC3F_ACCESS(SoundVelocity, 3, _soundVelocity)
  /// Where the sound is heard.
  OZ_VEC3F_ACCESS(MicrophonePosition, 4, _microphonePosition)
  /// Only kept.
  OZ_VEC3F_ACCESS(MicrophoneVelocity, 5, _microphoneVelocity)
  /// The most that one update() plays, in seconds; 0.25 by default.
  OZ_VALUE_ACCESS(float, BufferLength, 6, _bufferLength)
  /// As the last update() computed them.
  OZ_VALUE_ACCESS(float, FrequencyFactor, 7, _frequencyFactor)
  OZ_VALUE_ACCESS(float, IntensityFactor, 8, _intensityFactor)
  /// Channels that are written to the output, 2 by default.
  OZ_VALUE_ACCESS(int, NumChannels, 9, _numChannels)
  /// While queueSize is above highWater nothing is played; all three are -1 by default.
  OZ_VALUE_ACCESS(int, QueueSize, 10, _queueSize)
  OZ_VALUE_ACCESS(int, LowWater, 11, _lowWater)
  OZ_VALUE_ACCESS(int, HighWater, 12, _highWater)

  /// Opens a port of the installed output. Returns 0 if one is open then; otherwise prints a line and returns -1.
  int openAudioPort();
  void closeAudioPort();
  /// Takes the changes of the fields as seen.
  void clean();
  /// Plays what the output has room for. Returns the number of samples, as the sound's samples count their channels.
  int update();

  /// Whether a sound has been given to this player in the present walk.
  void setUsed(int used) { _used = used; }
  int getUsed() const { return _used; }

  /// How many ports the installed output has to give; 0 without one.
  static int getNumAvailableSoundPlayers();

protected:
  void fieldChanged(short id) override;

  int _dirty = 0;          // the fields that have changed since clean(): bit 1 << id
  unsigned char _open = 0; // a port is open

private:
  ozAudioOutput *getPortOutput();
  int convert(ozSound *sound, ozAudioSamples *samples, ozAudioOutput *output);

  ozSound *_sound;
  ozMicrophone *_microphone;
  ozVec3f _soundPosition;
  ozVec3f _soundVelocity;
  ozVec3f _microphonePosition;
  ozVec3f _microphoneVelocity;
  float _bufferLength;
  float _frequencyFactor;
  float _intensityFactor;
  int _numChannels;
  int _queueSize;
  int _lowWater;
  int _highWater;

  ozByteArray _buffer;
  int _used = 0;
  unsigned char _firstUpdate = 1;
  int _port = -1; // of the output that was installed as number _installation
  unsigned int _installation = 0;
};

#endif
