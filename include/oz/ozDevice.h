#ifndef OZ_DEVICE_H
#define OZ_DEVICE_H

/// @file
/// Drawing without a window. An offscreen device needs neither a window nor an X server, so thumbnails, batch rendering
/// and tests run on a machine that shows nothing to anybody:
///
///     HDC device = ozDevice::createOffscreen(320, 200);
///     ozContext *context = new ozContext(device);
///     context->makeCurrent(device);
///     camera->draw(action);
///     action->apply(root);
///
///     unsigned char *pixels = new unsigned char[320 * 200 * 4];
///     glPixelStorei(GL_PACK_ALIGNMENT, 1);
///     glReadPixels(0, 0, 320, 200, GL_RGBA, GL_UNSIGNED_BYTE, pixels); // rows run from the bottom to the top
///
///     delete[] pixels;
///     delete context;
///     ozDevice::destroy(device);
///
/// Every thread may have devices and contexts of its own. A device may be current in one thread at a time.

#include "oz/ozPlatform.h"

/// Makes and unmakes the devices that belong to no window. A window's device comes from ozWindow::getHDC.
class OZ_API ozDevice {
public:
  /// A device of width x height pixels: RGBA with 8 bits each, 24 bits of depth, and 8 bits of stencil where the
  /// platform has them. What it shows before the first glClear is undefined. Returns null when a side is below 1, or
  /// when the platform has no offscreen drawing or none that large. Give it back with destroy.
  static HDC createOffscreen(int width, int height);

  /// Gives an offscreen device back; null is passed over. The contexts made on it live on and may still be made
  /// current, with the destroyed device too as long as one of them lives: they then draw nowhere, but their OpenGL
  /// objects can be deleted.
  static void destroy(HDC device);
};

#endif
