#include "sv/window.hpp"

#include "application/pointer.hpp"
#include "application/toolkit.hpp"
#include "window/handlemap.hpp"
#include "window/painting.hpp"
#include "window/procedure.hpp"
#include "window/reflection.hpp"
#include "window/windowaccess.hpp"

#include <algorithm>
#include <utility>

namespace SV {

using detail::toolkit;

namespace {

detail::WindowSpec plainWindow(Window * parent, WinBits bits) {
  bool const hasTitle = (bits & WB_TITLE) != 0;
  DWORD style = WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
  if (parent && !hasTitle)
    style |= WS_CHILD;
  else if (parent || !hasTitle)
    style |= WS_POPUP;
  if (bits & WB_BORDER)
    style |= WS_BORDER;
  if (bits & WB_TITLE)
    style |= WS_CAPTION | WS_SYSMENU;
  if (bits & WB_SIZEABLE)
    style |= WS_THICKFRAME | (bits & WB_TITLE ? WS_MINIMIZEBOX | WS_MAXIMIZEBOX : 0);
  return {detail::kWindowClass, style, 0, parent};
}

bool isAppWindow(Window const * window) { return Application::GetAppWindow() == window; }

bool mayEnd() {
  Application * const application = GetpApp();
  return !application || application->QueryExit();
}

} // namespace

Window::Window(Window * parent, WinBits style) { create(plainWindow(parent, style)); }

Window::Window(detail::WindowSpec const & spec) { create(spec); }

Window::~Window() {
  Window::Destroy();
  std::vector<Window *> & windows = toolkit().windows;
  std::erase(windows, this);
  for (Window * window : windows)
    if (window->parent_ == this)
      window->parent_ = nullptr;
  if (isAppWindow(this))
    Application::SetAppWindow(nullptr);
}

void Window::create(detail::WindowSpec const & spec) {
  parent_ = spec.parent;
  toolkit().windows.push_back(this);
  HWND const parent = parent_ ? parent_->hwnd_ : nullptr;
  SetLastError(0);
  {
    detail::Attaching const attaching(spec.isControl ? nullptr : this);
    hwnd_ = spec.isDialog ? detail::createDialogWindow(spec, parent) : detail::createSystemWindow(spec, parent);
  }
  if (!hwnd_) {
    DWORD const error = GetLastError();
    std::erase(toolkit().windows, this);
    parent_ = nullptr;
    detail::raiseException(EXC_SYSTEM_OBJECT_NOT_CREATED, error);
    return;
  }
  if (spec.isControl) {
    detail::attach(*this, hwnd_);
    controlProcedure_ = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrA(hwnd_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(detail::windowProcedure)));
  }
  useFont();
}

void Window::Destroy() {
  if (hwnd_)
    DestroyWindow(hwnd_);
}

void Window::detach() {
  detail::forget(std::exchange(hwnd_, nullptr));
  mouseCaptured_ = false;
  controlProcedure_ = nullptr;
  if (HFONT const font = std::exchange(systemFont_, nullptr))
    DeleteObject(font);
  if (isAppWindow(this))
    Application::SetAppWindow(nullptr);
}

void Window::Paint(OutputDevice &, Rectangle const &) {}

void Window::Resize(Size const &) {}

void Window::Close() {
  if (!isAppWindow(this))
    Destroy();
  else if (mayEnd())
    Application::Quit();
}

void Window::Show() {
  if (!hwnd_ || Application::IsShowWindowSuppression())
    return;
  // How the program's caller wants its main window is meant for the first time only.
  bool const asCallerWants = isAppWindow(this) && !std::exchange(toolkit().appWindowShown, true);
  ShowWindow(hwnd_, asCallerWants ? toolkit().showCommand : SW_SHOW);
}

void Window::Hide() {
  if (hwnd_)
    ShowWindow(hwnd_, SW_HIDE);
}

bool Window::IsVisible(bool withParents) const {
  if (!hwnd_)
    return false;
  return withParents ? IsWindowVisible(hwnd_) != 0 : (GetWindowLongPtrA(hwnd_, GWL_STYLE) & WS_VISIBLE) != 0;
}

String Window::GetText() const {
  int const length = hwnd_ ? GetWindowTextLengthA(hwnd_) : 0;
  if (length < 1)
    return String();
  std::vector<char> text(static_cast<std::size_t>(length) + 1);
  return String(text.data(), GetWindowTextA(hwnd_, text.data(), length + 1));
}

void Window::SetText(String const & text) {
  if (hwnd_)
    SetWindowTextA(hwnd_, text.c_str());
}

Point Window::GetPosPixel() const {
  RECT rect = {};
  if (!hwnd_ || !GetWindowRect(hwnd_, &rect))
    return {};
  if (GetWindowLongPtrA(hwnd_, GWL_STYLE) & WS_CHILD)
    MapWindowPoints(nullptr, ::GetParent(hwnd_), reinterpret_cast<POINT *>(&rect), 1);
  return {rect.left, rect.top};
}

Size Window::GetSizePixel() const {
  RECT rect = {};
  return hwnd_ && GetWindowRect(hwnd_, &rect) ? Rectangle(rect).GetSize() : Size();
}

void Window::SetPosSizePixel(Point const & position, Size const & size) {
  if (hwnd_)
    SetWindowPos(hwnd_, nullptr, position.x, position.y, size.width, size.height, SWP_NOZORDER | SWP_NOACTIVATE);
}

Size Window::GetOutputSizePixel() const {
  RECT rect = {};
  return hwnd_ && GetClientRect(hwnd_, &rect) ? Rectangle(rect).GetSize() : Size();
}

void Window::ChangeOutputSizePixel(Size const & size) {
  Size const outer = GetSizePixel();
  Size const inner = GetOutputSizePixel();
  Window::SetPosSizePixel(GetPosPixel(),
                          {outer.width - inner.width + size.width, outer.height - inner.height + size.height});
}

Font const & Window::GetFont() const { return hasFont_ ? font_ : Application::GetAppFont(); }

Font Window::ChangeFont(Font const & font) {
  Font const former = GetFont();
  font_ = font;
  hasFont_ = true;
  useFont();
  return former;
}

void Window::useFont() {
  if (!hwnd_)
    return;
  HFONT const former = std::exchange(systemFont_, GetFont().CreateSystemFont());
  SendMessageA(hwnd_, WM_SETFONT, reinterpret_cast<WPARAM>(systemFont_), former != nullptr);
  if (!former)
    return; // a new window is painted anyway
  DeleteObject(former);
  Invalidate();
}

void Window::Invalidate() {
  if (hwnd_)
    InvalidateRect(hwnd_, nullptr, TRUE);
}

void Window::Update() {
  if (hwnd_)
    UpdateWindow(hwnd_);
}

void Window::paint() {
  detail::Painting const painting(*this, hwnd_);
  if (!painting)
    return;
  OutputDevice::ChangeFont(GetFont());
  Paint(*this, painting.area());
}

HDC Window::fetchContext() const { return hwnd_ ? GetDC(hwnd_) : nullptr; }

void Window::releaseContext(HDC context) const { ReleaseDC(hwnd_, context); }

long long Window::HandleMessage(unsigned message, unsigned long long wParam, long long lParam) {
  long long result = 0;
  if (detail::isForControl(message, wParam, lParam, result))
    return result;
  HWND const handle = hwnd_;
  // The window may die in its handler.
  if (handleInput(message, wParam, lParam) || detail::windowOf(handle) != this)
    return 0;
  switch (message) {
  case WM_CLOSE: Close(); return 0;
  case WM_QUERYENDSESSION: return !isAppWindow(this) || mayEnd();
  case WM_SETCURSOR: return detail::showStatePointer() ? TRUE : DefaultProcedure(message, wParam, lParam);
  case WM_WINDOWPOSCHANGING: detail::suppressShowing(*reinterpret_cast<WINDOWPOS *>(lParam)); break;
  case WM_SIZE:
    if (wParam != SIZE_MINIMIZED)
      Resize({LOWORD(lParam), HIWORD(lParam)});
    if (detail::windowOf(handle) != this) // it has died in its handler
      return 0;
    break;
  case WM_ERASEBKGND:
    if (fillBackground(reinterpret_cast<HDC>(wParam)))
      return 1;
    break;
  case WM_SETFOCUS:
    result = DefaultProcedure(message, wParam, lParam);
    GotFocus();
    return result;
  case WM_KILLFOCUS:
    result = DefaultProcedure(message, wParam, lParam);
    LostFocus();
    return result;
  case WM_PAINT:
    if (controlProcedure_)
      break;
    paint();
    return 0;
  case WM_GETFONT:
    if (controlProcedure_)
      break;
    return reinterpret_cast<LRESULT>(systemFont_);
  default: break;
  }
  return DefaultProcedure(message, wParam, lParam);
}

long long Window::DefaultProcedure(unsigned message, unsigned long long wParam, long long lParam) {
  if (controlProcedure_)
    return CallWindowProcA(controlProcedure_, hwnd_, message, wParam, lParam);
  return DefWindowProcA(hwnd_, message, wParam, lParam);
}

} // namespace SV
