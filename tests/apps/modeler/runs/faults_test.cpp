// What the sample product says of files that are no process models.
#include "modeler_run.hpp"

#include "support/data/random.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>

namespace {

/// Opens a file of that content without windows and gives what a box would have said.
std::string faultOf(std::string const & content, std::string const & options = "") {
  support::TempFolder const folder;
  support::writeFile(folder / "model.txt", content);
  ProductRun run("modeler",
                 options + "\"-model" + folder / "model.txt" + "\" -no_dialogs -no_windows -log_no_dialogsdialogs.log");
  EXPECT_EQ(run.exitCode(), 0u);
  return run.file("dialogs.log").value_or("");
}

bool holds(std::string const & text, std::string const & part) { return text.find(part) != std::string::npos; }

struct BadModel {
  std::string content;
  char const * fault;
};
std::ostream & operator<<(std::ostream & out, BadModel const & row) { return out << row.fault; }

std::string const kNode = "start a \"A\"\r\n";

class ModelerFault : public testing::TestWithParam<BadModel> {};
TEST_P(ModelerFault, IsReportedWithItsLine) {
  std::string const log = faultOf(GetParam().content);
  EXPECT_TRUE(holds(log, GetParam().fault)) << log;
}
INSTANTIATE_TEST_SUITE_P(Words, ModelerFault,
                         testing::Values(BadModel{"process \"A\"\r\nround a \"A\"\r\n",
                                                  "Line 2: 'round' begins no statement."},
                                         BadModel{"process A\r\n", "Line 1: a text in quotation marks is missing."},
                                         BadModel{"start \"A\"\r\n", "Line 1: an identifier is missing."},
                                         BadModel{kNode + "end a \"B\"\r\n", "Line 2: 'a' is there twice."},
                                         BadModel{kNode + "flow a b\r\n", "Line 2: there is no 'b' above."}));
INSTANTIATE_TEST_SUITE_P(
    Durations, ModelerFault,
    testing::Values(BadModel{"# all of it\r\nactivity a \"A\" duration long\r\n",
                             "Line 2: a duration in minutes is missing."},
                    BadModel{"activity a \"A\" duration -5\r\n", "Line 1: a duration in minutes is missing."},
                    BadModel{"activity a \"A\" duration +\r\n", "Line 1: a duration in minutes is missing."},
                    BadModel{"activity a \"A\" duration 1.5\r\n", "Line 1: a duration in minutes is missing."},
                    BadModel{"activity a \"A\" duration 1000000000\r\n",
                             "Line 1: the duration 1000000000 is too long: the longest is 999999999 minutes."},
                    BadModel{"activity a \"A\" duration 99999999999999999999\r\n",
                             "Line 1: the duration 99999999999999999999 is too long"}));
INSTANTIATE_TEST_SUITE_P(
    Times, ModelerFault,
    testing::Values(
        BadModel{"# all of it\r\nactivity a \"A\" duration \"00:000:24:00:00\"\r\n",
                 "Line 2: '00:000:24:00:00' is not a duration of the form 00:000:00:00:00."},
        BadModel{"activity a \"A\" duration \"\"\r\n", "Line 1: '' is not a duration of the form"},
        BadModel{"activity a \"A\" duration \"1234567890:000:00:00:00\"\r\n",
                 "Line 1: the duration 1234567890:000:00:00:00 is too long: its years have at most nine digits."},
        BadModel{"activity a \"A\" duration \"00:000:00:00:00\r\n",
                 "Line 1: a text is not closed by a quotation mark on its line."},
        BadModel{"\r\ndate \"2023:02:29\"\r\n", "Line 2: '2023:02:29' is not a date of the form 2024:12:31."},
        BadModel{"date 2023\r\n", "Line 1: a text in quotation marks is missing."}));
INSTANTIATE_TEST_SUITE_P(
    Calendars, ModelerFault,
    testing::Values(BadModel{"process \"A\"\r\ncalendar\r\n", "Line 2: a calendar has days per year, at most 366, "
                                                              "and hours per day, at most 24."},
                    BadModel{"calendar 220\r\n", "Line 1: a calendar has days per year"},
                    BadModel{"calendar 0 8\r\n", "Line 1: a calendar has days per year"},
                    BadModel{"calendar 220 0\r\n", "Line 1: a calendar has days per year"},
                    BadModel{"calendar 220 -8\r\n", "Line 1: a calendar has days per year"},
                    BadModel{"calendar 367 8\r\n", "Line 1: a calendar has days per year"},
                    BadModel{"calendar 220 24.5\r\n", "Line 1: a calendar has days per year"},
                    BadModel{"calendar many 8\r\n", "Line 1: a calendar has days per year"},
                    BadModel{kNode + "calendar 220 8\r\n", "Line 2: the calendar has to stand above the first node."}));
INSTANTIATE_TEST_SUITE_P(
    EndsOfFiles, ModelerFault,
    testing::Values(BadModel{kNode + "process", "Line 2: a text in quotation marks is missing."},
                    BadModel{kNode + "activity", "Line 2: an identifier is missing."},
                    BadModel{kNode + "activity b", "Line 2: a text in quotation marks is missing."},
                    BadModel{kNode + "activity b \"B\" duration\r\n", "Line 2: a duration in minutes is missing."},
                    BadModel{kNode + "flow a", "Line 2: an identifier is missing."},
                    BadModel{kNode + "flow a a \"yes", "Line 2: a text is not closed by a quotation mark on its line."},
                    BadModel{kNode + "process \"A\\\"\r\n",
                             "Line 2: a text is not closed by a quotation mark on its line."},
                    // With a line break as its first byte and none as its last, the reader leaves the last line out.
                    BadModel{"\r\n" + kNode + "flow a a", "Line 3: the line end is missing."}));
INSTANTIATE_TEST_SUITE_P(Bytes, ModelerFault,
                         testing::Values(BadModel{"process \"A\r\nactivity a \"A\"\r\n",
                                                  "Line 1: a text is not closed by a quotation mark on its line."},
                                         BadModel{kNode + std::string("end b \"B\" \0 x\r\n", 15),
                                                  "Line 2: there is a NUL byte: this is not a text file."},
                                         BadModel{kNode + "# " + std::string(8190, 'x') + "\r\n",
                                                  "Line 2: the line has more than 8191 characters."},
                                         BadModel{"process \"A\"\n" + std::string(8191, 'x') + "\n",
                                                  "xxx...' begins no statement."}));

TEST(Modeler, TakesTheLongestDurationAndLine) {
  EXPECT_EQ(faultOf("activity a \"A\" duration 999999999\r\nend b \"B\" duration 0000000000007\r\n#" +
                    std::string(8190, 'x')),
            "");
}

TEST(Modeler, ReportsAModelThatCannotBeRead) {
  ProductRun run("modeler", "\"-modelno such file.txt\"");
  auto const box = modeler::answerOwnBox(run, IDOK);
  ASSERT_FALSE(box.texts.empty());
  EXPECT_TRUE(
      holds(box.texts.back(), "The process model 'no such file.txt' cannot be shown.\n\nThe file cannot be read."))
      << box.texts.back();
}

TEST(Modeler, ReportsFaultsInItsLanguage) {
  std::string const log = faultOf(kNode + "flow a b\r\n", "-langde ");
  EXPECT_TRUE(holds(log, "model.txt' kann nicht gezeigt werden.")) << log;
  EXPECT_TRUE(holds(log, "Zeile 2: dar\xFC"
                         "ber steht kein 'b'."))
      << log;
}

// A word of 8000 bytes, as a file of pictures may have it, and a path that is not much shorter than the longest.
TEST(Modeler, ShowsNoBoxWiderThanTheScreen) {
  support::Random random(11);
  std::string word(8000, ' ');
  for (char & c : word)
    c = static_cast<char>('0' + random() % 10);
  std::string const name = std::string(120, 'W') + ".txt";
  support::TempFolder const folder;
  support::writeFile(folder / name, word);
  ProductRun run("modeler", "\"-model" + folder / name + "\"");
  HWND const box = modeler::ownBox(run);
  ASSERT_TRUE(box);
  RECT const place = support::windowRectangle(box);
  EXPECT_GE(place.left, 0);
  EXPECT_LE(place.right, GetSystemMetrics(SM_CXSCREEN));
  support::pressButton(box, IDOK);
}

} // namespace
