// The sample product prints its models.
#include "modeler_run.hpp"

#include "support/servers/printing.hpp"
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
  support::PrintedWord const & word = job.papers[0].words[0];
  int tinted = 0;
  for (int x = 0; x < 20; ++x) {
    int const gray = job.grayAt(static_cast<int>(word.x) - x, static_cast<int>(word.y) - 1);
    tinted += gray > 200 && gray < 250;
  }
  EXPECT_GT(tinted, 4) << "the boxes are filled";
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

/// A run of the product in which a command that prints has been chosen: the system's dialog is open.
class Printing {
public:
  Printing(support::PrintQueue const & queue, WPARAM command, std::string const & model, std::string const & name) {
    support::writeFile(folder_ / "model.txt", model);
    run_ = std::make_unique<ProductRun>("modeler", "\"-model" + folder_ / "model.txt" + "\" -langen -P" + queue.name());
    window_ = modeler::mainWindow(*run_);
    EXPECT_TRUE(modeler::waitForDocument(window_, name));
    PostMessageA(window_, WM_COMMAND, command, 0);
    dialog_ = support::waitForWindow({.processId = run_->child().processId(), .className = support::kBoxClass});
    EXPECT_NE(dialog_, nullptr);
  }

  HWND dialog() const { return dialog_; }
  void answerDialog(WPARAM button) { PostMessageA(dialog_, WM_COMMAND, button, 0); }

  /// What the box with the number of pages asks. It is answered.
  std::string question(std::string const & answer) {
    HWND const box = modeler::ownBox(*run_);
    std::string const text = support::readBox(box).texts.back();
    EXPECT_TRUE(support::pressButton(box, answer));
    return text;
  }

  void end() {
    EXPECT_TRUE(support::closeWindow(window_));
    EXPECT_EQ(run_->exitCode(), 0u);
  }

private:
  support::TempFolder folder_;
  std::unique_ptr<ProductRun> run_;
  HWND window_ = nullptr;
  HWND dialog_ = nullptr;
};

/// Chooses the command, agrees to the dialog and to the number of pages, which is given.
int printByMenu(support::PrintQueue const & queue, WPARAM command, std::string const & model,
                std::string const & name) {
  Printing run(queue, command, model, name);
  run.answerDialog(IDOK);
  std::string const question = run.question("Yes");
  int const pages = std::atoi(question.c_str() + std::string("Number of pages: ").size());
  EXPECT_EQ(question, "Number of pages: " + std::to_string(pages) + "\nPrinter: " + queue.name() + "\n\nPrint now?");
  queue.job();
  run.end();
  return pages;
}

constexpr WPARAM kPrintText = 110;
constexpr WPARAM kPrintDrawing = 111;

TEST_F(ModelOnPaper, IsPrintedByTheMenuAfterTheDialogAndTheNumberOfPages) {
  support::PrintQueue const queue;
  EXPECT_EQ(printByMenu(queue, kPrintDrawing, kModel, "Order"), 1);
  EXPECT_EQ(queue.job().papers.size(), 1u);
}

TEST_F(ModelOnPaper, IsNotPrintedAfterCancelOrNo) {
  support::PrintQueue const queue;
  Printing cancelled(queue, kPrintText, kModel, "Order");
  cancelled.answerDialog(IDCANCEL);
  ASSERT_TRUE(support::eventually([&] { return !IsWindow(cancelled.dialog()); }));
  cancelled.end();
  Printing refused(queue, kPrintText, kModel, "Order");
  refused.answerDialog(IDOK);
  refused.question("No");
  refused.end();
  EXPECT_EQ(queue.jobCount(), 0u);
}

TEST_F(ModelOnPaper, GoesToThePrinterThatIsChosenInTheDialog) {
  support::PrintQueue const first;
  support::PrintQueue const second("other");
  Printing run(first, kPrintText, kModel, "Order");
  constexpr int kPrinters = 0x473; // the system's number of that list
  HWND const printers = GetDlgItem(run.dialog(), kPrinters);
  ASSERT_NE(printers, nullptr);
  ASSERT_GE(
      SendMessageA(printers, CB_SELECTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(second.name().c_str())),
      0);
  SendMessageA(run.dialog(), WM_COMMAND, MAKEWPARAM(kPrinters, CBN_SELCHANGE), reinterpret_cast<LPARAM>(printers));
  run.answerDialog(IDOK);
  EXPECT_EQ(run.question("Yes"), "Number of pages: 1\nPrinter: " + second.name() + "\n\nPrint now?");
  EXPECT_TRUE(second.job().lines().at(0).starts_with("Order"));
  run.end();
  EXPECT_EQ(first.jobCount(), 0u);
}

TEST_F(ModelOnPaper, HasAsManyPagesOfTextAsWereSaid) {
  support::PrintQueue const queue;
  std::string model = "process \"Long\"\r\nstart n0 \"Node 0\"\r\n";
  for (int i = 1; i < 60; ++i)
    model += "activity n" + std::to_string(i) +
             " \"A node with a text that is far too long for one line of paper, so that it goes "
             "on, whatever the width of a page may be, number " +
             std::to_string(i) + "\"\r\n";
  int const said = printByMenu(queue, kPrintText, model, "Long");
  EXPECT_EQ(static_cast<std::size_t>(said), queue.job().papers.size());
  EXPECT_GT(queue.job().papers.size(), 1u);
}

TEST_F(ModelOnPaper, IsNotPrintedWhereThereIsNoPrinter) {
  std::string const log = printAtStart("-langen -PnoSuchPrinter -topapertext");
  EXPECT_TRUE(has(log, "not printed"));
  EXPECT_FALSE(has(log, "printed: Order"));
}

} // namespace
