#include "sv/mdi.hpp"

#include "application/toolkit.hpp"
#include "sv/menu.hpp"
#include "window/handlemap.hpp"
#include "window/procedure.hpp"
#include "window/windowaccess.hpp"

#include <utility>

namespace SV {

using detail::toolkit;

namespace {

/// Above the identifiers that menus may use.
constexpr UINT kFirstChildId = MENU_ITEM_MAX_ID + 1;

detail::WindowSpec clientSpec(MDIFrame & frame, CLIENTCREATESTRUCT & data) {
  // Without this style the system would show every child as soon as it is made.
  DWORD const style =
      WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS | WS_HSCROLL | WS_VSCROLL | MDIS_ALLCHILDSTYLES;
  return {"MDICLIENT", style, WS_EX_CLIENTEDGE, &frame, true, &data};
}

CLIENTCREATESTRUCT & clientData() {
  static CLIENTCREATESTRUCT data = {nullptr, kFirstChildId};
  return data;
}

/// The application when it draws the background itself, otherwise null.
MDIApplication * backgroundPainter() {
  auto * const application = dynamic_cast<MDIApplication *>(GetpApp());
  return application && application->IsUserDefPaintMDIClient() ? application : nullptr;
}

/// Ends what the user does in the bar's menus: the system must not go on with a bar that is no longer there.
void leaveMenusOf(HWND frame) {
  GUITHREADINFO info = {};
  info.cbSize = sizeof info;
  if (GetGUIThreadInfo(GetCurrentThreadId(), &info) && (info.flags & GUI_INMENUMODE) != 0 &&
      info.hwndMenuOwner == frame)
    EndMenu();
}

} // namespace

MDIClient::MDIClient(MDIFrame & frame) : Window(clientSpec(frame, clientData())) { toolkit().mdiClient = GethWnd(); }

MDIClient::~MDIClient() { Window::Destroy(); }

long long MDIClient::HandleMessage(unsigned message, unsigned long long wParam, long long lParam) {
  switch (message) {
  case WM_ERASEBKGND:
    if (MDIApplication * const painter = backgroundPainter()) {
      painter->PaintMDIClient(GethWnd());
      return 1;
    }
    break;
  case WM_SIZE:
  case WM_HSCROLL:
  case WM_VSCROLL: {
    // The picture depends on the size and does not scroll along.
    long long const result = Window::HandleMessage(message, wParam, lParam);
    if (backgroundPainter())
      Invalidate();
    return result;
  }
  case WM_NCDESTROY:
    if (toolkit().mdiClient == GethWnd())
      toolkit().mdiClient = nullptr;
    break;
  default: break;
  }
  return Window::HandleMessage(message, wParam, lParam);
}

MDIFrame::MDIFrame(String const & title)
    : Window(detail::WindowSpec{detail::kFrameClass, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 0, nullptr}) {
  SetText(title);
  if (!Application::GetAppWindow())
    Application::SetAppWindow(this);
  client_ = std::make_unique<MDIClient>(*this);
}

MDIFrame::~MDIFrame() {
  SetMenuBar(nullptr);
  Window::Destroy();
}

MDIChild * MDIFrame::GetActiveChild() const {
  HWND const client = client_->GethWnd();
  auto const active = client ? reinterpret_cast<HWND>(SendMessageA(client, WM_MDIGETACTIVE, 0, 0)) : nullptr;
  return dynamic_cast<MDIChild *>(detail::windowOf(active));
}

MenuBar * MDIFrame::SetMenuBar(MenuBar * bar) {
  if (bar == menuBar_)
    return bar;
  if (bar && bar->frame_)
    bar->frame_->SetMenuBar(nullptr);
  MenuBar * const former = std::exchange(menuBar_, bar);
  if (former)
    former->frame_ = nullptr;
  if (bar)
    bar->frame_ = this;
  if (!GethWnd())
    return former;
  takeMenuOff(former);
  // The client area has to know the menu too: it puts the buttons of a maximised child there.
  if (bar)
    SendMessageA(client_->GethWnd(), WM_MDISETMENU, reinterpret_cast<WPARAM>(bar->GetHMENU()), 0);
  SetMenu(GethWnd(), bar ? bar->GetHMENU() : nullptr);
  return former;
}

/// \param bar  the one on show, or null
void MDIFrame::takeMenuOff(MenuBar * bar) {
  leaveMenusOf(GethWnd());
  SetMenu(GethWnd(), nullptr);
  // The system adds the menu and the buttons of a maximised child, which would be deleted with the bar.
  if (bar)
    bar->removeForeignItems();
}

long long MDIFrame::HandleMessage(unsigned message, unsigned long long wParam, long long lParam) {
  switch (message) {
  case WM_COMMAND:
    if (lParam == 0 && HIWORD(wParam) == 0 && menuBar_ && menuBar_->dispatch(LOWORD(wParam)))
      return 0;
    break;
  case WM_DESTROY:
    // The system would delete the menu with the window.
    takeMenuOff(menuBar_);
    break;
  default: break;
  }
  return Window::HandleMessage(message, wParam, lParam);
}

long long MDIFrame::DefaultProcedure(unsigned message, unsigned long long wParam, long long lParam) {
  return DefFrameProcA(GethWnd(), client_ ? client_->GethWnd() : nullptr, message, wParam, lParam);
}

MDIChild::MDIChild(MDIFrame & frame, String const & title)
    : Window(detail::WindowSpec{detail::kChildClass, WS_CHILD | WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN | WS_CLIPSIBLINGS,
                                WS_EX_MDICHILD, &frame.GetClient()}) {
  SetText(title);
}

MDIChild::~MDIChild() { MDIChild::Destroy(); }

void MDIChild::Destroy() {
  // The client area keeps a list of its children: one that goes without a word would stay the active one.
  if (HWND const handle = GethWnd(); handle && GetParent()->GethWnd())
    SendMessageA(GetParent()->GethWnd(), WM_MDIDESTROY, reinterpret_cast<WPARAM>(handle), 0);
  Window::Destroy();
}

void MDIChild::Show() {
  Window::Show();
  if (IsVisible())
    SendMessageA(GetParent()->GethWnd(), WM_MDIACTIVATE, reinterpret_cast<WPARAM>(GethWnd()), 0);
}

long long MDIChild::DefaultProcedure(unsigned message, unsigned long long wParam, long long lParam) {
  return DefMDIChildProcA(GethWnd(), message, wParam, lParam);
}

void MDIApplication::InvalidateMDIClient() {
  if (HWND const client = detail::toolkit().mdiClient)
    InvalidateRect(client, nullptr, TRUE);
}

} // namespace SV
