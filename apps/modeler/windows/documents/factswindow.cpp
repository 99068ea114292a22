#include "windows/documents/factswindow.hpp"

#include "background/startfacts.hpp"
#include "texts/dragtexts.hpp"

namespace modeler {

FactsWindow::FactsWindow(SV::MDIFrame & frame, Plugins const & plugins, Journal & journal)
    : TableWindow(frame, named(Text::TitleStart), [this] { return rows(); }), plugins_(plugins), journal_(journal) {}

void FactsWindow::TakeText(SV::String const & activity) {
  activities_.push_back(activity);
  journal_.Add("taken: " + activity);
  Retext();
}

TableWindow::Rows FactsWindow::rows() const {
  Rows rows;
  for (Fact const & fact : startFacts())
    rows.push_back({fact.name, fact.value});
  for (Fact const & fact : plugins_.Facts())
    rows.push_back({fact.name, fact.value});
  for (SV::String const & activity : activities_)
    rows.push_back({text(kActivityTaken), activity});
  return rows;
}

} // namespace modeler
