#include "diagnostics/crash/filter.hpp"

#include "base/boundedtext.hpp"
#include "diagnostics/crash/archive.hpp"
#include "diagnostics/crash/exceptions.hpp"
#include "diagnostics/crash/report.hpp"
#include "diagnostics/crash/sections.hpp"
#include "diagnostics/crash/stacksection.hpp"
#include "handles/handle.hpp"
#include "sv/application.hpp"

#include <dbghelp.h>

#include <cstdint>
#include <cstdio>
#include <cstring>

namespace kivara::crash {
namespace {

constexpr DWORD kLongestWaitForOther = 60000; // milliseconds
constexpr ULONG kStackForFilter = 64 * 1024;
constexpr std::size_t kJumpSize = 13;

LPTOP_LEVEL_EXCEPTION_FILTER previousFilter = nullptr;
bool installed = false;
bool volatile finished = false;
volatile LONG runningThread = 0;

/// The names of one crash's own files begin with this: the program and the time.
struct StampedBase {
  char text[kPathSize + 32];

  StampedBase() {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    std::snprintf(text, sizeof text, "%s.%04d%02d%02d%02d%02d%02d%03d", dumpState().paths.dumpBase, now.wYear,
                  now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond, now.wMilliseconds);
  }
};

void showPointer(LPCSTR pointer) { SetCursor(LoadCursorA(nullptr, pointer)); }

bool isMinidumpWritten(char const * path, EXCEPTION_POINTERS * exception) {
  handles::File const file(
      CreateFileA(path, GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) {
    writeError("CreateMiniDump dmp file failed\n");
    return false;
  }
  // Under Wine the dump would read the debug information of every module otherwise, and use none of it.
  SymSetOptions(SYMOPT_DEFERRED_LOADS);
  MINIDUMP_EXCEPTION_INFORMATION information{GetCurrentThreadId(), exception, FALSE};
  bool const isWritten = MiniDumpWriteDump(GetCurrentProcess(), GetCurrentProcessId(), file.get(), MiniDumpNormal,
                                           &information, nullptr, nullptr) != FALSE;
  writeError(isWritten ? "Minidump dmp created.\n" : "MiniDumpWriteDump failed\n");
  return isWritten;
}

void showUnlessSuppressed(char const * text) {
  if (!SV::Application::IsModalDialogSuppression())
    showCrashBox(text);
}

void showThatNoReportIsOpen(DWORD error) {
  if (SV::Application::IsModalDialogSuppression())
    return;
  showPointer(IDC_ARROW);
  showCrashBox(
      BoundedText<1024>("Unable to create dump file\n  '%s'\nErrorcode %d!\n\nMaybe a dump file was created!!\n"
                        "Check for the file existance anyway!",
                        dumpState().paths.report, static_cast<int>(error))
          .c_str());
}

void writeException(EXCEPTION_RECORD const & record) {
  write("  Exception code: %08Xh %s\r\n", static_cast<unsigned>(record.ExceptionCode),
        exceptionName(record.ExceptionCode));
  FaultLocation const location = locateFault(record.ExceptionAddress);
  write("  Fault address:  %08Xh %04Xh:%08Xh %s\r\n",
        static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(record.ExceptionAddress)), location.section,
        static_cast<unsigned>(location.offset), location.module);
  endSection();
}

void writeCrashReport(EXCEPTION_POINTERS const & exception) {
  writeError("[exception] creating CrashDump\n");
  writeFacts("Crash dump");
  writeException(*exception.ExceptionRecord);
  writeStackSection(false);
  write("[DONE]\r\n");
  endSection();
  if (cleanUpSymbols())
    write("  [Cleaned up symbols]\r\n");
}

void report(EXCEPTION_POINTERS const & exception, bool hasMinidump) {
  DumpState & state = dumpState();
  bool const opens = state.report == INVALID_HANDLE_VALUE;
  if (opens && !openReport(state.paths.report, OPEN_ALWAYS)) {
    showThatNoReportIsOpen(GetLastError());
    return;
  }
  writeCrashReport(exception);
  if (opens)
    state.closeReport();
  if (!hasMinidump)
    showUnlessSuppressed(BoundedText<512>("A crash dump file was written to\n  '%s'\n", state.paths.report).c_str());
}

void dump(EXCEPTION_POINTERS * exception) {
  showPointer(IDC_WAIT);
  StampedBase const base;
  bool const hasMinidump = isMinidumpWritten(BoundedText<sizeof base.text + 4>("%s.dmp", base.text).c_str(), exception);
  report(*exception, hasMinidump);
  dumpState().scramble = true;
  if (hasMinidump)
    packArchive(base.text);
  showPointer(IDC_ARROW);
  writeError("[exception] finished dumpfile creation\n");
  finished = true;
}

/// Whether this thread is the one that dumps. A fault in the middle of its dump comes here again; another thread waits until
/// the dump is complete, since its own exception would end the process.
bool mayDump() {
  LONG const self = static_cast<LONG>(GetCurrentThreadId());
  LONG const running = InterlockedCompareExchange(&runningThread, self, 0);
  if (running == 0)
    return true;
  DWORD const start = GetTickCount();
  while (running != self && !finished && GetTickCount() - start < kLongestWaitForOther)
    Sleep(20);
  return false;
}

LONG WINAPI filter(EXCEPTION_POINTERS * exception) {
  DWORD const code = exception->ExceptionRecord->ExceptionCode;
  writeError("[exception] An exception of type 0x%08X occured\n", static_cast<unsigned>(code));
  if (code != EXCEPTION_BREAKPOINT && !finished && mayDump())
    dump(exception);
  return previousFilter != nullptr ? previousFilter(exception) : EXCEPTION_CONTINUE_SEARCH;
}

/// What every later call of SetUnhandledExceptionFilter reaches.
LPTOP_LEVEL_EXCEPTION_FILTER WINAPI refuse(LPTOP_LEVEL_EXCEPTION_FILTER) { return nullptr; }

/// mov r10, target; jmp r10
void setJump(unsigned char (&code)[kJumpSize], std::uintptr_t target) {
  constexpr unsigned char form[kJumpSize] = {0x49, 0xBA, 0, 0, 0, 0, 0, 0, 0, 0, 0x41, 0xFF, 0xE2};
  std::memcpy(code, form, sizeof form);
  std::memcpy(code + 2, &target, sizeof target);
}

/// The runtime sets a filter of its own when the program starts, and other libraries do too.
void refuseOtherFilters() {
  HMODULE const kernel = LoadLibraryA("kernel32.dll");
  FARPROC const function = kernel != nullptr ? GetProcAddress(kernel, "SetUnhandledExceptionFilter") : nullptr;
  if (function == nullptr)
    return;
  auto * const entry = reinterpret_cast<void *>(reinterpret_cast<std::uintptr_t>(function));
  unsigned char jump[kJumpSize];
  setJump(jump, reinterpret_cast<std::uintptr_t>(refuse));
  DWORD protection = 0;
  if (!VirtualProtect(entry, kJumpSize, PAGE_EXECUTE_READWRITE, &protection))
    return;
  SIZE_T written = 0;
  WriteProcessMemory(GetCurrentProcess(), entry, jump, kJumpSize, &written);
  VirtualProtect(entry, kJumpSize, protection, &protection);
  FlushInstructionCache(GetCurrentProcess(), entry, kJumpSize);
}

void keepLoaded(void const * module) {
  HMODULE pinned = nullptr;
  GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                     static_cast<LPCSTR>(module), &pinned);
}

/// So that the filter still has room to run when the stack of the main thread is used up.
void keepStackForFilter() {
  ULONG size = kStackForFilter;
  SetThreadStackGuarantee(&size);
}

} // namespace

void installFilter(void const * module) {
  if (IsDebuggerPresent())
    return;
  keepLoaded(module);
  keepStackForFilter();
  previousFilter = SetUnhandledExceptionFilter(filter);
  refuseOtherFilters();
  dumpState();
  installed = true;
}

void uninstallFilter() {
  if (!installed)
    return;
  cleanUpSymbols();
  SetUnhandledExceptionFilter(previousFilter);
}

} // namespace kivara::crash
