#ifndef OZ_AUDIO_CLIP_H
#define OZ_AUDIO_CLIP_H

#include "oz/ozAudioSamples.h"
#include "oz/ozSFRef.h"

/// A timed use of a block of samples, with the fields of VRML's AudioClip. It has no clock: the sounds that play it
/// evaluate it when they are visited.
///
/// It is active from its start time to its stop time if that is the later one, otherwise until the samples have played
/// out; a looping clip stays active past both. Times are seconds and count as times of day do.
class OZ_API ozAudioClip : public ozContainer {
  OZ_CLASS(ozAudioClip);

public:
  ozAudioClip();

  ozMFString *url() { return static_cast<ozMFString *>(getField(0)); }
  OZ_REF_ACCESS(ozAudioSamples, Samples, 1, _samples)
  /// The speed of playing, 1 by default. What is not above 0 is silent.
  OZ_VALUE_ACCESS(float, Pitch, 2, _pitch)
  /// Only kept.
  OZ_VALUE_ACCESS(unsigned char, Doppler, 3, _doppler)
  /// 0 by default.
  OZ_VALUE_ACCESS(unsigned char, Loop, 4, _loop)
  /// -1 by default. Setting either time makes a clip that has played out ready to play again.
  OZ_VALUE_ACCESS(ozTime, StartTime, 5, _startTime)
  /// 0 by default, so that a new clip ends at its first evaluation.
  OZ_VALUE_ACCESS(ozTime, StopTime, 6, _stopTime)
  /// Only kept.
  ozTime getDuration() { return read(7, _duration); }
  /// As the last evaluation left it; 1 before the first.
  unsigned char getIsActive() { return read(8, _isActive); }
  OZ_CLASS_ACCESS(ozString, Description, 9, _description)

  /// Brings "isActive" up to date; without samples, or ahead of the start time, leaves it as it is.
  void eval();

  /// The clips that have become active, of the whole process.
  static ozPtrArray const &getActiveClips() { return *_ActiveClips; }

  /// Whether the samples have run out. Set by the sounds that play them.
  unsigned char playedOut;
  /// The length of the samples in seconds, as of the last evaluation.
  double sampleDuration;

protected:
  void fieldChanged(short id) override;

private:
  static ozPtrArray *const _ActiveClips; // never destroyed: clips may die while the process exits

  ozStringArray _url;
  ozAudioSamples *_samples;
  float _pitch;
  unsigned char _doppler;
  unsigned char _loop;
  ozTime _startTime;
  ozTime _stopTime;
  ozTime _duration;
  unsigned char _isActive;
  ozString _description;
};

#endif
