// Prints what the frame made of the command line and the resources, as "name=value" lines on the standard output.

#include "frame_program.hpp"

#include "acmdline.hpp"
#include "aentry.hpp"
#include "aplatfrm.hpp"
#include "sv/font.hpp"
#include "sv/help.hpp"
#include "tools/international.hpp"
#include "tools/winapi.hpp"

namespace {

void print(char const * name, SV::String const & value) { std::printf("%s=%s\n", name, value.c_str()); }
void print(char const * name, long value) { std::printf("%s=%ld\n", name, value); }

void printWords() {
  KivCmdline const & line = KivCmdline::Instance();
  print("count", line.getCount());
  for (int i = 1; i < line.getCount() && i < 20; ++i)
    print(("word " + std::to_string(i)).c_str(), line.getParam(i));
  print("last word", line.getParam(line.getCount() - 1));
}

void printSwitches() {
  print("registry printers", Kiv_HasRegistryPrinters());
  print("case-sensitive printers", Kiv_HasCaseSensitivePrinters());
  print("current printing", Kiv_HasCurrentPrinting());
}

void printFont() {
  SV::Font const & font = SV::Application::GetAppFont();
  print("face", font.GetName());
  print("width", font.GetSize().width);
  print("height", font.GetSize().height);
  print("scaled 100", static_cast<int>(100 * Kiv_GetSystemDPIScaleY()));
  print("charset", font.GetCharSet());
  print("colour", font.GetColor().GetColorName());
  print("fill colour", font.GetFillColor().GetColorName());
  print("transparent", font.IsTransparent());
}

void printSettings() {
  print("with GUI", KivApplicationInterface::IsWithGUI());
  print("after main", KivApplicationInterface::IsAfterMain());
  print("no dialogs", SV::Application::IsModalDialogSuppression());
  print("no windows", SV::Application::IsShowWindowSuppression());
  print("dialog log", SV::Application::GetModalDialogSuppressionLogfileName());
  print("start folder", Kiv_GetStartCWD(true));
  SV::International const & labels = SV::Application::GetAppInternational();
  print("ok", labels.GetOKButtonText());
  print("cancel", labels.GetCancelButtonText());
  print("help", labels.GetHelpButtonText());
}

class FactsProgram : public FrameProgram {
  void run() override {
    printWords();
    printSwitches();
    printFont();
    printSettings();
    createHelpObject("first.hlp");
    SV::Help const * const first = SV::Application::GetHelp();
    createHelpObject("second.hlp");
    print("help object", first != nullptr);
    print("same help object", first == SV::Application::GetHelp());
    std::fflush(stdout);
  }
};

FactsProgram program;

} // namespace
