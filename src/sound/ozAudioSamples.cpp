#include "oz/ozAudioSamples.h"

#include <stdint.h>
#include <stdio.h>
#include <string.h>

#include "oz/ozGlobal.h"
#include "sound/soundFile.h"

OZ_DEFINE_CLASS(ozAudioSamples, "AudioSamples", ozContainer) {
  ozSFString::addTypeField(type, "fileName", 0, "noName", &ozAudioSamples::_fileName);
  ozMFUByte::addTypeField(type, "samples", 1, &ozAudioSamples::_samples);
  ozSFInt::addTypeField(type, "numFrames", 2, 0, &ozAudioSamples::_numFrames);
  ozSFInt::addTypeField(type, "numChannels", 3, 2, &ozAudioSamples::_numChannels);
  ozSFFloat::addTypeField(type, "sampleRate", 4, 44100.0f, &ozAudioSamples::_sampleRate);
  ozSFInt::addTypeField(type, "sampleSize", 5, 2, &ozAudioSamples::_sampleSize);
  ozSFEnum::addTypeField(type, "sampleType", 6, FLOAT_SAMPLE_TYPE, &ozAudioSamples::_sampleType);
  static char const *const typeNames[] = {"UNSIGNED_INT_SAMPLE_TYPE", "FLOAT_SAMPLE_TYPE"};
  static int const types[] = {UNSIGNED_INT_SAMPLE_TYPE, FLOAT_SAMPLE_TYPE};
  type->defineEnums(6, 2, typeNames, types);
  ozSFFloat::addTypeField(type, "sampleScale", 7, 1.0f, &ozAudioSamples::_sampleScale);
  ozSFEnum::addTypeField(type, "loadStatus", 8, LOAD_NEEDED, &ozAudioSamples::_loadStatus);
  static char const *const statusNames[] = {"LOAD_NEEDED", "LOAD_FAILED", "LOAD_PENDING", "LOAD_COMPLETE"};
  static int const statuses[] = {LOAD_NEEDED, LOAD_FAILED, LOAD_PENDING, LOAD_COMPLETE};
  type->defineEnums(8, 4, statusNames, statuses);
}

// A file that cannot be had leaves the status as it was: meant so.
void ozAudioSamples::load() {
  validateField(0);
  if (_loadStatus == LOAD_COMPLETE) return;
  char const *const name = _fileName.getString() ? _fileName.getString() : "";
  ozString found;
  if (!ozGlobal::findFile(name, found, ozGlobal::READ_FMODE)) {
    fprintf(stderr, "ozAudioSamples::load() Could not open file %s\n", name);
    return;
  }
  ozSoundFile file;
  bool done = file.read(found.getString());
  if (done) {
    samples()->setCount(file.size);
    done = samples()->getCount() == file.size && samples()->getSize() >= file.size;
  }
  if (!done) {
    fprintf(stderr, "ozAudioSamples::load - failed loading %s - audio not yet avail on non-ZTK platforms\n", name);
    return;
  }
  samples()->setRange(0, file.size, file.bytes);
  setNumFrames(static_cast<int>(file.frames));
  setNumChannels(file.channels);
  setSampleRate(static_cast<float>(file.rate));
  setSampleSize(file.sampleSize);
  setSampleType(file.sampleSize == 4 ? FLOAT_SAMPLE_TYPE : UNSIGNED_INT_SAMPLE_TYPE);
  setLoadStatus(LOAD_COMPLETE);
}

namespace {

long long cut(double value) { return value > -9e18 ? static_cast<long long>(value) : 0; } // 0 for NaN, too

template <class Sample> void scaleSamples(unsigned char *bytes, size_t count, float scale, double max) {
  for (size_t i = 0; i < count; ++i, bytes += sizeof(Sample)) {
    Sample sample;
    memcpy(&sample, bytes, sizeof sample);
    float const scaled = static_cast<float>(sample) * scale;
    sample = static_cast<Sample>(cut(scaled < max ? static_cast<double>(scaled) : scaled >= max ? max : 0));
    memcpy(bytes, &sample, sizeof sample);
  }
}

} // namespace

void ozAudioSamples::scale() {
  cleanFields();
  if (_numFrames < 1 || _sampleSize < 1) return;
  unsigned int const bytes = _samples.getCount() < _samples.getSize() ? _samples.getCount() : _samples.getSize();
  size_t count = bytes / static_cast<unsigned int>(_sampleSize);
  if (count > static_cast<size_t>(_numFrames)) count = static_cast<size_t>(_numFrames);
  // One byte is read as signed, and cut at the top of the unsigned range: meant so.
  if (_sampleSize == 1)
    scaleSamples<int8_t>(_samples.getArray(), count, _sampleScale, 255.0);
  else if (_sampleSize == 2)
    scaleSamples<uint16_t>(_samples.getArray(), count, _sampleScale, 65535.0);
  else if (_sampleSize == 4)
    scaleSamples<uint32_t>(_samples.getArray(), count, _sampleScale, 4294967295.0);
  else
    return;
  samples()->editDone();
}
