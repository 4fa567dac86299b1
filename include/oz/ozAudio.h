#ifndef OZ_AUDIO_H
#define OZ_AUDIO_H

#include "oz/ozClass.h"

/// A container without fields of its own.
class OZ_API ozAudio : public ozContainer {
  OZ_CLASS(ozAudio);

public:
  ozAudio();
};

#endif
