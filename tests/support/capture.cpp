#include "support/capture.h"
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <sys/mman.h>
#include <unistd.h>

namespace {

void flushAll() {
  std::cout.flush();
  std::cerr.flush();
  std::fflush(nullptr);
}

} // namespace

Capture::Capture(int descriptor) : _descriptor(descriptor) {
  flushAll();
  _file = memfd_create("capture", MFD_CLOEXEC);
  _saved = dup(descriptor);
  if (_file < 0 || _saved < 0 || dup2(_file, descriptor) < 0) {
    std::perror("capture");
    std::abort();
  }
}

Capture::~Capture() {
  flushAll();
  dup2(_saved, _descriptor);
  close(_saved);
  close(_file);
}

std::string Capture::text() {
  flushAll();
  std::string caught(lseek(_file, 0, SEEK_END), '\0');
  size_t got = 0;
  while (got < caught.size()) {
    ssize_t count = pread(_file, &caught[got], caught.size() - got, got);
    if (count <= 0) break;
    got += count;
  }
  caught.resize(got);
  return caught;
}
