#include "drawing/sourcedevice.hpp"

#include "application/toolkit.hpp"
#include "handles/handle.hpp"

#include <utility>

namespace SV::detail {

namespace {

HDC keptDevice() {
  HDC & device = toolkit().sourceDevice;
  if (!device)
    device = CreateCompatibleDC(nullptr);
  return device;
}

} // namespace

SourceDevice::SourceDevice(HBITMAP bitmap) : context_(keptDevice()), former_(SelectObject(context_, bitmap)) {}

SourceDevice::~SourceDevice() {
  if (former_)
    SelectObject(context_, former_);
}

void dropSourceDevice() { handles::MemoryDevice const dropped(std::exchange(toolkit().sourceDevice, nullptr)); }

} // namespace SV::detail
