// Jobs of text: their beginning and end, headers, and what happens without a printer.

#include "printtest.hpp"
#include "support/data/files.hpp"
#include "support/imports/import_hook.hpp"
#include "support/processes/child_process.hpp"
#include "sv/application.hpp"
#include "tools/winapi.hpp"

#include <algorithm>
#include <cctype>
#include <map>
#include <optional>

using kivtest::choosePrinter;
using kivtest::printLines;
using Lines = std::vector<std::string>;

namespace {

class Job : public support::PrintTest {};
class Header : public support::PrintTest {};
class SwitchesOfPrinting : public support::PrintTest {};
class NoPrinter : public support::PrintTest {};
class CrashReportOfAPrinter : public support::PrintTest {};

Lines linesOf(std::string const & output) {
  Lines lines;
  std::string line;
  for (char const c : output) {
    if (c == '\n')
      lines.push_back(std::move(line));
    if (c == '\n')
      line.clear();
    else if (c != '\r')
      line += c;
  }
  return lines;
}

std::string upper(std::string text) {
  for (char & c : text)
    c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text;
}

/// What printer_facts says to its words.
Lines facts(std::string const & words, std::map<std::string, std::optional<std::string>> const & environment = {}) {
  support::ProgramResult const result =
      support::runProgram({.program = "printer_facts", .arguments = words, .environment = environment});
  EXPECT_EQ(result.exitCode, 0u);
  return linesOf(result.output);
}

TEST_F(Job, StartedASecondTimeGoesOn) {
  support::PrintQueue const queue;
  choosePrinter(queue.name());
  TextPrinter printer("twice");
  ASSERT_TRUE(printer.Start());
  printer.PrintLine("one");
  EXPECT_TRUE(printer.Start());
  printer.PrintLine("two");
  printer.End();
  EXPECT_EQ(queue.job().lines(), (Lines{"one", "two"}));
  EXPECT_EQ(queue.jobCount(), 1u);
}

TEST_F(Job, ComesAfterAnother) {
  support::PrintQueue const queue;
  choosePrinter(queue.name());
  TextPrinter printer("again");
  for (char const * const text : {"one", "two"}) {
    ASSERT_TRUE(printer.Start());
    printer.PrintLine(text);
    printer.End();
  }
  EXPECT_EQ(queue.job(1).lines(), Lines{"one"});
  EXPECT_EQ(queue.job(2).lines(), Lines{"two"});
}

TEST_F(Job, IsEndedByTheDestructor) {
  support::PrintQueue const queue;
  choosePrinter(queue.name());
  {
    TextPrinter printer("destroyed");
    ASSERT_TRUE(printer.Start());
    printer.Print("kept");
  }
  EXPECT_EQ(queue.job().lines(), Lines{"kept"});
}

TEST_F(Job, LeavesTheStateOfThePrinterAsItWas) {
  support::PrintQueue const queue;
  choosePrinter(queue.name());
  KivPrinter & printer = *Kiv_GetPrinter(true);
  ASSERT_TRUE(printLines({"line"}));
  printer.ChangeMapMode(SV::MAP_10TH_MM);
  printer.ChangeFont(SV::Font("Arial", {0, 70}));
  SV::Size const size = printer.GetTextSize("text");
  ASSERT_TRUE(printLines({"line"}));
  EXPECT_EQ(printer.GetMapMode().GetMapUnit(), SV::MAP_10TH_MM);
  EXPECT_EQ(printer.GetTextSize("text"), size);
  support::PrintedWord const before = queue.job(1).papers.at(0).words.at(0);
  support::PrintedWord const after = queue.job(2).papers.at(0).words.at(0);
  EXPECT_NEAR(after.x, before.x, 0.1) << "whatever unit the printer had";
  EXPECT_NEAR(after.y, before.y, 0.1);
}

int WINAPI noPage(HDC) { return 0; }

/// What the window library calls to begin a page.
void beginPagesBy(int(WINAPI * function)(HDC)) {
  support::replaceImports(GetModuleHandleA("SV0105.dll"), "gdi32.dll",
                          {{"StartPage", reinterpret_cast<void *>(function)}});
}

TEST_F(Job, WhoseFirstPageDoesNotBeginIsCancelled) {
  support::PrintQueue const queue;
  choosePrinter(queue.name());
  KivPrinter & printer = *Kiv_GetPrinter(true);
  beginPagesBy(noPage);
  TextPrinter text("refused");
  EXPECT_FALSE(text.Start());
  beginPagesBy(StartPage);
  printer.ChangeMapMode(SV::MAP_10TH_MM);
  printer.Pop(); // nothing is left to be put back
  EXPECT_EQ(printer.GetMapMode().GetMapUnit(), SV::MAP_10TH_MM);
  EXPECT_TRUE(printLines({"kept"}));
  EXPECT_EQ(queue.job().lines(), Lines{"kept"});
  EXPECT_EQ(queue.jobCount(), 1u);
}

TEST_F(Job, HasItsNameInTheQueue) {
  support::PrintQueue const queue;
  choosePrinter(queue.name());
  TextPrinter printer("Name of the job");
  ASSERT_TRUE(printer.Start());
  printer.PrintLine("text");
  printer.End();
  EXPECT_EQ(queue.job().title, "Name of the job");
}

TEST_F(Job, ThatCannotStartLeavesNothing) {
  support::PrintQueue const queue;
  choosePrinter(queue.name());
  KivPrinter & printer = *Kiv_GetPrinter(true);
  ASSERT_TRUE(printer.StartJob("of somebody else"));
  printer.ChangeMapMode(SV::MAP_10TH_MM);
  {
    TextPrinter text("refused");
    EXPECT_FALSE(text.Start());
  }
  EXPECT_EQ(printer.GetMapMode().GetMapUnit(), SV::MAP_10TH_MM);
  printer.ChangeMapMode(SV::MAP_PIXEL);
  printer.Pop(); // nothing is left to be put back
  EXPECT_EQ(printer.GetMapMode().GetMapUnit(), SV::MAP_PIXEL);
  ASSERT_TRUE(printer.StartPage()) << "the other job goes on";
  EXPECT_TRUE(printer.EndJob());
}

TEST_F(Job, OnAPrinterThatGoesInBetweenIsOver) {
  support::PrintQueue const queue;
  choosePrinter(queue.name());
  TextPrinter printer("lost");
  ASSERT_TRUE(printer.Start());
  printer.PrintLine("lost");
  Kiv_DeletePrinter();
  printer.PrintLine("nowhere");
  printer.End();
  EXPECT_EQ(Kiv_GetPrinter(false), nullptr) << "only Start makes one";
  EXPECT_TRUE(printLines({"kept"}));
  EXPECT_EQ(queue.job().lines(), Lines{"kept"});
}

TEST_F(Job, OnAPrinterThatIsTakenAwayWithinItIsLost) {
  support::PrintQueue lost;
  support::PrintQueue const queue;
  choosePrinter(lost.name());
  TextPrinter printer("lost");
  ASSERT_TRUE(printer.Start());
  printer.PrintLine("lost");
  lost.remove();
  printer.PrintLine("nothing is noticed yet");
  printer.End();
  EXPECT_EQ(lost.jobCount(), 0u);
  Kiv_ReplacePrinter(new KivPrinter(queue.name().c_str()));
  EXPECT_TRUE(printLines({"kept"}));
  EXPECT_EQ(queue.job().lines(), Lines{"kept"});
}

TEST_F(Job, WithoutAStartPrintsNothing) {
  support::PrintQueue const queue;
  choosePrinter(queue.name());
  ASSERT_NE(Kiv_GetPrinter(true), nullptr);
  {
    TextPrinter printer("not started");
    printer.PrintLine("one");
    printer.End();
  }
  ASSERT_TRUE(printLines({"kept"}));
  EXPECT_EQ(queue.job(1).lines(), Lines{"kept"});
  EXPECT_EQ(queue.jobCount(), 1u);
}

TEST_F(NoPrinter, LetsAllOperationsDoNothing) {
  EXPECT_EQ(facts("names get existing driver start one newline header end existing",
                  {{"CUPS_SERVER", support::kNoPrintServer}}),
            (Lines{"get: none", "existing: none", "driver: ", "start: no", "existing: none"}));
}

TEST_F(NoPrinter, OfThatNameIsNoPrinter) {
  support::PrintQueue const queue;
  EXPECT_EQ(facts("-PnoSuchPrinter get start one end"), (Lines{"get: none", "start: no"}));
}

TEST_F(NoPrinter, ForgetsWhatIsPrintedWithoutOne) {
  support::PrintQueue const queue;
  choosePrinter(queue.name());
  TextPrinter printer("late");
  printer.PrintLine("early");
  ASSERT_TRUE(printer.Start());
  printer.PrintLine("late");
  printer.End();
  EXPECT_EQ(queue.job().lines(), Lines{"late"});
}

TEST_F(SwitchesOfPrinting, FindThePrinterOfTheCommandLineInAnyCase) {
  support::PrintQueue const queue("-Case");
  EXPECT_EQ(facts("-P" + upper(queue.name()) + " get"), Lines{"get: " + queue.name()});
  EXPECT_EQ(facts("-case-sensitive-printers -P" + upper(queue.name()) + " get"), Lines{"get: none"});
  EXPECT_EQ(facts("-case-sensitive-printers -P" + queue.name() + " get"), Lines{"get: " + queue.name()});
}

TEST_F(SwitchesOfPrinting, ChooseTheListOfPrinters) {
  support::PrintQueue const queue;
  SV::Printer::GetNames();
  std::string const old = queue.name() + "-old";
  ASSERT_TRUE(WriteProfileStringA("devices", old.c_str(), "driver,port"));
  std::string const connection = "Printers\\Connections\\,," + queue.name() + ",Laser";
  HKEY key = nullptr;
  ASSERT_EQ(RegCreateKeyA(HKEY_CURRENT_USER, connection.c_str(), &key), ERROR_SUCCESS);
  RegCloseKey(key);
  auto const lists = [](char const * words, std::string const & name) {
    Lines const lines = facts(words);
    return std::find(lines.begin(), lines.end(), "names: " + name) != lines.end();
  };
  std::string const remote = "\\\\" + queue.name() + "\\Laser";
  for (char const * const words : {"names", "-legacy-printing names", "-registry-printers names"})
    EXPECT_TRUE(lists(words, queue.name())) << words;
  EXPECT_FALSE(lists("names", old));
  EXPECT_TRUE(lists("-legacy-printing names", old));
  EXPECT_FALSE(lists("-registry-printers names", old));
  EXPECT_FALSE(lists("names", remote));
  EXPECT_FALSE(lists("-legacy-printing names", remote));
  EXPECT_TRUE(lists("-registry-printers names", remote));
  EXPECT_TRUE(lists("-legacy-printing /registry-printers names", remote));
  WriteProfileStringA("devices", old.c_str(), nullptr);
  RegDeleteKeyA(HKEY_CURRENT_USER, connection.c_str());
}

TEST_F(SwitchesOfPrinting, PrintInEveryWay) {
  for (char const * const option : {"", "-legacy-printing ", "-registry-printers ", "-case-sensitive-printers "}) {
    support::PrintQueue const queue; // that no program has seen before
    EXPECT_EQ(facts(option + ("-P" + queue.name()) + " start text end"), Lines{"start: yes"}) << option;
    EXPECT_EQ(queue.job().lines(), Lines{"text"});
  }
}

TEST_F(CrashReportOfAPrinter, NamesThePrinterAndItsDriver) {
  support::PrintQueue const queue;
  support::TempFolder const folder;
  Lines const said = facts("-P" + queue.name() + " get driver report",
                           {{"TMP", folder.path()}, {"TEMP", folder.path()}, {"KIVDUMP_NO_ENCRYPT", "1"}});
  ASSERT_EQ(said.size(), 2u);
  std::string const driver = said[1].substr(said[1].find(' ') + 1);
  EXPECT_FALSE(driver.empty());
  std::string const report = support::readFile(folder / "printer_facts.exe.log").value_or("");
  EXPECT_NE(report.find("  Printer: " + queue.name() + "\r\n  Printer driver: " + driver + "\r\n\r\n"),
            std::string::npos);
}

TEST_F(CrashReportOfAPrinter, NamesNoneAfterItWasDeleted) {
  support::PrintQueue const queue;
  support::TempFolder const folder;
  facts("-P" + queue.name() + " get delete report",
        {{"TMP", folder.path()}, {"TEMP", folder.path()}, {"KIVDUMP_NO_ENCRYPT", "1"}});
  std::string const report = support::readFile(folder / "printer_facts.exe.log").value_or("");
  EXPECT_NE(report.find("  Printer: (NULL)\r\n  Printer driver: \r\n\r\n"), std::string::npos);
}

support::PrintedWord wordOf(support::PrintedJob const & job, std::string const & text) {
  for (support::PrintedWord const & word : job.papers.at(0).words)
    if (word.text == text)
      return word;
  ADD_FAILURE() << "nowhere: " << text;
  return {};
}

/// A header between two looks at the clock, so that it holds one of two times.
void expectHeader(SV::International formats) {
  auto const expected = [&] {
    formats.ChangeDateCentury(true);
    return "Title      Otto  " + formats.GetDate(SV::Date()) + "  " + formats.GetTime(SV::Time(), true) + "\n\n";
  };
  TextPrinter::SetUserName("Otto");
  bool const found = support::eventually(
      [&] {
        SV::String const before = expected();
        SV::String const header = TextPrinter::GetHeader("Title");
        return header == before;
      },
      5);
  EXPECT_TRUE(found) << TextPrinter::GetHeader("Title").c_str() << " is not " << expected().c_str();
}

TEST_F(Header, HasTitleUserDateAndTime) {
  EXPECT_EQ(TextPrinter::GetUserName(), "");
  EXPECT_TRUE(std::string(TextPrinter::GetHeader("Title").c_str()).starts_with("Title        "));
  expectHeader(SV::International());
}

TEST_F(Header, HasTheFormatsOfTheApplication) {
  for (auto const & [country, language] : {std::pair<int, int>{44, 2057}, {49, 1031}}) {
    SV::International const formats(static_cast<unsigned short>(country), static_cast<unsigned short>(language));
    SV::Application::ChangeAppInternational(formats);
    expectHeader(formats);
  }
}

TEST_F(Header, HasFourDigitsForTheYearWhateverTheUserSees) {
  SV::International formats(49, 1031);
  formats.ChangeDateCentury(false);
  SV::Application::ChangeAppInternational(formats);
  std::string const year = std::to_string(SV::Date().GetYear());
  EXPECT_NE(std::string(TextPrinter::GetHeader("Title").c_str()).find('.' + year), std::string::npos);
}

TEST_F(Header, IsPrintedWithAnEmptyLineBelow) {
  support::PrintQueue const queue;
  choosePrinter(queue.name());
  SV::Application::ChangeAppInternational(SV::International(49, 1031));
  TextPrinter::SetUserName("J\xF6rg");
  TextPrinter printer("header");
  ASSERT_TRUE(printer.Start());
  printer.PrintHeader("Bericht");
  printer.PrintLine("text");
  printer.End();
  support::PrintedJob const job = queue.job();
  EXPECT_EQ(job.lines().at(1), "text");
  support::PrintedWord const title = wordOf(job, "Bericht");
  support::PrintedWord const user = wordOf(job, "J\xC3\xB6rg");
  support::PrintedWord const date = wordOf(job, SV::International(49, 1031).GetDate(SV::Date()).c_str());
  double const character = (user.x - title.x) / 13; // seven letters and six spaces
  EXPECT_NEAR(date.x - user.x, 6 * character, character / 4);
  support::PrintedWord const text = wordOf(job, "text");
  EXPECT_NEAR(text.x, title.x, 0.1);
  EXPECT_NEAR(text.y - title.y, 2 * 4 / 25.4 * 72, 0.3);
}

} // namespace
