#include "printing/drawingpages.hpp"

#include "texts/modelnotes.hpp"
#include "tools/winapi.hpp"
#include "windows/documents/processdrawing.hpp"

namespace modeler {
namespace {

constexpr long kTextUnits = 35; // tenths of a millimetre: ten points

SV::Font fontOn(KivPrinter & printer) {
  SV::Font font("Arial", {0, printer.LogicToPixel(SV::Size{0, kTextUnits}, SV::MAP_10TH_MM).height});
  font.ChangeTransparent(true);
  return font;
}

Layout layoutOn(KivPrinter & printer, ProcessModel const & model) {
  printer.Push();
  printer.ChangeMapMode(SV::MAP_PIXEL);
  printer.ChangeFont(fontOn(printer));
  Layout const layout = layOut(model, {[&](SV::String const & line) { return printer.GetTextSize(line); },
                                       [&](Node const & node) { return durationText(model, node); }});
  printer.Pop();
  return layout;
}

/// How many pages stand side by side, and how many one below the other.
SV::Size pagesOf(KivPrinter & printer, Layout const & layout) {
  SV::Size const page = printer.GetOutputSizePixel();
  if (page.width < 1 || page.height < 1)
    return {0, 0};
  return {(layout.size.width + page.width - 1) / page.width, (layout.size.height + page.height - 1) / page.height};
}

bool printPage(KivPrinter & printer, Layout const & layout, SV::Point const & corner) {
  if (!printer.StartPage())
    return false;
  POINT former;
  SetWindowOrgEx(printer.GethDC(), corner.x, corner.y, &former);
  drawProcess(printer, fontOn(printer), layout, {corner, printer.GetOutputSizePixel()});
  SetWindowOrgEx(printer.GethDC(), former.x, former.y, nullptr);
  return printer.EndPage();
}

bool printPages(KivPrinter & printer, Layout const & layout) {
  SV::Size const page = printer.GetOutputSizePixel();
  SV::Size const pages = pagesOf(printer, layout);
  for (long row = 0; row < pages.height; ++row)
    for (long column = 0; column < pages.width; ++column)
      if (!printPage(printer, layout, {column * page.width, row * page.height}))
        return false;
  return true;
}

} // namespace

int drawingPages(KivPrinter & printer, ProcessModel const & model) {
  SV::Size const pages = pagesOf(printer, layoutOn(printer, model));
  return static_cast<int>(pages.width * pages.height);
}

bool printDrawing(KivPrinter & printer, ProcessModel const & model) {
  Layout const layout = layoutOn(printer, model);
  if (!printer.StartJob(model.name))
    return false;
  printer.Push();
  printer.ChangeMapMode(SV::MAP_PIXEL);
  bool const isDrawn = printPages(printer, layout);
  printer.Pop();
  return isDrawn ? printer.EndJob() : (printer.AbortJob(), false);
}

} // namespace modeler
