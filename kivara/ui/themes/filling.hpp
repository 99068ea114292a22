#pragma once
/// \file
/// Areas and lines in one colour, after which the device draws as before. Internal.

#include "sv/outputdevice.hpp"

namespace kivara {

/// The pen and brush of a device, which has its former ones again afterwards.
class PenAndBrush {
public:
  PenAndBrush(SV::OutputDevice & device, SV::Pen const & pen, SV::Brush const & brush)
      : device_(device), pen_(device.ChangePen(pen)), brush_(device.ChangeFillInBrush(brush)) {}
  PenAndBrush(PenAndBrush const &) = delete;
  PenAndBrush & operator=(PenAndBrush const &) = delete;
  ~PenAndBrush() {
    device_.ChangePen(pen_);
    device_.ChangeFillInBrush(brush_);
  }

private:
  SV::OutputDevice & device_;
  SV::Pen pen_;
  SV::Brush brush_;
};

inline void fill(SV::OutputDevice & device, SV::Rectangle const & area, SV::Color const & color) {
  PenAndBrush const drawing(device, SV::Pen(), SV::Brush(color));
  device.DrawRect(area);
}

inline SV::Rectangle wholeOf(SV::OutputDevice const & device) { return {{0, 0}, device.GetOutputSizePixel()}; }

} // namespace kivara
