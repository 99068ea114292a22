// Fifty plug-ins that are found, checked, kept and discarded, beside the same libraries loaded and freed by their names.

#include "aplugin.hpp"

#include "acmdline.hpp"
#include "support/imports/import_hook.hpp"
#include "support/ratio.hpp"
#include "tools/winapi.hpp"

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr int kPlugins = 50;

std::string programInstead; // where it is not empty, the library takes it for the program

DWORD WINAPI giveProgram(HMODULE module, char * out, DWORD size) {
  if (programInstead.empty())
    return GetModuleFileNameA(module, out, size);
  lstrcpynA(out, programInstead.c_str(), static_cast<int>(size));
  return static_cast<DWORD>(programInstead.size());
}

/// A folder of a program with its plug-ins, gone at the end.
class Folder {
public:
  Folder() : path_(std::filesystem::temp_directory_path() / ("kivara-bench-" + std::to_string(GetCurrentProcessId()))) {
    char program[MAX_PATH] = "";
    GetModuleFileNameA(nullptr, program, sizeof program);
    auto const plugin = std::filesystem::path(program).parent_path() / "plugin_fixture.dll";
    std::filesystem::create_directories(path_ / "plugins");
    for (int i = 0; i < kPlugins; ++i) {
      auto const copy = path_ / "plugins" / (std::to_string(100 + i) + ".dll");
      std::filesystem::copy_file(plugin, copy);
      files_.push_back(copy.string());
    }
    support::replaceImports(GetModuleHandleA("kivara.dll"), "KERNEL32.dll",
                            {{"GetModuleFileNameA", reinterpret_cast<void *>(giveProgram)}});
  }
  Folder(Folder const &) = delete;
  Folder & operator=(Folder const &) = delete;
  ~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  std::string program() const { return (path_ / "program.exe").string(); }
  std::vector<std::string> const & files() const { return files_; }

private:
  std::filesystem::path path_;
  std::vector<std::string> files_;
};

Folder const & folder() {
  static Folder const theFolder;
  return theFolder;
}

class Manager : public KivPluginManager {};

/// The manager asks it for its option.
void initCommandLine() {
  static char program[] = "bench.exe";
  static char * words[] = {program};
  static bool isInit = false;
  if (!std::exchange(isInit, true))
    KivCmdline::init(1, words, true, "log");
}

void loadByTheLibrary(benchmark::State & state) {
  initCommandLine();
  Manager manager;
  programInstead = folder().program();
  for (auto _ : state) {
    bool const isAny = manager.LoadPlugins();
    if (!isAny)
      state.SkipWithError("no plug-ins");
    manager.DiscardPlugins();
  }
  programInstead.clear();
}

void loadByTheSystem(benchmark::State & state) {
  std::vector<HMODULE> modules(kPlugins);
  for (auto _ : state) {
    for (int i = 0; i < kPlugins; ++i)
      modules[static_cast<std::size_t>(i)] = LoadLibraryA(folder().files()[static_cast<std::size_t>(i)].c_str());
    for (HMODULE const module : modules)
      FreeLibrary(module);
  }
}

bench::Pair const load{"Plug-ins: LoadPlugins of 50, then DiscardPlugins", bench::atMost(1.20), loadByTheLibrary,
                       "LoadLibrary and FreeLibrary", loadByTheSystem};

} // namespace
