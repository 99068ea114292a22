#include "dialogs/finddialog.hpp"

#include "dialogs/dialogplaces.hpp"
#include "texts/findtexts.hpp"

namespace modeler {
namespace {

// In units of dialogs, as are all places: they grow with the font and the scale of the screen.
constexpr SV::Size kArea = {230, 84};
constexpr long kFieldLeft = 82;
constexpr long kFieldWidth = kArea.width - kDialogMargin - kFieldLeft;

} // namespace

FindDialog::FindDialog(SV::Window & owner, Search const & former) : ModalDialog(&owner) {
  ChangeOutputSizePixel(LogicToPixel(kArea, SV::MAP_APPFONT));
  setTexts();
  what_.SetText(former.what);
  what_.SelectAll();
  what_.ChangeModifyHdl([this](SV::Edit *) { showOk(); });
  kind_.SelectEntryPos(static_cast<long>(former.kind));
  caseSensitive_.Check(former.isCaseSensitive);
  placeAll();
  showOk();
}

void FindDialog::setTexts() {
  SetText(plain(text(kFind)));
  whatLabel_.SetText(text(kFindWhat));
  kindLabel_.SetText(text(kFindKind));
  for (Text const kind : {kFindPlain, kFindWildcards, kFindExpression})
    kind_.InsertEntry(text(kind));
  caseSensitive_.SetText(text(kFindCase));
  ok_.SetText(text(kFindButton));
}

void FindDialog::placeAll() {
  constexpr long buttonsTop = kArea.height - kDialogMargin - kButtonSize.height;
  constexpr long cancelLeft = kArea.width - kDialogMargin - kButtonSize.width;
  constexpr long labelWidth = kFieldLeft - kDialogMargin;
  auto const place = [this](SV::Control & control, SV::Point const & corner, SV::Size const & size) {
    placeInUnits(*this, control, corner, size);
    control.Show();
  };
  place(whatLabel_, {kDialogMargin, 9}, {labelWidth, kLabelHeight});
  place(what_, {kFieldLeft, 7}, {kFieldWidth, kFieldHeight});
  place(kindLabel_, {kDialogMargin, 27}, {labelWidth, kLabelHeight});
  place(kind_, {kFieldLeft, 25}, {kFieldWidth, 60});
  place(caseSensitive_, {kFieldLeft, 43}, {kFieldWidth, 10});
  place(ok_, {cancelLeft - kDialogGap - kButtonSize.width, buttonsTop}, kButtonSize);
  place(cancel_, {cancelLeft, buttonsTop}, kButtonSize);
}

Search FindDialog::GetSearch() const {
  return {what_.GetText(), static_cast<SearchKind>(kind_.GetSelectEntryPos()), caseSensitive_.IsChecked()};
}

} // namespace modeler
