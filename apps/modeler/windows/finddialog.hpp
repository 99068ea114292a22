#pragma once
/// \file
/// The dialog that asks what is looked for in a model.

#include "model/nodesearch.hpp"
#include "sv/button.hpp"
#include "sv/dialog.hpp"
#include "sv/fixed.hpp"
#include "sv/listbox.hpp"

namespace modeler {

/// A field for the text, the kind of search, and whether it is case-sensitive. It ends with OK only when there is a text.
class FindDialog : public SV::ModalDialog {
public:
  /// \param former  what it begins with
  FindDialog(SV::Window & owner, Search const & former);
  ~FindDialog() override;

  /// What the user has chosen.
  Search GetSearch() const;

protected:
  long long HandleMessage(unsigned message, unsigned long long wParam, long long lParam) override;

private:
  struct Place {
    SV::Point corner;
    SV::Size size;
  };
  static Place const kWhatLabel, kWhat, kKindLabel, kKind, kCaseSensitive, kOk, kCancel;

  void place(SV::Control & control, Place const & units);
  void place(HWND control, Place const & units);
  void showOk();

  HFONT font_;
  // In the order of the tab key.
  SV::FixedText whatLabel_{this};
  HWND what_;
  SV::FixedText kindLabel_{this};
  SV::ListBox kind_{this, SV::WB_BORDER | SV::WB_DROPDOWN};
  HWND caseSensitive_;
  SV::OKButton ok_{this};
  SV::CancelButton cancel_{this};
};

} // namespace modeler
