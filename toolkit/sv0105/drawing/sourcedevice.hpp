#pragma once
/// \file
/// Where pictures are copied from, and to. Internal.

#include "tools/winapi.hpp"

namespace SV::detail {

/// A bitmap in the one memory device that the toolkit keeps for this, while it lives; one at a time. A bitmap that is in
/// another device at this moment gives a device without it, from which nothing comes.
class SourceDevice {
public:
  explicit SourceDevice(HBITMAP bitmap);
  SourceDevice(SourceDevice const &) = delete;
  SourceDevice & operator=(SourceDevice const &) = delete;
  ~SourceDevice();

  HDC context() const { return former_ ? context_ : nullptr; }

private:
  HDC context_;
  HGDIOBJ former_;
};

/// Gives the memory device back; the next picture makes another one.
void dropSourceDevice();

} // namespace SV::detail
