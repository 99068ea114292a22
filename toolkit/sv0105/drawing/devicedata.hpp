#pragma once
/// \file
/// What a device draws with, and how that gets into its context of the system. Internal.

#include "sv/font.hpp"
#include "sv/lifetime.hpp"
#include "sv/mapmode.hpp"
#include "sv/pen.hpp"
#include "sv/region.hpp"
#include "tools/winapi.hpp"

#include <vector>

namespace SV::detail {

/// What Push keeps.
struct DeviceState {
  Pen pen{COL_BLACK};
  Brush brush;
  Brush background{COL_WHITE};
  Font font;
  Region clip;
  MapMode mapMode;
};

/// Objects of the system are made and selected when they are first drawn with. Nothing else is selected into the context
/// while it is open, so that what is in it is known.
class DeviceData {
public:
  DeviceData() = default;
  DeviceData(DeviceData const &) = delete;
  DeviceData & operator=(DeviceData const &) = delete;
  ~DeviceData() { close(); }

  DeviceState const & state() const { return state_; }
  Lifetime & lifetime() { return lifetime_; }

  void open(HDC context);
  /// The context is as it was when it was opened.
  void close();

  Pen changePen(Pen const & pen);
  Brush changeBrush(Brush const & brush);
  Brush changeBackground(Brush const & brush);
  Font changeFont(Font const & font);
  Region changeClip(Region const & clip);
  MapMode changeMapMode(MapMode const & mode);
  void push();
  void pop();

  /// They see to it that the context, which is open, draws with it.
  /// \param width   of the pen, in pixels
  /// \param size    of the font, in pixels
  void usePen(long width) {
    if (!penIn_)
      selectPen(width);
  }
  void useBrush() {
    if (!brushIn_)
      selectBrush();
  }
  void useFont(Size const & size) {
    if (!fontIn_)
      selectFont(size);
  }

private:
  void selectPen(long width);
  void selectBrush();
  void selectFont(Size const & size);
  void selectClip();
  void keepOwnersClip();
  void forgetSelected();

  DeviceState state_;
  std::vector<DeviceState> kept_;
  HDC context_ = nullptr;
  int saved_ = 0;
  HPEN pen_ = nullptr;
  HFONT font_ = nullptr;
  Font made_;         ///< what it was made from; it stays selected until another one is needed
  Region ownersClip_; ///< in which the context was found; known once there has been a limit of ours
  bool ownersClipKnown_ = false;
  bool penIn_ = false;
  bool brushIn_ = false;
  bool fontIn_ = false;
  Lifetime lifetime_;
};

} // namespace SV::detail
