#ifndef OZVIEW_SPEAKER_H
#define OZVIEW_SPEAKER_H

#include <oz/OzScene3D.h>

/// Lets a scene be heard where its camera stands.
class Speaker {
public:
  Speaker();
  ~Speaker();
  Speaker(Speaker const &) = delete;
  Speaker &operator=(Speaker const &) = delete;

  /// Takes hold of the system's audio device. Returns whether there is one; without it everything stays silent.
  bool open();
  bool isOpen() const { return _output; }
  /// Plays what can be heard now. To be called some ten times a second or more.
  void play(ozNode *root, ozCamera *camera);

private:
  ozAudioOutput *_output;
  ozMicrophone *_microphone;
  ozSoundAction _action;
};

#endif
