#include "sv/help.hpp"

#include "helpkeys.hpp"
#include "sv/application.hpp"
#include "toolkit.hpp"

#include <shellapi.h>
#include <utility>

namespace SV {

Help::Help() = default;

Help::Help(String const & fileName) : fileName_(fileName) {}

Help::~Help() {
  if (Application::GetHelp() == this)
    Application::ChangeHelp(nullptr);
}

String Help::ChangeFileName(String const & fileName) { return std::exchange(fileName_, String(fileName)); }

bool Help::Start() {
  if (fileName_.Len() == 0)
    return false;
  constexpr INT_PTR kLastError = 32; // greater answers are successes
  HINSTANCE const answer = ShellExecuteA(nullptr, "open", fileName_.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
  return reinterpret_cast<INT_PTR>(answer) > kLastError;
}

namespace detail {
namespace {

void startHelp() {
  if (toolkit().help)
    toolkit().help->Start();
}

bool isClick(UINT message) {
  return message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK || message == WM_NCLBUTTONDOWN;
}

bool endsExtendedHelp(MSG const & message) {
  bool const wantsHelp = isClick(message.message);
  if (!wantsHelp && (message.message != WM_KEYDOWN || message.wParam != VK_ESCAPE))
    return false;
  toolkit().extendedHelp = false;
  if (toolkit().application)
    toolkit().application->DeactivateExtHelp();
  if (wantsHelp)
    startHelp();
  return true;
}

bool beginsExtendedHelp() {
  if ((toolkit().helpModes & HELP_EXTENDED) == 0 || !toolkit().application)
    return false;
  toolkit().extendedHelp = true;
  toolkit().application->ActivateExtHelp();
  return true;
}

} // namespace

bool isHelpMessage(MSG const & message) {
  if (toolkit().extendedHelp && endsExtendedHelp(message))
    return true;
  if (message.message != WM_KEYDOWN || message.wParam != VK_F1)
    return false;
  if (GetKeyState(VK_SHIFT) < 0)
    return beginsExtendedHelp();
  if ((toolkit().helpModes & HELP_BY_KEY) == 0)
    return false;
  startHelp();
  return true;
}

} // namespace detail

} // namespace SV
