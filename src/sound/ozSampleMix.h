#ifndef SOUND_OZ_SAMPLE_MIX_H
#define SOUND_OZ_SAMPLE_MIX_H

#include "oz/ozAudioSamples.h"

/// The conversion of a block of samples, of whatever format, to what an output takes.
class ozSampleMix {
public:
  /// The samples must stay as they are while this lives.
  explicit ozSampleMix(ozAudioSamples &samples);

  /// The frames that are there whole, which may be fewer than the samples say.
  unsigned int getFrames() const { return _frames; }
  /// Whether the format is known.
  bool canRead() const { return _read != nullptr; }

  double place = 0; ///< the frame to begin with, 0 or more; moved to the one behind the last
  double pitch = 1; ///< frames a frame, above 0
  float intensity = 1;
  bool loop = false;

  /// Writes frames of signed 16-bit samples, with linear interpolation between those of the source; silence behind the
  /// end. One channel takes the mean of the source's, several take them in turn.
  void convert(char *to, int frames, int channels);

private:
  typedef float (*Read)(unsigned char const *); // a sample, from -1 to 1

  float getSample(unsigned int frame, int channel) const {
    return _read(_bytes + (static_cast<size_t>(frame) * _channels + static_cast<unsigned int>(channel)) * _size);
  }
  float getMean(unsigned int frame) const;

  Read _read = nullptr;
  unsigned char const *_bytes = nullptr;
  unsigned int _frames = 0;
  unsigned int _channels = 0;
  unsigned int _size = 0;
};

#endif
