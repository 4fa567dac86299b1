#ifndef OZ_TESTS_VRML_USE_GRAPH_H
#define OZ_TESTS_VRML_USE_GRAPH_H

#include <stdio.h>
#include <sys/mman.h>
#include <unistd.h>

#include <string>

#include "oz/OzScene3D.h"

/// A file that lives in memory and is gone when this object is.
class MemoryFile {
public:
  MemoryFile(void const *data, size_t size) : _fd(memfd_create("scene", MFD_CLOEXEC)) {
    for (char const *at = static_cast<char const *>(data); size;) {
      ssize_t const written = ::write(_fd, at, size);
      if (written <= 0) break;
      at += written;
      size -= static_cast<size_t>(written);
    }
    path = "/proc/self/fd/" + std::to_string(_fd);
  }
  MemoryFile(MemoryFile const &) = delete;
  MemoryFile &operator=(MemoryFile const &) = delete;
  ~MemoryFile() { close(_fd); }
  std::string path;

private:
  int _fd;
};

/// Does to a graph what an application does: bounds, picks, a tick of the clock, a text, a clone; draws it if there is
/// an action to draw with.
inline void useGraph(ozNode *root, ozDrawAction *draw = nullptr) {
  FILE *const nowhere = fopen("/dev/null", "w");
  for (int round = 0; round < 2; ++round) {
    ozBoxBound box;
    ozSphereBound sphere;
    root->getBoxBound(box);
    root->getSphereBound(sphere);
    ozIsectAction isect;
    for (int axis = 0; axis < 3; ++axis) {
      ozVec3f origin(0.125f, 0.25f, -0.0625f), direction(0, 0, 0);
      origin[axis] = 100;
      direction[axis] = -1;
      isect.seg.setOrigin(origin);
      isect.seg.setDirection(direction);
      isect.seg.setLength(1000);
      isect.apply(root);
    }
    if (draw) draw->apply(root);
    {
      ozOutput out(nowhere);
      static_cast<ozObject *>(root)->write(&out);
    }
    ozTimeSensor::updateSensors();
  }
  fclose(nowhere);
  if (ozContainer *const copy = root->clone(ozContainer::CLONE_DEEP)) {
    ozBoxBound box;
    static_cast<ozNode *>(copy)->getBoxBound(box);
    copy->ref();
    copy->unref();
  }
}

/// Reads a file's text and uses what comes out of it.
inline void readAndUse(void const *data, size_t size, ozDrawAction *draw = nullptr) {
  MemoryFile const file(data, size);
  ozContainer *root = nullptr;
  ozPtrArray files;
  vlDB::readFile(file.path.c_str(), root, files);
  if (!root) return;
  root->ref();
  useGraph(static_cast<ozNode *>(root), draw);
  root->unref();
}

#endif
