#ifndef OZ_DEVICE_RECORD_H
#define OZ_DEVICE_RECORD_H

/// @file
/// What stands behind HDC: a surface that rendering contexts are made for and draw to.
///
/// Devices and contexts live independently. A device is counted: its maker holds one count and every context made on it
/// one more, so an HDC stays readable as long as anything may name it. When the surface goes first (lose), its contexts
/// stay: binding one then never reaches the lost surface.

#include "oz/ozPlatform.h"
#include <atomic>

/// A rendering context of OpenGL. Delete it through its destructor; if it is current in this thread, release first.
class OZ_API ozRenderContext {
public:
  virtual ~ozRenderContext();
  ozRenderContext(ozRenderContext const &) = delete;
  ozRenderContext &operator=(ozRenderContext const &) = delete;

  /// Whether OpenGL calls of this thread reach this context. Asks the platform, so it is right even when somebody else
  /// has bound another one.
  virtual bool isCurrent() const = 0;

protected:
  explicit ozRenderContext(ozDeviceRecord *device);

private:
  ozDeviceRecord *_device;
};

struct OZ_API ozDeviceRecord {
  ozDeviceRecord(ozDeviceRecord const &) = delete;
  ozDeviceRecord &operator=(ozDeviceRecord const &) = delete;

  /// The device of the toolkit's current window, with one count for the caller; null when there is none. Made while the
  /// window's own rendering context is current.
  static ozDeviceRecord *fromCurrentWindow();

  /// Makes nothing current in this thread, whichever platform had something there.
  static void release();

  /// The same if an offscreen context is current. Owed before every call of the toolkit that may bind a window's
  /// context (glutSetWindow, glutCreateWindow, a turn of its loop): the one platform does not take over from the other,
  /// and the toolkit answers the refusal by ending the process.
  static void releaseOffscreen();

  /// Binds context to device in this thread. When either is null or they do not go together, nothing is current
  /// afterwards and the result is false.
  static bool makeCurrent(ozDeviceRecord *device, ozRenderContext *context);

  /// A context of its own that shares nothing; null when the platform refuses. On a window's device, the first call
  /// adopts the context that the toolkit made for the window, which stays the toolkit's to destroy.
  virtual ozRenderContext *createContext() = 0;

  /// Whether its pixels hold colours. False: colour indices.
  virtual bool isRGBA() const = 0;

  /// Shows what was drawn. Nothing on an offscreen device.
  virtual void swap() = 0;

  /// The surface is gone or goes now. Swapping does nothing afterwards.
  virtual void lose() = 0;

  void ref();
  void unref();

protected:
  ozDeviceRecord();
  virtual ~ozDeviceRecord();

  /// Binds context, which is not null, or returns false and leaves whatever is current.
  virtual bool bind(ozRenderContext *context) = 0;

private:
  std::atomic<int> _count;
};

/// The entry point of an OpenGL function that is not linked by name; null when the platform has none.
OZ_API void (*ozGetProcAddress(char const *name))();

#endif
