#include "support/last_words.hpp"

#include "support/windows.hpp"
#include "tools/winapi.hpp"

#include <cstdio>
#include <tlhelp32.h>

namespace support {
namespace {

constexpr int kMostFrames = 60;
constexpr unsigned kWatchdogCode = 99;

HANDLE watchedThread = nullptr;
double watchdogSeconds = 0;

void printFrame(DWORD64 address) {
  HMODULE module = nullptr;
  GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<LPCSTR>(address), &module);
  char path[MAX_PATH] = "?";
  if (module)
    GetModuleFileNameA(module, path, sizeof(path));
  std::string_view const name(path);
  std::string_view const file = name.substr(name.rfind('\\') + 1);
  std::fprintf(stderr, "  %.*s+0x%llx\n", static_cast<int>(file.size()), file.data(),
               static_cast<unsigned long long>(address - reinterpret_cast<DWORD64>(module)));
}

void printStack(CONTEXT context) {
  for (int i = 0; i < kMostFrames && context.Rip; ++i) {
    printFrame(context.Rip);
    DWORD64 base = 0;
    if (PRUNTIME_FUNCTION const function = RtlLookupFunctionEntry(context.Rip, &base, nullptr)) {
      void * data = nullptr;
      DWORD64 frame = 0;
      RtlVirtualUnwind(UNW_FLAG_NHANDLER, base, context.Rip, function, &context, &data, &frame, nullptr);
      continue;
    }
    // A leaf function, or a call to nowhere: the return address is on top of the stack.
    SIZE_T read = 0;
    if (!ReadProcessMemory(GetCurrentProcess(), reinterpret_cast<void *>(context.Rsp), &context.Rip, 8, &read))
      return;
    context.Rsp += 8;
  }
}

LONG WINAPI onCrash(EXCEPTION_POINTERS * raised) {
  std::fprintf(stderr, "crash: exception 0x%08lx\n", raised->ExceptionRecord->ExceptionCode);
  printStack(*raised->ContextRecord);
  std::fflush(stdout);
  std::fflush(stderr);
  TerminateProcess(GetCurrentProcess(), raised->ExceptionRecord->ExceptionCode);
  return EXCEPTION_EXECUTE_HANDLER;
}

void printBoxes(DWORD processId) {
  for (HWND const box : findWindows({.processId = processId, .className = kBoxClass})) {
    BoxTexts const read = readBox(box);
    std::fprintf(stderr, "  an open box: \"%s\"\n", read.title.c_str());
    for (std::string const & text : read.texts)
      std::fprintf(stderr, "    %s\n", text.c_str());
  }
}

void printAllBoxes() {
  printBoxes(GetCurrentProcessId());
  HANDLE const processes = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
  PROCESSENTRY32 entry{};
  entry.dwSize = sizeof(entry);
  for (BOOL more = Process32First(processes, &entry); more; more = Process32Next(processes, &entry))
    if (entry.th32ParentProcessID == GetCurrentProcessId())
      printBoxes(entry.th32ProcessID);
  CloseHandle(processes);
}

DWORD WINAPI watch(void *) {
  pause(watchdogSeconds);
  std::fprintf(stderr, "watchdog: still running after %g seconds\n", watchdogSeconds);
  printAllBoxes();
  CONTEXT context{};
  context.ContextFlags = CONTEXT_FULL;
  SuspendThread(watchedThread);
  if (GetThreadContext(watchedThread, &context))
    printStack(context);
  std::fflush(stderr);
  TerminateProcess(GetCurrentProcess(), kWatchdogCode);
  return 0;
}

} // namespace

void printStackOnCrash() { SetUnhandledExceptionFilter(onCrash); }

void startWatchdog(double seconds) {
  watchdogSeconds = seconds;
  DuplicateHandle(GetCurrentProcess(), GetCurrentThread(), GetCurrentProcess(), &watchedThread, 0, FALSE,
                  DUPLICATE_SAME_ACCESS);
  CloseHandle(CreateThread(nullptr, 0, watch, nullptr, 0, nullptr));
}

} // namespace support
