// tray_shell: a shell with a notification area for one desktop: it owns the windows that programs look for, takes their calls,
// writes a line for each, and counts the icons. The calls come in the form in which Wine sends them.
// With the word "side" the clock stands above the icons, as in a taskbar at the side of the screen; with "gap" and a number it ends so many
// pixels above the lower edge.
#include "programs/ui/tray_shell.hpp"

#include <shellapi.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

struct NotifyData {
  LONG window;
  UINT number, flags, message;
  WCHAR tip[128];
  DWORD state, stateMask;
  WCHAR info[256];
  UINT timeout;
  WCHAR title[64];
  DWORD kind;
  GUID guid;
  UINT width, height, planes, depth;
};
static_assert(sizeof(NotifyData) == 960);

struct Icon {
  HWND window;
  UINT number;
  UINT message;
  bool isHidden;
};

std::vector<Icon> icons;
bool refuses;
UINT created;

std::string narrow(WCHAR const * text) {
  char result[600] = "";
  WideCharToMultiByte(CP_ACP, 0, text, -1, result, sizeof result, nullptr, nullptr);
  return result;
}

auto find(HWND window, UINT number) {
  std::erase_if(icons, [](Icon const & icon) { return !IsWindow(icon.window); });
  return std::find_if(icons.begin(), icons.end(),
                      [&](Icon const & icon) { return icon.window == window && icon.number == number; });
}

void change(Icon & icon, NotifyData const & data) {
  if ((data.flags & NIF_MESSAGE) != 0)
    icon.message = data.message;
  if ((data.flags & NIF_STATE) != 0 && (data.stateMask & NIS_HIDDEN) != 0)
    icon.isHidden = (data.state & NIS_HIDDEN) != 0;
}

bool carryOut(ULONG_PTR what, HWND window, NotifyData const & data) {
  auto const icon = find(window, data.number);
  bool const isThere = icon != icons.end();
  if (refuses || isThere == (what == NIM_ADD))
    return false;
  if (what == NIM_DELETE)
    icons.erase(icon);
  if (what == NIM_ADD)
    icons.push_back({window, data.number, 0, false});
  if (what == NIM_ADD || what == NIM_MODIFY)
    change(what == NIM_ADD ? icons.back() : *icon, data);
  return true;
}

/// The last pixel of the picture, in the order of its bytes; 0 without one.
unsigned pixelOf(COPYDATASTRUCT const & copied, NotifyData const & data) {
  unsigned pixel = 0;
  if (data.width != 0 && copied.cbData >= sizeof data + sizeof pixel)
    std::memcpy(&pixel, static_cast<char const *>(copied.lpData) + copied.cbData - sizeof pixel, sizeof pixel);
  return pixel & 0xFFFFFF;
}

LRESULT take(HWND window, COPYDATASTRUCT const & copied) {
  if (copied.cbData < sizeof(NotifyData))
    return FALSE;
  auto const & data = *static_cast<NotifyData const *>(copied.lpData);
  char const * const names[] = {"add", "modify", "delete", "focus"};
  bool const taken = carryOut(copied.dwData, window, data);
  std::printf("%s %u flags %x message %x state %lu/%lu tip '%s' info '%s' title '%s' kind %lu time %u pixel %06x: %s\n",
              copied.dwData < std::size(names) ? names[copied.dwData] : "?", data.number, data.flags, data.message,
              data.state, data.stateMask, narrow(data.tip).c_str(), narrow(data.info).c_str(),
              narrow(data.title).c_str(), data.kind, data.timeout, pixelOf(copied, data), taken ? "taken" : "refused");
  std::fflush(stdout);
  return taken;
}

LRESULT mouse(UINT number, LPARAM message) {
  for (Icon const & icon : icons)
    if (icon.number == number && icon.message != 0)
      return SendMessageA(icon.window, icon.message, number, message);
  return -1;
}

void begin() { SendNotifyMessageA(HWND_BROADCAST, created, 0, 0); }

LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
  case WM_COPYDATA: return take(reinterpret_cast<HWND>(wParam), *reinterpret_cast<COPYDATASTRUCT const *>(lParam));
  case trayshell::Count: find(nullptr, 0); return static_cast<LRESULT>(icons.size());
  case trayshell::CountVisible:
    return std::count_if(icons.begin(), icons.end(), [](Icon const & icon) { return !icon.isHidden; });
  case trayshell::Refuse: refuses = wParam != 0; return 1;
  case trayshell::Forget:
    icons.clear();
    begin();
    return 1;
  case trayshell::Mouse: return mouse(static_cast<UINT>(wParam), lParam);
  case trayshell::Mark:
    std::printf("mark %llu\n", wParam);
    std::fflush(stdout);
    return 1;
  case trayshell::End: PostQuitMessage(0); return 1;
  default: return DefWindowProcA(window, message, wParam, lParam);
  }
}

HWND make(char const * name, WNDPROC procedureOfIt, HWND parent, RECT const & area) {
  WNDCLASSA description = {};
  description.lpfnWndProc = procedureOfIt;
  description.hInstance = GetModuleHandleA(nullptr);
  description.lpszClassName = name;
  RegisterClassA(&description);
  return CreateWindowExA(0, name, "", parent != nullptr ? WS_CHILD | WS_VISIBLE : WS_POPUP | WS_VISIBLE, area.left,
                         area.top, area.right - area.left, area.bottom - area.top, parent, nullptr,
                         description.hInstance, nullptr);
}

} // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR words, int) {
  bool const atSide = std::strcmp(words, "side") == 0;
  int const gap = std::strncmp(words, "gap", 3) == 0 ? std::atoi(words + 3) : 0;
  created = RegisterWindowMessageA("TaskbarCreated");
  HWND const bar = make("Shell_TrayWnd", procedure, nullptr, atSide ? RECT{0, 0, 60, 600} : RECT{0, 570, 800, 600});
  HWND const area = make("TrayNotifyWnd", DefWindowProcA, bar, atSide ? RECT{0, 400, 60, 600} : RECT{600, 0, 800, 30});
  make("TrayClockWClass", DefWindowProcA, area, atSide ? RECT{0, 0, 60, 40} : RECT{120, 0, 200, 30 - gap});
  begin();
  std::printf("begun\n"); // what was broadcast is with everybody now
  std::fflush(stdout);
  MSG message;
  while (GetMessageA(&message, nullptr, 0, 0) > 0)
    DispatchMessageA(&message);
  return 0;
}
