#pragma once
/// \file
/// The document window that draws a process model.

#include "layout.hpp"
#include "sv/mdi.hpp"

namespace modeler {

class ProcessWindow : public SV::MDIChild {
public:
  ProcessWindow(SV::MDIFrame & frame, ProcessModel const & model);

  void Paint(SV::OutputDevice & device, SV::Rectangle const & area) override;
  void Resize(SV::Size const & size) override;

  ProcessModel const & GetModel() const { return model_; }

private:
  SV::Rectangle boxOf(std::size_t node) const;
  void drawFlow(SV::OutputDevice & device, Flow const & flow) const;
  void drawNode(SV::OutputDevice & device, std::size_t node) const;

  ProcessModel model_;
  Layout layout_;
};

} // namespace modeler
