#include "printing/textpages.hpp"

#include "texts/modelnotes.hpp"
#include "texts/printtexts.hpp"

#include <algorithm>
#include <string>

using SV::String;

namespace modeler {
namespace {

constexpr long kLineUnits = 40; // tenths of a millimetre, as TextPrinter has them

struct Page {
  int characters; ///< of a line, without its indent
  int lines;
};

Page pageOf(KivPrinter & printer) {
  long const line = std::max(printer.LogicToPixel(SV::Size{0, kLineUnits}, SV::MAP_10TH_MM).height, 1L);
  SV::Font font("Courier New", {0, line});
  font.ChangePitch(SV::PITCH_FIXED);
  printer.Push();
  printer.ChangeFont(font);
  long const character = std::max(printer.GetTextSize("x").width, 1L);
  printer.Pop();
  SV::Size const size = printer.GetOutputSizePixel();
  return {static_cast<int>((size.width - 1) / character) - 4, static_cast<int>(size.height / line) - 2};
}

/// For the header.
void setUser() {
  String user;
  String domain;
  Kiv_GetCurrentUserAndDomain(user, domain);
  TextPrinter::SetUserName(user);
}

/// How many lines a text without line feeds takes.
int linesOnPaper(std::string text, int characters) {
  auto const most = static_cast<std::size_t>(std::max(characters, 1));
  int count = 1;
  for (; text.size() > most; ++count) {
    std::size_t const space = text[most] == ' ' ? most : text.rfind(' ', most - 1);
    bool const isWhole = space != std::string::npos && space >= 6; // after the tenth, with the indent
    text.erase(0, isWhole ? space + 1 : most);
  }
  return count;
}

void addNode(ProcessModel const & model, std::size_t at, ISequence<String> & lines) {
  Node const & node = model.nodes[at];
  String const duration = durationText(model, node);
  lines.push_back(node.text + (duration.Len() > 0 ? String(": ") + duration : String()));
  for (Flow const & flow : model.flows) {
    if (flow.from != at)
      continue;
    String const label = flow.text.Len() > 0 ? String(" (") + flow.text + ")" : String();
    lines.push_back("    " + filled(kFlowsTo, model.nodes[flow.to].text) + label);
  }
}

} // namespace

ISequence<String> linesOf(ProcessModel const & model) {
  ISequence<String> lines{headlineOf(model)};
  for (String const & note : notesOf(model))
    lines.push_back(note);
  lines.push_back(String());
  for (std::size_t at = 0; at < model.nodes.size(); ++at)
    addNode(model, at, lines);
  return lines;
}

int textPages(KivPrinter & printer, ProcessModel const & model) {
  Page const page = pageOf(printer);
  setUser();
  int lines =
      linesOnPaper(TextPrinter::GetHeader(model.name).c_str(), page.characters) + 1 + 1; // and the end is a line
  for (String const & line : linesOf(model))
    lines += linesOnPaper(line.c_str(), page.characters);
  return 1 + lines / std::max(page.lines, 1);
}

bool printText(ProcessModel const & model) {
  setUser();
  TextPrinter printer(model.name);
  if (!printer.Start())
    return false;
  printer.PrintHeader(model.name);
  for (String const & line : linesOf(model))
    printer.PrintLine(line);
  printer.End();
  return true;
}

} // namespace modeler
