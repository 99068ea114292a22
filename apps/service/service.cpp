// A host without a user interface: no window and no box ever appears, and what a box would say goes to the suppression log.
//
//   service -port8080 -pidfileservice.pid -wslogfileservice.log -wslogbackup7 -wslogformatlong -log_no_dialogsdialogs.log
//
// It serves on loopback until somebody posts to /stop, or presses Ctrl+C or Ctrl+Break at its console. Without a port the system
// chooses one; the first line of the standard output gives it. Exit code 2: the port is not available; 3: the log or the pid file
// cannot be written. The standard error, the suppression log and the log say why.

#include "kivara.hpp"
#include "requests.hpp"
#include "stopsignal.hpp"
#include "systemerror.hpp"
#include "tools/winapi.hpp"
#include "webserver.hpp"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <process.h>

using SV::String;

namespace service {
namespace {

constexpr int kPortFailed = 2;
constexpr int kFileFailed = 3;

String reasonWithoutPort(int port, int error) {
  char const * const reason = error == WSAEADDRINUSE ? " is in use by another program: " : " cannot be used: ";
  return "The port " + String(port) + reason + systemError(error) + ".";
}

/// Whether the frame has written the file that "-pidfile" names: it says nothing when it cannot.
bool isPidFileWritten() {
  String const name = KivCmdline::Instance().getPIDFileName();
  if (name.Len() == 0)
    return true;
  std::FILE * const file = std::fopen(name.c_str(), "r");
  if (file == nullptr)
    return false;
  int id = 0;
  bool const isRead = std::fscanf(file, "%d", &id) == 1;
  std::fclose(file);
  return isRead && id == _getpid();
}

bool isConsoleOption(char const * word) {
  return (word[0] == '-' || word[0] == '/') && !std::strcmp(word + 1, "console");
}

class Service : public KivMDIApplication {
public:
  Service() : KivMDIApplication("Service", false, "log_dialogs") {}

  /// As a console program it has a console, and the frame opens one for "-console" only where there is none.
  void Main(int argc, char ** const argv) override {
    if (std::any_of(argv, argv + argc, isConsoleOption))
      FreeConsole();
    KivMDIApplication::Main(argc, argv);
  }

  /// Opens the log, looks for the pid file and loads the texts; not 0 when one of them failed.
  int prepareApplication() override {
    Kiv_SetWS(true);
    if (!openLog())
      return fail(kFileFailed, "The log " + KivCmdline::Instance().getWSLogFileName() + " cannot be written.");
    if (!isPidFileWritten())
      return fail(kFileFailed, "The pid file " + KivCmdline::Instance().getPIDFileName() + " cannot be written.");
    return createResourceManager("kivara", true) ? 0 : 1;
  }

  int runApplication() override {
    WebServer server;
    int port = KivCmdline::Instance().getWSPortNumber();
    int error = server.listen(port);
    if (error != 0)
      return fail(kPortFailed, reasonWithoutPort(port, error));
    void * const stop = stopSignal();
    std::printf("listening on 127.0.0.1:%d\n", port);
    std::fflush(stdout);
    addLine("listening on 127.0.0.1:" + String(port));
    appInitialized = true;
    error = server.serve([this](std::optional<Request> const & request) { return answerAndLog(request); }, stop);
    if (error != 0)
      return fail(kPortFailed, "The service has lost its port: " + systemError(error) + ".");
    addLine("stopped");
    closeLog();
    return isLogComplete_ ? 0 : kFileFailed;
  }

  bool getMDIClientImage(SV::Image &, int &) override { return false; }

private:
  /// "-wslogfile" names the log; without it there is none. "-wslogbackup" is the number of old files that are kept.
  bool openLog() {
    KivCmdline const & line = KivCmdline::Instance();
    String const fileName = line.getWSLogFileName();
    if (fileName.Len() == 0)
      return true;
    log_ = std::make_unique<KivBasicFileLogger>(true, true, std::max(line.getWSLogFileBackupCount(), 0));
    if (!log_->open(fileName.c_str(), true))
      log_.reset();
    Kiv_SetWSLogger(log_.get());
    return log_ != nullptr;
  }

  void closeLog() {
    Kiv_SetWSLogger(nullptr);
    log_.reset();
  }

  /// The service goes on when a line cannot be written; that is reported once, and by the exit code.
  void addLine(String const & text) {
    if (log_ == nullptr || log_->addText("%s", text.c_str()) || !isLogComplete_)
      return;
    isLogComplete_ = false;
    report("The log " + KivCmdline::Instance().getWSLogFileName() + " lacks lines: they cannot be written.");
  }

  static void report(String const & reason) {
    std::fprintf(stderr, "service: %s\n", reason.c_str());
    SV::Application::ModalDialogSuppressionLog(reason.c_str());
  }

  int fail(int exitCode, String const & reason) {
    report(reason);
    addLine(reason);
    closeLog();
    return exitCode;
  }

  /// The long form of the log also gives the answer and how long it took.
  Response answerAndLog(std::optional<Request> const & request) {
    unsigned long long const start = GetTickCount64();
    Response const response = answer(request);
    String line = request ? String((request->method + ' ' + request->path).c_str()) : String("no request");
    if (KivCmdline::Instance().getWSLogFormat() == KIV_WS_LOG_FORMAT_LONG)
      line += " -> " + String(response.status) + ", " + String(GetTickCount64() - start) + " ms";
    addLine(line);
    return response;
  }

  std::unique_ptr<KivBasicFileLogger> log_;
  bool isLogComplete_ = true;
};

Service theService;

} // namespace
} // namespace service
