#include "support/windows/open_boxes.hpp"

#include "support/windows/windows.hpp"
#include "tools/winapi.hpp"

#include <tlhelp32.h>

namespace support {
namespace {

std::string boxesOf(DWORD processId) {
  std::string lines;
  for (HWND const box : findWindows({.processId = processId, .className = kBoxClass})) {
    BoxTexts const read = readBox(box);
    lines += "  an open box: \"" + read.title + "\"\n";
    for (std::string const & text : read.texts)
      lines += "    " + text + "\n";
  }
  return lines;
}

} // namespace

std::string openBoxes() {
  std::string lines = boxesOf(GetCurrentProcessId());
  HANDLE const processes = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
  PROCESSENTRY32 entry{};
  entry.dwSize = sizeof entry;
  for (BOOL more = Process32First(processes, &entry); more; more = Process32Next(processes, &entry))
    if (entry.th32ParentProcessID == GetCurrentProcessId())
      lines += boxesOf(entry.th32ProcessID);
  CloseHandle(processes);
  return lines;
}

} // namespace support
