// The boxes of the error reports: real ones, read and pressed from outside.

#include "diagnostics/reporter_run.hpp"
#include "support/files.hpp"

#include <gtest/gtest.h>

using kivtest::errorCode;
using kivtest::Lines;
using kivtest::ReporterRun;

namespace {

std::string const kBuiltIn = "An internal error has occurred.\n\nError code: " + errorCode();
std::string const kEnglish = kBuiltIn + "\n\nPlease inform your administrator.";
std::string const kGerman = "Ein interner Fehler ist aufgetreten.\n\nFehlercode: " + errorCode() +
                            "\n\nBitte verst\xE4ndigen Sie Ihren Administrator.";
std::string const kNetworkBuiltIn = "The connection to the database has been lost.";
std::string const kNetwork = kNetworkBuiltIn + "\n\nPlease save what you can to a file and start the program again.";
std::string const kCancelHint = "\n\n Press Cancel to debug!";
std::string const kLine = "[dEM] aEvent.cpp (246): " + errorCode() + "\n";

/// One form of the box of an internal error.
struct BoxForm {
  char const * words;
  std::string title;
  std::string text;
  Lines buttons;
  char const * style;
  Lines after; ///< what the program prints behind the box
};
std::ostream & operator<<(std::ostream & out, BoxForm const & form) { return out << form.words; }

class InternalErrorBox : public testing::TestWithParam<BoxForm> {};
TEST_P(InternalErrorBox, HasTitleTextAndButtonsOfItsForm) {
  BoxForm const & form = GetParam();
  ReporterRun run(form.words);
  auto const read = run.answerBox(IDOK);
  EXPECT_EQ(read.title, form.title);
  EXPECT_EQ(read.texts, Lines{form.text});
  EXPECT_EQ(read.buttons, form.buttons);
  Lines expected{"box owner=0 style=" + std::string(form.style)};
  expected.insert(expected.end(), form.after.begin(), form.after.end());
  EXPECT_EQ(run.lines(), expected);
  EXPECT_EQ(run.texts(), Lines{kLine});
  EXPECT_EQ(run.stops(), 0u);
}

Lines const kOK{"OK"};
Lines const kOKCancel{"OK", "Cancel"};
char const kNoWindow[] = "Unexpected program failure";
char const kPlain[] = "0x42010";
char const kWithCancel[] = "0x42011";

INSTANTIATE_TEST_SUITE_P(
    Forms, InternalErrorBox,
    testing::Values(
        BoxForm{"error", kNoWindow, kBuiltIn, kOK, kPlain, {"after error, wait 0"}},
        BoxForm{"window error", "The product", kBuiltIn, kOK, kPlain, {"update, wait 0", "after error, wait 0"}},
        BoxForm{"texts:2057 error", kNoWindow, kEnglish, kOK, kPlain, {"after error, wait 0"}},
        BoxForm{
            "texts:1031 window error", "The product", kGerman, kOK, kPlain, {"update, wait 0", "after error, wait 0"}},
        BoxForm{"-assert error", kNoWindow, kBuiltIn + kCancelHint, kOKCancel, kWithCancel, {"after error, wait 0"}},
        BoxForm{"-assert window texts:2057 error",
                "The product",
                kEnglish + kCancelHint,
                kOKCancel,
                kWithCancel,
                {"update, wait 0", "after error, wait 0"}},
        BoxForm{"-assert texts:1031 error",
                kNoWindow,
                kGerman + kCancelHint,
                kOKCancel,
                kWithCancel,
                {"after error, wait 0"}},
        BoxForm{"wait error", kNoWindow, kBuiltIn, kOK, kPlain, {"after error, wait 3"}},
        BoxForm{"window wait error", "The product", kBuiltIn, kOK, kPlain, {"update, wait 0", "after error, wait 3"}}));

TEST(InternalError, ToldTheDebuggerItsLineBeforeTheBoxOpens) {
  ReporterRun run("error");
  ASSERT_NE(run.box(), nullptr);
  EXPECT_EQ(run.debugger().texts(), Lines{kLine});
  run.answerBox(IDOK);
  run.lines();
}

TEST(InternalError, CancelStopsInTheDebuggerBeforeTheProgramGoesOn) {
  std::string outputAtStop;
  support::Debugger const * debugger = nullptr;
  ReporterRun run("-assert window wait error", {}, [&](support::DebuggedException const &) {
    support::pause(0.2); // for output that must not be there
    outputAtStop = debugger->process().output();
    return support::DebugAnswer::Usual;
  });
  debugger = &run.debugger();
  run.answerBox(IDCANCEL);
  EXPECT_EQ(run.lines(), (Lines{"box owner=0 style=0x42011", "update, wait 0", "after error, wait 3"}));
  EXPECT_EQ(run.stops(), 1u);
  EXPECT_EQ(outputAtStop, "box owner=0 style=0x42011\r\n");
}

TEST(InternalError, IsToldEachTime) {
  ReporterRun run("error error");
  run.answerBox(IDOK);
  EXPECT_EQ(run.answerBox(IDOK).texts, Lines{kBuiltIn});
  EXPECT_EQ(run.texts(), (Lines{kLine, kLine}));
}

struct NameRow {
  char const * file;
  char const * module;
};
std::ostream & operator<<(std::ostream & out, NameRow const & row) { return out << row.file; }

class ErrorCode : public testing::TestWithParam<NameRow> {};
TEST_P(ErrorCode, IsTheNameInLowerCaseWithoutItsLastFourCharacters) {
  ReporterRun run("error:" + std::string(GetParam().file));
  EXPECT_EQ(run.answerBox(IDOK).texts,
            Lines{"An internal error has occurred.\n\nError code: " + errorCode(GetParam().module)});
  EXPECT_EQ(run.texts(),
            Lines{"[dEM] " + std::string(GetParam().file) + " (246): " + errorCode(GetParam().module) + "\n"});
}
INSTANTIATE_TEST_SUITE_P(Names, ErrorCode,
                         testing::Values(NameRow{"aparser.cpp", "aparser"}, NameRow{"AParser.CPP", "aparser"},
                                         NameRow{"folder/a.hpp", "folder/a"}, NameRow{"atwelve.c", "atwel"},
                                         NameRow{".cpp", ""}, NameRow{"abc", ""}));

TEST(InternalError, ALongNameIsCutInTheLineAndWholeInTheBox) {
  std::string const name(2000, 'x');
  ReporterRun run("error:" + name + ".cpp");
  run.answerBox(IDOK);
  ASSERT_EQ(run.texts().size(), 1u);
  EXPECT_EQ(run.texts()[0], ("[dEM] " + name).substr(0, 1023));
}

TEST(InternalError, UnderSuppressionIsOnlyALineForTheDebugger) {
  ReporterRun run("-no_dialogs log:dialogs.txt window wait error");
  EXPECT_EQ(run.lines(), (Lines{"update, wait 0", "after error, wait 3"}));
  EXPECT_EQ(run.texts(), Lines{kLine});
  EXPECT_FALSE(support::exists("dialogs.txt"));
}

TEST(InternalError, UnderSuppressionNeverStopsInTheDebugger) {
  ReporterRun run("-no_dialogs -assert error");
  EXPECT_EQ(run.lines(), Lines{"after error, wait 0"});
  EXPECT_EQ(run.stops(), 0u);
}

TEST(InternalError, BeforeTheApplicationObjectExistsIsNothingAtAll) {
  ReporterRun run("", {{"KIVTEST_EARLY", "1"}});
  EXPECT_EQ(run.lines(), Lines{"after the early error"});
  EXPECT_EQ(run.texts(), Lines{});
}

TEST(InternalError, WithoutADebuggerCancelEndsTheProcess) {
  support::ChildProcess child({.program = "error_reporter", .arguments = "-assert error"});
  HWND const box = support::waitForWindow({.processId = child.processId(), .className = support::kBoxClass});
  EXPECT_TRUE(support::pressButton(box, IDCANCEL));
  EXPECT_EQ(child.waitForEnd(), static_cast<unsigned long>(STATUS_BREAKPOINT));
}

struct NetworkForm {
  char const * words;
  std::string title;
  std::string text;
  Lines buttons;
};
std::ostream & operator<<(std::ostream & out, NetworkForm const & form) { return out << form.words; }

class DeadNetworkBox : public testing::TestWithParam<NetworkForm> {};
TEST_P(DeadNetworkBox, HasTitleTextAndButtonsOfItsForm) {
  NetworkForm const & form = GetParam();
  ReporterRun run(form.words);
  auto const read = run.answerBox(IDOK);
  EXPECT_EQ(read.title, form.title);
  EXPECT_EQ(read.texts, Lines{form.text});
  EXPECT_EQ(read.buttons, form.buttons);
  EXPECT_EQ(run.lines(), (Lines{form.buttons.size() == 1 ? "box owner=0 style=0x42010" : "box owner=0 style=0x42011",
                                "after network"}));
  EXPECT_EQ(run.texts(), Lines{});
}
INSTANTIATE_TEST_SUITE_P(
    Forms, DeadNetworkBox,
    testing::Values(NetworkForm{"network", kNoWindow, kNetworkBuiltIn, kOK},
                    NetworkForm{"window network", "The product", kNetworkBuiltIn, kOK},
                    NetworkForm{"texts:2057 network", kNoWindow, kNetwork, kOK},
                    NetworkForm{"texts:1031 window network", "The product",
                                "Die Verbindung zur Datenbank ist unterbrochen.\n\nBitte sichern Sie Ihre "
                                "\xC4nderungen in eine Datei und starten Sie das Programm neu.",
                                kOK},
                    NetworkForm{"-assert network", kNoWindow, kNetworkBuiltIn + kCancelHint, kOKCancel},
                    NetworkForm{"-assert window texts:2057 network", "The product", kNetwork + kCancelHint,
                                kOKCancel}));

TEST(DeadNetwork, IsToldOnceInPlaceOfInternalErrors) {
  ReporterRun run("deadnet error error network");
  EXPECT_EQ(run.answerBox(IDOK).texts, Lines{kNetworkBuiltIn});
  EXPECT_EQ(run.lines(),
            (Lines{"box owner=0 style=0x42010", "after error, wait 0", "after error, wait 0", "after network"}));
  EXPECT_EQ(run.texts(), Lines{});
}

TEST(DeadNetwork, IsToldWhenTheDatabaseLayerIsNotConnected) {
  ReporterRun run("link error error");
  EXPECT_EQ(run.answerBox(IDOK).texts, Lines{kNetworkBuiltIn});
  EXPECT_EQ(run.lines(), (Lines{"box owner=0 style=0x42010", "after error, wait 0", "after error, wait 0"}));
}

TEST(DeadNetwork, IsNotToldWhileTheDatabaseLayerIsConnected) {
  ReporterRun run("link connected:256 error");
  EXPECT_EQ(run.answerBox(IDOK).texts, Lines{kBuiltIn});
  EXPECT_EQ(run.texts(), Lines{kLine});
}

TEST(DeadNetwork, CancelStopsInTheDebugger) {
  ReporterRun run("-assert network");
  run.answerBox(IDCANCEL);
  EXPECT_EQ(run.lines(), (Lines{"box owner=0 style=0x42011", "after network"}));
  EXPECT_EQ(run.stops(), 1u);
}

TEST(DeadNetwork, UnderSuppressionGoesToTheLogOnce) {
  ReporterRun run("-no_dialogs -assert log:dialogs.txt texts:2057 deadnet error network");
  EXPECT_EQ(run.lines(), (Lines{"after error, wait 0", "after network"}));
  Lines expected = kivtest::linesOf("displayDeadNetworkMessage()\n" + kNetwork);
  EXPECT_EQ(kivtest::linesOf(support::readFile("dialogs.txt").value_or("")), expected);
}

TEST(DeadNetwork, UnderSuppressionWithoutALogIsSilent) {
  ReporterRun run("-no_dialogs network");
  EXPECT_EQ(run.lines(), Lines{"after network"});
}

TEST(ExitNotice, ShowsNothingWithoutReleaseAssertions) {
  ReporterRun run("window exit");
  EXPECT_EQ(run.lines(), Lines{"after exit"});
}

TEST(ExitNotice, IsABoxWithReleaseAssertions) {
  ReporterRun run("-assert exit");
  auto const read = run.answerBox(IDOK);
  EXPECT_EQ(read.title, kNoWindow);
  EXPECT_EQ(read.texts, Lines{"--- E X I T ---\n\nPress Cancel to debug."});
  EXPECT_EQ(read.buttons, kOKCancel);
  EXPECT_EQ(run.lines(), (Lines{"box owner=0 style=0x42011", "after exit"}));
  EXPECT_EQ(run.stops(), 0u);
}

TEST(ExitNotice, HasTheApplicationWindowsTitle) {
  ReporterRun run("-assert window exit");
  EXPECT_EQ(run.answerBox(IDOK).title, "The product");
}

TEST(ExitNotice, CancelStopsInTheDebugger) {
  ReporterRun run("-assert exit");
  run.answerBox(IDCANCEL);
  EXPECT_EQ(run.stops(), 1u);
  EXPECT_EQ(run.lines().back(), "after exit");
}

TEST(ExitNotice, IsToldOnce) {
  ReporterRun run("-assert exit exit");
  run.answerBox(IDOK);
  EXPECT_EQ(run.lines(), (Lines{"box owner=0 style=0x42011", "after exit", "after exit"}));
}

TEST(ExitNotice, UnderSuppressionGoesToTheLogWithOrWithoutReleaseAssertions) {
  for (char const * const words : {"-no_dialogs log:plain.txt exit exit", "-no_dialogs -assert log:assert.txt exit"}) {
    ReporterRun run(words);
    EXPECT_EQ(run.lines().back(), "after exit");
  }
  EXPECT_EQ(kivtest::linesOf(support::readFile("plain.txt").value_or("")), Lines{"--- E X I T ---"});
  EXPECT_EQ(kivtest::linesOf(support::readFile("assert.txt").value_or("")), Lines{"--- E X I T ---"});
}

TEST(ExitNotice, UnderSuppressionWithoutALogIsSilent) {
  ReporterRun run("-no_dialogs -assert exit");
  EXPECT_EQ(run.lines(), Lines{"after exit"});
}

} // namespace
