#pragma once
/// \file
/// Many small areas in changing colours, by the system itself. Internal.

#include "sv/color.hpp"
#include "sv/geometry.hpp"
#include "tools/winapi.hpp"

namespace kivara {

/// For areas that lie on the device. Afterwards its context has the brush that it had, as the toolkit expects of it.
class DirectFill {
public:
  explicit DirectFill(HDC device)
      : device_(device), brush_(SelectObject(device, GetStockObject(DC_BRUSH))), color_(GetDCBrushColor(device)) {}
  DirectFill(DirectFill const &) = delete;
  DirectFill & operator=(DirectFill const &) = delete;
  ~DirectFill() {
    SetDCBrushColor(device_, color_);
    SelectObject(device_, brush_);
  }

  void fill(SV::Rectangle const & area, SV::Color const & color) const {
    SetDCBrushColor(device_, static_cast<COLORREF>(color.GetRGB()));
    PatBlt(device_, area.Left(), area.Top(), area.GetWidth(), area.GetHeight(), PATCOPY);
  }

private:
  HDC device_;
  HGDIOBJ brush_;
  COLORREF color_;
};

} // namespace kivara
