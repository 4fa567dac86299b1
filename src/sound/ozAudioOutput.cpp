#include "oz/ozAudioOutput.h"

#include "oz/ozContext.h"

namespace {

ozAudioOutput *Installed = nullptr;
unsigned int Installation = 0;

} // namespace

ozAudioOutput *ozAudioOutput::getInstalled() { return Installed; }
unsigned int ozAudioOutput::getInstallation() { return Installation; }

ozAudioOutput::~ozAudioOutput() {
  if (Installed != this) return;
  // First: the class that could close the ports is gone already.
  Installed = nullptr;
  ++Installation;
  ozContext::dropSoundPlayers();
}

void ozAudioOutput::install(ozAudioOutput *output) {
  if (output == Installed) return;
  ozContext::dropSoundPlayers(); // while their output can still close the ports
  Installed = output;
  ++Installation;
}
