#include "commands/models/analysiscommands.hpp"

#include "texts/analysistexts.hpp"
#include "texts/timesreport.hpp"

namespace modeler {

Commands AnalysisCommands::GetCommands() {
  return {separator(MENU_VIEW), {MENU_VIEW, ANALYSIS_TIMES, named(kTimes), [this] { showTimes(); }}};
}

void AnalysisCommands::showTimes() {
  ProcessWindow const * const front = documents_.GetFront();
  if (front == nullptr) {
    KivInfoBox(&frame_, text(Text::NothingToSave)).Execute();
    return;
  }
  model_ = front->GetModel();
  journal_.Add("times: " + model_.name);
  if (!times_ || times_->GethWnd() == nullptr)
    times_ = std::make_unique<TableWindow>(
        frame_, [this] { return filled(kTimesTitle, model_.name); }, [this] { return timesReport(model_); });
  times_->Show();
}

void AnalysisCommands::Retext() {
  if (times_)
    times_->Retext();
}

} // namespace modeler
