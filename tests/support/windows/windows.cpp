#include "support/windows/windows.hpp"

#include "tools/winapi.hpp"

namespace support {
namespace {

struct Search {
  WindowQuery const & query;
  std::vector<HWND> found;
};

bool matches(HWND window, WindowQuery const & query) {
  DWORD owner = 0;
  GetWindowThreadProcessId(window, &owner);
  return owner == query.processId && (!query.visible || IsWindowVisible(window)) &&
         (query.className.empty() || windowClass(window) == query.className) &&
         (query.title.empty() || windowText(window) == query.title);
}

BOOL CALLBACK addMatch(HWND window, LPARAM argument) {
  auto & search = *reinterpret_cast<Search *>(argument);
  if (matches(window, search.query))
    search.found.push_back(window);
  return TRUE;
}

BOOL CALLBACK addChild(HWND window, LPARAM argument) {
  reinterpret_cast<std::vector<HWND> *>(argument)->push_back(window);
  return TRUE;
}

/// Sends, but gives up on a window whose thread stays busy. One that has just been busy for long, as with a minidump,
/// counts as hung until it takes its next message, and is asked even then.
bool ask(HWND window, UINT message, WPARAM first, LPARAM second, DWORD_PTR & answer) {
  return SendMessageTimeoutA(window, message, first, second, SMTO_NORMAL, 5000, &answer) != 0;
}

std::string withoutMnemonic(std::string const & label) {
  std::string plain;
  for (std::size_t i = 0; i < label.size(); ++i) {
    if (label[i] == '&' && ++i == label.size())
      break;
    plain += label[i];
  }
  return plain;
}

bool isButton(HWND window) { return windowClass(window) == "Button" && IsWindowVisible(window); }

bool click(HWND button) { return button && PostMessageA(button, BM_CLICK, 0, 0); }

} // namespace

std::vector<HWND> findWindows(WindowQuery const & query) {
  Search search{query, {}};
  EnumWindows(addMatch, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

HWND waitForWindow(WindowQuery const & query, double seconds) {
  std::vector<HWND> found;
  eventually([&] { return !(found = findWindows(query)).empty(); }, seconds);
  return found.empty() ? nullptr : found.front();
}

bool waitUntilGone(HWND window, double seconds) {
  return eventually([window] { return !IsWindow(window); }, seconds);
}

std::string windowClass(HWND window) {
  char name[256] = "";
  return std::string(name, static_cast<std::size_t>(GetClassNameA(window, name, sizeof(name))));
}

std::string windowText(HWND window) {
  DWORD_PTR length = 0;
  if (!ask(window, WM_GETTEXTLENGTH, 0, 0, length))
    return {};
  // The length may count more bytes than the text has, but never fewer.
  std::string text(length + 1, '\0');
  DWORD_PTR copied = 0;
  if (!ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()), copied))
    return {};
  text.resize(copied < text.size() ? copied : length);
  return text;
}

std::vector<HWND> children(HWND window) {
  std::vector<HWND> found;
  if (IsWindow(window))
    EnumChildWindows(window, addChild, reinterpret_cast<LPARAM>(&found));
  return found;
}

HWND childById(HWND window, int id) { return GetDlgItem(window, id); }

BoxTexts readBox(HWND box) {
  BoxTexts read{windowText(box), {}, {}};
  for (HWND const child : children(box)) {
    std::string const text = windowText(child);
    if (isButton(child))
      read.buttons.push_back(withoutMnemonic(text));
    else if (windowClass(child) == "Static" && IsWindowVisible(child) && !text.empty())
      read.texts.push_back(text);
  }
  return read;
}

bool pressButton(HWND box, std::string_view label) {
  for (HWND const child : children(box))
    if (isButton(child) && withoutMnemonic(windowText(child)) == label)
      return click(child);
  return false;
}

bool pressButton(HWND box, int id) { return click(childById(box, id)); }

bool closeWindow(HWND window) { return PostMessageA(window, WM_SYSCOMMAND, SC_CLOSE, 0) != 0; }

RECT windowRectangle(HWND window) {
  RECT area{};
  GetWindowRect(window, &area);
  return area;
}

RECT clientRectangle(HWND window) {
  RECT area{};
  GetClientRect(window, &area);
  MapWindowPoints(window, nullptr, reinterpret_cast<POINT *>(&area), 2);
  return area;
}

} // namespace support
