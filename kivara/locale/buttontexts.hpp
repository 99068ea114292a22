#pragma once
/// \file
/// The labels of the standard buttons from the active resources. Internal.

#include "sv/application.hpp"
#include "sv/resource.hpp"
#include "tools/international.hpp"

namespace kivara {

/// Installs \p formats as the application's, with OK, Cancel and Help as the active resources have them.
inline void installWithButtonTexts(SV::International formats) {
  formats.ChangeOKButtonText(SV::Resource::LoadString(0x2002922));
  formats.ChangeCancelButtonText(SV::Resource::LoadString(0x2002923));
  formats.ChangeHelpButtonText(SV::Resource::LoadString(0x2002924));
  SV::Application::ChangeAppInternational(formats);
}

} // namespace kivara
