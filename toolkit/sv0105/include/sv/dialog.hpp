#pragma once
/// \file
/// Dialogs: windows with controls that the keyboard moves between.

#include "sv/window.hpp"

namespace SV {

inline constexpr WinBits WB_DIALOG_TITLE = 0x4;   ///< a title bar, by which it is moved
inline constexpr WinBits WB_DIALOG_CLOSE = 0x20;  ///< the button to close, the system menu, and Escape
inline constexpr WinBits WB_DIALOG_FRAME = 0x100; ///< the frame of a dialog
inline constexpr WinBits WB_DIALOG = WB_DIALOG_TITLE | WB_DIALOG_CLOSE | WB_DIALOG_FRAME;

/// A window of fixed size over its parent, for controls. Tab and the arrow keys move between them, letters with Alt to
/// their mnemonics, Return presses the default button, and Escape the CancelButton; without one, Escape closes the dialog.
/// Those that hold the other controls and the code beside it are members of the derived class:
///
/// \code
///   class AskName : public SV::ModalDialog {
///   public:
///     explicit AskName(SV::Window * parent) : ModalDialog(parent), label_(this), days_(this, SV::WB_SPIN), ok_(this) {
///       SetText("Duration");
///       ...
///     }
///   private:
///     SV::FixedText label_;
///     SV::MetricField days_;
///     SV::OKButton ok_;
///   };
///   if (AskName(this).Execute() == SV::RET_OK) ...
/// \endcode
class SV_API Dialog : public Window {
public:
  /// \param parent  what it lies over; null for none
  explicit Dialog(Window * parent, WinBits style = WB_DIALOG);
  ~Dialog() override;

  /// Shows it where SetPosSizePixel has put it, otherwise in the middle of its parent, or of the screen when the parent is
  /// not to be seen; in either case inside of the screen as far as it fits. The keyboard goes to the control that has
  /// grabbed the focus before, otherwise to the first one that takes it.
  void Show() override;

  void SetPosSizePixel(Point const & position, Size const & size) override;

protected:
  long long HandleMessage(unsigned message, unsigned long long wParam, long long lParam) override;
  long long DefaultProcedure(unsigned message, unsigned long long wParam, long long lParam) override;

private:
  friend class Control;

  void place();

  HWND firstFocus_ = nullptr; ///< gets the keyboard when the dialog comes up
  WinBits style_;
  bool isPlaced_ = false; ///< by the program
};

/// A dialog that has to be answered: while it runs, no other window of the program takes input.
class SV_API ModalDialog : public Dialog {
public:
  /// \param parent  disabled while the dialog runs; null for none
  /// \param style   as for Dialog
  explicit ModalDialog(Window * parent, WinBits style = WB_DIALOG);
  /// It may die while it runs, in one of its own handlers; Execute then gives 0.
  ~ModalDialog() override;

  /// Shows it and dispatches messages until EndDialog, and gives the result of that. Then it is hidden, the other windows
  /// take input again, and the control that had the keyboard before has it again. It may be executed again.
  ///
  /// 0 when the dialog is closed otherwise: by its button, by Escape, with its parent, by Application::Quit, which then
  /// goes on to end the loop outside. 0 at once, and nothing is shown, under dialog suppression and under window
  /// suppression, when the title goes to the log of suppressed dialogs; while it runs already; and without a system window.
  long Execute();

  /// Ends Execute with that result; nothing while it does not run.
  void EndDialog(long result = 0);

  bool IsInExecute() const { return run_ != nullptr; } ///< it runs

  /// Ends Execute with 0; without one, the system window is closed.
  void Close() override;

protected:
  long long HandleMessage(unsigned message, unsigned long long wParam, long long lParam) override;

private:
  struct Run;

  Run * run_ = nullptr;
};

} // namespace SV
