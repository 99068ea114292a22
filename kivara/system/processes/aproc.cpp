#include "aproc.hpp"

#include "atools.hpp"
#include "atrace.hpp"
#include "handles/handle.hpp"
#include "sv/application.hpp"
#include "sv/window.hpp"
#include "system/processes/redirection.hpp"
#include "tools/winapi.hpp"

#include <shellapi.h>

#include <cstdlib>
#include <string>
#include <utility>

using SV::String;

namespace {

constexpr int kNotRunning = -1;
constexpr int kStarted = 0;
constexpr long kNoResultYet = -1;
constexpr long kNegativeExitCode = 0x7FFFFFFF;
constexpr DWORD kGracePeriod = 1000; // milliseconds
constexpr int kLongestLine = 32'766;

long executions = 0;

String withoutEnclosingQuotes(String const & command) {
  std::int32_t const last = command.Len() - 1;
  if (command.charAt(0) != '"')
    return command;
  std::int32_t next = 1;
  while (next < last && command.charAt(next) != '"')
    ++next;
  return next == last && command.charAt(last) == '"' ? command.substr(1, last - 1) : command;
}

String commandLine(String const & command, String const & arguments) {
  if (command.Len() == 0)
    return std::getenv("COMSPEC");
  return arguments.Len() == 0 ? command : command + " " + arguments;
}

/// The name of a redirection's file without quotes, or what is left of them.
String fileName(String const & written) {
  if (written.charAt(0) != '"')
    return written;
  bool const isClosed = written.Len() > 1 && written.lastChar() == '"';
  return Kiv_Unmask(written.substr(1, written.Len() - (isClosed ? 2 : 1)).c_str(), '"');
}

HANDLE openFile(kivara::Redirection const & redirection) {
  SECURITY_ATTRIBUTES inheritable = {sizeof inheritable, nullptr, TRUE};
  return CreateFileA(fileName(redirection.name).c_str(), redirection.appends ? FILE_APPEND_DATA : GENERIC_WRITE,
                     FILE_SHARE_READ | FILE_SHARE_WRITE, &inheritable,
                     redirection.appends ? OPEN_ALWAYS : CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
}

void openInto(void *& handle, kivara::Redirection const & redirection) {
  if (redirection.name.Len() > 0)
    handle = openFile(redirection);
}

/// \param output, error  each may be INVALID_HANDLE_VALUE
STARTUPINFOA startupOf(KivCmdShow show, HANDLE output, HANDLE error) {
  STARTUPINFOA startup = {};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESHOWWINDOW;
  startup.wShowWindow = static_cast<WORD>(show);
  if (output != INVALID_HANDLE_VALUE) {
    startup.dwFlags |= STARTF_USESTDHANDLES;
    startup.hStdOutput = output;
  }
  if (error != INVALID_HANDLE_VALUE) {
    startup.dwFlags |= STARTF_USESTDHANDLES;
    startup.hStdError = error;
  }
  return startup;
}

/// The system counts characters, which may be of two bytes. Not every version refuses a line that is far too long: some
/// cut its length to 16 bits and run that much of it.
bool isTooLong(std::string const & line) {
  return line.size() > kLongestLine &&
         MultiByteToWideChar(CP_ACP, 0, line.data(), static_cast<int>(line.size()), nullptr, 0) > kLongestLine;
}

/// The handle of the new process; null if there is none. The system may write into the line.
HANDLE start(std::string & line, STARTUPINFOA & startup, DWORD flags) {
  if (isTooLong(line)) {
    SetLastError(ERROR_FILENAME_EXCED_RANGE);
    return nullptr;
  }
  PROCESS_INFORMATION started = {};
  if (!CreateProcessA(nullptr, line.data(), nullptr, nullptr, TRUE, flags, nullptr, nullptr, &startup, &started))
    return nullptr;
  handles::KernelObject const thread(started.hThread);
  return started.hProcess;
}

/// The members are no owners, since copies of the process share them.
void close(void *& handle) { handles::File const closed(std::exchange(handle, INVALID_HANDLE_VALUE)); }

} // namespace

KivBasicProcess::KivBasicProcess(String const & command, String const & arguments, KivCmdShow show)
    : command_(withoutEnclosingQuotes(command)), arguments_(arguments), show_(show) {}

KivSynchronousProcess::KivSynchronousProcess(String const & command, String const & arguments, KivCmdShow show)
    : KivBasicProcess(command, arguments, show), process_(INVALID_HANDLE_VALUE), output_(INVALID_HANDLE_VALUE),
      error_(INVALID_HANDLE_VALUE) {}

KivSynchronousProcess::~KivSynchronousProcess() { close(process_); }

void KivSynchronousProcess::SetUseRedirection(bool on) { useRedirection_ = on; }

bool KivSynchronousProcess::Execute(bool consoleWindow) {
  if (state_ != kNotRunning)
    return false;
  String const wholeLine = commandLine(command(), arguments());
  if (wholeLine.Len() == 0)
    return false;
  kivara::Redirections const redirections = kivara::findRedirections(wholeLine);
  if (useRedirection_) {
    openInto(output_, redirections.output);
    openInto(error_, redirections.error);
  }
  std::string line = kivara::withoutRedirections(wholeLine, redirections).c_str();
  KivDebugOut(("[aproc] Synchronous exec: " + line + "\n").c_str());
  STARTUPINFOA startup = startupOf(show(), output_, error_);
  HANDLE const process = start(line, startup, consoleWindow ? 0 : CREATE_NO_WINDOW);
  if (process == nullptr)
    return false;
  process_ = process;
  state_ = kStarted;
  return true;
}

long KivSynchronousProcess::Wait() {
  if (state_ == kNotRunning || WaitForSingleObject(process_, kGracePeriod) != WAIT_OBJECT_0)
    return kNoResultYet;
  DWORD exitCode = 0;
  GetExitCodeProcess(process_, &exitCode);
  returnValue_ = static_cast<long>(exitCode);
  if (exitCode == STILL_ACTIVE)
    return kNoResultYet;
  close(process_);
  close(output_);
  close(error_);
  state_ = kNotRunning;
  if (returnValue_ < 0)
    returnValue_ = kNegativeExitCode; // -1 means that there is no result yet
  return returnValue_;
}

long KivSynchronousProcess::GetRetVal() const { return returnValue_; }

KivAsynchronousProcess::KivAsynchronousProcess(String const & command)
    : KivAsynchronousProcess(command, {}, KIV_CMDSHOW_NORMAL) {}

KivAsynchronousProcess::KivAsynchronousProcess(String const & command, String const & arguments, KivCmdShow show)
    : KivBasicProcess(command, arguments, show) {}

bool KivAsynchronousProcess::Execute(SV::Window * parent) {
  if (parent == nullptr)
    parent = SV::Application::GetAppWindow();
  SHELLEXECUTEINFOA request = {};
  request.cbSize = sizeof request;
  request.fMask = SEE_MASK_DOENVSUBST | SEE_MASK_FLAG_DDEWAIT;
  request.hwnd = parent != nullptr ? static_cast<HWND>(parent->GethWnd()) : nullptr;
  request.lpVerb = "open";
  request.lpFile = command().c_str();
  request.lpParameters = arguments().Len() > 0 ? arguments().c_str() : nullptr;
  request.nShow = show();
  KivDebugOut(("[aproc] Asynchronous exec: " + command() + " " + arguments() + "\n").c_str());
  bool const isOpened = ShellExecuteExA(&request) != FALSE;
  ++executions;
  return isOpened;
}

long KivAsynchronousProcess::GetExecuteCount() { return executions; }
