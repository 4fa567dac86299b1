#include "platform/osThread.h"

#include <errno.h>
#include <pthread.h>
#include <sched.h>
#include <time.h>
#include <unistd.h>

static_assert(sizeof(pthread_t) == sizeof(os::ThreadHandle), "a handle is a pthread_t");

namespace os {

bool startThread(void *(*run)(void *), void *argument, size_t stackSize, ThreadHandle &handle) {
  pthread_attr_t attributes;
  if (pthread_attr_init(&attributes)) return false;
  long least = sysconf(_SC_THREAD_STACK_MIN);
  if (stackSize && least > 0 && stackSize < static_cast<size_t>(least)) stackSize = least;

  int error;
  // The least does not count the thread-local storage of loaded libraries: EINVAL asks for more.
  const size_t enough = 1 << 20;
  for (;; stackSize *= 2) {
    if (stackSize) pthread_attr_setstacksize(&attributes, stackSize);
    error = pthread_create(&handle, &attributes, run, argument);
    if (error != EINVAL || !stackSize || stackSize >= enough) break;
  }
  pthread_attr_destroy(&attributes);
  return error == 0;
}

bool joinThread(ThreadHandle handle) { return pthread_join(handle, nullptr) == 0; }

void detachThread(ThreadHandle handle) { pthread_detach(handle); }

ThreadHandle currentThread() { return pthread_self(); }

void exitThread() { pthread_exit(nullptr); }

unsigned long threadId() { return static_cast<unsigned long>(gettid()); }

int processorCount() { return static_cast<int>(sysconf(_SC_NPROCESSORS_ONLN)); }

void sleepMilliseconds(unsigned int msec) {
  if (!msec) {
    sched_yield();
    return;
  }
  timespec left = {static_cast<time_t>(msec / 1000), static_cast<long>(msec % 1000) * 1000000};
  while (nanosleep(&left, &left) && errno == EINTR) {
  }
}

} // namespace os
