#ifndef SOUND_FILE_H
#define SOUND_FILE_H

#include "oz/ozPlatform.h"

/// The samples of a sound file: unsigned bytes or 16-bit numbers where the file has whole numbers of that size or less,
/// otherwise floats; the channels interleaved.
struct ozSoundFile {
  ozSoundFile() = default;
  ozSoundFile(ozSoundFile const &) = delete;
  ozSoundFile &operator=(ozSoundFile const &) = delete;
  ~ozSoundFile();

  /// Reads a WAV, AIFF, FLAC or Ogg file. False for anything else, a damaged or empty file, and one of more than 256 MB
  /// of samples; nothing is printed.
  bool read(char const *path);

  unsigned char *bytes = nullptr; // malloc'ed
  unsigned int size = 0;          // bytes
  unsigned int frames = 0;
  int channels = 0;
  int rate = 0;
  int sampleSize = 0; // 1, 2 or 4
};

#endif
