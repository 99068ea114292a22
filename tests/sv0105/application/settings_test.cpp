#include "sv0105/application/testapplication.hpp"

#include <fstream>
#include <sstream>

namespace {

using SV::Application;
using SV::String;

std::string contentOf(char const * name) {
  std::ifstream file(name, std::ios::binary);
  std::ostringstream content;
  content << file.rdbuf();
  return content.str();
}

TEST(WaitState, IsTheCountThatWasSetLast) {
  EXPECT_EQ(Application::IsWait(), 0);
  Application::Wait(3);
  EXPECT_EQ(Application::IsWait(), 3);
  Application::Wait(1);
  EXPECT_EQ(Application::IsWait(), 1);
  Application::Wait(0);
  EXPECT_EQ(Application::IsWait(), 0);
}

TEST(WaitState, ShowsTheHourGlassUntilTheCountIsZero) {
  Application::Wait(2);
  EXPECT_EQ(GetCursor(), LoadCursorA(nullptr, IDC_WAIT));
  Application::Wait(1);
  EXPECT_EQ(GetCursor(), LoadCursorA(nullptr, IDC_WAIT));
  Application::Wait(0);
  EXPECT_EQ(GetCursor(), LoadCursorA(nullptr, IDC_ARROW));
}

TEST(WaitState, TakesPrecedenceOverTheHelpPointer) {
  TestApplication application;
  application.ActivateExtHelp();
  Application::Wait(1);
  EXPECT_EQ(GetCursor(), LoadCursorA(nullptr, IDC_WAIT));
  Application::Wait(0);
  EXPECT_EQ(GetCursor(), LoadCursorA(nullptr, IDC_HELP));
  application.DeactivateExtHelp();
}

TEST(HelpSetting, GivesTheFormerOne) {
  SV::Help first;
  SV::Help second;
  EXPECT_EQ(Application::GetHelp(), nullptr);
  EXPECT_EQ(Application::ChangeHelp(&first), nullptr);
  EXPECT_EQ(Application::ChangeHelp(&second), &first);
  EXPECT_EQ(Application::GetHelp(), &second);
  EXPECT_EQ(Application::ChangeHelp(nullptr), &second);
}

TEST(HelpSetting, IsGoneWithTheInstalledObjectOnly) {
  SV::Help installed;
  Application::ChangeHelp(&installed);
  { SV::Help other; }
  EXPECT_EQ(Application::GetHelp(), &installed);
  {
    SV::Help next;
    Application::ChangeHelp(&next);
  }
  EXPECT_EQ(Application::GetHelp(), nullptr);
}

TEST(HelpObject, KeepsItsFileNameAsGiven) {
  SV::Help help;
  EXPECT_EQ(help.GetFileName().Len(), 0);
  EXPECT_EQ(help.ChangeFileName("help\\1031\\base.chm").Len(), 0);
  EXPECT_STREQ(help.ChangeFileName("other.chm").c_str(), "help\\1031\\base.chm");
  EXPECT_STREQ(SV::Help("given.chm").GetFileName().c_str(), "given.chm");
}

TEST(FontSetting, GivesTheFormerOne) {
  Application::ChangeAppFont(SV::Font("Arial", {0, 14}));
  SV::Font const former = Application::ChangeAppFont(SV::Font("Tahoma", {0, 11}));
  EXPECT_STREQ(former.GetName().c_str(), "Arial");
  EXPECT_EQ(former.GetSize(), (SV::Size{0, 14}));
  EXPECT_STREQ(Application::GetAppFont().GetName().c_str(), "Tahoma");
}

TEST(FontSetting, MayBeSetToItself) {
  Application::ChangeAppFont(SV::Font("Arial", {0, 14}));
  Application::ChangeAppFont(Application::GetAppFont());
  EXPECT_STREQ(Application::GetAppFont().GetName().c_str(), "Arial");
}

TEST(InternationalSetting, GivesTheFormerOne) {
  SV::International international;
  international.ChangeOKButtonText("Fine");
  Application::ChangeAppInternational(international);
  international.ChangeOKButtonText("Good");
  EXPECT_STREQ(Application::ChangeAppInternational(international).GetOKButtonText().c_str(), "Fine");
  EXPECT_STREQ(Application::GetAppInternational().GetOKButtonText().c_str(), "Good");
}

TEST(DialogSuppression, IsOffUntilItIsSet) {
  EXPECT_FALSE(Application::IsModalDialogSuppression());
  Application::SetModalDialogSuppression(true);
  EXPECT_TRUE(Application::IsModalDialogSuppression());
  Application::SetModalDialogSuppression(false);
  EXPECT_FALSE(Application::IsModalDialogSuppression());
}

TEST(DialogSuppression, AppendsEachTextAsALineToItsLog) {
  std::ofstream("dialogs.log", std::ios::binary) << "earlier\r\n";
  Application::SetModalDialogSuppressionLogfileName("dialogs.log");
  EXPECT_STREQ(Application::GetModalDialogSuppressionLogfileName().c_str(), "dialogs.log");
  Application::ModalDialogSuppressionLog("first");
  EXPECT_EQ(contentOf("dialogs.log"), "earlier\r\nfirst\r\n");
  Application::ModalDialogSuppressionLog("two\nlines");
  EXPECT_EQ(contentOf("dialogs.log"), "earlier\r\nfirst\r\ntwo\r\nlines\r\n");
}

TEST(DialogSuppression, LogsAnEmptyLineForNoText) {
  Application::SetModalDialogSuppressionLogfileName("empty.log");
  Application::ModalDialogSuppressionLog(nullptr);
  EXPECT_EQ(contentOf("empty.log"), "\r\n");
}

TEST(DialogSuppression, LogsNothingWithoutANameOrWhereTheFileCannotBeOpened) {
  Application::ModalDialogSuppressionLog("lost");
  Application::SetModalDialogSuppressionLogfileName("no such folder\\dialogs.log");
  Application::ModalDialogSuppressionLog("lost as well");
  EXPECT_EQ(GetFileAttributesA("no such folder"), INVALID_FILE_ATTRIBUTES);
}

TEST(PoolFile, IsKeptAsGivenAndNotOpened) {
  EXPECT_EQ(SV::ImagePool::GetPoolFile().Len(), 0);
  SV::ImagePool::SetPoolFile("C:\\nowhere\\agfx.zip");
  EXPECT_STREQ(SV::ImagePool::GetPoolFile().c_str(), "C:\\nowhere\\agfx.zip");
}

int countingHook(HWND, unsigned, unsigned long long, long long, long long &) { return 0; }

TEST(SystemData, IsWhatTheEntryRoutineHandedOver) {
  HINSTANCE const instance = GetModuleHandleA(nullptr);
  SV::SetProcessData(instance, 4711, SW_SHOWMAXIMIZED);
  EXPECT_EQ(SV::Sysdepen::GethInst(), instance);
  EXPECT_EQ(SV::Sysdepen::GetThreadId(), 4711u);
  EXPECT_EQ(SV::Sysdepen::GetShowCommand(), SW_SHOWMAXIMIZED);
}

TEST(SystemData, GivesTheFormerHook) {
  EXPECT_EQ(SV::Sysdepen::GetHook(), nullptr);
  EXPECT_EQ(SV::Sysdepen::ChangeHook(countingHook), nullptr);
  EXPECT_EQ(SV::Sysdepen::GetHook(), countingHook);
  EXPECT_EQ(SV::Sysdepen::ChangeHook(nullptr), countingHook);
}

} // namespace
