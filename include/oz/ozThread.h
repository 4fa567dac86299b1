#ifndef OZ_THREAD_H
#define OZ_THREAD_H

#include "oz/ozPlatform.h"

/// A handle on a thread. Threads started here have a private block (ozPrivate), so they can own a current context. A
/// handle belongs to one thread.
class OZ_API ozThread {
public:
  /// A handle on the calling thread.
  ozThread();
  /// A handle on a new thread that runs function(argument).
  ozThread(void (*function)(void *), void *argument);
  ozThread(ozThread const &) = delete;
  ozThread &operator=(ozThread const &) = delete;
  /// Gives the handle back. Does not wait: the thread goes on.
  ~ozThread();

  /// Runs function(argument) on a new thread. Prints "attempted to start already executing thread" if this handle has
  /// started one before, and goes on all the same; prints "failed to create thread" if the system refuses.
  void start(void (*function)(void *), void *argument);
  /// Bytes of stack for the next start. 0 is the platform's default; less than the platform's least counts as that.
  void setStackSize(unsigned int bytes);
  /// Waits for the end of the thread that this handle started. Returns at once if there is none, if it has been waited
  /// for, or if it is the calling thread.
  void wait();

  /// Ends the calling thread and its private block.
  [[noreturn]] static void exit();
  /// The system's id of the calling thread.
  static unsigned long getID();
  /// The number of processors that are online.
  static int numProcessors();
  /// Sleeps for so many microseconds, cut to whole milliseconds; below 1000 it only lets other threads run.
  static void sleep(unsigned int usec);

private:
  void init();
  void closeHandle();

  int _started;
  unsigned char _joinable;
  unsigned long _handle;
  unsigned int _stackSize;
};

#endif
