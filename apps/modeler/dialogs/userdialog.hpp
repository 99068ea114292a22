#pragma once
/// \file
/// The dialog that says who is at work.

#include "background/startfacts.hpp"

#include "sv/button.hpp"
#include "sv/dialog.hpp"
#include "sv/edit.hpp"
#include "sv/fixed.hpp"

namespace modeler {

/// Facts in a field from which they can be copied.
class UserDialog : public SV::ModalDialog {
public:
  UserDialog(SV::Window * parent, ISequence<Fact> const & facts);

private:
  // Tab goes through the controls in this order.
  SV::FixedText label_{this};
  SV::Edit facts_{this, SV::WB_BORDER | SV::WB_MULTILINE | SV::WB_READONLY};
  SV::OKButton ok_{this};
};

} // namespace modeler
