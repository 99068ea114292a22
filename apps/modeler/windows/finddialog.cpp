#include "windows/finddialog.hpp"

#include "texts/findtexts.hpp"

namespace modeler {
namespace {

// In units of dialogs, as are all places: they grow with the font and the scale of the screen.
constexpr SV::Size kArea = {230, 84};
constexpr SV::Size kButton = {60, 14};
constexpr long kMargin = 7;
constexpr long kFieldLeft = 82;
constexpr long kFieldWidth = kArea.width - kMargin - kFieldLeft;

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
  constexpr long buttonsTop = kArea.height - kMargin - kButton.height;
  constexpr long cancelLeft = kArea.width - kMargin - kButton.width;
  place(whatLabel_, {kMargin, 9}, {kFieldLeft - kMargin, 8});
  place(what_, {kFieldLeft, 7}, {kFieldWidth, 13});
  place(kindLabel_, {kMargin, 27}, {kFieldLeft - kMargin, 8});
  place(kind_, {kFieldLeft, 25}, {kFieldWidth, 60});
  place(caseSensitive_, {kFieldLeft, 43}, {kFieldWidth, 10});
  place(ok_, {cancelLeft - 4 - kButton.width, buttonsTop}, kButton);
  place(cancel_, {cancelLeft, buttonsTop}, kButton);
}

void FindDialog::place(SV::Control & control, SV::Point const & corner, SV::Size const & size) {
  SV::Size const place = LogicToPixel(SV::Size{corner.x, corner.y}, SV::MAP_APPFONT);
  control.SetPosSizePixel({place.width, place.height}, LogicToPixel(size, SV::MAP_APPFONT));
  control.Show();
}

Search FindDialog::GetSearch() const {
  return {what_.GetText(), static_cast<SearchKind>(kind_.GetSelectEntryPos()), caseSensitive_.IsChecked()};
}

} // namespace modeler
