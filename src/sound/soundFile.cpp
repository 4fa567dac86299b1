// The decoder of sound files. The first bytes decide what a file is, not its name; what its header claims is believed
// only where it is refused for it, and memory grows with what has really been decoded.

#include "sound/soundFile.h"

#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#ifdef OZ_HAVE_SNDFILE
#include <sndfile.h>
#endif

ozSoundFile::~ozSoundFile() { free(bytes); }

#ifdef OZ_HAVE_SNDFILE
namespace {

size_t const MostBytes = size_t(256) << 20;
size_t const StepBytes = size_t(1) << 18;

bool isSoundFile(char const *path) {
  FILE *const file = fopen(path, "rb");
  if (!file) return false;
  char start[12] = {};
  bool const whole = fread(start, 1, sizeof start, file) == sizeof start;
  fclose(file);
  if (!whole) return false;
  if (!memcmp(start, "RIFF", 4)) return !memcmp(start + 8, "WAVE", 4);
  if (!memcmp(start, "FORM", 4)) return !memcmp(start + 8, "AIFF", 4) || !memcmp(start + 8, "AIFC", 4);
  return !memcmp(start, "fLaC", 4) || !memcmp(start, "OggS", 4);
}

int sampleSizeOf(int format) {
  switch (format & SF_FORMAT_SUBMASK) {
  case SF_FORMAT_PCM_S8:
  case SF_FORMAT_PCM_U8:
    return 1;
  case SF_FORMAT_PCM_16:
    return 2;
  default:
    return 4;
  }
}

// Frames arrive as shorts where they are whole numbers; a byte is the upper half of one.
sf_count_t readStep(SNDFILE *file, int sampleSize, unsigned char *to, sf_count_t frames, int channels, short *shorts) {
  if (sampleSize == 4) return sf_readf_float(file, reinterpret_cast<float *>(to), frames);
  sf_count_t const got = sf_readf_short(file, shorts, frames);
  for (sf_count_t i = 0; i < got * channels; ++i) {
    uint16_t const centred = static_cast<uint16_t>(shorts[i] ^ 0x8000);
    if (sampleSize == 1)
      to[i] = static_cast<unsigned char>(centred >> 8);
    else
      memcpy(to + 2 * i, &centred, 2);
  }
  return got;
}

} // namespace

bool ozSoundFile::read(char const *path) {
  if (!isSoundFile(path)) return false;
  SF_INFO info;
  memset(&info, 0, sizeof info);
  SNDFILE *const file = sf_open(path, SFM_READ, &info);
  if (!file) return false;
  channels = info.channels;
  rate = info.samplerate;
  sampleSize = sampleSizeOf(info.format);
  size_t const frameSize = static_cast<size_t>(channels > 0 ? channels : 1) * static_cast<size_t>(sampleSize);
  bool good = channels > 0 && rate > 0 && frameSize <= StepBytes;
  // Some formats do not know their length ahead: the largest number stands for that.
  if (info.frames != SF_COUNT_MAX && info.frames > static_cast<sf_count_t>(MostBytes / frameSize)) good = false;

  sf_count_t const step = static_cast<sf_count_t>(StepBytes / frameSize);
  short *const shorts = good && sampleSize < 4 ? static_cast<short *>(malloc(StepBytes * 2)) : nullptr;
  if (sampleSize < 4 && !shorts) good = false;
  size_t used = 0, room = 0;
  while (good) {
    if (room - used < StepBytes) {
      room = room ? room * 2 : StepBytes * 2;
      void *const larger = realloc(bytes, room);
      good = larger != nullptr;
      if (!good) break;
      bytes = static_cast<unsigned char *>(larger);
    }
    sf_count_t const got = readStep(file, sampleSize, bytes + used, step, channels, shorts);
    if (got <= 0) break;
    used += static_cast<size_t>(got) * frameSize;
    good = used <= MostBytes;
  }
  free(shorts);
  sf_close(file);
  size = static_cast<unsigned int>(used);
  frames = static_cast<unsigned int>(used / frameSize);
  return good && frames > 0;
}
#else
bool ozSoundFile::read(char const *) { return false; }
#endif
