#include "sv/dialog.hpp"

#include "application/dispatch.hpp"
#include "application/toolkit.hpp"
#include "sv/focusreturn.hpp"
#include "window/windowaccess.hpp"

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
    disable(GetWindow(dialog, GW_OWNER));
    for (Window const * window : std::vector<Window *>(toolkit().windows))
      if (HWND const top = window->GethWnd() ? GetAncestor(window->GethWnd(), GA_ROOT) : nullptr;
          IsWindowVisible(top) && !belongsTo(top, dialog))
        disable(top);
  }
  OthersDisabled(OthersDisabled const &) = delete;
  OthersDisabled & operator=(OthersDisabled const &) = delete;
  ~OthersDisabled() {
    --toolkit().modalDepth;
    for (HWND const window : disabled_)
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
  bool ended = false;
  long result = 0;
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
  Run run;
  run_ = &run;
  HWND const dialog = GethWnd();
  FocusReturn const focus;
  endOtherInput();
  {
    OthersDisabled const othersDisabled(dialog);
    Show();
    detail::dispatchUntil(run.ended, dialog);
  }
  // Only now: when the active window goes while its owner is disabled, the system turns to another program.
  if (IsWindow(dialog))
    ShowWindow(dialog, SW_HIDE);
  if (!run.ended)
    run_ = nullptr;
  return run.result;
}

void ModalDialog::EndDialog(long result) {
  if (!run_)
    return;
  run_->ended = true;
  run_->result = result;
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
