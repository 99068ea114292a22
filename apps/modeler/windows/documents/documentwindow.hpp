#pragma once
/// \file
/// What the windows of documents have in common.

#include "sv/mdi.hpp"

namespace modeler {

/// The frame's client area has scroll bars while such a window lies outside of it.
class DocumentWindow : public SV::MDIChild {
public:
  using MDIChild::MDIChild;

protected:
  long long HandleMessage(unsigned message, unsigned long long wParam, long long lParam) override;
};

/// To be called when the frame has given its client area another place.
void fitClientBars(SV::MDIFrame & frame);

} // namespace modeler
