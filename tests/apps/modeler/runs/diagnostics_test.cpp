// What the sample product offers to find faults, seen from outside: record, request, who is at work, crash on demand.
#include "modeler_run.hpp"

#include "support/servers/http_server.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <map>
#include <optional>

namespace {

using modeler::mainWindow;

constexpr WPARAM kWatch = 311;
constexpr WPARAM kRequest = 321;
constexpr WPARAM kAtWork = 331;
constexpr WPARAM kCrash = 341;

/// The fields of a dialog, in their order.
std::vector<HWND> fieldsOf(HWND dialog) {
  std::vector<HWND> fields;
  for (HWND const child : support::children(dialog))
    if (support::windowClass(child) == "Edit")
      fields.push_back(child);
  return fields;
}

/// The program with its main window.
class ModelerDiagnostics : public testing::Test {
protected:
  void start(std::string const & arguments,
             std::map<std::string, std::optional<std::string>> const & environment = {}) {
    run = std::make_unique<ProductRun>(support::ProgramStart{
        .program = "modeler", .arguments = arguments + " -journalout.log", .environment = environment});
    window = mainWindow(*run);
    ASSERT_TRUE(window);
  }

  HWND dialog(WPARAM command, std::string const & title) const {
    PostMessageA(window, WM_COMMAND, command, 0);
    return support::waitForWindow({.processId = run->child().processId(), .title = title});
  }
  std::string journal() const { return run->file("out.log").value_or(""); }
  bool hasJournal(std::string const & text) const {
    return support::eventually([&] { return journal().find(text) != std::string::npos; });
  }
  void expectEnd() const {
    EXPECT_TRUE(support::closeWindow(window));
    EXPECT_EQ(run->exitCode(), 0u);
  }

  std::unique_ptr<ProductRun> run;
  HWND window = nullptr;
};

TEST_F(ModelerDiagnostics, RecordsMessagesFromTheMenu) {
  ASSERT_NO_FATAL_FAILURE(start("-lang2057"));
  PostMessageA(window, WM_COMMAND, kWatch, 0);
  std::string const text = modeler::answerOwnBox(*run, IDOK).texts.back();
  EXPECT_NE(text.find("_kiv_hooks.txt\n\nThe same command ends the recording."), std::string::npos) << text;
  std::string const record = run->file("_kiv_hooks.txt").value_or("");
  EXPECT_EQ(record.substr(0, 20), "--- [hooking window ") << record;
  PostMessageA(window, WM_COMMAND, kWatch, 0);
  EXPECT_TRUE(hasJournal("messages are no longer recorded"));
  EXPECT_NE(run->file("_kiv_hooks.txt").value_or("").find("--- [unhooked window "), std::string::npos);
  expectEnd();
}

TEST_F(ModelerDiagnostics, SayWhoIsAtWork) {
  ASSERT_NO_FATAL_FAILURE(start("-lang2057"));
  HWND const box = dialog(kAtWork, "Who is at work");
  ASSERT_TRUE(box);
  char user[256] = "";
  DWORD size = sizeof user;
  GetUserNameA(user, &size);
  ASSERT_EQ(fieldsOf(box).size(), 1u);
  std::string const text = support::windowText(fieldsOf(box).front());
  EXPECT_TRUE(text.starts_with("User: " + std::string(user) + "\r\n")) << text;
  EXPECT_TRUE(support::pressButton(box, IDOK));
  EXPECT_TRUE(support::waitUntilGone(box));
  expectEnd();
}

// A request

/// The dialog of a request in the program.
class ModelerWebDialog : public ModelerDiagnostics {
protected:
  void open(std::string const & arguments, std::string const & title) {
    ASSERT_NO_FATAL_FAILURE(start(arguments));
    request = dialog(kRequest, title);
    ASSERT_TRUE(request);
    fields = fieldsOf(request);
    ASSERT_EQ(fields.size(), 2u);
  }

  void send(std::string const & url, std::string const & button = "Send") const {
    SendMessageA(fields[0], WM_SETTEXT, 0, reinterpret_cast<LPARAM>(url.c_str()));
    EXPECT_TRUE(support::pressButton(request, button));
  }

  std::string shown() const { return support::windowText(fields[1]); }
  bool shows(std::string const & beginning) const {
    return support::eventually([&] { return shown().starts_with(beginning); });
  }

  support::HttpServer server;
  HWND request = nullptr;
  std::vector<HWND> fields;
};

TEST_F(ModelerWebDialog, ShowsAnswersOneAfterTheOther) {
  server.answer("/list", support::okWith("one\r\ntwo"));
  server.answer("/none", {.bytes = "HTTP/1.1 404 Not Found\r\nContent-Length: 4\r\n\r\nnone"});
  ASSERT_NO_FATAL_FAILURE(open("-lang2057", "Request to a URL"));
  send(server.url("/list"));
  EXPECT_TRUE(shows("Status: 200\r\nHeaders: ")) << shown();
  EXPECT_TRUE(shown().ends_with("\r\nBody: 8 bytes\r\n\r\none\r\ntwo")) << shown();
  send(server.url("/none"));
  EXPECT_TRUE(shows("Status: 404\r\n")) << shown();
  EXPECT_TRUE(hasJournal("request: " + server.url("/none") + ": Status: 404\r\n")) << journal();
  EXPECT_TRUE(support::pressButton(request, IDCANCEL));
  EXPECT_TRUE(support::waitUntilGone(request));
  HWND const again = dialog(kRequest, "Request to a URL");
  ASSERT_TRUE(again);
  EXPECT_EQ(support::windowText(fieldsOf(again).front()), server.url("/none")) << "the URL of the last time";
  EXPECT_TRUE(support::closeWindow(again));
  EXPECT_TRUE(support::waitUntilGone(again));
  expectEnd();
}

TEST_F(ModelerWebDialog, SaysInGermanWhatWentWrong) {
  support::RefusingPort const refusing;
  ASSERT_NO_FATAL_FAILURE(open("-lang1031", "Anfrage an eine URL"));
  send("nonsense", "Senden");
  EXPECT_TRUE(shows("Das ist keine URL, die verwendet werden kann.")) << shown();
  send("http://127.0.0.1:" + std::to_string(refusing.port()) + "/", "Senden");
  EXPECT_TRUE(shows("Der Server ist nicht erreichbar oder lehnt die Verbindung ab.")) << shown();
  EXPECT_TRUE(support::closeWindow(request));
  EXPECT_TRUE(support::waitUntilGone(request));
  expectEnd();
}

TEST_F(ModelerWebDialog, GoesOnAndCanBeClosedWhileItWaits) {
  server.answer("/never",
                {.bytes = "HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\n", .end = support::HttpAnswer::End::hold});
  ASSERT_NO_FATAL_FAILURE(open("-lang2057", "Request to a URL"));
  send(server.url("/never"));
  EXPECT_TRUE(shows("Waiting for the answer: ")) << shown();
  EXPECT_TRUE(shows("Waiting for the answer: 1 ")) << shown();
  EXPECT_TRUE(support::pressButton(request, IDCANCEL));
  EXPECT_TRUE(support::waitUntilGone(request));
  expectEnd();
}

// A crash

support::ProgramResult kivcrash(std::string const & file) {
  return support::runProgram({.program = "kivcrash", .arguments = '"' + file + '"'});
}

std::string fileEndingIn(std::string const & folder, std::string const & ending) {
  for (std::string const & name : support::entriesOf(folder))
    if (name.ends_with(ending))
      return folder + '\\' + name;
  return "";
}

class ModelerCrash : public ModelerDiagnostics {
protected:
  void start() { ModelerDiagnostics::start("-lang2057", {{"TMP", folder.path()}, {"TEMP", folder.path()}}); }

  /// The number after the words of the journal.
  std::string lineOfTheJournal() const {
    std::string const words = "crash on demand in line ";
    std::string const all = journal();
    std::size_t const at = all.find(words);
    return at == std::string::npos ? "" : all.substr(at + words.size(), all.find('\r', at) - at - words.size());
  }

  support::TempFolder const folder;
};

TEST_F(ModelerCrash, DoesNotHappenWhenItsUserSaysNoOrJustPressesReturn) {
  ASSERT_NO_FATAL_FAILURE(start());
  PostMessageA(window, WM_COMMAND, kCrash, 0);
  HWND const box = modeler::ownBox(*run);
  ASSERT_TRUE(box);
  EXPECT_EQ(support::readBox(box).buttons, (std::vector<std::string>{"Yes", "No"}));
  HWND const standard = support::childById(box, LOWORD(SendMessageA(box, DM_GETDEFID, 0, 0)));
  EXPECT_EQ(support::windowText(standard), "&No");
  EXPECT_TRUE(support::pressButton(box, "No"));
  EXPECT_TRUE(support::waitUntilGone(box));
  expectEnd();
  EXPECT_TRUE(support::entriesOf(folder.path()).empty());
}

TEST_F(ModelerCrash, LeavesWhatLeadsToTheLineOfItsSource) {
  ASSERT_NO_FATAL_FAILURE(start());
  PostMessageA(window, WM_COMMAND, kCrash, 0);
  HWND const question = modeler::ownBox(*run);
  ASSERT_TRUE(question);
  EXPECT_TRUE(support::pressButton(question, "Yes"));
  HWND const report = run->box();
  ASSERT_TRUE(report);
  EXPECT_TRUE(support::pressButton(report, IDOK));
  EXPECT_EQ(run->exitCode(), STATUS_ACCESS_VIOLATION);
  std::string const line = lineOfTheJournal();
  ASSERT_NE(line, "") << journal();
  EXPECT_NE(fileEndingIn(folder.path(), "modeler.exe.log"), "");
  auto const result = kivcrash(fileEndingIn(folder.path(), ".dmp"));
  EXPECT_EQ(result.exitCode, 0u) << result.errors;
  EXPECT_NE(result.output.find("ACCESS_VIOLATION (0xC0000005)"), std::string::npos) << result.output;
  std::size_t const at = result.output.find("apps/modeler/");
  ASSERT_NE(at, std::string::npos) << result.output;
  std::size_t const begin = result.output.rfind('\n', at) + 1;
  std::string const first = result.output.substr(begin, result.output.find_first_of("\r\n", at) - begin);
  EXPECT_NE(first.find("crashOnDemand"), std::string::npos) << result.output;
  EXPECT_TRUE(first.ends_with("apps/modeler/commands/program/crashcommand.cpp:" + line)) << line << '\n'
                                                                                         << result.output;
}

} // namespace
