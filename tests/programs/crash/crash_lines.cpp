// Fails at a line that it prints before, in the way that its word names: see kWays. Its report needs no box.

#include "crash_lines.hpp"
#include "acmdline.hpp"
#include "aplugin.hpp"
#include "support/imports/import_hook.hpp"
#include "sv/application.hpp"
#include "tools/winapi.hpp"

#include <cstdlib>
#include <string>

namespace {

__attribute__((noinline)) void failAtLine() {
  KIVTEST_FAULT();
  std::puts("still there");
}

inline __attribute__((always_inline)) int failInlined(int depth) {
  KIVTEST_FAULT();
  return depth + 1;
}

__attribute__((noinline)) void failInInlinedFunction() {
  int const depth = failInlined(std::rand());
  std::printf("depth %d\n", depth);
}

/// The calls of the system's own code in between.
BOOL CALLBACK failInCallback(LPSTR) {
  KIVTEST_FAULT();
  return TRUE;
}

__attribute__((noinline)) void failBelowSystemCode() {
  EnumSystemLocalesA(failInCallback, LCID_INSTALLED);
  std::puts("still there");
}

__attribute__((noinline)) void callNowhere() {
  void (*volatile nowhere)() = nullptr;
  kivtest::tellLine(__LINE__), nowhere();
  std::puts("still there");
}

std::string pathBeside(char const * name) {
  char program[MAX_PATH] = "";
  GetModuleFileNameA(nullptr, program, MAX_PATH);
  std::string const path(program);
  return path.substr(0, path.find_last_of('\\') + 1) + name;
}

void failInModule() {
  HMODULE const module = GetModuleHandleA("crash_plug.dll");
  auto const fail = reinterpret_cast<void (*)()>(reinterpret_cast<void *>(GetProcAddress(module, "failInPlugin")));
  fail();
}

__attribute__((noinline)) void failInPlugin() {
  static char program[] = "crash_lines";
  static char * words[] = {program, nullptr};
  KivCmdline::init(1, words, true, "log");
  KivPluginManager::Instance().LoadSinglePlugin(pathBeside("crash_plug.dll").c_str());
  failInModule();
}

/// Something else lies where the linker placed it.
__attribute__((noinline)) void failInMovedModule() {
  std::string const path = pathBeside("crash_plug.dll");
  HMODULE const first = LoadLibraryExA(path.c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES);
  FreeLibrary(first);
  VirtualAlloc(first, 0x10000, MEM_RESERVE, PAGE_NOACCESS);
  HMODULE const second = LoadLibraryA(path.c_str());
  std::printf("moved %d\n", second != nullptr && second != first);
  failInModule();
}

struct Way {
  char const * word;
  void (*go)();
};

constexpr Way kWays[] = {
    {"line", failAtLine},     {"inlined", failInInlinedFunction}, {"callback", failBelowSystemCode},
    {"nowhere", callNowhere}, {"plugin", failInPlugin},           {"moved", failInMovedModule},
};

/// The report's search for symbols takes seconds under Wine, and adds a line.
void refuseSearchForSymbols() {
  BOOL(WINAPI * const refuse)(HANDLE, PCSTR, BOOL) = [](HANDLE, PCSTR, BOOL) -> BOOL { return FALSE; };
  support::replaceImports(GetModuleHandleA("kivara.dll"), "dbghelp.dll",
                          {{"SymInitialize", reinterpret_cast<void *>(refuse)}});
}

} // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR word, int) {
  refuseSearchForSymbols();
  SV::Application::SetModalDialogSuppression(true);
  for (Way const & way : kWays)
    if (std::string(word) == way.word)
      way.go();
  return 0;
}
