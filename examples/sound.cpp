// The sounds of a VRML file, heard while the microphone moves away from the middle of the model: sound FILE [DISTANCE].

#include <oz/OzScene3D.h>

#include <stdio.h>
#include <stdlib.h>
#include <string>
#include <time.h>

int main(int argc, char **argv) {
  if (argc < 2) return fprintf(stderr, "usage: %s FILE [DISTANCE]\n", argv[0]), 2;
  float const distance = argc > 2 ? strtof(argv[2], nullptr) : 12;

  ozAudioOutput *output = ozAudioOutput::createOpenAL();
  if (!output) return fprintf(stderr, "There is no audio device.\n"), 1;
  ozAudioOutput::install(output); // ahead of the first sound

  std::string const file = argv[1];
  size_t const slash = file.rfind('/');
  if (slash != std::string::npos) ozGlobal::setFilePath(file.substr(0, slash).c_str()); // for what the model names
  ozContainer *root = nullptr;
  ozPtrArray files;
  vlDB::readFile(argv[1], root, files);
  if (!root) return fprintf(stderr, "%s cannot be read.\n", argv[1]), 1;
  root->ref();
  ozNode *const scene = static_cast<ozNode *>(root);
  scene->getBoxBound(); // what a program does that draws: transforms compute their matrices

  ozMicrophone *microphone = new ozMicrophone;
  ozSoundAction action;
  action.setMicrophone(microphone);
  int const steps = 100;
  for (int i = 0; i <= steps; i++) {
    microphone->setPosition(0, 0, distance * static_cast<float>(i) / steps);
    action.apply(scene); // once a frame; plays on as long as it comes at least four times a second
    timespec const frame = {0, 40000000};
    nanosleep(&frame, nullptr);
  }
  printf("heard from 0 to %g\n", static_cast<double>(distance));

  ozAudioOutput::install(nullptr);
  delete output;
  root->unref();
  return 0;
}
