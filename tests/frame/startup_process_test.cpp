#include "frame/product_run.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <ostream>

namespace {

using Lines = std::vector<std::string>;

Lines const kWholeRun{"prepareApplication", "runApplication"};

TEST(PidFile, HoldsTheProcessIdAndALineEnd) {
  ProductRun run("frame_facts", "-pidfileout.pid");
  unsigned long const id = run.child().processId();
  EXPECT_EQ(run.exitCode(), 0u);
  EXPECT_EQ(run.file("out.pid"), std::to_string(id) + "\r\n");
}

TEST(PidFile, ReplacesAnOlderOne) {
  support::TempFolder const folder;
  support::writeFile(folder / "out.pid", "an older and longer text");
  ProductRun run("frame_facts", "\"-pidfile" + folder / "out.pid" + '"');
  unsigned long const id = run.child().processId();
  EXPECT_EQ(run.exitCode(), 0u);
  EXPECT_EQ(support::readFile(folder / "out.pid"), std::to_string(id) + "\r\n");
}

TEST(TraceFile, IsThereAndEmptyWhenNothingIsTraced) {
  support::TempFolder const folder;
  support::writeFile(folder / "out.txt", "an older trace");
  ProductRun run("frame_facts", "-trace \"-trf" + folder / "out.txt" + '"');
  EXPECT_EQ(run.exitCode(), 0u);
  EXPECT_EQ(support::readFile(folder / "out.txt"), "");
}

TEST(TraceFile, NoneIsWrittenWithoutAName) {
  ProductRun run("frame_facts", "-trace -trf -pidfile");
  EXPECT_EQ(run.exitCode(), 0u);
  EXPECT_EQ(run.record(), kWholeRun);
  WIN32_FIND_DATAA entry;
  int files = 0;
  HANDLE const search = FindFirstFileA(run.path("*").c_str(), &entry);
  do
    files += !(entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY);
  while (FindNextFileA(search, &entry));
  FindClose(search);
  EXPECT_EQ(files, 1); // the record
}

/// Ways in which the file of an option cannot be written.
class UnwritableFile : public testing::TestWithParam<char const *> {};

TEST_P(UnwritableFile, InAMissingFolderDoesNotStopTheStart) {
  ProductRun run("frame_facts", std::string(GetParam()) + "no\\such\\folder\\out.txt");
  EXPECT_EQ(run.exitCode(), 0u);
  EXPECT_EQ(run.record(), kWholeRun);
}

TEST_P(UnwritableFile, WithANameThatNoFileCanHaveDoesNotStopTheStart) {
  ProductRun run("frame_facts", std::string(GetParam()) + "a<b>|?*:.txt");
  EXPECT_EQ(run.exitCode(), 0u);
  EXPECT_EQ(run.record(), kWholeRun);
}

TEST_P(UnwritableFile, ThatIsAFolderDoesNotStopTheStart) {
  support::TempFolder const folder;
  ProductRun run("frame_facts", '"' + std::string(GetParam()) + folder.path() + '"');
  EXPECT_EQ(run.exitCode(), 0u);
  EXPECT_EQ(run.record(), kWholeRun);
}

TEST_P(UnwritableFile, ThatIsInUseStaysAndDoesNotStopTheStart) {
  support::TempFolder const folder;
  support::writeFile(folder / "out.txt", "before");
  {
    support::FileInUse const guard(folder / "out.txt");
    ProductRun run("frame_facts", '"' + std::string(GetParam()) + folder / "out.txt" + '"');
    EXPECT_EQ(run.exitCode(), 0u);
    EXPECT_EQ(run.record(), kWholeRun);
  }
  EXPECT_EQ(support::readFile(folder / "out.txt"), "before");
}

TEST_P(UnwritableFile, ThatIsReadOnlyDoesNotStopTheStart) {
  support::TempFolder const folder;
  support::writeFile(folder / "out.txt", "before");
  support::setReadOnly(folder / "out.txt", true);
  ProductRun run("frame_facts", '"' + std::string(GetParam()) + folder / "out.txt" + '"');
  EXPECT_EQ(run.exitCode(), 0u);
  EXPECT_EQ(run.record(), kWholeRun);
}

INSTANTIATE_TEST_SUITE_P(Trace, UnwritableFile, testing::Values("-trf"));
INSTANTIATE_TEST_SUITE_P(Pid, UnwritableFile, testing::Values("-pidfile"));

struct Height {
  char const * arguments;
  int height; ///< before it is scaled to the screen
};
std::ostream & operator<<(std::ostream & out, Height const & row) { return out << row.arguments; }

class FontHeight : public testing::TestWithParam<Height> {};
TEST_P(FontHeight, IsTakenFrom4To48) {
  ProductRun run("frame_facts", GetParam().arguments);
  int const scale = std::stoi(run.fact("scaled 100"));
  EXPECT_EQ(run.fact("height"), std::to_string(GetParam().height * scale / 100));
  EXPECT_EQ(run.fact("width"), "0");
}
INSTANTIATE_TEST_SUITE_P(Options, FontHeight,
                         testing::Values(Height{"", 12}, Height{"-h3", 12}, Height{"-h4", 4}, Height{"-h48", 48},
                                         Height{"-h49", 12}, Height{"-h-5", 12}, Height{"-hello", 12},
                                         Height{"/h20", 20}, Height{"-hx -h9", 12}, Height{"-H20", 12},
                                         Height{"-h99999999999", 12}));

TEST(ApplicationFont, IsThatOfTheSystemUnlessTheCommandLineNamesOne) {
  EXPECT_EQ(ProductRun("frame_facts", "").fact("face"), "Segoe UI");
  EXPECT_EQ(ProductRun("frame_facts", "-fCourier").fact("face"), "Courier");
}

TEST(ApplicationFont, HasTheWindowColoursAndNoBackground) {
  ProductRun run("frame_facts", "");
  EXPECT_EQ(run.fact("colour"), "20");
  EXPECT_EQ(run.fact("fill colour"), "21");
  EXPECT_EQ(run.fact("transparent"), "1");
}

TEST(CharSet, IsTakenFromTheCommandLineBeforeTheResources) {
  EXPECT_EQ(ProductRun("frame_facts", "-charset204").fact("charset"), "204");
  EXPECT_EQ(ProductRun("frame_facts", "").fact("charset"), "238");
}

TEST(CharSet, OnTheCommandLineNeedsNoResource) {
  ProductRun run("frame_facts", "-charset0", {{"RESOURCES", "frame_texts_no_charset.dll"}});
  EXPECT_EQ(run.fact("charset"), "0");
  EXPECT_EQ(run.exitCode(), 0u);
}

TEST(CharSet, KeepsAllElseOfTheFont) {
  ProductRun run("frame_facts", "-charset204 -fCourier -h20");
  EXPECT_EQ(run.fact("face"), "Courier");
  EXPECT_EQ(run.fact("height"), std::to_string(20 * std::stoi(run.fact("scaled 100")) / 100));
  EXPECT_EQ(run.fact("transparent"), "1");
}

TEST(ButtonLabels, ComeFromTheResources) {
  ProductRun run("frame_facts", "");
  EXPECT_EQ(run.fact("ok"), "Accept");
  EXPECT_EQ(run.fact("cancel"), "Give up");
  EXPECT_EQ(run.fact("help"), "Explain");
}

struct Suppression {
  char const * gui;
  char const * arguments;
  char const * noDialogs;
  char const * noWindows;
  char const * log;
};
std::ostream & operator<<(std::ostream & out, Suppression const & row) { return out << row.gui << row.arguments; }

class SuppressionSettings : public testing::TestWithParam<Suppression> {};
TEST_P(SuppressionSettings, ReachTheToolkit) {
  ProductRun run("frame_facts", GetParam().arguments, {{"GUI", GetParam().gui}});
  EXPECT_EQ(run.fact("no dialogs"), GetParam().noDialogs);
  EXPECT_EQ(run.fact("no windows"), GetParam().noWindows);
  EXPECT_EQ(run.fact("dialog log"), GetParam().log);
}
INSTANTIATE_TEST_SUITE_P(
    Settings, SuppressionSettings,
    testing::Values(Suppression{"1", "", "0", "0", ""}, Suppression{"1", "-no_dialogs", "1", "0", ""},
                    Suppression{"1", "-no_windows", "0", "1", ""}, Suppression{"0", "", "1", "1", ""},
                    Suppression{"0", "-log_no_dialogsfirst.log -log_childsecond.log", "1", "1", "first.log"},
                    Suppression{"0", "-log_childsecond.log", "1", "1", "second.log"},
                    Suppression{"1", "-no_dialogs -log_no_dialogsfirst.log", "1", "0", "first.log"}));

} // namespace
