#ifndef EGL_DEVICE_H
#define EGL_DEVICE_H

/// @file
/// Offscreen devices: EGL pixel buffers on a display that needs no window system.

#include "ozDeviceRecord.h"

typedef void *EGLConfig;
typedef void *EGLSurface;

class eglDevice : public ozDeviceRecord {
public:
  /// Null when the platform has no such surface.
  static eglDevice *create(int width, int height);
  static void releaseCurrent();

  ozRenderContext *createContext() override;
  bool isRGBA() const override { return true; }
  void swap() override;
  void lose() override;

protected:
  bool bind(ozRenderContext *context) override;

private:
  eglDevice(EGLConfig config, EGLSurface surface);
  ~eglDevice() override;

  EGLConfig _config;
  EGLSurface _surface; // EGL_NO_SURFACE once lost: contexts are then bound without a surface
};

#endif
