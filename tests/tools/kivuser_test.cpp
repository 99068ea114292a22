#include "auser.hpp"
#include "support/data/files.hpp"
#include "support/processes/child_process.hpp"
#include "support/processes/console.hpp"
#include "system/users/userfile.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

using kivtest::encrypted;

namespace {

/// Runs of the tool in a folder of its own.
class Kivuser : public testing::Test {
protected:
  support::ProgramResult run(std::string const & arguments, std::string const & input = "") const {
    return support::runProgram(
        {.program = "kivuser", .arguments = arguments, .workingFolder = folder.path(), .input = input});
  }

  std::string path() const { return folder / "adbuser.txt"; }
  std::string content() const { return support::readFile(path()).value_or("(none)"); }

  /// Name and password as the library reads them.
  std::string account() const {
    KivDBUserUtils user(path().c_str());
    return std::string(user.GetDBUserName("").c_str()) + "/" + user.GetDBUserPassword("").c_str();
  }

  support::TempFolder const folder;
};

TEST_F(Kivuser, WritesWhatTheLibraryReads) {
  auto const result = run("write adbuser.txt scott", "tiger\r\n");
  EXPECT_EQ(result.exitCode, 0u) << result.errors;
  EXPECT_EQ(result.output, "adbuser.txt: the account of scott\r\n");
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(account(), "scott/tiger");
  EXPECT_EQ(content(), encrypted("\nscott\ntiger"));
}

TEST_F(Kivuser, ReplacesAFormerFile) {
  support::writeFile(path(), "the former one");
  EXPECT_EQ(run("write adbuser.txt scott", "tiger").exitCode, 0u);
  EXPECT_EQ(account(), "scott/tiger");
}

TEST_F(Kivuser, WritesTheFirstLineByAnOption) {
  EXPECT_EQ(run("write adbuser.txt scott --first \"a remark\"", "tiger").exitCode, 0u);
  EXPECT_EQ(content(), encrypted("a remark\nscott\ntiger"));
}

/// What comes on the standard input, and the password in it.
struct Input {
  char const * why;
  std::string bytes;
  std::string password;
};
void PrintTo(Input const & input, std::ostream * out) { *out << input.why; }

class KivuserInput : public Kivuser, public testing::WithParamInterface<Input> {};
TEST_P(KivuserInput, GivesThePasswordByItsFirstLine) {
  EXPECT_EQ(run("write adbuser.txt scott", GetParam().bytes).exitCode, 0u);
  EXPECT_EQ(account(), "scott/" + GetParam().password);
}
INSTANTIATE_TEST_SUITE_P(
    Of, KivuserInput,
    testing::Values(Input{"no line end", "tiger", "tiger"}, Input{"a line feed", "tiger\n", "tiger"},
                    Input{"two lines", "tiger\nmore\n", "tiger"}, Input{"blanks", " ti ger \r\n", " ti ger "},
                    Input{"a carriage return inside", "ti\rger\n", "ti\rger"}, Input{"an empty line", "\n", ""},
                    Input{"characters beyond ASCII", "t\xEFg\xEBr\n", "t\xEFg\xEBr"},
                    Input{"the longest", std::string(2'025, 'p') + "\n", std::string(2'025, 'p')}));

/// A call that writes nothing.
struct Refusal {
  char const * why;
  std::string arguments;
  std::string input;
  std::string message;
};
void PrintTo(Refusal const & refusal, std::ostream * out) { *out << refusal.why; }

class KivuserRefusal : public Kivuser, public testing::WithParamInterface<Refusal> {};
TEST_P(KivuserRefusal, EndsWith1AndLeavesTheFormerFile) {
  support::writeFile(path(), "the former one");
  auto const result = run(GetParam().arguments, GetParam().input);
  EXPECT_EQ(result.exitCode, 1u);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, GetParam().message);
  EXPECT_EQ(content(), "the former one");
  EXPECT_FALSE(support::exists(path() + ".new"));
}
INSTANTIATE_TEST_SUITE_P(
    Of, KivuserRefusal,
    testing::Values(Refusal{"no password", "write adbuser.txt scott", "",
                            "kivuser: there is no password on the standard input\r\n"},
                    Refusal{"an empty name", "write adbuser.txt \"\"", "tiger",
                            "kivuser: the name of the user is empty\r\n"},
                    Refusal{"a line feed in the name", "write adbuser.txt \"sc\nott\"", "tiger",
                            "kivuser: a line feed or a NUL cannot be kept\r\n"},
                    Refusal{"a line feed in the first line", "write adbuser.txt scott --first \"sc\nott\"", "tiger",
                            "kivuser: a line feed or a NUL cannot be kept\r\n"},
                    Refusal{"a NUL in the password", "write adbuser.txt scott", std::string("ti\0ger", 6),
                            "kivuser: a line feed or a NUL cannot be kept\r\n"},
                    Refusal{"a password that is too long", "write adbuser.txt scott", std::string(2'026, 'p'),
                            "kivuser: name and password are too long\r\n"}));

TEST_F(Kivuser, ThatCannotWriteSaysWhy) {
  auto const result = run("write missing\\adbuser.txt scott", "tiger");
  EXPECT_EQ(result.exitCode, 1u);
  EXPECT_TRUE(result.errors.starts_with("kivuser: missing\\adbuser.txt: cannot be written: ")) << result.errors;
}

TEST_F(Kivuser, RefusesANameThatTheCodePageLacks) {
  std::wstring command = L"\"" + std::wstring(MAX_PATH, L'\0');
  command.resize(1 + GetModuleFileNameW(nullptr, command.data() + 1, MAX_PATH));
  command = command.substr(0, command.rfind(L'\\')) + L"\\kivuser.exe\" write adbuser.txt sc\u4E2Dtt";
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process = {};
  ASSERT_TRUE(
      CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process));
  WaitForSingleObject(process.hProcess, INFINITE);
  DWORD code = 0;
  GetExitCodeProcess(process.hProcess, &code);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  EXPECT_EQ(code, 2u);
  EXPECT_FALSE(support::exists("adbuser.txt"));
}

// Checking

TEST_F(Kivuser, ChecksWhatItWrote) {
  run("write adbuser.txt scott", "tiger");
  auto const result = run("check adbuser.txt");
  EXPECT_EQ(result.exitCode, 0u);
  EXPECT_EQ(result.output, "adbuser.txt: the account of scott, no fault\r\n");
  EXPECT_EQ(result.errors, "");
}

TEST_F(Kivuser, NeverShowsAPassword) {
  auto const written = run("write adbuser.txt scott", "tiger");
  auto const checked = run("check adbuser.txt");
  EXPECT_EQ((written.output + written.errors + checked.output + checked.errors).find("tiger"), std::string::npos);
}

struct Fault {
  char const * why;
  std::string bytes;
  std::string message;
};
void PrintTo(Fault const & fault, std::ostream * out) { *out << fault.why; }

class KivuserFault : public Kivuser, public testing::WithParamInterface<Fault> {};
TEST_P(KivuserFault, IsReportedWithTheFile) {
  support::writeFile(path(), GetParam().bytes);
  auto const result = run("check adbuser.txt");
  EXPECT_EQ(result.exitCode, 1u);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, "adbuser.txt: " + GetParam().message + "\r\n");
  EXPECT_TRUE(account().starts_with("/")) << account();
}
std::string const kGood = encrypted("\nscott\ntiger");
std::string lines(int count) {
  return "the account has 3 lines, and the text has " + std::to_string(count) +
         ": it is damaged, or of a build with another key";
}
INSTANTIATE_TEST_SUITE_P(
    Of, KivuserFault,
    testing::Values(
        Fault{"nothing", "", "the file is empty"},
        Fault{"a line feed", kGood + "\n", "a line end follows the line: the library takes none"},
        Fault{"a carriage return too", kGood + "\r\n", "a line end follows the line: the library takes none"},
        Fault{"two line feeds", kGood + "\n\n", "byte 33 is no hexadecimal digit"},
        Fault{"a blank", " " + kGood, "byte 1 is no hexadecimal digit"},
        Fault{"a digit less", kGood.substr(1), "the line has 31 digits: they come in blocks of 32"},
        Fault{"a line that is too long", std::string(4'096, '0'), "the line has 4096 bytes: at most 4095 are read"},
        Fault{"one line", encrypted("scott"), lines(1)}, Fault{"two lines", encrypted("scott\ntiger"), lines(2)},
        Fault{"four lines", encrypted("\nscott\ntiger\n"), lines(4)},
        Fault{"no name", encrypted("\n\ntiger"), "the name of the user is empty"}));

TEST_F(Kivuser, ReportsAnIncompleteBlockThoughTheLibraryReadsIt) {
  support::writeFile(path(), kGood + "00");
  auto const result = run("check adbuser.txt");
  EXPECT_EQ(result.exitCode, 1u);
  EXPECT_EQ(result.errors, "adbuser.txt: the line has 34 digits: they come in blocks of 32\r\n");
  EXPECT_TRUE(account().starts_with("scott/"));
}

TEST_F(Kivuser, ChecksAFileWithoutAPassword) {
  support::writeFile(path(), encrypted("\nscott\n"));
  EXPECT_EQ(run("check adbuser.txt").exitCode, 0u);
}

TEST_F(Kivuser, SaysThatAFileIsMissing) {
  auto const result = run("check adbuser.txt");
  EXPECT_EQ(result.exitCode, 1u);
  EXPECT_TRUE(result.errors.starts_with("kivuser: adbuser.txt: cannot be read: ")) << result.errors;
}

// The command line

TEST_F(Kivuser, ExplainsItself) {
  auto const result = run("--help");
  EXPECT_EQ(result.exitCode, 0u);
  EXPECT_TRUE(result.output.starts_with("usage: kivuser write FILE NAME [--first TEXT]\r\n")) << result.output;
  EXPECT_EQ(result.errors, "");
}

class KivuserMisuse : public Kivuser, public testing::WithParamInterface<char const *> {};
TEST_P(KivuserMisuse, EndsWith2AndTheUsage) {
  auto const result = run(GetParam(), "tiger");
  EXPECT_EQ(result.exitCode, 2u);
  EXPECT_EQ(result.output, "");
  EXPECT_TRUE(result.errors.starts_with("usage: kivuser ")) << result.errors;
  EXPECT_EQ(content(), "(none)");
}
INSTANTIATE_TEST_SUITE_P(Of, KivuserMisuse,
                         testing::Values("", "write", "write adbuser.txt", "write adbuser.txt scott tiger",
                                         "write adbuser.txt scott --first", "write adbuser.txt scott --last x",
                                         "write adbuser.txt scott --first a b", "check", "check adbuser.txt more",
                                         "read adbuser.txt", "--help more", "WRITE adbuser.txt scott"));

// The console

/// The tool at a console of its own, seen from inside.
class KivuserConsole : public Kivuser {
protected:
  KivuserConsole() {
    EXPECT_TRUE(support::eventually([this] { return joined() && shown() == Lines{"Password:"}; }));
  }

  using Lines = std::vector<std::string>;
  Lines shown() const { return console->lines(); }
  void type(std::string const & text) const { console->type(text); }

  DWORD mode() const {
    HANDLE const input = CreateFileA("CONIN$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                     nullptr, OPEN_EXISTING, 0, nullptr);
    DWORD mode = 0;
    EXPECT_TRUE(GetConsoleMode(input, &mode));
    CloseHandle(input);
    return mode;
  }

  support::ChildProcess child{{.program = "kivuser",
                               .arguments = "write adbuser.txt scott",
                               .workingFolder = folder.path(),
                               .withoutStreams = true,
                               .creationFlags = CREATE_NEW_CONSOLE}};

private:
  /// Whether it has a console yet.
  bool joined() {
    try {
      if (!console)
        console.emplace(child.processId());
      return true;
    } catch (std::runtime_error const &) {
      return false;
    }
  }

  std::optional<support::ConsoleView> console;
};

TEST_F(KivuserConsole, AsksTwiceWithoutEcho) {
  type("tiger\r");
  EXPECT_TRUE(support::eventually([this] { return shown() == Lines{"Password:", "Once more:"}; }));
  type("tiger\r");
  EXPECT_EQ(child.waitForEnd(), 0u);
  EXPECT_EQ(shown(), (Lines{"Password:", "Once more:", "adbuser.txt: the account of scott"}));
  EXPECT_EQ(account(), "scott/tiger");
}

TEST_F(KivuserConsole, RefusesPasswordsThatDiffer) {
  type("tiger\rtigre\r");
  EXPECT_EQ(child.waitForEnd(), 1u);
  EXPECT_EQ(shown(), (Lines{"Password:", "Once more:", "kivuser: the two passwords differ"}));
  EXPECT_EQ(content(), "(none)");
}

TEST_F(KivuserConsole, TakesALongPassword) {
  std::string const password(700, 'p');
  type(password + "\r" + password + "\r");
  EXPECT_EQ(child.waitForEnd(), 0u);
  EXPECT_EQ(account(), "scott/" + password);
}

TEST_F(KivuserConsole, ConvertsWhatIsTypedToTheAnsiCodePage) {
  char umlaut = '\0'; // as the console has it
  WideCharToMultiByte(GetConsoleCP(), 0, L"\u00FC", 1, &umlaut, 1, nullptr, nullptr);
  std::string const password = std::string("t") + umlaut + "ger\r";
  type(password + password);
  EXPECT_EQ(child.waitForEnd(), 0u);
  EXPECT_EQ(account(), "scott/t\xFCger");
}

TEST_F(KivuserConsole, BringsTheEchoBack) {
  EXPECT_EQ(mode() & ENABLE_ECHO_INPUT, 0u);
  type("tiger\rtiger\r");
  EXPECT_EQ(child.waitForEnd(), 0u);
  EXPECT_NE(mode() & ENABLE_ECHO_INPUT, 0u);
}

TEST_F(KivuserConsole, BringsTheEchoBackWhenItIsEndedByCtrlC) {
  EXPECT_TRUE(GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0));
  child.waitForEnd(); // with the system's code, which is 0 under Wine
  EXPECT_NE(mode() & ENABLE_ECHO_INPUT, 0u);
  EXPECT_EQ(content(), "(none)");
}

} // namespace
