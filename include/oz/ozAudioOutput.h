#ifndef OZ_AUDIO_OUTPUT_H
#define OZ_AUDIO_OUTPUT_H

#include "oz/ozPlatform.h"

/// What sound comes out of. An application derives from it, or takes the one of createOpenAL(), and installs it ahead
/// of the first sound. Without one nothing is heard.
///
/// An output has ports, each of which plays a queue of samples as they come in. All calls are made by the thread that
/// applies the ozSoundAction, and by the one that installs the output.
class OZ_API ozAudioOutput {
public:
  ozAudioOutput() = default;
  ozAudioOutput(ozAudioOutput const &) = delete;
  ozAudioOutput &operator=(ozAudioOutput const &) = delete;
  /// Also takes the output back if it is installed. Its ports are then not closed one by one.
  virtual ~ozAudioOutput();

  /// How many ports can still be opened.
  virtual int getNumChannels() = 0;
  /// Opens a port and returns its number, which is 0 or more; -1 if there is none.
  virtual int open() = 0;
  /// How many samples, counting each channel, the queue of a port takes now.
  virtual int getRoom(int port) = 0;
  /// Queues frames of signed 16-bit samples, the channels interleaved, to be played at `rate` frames a second. Returns
  /// how many frames were taken. The samples are the caller's again.
  virtual int write(int port, short const *samples, int frames, int channels, float rate) = 0;
  /// Gives a port back, with what is still in its queue.
  virtual void close(int port) = 0;

  /// Puts an output in place of the present one, whose players go; null for none. The caller keeps the output, and
  /// keeps it alive while it is installed. Its players are made by ozContext::initSound(): with the next sound, or the
  /// next walk that finds one to play.
  static void install(ozAudioOutput *output);
  static ozAudioOutput *getInstalled();

  /// A new output on the system's audio device through OpenAL, with up to 16 ports, to be deleted by the caller. Null
  /// if the library was built without it or there is no device.
  static ozAudioOutput *createOpenAL();

private:
  friend class ozSoundPlayer;
  static unsigned int getInstallation(); // counts the changes
};

#endif
