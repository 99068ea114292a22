#include "sv/help.hpp"

#include "application/helpkeys.hpp"
#include "application/toolkit.hpp"
#include "sv/application.hpp"
#include "sv/window.hpp"
#include "window/handlemap.hpp"

#include <utility>

namespace SV {
namespace {

/// A DLL of the system's folder, which stays loaded. DLLs that only the help needs are loaded here: the shell, with the DLLs that
/// it needs, would take a tenth of the start-up time of every program.
template <class Function> Function systemFunction(char const * dll, char const * name) {
  HMODULE const module = LoadLibraryExA(dll, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
  return module ? reinterpret_cast<Function>(reinterpret_cast<void *>(GetProcAddress(module, name))) : nullptr;
}

/// Opens a document with the program for it.
/// \return what ShellExecute returns; 0 if there is no shell
INT_PTR openDocument(char const * fileName) {
  using Execute = INT_PTR(WINAPI *)(HWND, char const *, char const *, char const *, char const *, int);
  auto const execute = systemFunction<Execute>("shell32.dll", "ShellExecuteA");
  return execute != nullptr ? execute(nullptr, "open", fileName, nullptr, nullptr, SW_SHOWNORMAL) : 0;
}

bool hasTopics(String const & fileName) {
  String const ending = fileName.substr(fileName.Len() - 4, 4);
  return lstrcmpiA(ending.c_str(), ".chm") == 0;
}

/// False if the system has no viewer for such files, or the viewer does not find the topic.
bool openTopic(String const & fileName, unsigned long topic) {
  constexpr UINT kContext = 0xF; // HH_HELP_CONTEXT
  using HtmlHelp = HWND(WINAPI *)(HWND, char const *, UINT, DWORD_PTR);
  auto const htmlHelp = systemFunction<HtmlHelp>("hhctrl.ocx", "HtmlHelpA");
  return htmlHelp != nullptr && htmlHelp(nullptr, fileName.c_str(), kContext, topic) != nullptr;
}

} // namespace

Help::Help() = default;

Help::Help(String const & fileName) : fileName_(fileName) {}

Help::~Help() {
  if (Application::GetHelp() == this)
    Application::ChangeHelp(nullptr);
}

String Help::ChangeFileName(String const & fileName) { return std::exchange(fileName_, String(fileName)); }

bool Help::Start(unsigned long topic) {
  if (fileName_.Len() == 0)
    return false;
  if (topic != 0 && hasTopics(fileName_) && openTopic(fileName_, topic))
    return true;
  constexpr INT_PTR kLastError = 32; // greater results mean success
  return openDocument(fileName_.c_str()) > kLastError;
}

namespace detail {
namespace {

/// The toolkit's window that a message is for, or that contains the message's window.
Window const * windowAround(HWND handle) {
  for (; handle; handle = GetAncestor(handle, GA_PARENT))
    if (Window const * const window = windowOf(handle))
      return window;
  return nullptr;
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
    startHelp(windowAround(message.hwnd));
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
  startHelp(windowAround(message.hwnd));
  return true;
}

void startHelp(Window const * window) {
  if (!toolkit().help)
    return;
  while (window && window->GetHelpId() == 0)
    window = window->GetParent();
  toolkit().help->Start(window ? window->GetHelpId() : 0);
}

} // namespace detail

} // namespace SV
