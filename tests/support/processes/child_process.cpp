#include "support/processes/child_process.hpp"

#include "support/data/files.hpp"
#include "tools/winapi.hpp"

#include <psapi.h>

#include <cstdio>
#include <stdexcept>
#include <strings.h>
#include <utility>
#include <vector>

namespace support {
namespace {

[[noreturn]] void failed(std::string const & what) {
  throw std::runtime_error(what + ": error " + std::to_string(GetLastError()));
}

std::string programPath(std::string const & program) {
  return program.find('\\') == std::string::npos ? binFolder() + program + ".exe" : program;
}

std::string commandLineOf(ProgramStart const & start) {
  if (start.commandLine)
    return *start.commandLine;
  std::string const program = '"' + programPath(start.program) + '"';
  return start.arguments.empty() ? program : program + ' ' + start.arguments;
}

struct NoCase {
  bool operator()(std::string const & left, std::string const & right) const {
    return strcasecmp(left.c_str(), right.c_str()) < 0;
  }
};

/// The environment block of this process with the changes; names are compared as the system does.
std::string environmentOf(ProgramStart const & start) {
  std::map<std::string, std::string, NoCase> variables;
  char * const own = GetEnvironmentStringsA();
  for (char const * line = own; *line; line += std::string_view(line).size() + 1) {
    std::string const text(line);
    std::size_t const equals = text.find('=', 1);
    variables[text.substr(0, equals)] = text.substr(equals + 1);
  }
  FreeEnvironmentStringsA(own);
  for (auto const & [name, value] : start.environment) {
    variables.erase(name);
    if (value)
      variables[name] = *value;
  }
  std::string block;
  for (auto const & [name, value] : variables)
    block += name + '=' + value + '\0';
  return block + '\0';
}

// A report of megabytes in small pieces costs a change of the process for each: on a busy machine that takes a minute.
constexpr DWORD kOutputPiece = 1 << 16;

/// The reading end of a pipe that holds the text; it is inherited.
HANDLE inputOf(std::string const & text) {
  SECURITY_ATTRIBUTES inherited{sizeof(inherited), nullptr, TRUE};
  HANDLE reading = nullptr, writing = nullptr;
  if (!CreatePipe(&reading, &writing, &inherited, 4096))
    failed("no pipe for the input");
  SetHandleInformation(writing, HANDLE_FLAG_INHERIT, 0);
  DWORD written = 0;
  WriteFile(writing, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
  CloseHandle(writing);
  return reading;
}

/// A job that takes all its processes with it when its handle is closed.
HANDLE makeJob() {
  HANDLE const job = CreateJobObjectA(nullptr, nullptr);
  JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
  limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
  SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof(limits));
  return job;
}

/// Without a console of its parent's: Wine hands that on to programs of the GUI subsystem too, unlike Windows.
DWORD flagsOf(ProgramStart const & start) {
  DWORD const console = start.creationFlags & CREATE_NEW_CONSOLE ? 0 : DETACHED_PROCESS;
  return start.creationFlags | console | CREATE_SUSPENDED;
}

bool tryToCreate(ProgramStart const & start, STARTUPINFOA & startup, PROCESS_INFORMATION & made) {
  std::string commandLine = commandLineOf(start);
  std::string environment = environmentOf(start);
  return CreateProcessA(programPath(start.program).c_str(), commandLine.data(), nullptr, nullptr, TRUE, flagsOf(start),
                        environment.data(), start.workingFolder.empty() ? nullptr : start.workingFolder.c_str(),
                        &startup, &made) != FALSE;
}

PROCESS_INFORMATION create(ProgramStart const & start, STARTUPINFOA & startup) {
  PROCESS_INFORMATION made{};
  bool isMade = tryToCreate(start, startup, made);
  // Once in some ten thousand times Wine's loader does not get to the program, and there is no process then.
  if (!isMade && GetLastError() == ERROR_INTERNAL_ERROR) {
    std::fprintf(stderr, "%s was not started by an internal error of the system; trying once more\n",
                 start.program.c_str());
    isMade = tryToCreate(start, startup, made);
  }
  if (!isMade)
    failed("cannot start " + start.program);
  return made;
}

} // namespace

void * ChildProcess::Stream::open() {
  SECURITY_ATTRIBUTES inherited{sizeof(inherited), nullptr, TRUE};
  HANDLE writing = nullptr;
  if (!CreatePipe(&end_, &writing, &inherited, kOutputPiece))
    failed("no pipe for the output");
  SetHandleInformation(end_, HANDLE_FLAG_INHERIT, 0);
  finished_ = false;
  reader_ = std::thread([this] { read(); });
  return writing;
}

void ChildProcess::Stream::read() {
  char buffer[kOutputPiece];
  DWORD count = 0;
  while (ReadFile(end_, buffer, sizeof(buffer), &count, nullptr)) {
    std::lock_guard const lock(mutex_);
    text_.append(buffer, count);
  }
  finished_ = true;
}

void ChildProcess::Stream::close() {
  if (reader_.joinable())
    reader_.join();
  if (end_)
    CloseHandle(std::exchange(end_, nullptr));
}

std::string ChildProcess::Stream::text(bool ended) const {
  if (ended)
    eventually([this] { return finished_.load(); }, 1);
  std::lock_guard const lock(mutex_);
  return text_;
}

ChildProcess::ChildProcess(ProgramStart const & start) : job_(makeJob()) {
  STARTUPINFOA startup{};
  startup.cb = sizeof(startup);
  std::string desktop = start.desktop;
  startup.lpDesktop = desktop.empty() ? nullptr : desktop.data();
  // A program that is given handles, even none, keeps them when it opens a console.
  startup.dwFlags = start.withoutStreams ? 0 : STARTF_USESTDHANDLES;
  std::vector<HANDLE> handedOn;
  if (!start.withoutStreams)
    handedOn = {startup.hStdInput = inputOf(start.input), startup.hStdOutput = output_.open(),
                startup.hStdError = errors_.open()};
  auto const closeHandedOn = [&handedOn] {
    for (HANDLE const handle : handedOn)
      CloseHandle(handle);
  };
  PROCESS_INFORMATION made{};
  try {
    made = create(start, startup);
  } catch (...) {
    closeHandedOn();
    CloseHandle(job_);
    throw;
  }
  closeHandedOn();
  process_ = made.hProcess;
  processId_ = made.dwProcessId;
  mainThreadId_ = made.dwThreadId;
  AssignProcessToJobObject(job_, process_);
  if (!(start.creationFlags & CREATE_SUSPENDED))
    ResumeThread(made.hThread);
  CloseHandle(made.hThread);
}

ChildProcess::~ChildProcess() {
#ifdef KIVARA_COVERAGE
  // A program that is ended by force counts no lines.
  if (running() && PostThreadMessageA(mainThreadId_, WM_QUIT, 0, 0))
    WaitForSingleObject(process_, 3000);
#endif
  if (running())
    kill();
  CloseHandle(job_);
  CloseHandle(process_);
}

bool ChildProcess::running() const { return WaitForSingleObject(process_, 0) == WAIT_TIMEOUT; }

std::optional<unsigned long> ChildProcess::waitUpTo(double seconds) const {
  if (WaitForSingleObject(process_, static_cast<DWORD>(seconds * 1000)) != WAIT_OBJECT_0)
    return std::nullopt;
  DWORD code = 0;
  GetExitCodeProcess(process_, &code);
  return code;
}

unsigned long ChildProcess::waitForEnd(double seconds) const {
  if (auto const code = waitUpTo(seconds))
    return *code;
  throw std::runtime_error("the program still runs after " + std::to_string(seconds) + " seconds");
}

bool ChildProcess::waitForOutput(std::string_view text, double seconds) const {
  bool found = false;
  eventually(
      [&] {
        bool const last = !running();
        found = output().find(text) != std::string::npos;
        return found || last;
      },
      seconds);
  return found;
}

std::set<std::string> ChildProcess::modules() const {
  HMODULE all[512];
  DWORD bytes = 0;
  if (!K32EnumProcessModules(process_, all, sizeof all, &bytes))
    failed("asking for modules");
  std::set<std::string> names;
  for (std::size_t i = 0; i < bytes / sizeof all[0] && i < std::size(all); ++i) {
    char name[MAX_PATH] = "";
    K32GetModuleBaseNameA(process_, all[i], name, sizeof name);
    names.insert(_strlwr(name));
  }
  return names;
}

void ChildProcess::kill(unsigned exitCode) {
  TerminateProcess(process_, exitCode);
  WaitForSingleObject(process_, static_cast<DWORD>(kTimeLimit * 1000));
}

ProgramResult runProgram(ProgramStart const & start, double seconds) {
  ChildProcess const child(start);
  unsigned long const code = child.waitForEnd(seconds);
  return {code, child.output(), child.errors()};
}

void pause(double seconds) { Sleep(static_cast<DWORD>(seconds * 1000)); }

double detail::now() { return static_cast<double>(GetTickCount64()) / 1000; }

} // namespace support
