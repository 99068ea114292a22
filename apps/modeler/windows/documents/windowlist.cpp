#include "windows/documents/windowlist.hpp"

#include "tools/winapi.hpp"

#include <algorithm>
#include <string>

using SV::String;

namespace modeler {
namespace {

constexpr std::size_t kMostNumbers = 9;

/// In a menu, one "~" marks a mnemonic, and two are one to be seen.
String withoutMnemonic(String const & title) {
  String result;
  for (char const * c = title.c_str(); *c != '\0'; ++c) {
    if (*c == '~')
      result += '~';
    result += *c;
  }
  return result;
}

} // namespace

std::vector<HWND> openWindows(HWND client) {
  std::vector<HWND> windows;
  for (HWND child = GetTopWindow(client); child != nullptr; child = GetWindow(child, GW_HWNDNEXT))
    if ((GetWindowLongA(child, GWL_EXSTYLE) & WS_EX_MDICHILD) != 0 &&
        (GetWindowLongA(child, GWL_STYLE) & WS_VISIBLE) != 0)
      windows.push_back(child);
  // The client area numbers its windows as they come.
  std::sort(windows.begin(), windows.end(), [](HWND a, HWND b) { return GetDlgCtrlID(a) < GetDlgCtrlID(b); });
  return windows;
}

String titleOf(HWND window) {
  std::string title(static_cast<std::size_t>(GetWindowTextLengthA(window)) + 1, '\0');
  GetWindowTextA(window, title.data(), static_cast<int>(title.size()));
  return title.c_str();
}

void showInFront(HWND window) {
  HWND const client = GetParent(window);
  auto const asParameter = reinterpret_cast<WPARAM>(window);
  if (IsIconic(window))
    SendMessageA(client, WM_MDIRESTORE, asParameter, 0);
  SendMessageA(client, WM_MDIACTIVATE, asParameter, 0);
}

String nameInList(std::size_t place, String const & title) {
  String const number(static_cast<int>(place + 1));
  return (place < kMostNumbers ? "~" + number : number) + " " + withoutMnemonic(title);
}

} // namespace modeler
