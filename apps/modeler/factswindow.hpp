#pragma once
/// \file
/// The document window that shows the facts of the start.

#include "startfacts.hpp"
#include "sv/mdi.hpp"

namespace modeler {

class FactsWindow : public SV::MDIChild {
public:
  explicit FactsWindow(SV::MDIFrame & frame);

  void Paint(SV::OutputDevice & device, SV::Rectangle const & area) override;

private:
  ISequence<Fact> facts_;
};

} // namespace modeler
