// The host without a user interface, from its command line to its orderly end.
#include "support/data/files.hpp"
#include "support/data/system_text.hpp"
#include "support/processes/child_process.hpp"
#include "support/windows/windows.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <fstream>
#include <ostream>
#include <winsock2.h>

namespace {

/// A running service in a working folder of its own.
class ServiceRun {
public:
  /// \param creationFlags  CREATE_NEW_CONSOLE for one that has a console
  explicit ServiceRun(std::string const & arguments, unsigned long creationFlags = 0)
      : child_({.program = "service",
                .arguments = arguments,
                .workingFolder = folder_.path(),
                .creationFlags = creationFlags}) {
    WSADATA data;
    WSAStartup(MAKEWORD(2, 2), &data);
  }
  ServiceRun(ServiceRun const &) = delete;
  ServiceRun & operator=(ServiceRun const &) = delete;
  ~ServiceRun() { WSACleanup(); }

  support::ChildProcess & child() { return child_; }
  std::string file(std::string const & name) const { return support::readFile(folder_ / name).value_or("(none)"); }

  /// The number that it prints once it listens.
  int port() const {
    constexpr char kBefore[] = "listening on 127.0.0.1:";
    EXPECT_TRUE(child_.waitForOutput("\r\n"));
    std::string const output = child_.output();
    EXPECT_EQ(output.rfind(kBefore, 0), 0u) << output;
    return output.rfind(kBefore, 0) == 0 ? std::stoi(output.substr(sizeof kBefore - 1)) : 0;
  }

  SOCKET connectClient() const {
    SOCKET const connection = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<u_short>(port()));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    EXPECT_EQ(connect(connection, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
    return connection;
  }

  /// Sends the bytes and gives all that comes back.
  std::string exchange(std::string const & bytes) const {
    SOCKET const connection = connectClient();
    send(connection, bytes.data(), static_cast<int>(bytes.size()), 0);
    shutdown(connection, SD_SEND);
    std::string answer;
    char block[1024];
    for (int count; (count = recv(connection, block, sizeof block, 0)) > 0;)
      answer.append(block, static_cast<std::size_t>(count));
    closesocket(connection);
    return answer;
  }

  std::string request(std::string const & line) const {
    return exchange(line + " HTTP/1.1\r\nHost: localhost\r\n\r\n");
  }

  unsigned long stop() {
    request("POST /stop");
    return child_.waitForEnd();
  }

private:
  support::TempFolder folder_;
  support::ChildProcess child_;
};

bool holds(std::string const & text, std::string const & part) { return text.find(part) != std::string::npos; }

TEST(Service, AnswersAndEndsWhenItIsAsked) {
  ServiceRun run("");
  std::string const status = run.request("GET /status");
  EXPECT_TRUE(holds(status, "HTTP/1.0 200 OK\r\n")) << status;
  EXPECT_TRUE(holds(status, "\nlanguage: 2057\n")) << status;
  EXPECT_EQ(run.stop(), 0u);
}

TEST(Service, TakesTheLanguageOfTheOption) {
  ServiceRun run("-langde");
  EXPECT_TRUE(holds(run.request("GET /status"), "\nlanguage: 1031\n"));
  EXPECT_EQ(run.stop(), 0u);
}

TEST(Service, FindsWordsOfEveryLanguage) {
  ServiceRun run("");
  EXPECT_TRUE(holds(run.request("GET /words/activity"), "\r\n\r\n1001\n"));
  EXPECT_TRUE(holds(run.request("GET /words/Entscheidung"), "\r\n\r\n1002\n"));
  EXPECT_TRUE(holds(run.request("GET /words/nothing"), "HTTP/1.0 404 Not Found\r\n"));
  EXPECT_EQ(run.stop(), 0u);
}

TEST(Service, RefusesWhatIsNoRequestAndGoesOn) {
  ServiceRun run("");
  for (std::string const bytes : {"", "GET\r\n\r\n", "GET /status\r\n\r\n", "GET status HTTP/1.1\r\n\r\n"})
    EXPECT_TRUE(holds(run.exchange(bytes), "HTTP/1.0 400 Bad Request\r\n")) << bytes;
  run.exchange(std::string(100'000, 'x')); // answered, or cut off on the way
  EXPECT_TRUE(holds(run.request("GET /elsewhere"), "HTTP/1.0 404 Not Found\r\n"));
  EXPECT_TRUE(holds(run.request("GET /stop"), "HTTP/1.0 404 Not Found\r\n"));
  EXPECT_EQ(run.stop(), 0u);
}

TEST(Service, WritesPidFileAndLog) {
  ServiceRun run("-pidfileservice.pid -wslogfileservice.log -wslogbackup3");
  run.request("GET /status");
  EXPECT_EQ(run.file("service.pid"), std::to_string(run.child().processId()) + "\r\n");
  EXPECT_EQ(run.stop(), 0u);
  std::string const log = run.file("service.log");
  EXPECT_TRUE(holds(log, ": listening on 127.0.0.1:")) << log;
  EXPECT_TRUE(holds(log, ": GET /status\r\n")) << log;
  EXPECT_TRUE(holds(log, ": POST /stop\r\n")) << log;
  EXPECT_TRUE(log.ends_with(": stopped\r\n")) << log;
}

TEST(Service, GivesTheAnswerInTheLongFormOfTheLog) {
  ServiceRun run("-wslogfileservice.log -wslogformatlong");
  run.request("GET /elsewhere");
  EXPECT_EQ(run.stop(), 0u);
  EXPECT_TRUE(holds(run.file("service.log"), ": GET /elsewhere -> 404, ")) << run.file("service.log");
}

TEST(Service, KeepsYesterdaysLogAsABackup) {
  support::TempFolder const folder;
  support::writeFile(folder / "service.log", "2001.02.03, 07:08:09: an old line\r\n");
  ServiceRun run("\"-wslogfile" + folder / "service.log" + "\" -wslogbackup1");
  run.port();
  EXPECT_EQ(run.stop(), 0u);
  EXPECT_EQ(support::readFile(folder / "service_2001.02.03.log"), "2001.02.03, 07:08:09: an old line\r\n");
}

TEST(Service, TakesThePortOfTheOptionAndSaysInItsLogsWhenItCannot) {
  ServiceRun first("");
  std::string const port = std::to_string(first.port());
  ServiceRun second("-port" + port + " -wslogfileservice.log -log_no_dialogsdialogs.log");
  EXPECT_EQ(second.child().waitForEnd(), 2u);
  std::string const text = support::systemText(WSAEADDRINUSE);
  std::string const reason = "The port " + port + " is in use by another program: system error 10048" +
                             (text.empty() ? "" : " (" + text + ")") + ".";
  EXPECT_TRUE(holds(second.file("dialogs.log"), reason)) << second.file("dialogs.log");
  EXPECT_TRUE(holds(second.file("service.log"), reason)) << second.file("service.log");
  EXPECT_EQ(second.child().errors(), "service: " + reason + "\r\n");
  EXPECT_EQ(first.stop(), 0u);
  ServiceRun third("-port" + port);
  EXPECT_EQ(std::to_string(third.port()), port);
  EXPECT_EQ(third.stop(), 0u);
}

// What the system does at the console, on a thread of its own in the process. Wine raises no Ctrl+Break.
void raiseControlEvent(support::ChildProcess const & child, unsigned long event) {
  auto const routine = reinterpret_cast<LPTHREAD_START_ROUTINE>(
      reinterpret_cast<void (*)()>(GetProcAddress(GetModuleHandleA("kernel32.dll"), "CtrlRoutine")));
  void * const argument = reinterpret_cast<void *>(static_cast<std::uintptr_t>(event));
  HANDLE const thread = CreateRemoteThread(child.handle(), nullptr, 0, routine, argument, 0, nullptr);
  ASSERT_TRUE(thread);
  CloseHandle(thread);
}

class ServiceControl : public testing::TestWithParam<unsigned long> {};
TEST_P(ServiceControl, EndsItInOrder) {
  ServiceRun run("-wslogfileservice.log");
  run.port();
  raiseControlEvent(run.child(), GetParam());
  EXPECT_EQ(run.child().waitForEnd(30), 0u);
  EXPECT_TRUE(run.file("service.log").ends_with(": stopped\r\n")) << run.file("service.log");
}
INSTANTIATE_TEST_SUITE_P(Events, ServiceControl, testing::Values(CTRL_C_EVENT, CTRL_BREAK_EVENT, CTRL_CLOSE_EVENT));

TEST(Service, EndsAtCtrlCWhileAClientHasNotSentAllOfItsRequest) {
  ServiceRun run("-wslogfileservice.log");
  SOCKET const client = run.connectClient();
  send(client, "GET /st", 7, 0);
  support::pause(0.2);
  raiseControlEvent(run.child(), CTRL_C_EVENT);
  EXPECT_EQ(run.child().waitForEnd(30), 0u);
  closesocket(client);
  EXPECT_TRUE(run.file("service.log").ends_with(": stopped\r\n")) << run.file("service.log");
}

TEST(Service, OpensAConsoleOfTheLibraryInPlaceOfItsOwnWhenAskedTo) {
  ServiceRun run("-console -wslogfileservice.log", CREATE_NEW_CONSOLE);
  EXPECT_TRUE(support::eventually([&] { return holds(run.file("service.log"), ": listening on 127.0.0.1:"); }));
  raiseControlEvent(run.child(), CTRL_C_EVENT);
  EXPECT_EQ(run.child().waitForEnd(30), 0u);
  EXPECT_TRUE(run.file("service.log").ends_with(": stopped\r\n")) << run.file("service.log");
}

/// A file that the service is to write and cannot.
struct Unwritable {
  char const * option;
  char const * reason;
};
std::ostream & operator<<(std::ostream & out, Unwritable const & row) { return out << row.option; }

class ServiceFile : public testing::TestWithParam<Unwritable> {};
TEST_P(ServiceFile, ThatCannotBeWrittenIsReportedByWordsAndExitCode) {
  ServiceRun run(std::string(GetParam().option) + " -log_no_dialogsdialogs.log");
  EXPECT_EQ(run.child().waitForEnd(), 3u);
  EXPECT_EQ(run.child().errors(), std::string("service: ") + GetParam().reason + "\r\n");
  EXPECT_EQ(run.child().output(), "");
  EXPECT_TRUE(holds(run.file("dialogs.log"), GetParam().reason)) << run.file("dialogs.log");
}
INSTANTIATE_TEST_SUITE_P(Files, ServiceFile,
                         testing::Values(Unwritable{"-wslogfilenowhere\\service.log",
                                                    "The log nowhere\\service.log cannot be written."},
                                         Unwritable{"-pidfilenowhere\\service.pid",
                                                    "The pid file nowhere\\service.pid cannot be written."}));

TEST(Service, ReportsAPidFileThatKeepsItsOldContent) {
  support::TempFolder const folder;
  std::string const name = folder / "service.pid";
  support::writeFile(name, "1\r\n");
  HANDLE const reader = CreateFileA(name.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
  ServiceRun run("\"-pidfile" + name + "\" -wslogfileservice.log");
  EXPECT_EQ(run.child().waitForEnd(20), 3u);
  EXPECT_TRUE(holds(run.file("service.log"), "service.pid cannot be written.")) << run.file("service.log");
  CloseHandle(reader);
}

TEST(Service, GoesOnWithALogThatLacksLinesAndReportsItByItsExitCode) {
  if (!std::ifstream("Z:\\dev\\full"))
    GTEST_SKIP() << "there is no device that is always full";
  ServiceRun run("-wslogfileZ:\\dev\\full");
  run.request("GET /status");
  EXPECT_EQ(run.stop(), 3u);
  EXPECT_EQ(run.child().errors(), "service: The log Z:\\dev\\full lacks lines: they cannot be written.\r\n");
}

TEST(Service, StartsWithoutTheLibrariesThatAreLoadedLate) {
  ServiceRun run("");
  run.port();
  std::set<std::string> const modules = run.child().modules();
  EXPECT_EQ(modules.count("kivara.dll"), 1u);
  EXPECT_EQ(modules.count("winhttp.dll"), 0u);
  EXPECT_EQ(run.stop(), 0u);
}

TEST(Service, ShowsNoWindow) {
  ServiceRun run("");
  run.port();
  EXPECT_TRUE(support::findWindows({.processId = run.child().processId()}).empty());
  EXPECT_EQ(run.stop(), 0u);
}

} // namespace
