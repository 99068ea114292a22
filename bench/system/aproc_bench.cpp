// A program that ends at once, from its start to the end of the wait, beside the calls of the system alone.

#include "aproc.hpp"

#include "support/ratio.hpp"
#include "tools/winapi.hpp"

#include <string>

namespace {

std::string childPath() {
  char path[MAX_PATH] = "";
  GetModuleFileNameA(nullptr, path, sizeof path);
  std::string const full(path);
  return full.substr(0, full.rfind('\\') + 1) + "process_child.exe";
}

void runByTheLibrary(benchmark::State & state) {
  KivSynchronousProcess process(childPath().c_str(), "exit:7", KIV_CMDSHOW_HIDE);
  for (auto _ : state) {
    if (!process.Execute(false)) {
      state.SkipWithError("not started");
      return;
    }
    long result = -1;
    while (result == -1)
      result = process.Wait();
    benchmark::DoNotOptimize(result);
  }
}

void runByTheSystem(benchmark::State & state) {
  std::string const line = childPath() + " exit:7";
  for (auto _ : state) {
    std::string changeable = line;
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started = {};
    if (!CreateProcessA(nullptr, changeable.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW, nullptr, nullptr,
                        &startup, &started)) {
      state.SkipWithError("not started");
      return;
    }
    CloseHandle(started.hThread);
    WaitForSingleObject(started.hProcess, INFINITE);
    DWORD result = 0;
    GetExitCodeProcess(started.hProcess, &result);
    benchmark::DoNotOptimize(result);
    CloseHandle(started.hProcess);
  }
}

bench::Pair const run{"Process: from the start to the end of the wait", bench::atMost(1.10), runByTheLibrary,
                      "CreateProcess and WaitForSingleObject", runByTheSystem};

} // namespace
