#include "oz/ozAudio.h"

OZ_DEFINE_CLASS(ozAudio, "Audio", ozContainer) {}
