#include "factswindow.hpp"

#include "scaling.hpp"
#include "startfacts.hpp"
#include "sv/outputdevice.hpp"
#include "texts.hpp"

#include <algorithm>

namespace modeler {
namespace {

// At 96 dots per inch.
constexpr long kMargin = 12;
constexpr long kColumnGap = 24;
constexpr long kLineGap = 6;

} // namespace

FactsWindow::FactsWindow(SV::MDIFrame & frame) : MDIChild(frame, text(Text::TitleStart)) {}

void FactsWindow::Paint(SV::OutputDevice & device, SV::Rectangle const &) {
  ISequence<Fact> const facts = startFacts();
  long nameWidth = 0;
  long lineHeight = 0;
  for (Fact const & fact : facts) {
    SV::Size const size = device.GetTextSize(fact.name);
    nameWidth = std::max(nameWidth, size.width);
    lineHeight = std::max(lineHeight, size.height + scaledDown(kLineGap));
  }
  long const left = scaledAcross(kMargin);
  long const valuesLeft = left + nameWidth + scaledAcross(kColumnGap);
  long y = scaledDown(kMargin);
  for (Fact const & fact : facts) {
    device.DrawText({left, y}, fact.name);
    device.DrawText({valuesLeft, y}, fact.value);
    y += lineHeight;
  }
}

} // namespace modeler
