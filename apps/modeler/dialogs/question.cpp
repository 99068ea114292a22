#include "dialogs/question.hpp"

#include "texts/diagnosticstexts.hpp"

namespace modeler {

bool agrees(SV::Window & owner, SV::String const & question, SV::WinBits standard) {
  KivQueryBox box(&owner, SV::WB_YES_NO | standard, question);
  box.SetButtonText(SV::RET_YES, text(kYesButton));
  box.SetButtonText(SV::RET_NO, text(kNoButton));
  return box.Execute() == SV::RET_YES;
}

} // namespace modeler
