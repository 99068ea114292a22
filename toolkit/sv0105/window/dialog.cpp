#include "sv/dialog.hpp"

#include "window/placement.hpp"
#include "window/windowaccess.hpp"

#include <utility>

namespace SV {
namespace {

detail::WindowSpec dialogSpec(Window * parent, WinBits bits) {
  DWORD style = WS_POPUP | WS_CLIPCHILDREN | WS_CLIPSIBLINGS | DS_3DLOOK;
  if (bits & WB_DIALOG_TITLE)
    style |= WS_CAPTION;
  if (bits & WB_DIALOG_CLOSE)
    style |= WS_SYSMENU;
  if (bits & WB_DIALOG_FRAME)
    style |= DS_MODALFRAME;
  detail::WindowSpec spec{detail::kDialogClass, style, 0, parent};
  spec.isDialog = true;
  return spec;
}

} // namespace

Dialog::Dialog(Window * parent, WinBits style) : Window(dialogSpec(parent, style)), style_(style) {}

Dialog::~Dialog() { Window::Destroy(); }

void Dialog::SetPosSizePixel(Point const & position, Size const & size) {
  isPlaced_ = true;
  Window::SetPosSizePixel(position, size);
}

void Dialog::place() {
  Window const * const parent = GetParent();
  Point const position =
      isPlaced_ ? GetPosPixel() : detail::centredPosition(GethWnd(), parent ? parent->GethWnd() : nullptr);
  Window::SetPosSizePixel(detail::insideScreen(position, GetSizePixel()), GetSizePixel());
}

void Dialog::Show() {
  if (!GethWnd() || IsVisible())
    return;
  place();
  Window::Show();
  HWND const wanted = std::exchange(firstFocus_, nullptr);
  HWND const focus = IsChild(GethWnd(), wanted) ? wanted : GetNextDlgTabItem(GethWnd(), nullptr, FALSE);
  if (IsVisible() && focus)
    SendMessageA(GethWnd(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(focus), TRUE);
}

long long Dialog::HandleMessage(unsigned message, unsigned long long wParam, long long lParam) {
  // Escape where no control answers it: the system still sends the identifier.
  if (message == WM_COMMAND && lParam == 0 && LOWORD(wParam) == IDCANCEL) {
    if (style_ & WB_DIALOG_CLOSE)
      Close();
    return 0;
  }
  return Window::HandleMessage(message, wParam, lParam);
}

long long Dialog::DefaultProcedure(unsigned message, unsigned long long wParam, long long lParam) {
  return DefDlgProcA(GethWnd(), message, wParam, lParam);
}

} // namespace SV
