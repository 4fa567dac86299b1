#include "oz/ozSoundPlayer.h"

#include <math.h>
#include <stdio.h>

#include "oz/ozAudioOutput.h"

OZ_DEFINE_INSTANCES(ozSoundPlayer)

OZ_DEFINE_TYPE(ozSoundPlayer, "SoundPlayer", ozContainer) {
  ozSFRef::addTypeField(type, "sound", 0, ozSound::getClassType(), &ozSoundPlayer::_sound);
  ozSFRef::addTypeField(type, "microphone", 1, ozMicrophone::getClassType(), &ozSoundPlayer::_microphone);
  ozSFVec3f::addTypeField(type, "soundPosition", 2, ozVec3f(0, 0, 0), &ozSoundPlayer::_soundPosition);
  ozSFVec3f::addTypeField(type, "soundVelocity", 3, ozVec3f(0, 0, 0), &ozSoundPlayer::_soundVelocity);
  ozSFVec3f::addTypeField(type, "microphonePosition", 4, ozVec3f(0, 0, 0), &ozSoundPlayer::_microphonePosition);
  ozSFVec3f::addTypeField(type, "microphoneVelocity", 5, ozVec3f(0, 0, 0), &ozSoundPlayer::_microphoneVelocity);
  ozSFFloat::addTypeField(type, "bufferLength", 6, 0.25f, &ozSoundPlayer::_bufferLength);
  ozSFFloat::addTypeField(type, "frequencyFactor", 7, 1.0f, &ozSoundPlayer::_frequencyFactor);
  ozSFFloat::addTypeField(type, "intensityFactor", 8, 1.0f, &ozSoundPlayer::_intensityFactor);
  ozSFInt::addTypeField(type, "numChannels", 9, 2, &ozSoundPlayer::_numChannels);
  ozSFInt::addTypeField(type, "queueSize", 10, -1, &ozSoundPlayer::_queueSize);
  ozSFInt::addTypeField(type, "lowWater", 11, -1, &ozSoundPlayer::_lowWater);
  ozSFInt::addTypeField(type, "highWater", 12, -1, &ozSoundPlayer::_highWater);
}

ozSoundPlayer::ozSoundPlayer(ozType *type) : ozContainer(type) { initFieldDefaults(_ClassType); }

ozSoundPlayer::~ozSoundPlayer() {
  closeAudioPort();
  destroyFieldContents(_ClassType);
}

void ozSoundPlayer::fieldChanged(short id) {
  int const watched = 1 | 2 | 64 | 512 | 1024 | 2048 | 4096;
  if (id >= 0 && id <= 12) _dirty |= (1 << id) & watched;
  touchField(id);
}

int ozSoundPlayer::getNumAvailableSoundPlayers() {
  ozAudioOutput *const output = ozAudioOutput::getInstalled();
  int const count = output ? output->getNumChannels() : 0;
  return count > 0 ? count : 0;
}

void ozSoundPlayer::clean() { _dirty = 0; }

// The output behind the open port. A port of an output that was taken back since is gone with it.
ozAudioOutput *ozSoundPlayer::getPortOutput() {
  if (_port < 0) return nullptr;
  if (_installation == ozAudioOutput::getInstallation()) return ozAudioOutput::getInstalled();
  _port = -1;
  _open = 0;
  return nullptr;
}

int ozSoundPlayer::openAudioPort() {
  if (_dirty) clean();
  getPortOutput();
  if (_open) return 0;
  if (ozAudioOutput *const output = ozAudioOutput::getInstalled()) {
    _port = output->open();
    if (_port >= 0) {
      _installation = ozAudioOutput::getInstallation();
      _open = 1;
      return 0;
    }
    _port = -1;
  }
  fprintf(stderr, "ozSoundPlayer::openAudioPort - no audio ports available\n");
  return -1;
}

void ozSoundPlayer::closeAudioPort() {
  if (ozAudioOutput *const output = getPortOutput()) output->close(_port);
  _port = -1;
  _open = 0;
}

int ozSoundPlayer::update() {
  ozAudioOutput *const output = getPortOutput();
  if (!_open) return 0;
  cleanFields();
  if (_dirty) clean();
  ozAudioClip *const clip = _sound ? _sound->getSource() : nullptr;
  if (!clip) return 0;
  ozVec3f place;
  _sound->getWorldPosition(place);
  float const distance = place.distance(_microphonePosition) - _sound->getMinFront();
  _frequencyFactor = clip->getPitch();
  _intensityFactor = _sound->getIntensity() * _sound->getAttenuation(distance);
  if (_intensityFactor > _sound->getMaxIntensity()) _intensityFactor = _sound->getMaxIntensity();
  _firstUpdate = 0;
  if (static_cast<long long>(_queueSize) - _highWater > 0) return 0;
  ozAudioSamples *const samples = clip->getSamples();
  return samples ? convert(_sound, samples, output) : 0;
}

// From here on everything may come from a file: sizes of 0 and less, infinities.
int ozSoundPlayer::convert(ozSound *sound, ozAudioSamples *samples, ozAudioOutput *output) {
  int const channels = samples->getNumChannels();
  int const sampleSize = samples->getSampleSize();
  float const rate = samples->getSampleRate();
  if (channels < 1 || sampleSize < 1 || _numChannels < 1 || !(rate > 0) || isinf(rate)) return 0;

  int const samplesRoom = output ? output->getRoom(_port) : 0; // no room where there is no output
  int const most = samplesRoom > 0 ? samplesRoom / (channels > _numChannels ? channels : _numChannels) : 0;
  double const wanted = static_cast<double>(rate) * static_cast<double>(_bufferLength);
  int frames = wanted < most ? static_cast<int>(wanted > 0 ? wanted : 0) : most;

  // The samples are written as 16 bits, whatever they are read as.
  double const mostBytes = 1 << 24;
  double const frameSize = static_cast<double>(sampleSize) * _numChannels;
  double const outputSize = static_cast<double>(sizeof(short)) * _numChannels;
  bool const isSlow = _frequencyFactor > 0 && _frequencyFactor < 1;
  double const stretch = isSlow ? 1 / static_cast<double>(_frequencyFactor) : 1;
  double const needed = floor(fmin((frames + 2.0) * stretch * frameSize, mostBytes));
  double const written16 = fmin(frames * outputSize, mostBytes);
  unsigned int const size = static_cast<unsigned int>(fmax(needed, written16));
  if (_buffer.getSize() < size) _buffer.setSize(size);
  if (_buffer.getSize() < frames * outputSize) frames = static_cast<int>(_buffer.getSize() / outputSize);

  int const written = sound->sound(_buffer.getArray(), frames, _frequencyFactor, _intensityFactor, _numChannels);
  if (written > 0 && output)
    output->write(_port, reinterpret_cast<short const *>(_buffer.getArray()), written, _numChannels, rate);
  // Also said where it is the number of channels alone that makes the difference: meant so.
  int const room = static_cast<int>(needed / (static_cast<double>(sampleSize) * channels));
  if (room < written) fprintf(stderr, "\n\nbufSize = %d frames (%d returned)\n\n", room, written);
  return channels * written;
}
