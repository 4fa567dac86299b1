#include "Speaker.h"

Speaker::Speaker() : _output(nullptr), _microphone(new ozMicrophone) { _action.setMicrophone(_microphone); }

Speaker::~Speaker() { delete _output; }

bool Speaker::open() {
  if (!_output && (_output = ozAudioOutput::createOpenAL())) ozAudioOutput::install(_output);
  return isOpen();
}

void Speaker::play(ozNode *root, ozCamera *camera) {
  if (!isOpen()) return;
  ozVec3f position;
  camera->getPosition(position);
  _microphone->setPosition(position);
  _action.apply(root);
}
