#pragma once
/// \file
/// The document window that shows the facts of the start, in the language of the moment.

#include "background/plugins.hpp"
#include "sv/mdi.hpp"

namespace modeler {

class FactsWindow : public SV::MDIChild {
public:
  /// \param plugins  outlive the window
  FactsWindow(SV::MDIFrame & frame, Plugins const & plugins);

  void Paint(SV::OutputDevice & device, SV::Rectangle const & area) override;

private:
  Plugins const & plugins_;
};

} // namespace modeler
