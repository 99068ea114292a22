#pragma once
/// \file
/// Drawing without flicker.

#include "sv/geometry.hpp"
#include "tools/winapi.hpp"

namespace modeler {

/// A picture in memory that comes onto a device as a whole when this object dies. Where there is no memory for it, the device
/// itself is drawn on.
class BackBuffer {
public:
  /// \param area  of the device; the picture has its coordinates
  BackBuffer(HDC device, SV::Rectangle const & area)
      : device_(device), area_(area), context_(CreateCompatibleDC(device)),
        bitmap_(CreateCompatibleBitmap(device, area.GetSize().width, area.GetSize().height)) {
    if (!IsReady())
      return;
    former_ = SelectObject(context_, bitmap_);
    SetWindowOrgEx(context_, area.TopLeft().x, area.TopLeft().y, nullptr);
  }
  BackBuffer(BackBuffer const &) = delete;
  BackBuffer & operator=(BackBuffer const &) = delete;
  ~BackBuffer() {
    if (IsReady()) {
      SV::Point const & corner = area_.TopLeft();
      BitBlt(device_, corner.x, corner.y, area_.GetSize().width, area_.GetSize().height, context_, corner.x, corner.y,
             SRCCOPY);
      SelectObject(context_, former_);
    }
    DeleteDC(context_);
    DeleteObject(bitmap_);
  }

  HDC GethDC() const { return IsReady() ? context_ : device_; } ///< to draw on

private:
  bool IsReady() const { return context_ != nullptr && bitmap_ != nullptr; }

  HDC device_;
  SV::Rectangle area_;
  HDC context_;
  HBITMAP bitmap_;
  HGDIOBJ former_ = nullptr;
};

} // namespace modeler
