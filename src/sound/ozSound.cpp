#include "oz/ozSound.h"

#include <math.h>
#include <stdio.h>
#include <string.h>

#include "oz/ozAudioOutput.h"
#include "oz/ozContext.h"
#include "oz/ozPtrArray.h"
#include "oz/ozSoundAction.h"
#include "sound/ozSampleMix.h"

OZ_DEFINE_INSTANCES(ozSound)

OZ_DEFINE_TYPE(ozSound, "Sound", ozNode) {
  ozSFRef::addTypeField(type, "source", 2, ozAudioClip::getClassType(), &ozSound::_source);
  ozSFEnum::addTypeField(type, "control", 3, PLAY, &ozSound::_control);
  static char const *const names[] = {"PLAY", "PAUSE", "REWIND", "FASTFORWARD", "STOP"};
  static int const values[] = {PLAY, PAUSE, REWIND, FASTFORWARD, STOP};
  type->defineEnums(3, 5, names, values);
  ozSFVec3f::addTypeField(type, "location", 4, ozVec3f(0, 0, 0), &ozSound::_location);
  ozSFVec3f::addTypeField(type, "direction", 5, ozVec3f(0, 0, 1), &ozSound::_direction);
  ozSFFloat::addTypeField(type, "priority", 6, 0.0f, &ozSound::_priority);
  ozSFFloat::addTypeField(type, "currentFrame", 7, 0.0f, &ozSound::_currentFrame);
  ozSFFloat::addTypeField(type, "intensity", 8, 1.0f, &ozSound::_intensity);
  ozSFFloat::addTypeField(type, "maxIntensity", 9, 2.0f, &ozSound::_maxIntensity);
  ozSFFloat::addTypeField(type, "cullIntensity", 10, 0.1f, &ozSound::_cullIntensity);
  ozSFFloat::addTypeField(type, "maxFront", 11, 10.0f, &ozSound::_maxFront);
  ozSFFloat::addTypeField(type, "maxBack", 12, 10.0f, &ozSound::_maxBack);
  ozSFFloat::addTypeField(type, "minFront", 13, 1.0f, &ozSound::_minFront);
  ozSFFloat::addTypeField(type, "minBack", 14, 1.0f, &ozSound::_minBack);
  ozSFUByte::addTypeField(type, "spatialize", 15, 1, &ozSound::_spatialize);
}

ozSound::ozSound(ozType *type)
    : ozNode(type), _previousPosition(0, 0, 0), _worldPosition(0, 0, 0), _worldDirection(0, 0, 0), _velocity(0, 0, 0) {
  initFieldDefaults(_ClassType);
  updateRange();
  if (!ozContext::SoundInitialized) ozContext::initSound();
}

ozSound::~ozSound() {
  ozContext::SoundsArray.remove(this);
  destroyFieldContents(_ClassType);
}

void ozSound::updateRange() { _squaredRange = (_maxFront - _minFront) * (_maxFront - _minFront); }

void ozSound::fieldChanged(short id) {
  if (id < _ClassType->getAncestorFieldCount()) {
    ozNode::fieldChanged(id);
    return;
  }
  if (id == 11 || id == 13) updateRange();
  touchField(id);
}

void ozSound::sound(ozSoundAction *action) {
  cleanFields();
  ozMatrix4f const &matrix = *action->getMatrix();
  _worldDirection.xformVec(_direction, matrix);
  _previousPosition = _worldPosition;
  _worldPosition.xformPt(_location, matrix);
  _speed = _worldPosition.distance(_previousPosition);
  _velocity = _worldPosition;
  _velocity -= _previousPosition;
  if (action->isAudible(this) == 0) sound();
}

void ozSound::sound() {
  if (!_source) return;
  _source->eval();
  unsigned char const active = _source->getIsActive();
  if (_control == PLAY && active && ozContext::SoundsArray.find(this) < 0) ozContext::SoundsArray.append(this);
  _wasActive = active;
}

float ozSound::getAttenuation(float distance) {
  cleanFields();
  if (distance < 0) return 1;
  if (distance > _maxFront - _minFront) return 0;
  if (!(_squaredRange > 0)) return 1; // no range, and within it
  return 1 - (1 - _cullIntensity) * distance * distance / _squaredRange;
}

int ozSound::sound(char *buffer, int frames, float pitch, float intensity, int channels) {
  cleanFields();
  ozAudioSamples *const samples = _source ? _source->getSamples() : nullptr;
  if (!samples) return 0;
  bool const output = ozAudioOutput::getInstalled() != nullptr;
  ozSampleMix mix(*samples);
  double const end = output ? mix.getFrames() : samples->getNumFrames();
  bool const atEnd = static_cast<double>(_currentFrame) >= end;
  if (frames > 0 && atEnd && output) { // the samples were changed meanwhile, or have fewer bytes than they say
    setCurrentFrame(0);
    _source->playedOut = 1;
    return 0;
  }
  if (frames <= 0 || atEnd || isnan(_currentFrame)) return 0;

  if (output && mix.canRead()) {
    if (channels < 1 || !(pitch > 0) || isinf(pitch)) return 0;
    mix.place = static_cast<float>(_place) == _currentFrame ? _place : static_cast<double>(_currentFrame);
    if (mix.place < 0) mix.place = 0;
    mix.pitch = static_cast<double>(pitch);
    mix.intensity = intensity;
    mix.loop = _source->getLoop() != 0;
    mix.convert(buffer, frames, channels);
    _place = mix.place;
    setCurrentFrame(static_cast<float>(_place));
  } else {
    if (output && channels > 0) memset(buffer, 0, static_cast<size_t>(frames) * static_cast<size_t>(channels) * 2);
    fprintf(stderr, "ozSound::sound - 'audio' has bad sample format\n");
  }
  _source->playedOut = static_cast<double>(_currentFrame) >= end;
  if (_source->playedOut) setCurrentFrame(0);
  return frames;
}
