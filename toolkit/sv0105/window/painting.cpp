#include "window/painting.hpp"

#include <utility>

namespace SV::detail {

Painting::Painting(OutputDevice & device, HWND window)
    : device_(device), window_(window), context_(BeginPaint(window, &state_)) {
  if (!context_)
    return;
  outer_ = std::exchange(device.data_, std::make_unique<DeviceData>());
  former_ = device.context_;
  watch_.emplace(device.data_->lifetime());
  device.openContext(context_);
}

Painting::~Painting() {
  if (!context_)
    return;
  if (*watch_) {
    watch_.reset();
    device_.data_ = std::move(outer_);
    device_.context_ = former_;
  }
  EndPaint(window_, &state_);
}

} // namespace SV::detail
