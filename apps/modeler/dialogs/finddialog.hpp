#pragma once
/// \file
/// The dialog that asks what to look for in a model.

#include "model/analysis/nodesearch.hpp"
#include "sv/button.hpp"
#include "sv/checkbox.hpp"
#include "sv/dialog.hpp"
#include "sv/edit.hpp"
#include "sv/fixed.hpp"
#include "sv/listbox.hpp"

namespace modeler {

/// A field for the text, the kind of search, and whether it is case-sensitive. It ends with OK only when there is a text.
class FindDialog : public SV::ModalDialog {
public:
  /// \param former  what it begins with
  FindDialog(SV::Window & owner, Search const & former);

  /// What the user has chosen.
  Search GetSearch() const;

private:
  void setTexts();
  void placeAll();
  void showOk() { ok_.SetEnabled(what_.GetText().Len() > 0); }

  // In the order of the tab key.
  SV::FixedText whatLabel_{this};
  SV::Edit what_{this};
  SV::FixedText kindLabel_{this};
  SV::ListBox kind_{this, SV::WB_BORDER | SV::WB_DROPDOWN};
  SV::CheckBox caseSensitive_{this};
  SV::OKButton ok_{this};
  SV::CancelButton cancel_{this};
};

} // namespace modeler
