// A user at a program of the pages: starts it, answers its dialogs and boxes, closes its windows, and ends with its exit code.
//
//   page_user NUMBER PROGRAM [args]
//
// A dialog with a field gets the number, and each dialog or box its button OK.

#include "support/windows/windows.hpp"

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <windows.h>

#include <tlhelp32.h>

namespace {

constexpr DWORD kLongestRun = 150'000;
constexpr DWORD kPatience = 3'000; // until a window that is still there is answered again
constexpr int kNothingDone = 98;

/// What follows the first words of the command line, to the letter.
char const * afterWords(char const * line, int words) {
  for (; words > 0; --words) {
    char const end = *line == '"' ? '"' : ' ';
    line += end == '"' ? 1 : 0;
    while (*line != '\0' && *line != end)
      ++line;
    line += end == '"' && *line == end ? 1 : 0;
    while (*line == ' ')
      ++line;
  }
  return line;
}

/// The process and those that it has started, by the chain of parents.
std::vector<DWORD> familyOf(DWORD first) {
  std::vector<DWORD> family{first};
  HANDLE const snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
  PROCESSENTRY32 entry{};
  entry.dwSize = sizeof entry;
  for (BOOL more = Process32First(snapshot, &entry); more; more = Process32Next(snapshot, &entry))
    if (std::find(family.begin(), family.end(), entry.th32ParentProcessID) != family.end() &&
        entry.th32ProcessID != first)
      family.push_back(entry.th32ProcessID);
  CloseHandle(snapshot);
  return family;
}

HWND fieldOf(HWND window) {
  for (HWND const child : support::children(window)) {
    std::string const name = support::windowClass(child);
    if (name == "Edit" || name == "EDIT")
      return child;
  }
  return nullptr;
}

void answer(HWND window, char const * number) {
  if (HWND const field = fieldOf(window))
    SendMessageA(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(number));
  if (!support::pressButton(window, "OK"))
    support::closeWindow(window);
}

void serve(HANDLE process, DWORD id, char const * number) {
  std::map<HWND, DWORD> answered;
  DWORD const start = GetTickCount();
  while (WaitForSingleObject(process, 200) == WAIT_TIMEOUT && GetTickCount() - start < kLongestRun)
    for (DWORD const member : familyOf(id))
      for (HWND const window : support::findWindows({.processId = member})) {
        auto const [entry, isNew] = answered.emplace(window, GetTickCount());
        if (!isNew && GetTickCount() - entry->second < kPatience)
          continue;
        entry->second = GetTickCount();
        answer(window, number);
      }
}

} // namespace

int main(int argc, char ** argv) {
  if (argc < 3)
    return kNothingDone;
  std::string command = afterWords(GetCommandLineA(), 2);
  STARTUPINFOA start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
  start.hStdOutput = GetStdHandle(STD_OUTPUT_HANDLE);
  start.hStdError = GetStdHandle(STD_ERROR_HANDLE);
  PROCESS_INFORMATION child{};
  if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &child)) {
    std::fprintf(stderr, "page_user: %s cannot be started: error %lu\n", argv[2], GetLastError());
    return kNothingDone;
  }
  serve(child.hProcess, child.dwProcessId, argv[1]);
  DWORD code = kNothingDone;
  GetExitCodeProcess(child.hProcess, &code);
  if (code == STILL_ACTIVE) {
    std::fprintf(stderr, "page_user: %s is ended, since it has run for too long\n", argv[2]);
    TerminateProcess(child.hProcess, kNothingDone);
  }
  return static_cast<int>(code);
}
