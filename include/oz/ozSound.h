#ifndef OZ_SOUND_H
#define OZ_SOUND_H

#include "oz/ozAudioClip.h"
#include "oz/ozNode.h"

/// A place in the graph where a clip is heard, with the fields of VRML's Sound.
///
/// A visit by an ozSoundAction puts it on the list of sounds to play when it is within "maxFront" of the microphone and
/// its clip is active. It is heard at full intensity within "minFront", from there on falling with the square of the
/// distance to "cullIntensity" at "maxFront", and not beyond.
class OZ_API ozSound : public ozNode {
  OZ_CLASS(ozSound);

public:
  enum ControlEnum : int { PLAY = 0, PAUSE = 1, REWIND = 2, FASTFORWARD = 3, STOP = 4 };

  ozSound();

  OZ_REF_ACCESS(ozAudioClip, Source, 2, _source)
  /// PLAY by default; with anything else the sound is not played.
  OZ_ENUM_ACCESS(ControlEnum, Control, 3, _control)
  /// In the node's own space; the origin by default.
  OZ_VEC3F_ACCESS(Location, 4, _location)
  /// Has no effect on what is heard; (0, 0, 1) by default.
  OZ_VEC3F_ACCESS(Direction, 5, _direction)
  /// Only kept.
  OZ_VALUE_ACCESS(float, Priority, 6, _priority)
  /// The frame of the samples that is played next.
  OZ_VALUE_ACCESS(float, CurrentFrame, 7, _currentFrame)
  /// 1 by default.
  OZ_VALUE_ACCESS(float, Intensity, 8, _intensity)
  /// The most that intensity and distance together may give, 2 by default.
  OZ_VALUE_ACCESS(float, MaxIntensity, 9, _maxIntensity)
  /// What is left of the intensity at maxFront, 0.1 by default.
  OZ_VALUE_ACCESS(float, CullIntensity, 10, _cullIntensity)
  /// Distances in the space of the graph's root: 10 and 1 by default. Those for the back are only kept.
  OZ_VALUE_ACCESS(float, MaxFront, 11, _maxFront)
  OZ_VALUE_ACCESS(float, MaxBack, 12, _maxBack)
  OZ_VALUE_ACCESS(float, MinFront, 13, _minFront)
  OZ_VALUE_ACCESS(float, MinBack, 14, _minBack)
  /// Only kept.
  OZ_VALUE_ACCESS(unsigned char, Spatialize, 15, _spatialize)

  /// The visit: finds where the sound is now, and calls sound() if the action's microphone is in reach.
  void sound(ozSoundAction *action) override;
  /// Evaluates the clip and, if it is to be heard, puts this sound on the list of sounds to play.
  virtual void sound();
  /// Converts the next `frames` frames of the samples into the buffer, which must have room for them: signed 16-bit
  /// samples, interleaved. Plays at `pitch` times the samples' speed, from the start again where a clip loops;
  /// silence follows where it does not. Returns `frames`; 0 where there is nothing to play. Without an installed
  /// ozAudioOutput, and for samples of an unknown format, prints a line instead of converting.
  int sound(char *buffer, int frames, float pitch, float intensity, int channels);

  /// @name As the last visit left it, in the space of the graph's root
  /// @{
  void getWorldPosition(ozVec3f &position) const { position = _worldPosition; }
  void getPreviousWorldPosition(ozVec3f &position) const { position = _previousPosition; }
  void getWorldDirection(ozVec3f &direction) const { direction = _worldDirection; }
  /// Per visit, not per second.
  void getVelocity(ozVec3f &velocity) const { velocity = _velocity; }
  float getSpeed() const { return _speed; }
  /// Whether the clip was active.
  unsigned char getWasActive() const { return _wasActive; }
  /// @}

  /// The factor on the intensity at a distance from the place of full intensity, which is minFront away.
  float getAttenuation(float distance);

protected:
  void fieldChanged(short id) override;

private:
  void updateRange();

  ozAudioClip *_source;
  ControlEnum _control;
  ozVec3f _location;
  ozVec3f _direction;
  float _priority;
  float _currentFrame;
  float _intensity;
  float _maxIntensity;
  float _cullIntensity;
  float _maxFront;
  float _maxBack;
  float _minFront;
  float _minBack;
  unsigned char _spatialize;

  float _squaredRange; // (maxFront - minFront) squared
  ozVec3f _previousPosition;
  ozVec3f _worldPosition;
  ozVec3f _worldDirection;
  ozVec3f _velocity;
  float _speed = 0;
  unsigned char _wasActive = 0;
  double _place = 0; // "currentFrame", finer than a float of a long clip can be
};

#endif
