#ifndef OZ_AUDIO_SAMPLES_H
#define OZ_AUDIO_SAMPLES_H

#include "oz/ozClass.h"
#include "oz/ozFieldAccess.h"
#include "oz/ozMFByte.h"

/// A block of sample frames with its format, given by the application or read from a file. A frame is one sample for
/// each channel, the channels next to each other; frames follow each other without a gap, in the machine's byte order.
class OZ_API ozAudioSamples : public ozContainer {
  OZ_CLASS(ozAudioSamples);

public:
  enum SampleTypeEnum : int {
    UNSIGNED_INT_SAMPLE_TYPE = 0, ///< whole numbers, silence in the middle of their range
    FLOAT_SAMPLE_TYPE = 1         ///< floats from -1 to 1; in 1 or 2 bytes, where no float fits, signed whole numbers
  };
  enum LoadStatusEnum : int { LOAD_NEEDED = 0, LOAD_FAILED = 1, LOAD_PENDING = 2, LOAD_COMPLETE = 3 };

  ozAudioSamples();

  /// "noName" by default. The file is only read by load().
  OZ_CLASS_ACCESS(ozString, FileName, 0, _fileName)
  ozMFUByte *samples() { return static_cast<ozMFUByte *>(getField(1)); }
  /// 0 by default.
  OZ_VALUE_ACCESS(int, NumFrames, 2, _numFrames)
  /// 2 by default.
  OZ_VALUE_ACCESS(int, NumChannels, 3, _numChannels)
  /// Frames a second, 44100 by default.
  OZ_VALUE_ACCESS(float, SampleRate, 4, _sampleRate)
  /// Bytes a sample: 1, 2 or 4; 2 by default.
  OZ_VALUE_ACCESS(int, SampleSize, 5, _sampleSize)
  /// FLOAT_SAMPLE_TYPE by default.
  OZ_ENUM_ACCESS(SampleTypeEnum, SampleType, 6, _sampleType)
  /// What scale() multiplies with, 1 by default.
  OZ_VALUE_ACCESS(float, SampleScale, 7, _sampleScale)
  /// LOAD_NEEDED by default; load() does nothing once it is LOAD_COMPLETE, whatever the file name is by then.
  OZ_ENUM_ACCESS(LoadStatusEnum, LoadStatus, 8, _loadStatus)

  /// Looks for the file as ozGlobal::findFile does and reads it: WAV, AIFF, FLAC and Ogg, where the library was built
  /// with libsndfile. Whole numbers of up to 16 bits become unsigned ones of their own size, all else floats. A file
  /// that is not found or cannot be read, or has more than 256 MB of samples, costs a line on the standard error stream
  /// and changes nothing.
  void load();
  /// Multiplies as many samples as there are frames (that is, not all where a frame has several: meant so) with
  /// sampleScale and cuts off what passes the top of the range. The bottom is not cut: values wrap around.
  void scale();

private:
  ozString _fileName;
  ozUByteArray _samples;
  int _numFrames;
  int _numChannels;
  float _sampleRate;
  int _sampleSize;
  SampleTypeEnum _sampleType;
  float _sampleScale;
  LoadStatusEnum _loadStatus;
};

#endif
