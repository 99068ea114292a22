#include "windows/trayicon.hpp"

#include "texts/traytexts.hpp"
#include "tools/winapi.hpp"

#include <utility>

using SV::String;

namespace modeler {
namespace {

constexpr unsigned kMessage = WM_APP + 1;
constexpr unsigned kNumber = 1;
constexpr unsigned kBlinkPause = 500; // in milliseconds
constexpr unsigned short kRestoreItem = 1;
constexpr unsigned short kExitItem = 2;

} // namespace

TrayIcon::TrayIcon(TrayActions actions) : actions_(std::move(actions)), receiver_(*this) {
  HICON icons[] = {quiet_.GethIcon(), busy_.GethIcon()};
  SetIconList(icons, 1); // the index of the last one
}

bool TrayIcon::Show(String const & tip) {
  if (!isCreated_)
    isShown_ = Create(&receiver_, kMessage, tip, quiet_, kNumber) != 0;
  else
    isShown_ = (SetTooltipText(tip) != 0 && Visible()) || AddIcon() != 0;
  isCreated_ = true;
  return isShown_;
}

void TrayIcon::Hide() {
  isShown_ = false;
  RemoveIcon();
}

void TrayIcon::Blink(bool on) {
  if (on)
    Animate(kBlinkPause, 0);
  else
    StopAnimation();
}

void TrayIcon::BuildPopupMenu(SV::PopupMenu & menu) {
  menu.InsertItem(kRestoreItem, text(kRestore));
  menu.InsertSeparator();
  menu.InsertItem(kExitItem, text(Text::Exit));
  menu.ChangeSelectHdl([this](unsigned short item) { select(item); });
}

void TrayIcon::select(unsigned short item) {
  if (item == kExitItem)
    actions_.exit();
  else
    actions_.restore();
}

long long TrayIcon::Receiver::HandleMessage(unsigned message, unsigned long long wParam, long long lParam) {
  if (message == kMessage)
    return icon_.OnTrayNotification(wParam, lParam);
  if (message == m_nTaskbarCreatedMsg && icon_.isShown_)
    icon_.AddIcon();
  return Window::HandleMessage(message, wParam, lParam);
}

} // namespace modeler
