#include "oz/ozThread.h"

#include "oz/ozPrivate.h"
#include "platform/osThread.h"

#include <new>
#include <stdio.h>

namespace {

struct LaunchRecord {
  void (*function)(void *);
  void *argument;
};

void *launch(void *data) {
  ozPrivate::init();
  LaunchRecord record = *static_cast<LaunchRecord *>(data);
  delete static_cast<LaunchRecord *>(data);
  record.function(record.argument);
  ozPrivate::fini();
  return nullptr;
}

} // namespace

ozThread::ozThread() { init(); }

ozThread::ozThread(void (*function)(void *), void *argument) {
  init();
  start(function, argument);
}

ozThread::~ozThread() { closeHandle(); }

void ozThread::init() {
  _started = 0;
  _joinable = 0;
  _handle = os::currentThread();
  _stackSize = 0;
}

void ozThread::closeHandle() {
  if (_joinable) os::detachThread(_handle);
  _joinable = 0;
}

void ozThread::start(void (*function)(void *), void *argument) {
  if (_started) fputs("attempted to start already executing thread\n", stderr); // and goes on: meant
  LaunchRecord *record = new (std::nothrow) LaunchRecord{function, argument};
  os::ThreadHandle handle;
  if (!record || !os::startThread(launch, record, _stackSize, handle)) {
    delete record;
    fputs("failed to create thread\n", stderr);
    return;
  }
  closeHandle();
  _handle = handle;
  _joinable = 1;
  _started = 1; // never cleared: a thread that has ended counts as started
}

void ozThread::setStackSize(unsigned int bytes) { _stackSize = bytes; }

void ozThread::wait() {
  if (_joinable && os::joinThread(_handle)) _joinable = 0;
}

void ozThread::exit() {
  ozPrivate::fini();
  os::exitThread();
}

unsigned long ozThread::getID() { return os::threadId(); }

int ozThread::numProcessors() { return os::processorCount(); }

void ozThread::sleep(unsigned int usec) { os::sleepMilliseconds(usec / 1000); }
