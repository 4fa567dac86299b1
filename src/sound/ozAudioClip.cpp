#include "oz/ozAudioClip.h"

#include "oz/ozPtrArray.h"

ozPtrArray *const ozAudioClip::_ActiveClips = new ozPtrArray(4u);

OZ_DEFINE_INSTANCES(ozAudioClip)

OZ_DEFINE_TYPE(ozAudioClip, "AudioClip", ozContainer) {
  ozMFString::addTypeField(type, "url", 0, &ozAudioClip::_url);
  ozSFRef::addTypeField(type, "samples", 1, ozAudioSamples::getClassType(), &ozAudioClip::_samples);
  ozSFFloat::addTypeField(type, "pitch", 2, 1.0f, &ozAudioClip::_pitch);
  ozSFUByte::addTypeField(type, "doppler", 3, 1, &ozAudioClip::_doppler);
  ozSFUByte::addTypeField(type, "loop", 4, 0, &ozAudioClip::_loop);
  ozSFTime::addTypeField(type, "startTime", 5, ozTime(-1.0), &ozAudioClip::_startTime);
  ozSFTime::addTypeField(type, "stopTime", 6, ozTime(0.0), &ozAudioClip::_stopTime);
  ozSFTime::addTypeField(type, "duration", 7, ozTime(-1.0), &ozAudioClip::_duration);
  // 1 ahead of the first evaluation: a clip that is active by then never reports it, nor stands on the list. Meant so.
  ozSFUByte::addTypeField(type, "isActive", 8, 1, &ozAudioClip::_isActive);
  ozSFString::addTypeField(type, "description", 9, ozString(), &ozAudioClip::_description);
}

ozAudioClip::ozAudioClip(ozType *type) : ozContainer(type), playedOut(0), sampleDuration(0) {
  initFieldDefaults(_ClassType);
}

ozAudioClip::~ozAudioClip() {
  _ActiveClips->remove(this);
  _url.freeTexts();
  destroyFieldContents(_ClassType);
}

void ozAudioClip::fieldChanged(short id) {
  if (id < _ClassType->getAncestorFieldCount()) {
    ozContainer::fieldChanged(id);
    return;
  }
  if (id == 5 || id == 6) playedOut = 0;
  touchField(id);
}

void ozAudioClip::eval() {
  cleanFields();
  ozTime const now = ozTime::getTimeOfDay();
  if (_startTime > now || !_samples) return;
  sampleDuration = static_cast<double>(_samples->getNumFrames()) / static_cast<double>(_samples->getSampleRate());
  unsigned char active = 0; // also where a time is no number
  if (_startTime >= _stopTime)
    active = !playedOut || _loop;
  else if (_startTime < _stopTime)
    active = _stopTime > now || _loop;
  if (active == _isActive) return;
  static_cast<ozSFUByte *>(getField(8))->set(active);
  if (!active)
    _ActiveClips->remove(this);
  else if (_ActiveClips->find(this) < 0)
    _ActiveClips->append(this);
}
