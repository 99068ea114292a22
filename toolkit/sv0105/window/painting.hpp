#pragma once
/// \file
/// What a window draws on while its Paint runs.

#include "drawing/devicedata.hpp"
#include "sv/lifetime.hpp"
#include "sv/outputdevice.hpp"

#include <memory>
#include <optional>

namespace SV::detail {

/// The device of the system for one painting; the window draws on it, with nothing set, until this object ends. The window
/// may die meanwhile, and may be painted again.
class Painting {
public:
  Painting(OutputDevice & device, HWND window);
  Painting(Painting const &) = delete;
  Painting & operator=(Painting const &) = delete;
  ~Painting();

  explicit operator bool() const { return context_ != nullptr; } ///< false when the system refuses
  Rectangle area() const { return Rectangle(state_.rcPaint); }

private:
  OutputDevice & device_;
  HWND window_;
  PAINTSTRUCT state_;
  HDC context_;
  std::unique_ptr<DeviceData> outer_; ///< what the window draws with at other times
  HDC former_ = nullptr;
  std::optional<Lifetime::Watch> watch_;
};

} // namespace SV::detail
