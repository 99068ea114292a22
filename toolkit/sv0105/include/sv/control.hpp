#pragma once
/// \file
/// Control: what is placed in dialogs and windows.

#include "sv/resource.hpp"
#include "sv/window.hpp"

#include <functional>

namespace SV {

/// For every control: it begins a group. The arrow keys move within a group, from one such control to before the next.
inline constexpr WinBits WB_GROUP = 0x10;

/// A window in a parent, which it closes with. Most kinds are windows of the system's own classes, so that they look and
/// behave as its user expects; a plain one is drawn by Paint. Like every window, it is hidden until Show.
///
/// Tab goes to the controls of a dialog in the order in which they were made. The label for a control is made right before
/// it: its mnemonic then leads there, and a screen reader gives the control its name.
///
/// Positions and sizes grow with the font, and with it with the scale of the screen, if they are given in units of dialogs:
/// a quarter of the width and an eighth of the height of a character of the application's font.
///
/// \code
///   SV::Control place(&dialog, SV::ResId(17)); // 17 RCDATA { 7, 20, 60, 14 } in the resource script
/// \endcode
class SV_API Control : public Window {
public:
  using FocusHandler = std::function<void(Control *)>;

  /// A plain one of size 0 by 0.
  /// \param style  WB_BORDER and WB_GROUP, joined by |
  explicit Control(Window * parent, WinBits style = 0);

  /// A plain one at the place of a resource record: four 16-bit numbers in units of dialogs, which are left, top, width
  /// and height. A record that is missing raises EXC_RESOURCE_NOT_LOADED with the identifier, and as long as no manager
  /// has it, the control is of size 0 by 0 in the corner; see Resource::LoadString for the order of managers.
  Control(Window * parent, ResId const & id);
  ~Control() override;

  /// Called when it has got the input of the keyboard, and when it has lost it. Each change gives the former handler.
  FocusHandler ChangeGetFocusHdl(FocusHandler handler);
  FocusHandler ChangeLoseFocusHdl(FocusHandler handler);

  /// They call the handlers.
  void GotFocus() override;
  void LostFocus() override;

  /// A control that has the keyboard hands it on before it is disabled.
  void SetEnabled(bool enabled) override;

  /// In a dialog that is not shown yet, it gets the keyboard when the dialog comes up.
  void GrabFocus() override;

protected:
  explicit Control(detail::WindowSpec const & spec); ///< for the toolkit's own kinds

  /// The system has something to say about it, in a message to the parent. False: it is dealt with as ever.
  virtual bool Notify(unsigned message, unsigned long long wParam, long long lParam, long long & result);

  long long HandleMessage(unsigned message, unsigned long long wParam, long long lParam) override;

private:
  friend struct detail::WindowAccess;

  void leaveFocus();

  FocusHandler getFocusHandler_;
  FocusHandler loseFocusHandler_;
};

/// A control that shows a text of the program: in it "~" marks the letter after it as the mnemonic, "~~" shows a "~", and
/// "&" is an ordinary character. Of several single "~" the first one counts, one at the end is shown.
class SV_API LabelControl : public Control {
public:
  String GetText() const override; ///< as it was set, with its "~"
  void SetText(String const & text) override;

protected:
  using Control::Control;

private:
  String text_;
};

} // namespace SV
