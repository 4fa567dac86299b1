#ifndef OZ_OS_THREAD_H
#define OZ_OS_THREAD_H

#include <stddef.h>

/// Threads as the operating system gives them.
namespace os {

typedef unsigned long ThreadHandle;

/// Runs run(argument) on a new thread that has to be joined or detached. A stack of 0 bytes is the platform's default,
/// one below the platform's least becomes that. False if the system refuses.
bool startThread(void *(*run)(void *), void *argument, size_t stackSize, ThreadHandle &handle);
/// Waits for the thread's end. False if it is the calling thread.
bool joinThread(ThreadHandle);
void detachThread(ThreadHandle);
ThreadHandle currentThread();
[[noreturn]] void exitThread();

/// The kernel's id of the calling thread.
unsigned long threadId();
int processorCount();
/// Sleeps the whole time, whatever signals come; 0 gives up the processor once.
void sleepMilliseconds(unsigned int);

} // namespace os

#endif
