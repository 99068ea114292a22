#include "support/harness/process_guard.hpp"

#include "support/data/random.hpp"
#include "support/windows/open_boxes.hpp"
#include "tools/winapi.hpp"

#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <initializer_list>

namespace support {
namespace {

constexpr int kMostFrames = 64;
constexpr unsigned long kDefaultSeconds = 240;

HANDLE mainThread;
HANDLE finished;
unsigned long seconds;

// Past the runtime's streams: a crashed or suspended thread may hold their locks.
void print(char const * format, ...) {
  char line[1024];
  va_list arguments;
  va_start(arguments, format);
  int const length = std::vsnprintf(line, sizeof line, format, arguments);
  va_end(arguments);
  DWORD written;
  if (length > 0)
    WriteFile(GetStdHandle(STD_ERROR_HANDLE), line, static_cast<DWORD>(std::strlen(line)), &written, nullptr);
}

void printAddress(char const * before, DWORD64 address) {
  HMODULE module = nullptr;
  char path[MAX_PATH] = "";
  DWORD const flags = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
  bool const isNull = address < 0x10000; // Wine finds the program there
  if (isNull || !GetModuleHandleExA(flags, reinterpret_cast<char const *>(address), &module) ||
      GetModuleFileNameA(module, path, sizeof path - 1) == 0) {
    print("%s0x%llx\n", before, address);
    return;
  }
  char const * const slash = std::strrchr(path, '\\');
  print("%s%s+0x%llx\n", before, slash != nullptr ? slash + 1 : path, address - reinterpret_cast<DWORD64>(module));
}

/// Goes to the caller's frame; false at the end of the stack.
bool unwind(CONTEXT & context) {
  DWORD64 base = 0;
  if (auto * const function = RtlLookupFunctionEntry(context.Rip, &base, nullptr)) {
    void * handlerData = nullptr;
    DWORD64 frame = 0;
    RtlVirtualUnwind(UNW_FLAG_NHANDLER, base, context.Rip, function, &context, &handlerData, &frame, nullptr);
  } else { // a leaf, or a jump into nowhere: the return address is on top
    if (IsBadReadPtr(reinterpret_cast<void const *>(context.Rsp), sizeof(DWORD64)))
      return false;
    context.Rip = *reinterpret_cast<DWORD64 const *>(context.Rsp);
    context.Rsp += sizeof(DWORD64);
  }
  return context.Rip != 0;
}

int collectStack(CONTEXT context, DWORD64 (&frames)[kMostFrames]) {
  int count = 0;
  do
    frames[count++] = context.Rip;
  while (count < kMostFrames && unwind(context));
  return count;
}

void printFrames(DWORD64 const * frames, int count) {
  for (int i = 0; i < count; ++i)
    printAddress("  at ", frames[i]);
}

[[noreturn]] void endProcess(unsigned code) {
  std::fflush(nullptr);
  TerminateProcess(GetCurrentProcess(), code);
  std::abort();
}

LONG WINAPI crashed(EXCEPTION_POINTERS * what) {
  DWORD const code = what->ExceptionRecord->ExceptionCode;
  print("\n[test] exception 0x%08lX", code);
  printAddress(" at ", reinterpret_cast<DWORD64>(what->ExceptionRecord->ExceptionAddress));
  if (code == EXCEPTION_ACCESS_VIOLATION)
    print("[test] %s 0x%llx\n", what->ExceptionRecord->ExceptionInformation[0] == 0 ? "reading" : "writing",
          what->ExceptionRecord->ExceptionInformation[1]);
  DWORD64 frames[kMostFrames];
  printFrames(frames, collectStack(*what->ContextRecord, frames));
  endProcess(code);
}

void aborted(int) {
  CONTEXT here;
  RtlCaptureContext(&here);
  print("\n[test] abort\n");
  DWORD64 frames[kMostFrames];
  printFrames(frames, collectStack(here, frames));
  endProcess(ProcessGuard::kAborted);
}

void printMainStack() {
  CONTEXT context{};
  context.ContextFlags = CONTEXT_FULL;
  DWORD64 frames[kMostFrames];
  int count = 0;
  SuspendThread(mainThread);
  if (GetThreadContext(mainThread, &context))
    count = collectStack(context, frames);
  ResumeThread(mainThread); // naming a module may need a lock that the thread holds
  printFrames(frames, count);
}

unsigned long timeoutSeconds() {
  char const * const text = std::getenv("KIVARA_TEST_TIMEOUT");
  return text != nullptr ? std::strtoul(text, nullptr, 10) : static_cast<unsigned long>(times(kDefaultSeconds));
}

DWORD WINAPI watch(void *) {
  if (WaitForSingleObject(finished, seconds == 0 ? INFINITE : seconds * 1000) == WAIT_OBJECT_0)
    return 0;
  print("\n[test] not finished after %lu seconds (KIVARA_TEST_TIMEOUT); the main thread is here:\n", seconds);
  printMainStack();
  print("%s", openBoxes().c_str());
  endProcess(ProcessGuard::kTimedOut);
}

/// Before the filter of kivara.dll, which lets no other one be set in its place, and would show a box.
void setCrashFilter() {
  using Setter = void WINAPI(PTOP_LEVEL_EXCEPTION_FILTER);
  FARPROC const setter = GetProcAddress(GetModuleHandleA("ntdll.dll"), "RtlSetUnhandledExceptionFilter");
  if (setter != nullptr)
    reinterpret_cast<Setter *>(reinterpret_cast<void (*)()>(setter))(crashed);
  else
    SetUnhandledExceptionFilter(crashed);
}

} // namespace

ProcessGuard::ProcessGuard() {
  setCrashFilter();
  std::signal(SIGABRT, aborted);
  DuplicateHandle(GetCurrentProcess(), GetCurrentThread(), GetCurrentProcess(), &mainThread, 0, FALSE,
                  DUPLICATE_SAME_ACCESS);
  seconds = timeoutSeconds();
  finished = CreateEventA(nullptr, TRUE, FALSE, nullptr);
  watchdog_ = CreateThread(nullptr, 0, watch, nullptr, 0, nullptr);
}

ProcessGuard::~ProcessGuard() {
  SetEvent(finished);
  WaitForSingleObject(watchdog_, INFINITE);
  for (HANDLE handle : {watchdog_, finished, mainThread})
    CloseHandle(handle);
  std::signal(SIGABRT, SIG_DFL);
}

void endTest(bool hasFailed) {
  std::puts("[==========] 1 test, which ends its process, ran.");
  endProcess(hasFailed ? 1 : 0);
}

} // namespace support
