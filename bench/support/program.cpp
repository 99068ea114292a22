#include "support/program.hpp"

#include "tools/winapi.hpp"

std::string bench::commandOf(std::string const & program, std::string const & arguments) {
  char path[MAX_PATH] = "";
  GetModuleFileNameA(nullptr, path, sizeof path);
  std::string folder(path);
  folder.erase(folder.rfind('\\') + 1);
  return '"' + folder + program + "\" " + arguments;
}

long bench::runProgram(std::string command, std::string const & folder) {
  STARTUPINFOA start = {};
  start.cb = sizeof start;
  PROCESS_INFORMATION process = {};
  if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                      folder.empty() ? nullptr : folder.c_str(), &start, &process))
    return -1;
  WaitForSingleObject(process.hProcess, INFINITE);
  DWORD code = 1;
  GetExitCodeProcess(process.hProcess, &code);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return static_cast<long>(code);
}

bench::Body bench::wholeProcess(std::string const & program, std::string const & arguments) {
  return [command = commandOf(program, arguments)](benchmark::State & state) {
    for (auto _ : state)
      if (runProgram(command) != 0) {
        state.SkipWithError(("failed: " + command).c_str());
        break;
      }
  };
}
