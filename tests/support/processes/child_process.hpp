#pragma once
/// \file
/// Programs of the bin folder, started as a user would start them and watched from outside.
///
///     support::ChildProcess child({.program = "frame_order", .arguments = "-pidfileout.pid \"two words\""});
///     EXPECT_EQ(child.waitForEnd(), 0u);
///     EXPECT_EQ(child.output(), "ready\r\n");
///
/// What cannot be done throws std::runtime_error, which fails the test. One thread uses a ChildProcess.

#include <atomic>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <thread>

namespace support {

/// Every wait of the harness ends after this many seconds unless the test names another limit.
inline constexpr double kTimeLimit = 150;

/// How a program is started.
struct ProgramStart {
  /// A program of the bin folder without ".exe", or a full path (anything with a backslash).
  std::string program;
  /// What follows the program's name on the command line, to the letter: nothing is quoted or escaped.
  std::string arguments = {};
  /// The whole command line to the letter, in place of the quoted program and the arguments; it may be empty.
  std::optional<std::string> commandLine = {};
  /// Changes of the environment: a text sets the variable, nothing removes it.
  std::map<std::string, std::optional<std::string>> environment = {};
  /// Empty: the working folder of the test.
  std::string workingFolder = {};
  /// What the program can read from its standard input, at most 4096 bytes; then the input ends.
  std::string input = {};
  /// True: the three standard streams are closed instead of collected, as for a program started from the desktop.
  bool withoutStreams = false;
  /// The window station and desktop that it runs on, "station\desktop"; empty: those of this process.
  std::string desktop = {};
  /// Further flags for CreateProcess. The program has no console unless CREATE_NEW_CONSOLE is among them.
  unsigned long creationFlags = 0;
};

/// A running program. It and all programs that it started end with this object at the latest.
class ChildProcess {
public:
  explicit ChildProcess(ProgramStart const & start);
  ChildProcess(ChildProcess const &) = delete;
  ChildProcess & operator=(ChildProcess const &) = delete;
  ~ChildProcess();

  unsigned long processId() const { return processId_; }
  /// The thread that runs WinMain.
  unsigned long mainThreadId() const { return mainThreadId_; }
  /// The process handle, owned by this object.
  void * handle() const { return process_; }

  bool running() const;
  /// The exit code once it has ended; nothing when it still runs after that many seconds.
  std::optional<unsigned long> waitUpTo(double seconds) const;
  /// The exit code; throws when the program still runs after the time limit.
  unsigned long waitForEnd(double seconds = kTimeLimit) const;

  /// What was written so far; all of it once the program has ended and those that it started too.
  std::string output() const { return output_.text(processEnded()); }
  std::string errors() const { return errors_.text(processEnded()); }
  /// Waits until the output holds the text; false when the program ended or the time is up before.
  bool waitForOutput(std::string_view text, double seconds = kTimeLimit) const;

  /// The file names of the program and of the DLLs that it has loaded, in lower case.
  std::set<std::string> modules() const;

  /// Ends the program at once, without its knowledge.
  void kill(unsigned exitCode = 1);

private:
  /// The reading end of one stream.
  class Stream {
  public:
    Stream() = default;
    Stream(Stream const &) = delete;
    Stream & operator=(Stream const &) = delete;
    ~Stream() { close(); }
    /// Gives the writing end, which the caller closes after handing it on.
    void * open();
    void close();
    /// With ended the rest that is still on its way is waited for, one second at the most.
    std::string text(bool ended) const;

  private:
    void read();
    void * end_ = nullptr;
    std::thread reader_;
    mutable std::mutex mutex_;
    std::string text_;
    std::atomic<bool> finished_ = true;
  };

  bool processEnded() const { return !running(); }

  void * process_ = nullptr;
  void * job_ = nullptr;
  unsigned long processId_ = 0;
  unsigned long mainThreadId_ = 0;
  Stream output_;
  Stream errors_;
};

/// Starts the program, waits for its end and gives all that can be seen of it.
struct ProgramResult {
  unsigned long exitCode;
  std::string output;
  std::string errors;
};
ProgramResult runProgram(ProgramStart const & start, double seconds = kTimeLimit);

/// Asks the condition every 10 ms; false when it does not hold within the time.
template <class Condition> bool eventually(Condition const & condition, double seconds = kTimeLimit);

/// Sleeps. A test sleeps only to see that something does not happen.
void pause(double seconds);

namespace detail {
double now(); // seconds of a clock that only goes forward
} // namespace detail

template <class Condition> bool eventually(Condition const & condition, double seconds) {
  double const end = detail::now() + seconds;
  do {
    if (condition())
      return true;
    pause(0.01);
  } while (detail::now() < end);
  return condition();
}

} // namespace support
