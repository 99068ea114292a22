#include "aproc.hpp"

#include "frame/box_watch.hpp"
#include "process_child.hpp"
#include "support/imports/import_hook.hpp"
#include "support/processes/debug_lines.hpp"
#include "sv/application.hpp"
#include "sv/window.hpp"

#include <gtest/gtest.h>

#include <shellapi.h>

#include <optional>
#include <string>
#include <vector>

using kivtest::Facts;
using SV::String;
using Lines = std::vector<std::string>;

namespace {

// What reaches the system

struct Request {
  SHELLEXECUTEINFOA info;
  std::string verb;
  std::string file;
  std::optional<std::string> parameters;
};
std::optional<Request> lastRequest;
BOOL answer = TRUE;

BOOL WINAPI note(SHELLEXECUTEINFOA * request) {
  lastRequest = Request{*request, request->lpVerb, request->lpFile, std::nullopt};
  if (request->lpParameters != nullptr)
    lastRequest->parameters = request->lpParameters;
  SetLastError(ERROR_NO_ASSOCIATION);
  return answer;
}

class AsynchronousProcessCall : public testing::Test {
protected:
  AsynchronousProcessCall() {
    support::replaceImports(GetModuleHandleA("kivara.dll"), "SHELL32.dll",
                            {{"ShellExecuteExA", reinterpret_cast<void *>(note)}});
  }
};

TEST_F(AsynchronousProcessCall, AsksForTheVerbOpenWithVariablesReplaced) {
  KivAsynchronousProcess process("a b.pdf", "-y", KIV_CMDSHOW_MAXIMIZED);
  EXPECT_TRUE(process.Execute(nullptr));
  ASSERT_TRUE(lastRequest);
  EXPECT_EQ(lastRequest->info.cbSize, sizeof(SHELLEXECUTEINFOA));
  EXPECT_EQ(lastRequest->info.fMask, 0x300u);
  EXPECT_EQ(lastRequest->verb, "open");
  EXPECT_EQ(lastRequest->file, "a b.pdf");
  EXPECT_EQ(lastRequest->parameters, "-y");
  EXPECT_EQ(lastRequest->info.lpDirectory, nullptr);
  EXPECT_EQ(lastRequest->info.nShow, SW_SHOWMAXIMIZED);
  EXPECT_EQ(lastRequest->info.hwnd, nullptr);
}

TEST_F(AsynchronousProcessCall, OfACommandAloneHasNoArgumentsAndIsShownAsNormal) {
  KivAsynchronousProcess("\"a b.pdf\"").Execute(nullptr);
  ASSERT_TRUE(lastRequest);
  EXPECT_EQ(lastRequest->file, "a b.pdf") << "without its quotes";
  EXPECT_EQ(lastRequest->parameters, std::nullopt);
  EXPECT_EQ(lastRequest->info.nShow, SW_SHOWNORMAL);
}

TEST_F(AsynchronousProcessCall, TheOwnerIsTheParentOrElseTheApplicationWindow) {
  SV::SetProcessData(GetModuleHandleA(nullptr), GetCurrentThreadId(), SW_HIDE);
  SV::InitSV(0, nullptr);
  SV::Window main(nullptr, SV::WB_TITLE);
  SV::Window parent(nullptr, SV::WB_TITLE);
  SV::Application::SetAppWindow(&main);
  KivAsynchronousProcess process("x");
  process.Execute(&parent);
  EXPECT_EQ(lastRequest->info.hwnd, parent.GethWnd());
  process.Execute(nullptr);
  EXPECT_EQ(lastRequest->info.hwnd, main.GethWnd());
  SV::Application::SetAppWindow(nullptr);
  process.Execute(nullptr);
  EXPECT_EQ(lastRequest->info.hwnd, nullptr);
}

TEST_F(AsynchronousProcessCall, TheDebugOutputHasCommandAndArguments) {
  support::DebugLines const debug;
  KivAsynchronousProcess("x 1>y", "-z %d", KIV_CMDSHOW_NORMAL).Execute(nullptr);
  KivAsynchronousProcess("\"x\"").Execute(nullptr);
  std::string const most(100'000, 'x');
  KivAsynchronousProcess(most.c_str()).Execute(nullptr);
  EXPECT_EQ(debug.all(), (Lines{"[aproc] Asynchronous exec: x 1>y -z %d\n", "[aproc] Asynchronous exec: x \n",
                                "[aproc] Asynchronous exec: " + most + " \n"}));
}

TEST_F(AsynchronousProcessCall, TheCountHasFailuresToo) {
  EXPECT_EQ(KivAsynchronousProcess::GetExecuteCount(), 0);
  EXPECT_TRUE(KivAsynchronousProcess("x").Execute(nullptr));
  EXPECT_EQ(KivAsynchronousProcess::GetExecuteCount(), 1);
  answer = FALSE;
  EXPECT_FALSE(KivAsynchronousProcess("x").Execute(nullptr));
  EXPECT_EQ(GetLastError(), unsigned{ERROR_NO_ASSOCIATION});
  EXPECT_EQ(KivAsynchronousProcess::GetExecuteCount(), 2);
}

// What the shell does

TEST(AsynchronousProcess, OpensAProgram) {
  Facts facts;
  KivAsynchronousProcess process(kivtest::childPath().c_str(), "one  \"two three\"", KIV_CMDSHOW_MAXIMIZED);
  EXPECT_TRUE(process.Execute(nullptr));
  std::string const told = facts.take();
  EXPECT_TRUE(Facts::value(told, "line").ends_with(" one  \"two three\"")) << told;
  EXPECT_EQ(Facts::value(told, "show"), "3");
}

TEST(AsynchronousProcess, ReplacesVariablesOfTheEnvironmentInTheCommandAlone) {
  Facts facts;
  _putenv(("KIVARA_PLACE=" + support::binFolder()).c_str());
  EXPECT_TRUE(
      KivAsynchronousProcess("%KIVARA_PLACE%process_child.exe", "%KIVARA_PLACE%", KIV_CMDSHOW_HIDE).Execute(nullptr));
  std::string const line = facts.take("line");
  EXPECT_TRUE(line.ends_with(" %KIVARA_PLACE%")) << line;
}

/// Files that end in ".kivtest" belong to process_child.
class Association {
public:
  Association() {
    write(".kivtest", "KivTestDocument");
    write("KivTestDocument\\shell\\open\\command", '"' + kivtest::childPath() + "\" opened \"%1\"");
  }
  Association(Association const &) = delete;
  Association & operator=(Association const &) = delete;
  ~Association() {
    RegDeleteTreeA(HKEY_CLASSES_ROOT, ".kivtest");
    RegDeleteTreeA(HKEY_CLASSES_ROOT, "KivTestDocument");
  }

private:
  static void write(char const * key, std::string const & value) {
    EXPECT_EQ(RegSetValueA(HKEY_CLASSES_ROOT, key, REG_SZ, value.c_str(), static_cast<DWORD>(value.size())), 0);
  }
};

TEST(AsynchronousProcess, OpensADocumentWithItsProgram) {
  Association const association;
  Facts facts;
  support::TempFolder const folder;
  std::string const document = folder / "a report.kivtest";
  support::writeFile(document, "text");
  EXPECT_TRUE(KivAsynchronousProcess(document.c_str()).Execute(nullptr));
  EXPECT_EQ(facts.take("line"), '"' + kivtest::childPath() + "\" opened \"" + document + '"');
}

TEST(AsynchronousProcess, AFailureIsShownByTheShellAlsoUnderSuppression) {
  kivtest::BoxWatch const boxes;
  SV::Application::SetModalDialogSuppression(true);
  EXPECT_FALSE(KivAsynchronousProcess("c:\\not there\\x.exe").Execute(nullptr));
  EXPECT_EQ(boxes.boxes().size(), 1u);
  EXPECT_EQ(KivAsynchronousProcess::GetExecuteCount(), 1);
}

} // namespace
