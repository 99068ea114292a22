// Prints, and says what printers there are, as its words say, one after the other; each answer is a line "word: answer".

#include "programs/frame/frame_program.hpp"

#include "acmdline.hpp"
#include "acrash.hpp"
#include "aprint.hpp"
#include "sv/system.hpp"

#include <string>

namespace {

void say(std::string const & word, std::string const & answer) {
  std::printf("%s: %s\n", word.c_str(), answer.c_str());
  std::fflush(stdout);
}

std::string nameOf(KivPrinter const * printer) { return printer != nullptr ? printer->GetName().c_str() : "none"; }

class PrinterFacts : public FrameProgram {
  void run() override {
    KivCmdline const & line = KivCmdline::Instance();
    for (int i = 1; i < line.getCount(); ++i) {
      std::string const word = line.getParam(i).c_str();
      if (word[0] != '-' && word[0] != '/')
        follow(word);
    }
  }

  void follow(std::string const & word) {
    if (word == "names")
      for (SV::String const & each : SV::Printer::GetNames())
        say(word, each.c_str());
    else if (word == "default")
      say(word, SV::Printer::GetDefaultName().c_str());
    else if (word == "get")
      say(word, nameOf(Kiv_GetPrinter(true)));
    else if (word == "existing")
      say(word, nameOf(Kiv_GetPrinter(false)));
    else if (word == "driver")
      say(word, SV::System::GetPrinterDriverName().c_str());
    else if (word == "delete")
      Kiv_DeletePrinter();
    else if (word == "report")
      Fct_CreateMiniDump("printer_facts.cpp", 1);
    else
      print(word);
  }

  void print(std::string const & word) {
    if (word == "start")
      say(word, report_.Start() ? "yes" : "no");
    else if (word == "end")
      report_.End();
    else if (word == "newline")
      report_.NewLine();
    else if (word == "header")
      report_.PrintHeader("Title");
    else
      report_.PrintLine(word.c_str());
  }

  TextPrinter report_{"printer_facts"};
};

PrinterFacts program;

} // namespace
