// A host without a user interface: no window and no box ever appears, and what a box would say goes to the suppression log.
//
//   service -port8080 -pidfileservice.pid -wslogfileservice.log -wslogbackup7 -wslogformatlong -log_no_dialogsdialogs.log
//
// It serves on loopback until somebody posts to /stop. Without a port the system chooses one; the first line of the standard
// output tells it. Exit code 2: the port is not available; the suppression log and the log say why.

#include "kivara.hpp"
#include "requests.hpp"
#include "systemerror.hpp"
#include "tools/winapi.hpp"
#include "webserver.hpp"

#include <algorithm>
#include <cstdio>
#include <memory>

using SV::String;

namespace service {
namespace {

constexpr int kPortFailed = 2;

String reasonWithoutPort(int port, int error) {
  char const * const reason = error == WSAEADDRINUSE ? " is in use by another program: " : " cannot be used: ";
  return "The port " + String(port) + reason + systemError(error) + ".";
}

class Service : public KivMDIApplication {
public:
  Service() : KivMDIApplication("Service", false, "log_dialogs") {}

  /// Opens the log and loads the texts; 1 when these cannot be had.
  int prepareApplication() override {
    Kiv_SetWS(true);
    openLog();
    return createResourceManager("kivara", true) ? 0 : 1;
  }

  int runApplication() override {
    WebServer server;
    int port = KivCmdline::Instance().getWSPortNumber();
    int error = server.listen(port);
    if (error != 0)
      return fail(reasonWithoutPort(port, error));
    std::printf("listening on 127.0.0.1:%d\n", port);
    std::fflush(stdout);
    addLine("listening on 127.0.0.1:" + String(port));
    appInitialized = true;
    error = server.serve([this](std::optional<Request> const & request) { return answerAndLog(request); });
    if (error != 0)
      return fail("The service has lost its port: " + systemError(error) + ".");
    addLine("stopped");
    closeLog();
    return 0;
  }

  bool getMDIClientImage(SV::Image &, int &) override { return false; }

private:
  /// "-wslogfile" names the log; without it there is none. "-wslogbackup" is the number of old files that are kept.
  void openLog() {
    KivCmdline const & line = KivCmdline::Instance();
    String const fileName = line.getWSLogFileName();
    if (fileName.Len() == 0)
      return;
    log_ = std::make_unique<KivBasicFileLogger>(true, true, std::max(line.getWSLogFileBackupCount(), 0));
    if (!log_->open(fileName.c_str(), true)) {
      SV::Application::ModalDialogSuppressionLog(("The log " + fileName + " cannot be written.").c_str());
      log_.reset();
    }
    Kiv_SetWSLogger(log_.get());
  }

  void closeLog() {
    Kiv_SetWSLogger(nullptr);
    log_.reset();
  }

  void addLine(String const & text) {
    if (log_ != nullptr)
      log_->addText("%s", text.c_str());
  }

  int fail(String const & reason) {
    SV::Application::ModalDialogSuppressionLog(reason.c_str());
    addLine(reason);
    closeLog();
    return kPortFailed;
  }

  /// The long form of the log also tells the answer and how long it took.
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
};

Service theService;

} // namespace
} // namespace service
