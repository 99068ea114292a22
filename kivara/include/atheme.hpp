#pragma once
/// \file
/// Themes: how the framework's own window parts look, such as captions of docked panes, bars and their buttons.
///
/// There are two, "Classic" and "Modern". Each has a palette of twelve colours and draws the parts; parts that look as
/// those of the system are drawn by its visual styles where these are on, and by hand otherwise. A window that shows such
/// parts draws them by the current theme of the KivThemeManager (atheme_manager.hpp) and is repainted when another one is chosen:
///
/// \code
///   Pane::Pane(SV::Window * parent) : Window(parent) { KivThemeManager::Instance().AddWindow(this); }
///   Pane::~Pane() { KivThemeManager::Instance().RemoveWindow(this); }
///
///   void Pane::Paint(SV::OutputDevice &, SV::Rectangle const &) {
///     KivTheme const & theme = KivThemeManager::CurrentTheme();
///     KivThemeClass const look = isActive() ? CaptionActive : CaptionInactive;
///     theme.Draw(*this, look, caption());
///     theme.DrawText(*this, look, caption(), GetText());
///     theme.DrawCloseButton(*this, look, button(), isHot, isPressed);
///   }
/// \endcode
///
/// All of it is for the main thread, between InitSV and DeInitSV.

#include "export.hpp"
#include "sv/bitmap.hpp"
#include "sv/color.hpp"
#include "sv/geometry.hpp"
#include "tools/string.hpp"

namespace SV {
class OutputDevice;
class Window;
} // namespace SV

/// Parts of a window. Active ones belong to the pane that has the keyboard.
enum KivThemeClass : int {
  CaptionActive = 0,        ///< title of a docked pane, whose frame it covers
  CaptionInactive = 1,      ///< the same of another pane
  PlainCaptionActive = 2,   ///< title without a frame
  PlainCaptionInactive = 3, ///< the same of another pane
  FrameLeftActive = 4,      ///< edges of a pane
  FrameLeftInactive = 5,
  FrameRightActive = 6,
  FrameRightInactive = 7,
  FrameBottomActive = 8,
  FrameBottomInactive = 9
};

/// A palette, and what draws with it.
///
/// Windows and devices have to count in pixels, as they do at first. A Window is drawn on in its running Paint, or at any
/// other time. Pen, brush, font and clipping region of a device are as before afterwards, and a clipping region holds for
/// all drawing. A rectangle's edges belong to it; one that is empty or inverted draws nothing. What the system refuses is not
/// drawn, and only for the picture in memory of a faded button is Application::Exception called, as by SV::VirtualDevice.
class KIV_API KivTheme {
public:
  explicit KivTheme(SV::String const & name); ///< the name of GetName
  KivTheme(KivTheme const &);
  KivTheme & operator=(KivTheme const &);
  virtual ~KivTheme();

  /// A colour of the palette.
  /// \param index  0 face, 1 and 2 begin and end of bars, 3 light, 4 dark, 5 and 6 inactive captions, 7 and 8 active
  ///               ones, 9 dark edge, 10 light edge, 11 background behind the MDI windows; black for any other
  virtual SV::Color GetColor(long index) const = 0;

  /// The background of a caption, or an edge of a frame. Without visual styles a caption is striped, and an edge is not
  /// drawn. With them a CaptionActive or CaptionInactive reaches two pixels beyond the rectangle at the left, at the top and
  /// at the right. Other numbers than those of KivThemeClass draw nothing.
  virtual void Draw(SV::Window & window, KivThemeClass part, SV::Rectangle const & area) const;

  /// The text of a caption, in bold of 12 pixels, at the left and halfway down; nothing for other parts. A text
  /// that is wider than the rectangle less 6 pixels ends in "..."; where nothing else fits, only that is drawn.
  virtual void DrawText(SV::Window & window, KivThemeClass part, SV::Rectangle const & area,
                        SV::String const & text) const;

  /// The close button of a caption; nothing for other parts. That of an inactive one is drawn at half strength with visual
  /// styles, unless hot or pressed. Without visual styles its picture is a bitmap of the active resource manager, which
  /// keeps its size, whatever the rectangle's.
  /// \param hot      the mouse is over it
  /// \param pressed  the button of the mouse is down on it, which counts more than hot
  virtual void DrawCloseButton(SV::Window & window, KivThemeClass part, SV::Rectangle const & area, bool hot,
                               bool pressed) const;

  /// Fills all of the device, in GetColor(0).
  virtual void DrawMenuBackground(SV::OutputDevice & device) const;

  /// That part of a bar which lies in the rectangle. The colours run over the whole device, from GetColor(1) to
  /// GetColor(2); without IsVisualStylesXPEnabled it is GetColor(0).
  /// \param vertical  true: from top to bottom; false: from left to right
  virtual void DrawToolbarBackground(SV::OutputDevice & device, bool vertical, SV::Rectangle const & area) const;

  /// The face of a button on a bar. Without visual styles, one that is neither checked, hot nor pressed draws nothing.
  /// \param window            the bar; a disabled one has gray buttons
  /// \param device            what is drawn on: the bar or a buffer
  /// \param whiteWhenPressed  the Modern theme fills pressed buttons with white; the Classic theme takes no notice
  virtual void DrawToolbarButton(SV::Window & window, SV::OutputDevice & device, SV::Rectangle const & area,
                                 bool checked, bool hot, bool pressed, bool whiteWhenPressed) const;

  /// Fills the rectangle with GetColor(0). With visual styles lines at the upper and lower edge of the device follow, over
  /// all of its width.
  virtual void DrawStatusBarBackground(SV::OutputDevice & device, SV::Rectangle const & area) const;

  SV::String GetName() const; ///< as given

private:
  static SV::Bitmap const & GetAnnoDazumalCloseBitmap();

  SV::String name;
};

/// "Classic": the colours of the system, and the drawings of KivTheme.
class KIV_API KivThemeClassic : public KivTheme {
public:
  KivThemeClassic();
  KivThemeClassic(KivThemeClassic const &);
  KivThemeClassic & operator=(KivThemeClassic const &);
  ~KivThemeClassic() override;

  SV::Color GetColor(long index) const override;
};

/// "Modern": blue, whatever the colours of the system. Captions, menus, tool bars and status bars run from colour to
/// colour, with and without visual styles. The close button is "control/close.png" of the ImagePool, at the upper left corner
/// in its own size; without that picture there is none. PlainCaptionActive, PlainCaptionInactive and frames are those of
/// KivTheme.
class KIV_API KivThemeModern : public KivTheme {
public:
  KivThemeModern();
  KivThemeModern(KivThemeModern const &);
  KivThemeModern & operator=(KivThemeModern const &);
  ~KivThemeModern() override;

  SV::Color GetColor(long index) const override;
  void Draw(SV::Window & window, KivThemeClass part, SV::Rectangle const & area) const override;
  void DrawText(SV::Window & window, KivThemeClass part, SV::Rectangle const & area,
                SV::String const & text) const override;
  void DrawCloseButton(SV::Window & window, KivThemeClass part, SV::Rectangle const & area, bool hot,
                       bool pressed) const override;
  void DrawMenuBackground(SV::OutputDevice & device) const override;
  void DrawToolbarBackground(SV::OutputDevice & device, bool vertical, SV::Rectangle const & area) const override;
  void DrawToolbarButton(SV::Window & window, SV::OutputDevice & device, SV::Rectangle const & area, bool checked,
                         bool hot, bool pressed, bool whiteWhenPressed) const override;
  void DrawStatusBarBackground(SV::OutputDevice & device, SV::Rectangle const & area) const override;
};
