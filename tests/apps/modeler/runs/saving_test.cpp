// The sample product saves its models.
#include "modeler_run.hpp"

#include "tools/winapi.hpp"

#include <gtest/gtest.h>

namespace {

using modeler::answerOwnBox;
using modeler::mainWindow;
using modeler::ownBox;

constexpr char kSmallModel[] = "process \"A \\\"b\\\"\"\r\ndate \"2024:03:05\"\r\ncalendar 220.5 8\r\nstart a \"A\"\r\n"
                               "activity b \"B\" duration 5\r\nactivity e \"E\" duration \"01:002:03:04:05\"\r\n"
                               "decision c \"C\"\r\nend d \"D\"\r\nflow a b\r\nflow b c \"go \\\"on\\\"\"\r\n";

TEST(Modeler, SavesItsModelAsItWasRead) {
  support::TempFolder const folder;
  support::writeFile(folder / "model.txt", kSmallModel);
  ProductRun run("modeler", "\"-model" + folder / "model.txt" + "\" -savecopy.txt -journalout.log");
  HWND const window = mainWindow(run);
  EXPECT_TRUE(support::closeWindow(window));
  EXPECT_EQ(run.exitCode(), 0u);
  EXPECT_EQ(run.file("copy.txt").value_or(""), kSmallModel);
  EXPECT_NE(run.file("out.log").value_or("").find("saved: copy.txt"), std::string::npos);
}

/// Saves a model under the name of a file that is there, and gives that answer. The file afterwards.
std::string saveOverAFile(char const * answer) {
  support::TempFolder const folder;
  support::writeFile(folder / "model.txt", kSmallModel);
  support::writeFile(folder / "old.txt", "old");
  ProductRun run("modeler", "\"-model" + folder / "model.txt" + "\" \"-save" + folder / "old.txt" + "\"");
  HWND const box = ownBox(run);
  EXPECT_EQ(support::readBox(box).buttons.size(), 2u);
  std::string const text = support::readBox(box).texts.back();
  EXPECT_NE(text.find("old.txt is there already.\n\nOverwrite it?"), std::string::npos) << text;
  EXPECT_TRUE(support::pressButton(box, answer));
  EXPECT_TRUE(support::waitUntilGone(box));
  EXPECT_TRUE(support::closeWindow(mainWindow(run)));
  EXPECT_EQ(run.exitCode(), 0u);
  return support::readFile(folder / "old.txt").value_or("");
}

TEST(Modeler, OverwritesAFileWhenItsUserAgrees) { EXPECT_EQ(saveOverAFile("Yes"), kSmallModel); }

TEST(Modeler, LeavesAFileAloneWhenItsUserDoesNotAgree) { EXPECT_EQ(saveOverAFile("No"), "old"); }

TEST(Modeler, OverwritesNothingUnderSuppressionAndSaysSoInTheLog) {
  support::TempFolder const folder;
  support::writeFile(folder / "model.txt", kSmallModel);
  support::writeFile(folder / "old.txt", "old");
  ProductRun run("modeler", "\"-model" + folder / "model.txt" + "\" \"-save" + folder / "old.txt" +
                                "\" -no_dialogs -log_no_dialogsdialogs.log");
  EXPECT_TRUE(support::closeWindow(mainWindow(run)));
  EXPECT_EQ(run.exitCode(), 0u);
  EXPECT_EQ(support::readFile(folder / "old.txt").value_or(""), "old");
  EXPECT_NE(run.file("dialogs.log").value_or("").find("old.txt is there already.\r\n\r\nOverwrite it?\r\n"),
            std::string::npos);
}

TEST(Modeler, ReportsAFileThatCannotBeWritten) {
  support::TempFolder const folder;
  support::writeFile(folder / "model.txt", kSmallModel);
  ProductRun run("modeler", "\"-model" + folder / "model.txt" + "\" -savenowhere\\copy.txt");
  EXPECT_EQ(answerOwnBox(run, IDOK).texts.back(), "The file nowhere\\copy.txt cannot be written.");
}

} // namespace
