#include "dialogs/userdialog.hpp"

#include "dialogs/dialogplaces.hpp"
#include "texts/diagnosticstexts.hpp"
#include "texts/viewtexts.hpp"

namespace modeler {
namespace {

constexpr SV::Size kArea = {280, 130};
constexpr long kFieldTop = kDialogMargin + kLabelHeight + 2;
constexpr long kButtonTop = kArea.height - kDialogMargin - kButtonSize.height;

} // namespace

UserDialog::UserDialog(SV::Window * parent, ISequence<Fact> const & facts) : ModalDialog(parent) {
  SetText(plain(text(kAtWork)));
  ChangeOutputSizePixel(LogicToPixel(kArea, SV::MAP_APPFONT));
  label_.SetText(text(kFactsLabel));
  SV::String lines;
  for (Fact const & fact : facts)
    lines += (lines.Len() > 0 ? "\n" : "") + fact.name + ": " + fact.value;
  facts_.SetText(lines);
  long const width = kArea.width - 2 * kDialogMargin;
  placeInUnits(*this, label_, {kDialogMargin, kDialogMargin}, {width, kLabelHeight});
  placeInUnits(*this, facts_, {kDialogMargin, kFieldTop}, {width, kButtonTop - kDialogGap - kFieldTop});
  placeInUnits(*this, ok_, {(kArea.width - kButtonSize.width) / 2, kButtonTop}, kButtonSize);
  for (SV::Control * const control : std::vector<SV::Control *>{&label_, &facts_, &ok_})
    control->Show();
  ok_.GrabFocus(); // the field would show all of its text as selected
}

} // namespace modeler
