#include "support/child_process.hpp"

#include "tools/winapi.hpp"

#include <gtest/gtest.h>

namespace support {
namespace {

std::string programFolder() {
  char path[MAX_PATH] = "";
  GetModuleFileNameA(nullptr, path, sizeof path - 1);
  std::string const text(path);
  return text.substr(0, text.rfind('\\') + 1);
}

/// A pipe's two ends; only the writing one is inherited.
struct Pipe {
  Pipe() {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    CreatePipe(&read, &write, &inherited, 0);
    SetHandleInformation(read, HANDLE_FLAG_INHERIT, 0);
  }
  ~Pipe() {
    closeWrite();
    CloseHandle(read);
  }
  void closeWrite() {
    if (write != nullptr)
      CloseHandle(write);
    write = nullptr;
  }
  HANDLE read = nullptr;
  HANDLE write = nullptr;
};

void takeWhatIsThere(HANDLE pipe, std::string & output) {
  DWORD available = 0;
  while (PeekNamedPipe(pipe, nullptr, 0, nullptr, &available, nullptr) && available > 0) {
    std::string piece(available, '\0');
    DWORD got = 0;
    if (!ReadFile(pipe, piece.data(), available, &got, nullptr))
      return;
    output.append(piece, 0, got);
  }
}

} // namespace

ChildResult runChild(std::string const & program, std::string const & arguments, unsigned seconds) {
  Pipe pipe;
  STARTUPINFOA start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdOutput = start.hStdError = pipe.write;
  PROCESS_INFORMATION child{};
  std::string commandLine = '"' + programFolder() + program + "\" " + arguments;
  if (!CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &child)) {
    ADD_FAILURE() << commandLine << " cannot be started: error " << GetLastError();
    return {static_cast<unsigned long>(-1), ""};
  }
  pipe.closeWrite();
  CloseHandle(child.hThread);
  ChildResult result{};
  ULONGLONG const end = GetTickCount64() + seconds * 1000ULL;
  bool ended = false;
  while (!ended) {
    ended = WaitForSingleObject(child.hProcess, 10) == WAIT_OBJECT_0;
    takeWhatIsThere(pipe.read, result.output);
    if (!ended && GetTickCount64() > end) {
      TerminateProcess(child.hProcess, kChildTimedOut);
      WaitForSingleObject(child.hProcess, INFINITE);
      ended = true;
    }
  }
  GetExitCodeProcess(child.hProcess, &result.exitCode);
  CloseHandle(child.hProcess);
  return result;
}

} // namespace support
