// A whole process on the library, from its start to its exit, beside one that makes the same window without it.

#include "support/ratio.hpp"
#include "tools/winapi.hpp"

#include <string>

namespace {

/// The command line of a program that lies beside this one.
std::string commandOf(std::string const & program, std::string const & arguments) {
  char path[MAX_PATH] = "";
  GetModuleFileNameA(nullptr, path, sizeof path);
  std::string folder(path);
  folder.erase(folder.rfind('\\') + 1);
  return '"' + folder + program + "\" " + arguments;
}

/// Runs it to its end; false when it could not be started or failed.
bool run(std::string command) {
  STARTUPINFOA start = {};
  start.cb = sizeof start;
  PROCESS_INFORMATION process = {};
  if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process))
    return false;
  WaitForSingleObject(process.hProcess, INFINITE);
  DWORD code = 1;
  GetExitCodeProcess(process.hProcess, &code);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return code == 0;
}

bench::Body wholeProcess(std::string const & program, std::string const & arguments) {
  return [command = commandOf(program, arguments)](benchmark::State & state) {
    for (auto _ : state)
      if (!run(command)) {
        state.SkipWithError(("failed: " + command).c_str());
        break;
      }
  };
}

bench::Pair const pairs[] = {
    {"Process: apps/minimal from start to exit", bench::atMost(1.5), wholeProcess("minimal.exe", "-close"),
     "a bare window", wholeProcess("bare_window.exe", "")},
};

} // namespace
