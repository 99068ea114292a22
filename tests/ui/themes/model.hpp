#pragma once
/// \file
/// What themes draw, by the system's own calls and by arithmetic on pixels, written from the tables of colours and places.

#include "atheme.hpp"
#include "ui/themes/canvas.hpp"

#include <string>

namespace themetest {

enum class Look { Styled, Unstyled };

struct ButtonLook {
  bool checked;
  bool hot;
  bool pressed;
  bool white;
};

/// Draws on a canvas what a theme has to draw.
class Model {
public:
  /// \param modern    which of the two themes
  /// \param themed    whether the system has visual styles
  /// \param enabled   whether the themes use them
  Model(Canvas & canvas, HWND window, bool modern, bool themed, bool enabled)
      : canvas_(canvas), window_(window), modern_(modern), themed_(themed), styled_(themed && enabled),
        enabled_(enabled) {}

  COLORREF color(int index) const;

  void caption(int part, RECT const & area) const;
  void text(int part, RECT const & area, std::string const & text) const;
  void closeButton(int part, RECT const & area, bool hot, bool pressed) const;
  void menu() const;
  void toolbar(bool vertical, RECT const & area) const;
  void button(RECT const & area, ButtonLook const & look, bool windowEnabled) const;
  void statusBar(RECT const & area) const;

private:
  COLORREF classicColor(int index) const;
  void pixel(int x, int y, COLORREF color) const;
  void fill(RECT const & area, COLORREF color) const;
  void gradient(RECT const & area, RECT const & clip, bool vertical, COLORREF first, COLORREF last) const;
  bool style(wchar_t const * classes, HDC device, int part, int state, RECT const & area) const;
  void handMadeButton(RECT const & area, bool pressed) const;
  void picture(POINT const & place, std::string const & name) const;
  void writeText(POINT const & place, std::string const & text, COLORREF color) const;
  std::string fitting(std::string text, int width) const;

  Canvas & canvas_;
  HWND window_;
  bool modern_;
  bool themed_;
  bool styled_;
  bool enabled_;
};

} // namespace themetest
