#include "diagnostics/crash/dumpthread.hpp"

#include "diagnostics/crash/report.hpp"
#include "diagnostics/crash/sections.hpp"
#include "diagnostics/crash/stacksection.hpp"
#include "handles/handle.hpp"
#include "sv/application.hpp"

#include <new>
#include <utility>

namespace kivara::crash {
namespace {

constexpr DWORD kWait = 30000; // milliseconds
constexpr DWORD kRegisters = 0x10001B;
// NOLINTNEXTLINE(misc-redundant-expression): each of them holds the bit of the processor
static_assert(kRegisters == (CONTEXT_CONTROL | CONTEXT_INTEGER | CONTEXT_FLOATING_POINT | CONTEXT_DEBUG_REGISTERS));

void showFailure(char const * text) {
  DWORD const error = GetLastError();
  if (!SV::Application::IsModalDialogSuppression())
    MessageBoxA(nullptr, text, "Error", MB_ICONERROR);
  SetLastError(error);
}

enum Stage : LONG { Waiting, Begun, GivenUp };

/// What the caller and the thread share. The system's heap, not the program's, may be what is left.
struct Job {
  handles::KernelObject target;
  handles::KernelObject done;
  bool silent = false;
  volatile LONG stage = Waiting;
};

/// Says which of the two goes on: the thread that begins, or the caller that gives up.
bool enter(Job & job, Stage stage) { return InterlockedCompareExchange(&job.stage, stage, Waiting) == Waiting; }

void describe(bool silent) {
  if (!silent) {
    writeError("[exception] creating MiniDump\n");
    writeFacts("Mini Dump");
  }
  writeStackSection(silent);
  if (!silent) {
    write("[DONE]\r\n");
    endSection();
  }
}

void dumpSuspended(Job & job) {
  HANDLE const target = job.target.get();
  if (SuspendThread(target) == static_cast<DWORD>(-1)) {
    showFailure("SuspendThread failed");
    return;
  }
  CONTEXT context{};
  context.ContextFlags = kRegisters;
  if (GetThreadContext(target, &context))
    describe(job.silent);
  else
    showFailure("GetThreadContext failed");
  if (ResumeThread(target) == static_cast<DWORD>(-1))
    showFailure("ResumeThread failed");
}

DWORD WINAPI run(void * argument) {
  auto * const job = static_cast<Job *>(argument);
  if (!enter(*job, Begun)) { // the caller has gone, and what both shared is left to this thread
    job->~Job();
    HeapFree(GetProcessHeap(), 0, job);
    ExitThread(0);
  }
  dumpSuspended(*job);
  SetEvent(job->done.get());
  ExitThread(0);
}

handles::KernelObject thisThread() {
  HANDLE thread = nullptr;
  DuplicateHandle(GetCurrentProcess(), GetCurrentThread(), GetCurrentProcess(), &thread, 0, TRUE,
                  DUPLICATE_SAME_ACCESS);
  return handles::KernelObject(thread);
}

/// Waits until the thread has ended.
/// \return false when it has not begun in time
bool waitFor(HANDLE thread, Job & job) {
  // The event may be set by another process that dumps, since all use one name, so it is not enough by itself.
  HANDLE const either[] = {job.done.get(), thread};
  DWORD const waited = WaitForMultipleObjects(2, either, FALSE, kWait);
  // Set by another process, it says nothing about this thread, which still gets its time.
  if (WaitForSingleObject(thread, waited == WAIT_OBJECT_0 ? kWait : 0) == WAIT_TIMEOUT && enter(job, GivenUp)) {
    SetLastError(ERROR_TIMEOUT);
    return false;
  }
  WaitForSingleObject(thread, INFINITE);
  return true;
}

/// \return whether the job is the caller's again
bool runThread(Job & job, bool & isDone) {
  DWORD id = 0;
  handles::KernelObject const thread(CreateThread(nullptr, 0, run, &job, 0, &id));
  if (!thread) {
    showFailure("CreateThread failed");
    return true;
  }
  isDone = waitFor(thread.get(), job);
  return isDone;
}

bool isPrepared(Job & job, bool silent) {
  job.silent = silent;
  job.done.reset(CreateEventA(nullptr, FALSE, FALSE, "__DumpThisThread"));
  if (!job.done) {
    showFailure("CreateEvent failed");
    return false;
  }
  job.target = thisThread();
  if (!job.target)
    showFailure("DuplicateHandle failed");
  return static_cast<bool>(job.target);
}

} // namespace

bool dumpThisThread(bool silent) {
  void * const memory = HeapAlloc(GetProcessHeap(), 0, sizeof(Job));
  if (memory == nullptr) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return false;
  }
  auto * const job = new (memory) Job;
  bool isDone = false;
  bool const isOurs = !isPrepared(*job, silent) || runThread(*job, isDone);
  if (isOurs) {
    DWORD const error = GetLastError();
    job->~Job();
    HeapFree(GetProcessHeap(), 0, job);
    SetLastError(error);
  }
  return isDone;
}

} // namespace kivara::crash
