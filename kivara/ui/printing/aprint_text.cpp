#include "aprint.hpp"

#include "sv/application.hpp"
#include "tools/winapi.hpp"

#include <algorithm>
#include <string>
#include <string_view>

using SV::String;

namespace {

constexpr char kIndent[] = "    ";
constexpr long kLineUnits = 40; // tenths of a millimetre
constexpr int kFreeLines = 3;
constexpr std::size_t kShortestLine = 10;

String & userName() {
  static String name;
  return name;
}

std::size_t characterLength(std::string_view text, std::size_t at) {
  return at + 1 < text.size() && IsDBCSLeadByte(static_cast<BYTE>(text[at])) ? 2 : 1;
}

String asString(std::string_view text) { return String(text.data(), static_cast<std::int32_t>(text.size())); }

/// How much of the line, from its last space on, goes to the next one: nothing when that would leave too short a line.
std::size_t lengthToCarry(std::string_view line) {
  std::size_t const space = line.rfind(' ');
  return space != std::string_view::npos && space >= kShortestLine ? line.size() - space : 0;
}

} // namespace

TextPrinter::TextPrinter(String const & name) : jobName(name) {}

TextPrinter::~TextPrinter() {
  if (started)
    End();
}

bool TextPrinter::Start() {
  KivPrinter * const printer = Kiv_GetPrinter(true);
  if (printer == nullptr || started)
    return printer != nullptr;
  printer->Push();
  if (!beginJob(*printer)) {
    printer->Pop();
    return false;
  }
  started = true;
  currentLine = 1;
  layOut(*printer);
  return true;
}

bool TextPrinter::beginJob(KivPrinter & printer) {
  if (!printer.StartJob(jobName))
    return false;
  if (printer.StartPage())
    return true;
  printer.AbortJob();
  return false;
}

void TextPrinter::layOut(KivPrinter & printer) {
  printer.ChangeMapMode(SV::MAP_PIXEL);
  lineHeight = std::max(static_cast<int>(printer.LogicToPixel(SV::Size{0, kLineUnits}, SV::MAP_10TH_MM).height), 1);
  linesPerPage = static_cast<int>(printer.GetOutputSize().height) / lineHeight;
  SV::Font font("Courier New", {0, lineHeight});
  font.ChangePitch(SV::PITCH_FIXED);
  // On paper, and not in the colours of windows. A line's background would cover the lower ends of the line above.
  font.ChangeColor(SV::COL_BLACK);
  font.ChangeTransparent(true);
  printer.ChangeFont(font);
}

void TextPrinter::End() {
  KivPrinter * const printer = Kiv_GetPrinter(false);
  if (printer == nullptr)
    return;
  NewLine();
  printer->EndPage();
  printer->EndJob();
  printer->Pop();
  started = false;
}

void TextPrinter::Print(String const & text) {
  if (Kiv_GetPrinter(false) == nullptr)
    return;
  pending += text;
  pending.EraseAllChars('\r');
}

void TextPrinter::PrintLine(String const & text) {
  Print(text);
  NewLine();
}

void TextPrinter::PrintHeader(String const & title) { Print(GetHeader(title)); }

void TextPrinter::NewLine() {
  KivPrinter * const printer = Kiv_GetPrinter(false);
  if (printer == nullptr)
    return;
  if (pending.Len() == 0) {
    countLine(*printer);
    return;
  }
  std::string_view rest(pending.c_str(), static_cast<std::size_t>(pending.Len()));
  for (;;) {
    std::size_t const end = std::min(rest.find('\n'), rest.size());
    printPiece(*printer, rest.data(), static_cast<std::int32_t>(end));
    if (end == rest.size())
      break;
    rest.remove_prefix(end + 1);
  }
  pending = String();
}

void TextPrinter::printPiece(KivPrinter & printer, char const * text, std::int32_t length) {
  std::string_view const piece(text, static_cast<std::size_t>(length));
  long const width = printer.GetOutputSize().width;
  std::string line = kIndent;
  for (std::size_t at = 0; at < piece.size();) {
    std::string_view const character = piece.substr(at, characterLength(piece, at));
    std::size_t const former = line.size();
    line += character;
    at += character.size();
    if (printer.GetTextSize(asString(line)).width < width)
      continue;
    line.resize(former);
    std::size_t const carried = character == " " ? 0 : lengthToCarry(line);
    line.resize(former - carried);
    drawLine(printer, asString(line));
    line = kIndent;
    if (carried > 0)
      at -= character.size() + carried - 1; // the space stays behind
    else if (character != " ")
      line += character;
  }
  drawLine(printer, asString(line));
}

void TextPrinter::drawLine(KivPrinter & printer, String const & line) {
  printer.DrawText({0, static_cast<long>(lineHeight) * static_cast<long>(currentLine)}, line);
  countLine(printer);
}

void TextPrinter::countLine(KivPrinter & printer) {
  bool const pageIsFull = static_cast<long>(currentLine) > linesPerPage - kFreeLines;
  ++currentLine;
  if (!pageIsFull)
    return;
  printer.EndPage();
  currentLine = 1;
  printer.StartPage();
}

String TextPrinter::GetHeader(String const & title) {
  SV::International formats = SV::Application::GetAppInternational();
  formats.ChangeDateCentury(true);
  return title + "      " + GetUserName() + "  " + formats.GetDate(SV::Date()) + "  " +
         formats.GetTime(SV::Time(), true) + "\n\n";
}

void TextPrinter::SetUserName(String const & name) { userName() = name; }

String const & TextPrinter::GetUserName() { return userName(); }
