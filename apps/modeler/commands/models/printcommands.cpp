#include "commands/models/printcommands.hpp"

#include "dialogs/printdialog.hpp"
#include "dialogs/question.hpp"
#include "printing/drawingpages.hpp"
#include "printing/textpages.hpp"
#include "texts/printtexts.hpp"

using SV::String;

namespace modeler {

Commands PrintCommands::GetCommands() {
  auto const hasModel = [this] { return documents_.GetFront() != nullptr; };
  auto const never = [] { return false; };
  return {separator(MENU_FILE),
          {MENU_FILE, FILE_PRINT_TEXT, named(kPrintText), [this] { ask(true); }, never, hasModel},
          {MENU_FILE, FILE_PRINT_DRAWING, named(kPrintDrawing), [this] { ask(false); }, never, hasModel}};
}

void PrintCommands::Print(String const & what) {
  if (what == "text" || what == "drawing")
    print(what == "text");
  else
    journal_.Add("not printed: there is no way '" + what + "'");
}

/// The system's dialog for the printer first, then how many pages it will be.
void PrintCommands::ask(bool asText) {
  if (documents_.GetFront() == nullptr || !choosePrinter(frame_))
    return;
  KivPrinter * const printer = Kiv_GetPrinter(true);
  if (printer == nullptr)
    sayError();
  else if (agrees(*printer, asText))
    print(asText);
}

bool PrintCommands::agrees(KivPrinter & printer, bool asText) {
  ProcessModel const & model = documents_.GetFront()->GetModel();
  int const pages = asText ? textPages(printer, model) : drawingPages(printer, model);
  String const question = filled(kPagesToPrint, String(pages), printer.GetName());
  return modeler::agrees(frame_, question, SV::WB_DEF_YES);
}

void PrintCommands::print(bool asText) {
  ProcessWindow const * const front = documents_.GetFront();
  ProcessWindow const * const window = front != nullptr ? front : documents_.GetNewest();
  KivPrinter * const printer = Kiv_GetPrinter(true);
  if (window == nullptr || printer == nullptr ||
      !(asText ? printText(window->GetModel()) : printDrawing(*printer, window->GetModel()))) {
    sayError();
    return;
  }
  journal_.Add("printed: " + window->GetModel().name + " on " + printer->GetName());
}

void PrintCommands::sayError() {
  journal_.Add("not printed");
  if (!KivCmdline::Instance().noPrinterWarning())
    KivErrorBox(&frame_, KivErrorBox::WB_OK | KivErrorBox::WB_DEF_OK, text(kNotPrinted)).Execute(ShowAlways);
}

} // namespace modeler
