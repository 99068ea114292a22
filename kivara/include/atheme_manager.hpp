#pragma once
/// \file
/// KivThemeManager: which theme is current, and what the themes share.
///
/// \code
///   KivThemeManager::Instance().SetCurrentTheme("Classic");
///   SV::Image const & box = KivThemeManager::Instance().GetCheckBoxIconImg(true);
/// \endcode
///
/// All of it is for the main thread, between InitSV and DeInitSV.

#include "aevent.hpp"
#include "atheme.hpp"
#include "export.hpp"
#include "sv/image.hpp"
#include "tools/string.hpp"

#include <set>
#include <vector>

/// The themes, and which of them is current: Modern, until the application chooses another one.
class KIV_API KivThemeManager : public KivEventListener {
public:
  /// Created by the first call. AppExit destroys it, with themes and images; a later call creates a new one.
  static KivThemeManager & Instance();

  KivThemeManager(KivThemeManager const &) = delete;
  KivThemeManager & operator=(KivThemeManager const &) = delete;
  ~KivThemeManager() override;

  static KivTheme const & CurrentTheme(); ///< of Instance

  /// The theme of that place, 0 to GetThemeCount() - 1, in the order Classic, Modern; the current one for any other
  /// number.
  KivTheme const & GetTheme(long index) const;
  long GetThemeCount() const; ///< at least 2

  /// Chooses by place or by name, which is case-sensitive, and has the windows and the client area of an MDIApplication
  /// repainted. An unknown place or name leaves the current theme; they are repainted even then.
  void SetCurrentTheme(long index);
  void SetCurrentTheme(SV::String const & name);

  /// Whether the system's visual styles are on for this program.
  static bool IsThemed();

  /// Whether themes use visual styles, where these are on; true at first. Switching it on has the windows repainted,
  /// switching it off does not.
  bool IsVisualStylesXPEnabled() const;
  void SetVisualStylesXPEnabled(bool value);

  /// Forgets the images of this class, so that they are made anew in the system's present look. Images handed out before
  /// are gone. It paints nothing, and makes no manager where there is none.
  static void SysThemeChanged();

  /// The windows to be repainted when another theme is chosen. They are not owned: remove a window before it is
  /// destroyed. Adding one twice, removing an unknown one, and null do nothing.
  void AddWindow(SV::Window * window);
  void RemoveWindow(SV::Window * window);

  /// \name Visual styles of the system
  /// Handles for SV::CVisualStylesXP::DrawThemeBackground, each by the class of that name. Whoever opens one closes it with
  /// CloseTheme after drawing. Null without visual styles, without IsVisualStylesXPEnabled, and when the style has
  /// no such class.
  /// @{
  void * OpenWindowTheme(SV::Window const & window) const;
  void * OpenButtonTheme(SV::Window const & window) const;
  void * OpenToolbarTheme(SV::Window const & window) const;
  void * OpenStatusTheme(SV::Window const & window) const;
  void * OpenTreeViewTheme(SV::Window const & window) const;
  void * OpenProgressTheme(SV::Window const & window) const;
  void * OpenTabTheme(SV::Window const & window) const;
  void * OpenSpinTheme(SV::Window const & window) const;
  void * OpenEditTheme(SV::Window const & window) const;
  void CloseTheme(void * theme) const; ///< null does nothing
  /// @}

  /// \name Small images
  /// In the look of the system where visual styles are on, whatever IsVisualStylesXPEnabled says; otherwise check boxes are
  /// pictures of the ImagePool, and glyphs bitmaps of the active resource manager, empty where these are missing. They live
  /// until SysThemeChanged or the manager's end.
  /// @{
  SV::Image const & GetCheckBoxIconImg(bool checked); ///< of 16 by 16 pixels with visual styles
  SV::Image const & GetMixedCheckBoxIconImg();        ///< neither checked nor unchecked
  SV::Image const & GetTreeGlyphImg(bool open);       ///< opens and closes a branch of a tree
  /// @}

protected:
  void Clear(); ///< forgets the images

private:
  KivThemeManager();

  void InvalidateWindows();
  void _onExit(KivEvent * event);
  void * openTheme(SV::Window const & window, char const * classes) const;

  std::vector<KivTheme *> themes;
  KivTheme * currentTheme = nullptr;
  std::set<SV::Window *> windows;
  SV::Image * checkBoxOffImage = nullptr;
  SV::Image * checkBoxOnImage = nullptr;
  SV::Image * mixedCheckBoxImage = nullptr;
  SV::Image * treeGlyphClosedImage = nullptr;
  SV::Image * treeGlyphOpenImage = nullptr;
  bool visualStylesXPEnabled = true;
};
