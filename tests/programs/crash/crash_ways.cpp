// Fails in the ways that its words name, one after the other: see kWays, kFailing and crash_deaths.cpp. It prints "ready" first and
// flushes each line.

#include "crash_ways.hpp"

#include "aappinfo.hpp"
#include "acmdline.hpp"
#include "acrash.hpp"
#include "aplugin.hpp"
#include "support/imports/import_hook.hpp"
#include "support/imports/import_spy.hpp"
#include "sv/application.hpp"
#include "tools/winapi.hpp"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

namespace {

using kivtest::onThread;
using kivtest::readNowhere;
using kivtest::say;

void writeNowhere() {
  int volatile * const volatile nowhere = reinterpret_cast<int *>(16);
  *nowhere = 1;
}

[[gnu::no_sanitize_undefined]] void divide() {
  int volatile zero = 0;
  say("divided", static_cast<unsigned long>(7 / zero));
}

void divideFloats() {
  unsigned control = 0x1F80 & ~0x0200U; // the trap for a division by zero
  __asm__ volatile("ldmxcsr %0" : : "m"(control));
  double volatile zero = 0;
  say("divided", static_cast<unsigned long>(7 / zero));
}

void callNowhere() {
  void (*volatile nowhere)() = nullptr;
  nowhere();
}

void runIllegal() { __asm__ volatile("ud2"); }
void runPrivileged() { __asm__ volatile("hlt"); }
void breakpoint() { DebugBreak(); }
void raiseOwn() { RaiseException(0xE1234567, 0, 0, nullptr); }
void raiseKnownBySystem() { RaiseException(STATUS_NO_MEMORY, 0, 0, nullptr); }

void touchGuardPage() {
  auto * const page =
      static_cast<char volatile *>(VirtualAlloc(nullptr, 4096, MEM_COMMIT, PAGE_READWRITE | PAGE_GUARD));
  *page = 1;
}

void runData() {
  void * const page = VirtualAlloc(nullptr, 4096, MEM_COMMIT | MEM_RESERVE, PAGE_EXECUTE_READWRITE);
  unsigned char const code[] = {0x0F, 0x0B}; // ud2
  std::memcpy(page, code, sizeof code);
  void (*run)();
  std::memcpy(&run, &page, sizeof run);
  run();
}

DWORD exceptionCode;

/// Away from the main thread, where the start of the program lets it go on after some of them.
void raiseOnThread(char const * code) {
  exceptionCode = std::strtoul(code, nullptr, 16);
  onThread([] { RaiseException(exceptionCode, 0, 0, nullptr); });
}

void readOnThread() { onThread(readNowhere); }

HANDLE start;

void readOnTwoThreads() {
  start = CreateEventA(nullptr, TRUE, FALSE, nullptr);
  auto const work = [](void *) -> DWORD {
    WaitForSingleObject(start, INFINITE);
    readNowhere();
    return 0;
  };
  HANDLE const threads[] = {CreateThread(nullptr, 0, work, nullptr, 0, nullptr),
                            CreateThread(nullptr, 0, work, nullptr, 0, nullptr)};
  SetEvent(start);
  WaitForMultipleObjects(2, threads, TRUE, INFINITE);
}

bool readsAtTheEnd = false;

struct AtTheEnd {
  ~AtTheEnd() {
    if (readsAtTheEnd)
      readNowhere();
  }
} atTheEnd;

void readInDestructor() { readsAtTheEnd = true; }

void readInFilter() {
  support::spyOnImport("kivara.dll", "GetSystemTime", [](support::SpiedCall &) { readNowhere(); });
}

/// Ends the process in the middle of the report.
void endInReport() {
  support::spyOnImport("kivara.dll", "GetSystemTime",
                       [](support::SpiedCall &) { TerminateProcess(GetCurrentProcess(), 77); });
}

void setFilter() {
  LPTOP_LEVEL_EXCEPTION_FILTER const before = SetUnhandledExceptionFilter([](EXCEPTION_POINTERS *) -> LONG {
    std::puts("the program's filter");
    return EXCEPTION_EXECUTE_HANDLER;
  });
  say("filter", before != nullptr);
}

void miniDump() { say("minidump", Fct_CreateMiniDump("amodule.cpp", 246)); }
void miniDumpOfNothing() { say("minidump", Fct_CreateMiniDump(nullptr, 0)); }
void miniDumpOnThread() { onThread(miniDump); }
void nameReport() { Fct_SetMiniDumpFileName("named.txt"); }
void forgetName() {
  Fct_SetMiniDumpFileName(nullptr);
  Fct_SetMiniDumpFileName("");
}
void callstack() { Fct_CreateCallstack("amodule.cpp", 246); }

void suppress() { SV::Application::SetModalDialogSuppression(true); }

void info() {
  KivApplicationInfo::SetValue("database", "orders");
  KivApplicationInfo::SetValue("user", std::string(5000, 'u').c_str());
}

void nameLog() { Kiv_SetDBLogFile("orders.log"); }
void noLog() { Kiv_SetDBLogFile(nullptr); }

/// Prints what the library starts.
void watch() {
  support::spyOnImport("kivara.dll", "CreateProcessA",
                       [](support::SpiedCall & call) { std::printf("process %s\n", call.text(1)); });
}

/// Calls of the system for which no failure can be brought about; "fail:NAME" lets the library's own calls fail.
struct Failing {
  char const * function;
  char const * library;
  std::uintptr_t result;
};

template <std::uintptr_t Result> std::uintptr_t WINAPI fail() {
  SetLastError(ERROR_ACCESS_DENIED);
  return Result;
}

constexpr Failing kFailing[] = {
    {"CreateEventA", "KERNEL32.dll", 0},
    {"CreateFileA", "KERNEL32.dll", static_cast<std::uintptr_t>(-1)},
    {"CreateThread", "KERNEL32.dll", 0},
    {"DuplicateHandle", "KERNEL32.dll", 0},
    {"GetCommandLineA", "KERNEL32.dll", 0},
    {"GetCurrentDirectoryA", "KERNEL32.dll", 0},
    {"GetFileInformationByHandle", "KERNEL32.dll", 0},
    {"GetModuleFileNameA", "KERNEL32.dll", 0},
    {"GetProcAddress", "KERNEL32.dll", 0},
    {"GetThreadContext", "KERNEL32.dll", 0},
    {"GetVersionExA", "KERNEL32.dll", 0},
    {"LoadLibraryA", "KERNEL32.dll", 0},
    {"MiniDumpWriteDump", "dbghelp.dll", 0},
    {"SuspendThread", "KERNEL32.dll", static_cast<std::uintptr_t>(-1)},
    {"SymInitialize", "dbghelp.dll", 0},
    {"SymSetOptions", "dbghelp.dll", 0},
    {"VirtualQuery", "KERNEL32.dll", 0},
    {"WriteFile", "KERNEL32.dll", 0},
};

BOOL WINAPI claimToHaveWritten(HANDLE, DWORD, HANDLE, int, void *, void *, void *) { return TRUE; }

/// A minidump takes seconds. An empty one counts as good.
void leaveMinidumpEmpty() {
  support::replaceImports(GetModuleHandleA("kivara.dll"), "dbghelp.dll",
                          {{"MiniDumpWriteDump", reinterpret_cast<void *>(claimToHaveWritten)}});
}

/// Resumes the thread even then: the program could not end otherwise.
DWORD WINAPI resumeAndFail(HANDLE thread) {
  ResumeThread(thread);
  SetLastError(ERROR_ACCESS_DENIED);
  return static_cast<DWORD>(-1);
}

void letFail(char const * function) {
  if (std::strcmp(function, "ResumeThread") == 0)
    support::replaceImports(GetModuleHandleA("kivara.dll"), "KERNEL32.dll",
                            {{"ResumeThread", reinterpret_cast<void *>(resumeAndFail)}});
  for (auto const & each : kFailing)
    if (std::strcmp(each.function, function) == 0) {
      auto const replacement = each.result == 0 ? fail<0> : fail<static_cast<std::uintptr_t>(-1)>;
      support::replaceImports(GetModuleHandleA("kivara.dll"), each.library,
                              {{each.function, reinterpret_cast<void *>(replacement)}});
    }
}

/// The library asks for this function by name.
void refuseTimes() {
  auto const failing = fail<0>;
  support::watchLateImports(GetModuleHandleA("kivara.dll"), [failing](HMODULE, std::string_view name, void * function) {
    return name == "GetProcessTimes" ? reinterpret_cast<void *>(failing) : function;
  });
}

/// Keeps the library from opening the report.
void holdReport() {
  char folder[MAX_PATH] = "";
  GetTempPathA(MAX_PATH, folder);
  std::string const path = std::string(folder) + "crash_ways.exe.log";
  CreateFileA(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
}

/// The manager of plug-ins needs the command line to be read.
void loadPlugin(char const * path) {
  static char program[] = "crash_ways";
  static char * words[] = {program, nullptr};
  KivCmdline::init(1, words, true, "log");
  KivPluginManager::Instance().LoadSinglePlugin(path);
}

struct Way {
  char const * word;
  void (*go)();
};

constexpr Way kWays[] = {
    {"read", readNowhere},
    {"write", writeNowhere},
    {"divide", divide},
    {"float", divideFloats},
    {"call", callNowhere},
    {"illegal", runIllegal},
    {"privileged", runPrivileged},
    {"break", breakpoint},
    {"own", raiseOwn},
    {"nomemory", raiseKnownBySystem},
    {"guard", touchGuardPage},
    {"data", runData},
    {"thread", readOnThread},
    {"threads", readOnTwoThreads},
    {"destructor", readInDestructor},
    {"infilter", readInFilter},
    {"endinreport", endInReport},
    {"setfilter", setFilter},
    {"minidump", miniDump},
    {"minidump0", miniDumpOfNothing},
    {"minidumponthread", miniDumpOnThread},
    {"name", nameReport},
    {"noname", forgetName},
    {"callstack", callstack},
    {"suppress", suppress},
    {"info", info},
    {"log", nameLog},
    {"nolog", noLog},
    {"watch", watch},
    {"emptydump", leaveMinidumpEmpty},
    {"notimes", refuseTimes},
    {"hold", holdReport},
};

} // namespace

#ifdef KIVARA_COVERAGE
extern "C" __declspec(dllimport) void countCrashes();
#endif

void kivtest::act(char const * word) {
  if (std::strncmp(word, "fail:", 5) == 0)
    letFail(word + 5);
  if (std::strncmp(word, "code:", 5) == 0)
    raiseOnThread(word + 5);
  if (std::strncmp(word, "plugin:", 7) == 0)
    loadPlugin(word + 7);
  for (auto const & way : kWays)
    if (std::strcmp(word, way.word) == 0)
      way.go();
  die(word);
}

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR arguments, int) {
#ifdef KIVARA_COVERAGE
  countCrashes();
#endif
  std::setvbuf(stdout, nullptr, _IONBF, 0);
  std::puts("ready");
  for (char * word = std::strtok(arguments, " "); word != nullptr; word = std::strtok(nullptr, " "))
    kivtest::act(word);
  std::puts("end");
  return 0;
}
