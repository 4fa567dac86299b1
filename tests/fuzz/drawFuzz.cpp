// As readerFuzz, and what is read is drawn as well, into a small offscreen picture.
#include "../vrml/useGraph.h"

extern "C" int LLVMFuzzerInitialize(int *, char ***) {
  stderr = fopen("/dev/null", "w");
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(unsigned char const *data, size_t size) {
  static HDC const device = ozDevice::createOffscreen(16, 16);
  static ozContext *const context = new ozContext(device);
  static ozPerspCamera *const camera = new ozPerspCamera;
  if (!camera->getRefCount()) camera->ref();
  context->makeCurrent(device);
  ozDrawAction action;
  action.setCamera(camera);
  camera->setPosition(0, 0, 20);
  camera->draw(&action);
  std::string text = "#VRML V2.0 utf8\n";
  text.append(reinterpret_cast<char const *>(data), size);
  readAndUse(text.data(), text.size(), &action);
  return 0;
}
