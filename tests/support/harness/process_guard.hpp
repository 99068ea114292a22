#pragma once
/// \file
/// What every test process runs under: a watchdog, and a stack on a crash.

namespace support {

/// While it lives, a process that takes too long or crashes ends with a message and a stack on stderr instead of
/// hanging the run or dying silently. Make one at the start of main, on the main thread; at most one at a time.
///
/// - Too long: after KIVARA_TEST_TIMEOUT seconds (environment; default 240, or as many times that as KIVARA_TEST_TIMES says; 0 for never) the stack of the thread that made
///   the guard is printed, and the boxes that it or a child still shows; the process ends with kTimedOut.
/// - A crash: for an unhandled exception its code and address and the stack of its thread are printed, for abort() the
///   stack; the process ends with the exception's code, or with kAborted.
///
/// A frame is printed as module+offset; `addr2line -fCe MODULE ADDRESS` wants the offset plus the module's preferred
/// base.
class ProcessGuard {
public:
  static constexpr unsigned kTimedOut = 97;
  static constexpr unsigned kAborted = 96;

  ProcessGuard();
  ~ProcessGuard();
  ProcessGuard(ProcessGuard const &) = delete;
  ProcessGuard & operator=(ProcessGuard const &) = delete;

private:
  void * watchdog_ = nullptr;
};

/// Ends a test with its process at once, where nothing may be cleaned up any more. It prints the last line by which
/// run-under-wine knows that the test has come to its end.
[[noreturn]] void endTest(bool hasFailed);

} // namespace support
