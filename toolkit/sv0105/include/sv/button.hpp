#pragma once
/// \file
/// Buttons to press.

#include "sv/control.hpp"

namespace SV {

/// For buttons: Return presses it wherever the keyboard is in its dialog, unless that is on another button.
inline constexpr WinBits WB_DEFAULT_BUTTON = 0x100;

/// Results of dialogs, and the numbers of the buttons that give them.
inline constexpr long RET_CANCEL = 0;
inline constexpr long RET_OK = 1;
inline constexpr long RET_YES = 2;
inline constexpr long RET_NO = 3;
inline constexpr long RET_RETRY = 4;

/// A button with a text.
class SV_API PushButton : public LabelControl {
public:
  using ClickHandler = std::function<void(PushButton *)>;

  explicit PushButton(Window * parent, WinBits style = 0); ///< WB_DEFAULT_BUTTON and WB_GROUP, joined by |

  /// The user has pressed it, by mouse or keyboard. The base calls the handler.
  virtual void Click();

  /// The change gives the former one.
  ClickHandler ChangeClickHdl(ClickHandler handler);

protected:
  PushButton(Window * parent, WinBits style, unsigned short id); ///< by which the system's dialogs know it

  bool Notify(unsigned message, unsigned long long wParam, long long lParam, long long & result) override;

  /// Whether there is a handler, and calls it.
  bool CallClickHdl();

private:
  ClickHandler clickHandler_;
};

/// Bears the label that the International of the application has at the time when it is made. Without a handler it ends
/// the ModalDialog in which it lies with RET_OK; it closes any other Dialog.
class SV_API OKButton : public PushButton {
public:
  /// \param style  as for PushButton
  explicit OKButton(Window * parent, WinBits style = WB_DEFAULT_BUTTON);
  void Click() override;
};

/// The same with RET_CANCEL. Escape presses it.
class SV_API CancelButton : public PushButton {
public:
  /// \param style  as for PushButton
  explicit CancelButton(Window * parent, WinBits style = 0);
  void Click() override;
};

/// The same for the help: without a handler it starts the application's Help with the topic of the dialog.
class SV_API HelpButton : public PushButton {
public:
  /// \param style  as for PushButton
  explicit HelpButton(Window * parent, WinBits style = 0);
  void Click() override;
};

} // namespace SV
