#include "sv/control.hpp"

#include "controls/dialogunits.hpp"
#include "resources/loading.hpp"
#include "sv/dialog.hpp"
#include "window/dialogaround.hpp"
#include "window/windowaccess.hpp"

#include <array>
#include <cstring>
#include <utility>

namespace SV {
namespace {

/// Left, top, width and height in units of dialogs, as they lie in the resource.
using PlaceRecord = std::array<short, 4>;

PlaceRecord loadPlace(ResId const & id) {
  PlaceRecord place = {};
  detail::loadWithRetry(id, [&](ResMgr const & manager) {
    auto const bytes = detail::findResource(manager, id.GetNumber(), RT_RCDATA);
    if (bytes.size() < sizeof place)
      return false;
    std::memcpy(place.data(), bytes.data(), sizeof place);
    return true;
  });
  return place;
}

detail::WindowSpec plainControl(Window * parent, WinBits style) {
  DWORD system = WS_CHILD | WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
  if (style & WB_BORDER)
    system |= WS_BORDER;
  if (style & WB_GROUP)
    system |= WS_GROUP;
  return {detail::kWindowClass, system, 0, parent};
}

bool isColourQuestion(unsigned message) {
  return message == WM_CTLCOLORSTATIC || message == WM_CTLCOLOREDIT || message == WM_CTLCOLORLISTBOX ||
         message == WM_CTLCOLORBTN;
}

} // namespace

Control::Control(Window * parent, WinBits style) : Window(plainControl(parent, style)) {}

Control::Control(Window * parent, ResId const & id) : Control(parent) {
  PlaceRecord const place = loadPlace(id);
  if (!GethWnd())
    return;
  auto const font = reinterpret_cast<HFONT>(SendMessageA(GethWnd(), WM_GETFONT, 0, 0));
  Size const position = detail::pixelsOfUnits(font, {place[0], place[1]});
  Window::SetPosSizePixel({position.width, position.height}, detail::pixelsOfUnits(font, {place[2], place[3]}));
}

Control::Control(detail::WindowSpec const & spec) : Window(spec) {}

Control::~Control() { Window::Destroy(); }

Control::FocusHandler Control::ChangeGetFocusHdl(FocusHandler handler) {
  return std::exchange(getFocusHandler_, std::move(handler));
}

Control::FocusHandler Control::ChangeLoseFocusHdl(FocusHandler handler) {
  return std::exchange(loseFocusHandler_, std::move(handler));
}

void Control::GotFocus() {
  if (FocusHandler const handler = getFocusHandler_) // a copy: it may be changed while it runs
    handler(this);
}

void Control::LostFocus() {
  if (FocusHandler const handler = loseFocusHandler_)
    handler(this);
}

void Control::SetEnabled(bool enabled) {
  if (!enabled)
    leaveFocus(); // before: the system takes the keyboard away from all of the dialog
  Window::SetEnabled(enabled);
}

void Control::GrabFocus() {
  Dialog * const dialog = detail::dialogAround(GethWnd());
  if (!dialog)
    Window::GrabFocus();
  else if (dialog->IsVisible())
    SendMessageA(dialog->GethWnd(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(GethWnd()),
                 TRUE); // moves the default button
  else
    dialog->firstFocus_ = GethWnd();
}

bool Control::Notify(unsigned message, unsigned long long wParam, long long lParam, long long & result) {
  if (!isColourQuestion(message))
    return false;
  Brush const & own = GetBackgroundBrush();
  Brush const & brush = own.IsNone() ? GetParent()->GetBackgroundBrush() : own;
  bool const hasFont = detail::WindowAccess::hasFont(*this);
  if (brush.IsNone() && !hasFont)
    return false;
  auto const device = reinterpret_cast<HDC>(wParam);
  result = DefWindowProcA(GetParent()->GethWnd(), message, wParam, lParam);
  if (hasFont)
    SetTextColor(device, GetFont().GetColor().GetRGB());
  if (!brush.IsNone()) {
    COLORREF const color = brush.GetColor().GetRGB();
    SetBkColor(device, color);
    SetDCBrushColor(device, color);
    result = reinterpret_cast<LRESULT>(GetStockObject(DC_BRUSH));
  }
  return true;
}

/// A control that can't be used any more would keep the keyboard.
void Control::leaveFocus() {
  HWND const focus = GetFocus();
  if (!focus || (focus != GethWnd() && !IsChild(GethWnd(), focus)))
    return;
  if (Dialog const * const dialog = detail::dialogAround(GethWnd()))
    SendMessageA(dialog->GethWnd(), WM_NEXTDLGCTL, 0, FALSE);
}

long long Control::HandleMessage(unsigned message, unsigned long long wParam, long long lParam) {
  if (message == WM_SHOWWINDOW && !wParam && lParam == 0)
    leaveFocus();
  return Window::HandleMessage(message, wParam, lParam);
}

} // namespace SV
