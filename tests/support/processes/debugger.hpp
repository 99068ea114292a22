#pragma once
/// \file
/// A debugger of our own: shows what a program sends to a debugger, and where it stops.
///
///     support::Debugger debugger({.program = "frame_order", .arguments = "-lang=xx"});
///     EXPECT_EQ(debugger.waitForEnd(), 0u);
///     EXPECT_THAT(debugger.texts(), Contains("[locale] The locale 'xx' could not be resolved!\n"));
///
/// The program is debugged alone, without those that it starts. It runs on at once after every event; breakpoints count
/// as handled, all other exceptions are passed on to the program, so that it acts as it would without a debugger.

#include "support/processes/child_process.hpp"

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

struct _DEBUG_EVENT;

namespace support {

/// An exception that the program raised.
struct DebuggedException {
  unsigned long code;   ///< STATUS_BREAKPOINT is 0x80000003, an access violation 0xC0000005
  void const * address; ///< where it was raised, in the debugged process
  bool firstChance;     ///< false: the program had no handler for it and ends unless the debugger helps
  unsigned long threadId;
};

/// What the debugger does after an exception.
enum class DebugAnswer {
  Usual,      ///< goes on after a breakpoint, passes everything else on
  Handled,    ///< goes on as if nothing had happened
  NotHandled, ///< the program's own handlers decide, also for a breakpoint
  End         ///< ends the program, with exit code 1
};

using DebugRule = std::function<DebugAnswer(DebuggedException const &)>;

class Debugger {
public:
  /// The rule is asked for every exception, on the debugger's thread; the breakpoint with which the system announces
  /// the start to the debugger is answered without asking.
  explicit Debugger(ProgramStart const & start, DebugRule rule = {});
  Debugger(Debugger const &) = delete;
  Debugger & operator=(Debugger const &) = delete;
  /// Ends the program if it still runs.
  ~Debugger();

  /// The program, for its id, its output and its end.
  ChildProcess const & process() const { return *process_; }

  /// The texts of OutputDebugString so far, one entry for each call.
  std::vector<std::string> texts() const;
  /// All of them as one text.
  std::string text() const;
  /// Waits for a text among them; false when the program ended or the time is up before.
  bool waitForText(std::string_view text, double seconds = kTimeLimit) const;
  /// The exceptions so far, without the breakpoint of the start.
  std::vector<DebuggedException> exceptions() const;

  /// The exit code; throws when the program still runs after the time limit.
  unsigned long waitForEnd(double seconds = kTimeLimit) const;
  void kill();

private:
  void run(ProgramStart const & start);
  void loop();
  unsigned long answer(_DEBUG_EVENT const & event);
  unsigned long answerException(_DEBUG_EVENT const & event);
  void addText(_DEBUG_EVENT const & event);

  DebugRule rule_;
  std::unique_ptr<ChildProcess> process_;
  std::string startError_;
  std::atomic<bool> started_ = false;
  std::atomic<bool> ended_ = false;
  bool sawFirstBreakpoint_ = false;
  mutable std::mutex mutex_;
  std::vector<std::string> texts_;
  std::vector<DebuggedException> exceptions_;
  std::thread thread_;
};

} // namespace support
