#include "sound/ozSampleMix.h"

#include <math.h>
#include <stdint.h>
#include <string.h>

namespace {

/// A sample of type T; what is silence becomes 0, the range from there to the bottom becomes 1.
template <class T> float readWhole(unsigned char const *from) {
  double const half = static_cast<double>(1ull << (8 * sizeof(T) - 1));
  T sample;
  memcpy(&sample, from, sizeof sample);
  return static_cast<float>((static_cast<double>(sample) - (T(-1) < T(0) ? 0 : half)) / half);
}

float readFloat(unsigned char const *from) {
  float sample;
  memcpy(&sample, from, sizeof sample);
  return sample;
}

int16_t toShort(float value) {
  float const scaled = value * 32768;
  if (scaled >= 32767) return 32767;
  if (scaled > -32768) return static_cast<int16_t>(lrintf(scaled));
  return scaled <= -32768 ? -32768 : 0; // silence for what is no number
}

} // namespace

ozSampleMix::ozSampleMix(ozAudioSamples &samples) {
  ozUByteArray const &array = samples.samples()->get();
  int const size = samples.getSampleSize();
  int const frames = samples.getNumFrames();
  int const channels = samples.getNumChannels();
  if (size < 1 || frames < 1 || channels < 1) return;
  bool const isFloat = samples.getSampleType() == ozAudioSamples::FLOAT_SAMPLE_TYPE;
  if (isFloat || samples.getSampleType() == ozAudioSamples::UNSIGNED_INT_SAMPLE_TYPE) {
    if (size == 1)
      _read = isFloat ? readWhole<int8_t> : readWhole<uint8_t>;
    else if (size == 2)
      _read = isFloat ? readWhole<int16_t> : readWhole<uint16_t>;
    else if (size == 4)
      _read = isFloat ? readFloat : readWhole<uint32_t>;
  }
  _bytes = array.getArray();
  _size = static_cast<unsigned int>(size);
  _channels = static_cast<unsigned int>(channels);
  size_t const bytes = array.getCount() < array.getSize() ? array.getCount() : array.getSize();
  size_t const there = bytes / (static_cast<size_t>(_size) * _channels);
  _frames = there < static_cast<size_t>(frames) ? static_cast<unsigned int>(there) : static_cast<unsigned int>(frames);
}

float ozSampleMix::getMean(unsigned int frame) const {
  float sum = 0;
  for (unsigned int c = 0; c < _channels; ++c) sum += getSample(frame, static_cast<int>(c));
  return sum / static_cast<float>(_channels);
}

void ozSampleMix::convert(char *to, int frames, int channels) {
  bool const mean = channels == 1 && _channels > 1;
  size_t const frameSize = static_cast<size_t>(channels) * sizeof(int16_t);
  int done = 0;
  for (; done < frames; ++done) {
    if (place >= _frames) {
      if (!loop) break;
      place = fmod(place, _frames);
    }
    unsigned int const here = static_cast<unsigned int>(place);
    unsigned int const next = here + 1 < _frames ? here + 1 : loop ? 0 : here;
    float const part = static_cast<float>(place - here);
    for (int c = 0; c < channels; ++c, to += sizeof(int16_t)) {
      int const from = static_cast<int>(static_cast<unsigned int>(c) % _channels);
      float const a = mean ? getMean(here) : getSample(here, from);
      float const b = mean ? getMean(next) : getSample(next, from);
      int16_t const sample = toShort((a + (b - a) * part) * intensity);
      memcpy(to, &sample, sizeof sample);
    }
    place += pitch;
  }
  memset(to, 0, static_cast<size_t>(frames - done) * frameSize);
  // A loop that ends with the buffer begins again there and is not at its end.
  if (loop && place >= _frames) place = fmod(place, _frames);
}
