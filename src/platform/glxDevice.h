#ifndef GLX_DEVICE_H
#define GLX_DEVICE_H

/// @file
/// Devices of the toolkit's windows. The display, the window and the window's first rendering context belong to the
/// toolkit; this adopts them, and forgets them in time.

#include "ozDeviceRecord.h"
#include <memory>

struct glxDisplay;

class glxDevice : public ozDeviceRecord {
public:
  /// From what GLX says is current in this thread; null when nothing is.
  static glxDevice *fromCurrent();
  static void releaseCurrent();
  static void (*procAddress(char const *name))();

  ozRenderContext *createContext() override;
  bool isRGBA() const override { return _rgba; }
  void swap() override;
  void lose() override;

protected:
  bool bind(ozRenderContext *context) override;

private:
  glxDevice(std::shared_ptr<glxDisplay> display, unsigned long drawable, void *toolkitContext);
  bool usable() const;

  std::shared_ptr<glxDisplay> _display;
  std::shared_ptr<void *> _toolkitContext; // the window's own, shared with who adopted it; null inside once lost
  unsigned long _drawable;                 // 0 once lost
  bool _adopted;
  bool _rgba;
};

#endif
