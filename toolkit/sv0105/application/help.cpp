#include "sv/help.hpp"

#include "application/helpkeys.hpp"
#include "application/toolkit.hpp"
#include "sv/application.hpp"

#include <utility>

namespace SV {
namespace {

/// Opens a document with the program for it; what ShellExecute answers, 0 where there is no shell. The shell is loaded only
/// here: together with what it needs itself it would be a tenth of the start of each program.
INT_PTR openDocument(char const * fileName) {
  HMODULE const shell = LoadLibraryExA("shell32.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
  if (shell == nullptr)
    return 0;
  using Execute = INT_PTR(WINAPI *)(HWND, char const *, char const *, char const *, char const *, int);
  auto const address = reinterpret_cast<void *>(GetProcAddress(shell, "ShellExecuteA"));
  auto const execute = reinterpret_cast<Execute>(address);
  return execute != nullptr ? execute(nullptr, "open", fileName, nullptr, nullptr, SW_SHOWNORMAL) : 0;
}

} // namespace

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
  return openDocument(fileName_.c_str()) > kLastError;
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
