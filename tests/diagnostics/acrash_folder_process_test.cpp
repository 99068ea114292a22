// Temporary folders that are not as they should be, and the archive.

#include "diagnostics/crash_run.hpp"

#include <gtest/gtest.h>

#include <algorithm>

using namespace kivtest;

namespace {

std::string unableText(CrashRun const & run, int code) {
  return "Unable to create dump file\n  '" + run.reportPath() + "'\nErrorcode " + std::to_string(code) +
         "!\n\nMaybe a dump file was created!!\nCheck for the file existance anyway!";
}

/// What stderr gets where no file can be made.
Lines const kNoFiles{"[exception] An exception of type 0xC0000005 occured", "CreateMiniDump dmp file failed",
                     "[exception] finished dumpfile creation"};

constexpr auto kAccessViolation = static_cast<unsigned long>(STATUS_ACCESS_VIOLATION);

TEST(CrashFolder, ThatIsMissingLeavesABoxAlone) {
  CrashRun const run({.words = "read", .temporaryFolder = "missing", .makesTemporaryFolder = false});
  EXPECT_EQ(run.exitCode(), kAccessViolation);
  EXPECT_EQ(run.errors(), kNoFiles);
  ASSERT_EQ(run.boxes().size(), 1u);
  EXPECT_EQ(run.boxes()[0].texts, Lines{unableText(run, ERROR_PATH_NOT_FOUND)});
  EXPECT_EQ(support::entriesOf(run.workingFolder()), Lines{}) << "the folder is not made";
}

TEST(CrashFolder, ThatIsMissingUnderSuppressionLeavesNothing) {
  CrashRun const run({.words = "suppress minidump read", .temporaryFolder = "missing", .makesTemporaryFolder = false});
  EXPECT_EQ(run.output(), (Lines{"ready", "minidump 59"}));
  EXPECT_EQ(run.errors(), kNoFiles);
  EXPECT_EQ(run.boxes().size(), 0u);
}

TEST(CrashFolder, WhoseReportIsReadOnlyStillGetsTheMinidump) {
  CrashRun const run({.words = "folder read"});
  EXPECT_EQ(run.exitCode(), kAccessViolation);
  ASSERT_EQ(run.boxes().size(), 2u);
  EXPECT_EQ(run.boxes()[0].texts, Lines{unableText(run, ERROR_ACCESS_DENIED)});
  EXPECT_EQ(support::readFile(run.fileEndingIn(".dmp")).value_or("").substr(0, 4), "MDMP");
}

TEST(CrashFolder, ThatIsFullLeavesAnEmptyReport) {
  CrashRun const run(quick("fail:WriteFile read"));
  EXPECT_EQ(run.exitCode(), kAccessViolation);
  EXPECT_EQ(run.errors(), errorLines(STATUS_ACCESS_VIOLATION, false)) << "the result of a write is not looked at";
  EXPECT_EQ(support::readFile(run.reportPath()), "");
}

TEST(CrashFolder, WithABlankHasReportAndMinidump) {
  CrashRun const run({.words = "watch read", .temporaryFolder = "a folder"});
  EXPECT_EQ(run.exitCode(), kAccessViolation);
  ASSERT_EQ(run.files().size(), 2u);
  EXPECT_NE(run.report().find("\r\n[DONE]\r\n"), std::string::npos);
  EXPECT_EQ(support::readFile(run.fileEndingIn(".dmp")).value_or("").substr(0, 4), "MDMP");
  std::string const base = run.fileEndingIn(".dmp").substr(0, run.fileEndingIn(".dmp").size() - 4);
  EXPECT_EQ(run.output().back(), "process " + support::binFolder() + "\\tools\\zip\\7za.exe a -y -tzip " + base +
                                     ".crash " + base + ".dmp " + run.reportPath());
  ASSERT_EQ(run.boxes().size(), 1u);
  EXPECT_EQ(run.boxes()[0].texts, Lines{"A crash dump file was written to\n  '" + base + ".crash'\n"});
}

/// A name that makes the path of the temporary folder, with its backslash, so long.
std::string folderOfLength(std::size_t length) {
  support::TempFolder const beside; // as long as that of a run
  return std::string(length - beside.path().size() - 2, 'f');
}

TEST(CrashFolder, WithALongNameHasItsFiles) {
  // The longest with which the names of all files are within MAX_PATH: "crash_ways.exe", 18 of the time and ".crash".
  CrashRun const run({.words = "emptydump suppress read", .temporaryFolder = folderOfLength(259 - 14 - 18 - 6)});
  EXPECT_EQ(run.files().size(), 2u);
  EXPECT_NE(run.report().find("\r\n[DONE]\r\n"), std::string::npos);
  EXPECT_EQ(run.boxes()[0].texts,
            Lines{"A crash dump file was written to\n  '" +
                  run.fileEndingIn(".dmp").substr(0, run.fileEndingIn(".dmp").size() - 4) + ".crash'\n"});
}

TEST(CrashFolder, WhoseReportJustFitsHasIt) {
  CrashRun const run([] {
    CrashStart start = quick("read");
    start.temporaryFolder = folderOfLength(259 - 18);
    return start;
  }());
  EXPECT_EQ(run.reportPath().size(), 259u);
  EXPECT_NE(run.report().find("\r\n[DONE]\r\n"), std::string::npos);
}

TEST(CrashFolder, WhoseNameIsTooLongIsReplacedByTheWorkingFolder) {
  CrashRun const run(quick("read", {{"TMP", "c:\\" + std::string(300, 'x')}}));
  EXPECT_EQ(run.exitCode(), kAccessViolation);
  Lines const files = support::entriesOf(run.workingFolder());
  ASSERT_EQ(files.size(), 2u);
  EXPECT_EQ(form(files[0]), "crash_ways.exe.99999999999999999.dmp");
  EXPECT_EQ(files[1], "crash_ways.exe.log");
}

#ifdef KIVARA_ARCHIVER

std::string archiver() {
  std::string path = KIVARA_ARCHIVER;
  std::replace(path.begin(), path.end(), '/', '\\');
  return path;
}

/// The files of an archive, unpacked by the archiver itself into a new folder.
std::vector<std::pair<std::string, std::string>> unpacked(std::string const & archive) {
  support::TempFolder const folder;
  EXPECT_EQ(
      support::runProgram({.program = archiver(), .arguments = "x -y -o\"" + folder.path() + "\" \"" + archive + '"'})
          .exitCode,
      0u);
  std::vector<std::pair<std::string, std::string>> files;
  for (auto const & name : support::entriesOf(folder.path()))
    files.emplace_back(name, support::readFile(folder / name).value_or("unreadable"));
  return files;
}

std::string nameOf(std::string const & path) { return path.substr(path.rfind('\\') + 1); }

TEST(CrashArchive, HoldsMinidumpReportAndLogOfTheDatabase) {
  CrashRun const run({.words = "suppress read",
                      .filesBefore = {{"kivdb.log", "a line of the database"}},
                      .temporaryFolder = "temp",
                      .archiver = archiver()});
  EXPECT_EQ(run.exitCode(), kAccessViolation);
  std::string const dump = run.fileEndingIn(".dmp");
  std::string const archive = run.fileEndingIn(".crash");
  EXPECT_EQ(run.files(), (Lines{nameOf(archive), nameOf(dump), "crash_ways.exe.log", "kivdb.log"}))
      << "what was packed stays";
  EXPECT_EQ(archive, dump.substr(0, dump.size() - 4) + ".crash");
  ASSERT_EQ(run.boxes().size(), 1u);
  EXPECT_EQ(run.boxes()[0].texts, Lines{"A crash dump file was written to\n  '" + archive + "'\n"});
  auto const files = unpacked(archive);
  ASSERT_EQ(files.size(), 3u);
  EXPECT_EQ(files[0], std::pair(nameOf(dump), support::readFile(dump).value_or("")));
  EXPECT_EQ(files[1], std::pair(std::string("crash_ways.exe.log"), run.report()));
  EXPECT_EQ(files[2], std::pair(std::string("kivdb.log"), std::string("a line of the database")));
}

TEST(CrashArchive, IsNotMadeWithABlankInTheTemporaryFolder) {
  CrashRun const run({.words = "watch suppress read", .temporaryFolder = "a folder"});
  std::string command = run.output().back().substr(sizeof "process " - 1);
  std::string const named = support::binFolder() + "\\tools\\zip\\7za.exe";
  ASSERT_EQ(command.substr(0, named.size()), named);
  command.replace(0, named.size(), archiver());
  support::ChildProcess const packing({.program = archiver(), .commandLine = command});
  EXPECT_NE(packing.waitForEnd(), 0u);
  EXPECT_EQ(run.fileEndingIn(".crash"), "");
  EXPECT_EQ(run.files().size(), 2u) << "the other two are there";
}

#endif

} // namespace
