#include "sv/dialog.hpp"

#include "application/dispatch.hpp"
#include "application/toolkit.hpp"
#include "sv/focusreturn.hpp"
#include "window/windowaccess.hpp"

#include <optional>
#include <utility>
#include <vector>

namespace SV {

using detail::toolkit;

namespace {

/// Takes away what the mouse and the menus were about: the dialog could not be used otherwise.
void endOtherInput() {
  EndMenu();
  if (HWND const window = GetCapture()) {
    SendMessageA(window, WM_CANCELMODE, 0, 0);
    ReleaseCapture();
  }
}

/// Whether a top-level window is the dialog or lies over it.
bool belongsTo(HWND window, HWND dialog) {
  while (window && window != dialog)
    window = GetWindow(window, GW_OWNER);
  return window != nullptr;
}

/// While it lives, the program's top-level windows but one take no input.
class OthersDisabled {
public:
  explicit OthersDisabled(HWND dialog) {
    ++toolkit().modalDepth;
    std::vector<HWND> others; // handles, since a handler of a window that is disabled may delete any other
    for (Window const * window : toolkit().windows)
      others.push_back(window->GethWnd() ? GetAncestor(window->GethWnd(), GA_ROOT) : nullptr);
    disable(GetWindow(dialog, GW_OWNER));
    for (HWND const top : others)
      if (IsWindowVisible(top) && !belongsTo(top, dialog))
        disable(top);
  }
  OthersDisabled(OthersDisabled const &) = delete;
  OthersDisabled & operator=(OthersDisabled const &) = delete;
  ~OthersDisabled() {
    --toolkit().modalDepth;
    enable();
  }

  /// Gives them the input back, once.
  void enable() {
    for (HWND const window : std::exchange(disabled_, {}))
      if (IsWindow(window))
        EnableWindow(window, TRUE);
  }

private:
  void disable(HWND window) {
    if (!window || !IsWindowEnabled(window))
      return;
    EnableWindow(window, FALSE);
    disabled_.push_back(window);
  }

  std::vector<HWND> disabled_;
};

} // namespace

/// An Execute on the stack. The dialog may die before it.
struct ModalDialog::Run {
  explicit Run(ModalDialog & executed) : dialog(executed) { dialog.run_ = this; }
  Run(Run const &) = delete;
  Run & operator=(Run const &) = delete;
  ~Run() {
    if (!ended)
      dialog.run_ = nullptr;
  }

  ModalDialog & dialog; ///< alive until ended is true
  bool ended = false;
  long result = 0;
  std::optional<OthersDisabled> others; ///< while they are
};

ModalDialog::ModalDialog(Window * parent, WinBits style) : Dialog(parent, style) {}

ModalDialog::~ModalDialog() {
  EndDialog(0);
  Window::Destroy();
}

long ModalDialog::Execute() {
  if (!GethWnd() || run_)
    return 0;
  if (Application::IsModalDialogSuppression() || Application::IsShowWindowSuppression()) {
    Application::ModalDialogSuppressionLog(GetText().c_str());
    return 0;
  }
  HWND const dialog = GethWnd();
  FocusReturn const focus; // goes last: a window that is disabled cannot have the keyboard
  Run run(*this);
  endOtherInput();
  run.others.emplace(dialog);
  if (!run.ended) // a handler of those that lost the input may have ended or deleted the dialog
    Show();
  detail::dispatchUntil(run.ended, dialog);
  run.others.reset();
  // Only now: when the active window goes while its owner is disabled, the system turns to another program.
  if (IsWindow(dialog))
    ShowWindow(dialog, SW_HIDE);
  return run.result;
}

void ModalDialog::EndDialog(long result) {
  if (!run_)
    return;
  run_->ended = true;
  run_->result = result;
  if (run_->others) // before the dialog goes: the system would turn to another program otherwise
    run_->others->enable();
  run_ = nullptr;
  // The loop may be waiting: what ends the dialog need not have come out of the queue.
  PostThreadMessageA(GetCurrentThreadId(), WM_NULL, 0, 0);
}

void ModalDialog::Close() {
  if (run_)
    EndDialog(0);
  else
    Dialog::Close();
}

long long ModalDialog::HandleMessage(unsigned message, unsigned long long wParam, long long lParam) {
  if (message == WM_NCDESTROY)
    EndDialog(0);
  return Dialog::HandleMessage(message, wParam, lParam);
}

} // namespace SV
