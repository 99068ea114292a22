#pragma once
/// \file
/// The program's icon in the notification area of the taskbar.

#include "kivara.hpp"
#include "sv/window.hpp"

#include <functional>

namespace modeler {

/// What the user can do there.
struct TrayActions {
  std::function<void()> restore; ///< by the menu and by a double-click
  std::function<void()> exit;
};

/// It is there from Show to Hide, and shells that begin meanwhile get it again.
class TrayIcon : public KivSystemTray {
public:
  explicit TrayIcon(TrayActions actions);

  /// \return false if the taskbar has no notification area
  bool Show(SV::String const & tip);
  void Hide();

  /// Shows in the picture that the program is busy, or that it is not any more.
  void Blink(bool on);

  void BuildPopupMenu(SV::PopupMenu & menu) override;
  void DoDoubleClickAction() override { actions_.restore(); }

private:
  /// The window that the shell reports to. The main window is none for that: while it is minimised to the tray, it hears nothing that is
  /// sent to all windows.
  class Receiver : public SV::Window {
  public:
    explicit Receiver(TrayIcon & icon) : Window(nullptr), icon_(icon) {}

  protected:
    long long HandleMessage(unsigned message, unsigned long long wParam, long long lParam) override;

  private:
    TrayIcon & icon_;
  };

  void select(unsigned short item);

  TrayActions actions_;
  SV::Icon const quiet_{SV::ICON_STYLE_INFO};
  SV::Icon const busy_{SV::ICON_STYLE_QUERY};
  bool isShown_ = false;
  bool isCreated_ = false;
  Receiver receiver_;
};

} // namespace modeler
