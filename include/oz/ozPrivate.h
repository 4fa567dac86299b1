#ifndef OZ_PRIVATE_H
#define OZ_PRIVATE_H

#include "oz/ozPlatform.h"

class ozContext;

/// What each thread has of its own: its current context and one word for the application, both null at first.
/// The thread that loads the library has its block at load, a thread of ozThread when it starts. Any other thread has
/// none until it calls init, and must not ask for the context or the user data before.
class OZ_API ozPrivate {
public:
  /// Makes the slot and the calling thread's block. Done once, at load.
  static void setup();
  /// Ends the calling thread's block and the slot. Done once, at exit.
  static void cleanup();
  /// Gives the calling thread a new empty block; null if memory is out.
  static void init();
  /// Frees the calling thread's block. The slot still holds its address; only init makes it usable again.
  static void fini();

  /// The calling thread's block, null on a thread that has none.
  static ozPrivate *getPrivate() { return _Slot; }

  /// The calling thread's current context. The thread must have a block.
  static ozContext *getContext() { return block()->_context; }
  static void setContext(ozContext *context) { block()->_context = context; }
  /// Leaves no thread with this context as its current one.
  static void forgetContext(ozContext *context);
  /// The calling thread's word for the application. The thread must have a block.
  static void *getUserData() { return block()->_userData; }
  static void setUserData(void *data) { block()->_userData = data; }

private:
  static ozPrivate *block() {
    OZ_REQUIRE(_Slot, "this thread has no private block: start it with ozThread, or call ozPrivate::init on it");
    return _Slot;
  }

  // The context is asked for at every draw: the initial-exec model makes that one load, without a call.
  static __thread ozPrivate *_Slot __attribute__((tls_model("initial-exec")));

  ozContext *_context = nullptr;
  void *_userData = nullptr;
};

#endif
