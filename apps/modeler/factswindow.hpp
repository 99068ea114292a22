#pragma once
/// \file
/// The document window that shows the facts of the start, in the language of the moment.

#include "sv/mdi.hpp"

namespace modeler {

class FactsWindow : public SV::MDIChild {
public:
  explicit FactsWindow(SV::MDIFrame & frame);

  void Paint(SV::OutputDevice & device, SV::Rectangle const & area) override;
};

} // namespace modeler
