#include "windows/factswindow.hpp"

#include "background/startfacts.hpp"
#include "sv/outputdevice.hpp"
#include "texts/dragtexts.hpp"
#include "windows/scaling.hpp"

#include <algorithm>

namespace modeler {
namespace {

// At 96 dots per inch.
constexpr long kMargin = 12;
constexpr long kColumnGap = 24;
constexpr long kLineGap = 6;

} // namespace

FactsWindow::FactsWindow(SV::MDIFrame & frame, Plugins const & plugins, Journal & journal)
    : MDIChild(frame, text(Text::TitleStart)), plugins_(plugins), journal_(journal) {}

void FactsWindow::TakeText(SV::String const & activity) {
  activities_.push_back(activity);
  journal_.Add("taken: " + activity);
  Invalidate();
}

void FactsWindow::Paint(SV::OutputDevice & device, SV::Rectangle const &) {
  ISequence<Fact> facts = startFacts();
  for (Fact const & fact : plugins_.Facts())
    facts.push_back(fact);
  for (SV::String const & activity : activities_)
    facts.push_back({text(kActivityTaken), activity});
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
