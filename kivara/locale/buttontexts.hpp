#pragma once
/// \file
/// The labels of the standard buttons from the active resources. Internal.

#include "base/textids.hpp"
#include "sv/application.hpp"
#include "sv/resource.hpp"
#include "tools/international.hpp"

namespace kivara {

/// Installs \p formats as the application's, with OK, Cancel and Help as the active resources have them.
inline void installWithButtonTexts(SV::International formats) {
  formats.ChangeOKButtonText(SV::Resource::LoadString(texts::kOKButton));
  formats.ChangeCancelButtonText(SV::Resource::LoadString(texts::kCancelButton));
  formats.ChangeHelpButtonText(SV::Resource::LoadString(texts::kHelpButton));
  SV::Application::ChangeAppInternational(formats);
}

} // namespace kivara
