// A program that faults, from its start to its exit, with report and minidump, beside one that makes a minidump alone; and what it takes
// to install the filter, beside the start of a whole program.

#include "diagnostics/crash/filter.hpp"
#include "diagnostics/crash/paths.hpp"
#include "support/program.hpp"
#include "support/ratio.hpp"
#include "tools/winapi.hpp"

#include <string>

namespace {

/// A temporary folder of the benchmark's own, which goes away with all that the programs left there.
class Folder {
public:
  Folder() {
    GetTempPathA(MAX_PATH, former_);
    path_ = former_ + ("kivara-crash-bench-" + std::to_string(GetCurrentProcessId()));
    CreateDirectoryA(path_.c_str(), nullptr);
    SetEnvironmentVariableA("TMP", path_.c_str());
  }
  Folder(Folder const &) = delete;
  Folder & operator=(Folder const &) = delete;
  ~Folder() {
    SetEnvironmentVariableA("TMP", former_); // the next one lies beside this one, not in it
    WIN32_FIND_DATAA entry{};
    HANDLE const search = FindFirstFileA((path_ + "\\*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE)
      return;
    do
      DeleteFileA((path_ + '\\' + entry.cFileName).c_str());
    while (FindNextFileA(search, &entry));
    FindClose(search);
    RemoveDirectoryA(path_.c_str());
  }

  std::string const & path() const { return path_; }

private:
  char former_[MAX_PATH] = "";
  std::string path_;
};

bench::Body crash(std::string const & program) {
  return [program](benchmark::State & state) {
    Folder const folder;
    for (auto _ : state)
      if (bench::runProgram(bench::commandOf(program, ""), folder.path()) !=
          static_cast<long>(STATUS_ACCESS_VIOLATION)) {
        state.SkipWithError((program + " did not end by its fault").c_str());
        break;
      }
  };
}

/// Once more in this process, whose library has done it already: each step takes what it took then.
void install(benchmark::State & state) {
  auto const here = reinterpret_cast<void const *>(reinterpret_cast<std::uintptr_t>(&install));
  for (auto _ : state) {
    kivara::crash::installFilter(here);
    kivara::crash::Paths paths;
    kivara::crash::findPaths(paths);
    benchmark::DoNotOptimize(paths);
  }
}

bench::Pair const pairs[] = {
    {"Crash: program with report and minidump", bench::atMost(1.5), crash("crash_ours.exe"), "MiniDumpWriteDump alone",
     crash("crash_peer.exe")},
    {"Crash: installation at load", bench::atMost(0.05), install, "apps/minimal from start to exit",
     bench::wholeProcess("minimal.exe", "-close")},
};

} // namespace
