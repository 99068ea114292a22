#pragma once
/// \file
/// Scroll bars of a window that shows a part of something larger.

#include "sv/window.hpp"

namespace modeler {

/// One direction of a view, in pixels.
struct Scroll {
  long position = 0; ///< of the first pixel that is seen
  long page = 0;     ///< how much is seen
  long whole = 0;    ///< how much there is
  long line = 1;     ///< a small step
};

/// The position nearest to \p position at which nothing beyond the end is seen.
long clampedPosition(Scroll const & scroll, long position);

/// Where a command of the system (SB_LINEUP, ...) leads. An unknown one leads nowhere.
/// \param track  where the user holds the thumb
long scrolledPosition(Scroll const & scroll, unsigned command, long track);

/// The position nearest to that of \p scroll at which \p length pixels from \p start on are seen, or as many of them as
/// there is room for, from their beginning.
long revealedPosition(Scroll const & scroll, long start, long length);

/// Both directions, moved by bars, wheel and keys. A bar is there while something is out of sight.
class ScrollBars {
public:
  /// How much there is to be seen; the position stays where it can.
  /// \param line  a small step
  void SetWhole(HWND window, SV::Size const & whole, long line);

  /// To be called when the window has got another size.
  void Fit(HWND window);

  SV::Point GetPosition() const { return {across_.position, down_.position}; }

  /// Moves so that a part of the whole is seen.
  void Reveal(HWND window, SV::Rectangle const & part);

  /// Deals with messages for scroll bars, wheel and keys; those have the window drawn anew when it has moved.
  /// \return false for any other message
  bool Handle(HWND window, unsigned message, unsigned long long wParam);

private:
  void move(HWND window, bool isDown, long position);
  bool handleKey(HWND window, unsigned long long key);
  void turnWheel(HWND window, bool isDown, int delta);

  Scroll across_;
  Scroll down_;
  bool isFitting_ = false;
};

} // namespace modeler
