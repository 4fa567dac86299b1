#include "ozDeviceRecord.h"
#include "eglDevice.h"
#include "glxDevice.h"
#include "oz/ozDevice.h"

ozRenderContext::ozRenderContext(ozDeviceRecord *device) : _device(device) { _device->ref(); }
ozRenderContext::~ozRenderContext() { _device->unref(); }

ozDeviceRecord::ozDeviceRecord() : _count(1) {}
ozDeviceRecord::~ozDeviceRecord() {}

void ozDeviceRecord::ref() { _count.fetch_add(1, std::memory_order_relaxed); }

void ozDeviceRecord::unref() {
  if (_count.fetch_sub(1, std::memory_order_acq_rel) == 1) delete this;
}

ozDeviceRecord *ozDeviceRecord::fromCurrentWindow() { return glxDevice::fromCurrent(); }

void ozDeviceRecord::release() {
  releaseOffscreen();
  glxDevice::releaseCurrent();
}

void ozDeviceRecord::releaseOffscreen() { eglDevice::releaseCurrent(); }

bool ozDeviceRecord::makeCurrent(ozDeviceRecord *device, ozRenderContext *context) {
  if (device && context && device->bind(context)) return true;
  release();
  return false;
}

HDC ozDevice::createOffscreen(int width, int height) {
  return width < 1 || height < 1 ? nullptr : eglDevice::create(width, height);
}

void ozDevice::destroy(HDC device) {
  if (!device) return;
  device->lose();
  device->unref();
}

// Through the GLX name: a tracer stands in front of it, and GLVND's answer serves EGL contexts as well.
void (*ozGetProcAddress(char const *name))() { return glxDevice::procAddress(name); }
