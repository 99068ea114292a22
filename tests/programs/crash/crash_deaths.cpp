// How a program may end besides plain faults: by its runtime, in DllMain, without memory; and what the library finds then.

#include "crash_ways.hpp"

#include "aplugin.hpp"
#include "support/imports/import_hook.hpp"
#include "support/imports/import_spy.hpp"
#include "support/memory/allocation.hpp"
#include "tools/winapi.hpp"

#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <thread>

namespace {

using kivtest::onThread;
using kivtest::readNowhere;
using kivtest::say;

// Ends that are the runtime's

void raiseSignal() { std::raise(SIGSEGV); }
void throwNumber() { throw 42; }
void throwOnThread() { std::thread(throwNumber).join(); }
void throwOnSystemThread() { onThread(throwNumber); }

void handleSignal() {
  std::signal(SIGSEGV, [](int) {
    std::puts("the program's handler");
    std::_Exit(55);
  });
}

struct Shape {
  Shape();
  virtual ~Shape() = default;
  virtual void draw() = 0;
};

struct Circle : Shape {
  void draw() override { std::puts("draw"); }
};

/// Of a plain call the compiler knows that there is only one class with that function.
void drawNow(Shape & shape) {
  void (Shape::*const volatile draw)() = &Shape::draw;
  (shape.*draw)();
}

Shape::Shape() { drawNow(*this); }

/// Calls a function that the object does not have yet.
void callPure() { Circle const circle; }

int volatile deepest = -1; // never reached, which the compiler must not know

int overflow(int depth) {
  char volatile page[4096];
  page[0] = static_cast<char>(depth);
  return depth == deepest ? 0 : overflow(depth + 1) + page[0];
}

void overflowStack() { say("depth", static_cast<unsigned long>(overflow(0))); }
void overflowOnThread() { onThread(overflowStack); }

void readAtExit() { std::atexit(readNowhere); }

/// Runs the fixed bytes at the start of the program, which are in none of its sections.
void runHeader() {
  void * const header = reinterpret_cast<char *>(GetModuleHandleA(nullptr)) + 0x10;
  DWORD before = 0;
  VirtualProtect(header, 2, PAGE_EXECUTE_READWRITE, &before);
  unsigned char const code[] = {0x0F, 0x0B}; // ud2
  std::memcpy(header, code, sizeof code);
  void (*run)();
  std::memcpy(&run, &header, sizeof run);
  run();
}

// What is left of the process

/// Writes over the beginning of the next block, as a loop does that counts too far.
void damageHeap() {
  char * const blocks[] = {static_cast<char *>(std::malloc(40)), static_cast<char *>(std::malloc(40)),
                           static_cast<char *>(std::malloc(40))};
  std::size_t const volatile written = 40 + 8;
  std::memset(blocks[0] < blocks[1] ? blocks[0] : blocks[1], 0xEE, written);
}

void * WINAPI allocateNothing(HANDLE, DWORD, SIZE_T) { return nullptr; }

/// From now on neither the runtime nor the system's heap gives memory to modules of ours.
void takeMemory() {
  support::replaceImports(GetModuleHandleA("kivara.dll"), "KERNEL32.dll",
                          {{"HeapAlloc", reinterpret_cast<void *>(allocateNothing)}});
  static support::AllocationLimit const nothing(0);
}

/// Writes null wherever memory of the program holds the pointer, but not on the stack.
void forget(void const * pointer) {
  char here = 0;
  MEMORY_BASIC_INFORMATION stack{}, memory{};
  VirtualQuery(&here, &stack, sizeof stack);
  for (char * at = nullptr; VirtualQuery(at, &memory, sizeof memory) != 0; at += memory.RegionSize) {
    at = static_cast<char *>(memory.BaseAddress);
    if (memory.State != MEM_COMMIT || memory.Type != MEM_PRIVATE || memory.Protect != PAGE_READWRITE ||
        memory.AllocationBase == stack.AllocationBase)
      continue;
    auto ** const words = reinterpret_cast<void const **>(at);
    for (std::size_t i = 0; i < memory.RegionSize / sizeof *words; ++i)
      if (words[i] == pointer)
        words[i] = nullptr;
  }
}

/// Leaves a null pointer in the list of plug-ins, as a program does that writes where it must not.
void forgetPlugin() {
  KivBasicPlugin const * plugin = nullptr;
  {
    KivBasicPluginList plugins;
    KivPluginManager::Instance().GetAllPlugins(plugins, true);
    plugin = plugins.at(0);
  }
  forget(plugin);
}

/// A folder in the place of the report.
void makeFolder() {
  char folder[MAX_PATH] = "";
  GetTempPathA(MAX_PATH, folder);
  CreateDirectoryA((std::string(folder) + "crash_ways.exe.log").c_str(), nullptr);
}

void readInMinidump() {
  support::spyOnImport("kivara.dll", "MiniDumpWriteDump", [](support::SpiedCall &) { readNowhere(); });
}

// In the functions of a DLL that the loader calls

std::string attachWord;
std::string detachWord;

void actInAttach() { kivtest::act(attachWord.c_str()); }
void actInDetach() { kivtest::act(detachWord.c_str()); }

/// crash_dll calls what the variable names.
void setCall(char const * variable, void (*call)()) {
  char text[32];
  std::snprintf(text, sizeof text, "%llx", static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(call)));
  SetEnvironmentVariableA(variable, text);
}

void loadDll() { say("loaded", LoadLibraryA("crash_dll.dll") != nullptr); }

void actWhileAttached(char const * word) {
  attachWord = word;
  setCall("KIVARA_CALL_ATTACH", actInAttach);
  loadDll();
}

void actWhileDetached(char const * word) {
  detachWord = word;
  setCall("KIVARA_CALL_DETACH", actInDetach);
  loadDll();
}

/// The library's long waits become short ones, and are printed.
DWORD WINAPI waitShortly(DWORD count, HANDLE const * handles, BOOL all, DWORD time) {
  say("wait", time);
  return WaitForMultipleObjects(count, handles, all, time < 200 ? time : 200);
}

void waitShortly() {
  support::replaceImports(
      GetModuleHandleA("kivara.dll"), "KERNEL32.dll",
      {{"WaitForMultipleObjects",
        reinterpret_cast<void *>(static_cast<DWORD(WINAPI *)(DWORD, HANDLE const *, BOOL, DWORD)>(waitShortly))}});
}

/// Until all processes of a test are there.
void waitForEvent(char const * name) {
  std::puts("waiting");
  HANDLE const event = OpenEventA(SYNCHRONIZE, FALSE, name);
  WaitForSingleObject(event, INFINITE);
  CloseHandle(event);
}

/// The event that the middle of a report waits for.
std::string pauseName;

void pauseInReport(char const * name) {
  pauseName = name;
  support::spyOnImport("kivara.dll", "GetSystemTime", [](support::SpiedCall &) { waitForEvent(pauseName.c_str()); });
}

/// Windows for 64 bits with a version that has a name and a service pack.
BOOL WINAPI beWindows7(OSVERSIONINFOA * version) {
  version->dwMajorVersion = 6;
  version->dwMinorVersion = 1;
  version->dwBuildNumber = 7601;
  version->dwPlatformId = VER_PLATFORM_WIN32_NT;
  std::strcpy(version->szCSDVersion, "Service Pack 1");
  return TRUE;
}

BOOL WINAPI beOn64Bits(HANDLE, BOOL * answer) {
  *answer = TRUE;
  return TRUE;
}

/// The library asks for this function by name.
void pretend64Bits() {
  support::watchLateImports(GetModuleHandleA("kivara.dll"), [](HMODULE, std::string_view name, void * function) {
    return name == "IsWow64Process" ? reinterpret_cast<void *>(beOn64Bits) : function;
  });
}

void pretendWindows7() {
  support::replaceImports(GetModuleHandleA("kivara.dll"), "KERNEL32.dll",
                          {{"GetVersionExA", reinterpret_cast<void *>(beWindows7)}});
}

struct Death {
  char const * word;
  void (*go)();
};

constexpr Death kDeaths[] = {
    {"abort", std::abort},
    {"raise", raiseSignal},
    {"throw", throwNumber},
    {"throwonthread", throwOnThread},
    {"throwonsystemthread", throwOnSystemThread},
    {"signal", handleSignal},
    {"pure", callPure},
    {"overflow", overflowStack},
    {"overflowonthread", overflowOnThread},
    {"atexit", readAtExit},
    {"header", runHeader},
    {"damageheap", damageHeap},
    {"forgetplugin", forgetPlugin},
    {"takememory", takeMemory},
    {"waitshortly", waitShortly},
    {"windows7", pretendWindows7},
    {"64bits", pretend64Bits},
    {"folder", makeFolder},
    {"indump", readInMinidump},
};

struct DeathWith {
  char const * beginning;
  void (*go)(char const * rest);
};

constexpr DeathWith kDeathsWith[] = {
    {"inattach:", actWhileAttached},
    {"indetach:", actWhileDetached},
    {"event:", waitForEvent},
    {"pauseinreport:", pauseInReport},
};

} // namespace

void kivtest::say(char const * text, unsigned long value) { std::printf("%s %lx\n", text, value); }

void kivtest::readNowhere() {
  int const volatile * const volatile nowhere = reinterpret_cast<int *>(16);
  say("read", static_cast<unsigned long>(*nowhere));
}

void kivtest::onThread(void (*work)()) {
  HANDLE const thread = CreateThread(
      nullptr, 0,
      [](void * argument) -> DWORD {
        reinterpret_cast<void (*)()>(argument)();
        return 0;
      },
      reinterpret_cast<void *>(work), 0, nullptr);
  WaitForSingleObject(thread, INFINITE);
  CloseHandle(thread);
}

void kivtest::die(char const * word) {
  for (auto const & death : kDeaths)
    if (std::strcmp(word, death.word) == 0)
      death.go();
  for (auto const & death : kDeathsWith)
    if (std::strncmp(word, death.beginning, std::strlen(death.beginning)) == 0)
      death.go(word + std::strlen(death.beginning));
}
