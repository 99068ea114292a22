// The sample product prints its models.
#include "modeler_run.hpp"

#include "support/printing.hpp"
#include "tools/winapi.hpp"

using Lines = std::vector<std::string>;

namespace {

constexpr char kModel[] =
    "process \"Order\"\r\nstart a \"Received\"\r\nactivity b \"Check\" duration 20\r\nend d \"Done\"\r\n"
    "flow a b \"at once\"\r\nflow b d\r\n";

class ModelOnPaper : public support::PrintTest {};

/// Opens a model and prints it at the start, without a dialog; gives the log.
std::string printAtStart(std::string const & options, std::string const & model = kModel) {
  support::TempFolder const folder;
  support::writeFile(folder / "model.txt", model);
  ProductRun run("modeler",
                 "\"-model" + folder / "model.txt" + "\" -no_dialogs -no_windows -journalout.log " + options);
  EXPECT_EQ(run.exitCode(), 0u);
  return run.file("out.log").value_or("");
}

bool has(std::string const & text, std::string const & part) { return text.find(part) != std::string::npos; }

TEST_F(ModelOnPaper, IsAHeaderNotesAndNodesAsText) {
  support::PrintQueue const queue;
  std::string const log = printAtStart("-langen -P" + queue.name() + " -topapertext");
  EXPECT_TRUE(has(log, "printed: Order on " + queue.name())) << log;
  Lines const lines = queue.job().lines();
  ASSERT_GE(lines.size(), 6u);
  EXPECT_TRUE(lines.at(0).starts_with("Order")) << lines.at(0);
  Lines const nodes(lines.end() - 5, lines.end());
  EXPECT_EQ(nodes.at(0), "Received");
  EXPECT_EQ(nodes.at(1), "then Check (at once)");
  EXPECT_TRUE(nodes.at(2).starts_with("Check: ")) << nodes.at(2);
  EXPECT_EQ(nodes.at(3), "then Done");
  EXPECT_EQ(nodes.at(4), "Done");
}

TEST_F(ModelOnPaper, IsInTheLanguageOfTheProgram) {
  support::PrintQueue const queue;
  printAtStart("-langde -P" + queue.name() + " -topapertext");
  Lines const lines = queue.job().lines();
  EXPECT_NE(std::find(lines.begin(), lines.end(), "dann Done"), lines.end());
}

TEST_F(ModelOnPaper, IsAPictureInColour) {
  support::PrintQueue const queue;
  printAtStart("-langen -P" + queue.name() + " -topaperdrawing");
  support::PrintedJob const job = queue.job();
  ASSERT_EQ(job.papers.size(), 1u);
  std::string all;
  for (support::PrintedWord const & word : job.papers[0].words)
    all += word.text + ' ';
  for (char const * const text : {"Received", "Check", "Done", "at once"})
    EXPECT_TRUE(has(all, text)) << all;
  int tinted = 0;
  for (int y = 0; y < 200; ++y)
    for (int x = 0; x < 500; ++x)
      tinted += job.grayAt(x, y) > 200 && job.grayAt(x, y) < 250;
  EXPECT_GT(tinted, 200) << "the boxes are filled";
}

TEST_F(ModelOnPaper, GoesOverPagesWhenThePictureIsLarger) {
  support::PrintQueue const queue;
  std::string model = "process \"Long\"\r\nstart n0 \"Node 0\"\r\n";
  for (int i = 1; i < 40; ++i)
    model += "activity n" + std::to_string(i) + " \"Node " + std::to_string(i) + "\"\r\n";
  for (int i = 1; i < 40; ++i)
    model += "flow n" + std::to_string(i - 1) + " n" + std::to_string(i) + "\r\n";
  printAtStart("-langen -P" + queue.name() + " -topaperdrawing", model);
  EXPECT_GT(queue.job().papers.size(), 1u);
}

TEST_F(ModelOnPaper, IsNotPrintedWhereThereIsNoPrinter) {
  std::string const log = printAtStart("-langen -PnoSuchPrinter -topapertext");
  EXPECT_TRUE(has(log, "not printed"));
  EXPECT_FALSE(has(log, "printed: Order"));
}

} // namespace
