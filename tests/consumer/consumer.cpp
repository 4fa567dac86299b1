// The least program that needs the installed headers and the library: draws nothing on a device without a window.
#include <cstdio>
#include <oz/OzScene3D.h>

int main() {
  HDC device = ozDevice::createOffscreen(16, 16);
  if (!device) return 1;
  ozDevice::destroy(device);
  std::puts("OzScene3D is there");
  return 0;
}
