// The record of messages, switched by its command. Boxes go to a log.
#include "apps/modeler/in_process.hpp"
#include "commands/menus.hpp"
#include "commands/program/diagnosticscommands.hpp"
#include "support/data/files.hpp"
#include "texts/diagnosticstexts.hpp"

namespace modeler {
namespace {

constexpr char kRecord[] = "_kiv_hooks.txt"; // in the working folder, which each test has for itself

class ModelerWatch : public InProcess {
protected:
  ModelerWatch() {
    SV::Application::SetModalDialogSuppression(true);
    SV::Application::SetModalDialogSuppressionLogfileName("boxes.txt");
    frame.emplace(nullptr);
    commands.emplace(*frame, journal);
    menus.emplace();
    menus->AddMenu(MENU_DIAGNOSTICS, kMenuDiagnostics);
    menus->Add(commands->GetCommands());
  }
  ~ModelerWatch() override {
    menus.reset();
    commands.reset();
    frame.reset();
  }

  static std::string read(char const * file) { return support::readFile(file).value_or(""); }
  static std::string boxes() { return read("boxes.txt"); }
  void send(UINT message) { SendMessageA(frame->GethWnd(), message, 0, 0); }

  Journal journal;
  std::optional<SV::Window> frame;
  std::optional<DiagnosticsCommands> commands;
  std::optional<Menus> menus;
};

TEST_F(ModelerWatch, IsStartedAndStoppedByItsCommandWhichIsCheckedMeanwhile) {
  EXPECT_FALSE(menus->IsChecked(DIAGNOSTICS_WATCH));
  menus->Choose(DIAGNOSTICS_WATCH);
  EXPECT_TRUE(menus->IsChecked(DIAGNOSTICS_WATCH));
  send(WM_CANCELMODE);
  EXPECT_NE(read(kRecord).find("(WM_CANCELMODE)"), std::string::npos) << read(kRecord);
  menus->Choose(DIAGNOSTICS_WATCH);
  EXPECT_FALSE(menus->IsChecked(DIAGNOSTICS_WATCH));
  std::string const before = read(kRecord);
  EXPECT_NE(before.find("--- [unhooked window"), std::string::npos);
  send(WM_CANCELMODE);
  EXPECT_EQ(read(kRecord), before);
  menus->Choose(DIAGNOSTICS_WATCH);
  EXPECT_TRUE(menus->IsChecked(DIAGNOSTICS_WATCH)) << "again";
}

TEST_F(ModelerWatch, SaysWhereItsFileLies) {
  menus->Choose(DIAGNOSTICS_WATCH);
  std::string const file = SV::DirEntry(SV::String(kRecord)).GetFull().c_str();
  EXPECT_NE(boxes().find("They are in the file\r\n\r\n" + file), std::string::npos) << boxes();
  EXPECT_NE(file.find(":\\"), std::string::npos) << "with its folder";
  menus->Choose(DIAGNOSTICS_WATCH);
  EXPECT_EQ(boxes().find("They are", boxes().find("They are") + 1), std::string::npos) << "the end needs no box";
}

TEST_F(ModelerWatch, StaysOffWhenItsFileCannotBeWritten) {
  CreateDirectoryA(kRecord, nullptr);
  menus->Choose(DIAGNOSTICS_WATCH);
  EXPECT_FALSE(menus->IsChecked(DIAGNOSTICS_WATCH));
  EXPECT_NE(boxes().find("Messages cannot be recorded"), std::string::npos) << boxes();
  RemoveDirectoryA(kRecord);
}

} // namespace
} // namespace modeler
